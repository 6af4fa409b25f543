// Scan codes of the keys: the numbers that the hardware gives them.
#ifndef QUILLMARSH_SOURCE_PLATFORM_SCANCODES_H
#define QUILLMARSH_SOURCE_PLATFORM_SCANCODES_H

#include <quillmarsh/platform/inputcodes.h>

namespace quillmarsh::platform
{

/// Keys that follow one another both in eKey and in the scan codes.
struct ScanCodeRun
{
    unsigned int scanCode;
    eKey key;
    unsigned int length = 1;
    bool isExtended = false;
};

inline constexpr ScanCodeRun s_scanCodeRuns[] = {
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

} // namespace quillmarsh::platform

#endif
