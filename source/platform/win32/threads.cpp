#include "source/platform/threads.h"

#include "source/platform/win32/windows.h"
#include <quillmarsh/basetools/texttools.h>

#include <process.h>

namespace quillmarsh::platform
{
namespace
{

struct ThreadStart
{
    ThreadFunction function;
    void *argument;
};

unsigned int __stdcall RunThreadFunction(void *start)
{
    ThreadStart const call = *AutoPtr<ThreadStart>(static_cast<ThreadStart *>(start));
    return call.function(call.argument);
}

/// Windows knows only one of the two prefixes for objects of one user.
string MakeObjectName(string name)
{
    return EatPrefix(name, "Session\\") ? "Local\\" + name : name;
}

} // namespace

void MakeCriticalSection(void *section)
{
    static_assert(sizeof(CRITICAL_SECTION) <= s_criticalSectionSize && alignof(CRITICAL_SECTION) <= alignof(void *));
    InitializeCriticalSection(static_cast<CRITICAL_SECTION *>(section));
}

void DestroyCriticalSection(void *section)
{
    DeleteCriticalSection(static_cast<CRITICAL_SECTION *>(section));
}

void EnterCriticalSection(void *section)
{
    ::EnterCriticalSection(static_cast<CRITICAL_SECTION *>(section));
}

bool TryEnterCriticalSection(void *section)
{
    return ::TryEnterCriticalSection(static_cast<CRITICAL_SECTION *>(section)) != FALSE;
}

void LeaveCriticalSection(void *section)
{
    ::LeaveCriticalSection(static_cast<CRITICAL_SECTION *>(section));
}

HANDLE CreateEventObject(bool initiallySignaled, bool manualReset, string const &name)
{
    string const systemName = MakeObjectName(name);
    return CreateEventA(nullptr, manualReset, initiallySignaled, name.empty() ? nullptr : systemName.c_str());
}

bool SignalEvent(HANDLE event)
{
    return SetEvent(event) != FALSE;
}

bool ClearEvent(HANDLE event)
{
    return ResetEvent(event) != FALSE;
}

HANDLE CreateNewMutex(string const &name)
{
    string const systemName = MakeObjectName(name);
    SetLastError(ERROR_SUCCESS);
    HANDLE const mutex = CreateMutexA(nullptr, TRUE, systemName.c_str());
    bool const isNew = mutex && GetLastError() != ERROR_ALREADY_EXISTS;
    if (mutex && !isNew)
        CloseHandle(mutex);
    return isNew ? mutex : nullptr;
}

eWaitResult WaitForObject(HANDLE object, unsigned int milliseconds)
{
    switch (WaitForSingleObject(object, milliseconds))
    {
    case WAIT_OBJECT_0:
        return eWaitResult::e_signaled;
    case WAIT_TIMEOUT:
        return eWaitResult::e_timedOut;
    default:
        return eWaitResult::e_failed;
    }
}

void CloseObject(HANDLE object)
{
    if (object)
        CloseHandle(object);
}

HANDLE StartThread(ThreadFunction function, void *argument, unsigned int &threadId)
{
    AutoPtr<ThreadStart> start(new ThreadStart{function, argument});
    auto const handle = _beginthreadex(nullptr, 0, &RunThreadFunction, start.get(), 0, &threadId);
    if (handle != 0)
        static_cast<void>(start.release());
    return reinterpret_cast<HANDLE>(handle);
}

unsigned int GetCurrentThreadNumber()
{
    return GetCurrentThreadId();
}

void SleepMilliseconds(unsigned int milliseconds)
{
    Sleep(milliseconds);
}

void BeginPreciseSleep()
{
    timeBeginPeriod(1);
}

void EndPreciseSleep()
{
    timeEndPeriod(1);
}

bool SetThreadPriorityLevel(HANDLE thread, int level)
{
    return SetThreadPriority(thread, level) != FALSE;
}

int GetThreadPriorityLevel(HANDLE thread)
{
    return GetThreadPriority(thread);
}

bool SetCurrentThreadPriority(int level)
{
    return SetThreadPriority(GetCurrentThread(), level) != FALSE;
}

bool DisableThreadPriorityBoost(HANDLE thread, bool disable)
{
    return SetThreadPriorityBoost(thread, disable) != FALSE;
}

bool IsThreadPriorityBoostDisabled(HANDLE thread)
{
    BOOL isDisabled = FALSE;
    return GetThreadPriorityBoost(thread, &isDisabled) && isDisabled;
}

bool SuspendThreadObject(HANDLE thread)
{
    return SuspendThread(thread) != static_cast<DWORD>(-1);
}

bool ResumeThreadObject(HANDLE thread)
{
    return ResumeThread(thread) != static_cast<DWORD>(-1);
}

} // namespace quillmarsh::platform
