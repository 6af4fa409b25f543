// Seam: threads, events and named mutexes, with handles that behave the same on every system.
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

/// @name Critical sections, in memory of the caller with the alignment of a pointer
/// @{
constexpr std::size_t s_criticalSectionSize = 48;
void MakeCriticalSection(void *section);
void DestroyCriticalSection(void *section);
void EnterCriticalSection(void *section);
bool TryEnterCriticalSection(void *section);
void LeaveCriticalSection(void *section);
/// @}

/// @name Named objects
/// Events and mutexes share one name space. A name without a prefix, or with "Local\" or "Session\", is known to one
/// user; a name with "Global\" to all users. A backslash after the prefix, or more than 260 characters, is a failure.
/// An object ends with its last handle, when that is closed or its process ends.
/// @{

/// Creates an event, or opens the one that has this name already; the other parameters have no effect then. Returns
/// null on failure.
HANDLE CreateEventObject(bool initiallySignaled, bool manualReset, string const &name);
bool SignalEvent(HANDLE event);
bool ClearEvent(HANDLE event);

/// Creates a mutex. Returns null on failure, and when the name is in use.
HANDLE CreateNewMutex(string const &name);

/// @}

/// Waits for an event, or for the end of a thread.
eWaitResult WaitForObject(HANDLE object, unsigned int milliseconds);

/// Closes a handle from any of these functions. A running thread continues.
void CloseObject(HANDLE object);

/// @name Threads
/// @{

using ThreadFunction = unsigned int (*)(void *argument);

/// Starts a thread; null on failure.
HANDLE StartThread(ThreadFunction function, void *argument, unsigned int &threadId);
void SleepMilliseconds(unsigned int milliseconds);
/// Between Begin and End, the sleeps of the calling thread are as exact as the system allows.
void BeginPreciseSleep();
void EndPreciseSleep();

/// Sets the priority; false for any level but -15, -2 to 2 and 15, and when the system refuses.
bool SetThreadPriorityLevel(HANDLE thread, int level);
int GetThreadPriorityLevel(HANDLE thread);
bool DisableThreadPriorityBoost(HANDLE thread, bool disable);
bool IsThreadPriorityBoostDisabled(HANDLE thread);

/// Suspends a thread at once; calls can be nested. Returns false when the thread has ended.
bool SuspendThreadObject(HANDLE thread);
bool ResumeThreadObject(HANDLE thread);

/// @}

} // namespace quillmarsh::platform

#endif
