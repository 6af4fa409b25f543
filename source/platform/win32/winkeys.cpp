#include "source/platform/win32/winkeys.h"

#include <quillmarsh/platform/desktopevents.h>

#include "source/platform/win32/windows.h"

#include <iterator>

namespace quillmarsh::platform
{
namespace
{

/// Keys that follow one another both in eKey and in the scan codes.
struct KeyRun
{
    unsigned int scanCode;
    eKey key;
    unsigned int length = 1;
    bool isExtended = false;
};

constexpr KeyRun s_keyRuns[] = {
    {0x01, e_key_escape},
    {0x02, e_key_1, 14},
    {0x10, e_key_q, 13},
    {0x1d, e_key_l_control},
    {0x1e, e_key_a, 11},
    {0x29, e_key_grave_accent},
    {0x2a, e_key_l_shift},
    {0x2b, e_key_backslash},
    {0x2c, e_key_z, 11},
    {0x37, e_key_num_multiply},
    {0x38, e_key_l_alt},
    {0x39, e_key_space},
    {0x3a, e_key_caps_lock},
    {0x3b, e_key_f1, 10},
    {0x45, e_key_pause},
    {0x46, e_key_scroll_lock},
    {0x47, e_key_num_7, 3},
    {0x4a, e_key_num_subtract},
    {0x4b, e_key_num_4, 3},
    {0x4e, e_key_num_add},
    {0x4f, e_key_num_1, 3},
    {0x52, e_key_num_0},
    {0x53, e_key_num_decimal},
    {0x54, e_key_print_screen},
    {0x56, e_key_oem102},
    {0x57, e_key_f11, 2},
    {0x1c, e_key_num_enter, 1, true},
    {0x1d, e_key_r_control, 1, true},
    {0x35, e_key_num_divide, 1, true},
    {0x36, e_key_r_shift, 1, true},
    {0x37, e_key_print_screen, 1, true},
    {0x38, e_key_r_alt, 1, true},
    {0x45, e_key_num_lock, 1, true},
    {0x46, e_key_pause, 1, true},
    {0x47, e_key_home, 1, true},
    {0x48, e_key_arrow_up, 1, true},
    {0x49, e_key_page_up, 1, true},
    {0x4b, e_key_arrow_left, 1, true},
    {0x4d, e_key_arrow_right, 1, true},
    {0x4f, e_key_end, 1, true},
    {0x50, e_key_arrow_down, 1, true},
    {0x51, e_key_page_down, 1, true},
    {0x52, e_key_insert, 1, true},
    {0x53, e_key_delete, 1, true},
    {0x5b, e_key_l_win, 1, true},
    {0x5c, e_key_r_win, 1, true},
    {0x5d, e_key_app_menu, 1, true},
};

} // namespace

eKey FindKey(unsigned int scanCode, bool isExtended)
{
    // The right shift key comes with and without the extended flag.
    isExtended = isExtended || scanCode == 0x36;
    for (KeyRun const &run : s_keyRuns)
    {
        if (isExtended == run.isExtended && scanCode >= run.scanCode && scanCode < run.scanCode + run.length)
            return static_cast<eKey>(run.key + (scanCode - run.scanCode));
    }
    return e_key_none;
}

unsigned int FindVirtualKey(eKey key)
{
    HKL const layout = GetKeyboardLayout(0);
    constexpr eKey numKeys[] = {e_key_num_0, e_key_num_1, e_key_num_2, e_key_num_3, e_key_num_4,
                                e_key_num_5, e_key_num_6, e_key_num_7, e_key_num_8, e_key_num_9};
    // These keys share their scan codes with the arrow keys.
    for (unsigned int i = 0; i < std::size(numKeys); ++i)
    {
        if (key == numKeys[i])
            return VK_NUMPAD0 + i;
    }
    for (KeyRun const &run : s_keyRuns)
    {
        unsigned int const code = run.scanCode + (key - run.key) + (run.isExtended ? 0xe000 : 0);
        if (key >= run.key && key < run.key + run.length)
            return key == e_key_num_decimal ? VK_DECIMAL : MapVirtualKeyExW(code, MAPVK_VSC_TO_VK_EX, layout);
    }
    return 0;
}

bool FindKeyCharacter(eKey key, KeyModifiers const &modifiers, char32_t &character)
{
    constexpr unsigned int keepSystemState = 4;
    constexpr BYTE isDown = 0x80;
    HKL const layout = GetKeyboardLayout(0);
    unsigned int const virtualKey = FindVirtualKey(key);
    bool const isOnNumPad = virtualKey >= VK_NUMPAD0 && virtualKey <= VK_NUMPAD9;
    if (virtualKey == 0 || ((isOnNumPad || virtualKey == VK_DECIMAL) && !modifiers.isNumLockOn))
        return false;
    BYTE state[256] = {};
    state[VK_SHIFT] = modifiers.isShiftDown ? isDown : 0;
    // Windows treats Ctrl and Alt together as AltGr.
    state[VK_CONTROL] = modifiers.isControlDown || modifiers.isAltGrDown ? isDown : 0;
    state[VK_MENU] = modifiers.isAltGrDown ? isDown : 0;
    state[VK_CAPITAL] = modifiers.isCapsLockOn ? 1 : 0;
    wchar_t text[8];
    int const length = ToUnicodeEx(virtualKey, 0, state, text, std::size(text), keepSystemState, layout);
    bool const isControl = text[0] < 0x20 || (text[0] >= 0x7f && text[0] < 0xa0);
    if (length != 1 || isControl)
        return false;
    character = text[0];
    return true;
}

} // namespace quillmarsh::platform
