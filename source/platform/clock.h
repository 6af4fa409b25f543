// Seam: time of day, steady clock, and a thread's processor time.
#ifndef QUILLMARSH_SOURCE_PLATFORM_CLOCK_H
#define QUILLMARSH_SOURCE_PLATFORM_CLOCK_H

#include <cstdint>

namespace quillmarsh::platform
{

struct LocalDateTime
{
    unsigned int year = 0;
    unsigned int month = 0;
    unsigned int day = 0;
    unsigned int dayOfWeek = 0;
    unsigned int hour = 0;
    unsigned int minute = 0;
    unsigned int second = 0;
    unsigned int millisecond = 0;
};

LocalDateTime GetLocalDateTime();

/// Returns the ticks of the steady clock with the highest resolution. The zero point is arbitrary.
std::int64_t ReadPerformanceCounter();
/// Returns the number of ticks in a second; 0 when the system has no such clock.
std::int64_t GetPerformanceFrequency();

/// Reads the processor time of the calling thread, in units of 100 nanoseconds.
void GetCurrentThreadTimes(std::int64_t &kernelTime, std::int64_t &userTime);

} // namespace quillmarsh::platform

#endif
