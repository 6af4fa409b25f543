// Texts between programs, which use UTF-8, and widgets, whose fonts have the 256 glyphs of Latin-1.
#ifndef QUILLMARSH_WIDGETS_TEXTENCODING_H
#define QUILLMARSH_WIDGETS_TEXTENCODING_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh::widgets
{

/// Glyph that stands for a character without one: a box.
constexpr char s_boxGlyph = 0x7f;

/// @name Conversion
/// Widgets hold their texts as glyph codes. Whatever arrives as UTF-8 goes through ToGlyphs(): file names, the clipboard,
/// console output. Any thread.
/// @{
/// Converts UTF-8 to glyph codes. A character that Latin-1 does not have becomes a box; so does each byte that is no
/// UTF-8, and each control character but tab and line feed. Typographic quotes, dashes, the ellipsis and the bullet
/// become their nearest glyphs.
QUILLMARSH_API string ToGlyphs(string const &utf8);
/// Converts glyph codes to UTF-8. Boxes stay what they are.
QUILLMARSH_API string FromGlyphs(string const &glyphs);
/// Tells whether ToGlyphs() loses nothing: FromGlyphs() gives the same text again.
QUILLMARSH_API bool HasAllGlyphs(string const &utf8);
/// @}

} // namespace quillmarsh::widgets

#endif
