#include <quillmarsh/basetools/texttools.h>

#include <algorithm>
#include <cstdint>
#include <iomanip>
#include <sstream>

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
    // At the end or not: peeking tells also for a character, which is read without a look at what follows.
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

/// Reads one code point of UTF-8 at `at` and steps behind it. False for a sequence that is cut short, overlong, a
/// surrogate, or beyond the last code point.
bool ReadCodePoint(string const &text, std::size_t &at, std::uint32_t &codePoint)
{
    auto const first = static_cast<unsigned char>(text[at++]);
    if (first < 0x80)
    {
        codePoint = first;
        return true;
    }

    struct Form
    {
        unsigned char mask, mark;
        unsigned int numFollowing;
        std::uint32_t least;
    };
    constexpr Form forms[] = {{0xe0, 0xc0, 1, 0x80}, {0xf0, 0xe0, 2, 0x800}, {0xf8, 0xf0, 3, 0x10000}};
    auto const form =
        std::find_if(std::begin(forms), std::end(forms),
                     [first](Form const &candidate) { return (first & candidate.mask) == candidate.mark; });
    if (form == std::end(forms) || text.size() - at < form->numFollowing)
        return false;

    codePoint = first & static_cast<unsigned char>(~form->mask);
    for (unsigned int i = 0; i < form->numFollowing; ++i)
    {
        auto const next = static_cast<unsigned char>(text[at++]);
        if ((next & 0xc0) != 0x80)
            return false;
        codePoint = codePoint << 6 | (next & 0x3fu);
    }
    bool const isSurrogate = codePoint >= 0xd800 && codePoint < 0xe000;
    return codePoint >= form->least && codePoint < 0x110000 && !isSurrogate;
}

void AppendCodePoint(string &text, std::uint32_t codePoint)
{
    auto const append = [&text](std::uint32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (codePoint < 0x80)
    {
        append(codePoint);
        return;
    }
    if (codePoint < 0x800)
        append(0xc0 | codePoint >> 6);
    else
    {
        if (codePoint < 0x10000)
            append(0xe0 | codePoint >> 12);
        else
        {
            append(0xf0 | codePoint >> 18);
            append(0x80 | (codePoint >> 12 & 0x3f));
        }
        append(0x80 | (codePoint >> 6 & 0x3f));
    }
    append(0x80 | (codePoint & 0x3f));
}

/// True for a character that a terminal obeys instead of showing it.
bool IsTerminalControl(std::uint32_t codePoint)
{
    struct Range
    {
        std::uint32_t first, last;
    };
    // Control characters, separators of lines and paragraphs, and what changes the direction of writing.
    constexpr Range ranges[] = {{0x00, 0x1f}, {0x7f, 0x9f}, {0x2028, 0x202e}, {0x2066, 0x2069}};
    return std::any_of(std::begin(ranges), std::end(ranges),
                       [codePoint](Range const &range) { return codePoint >= range.first && codePoint <= range.last; });
}

void AppendEscaped(string &text, unsigned char byte)
{
    constexpr char digits[] = "0123456789abcdef";
    if (byte == '\n' || byte == '\t')
        text += byte == '\n' ? "\\n" : "\\t";
    else
        text += {'\\', 'x', digits[byte >> 4], digits[byte & 0xf]};
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
    // As a number: what a stream prints for a pointer has the "0x" on some standard libraries and not on others.
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
    for (std::size_t at = 0; at < text.size();)
    {
        std::uint32_t codePoint = 0;
        if (!ReadCodePoint(text, at, codePoint))
        {
            wide.clear();
            return false;
        }
        if (codePoint >= 0x10000)
        {
            codePoint -= 0x10000;
            wide += static_cast<unsigned short>(0xd800 | codePoint >> 10);
            codePoint = 0xdc00 | (codePoint & 0x3ff);
        }
        wide += static_cast<unsigned short>(codePoint);
    }
    return true;
}

bool UnicodeToAscii(wstring const &wide, string &text)
{
    text.clear();
    for (std::size_t at = 0; at < wide.size();)
    {
        std::uint32_t codePoint = wide[at++];
        bool const isHigh = codePoint >= 0xd800 && codePoint < 0xdc00;
        bool const isLow = codePoint >= 0xdc00 && codePoint < 0xe000;
        bool const hasLow = isHigh && at < wide.size() && wide[at] >= 0xdc00 && wide[at] < 0xe000;
        if (isLow || (isHigh && !hasLow))
        {
            text.clear();
            return false;
        }
        if (isHigh)
            codePoint = 0x10000 + ((codePoint & 0x3ff) << 10 | (wide[at++] & 0x3ffu));
        AppendCodePoint(text, codePoint);
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
    for (std::size_t at = 0; at < text.size();)
    {
        std::size_t end = at;
        std::uint32_t codePoint = 0;
        bool const isCharacter = ReadCodePoint(text, end, codePoint);
        bool const isLayout = codePoint == '\n' || codePoint == '\t';
        if (isCharacter && (isLayout ? keepLayout : !IsTerminalControl(codePoint)))
        {
            printable.append(text, at, end - at);
            at = end;
            continue;
        }
        // Where the sequence breaks off, a character may begin: only the first byte is surely not part of one.
        end = isCharacter ? end : at + 1;
        for (; at < end; ++at)
            AppendEscaped(printable, static_cast<unsigned char>(text[at]));
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
