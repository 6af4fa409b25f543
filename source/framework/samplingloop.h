// What the sampling thread of a device does in each pass.
#ifndef QUILLMARSH_SOURCE_FRAMEWORK_SAMPLINGLOOP_H
#define QUILLMARSH_SOURCE_FRAMEWORK_SAMPLINGLOOP_H

#include <quillmarsh/basetools/time.h>
#include <quillmarsh/framework/humaninterfacedevice.h>

namespace quillmarsh
{

/// Samples a device and holds its rate, pass by pass. Sampling thread only.
///
/// The rate limit is a feedback loop: each pass sleeps, and the sleep is corrected by how far the averaged length of the
/// passes is off the wanted one. Sleeps have whole milliseconds, so at high rates it is the correction that makes passes
/// with a sleep and passes without one add up to the rate. Where that does not get there, a look at the samples of the
/// last two seconds starts the loop again from the ideal sleep.
class HumanInterfaceDevice::SamplingLoop : NoCopy
{
public:
    explicit SamplingLoop(HumanInterfaceDevice &device);

    /// False when the device cannot be sampled any more.
    bool DoPass();
    void End();

private:
    void CheckRate(double passStart);
    void TakeOverRate();
    bool Sample();
    void Fail(string const &reason);
    void Sleep();
    void UpdateAverages(double samplingTime);

    HumanInterfaceDevice &device_;
    HighResolutionTimer timer_;
    double targetPeriod_ = 1.0;
    double averagePeriod_ = 1.0;
    double smoothing_ = 1.0;
    double complement_ = 0.0;
    double sleepTime_ = 0.0;
    double samplesSinceCheck_ = 0.0;
    double lastCheck_ = 0.0;
};

} // namespace quillmarsh

#endif
