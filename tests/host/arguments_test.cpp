#include "arguments.h"
#include "argumentsource.h"

#include "tests/support/failures.h"

#include <quillmarsh/basetools/commandlineparser.h>
#include <quillmarsh/basetools/filesystem.h>

#include <gtest/gtest.h>

namespace quillmarsh::host
{
namespace
{

Arguments ParseForHost(std::vector<string> words)
{
    return ParseArguments(GetProgramKind("quillmarsh-host"), std::move(words));
}

Arguments ParseForViewer(std::vector<string> words)
{
    return ParseArguments(GetProgramKind("quillmarsh-view"), std::move(words));
}

TEST(Arguments, AreReadInBothForms)
{
    Arguments const arguments = ParseForHost({"--script=-", "--frames=2",       "--frames",
                                              "010",        "--frame-rate=2.5", "--plugin",
                                              "a",          "--plugin=b",       "--set",
                                              "x=",         "--set=y=1=2",      "--stop-on-error",
                                              "--log=l",    "--developer-mode", "--parameter=a.b.c=d.e=f",
                                              "--video=v",  "--size=640x480",   "--fullscreen",
                                              "--headless", "16384x1",          "--console-window"});
    EXPECT_EQ("-", arguments.script);
    EXPECT_EQ(10u, arguments.frames);
    EXPECT_EQ(2.5, arguments.frameRate);
    EXPECT_EQ((std::vector<string>{"a", "b"}), arguments.plugins);
    EXPECT_EQ((std::vector<std::pair<string, string>>{{"x", ""}, {"y", "1=2"}}), arguments.variables);
    EXPECT_TRUE(arguments.stopOnError && arguments.developerMode);
    EXPECT_FALSE(arguments.robot);
    EXPECT_EQ("r", ParseForHost({"--robot", "r"}).robot);
    EXPECT_EQ("l", arguments.log);
    EXPECT_EQ("v", arguments.video);
    EXPECT_EQ((PixelSize{640, 480}), arguments.size);
    EXPECT_EQ((PixelSize{16384, 1}), arguments.headless);
    EXPECT_TRUE(arguments.fullscreen && arguments.consoleWindow);
    PluginParameter const &parameter = arguments.parameters.at(0);
    EXPECT_EQ("a.b.c/d.e=f", parameter.path + "/" + parameter.value);
}

TEST(Arguments, ShortQuestionsHaveTheSameAnswers)
{
    EXPECT_NE(string::npos, ParseForHost({"-h"}).answer.find("Usage: quillmarsh-host"));
    EXPECT_EQ(ParseForHost({"--help"}).answer, ParseForHost({"-h"}).answer);
    EXPECT_EQ(ParseForHost({"--version"}).answer, ParseForHost({"-V"}).answer);
}

TEST(Arguments, FilesBecomeLinesThatOpenThem)
{
    // Each name comes out of its line as it was, with its folder.
    string const names[] = {"/a b.png", "/it's $5 'here'.png", "/-x", "/two\nlines", "/dir/", "/\xC3\xA4\"\t"};
    std::vector<string> words(std::begin(names), std::end(names));
    words.insert(words.begin() + 1, {"--play", "/o'k", "--set", "a=b"});
    words.insert(words.end(), {"--", "--relative"});
    Arguments const arguments = ParseForViewer(words);
    std::vector<string> const lines = MakeArgumentLines(arguments);
    ASSERT_EQ(std::size(names) + 2, lines.size());
    CommandLineParser parser;
    auto const parse = [&](string const &line, string const &command)
    {
        EXPECT_TRUE(parser.Parse(line) && parser.GetCommand() == command) << line;
        EXPECT_EQ(CommandLineParser::e_string, parser.GetArgument(0).Type()) << line;
        return parser.GetArgument(0).String();
    };
    for (std::size_t i = 0; i < std::size(names); ++i)
        EXPECT_EQ(file_system::GetFullPathNameA(names[i], false), parse(lines[i], "open"));
    EXPECT_EQ(file_system::GetFullPathNameA("--relative", false), parse(lines[std::size(names)], "open"));
    EXPECT_EQ(file_system::GetFullPathNameA("/o'k", false), parse(lines.back(), "play"));
    EXPECT_TRUE(tests::MessageOf<WrongArgumentException>([] { ParseForViewer({"a", ""}); }).starts_with("the name of"));
    EXPECT_THROW(ParseForViewer({"--frobnicate"}), WrongArgumentException);
}

TEST(Arguments, WrongOnesAreNamed)
{
    std::pair<std::vector<string>, char const *> const cases[] = {
        {{"--frobnicate"}, "'--frobnicate'"},
        {{"script.txt"}, "'script.txt'"},
        {{"--two\nlines"}, "'--two?lines'"},
        {{""}, "''"},
        {{"--frames"}, "--frames"},
        {{"--frames", "-1"}, "'-1'"},
        {{"--frames", "0x10"}, "'0x10'"},
        {{"--frames", "5000000000"}, "'5000000000'"},
        {{"--frame-rate", "fast"}, "'fast'"},
        {{"--frame-rate", "-2"}, "'-2'"},
        {{"--frame-rate", "inf"}, "'inf'"},
        {{"--set", "name"}, "'name'"},
        {{"--set", "=value"}, "'=value'"},
        {{"--parameter", "plugin.=value"}, "'plugin.=value'"},
        {{"--parameter", ".name=value"}, "'.name=value'"},
        {{"--parameter", "name=a.b"}, "'name=a.b'"},
        {{"--strict=maybe"}, "--strict = maybe"},
        {{"--size", "640"}, "--size needs WIDTHxHEIGHT, each from 1 to 16384, not '640'"},
        {{"--size", "0x480"}, "'0x480'"},
        {{"--size", "640x-1"}, "'640x-1'"},
        {{"--headless", "100000x480"}, "--headless needs WIDTHxHEIGHT, each from 1 to 16384, not '100000x480'"},
        {{"--headless", "640x480x32"}, "'640x480x32'"},
        {{"--video=none", "--size=640x480"}, "--video none"},
        {{"--robot=a", "--script=b"}, "--robot and --script"},
        {{"--play=a", "--robot=b"}, "--play cannot stand together"},
    };
    for (auto const &[words, named] : cases)
    {
        string const message = tests::MessageOf<WrongArgumentException>([&wrong = words] { ParseForHost(wrong); });
        EXPECT_NE(string::npos, message.find(named)) << message;
        EXPECT_NE(string::npos, message.find("--help")) << message;
    }
}

} // namespace
} // namespace quillmarsh::host
