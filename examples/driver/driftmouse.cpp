// The smallest device driver: one mouse, which drifts to the right.
#include <quillmarsh/devices/mouse.h>
#include <quillmarsh/framework/hiddriver.h>
#include <quillmarsh/framework/humaninterfacedevice.h>
#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/framework/pluginlibrary.h>

namespace
{

class DriftMouse : public quillmarsh::Mouse
{
public:
    explicit DriftMouse(quillmarsh::HumanInterfaceDevice &device) : Mouse(false) { SetParentHID(device); }

    void OnRelativeModeChanged() override {}
    void OnSyncWithSystemCursorChanged() override {}

    /// Stores what the device has read: the setters of the controller are protected.
    void Store(int movement)
    {
        PreSampleUpdate();
        AccumDelta(movement, 0);
        PostSampleUpdate();
    }
};

class DriftDevice : public quillmarsh::HumanInterfaceDevice
{
public:
    DriftDevice() { DeviceInfo().SetDeviceDescription("drifting mouse"); }

    unsigned int GetNumControllers() override { return 1; }
    quillmarsh::HIDController *GetController(unsigned int index) override { return index == 0 ? &mouse_ : nullptr; }

    /// Open and close the hardware here.
    void ConnectDevice(HWND) override {}
    void DisconnectDevice() override {}

    /// Read the hardware here. On the frame thread, or on the device's own thread under its lock.
    void SampleDevice() override { mouse_.Store(1); }

    void ApplyUseDirectInput(bool) override {}

private:
    DriftMouse mouse_{*this};
};

class DriftDriver : public quillmarsh::HIDDriver0
{
public:
    void OpenDriver(quillmarsh::DirectInputConfig const &, unsigned int) override {}
    void CloseDriver() override {}
    unsigned int EnumerateDevices() override { return 1; }
    quillmarsh::HumanInterfaceDevice *CreateDevice(unsigned int) override { return new DriftDevice; }
    bool PollDeviceChanges() override { return false; }
};

class DriftDescriptor : public quillmarsh::HIDDriverPluginDescriptor
{
public:
    DriftDescriptor()
        : HIDDriverPluginDescriptor(quillmarsh::PluginInfo(
              quillmarsh::library_info::GetHeaderVersion(), quillmarsh::e_plugin_hid_driver, "driftmouse",
              quillmarsh::PluginVersion(1, 0, 0, 0), QUILLMARSH_PLUGIN_TIMESTAMP, "A mouse that drifts", "You"))
    {
    }

    quillmarsh::HIDDriver *CreateHIDDriver() override { return new DriftDriver; }
};

} // namespace

QUILLMARSH_PLUGIN_LIBRARY(DriftDescriptor)
