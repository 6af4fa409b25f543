#include "source/widgets/consolecharacters.h"

#include <quillmarsh/widgets/textencoding.h>

#include <utf8cpp/utf8.h>

#include <algorithm>

namespace quillmarsh::widgets
{

namespace
{

constexpr std::string_view s_replacement = "\xEF\xBF\xBD";

bool IsPlain(char byte)
{
    return byte >= ' ' && byte < 0x7f;
}

/// Returns the length of the first character in bytes. Bytes that are no UTF-8 are characters of one byte.
std::size_t GetCharacterLength(std::string_view text)
{
    auto const lead = static_cast<unsigned char>(text.front());
    std::size_t const length = lead < 0xc0 ? 1 : lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : 4;
    bool const isWhole = length <= text.size() && utf8::is_valid(text.begin(), text.begin() + length);
    return isWhole ? length : 1;
}

std::size_t CountColumns(std::string_view character)
{
    if (IsPlain(character.front()))
        return 1;
    return character == "\r" ? 0 : ToGlyphs(string(character)).size();
}

/// True for a character that other programs take as it stands.
bool IsClean(std::string_view character)
{
    bool const isLayout = character == "\t" || character == "\n";
    if (character.size() == 1)
        return isLayout || IsPlain(character.front());
    bool const isControl = character.front() == '\xc2' && static_cast<unsigned char>(character[1]) < 0xa0;
    return !isControl;
}

} // namespace

std::size_t SkipColumns(std::string_view line, std::size_t columns)
{
    std::size_t at = 0;
    while (at < line.size())
    {
        std::size_t const length = IsPlain(line[at]) ? 1 : GetCharacterLength(line.substr(at));
        std::size_t const width = CountColumns(line.substr(at, length));
        if (width > columns || columns == 0)
            break;
        columns -= width;
        at += length;
    }
    return at;
}

string MakeColumns(string const &line)
{
    if (line.find('\r') == string::npos)
        return ToGlyphs(line);
    string rest = line;
    std::erase(rest, '\r');
    return ToGlyphs(rest);
}

void AppendClean(string &target, std::string_view text)
{
    while (!text.empty())
    {
        std::size_t length = 0;
        while (length < text.size() && (IsPlain(text[length]) || text[length] == '\n'))
            ++length;
        target += text.substr(0, length);
        text.remove_prefix(length);
        if (text.empty())
            return;
        length = GetCharacterLength(text);
        std::string_view const character = text.substr(0, length);
        if (character != "\r")
            target += IsClean(character) ? character : s_replacement;
        text.remove_prefix(length);
    }
}

} // namespace quillmarsh::widgets
