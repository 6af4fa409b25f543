#include <quillmarsh/basetools/commandlineparser.h>

#include "tests/support/failures.h"

#include <gtest/gtest.h>

#include <sstream>

namespace quillmarsh
{
namespace
{

/// Writes the result as "chain.command|argument|argument", with a mark for the type of each argument.
string Describe(CommandLineParser const &parser)
{
    std::vector<string> chain;
    string command;
    parser.GetCommand(chain, command);
    string text;
    for (string const &object : chain)
        text += object + ".";
    text += command;
    for (unsigned int i = 0; i < parser.GetNumArguments(); ++i)
    {
        CommandLineParser::Argument const &argument = parser.GetArgument(i);
        EXPECT_EQ(argument.GetCmdLinePosition(), i);
        text += string("|") + "-=\""[argument.Type()] + argument.MakeFullString();
    }
    return text;
}

/// Returns the message of the exception that a line causes; empty when it causes none.
string MessageOf(CommandLineParser &parser, string const &line)
{
    return tests::MessageOf<CommandLineErrorException>([&] { parser.Parse(line, true); },
                                                       "source/basetools/commandlineparser.cpp");
}

TEST(CommandLineParser, SplitsLines)
{
    constexpr std::pair<char const *, char const *> cases[] = {
        {" \tfoo\t a ", "foo|\"a"},
        {"foo -a=", "foo|=a="},
        {"foo -a =b", "foo|-a|\"=b"},
        {"foo -a= b", "foo|=a=|\"b"},
        {"foo -5 - -", "foo|\"-5|\"-|\"-"},
        {"foo --x -a-b -_1", "foo|--x|-a-b|-_1"},
        {"foo -a=1-b", "foo|=a=1-b"},
        {"foo a'b -c=d'e", "foo|\"a'b|=c=d'e"},
        {"foo 'it$'s' '$$' -v='$' $''", "foo|\"it's|\"$|=v=' '"},
        {"'a'-b", "a|-b"},
        {"foo 'a'-b", "foo|\"a|-b"},
        {"foo -a='x'-b", "foo|=a=x|-b"},
        {"'' x", "|\"x"},
        {"-foo", "-foo"},
        {"\"foo\" x", "foo|\"x"},
        {"\"my cmd\" x", "\"my|\"cmd\"|\"x"},
        {"'$'a$''", "a"},
        {"\" x", "\"|\"x"},
        {"\xc3\xa4 \xff -\xe4", "\xc3\xa4|\"\xff|\"-\xe4"},
    };
    CommandLineParser parser;
    for (auto const &[line, result] : cases)
    {
        EXPECT_TRUE(parser.Parse(line, true)) << line;
        EXPECT_EQ(Describe(parser), result) << line;
        EXPECT_EQ(parser.GetLastCommandLine(), line);
    }
}

TEST(CommandLineParser, FailuresNameTheRestAndLeaveNoResults)
{
    constexpr std::tuple<bool, char const *, char const *, char const *> cases[] = {
        {true, "", "Expected command", ""},
        {true, "foo 'abc$'", "Quote not closed", "'abc$'"},
        {true, "'foo x", "Quote not closed", "'foo x"},
        {true, "foo -a='b c", "Quote not closed", "'b c"},
        {true, "foo b 'a$b' c", "Bad escape sequence", "'a$b' c"},
        {true, "foo -a'b' c", "Expected whitespace or assignment", "'b' c"},
        {true, "foo -a.b", "Expected whitespace or assignment", ".b"},
        {true, "foo -a\xe4", "Expected whitespace or assignment", "\xe4"},
        {true, "foo 'a''b$'' c", "Expected whitespace before string", "'b'' c"},
        {true, "'foo'bar x", "Expected whitespace before string", "bar x"},
        {true, "foo -a='b'c d", "Expected whitespace before string", "c d"},
        {false, "", "Expected identifier", ""},
        {false, "a.b. c", "Expected identifier", " c"},
        {false, "a.1b", "Expected identifier", "1b"},
        {false, "_a", "Expected identifier", "_a"},
        {false, "a.b:c d", "Expected scope specifier", ":c d"},
    };
    CommandLineParser parser;
    for (auto const &[singleToken, text, message, rest] : cases)
    {
        string const line = text;
        parser.SetParseFlags(singleToken, true);
        EXPECT_EQ(MessageOf(parser, line), string(message) + " at: " + rest + "\nFull command-line was: " + line);
        EXPECT_EQ(Describe(parser), "") << line;
        EXPECT_EQ(parser.GetLastCommandLine(), line);
        EXPECT_FALSE(parser.Parse(line, false)) << line;
        EXPECT_EQ(parser.GetNumArguments(), 0u);
    }
}

TEST(CommandLineParser, FlagsAndSpecialCharactersChangeTheGrammar)
{
    CommandLineParser parser;
    parser.SetParseFlags(false, true);
    EXPECT_TRUE(parser.Parse(" a.b-1.c_d -x", true));
    EXPECT_EQ(Describe(parser), "a.b-1.c_d|-x");

    parser.SetParseFlags(true, false);
    EXPECT_TRUE(parser.Parse("\"foo\"", true));
    EXPECT_EQ(Describe(parser), "\"foo\"");

    parser.SetSpecialCharacters('"', '\\', ':', '/', '~');
    EXPECT_TRUE(parser.Parse(R"(foo /a~"x\" y" -b /c 'd)", true));
    EXPECT_EQ(Describe(parser), "foo|=a=x\" y|\"-b|-c|\"'d");
    EXPECT_EQ(MessageOf(parser, "foo \"a\"\"b\""),
              "Expected whitespace before string at: \"b\"\nFull command-line was: foo \"a\"\"b\"");
    EXPECT_EQ(parser.FormatOptionHelp("on", "turn on\n", 1), "\t/on, turn on\n");
    EXPECT_EQ(parser.FormatAssignmentHelp("size", "uint", "", 0), "/size~uint");
    EXPECT_EQ(parser.FormatStringHelp("0) name", "who\n", 2), "\t\t0) name, who\n");
}

TEST(CommandLineParser, FindsTheFirstArgumentOfTypeAndExactName)
{
    CommandLineParser parser;
    ASSERT_TRUE(parser.Parse("foo a -A -b=1 -b=2 -a=x a -c", true));
    EXPECT_TRUE(parser.GetOption("A") && !parser.GetOption("a") && !parser.GetOption("b"));
    EXPECT_TRUE(parser.GetString("a") && !parser.GetString("c"));
    string value = "kept";
    EXPECT_FALSE(parser.GetAssignment("B", value));
    EXPECT_EQ(value, "kept");
    EXPECT_TRUE(parser.GetAssignment("b", value));
    EXPECT_EQ(value, "1");
    CommandLineParser::Argument argument;
    EXPECT_TRUE(parser.GetOptionArgument("c", argument));
    EXPECT_EQ(argument.GetCmdLinePosition(), 6u);
    EXPECT_FALSE(parser.GetOptionArgument("C", argument));
    EXPECT_TRUE(parser.GetStringArgument("a", argument));
    EXPECT_EQ(argument.GetCmdLinePosition(), 0u);
    EXPECT_TRUE(parser.GetAssignmentArgument("a", argument));
    EXPECT_TRUE(argument == CommandLineParser::e_assignment && argument != CommandLineParser::e_string);
    EXPECT_EQ(argument.Assignment().Name() + ">" + argument.Assignment().Value(), "a>x");

    std::ostringstream dump;
    parser.SetParseFlags(false, true);
    parser.Parse("a.b-1.c_d a -o -n='b c'");
    parser.DumpLastResults(dump);
    EXPECT_EQ(dump.str(), "Object-chain: a.b-1\nCommand: c_d\nArgument 0: string: a\nArgument 1: option: o\n"
                          "Argument 2: assign: n = b c\n");
}

TEST(CommandLineParser, ConvertsValuesOrTakesTheDefault)
{
    CommandLineParser parser;
    ASSERT_TRUE(parser.Parse("foo -i=-3 -u=7 -d=2.5e3 -b=ON -p=0x1f -bad=7x -empty= -text", true));
    auto const check = [&parser]<typename T>(auto extract, char const *name, T defaultValue, bool succeeds, T wanted)
    {
        T value = T();
        EXPECT_EQ((parser.*extract)(name, value, defaultValue), succeeds) << name;
        EXPECT_EQ(value, wanted) << name;
    };
    check(&CommandLineParser::ExtractArgumentInteger, "i", 9, true, -3);
    check(&CommandLineParser::ExtractArgumentInteger, "bad", 9, false, 9);
    check(&CommandLineParser::ExtractArgumentUInteger, "u", 9u, true, 7u);
    check(&CommandLineParser::ExtractArgumentUInteger, "empty", 9u, false, 9u);
    check(&CommandLineParser::ExtractArgumentDouble, "d", 1.0, true, 2500.0);
    check(&CommandLineParser::ExtractArgumentBool, "b", false, true, true);
    check(&CommandLineParser::ExtractArgumentBool, "u", true, false, true);
    void *const other = &parser;
    check(&CommandLineParser::ExtractArgumentPointer, "p", other, true, reinterpret_cast<void *>(0x1f));
    check(&CommandLineParser::ExtractArgumentPointer, "none", other, false, other);
}

TEST(CommandLineParser, SplitsPackedValues)
{
    CommandLineParser parser;
    ASSERT_TRUE(parser.Parse("foo -a=1,,2 -b=,1;2:3.4 -c=1,x,3 -d=", true));

    std::vector<string> pieces = {"old"};
    EXPECT_TRUE(parser.GetPackedAssignment("a", pieces, ","));
    EXPECT_EQ(pieces, (std::vector<string>{"1", "2"}));
    EXPECT_TRUE(parser.GetPackedAssignment("d", pieces, ",") && pieces.empty());
    pieces = {"old"};
    EXPECT_FALSE(parser.GetPackedAssignment("none", pieces, ","));
    EXPECT_TRUE(pieces.empty());

    std::vector<unsigned int> values = {9};
    EXPECT_TRUE(parser.ExtractPackedUIntegers("b", values));
    EXPECT_EQ(values, (std::vector<unsigned int>{1, 2, 3, 4}));
    EXPECT_FALSE(parser.ExtractPackedUIntegers("c", values, ","));
    EXPECT_EQ(values, (std::vector<unsigned int>{1}));
}

TEST(CommandLineParser, JoinsTheWordsOfAProgram)
{
    char const *words[] = {"foo", "-a=b", "c d"};
    CommandLineParser parser;
    EXPECT_TRUE(parser.Parse(3, words, true));
    EXPECT_EQ(parser.GetLastCommandLine(), "foo -a=b c d ");
    EXPECT_EQ(Describe(parser), "foo|=a=b|\"c|\"d");
    EXPECT_FALSE(parser.Parse(0, words, false));
}

TEST(CommandLineParser, ParsesATextOfItsOwnResults)
{
    CommandLineParser parser;
    ASSERT_TRUE(parser.Parse("foo 'bar -x=1 y'", true));
    for (bool const again : {false, true})
    {
        ASSERT_TRUE(parser.Parse(again ? parser.GetLastCommandLine() : parser.GetArgument(0).String(), true));
        EXPECT_EQ(Describe(parser), "bar|=x=1|\"y");
    }
    parser.ClearAll();
    EXPECT_EQ(parser.GetLastCommandLine() + Describe(parser), "");
}

TEST(CommandLineParser, QuotedTextMayHoldAnyBytes)
{
    string text, quoted;
    for (int byte = 0; byte < 256; ++byte)
    {
        text += static_cast<char>(byte);
        quoted += (byte == '\'' || byte == '$' ? "$" : "") + text.substr(text.size() - 1);
    }
    CommandLineParser parser;
    ASSERT_TRUE(parser.Parse("foo -v='" + quoted + "' '" + quoted + "'", true));
    EXPECT_EQ(parser.GetArgument(0).Assignment().Value(), text);
    EXPECT_EQ(parser.GetArgument(1).String(), text);
}

TEST(CommandLineParser, ParsesManyArguments)
{
    constexpr std::size_t number = 350000;
    string line = "foo";
    for (std::size_t i = 0; i < number; ++i)
        line += " -a";
    CommandLineParser parser;
    EXPECT_TRUE(parser.Parse(line, true));
    EXPECT_EQ(parser.GetNumArguments(), number);
    EXPECT_FALSE(parser.Parse("foo '" + string(number, '$'), false));
}

} // namespace
} // namespace quillmarsh
