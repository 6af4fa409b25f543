// Frame rate of the running frame loop.
#ifndef QUILLMARSH_FRAMEWORK_FRAMESTATISTICSCOLLECTOR_H
#define QUILLMARSH_FRAMEWORK_FRAMESTATISTICSCOLLECTOR_H

#include <quillmarsh/framework/frameobserver.h>
#include <quillmarsh/framework/reconfigobserver.h>

#include <deque>

namespace quillmarsh
{

/// Measures frame rates in frames per second; times are in seconds.
///
/// It registers itself with the kernel, which exists before it and outlives it. The immediate rate is that of the last
/// frame. The smooth rate is computed from a history of time stamps or, without history evaluation, from periods of the
/// smoothing interval. Frame thread only.
class QUILLMARSH_API FrameStatisticsCollector : public FrameObserver, public ReconfigObserver, NoCopy
{
public:
    FrameStatisticsCollector();
    ~FrameStatisticsCollector() override;

    /// @name Settings
    /// Each getter returns what its setter has stored. NaN counts as the default.
    /// @{

    /// Sets the time after a reset that does not count for minima and maxima; 2 by default, at least 0.
    void SetMinMaxStabilizationPeriod(double seconds);
    double GetMinMaxStabilizationPeriod() const { return minMaxStabilizationPeriod_; }
    /// Sets the length of the history; 1 by default, 0.001 to 10.
    void SetHistoryInterval(double seconds);
    double GetHistoryInterval() const { return historyInterval_; }
    /// Sets the length of a smoothing period; 1 by default, 0.001 to 10.
    void SetSmoothingInterval(double seconds);
    double GetSmoothingInterval() const { return smoothingInterval_; }
    /// Sets whether the smooth rate is computed from the history; true by default.
    void EnableHistoryEvaluation(bool enable);
    bool IsEnabledHistoryEvaluation() const { return isHistoryEvaluationEnabled_; }

    /// @}
    /// @name Statistics
    /// Counted since the last reset. Rates are 0 before the first frame.
    /// @{
    void Reset();
    unsigned int GetTotalFrameCount() const { return totalFrameCount_; }
    double GetTotalFrameTime() const { return totalFrameTime_; }
    double GetFrameRateImmediate() const { return frameRateImmediate_; }
    /// Lowest rate; 0 during the stabilization period.
    double GetFrameRateImmediateMin() const;
    double GetFrameRateImmediateMax() const { return frameRateImmediateMax_; }
    double GetFrameRateSmooth() const { return frameRateSmooth_; }
    /// Lowest rate; 0 during the stabilization period.
    double GetFrameRateSmoothMin() const;
    double GetFrameRateSmoothMax() const { return frameRateSmoothMax_; }
    /// @}

    /// Adds a frame of `frameTime` seconds.
    void OnFrame(bool &removeObserver, unsigned int frameNumber, double frameTime) override;
    /// Resets: a new configuration makes the old rates meaningless.
    void OnVideoReconfig() override;
    /// Resets, likewise.
    void OnVSyncReconfig(bool enabled) override;

private:
    void EvaluateHistory();
    void EvaluatePeriod(double frameTime);

    double minMaxStabilizationPeriod_ = 0;
    double historyInterval_ = 0;
    double smoothingInterval_ = 0;
    bool isHistoryEvaluationEnabled_ = true;
    std::deque<double> history_;
    unsigned int smoothingFrameCount_ = 0;
    double smoothingTime_ = 0;
    unsigned int totalFrameCount_ = 0;
    double totalFrameTime_ = 0;
    double frameRateImmediate_ = 0;
    double frameRateImmediateMin_ = 0;
    double frameRateImmediateMax_ = 0;
    double frameRateSmooth_ = 0;
    double frameRateSmoothMin_ = 0;
    double frameRateSmoothMax_ = 0;
};

} // namespace quillmarsh

#endif
