// How a window looks, what it shows, and what it asks of the desktop.
#include "source/platform/linux/sdl/sdldisplayloss.h"
#include "source/platform/linux/sdl/sdlevents.h"
#include "source/platform/linux/sdl/sdlkeys.h"
#include "source/platform/linux/sdl/sdlwindow.h"

#include "source/platform/desktopevents.h"

#include <algorithm>

namespace quillmarsh::platform
{
namespace
{

/// Copies pixels to the upper left corner of a surface. SDL takes no rows with a negative stride, so it gets one by one.
void CopyPixels(PixelRows const &pixels, SDL_Surface &target)
{
    Uint32 const format = pixels.hasAlpha ? SDL_PIXELFORMAT_ARGB8888 : SDL_PIXELFORMAT_RGB888;
    int const numColumns = std::min(static_cast<int>(pixels.numColumns), target.w);
    int const numRows = std::min(static_cast<int>(pixels.numRows), target.h);
    if (SDL_LockSurface(&target) != 0)
        return;
    auto *row = static_cast<Uint8 *>(target.pixels);
    for (int i = 0; i < numRows; ++i, row += target.pitch)
    {
        SDL_ConvertPixels(numColumns, 1, format, pixels.GetRow(static_cast<std::size_t>(i)), 4 * numColumns,
                          target.format->format, row, target.pitch);
    }
    SDL_UnlockSurface(&target);
}

/// Number of windows that keep the display on. The desktop's thread only.
unsigned int s_numKeepingOn = 0;

} // namespace

void PushWindowEvent(Uint32 window, eUserEvent code)
{
    SDL_Event event = {};
    event.user.type = SDL_USEREVENT;
    event.user.windowID = window;
    event.user.code = code;
    SDL_PushEvent(&event);
}

Window::System::~System()
{
    if (IsDisplayLost())
        return;
    if (keepsDisplayOn && --s_numKeepingOn == 0)
        SDL_EnableScreenSaver();
    if (window)
        SDL_DestroyWindow(window);
}

void Window::KeepDisplayOn(bool keepOn)
{
    if (keepOn == system_->keepsDisplayOn)
        return;
    system_->keepsDisplayOn = keepOn;
    if (keepOn && s_numKeepingOn++ == 0)
        SDL_DisableScreenSaver();
    else if (!keepOn && --s_numKeepingOn == 0)
        SDL_EnableScreenSaver();
}

void Window::Invalidate()
{
    if (!system_->isInvalid.exchange(true))
        WakeDesktop();
}

void Window::Wake()
{
    PushWindowEvent(system_->id, e_user_windowWoken);
}

void Window::ShowImage(PixelRows const &pixels)
{
    if (SDL_Surface *const target = SDL_GetWindowSurface(system_->window))
    {
        CopyPixels(pixels, *target);
        SDL_UpdateWindowSurface(system_->window);
    }
}

void Window::SetFrame(bool hasFrame, bool isResizable)
{
    if (IsDisplayLost())
        return;
    SDL_SetWindowBordered(system_->window, hasFrame ? SDL_TRUE : SDL_FALSE);
    SDL_SetWindowResizable(system_->window, isResizable ? SDL_TRUE : SDL_FALSE);
}

void Window::SetAlwaysOnTop(bool isOnTop)
{
    SDL_SetWindowAlwaysOnTop(system_->window, isOnTop ? SDL_TRUE : SDL_FALSE);
}

void Window::SetOpacity(unsigned char opacity, std::optional<Color> const &)
{
    SDL_SetWindowOpacity(system_->window, static_cast<float>(opacity) / 255);
}

void Window::SetIcon(HICON icon)
{
    // SDL cannot go back to the desktop's own icon.
    if (icon)
        SDL_SetWindowIcon(system_->window, reinterpret_cast<SDL_Surface *>(icon));
}

HICON Window::MakeIcon(PixelRows const &pixels)
{
    if (!LoadSdl())
        return nullptr;
    SDL_Surface *const icon = SDL_CreateRGBSurfaceWithFormat(
        0, static_cast<int>(pixels.numColumns), static_cast<int>(pixels.numRows), 32, SDL_PIXELFORMAT_ARGB8888);
    if (icon)
        CopyPixels(pixels, *icon);
    return reinterpret_cast<HICON>(icon);
}

void Window::FreeIcon(HICON icon)
{
    if (icon)
        SDL_FreeSurface(reinterpret_cast<SDL_Surface *>(icon));
}

void Window::SetCursor(HCURSOR cursor)
{
    system_->cursor = reinterpret_cast<SDL_Cursor *>(cursor);
    if (SDL_GetMouseFocus() == system_->window)
        system_->ApplyCursor();
}

void Window::MoveCursor(int x, int y)
{
    SDL_WarpMouseInWindow(system_->window, x, y);
}

void Window::OpenSystemMenu(Position) {}

bool IsKeyDown(eKey key)
{
    if (!IsDesktopThread())
        return false;
    int numKeys = 0;
    Uint8 const *const states = SDL_GetKeyboardState(&numKeys);
    for (int i = 0; i < numKeys; ++i)
    {
        if (states[i] != 0 && FindKey(static_cast<SDL_Scancode>(i)) == key)
            return true;
    }
    return false;
}

bool IsCapsLockOn()
{
    return IsDesktopThread() && (SDL_GetModState() & KMOD_CAPS) != 0;
}

bool IsNumLockOn()
{
    return IsDesktopThread() && (SDL_GetModState() & KMOD_NUM) != 0;
}

bool IsScrollLockOn()
{
    return IsDesktopThread() && (SDL_GetModState() & KMOD_SCROLL) != 0;
}

} // namespace quillmarsh::platform
