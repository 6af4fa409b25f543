#include "sdlpad.h"

#include <algorithm>
#include <cstdio>

namespace input_desktop
{

using namespace quillmarsh;

namespace
{

// Indexed by SDL_JoystickType.
constexpr char const *s_typeNames[] = {"",          "Game pad", "Wheel",    "Arcade stick", "Flight stick",
                                       "Dance pad", "Guitar",   "Drum kit", "Arcade pad",   "Throttle"};

// Degrees, indexed by the bits SDL_HAT_UP, SDL_HAT_RIGHT, SDL_HAT_DOWN and SDL_HAT_LEFT.
constexpr float s_hatPositions[16] = {-1, 0, 90, 45, 180, -1, 135, -1, 270, 315, -1, -1, 225, -1, -1, -1};

// The layout of a game pad.

struct PadAxis
{
    SDL_GameControllerAxis from;
    GameController::eAxis to;
};

constexpr PadAxis s_padAxes[] = {
    {SDL_CONTROLLER_AXIS_LEFTX, GameController::AxisX},
    {SDL_CONTROLLER_AXIS_LEFTY, GameController::AxisY},
    {SDL_CONTROLLER_AXIS_RIGHTX, GameController::AxisRX},
    {SDL_CONTROLLER_AXIS_RIGHTY, GameController::AxisRY},
};

/// The sliders.
constexpr SDL_GameControllerAxis s_triggers[] = {SDL_CONTROLLER_AXIS_TRIGGERLEFT, SDL_CONTROLLER_AXIS_TRIGGERRIGHT};

/// The hat, in the order of its bits.
constexpr SDL_GameControllerButton s_hatButtons[] = {SDL_CONTROLLER_BUTTON_DPAD_UP, SDL_CONTROLLER_BUTTON_DPAD_RIGHT,
                                                     SDL_CONTROLLER_BUTTON_DPAD_DOWN, SDL_CONTROLLER_BUTTON_DPAD_LEFT};

constexpr SDL_GameControllerButton s_padButtons[] = {SDL_CONTROLLER_BUTTON_A,
                                                     SDL_CONTROLLER_BUTTON_B,
                                                     SDL_CONTROLLER_BUTTON_X,
                                                     SDL_CONTROLLER_BUTTON_Y,
                                                     SDL_CONTROLLER_BUTTON_BACK,
                                                     SDL_CONTROLLER_BUTTON_GUIDE,
                                                     SDL_CONTROLLER_BUTTON_START,
                                                     SDL_CONTROLLER_BUTTON_LEFTSTICK,
                                                     SDL_CONTROLLER_BUTTON_RIGHTSTICK,
                                                     SDL_CONTROLLER_BUTTON_LEFTSHOULDER,
                                                     SDL_CONTROLLER_BUTTON_RIGHTSHOULDER,
                                                     SDL_CONTROLLER_BUTTON_MISC1,
                                                     SDL_CONTROLLER_BUTTON_PADDLE1,
                                                     SDL_CONTROLLER_BUTTON_PADDLE2,
                                                     SDL_CONTROLLER_BUTTON_PADDLE3,
                                                     SDL_CONTROLLER_BUTTON_PADDLE4,
                                                     SDL_CONTROLLER_BUTTON_TOUCHPAD};

float Normalize(Sint16 value)
{
    return value < 0 ? static_cast<float>(value) / 32768.0f : static_cast<float>(value) / 32767.0f;
}

string Print(char const *format, unsigned int first, unsigned int second = 0)
{
    char text[64];
    static_cast<void>(std::snprintf(text, sizeof(text), format, first, second));
    return text;
}

string ToText(char const *text)
{
    return text != nullptr ? text : "";
}

PadDesc Describe(SDL_Joystick *joystick)
{
    PadDesc desc;
    desc.name = ToText(SDL_JoystickName(joystick));
    if (Uint16 const vendor = SDL_JoystickGetVendor(joystick); vendor != 0)
        desc.vendor = Print("0x%04x", vendor);
    desc.type = s_typeNames[std::min<std::size_t>(SDL_JoystickGetType(joystick), std::size(s_typeNames) - 1)];
    if (Uint16 const product = SDL_JoystickGetProduct(joystick); product != 0)
        desc.product = Print("0x%04x, version 0x%04x", product, SDL_JoystickGetProductVersion(joystick));
    desc.port = ToText(SDL_JoystickPath(joystick));
    return desc;
}

/// Reads under the lock, so that all values of a reading belong to the same moment.
class SdlPad : public Pad
{
public:
    bool Read(PadReading &reading) override
    {
        JoystickLock const lock;
        SDL_JoystickUpdate();
        if (SDL_JoystickGetAttached(joystick_) == SDL_FALSE)
            return false;
        Fill(reading);
        return true;
    }

protected:
    explicit SdlPad(SDL_Joystick *joystick) : joystick_(joystick) { desc_ = Describe(joystick); }

