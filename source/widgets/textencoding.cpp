#include <quillmarsh/widgets/textencoding.h>

#include <utf8cpp/utf8.h>

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace quillmarsh::widgets
{

namespace
{

/// Characters without a glyph of their own, and the glyphs that come nearest to them.
struct NearGlyphs
{
    std::uint32_t first;
    std::uint32_t last;
    char const *glyphs;
};
constexpr NearGlyphs s_nearGlyphs[] = {
    {0x2010, 0x2015, "-"},    // hyphens and dashes
    {0x2018, 0x201B, "'"},    // single quotes
    {0x201C, 0x201F, "\""},   // double quotes
    {0x2022, 0x2022, "\xB7"}, // bullet
    {0x2026, 0x2026, "..."},  // ellipsis
    {0x2039, 0x2039, "<"},    // single angle quotes
    {0x203A, 0x203A, ">"},
};

constexpr std::uint32_t s_lastAscii = 0x7F;
constexpr std::uint32_t s_lastLatin1 = 0xFF;

bool IsControl(std::uint32_t character)
{
    bool const isLayout = character == '\t' || character == '\n';
    return (character < 0x20 && !isLayout) || (character >= s_lastAscii && character < 0xA0);
}

void AppendGlyphs(string &glyphs, std::uint32_t character)
{
    if (character <= s_lastLatin1)
    {
        glyphs += IsControl(character) ? s_boxGlyph : static_cast<char>(character);
        return;
    }
    auto const isNear = [character](NearGlyphs const &near)
    { return near.first <= character && character <= near.last; };
    auto const *const near = std::find_if(std::begin(s_nearGlyphs), std::end(s_nearGlyphs), isNear);
    if (near != std::end(s_nearGlyphs))
        glyphs += near->glyphs;
    else
        glyphs += s_boxGlyph;
}

} // namespace

string ToGlyphs(string const &utf8)
{
    string glyphs;
    glyphs.reserve(utf8.size());
    auto at = utf8.begin();
    while (at != utf8.end())
    {
        auto const invalid = utf8::find_invalid(at, utf8.end());
        while (at != invalid)
            AppendGlyphs(glyphs, utf8::unchecked::next(at));
        if (at != utf8.end())
        {
            glyphs += s_boxGlyph;
            ++at;
        }
    }
    return glyphs;
}

string FromGlyphs(string const &glyphs)
{
    string utf8;
    utf8.reserve(glyphs.size());
    for (char const glyph : glyphs)
        utf8::unchecked::append(static_cast<unsigned char>(glyph), std::back_inserter(utf8));
    return utf8;
}

bool HasAllGlyphs(string const &utf8)
{
    return FromGlyphs(ToGlyphs(utf8)) == utf8;
}

} // namespace quillmarsh::widgets
