#include "sdlkeys.h"

namespace input_desktop
{

using namespace quillmarsh;

namespace
{

/// Keys that follow one another here and there.
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

/// The scancode that a key has, or the first of them.
SDL_Scancode FindScancode(eKey key)
{
    for (KeyRun const &run : s_keyRuns)
    {
        if (key >= run.key && key < run.key + run.length)
            return static_cast<SDL_Scancode>(run.scancode + (key - run.key));
    }
    return SDL_SCANCODE_UNKNOWN;
}

std::size_t GetIndex(KeyModifiers const &modifiers)
{
    return static_cast<std::size_t>(modifiers.isShiftDown) | static_cast<std::size_t>(modifiers.isControlDown) << 1 |
           static_cast<std::size_t>(modifiers.isAltGrDown) << 2 |
           static_cast<std::size_t>(modifiers.isCapsLockOn) << 3 | static_cast<std::size_t>(modifiers.isNumLockOn) << 4;
}

bool IsPrintable(int code)
{
    return (code >= 0x20 && code < 0x7f) || (code >= 0xa0 && code <= 0xff);
}

/// The one Latin-1 character that the text is, or 0.
short DecodeLatin1(char const *text)
{
    auto const *const bytes = reinterpret_cast<unsigned char const *>(text);
    int code = bytes[0];
    if (code == 0)
        return 0;
    bool isAlone = bytes[1] == 0;
    if (code == 0xc2 || code == 0xc3)
    {
        code = (code & 3) << 6 | (bytes[1] & 0x3f);
        isAlone = bytes[1] != 0 && bytes[2] == 0;
    }
    else if (code >= 0x80)
    {
        return 0;
    }
    return static_cast<short>(isAlone && IsPrintable(code) ? code : 0);
}

/// What a key means by itself, or with its letter made large. 0 if that takes more than SDL tells.
short Guess(eKey key, KeyModifiers const &modifiers)
{
    if (modifiers.isControlDown || modifiers.isAltGrDown)
        return 0;
    int const code = SDL_GetKeyFromScancode(FindScancode(key));
    bool const isLetter = (code >= 'a' && code <= 'z') || (code >= 0xe0 && code <= 0xfe && code != 0xf7);
    if (isLetter && modifiers.isShiftDown != modifiers.isCapsLockOn)
        return static_cast<short>(code - 0x20);
    return static_cast<short>(IsPrintable(code) && (isLetter || !modifiers.isShiftDown) ? code : 0);
}

} // namespace

eKey FindKey(SDL_Scancode scancode)
{
    return scancode >= 0 && scancode < SDL_NUM_SCANCODES ? static_cast<eKey>(s_keys[scancode]) : e_key_none;
}

void CharacterMap::Forget()
{
    CriticalSectionSentry const guard(lock_);
    for (auto &row : characters_)
        row.fill(s_notKnown);
}

void CharacterMap::OnKeyDown(eKey key, KeyModifiers const &modifiers)
{
    CriticalSectionSentry const guard(lock_);
    last_ = key < e_key_none ? &characters_[GetIndex(modifiers)][key] : nullptr;
    if (last_ != nullptr)
        *last_ = 0;
}

void CharacterMap::OnText(char const *text)
{
    CriticalSectionSentry const guard(lock_);
    if (last_ != nullptr)
        *last_ = DecodeLatin1(text);
}

bool CharacterMap::Find(eKey key, KeyModifiers const &modifiers, char &character) const
{
    CriticalSectionSentry const guard(lock_);
    short const known = characters_[GetIndex(modifiers)][key];
    short const code = known != s_notKnown ? known : Guess(key, modifiers);
    if (code == 0)
        return false;
    character = static_cast<char>(code);
    return true;
}

} // namespace input_desktop
