// The SDL side of a window.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_SDL_SDLWINDOW_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_SDL_SDLWINDOW_H

#include <quillmarsh/platform/window.h>

#include "source/platform/linux/sdl/sdlvideo.h"

#include <SDL.h>

#include <optional>

namespace quillmarsh::platform
{

struct Window::System : NoCopy
{
    ~System()
    {
        if (window)
            SDL_DestroyWindow(window);
    }

    bool HasFlag(Uint32 flag) const { return (SDL_GetWindowFlags(window) & flag) != 0; }
    void Fill();
    /// Sets the window's cursor when the mouse enters it, since SDL has one cursor for all windows.
    void ApplyCursor();

    SdlVideoUse video;
    SDL_Window *window = nullptr;
    bool isFilled = false;
    /// Position and size to restore after full screen.
    Position positionBefore;
    Size sizeBefore;
    /// Null hides the cursor; without a value it is the arrow.
    std::optional<SDL_Cursor *> cursor;
};

} // namespace quillmarsh::platform

#endif
