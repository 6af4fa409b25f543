// The driver of game controllers, keyboard and mouse, loaded as in a host, with virtual hardware.
#include "tests/support/environment_variable.h"
#include "tests/support/loaded_driver.h"
#include "tests/support/virtual_display.h"
#include "tests/support/waiting.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/devices/gamecontroller.h>
#include <quillmarsh/devices/keyboard.h>
#include <quillmarsh/devices/mouse.h>
#include <quillmarsh/framework/samplereadsentry.h>
#include <quillmarsh/platform/desktopevents.h>
#include <quillmarsh/platform/window.h>

#include <gtest/gtest.h>

#include <SDL.h>
#include <deque>

namespace quillmarsh::tests
{
namespace
{

/// Opens the driver on the displays that the test names, and creates and connects its devices.
class InputDesktop : public testing::Test
{
protected:
    ~InputDesktop() override
    {
        Release();
        // Closes the window. Otherwise it would live as long as the plug-in: in some builds, until the process ends.
        driver_.OpenDriver(DirectInputConfig(), 1);
        driver_.CloseDriver();
    }

    void Open(char const *videoDriver, char const *displayName = nullptr, unsigned int flags = 0)
    {
        environment_.clear();
        environment_.emplace_back("SDL_VIDEODRIVER", videoDriver);
        environment_.emplace_back("DISPLAY", displayName);
        environment_.emplace_back("WAYLAND_DISPLAY", nullptr);
        loaded_.Open(flags);
    }
    void Make() { loaded_.CreateDevices(); }
    void Release() { loaded_.Close(); }

    /// Runs the device part of the next frame.
    bool Frame()
    {
        platform::PumpDesktop();
        bool const changed = driver_.PollDeviceChanges();
        for (auto const &device : devices)
            SampleReadSentry const sample(*device, true);
        return changed;
    }

    template<typename Controller>
    Controller &Get(unsigned int device)
    {
        return dynamic_cast<Controller &>(*devices.at(device)->GetController(0));
    }

    /// Declared first, so that it outlives its windows.
    AutoPtr<VirtualDisplay> display;

private:
    std::deque<EnvironmentVariable> environment_;
    LoadedDriver loaded_{QUILLMARSH_TEST_input_desktop};
    HIDDriver0 &driver_ = loaded_.driver;

protected:
    TestKernel &kernel = loaded_.kernel;
    std::vector<AutoPtr<HumanInterfaceDevice>> &devices = loaded_.devices;
};

/// The driver without a display, which has game controllers only.
class InputDesktopPads : public InputDesktop
{
protected:
    InputDesktopPads() { Open(nullptr); }
    ~InputDesktopPads() override
    {
        while (!plugged_.empty())
            Unplug();
        Release();
    }

    /// Plugs in a controller and stores it in `pad`.
    void Plug(SDL_JoystickType type, int numAxes, int numButtons, int numHats)
    {
        int const index = SDL_JoystickAttachVirtual(type, numAxes, numButtons, numHats);
        ASSERT_GE(index, 0) << SDL_GetError();
        pad = SDL_JoystickOpen(index);
        plugged_.push_back(pad);
    }
    void Unplug()
    {
        SDL_JoystickID const id = SDL_JoystickInstanceID(plugged_.back());
        for (int index = SDL_NumJoysticks() - 1; index >= 0; --index)
        {
            if (SDL_JoystickGetDeviceInstanceID(index) == id)
                SDL_JoystickDetachVirtual(index);
        }
        SDL_JoystickClose(plugged_.back());
        plugged_.pop_back();
    }

