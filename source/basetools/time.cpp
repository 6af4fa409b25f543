#include <quillmarsh/basetools/time.h>

#include <quillmarsh/basetools/exception.h>

#include "source/basetools/timetext.h"
#include "source/platform/clock.h"

#include <cstring>

namespace quillmarsh
{
namespace time
{
namespace
{

constexpr char const *s_dayNames[] = {"sun", "mon", "tue", "wed", "thu", "fri", "sat"};

void AppendDigits(string &text, unsigned int value, std::size_t width)
{
    string const digits = std::to_string(value);
    if (digits.size() < width)
        text.append(width - digits.size(), '0');
    text += digits;
}

} // namespace

string FormatDate(platform::LocalDateTime const &moment, bool shortYear, bool withDayName,
                  DateTimeSeparators const &separators)
{
    string text;
    if (shortYear)
        AppendDigits(text, moment.year % 100, 2);
    else
        AppendDigits(text, moment.year, 4);
    text += separators.GetDateSep();
    AppendDigits(text, moment.month, 2);
    text += separators.GetDateSep();
    AppendDigits(text, moment.day, 2);
    if (withDayName)
    {
        text += separators.GetDateSep();
        text += moment.dayOfWeek < std::size(s_dayNames) ? s_dayNames[moment.dayOfWeek] : "???";
    }
    return text;
}

string FormatTime(platform::LocalDateTime const &moment, bool withMilliseconds, DateTimeSeparators const &separators)
{
    string text;
    AppendDigits(text, moment.hour, 2);
    text += separators.GetTimeSep();
    AppendDigits(text, moment.minute, 2);
    text += separators.GetTimeSep();
    AppendDigits(text, moment.second, 2);
    if (withMilliseconds)
    {
        text += separators.GetTimeSep();
        AppendDigits(text, moment.millisecond, 3);
    }
    return text;
}

void GetSystemDate(unsigned int &year, unsigned int &month, unsigned int &day, unsigned int &dayOfWeek)
{
    platform::LocalDateTime const now = platform::GetLocalDateTime();
    year = now.year;
    month = now.month;
    day = now.day;
    dayOfWeek = now.dayOfWeek;
}

void GetSystemTime(unsigned int &hour, unsigned int &minute, unsigned int &second, unsigned int &millisecond)
{
    platform::LocalDateTime const now = platform::GetLocalDateTime();
    hour = now.hour;
    minute = now.minute;
    second = now.second;
    millisecond = now.millisecond;
}

void GetSystemDateTime(unsigned int &year, unsigned int &month, unsigned int &day, unsigned int &dayOfWeek,
                       unsigned int &hour, unsigned int &minute, unsigned int &second, unsigned int &millisecond)
{
    platform::LocalDateTime const now = platform::GetLocalDateTime();
    year = now.year;
    month = now.month;
    day = now.day;
    dayOfWeek = now.dayOfWeek;
    hour = now.hour;
    minute = now.minute;
    second = now.second;
    millisecond = now.millisecond;
}

void GetFormattedSystemDate(string &text, bool shortYear, bool withDayName, DateTimeSeparators const &separators)
{
    text = FormatDate(platform::GetLocalDateTime(), shortYear, withDayName, separators);
}

void GetFormattedSystemTime(string &text, bool withMilliseconds, DateTimeSeparators const &separators)
{
    text = FormatTime(platform::GetLocalDateTime(), withMilliseconds, separators);
}

void GetFormattedSystemDateTime(string &text, bool shortYear, bool withDayName, bool withMilliseconds,
                                DateTimeSeparators const &separators)
{
    platform::LocalDateTime const now = platform::GetLocalDateTime();
    text = FormatDate(now, shortYear, withDayName, separators) + separators.GetDTSep() +
           FormatTime(now, withMilliseconds, separators);
}

} // namespace time

HighResolutionTimer::HighResolutionTimer()
{
    if (!GetPerformanceCounterInfo(nullptr, &secondsPerTick_))
        QUILLMARSH_THROW(SystemResourceException, "Hardware does not support high-resolution performance counter.");
    ticksPerSecond_ = platform::GetPerformanceFrequency();
    Start();
}

void HighResolutionTimer::Start()
{
    startCounter_ = platform::ReadPerformanceCounter();
}

double HighResolutionTimer::GetElapsedSeconds() const
{
    return static_cast<double>(platform::ReadPerformanceCounter() - startCounter_) * secondsPerTick_;
}

unsigned int HighResolutionTimer::GetElapsedTicks() const
{
    return static_cast<unsigned int>(platform::ReadPerformanceCounter() - startCounter_);
}

void HighResolutionTimer::GetElapsedTicks(unsigned int &low, unsigned int &high) const
{
    std::uint64_t const ticks = static_cast<std::uint64_t>(platform::ReadPerformanceCounter() - startCounter_);
    low = static_cast<unsigned int>(ticks);
    high = static_cast<unsigned int>(ticks >> 32);
}

unsigned int HighResolutionTimer::GetTicksPerSecond() const
{
    return static_cast<unsigned int>(ticksPerSecond_);
}

bool HighResolutionTimer::GetPerformanceCounterInfo(LARGE_INTEGER *ticksPerSecond, double *secondsPerTick)
{
    std::int64_t const frequency = platform::GetPerformanceFrequency();
    std::int64_t const stored = frequency > 0 ? frequency : 0;
    // As bytes: the record is known to the system's own header only.
    if (ticksPerSecond)
        std::memcpy(static_cast<void *>(ticksPerSecond), &stored, sizeof(stored));
    if (secondsPerTick)
        *secondsPerTick = stored > 0 ? 1.0 / static_cast<double>(stored) : 0.0;
    return stored > 0;
}

ThreadTimer::ThreadTimer()
{
    Start();
}

void ThreadTimer::Start()
{
    platform::GetCurrentThreadTimes(kernelTime_, userTime_);
}

double ThreadTimer::GetElapsedSeconds(double *kernelSeconds, double *userSeconds) const
{
    std::int64_t kernelNow = 0;
    std::int64_t userNow = 0;
    platform::GetCurrentThreadTimes(kernelNow, userNow);

    constexpr double unitsPerSecond = 1e7;
    double const kernel = static_cast<double>(kernelNow - kernelTime_) / unitsPerSecond;
    double const user = static_cast<double>(userNow - userTime_) / unitsPerSecond;
    if (kernelSeconds)
        *kernelSeconds = kernel;
    if (userSeconds)
        *userSeconds = user;
    return kernel + user;
}

} // namespace quillmarsh
