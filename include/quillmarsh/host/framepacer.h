// Pauses between frames.
#ifndef QUILLMARSH_HOST_FRAMEPACER_H
#define QUILLMARSH_HOST_FRAMEPACER_H

#include <quillmarsh/platform/types.h>

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace quillmarsh::host
{

/// Lets the frame thread sleep from the end of one frame to the time of the next.
class FramePacer : NoCopy
{
public:
    /// The clock of all times of frames; it never goes back.
    using Clock = std::chrono::steady_clock;

    /// Sleeps until the time is there, or somebody calls WakeUp(); one that came since the last pause counts.
    void PauseUntil(Clock::time_point time);
    /// Ends the pause. Any thread.
    void WakeUp();

private:
    std::mutex mutex_;
    std::condition_variable condition_;
    bool wakeUp_ = false;
};

} // namespace quillmarsh::host

#endif
