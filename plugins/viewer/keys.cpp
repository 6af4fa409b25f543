#include "keys.h"

#include <string_view>

namespace viewer
{

using namespace quillmarsh;

namespace
{

struct KeyName
{
    eKey key;
    std::string_view name;
};

/// Keys whose names are no single letters or digits.
constexpr KeyName s_names[] = {
    {e_key_escape, "Escape"},
    {e_key_f1, "F1"},
    {e_key_f2, "F2"},
    {e_key_f3, "F3"},
    {e_key_f4, "F4"},
    {e_key_f5, "F5"},
    {e_key_f6, "F6"},
    {e_key_f7, "F7"},
    {e_key_f8, "F8"},
    {e_key_f9, "F9"},
    {e_key_f10, "F10"},
    {e_key_f11, "F11"},
    {e_key_f12, "F12"},
    {e_key_grave_accent, "`"},
    {e_key_minus, "-"},
    {e_key_equals, "="},
    {e_key_backspace, "Backspace"},
    {e_key_tab, "Tab"},
    {e_key_l_bracket, "["},
    {e_key_r_bracket, "]"},
    {e_key_enter, "Enter"},
    {e_key_semicolon, ";"},
    {e_key_apostrophe, "'"},
    {e_key_backslash, "\\"},
    {e_key_oem102, "<"},
    {e_key_comma, ","},
    {e_key_period, "."},
    {e_key_slash, "/"},
    {e_key_space, "Space"},
    {e_key_app_menu, "Menu"},
    {e_key_print_screen, "Print"},
    {e_key_pause, "Pause"},
    {e_key_insert, "Insert"},
    {e_key_delete, "Delete"},
    {e_key_home, "Home"},
    {e_key_end, "End"},
    {e_key_page_up, "Page Up"},
    {e_key_page_down, "Page Down"},
    {e_key_arrow_up, "Up"},
    {e_key_arrow_down, "Down"},
    {e_key_arrow_left, "Left"},
    {e_key_arrow_right, "Right"},
    {e_key_num_divide, "Keypad /"},
    {e_key_num_multiply, "Keypad *"},
    {e_key_num_subtract, "Keypad -"},
    {e_key_num_add, "Keypad +"},
    {e_key_num_enter, "Keypad Enter"},
    {e_key_num_decimal, "Keypad ."},
};

/// Runs of keys, each in the order of its characters.
struct KeyRun
{
    eKey first;
    std::string_view characters;
};
constexpr KeyRun s_runs[] = {
    {e_key_1, "1234567890"}, {e_key_q, "QWERTYUIOP"}, {e_key_a, "ASDFGHJKL"}, {e_key_z, "ZXCVBNM"}};

struct ModifierName
{
    unsigned int modifier;
    std::string_view name;
};
constexpr ModifierName s_modifiers[] = {{e_control, "Ctrl+"}, {e_alt, "Alt+"}, {e_shift, "Shift+"}};

string FindKeyName(eKey key)
{
    for (KeyRun const &run : s_runs)
    {
        if (key >= run.first && key < run.first + run.characters.size())
            return string(1, run.characters[key - run.first]);
    }
    if (key >= e_key_num_0 && key <= e_key_num_9)
        return string("Keypad ") + static_cast<char>('0' + (key - e_key_num_0));
    for (KeyName const &row : s_names)
    {
        if (row.key == key)
            return string(row.name);
    }
    return "?";
}

} // namespace

string FormatKey(KeyBinding const &binding)
{
    string text;
    for (ModifierName const &row : s_modifiers)
    {
        if ((binding.modifiers & row.modifier) != 0)
            text += row.name;
    }
    return text + FindKeyName(binding.key);
}

} // namespace viewer
