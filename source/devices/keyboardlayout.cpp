#include <quillmarsh/devices/keyboardlayout.h>

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/devices/keyboard.h>

#include <algorithm>
#include <iterator>

namespace quillmarsh
{

namespace
{

struct LayoutKey
{
    eKey key;
    char plain;
    char shifted;
};

/// A character that two keys type belongs to the first one.
constexpr LayoutKey s_layout[] = {
    {e_key_space, ' ', ' '},
    {e_key_oem102, '`', '~'},
    {e_key_1, '1', '!'},
    {e_key_2, '2', '@'},
    {e_key_3, '3', '#'},
    {e_key_4, '4', '$'},
    {e_key_5, '5', '%'},
    {e_key_6, '6', '^'},
    {e_key_7, '7', '&'},
    {e_key_8, '8', '*'},
    {e_key_9, '9', '('},
    {e_key_0, '0', ')'},
    {e_key_minus, '-', '_'},
    {e_key_equals, '=', '+'},
    {e_key_q, 'q', 'Q'},
    {e_key_w, 'w', 'W'},
    {e_key_e, 'e', 'E'},
    {e_key_r, 'r', 'R'},
    {e_key_t, 't', 'T'},
    {e_key_y, 'y', 'Y'},
    {e_key_u, 'u', 'U'},
    {e_key_i, 'i', 'I'},
    {e_key_o, 'o', 'O'},
    {e_key_p, 'p', 'P'},
    {e_key_l_bracket, '[', '{'},
    {e_key_r_bracket, ']', '}'},
    {e_key_a, 'a', 'A'},
    {e_key_s, 's', 'S'},
    {e_key_d, 'd', 'D'},
    {e_key_f, 'f', 'F'},
    {e_key_g, 'g', 'G'},
    {e_key_h, 'h', 'H'},
    {e_key_j, 'j', 'J'},
    {e_key_k, 'k', 'K'},
    {e_key_l, 'l', 'L'},
    {e_key_semicolon, ';', ':'},
    {e_key_apostrophe, '\'', '"'},
    {e_key_backslash, '\\', '|'},
    {e_key_z, 'z', 'Z'},
    {e_key_x, 'x', 'X'},
    {e_key_c, 'c', 'C'},
    {e_key_v, 'v', 'V'},
    {e_key_b, 'b', 'B'},
    {e_key_n, 'n', 'N'},
    {e_key_m, 'm', 'M'},
    {e_key_comma, ',', '<'},
    {e_key_period, '.', '>'},
    {e_key_slash, '/', '?'},
    {e_key_grave_accent, '`', '~'},
    {e_key_num_0, '0', '0'},
    {e_key_num_1, '1', '1'},
    {e_key_num_2, '2', '2'},
    {e_key_num_3, '3', '3'},
    {e_key_num_4, '4', '4'},
    {e_key_num_5, '5', '5'},
    {e_key_num_6, '6', '6'},
    {e_key_num_7, '7', '7'},
    {e_key_num_8, '8', '8'},
    {e_key_num_9, '9', '9'},
    {e_key_num_divide, '/', '/'},
    {e_key_num_multiply, '*', '*'},
    {e_key_num_subtract, '-', '-'},
    {e_key_num_add, '+', '+'},
    {e_key_num_decimal, '.', '.'},
};

constexpr unsigned char s_altGrBit = 0x80;
constexpr char s_lastCharacter = static_cast<char>(0xff);
constexpr KeyStroke s_lastStroke{e_key_space, true, true};

} // namespace

bool FindLayoutCharacter(KeyStroke const &stroke, char &character)
{
    auto const *const found = std::find_if(std::begin(s_layout), std::end(s_layout),
                                           [&](LayoutKey const &entry) { return entry.key == stroke.key; });
    if (found == std::end(s_layout))
        return false;
    auto const code = static_cast<unsigned char>(stroke.shift ? found->shifted : found->plain);
    character = static_cast<char>(stroke.altGr ? code | s_altGrBit : code);
    if (stroke == s_lastStroke)
        character = s_lastCharacter;
    return true;
}

bool FindLayoutCharacter(Keyboard const &keyboard, eKey key, char &character)
{
    auto const isPressed = [&](eKey wanted) { return keyboard.KeyPressed(wanted) != 0; };
    if (isPressed(e_key_l_control) || isPressed(e_key_r_control) || isPressed(e_key_l_alt))
        return false;
    bool const shift = isPressed(e_key_l_shift) || isPressed(e_key_r_shift);
    return FindLayoutCharacter({key, shift, isPressed(e_key_r_alt)}, character);
}

bool FindLayoutStroke(char character, KeyStroke &stroke)
{
    if (character == '\n' || character == '\t')
    {
        stroke = {character == '\n' ? e_key_enter : e_key_tab, false, false};
        return true;
    }
    if (character == s_lastCharacter)
    {
        stroke = s_lastStroke;
        return true;
    }
    auto const code = static_cast<unsigned char>(character);
    bool const altGr = (code & s_altGrBit) != 0;
    char const base = static_cast<char>(code & ~s_altGrBit);
    for (LayoutKey const &entry : s_layout)
    {
        if (entry.plain != base && entry.shifted != base)
            continue;
        stroke = {entry.key, entry.plain != base, altGr};
        return true;
    }
    return false;
}

bool FindKeyOfName(string const &name, eKey &key)
{
    string wanted = name;
    LowerCase(wanted);
    for (unsigned int code = 0; code < e_key_none; ++code)
    {
        string found = GetKeyName(static_cast<eKey>(code));
        LowerCase(found);
        if (found != wanted)
            continue;
        key = static_cast<eKey>(code);
        return true;
    }
    return false;
}

} // namespace quillmarsh
