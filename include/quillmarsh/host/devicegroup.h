// The input devices of a run, and their drivers.
#ifndef QUILLMARSH_HOST_DEVICEGROUP_H
#define QUILLMARSH_HOST_DEVICEGROUP_H

#include <quillmarsh/framework/directinputconfig.h>
#include <quillmarsh/framework/directinputproxy.h>
#include <quillmarsh/framework/hiddriver.h>
#include <quillmarsh/framework/humaninterfacedevice.h>
#include <quillmarsh/framework/kernelexecutionparams.h>

#include <functional>
#include <vector>

namespace quillmarsh::host
{

class HostKernel;

/// The input devices of a run: opens drivers, finds devices, asks the application about them, connects and samples
/// them.
///
/// A driver or a device that fails is reported and left out. Exceptions of the application's hooks pass through. Frame
/// thread only.
class DeviceGroup : NoCopy
{
public:
    /// Borrows `kernel`, which must outlive this object.
    explicit DeviceGroup(HostKernel &kernel);
    ~DeviceGroup();

    /// Adds a driver of the program, which `create` makes at each Open() from now on. Its devices come ahead of those of
    /// plug-ins. The application is asked about its devices, but not by ConfirmHIDDriver().
    void AddDriver(string const &name, std::function<AutoPtr<HIDDriver0>()> create);
    /// Opens the drivers and connects the devices, and calls the application's hooks for them. Passes `code` and
    /// `subcode` to QueryHIDConfig(). Throws what a hook throws.
    void Open(DirectInputConfig const &config, unsigned int code, unsigned int subcode);
    /// Calls DisconnectHumanInterfaceDevices() if BeginConnectHumanInterfaceDevices() has returned since the last call.
    /// Throws what the hook throws, and does not call it a second time then.
    void Disconnect();
    /// Stops, disconnects and deletes the devices, then the drivers. Call it after Disconnect().
    void Release();

    /// Returns the current configuration.
    DirectInputConfig const &GetConfig() const { return config_; }
    /// Returns the number of connected devices.
    unsigned int GetNumDevices() const { return static_cast<unsigned int>(devices_.size()); }
    /// Returns a connected device by index; null past the end. The group owns it.
    HumanInterfaceDevice *GetDevice(unsigned int index) const;

    /// Asks all drivers for changes. True when devices were added or removed.
    bool PollDeviceChanges();
    /// Samples the devices that `wanted` selects and that have no sampling thread.
    void Sample(HIDAutoSamplingConfig const &wanted);

    /// @name The application's window
    /// Each connected device is notified, in the order that HumanInterfaceDevice describes. A device that throws is
    /// reported.
    /// @{

    /// Reports an open window, or with null that the window is about to close.
    void SetAppWindow(HWND window);
    HWND GetAppWindow() const { return appWindow_; }
    void SetAppWindowActive(bool active);
    void OnAppWindowGeometryChanged();
    /// @}

private:
    struct Driver
    {
        AutoPtr<HIDDriver> plugin;
        // One of these two is the plug-in, the other is null.
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

    struct ProgramDriver
    {
        string name;
        std::function<AutoPtr<HIDDriver0>()> create;
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
    /// Reports the window to one device, or to all, with a call that takes the device.
    template<typename Call>
    void TellOfWindow(HumanInterfaceDevice &device, Call &&call);
    template<typename Call>
    void TellAllOfWindow(Call &&call);

    /// Calls a function whose failure does not end the run. If it fails, returns false and shows a message that begins
    /// with `what`.
    template<typename Call>
    bool Try(string const &what, Call &&call);

    HostKernel &kernel_;
    HWND appWindow_ = nullptr;
    bool isAppWindowActive_ = false;
    DirectInputConfig config_;
    AutoPtr<DirectInputProxy8> proxy_;
    bool isProxyOpen_ = false;
    std::vector<ProgramDriver> programDrivers_;
    std::vector<Driver> drivers_;
    unsigned int lastCreationID_ = 0;
    /// Devices that are confirmed but not connected yet.
    std::vector<AutoPtr<HumanInterfaceDevice>> candidates_;
    /// Connected devices.
    std::vector<Device> devices_;
    bool applicationHasDevices_ = false;
    bool guiHasDevices_ = false;
};

} // namespace quillmarsh::host

#endif
