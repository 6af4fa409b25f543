#include <quillmarsh/framework/framestatisticscollector.h>

#include <quillmarsh/framework/kernel.h>

#include "source/basetools/clamping.h"

#include <algorithm>
#include <limits>

namespace quillmarsh
{
namespace
{

constexpr double s_minInterval = 0.001;
constexpr double s_maxInterval = 10;
constexpr double s_defaultInterval = 1;
constexpr double s_defaultStabilizationPeriod = 2;

/// Start value of minima: the largest float, which no rate reaches.
constexpr double s_startMin = static_cast<double>(std::numeric_limits<float>::max());

double GetMinOrZero(double min)
{
    return min == s_startMin ? 0 : min;
}

} // namespace

FrameStatisticsCollector::FrameStatisticsCollector()
{
    SetMinMaxStabilizationPeriod(s_defaultStabilizationPeriod);
    SetHistoryInterval(s_defaultInterval);
    SetSmoothingInterval(s_defaultInterval);
    EnableHistoryEvaluation(true);
    Reset();
    Kernel::Instance().AddFrameObserver(this);
    Kernel::Instance().AddReconfigObserver(this);
}

FrameStatisticsCollector::~FrameStatisticsCollector() = default;

void FrameStatisticsCollector::SetMinMaxStabilizationPeriod(double seconds)
{
    minMaxStabilizationPeriod_ = RaiseSetting(seconds, 0.0, s_defaultStabilizationPeriod);
}

void FrameStatisticsCollector::SetHistoryInterval(double seconds)
{
    historyInterval_ = ClampSetting(seconds, s_minInterval, s_maxInterval, s_defaultInterval);
}

void FrameStatisticsCollector::SetSmoothingInterval(double seconds)
{
    smoothingInterval_ = ClampSetting(seconds, s_minInterval, s_maxInterval, s_defaultInterval);
}

void FrameStatisticsCollector::EnableHistoryEvaluation(bool enable)
{
    isHistoryEvaluationEnabled_ = enable;
}

void FrameStatisticsCollector::Reset()
{
    history_.clear();
    smoothingFrameCount_ = 0;
    smoothingTime_ = 0;
    totalFrameCount_ = 0;
    totalFrameTime_ = 0;
    frameRateImmediate_ = 0;
    frameRateImmediateMin_ = s_startMin;
    frameRateImmediateMax_ = 0;
    frameRateSmooth_ = 0;
    frameRateSmoothMin_ = s_startMin;
    frameRateSmoothMax_ = 0;
}

double FrameStatisticsCollector::GetFrameRateImmediateMin() const
{
    return GetMinOrZero(frameRateImmediateMin_);
}

double FrameStatisticsCollector::GetFrameRateSmoothMin() const
{
    return GetMinOrZero(frameRateSmoothMin_);
}

void FrameStatisticsCollector::OnFrame(bool &, unsigned int, double frameTime)
{
    ++totalFrameCount_;
    totalFrameTime_ += frameTime;
    frameRateImmediate_ = frameTime > 0 ? 1 / frameTime : 0;
    if (isHistoryEvaluationEnabled_)
        EvaluateHistory();
    else
        EvaluatePeriod(frameTime);

    if (totalFrameTime_ > minMaxStabilizationPeriod_)
    {
        frameRateImmediateMin_ = std::min(frameRateImmediateMin_, frameRateImmediate_);
        frameRateImmediateMax_ = std::max(frameRateImmediateMax_, frameRateImmediate_);
        frameRateSmoothMin_ = std::min(frameRateSmoothMin_, frameRateSmooth_);
        frameRateSmoothMax_ = std::max(frameRateSmoothMax_, frameRateSmooth_);
    }
}

void FrameStatisticsCollector::OnVideoReconfig()
{
    Reset();
}

void FrameStatisticsCollector::OnVSyncReconfig(bool)
{
    Reset();
}

void FrameStatisticsCollector::EvaluateHistory()
{
    history_.push_back(totalFrameTime_);
    while (totalFrameTime_ - history_.front() > historyInterval_)
        history_.pop_front();
    double const span = totalFrameTime_ - history_.front();
    frameRateSmooth_ = span > 0 ? static_cast<double>(history_.size() - 1) / span : 0;
}

/// A whole period gives its mean rate. Between the ends of periods, each frame shifts the rate by its part of a second.
void FrameStatisticsCollector::EvaluatePeriod(double frameTime)
{
    ++smoothingFrameCount_;
    smoothingTime_ += frameTime;
    if (smoothingTime_ >= smoothingInterval_)
    {
        frameRateSmooth_ = smoothingFrameCount_ / smoothingTime_;
        smoothingFrameCount_ = 0;
        smoothingTime_ = 0;
    }
    else if (frameRateSmooth_ > 0)
    {
        double const weight = static_cast<float>((frameRateSmooth_ - 1) / frameRateSmooth_);
        frameRateSmooth_ = weight * frameRateSmooth_ + (1 - weight) * frameRateImmediate_;
    }
    else
        frameRateSmooth_ = frameRateImmediate_;
}

} // namespace quillmarsh
