#include <quillmarsh/framework/framestatisticscollector.h>

#include "tests/support/test_kernel.h"

#include <gtest/gtest.h>

#include <cmath>

namespace quillmarsh
{
namespace
{

class FrameStatistics : public testing::Test
{
protected:
    void RunFrames(unsigned int number, double frameTime)
    {
        for (unsigned int i = 0; i < number; ++i)
            kernel.RunFrame(frameTime);
    }

    tests::TestKernel kernel;
    FrameStatisticsCollector stats;
};

TEST_F(FrameStatistics, HistoryCountsTheFramesOfItsInterval)
{
    RunFrames(1, 0.125);
    EXPECT_DOUBLE_EQ(stats.GetFrameRateImmediate(), 8);
    EXPECT_EQ(stats.GetFrameRateSmooth(), 0);
    RunFrames(7, 0.125);
    EXPECT_DOUBLE_EQ(stats.GetFrameRateSmooth(), 8);
    RunFrames(8, 0.25);
    EXPECT_DOUBLE_EQ(stats.GetFrameRateSmooth(), 4);
    RunFrames(1, 0.125);
    // Time stamps of the last second: 3 frames at 0.25, the newest at 0.125.
    EXPECT_DOUBLE_EQ(stats.GetFrameRateSmooth(), 4 / 0.875 * 0.875 / 0.875 * (4 - 0.0) / 4);
    RunFrames(1, 20);
    EXPECT_EQ(stats.GetFrameRateSmooth(), 0);
    EXPECT_EQ(stats.GetTotalFrameCount(), 18u);
    EXPECT_DOUBLE_EQ(stats.GetTotalFrameTime(), 23.125);
}

TEST_F(FrameStatistics, PeriodsAreSmoothedInBetween)
{
    stats.EnableHistoryEvaluation(false);
    RunFrames(1, 0.25);
    EXPECT_DOUBLE_EQ(stats.GetFrameRateSmooth(), 4);
    RunFrames(1, 0.125);
    EXPECT_DOUBLE_EQ(stats.GetFrameRateSmooth(), 0.75 * 4 + 0.25 * 8);
    RunFrames(1, 0.625);
    EXPECT_DOUBLE_EQ(stats.GetFrameRateSmooth(), 3);
    RunFrames(1, 0.25);
    double const weight = static_cast<float>(2.0 / 3.0);
    EXPECT_DOUBLE_EQ(stats.GetFrameRateSmooth(), weight * 3 + (1 - weight) * 4);
}

TEST_F(FrameStatistics, ExtremesWaitForTheStabilization)
{
    RunFrames(8, 0.25);
    EXPECT_EQ(stats.GetFrameRateImmediateMin(), 0);
    EXPECT_EQ(stats.GetFrameRateImmediateMax(), 0);
    RunFrames(1, 0.25);
    EXPECT_DOUBLE_EQ(stats.GetFrameRateImmediateMin(), 4);
    EXPECT_DOUBLE_EQ(stats.GetFrameRateSmoothMin(), 4);
    RunFrames(1, 0.5);
    EXPECT_DOUBLE_EQ(stats.GetFrameRateImmediateMin(), 2);
    EXPECT_DOUBLE_EQ(stats.GetFrameRateImmediateMax(), 4);
    RunFrames(1, 0);
    EXPECT_EQ(stats.GetFrameRateImmediate(), 0);
    EXPECT_EQ(stats.GetFrameRateImmediateMin(), 0);
    EXPECT_DOUBLE_EQ(stats.GetFrameRateSmoothMax(), 4);
}

TEST_F(FrameStatistics, ReconfigurationsReset)
{
    host::KernelRequest const requests[] = {host::VideoRequest(), host::VSyncRequest()};
    for (host::KernelRequest const &request : requests)
    {
        RunFrames(20, 0.25);
        kernel.Request(request);
        kernel.CarryOutRequests();
        EXPECT_EQ(stats.GetTotalFrameCount(), 0u);
        EXPECT_EQ(stats.GetFrameRateSmooth(), 0);
        EXPECT_EQ(stats.GetFrameRateImmediateMax(), 0);
    }
}

TEST_F(FrameStatistics, SettingsAreClamped)
{
    stats.SetSmoothingInterval(100);
    stats.SetHistoryInterval(0);
    stats.SetMinMaxStabilizationPeriod(-1);
    EXPECT_EQ(stats.GetSmoothingInterval(), 10);
    EXPECT_EQ(stats.GetHistoryInterval(), 0.001);
    EXPECT_EQ(stats.GetMinMaxStabilizationPeriod(), 0);

    double const notANumber = std::nan("");
    stats.SetSmoothingInterval(notANumber);
    stats.SetHistoryInterval(notANumber);
    stats.SetMinMaxStabilizationPeriod(notANumber);
    EXPECT_EQ(stats.GetSmoothingInterval(), 1);
    EXPECT_EQ(stats.GetHistoryInterval(), 1);
    EXPECT_EQ(stats.GetMinMaxStabilizationPeriod(), 2);
}

TEST_F(FrameStatistics, RegistersItself)
{
    {
        FrameStatisticsCollector const second;
        EXPECT_EQ(kernel.GetNumFrameObservers(), 2u);
        EXPECT_EQ(kernel.GetNumReconfigObservers(), 2u);
    }
    EXPECT_EQ(kernel.GetNumFrameObservers(), 1u);
    EXPECT_EQ(kernel.GetNumReconfigObservers(), 1u);
}

} // namespace
} // namespace quillmarsh
