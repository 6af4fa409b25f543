// What a robot holds in its hands: the state of a mouse and a keyboard, and the device that shows it.
#ifndef QUILLMARSH_SOURCE_GUI_ROBOT_ROBOTHANDS_H
#define QUILLMARSH_SOURCE_GUI_ROBOT_ROBOTHANDS_H

#include <quillmarsh/devices/keyboard.h>
#include <quillmarsh/devices/mouse.h>
#include <quillmarsh/framework/humaninterfacedevice.h>

#include <bitset>
#include <memory>
#include <mutex>

namespace quillmarsh::gui::robot_parts
{

/// Mouse and keyboard as the robot moves them. The robot changes them on the frame thread, and the device reads them,
/// maybe on a sampling thread.
class Hands : NoCopy
{
public:
    struct State
    {
        int x = 0;
        int y = 0;
        bool isInside = false;
        std::bitset<e_mouse_button_extra3 + 1> buttons;
        std::bitset<e_key_none> keys;
    };

    /// Readers of the state.
    enum eReader : unsigned int
    {
        e_mouse,
        e_keyboard
    };

    /// @name For the robot
    /// @{
    State const &Get() const { return state_; }
    void Set(State const &state, int wheel = 0);
    /// Counts a frame. True when the GUI has read the last change, so that another may follow.
    bool PassFrame();
    /// @}

    /// @name For the devices
    /// @{

    /// Returns the state, and for the mouse the turns of the wheel since the last call.
    State Take(eReader reader, bool isSampledByThread, int &wheel);
    /// @}

private:
    static constexpr unsigned int s_numReaders = 2;

    std::mutex mutex_;
    State state_;
    int wheel_ = 0;
    std::bitset<s_numReaders> isTaken_{3};
    std::bitset<s_numReaders> isSampledByThread_;
    /// A thread may sample behind the read of a frame, so that only the next frame reads the change.
    bool hasWaited_ = false;
};

/// Mouse of a robot.
class RobotMouse final : public Mouse
{
public:
    static constexpr Hands::eReader s_reader = Hands::e_mouse;

    RobotMouse(HumanInterfaceDevice &device, Hands const &hands);

    void OnRelativeModeChanged() override {}
    void OnSyncWithSystemCursorChanged() override {}

    void Sample(Hands::State const &state, int wheel);
    bool IsHeldBy(Hands const &hands) const { return &hands_ == &hands; }

private:
    Hands const &hands_;
    int lastX_ = 0;
    int lastY_ = 0;
};

/// Keyboard of a robot.
class RobotKeyboard final : public Keyboard
{
public:
    static constexpr Hands::eReader s_reader = Hands::e_keyboard;

    RobotKeyboard(HumanInterfaceDevice &device, Hands const &hands);

    bool MapKeyToCharacter(eKey key, char &character) override;
    void OnCharacterMappingChanged() override {}

    void Sample(Hands::State const &state, int wheel);
    bool IsHeldBy(Hands const &hands) const { return &hands_ == &hands; }

private:
    Hands const &hands_;
};

/// Device of a robot with one controller. Mouse and keyboard are two devices, as those of the system: a reader that locks
/// one of them leaves the changes of the other alone.
template<typename Controller>
class RobotDevice final : public HumanInterfaceDevice
{
public:
    RobotDevice(std::shared_ptr<Hands> hands, string const &description)
        : hands_(std::move(hands)),
          controller_(*this, *hands_)
    {
        DeviceInfo().SetDeviceDescription(description);
        DeviceInfo().SetModelType("Robot");
        DeviceInfo().SetHardwarePort("Program");
    }
    ~RobotDevice() override { StopAsyncSampling(); }

    unsigned int GetNumControllers() override { return 1; }
    HIDController *GetController(unsigned int index) override { return index == 0 ? &controller_ : nullptr; }
    void ConnectDevice(HWND) override {}
    void DisconnectDevice() override {}
    void SampleDevice() override
    {
        int wheel = 0;
        Hands::State const state = hands_->Take(Controller::s_reader, IsAsyncSamplingActive(), wheel);
        controller_.Sample(state, wheel);
    }

protected:
    void ApplyUseDirectInput(bool) override {}

private:
    std::shared_ptr<Hands> const hands_;
    Controller controller_;
};

} // namespace quillmarsh::gui::robot_parts

#endif
