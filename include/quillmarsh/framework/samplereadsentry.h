// Guards of code that reads an input device.
#ifndef QUILLMARSH_FRAMEWORK_SAMPLEREADSENTRY_H
#define QUILLMARSH_FRAMEWORK_SAMPLEREADSENTRY_H

#include <quillmarsh/framework/hidcontroller.h>
#include <quillmarsh/framework/humaninterfacedevice.h>

namespace quillmarsh
{

/// Stands around code that reads the last readings of a device, without asking for new ones. Reading thread only.
///
/// It locks a device that a thread samples, and does nothing to one that nobody samples meanwhile. With `unlockAtEnd`
/// false the lock stays when the sentry ends, so that one can read several times and release once.
class AsyncSampleReadSentry : NoCopy
{
public:
    AsyncSampleReadSentry(HumanInterfaceDevice &device, bool unlockAtEnd) : device_(device), unlockAtEnd_(unlockAtEnd)
    {
        if (device_.IsAsyncSamplingActive())
            device_.LockSampledData();
    }
    /// Asserts when the controller has no device.
    AsyncSampleReadSentry(HIDController &controller, bool unlockAtEnd)
        : AsyncSampleReadSentry(controller.GetParentHID(), unlockAtEnd)
    {
    }
    ~AsyncSampleReadSentry()
    {
        if (unlockAtEnd_ && device_.IsAsyncSamplingActive())
            device_.UnlockSampledData();
    }

private:
    HumanInterfaceDevice &device_;
    bool unlockAtEnd_;
};

/// Stands around code that wants present readings of a device: it samples a device that no thread samples, once, on the
/// spot. What SampleDevice() throws then passes through. Else as AsyncSampleReadSentry. Reading thread only.
class SampleReadSentry : NoCopy
{
public:
    SampleReadSentry(HumanInterfaceDevice &device, bool unlockAtEnd) : device_(device), unlockAtEnd_(unlockAtEnd)
    {
        if (device_.IsAsyncSamplingActive())
            device_.LockSampledData();
        else
            device_.SampleDevice();
    }
    /// Asserts when the controller has no device.
    SampleReadSentry(HIDController &controller, bool unlockAtEnd)
        : SampleReadSentry(controller.GetParentHID(), unlockAtEnd)
    {
    }
    ~SampleReadSentry()
    {
        if (unlockAtEnd_ && device_.IsAsyncSamplingActive())
            device_.UnlockSampledData();
    }

private:
    HumanInterfaceDevice &device_;
    bool unlockAtEnd_;
};

} // namespace quillmarsh

#endif
