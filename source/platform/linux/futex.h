// Waits for a change of a 32-bit word, in one process or between processes.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_FUTEX_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_FUTEX_H

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <ctime>
#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace quillmarsh::platform
{

using FutexWord = std::atomic<std::uint32_t>;
static_assert(FutexWord::is_always_lock_free && sizeof(FutexWord) == 4);

/// Returns the time of the steady clock `milliseconds` from now.
inline timespec MakeDeadline(unsigned int milliseconds)
{
    timespec deadline{};
    clock_gettime(CLOCK_MONOTONIC, &deadline);
    deadline.tv_sec += static_cast<time_t>(milliseconds / 1000);
    deadline.tv_nsec += static_cast<long>(milliseconds % 1000) * 1000000;
    if (deadline.tv_nsec >= 1000000000)
    {
        deadline.tv_nsec -= 1000000000;
        ++deadline.tv_sec;
    }
    return deadline;
}

/// Sleeps while the word has the expected value; may return early. Returns false when the deadline has passed; null
/// means no deadline. Safe in signal handlers that save errno.
inline bool WaitForChange(FutexWord &word, std::uint32_t expected, timespec const *deadline, bool isShared = false)
{
    int const operation = FUTEX_WAIT_BITSET | (isShared ? 0 : FUTEX_PRIVATE_FLAG);
    long const result = syscall(SYS_futex, &word, operation, expected, deadline, nullptr, FUTEX_BITSET_MATCH_ANY);
    return result == 0 || errno != ETIMEDOUT;
}

/// Wakes all threads that wait for a change of the word. Safe in signal handlers that save errno.
inline void NotifyChange(FutexWord &word, bool isShared = false)
{
    syscall(SYS_futex, &word, FUTEX_WAKE | (isShared ? 0 : FUTEX_PRIVATE_FLAG), INT_MAX);
}

} // namespace quillmarsh::platform

#endif
