// One functional side of an input device: its keys, its pointer, its orientation.
#ifndef QUILLMARSH_FRAMEWORK_HIDCONTROLLER_H
#define QUILLMARSH_FRAMEWORK_HIDCONTROLLER_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

class HumanInterfaceDevice;

/// One functional side of an input device, which owns it.
///
/// The interface classes (keyboard, mouse, trackers, ...) derive from it, and a driver derives its controllers from
/// those. At each sample the device calls PreSampleUpdate(), stores the new readings through the protected setters of
/// the interface class, and calls PostSampleUpdate(). This is so with and without a sampling thread.
///
/// When a thread samples the device, these calls run on that thread under the device's lock. OnBeginAsyncSampleRead()
/// and OnEndAsyncSampleRead() run on the reading thread under the same lock: there a controller turns the samples since
/// the last read into the form that readers see. A reader holds a SampleReadSentry or an AsyncSampleReadSentry.
class QUILLMARSH_API HIDController : NoCopy
{
public:
    virtual ~HIDController();

    /// Fixed name of the interface class, for example "Keyboard" or "Mouse". Controllers are found by it.
    virtual string GetControllerInterfaceName() const = 0;
    /// Prints what the controller can do, one line for each item, behind `tabs` tabs. Prints nothing by default.
    virtual void DumpControllerInfo(ostream &out, unsigned int tabs) const;
    /// Sets all readings to those of a device at rest.
    virtual void ResetInputReadings() = 0;
    /// New readings follow.
    virtual void PreSampleUpdate() = 0;
    /// The new readings are complete.
    virtual void PostSampleUpdate() = 0;
    /// A reader has locked the device while a thread samples it.
    virtual void OnBeginAsyncSampleRead() = 0;
    /// The reader is about to unlock the device.
    virtual void OnEndAsyncSampleRead() = 0;

    /// The device, which owns the controller. Asserts "Parent-HID not set for HIDController: " with the name of the
    /// class when there is none.
    HumanInterfaceDevice &GetParentHID() { return *GetParentHIDPtr(); }
    /// The device, with the same assertion; null when there is none.
    HumanInterfaceDevice *GetParentHIDPtr();
    /// The device, without a test: there must be one.
    HumanInterfaceDevice const &GetParentHID() const { return *parentHID_; }

protected:
    HIDController();

    /// Stores the device, which is borrowed. The device calls it as soon as it has the controller.
    void SetParentHID(HumanInterfaceDevice &device) { parentHID_ = &device; }

    /// True when a thread samples the device. Asserts as GetParentHID() does, and is false then.
    bool IsSampledAsync();

private:
    HumanInterfaceDevice *parentHID_ = nullptr;
};

} // namespace quillmarsh

#endif
