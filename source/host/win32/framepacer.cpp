#include <quillmarsh/host/framepacer.h>

#include "source/host/eventpause.h"

#include <condition_variable>
#include <mutex>

namespace quillmarsh::host
{

struct FramePacer::State
{
    std::mutex mutex;
    std::condition_variable condition;
    bool wakeUp = false;
    EventPause eventPause;

    bool IsWoken()
    {
        std::lock_guard const lock(mutex);
        return wakeUp;
    }
};

FramePacer::FramePacer() : state_(std::make_unique<State>()) {}

FramePacer::~FramePacer() = default;

void FramePacer::PauseUntil(Clock::time_point time)
{
    bool const waitsForEvents = EventPause::IsWorthwhile(time);
    if (waitsForEvents)
        state_->eventPause.PauseUntil(time, [this] { return state_->IsWoken(); });
    std::unique_lock lock(state_->mutex);
    if (!waitsForEvents)
        state_->condition.wait_until(lock, time, [this] { return state_->wakeUp; });
    state_->wakeUp = false;
}

void FramePacer::WakeUp()
{
    {
        std::lock_guard const lock(state_->mutex);
        state_->wakeUp = true;
    }
    state_->condition.notify_one();
    state_->eventPause.WakeUp();
}

} // namespace quillmarsh::host
