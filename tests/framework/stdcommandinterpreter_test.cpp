#include <quillmarsh/basetools/consolebuffers.h>
#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/framework/stdinternalcommands.h>

#include "tests/support/scripted_dialogs.h"
#include "tests/support/test_kernel.h"

#include <gtest/gtest.h>

namespace quillmarsh::std_command_interpreter
{
namespace
{

/// Echoes its command line.
class EchoCmd : public Command
{
public:
    static constexpr char const *s_szDefaultName = "echo";

    /// The use count of the shared object is the number of living commands.
    explicit EchoCmd(string const &name = s_szDefaultName, bool developerModeOnly = false,
                     std::shared_ptr<int> shared = nullptr)
        : shared_(std::move(shared))
    {
        SetDefaultName(name);
        SetShortDesc("says " + name);
        SetDeveloperModeOnly(developerModeOnly);
    }

    bool ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &commandLine) override
    {
        if (parser.GetOption("throw"))
            QUILLMARSH_THROW(ApplicationException, "thrown");
        out << '[' << commandLine << ']';
        return !parser.GetOption("fail");
    }
    void DumpHelp(ostream &out, CommandLineParser const &) override { out << "body of " << GetName() << "\n"; }

private:
    std::shared_ptr<int> shared_;
};

class StdInterpreter : public testing::Test
{
protected:
    StdInterpreter() { kernel.consoleBuffers = &buffers; }

    /// Returns the output of a line with the types of its text, and the result at the end.
    string Run(string const &line)
    {
        ConsoleOutputBuffer output(100000);
        bool result = false;
        {
            ConsoleOutputStream out(output, 0);
            result = Get().InterpretCommandLine(line, out);
        }
        return GetText(output) + (result ? "true" : "false");
    }

    string Complete(string const &line)
    {
        std::ostringstream out;
        string completed = "?";
        bool const result = Get().CompleteCommandLine(line, completed, out);
        return out.str() + completed + (result ? "+" : "-");
    }

    Interpreter &Get()
    {
        if (!interpreter)
            interpreter = std::make_unique<Interpreter>();
        return *interpreter;
    }

    static string GetText(ConsoleOutputBuffer const &output)
    {
        string text;
        for (unsigned int i = 0; i < output.GetNumLines(); ++i)
        {
            unsigned int type = 0;
            string const &line = output.GetLine(i, type);
            bool const isOpen = i + 1 == output.GetNumLines();
            text += (type == 0 ? "" : "<" + std::to_string(type) + ">") + line + (isOpen ? "" : "\n");
        }
        return text;
    }

    string GetHistory() const
    {
        string text;
        for (unsigned int i = 0; i < buffers.GetNumCommandsInHistory(); ++i)
            text += buffers.GetCommandFromHistory(i) + "|";
        return text;
    }

