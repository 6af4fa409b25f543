// The SDL side of a window.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_SDL_SDLWINDOW_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_SDL_SDLWINDOW_H

#include <quillmarsh/platform/window.h>

#include "source/platform/linux/sdl/sdlfunctions.h"
#include "source/platform/linux/sdl/sdlvideo.h"

#include <atomic>
#include <optional>

namespace quillmarsh::platform
{

struct Window::System : NoCopy
{
    ~System();

    bool HasFlag(Uint32 flag) const { return (SDL_GetWindowFlags(window) & flag) != 0; }
    void Fill();
    /// Sets the window's cursor when the mouse enters it, since SDL has one cursor for all windows.
    void ApplyCursor();

    SdlVideoUse video;
    SDL_Window *window = nullptr;
    Uint32 id = 0;
    bool isFilled = false;
    bool keepsDisplayOn = false;
    /// True from Window::Invalidate() to the event that it asks for. Any thread.
    std::atomic<bool> isInvalid{false};
    /// Position and size to restore after full screen.
    Position positionBefore;
    Size sizeBefore;
    /// Null hides the cursor; without a value it is the arrow.
    std::optional<SDL_Cursor *> cursor;
};

/// Codes of SDL_USEREVENT. Those of a window have its number.
enum eUserEvent : Sint32
{
    /// Ends a wait, and has no window.
    e_user_wake,
    e_user_windowMoved,
    e_user_windowWoken
};

/// Puts an event for a window into SDL's queue. Any thread.
void PushWindowEvent(Uint32 window, eUserEvent code);

/// Finds a mode among those of a display; a frequency of 0 fits any other.
bool FindSdlMode(int display, DisplayMode const &mode, SDL_DisplayMode &found);

} // namespace quillmarsh::platform

#endif
