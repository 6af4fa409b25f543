#include <quillmarsh/basetools/texttools.h>

#include <algorithm>
#include <cstdint>
#include <iomanip>
#include <iterator>
#include <sstream>
#include <utf8cpp/utf8.h>

namespace quillmarsh
{
namespace
{

constexpr char const *s_blanks = " \t";

template<typename T>
bool ReadWhole(string const &text, T &value)
{
    string trimmed;
    TrimWhitespace(text, trimmed);
    std::istringstream stream(trimmed);
    stream.imbue(std::locale::classic());
    T read{};
    stream >> read;
    // True at the end of the text. Peeking is needed for a character, whose reading does not touch what follows.
    if (stream.fail() || stream.peek() != std::istringstream::traits_type::eof())
        return false;
    value = read;
    return true;
}

template<typename T>
void Print(string &text, T value)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << value;
    text = stream.str();
}

template<typename T>
void PrintHex(string &text, T value, unsigned int width)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << std::hex << std::setfill('0') << std::setw(static_cast<int>(width)) << value;
    text = stream.str();
}

void PrintReal(string &text, double value, unsigned int width, unsigned int precision, std::ios::fmtflags flags)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream.width(static_cast<std::streamsize>(width));
    stream.precision(static_cast<std::streamsize>(precision));
    stream.flags(flags);
    stream << value;
    text = stream.str();
}

std::ios::fmtflags RealFlags(std::ios::fmtflags notation, bool showPositive, bool internalAdjust)
{
    std::ios::fmtflags flags = std::ios::dec | std::ios::skipws | notation;
    if (showPositive)
        flags |= std::ios::showpos;
    if (internalAdjust)
        flags |= std::ios::internal;
    return flags;
}

bool IsIdentifierStart(char c)
{
    return IsLetter(c) || c == '_';
}

bool IsIdentifierPart(char c)
{
    return IsIdentifierStart(c) || IsDigit(c);
}

/// True for a character that a terminal does not show, but executes.
bool IsTerminalControl(std::uint32_t codePoint)
{
    struct Range
    {
        std::uint32_t first, last;
    };
    // Control characters, separators of lines and paragraphs, and characters that change the direction of writing.
    constexpr Range ranges[] = {{0x00, 0x1f}, {0x7f, 0x9f}, {0x2028, 0x202e}, {0x2066, 0x2069}};
    return std::any_of(std::begin(ranges), std::end(ranges),
                       [codePoint](Range const &range) { return codePoint >= range.first && codePoint <= range.last; });
}

void AppendEscaped(string &text, char byte)
{
    constexpr char digits[] = "0123456789abcdef";
    auto const value = static_cast<unsigned char>(byte);
    if (byte == '\n' || byte == '\t')
        text += byte == '\n' ? "\\n" : "\\t";
    else
        text += {'\\', 'x', digits[value >> 4], digits[value & 0xf]};
}

} // namespace

bool ToValue(string const &text, bool &value)
{
    struct Word
    {
        char const *text;
        bool value;
    };
    constexpr Word words[] = {{"0", false}, {"false", false}, {"no", false}, {"off", false},
                              {"1", true},  {"true", true},   {"yes", true}, {"on", true}};
    string lower = text;
    LowerCase(lower);
    for (Word const &word : words)
    {
        if (lower == word.text)
        {
            value = word.value;
            return true;
        }
    }
    return false;
}

bool ToValue(string const &text, char &value)
{
    return ReadWhole(text, value);
}

bool ToValue(string const &text, unsigned char &value)
{
    return ReadWhole(text, value);
}

bool ToValue(string const &text, short &value)
{
    return ReadWhole(text, value);
}

bool ToValue(string const &text, unsigned short &value)
{
    return ReadWhole(text, value);
}

bool ToValue(string const &text, int &value)
{
    return ReadWhole(text, value);
}

bool ToValue(string const &text, unsigned int &value)
{
    return ReadWhole(text, value);
}

bool ToValue(string const &text, float &value)
{
    return ReadWhole(text, value);
}

bool ToValue(string const &text, double &value)
{
    return ReadWhole(text, value);
}

bool ToValue(string const &text, void *&value)
{
    return ReadWhole(text, value);
}

bool ToValue(string const &text, string &value)
{
    value = text;
    return true;
}

void ToString(string &text, bool value)
{
    text = value ? "true" : "false";
}

void ToString(string &text, int value)
{
    text = std::to_string(value);
}

void ToString(string &text, unsigned int value)
{
    text = std::to_string(value);
}

void ToString(string &text, long value)
{
    text = std::to_string(value);
}

void ToString(string &text, unsigned long value)
{
    text = std::to_string(value);
}

void ToString(string &text, long long value)
{
    text = std::to_string(value);
}

void ToString(string &text, unsigned long long value)
{
    text = std::to_string(value);
}

void ToStringHex(string &text, unsigned int value, unsigned int width)
{
    PrintHex(text, value, width);
}

void ToStringHex(string &text, unsigned long value, unsigned int width)
{
    PrintHex(text, value, width);
}

void ToString(string &text, double value, unsigned int width, unsigned int precision)
{
    PrintReal(text, value, width, precision, RealFlags({}, false, false));
}

void ToStringFix(string &text, double value, unsigned int width, unsigned int precision, bool showPositive,
                 bool internalAdjust)
{
    PrintReal(text, value, width, precision, RealFlags(std::ios::fixed, showPositive, internalAdjust));
}

void ToStringSci(string &text, double value, unsigned int width, unsigned int precision, bool showPositive,
                 bool internalAdjust)
{
    PrintReal(text, value, width, precision, RealFlags(std::ios::scientific, showPositive, internalAdjust));
}