    tests::TestKernel kernel;
    ConsoleBuffers buffers;
    AutoPtr<Interpreter> interpreter;
};

constexpr char const *s_notRecognized = "Command not recognized.\nType 'list-commands' to list valid commands.\n";

TEST_F(StdInterpreter, RunsCommandsAndExpandsOneAlias)
{
    Get().RegisterExternalCommand(new EchoCmd);
    Get().RegisterAlias("go", "echo -w");
    Get().RegisterAlias("go home", "echo home");
    Get().RegisterAlias("loop", "loop x");
    // Aliases that sort between the line and the alias that it begins with.
    Get().RegisterAlias("go home a", "wrong");
    Get().RegisterAlias("go\tx", "wrong");
    EXPECT_EQ(Run("\t echo a  b "), "[echo a  b]true");
    EXPECT_EQ(Run("echo -fail"), "[echo -fail]false");
    EXPECT_EQ(Run("go now"), "[echo -w now]true");
    EXPECT_EQ(Run("go\tnow"), "[echo -w    now]true");
    EXPECT_EQ(Run("go home now"), "[echo home now]true");
    EXPECT_EQ(Run("go homes"), "[echo -w homes]true");
    EXPECT_EQ(Run("go by"), "[echo -w by]true");
    EXPECT_EQ(Run("gone"), string(s_notRecognized) + "false");
    EXPECT_EQ(Run("loop"), string(s_notRecognized) + "false");
    EXPECT_EQ(Run("''"), "false");
    EXPECT_THROW(Run("echo -throw"), ApplicationException);
    EXPECT_EQ(GetHistory(), "\t echo a  b |echo -fail|go now|go\tnow|go home now|go homes|go by|gone|loop|''|");
}

TEST_F(StdInterpreter, ReportsErrorsOfTheLine)
{
    EXPECT_EQ(Run(""), "<2>Command-line error:\n<2>Expected command at: \n<2>Full command-line was: \nfalse");
    EXPECT_EQ(Run("  "), Run(""));
    EXPECT_EQ(Run("help 'x"),
              "<2>Command-line error:\n<2>Quote not closed at: 'x\n<2>Full command-line was: help 'x\nfalse");
    EXPECT_EQ(GetHistory(), "  |help 'x|");
    Get().SetCommandNotRecognizedMessage("");
    EXPECT_EQ(Run("x"), "Type 'list-commands' to list valid commands.\nfalse");
    Get().GetInternalCommand("list-commands")->SetName("ls");
    Get().SetCommandNotRecognizedMessage("What?");
    EXPECT_EQ(Get().GetCommandNotRecognizedMessage(), "What?");
    EXPECT_EQ(Run("x"), "What?\nType 'ls' to list valid commands.\nfalse");
    EXPECT_EQ(Get().DeleteInternalCommand("ls"), 1u);
    EXPECT_EQ(Run("x"), "What?\nfalse");
}

TEST_F(StdInterpreter, HelpSwitchOutranksDeveloperMode)
{
    Get().RegisterExternalCommand(new EchoCmd("secret", true));
    string const help =
        "----- Command-help -----\n"
        "TargetCommand: EchoCmd\n"
        "CurrentName..: secret\nDefaultName..: secret\nDevModeOnly..: true\nSummary......: says secret\n"
        "HelpSwitch...: -h\nbody of secret\n";
    string const refusal = "Command: secret is developer-mode only.\n";
    EXPECT_EQ(Run("secret"), refusal + "false");
    EXPECT_EQ(Run("secret x -h"), help + refusal + "true");
    Get().SetDeveloperModeActive(true);
    EXPECT_EQ(Run("secret -h"), help + "true");
    EXPECT_EQ(Run("secret -h=1"), "[secret -h=1]true");
    Get().SetGlobalHelpSwitch("");
    EXPECT_EQ(Run("secret -h"), "[secret -h]true");

    kernel.params.DeveloperMode = true;
    EXPECT_TRUE(Interpreter().IsActiveDeveloperMode());
}

TEST_F(StdInterpreter, DebugDumpShowsThePreprocessedLine)
{
    Get().RegisterExternalCommand(new EchoCmd);
    Get().RegisterAlias("e", "echo");
    Get().SetDeveloperModeActive(true);
    EXPECT_EQ(Run("dump-cmdline -on -off"), "DumpPreProcessedCommandLine: true\ntrue");
    EXPECT_EQ(Run("e -a=1"),
              "<6>Expanded to: echo -a=1\n<6>Command: echo\n<6>Argument 0: assign: a = 1\n[echo -a=1]true");
    EXPECT_EQ(Run("dump-cmdline -off"), "<6>Command: dump-cmdline\n<6>Argument 0: option: off\n"
                                        "DumpPreProcessedCommandLine: false\ntrue");
}

TEST_F(StdInterpreter, RegistersKeepTheirCommands)
{
    auto const shared = std::make_shared<int>();
    auto *const first = new EchoCmd("same", false, shared);
    auto *const second = new EchoCmd("same", false, shared);
    Get().RegisterExternalCommand(new EchoCmd("zz", false, shared));
    Get().RegisterExternalCommand(first);
    Get().RegisterExternalCommand(second);
    Get().RegisterExternalCommand(new EchoCmd("help", false, shared));
    Get().RegisterExternalCommand(nullptr);
    ASSERT_EQ(Get().GetNumExternalCommands(), 4u);
    EXPECT_EQ(Get().GetExternalCommand(0u)->GetName(), "help");
    EXPECT_EQ(Get().GetExternalCommand("same"), first);
    EXPECT_NE(Get().GetCommand("help"), Get().GetExternalCommand("help"));

    // A new name has an effect at once; the command keeps its place in the list.
    Get().GetExternalCommand("zz")->SetName("aa");
    EXPECT_EQ(Get().GetExternalCommand(3u), Get().FindExternalCommand("aa"));
    EXPECT_EQ(Get().FindExternalCommand("zz"), nullptr);
    Get().GetExternalCommand(0u)->SetName("same");
    EXPECT_EQ(Get().FindExternalCommand("same"), Get().GetExternalCommand(0u));
    Get().GetExternalCommand(0u)->SetName("help");
    Get().Rehash();
    EXPECT_EQ(Get().GetExternalCommand(0u)->GetName(), "aa");

    EXPECT_TRUE(Get().UnregisterExternalCommand(*second));
    EXPECT_FALSE(Get().DeleteExternalCommand(*second));
    delete second;
    EXPECT_EQ(Get().DeleteExternalCommand("same"), 1u);
    EXPECT_EQ(Get().UnregisterExternalCommand("same"), 0u);
    EXPECT_EQ(shared.use_count(), 1 + 2);
    {
        tests::ScriptedDialogs dialogs;
        EXPECT_EQ(Get().GetExternalCommand(2u), nullptr);
        EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>{"Index out of range."});
    }
    interpreter.reset();
    EXPECT_EQ(shared.use_count(), 1);
}

