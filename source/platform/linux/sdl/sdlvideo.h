// Starts and ends SDL's video part; nothing else in the library does.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_SDL_SDLVIDEO_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_SDL_SDLVIDEO_H

#include <quillmarsh/platform/types.h>

#include <mutex>

namespace quillmarsh::platform
{

/// Runs SDL's video part while it exists, if there is a display. It does not disturb the program: SDL handles no
/// signals, leaves the screen saver alone, and tries no display that the environment does not name. Any thread.
class SdlVideoUse : NoCopy
{
public:
    SdlVideoUse();
    ~SdlVideoUse();

    bool IsStarted() const { return isStarted_; }
    /// Leaves the video part running after the destructor.
    void KeepRunning() { isKept_ = true; }
    /// Returns why the video part did not start.
    static string GetReason();

private:
    bool isStarted_;
    bool isKept_ = false;
};

/// Makes SDL use its driver without a display, or the display's driver again. Returns false with a text for the user when
/// SDL has no such driver. Call it while SDL's video part does not run.
bool UseOffscreenDriver(bool isUsed, string &reason);

/// An SdlVideoUse for a query, with a lock: one thread at a time.
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
