// Timers that call back, on a pool thread or on a window's thread.
#ifndef QUILLMARSH_BASETOOLS_TIMERS_H
#define QUILLMARSH_BASETOOLS_TIMERS_H

#include <quillmarsh/basetools/syncprimitives.h>

#include <atomic>
#include <cstdint>

namespace quillmarsh
{

class WindowAlarmTimer;

/// Receives the calls of an AlarmTimer, on a thread of a pool.
class QUILLMARSH_API AlarmHandler
{
public:
    virtual ~AlarmHandler();

    /// Whether calls can take long, so that they should get a thread of their own. Asked when a timer starts.
    virtual bool QueryHintLongExecution();
    /// The time has come. True stops the timer. It guards its own data, and leaves stopping to its result: waiting here
    /// for a thread that stops the timer is a deadlock.
    virtual bool OnAlarm() = 0;
};

/// Calls an AlarmHandler once or periodically. Any thread, but for the handler itself.
class QUILLMARSH_API AlarmTimer : NoCopy
{
public:
    AlarmTimer();
    /// Stops the timer, and waits for a call that is under way.
    ~AlarmTimer();

    /// Calls once, after a delay. False when the timer runs already or cannot be had. The handler is borrowed until the
    /// timer has stopped.
    bool FireOnce(AlarmHandler &handler, unsigned int delayMilliseconds);
    /// Calls after a delay and then again and again; a period of 0 becomes 1. Otherwise as FireOnce().
    bool StartPeriodic(AlarmHandler &handler, unsigned int delayMilliseconds, unsigned int periodMilliseconds);
    /// Stops the timer, of either kind. No call is under way when it returns.
    void StopPeriodic();
    /// False again once a single call has been made.
    bool IsRunning();

private:
    static void AlarmMapper(void *object);

    bool Activate(AlarmHandler &handler, unsigned int delayMilliseconds, unsigned int periodMilliseconds);
    void Deactivate(bool wait);
    void CallHandler();

    CriticalSection stateLock_;
    // Held by who stops the timer. The callback never waits for it: the other waits for the callback.
    CriticalSection stopLock_;
    std::atomic<AlarmHandler *> handler_{nullptr};
    HANDLE timer_ = nullptr;
    std::atomic<bool> isOneShot_{false};
};

/// Receives the calls of a WindowAlarmTimer, on the thread of its window.
class QUILLMARSH_API WindowAlarmHandler
{
public:
    virtual ~WindowAlarmHandler();

    /// Called when the period is over, on the thread of the window, while it dispatches messages.
    virtual void OnWindowAlarm(WindowAlarmTimer &timer) = 0;
};

/// Calls a WindowAlarmHandler periodically while messages of a window are dispatched. Belongs to the window's thread.
class QUILLMARSH_API WindowAlarmTimer : NoCopy
{
public:
    explicit WindowAlarmTimer(HWND window = nullptr);
    /// Stops the timer.
    ~WindowAlarmTimer();

    /// Window of the next start.
    void SetHWND(HWND window);
    HWND GetHWND() const { return window_; }

    /// True when the timer came up; false without a window. The handler is borrowed until the timer has stopped. On a
    /// running timer it sets handler and period anew.
    bool StartPeriodic(WindowAlarmHandler &handler, unsigned int periodMilliseconds);
    /// Stops the timer; no call comes after it.
    void StopPeriodic();

private:
    static void AlarmMapper(void *object);

    HWND window_;
    std::uintptr_t timerID_ = 0;
    WindowAlarmHandler *handler_ = nullptr;
    // Where the timer runs, which SetHWND() does not change.
    HWND timerWindow_ = nullptr;
};

} // namespace quillmarsh

#endif
