#include "source/platform/linux/sdl/sdlkeys.h"

#include <quillmarsh/basetools/texttools.h>

#include <array>

namespace quillmarsh::platform
{
namespace
{

/// Keys that follow one another both in eKey and in SDL's scancodes.
struct KeyRun
{
    SDL_Scancode scancode;
    eKey key;
    unsigned int length = 1;
};

constexpr KeyRun s_keyRuns[] = {
    {SDL_SCANCODE_ESCAPE, e_key_escape},
    {SDL_SCANCODE_F1, e_key_f1, 12},
    {SDL_SCANCODE_GRAVE, e_key_grave_accent},
    {SDL_SCANCODE_1, e_key_1, 10},
    {SDL_SCANCODE_MINUS, e_key_minus, 2},
    {SDL_SCANCODE_BACKSPACE, e_key_backspace, 2},
    {SDL_SCANCODE_Q, e_key_q},
    {SDL_SCANCODE_W, e_key_w},
    {SDL_SCANCODE_E, e_key_e},
    {SDL_SCANCODE_R, e_key_r},
    {SDL_SCANCODE_T, e_key_t},
    {SDL_SCANCODE_Y, e_key_y},
    {SDL_SCANCODE_U, e_key_u},
    {SDL_SCANCODE_I, e_key_i},
    {SDL_SCANCODE_O, e_key_o, 2},
    {SDL_SCANCODE_LEFTBRACKET, e_key_l_bracket, 2},
    {SDL_SCANCODE_RETURN, e_key_enter},
    {SDL_SCANCODE_CAPSLOCK, e_key_caps_lock},
    {SDL_SCANCODE_A, e_key_a},
    {SDL_SCANCODE_S, e_key_s},
    {SDL_SCANCODE_D, e_key_d},
    {SDL_SCANCODE_F, e_key_f, 3},
    {SDL_SCANCODE_J, e_key_j, 3},
    {SDL_SCANCODE_SEMICOLON, e_key_semicolon, 2},
    {SDL_SCANCODE_BACKSLASH, e_key_backslash},
    {SDL_SCANCODE_NONUSHASH, e_key_backslash},
    {SDL_SCANCODE_LSHIFT, e_key_l_shift},
    {SDL_SCANCODE_NONUSBACKSLASH, e_key_oem102},
    {SDL_SCANCODE_Z, e_key_z},
    {SDL_SCANCODE_X, e_key_x},
    {SDL_SCANCODE_C, e_key_c},
    {SDL_SCANCODE_V, e_key_v},
    {SDL_SCANCODE_B, e_key_b},
    {SDL_SCANCODE_N, e_key_n},
    {SDL_SCANCODE_M, e_key_m},
    {SDL_SCANCODE_COMMA, e_key_comma, 3},
    {SDL_SCANCODE_RSHIFT, e_key_r_shift},
    {SDL_SCANCODE_LCTRL, e_key_l_control},
    {SDL_SCANCODE_LGUI, e_key_l_win},
    {SDL_SCANCODE_LALT, e_key_l_alt},
    {SDL_SCANCODE_SPACE, e_key_space},
    {SDL_SCANCODE_RALT, e_key_r_alt},
    {SDL_SCANCODE_MODE, e_key_r_alt},
    {SDL_SCANCODE_RGUI, e_key_r_win},
    {SDL_SCANCODE_APPLICATION, e_key_app_menu},
    {SDL_SCANCODE_MENU, e_key_app_menu},
    {SDL_SCANCODE_RCTRL, e_key_r_control},
    {SDL_SCANCODE_PRINTSCREEN, e_key_print_screen, 4},
    {SDL_SCANCODE_DELETE, e_key_delete},
    {SDL_SCANCODE_HOME, e_key_home},
    {SDL_SCANCODE_END, e_key_end},
    {SDL_SCANCODE_PAGEUP, e_key_page_up},
    {SDL_SCANCODE_PAGEDOWN, e_key_page_down},
    {SDL_SCANCODE_UP, e_key_arrow_up},
    {SDL_SCANCODE_DOWN, e_key_arrow_down},
    {SDL_SCANCODE_LEFT, e_key_arrow_left},
    {SDL_SCANCODE_RIGHT, e_key_arrow_right},
    {SDL_SCANCODE_NUMLOCKCLEAR, e_key_num_lock},
    {SDL_SCANCODE_KP_DIVIDE, e_key_num_divide, 5},
    {SDL_SCANCODE_KP_PERIOD, e_key_num_decimal},
    {SDL_SCANCODE_KP_0, e_key_num_0},
    {SDL_SCANCODE_KP_1, e_key_num_1, 9},
};

using KeyTable = std::array<unsigned char, SDL_NUM_SCANCODES>;

constexpr KeyTable MakeKeyTable()
{
    KeyTable table = {};
    table.fill(e_key_none);
    for (KeyRun const &run : s_keyRuns)
    {
        for (unsigned int i = 0; i < run.length; ++i)
            table[run.scancode + i] = static_cast<unsigned char>(run.key + i);
    }
    return table;
}

constexpr KeyTable s_keys = MakeKeyTable();

/// Returns the first scancode of a key.
SDL_Scancode FindScancode(eKey key)
{
    for (KeyRun const &run : s_keyRuns)
    {
        if (key >= run.key && key < run.key + run.length)
            return static_cast<SDL_Scancode>(run.scancode + (key - run.key));
    }
    return SDL_SCANCODE_UNKNOWN;
}

constexpr char32_t s_noCharacter = 0;
constexpr char32_t s_notKnown = 0xffffffff;

std::size_t GetIndex(KeyModifiers const &modifiers)
{
    return static_cast<std::size_t>(modifiers.isShiftDown) | static_cast<std::size_t>(modifiers.isControlDown) << 1 |
           static_cast<std::size_t>(modifiers.isAltGrDown) << 2 |
           static_cast<std::size_t>(modifiers.isCapsLockOn) << 3 | static_cast<std::size_t>(modifiers.isNumLockOn) << 4;
}

/// The characters learned so far, by modifiers and key.
struct Characters
{
    std::array<std::array<char32_t, e_key_none>, 32> table;
    char32_t *last = nullptr;

