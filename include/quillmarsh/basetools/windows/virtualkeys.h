// Virtual keys: the numbers of keys in the messages of windows.
#ifndef QUILLMARSH_BASETOOLS_WINDOWS_VIRTUALKEYS_H
#define QUILLMARSH_BASETOOLS_WINDOWS_VIRTUALKEYS_H

#include <quillmarsh/platform/api.h>
#include <quillmarsh/platform/inputcodes.h>

namespace quillmarsh::win_utils
{

/// Virtual keys, with the numbers that Windows gives them. Letters and digits have their ASCII codes, 'A' to 'Z' and '0'
/// to '9'. Letters are those of the present keyboard layout, the others those of a keyboard for the United States.
enum eVirtualKey : unsigned int
{
    e_vk_leftButton = 0x01,
    e_vk_rightButton = 0x02,
    e_vk_middleButton = 0x04,
    e_vk_backspace = 0x08,
    e_vk_tab = 0x09,
    e_vk_enter = 0x0d,
    /// Either shift key.
    e_vk_shift = 0x10,
    /// Either Ctrl key.
    e_vk_control = 0x11,
    /// Either Alt key.
    e_vk_alt = 0x12,
    e_vk_pause = 0x13,
    e_vk_capsLock = 0x14,
    e_vk_escape = 0x1b,
    e_vk_space = 0x20,
    e_vk_pageUp = 0x21,
    e_vk_pageDown = 0x22,
    e_vk_end = 0x23,
    e_vk_home = 0x24,
    e_vk_left = 0x25,
    e_vk_up = 0x26,
    e_vk_right = 0x27,
    e_vk_down = 0x28,
    e_vk_printScreen = 0x2c,
    e_vk_insert = 0x2d,
    e_vk_delete = 0x2e,
    e_vk_leftWin = 0x5b,
    e_vk_rightWin = 0x5c,
    e_vk_appMenu = 0x5d,
    /// 0 on the number pad; the other digits follow.
    e_vk_num0 = 0x60,
    e_vk_numMultiply = 0x6a,
    e_vk_numAdd = 0x6b,
    e_vk_numSubtract = 0x6d,
    e_vk_numDecimal = 0x6e,
    e_vk_numDivide = 0x6f,
    /// F1; the other function keys follow.
    e_vk_f1 = 0x70,
    e_vk_f4 = 0x73,
    e_vk_f10 = 0x79,
    e_vk_numLock = 0x90,
    e_vk_scrollLock = 0x91,
    e_vk_semicolon = 0xba,
    e_vk_equals = 0xbb,
    e_vk_comma = 0xbc,
    e_vk_minus = 0xbd,
    e_vk_period = 0xbe,
    e_vk_slash = 0xbf,
    e_vk_graveAccent = 0xc0,
    e_vk_leftBracket = 0xdb,
    e_vk_backslash = 0xdc,
    e_vk_rightBracket = 0xdd,
    e_vk_apostrophe = 0xde,
    e_vk_oem102 = 0xe2
};

/// Returns the virtual key of a key, as messages have it: both keys of a pair like shift have the number of the pair.
/// Returns 0 for e_key_none and values out of range. The desktop's thread, which knows the keyboard layout.
QUILLMARSH_API unsigned int ToVirtualKey(eKey key);

} // namespace quillmarsh::win_utils

#endif