void ToString(string &text, void *value)
{
    // As a number: only some standard libraries print a pointer with "0x".
    PrintHex(text, reinterpret_cast<std::uintptr_t>(value), 0);
    text.insert(0, "0x");
}

void ToString(string &text, string const &value)
{
    text = value;
}

bool AsciiToUnicode(string const &text, wstring &wide)
{
    wide.clear();
    if (!utf8::is_valid(text.begin(), text.end()))
        return false;
    utf8::unchecked::utf8to16(text.begin(), text.end(), std::back_inserter(wide));
    return true;
}

bool UnicodeToAscii(wstring const &wide, string &text)
{
    text.clear();
    try
    {
        utf8::utf16to8(wide.begin(), wide.end(), std::back_inserter(text));
    }
    catch (utf8::invalid_utf16 const &)
    {
        text.clear();
        return false;
    }
    return true;
}

void LowerCase(string &text)
{
    for (char &c : text)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

void UpperCase(string &text)
{
    for (char &c : text)
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

void TrimWhitespace(string &text)
{
    text.erase(text.find_last_not_of(s_blanks) + 1);
    text.erase(0, text.find_first_not_of(s_blanks));
}

void TrimWhitespace(string const &text, string &trimmed)
{
    std::size_t const first = text.find_first_not_of(s_blanks);
    if (first == string::npos)
        trimmed.clear();
    else
        trimmed.assign(text, first, text.find_last_not_of(s_blanks) + 1 - first);
}

void TrimQuotes(string &text)
{
    bool const isQuoted =
        text.size() >= 2 && text.front() == text.back() && (text.front() == '\'' || text.front() == '"');
    if (!isQuoted)
        return;
    text.pop_back();
    text.erase(0, 1);
}

void PadToLength(string &text, unsigned int length, char fill)
{
    if (text.size() < length)
        text.resize(length, fill);
}

void AddLinePrefix(string &text, string const &prefix)
{
    string out = prefix;
    for (std::size_t at = 0; at < text.size(); ++at)
    {
        out += text[at];
        if (text[at] == '\n' && at + 1 < text.size())
            out += prefix;
    }
    text = std::move(out);
}

void FitToLineLengthBreakAtWhitespaceOnly(string &text, unsigned int lineLength)
{
    std::istringstream words(text);
    words.imbue(std::locale::classic());
    string out;
    string word;
    std::size_t current = 0;
    while (words >> word)
    {
        if (current + word.size() + 1 > lineLength)
        {
            if (!out.empty())
                out += '\n';
            current = 0;
        }
        else if (current != 0)
        {
            out += ' ';
            ++current;
        }
        out += word;
        current += word.size();
    }
    text = std::move(out);
}

void BreakIntoLines(string const &text, std::vector<string> &lines, char delimiter)
{
    lines.clear();
    for (std::size_t begin = 0; begin < text.size();)
    {
        std::size_t const end = std::min(text.find(delimiter, begin), text.size());
        lines.emplace_back(text, begin, end - begin);
        begin = end + 1;
    }
}

bool IsStandardIdentifier(string const &text)
{
    return text.empty() || (IsIdentifierStart(text.front()) && std::all_of(text.begin(), text.end(), IsIdentifierPart));
}

void ForceStandardIdentifier(string &text)
{
    string out;
    for (char const c : text)
    {
        if (out.empty() ? IsIdentifierStart(c) : IsIdentifierPart(c))
            out += c;
    }
    text = std::move(out);
}

string MakePrintable(string const &text, bool keepLayout)
{
    string printable;
    auto at = text.begin();
    while (at != text.end())
    {
        auto const validEnd = utf8::find_invalid(at, text.end());
        while (at != validEnd)
        {
            auto next = at;
            std::uint32_t const codePoint = utf8::unchecked::next(next);
            bool const isLayout = codePoint == '\n' || codePoint == '\t';
            if (isLayout ? keepLayout : !IsTerminalControl(codePoint))
                printable.append(at, next);
            else
                std::for_each(at, next, [&printable](char byte) { AppendEscaped(printable, byte); });
            at = next;
        }
        // Where a sequence breaks off, a character may begin: only the first byte is surely not part of one.
        if (at != text.end())
            AppendEscaped(printable, *at++);
    }
    return printable;
}

bool MatchNext(string const &text, string const &set)
{
    return !text.empty() && set.find(text.front()) != string::npos;
}

bool MatchNext(string const &text, char wanted)
{
    return !text.empty() && text.front() == wanted;
}

unsigned int EatLeading(string &text, string const &set)
{
    std::size_t const count = std::min(text.find_first_not_of(set), text.size());
    text.erase(0, count);
    return static_cast<unsigned int>(count);
}

unsigned int EatNext(string &text, char wanted)
{
    if (!MatchNext(text, wanted))
        return 0;
    text.erase(0, 1);
    return 1;
}

bool MatchPrefix(string const &text, string const &prefix)
{
    return text.compare(0, prefix.size(), prefix) == 0;
}

bool EatPrefix(string &text, string const &prefix)
{
    if (!MatchPrefix(text, prefix))
        return false;
    text.erase(0, prefix.size());
    return true;
}

bool EatToDelimiter(string &text, string const &set, bool eatAllIfNoDelimiter)
{
    std::size_t const at = text.find_first_of(set);
    if (at != string::npos)
    {
        text.erase(0, at);
        return true;
    }
    if (eatAllIfNoDelimiter)
        text.clear();
    return false;
}

} // namespace quillmarsh
