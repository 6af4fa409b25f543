#include <quillmarsh/basetools/timers.h>

#include "source/platform/messagequeue.h"
#include "source/platform/timerqueue.h"

#include <algorithm>

namespace quillmarsh
{

AlarmHandler::~AlarmHandler() = default;

bool AlarmHandler::QueryHintLongExecution()
{
    return false;
}

AlarmTimer::AlarmTimer() = default;

AlarmTimer::~AlarmTimer()
{
    StopPeriodic();
}

bool AlarmTimer::FireOnce(AlarmHandler &handler, unsigned int delayMilliseconds)
{
    return Activate(handler, delayMilliseconds, 0);
}

bool AlarmTimer::StartPeriodic(AlarmHandler &handler, unsigned int delayMilliseconds, unsigned int periodMilliseconds)
{
    return Activate(handler, delayMilliseconds, std::max(periodMilliseconds, 1u));
}

void AlarmTimer::StopPeriodic()
{
    CriticalSectionSentry const stopSentry(stopLock_);
    Deactivate(true);
}

bool AlarmTimer::IsRunning()
{
    CriticalSectionSentry const stateSentry(stateLock_);
    return timer_ != nullptr;
}

bool AlarmTimer::Activate(AlarmHandler &handler, unsigned int delayMilliseconds, unsigned int periodMilliseconds)
{
    CriticalSectionSentry const stateSentry(stateLock_);
    if (timer_)
        return false;

    unsigned int const flags = handler.QueryHintLongExecution() ? platform::s_timerExecuteLongFunction : 0;
    // Stored before the timer starts, whose first call may come at once.
    handler_ = &handler;
    isOneShot_ = periodMilliseconds == 0;
    timer_ = platform::CreateQueueTimer(&AlarmMapper, this, delayMilliseconds, periodMilliseconds, flags);
    if (!timer_)
        handler_ = nullptr;
    return timer_ != nullptr;
}

void AlarmTimer::Deactivate(bool wait)
{
    CriticalSectionSentry const stateSentry(stateLock_);
    if (!timer_)
        return;
    platform::DeleteQueueTimer(timer_, wait);
    timer_ = nullptr;
    handler_ = nullptr;
}

void AlarmTimer::AlarmMapper(void *object)
{
    static_cast<AlarmTimer *>(object)->CallHandler();
}

void AlarmTimer::CallHandler()
{
    AlarmHandler *const handler = handler_;
    if (!handler)
        return;
    bool const wantsStop = handler->OnAlarm();
    if (!wantsStop && !isOneShot_)
        return;
    // A thread that holds the lock stops the timer, and waits for this very call.
    CriticalSectionTrySentry const stopSentry(stopLock_);
    if (stopSentry.IsInside())
        Deactivate(false);
}

WindowAlarmHandler::~WindowAlarmHandler() = default;

WindowAlarmTimer::WindowAlarmTimer(HWND window) : window_(window) {}

WindowAlarmTimer::~WindowAlarmTimer()
{
    StopPeriodic();
}

void WindowAlarmTimer::SetHWND(HWND window)
{
    window_ = window;
}

bool WindowAlarmTimer::StartPeriodic(WindowAlarmHandler &handler, unsigned int periodMilliseconds)
{
    if (!window_)
        return false;
    if (timerWindow_ != window_)
        StopPeriodic();
    handler_ = &handler;
    timerWindow_ = window_;
    timerID_ = platform::SetWindowTimer(window_, this, periodMilliseconds, &AlarmMapper);
    return timerID_ != 0;
}

void WindowAlarmTimer::StopPeriodic()
{
    if (timerID_ == 0)
        return;
    platform::KillWindowTimer(timerWindow_, this);
    timerID_ = 0;
    handler_ = nullptr;
}

void WindowAlarmTimer::AlarmMapper(void *object)
{
    WindowAlarmTimer *const timer = static_cast<WindowAlarmTimer *>(object);
    if (timer->handler_)
        timer->handler_->OnWindowAlarm(*timer);
}

} // namespace quillmarsh
