// Guards of code that reads an input device.
#ifndef QUILLMARSH_FRAMEWORK_SAMPLEREADSENTRY_H
#define QUILLMARSH_FRAMEWORK_SAMPLEREADSENTRY_H

#include <quillmarsh/framework/hidcontroller.h>
#include <quillmarsh/framework/humaninterfacedevice.h>

namespace quillmarsh
{

/// Guards code that reads the last readings of a device, without a new sample. Reading thread only.
///
/// It locks a device that a thread samples, and does nothing with any other device. With `unlockAtEnd` false the lock
/// stays when the sentry ends, so that a caller can read several times and release once.
class AsyncSampleReadSentry : NoCopy
{
public:
    /// The device is borrowed and outlives the sentry.
    AsyncSampleReadSentry(HumanInterfaceDevice &device, bool unlockAtEnd) : AsyncSampleReadSentry(&device, unlockAtEnd)
    {
    }
    /// Reads the controller's device. Asserts when the controller has none, and does nothing then.
    AsyncSampleReadSentry(HIDController &controller, bool unlockAtEnd)
        : AsyncSampleReadSentry(controller.GetParentHIDPtr(), unlockAtEnd)
    {
    }
    ~AsyncSampleReadSentry()
    {
        if (unlockAtEnd_ && device_ != nullptr && device_->IsAsyncSamplingActive())
            device_->UnlockSampledData();
    }

private:
    AsyncSampleReadSentry(HumanInterfaceDevice *device, bool unlockAtEnd) : device_(device), unlockAtEnd_(unlockAtEnd)
    {
        if (device_ != nullptr && device_->IsAsyncSamplingActive())
            device_->LockSampledData();
    }

    HumanInterfaceDevice *device_;
    bool unlockAtEnd_;
};

/// Guards code that reads the present readings of a device. Reading thread only.
///
/// If no thread samples the device, it is sampled once, on the spot; an exception of SampleDevice() passes through.
/// Otherwise the sentry does the same as AsyncSampleReadSentry.
class SampleReadSentry : NoCopy
{
public:
    /// The device is borrowed and outlives the sentry.
    SampleReadSentry(HumanInterfaceDevice &device, bool unlockAtEnd) : SampleReadSentry(&device, unlockAtEnd) {}
    /// Reads the controller's device. Asserts when the controller has none, and does nothing then.
    SampleReadSentry(HIDController &controller, bool unlockAtEnd)
        : SampleReadSentry(controller.GetParentHIDPtr(), unlockAtEnd)
    {
    }
    ~SampleReadSentry()
    {
        if (unlockAtEnd_ && device_ != nullptr && device_->IsAsyncSamplingActive())
            device_->UnlockSampledData();
    }

private:
    SampleReadSentry(HumanInterfaceDevice *device, bool unlockAtEnd) : device_(device), unlockAtEnd_(unlockAtEnd)
    {
        if (device_ == nullptr)
            return;
        if (device_->IsAsyncSamplingActive())
            device_->LockSampledData();
        else
            device_->SampleDevice();
    }

    HumanInterfaceDevice *device_;
    bool unlockAtEnd_;
};

} // namespace quillmarsh

#endif
