// Conversion between text and values, and functions that cut and shape text.
#ifndef QUILLMARSH_BASETOOLS_TEXTTOOLS_H
#define QUILLMARSH_BASETOOLS_TEXTTOOLS_H

#include <quillmarsh/platform/types.h>

#include <vector>

namespace quillmarsh
{

/// @name Text to value
/// Each returns true on success, and changes the output only then. Any thread, like everything in this header.
///
/// A bool is one of "0", "false", "no", "off", "1", "true", "yes", "on", in upper or lower case, with nothing around
/// it. Other values may have blanks and tabs around them, and are read as a standard stream reads them, to the last
/// character: a number with a letter behind it fails, and a minus before an unsigned number wraps. A `char` of either
/// kind is read as a character, not as a number.
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
/// Copies the text, with the blanks and tabs around it.
QUILLMARSH_API bool ToValue(string const &text, string &value);
/// @}

/// @name Value to text
/// Each replaces the output. Widths and precisions are those of a standard stream.
/// @{

/// "true" or "false".
QUILLMARSH_API void ToString(string &text, bool value);
QUILLMARSH_API void ToString(string &text, int value);
QUILLMARSH_API void ToString(string &text, unsigned int value);
QUILLMARSH_API void ToString(string &text, long value);
QUILLMARSH_API void ToString(string &text, unsigned long value);
QUILLMARSH_API void ToString(string &text, long long value);
/// For sizes too, which have this type on 64-bit Windows.
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
/// Copies the text.
QUILLMARSH_API void ToString(string &text, string const &value);

/// Returns the text form of a value.
template<typename T>
string MakeString(T const &value)
{
    string text;
    ToString(text, value);
    return text;
}

/// @}
/// Converts from UTF-8 to UTF-16, in spite of its name. Returns false, and an empty output, when the input is not
/// well-formed.
QUILLMARSH_API bool AsciiToUnicode(string const &text, wstring &wide);
/// Converts from UTF-16 to UTF-8. Returns false, and an empty output, when the input is not well-formed.
QUILLMARSH_API bool UnicodeToAscii(wstring const &wide, string &text);

/// @name Characters
/// The letters of the console language are those of ASCII, in every locale.
/// @{
constexpr bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
constexpr bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}
/// True for blank and tab, the only whitespace of the console language.
constexpr bool IsBlank(char c)
{
    return c == ' ' || c == '\t';
}
/// @}

/// @name Shaping
/// @{
/// Makes the ASCII letters lower case.
QUILLMARSH_API void LowerCase(string &text);
/// Makes the ASCII letters upper case.
QUILLMARSH_API void UpperCase(string &text);
/// Removes blanks and tabs at both ends.
QUILLMARSH_API void TrimWhitespace(string &text);
/// Gives the text without blanks and tabs at both ends.
QUILLMARSH_API void TrimWhitespace(string const &text, string &trimmed);
/// Removes a pair of equal quotes, single or double, around a text of at least two characters.
QUILLMARSH_API void TrimQuotes(string &text);
/// Appends `fill` until the text has `length` characters. Leaves a longer text alone.
QUILLMARSH_API void PadToLength(string &text, unsigned int length, char fill = ' ');
/// Puts `prefix` in front of every line. An empty text is one line; a line feed at the end opens no line.
QUILLMARSH_API void AddLinePrefix(string &text, string const &prefix);
/// Arranges the words of the text in lines of at most `lineLength` characters. A longer word has a line of its own.
QUILLMARSH_API void FitToLineLengthBreakAtWhitespaceOnly(string &text, unsigned int lineLength);
/// Cuts the text at each delimiter. Empty pieces count, but a delimiter at the end of the text opens none.
QUILLMARSH_API void BreakIntoLines(string const &text, std::vector<string> &lines, char delimiter = '\n');
/// True for a letter or "_" with letters, digits and "_" behind it, and for an empty text.
QUILLMARSH_API bool IsStandardIdentifier(string const &text);
/// Removes every character that a standard identifier cannot have at its place.
QUILLMARSH_API void ForceStandardIdentifier(string &text);
/// Makes a text safe for a terminal: writes "\x" and two hexadecimal digits for each byte of a control character, of a
/// character that changes the direction of writing, and of what is not well-formed UTF-8. Line feed and tab become "\n"
/// and "\t", or stay with `keepLayout`. Everything else stays as it is.
QUILLMARSH_API string MakePrintable(string const &text, bool keepLayout = false);
/// @}

/// @name Scanning
/// Steps of hand-written parsers, which shorten a text from its front. "Match" tests, "Eat" removes.
/// @{

/// True when the first character is one of `set`; false for an empty text.
QUILLMARSH_API bool MatchNext(string const &text, string const &set);
/// True when the first character is the wanted one; false for an empty text.
QUILLMARSH_API bool MatchNext(string const &text, char wanted);
/// Removes all characters of `set` from the front, up to the first other one. Returns how many were removed.
QUILLMARSH_API unsigned int EatLeading(string &text, string const &set);
/// Removes the first character if it is the wanted one. Returns how many were removed, 1 or 0.
QUILLMARSH_API unsigned int EatNext(string &text, char wanted);
/// True when the text begins with `prefix`.
QUILLMARSH_API bool MatchPrefix(string const &text, string const &prefix);
/// Removes `prefix` from the front. Returns false, and leaves the text alone, when the text does not begin with it.
QUILLMARSH_API bool EatPrefix(string &text, string const &prefix);
/// Removes everything in front of the first character of `set`. Returns false when the text has no such character; the
/// whole text is then removed with `eatAllIfNoDelimiter`, and otherwise stays.
QUILLMARSH_API bool EatToDelimiter(string &text, string const &set, bool eatAllIfNoDelimiter);
/// @}

} // namespace quillmarsh

#endif
