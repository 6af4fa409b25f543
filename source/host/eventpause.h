// Pauses that events of windows end.
#ifndef QUILLMARSH_SOURCE_HOST_EVENTPAUSE_H
#define QUILLMARSH_SOURCE_HOST_EVENTPAUSE_H

#include <quillmarsh/host/framepacer.h>

#include <atomic>
#include <functional>

namespace quillmarsh::host
{

/// Sleeps where the system reports events, so that a program with few frames answers them at once.
class EventPause : NoCopy
{
public:
    using Clock = FramePacer::Clock;

    /// True for a pause that is long enough to be noticed, on the thread of windows that the system shows.
    static bool IsWorthwhile(Clock::time_point time);
    /// Sleeps until `time`, until an event, or until `isWoken` is true, which it tells after each WakeUp().
    void PauseUntil(Clock::time_point time, std::function<bool()> const &isWoken);
    /// Lets a pause ask whether it is woken. Any thread.
    void WakeUp();

private:
    std::atomic<bool> isPausing_{false};
};

} // namespace quillmarsh::host

#endif