TEST_F(StdInterpreter, CompletesTheCommandWord)
{
    EXPECT_EQ(Complete("c"), "console-buffers+");
    EXPECT_EQ(Complete("c"), "?-");
    Run("x");
    EXPECT_EQ(Complete("c"), "console-buffers+");
    for (char const *const line : {"", "console-buffers", "c x", "'c", "nothing"})
        EXPECT_EQ(Complete(line), "?-") << line;
    EXPECT_EQ(Complete("h"), "Matching commands/aliases: help, history\nh+");
    Get().RegisterAlias("hist", "history");
    Get().RegisterExternalCommand(new EchoCmd("history2"));
    EXPECT_EQ(Complete("hi"), "Matching commands/aliases: history, history2, hist\nhist+");
    string const name = string(28, 'y');
    for (char const *const end : {"1", "2", "3", "4z"})
        Get().RegisterAlias(name + end, "x");
    EXPECT_EQ(Complete("yy"), "Matching commands/aliases: " + name + "1, " + name + "2, \n" + name + "3, " + name +
                                  "4z\n" + name + "+");
}

TEST_F(StdInterpreter, ListsCommands)
{
    Get().RegisterExternalCommand(new EchoCmd("a", true));
    Get().RegisterExternalCommand(new EchoCmd("bcdef"));
    string const internal = "Internal commands:\n"
                            "  alias,            Setup command shortcuts\n"
                            "  console-buffers,  Control console-buffers\n"
                            "  dump-cmdline[DM], Control dump of preprocessed command-line\n"
                            "  help,             Print help for any command\n"
                            "  history,          Print command history\n"
                            "  list-commands,    List commands registered with command-interpreter\n";
    string const external = "External commands:\n  a[DM], says a\n  bcdef, says bcdef\n";
    string const mode = "DeveloperMode: false\n\n";
    EXPECT_EQ(Run("list-commands"), mode + internal + "\n" + external + "true");
    EXPECT_EQ(Run("list-commands -int"), mode + internal + "true");
    EXPECT_EQ(Run("list-commands -ext"), mode + external + "true");
}

TEST_F(StdInterpreter, HelpCommandFindsItsTarget)
{
    std::ostringstream body;
    Get().GetInternalCommand("history")->DumpHelp(body, CommandLineParser());
    EXPECT_EQ(body.str(), "Options:\n\t-a, print all commands in history\n"
                          "Arguments:\n\t0) uinteger, set (default) number of commands printed\n"
                          "Default behavior:\n\tprint tail of command-history: 10\n");
    EXPECT_NE(Run("help alias").find("TargetCommand: AliasCmd\n"), string::npos);
    string const own = Run("help -x alias");
    EXPECT_NE(own.find("CurrentName..: help\n"), string::npos);
    EXPECT_TRUE(own.ends_with("GlobalHelpSwitch: -h\ntrue"));
    EXPECT_EQ(Run("help what"), "Command: what not found.\ntrue");
    EXPECT_EQ(Run("help -switch=?"), "GlobalHelpSwitch: -?\ntrue");
    EXPECT_EQ(Get().GetGlobalHelpSwitch(), "?");
}

