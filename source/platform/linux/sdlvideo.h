// Holds the video part of SDL started for a query.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_SDLVIDEO_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_SDLVIDEO_H

#include <quillmarsh/platform/types.h>

#include <mutex>

namespace quillmarsh::platform
{

/// Starts SDL's video part, where that does not run already, and ends it again. The program is not disturbed: SDL takes
/// over no signals, leaves the screen saver alone, and does not try a display where the environment names none. One
/// thread at a time.
class SdlVideoSentry : NoCopy
{
public:
    SdlVideoSentry();
    ~SdlVideoSentry();

    bool IsStarted() const { return started_; }
    /// Leaves the video part running at the end of the scope.
    void KeepRunning() { keepRunning_ = true; }

private:
    std::unique_lock<std::mutex> lock_;
    bool started_;
    bool keepRunning_ = false;
};

} // namespace quillmarsh::platform

#endif
