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
    EXPECT_DOUBLE_EQ(stats.GetFrameRateSmooth(), 4 / 0.875);
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
    host::KernelRequest const requests[] = {host::VideoRequest{0, "", VideoConfig(false)}, host::VSyncRequest()};
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
    auto const set = [this](double smoothing, double history, double stabilization)
    {
        stats.SetSmoothingInterval(smoothing);
        stats.SetHistoryInterval(history);
        stats.SetMinMaxStabilizationPeriod(stabilization);
        return std::tuple(stats.GetSmoothingInterval(), stats.GetHistoryInterval(),
                          stats.GetMinMaxStabilizationPeriod());
    };
    EXPECT_EQ(set(100, 0, -1), std::tuple(10, 0.001, 0));
    double const notANumber = std::nan("");
    EXPECT_EQ(set(notANumber, notANumber, notANumber), std::tuple(1, 1, 2));
}

} // namespace
} // namespace quillmarsh
