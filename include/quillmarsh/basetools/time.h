// Local date and time with their text forms, and clocks for intervals and for the processor time of a thread.
#ifndef QUILLMARSH_BASETOOLS_TIME_H
#define QUILLMARSH_BASETOOLS_TIME_H

#include <quillmarsh/platform/types.h>

#include <cstdint>

namespace quillmarsh
{

/// Date and time of day, all in local time. Any thread.
namespace time
{

/// Characters that stand between the parts of a date, the parts of a time, and date and time: "-", ":", "/".
class DateTimeSeparators
{
public:
    constexpr DateTimeSeparators() = default;
    constexpr DateTimeSeparators(char date, char time, char dateToTime) { Set(date, time, dateToTime); }

    /// Replaces all three.
    constexpr void Set(char date, char time, char dateToTime)
    {
        date_ = date;
        time_ = time;
        dateToTime_ = dateToTime;
    }

    constexpr char GetDateSep() const { return date_; }
    constexpr char GetTimeSep() const { return time_; }
    constexpr char GetDTSep() const { return dateToTime_; }

private:
    char date_ = '-';
    char time_ = ':';
    char dateToTime_ = '/';
};

/// @name Values
/// Month and day count from 1. The day of the week counts from 0, which is Sunday.
/// @{
QUILLMARSH_API void GetSystemDate(unsigned int &year, unsigned int &month, unsigned int &day, unsigned int &dayOfWeek);
QUILLMARSH_API void GetSystemTime(unsigned int &hour, unsigned int &minute, unsigned int &second,
                                  unsigned int &millisecond);
/// Gives date and time of the same moment.
QUILLMARSH_API void GetSystemDateTime(unsigned int &year, unsigned int &month, unsigned int &day,
                                      unsigned int &dayOfWeek, unsigned int &hour, unsigned int &minute,
                                      unsigned int &second, unsigned int &millisecond);
/// @}

/// @name Text
/// Each replaces the output. A text with all options reads 2002-07-04-thu/09:05:03:007.
/// @{

/// Gives the date. `shortYear` writes the last two digits of the year, `withDayName` appends the day of the week.
QUILLMARSH_API void GetFormattedSystemDate(string &text, bool shortYear = false, bool withDayName = false,
                                           DateTimeSeparators const &separators = DateTimeSeparators());
/// Gives the time of day, with `withMilliseconds` to the millisecond.
QUILLMARSH_API void GetFormattedSystemTime(string &text, bool withMilliseconds = false,
                                           DateTimeSeparators const &separators = DateTimeSeparators());
/// Gives date and time of the same moment, likewise.
QUILLMARSH_API void GetFormattedSystemDateTime(string &text, bool shortYear = false, bool withDayName = false,
                                               bool withMilliseconds = false,
                                               DateTimeSeparators const &separators = DateTimeSeparators());
/// @}

} // namespace time

/// Measures intervals with the system's finest steady clock. Belongs to one thread.
class QUILLMARSH_API HighResolutionTimer
{
public:
    /// Starts the timer. Throws SystemResourceException when the system has no such clock.
    HighResolutionTimer();

    /// Starts again at 0.
    void Start();

    /// Seconds since the start. The timer goes on.
    double GetElapsedSeconds() const;
    /// Low 32 bits of the ticks since the start.
    unsigned int GetElapsedTicks() const;
    /// Ticks since the start, as low and high 32 bits.
    void GetElapsedTicks(unsigned int &low, unsigned int &high) const;
    /// Low 32 bits of the clock's frequency.
    unsigned int GetTicksPerSecond() const;

    /// Gives the clock's frequency and the length of a tick; either pointer may be null. Returns false, and gives
    /// zeros, when the system has no such clock.
    static bool GetPerformanceCounterInfo(LARGE_INTEGER *ticksPerSecond, double *secondsPerTick);

private:
    std::int64_t startCounter_ = 0;
    std::int64_t ticksPerSecond_ = 0;
    double secondsPerTick_ = 0;
};

/// Measures the processor time of the thread that started it. Only that thread may use it.
class QUILLMARSH_API ThreadTimer
{
public:
    /// Starts the timer.
    ThreadTimer();

    /// Starts again at 0.
    void Start();

    /// Seconds of processor time since the start. They are the sum of the time in the system and of the time in the
    /// program; each of these is stored if its pointer is not null.
    double GetElapsedSeconds(double *kernelSeconds = nullptr, double *userSeconds = nullptr) const;

private:
    // In units of 100 nanoseconds.
    std::int64_t kernelTime_ = 0;
    std::int64_t userTime_ = 0;
};

} // namespace quillmarsh

#endif
