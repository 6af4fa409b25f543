#include "jsontext.h"

#include <cstddef>

namespace quillmarsh::tools
{
namespace
{

struct Sequence
{
    unsigned char first; ///< lowest first byte
    unsigned char last;  ///< highest first byte
    unsigned char second[2];
    std::size_t length;
};

// What well-formed sequences begin with: no longer forms than needed, no surrogates, nothing above U+10FFFF.
constexpr Sequence s_sequences[] = {
    {0xC2, 0xDF, {0x80, 0xBF}, 2}, {0xE0, 0xE0, {0xA0, 0xBF}, 3}, {0xE1, 0xEC, {0x80, 0xBF}, 3},
    {0xED, 0xED, {0x80, 0x9F}, 3}, {0xEE, 0xEF, {0x80, 0xBF}, 3}, {0xF0, 0xF0, {0x90, 0xBF}, 4},
    {0xF1, 0xF3, {0x80, 0xBF}, 4}, {0xF4, 0xF4, {0x80, 0x8F}, 4},
};

unsigned char ByteAt(string const &text, std::size_t index)
{
    return index < text.size() ? static_cast<unsigned char>(text[index]) : 0;
}

/// Length of the well-formed sequence of several bytes at a place; 0 if there is none.
std::size_t MeasureSequence(string const &text, std::size_t at)
{
    for (Sequence const &sequence : s_sequences)
    {
        unsigned char const second = ByteAt(text, at + 1);
        bool fits = ByteAt(text, at) >= sequence.first && ByteAt(text, at) <= sequence.last &&
                    second >= sequence.second[0] && second <= sequence.second[1];
        for (std::size_t i = 2; i < sequence.length; ++i)
            fits = fits && (ByteAt(text, at + i) & 0xC0) == 0x80;
        if (fits)
            return sequence.length;
    }
    return 0;
}

string MakeEscape(unsigned char byte)
{
    constexpr char digits[] = "0123456789abcdef";
    return string("\\u00") + digits[byte >> 4] + digits[byte & 15];
}

} // namespace

string MakeJSONText(string const &text)
{
    string result = "\"";
    for (std::size_t at = 0; at < text.size();)
    {
        unsigned char const byte = ByteAt(text, at);
        std::size_t const length = byte < 0x80 ? 1 : MeasureSequence(text, at);
        if (length == 0)
            result += "\\ufffd";
        else if (byte < ' ' || byte == 0x7F)
            result += MakeEscape(byte);
        else
            result += (byte == '"' || byte == '\\' ? "\\" : "") + text.substr(at, length);
        at += length == 0 ? 1 : length;
    }
    return result + '"';
}

} // namespace quillmarsh::tools
