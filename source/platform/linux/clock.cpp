#include "source/platform/clock.h"

#include <ctime>
#include <sys/resource.h>

namespace quillmarsh::platform
{

LocalDateTime GetLocalDateTime()
{
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    std::tm local = {};
    localtime_r(&now.tv_sec, &local);

    LocalDateTime result;
    result.year = static_cast<unsigned int>(local.tm_year + 1900);
    result.month = static_cast<unsigned int>(local.tm_mon + 1);
    result.day = static_cast<unsigned int>(local.tm_mday);
    result.dayOfWeek = static_cast<unsigned int>(local.tm_wday);
    result.hour = static_cast<unsigned int>(local.tm_hour);
    result.minute = static_cast<unsigned int>(local.tm_min);
    result.second = static_cast<unsigned int>(local.tm_sec);
    result.millisecond = static_cast<unsigned int>(now.tv_nsec / 1000000);
    return result;
}

std::int64_t ReadPerformanceCounter()
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::int64_t>(now.tv_sec) * 1000000000 + now.tv_nsec;
}

std::int64_t GetPerformanceFrequency()
{
    return 1000000000;
}

void GetCurrentThreadTimes(std::int64_t &kernelTime, std::int64_t &userTime)
{
    rusage usage = {};
    getrusage(RUSAGE_THREAD, &usage);
    auto const inUnits = [](timeval const &value)
    { return (static_cast<std::int64_t>(value.tv_sec) * 1000000 + value.tv_usec) * 10; };
    kernelTime = inUnits(usage.ru_stime);
    userTime = inUnits(usage.ru_utime);
}

} // namespace quillmarsh::platform
