// Numbers as people read them.
#ifndef QUILLMARSH_PLUGINS_VIEWER_IMAGE_NUMBERS_H
#define QUILLMARSH_PLUGINS_VIEWER_IMAGE_NUMBERS_H

#include <quillmarsh/basetools/texttools.h>

namespace viewer
{

using quillmarsh::string;

/// Returns a number with some of its digits, such as "0.25", "1.2e-05".
inline string FormatNumber(double value, unsigned int precision = 6)
{
    string text;
    quillmarsh::ToString(text, value, 0, precision);
    return text == "-0" ? "0" : text;
}

/// Returns a zoom as "93.5 %", "2400 %".
inline string FormatZoom(double zoom)
{
    return FormatNumber(zoom * 100, zoom < 10 ? 3 : 5) + " %";
}

} // namespace viewer

#endif
