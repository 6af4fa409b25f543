// Pauses between frames.
#ifndef QUILLMARSH_HOST_FRAMEPACER_H
#define QUILLMARSH_HOST_FRAMEPACER_H

#include <quillmarsh/platform/types.h>

#include <chrono>
#include <memory>

namespace quillmarsh::host
{

/// Lets the frame thread sleep from the end of one frame to the time of the next.
class FramePacer : NoCopy
{
public:
    /// The clock of all times of frames; it never goes back.
    using Clock = std::chrono::steady_clock;

    FramePacer();
    ~FramePacer();

    /// Sleeps until `time`, or until WakeUp() is called. Returns at once if WakeUp() was called after the last pause. On
    /// the thread of windows, an event of one ends a pause that is long enough to be noticed, 40 ms or more.
    void PauseUntil(Clock::time_point time);
    /// Ends the pause. Any thread.
    void WakeUp();

private:
    struct State;
    AutoPtr<State> state_;
};

} // namespace quillmarsh::host

#endif
