#include <quillmarsh/basetools/windows/virtualkeys.h>

#include <quillmarsh/platform/desktopevents.h>

namespace quillmarsh::win_utils
{
namespace
{

/// Keys that follow one another both in eKey and in the virtual keys.
struct VirtualKeyRun
{
    eKey key;
    unsigned int virtualKey;
    unsigned int length = 1;
};

constexpr VirtualKeyRun s_runs[] = {
    {e_key_escape, e_vk_escape},
    {e_key_f1, e_vk_f1, 12},
    {e_key_grave_accent, e_vk_graveAccent},
    {e_key_1, '1', 9},
    {e_key_0, '0'},
    {e_key_minus, e_vk_minus},
    {e_key_equals, e_vk_equals},
    {e_key_backspace, e_vk_backspace, 2},
    {e_key_l_bracket, e_vk_leftBracket},
    {e_key_r_bracket, e_vk_rightBracket},
    {e_key_enter, e_vk_enter},
    {e_key_caps_lock, e_vk_capsLock},
    {e_key_semicolon, e_vk_semicolon},
    {e_key_apostrophe, e_vk_apostrophe},
    {e_key_backslash, e_vk_backslash},
    {e_key_l_shift, e_vk_shift},
    {e_key_oem102, e_vk_oem102},
    {e_key_comma, e_vk_comma},
    {e_key_period, e_vk_period},
    {e_key_slash, e_vk_slash},
    {e_key_r_shift, e_vk_shift},
    {e_key_l_control, e_vk_control},
    {e_key_l_win, e_vk_leftWin},
    {e_key_l_alt, e_vk_alt},
    {e_key_space, e_vk_space},
    {e_key_r_alt, e_vk_alt},
    {e_key_r_win, e_vk_rightWin},
    {e_key_app_menu, e_vk_appMenu},
    {e_key_r_control, e_vk_control},
    {e_key_print_screen, e_vk_printScreen},
    {e_key_scroll_lock, e_vk_scrollLock},
    {e_key_pause, e_vk_pause},
    {e_key_insert, e_vk_insert, 2},
    {e_key_home, e_vk_home},
    {e_key_end, e_vk_end},
    {e_key_page_up, e_vk_pageUp, 2},
    {e_key_arrow_up, e_vk_up},
    {e_key_arrow_down, e_vk_down},
    {e_key_arrow_left, e_vk_left},
    {e_key_arrow_right, e_vk_right},
    {e_key_num_lock, e_vk_numLock},
    {e_key_num_divide, e_vk_numDivide},
    {e_key_num_multiply, e_vk_numMultiply},
    {e_key_num_subtract, e_vk_numSubtract},
    {e_key_num_add, e_vk_numAdd},
    {e_key_num_enter, e_vk_enter},
    {e_key_num_decimal, e_vk_numDecimal},
    {e_key_num_0, e_vk_num0, 10},
};

/// The letters of a keyboard for the United States, by rows.
struct LetterRow
{
    eKey first;
    char const *letters;
};

constexpr LetterRow s_letterRows[] = {
    {e_key_q, "QWERTYUIOP"},
    {e_key_a, "ASDFGHJKL"},
    {e_key_z, "ZXCVBNM"},
};

/// Returns the letter that the key types in the present layout, otherwise `standard`.
unsigned int FindLetter(eKey key, char standard)
{
    char32_t character = 0;
    bool const isLetter = platform::FindKeyCharacter(key, {}, character) && character >= U'a' && character <= U'z';
    return isLetter ? static_cast<unsigned int>(character - U'a' + U'A') : static_cast<unsigned char>(standard);
}

} // namespace

unsigned int ToVirtualKey(eKey key)
{
    for (LetterRow const &row : s_letterRows)
    {
        for (unsigned int i = 0; row.letters[i] != 0; ++i)
        {
            if (key == row.first + i)
                return FindLetter(key, row.letters[i]);
        }
    }
    for (VirtualKeyRun const &run : s_runs)
    {
        if (key >= run.key && key < run.key + run.length)
            return run.virtualKey + (key - run.key);
    }
    return 0;
}

} // namespace quillmarsh::win_utils
