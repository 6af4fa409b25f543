#include "desktopdevices.h"

#include <quillmarsh/platform/desktopevents.h>

#include <algorithm>

namespace input_desktop
{

using namespace quillmarsh;

namespace
{

constexpr char32_t s_lastLatin1 = 0xff;

/// Returns the whole pixels of a movement, and keeps the rest for the next call.
int TakeWhole(float movement, float &rest)
{
    constexpr float limit = 1e9f;
    float const sum = std::clamp(movement + rest, -limit, limit);
    int const whole = static_cast<int>(sum);
    rest = sum - static_cast<float>(whole);
    return whole;
}

} // namespace

DesktopKeyboard::DesktopKeyboard(HumanInterfaceDevice &device, Desktop &desktop) : Keyboard(true), desktop_(desktop)
{
    SetParentHID(device);
}

bool DesktopKeyboard::MapKeyToCharacter(eKey key, char &character)
{
    if (key >= e_key_none)
        return false;
    platform::KeyModifiers modifiers;
    modifiers.isShiftDown = KeyPressed(e_key_l_shift) != 0 || KeyPressed(e_key_r_shift) != 0;
    modifiers.isControlDown = KeyPressed(e_key_l_control) != 0 || KeyPressed(e_key_r_control) != 0;
    modifiers.isAltDown = KeyPressed(e_key_l_alt) != 0;
    modifiers.isAltGrDown = KeyPressed(e_key_r_alt) != 0;
    modifiers.isCapsLockOn = isCapsLockOn_;
    modifiers.isNumLockOn = isNumLockOn_;
    char32_t found = 0;
    bool const isLatin1 = platform::FindKeyCharacter(key, modifiers, found) && found <= s_lastLatin1;
    if (isLatin1)
        character = static_cast<char>(found);
    return isLatin1;
}

void DesktopKeyboard::Sample()
{
    KeySample sample;
    desktop_.TakeKeys(sample);
    isCapsLockOn_ = sample.isCapsLockOn;
    isNumLockOn_ = sample.isNumLockOn;
    PreSampleUpdate();
    for (unsigned int key = 0; key < e_key_none; ++key)
    {
        if (sample.keys[key])
            SetKeyPressed(static_cast<eKey>(key));
    }
    PostSampleUpdate();
}

DesktopMouse::DesktopMouse(HumanInterfaceDevice &device, Desktop &desktop) : Mouse(true), desktop_(desktop)
{
    SetParentHID(device);
    SetCanDisplaySystemCursor(true);
    SetCanSyncWithSystemCursor(true);
}

void DesktopMouse::OnRelativeModeChanged()
{
    isRelative_ = IsActiveRelativeMode();
    UpdateCursor(false);
}

void DesktopMouse::OnSyncWithSystemCursorChanged()
{
    bool const isSynced = IsActiveSyncWithSystemCursor();
    bool const begins = isSynced && !isSynced_.exchange(isSynced);
    isSynced_ = isSynced;
    UpdateCursor(begins && !isRelative_);
}

void DesktopMouse::UpdateCursor(bool mustMove)
{
    desktop_.Wish({isRelative_ || !isSynced_, mustMove, ownX_, ownY_});
}

void DesktopMouse::Sample()
{
    PointerSample sample;
    desktop_.TakePointer(sample);
    bool const isRelative = isRelative_;
    PreSampleUpdate();
    float moveX = 0;
    float moveY = 0;
    if (isRelative)
        ApplyRelativeModeModifiers(sample.moveX, sample.moveY, moveX, moveY);
    else
        ApplyAbsoluteModeModifiers(sample.moveX, sample.moveY, moveX, moveY);
    int const wholeX = TakeWhole(moveX, restX_);
    int const wholeY = TakeWhole(moveY, restY_);
    AccumDelta(wholeX, wholeY);
    AccumWheelDelta(sample.wheel);
    if (!isRelative)
        Place(sample, wholeX, wholeY);
    for (unsigned int button = 0; button <= e_mouse_button_extra3; ++button)
    {
        if ((sample.buttons & 1u << button) != 0)
            SetButtonPressed(static_cast<eMouseButton>(button));
    }
    PostSampleUpdate();
}

void DesktopMouse::Place(PointerSample const &sample, int moveX, int moveY)
{
    bool const isSynced = isSynced_;
    ownX_ = isSynced ? sample.x : std::clamp(ownX_ + moveX, 0, std::max(sample.width - 1, 0));
    ownY_ = isSynced ? sample.y : std::clamp(ownY_ + moveY, 0, std::max(sample.height - 1, 0));
    SetPosition(ownX_, ownY_, !isSynced || sample.isInside);
}

} // namespace input_desktop
