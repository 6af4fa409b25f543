// Bases of the plug-ins that drive input devices.
#ifndef QUILLMARSH_FRAMEWORK_HIDDRIVER_H
#define QUILLMARSH_FRAMEWORK_HIDDRIVER_H

#include <quillmarsh/framework/plugin.h>

namespace quillmarsh
{

class DirectInputProxy8;
class HumanInterfaceDevice;
struct DirectInputConfig;

/// Plug-in that finds and drives input devices of one kind. Frame thread only.
///
/// The kernel opens a driver (see HIDDriver0 and HIDDriver8), lets it enumerate, creates the devices one by one, asks
/// the application about each, and connects the devices that the application confirms. It deletes the devices before it
/// closes the driver. All of this happens again for each reconfiguration.
class QUILLMARSH_API HIDDriver : public Plugin
{
public:
    ~HIDDriver() override;

    /// Name of the driver interface; it tells which of the two it is.
    virtual string GetHIDDriverInterfaceName() = 0;
    /// Finds the present devices, and returns their number.
    virtual unsigned int EnumerateDevices() = 0;
    /// Makes the device of an index of the last enumeration; null when that device has gone. The caller owns it. The
    /// driver fills in its HumanInterfaceDeviceInfo, except creation id and creator, which the kernel sets.
    virtual HumanInterfaceDevice *CreateDevice(unsigned int index) = 0;

protected:
    HIDDriver();
};

/// Driver that works without DirectInput. A minimal one is shown in docs/writing-a-driver.md.
class QUILLMARSH_API HIDDriver0 : public HIDDriver
{
public:
    ~HIDDriver0() override;

    /// "HIDDriver0".
    string GetHIDDriverInterfaceName() override;
    /// Opens the driver. `flags` comes from Application::ConfirmHIDDriver(), and is 0 otherwise. Throws
    /// HIDDriverException when the driver cannot work on this machine; the kernel then leaves the driver out.
    virtual void OpenDriver(DirectInputConfig const &config, unsigned int flags) = 0;
    /// Releases what OpenDriver() has acquired. The devices of the driver were deleted before.
    virtual void CloseDriver() = 0;
    /// Called once in each frame, after the desktop was pumped and before devices are sampled. Returns true when
    /// devices have come or gone since the last enumeration; the kernel then reconfigures the devices before the next
    /// frame.
    virtual bool PollDeviceChanges() = 0;

protected:
    HIDDriver0();
};

/// Driver that works through version 8 of DirectInput.
class QUILLMARSH_API HIDDriver8 : public HIDDriver
{
public:
    ~HIDDriver8() override;

    /// "HIDDriver8".
    string GetHIDDriverInterfaceName() override;
    /// Opens the driver as HIDDriver0::OpenDriver() does. The proxy is borrowed; it is open until CloseDriver() has
    /// returned.
    virtual void OpenDriver(DirectInputProxy8 &proxy, DirectInputConfig const &config, unsigned int flags) = 0;
    /// Closes the driver as HIDDriver0::CloseDriver() does.
    virtual void CloseDriver() = 0;
    /// Works as HIDDriver0::PollDeviceChanges() does.
    virtual bool PollDeviceChanges() = 0;

protected:
    HIDDriver8();
};

} // namespace quillmarsh

#endif
