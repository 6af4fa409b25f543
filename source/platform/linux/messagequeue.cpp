#include "source/platform/linux/messagequeue.h"

#include "source/platform/desktopevents.h"
#include "source/platform/linux/futex.h"
#include "source/platform/linux/sdl/sdlevents.h"
#include "source/platform/linux/waitableobject.h"

#include <algorithm>
#include <chrono>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <vector>

namespace quillmarsh::platform
{
namespace
{

using Clock = std::chrono::steady_clock;

constexpr std::size_t s_maxPostedMessages = 10000;
constexpr unsigned int s_minTimerPeriodMs = 10;

struct WindowTimer
{
    HWND window;
    void *object;
    std::chrono::milliseconds period;
    WindowTimerCallback callback;
    Clock::time_point due;
};

/// Messages posted to a thread, and its timers. A timer's message is made when the thread looks for messages.
class MessageQueue
{
public:
    bool Post(ThreadMessage const &message)
    {
        SuspensionDeferral const deferral;
        std::lock_guard const lock(mutex_);
        if (posted_.size() >= s_maxPostedMessages)
            return false;
        posted_.push_back(message);
        NoteChange();
        return true;
    }

    bool Peek(ThreadMessage &message, bool remove)
    {
        SuspensionDeferral const deferral;
        std::lock_guard const lock(mutex_);
        if (!posted_.empty())
        {
            message = posted_.front();
            if (remove)
                posted_.pop_front();
            return true;
        }
        return PeekTimer(message, remove);
    }

    /// Takes the message of the first timer that is due; false when none is.
    bool TakeTimer(ThreadMessage &message)
    {
        SuspensionDeferral const deferral;
        std::lock_guard const lock(mutex_);
        return PeekTimer(message, true);
    }

    std::size_t GetNumTimers()
    {
        SuspensionDeferral const deferral;
        std::lock_guard const lock(mutex_);
        return timers_.size();
    }

    void Wait()
    {
        bool const waitsForDesktop = IsDesktopThread();
        for (;;)
        {
            std::uint32_t const seen = numChanges_;
            waitsForDesktop_ = waitsForDesktop;
            std::optional<unsigned int> const wait = GetWaitMilliseconds();
            if (wait == 0u)
                return;
            if (!waitsForDesktop)
            {
                timespec const deadline = MakeDeadline(wait.value_or(0));
                WaitForChange(numChanges_, seen, wait ? &deadline : nullptr);
            }
            else if (WaitForDesktopEvent(wait))
            {
                // The events are sent when the thread looks for messages.
                return;
            }
        }
    }

    void SetTimer(WindowTimer const &timer)
    {
        SuspensionDeferral const deferral;
        std::lock_guard const lock(mutex_);
        auto const present = FindTimer(timer.window, timer.object);
        if (present != timers_.end())
            *present = timer;
        else
            timers_.push_back(timer);
        NoteChange();
    }

    bool KillTimer(HWND window, void *object)
    {
        SuspensionDeferral const deferral;
        std::lock_guard const lock(mutex_);
        auto const present = FindTimer(window, object);
        bool const isThere = present != timers_.end();
        if (isThere)
            timers_.erase(present);
        return isThere;
    }

    WindowTimerCallback GetTimerCallback(HWND window, void *object)
    {
        SuspensionDeferral const deferral;
        std::lock_guard const lock(mutex_);
        auto const present = FindTimer(window, object);
        return present != timers_.end() ? present->callback : nullptr;
    }

private:
    /// Call it with the lock held.
    bool PeekTimer(ThreadMessage &message, bool remove)
    {
        auto const first = FindFirstDue();
        Clock::time_point const now = Clock::now();
        if (first == timers_.end() || first->due > now)
            return false;
        message = {first->window, s_messageTimer, reinterpret_cast<std::uintptr_t>(first->object),
                   reinterpret_cast<std::intptr_t>(first->callback)};
        // A late timer skips the periods that it missed.
        Clock::time_point const next = first->due + first->period;
        if (remove)
            first->due = next > now ? next : now + first->period;
        return true;
    }

    std::vector<WindowTimer>::iterator FindTimer(HWND window, void *object)
    {
        return std::find_if(timers_.begin(), timers_.end(),
                            [window, object](WindowTimer const &each)
                            { return each.window == window && each.object == object; });
    }

    std::vector<WindowTimer>::iterator FindFirstDue()
    {
        return std::min_element(timers_.begin(), timers_.end(),
                                [](WindowTimer const &a, WindowTimer const &b) { return a.due < b.due; });
    }

