// The input devices of a run, and the drivers that they come from.
#ifndef QUILLMARSH_HOST_DEVICEGROUP_H
#define QUILLMARSH_HOST_DEVICEGROUP_H

#include <quillmarsh/framework/directinputconfig.h>
#include <quillmarsh/framework/directinputproxy.h>
#include <quillmarsh/framework/hiddriver.h>
#include <quillmarsh/framework/humaninterfacedevice.h>
#include <quillmarsh/framework/kernelexecutionparams.h>

#include <vector>

namespace quillmarsh::host
{

class HostKernel;

/// The input devices of a run: opens drivers, finds devices, asks the application about them, connects and samples them.
///
/// A driver or a device that fails is reported and left out; a hook of the application that fails passes through.
/// Frame thread only.
class DeviceGroup : NoCopy
{
public:
    explicit DeviceGroup(HostKernel &kernel);
    ~DeviceGroup();

    /// Walks the application up through its hooks of the group. `code` and `subcode` reach it unchanged.
    void Open(DirectInputConfig const &config, unsigned int code, unsigned int subcode);
    /// Calls DisconnectHumanInterfaceDevices() if BeginConnectHumanInterfaceDevices() has returned since the last call.
    /// Passes on what the hook throws, and does not call it a second time then.
    void Disconnect();
    /// Stops, disconnects and deletes the devices, then the drivers. To be called after Disconnect().
    void Release();

    /// The configuration in force.
    DirectInputConfig const &GetConfig() const { return config_; }
    unsigned int GetNumDevices() const { return static_cast<unsigned int>(devices_.size()); }
    /// Null past the end.
    HumanInterfaceDevice *GetDevice(unsigned int index) const;

    /// Asks all drivers; true when devices came or went.
    bool PollDeviceChanges();
    /// Samples the devices that are wanted, and that no thread samples.
    void Sample(HIDAutoSamplingConfig const &wanted);

    /// @name The application's window
    /// Each connected device is told, in the order of HumanInterfaceDevice; a device that throws is reported.
    /// @{

    /// Tells of a window that stands, or by null that the window is about to go.
    void SetAppWindow(HWND window);
    HWND GetAppWindow() const { return appWindow_; }
    void SetAppWindowActive(bool active);
    void OnAppWindowGeometryChanged();
    /// @}

private:
    struct Driver
    {
        AutoPtr<HIDDriver> plugin;
        // The one of the two that it is.
        HIDDriver0 *driver0;
        HIDDriver8 *driver8;
        string name;
        unsigned int flags;
        bool isOpen = false;
        bool hasFailed = false;

        void Open(DirectInputProxy8 *proxy, DirectInputConfig const &config);
        void Close();
        bool Poll();
    };

    struct Device
    {
        AutoPtr<HumanInterfaceDevice> device;
        bool isSystemKeyboard;
        bool isSystemMouse;
        bool hasFailed = false;

        bool IsWanted(HIDAutoSamplingConfig const &wanted) const;
    };

    void ConfirmProxy();
    void AddProxy(PluginDescriptor &descriptor);
    void ConfirmDrivers();
    void AddDriver(PluginDescriptor &descriptor, unsigned int flags);
    void OpenDrivers();
    void ConfirmDevices();
    void ConfirmDevicesOf(Driver &driver);
    void ConfirmDevice(AutoPtr<HumanInterfaceDevice> device, Driver const &driver);
    void ConnectDevices();
    void ConnectDevice(AutoPtr<HumanInterfaceDevice> device);
    void OnSampleFailed(Device &device, string const &reason);
    /// Tells one device, or all, of the window by a call that takes the device.
    template<typename Call>
    void TellOfWindow(HumanInterfaceDevice &device, Call &&call);
    template<typename Call>
    void TellAllOfWindow(Call &&call);

    /// Calls what may fail without ending the run. False, with a message that begins with `what`, when it failed.
    template<typename Call>
    bool Try(string const &what, Call &&call);

    HostKernel &kernel_;
    HWND appWindow_ = nullptr;
    bool isAppWindowActive_ = false;
    DirectInputConfig config_;
    AutoPtr<DirectInputProxy8> proxy_;
    bool isProxyOpen_ = false;
    std::vector<Driver> drivers_;
    unsigned int lastCreationID_ = 0;
    /// Confirmed, and not connected yet.
    std::vector<AutoPtr<HumanInterfaceDevice>> candidates_;
    /// Connected.
    std::vector<Device> devices_;
    bool applicationHasDevices_ = false;
};

} // namespace quillmarsh::host

#endif
