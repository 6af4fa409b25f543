// Starts and ends the video part of SDL, which nobody else starts.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_SDL_SDLVIDEO_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_SDL_SDLVIDEO_H

#include <quillmarsh/platform/types.h>

#include <mutex>

namespace quillmarsh::platform
{

/// Runs SDL's video part for as long as it exists, if that can be had. The program is not disturbed: SDL takes over no
/// signals, leaves the screen saver alone, and does not try a display where the environment names none. Any thread.
class SdlVideoUse : NoCopy
{
public:
    SdlVideoUse();
    ~SdlVideoUse();

    bool IsStarted() const { return isStarted_; }
    /// Leaves the video part running afterwards.
    void KeepRunning() { isKept_ = true; }
    /// Why it is not started.
    static string GetReason();

private:
    bool isStarted_;
    bool isKept_ = false;
};

/// The same for a query: one thread at a time.
class SdlVideoSentry : NoCopy
{
public:
    SdlVideoSentry();

    bool IsStarted() const { return use_.IsStarted(); }
    void KeepRunning() { use_.KeepRunning(); }

private:
    std::unique_lock<std::mutex> lock_;
    SdlVideoUse use_;
};

} // namespace quillmarsh::platform

#endif
