#include "playedcontrollers.h"

#include <quillmarsh/devices/gamecontroller.h>
#include <quillmarsh/devices/glove.h>
#include <quillmarsh/devices/keyboard.h>
#include <quillmarsh/devices/keyboardlayout.h>
#include <quillmarsh/devices/mouse.h>
#include <quillmarsh/devices/orientationtracker.h>
#include <quillmarsh/devices/positiontracker.h>

#include <algorithm>
#include <cmath>
#include <type_traits>

namespace input_recording
{

using namespace quillmarsh;

namespace
{

// Returns the index of a field's first value in the state.
unsigned int FindFirst(eKind kind, string const &field)
{
    KindDesc const &desc = GetKindDesc(kind);
    return desc.fields[desc.FindField(field)].first;
}

class PlayedKeyboard final : public Keyboard, public PlayedController
{
public:
    PlayedKeyboard(HumanInterfaceDevice &device, bool isSystem) : Keyboard(isSystem) { SetParentHID(device); }

    HIDController &GetController() override { return *this; }

    /// A recording contains keys, but not the layout of its keyboard.
    bool MapKeyToCharacter(eKey key, char &character) override { return FindLayoutCharacter(*this, key, character); }
    void OnCharacterMappingChanged() override {}

protected:
    void Apply(std::span<float const> state) override
    {
        for (unsigned int key = 0; key < e_key_none; ++key)
        {
            if (state[key] != 0.0f)
                SetKeyPressed(static_cast<eKey>(key));
        }
    }
};

class PlayedMouse final : public Mouse, public PlayedController
{
public:
    PlayedMouse(HumanInterfaceDevice &device, bool isSystem) : Mouse(isSystem) { SetParentHID(device); }

    HIDController &GetController() override { return *this; }
    void OnRelativeModeChanged() override {}
    void OnSyncWithSystemCursorChanged() override {}

protected:
    void Apply(std::span<float const> state) override
    {
        float deltaX = 0.0f;
        float deltaY = 0.0f;
        if (IsActiveRelativeMode())
            ApplyRelativeModeModifiers(state[move_], state[move_ + 1], deltaX, deltaY);
        else
            ApplyAbsoluteModeModifiers(state[move_], state[move_ + 1], deltaX, deltaY);
        AccumDelta(ToInt(deltaX), ToInt(deltaY));
        AccumWheelDelta(ToInt(state[wheel_]));
        SetPosition(ToInt(state[position_]), ToInt(state[position_ + 1]), state[inside_] != 0.0f);
        for (unsigned int button = 0; button <= e_mouse_button_extra3; ++button)
        {
            if (state[buttons_ + button] != 0.0f)
                SetButtonPressed(static_cast<eMouseButton>(button));
        }
    }

private:
    static int ToInt(float value) { return static_cast<int>(std::lround(std::clamp(value, -2e9f, 2e9f))); }

    unsigned int const move_ = FindFirst(e_kind_mouse, "move");
    unsigned int const wheel_ = FindFirst(e_kind_mouse, "wheel");
    unsigned int const position_ = FindFirst(e_kind_mouse, "position");
    unsigned int const inside_ = FindFirst(e_kind_mouse, "inside");
    unsigned int const buttons_ = FindFirst(e_kind_mouse, "buttons");
};

class PlayedOrientationTracker final : public OrientationTracker, public PlayedController
{
public:
    PlayedOrientationTracker(HumanInterfaceDevice &device, RecordedController const &recorded)
    {
        SetParentHID(device);
        eSamplingMode const mode = recorded.counts[0] != 0 ? EulerSamplingMode : QuaternionSamplingMode;
        ReportHardwareCaps_SamplingMode(mode, true);
        SetSamplingMode(mode);
    }

    HIDController &GetController() override { return *this; }

protected:
    void Apply(std::span<float const> state) override
    {
        if (GetSamplingMode() == EulerSamplingMode)
            SetOrientation(state[angles_], state[angles_ + 1], state[angles_ + 2]);
        else
            SetOrientation(quat(&state[quaternion_]));
    }
    bool DoResetOrientation() override { return false; }
    bool DoResetHead() override { return false; }
    bool DoResetPitch() override { return false; }
    bool DoResetRoll() override { return false; }
    bool DoChangeSamplingMode(eSamplingMode) override { return true; }

private:
    unsigned int const angles_ = FindFirst(e_kind_orientation_tracker, "angles");
    unsigned int const quaternion_ = FindFirst(e_kind_orientation_tracker, "quaternion");
};

class PlayedPositionTracker final : public PositionTracker, public PlayedController
{
public:
    PlayedPositionTracker(HumanInterfaceDevice &device, RecordedController const &) { SetParentHID(device); }

