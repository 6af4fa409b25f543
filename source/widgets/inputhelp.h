// Small questions about keys and wheels.
#ifndef QUILLMARSH_SOURCE_WIDGETS_INPUTHELP_H
#define QUILLMARSH_SOURCE_WIDGETS_INPUTHELP_H

#include <quillmarsh/gui/gui_manager.h>

namespace quillmarsh::widgets
{

/// Movement of the wheel for one notch; a fine wheel also reports parts of it.
constexpr int s_wheelNotch = 120;

/// Adds a movement of the wheel to the rest of a notch that is left over, and takes the whole notches out of it. The
/// rest is forgotten when the wheel turns back.
inline int TakeNotches(int &rest, int delta)
{
    bool const goesOn = (rest < 0) == (delta < 0);
    long long const sum = static_cast<long long>(delta) + (goesOn ? rest : 0);
    rest = static_cast<int>(sum % s_wheelNotch);
    return static_cast<int>(sum / s_wheelNotch);
}

/// @name Modifiers
/// As they are pressed in this frame.
/// @{
inline bool IsShiftPressed()
{
    return gui::Manager::Instance().IsKeyModifierPressed(e_key_modifier_shift);
}

inline bool IsControlPressed()
{
    return gui::Manager::Instance().IsKeyModifierPressed(e_key_modifier_control);
}

inline bool IsAltPressed()
{
    return gui::Manager::Instance().IsKeyModifierPressed(e_key_modifier_alt);
}
/// @}

inline bool IsEnterKey(eKey key)
{
    return key == e_key_enter || key == e_key_num_enter;
}

/// True for characters that show, unlike those of control keys.
inline bool IsShownCharacter(char character)
{
    auto const code = static_cast<unsigned char>(character);
    return code >= 0x20 && code != 0x7f && (code < 0x80 || code >= 0xa0);
}

} // namespace quillmarsh::widgets

#endif
