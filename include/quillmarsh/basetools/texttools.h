// Conversion between text and values, and functions that cut and shape text.
#ifndef QUILLMARSH_BASETOOLS_TEXTTOOLS_H
#define QUILLMARSH_BASETOOLS_TEXTTOOLS_H

#include <quillmarsh/platform/types.h>

#include <vector>

namespace quillmarsh
{

/// @name Text to value
/// True on success; the output changes only then. Any thread, as everything in this header.
///
/// A bool is one of "0", "false", "no", "off", "1", "true", "yes", "on", in either case, with nothing around it.
/// Everything else may have blanks and tabs around it, and is read whole as a standard stream reads it: a number that
/// is followed by a letter fails, and a minus before an unsigned number wraps. Characters read as characters.
/// @{
QUILLMARSH_API bool ToValue(string const &text, bool &value);
QUILLMARSH_API bool ToValue(string const &text, char &value);
QUILLMARSH_API bool ToValue(string const &text, unsigned char &value);
QUILLMARSH_API bool ToValue(string const &text, short &value);
QUILLMARSH_API bool ToValue(string const &text, unsigned short &value);
QUILLMARSH_API bool ToValue(string const &text, int &value);
QUILLMARSH_API bool ToValue(string const &text, unsigned int &value);
QUILLMARSH_API bool ToValue(string const &text, float &value);
QUILLMARSH_API bool ToValue(string const &text, double &value);
QUILLMARSH_API bool ToValue(string const &text, void *&value);
/// A text converts to itself, untrimmed.
QUILLMARSH_API bool ToValue(string const &text, string &value);
/// @}

/// @name Value to text
/// The output is replaced. Widths and precisions are those of a standard stream.
/// @{

/// "true" or "false".
QUILLMARSH_API void ToString(string &text, bool value);
QUILLMARSH_API void ToString(string &text, int value);
QUILLMARSH_API void ToString(string &text, unsigned int value);
QUILLMARSH_API void ToString(string &text, long value);
QUILLMARSH_API void ToString(string &text, unsigned long value);
QUILLMARSH_API void ToString(string &text, long long value);
/// Sizes have this type on 64-bit Windows.
QUILLMARSH_API void ToString(string &text, unsigned long long value);
/// Lower-case hexadecimal, filled with "0" to `width`.
QUILLMARSH_API void ToStringHex(string &text, unsigned int value, unsigned int width = 0);
QUILLMARSH_API void ToStringHex(string &text, unsigned long value, unsigned int width = 0);
/// General notation, neither fixed nor scientific.
QUILLMARSH_API void ToString(string &text, double value, unsigned int width = 0, unsigned int precision = 6);
/// Fixed notation. `showPositive` writes a plus, `internalAdjust` fills between sign and digits.
QUILLMARSH_API void ToStringFix(string &text, double value, unsigned int width = 0, unsigned int precision = 6,
                                bool showPositive = false, bool internalAdjust = false);
/// Scientific notation, otherwise as ToStringFix.
QUILLMARSH_API void ToStringSci(string &text, double value, unsigned int width = 0, unsigned int precision = 6,
                                bool showPositive = false, bool internalAdjust = false);
/// "0x" and the address in hexadecimal.
QUILLMARSH_API void ToString(string &text, void *value);
/// A text is its own text form.
QUILLMARSH_API void ToString(string &text, string const &value);

/// The text form of a value as a result, where no output is at hand.
template<typename T>
string MakeString(T const &value)
{
    string text;
    ToString(text, value);
    return text;
}

/// @}
/// From UTF-8 to UTF-16, in spite of its name. False when the input is not well-formed; the output is then empty.
QUILLMARSH_API bool AsciiToUnicode(string const &text, wstring &wide);
/// From UTF-16 to UTF-8. False when the input is not well-formed; the output is then empty.
QUILLMARSH_API bool UnicodeToAscii(wstring const &wide, string &text);

/// @name Characters
/// The console language knows ASCII letters only, whatever the locale.
/// @{
constexpr bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
constexpr bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}
/// Blank or tab, the only whitespace of the console language.
constexpr bool IsBlank(char c)
{
    return c == ' ' || c == '\t';
}
/// @}

/// @name Shaping
/// @{
QUILLMARSH_API void LowerCase(string &text);
QUILLMARSH_API void UpperCase(string &text);
/// Removes blanks and tabs at both ends.
QUILLMARSH_API void TrimWhitespace(string &text);
QUILLMARSH_API void TrimWhitespace(string const &text, string &trimmed);
/// Removes a pair of equal quotes, single or double, around a text of at least two characters.
QUILLMARSH_API void TrimQuotes(string &text);
/// Appends `fill` until the text has `length` characters. Never shortens.
QUILLMARSH_API void PadToLength(string &text, unsigned int length, char fill = ' ');
/// Puts `prefix` in front of every line; an empty text is one line, and nothing follows a line feed at the end.
QUILLMARSH_API void AddLinePrefix(string &text, string const &prefix);
/// Lays the words of the text out in lines of at most `lineLength` characters; a longer word stands alone.
QUILLMARSH_API void FitToLineLengthBreakAtWhitespaceOnly(string &text, unsigned int lineLength);
/// Cuts the text at each delimiter. Empty pieces count, but a delimiter at the very end opens none.
QUILLMARSH_API void BreakIntoLines(string const &text, std::vector<string> &lines, char delimiter = '\n');
/// A letter or "_", then letters, digits and "_". An empty text counts.
QUILLMARSH_API bool IsStandardIdentifier(string const &text);
/// Keeps those characters that make a standard identifier in their place.
QUILLMARSH_API void ForceStandardIdentifier(string &text);
/// Makes a text safe for a terminal: writes "\x" and two hexadecimal digits for each byte of a control character, of a
/// character that changes the direction of writing, and of what is not well-formed UTF-8. Line feed and tab become "\n"
/// and "\t", or stay with `keepLayout`. Everything else stays as it is.
QUILLMARSH_API string MakePrintable(string const &text, bool keepLayout = false);
/// @}

/// @name Scanning
/// Steps of hand-written parsers, which shorten a text from its front.
/// @{
QUILLMARSH_API bool MatchNext(string const &text, string const &set);
QUILLMARSH_API bool MatchNext(string const &text, char wanted);
/// Removes the longest head made of characters of `set`; returns its length.
QUILLMARSH_API unsigned int EatLeading(string &text, string const &set);
/// Removes one character when it is the wanted one; returns 1 or 0.
QUILLMARSH_API unsigned int EatNext(string &text, char wanted);
QUILLMARSH_API bool MatchPrefix(string const &text, string const &prefix);
QUILLMARSH_API bool EatPrefix(string &text, string const &prefix);
/// Removes everything in front of the first character of `set`, which stays. Without one: false, and the text goes only
/// if `eatAllIfNoDelimiter`.
QUILLMARSH_API bool EatToDelimiter(string &text, string const &set, bool eatAllIfNoDelimiter);
/// @}

} // namespace quillmarsh

#endif
