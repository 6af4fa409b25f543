// One functional side of an input device: its keys, its pointer, its orientation.
#ifndef QUILLMARSH_FRAMEWORK_HIDCONTROLLER_H
#define QUILLMARSH_FRAMEWORK_HIDCONTROLLER_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

class HumanInterfaceDevice;

/// One functional side of an input device, which owns it.
///
/// The interface classes (keyboard, mouse, trackers, ...) derive from it, and a driver derives from those. Each time the
/// device is sampled it calls PreSampleUpdate(), stores the new readings through the protected setters of the interface
/// class, and calls PostSampleUpdate(); so it is in both modes. When a thread samples the device, these calls run on
/// that thread under the device's lock, and OnBeginAsyncSampleRead() and OnEndAsyncSampleRead() on the reading thread
/// under the same lock: there a controller brings what piled up since the last read into the form that readers see.
/// Whoever reads holds a SampleReadSentry or AsyncSampleReadSentry.
class QUILLMARSH_API HIDController : NoCopy
{
public:
    virtual ~HIDController();

    /// Fixed name of the interface class, "Keyboard" or "Mouse" for example, by which controllers are found.
    virtual string GetControllerInterfaceName() const = 0;
    /// Prints what the controller can do, one line for each item, behind `tabs` tabs. Prints nothing by default.
    virtual void DumpControllerInfo(ostream &out, unsigned int tabs) const;
    /// Clears all readings to those of a device at rest.
    virtual void ResetInputReadings() = 0;
    /// New readings follow.
    virtual void PreSampleUpdate() = 0;
    /// The new readings are complete.
    virtual void PostSampleUpdate() = 0;
    /// A reader has locked the device, which a thread samples.
    virtual void OnBeginAsyncSampleRead() = 0;
    /// The reader is about to let the device go.
    virtual void OnEndAsyncSampleRead() = 0;

    /// The device, which owns the controller. Asserts "Parent-HID not set for HIDController: " with the name of the class
    /// when there is none.
    HumanInterfaceDevice &GetParentHID() { return *GetParentHIDPtr(); }
    /// The device, with the same assertion; null when there is none.
    HumanInterfaceDevice *GetParentHIDPtr();
    /// The device, without that test.
    HumanInterfaceDevice const &GetParentHID() const { return *parentHID_; }

protected:
    HIDController();

    /// For the device, as soon as it has the controller. Borrowed.
    void SetParentHID(HumanInterfaceDevice &device) { parentHID_ = &device; }

    /// True when a thread samples the device. Asserts as GetParentHID() does, and is false then.
    bool IsSampledAsync();

private:
    HumanInterfaceDevice *parentHID_ = nullptr;
};

} // namespace quillmarsh

#endif