    Characters() { Forget(); }
    void Forget()
    {
        for (auto &row : table)
            row.fill(s_notKnown);
        last = nullptr;
    }
};

Characters &GetCharacters()
{
    static Characters s_characters;
    return s_characters;
}

bool IsPrintable(int code)
{
    return (code >= 0x20 && code < 0x7f) || (code >= 0xa0 && code <= 0xff);
}

/// Returns the character of a UTF-8 text that has exactly one; otherwise none.
char32_t DecodeCharacter(char const *text)
{
    wstring units;
    if (!AsciiToUnicode(text, units))
        return s_noCharacter;
    if (units.size() == 1)
        return units[0];
    bool const isPair = units.size() == 2 && (units[0] & 0xfc00) == 0xd800;
    return isPair ? 0x10000u + ((units[0] & 0x3ffu) << 10) + (units[1] & 0x3ffu) : s_noCharacter;
}

/// Returns the character of a key alone, or its capital letter. None when SDL does not report enough to know it.
char32_t Guess(eKey key, KeyModifiers const &modifiers)
{
    if (modifiers.isControlDown || modifiers.isAltGrDown || !IsSdlLoaded())
        return s_noCharacter;
    int const code = SDL_GetKeyFromScancode(FindScancode(key));
    bool const isLetter = (code >= 'a' && code <= 'z') || (code >= 0xe0 && code <= 0xfe && code != 0xf7);
    if (isLetter && modifiers.isShiftDown != modifiers.isCapsLockOn)
        return static_cast<char32_t>(code - 0x20);
    bool const isKnown = IsPrintable(code) && (isLetter || !modifiers.isShiftDown);
    return isKnown ? static_cast<char32_t>(code) : s_noCharacter;
}

} // namespace

eKey FindKey(SDL_Scancode scancode)
{
    return scancode >= 0 && scancode < SDL_NUM_SCANCODES ? static_cast<eKey>(s_keys[scancode]) : e_key_none;
}

KeyModifiers MakeModifiers(unsigned int sdlModifiers)
{
    auto const has = [sdlModifiers](unsigned int mask) { return (sdlModifiers & mask) != 0; };
    return {has(KMOD_SHIFT), has(KMOD_CTRL), has(KMOD_LALT), has(KMOD_RALT | KMOD_MODE), has(KMOD_CAPS), has(KMOD_NUM)};
}

void LearnKeyDown(eKey key, KeyModifiers const &modifiers)
{
    Characters &characters = GetCharacters();
    characters.last = key < e_key_none ? &characters.table[GetIndex(modifiers)][key] : nullptr;
    if (characters.last)
        *characters.last = s_noCharacter;
}

void LearnText(char const *text)
{
    if (char32_t *const last = GetCharacters().last)
        *last = DecodeCharacter(text);
}

void ForgetCharacters()
{
    GetCharacters().Forget();
}

bool FindKeyCharacter(eKey key, KeyModifiers const &modifiers, char32_t &character)
{
    if (key >= e_key_none)
        return false;
    char32_t const known = GetCharacters().table[GetIndex(modifiers)][key];
    char32_t const found = known != s_notKnown ? known : Guess(key, modifiers);
    if (found != s_noCharacter)
        character = found;
    return found != s_noCharacter;
}

} // namespace quillmarsh::platform
