#include <quillmarsh/host/framepacer.h>

#include "source/host/eventpause.h"
#include "source/platform/linux/futex.h"

namespace quillmarsh::host
{

/// One word, so that a frame pays for the system's sleep and little else.
struct FramePacer::State
{
    platform::FutexWord wakeUp{0};
    EventPause eventPause;
};

FramePacer::FramePacer() : state_(std::make_unique<State>()) {}

FramePacer::~FramePacer() = default;

void FramePacer::PauseUntil(Clock::time_point time)
{
    using namespace std::chrono;
    if (EventPause::IsWorthwhile(time))
    {
        state_->eventPause.PauseUntil(time, [this] { return state_->wakeUp != 0; });
        state_->wakeUp = 0;
        return;
    }
    nanoseconds const sinceStart = time.time_since_epoch();
    timespec const deadline{static_cast<time_t>(duration_cast<seconds>(sinceStart).count()),
                            static_cast<long>((sinceStart % seconds(1)).count())};
    while (state_->wakeUp == 0 && platform::WaitForChange(state_->wakeUp, 0, &deadline))
    {
    }
    state_->wakeUp = 0;
}

void FramePacer::WakeUp()
{
    if (state_->wakeUp.exchange(1) != 0)
        return;
    platform::NotifyChange(state_->wakeUp);
    state_->eventPause.WakeUp();
}

} // namespace quillmarsh::host
