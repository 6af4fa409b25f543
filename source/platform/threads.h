// Seam: threads, events and named mutexes, by handles that behave the same on every system.
#ifndef QUILLMARSH_SOURCE_PLATFORM_THREADS_H
#define QUILLMARSH_SOURCE_PLATFORM_THREADS_H

#include <quillmarsh/platform/program.h>

#include <cstddef>

namespace quillmarsh::platform
{

enum class eWaitResult
{
    e_signaled,
    e_timedOut,
    e_failed
};

constexpr unsigned int s_waitInfinite = 0xffffffffu;

/// @name Critical sections, in memory of the caller's that is aligned for a pointer
/// @{
constexpr std::size_t s_criticalSectionSize = 48;
void MakeCriticalSection(void *section);
void DestroyCriticalSection(void *section);
void EnterCriticalSection(void *section);
bool TryEnterCriticalSection(void *section);
void LeaveCriticalSection(void *section);
/// @}

/// @name Named objects
/// Events and mutexes share one name space. The prefixes "Local\" and "Session\" name the objects of one user, as no
/// prefix does, and "Global\" those of all. A backslash behind the prefix, or more than 260 characters, is a failure.
/// An object is gone with its last handle, whether that was closed or its process ended.
/// @{

/// Null on failure. With the name of an event that is there already, that event, which keeps its ways.
HANDLE CreateEventObject(bool initiallySignaled, bool manualReset, string const &name);
bool SignalEvent(HANDLE event);
bool ClearEvent(HANDLE event);

/// A mutex that nobody had before. Null when the name is in use, and on failure.
HANDLE CreateNewMutex(string const &name);

/// @}

/// Waits for an event or for the end of a thread.
eWaitResult WaitForObject(HANDLE object, unsigned int milliseconds);

/// Closes a handle of any kind that these functions made. A running thread runs on.
void CloseObject(HANDLE object);

/// @name Threads
/// @{

using ThreadFunction = unsigned int (*)(void *argument);

/// Starts a thread; null on failure.
HANDLE StartThread(ThreadFunction function, void *argument, unsigned int &threadId);
void SleepMilliseconds(unsigned int milliseconds);
/// Between the two, sleeps of the calling thread end as close to their time as the system can do it.
void BeginPreciseSleep();
void EndPreciseSleep();

/// False for a level other than -15, -2 to 2 and 15, and where the system refuses.
bool SetThreadPriorityLevel(HANDLE thread, int level);
int GetThreadPriorityLevel(HANDLE thread);
bool DisableThreadPriorityBoost(HANDLE thread, bool disable);
bool IsThreadPriorityBoostDisabled(HANDLE thread);

/// Stops a thread where it stands, at once; nests. False when it has ended.
bool SuspendThreadObject(HANDLE thread);
bool ResumeThreadObject(HANDLE thread);

/// @}

} // namespace quillmarsh::platform

#endif
