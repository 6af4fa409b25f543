// Work of the sampling thread of a device in each pass.
#ifndef QUILLMARSH_SOURCE_FRAMEWORK_SAMPLINGLOOP_H
#define QUILLMARSH_SOURCE_FRAMEWORK_SAMPLINGLOOP_H

#include <quillmarsh/basetools/time.h>
#include <quillmarsh/framework/humaninterfacedevice.h>

namespace quillmarsh
{

/// Samples a device and holds its rate, pass by pass. Sampling thread only.
///
/// The rate limit is a feedback loop: each pass sleeps, and the sleep is corrected by the difference between the wanted
/// length of a pass and the averaged one. Sleeps have whole milliseconds; at high rates the correction mixes passes
/// with and without a sleep so that they make up the rate. If that fails, a check of the samples of the last two
/// seconds starts the loop again from the ideal sleep.
///
/// With a limit, the weight of a pass in the average is squared: at 250 samples per second it is 1/62500. This keeps a
/// settled rate steady, and costs the first two seconds. The average begins with the first pass, whose sleep always
/// ends a little late, and hardly moves after that. The same error is therefore added to the sleep in every pass, until
/// passes do not sleep at all. At 250 samples per second the first half second brings 12 to 40 times the wanted
/// samples, and the next one and a half seconds bring about half of them. At 50 the rate is usually up to a third too
/// high, but a first sleep that ends very late brings the same burst there. The check after two seconds sets the rate
/// right.
class HumanInterfaceDevice::SamplingLoop : NoCopy
{
public:
    explicit SamplingLoop(HumanInterfaceDevice &device);

    /// Samples once, and sleeps. Returns false when the device cannot be sampled any more.
    bool DoPass();
    /// Sets the averages to 0: no thread samples any more.
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
