#include "sdlpad.h"

#include <quillmarsh/basetools/exception.h>

#include <algorithm>
#include <iterator>
#include <optional>

namespace input_desktop
{

using namespace quillmarsh;

namespace
{

struct Hint
{
    char const *name;
    char const *value;
};

constexpr Hint s_hints[] = {
    // SDL leaves the program's handling of signals alone.
    {SDL_HINT_NO_SIGNAL_HANDLERS, "1"},
    // Game controllers work without the focus, too.
    {SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1"},
};

/// Sets the hints that the program has not set.
class Hints : NoCopy
{
public:
    Hints()
    {
        for (unsigned int i = 0; i < std::size(s_hints); ++i)
        {
            areOurs_[i] = SDL_GetHint(s_hints[i].name) == nullptr;
            if (areOurs_[i])
                SDL_SetHint(s_hints[i].name, s_hints[i].value);
        }
    }
    ~Hints()
    {
        for (unsigned int i = 0; i < std::size(s_hints); ++i)
        {
            if (areOurs_[i])
                SDL_ResetHint(s_hints[i].name);
        }
    }

private:
    bool areOurs_[std::size(s_hints)];
};

/// Starts a part of SDL and ends it. SDL counts: other code may use the same part.
class SubSystem : NoCopy
{
public:
    SubSystem() = default;
    ~SubSystem()
    {
        if (flag_ != 0)
            SDL_QuitSubSystem(flag_);
    }
    bool Start(Uint32 flag)
    {
        bool const isStarted = SDL_InitSubSystem(flag) == 0;
        flag_ = isStarted ? flag : 0;
        return isStarted;
    }

private:
    Uint32 flag_ = 0;
};

/// Keeps events of controllers out of SDL's queue, which belongs to the desktop. Controllers are read directly instead.
class EventSilence : NoCopy
{
public:
    EventSilence()
        : joystickState_(SDL_JoystickEventState(SDL_QUERY)),
          padState_(SDL_GameControllerEventState(SDL_QUERY))
    {
        SDL_JoystickEventState(SDL_IGNORE);
        SDL_GameControllerEventState(SDL_IGNORE);
    }
    ~EventSilence()
    {
        SDL_JoystickEventState(joystickState_);
        SDL_GameControllerEventState(padState_);
    }

private:
    int joystickState_;
    int padState_;
};

class SdlPads final : public PadSystem
{
public:
    SdlPads()
    {
        if (!subSystem_.Start(SDL_INIT_GAMECONTROLLER))
            QUILLMARSH_THROW(HIDDriverException, string("SDL cannot be used: ") + SDL_GetError());
        silence_.emplace();
    }

    void ListPads(std::vector<unsigned int> &ids) override
    {
        JoystickLock const lock;
        SDL_JoystickUpdate();
        ids.clear();
        for (int index = 0; index < SDL_NumJoysticks(); ++index)
            ids.push_back(static_cast<unsigned int>(SDL_JoystickGetDeviceInstanceID(index)));
        std::sort(ids.begin(), ids.end());
    }

    string GetPadName(unsigned int id) override
    {
        JoystickLock const lock;
        int const index = FindJoystick(id);
        char const *const name = index >= 0 ? SDL_JoystickNameForIndex(index) : nullptr;
        return name != nullptr ? name : "";
    }

    AutoPtr<Pad> OpenPad(unsigned int id) override
    {
        JoystickLock const lock;
        int const index = FindJoystick(id);
        return index >= 0 ? OpenSdlPad(index) : nullptr;
    }

private:
    Hints const hints_;
    SubSystem subSystem_;
    std::optional<EventSilence> silence_;
};

} // namespace

AutoPtr<PadSystem> StartPadSystem()
{
    return std::make_unique<SdlPads>();
}

} // namespace input_desktop
