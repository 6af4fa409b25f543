#include "../inputsystem.h"
#include "sdlkeys.h"
#include "sdlpad.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/framework/kernel.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <ostream>

namespace input_desktop
{

using namespace quillmarsh;

namespace
{

constexpr int s_windowWidth = 320;
constexpr int s_windowHeight = 240;

struct Hint
{
    char const *name;
    char const *value;
};

constexpr Hint s_hints[] = {
    // The program's own handling of signals stays.
    {SDL_HINT_NO_SIGNAL_HANDLERS, "1"},
    {SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1"},
    // The window is no game that fills the screen: no graphics card for it, and the desktop stays as it is.
    {SDL_HINT_FRAMEBUFFER_ACCELERATION, "0"},
    {SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0"},
    // Game controllers work whichever window has the focus.
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

/// A part of SDL, which others may have started too.
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

/// Without one of these SDL would take the screen of a text console.
bool EnvironmentNamesDisplay()
{
    constexpr char const *names[] = {"DISPLAY", "WAYLAND_DISPLAY", "SDL_VIDEODRIVER"};
    return std::any_of(std::begin(names), std::end(names),
                       [](char const *name)
                       {
                           char const *const value = std::getenv(name);
                           return value != nullptr && *value != 0;
                       });
}

eMouseButton FindButton(Uint8 button)
{
    constexpr eMouseButton buttons[] = {e_mouse_button_extra3, e_mouse_button_left,   e_mouse_button_middle,
                                        e_mouse_button_right,  e_mouse_button_extra1, e_mouse_button_extra2};
    return buttons[button < std::size(buttons) ? button : 0];
}

/// Watches events of all windows, whoever takes them, and pumps them where nobody else does. Watching is done on the
/// thread that pumps; game controllers are read by whoever samples them.
class SdlSystem final : public InputSystem
{
public:
    SdlSystem(Desktop &desktop, bool wantsWindow) : desktop_(desktop)
    {
        if (!pads_.Start(SDL_INIT_GAMECONTROLLER))
            QUILLMARSH_THROW(HIDDriverException, string("SDL cannot be used: ") + SDL_GetError());
        if (wantsWindow && EnvironmentNamesDisplay())
            OpenWindow();
        SDL_AddEventWatch(&OnEvent, this);
    }
    ~SdlSystem() override
    {
        SDL_DelEventWatch(&OnEvent, this);
        if (isCursorHeld_)
            SDL_SetRelativeMouseMode(SDL_FALSE);
        if (window_ != nullptr)
            SDL_DestroyWindow(window_);
    }

    bool HasWindow() const override { return window_ != nullptr; }
    void Pump() override;

    void ListPads(std::vector<unsigned int> &ids) override;
    string GetPadName(unsigned int id) override;
    AutoPtr<Pad> OpenPad(unsigned int id) override;

    bool MapKeyToCharacter(eKey key, KeyModifiers const &modifiers, char &character) override
    {
        return characters_.Find(key, modifiers, character);
    }

private:
    void OpenWindow();
    void DrawWindow();
    void ApplyWish();

    static int SDLCALL OnEvent(void *system, SDL_Event *event);
    void OnKey(SDL_KeyboardEvent const &event);
    void OnWindow(SDL_WindowEvent const &event);
    void OnWheel(SDL_MouseWheelEvent const &event);

    Desktop &desktop_;
    Hints const hints_;
    SubSystem pads_;
    SubSystem video_;
    SDL_Window *window_ = nullptr;
    bool isCursorHeld_ = false;
    std::atomic<bool> isCloseWanted_{false};
    CharacterMap characters_;
};

void SdlSystem::OpenWindow()
{
    if (video_.Start(SDL_INIT_VIDEO))
    {
        window_ = SDL_CreateWindow("Quillmarsh input", SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED, s_windowWidth,
                                   s_windowHeight, SDL_WINDOW_RESIZABLE);
    }
    if (window_ == nullptr)
    {
        GetConOut() << "There are no keyboard and mouse, since no window can be opened: " << SDL_GetError()
                    << std::endl;
        return;
    }
    desktop_.OnSize(s_windowWidth, s_windowHeight);
    DrawWindow();
}

void SdlSystem::DrawWindow()
{
    SDL_Surface *const surface = SDL_GetWindowSurface(window_);
    if (surface == nullptr)
        return;
    SDL_FillRect(surface, nullptr, SDL_MapRGB(surface->format, 40, 44, 52));
    SDL_UpdateWindowSurface(window_);
}

void SdlSystem::Pump()
{
    SDL_PumpEvents();
    if (window_ != nullptr)
    {
        // Nobody else reads what comes to a window of the driver.
        ApplyWish();
        SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
    }
    else
    {
        SDL_FlushEvents(SDL_JOYAXISMOTION, SDL_CONTROLLERSENSORUPDATE);
    }
    if (isCloseWanted_.exchange(false))
        Kernel::Instance().RequestExit();
}

void SdlSystem::ApplyWish()
{
    CursorWish const wish = desktop_.TakeWish();
    if (wish.isHeld != isCursorHeld_)
        SDL_SetRelativeMouseMode(wish.isHeld ? SDL_TRUE : SDL_FALSE);
    isCursorHeld_ = wish.isHeld;
    if (wish.mustMove)
        SDL_WarpMouseInWindow(nullptr, wish.x, wish.y);
}

void SdlSystem::ListPads(std::vector<unsigned int> &ids)
{
    JoystickLock const lock;
    ids.clear();
    for (int index = 0; index < SDL_NumJoysticks(); ++index)
        ids.push_back(static_cast<unsigned int>(SDL_JoystickGetDeviceInstanceID(index)));
    std::sort(ids.begin(), ids.end());
}

string SdlSystem::GetPadName(unsigned int id)
{
    JoystickLock const lock;
    int const index = FindJoystick(id);
    char const *const name = index >= 0 ? SDL_JoystickNameForIndex(index) : nullptr;
    return name != nullptr ? name : "";
}

AutoPtr<Pad> SdlSystem::OpenPad(unsigned int id)
{
    JoystickLock const lock;
    int const index = FindJoystick(id);
    return index >= 0 ? OpenSdlPad(index) : nullptr;
}

int SdlSystem::OnEvent(void *system, SDL_Event *event)
{
    auto &self = *static_cast<SdlSystem *>(system);
    Desktop &desktop = self.desktop_;
    switch (event->type)
    {
    case SDL_KEYDOWN:
    case SDL_KEYUP:
        self.OnKey(event->key);
        break;
    case SDL_TEXTINPUT:
        self.characters_.OnText(event->text.text);
        break;
    case SDL_KEYMAPCHANGED:
        self.characters_.Forget();
        break;
    case SDL_MOUSEMOTION:
        desktop.OnMove(static_cast<float>(event->motion.xrel), static_cast<float>(event->motion.yrel));
        desktop.OnPosition(event->motion.x, event->motion.y);
        break;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
        desktop.OnButton(FindButton(event->button.button), event->button.state == SDL_PRESSED);
        break;
    case SDL_MOUSEWHEEL:
        self.OnWheel(event->wheel);
        break;
    case SDL_WINDOWEVENT:
        self.OnWindow(event->window);
        break;
    default:
        break;
    }
    return 1;
}

void SdlSystem::OnKey(SDL_KeyboardEvent const &event)
{
    eKey const key = FindKey(event.keysym.scancode);
    bool const isDown = event.state == SDL_PRESSED;
    desktop_.OnLocks((event.keysym.mod & KMOD_CAPS) != 0, (event.keysym.mod & KMOD_NUM) != 0);
    if (event.repeat == 0)
        desktop_.OnKey(key, isDown);
    if (isDown)
        characters_.OnKeyDown(key, desktop_.GetModifiers());
}

void SdlSystem::OnWheel(SDL_MouseWheelEvent const &event)
{
    desktop_.OnWheel(event.direction == SDL_MOUSEWHEEL_FLIPPED ? -event.preciseY : event.preciseY);
}

void SdlSystem::OnWindow(SDL_WindowEvent const &event)
{
    bool const isOurs = window_ != nullptr && event.windowID == SDL_GetWindowID(window_);
    switch (event.event)
    {
    case SDL_WINDOWEVENT_ENTER:
    case SDL_WINDOWEVENT_LEAVE:
        desktop_.OnInside(event.event == SDL_WINDOWEVENT_ENTER);
        break;
    case SDL_WINDOWEVENT_FOCUS_LOST:
        desktop_.OnFocusLost();
        break;
    case SDL_WINDOWEVENT_SIZE_CHANGED:
        desktop_.OnSize(event.data1, event.data2);
        break;
    case SDL_WINDOWEVENT_EXPOSED:
        if (isOurs)
            DrawWindow();
        break;
    case SDL_WINDOWEVENT_CLOSE:
        if (isOurs)
            isCloseWanted_ = true;
        break;
    default:
        break;
    }
}

} // namespace

AutoPtr<InputSystem> StartInputSystem(Desktop &desktop, bool wantsWindow)
{
    return std::make_unique<SdlSystem>(desktop, wantsWindow);
}

} // namespace input_desktop
