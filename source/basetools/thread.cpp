#include <quillmarsh/basetools/thread.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/texttools.h>

#include "source/platform/messagequeue.h"
#include "source/platform/threads.h"

namespace quillmarsh
{

Thread::Thread() = default;

Thread::~Thread()
{
    QUILLMARSH_VERIFY(!IsRunning(), "Destroying thread-object while thread is still executing: ThreadID = " +
                                        MakeString(GetThreadID()));
    CloseOwnedHandle();
}

void Thread::Run()
{
    QUILLMARSH_VERIFY(!IsRunning(), string("Thread is already running."));
    if (IsRunning())
        return;
    CloseOwnedHandle();

    if (!exitEvent_.Reset())
        QUILLMARSH_THROW(SystemResourceException, "Failed to reset exit-signal.");
    continue_.store(true, std::memory_order_release);

    {
        std::lock_guard const lock(storesHandle_);
        unsigned int threadID = 0;
        ownedHandle_ = platform::StartThread(&WorkFunctionMapper, this, threadID);
        if (!ownedHandle_)
            QUILLMARSH_THROW(SystemResourceException, "_beginthreadex() failed.");
        threadID_ = threadID;
        handle_ = ownedHandle_;
    }

    SetPriority(priority_);
    EnablePriorityBoost(priorityBoostEnabled_);
}

unsigned int Thread::WorkFunctionMapper(void *object)
{
    Thread *const thread = static_cast<Thread *>(object);
    // Waits for Run(). std::atomic::wait() would be shorter, but with GCC 12 it can miss its notification on Windows.
    thread->storesHandle_.lock();
    thread->storesHandle_.unlock();

    unsigned int const exitCode = thread->DoWork();
    thread->lastExitCode_ = exitCode;
    thread->threadID_ = 0;
    // The last access: a thread that finds the handle cleared may destroy the object.
    thread->handle_ = nullptr;
    return exitCode;
}

void Thread::CloseOwnedHandle()
{
    if (ownedHandle_)
        platform::CloseObject(ownedHandle_);
    ownedHandle_ = nullptr;
}

void Thread::SetPriority(int priority)
{
    priority_ = priority;
    if (!IsRunning())
        return;
    platform::SetThreadPriorityLevel(ownedHandle_, priority);
    priority_ = platform::GetThreadPriorityLevel(ownedHandle_);
}

void Thread::EnablePriorityBoost(bool enable)
{
    priorityBoostEnabled_ = enable;
    if (!IsRunning())
        return;
    platform::DisableThreadPriorityBoost(ownedHandle_, !enable);
    priorityBoostEnabled_ = !platform::IsThreadPriorityBoostDisabled(ownedHandle_);
}

void Thread::SignalExit()
{
    if (!IsRunning())
        return;
    continue_.store(false, std::memory_order_release);
    exitEvent_.Set();
}

void Thread::WaitExit(bool closeHandle)
{
    // Not by the handle that the work clears: its thread still has a last step to do then.
    if (!ownedHandle_)
        return;
    platform::WaitForObject(ownedHandle_, platform::s_waitInfinite);
    if (closeHandle)
        CloseOwnedHandle();
}

void Thread::WaitReady()
{
    readyEvent_.WaitInfinite();
}

bool Thread::Suspend()
{
    bool const isRunning = IsRunning();
    QUILLMARSH_VERIFY(isRunning, string("Thread is not running."));
    return isRunning && platform::SuspendThreadObject(ownedHandle_);
}

bool Thread::Resume()
{
    bool const isRunning = IsRunning();
    QUILLMARSH_VERIFY(isRunning, string("Thread is not running."));
    return isRunning && platform::ResumeThreadObject(ownedHandle_);
}

bool Thread::PostStandardMessage(unsigned int message, unsigned int wParam, long lParam)
{
    return IsRunning() && platform::PostMessageToThread(GetThreadID(), {nullptr, message, wParam, lParam});
}

bool Thread::PostStandardNullMessage()
{
    return PostStandardMessage(platform::s_messageNull, 0, 0);
}

bool Thread::PostStandardQuitMessage()
{
    return PostStandardMessage(platform::s_messageQuit, 0, 0);
}

bool Thread::WaitMessageQueueReady(unsigned int retries, unsigned int sleepMilliseconds)
{
    for (unsigned int failed = 0; IsRunning();)
    {
        if (PostStandardNullMessage())
            return true;
        if (++failed == retries)
            return false;
        platform::SleepMilliseconds(sleepMilliseconds);
    }
    return false;
}

bool Thread::IsExitSignaled()
{
    bool timedOut = false;
    return exitEvent_.Wait(0, timedOut) && !timedOut;
}

void Thread::WaitExitSignal()
{
    exitEvent_.WaitInfinite();
}

void Thread::SignalReady()
{
    readyEvent_.Set();
}

} // namespace quillmarsh
