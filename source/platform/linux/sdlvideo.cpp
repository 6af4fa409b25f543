#include "source/platform/linux/sdlvideo.h"

#include <SDL.h>

#include <cstdlib>

namespace quillmarsh::platform
{
namespace
{

std::mutex s_mutex;

constexpr char const *s_displayVariables[] = {"DISPLAY", "WAYLAND_DISPLAY", "SDL_VIDEODRIVER"};

bool EnvironmentNamesDisplay()
{
    for (char const *const name : s_displayVariables)
    {
        char const *const value = std::getenv(name);
        if (value && *value)
            return true;
    }
    return false;
}

/// Sets a hint of SDL for a scope, where the program has not set it.
class HintSentry : NoCopy
{
public:
    HintSentry(char const *name, char const *value) : name_(name), mustReset_(!SDL_GetHint(name))
    {
        if (mustReset_)
            SDL_SetHint(name, value);
    }

    ~HintSentry()
    {
        if (mustReset_)
            SDL_ResetHint(name_);
    }

private:
    char const *name_;
    bool mustReset_;
};

bool StartVideo()
{
    if (SDL_WasInit(SDL_INIT_VIDEO) == 0 && !EnvironmentNamesDisplay())
        return false;
    HintSentry const signals(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    HintSentry const screenSaver(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1");
    return SDL_InitSubSystem(SDL_INIT_VIDEO) == 0;
}

} // namespace

SdlVideoSentry::SdlVideoSentry() : lock_(s_mutex), started_(StartVideo()) {}

SdlVideoSentry::~SdlVideoSentry()
{
    if (started_ && !keepRunning_)
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
}

} // namespace quillmarsh::platform
