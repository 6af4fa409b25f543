// Keyboard, mouse and game controller: states and edges, in both sampling modes.
#include <quillmarsh/devices/gamecontroller.h>
#include <quillmarsh/devices/keyboard.h>
#include <quillmarsh/devices/mouse.h>

#include "tests/support/controller_device.h"
#include "tests/support/test_kernel.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace quillmarsh::tests
{
namespace
{

constexpr float s_notANumber = std::numeric_limits<float>::quiet_NaN();

string MakeState(int isPressed, int isDown, int isUp)
{
    return string(isPressed ? "p" : "") + (isDown ? "d" : "") + (isUp ? "u" : "");
}

class TestKeyboard : public AttachedController<Keyboard>
{
public:
    explicit TestKeyboard(bool isSystemKeyboard = true) : AttachedController(isSystemKeyboard) {}
    bool MapKeyToCharacter(eKey, char &) override { return false; }
    void OnCharacterMappingChanged() override { ++numMappingChanges; }
    using Keyboard::ResetKeyPressed;
    using Keyboard::SetKeyPressed;

    void Press(unsigned int i) { SetKeyPressed(static_cast<eKey>(i)); }
    string State(unsigned int i) const
    {
        auto const key = static_cast<eKey>(i);
        return MakeState(KeyPressed(key), KeyDown(key), KeyUp(key));
    }

    int numMappingChanges = 0;
};

class TestMouse : public AttachedController<Mouse>
{
public:
    explicit TestMouse(bool isSystemMouse = true) : AttachedController(isSystemMouse) {}
    void OnRelativeModeChanged() override { ++numModeChanges; }
    void OnSyncWithSystemCursorChanged() override { ++numSyncChanges; }
    using Mouse::AccumDelta;
    using Mouse::AccumWheelDelta;
    using Mouse::ApplyAbsoluteModeModifiers;
    using Mouse::ApplyRelativeModeModifiers;
    using Mouse::ResetDelta;
    using Mouse::SetPosition;

    void Press(unsigned int i) { SetButtonPressed(static_cast<eMouseButton>(i)); }
    string State(unsigned int i) const
    {
        auto const button = static_cast<eMouseButton>(i);
        return MakeState(ButtonPressed(button), ButtonDown(button), ButtonUp(button));
    }
    std::vector<int> Readings() const
    {
        return {GetPositionX(), GetPositionY(), GetDeltaX(), GetDeltaY(), GetDeltaWheel()};
    }

    int numModeChanges = 0, numSyncChanges = 0;
};

class TestGameController : public AttachedController<GameController>
{
public:
    void OnOperationModifiersChanged() override { ++numModifierChanges; }
    using GameController::ReportHardwareCaps_Axes;
    using GameController::ReportHardwareCaps_Gadgets;
    using GameController::SetAxisPosition;
    using GameController::SetPOVHatPosition;
    using GameController::SetSliderPosition;

    void Press(unsigned int i) { SetButtonPressed(i); }
    string State(unsigned int i) const { return MakeState(ButtonPressed(i), ButtonDown(i), ButtonUp(i)); }

    int numModifierChanges = 0;
};

template<typename Controller>
class Buttons : public testing::Test
{
public:
    TestKernel kernel;
    ControllerDevice<Controller> device;

    /// Samples once, with the first and the last common button pressed, or with none.
    void Sample(bool isPressed)
    {
        device.Sample(
            [&]
            {
                if (!isPressed)
                    return;
                device.controller.Press(0);
                device.controller.Press(5);
            });
    }
    string State() const
    {
        EXPECT_EQ(device.controller.State(0), device.controller.State(5));
        EXPECT_EQ(device.controller.State(1), "");
        return device.controller.State(0);
    }
    string Read()
    {
        device.LockSampledData();
        string const state = State();
        device.UnlockSampledData();
        return state;
    }
};

using Controllers = testing::Types<TestKeyboard, TestMouse, TestGameController>;
TYPED_TEST_SUITE(Buttons, Controllers);

TYPED_TEST(Buttons, ShowAnEdgeForOneSynchronousSample)
{
    string states;
    for (bool const isPressed : {true, true, true, false, false, true})
    {
        this->Sample(isPressed);
        states += this->State() + " ";
    }
    EXPECT_EQ(states, "pd p p u  pd ");

    this->device.controller.ResetInputReadings();
    EXPECT_EQ(this->State(), "");
}

TYPED_TEST(Buttons, ShowAnEdgeForOneAsynchronousRead)
{
    this->device.StartAsyncSampling();
    EXPECT_EQ(this->Read(), "");
    this->Sample(true);
    this->Sample(false);
    EXPECT_EQ(this->Read(), "") << "pressed and released between two reads";
    for (int i = 0; i < 3; ++i)
        this->Sample(true);
    EXPECT_EQ(this->Read(), "pd");
    this->Sample(true);
    EXPECT_EQ(this->Read(), "p");
    this->Sample(false);
    this->Sample(true);
    EXPECT_EQ(this->Read(), "p") << "released and pressed between two reads";
    this->Sample(false);
    this->Sample(false);
    EXPECT_EQ(this->Read(), "u");
    EXPECT_EQ(this->Read(), "");
}

TEST(Keyboard, NamesKeysAndModifiers)
{
    std::pair<unsigned int, char const *> const keys[] = {
        {0, "Escape"},
        {38, "L-Bracket"},
        {55, "OEM102"},
        {94, "NumDecimal"},
        {105, "BadKeyCode"},
        {e_key_r_alt, "R-Alt"},
        {e_key_arrow_left, "ArrowLeft"},
    };
    for (auto const &[code, name] : keys)
        EXPECT_EQ(GetKeyName(static_cast<eKey>(code)), name);
    EXPECT_EQ(GetKeyModifierName(e_key_modifier_control), "Control");
    EXPECT_EQ(GetKeyModifierName(e_key_modifier_alt), "Alt");
    EXPECT_EQ(GetKeyModifierName(static_cast<eKeyModifier>(3)), "");
}

TEST(Keyboard, CountsKeysAndModifiersWithTheSampleOrTheRead)
{
    TestKernel const kernel;
    ControllerDevice<TestKeyboard> device;
    TestKeyboard &keyboard = device.controller;
    auto const press = [&]
    {
        for (eKey const key : {e_key_l_shift, e_key_r_shift, e_key_r_alt, e_key_l_win, e_key_app_menu, e_key_num_9})
            keyboard.SetKeyPressed(key);
        keyboard.ResetKeyPressed(e_key_num_9);
    };
    device.Sample(press);
    EXPECT_EQ(std::tuple(keyboard.NumKeysPressed(), keyboard.NumKeysDown(), keyboard.NumKeyModifiersPressed()),
              std::tuple(5u, 5u, 2u));
    for (auto const &[modifier, pressed] :
         {std::pair(e_key_modifier_shift, 128), {e_key_modifier_control, 0}, {e_key_modifier_alt, 128}})
        EXPECT_EQ(keyboard.KeyModifierPressed(modifier), pressed) << modifier;
    device.Sample();
    EXPECT_EQ(keyboard.NumKeysUp(), 5u);
    EXPECT_TRUE(keyboard.KeyUp() && !keyboard.KeyPressed() && !keyboard.KeyDown() && !keyboard.KeyModifierPressed());

    device.Sample();
    device.StartAsyncSampling();
    device.Sample(press);
    EXPECT_FALSE(keyboard.KeyPressed() || keyboard.KeyModifierPressed()) << "before the read";
    device.LockSampledData();
    EXPECT_TRUE(keyboard.KeyPressed() && keyboard.KeyDown() && keyboard.KeyModifierPressed());
    device.UnlockSampledData();
    keyboard.ResetInputReadings();
    EXPECT_FALSE(keyboard.KeyPressed() || keyboard.KeyModifierPressed());
    EXPECT_EQ(keyboard.KeyModifierPressed(e_key_modifier_shift), 0);
}

TEST(Keyboard, TellsOnlyOfChangesOfCharacterMapping)
{
    TestKeyboard keyboard;
    for (bool const enable : {false, true, true, false})
        keyboard.EnableCharacterMapping(enable);
    EXPECT_EQ(keyboard.numMappingChanges, 2);
}

TEST(Mouse, MovesPerSampleOrAddsUpForARead)
{
    TestKernel const kernel;
    ControllerDevice<TestMouse> device;
    TestMouse &mouse = device.controller;
    mouse.SetReverseDeltaX(true);
    mouse.SetReverseDeltaWheel(true);
    auto const move = [&]
    {
        mouse.SetPosition(10, 20, true);
        mouse.AccumDelta(3, 4);
        mouse.AccumDelta(1, 1);
        mouse.AccumWheelDelta(120);
    };
    device.Sample(move);
    device.Sample(move);
    EXPECT_EQ(mouse.Readings(), (std::vector<int>{10, 20, -4, 5, -120}));
    device.Sample();
    EXPECT_EQ(mouse.Readings(), (std::vector<int>{10, 20, 0, 0, 0}));

    device.StartAsyncSampling();
    device.Sample(move);
    device.Sample(move);
    device.LockSampledData();
    EXPECT_EQ(mouse.Readings(), (std::vector<int>{10, 20, -8, 10, -240}));
    device.UnlockSampledData();
    EXPECT_EQ(mouse.Readings(), (std::vector<int>{10, 20, 0, 0, 0}));

    mouse.ResetDelta(3, 4);
    EXPECT_EQ(mouse.Readings(), (std::vector<int>{10, 20, -3, 4, 0}));
    // Counts that nobody reads may wrap without harm.
    mouse.ResetDelta(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    mouse.AccumDelta(1, 1);
}

TEST(Mouse, TellsOfEveryActivationAndClearsAxesWithTheMode)
{
    TestMouse mouse;
    EXPECT_TRUE(mouse.IsActiveSyncWithSystemCursor());
    mouse.ActivateSyncWithSystemCursor(true);
    mouse.ActivateSyncWithSystemCursor(false);
    EXPECT_EQ(mouse.numSyncChanges, 2);

    mouse.SetPosition(1, 2, true);
    mouse.AccumDelta(3, 4);
    mouse.AccumWheelDelta(5);
    mouse.ActivateRelativeMode(false);
    EXPECT_EQ(mouse.Readings(), std::vector<int>(5, 0));
    EXPECT_FALSE(mouse.IsPositionInsideAppWindowClientArea());
    EXPECT_EQ(mouse.numModeChanges, 1);
}

TEST(Mouse, AcceleratesByLevel)
{
    using Point = std::pair<float, float>;
    std::tuple<unsigned int, float, Point, Point> const cases[] = {
        {0, 1, {1000, 0}, {1000, 0}}, {1, 1, {130, -1}, {260, -2}}, {7, 1, {65, 0}, {130, 0}},
        {2, 1, {-130, 2}, {-520, 8}}, {2, 1, {64, -64}, {64, -64}}, {2, 0.5f, {1, -128}, {1, -128}},
        {2, -3, {5, 5}, {0, 0}},
    };
    TestMouse mouse;
    for (auto const &[level, speed, in, out] : cases)
    {
        mouse.SetAbsoluteModeAccelerationLevel(level);
        mouse.SetAbsoluteModeSpeed(speed);
        Point result{-1, -1};
        mouse.ApplyAbsoluteModeModifiers(in.first, in.second, result.first, result.second);
        EXPECT_EQ(result, out) << in.first << " at level " << level;
    }
    EXPECT_EQ(mouse.GetAbsoluteModeAccelerationLevel(), 2u);

    float first = 0.0f, second = 0.0f;
    float const thresholds[][4] = {{100, 50, 100, 100}, {-1, -2, 0, 0}, {s_notANumber, s_notANumber, 64, 256}};
    for (auto const &row : thresholds)
    {
        mouse.SetAbsoluteModeAccelerationThresholds(row[0], row[1]);
        mouse.GetAbsoluteModeAccelerationThresholds(first, second);
        EXPECT_TRUE(first == row[2] && second == row[3]) << row[0];
    }
    mouse.SetAbsoluteModeSpeed(s_notANumber);
    EXPECT_EQ(mouse.GetAbsoluteModeSpeed(), 1.0f);

    mouse.SetRelativeModeSensitivity(2.0f, -1.0f);
    mouse.ApplyRelativeModeModifiers(3.0f, 4.0f, first, second);
    EXPECT_TRUE(first == 6.0f && second == -4.0f);
    mouse.SetRelativeModeSensitivity(s_notANumber, 2.0f);
    mouse.ApplyRelativeModeModifiers(3.0f, 4.0f, first, second);
    EXPECT_TRUE(first == 3.0f && second == 8.0f);
}

TEST(GameController, KeepsPropertiesInRangeAndReportsEach)
{
    using Axis = GameController::eAxis;
    TestGameController controller;
    controller.ReportHardwareCaps_Gadgets(20, 9, 100);
    EXPECT_EQ(std::tuple(controller.GetNumSliders(), controller.GetNumPOVHats(), controller.GetNumButtons()),
              std::tuple(8u, 4u, 32u));

    float const properties[][4] = {{0.6f, 0.4f, 0.6f, 0.6f}, {-1, 2, 0, 1}, {s_notANumber, s_notANumber, 0, 1}};
    for (auto const &[deadZone, saturation, wantedDeadZone, wantedSaturation] : properties)
    {
        controller.SetAxisProperties(Axis::AxisRZ, deadZone, saturation);
        EXPECT_EQ(std::pair(controller.GetAxisDeadZone(Axis::AxisRZ), controller.GetAxisSaturation(Axis::AxisRZ)),
                  std::pair(wantedDeadZone, wantedSaturation));
    }
    EXPECT_EQ(controller.numModifierChanges, 3);

    controller.ReportHardwareCaps_Gadgets(3, 0, 0);
    controller.SetSliderProperties(3, 0.5f, 0.75f);
    controller.numModifierChanges = 0;
    controller.ResetAxisProperties();
    controller.ResetSliderProperties();
    EXPECT_EQ(controller.numModifierChanges, 6 + 3);
    EXPECT_EQ(controller.GetAxisSaturation(Axis::AxisRZ), 1.0f);
    EXPECT_EQ(controller.GetSliderSaturation(3), 0.75f) << "beyond the sliders that there are";
}

TEST(GameController, ReversesWhenItWritesAndRestsInTheCentre)
{
    using Axis = GameController::eAxis;
    TestKernel const kernel;
    ControllerDevice<TestGameController> device;
    TestGameController &controller = device.controller;
    controller.SetAxisReverse(Axis::AxisY, true);
    controller.SetSliderReverse(7, true);
    controller.SetAxisPosition(Axis::AxisY, 0.5f);
    controller.SetSliderPosition(7, 0.25f);
    controller.SetAxisReverse(Axis::AxisY, false);
    EXPECT_EQ(controller.GetAxisPosition(Axis::AxisY), -0.5f);
    EXPECT_EQ(controller.GetSliderPosition(7), -0.25f);
    EXPECT_TRUE(controller.IsPOVHatCentered(3));
    controller.SetPOVHatPosition(3, 0.0f);
    EXPECT_FALSE(controller.IsPOVHatCentered(3));
    device.Sample();
    EXPECT_EQ(controller.GetAxisPosition(Axis::AxisY), -0.5f) << "levels stay";
    controller.ResetInputReadings();
    EXPECT_EQ(controller.GetAxisPosition(Axis::AxisY), 0.0f);
    EXPECT_EQ(controller.GetSliderPosition(7), 0.0f);
    EXPECT_EQ(controller.GetPOVHatPosition(3), -1.0f);
    EXPECT_TRUE(controller.IsSliderReversed(7)) << "modifiers stay";
}

TEST(ButtonDevices, DumpTheirCapabilities)
{
    EXPECT_EQ(DumpText(TestKeyboard(true)), "\tIsSystemKeyboard: true\n");
    TestGameController controller;
    controller.ReportHardwareCaps_Axes(true, false, true, false, false, true);
    controller.ReportHardwareCaps_Gadgets(1, 2, 12);
    EXPECT_EQ(DumpText(controller), "\tAxisX.....: true\n\tAxisY.....: false\n\tAxisZ.....: true\n"
                                    "\tAxisRX....: false\n\tAxisRY....: false\n\tAxisRZ....: true\n"
                                    "\tNumSliders: 1\n\tNumPOVHats: 2\n\tNumButtons: 12\n");
}

} // namespace
} // namespace quillmarsh::tests
