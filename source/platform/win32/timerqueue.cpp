#include "source/platform/timerqueue.h"

#include "source/platform/win32/windows.h"

#include <atomic>
#include <cstdint>
#include <map>
#include <mutex>

namespace quillmarsh::platform
{
namespace
{

struct QueueTimer
{
    QueueTimerCallback callback;
    void *argument;
    HANDLE handle = nullptr;
    std::atomic<bool> isRunning{false};
};
using TimerPointer = std::shared_ptr<QueueTimer>;

/// The timers that have not been deleted, by numbers of our own. The system may still call a timer that was deleted
/// without waiting; the call then finds no timer here.
struct TimerTable
{
    std::mutex mutex;
    std::map<std::uintptr_t, TimerPointer> timers;
    std::uintptr_t lastNumber = 0;

    TimerPointer Find(std::uintptr_t number)
    {
        std::lock_guard const lock(mutex);
        auto const found = timers.find(number);
        return found != timers.end() ? found->second : nullptr;
    }
};

TimerTable &GetTable()
{
    static TimerTable &s_table = *new TimerTable;
    return s_table;
}

thread_local QueueTimer const *t_running = nullptr;

void CALLBACK OnQueueTimer(void *parameter, BOOLEAN)
{
    TimerPointer const timer = GetTable().Find(reinterpret_cast<std::uintptr_t>(parameter));
    if (!timer || timer->isRunning.exchange(true))
        return;
    t_running = timer.get();
    timer->callback(timer->argument);
    t_running = nullptr;
    timer->isRunning = false;
}

} // namespace

HANDLE CreateQueueTimer(QueueTimerCallback callback, void *argument, unsigned int delayMilliseconds,
                        unsigned int periodMilliseconds, unsigned int flags)
{
    TimerTable &table = GetTable();
    auto const timer = std::make_shared<QueueTimer>();
    timer->callback = callback;
    timer->argument = argument;

    std::lock_guard const lock(table.mutex);
    HANDLE const number = reinterpret_cast<HANDLE>(++table.lastNumber);
    if (!CreateTimerQueueTimer(&timer->handle, nullptr, &OnQueueTimer, number, delayMilliseconds, periodMilliseconds,
                               flags))
        return nullptr;
    table.timers[table.lastNumber] = timer;
    return number;
}

void DeleteQueueTimer(HANDLE timer, bool wait)
{
    TimerTable &table = GetTable();
    TimerPointer deleted;
    {
        std::lock_guard const lock(table.mutex);
        auto const found = table.timers.find(reinterpret_cast<std::uintptr_t>(timer));
        if (found == table.timers.end())
            return;
        deleted = found->second;
        table.timers.erase(found);
    }
    bool const waits = wait && t_running != deleted.get();
    static_cast<void>(DeleteTimerQueueTimer(nullptr, deleted->handle, waits ? INVALID_HANDLE_VALUE : nullptr));
}

} // namespace quillmarsh::platform