    /// Returns the time until the next timer message; 0 when there is a message, and nothing when there is no timer.
    std::optional<unsigned int> GetWaitMilliseconds()
    {
        SuspensionDeferral const deferral;
        std::lock_guard const lock(mutex_);
        if (!posted_.empty())
            return 0u;
        auto const first = FindFirstDue();
        if (first == timers_.end())
            return std::nullopt;
        auto const rest = std::chrono::ceil<std::chrono::milliseconds>(first->due - Clock::now()).count();
        return static_cast<unsigned int>(std::clamp<std::int64_t>(rest, 0, 1000000));
    }

    void NoteChange()
    {
        ++numChanges_;
        NotifyChange(numChanges_);
        if (waitsForDesktop_.exchange(false))
            WakeDesktop();
    }

    FutexWord numChanges_{0};
    /// True while the thread waits, or is about to wait, for window events as well.
    std::atomic<bool> waitsForDesktop_{false};
    std::mutex mutex_;
    std::deque<ThreadMessage> posted_;
    std::vector<WindowTimer> timers_;
};

/// The message queues of all threads. Never destroyed, since threads may run until the process ends.
struct QueueRegistry
{
    std::mutex mutex;
    std::map<unsigned int, std::shared_ptr<MessageQueue>> queues;

    std::shared_ptr<MessageQueue> Find(unsigned int threadId)
    {
        SuspensionDeferral const deferral;
        std::lock_guard const lock(mutex);
        auto const found = queues.find(threadId);
        return found != queues.end() ? found->second : nullptr;
    }
};

QueueRegistry &GetRegistry()
{
    static QueueRegistry &s_registry = *new QueueRegistry;
    return s_registry;
}

/// The queue of the calling thread, until the thread ends.
class QueueOfThread : NoCopy
{
public:
    QueueOfThread() : queue_(std::make_shared<MessageQueue>())
    {
        SuspensionDeferral const deferral;
        std::lock_guard const lock(GetRegistry().mutex);
        GetRegistry().queues[threadId_] = queue_;
    }

    ~QueueOfThread()
    {
        SuspensionDeferral const deferral;
        std::lock_guard const lock(GetRegistry().mutex);
        GetRegistry().queues.erase(threadId_);
    }

    MessageQueue &Get() { return *queue_; }

private:
    unsigned int threadId_ = GetCurrentThreadNumber();
    std::shared_ptr<MessageQueue> queue_;
};

MessageQueue &GetOwnQueue()
{
    thread_local QueueOfThread t_queue;
    return t_queue.Get();
}

} // namespace

void MakeThreadMessageQueue()
{
    GetOwnQueue();
}

bool PostMessageToThread(unsigned int threadId, ThreadMessage const &message)
{
    std::shared_ptr<MessageQueue> const queue = GetRegistry().Find(threadId);
    return queue && queue->Post(message);
}

bool PeekThreadMessage(ThreadMessage &message, bool remove)
{
    TakeDesktopEvents();
    return GetOwnQueue().Peek(message, remove);
}

void WaitThreadMessage()
{
    GetOwnQueue().Wait();
}

void DispatchThreadMessage(ThreadMessage const &message)
{
    if (message.message != s_messageTimer)
        return;
    // The timer and its object may have been deleted after its message was taken.
    void *const object = reinterpret_cast<void *>(message.wParam);
    if (WindowTimerCallback const callback = GetOwnQueue().GetTimerCallback(message.window, object))
        callback(object);
}

void DispatchWindowTimers()
{
    MessageQueue &queue = GetOwnQueue();
    ThreadMessage message;
    // Each timer gets at most one call, so that none can block the thread.
    for (std::size_t rest = queue.GetNumTimers(); rest > 0 && queue.TakeTimer(message); --rest)
        DispatchThreadMessage(message);
}

std::uintptr_t SetWindowTimer(HWND window, void *object, unsigned int periodMilliseconds, WindowTimerCallback callback)
{
    std::chrono::milliseconds const period(std::max(periodMilliseconds, s_minTimerPeriodMs));
    GetOwnQueue().SetTimer({window, object, period, callback, Clock::now() + period});
    return reinterpret_cast<std::uintptr_t>(object);
}

bool KillWindowTimer(HWND window, void *object)
{
    QueueRegistry &registry = GetRegistry();
    SuspensionDeferral const deferral;
    std::lock_guard const lock(registry.mutex);
    return std::any_of(registry.queues.begin(), registry.queues.end(),
                       [window, object](auto const &entry) { return entry.second->KillTimer(window, object); });
}

} // namespace quillmarsh::platform
