// The position of the mouse on the desktop.
#include "source/platform/desktopevents.h"
#include "source/platform/linux/sdl/sdlwindow.h"

// Comes last, because it defines many short words as macros.
#include <SDL_syswm.h>

namespace quillmarsh::platform
{
namespace
{

using PointerQuery = decltype(&XQueryPointer);

/// Returns the function of the library that SDL has loaded for X11; null without one.
PointerQuery FindPointerQuery()
{
    static void *const s_library = SDL_LoadObject("libX11.so.6");
    return s_library ? reinterpret_cast<PointerQuery>(SDL_LoadFunction(s_library, "XQueryPointer")) : nullptr;
}

/// Asks the X server, because SDL's own answer is an old one while a button is down. False on other window systems.
bool AskServer(SDL_Window *window, int &x, int &y)
{
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    if (!SDL_GetWindowWMInfo(window, &info) || info.subsystem != SDL_SYSWM_X11)
        return false;
    PointerQuery const query = FindPointerQuery();
    ::Window root, child;
    int windowX, windowY;
    unsigned int buttons;
    return query &&
           query(info.info.x11.display, info.info.x11.window, &root, &child, &x, &y, &windowX, &windowY, &buttons) != 0;
}

} // namespace

bool FindMouse(quillmarsh::platform::Window::Position &position)
{
    if (!IsDesktopThread() || IsHeadless() || GetOpenWindows().empty())
        return false;
    auto *const window = reinterpret_cast<SDL_Window *>(GetOpenWindows().front()->GetHandle());
    if (!AskServer(window, position.x, position.y))
        SDL_GetGlobalMouseState(&position.x, &position.y);
    return true;
}

} // namespace quillmarsh::platform
