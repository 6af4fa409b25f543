#include <quillmarsh/devices/keyboard.h>

#include "source/devices/dumpline.h"

#include <quillmarsh/framework/humaninterfacedevice.h>

#include <iterator>

namespace quillmarsh
{

namespace
{

constexpr char const *s_keyNames[] = {
    "Escape",  "F1",        "F2",          "F3",          "F4",         "F5",          "F6",         "F7",
    "F8",      "F9",        "F10",         "F11",         "F12",        "GraveAccent", "1",          "2",
    "3",       "4",         "5",           "6",           "7",          "8",           "9",          "0",
    "Minus",   "Equals",    "Backspace",   "Tab",         "Q",          "W",           "E",          "R",
    "T",       "Y",         "U",           "I",           "O",          "P",           "L-Bracket",  "R-Bracket",
    "Enter",   "CapsLock",  "A",           "S",           "D",          "F",           "G",          "H",
    "J",       "K",         "L",           "Semicolon",   "Apostrophe", "Backslash",   "L-Shift",    "OEM102",
    "Z",       "X",         "C",           "V",           "B",          "N",           "M",          "Comma",
    "Period",  "Slash",     "R-Shift",     "L-Control",   "L-Win",      "L-Alt",       "Space",      "R-Alt",
    "R-Win",   "AppMenu",   "R-Control",   "PrintScreen", "ScrollLock", "Pause",       "Insert",     "Delete",
    "Home",    "End",       "PageUp",      "PageDown",    "ArrowUp",    "ArrowDown",   "ArrowLeft",  "ArrowRight",
    "NumLock", "NumDivide", "NumMultiply", "NumSubtract", "NumAdd",     "NumEnter",    "NumDecimal", "Num0",
    "Num1",    "Num2",      "Num3",        "Num4",        "Num5",       "Num6",        "Num7",       "Num8",
    "Num9",
};
static_assert(std::size(s_keyNames) == e_key_none);

constexpr char const *s_keyModifierNames[] = {"Shift", "Control", "Alt"};

} // namespace

string GetKeyName(eKey key)
{
    return key < std::size(s_keyNames) ? s_keyNames[key] : "BadKeyCode";
}

string GetKeyModifierName(eKeyModifier modifier)
{
    return modifier < std::size(s_keyModifierNames) ? s_keyModifierNames[modifier] : "";
}

Keyboard::Keyboard(bool isSystemKeyboard) : isSystemKeyboard_(isSystemKeyboard)
{
    Keyboard::ResetInputReadings();
}

Keyboard::~Keyboard() = default;

string Keyboard::GetControllerInterfaceName() const
{
    return "Keyboard";
}

void Keyboard::DumpControllerInfo(ostream &out, unsigned int tabs) const
{
    DumpLine(out, tabs, "IsSystemKeyboard: ", isSystemKeyboard_);
}

void Keyboard::ResetInputReadings()
{
    ResetKeyStates();
    ResetKeyModifierCache();
    ResetNumKeysCache();
}

void Keyboard::PreSampleUpdate()
{
    if (IsSampledAsync())
        ClearCurrentKeyStates();
    else
        ShiftKeyStates();
}

void Keyboard::PostSampleUpdate()
{
    if (IsSampledAsync())
        return;
    UpdateKeyModifierCache();
    UpdateNumKeysCache();
}

void Keyboard::OnBeginAsyncSampleRead()
{
    UpdateKeyModifierCache();
    UpdateNumKeysCache();
}

void Keyboard::OnEndAsyncSampleRead()
{
    ShiftCopyKeyStates();
}

void Keyboard::EnableCharacterMapping(bool enable)
{
    if (enable == isCharacterMappingEnabled_)
        return;
    isCharacterMappingEnabled_ = enable;
    OnCharacterMappingChanged();
}

void Keyboard::ResetKeyModifierCache()
{
    std::fill(std::begin(keyModifierCache_), std::end(keyModifierCache_), static_cast<unsigned char>(0));
}

void Keyboard::UpdateKeyModifierCache()
{
    keyModifierCache_[e_key_modifier_shift] = KeyPressed(e_key_l_shift) | KeyPressed(e_key_r_shift);
    keyModifierCache_[e_key_modifier_control] = KeyPressed(e_key_l_control) | KeyPressed(e_key_r_control);
    keyModifierCache_[e_key_modifier_alt] = KeyPressed(e_key_l_alt) | KeyPressed(e_key_r_alt);

    numKeyModifiersPressed_ = 0;
    for (unsigned char const modifier : keyModifierCache_)
        numKeyModifiersPressed_ += modifier != 0 ? 1 : 0;
}

void Keyboard::ResetNumKeysCache()
{
    numKeyModifiersPressed_ = 0;
    numKeysPressed_ = 0;
    numKeysDown_ = 0;
    numKeysUp_ = 0;
}

void Keyboard::UpdateNumKeysCache()
{
    numKeysPressed_ = keyStates_.CountPressed();
    numKeysDown_ = keyStates_.CountDown();
    numKeysUp_ = keyStates_.CountUp();
}

} // namespace quillmarsh
