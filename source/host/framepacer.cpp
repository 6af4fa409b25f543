#include <quillmarsh/host/framepacer.h>

namespace quillmarsh::host
{

void FramePacer::PauseUntil(Clock::time_point time)
{
    std::unique_lock lock(mutex_);
    condition_.wait_until(lock, time, [this] { return wakeUp_; });
    wakeUp_ = false;
}

void FramePacer::WakeUp()
{
    {
        std::lock_guard const lock(mutex_);
        wakeUp_ = true;
    }
    condition_.notify_one();
}

} // namespace quillmarsh::host