TEST_F(StdInterpreter, AliasCommandSetsAndLists)
{
    EXPECT_EQ(Run("alias -b='x y'"), "Registered alias: b\ntrue");
    EXPECT_EQ(Run("alias -a=z"), "Registered alias: a\ntrue");
    EXPECT_EQ(Run("alias"), "Alias list:\n  a='z'\n  b='x y'\ntrue");
    EXPECT_EQ(Run("alias -a="), "Registered alias: a\ntrue");
    EXPECT_EQ(Run("alias -alias=x"), "Alias not allowed: alias\nfalse");
    EXPECT_EQ(Run("alias -c=1 -d=2"), "Alias list:\n  b='x y'\ntrue");
    EXPECT_EQ(Run("alias -clear"), "Unregistered all aliases.\ntrue");
    string target = "old";
    EXPECT_FALSE(Get().FindAlias("b", target));
    EXPECT_EQ(target, "");
}

TEST_F(StdInterpreter, ConsoleBuffersAndHistoryCommands)
{
    for (int i = 0; i < 15; ++i)
        buffers.PushCommandInHistory("cmd" + std::to_string(i));
    EXPECT_EQ(Run("history 2"), "Command-history:\n13) cmd13\n14) cmd14\ntrue");
    EXPECT_EQ(Run("history"), "Command-history:\n14) cmd14\n15) history 2\ntrue");
    EXPECT_EQ(Run("history 0"), "Command-history:\n16) history\ntrue");
    EXPECT_EQ(Run("history x"), "Command-history:\n17) history 0\ntrue");
    string const all = Run("history -a 5");
    EXPECT_EQ(all.substr(0, 33), "Command-history:\n0) cmd0\n1) cmd1\n");
    EXPECT_EQ(Run("console-buffers -max-output=7 -max-history=x"),
              "MaxOutputLines......: 7\nMaxCommandsInHistory: 50\ntrue");
    EXPECT_EQ(Run("console-buffers -max-history=3 -max-output=0"),
              "MaxOutputLines......: 1\nMaxCommandsInHistory: 3\ntrue");
    EXPECT_EQ(Run("console-buffers -clear-history -max-history=9"), "true");
    EXPECT_EQ(GetHistory(), "console-buffers -clear-history -max-history=9|");
    buffers.GetOutputBuffer().Append("text", 0);
    EXPECT_EQ(Run("console-buffers -clear-output -clear-history"), "true");
    EXPECT_EQ(buffers.GetOutputBuffer().GetMaxColumns(), 0u);
    EXPECT_EQ(buffers.GetNumCommandsInHistory(), 2u);

    kernel.consoleBuffers = nullptr;
    Get().SetConsoleBuffers(nullptr);
    EXPECT_EQ(Run("history"), "Console-buffers not hooked to interpreter.\ntrue");
    EXPECT_EQ(Run("console-buffers -clear-output"), "Console-buffers not hooked to interpreter.\ntrue");
}

TEST_F(StdInterpreter, AcceptsHostileLines)
{
    Get().RegisterExternalCommand(new EchoCmd);
    Get().RegisterAlias("e", "echo");
    string const million(1000000, 'x');
    EXPECT_EQ(Run(million), string(s_notRecognized) + "false");
    EXPECT_EQ(Run("e " + million), "[echo " + million + "]true");
    EXPECT_EQ(Run("e" + string(1000000, ' ') + "y").size(), 1000000u + 11);
    EXPECT_EQ(Run("help '" + million).substr(0, 26), "<2>Command-line error:\n<2>");
    string const bytes("e \0\x80\xff\x1b", 6);
    EXPECT_EQ(Run(bytes), "[echo " + bytes.substr(2) + "]true");
    EXPECT_EQ(Complete(bytes.substr(3)), "?-");
}

} // namespace
} // namespace quillmarsh::std_command_interpreter
