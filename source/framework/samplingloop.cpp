#include "source/framework/samplingloop.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/framework/hidcontroller.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/mathtools/mathconstants.h>

#include "source/platform/threads.h"

#include <algorithm>
#include <cmath>
#include <ostream>

namespace quillmarsh
{

namespace
{

constexpr double s_rateCheckInterval = 2.0;
constexpr double s_rateTolerance = 0.05;
// Part of the error that is added to the next sleep.
constexpr double s_feedbackGain = 0.55;

} // namespace

HumanInterfaceDevice::SamplingLoop::SamplingLoop(HumanInterfaceDevice &device) : device_(device)
{
    device_.rateChanged_.store(true, std::memory_order_release);
}

bool HumanInterfaceDevice::SamplingLoop::DoPass()
{
    double const passStart = timer_.GetElapsedSeconds();
    CheckRate(passStart);
    if (device_.rateChanged_.exchange(false, std::memory_order_acquire))
        TakeOverRate();

    double const sampleStart = timer_.GetElapsedSeconds();
    if (!Sample())
        return false;
    double const sampleEnd = timer_.GetElapsedSeconds();
    samplesSinceCheck_ += 1.0;

    Sleep();
    UpdateAverages(sampleEnd - sampleStart);
    double const passEnd = timer_.GetElapsedSeconds();
    averagePeriod_ = complement_ * averagePeriod_ + (passEnd - passStart) * smoothing_;
    return true;
}

void HumanInterfaceDevice::SamplingLoop::End()
{
    device_.averageSampleRate_.store(0.0, std::memory_order_relaxed);
    device_.averageSamplingTime_.store(0.0, std::memory_order_relaxed);
}

void HumanInterfaceDevice::SamplingLoop::CheckRate(double passStart)
{
    if (!device_.IsEnabledMaxSampleRate() || passStart - lastCheck_ < s_rateCheckInterval)
        return;
    double const observedRate = std::max(1.0, samplesSinceCheck_ / s_rateCheckInterval);
    double const error = (device_.GetAverageSampleRate() - observedRate) / observedRate;
    if (std::fabs(error) >= s_rateTolerance)
        device_.rateChanged_.store(true, std::memory_order_relaxed);
    samplesSinceCheck_ = 0.0;
    lastCheck_ = passStart;
}

void HumanInterfaceDevice::SamplingLoop::TakeOverRate()
{
    targetPeriod_ = 1.0 / device_.GetMaxSampleRate();
    averagePeriod_ = targetPeriod_;
    sleepTime_ = device_.IsEnabledMaxSampleRate() ? targetPeriod_ : 0.0;
}

bool HumanInterfaceDevice::SamplingLoop::Sample()
{
    try
    {
        CriticalSectionSentry const sentry(device_.sampledDataLock_);
        device_.SampleDevice();
        return true;
    }
    catch (Exception const &failure)
    {
        Fail(failure.GetClassName() + ": " + failure.GetMessage());
    }
    catch (exception const &failure)
    {
        Fail(failure.what());
    }
    catch (...)
    {
        Fail("an object of unknown class was thrown.");
    }
    return false;
}

void HumanInterfaceDevice::SamplingLoop::Fail(string const &reason)
{
    GetLogOut() << "Async-sampling failed on hid: " << device_.GetDeviceInfo().MakeShortDesc() << ": " << reason
                << std::endl;
    CriticalSectionSentry const sentry(device_.sampledDataLock_);
    unsigned int const count = device_.GetNumControllers();
    for (unsigned int index = 0; index < count; index++)
        device_.GetController(index)->ResetInputReadings();
}

void HumanInterfaceDevice::SamplingLoop::Sleep()
{
    if (!device_.IsEnabledMaxSampleRate())
        return;
    if (sleepTime_ >= 0.0)
        platform::SleepMilliseconds(static_cast<unsigned int>(sleepTime_ * 1000.0));
    sleepTime_ += (targetPeriod_ - averagePeriod_) * s_feedbackGain;
}

void HumanInterfaceDevice::SamplingLoop::UpdateAverages(double samplingTime)
{
    smoothing_ = 1.0 / std::max(1.0, device_.GetAverageSampleRate());
    if (device_.IsEnabledMaxSampleRate())
        smoothing_ *= smoothing_;
    complement_ = 1.0 - smoothing_;
    device_.averageSamplingTime_.store(complement_ * device_.GetAverageSamplingTime() + samplingTime * smoothing_,
                                       std::memory_order_relaxed);
    device_.averageSampleRate_.store(averagePeriod_ == 0.0 ? math_constants::PlusInfinity : 1.0 / averagePeriod_,
                                     std::memory_order_relaxed);
}

} // namespace quillmarsh