    SDL_Joystick *pad = nullptr;

private:
    std::vector<SDL_Joystick *> plugged_;
};

TEST_F(InputDesktopPads, ShowTheirHardwareUnchangedWithoutAMapping)
{
    EXPECT_EQ(0u, devices.size());
    Plug(SDL_JOYSTICK_TYPE_FLIGHT_STICK, 8, 40, 1);
    EXPECT_TRUE(Frame());
    EXPECT_FALSE(Frame());
    Make();
    ASSERT_EQ(1u, devices.size());
    EXPECT_EQ("Flight stick", devices[0]->GetDeviceInfo().GetModelType());
    auto &controller = Get<GameController>(0);
    EXPECT_EQ(32u, controller.GetNumButtons());
    EXPECT_EQ(2u, controller.GetNumSliders());
    EXPECT_EQ(1u, controller.GetNumPOVHats());
    EXPECT_TRUE(controller.HasAxis(GameController::AxisRZ));

    SDL_JoystickSetVirtualAxis(pad, 1, -32768);
    SDL_JoystickSetVirtualAxis(pad, 5, 32767);
    SDL_JoystickSetVirtualAxis(pad, 7, 16384);
    SDL_JoystickSetVirtualButton(pad, 31, 1);
    Frame();
    EXPECT_EQ(-1.0f, controller.GetAxisPosition(GameController::AxisY));
    EXPECT_EQ(1.0f, controller.GetAxisPosition(GameController::AxisRZ));
    EXPECT_NEAR(0.5f, controller.GetSliderPosition(1), 1e-4f);
    EXPECT_TRUE(controller.ButtonDown(31));
    EXPECT_TRUE(controller.IsPOVHatCentered(0));
    SDL_JoystickSetVirtualButton(pad, 31, 0);
    constexpr std::pair<Uint8, float> hats[] = {
        {SDL_HAT_UP, 0.0f},     {SDL_HAT_RIGHTUP, 45.0f},   {SDL_HAT_RIGHT, 90.0f}, {SDL_HAT_RIGHTDOWN, 135.0f},
        {SDL_HAT_DOWN, 180.0f}, {SDL_HAT_LEFTDOWN, 225.0f}, {SDL_HAT_LEFT, 270.0f}, {SDL_HAT_LEFTUP, 315.0f}};
    for (auto const &[hat, degrees] : hats)
    {
        SDL_JoystickSetVirtualHat(pad, 0, hat);
        Frame();
        EXPECT_EQ(degrees, controller.GetPOVHatPosition(0));
        EXPECT_EQ(hat == SDL_HAT_UP, controller.ButtonUp(31) != 0);
    }
}

TEST_F(InputDesktopPads, HaveTheLayoutOfAGamePadWithAMapping)
{
    Plug(SDL_JOYSTICK_TYPE_GAMECONTROLLER, SDL_CONTROLLER_AXIS_MAX, SDL_CONTROLLER_BUTTON_MAX, 0);
    Make();
    auto &controller = Get<GameController>(0);
    EXPECT_EQ(2u, controller.GetNumSliders());
    EXPECT_EQ(1u, controller.GetNumPOVHats());
    EXPECT_FALSE(controller.HasAxis(GameController::AxisZ));
    SDL_JoystickSetVirtualAxis(pad, SDL_CONTROLLER_AXIS_RIGHTX, 32767);
    SDL_JoystickSetVirtualAxis(pad, SDL_CONTROLLER_AXIS_TRIGGERLEFT, -32768);
    SDL_JoystickSetVirtualAxis(pad, SDL_CONTROLLER_AXIS_TRIGGERRIGHT, 32767);
    SDL_JoystickSetVirtualButton(pad, SDL_CONTROLLER_BUTTON_RIGHTSHOULDER, 1);
    SDL_JoystickSetVirtualButton(pad, SDL_CONTROLLER_BUTTON_DPAD_LEFT, 1);
    Frame();
    EXPECT_EQ(1.0f, controller.GetAxisPosition(GameController::AxisRX));
    EXPECT_EQ(0.0f, controller.GetSliderPosition(0));
    EXPECT_EQ(1.0f, controller.GetSliderPosition(1));
    EXPECT_EQ(270.0f, controller.GetPOVHatPosition(0));
    EXPECT_TRUE(controller.ButtonPressed(10));
}

TEST_F(InputDesktopPads, ApplyDeadZonesAndSaturations)
{
    Plug(SDL_JOYSTICK_TYPE_WHEEL, 7, 1, 0);
    Make();
    auto &controller = Get<GameController>(0);
    controller.SetAxisProperties(GameController::AxisX, 0.25f, 0.75f);
    controller.SetSliderProperties(0, 0.5f, 0.5f);
    controller.SetAxisReverse(GameController::AxisX, true);
    std::tuple<Sint16, float, float> const cases[] = {
        {8000, 0, 0}, {16384, -0.5f, 1}, {-16384, 0.5f, 0}, {-24700, 1, -1}, {32767, -1, 1}};
    for (auto const &[way, axis, slider] : cases)
    {
        SDL_JoystickSetVirtualAxis(pad, 0, way);
        SDL_JoystickSetVirtualAxis(pad, 6, way);
        Frame();
        EXPECT_NEAR(axis, controller.GetAxisPosition(GameController::AxisX), 1e-3f) << way;
        EXPECT_NEAR(slider, controller.GetSliderPosition(0), 1e-3f) << way;
    }
}

TEST_F(InputDesktopPads, RestWhenTheyAreUnpluggedAndComeBack)
{
    Plug(SDL_JOYSTICK_TYPE_WHEEL, 2, 1, 1);
    Plug(SDL_JOYSTICK_TYPE_THROTTLE, 2, 1, 1);
    Make();
    ASSERT_EQ(2u, devices.size());
    auto &controller = Get<GameController>(1);
    SDL_JoystickSetVirtualAxis(pad, 0, 32767);
    SDL_JoystickSetVirtualHat(pad, 0, SDL_HAT_RIGHT);
    SDL_JoystickSetVirtualButton(pad, 0, 1);
    devices[1]->StartAsyncSampling();
    auto const read = [&](auto look)
    {
        SampleReadSentry const sample(controller, true);
        return look();
    };
    ASSERT_TRUE(WaitUntil([&] { return read([&] { return controller.ButtonPressed(0) != 0; }); }));
    Unplug();
    EXPECT_TRUE(WaitUntil([&] { return read([&] { return controller.ButtonPressed(0) == 0; }); }));
    EXPECT_TRUE(read([&] { return controller.IsPOVHatCentered(0); }));
    EXPECT_EQ(0.0f, read([&] { return controller.GetAxisPosition(GameController::AxisX); }));
    devices[1]->StopAsyncSampling();

    EXPECT_TRUE(Frame());
    EXPECT_FALSE(Frame());
    std::string const text = kernel.conOut.str();
    EXPECT_EQ(1, std::count(text.begin(), text.end(), '\n')) << text;
    EXPECT_NE(std::string::npos, text.find(" was unplugged.\n")) << text;
    EXPECT_THROW(devices[1]->ConnectDevice(nullptr), HIDException);
    Make();
    EXPECT_EQ(1u, devices.size());
    Plug(SDL_JOYSTICK_TYPE_THROTTLE, 2, 1, 1);
    EXPECT_TRUE(Frame());
    Make();
    SDL_JoystickSetVirtualAxis(pad, 0, 32767);
    Frame();
    EXPECT_EQ(1.0f, Get<GameController>(1).GetAxisPosition(GameController::AxisX));
    EXPECT_EQ(text, kernel.conOut.str());
}

/// The driver with an invisible window, and events that the test makes.
class InputDesktopKeys : public InputDesktop
{
protected:
    InputDesktopKeys()
    {
        Open("dummy");
        Frame();
    }

