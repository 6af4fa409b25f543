// Conversion between UTF-8 and the text of the GUI.
#ifndef QUILLMARSH_SOURCE_GUI_ROBOT_LATIN1_H
#define QUILLMARSH_SOURCE_GUI_ROBOT_LATIN1_H

#include <quillmarsh/basetools/texttools.h>

namespace quillmarsh::gui::robot_parts
{

/// Returns false for text that is no UTF-8, and for characters that are not in Latin-1.
inline bool ToLatin1(string const &text, string &latin1)
{
    wstring units;
    if (!AsciiToUnicode(text, units))
        return false;
    latin1.clear();
    for (auto const unit : units)
    {
        if (unit > 0xff)
            return false;
        latin1 += static_cast<char>(unit);
    }
    return true;
}

inline string FromLatin1(string const &latin1)
{
    string text;
    for (char const c : latin1)
    {
        auto const code = static_cast<unsigned char>(c);
        if (code < 0x80)
        {
            text += c;
            continue;
        }
        text += static_cast<char>(0xc0 | code >> 6);
        text += static_cast<char>(0x80 | (code & 0x3f));
    }
    return text;
}

} // namespace quillmarsh::gui::robot_parts

#endif