    virtual void Fill(PadReading &reading) = 0;

    SDL_Joystick *const joystick_;
};

class MappedPad final : public SdlPad
{
public:
    explicit MappedPad(SDL_GameController *pad) : SdlPad(SDL_GameControllerGetJoystick(pad)), pad_(pad)
    {
        desc_.name = ToText(SDL_GameControllerName(pad));
        desc_.mapping = "Mapped as a game pad";
        for (PadAxis const &axis : s_padAxes)
            desc_.hasAxis[axis.to] = SDL_GameControllerHasAxis(pad, axis.from) != SDL_FALSE;
        for (unsigned int i = 0; i < std::size(s_triggers); ++i)
            desc_.numSliders = SDL_GameControllerHasAxis(pad, s_triggers[i]) ? i + 1 : desc_.numSliders;
        for (SDL_GameControllerButton const button : s_hatButtons)
            desc_.numHats = SDL_GameControllerHasButton(pad, button) ? 1 : desc_.numHats;
        for (unsigned int i = 0; i < std::size(s_padButtons); ++i)
            desc_.numButtons = SDL_GameControllerHasButton(pad, s_padButtons[i]) ? i + 1 : desc_.numButtons;
    }
    ~MappedPad() override { SDL_GameControllerClose(pad_); }

protected:
    void Fill(PadReading &reading) override
    {
        for (PadAxis const &axis : s_padAxes)
            reading.axes[axis.to] = Normalize(SDL_GameControllerGetAxis(pad_, axis.from));
        for (unsigned int i = 0; i < std::size(s_triggers); ++i)
            reading.sliders[i] = Normalize(SDL_GameControllerGetAxis(pad_, s_triggers[i]));
        unsigned int hat = 0;
        for (unsigned int i = 0; i < std::size(s_hatButtons); ++i)
            hat |= SDL_GameControllerGetButton(pad_, s_hatButtons[i]) != 0 ? 1u << i : 0;
        reading.hats[0] = s_hatPositions[hat];
        for (unsigned int i = 0; i < std::size(s_padButtons); ++i)
            reading.buttons |= SDL_GameControllerGetButton(pad_, s_padButtons[i]) != 0 ? 1u << i : 0;
    }

private:
    SDL_GameController *const pad_;
};

class PlainPad final : public SdlPad
{
public:
    explicit PlainPad(SDL_Joystick *joystick) : SdlPad(joystick)
    {
        desc_.mapping = "Not mapped";
        numAxes_ = std::min(GetCount(SDL_JoystickNumAxes), GameController::s_numAxes);
        desc_.numSliders = std::min(GetCount(SDL_JoystickNumAxes) - numAxes_, GameController::s_maxSliders);
        desc_.numHats = std::min(GetCount(SDL_JoystickNumHats), GameController::s_maxPOVHats);
        desc_.numButtons = std::min(GetCount(SDL_JoystickNumButtons), GameController::s_maxButtons);
        std::fill_n(desc_.hasAxis, numAxes_, true);
    }
    ~PlainPad() override { SDL_JoystickClose(joystick_); }

protected:
    void Fill(PadReading &reading) override
    {
        for (unsigned int i = 0; i < numAxes_; ++i)
            reading.axes[i] = GetAxis(i);
        for (unsigned int i = 0; i < desc_.numSliders; ++i)
            reading.sliders[i] = GetAxis(numAxes_ + i);
        for (unsigned int i = 0; i < desc_.numHats; ++i)
            reading.hats[i] = s_hatPositions[SDL_JoystickGetHat(joystick_, static_cast<int>(i)) & 15];
        for (unsigned int i = 0; i < desc_.numButtons; ++i)
            reading.buttons |= SDL_JoystickGetButton(joystick_, static_cast<int>(i)) != 0 ? 1u << i : 0;
    }

private:
    unsigned int GetCount(int (*count)(SDL_Joystick *))
    {
        return static_cast<unsigned int>(std::max(count(joystick_), 0));
    }
    float GetAxis(unsigned int index) { return Normalize(SDL_JoystickGetAxis(joystick_, static_cast<int>(index))); }

    unsigned int numAxes_;
};

} // namespace

int FindJoystick(unsigned int id)
{
    int index = SDL_NumJoysticks() - 1;
    while (index >= 0 && SDL_JoystickGetDeviceInstanceID(index) != static_cast<SDL_JoystickID>(id))
        --index;
    return index;
}

AutoPtr<Pad> OpenSdlPad(int index)
{
    if (SDL_IsGameController(index) != SDL_FALSE)
    {
        SDL_GameController *const pad = SDL_GameControllerOpen(index);
        return pad != nullptr ? std::make_unique<MappedPad>(pad) : nullptr;
    }
    SDL_Joystick *const joystick = SDL_JoystickOpen(index);
    return joystick != nullptr ? std::make_unique<PlainPad>(joystick) : nullptr;
}

} // namespace input_desktop
