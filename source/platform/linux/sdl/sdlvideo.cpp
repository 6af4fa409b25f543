#include "source/platform/linux/sdl/sdlvideo.h"

#include <quillmarsh/platform/window.h>

#include "source/platform/linux/sdl/sdldisplayloss.h"
#include "source/platform/linux/sdl/sdlfunctions.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <iterator>

namespace quillmarsh::platform
{
namespace
{

constexpr char const *s_displayVariables[] = {"DISPLAY", "WAYLAND_DISPLAY", "SDL_VIDEODRIVER"};

constexpr char const *s_szOffscreenDriver = "offscreen";

std::atomic<bool> s_isOffscreen{false};

bool HasVariable(char const *name)
{
    char const *const value = std::getenv(name);
    return value && *value;
}

/// Returns the drivers for the displays that the environment names. When these fail, SDL would try others, which show
/// nothing, and libwayland would write to the terminal.
char const *GetDrivers()
{
    if (s_isOffscreen)
        return s_szOffscreenDriver;
    return HasVariable("WAYLAND_DISPLAY") ? "x11,wayland" : "x11";
}

struct Hint
{
    char const *name;
    /// Null stands for GetDrivers().
    char const *value;
};

constexpr Hint s_hints[] = {
    {SDL_HINT_VIDEODRIVER, nullptr},
    {SDL_HINT_NO_SIGNAL_HANDLERS, "1"},
    {SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1"},
    // These windows are ordinary ones: filling needs no graphics card, and the desktop keeps its compositor.
    {SDL_HINT_FRAMEBUFFER_ACCELERATION, "0"},
    {SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0"},
    // Closing the last window is only a request, as with any other window.
    {SDL_HINT_QUIT_ON_LAST_WINDOW_CLOSE, "0"},
    // The click that gives a window the focus counts, as on other desktops.
    {SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1"},
};

/// Sets the hints that the program has not set, while the video part is in use.
struct HintSetting
{
    std::mutex mutex;
    unsigned int numUses = 0;
    bool areOurs[std::size(s_hints)] = {};

    void Begin()
    {
        std::lock_guard const lock(mutex);
        if (numUses++ > 0)
            return;
        for (std::size_t i = 0; i < std::size(s_hints); ++i)
        {
            // An empty variable of the environment sets a hint, and says nothing; only an override takes its place.
            char const *const present = SDL_GetHint(s_hints[i].name);
            areOurs[i] = !present || !*present || (s_isOffscreen && !s_hints[i].value);
            if (areOurs[i])
            {
                SDL_SetHintWithPriority(s_hints[i].name, s_hints[i].value ? s_hints[i].value : GetDrivers(),
                                        SDL_HINT_OVERRIDE);
            }
        }
    }

    void End()
    {
        std::lock_guard const lock(mutex);
        if (--numUses > 0)
            return;
        for (std::size_t i = 0; i < std::size(s_hints); ++i)
        {
            if (areOurs[i])
                SDL_ResetHint(s_hints[i].name);
        }
    }
};

constinit HintSetting s_hintSetting;
std::mutex s_startMutex;
std::mutex s_queryMutex;

bool StartVideo()
{
    if (!LoadSdl())
        return false;
    s_hintSetting.Begin();
    std::lock_guard const lock(s_startMutex);
    bool const canStart = !IsDisplayLost() && (SDL_WasInit(SDL_INIT_VIDEO) != 0 || HasDisplay());
    return canStart && SDL_InitSubSystem(SDL_INIT_VIDEO) == 0;
}

} // namespace

// Without a display in the environment, SDL would use the screen of a text console.
bool HasDisplay()
{
    bool const isNamed = std::any_of(std::begin(s_displayVariables), std::end(s_displayVariables), HasVariable);
    return s_isOffscreen || (isNamed && !IsDisplayLost());
}

bool UseOffscreenDriver(bool isUsed, string &reason)
{
    bool isThere = false;
    for (int i = 0; i < SDL_GetNumVideoDrivers(); ++i)
        isThere = isThere || string(SDL_GetVideoDriver(i)) == s_szOffscreenDriver;
    if (!isThere)
        reason = "This SDL has no driver for a desktop without a display.";
    s_isOffscreen = isUsed && isThere;
    return isThere;
}

SdlVideoUse::SdlVideoUse() : isStarted_(StartVideo()) {}

SdlVideoUse::~SdlVideoUse()
{
    if (isStarted_ && !isKept_ && !IsDisplayLost())
    {
        std::lock_guard const lock(s_startMutex);
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
    }
    if (IsSdlLoaded())
        s_hintSetting.End();
}

string SdlVideoUse::GetReason()
{
    if (!LoadSdl())
        return GetSdlFailure();
    if (IsDisplayLost())
        return "The connection to the display has ended.";
    if (!HasDisplay())
        return "The environment names no display: DISPLAY and WAYLAND_DISPLAY are not set.";
    return string("The display cannot be used: ") + SDL_GetError() + ".";
}

SdlVideoSentry::SdlVideoSentry() : lock_(s_queryMutex) {}

} // namespace quillmarsh::platform
