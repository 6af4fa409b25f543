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
/// the application about each and connects those that it confirms. Before it closes the driver it has deleted the
/// devices. All of this happens again for each reconfiguration.
class QUILLMARSH_API HIDDriver : public Plugin
{
public:
    ~HIDDriver() override;

    /// Which of the two driver interfaces this is.
    virtual string GetHIDDriverInterfaceName() = 0;
    /// Looks which devices are there now, and gives their number.
    virtual unsigned int EnumerateDevices() = 0;
    /// A new device for an index of the last enumeration, owned by the caller, or null when that device has gone. Its
    /// HumanInterfaceDeviceInfo says all but creation id and creator, which the kernel fills in.
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
    /// Takes the driver into use. `flags` is what the application gave by Application::ConfirmHIDDriver, 0 otherwise.
    /// Throws HIDDriverException when it cannot work here; the kernel then leaves the driver out.
    virtual void OpenDriver(DirectInputConfig const &config, unsigned int flags) = 0;
    /// Gives back what OpenDriver() took. No device of the driver exists any more.
    virtual void CloseDriver() = 0;
    /// Called once in each frame, after the desktop has been pumped and before devices are sampled. True when devices came or went since the last
    /// enumeration: the kernel then reconfigures the devices before the next frame.
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
    /// As HIDDriver0::OpenDriver; the proxy is open, borrowed, and stays until CloseDriver() has returned.
    virtual void OpenDriver(DirectInputProxy8 &proxy, DirectInputConfig const &config, unsigned int flags) = 0;
    /// As HIDDriver0::CloseDriver.
    virtual void CloseDriver() = 0;
    /// As HIDDriver0::PollDeviceChanges.
    virtual bool PollDeviceChanges() = 0;

protected:
    HIDDriver8();
};

} // namespace quillmarsh

#endif
