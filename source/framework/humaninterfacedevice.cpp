#include <quillmarsh/framework/humaninterfacedevice.h>

#include <quillmarsh/framework/hidcontroller.h>
#include <quillmarsh/framework/kernel.h>

#include "source/framework/samplingloop.h"
#include "source/platform/threads.h"

#include <algorithm>
#include <ostream>

namespace quillmarsh
{

namespace
{

constexpr double s_lowestMaxSampleRate = 1.0;
constexpr double s_highestMaxSampleRate = 1000.0;

} // namespace

bool HumanInterfaceDevice::s_bUseDirectInputAtInit = true;

HumanInterfaceDevice::HumanInterfaceDevice()
{
    samplingThread_.Init(*this);
}

HumanInterfaceDevice::~HumanInterfaceDevice() = default;

bool HumanInterfaceDevice::SetHIDParameter(NamedParameter const &)
{
    return false;
}

NamedParameter const *HumanInterfaceDevice::GetHIDParameter(string const &) const
{
    return nullptr;
}

void HumanInterfaceDevice::DumpDeviceCaps(ostream &, unsigned int) const {}

void HumanInterfaceDevice::OnAppWindowActive(bool) {}

void HumanInterfaceDevice::OnAppWindowGeometryChanged() {}

void HumanInterfaceDevice::OnStartAsyncSampling(void *, unsigned int) {}

void HumanInterfaceDevice::OnStopAsyncSampling(void *, unsigned int) {}

HIDController *HumanInterfaceDevice::FindController(string const &interfaceName)
{
    unsigned int const count = GetNumControllers();
    for (unsigned int index = 0; index < count; index++)
    {
        HIDController *const controller = GetController(index);
        if (controller && controller->GetControllerInterfaceName() == interfaceName)
            return controller;
    }
    return nullptr;
}

bool HumanInterfaceDevice::SetUseDirectInput(bool use)
{
    if (use == isUsingDirectInput_)
        return true;
    if (use ? !info_.CanUseDirectInput() : info_.IsDirectInputOnly())
        return false;
    ApplyUseDirectInput(use);
    return isUsingDirectInput_ == use;
}

void HumanInterfaceDevice::StartAsyncSampling()
{
    UnlockSampledData();
    if (IsAsyncSamplingActive())
        return;
    isAsyncSamplingActive_.store(true, std::memory_order_release);
    GetLogOut() << "Starting async-sampling on hid: " << info_.GetCreationID() << std::endl;
    try
    {
        samplingThread_.Run();
    }
    catch (...)
    {
        isAsyncSamplingActive_.store(false, std::memory_order_release);
        throw;
    }
}

void HumanInterfaceDevice::StopAsyncSampling()
{
    UnlockSampledData();
    if (!IsAsyncSamplingActive())
        return;
    isAsyncSamplingActive_.store(false, std::memory_order_release);
    GetLogOut() << "Stoping async-sampling on hid: " << info_.GetCreationID() << std::endl;
    samplingThread_.SignalExit();
    samplingThread_.WaitExit(true);
}

void HumanInterfaceDevice::ActivateAsyncSampling(bool activate)
{
    if (activate)
        StartAsyncSampling();
    else
        StopAsyncSampling();
}

void HumanInterfaceDevice::LockSampledData()
{
    if (IsSampledDataLocked())
        return;
    sampledDataLock_.Enter();
    isSampledDataLocked_.store(true, std::memory_order_relaxed);
    unsigned int const count = GetNumControllers();
    for (unsigned int index = 0; index < count; index++)
        GetController(index)->OnBeginAsyncSampleRead();
}

void HumanInterfaceDevice::UnlockSampledData()
{
    if (!IsSampledDataLocked())
        return;
    unsigned int const count = GetNumControllers();
    for (unsigned int index = 0; index < count; index++)
        GetController(index)->OnEndAsyncSampleRead();
    isSampledDataLocked_.store(false, std::memory_order_relaxed);
    sampledDataLock_.Leave();
}

void HumanInterfaceDevice::EnableMaxSampleRate(bool enable)
{
    isMaxSampleRateEnabled_.store(enable, std::memory_order_relaxed);
    rateChanged_.store(true, std::memory_order_release);
}

void HumanInterfaceDevice::SetMaxSampleRate(double hz)
{
    // In this order, NaN becomes the lowest rate.
    maxSampleRate_.store(std::min(std::max(s_lowestMaxSampleRate, hz), s_highestMaxSampleRate),
                         std::memory_order_relaxed);
    rateChanged_.store(true, std::memory_order_release);
}

unsigned int HumanInterfaceDevice::SamplingThread::DoWork()
{
    platform::BeginPreciseSleep();
    device_->OnStartAsyncSampling(GetThreadHandle(), GetThreadID());
    SamplingLoop loop(*device_);
    while (QueryContinue())
        if (!loop.DoPass())
            break;
    loop.End();
    device_->OnStopAsyncSampling(GetThreadHandle(), GetThreadID());
    platform::EndPreciseSleep();
    return 0;
}

} // namespace quillmarsh
