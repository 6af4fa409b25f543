#include <quillmarsh/basetools/time.h>

#include "source/basetools/timetext.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <ctime>
#include <thread>

namespace quillmarsh
{
namespace
{

using time::DateTimeSeparators;

constexpr platform::LocalDateTime s_moment{2002, 7, 4, 4, 9, 5, 3, 7};

TEST(TimeText, HasTheFormsThatItsFlagsAskFor)
{
    DateTimeSeparators separators;
    EXPECT_EQ(time::FormatDate(s_moment, false, true, separators), "2002-07-04-thu");
    EXPECT_EQ(time::FormatDate(s_moment, true, false, separators), "02-07-04");
    EXPECT_EQ(time::FormatTime(s_moment, true, separators), "09:05:03:007");
    separators.Set('.', '_', 'T');
    EXPECT_EQ(time::FormatDate(s_moment, false, false, separators), "2002.07.04");
    EXPECT_EQ(time::FormatTime(s_moment, false, separators), "09_05_03");

    platform::LocalDateTime odd = s_moment;
    odd.dayOfWeek = 7;
    odd.year = 800;
    EXPECT_EQ(time::FormatDate(odd, false, true, {}), "0800-07-04-???");
    EXPECT_EQ(time::FormatDate(odd, true, false, {}), "00-07-04");
}

TEST(TimeText, GivesLocalTime)
{
    DateTimeSeparators const separators('/', '.', ' ');
    platform::LocalDateTime now{};
    string text;
    std::time_t before = 0;
    // Both readings must lie in one second.
    do
    {
        before = std::time(nullptr);
        time::GetFormattedSystemDateTime(text, false, true, false, separators);
        time::GetSystemDateTime(now.year, now.month, now.day, now.dayOfWeek, now.hour, now.minute, now.second,
                                now.millisecond);
    } while (std::time(nullptr) != before || now.millisecond < 10);
    EXPECT_EQ(text, time::FormatDate(now, false, true, separators) + " " + time::FormatTime(now, false, separators));
    std::tm const wanted = *std::localtime(&before);
    EXPECT_EQ(std::tuple(now.year, now.month, now.day, now.dayOfWeek, now.hour, now.minute, now.second),
              std::tuple(wanted.tm_year + 1900, wanted.tm_mon + 1, wanted.tm_mday, wanted.tm_wday, wanted.tm_hour,
                         wanted.tm_min, wanted.tm_sec));
    EXPECT_LT(now.millisecond, 1000u);
}

TEST(HighResolutionTimer, MeasuresAsTheSteadyClockDoes)
{
    using Seconds = std::chrono::duration<double>;
    auto const outerStart = std::chrono::steady_clock::now();
    HighResolutionTimer timer;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    double const seconds = timer.GetElapsedSeconds();
    unsigned int low = 0, high = 1;
    timer.GetElapsedTicks(low, high);
    auto const outerEnd = std::chrono::steady_clock::now();

    EXPECT_GE(seconds, 0.02 * 0.999);
    EXPECT_LE(seconds, Seconds(outerEnd - outerStart).count() * 1.001);
    EXPECT_EQ(high, 0u);
    EXPECT_GE(low / static_cast<double>(timer.GetTicksPerSecond()), seconds);
    EXPECT_GE(timer.GetElapsedTicks(), low);
    timer.Start();
    EXPECT_LT(timer.GetElapsedSeconds(), seconds);
}

TEST(ThreadTimer, CountsWorkAndNotWaiting)
{
    ThreadTimer timer;
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_LT(timer.GetElapsedSeconds(), 0.08);

    timer.Start();
    double volatile sink = 0;
    while (timer.GetElapsedSeconds() < 0.05)
    {
        for (int i = 0; i < 1000; ++i)
            sink = std::sqrt(sink + i);
    }
    double kernel = -1, user = -1;
    double const sum = timer.GetElapsedSeconds(&kernel, &user);
    EXPECT_DOUBLE_EQ(sum, kernel + user);
    EXPECT_GE(kernel, 0.0);
    EXPECT_GT(user, 0.0);
}

} // namespace
} // namespace quillmarsh
