#include "source/platform/win32/winkeys.h"

#include <quillmarsh/platform/desktopevents.h>

#include "source/platform/scancodes.h"
#include "source/platform/win32/windows.h"

#include <iterator>

namespace quillmarsh::platform
{
eKey FindKey(unsigned int scanCode, bool isExtended)
{
    // The right shift key comes with and without the extended flag.
    isExtended = isExtended || scanCode == 0x36;
    for (ScanCodeRun const &run : s_scanCodeRuns)
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
    for (ScanCodeRun const &run : s_scanCodeRuns)
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
