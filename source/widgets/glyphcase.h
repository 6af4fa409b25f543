// Texts of glyph codes without regard to case.
#ifndef QUILLMARSH_SOURCE_WIDGETS_GLYPHCASE_H
#define QUILLMARSH_SOURCE_WIDGETS_GLYPHCASE_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh::widgets
{

/// Returns the small letter of a capital letter of Latin-1; any other glyph as it is.
constexpr char ToLowerGlyph(char glyph)
{
    auto const code = static_cast<unsigned char>(glyph);
    constexpr unsigned char multiplicationSign = 0xd7;
    bool const isCapital = (code >= 'A' && code <= 'Z') || (code >= 0xc0 && code <= 0xde && code != multiplicationSign);
    return static_cast<char>(isCapital ? code + 0x20 : code);
}

/// Tells whether a text begins with another one, which has no capital letters.
constexpr bool BeginsWithLower(string const &text, string const &lower)
{
    if (text.size() < lower.size())
        return false;
    for (std::size_t i = 0; i < lower.size(); ++i)
    {
        if (ToLowerGlyph(text[i]) != lower[i])
            return false;
    }
    return true;
}

} // namespace quillmarsh::widgets

#endif
