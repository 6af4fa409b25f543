#include "source/gui/robot/robothands.h"

#include <quillmarsh/devices/keyboardlayout.h>

#include <utility>

namespace quillmarsh::gui::robot_parts
{

void Hands::Set(State const &state, int wheel)
{
    std::lock_guard const lock(mutex_);
    state_ = state;
    wheel_ += wheel;
    isTaken_.reset();
    hasWaited_ = false;
}

bool Hands::PassFrame()
{
    std::lock_guard const lock(mutex_);
    if (!isTaken_.all())
        return false;
    return isSampledByThread_.none() || std::exchange(hasWaited_, true);
}

Hands::State Hands::Take(eReader reader, bool isSampledByThread, int &wheel)
{
    std::lock_guard const lock(mutex_);
    isTaken_[reader] = true;
    isSampledByThread_[reader] = isSampledByThread;
    if (reader == e_mouse)
        wheel = std::exchange(wheel_, 0);
    return state_;
}

RobotMouse::RobotMouse(HumanInterfaceDevice &device, Hands const &hands) : Mouse(true), hands_(hands)
{
    SetParentHID(device);
}

void RobotMouse::Sample(Hands::State const &state, int wheel)
{
    PreSampleUpdate();
    auto const moveX = static_cast<float>(state.x - std::exchange(lastX_, state.x));
    auto const moveY = static_cast<float>(state.y - std::exchange(lastY_, state.y));
    float x = 0;
    float y = 0;
    if (IsActiveRelativeMode())
        ApplyRelativeModeModifiers(moveX, moveY, x, y);
    else
        ApplyAbsoluteModeModifiers(moveX, moveY, x, y);
    AccumDelta(static_cast<int>(x), static_cast<int>(y));
    AccumWheelDelta(wheel);
    SetPosition(state.x, state.y, state.isInside);
    for (unsigned int button = 0; button < state.buttons.size(); ++button)
    {
        if (state.buttons[button])
            SetButtonPressed(static_cast<eMouseButton>(button));
    }
    PostSampleUpdate();
}

RobotKeyboard::RobotKeyboard(HumanInterfaceDevice &device, Hands const &hands) : Keyboard(true), hands_(hands)
{
    SetParentHID(device);
}

bool RobotKeyboard::MapKeyToCharacter(eKey key, char &character)
{
    return FindLayoutCharacter(*this, key, character);
}

void RobotKeyboard::Sample(Hands::State const &state, int)
{
    PreSampleUpdate();
    for (unsigned int key = 0; key < state.keys.size(); ++key)
    {
        if (state.keys[key])
            SetKeyPressed(static_cast<eKey>(key));
    }
    PostSampleUpdate();
}

} // namespace quillmarsh::gui::robot_parts
