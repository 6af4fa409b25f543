// Local date and time with their text forms, and clocks for intervals and for a thread's processor time.
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
/// Month and day count from 1, the day of the week from Sunday, which is 0.
/// @{
QUILLMARSH_API void GetSystemDate(unsigned int &year, unsigned int &month, unsigned int &day, unsigned int &dayOfWeek);
QUILLMARSH_API void GetSystemTime(unsigned int &hour, unsigned int &minute, unsigned int &second,
                                  unsigned int &millisecond);
/// All of one moment.
QUILLMARSH_API void GetSystemDateTime(unsigned int &year, unsigned int &month, unsigned int &day,
                                      unsigned int &dayOfWeek, unsigned int &hour, unsigned int &minute,
                                      unsigned int &second, unsigned int &millisecond);
/// @}

/// @name Text
/// The output is replaced. With everything in it a text reads 2002-07-04-thu/09:05:03:007.
/// @{

/// `shortYear` writes the last two digits of the year, `withDayName` appends the day of the week.
QUILLMARSH_API void GetFormattedSystemDate(string &text, bool shortYear = false, bool withDayName = false,
                                           DateTimeSeparators const &separators = DateTimeSeparators());
QUILLMARSH_API void GetFormattedSystemTime(string &text, bool withMilliseconds = false,
                                           DateTimeSeparators const &separators = DateTimeSeparators());
QUILLMARSH_API void GetFormattedSystemDateTime(string &text, bool shortYear = false, bool withDayName = false,
                                               bool withMilliseconds = false,
                                               DateTimeSeparators const &separators = DateTimeSeparators());
/// @}

} // namespace time

/// Measures intervals with the system's finest steady clock. Belongs to one thread.
class QUILLMARSH_API HighResolutionTimer
{
public:
    /// Starts the timer. Throws SystemResourceException where the system has no such clock.
    HighResolutionTimer();

    /// Measures from now on.
    void Start();

    /// Seconds since the start; reading leaves the timer running.
    double GetElapsedSeconds() const;
    /// Low 32 bits of the ticks since the start.
    unsigned int GetElapsedTicks() const;
    /// Ticks since the start, by halves.
    void GetElapsedTicks(unsigned int &low, unsigned int &high) const;
    /// Low 32 bits.
    unsigned int GetTicksPerSecond() const;

    /// The clock's frequency and step, either pointer may be null. False, and both 0, where there is no such clock.
    static bool GetPerformanceCounterInfo(LARGE_INTEGER *ticksPerSecond, double *secondsPerTick);

private:
    std::int64_t startCounter_ = 0;
    std::int64_t ticksPerSecond_ = 0;
    double secondsPerTick_ = 0;
};

/// Measures the processor time of the thread that started it, which alone may use it.
class QUILLMARSH_API ThreadTimer
{
public:
    /// Starts the timer.
    ThreadTimer();

    /// Measures from now on.
    void Start();

    /// Processor seconds since the start, which are the sum of the system's share and the program's own; each is stored
    /// where its pointer isn't null.
    double GetElapsedSeconds(double *kernelSeconds = nullptr, double *userSeconds = nullptr) const;

private:
    // In units of 100 nanoseconds.
    std::int64_t kernelTime_ = 0;
    std::int64_t userTime_ = 0;
};

} // namespace quillmarsh

#endif