    HIDController &GetController() override { return *this; }

protected:
    void Apply(std::span<float const> state) override { SetPosition(vec3(state.data())); }
    bool DoResetPosition() override { return false; }
    bool DoResetX() override { return false; }
    bool DoResetY() override { return false; }
    bool DoResetZ() override { return false; }
};

class PlayedGlove final : public Glove, public PlayedController
{
public:
    PlayedGlove(HumanInterfaceDevice &device, RecordedController const &recorded)
    {
        SetParentHID(device);
        ReportHandedness(recorded.isLeftHanded);
        for (unsigned int sensor = 0; sensor < s_numSensors; ++sensor)
        {
            ReportHardwareCaps_Sensor(static_cast<eGloveSensor>(sensor), recorded.counts[sensor] != 0);
            if (recorded.ranges[sensor].IsKnown())
                SetRange(static_cast<eGloveSensor>(sensor), recorded.ranges[sensor]);
        }
        ResetInputReadings();
    }

    HIDController &GetController() override { return *this; }

protected:
    void Apply(std::span<float const> state) override
    {
        for (unsigned int sensor = 0; sensor < s_numSensors; ++sensor)
        {
            SetRawValue(static_cast<eGloveSensor>(sensor), state[sensor]);
            SetFlexure(static_cast<eGloveSensor>(sensor), state[sensor]);
        }
        DeriveAnglesFromFlexures();
    }

private:
    /// Sets the range of a sensor. The flexure comes first, because a glove widens a range to the current flexure.
    void SetRange(eGloveSensor sensor, Range const &range)
    {
        SetFlexure(sensor, range.min);
        SetMinFlexure(sensor, range.min);
        SetMaxFlexure(sensor, range.max);
    }
};

class PlayedGameController final : public GameController, public PlayedController
{
public:
    PlayedGameController(HumanInterfaceDevice &device, RecordedController const &recorded)
    {
        SetParentHID(device);
        auto const &counts = recorded.counts;
        ReportHardwareCaps_Axes(counts[0], counts[1], counts[2], counts[3], counts[4], counts[5]);
        ReportHardwareCaps_Gadgets(FindEnd(counts, sliders_, s_maxSliders), FindEnd(counts, hats_, s_maxPOVHats),
                                   counts.back());
    }

    HIDController &GetController() override { return *this; }
    /// Does nothing: each sample reads the current properties.
    void OnOperationModifiersChanged() override {}

protected:
    void Apply(std::span<float const> state) override
    {
        for (unsigned int i = 0; i < s_numAxes; ++i)
        {
            auto const axis = static_cast<eAxis>(i);
            SetAxisPosition(axis, ApplyModifiers(state[i], GetAxisDeadZone(axis), GetAxisSaturation(axis)));
        }
        for (unsigned int i = 0; i < s_maxSliders; ++i)
            SetSliderPosition(i, ApplyModifiers(state[sliders_ + i], GetSliderDeadZone(i), GetSliderSaturation(i)));
        for (unsigned int i = 0; i < s_maxPOVHats; ++i)
            SetPOVHatPosition(i, state[hats_ + i]);
        for (unsigned int i = 0; i < s_maxButtons; ++i)
        {
            if (state[buttons_ + i] != 0.0f)
                SetButtonPressed(i);
        }
    }

private:
    /// Returns the number of fields from `first` to the last one that the controller has.
    static unsigned int FindEnd(std::vector<unsigned int> const &counts, unsigned int first, unsigned int end)
    {
        while (end > 0 && counts[first + end - 1] == 0)
            --end;
        return end;
    }

    // Each field before the buttons has one value, so its index in the state is its index among the fields.
    unsigned int const sliders_ = FindFirst(e_kind_game_controller, "slider0");
    unsigned int const hats_ = FindFirst(e_kind_game_controller, "hat0");
    unsigned int const buttons_ = FindFirst(e_kind_game_controller, "buttons");
};

template<typename Controller>
AutoPtr<PlayedController> Make(HumanInterfaceDevice &device, RecordedController const &recorded, bool isSystem)
{
    if constexpr (std::is_constructible_v<Controller, HumanInterfaceDevice &, bool>)
        return std::make_unique<Controller>(device, isSystem);
    else
        return std::make_unique<Controller>(device, recorded);
}

} // namespace

void PlayedController::Sample(std::span<float const> state)
{
    HIDController &controller = GetController();
    controller.PreSampleUpdate();
    Apply(state);
    controller.PostSampleUpdate();
}

AutoPtr<PlayedController> MakePlayedController(HumanInterfaceDevice &device, RecordedController const &recorded,
                                               bool isSystem)
{
    constexpr AutoPtr<PlayedController> (*makers[s_numKinds])(HumanInterfaceDevice &, RecordedController const &,
                                                              bool) = {
        &Make<PlayedKeyboard>,        &Make<PlayedMouse>, &Make<PlayedOrientationTracker>,
        &Make<PlayedPositionTracker>, &Make<PlayedGlove>, &Make<PlayedGameController>};
    return makers[recorded.kind](device, recorded, isSystem);
}

} // namespace input_recording
