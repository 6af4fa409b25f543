#include <quillmarsh/basetools/command.h>
#include <quillmarsh/basetools/commandinterpreter.h>

#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <sstream>

namespace quillmarsh
{

class NamelessCmd : public Command
{
public:
    bool ParseAndExecute(ostream &, CommandLineParser const &, string const &) override { return true; }
    void DumpHelp(ostream &, CommandLineParser const &) override {}
};

namespace
{

/// An interpreter that accepts only the line "good".
class PickyInterpreter : public CommandInterpreter
{
public:
    bool InterpretCommandLine(string const &line, ostream &out) override
    {
        out << '<' << line << '>';
        return line == "good";
    }
};

TEST(Command, EmptyNameAssertsAndBecomesTheClassName)
{
    NamelessCmd command;
    EXPECT_EQ(command.GetName() + "," + command.GetDefaultName() + "," + command.GetShortDesc(), "command,command,");
    command.SetName("mine");
    command.SetDefaultName("default");
    EXPECT_EQ(command.GetName(), "default");

    tests::ScriptedDialogs dialogs;
    command.SetName("");
    EXPECT_EQ(command.GetName(), "NamelessCmd");
    EXPECT_EQ(command.GetDefaultName(), "default");
    EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>{"Using empty-string for command-name."});
    command.SetDefaultName("");
    EXPECT_EQ(command.GetName() + "," + command.GetDefaultName(), "NamelessCmd,NamelessCmd");
    EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>{"Using empty-string for default-command-name."});
}

TEST(CommandInterpreter, ScriptEchoesCountsAndStops)
{
    constexpr std::tuple<char const *, bool, unsigned int, char const *> cases[] = {
        {"", true, 0, ""},
        {"good\n", false, 0, "good\n<good>"},
        {"bad\ngood\nbad", false, 2, "bad\n<bad>good\n<good>bad\n<bad>"},
        {"good\ngood\nbad\ngood", true, 3, "good\n<good>good\n<good>bad\n<bad>"},
        {"good\n\ngood", true, 2, "good\n<good>\n<>"},
    };
    PickyInterpreter interpreter;
    for (auto const &[script, stopOnError, result, output] : cases)
    {
        std::ostringstream out;
        EXPECT_EQ(interpreter.InterpretScript(out, script, stopOnError), result) << script;
        EXPECT_EQ(out.str(), output);
    }
}

} // namespace
} // namespace quillmarsh
