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

    /// True when calls can take long, so that they should get a thread of their own. Asked when a timer starts; false
    /// by default.
    virtual bool QueryHintLongExecution();
    /// Called when the time is over. A result of true stops the timer. The handler guards its own data. It must not
    /// wait here for a thread that stops the timer: that is a deadlock.
    virtual bool OnAlarm() = 0;
};

/// Calls an AlarmHandler once or periodically. Any thread may use it, except the handler itself.
class QUILLMARSH_API AlarmTimer : NoCopy
{
public:
    AlarmTimer();
    /// Stops the timer, and waits until a running call has ended.
    ~AlarmTimer();

    /// Calls the handler once, after a delay. Returns false when the timer runs already or the system refuses it. The
    /// handler is borrowed until the timer has stopped.
    bool FireOnce(AlarmHandler &handler, unsigned int delayMilliseconds);
    /// Calls the handler after a delay, and then once in each period; a period of 0 becomes 1. The rest is as for
    /// FireOnce().
    bool StartPeriodic(AlarmHandler &handler, unsigned int delayMilliseconds, unsigned int periodMilliseconds);
    /// Stops the timer, also one of FireOnce(). No call of the handler is running when this returns.
    void StopPeriodic();
    /// True when the timer runs; false after the call of FireOnce() has been made.
    bool IsRunning();

private:
    static void AlarmMapper(void *object);

    bool Activate(AlarmHandler &handler, unsigned int delayMilliseconds, unsigned int periodMilliseconds);
    void Deactivate(bool wait);
    void CallHandler();

    CriticalSection stateLock_;
    // Held by the thread that stops the timer and waits for the callback. The callback never waits for this lock.
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
    /// `window` is the window of the next start; null for none.
    explicit WindowAlarmTimer(HWND window = nullptr);
    /// Stops the timer.
    ~WindowAlarmTimer();

    /// Sets the window of the next start; a running timer keeps its window.
    void SetHWND(HWND window);
    /// Window of the next start.
    HWND GetHWND() const { return window_; }

    /// Starts the timer, or gives a running timer the new handler and period. Returns false without a window and when
    /// the system refuses the timer. The handler is borrowed until the timer has stopped.
    bool StartPeriodic(WindowAlarmHandler &handler, unsigned int periodMilliseconds);
    /// Stops the timer. The handler is not called after it.
    void StopPeriodic();

private:
    static void AlarmMapper(void *object);

    HWND window_;
    std::uintptr_t timerID_ = 0;
    WindowAlarmHandler *handler_ = nullptr;
    // Window of the running timer, which SetHWND() does not change.
    HWND timerWindow_ = nullptr;
};

} // namespace quillmarsh

#endif
