#include <quillmarsh/basetools/texttools.h>

#include <gtest/gtest.h>

namespace quillmarsh
{
namespace
{

/// Converts a text to a value and back. Returns "-" when the conversion fails, and when a failed conversion changes the
/// output.
template<typename T>
string Convert(string const &text)
{
    T value = T(1);
    if (ToValue(text, value))
        return MakeString(value);
    return value == T(1) ? "-" : "changed";
}

TEST(TextTools, TextToValue)
{
    for (char const *const text : {"1", "true", "Yes", "ON"})
        EXPECT_EQ(Convert<bool>(text), "true") << text;
    for (char const *const text : {"0", "False", "NO", "off"})
        EXPECT_EQ(Convert<bool>(text), "false") << text;
    for (char const *const text : {"2", "", " on", "on "})
        EXPECT_EQ(Convert<bool>(text), "-") << text;

    constexpr std::tuple<char const *, char const *, char const *, char const *> cases[] = {
        {"7", "7", "7", "7"},
        {" \t-7\t", "-7", "4294967289", "-7"},
        {"+7", "7", "7", "7"},
        {"", "-", "-", "-"},
        {"7x", "-", "-", "-"},
        {"7 7", "-", "-", "-"},
        {"0x7", "-", "-", "-"},
        {"7\n", "-", "-", "-"},
        {"2147483648", "-", "2147483648", "2.14748e+09"},
        {"4294967296", "-", "-", "4.29497e+09"},
        {"2.5", "-", "-", "2.5"},
        {"1e3", "-", "-", "1000"},
        {"1e999", "-", "-", "-"},
    };
    for (auto const &[text, integer, uInteger, real] : cases)
    {
        EXPECT_EQ(Convert<int>(text), integer) << text;
        EXPECT_EQ(Convert<unsigned int>(text), uInteger) << text;
        EXPECT_EQ(Convert<double>(text), real) << text;
    }
    EXPECT_EQ(Convert<short>("32768"), "-");
    EXPECT_EQ(Convert<unsigned short>("65535"), "65535");
    EXPECT_EQ(Convert<float>("1e39"), "-");

    char character = 'c';
    unsigned char byte = 'b';
    EXPECT_TRUE(ToValue(" 7 ", character) && ToValue("\xff", byte));
    EXPECT_EQ(character, '7');
    EXPECT_EQ(byte, 0xff);
    EXPECT_FALSE(ToValue("77", character) || ToValue(" ", character));
    void *pointer = nullptr;
    EXPECT_TRUE(ToValue("0x1f", pointer));
    EXPECT_EQ(MakeString(pointer), "0x1f");
    EXPECT_EQ(MakeString<void *>(nullptr), "0x0");
}

template<typename Shape>
string Shaped(string text, Shape shape)
{
    shape(text);
    return text;
}

TEST(TextTools, ValueToText)
{
    EXPECT_EQ(Shaped("old", [](string &text) { ToStringHex(text, 0xabcu, 6); }), "000abc");
    EXPECT_EQ(Shaped("old", [](string &text) { ToStringHex(text, 0xabcul); }), "abc");
    EXPECT_EQ(Shaped("old", [](string &text) { ToString(text, 0.1, 6, 3); }), "   0.1");
    EXPECT_EQ(Shaped("old", [](string &text) { ToString(text, 123456789.0); }), "1.23457e+08");
    EXPECT_EQ(Shaped("old", [](string &text) { ToStringFix(text, 1.5, 8, 2, true, true); }), "+   1.50");
    EXPECT_EQ(Shaped("old", [](string &text) { ToStringFix(text, 1.5, 0, 0); }), "2");
    EXPECT_EQ(Shaped("old", [](string &text) { ToStringSci(text, -1.5, 10, 1, true, false); }), "  -1.5e+00");
    EXPECT_EQ(MakeString(-5l) + MakeString(5ul), "-55");
}

TEST(TextTools, WideTextIsUtf16)
{
    std::pair<char const *, wstring> const cases[] = {
        {"", {}},
        {"a", {'a'}},
        {"\xc3\xa4\xe2\x82\xac", {0xe4, 0x20ac}},
        {"\xf0\x9d\x84\x9e\xf4\x8f\xbf\xbf", {0xd834, 0xdd1e, 0xdbff, 0xdfff}},
        {"\xed\x9f\xbf\xee\x80\x80", {0xd7ff, 0xe000}},
    };
    for (auto const &[utf8, utf16] : cases)
    {
        wstring wide = {'x'};
        string narrow = "x";
        EXPECT_TRUE(AsciiToUnicode(utf8, wide) && wide == utf16) << utf8;
        EXPECT_TRUE(UnicodeToAscii(utf16, narrow) && narrow == utf8) << narrow;
    }

    for (char const *const broken :
         {"\x80", "\xc3", "\xc3(", "\xc0\x80", "\xe0\x80\x80", "\xed\xa0\x80", "\xf4\x90\x80\x80", "\xf8\x88\x80\x80"})
    {
        wstring wide = {'x'};
        EXPECT_FALSE(AsciiToUnicode(broken, wide)) << broken;
        EXPECT_TRUE(wide.empty());
    }
    string narrow;
    for (wstring const &broken : {wstring{0xd834}, wstring{0xd834, 'a'}, wstring{0xdd1e}, wstring{0xd834, 0xd834}})
        EXPECT_FALSE(UnicodeToAscii(broken, narrow));
}

TEST(TextTools, Shaping)
{
    auto const trim = [](string &text) { TrimWhitespace(text); };
    EXPECT_EQ(Shaped(" \ta b\t ", trim), "a b");
    EXPECT_EQ(Shaped(" \t", trim), "");
    EXPECT_EQ(Shaped("\na\r", trim), "\na\r");
    EXPECT_EQ(Shaped("old", [](string &text) { TrimWhitespace(" \t", text); }), "");

    EXPECT_EQ(Shaped("'", TrimQuotes), "'");
    EXPECT_EQ(Shaped("''", TrimQuotes), "");
    EXPECT_EQ(Shaped("\"'a'\"", TrimQuotes), "'a'");
    EXPECT_EQ(Shaped("'a\"", TrimQuotes), "'a\"");

    EXPECT_EQ(Shaped("aZ\xc4[", LowerCase), "az\xc4[");
    EXPECT_EQ(Shaped("aZ\xe4{", UpperCase), "AZ\xe4{");
    EXPECT_EQ(Shaped("abc", [](string &text) { PadToLength(text, 2, '.'); }), "abc");
    EXPECT_EQ(Shaped("abc", [](string &text) { PadToLength(text, 5, '.'); }), "abc..");

    auto const prefix = [](string &text) { AddLinePrefix(text, "> "); };
    EXPECT_EQ(Shaped("", prefix), "> ");
    EXPECT_EQ(Shaped("a\n\nb\n", prefix), "> a\n> \n> b\n");

    for (char const *const identifier : {"", "_", "a1_"})
        EXPECT_TRUE(IsStandardIdentifier(identifier));
    for (char const *const other : {"1", "a-b", "\xe4", "a b"})
        EXPECT_FALSE(IsStandardIdentifier(other));
    EXPECT_EQ(Shaped("12 a-b\xe4_3!", ForceStandardIdentifier), "ab_3");
}

TEST(TextTools, PrintableTextControlsNoTerminal)
{
    EXPECT_EQ(MakePrintable("caf\xc3\xa9 \xf0\x9d\x84\x9e \\"), "caf\xc3\xa9 \xf0\x9d\x84\x9e \\");
    EXPECT_EQ(MakePrintable("\x1b[2Ja\r\x7f\a" + string(1, '\0')), "\\x1b[2Ja\\x0d\\x7f\\x07\\x00");
    EXPECT_EQ(MakePrintable("a\n\tb"), "a\\n\\tb");
    EXPECT_EQ(MakePrintable("a\n\tb\r\n", true), "a\n\tb\\x0d\n");
    // 8-bit control characters, as single bytes and in UTF-8, and then a character that reverses the text direction.
    EXPECT_EQ(MakePrintable("\x9b"
                            "2J\xc2\x9b\xe2\x80\xae"),
              "\\x9b2J\\xc2\\x9b\\xe2\\x80\\xae");
    // An incomplete sequence does not hide the text after it.
    EXPECT_EQ(MakePrintable("\xe2\x80\x1b[m\xc3"), "\\xe2\\x80\\x1b[m\\xc3");
    EXPECT_EQ(MakePrintable("\xe2\xc3\xa9"), "\\xe2\xc3\xa9");
}

TEST(TextTools, LayingOutLines)
{
    auto const expectFit = [](char const *text, unsigned int length, char const *lines)
    { EXPECT_EQ(Shaped(text, [=](string &fitted) { FitToLineLengthBreakAtWhitespaceOnly(fitted, length); }), lines); };
    expectFit("", 10, "");
    expectFit(" aa\n bb\tcc ", 100, "aa bb cc");
    expectFit("aa bb cc", 5, "aa bb\ncc");
    expectFit("aa bb cc", 4, "aa\nbb\ncc");
    expectFit("a toolongword b", 5, "a\ntoolongword\nb");
    expectFit("aaaa", 4, "aaaa");
    expectFit("a b", 0, "a\nb");

    std::vector<string> lines = {"old"};
    BreakIntoLines("", lines);
    EXPECT_TRUE(lines.empty());
    BreakIntoLines("a\n\nb\n", lines);
    EXPECT_EQ(lines, (std::vector<string>{"a", "", "b"}));
    BreakIntoLines("\n", lines);
    EXPECT_EQ(lines, std::vector<string>{""});
    BreakIntoLines(";a;;", lines, ';');
    EXPECT_EQ(lines, (std::vector<string>{"", "a", ""}));
}

TEST(TextTools, Scanning)
{
    EXPECT_TRUE(MatchNext("abc", string("xa")) && MatchNext("abc", 'a'));
    EXPECT_FALSE(MatchNext("", string("xa")) || MatchNext("", 'a') || MatchNext("abc", 'b'));
    EXPECT_TRUE(MatchPrefix("abc", "ab") && MatchPrefix("abc", ""));
    EXPECT_FALSE(MatchPrefix("ab", "abc") || MatchPrefix("xabc", "abc"));
    string text = "  \tabc.def";
    EXPECT_TRUE(EatLeading(text, " \t") == 3 && EatLeading(text, " \t") == 0);
    EXPECT_TRUE(EatNext(text, 'x') == 0 && EatNext(text, 'a') == 1 && !EatPrefix(text, "c") && EatPrefix(text, "b"));
    EXPECT_TRUE(EatToDelimiter(text, ";.", false) && !EatToDelimiter(text, ";", false));
    EXPECT_EQ(text, ".def");
    EXPECT_FALSE(EatToDelimiter(text, ";", true));
    EXPECT_EQ(text, "");
    EXPECT_EQ(EatLeading(text, " "), 0u);
}

} // namespace
} // namespace quillmarsh