    static void Push(auto SDL_Event::*part, auto const &event)
    {
        SDL_Event whole = {};
        whole.*part = event;
        SDL_PushEvent(&whole);
    }
    static void Key(SDL_Scancode scancode, bool isDown, char const *text = "", Uint16 modifiers = 0)
    {
        Uint32 const type = isDown ? SDL_KEYDOWN : SDL_KEYUP;
        Push(&SDL_Event::key, SDL_KeyboardEvent{type, 0, 0, Uint8{isDown}, 0, 0, 0, {scancode, 0, modifiers, 0}});
        SDL_TextInputEvent typed = {SDL_TEXTINPUT, 0, 0, ""};
        SDL_strlcpy(typed.text, text, sizeof(typed.text));
        if (*text != 0)
            Push(&SDL_Event::text, typed);
    }
    static void Move(int x, int y, int moveX, int moveY)
    {
        Push(&SDL_Event::motion, SDL_MouseMotionEvent{SDL_MOUSEMOTION, 0, 0, 0, 0, x, y, moveX, moveY});
    }
    /// Sends an event to the driver's window, the only one.
    static void Window(SDL_WindowEventID id)
    {
        Uint32 window = 1;
        while (SDL_GetWindowFromID(window) == nullptr)
            ++window;
        Push(&SDL_Event::window, SDL_WindowEvent{SDL_WINDOWEVENT, 0, window, static_cast<Uint8>(id), 0, 0, 0, 0, 0});
    }
};

TEST_F(InputDesktopKeys, KeysHaveEdgesAndTapsAndNeedTheFocus)
{
    ASSERT_EQ(2u, devices.size());
    auto &keyboard = Get<Keyboard>(0);
    EXPECT_TRUE(keyboard.IsSystemKeyboard());
    Key(SDL_SCANCODE_F12, true);
    Key(SDL_SCANCODE_KP_9, true);
    Key(SDL_SCANCODE_KP_9, false);
    Frame();
    EXPECT_EQ(2u, keyboard.NumKeysDown());
    EXPECT_TRUE(keyboard.KeyDown(e_key_f12) && keyboard.KeyDown(e_key_num_9));
    Frame();
    EXPECT_TRUE(keyboard.KeyPressed(e_key_f12) && !keyboard.KeyDown(e_key_f12) && keyboard.KeyUp(e_key_num_9));
    Window(SDL_WINDOWEVENT_FOCUS_LOST);
    Frame();
    EXPECT_EQ(0u, keyboard.NumKeysPressed());
}

TEST_F(InputDesktopKeys, CharactersAreThoseThatTheLayoutTyped)
{
    auto &keyboard = Get<Keyboard>(0);
    // Key, modifier that goes down before it, text, and the character of the key.
    std::tuple<SDL_Scancode, eKey, SDL_Scancode, Uint16, char const *, int> const cases[] = {
        {SDL_SCANCODE_A, e_key_a, SDL_SCANCODE_UNKNOWN, 0, "a", 'a'},
        {SDL_SCANCODE_A, e_key_a, SDL_SCANCODE_RSHIFT, KMOD_RSHIFT, "A", 'A'},
        {SDL_SCANCODE_A, e_key_a, SDL_SCANCODE_UNKNOWN, KMOD_CAPS, "A", 'A'},
        {SDL_SCANCODE_A, e_key_a, SDL_SCANCODE_LCTRL, KMOD_LCTRL, "", 0},
        {SDL_SCANCODE_2, e_key_2, SDL_SCANCODE_LSHIFT, KMOD_LSHIFT, "\"", '"'},
        {SDL_SCANCODE_Q, e_key_q, SDL_SCANCODE_RALT, KMOD_RALT, "@", '@'},
        {SDL_SCANCODE_E, e_key_e, SDL_SCANCODE_RALT, KMOD_RALT, "\xe2\x82\xac", 0},
        {SDL_SCANCODE_LEFTBRACKET, e_key_l_bracket, SDL_SCANCODE_UNKNOWN, 0, "\xc3\xbc", 0xfc},
        {SDL_SCANCODE_KP_7, e_key_num_7, SDL_SCANCODE_UNKNOWN, KMOD_NUM, "7", '7'},
        {SDL_SCANCODE_EQUALS, e_key_equals, SDL_SCANCODE_UNKNOWN, 0, "", 0},
    };
    auto const find = [&keyboard](eKey key)
    {
        char character = 0;
        return keyboard.MapKeyToCharacter(key, character) ? static_cast<unsigned char>(character) : 0;
    };
    for (auto const &[scancode, key, modifier, modifiers, text, character] : cases)
    {
        for (bool const isDown : {true, false})
        {
            if (modifier != SDL_SCANCODE_UNKNOWN)
                Key(modifier, isDown, "", modifiers);
            Key(scancode, isDown, isDown ? text : "", modifiers);
        }
        // All these events came between two frames.
        Frame();
        EXPECT_EQ(character, find(key)) << SDL_GetScancodeName(scancode) << text;
        Frame();
    }
    // Before a key was typed, its character is known only without modifiers, and for letters.
    Key(SDL_SCANCODE_LSHIFT, true);
    Frame();
    EXPECT_EQ('Z', find(e_key_z));
    EXPECT_EQ(0, find(e_key_period));
    EXPECT_EQ(0, find(e_key_none));
}

TEST_F(InputDesktopKeys, MouseFollowsTheCursorOrMovesFreely)
{
    auto &mouse = Get<Mouse>(1);
    EXPECT_TRUE(mouse.IsSystemMouse() && mouse.CanSyncWithSystemCursor() && mouse.CanDisplaySystemCursor());
    mouse.SetAbsoluteModeSpeed(0.5f);
    mouse.SetRelativeModeSensitivity(2, -1);
    auto const expect = [&](int x, int y, bool isInside, int moveX, int moveY)
    {
        Frame();
        EXPECT_EQ(isInside, mouse.IsPositionInsideAppWindowClientArea());
        EXPECT_EQ(std::tuple(x, y, moveX, moveY),
                  std::tuple(mouse.GetPositionX(), mouse.GetPositionY(), mouse.GetDeltaX(), mouse.GetDeltaY()));
    };
    Window(SDL_WINDOWEVENT_ENTER);
    Move(50, 60, 3, 4);
    expect(50, 60, true, 1, 2);
    // The half pixel that remained is counted.
    Move(51, 60, 1, 0);
    expect(51, 60, true, 1, 0);
    Window(SDL_WINDOWEVENT_LEAVE);
    expect(51, 60, false, 0, 0);

    mouse.ActivateRelativeMode(true);
    Frame();
    EXPECT_TRUE(SDL_GetRelativeMouseMode());
    Move(70, 70, 5, 7);
    expect(0, 0, false, 10, -7);
    mouse.ActivateRelativeMode(false);
    Frame();
    EXPECT_FALSE(SDL_GetRelativeMouseMode());

    mouse.ActivateSyncWithSystemCursor(false);
    Frame();
    int const x = mouse.GetPositionX();
    Move(0, 0, 20, -2000);
    expect(x + 10, 0, true, 10, -1000);
    Move(0, 0, 2000, 2000);
    expect(319, 239, true, 1000, 1000);
    mouse.ActivateSyncWithSystemCursor(true);
    Frame();
    EXPECT_FALSE(SDL_GetRelativeMouseMode());
}

TEST_F(InputDesktopKeys, WheelAndButtonsAreCountedAndOnlyFromTheConnectionOn)
{
    auto &mouse = Get<Mouse>(1);
    auto const turn = [](float turns, Uint32 direction)
    {
        SDL_Event event = {};
        event.type = SDL_MOUSEWHEEL;
        event.wheel.preciseY = turns;
        event.wheel.direction = direction;
        SDL_PushEvent(&event);
    };
    turn(-1.5f, SDL_MOUSEWHEEL_NORMAL);
    turn(-0.5f, SDL_MOUSEWHEEL_FLIPPED);
    constexpr eMouseButton buttons[] = {e_mouse_button_left,   e_mouse_button_middle, e_mouse_button_right,
                                        e_mouse_button_extra1, e_mouse_button_extra2, e_mouse_button_extra3};
    for (unsigned int i = 0; i < std::size(buttons); ++i)
    {
        for (bool const isDown : {true, false})
        {
            Uint32 const type = isDown ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
            auto const number = static_cast<Uint8>(i + 1);
            Push(&SDL_Event::button, SDL_MouseButtonEvent{type, 0, 0, 0, number, Uint8{isDown}, 1, 0, 0, 0});
        }
        Frame();
        EXPECT_EQ(1u, mouse.NumButtonsDown());
        EXPECT_TRUE(mouse.ButtonDown(buttons[i]));
        EXPECT_EQ(i == 0 ? -120 : 0, mouse.GetDeltaWheel());
    }
    turn(1, SDL_MOUSEWHEEL_NORMAL);
    Key(SDL_SCANCODE_A, true);
    Key(SDL_SCANCODE_A, false);
    platform::PumpDesktop();
    Release();
    Make();
    Frame();
    EXPECT_EQ(0, Get<Mouse>(1).GetDeltaWheel());
    EXPECT_EQ(0u, Get<Keyboard>(0).NumKeysPressed());
}

TEST_F(InputDesktopKeys, ClosingTheWindowEndsTheHostAndAFlagForbidsIt)
{
    Window(SDL_WINDOWEVENT_CLOSE);
    Frame();
    EXPECT_EQ(1u, kernel.numExitRequests);
    Release();
    Open("dummy", nullptr, 1);
    EXPECT_EQ(0u, devices.size());
}

TEST_F(InputDesktopKeys, AProgramsWindowTakesThePlaceOfTheDriversOwn)
{
    auto const openMain = []
    {
        string reason;
        AutoPtr<platform::Window> window = platform::Window::Open({.width = 500, .height = 400}, reason);
        EXPECT_NE(nullptr, window) << reason;
        return window;
    };
    auto &mouse = Get<Mouse>(1);
    mouse.ActivateRelativeMode(true);
    Frame();
    AutoPtr<platform::Window> window = openMain();
    EXPECT_EQ(1u, platform::Window::GetNumOpen());
    Key(SDL_SCANCODE_A, true);
    // The devices stay, and the cursor is still held.
    EXPECT_FALSE(Frame());
    EXPECT_TRUE(SDL_GetRelativeMouseMode());
    EXPECT_TRUE(Get<Keyboard>(0).KeyDown(e_key_a));
    mouse.ActivateRelativeMode(false);
    mouse.ActivateSyncWithSystemCursor(false);
    Frame();
    Move(0, 0, 2000, 2000);
    Frame();
    EXPECT_EQ(499, mouse.GetPositionX());
    EXPECT_EQ(399, mouse.GetPositionY());
    // No key stays down after its window has closed.
    window.reset();
    EXPECT_FALSE(Frame());
    EXPECT_EQ(1u, platform::Window::GetNumOpen());
    EXPECT_EQ(0u, Get<Keyboard>(0).NumKeysPressed());

    // Without a window of its own, the driver has keyboard and mouse once the program opens a window.
    Release();
    Open("dummy", nullptr, 1);
    EXPECT_FALSE(Frame());
    window = openMain();
    EXPECT_TRUE(Frame());
    Make();
    EXPECT_EQ(2u, devices.size());

    // A window that the program opens before the first frame spares the driver its own.
    window.reset();
    Release();
    Open("dummy");
    EXPECT_EQ(2u, devices.size());
    EXPECT_EQ(0u, platform::Window::GetNumOpen());
    window = openMain();
    EXPECT_FALSE(Frame());
    EXPECT_EQ(window.get(), platform::Window::GetMain());
    EXPECT_EQ(1u, platform::Window::GetNumOpen());
}

TEST_F(InputDesktop, GivesKeyboardAndMouseUpOnADisplayThatIsNotThere)
{
    Open(nullptr, ":4711");
    EXPECT_EQ(2u, devices.size());
    EXPECT_TRUE(Frame());
    Release();
    Open(nullptr, ":4711");
    EXPECT_EQ(0u, devices.size());
    EXPECT_FALSE(Frame());
    string const text = kernel.conOut.str();
    EXPECT_EQ(1, std::count(text.begin(), text.end(), '\n')) << text;
}

TEST_F(InputDesktop, TakesKeysAndPointerOfARealWindow)
{
    display = std::make_unique<VirtualDisplay>();
    if (display->GetName().empty())
        GTEST_SKIP() << "Xvfb or xdotool is not installed.";
    Open(nullptr, display->GetName().c_str());
    ASSERT_EQ(2u, devices.size());
    Frame();
    auto const waitFor = [this](auto condition)
    {
        auto const holdsNow = [&]
        {
            Frame();
            return condition();
        };
        return WaitUntil(holdsNow);
    };
    ASSERT_TRUE(display->Do("search --sync --name '^Quillmarsh input$' windowmove --sync 100 100 windowfocus --sync"));
    ASSERT_TRUE(waitFor([] { return SDL_GetKeyboardFocus() != nullptr; }));
    ASSERT_TRUE(display->Do("key less"));
    auto &keyboard = Get<Keyboard>(0);
    EXPECT_TRUE(waitFor([&] { return keyboard.KeyDown(e_key_comma) != 0; }));
    char character = 0;
    EXPECT_TRUE(keyboard.MapKeyToCharacter(e_key_comma, character) && character == '<');
    auto &mouse = Get<Mouse>(1);
    ASSERT_TRUE(display->Do("mousemove 150 170 click 3"));
    EXPECT_TRUE(waitFor([&] { return mouse.ButtonDown(e_mouse_button_right) != 0; }));
    EXPECT_EQ(std::pair(50, 70), std::pair(mouse.GetPositionX(), mouse.GetPositionY()));
    mouse.ActivateRelativeMode(true);
    Frame();
    int moved = 0;
    ASSERT_TRUE(display->Do("mousemove_relative 0 6"));
    EXPECT_TRUE(waitFor([&] { return (moved += mouse.GetDeltaY()) == 6; })) << moved;
}

} // namespace
} // namespace quillmarsh::tests
