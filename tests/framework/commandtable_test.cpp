#include <quillmarsh/framework/commandtable.h>

#include "tests/support/scripted_dialogs.h"
#include "tests/support/test_kernel.h"

#include <quillmarsh/basetools/consolebuffers.h>
#include <quillmarsh/basetools/profiler.h>
#include <quillmarsh/basetools/variableregistry.h>
#include <quillmarsh/framework/commands/frameworkcommands.h>
#include <quillmarsh/framework/stdcommandinterpreter.h>

#include <gtest/gtest.h>

namespace quillmarsh
{
namespace
{

/// A program with all commands of the framework, and a few variables.
class CommandTables : public testing::Test
{
protected:
    CommandTables()
    {
        registry.RegisterVariable(VariableProxyUInt(&count, "pond.count", ""));
        registry.RegisterVariable(VariableProxyString(&name, "pond.name", ""));
        interpreter = std::make_unique<std_command_interpreter::Interpreter>();
        framework_commands::CreateAndRegisterAllCommands(*interpreter, nullptr, 0, 0);
    }

    /// Returns the mistake in a line, without the command's name and the hint to its help.
    string FindMistake(string const &line)
    {
        CommandLineParser parser;
        EXPECT_TRUE(parser.Parse(line)) << line;
        Command &command = *interpreter->GetCommand(parser.GetCommand());
        std::span<CommandWord const> const words = dynamic_cast<CommandVocabulary &>(command).GetWords();
        string mistake = CommandArguments(command, parser, words).FindMistake();
        string const hint = " (see 'help " + command.GetName() + "')";
        EXPECT_TRUE(mistake.empty() || (EatPrefix(mistake, command.GetName() + ": ") && mistake.ends_with(hint)));
        return mistake.substr(0, mistake.size() - (mistake.empty() ? 0 : hint.size()));
    }

    tests::TestKernel kernel;
    VariableRegistry &registry = *kernel.GetVariableRegistry();
    unsigned int count = 0;
    string name;
    AutoPtr<std_command_interpreter::Interpreter> interpreter;
};

TEST_F(CommandTables, AreThoseOfEveryCommand)
{
    for (unsigned int i = 0; i < interpreter->GetNumInternalCommands(); ++i)
        EXPECT_NE(dynamic_cast<CommandVocabulary *>(interpreter->GetInternalCommand(i)), nullptr) << i;
    for (unsigned int i = 0; i < interpreter->GetNumExternalCommands(); ++i)
        EXPECT_NE(dynamic_cast<CommandVocabulary *>(interpreter->GetExternalCommand(i)), nullptr) << i;
}

TEST_F(CommandTables, FindTheFirstMistakeOfALine)
{
    constexpr std::pair<char const *, char const *> cases[] = {
        {"exit -w", ""},
        {"exit -W -v", "unknown option -W"},
        {"exit now", "surplus argument 'now'"},
        {"profiler -rh=maybe", "-rh=maybe: 'maybe' is not a boolean (true or false, yes or no, on or off, 1 or 0)"},
        {"profiler -rh=on -auto-reset=5 -max-depth=0 -dump -ec", ""},
        {"profiler -auto-reset=-1", "-auto-reset=-1: '-1' is not a whole number from 0 on"},
        {"profiler -autoreset=1", "unknown assignment -autoreset=1"},
        {"hid-config -version=last", ""},
        {"hid-config -version=first", "-version=first: 'first' is not a version's whole number, or \"last\""},
        {"hid-control -d=7", "-d=7: '7' is not the creation-id of a device"},
        {"var", ""},
        {"var pond.count 3 -i", ""},
        {"var pond.name 'a b'", ""},
        {"var lake", "'lake' is not the name of a variable, nor what such a name begins with"},
        {"var pond.c 3", "'pond.c' is not the name of a variable, nor what such a name begins with"},
        {"var pond.count many", "'many' is not a value of the variable's type"},
        {"var pond.count -3", "'-3' is not a value of the variable's type"},
        {"var -i pond.count", "the argument 'pond.count' must stand ahead of the options"},
        {"alias -a=b -c=d", "surplus assignment -c=d"},
        {"history five", "'five' is not a whole number from 0 on"},
        {"help vra", "'vra' is not the name of a command"},
        {"list-commands -internal", "unknown option -internal"},
    };
    for (auto const &[line, mistake] : cases)
        EXPECT_EQ(FindMistake(line), mistake) << line;
}

/// A command of a program, with options of its own.
class SowCmd : public TableCommand
{
public:
    explicit SowCmd(string &log) : log_(log) { SetDefaultName("sow"); }

    std::span<CommandWord const> GetWords() const override
    {
        static constexpr CommandWord s_words[] = {
            CommandWord::Assignment("rows", "uinteger", "rows to sow\n", command_values::s_uinteger),
            CommandWord::Option("deep", nullptr),
            CommandWord::Argument("0) string", "what\n"),
        };
        return s_words;
    }

protected:
    bool Execute(ostream &, CommandArguments const &arguments) override
    {
        unsigned int rows = 1;
        arguments.ReadAssignment("rows", rows);
        string const *const what = arguments.FindArgument(0);
        log_ += (what != nullptr ? *what : "nothing") + MakeString(rows) + (arguments.HasOption("deep") ? "d" : "");
        return arguments.HasOption("shallow");
    }

private:
    string &log_;
};

TEST_F(CommandTables, RefuseALineBeforeItRuns)
{
    string log;
    interpreter->RegisterExternalCommand(new SowCmd(log));
    std::ostringstream out;
    EXPECT_FALSE(interpreter->InterpretCommandLine("sow beans -rows=x", out));
    EXPECT_EQ(out.str(), "sow: -rows=x: 'x' is not a whole number from 0 on (see 'help sow')\n");
    EXPECT_EQ(log, "");
    {
        tests::ScriptedDialogs dialogs;
        EXPECT_FALSE(interpreter->InterpretCommandLine("sow -deep beans -rows=3", out));
        EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>{"The table of the command has no word \"shallow\"."});
    }
    EXPECT_EQ(log, "beans3d");

    interpreter->SetLineInspector([](Command const &command, CommandLineParser const &parser)
                                  { return command.GetName() != "sow" || parser.GetNumArguments() == 0; });
    EXPECT_FALSE(interpreter->InterpretCommandLine("sow peas", out));
    EXPECT_EQ(log, "beans3d");
    EXPECT_TRUE(interpreter->InterpretCommandLine("var", out));
}

} // namespace
} // namespace quillmarsh
