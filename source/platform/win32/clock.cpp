#include "source/platform/clock.h"

#include "source/platform/win32/windows.h"

namespace quillmarsh::platform
{

LocalDateTime GetLocalDateTime()
{
    SYSTEMTIME now;
    GetLocalTime(&now);

    LocalDateTime result;
    result.year = now.wYear;
    result.month = now.wMonth;
    result.day = now.wDay;
    result.dayOfWeek = now.wDayOfWeek;
    result.hour = now.wHour;
    result.minute = now.wMinute;
    result.second = now.wSecond;
    result.millisecond = now.wMilliseconds;
    return result;
}

std::int64_t ReadPerformanceCounter()
{
    LARGE_INTEGER counter;
    return QueryPerformanceCounter(&counter) ? counter.QuadPart : 0;
}

std::int64_t GetPerformanceFrequency()
{
    static std::int64_t const s_frequency = []
    {
        LARGE_INTEGER frequency;
        LARGE_INTEGER counter;
        bool const hasCounter = QueryPerformanceFrequency(&frequency) && QueryPerformanceCounter(&counter);
        return hasCounter ? frequency.QuadPart : 0;
    }();
    return s_frequency;
}

void GetCurrentThreadTimes(std::int64_t &kernelTime, std::int64_t &userTime)
{
    FILETIME creation;
    FILETIME exit;
    FILETIME kernel{};
    FILETIME user{};
    GetThreadTimes(GetCurrentThread(), &creation, &exit, &kernel, &user);
    auto const inUnits = [](FILETIME const &value)
    { return static_cast<std::int64_t>(static_cast<std::uint64_t>(value.dwHighDateTime) << 32 | value.dwLowDateTime); };
    kernelTime = inUnits(kernel);
    userTime = inUnits(user);
}

} // namespace quillmarsh::platform
