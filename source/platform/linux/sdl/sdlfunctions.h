// The functions of SDL that the library uses. SDL is loaded with the first window, dialog or question about displays.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_SDL_SDLFUNCTIONS_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_SDL_SDLFUNCTIONS_H

#include <quillmarsh/platform/types.h>

#include <SDL.h>

// Declared here as in SDL_syswm.h, which also includes X11's headers with their macros.
struct SDL_SysWMinfo;
extern "C" DECLSPEC SDL_bool SDLCALL SDL_GetWindowWMInfo(SDL_Window *window, SDL_SysWMinfo *info);

namespace quillmarsh::platform
{

#define QUILLMARSH_SDL_FUNCTIONS(X)                                                                                    \
    X(SDL_ConvertPixels)                                                                                               \
    X(SDL_CreateRGBSurfaceWithFormat)                                                                                  \
    X(SDL_CreateSystemCursor)                                                                                          \
    X(SDL_CreateWindow)                                                                                                \
    X(SDL_DestroyWindow)                                                                                               \
    X(SDL_DisableScreenSaver)                                                                                          \
    X(SDL_EnableScreenSaver)                                                                                           \
    X(SDL_FillRect)                                                                                                    \
    X(SDL_FreeSurface)                                                                                                 \
    X(SDL_GL_CreateContext)                                                                                            \
    X(SDL_GL_DeleteContext)                                                                                            \
    X(SDL_GL_GetCurrentContext)                                                                                        \
    X(SDL_GL_GetProcAddress)                                                                                           \
    X(SDL_GL_GetSwapInterval)                                                                                          \
    X(SDL_GL_MakeCurrent)                                                                                              \
    X(SDL_GL_ResetAttributes)                                                                                          \
    X(SDL_GL_SetAttribute)                                                                                             \
    X(SDL_GL_SetSwapInterval)                                                                                          \
    X(SDL_GL_SwapWindow)                                                                                               \
    X(SDL_GetClipboardText)                                                                                            \
    X(SDL_GetDefaultCursor)                                                                                            \
    X(SDL_GetDesktopDisplayMode)                                                                                       \
    X(SDL_GetDisplayMode)                                                                                              \
    X(SDL_GetDisplayUsableBounds)                                                                                      \
    X(SDL_GetError)                                                                                                    \
    X(SDL_GetGlobalMouseState)                                                                                         \
    X(SDL_GetHint)                                                                                                     \
    X(SDL_GetKeyFromScancode)                                                                                          \
    X(SDL_GetKeyboardState)                                                                                            \
    X(SDL_GetModState)                                                                                                 \
    X(SDL_GetMouseFocus)                                                                                               \
    X(SDL_GetNumDisplayModes)                                                                                          \
    X(SDL_GetNumVideoDrivers)                                                                                          \
    X(SDL_GetVideoDriver)                                                                                              \
    X(SDL_GetWindowBordersSize)                                                                                        \
    X(SDL_GetWindowDisplayIndex)                                                                                       \
    X(SDL_GetWindowFlags)                                                                                              \
    X(SDL_GetWindowFromID)                                                                                             \
    X(SDL_GetWindowID)                                                                                                 \
    X(SDL_GetWindowPosition)                                                                                           \
    X(SDL_GetWindowSize)                                                                                               \
    X(SDL_GetWindowSurface)                                                                                            \
    X(SDL_GetWindowTitle)                                                                                              \
    X(SDL_GetWindowWMInfo)                                                                                             \
    X(SDL_HideWindow)                                                                                                  \
    X(SDL_InitSubSystem)                                                                                               \
    X(SDL_LoadFunction)                                                                                                \
    X(SDL_LoadObject)                                                                                                  \
    X(SDL_LockSurface)                                                                                                 \
    X(SDL_MapRGB)                                                                                                      \
    X(SDL_MaximizeWindow)                                                                                              \
    X(SDL_MinimizeWindow)                                                                                              \
    X(SDL_PollEvent)                                                                                                   \
    X(SDL_PushEvent)                                                                                                   \
    X(SDL_Quit)                                                                                                        \
    X(SDL_QuitSubSystem)                                                                                               \
    X(SDL_RaiseWindow)                                                                                                 \
    X(SDL_ResetHint)                                                                                                   \
    X(SDL_RestoreWindow)                                                                                               \
    X(SDL_SetClipboardText)                                                                                            \
    X(SDL_SetCursor)                                                                                                   \
    X(SDL_SetHint)                                                                                                     \
    X(SDL_SetHintWithPriority)                                                                                         \
    X(SDL_SetRelativeMouseMode)                                                                                        \
    X(SDL_SetWindowAlwaysOnTop)                                                                                        \
    X(SDL_SetWindowBordered)                                                                                           \
    X(SDL_SetWindowDisplayMode)                                                                                        \
    X(SDL_SetWindowFullscreen)                                                                                         \
    X(SDL_SetWindowIcon)                                                                                               \
    X(SDL_SetWindowMaximumSize)                                                                                        \
    X(SDL_SetWindowMinimumSize)                                                                                        \
    X(SDL_SetWindowOpacity)                                                                                            \
    X(SDL_SetWindowPosition)                                                                                           \
    X(SDL_SetWindowResizable)                                                                                          \
    X(SDL_SetWindowSize)                                                                                               \
    X(SDL_SetWindowTitle)                                                                                              \
    X(SDL_ShowCursor)                                                                                                  \
    X(SDL_ShowMessageBox)                                                                                              \
    X(SDL_ShowWindow)                                                                                                  \
    X(SDL_UnlockSurface)                                                                                               \
    X(SDL_UpdateWindowSurface)                                                                                         \
    X(SDL_WaitEventTimeout)                                                                                            \
    X(SDL_WarpMouseInWindow)                                                                                           \
    X(SDL_WasInit)                                                                                                     \
    X(SDL_free)

/// @name The functions, under their own names
/// To be called once LoadSdl() has succeeded, as for every open window.
/// @{
#define QUILLMARSH_DECLARE_FUNCTION(name) extern decltype(&::name) name;
QUILLMARSH_SDL_FUNCTIONS(QUILLMARSH_DECLARE_FUNCTION)
#undef QUILLMARSH_DECLARE_FUNCTION
/// @}

/// Loads SDL at the first call. Returns false when it cannot be used; GetSdlFailure() tells why. Any thread.
bool LoadSdl();
/// True when a call of LoadSdl() has succeeded. Any thread.
bool IsSdlLoaded();
/// Returns why SDL cannot be used, as a sentence; empty when it can. Loads it.
string const &GetSdlFailure();

} // namespace quillmarsh::platform

#endif
