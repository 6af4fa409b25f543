// Conversion between UTF-8 and the text of the GUI.
#ifndef QUILLMARSH_SOURCE_GUI_ROBOT_LATIN1_H
#define QUILLMARSH_SOURCE_GUI_ROBOT_LATIN1_H

#include <quillmarsh/basetools/texttools.h>

namespace quillmarsh::gui::robot_parts
{

inline bool IsUtf8(string const &text)
{
    wstring units;
    return AsciiToUnicode(text, units);
}

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

} // namespace quillmarsh::gui::robot_parts

#endif
