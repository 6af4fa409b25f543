#include "source/platform/messagequeue.h"

#include "source/platform/win32/winwindow.h"

#include <map>
#include <mutex>

namespace quillmarsh::platform
{
namespace
{

/// The callback of each timer, by window and number: all timers share one procedure, which gets these two from the
/// system.
struct TimerCallbacks
{
    std::mutex mutex;
    std::map<std::pair<HWND, UINT_PTR>, WindowTimerCallback> callbacks;
};

TimerCallbacks &GetTimerCallbacks()
{
    static TimerCallbacks &s_callbacks = *new TimerCallbacks;
    return s_callbacks;
}

void CALLBACK OnWindowTimer(HWND window, UINT, UINT_PTR number, DWORD)
{
    TimerCallbacks &timers = GetTimerCallbacks();
    WindowTimerCallback callback = nullptr;
    {
        std::lock_guard const lock(timers.mutex);
        auto const found = timers.callbacks.find({window, number});
        if (found != timers.callbacks.end())
            callback = found->second;
    }
    if (callback)
        callback(reinterpret_cast<void *>(number));
}

} // namespace

void MakeThreadMessageQueue()
{
    MSG next;
    PeekMessageW(&next, nullptr, WM_USER, WM_USER, PM_NOREMOVE);
}

bool PostMessageToThread(unsigned int threadId, ThreadMessage const &message)
{
    return PostThreadMessageA(threadId, message.message, message.wParam, message.lParam) != FALSE;
}

bool PeekThreadMessage(ThreadMessage &message, bool remove)
{
    MSG next;
    // The wide functions, because windows get their text as UTF-16.
    if (!PeekMessageW(&next, nullptr, 0, 0, remove ? PM_REMOVE : PM_NOREMOVE))
        return false;
    message = {next.hwnd, next.message, next.wParam, next.lParam};
    return true;
}

void WaitThreadMessage()
{
    // Returns at once for messages in the queue, even when the thread has already looked at them.
    MsgWaitForMultipleObjectsEx(0, nullptr, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
}

void DispatchThreadMessage(ThreadMessage const &message)
{
    MSG next{};
    next.hwnd = message.window;
    next.message = message.message;
    next.wParam = message.wParam;
    next.lParam = message.lParam;
    TranslateMessage(&next);
    DispatchMessageW(&next);
    RethrowFromCallbacks();
}

std::uintptr_t SetWindowTimer(HWND window, void *object, unsigned int periodMilliseconds, WindowTimerCallback callback)
{
    TimerCallbacks &timers = GetTimerCallbacks();
    std::pair const key(window, reinterpret_cast<UINT_PTR>(object));
    std::lock_guard const lock(timers.mutex);
    UINT_PTR const number = SetTimer(window, key.second, periodMilliseconds, &OnWindowTimer);
    if (number != 0)
        timers.callbacks[key] = callback;
    return number != 0 ? key.second : 0;
}

bool KillWindowTimer(HWND window, void *object)
{
    TimerCallbacks &timers = GetTimerCallbacks();
    std::pair const key(window, reinterpret_cast<UINT_PTR>(object));
    std::lock_guard const lock(timers.mutex);
    timers.callbacks.erase(key);
    return KillTimer(window, key.second) != FALSE;
}

} // namespace quillmarsh::platform
