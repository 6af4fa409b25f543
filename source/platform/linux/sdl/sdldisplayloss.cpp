#include "source/platform/linux/sdl/sdldisplayloss.h"

#include <SDL_syswm.h>

#include <atomic>
#include <cstdio>

#include <dlfcn.h>

namespace quillmarsh::platform
{
namespace
{

std::atomic<::Display *> s_watched = nullptr;
std::atomic<bool> s_isLost = false;

/// Takes the place of a handler that ends the process. For a connection that is not SDL's, the process ends when this
/// returns.
int OnInputOutputError(::Display *display)
{
    if (display != s_watched)
        std::fprintf(stderr, "A connection to the X server has ended.\n");
    return 0;
}

void OnConnectionEnd(::Display *, void *)
{
    if (s_isLost.exchange(true))
        return;
    SDL_Event event = {};
    event.type = SDL_QUIT;
    SDL_PushEvent(&event);
}

::XErrorHandler s_errorHandlerBefore = nullptr;

/// A server that ends takes the windows away first, and refuses what comes for them; the handler before would end the
/// process for that.
int OnError(::Display *display, ::XErrorEvent *error)
{
    if (display != s_watched && s_errorHandlerBefore)
        return s_errorHandlerBefore(display, error);
    std::fprintf(stderr, "The X server has refused request %d.%d with error %d.\n", error->request_code,
                 error->minor_code, error->error_code);
    return 0;
}

using SetErrorHandler = ::XErrorHandler (*)(::XErrorHandler);
using SetHandler = ::XIOErrorHandler (*)(::XIOErrorHandler);
using SetExitHandler = void (*)(::Display *, void (*)(::Display *, void *), void *);

template<typename Function>
Function FindInX11(char const *name)
{
    // SDL has loaded it.
    static void *const s_library = dlopen("libX11.so.6", RTLD_LAZY | RTLD_NOLOAD);
    return s_library ? reinterpret_cast<Function>(dlsym(s_library, name)) : nullptr;
}

} // namespace

void WatchDisplay(SDL_Window *window)
{
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    bool const isX11 = SDL_GetWindowWMInfo(window, &info) && info.subsystem == SDL_SYSWM_X11;
    if (!isX11)
        return;
    auto const setErrorHandler = FindInX11<SetErrorHandler>("XSetErrorHandler");
    auto const setHandler = FindInX11<SetHandler>("XSetIOErrorHandler");
    auto const setExitHandler = FindInX11<SetExitHandler>("XSetIOErrorExitHandler");
    if (!setErrorHandler || !setHandler || !setExitHandler)
        return;
    s_watched = info.info.x11.display;
    ::XErrorHandler const before = setErrorHandler(&OnError);
    if (before != &OnError)
        s_errorHandlerBefore = before;
    setHandler(&OnInputOutputError);
    setExitHandler(info.info.x11.display, &OnConnectionEnd, nullptr);
}

bool IsDisplayLost()
{
    return s_isLost;
}

} // namespace quillmarsh::platform
