// A window of SDL.
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
    /// SDL has one cursor for all windows: each window sets its own when the mouse comes in.
    void ApplyCursor();

    SdlVideoUse video;
    SDL_Window *window = nullptr;
    bool isFilled = false;
    /// What full screen gives back.
    Position positionBefore;
    Size sizeBefore;
    /// Null for no cursor, nothing for the arrow.
    std::optional<SDL_Cursor *> cursor;
};

} // namespace quillmarsh::platform

#endif
