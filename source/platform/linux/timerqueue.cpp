#include "source/platform/timerqueue.h"

#include "source/platform/linux/waitableobject.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <set>
#include <thread>
#include <utility>
#include <vector>

namespace quillmarsh::platform
{
namespace
{

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds s_idleLimit(10);
constexpr std::size_t s_maxWorkers = 500;

struct QueueTimer
{
    QueueTimerCallback callback;
    void *argument;
    std::chrono::milliseconds period;
    bool isLong;
    Clock::time_point due;
    bool isDeleted = false;
    // True while the timer waits for a worker, or has one.
    bool isReady = false;
    bool isRunning = false;
    std::thread::id worker;
};
using TimerPointer = std::shared_ptr<QueueTimer>;

/// Timers with their due times, and the threads that call them.
///
/// One thread waits for the next timer and passes it to the workers. Threads start when there is work, and end after a
/// while without any. The queue is never destroyed, because its threads may outlive everything else.
class TimerQueue
{
public:
    static TimerQueue &Get()
    {
        static TimerQueue &s_queue = *new TimerQueue;
        return s_queue;
    }

    QueueTimer *Add(TimerPointer const &timer)
    {
        SuspensionDeferral const deferral;
        std::lock_guard const lock(mutex_);
        if (!hasScheduler_ && !StartThread([this] { Schedule(); }))
            return nullptr;
        hasScheduler_ = true;
        timers_.push_back(timer);
        scheduleChanged_.notify_all();
        return timer.get();
    }

    void Delete(QueueTimer *handle, bool wait)
    {
        SuspensionDeferral const deferral;
        std::unique_lock lock(mutex_);
        auto const found = std::find_if(timers_.begin(), timers_.end(),
                                        [handle](TimerPointer const &each) { return each.get() == handle; });
        if (found == timers_.end())
            return;
        TimerPointer const timer = *found;
        timers_.erase(found);
        std::erase(ready_, timer);
        timer->isDeleted = true;
        if (wait && timer->worker != std::this_thread::get_id())
            callEnded_.wait(lock, [&timer] { return !timer->isRunning; });
    }

private:
    template<typename Work>
    static bool StartThread(Work work)
    {
        try
        {
            std::thread(work).detach();
            return true;
        }
        catch (std::system_error const &)
        {
            return false;
        }
    }

    void Schedule()
    {
        std::unique_lock lock(mutex_);
        for (;;)
        {
            Clock::time_point next = Clock::now() + s_idleLimit;
            for (TimerPointer const &timer : timers_)
            {
                if (!timer->isReady && timer->due <= Clock::now())
                    MakeReady(timer);
                else if (!timer->isReady)
                    next = std::min(next, timer->due);
            }
            bool const isTimedOut = scheduleChanged_.wait_until(lock, next) == std::cv_status::timeout;
            if (isTimedOut && timers_.empty())
                break;
        }
        hasScheduler_ = false;
    }

    void MakeReady(TimerPointer const &timer)
    {
        timer->isReady = true;
        ready_.push_back(timer);
        if (numIdle_ >= ready_.size())
        {
            workArrived_.notify_one();
            return;
        }
        // Short calls share a few threads. A long call does not wait for these threads, and does not count as one of
        // them.
        std::size_t const numShared = std::max(2u, std::thread::hardware_concurrency());
        bool const mayStart = timer->isLong ? numWorkers_ < s_maxWorkers : numWorkers_ - numLongCalls_ < numShared;
        if (mayStart && StartThread([this] { Work(); }))
            ++numWorkers_;
        else
            workArrived_.notify_one();
    }

    void Work()
    {
        std::unique_lock lock(mutex_);
        for (;;)
        {
            ++numIdle_;
            bool const hasWork = workArrived_.wait_for(lock, s_idleLimit, [this] { return !ready_.empty(); });
            --numIdle_;
            if (!hasWork)
                break;
            Call(TakeReady(), lock);
        }
        --numWorkers_;
    }

    /// Takes the next ready timer, long calls first: a thread that was started for a long call must not be held up by a
    /// slow short one.
    TimerPointer TakeReady()
    {
        auto next = std::find_if(ready_.begin(), ready_.end(), [](TimerPointer const &each) { return each->isLong; });
        if (next == ready_.end())
            next = ready_.begin();
        TimerPointer timer = std::move(*next);
        ready_.erase(next);
        return timer;
    }

    void Call(TimerPointer const &timer, std::unique_lock<std::mutex> &lock)
    {
        timer->isRunning = true;
        timer->worker = std::this_thread::get_id();
        numLongCalls_ += timer->isLong ? 1 : 0;

        lock.unlock();
        timer->callback(timer->argument);
        lock.lock();

        numLongCalls_ -= timer->isLong ? 1 : 0;
        timer->isRunning = false;
        timer->worker = std::thread::id();
        // A timer that fires once stays "ready", so it is never due again.
        if (timer->period.count() > 0)
        {
            timer->isReady = false;
            timer->due = std::max(timer->due + timer->period, Clock::now());
            scheduleChanged_.notify_all();
        }
        callEnded_.notify_all();
    }

    std::mutex mutex_;
    std::condition_variable scheduleChanged_;
    std::condition_variable workArrived_;
    std::condition_variable callEnded_;
    std::vector<TimerPointer> timers_;
    std::deque<TimerPointer> ready_;
    bool hasScheduler_ = false;
    std::size_t numWorkers_ = 0;
    std::size_t numIdle_ = 0;
    std::size_t numLongCalls_ = 0;
};

} // namespace

HANDLE CreateQueueTimer(QueueTimerCallback callback, void *argument, unsigned int delayMilliseconds,
                        unsigned int periodMilliseconds, unsigned int flags)
{
    auto const timer = std::make_shared<QueueTimer>();
    timer->callback = callback;
    timer->argument = argument;
    timer->period = std::chrono::milliseconds(periodMilliseconds);
    timer->isLong = (flags & s_timerExecuteLongFunction) != 0;
    timer->due = Clock::now() + std::chrono::milliseconds(delayMilliseconds);
    return TimerQueue::Get().Add(timer);
}

void DeleteQueueTimer(HANDLE timer, bool wait)
{
    TimerQueue::Get().Delete(static_cast<QueueTimer *>(timer), wait);
}

} // namespace quillmarsh::platform
