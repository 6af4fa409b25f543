#include <quillmarsh/framework/stdcommandinterpreter.h>

#include "tests/support/controller_device.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/test_kernel.h"

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/variableregistry.h>
#include <quillmarsh/framework/commands/frameworkcommands.h>
#include <quillmarsh/framework/commandtable.h>

#include <gtest/gtest.h>

namespace quillmarsh
{
namespace
{

/// A command for a file and for names that need quotes.
class DrawCmd : public TableCommand
{
public:
    DrawCmd() { SetDefaultName("draw"); }

    std::span<CommandWord const> GetWords() const override
    {
        static constexpr CommandValue s_colour{
            "a colour", nullptr,
            [](CommandArguments const &, CompletionOffers &offers)
            {
                for (char const *const colour : {"red", "-dark red", "it's $", "\033[2J"})
                    offers.Add(colour);
            }};
        static constexpr CommandWord s_words[] = {
            CommandWord::Assignment("colour", "name", "fill colour\n", s_colour),
            CommandWord::Assignment("file", "file-name", "picture\n", command_values::s_file),
            CommandWord::Option("secret", nullptr),
            CommandWord::Argument("0) colour", "line colour\n", s_colour),
        };
        return s_words;
    }

protected:
    bool Execute(ostream &, CommandArguments const &) override { return true; }
};

class Completion : public testing::Test
{
protected:
    Completion()
    {
        VariableRegistry &registry = *kernel.GetVariableRegistry();
        registry.RegisterVariable(VariableProxyRangeCheckedInt(&count, 0, 9, "pond.count", "fish"));
        registry.RegisterVariable(VariableProxyBool(&isFrozen, "pond.frozen"));
        framework_commands::CreateAndRegisterAllCommands(interpreter, nullptr, 0, 0);
        interpreter.RegisterExternalCommand(new DrawCmd);
        interpreter.RegisterAlias("go", "var pond.count");
        interpreter.RegisterAlias("count fish", "var -i");
    }

    /// Completes at the mark "|". Returns the lines that the candidates make, with a mark behind those that are not
    /// whole, and then the line that all have in common.
    string Complete(string const &marked) const
    {
        std::size_t const cursor = marked.find('|');
        string const line = marked.substr(0, cursor) + marked.substr(cursor + 1);
        Completions const completions = interpreter.FindCompletions(line, cursor);
        string const kept = line.substr(0, completions.begin);
        string text;
        for (CompletionCandidate const &candidate : completions.candidates)
            text += kept + candidate.replacement + (candidate.isWhole ? "" : "|") + "; ";
        return text + kept + completions.commonReplacement;
    }

    tests::TestKernel kernel;
    int count = 3;
    bool isFrozen = false;
    std_command_interpreter::Interpreter interpreter;
};

TEST_F(Completion, FindsWhatCanStandAtTheCursor)
{
    constexpr std::pair<char const *, char const *> cases[] = {
        {"co|", "console-buffers; count fish; co"},
        {"  'his|", "  'history';   'history'"},
        {"e|x", "exit; exit"},
        {"x|", "x"},
        {"help l|", "help list-commands; help list-commands"},
        {"help 'l|", "help 'list-commands'; help 'list-commands'"},
        {"help 'list-commands'|", "help 'list-commands'"},
        {"help 'a''b' l|", "help 'a''b' l"},
        {"exit |", "exit -w; exit -h; exit -"},
        {"exit -|", "exit -w; exit -h; exit -"},
        {"exit -w -|", "exit -w -h; exit -w -h"},
        {"exit -| -w", "exit -h; exit -h"},
        {"exit w|", "exit w"},
        {"history -a x|", "history -a x"},
        {"var p|", "var pond.count; var pond.frozen; var pond."},
        {"var pond.count |", "var pond.count 3; var pond.count 0; var pond.count 9; var pond.count "},
        {"var pond.frozen |", "var pond.frozen true; var pond.frozen false; var pond.frozen "},
        {"var pond.frozen o|", "var pond.frozen on; var pond.frozen off; var pond.frozen o"},
        {"var -i p|", "var -i p"},
        {"go |", "go 3; go 0; go 9; go "},
        {"go|", "go; go"},
        {"count fish -|", "count fish -h; count fish -h"},
        {"hid-config -v|", "hid-config -version=|; hid-config -version="},
        {"hid-config -version=|", "hid-config -version=last; hid-config -version=last"},
        {"hid-config -version='|", "hid-config -version='last'; hid-config -version='last'"},
        {"hid-config -version=last|", "hid-config -version=last; hid-config -version=last"},
        {"hid-config -version='$|", "hid-config -version='last'; hid-config -version='last'"},
        {"draw |", "draw red; draw '-dark red'; draw 'it$'s $$'; draw "},
        {"draw 'it$'|", "draw 'it$'s $$'; draw 'it$'s $$'"},
        {"draw red -|", "draw red -colour=|; draw red -file=|; draw red -h; draw red -"},
        {"draw -colour=red-x |", "draw -colour=red-x red; draw -colour=red-x '-dark red'; "
                                 "draw -colour=red-x 'it$'s $$'; draw -colour=red-x "},
        {"frobnicate -|", "frobnicate -"},
    };
    for (auto const &[line, completed] : cases)
        EXPECT_EQ(Complete(line), completed) << line;
    EXPECT_EQ(interpreter.FindCompletions("pro").candidates.size(), 0u);
    interpreter.SetDeveloperModeActive(true);
    EXPECT_EQ(interpreter.FindCompletions("pro").candidates.size(), 1u);
    EXPECT_EQ(interpreter.FindCompletions("").candidates.size(),
              interpreter.GetNumInternalCommands() + interpreter.GetNumExternalCommands() + 2);
}

TEST_F(Completion, DescribesCandidates)
{
    auto const getDescription = [this](string const &line)
    { return interpreter.FindCompletions(line).candidates.at(0).description; };
    EXPECT_EQ(getDescription("exit"), "Request application shutdown");
    EXPECT_EQ(getDescription("go"), "alias of 'var pond.count'");
    EXPECT_EQ(getDescription("var pond.c"), "= 3: fish");
    EXPECT_EQ(getDescription("draw -f"), "file-name: picture");
}

TEST_F(Completion, FindsDevicesAndTheirControllers)
{
    tests::ControllerDevice<tests::PlainMouse> device;
    device.DeviceInfo().SetCreationID(12);
    kernel.devices.push_back(&device);
    EXPECT_EQ(Complete("hid-control -d=|"), "hid-control -d=12; hid-control -d=12");
    EXPECT_EQ(Complete("hid-control -d=12 -c=|"), "hid-control -d=12 -c=0; hid-control -d=12 -c=0");
    // The device may stand behind the cursor.
    EXPECT_EQ(Complete("hid-control -c=| -d=12"), "hid-control -c=0; hid-control -c=0");
    EXPECT_EQ(Complete("hid-control -c=| -d=13"), "hid-control -c=");
}

TEST_F(Completion, FindsFiles)
{
    tests::ScratchDirectory const directory;
    std::filesystem::create_directory(directory.GetPath() / "a b");
    directory.Write("a.txt", "");
    directory.Write(".hidden", "");
    std::filesystem::path const inner = directory.GetPath() / "a b" / "it's";
    std::ofstream(inner, std::ios::binary) << "";
    char const separator = file_system::GetPathSeparator();
    string const quoted = "draw -file='" + directory.GetPath().string() + separator;
    string const plain = "draw -file=" + directory.GetPath().string() + separator;
    EXPECT_EQ(Complete(plain + "|"), quoted + "a b" + separator + "|; " + plain + "a.txt; " + plain + "a");
    EXPECT_EQ(Complete(plain + ".|"), plain + ".hidden; " + plain + ".hidden");
    EXPECT_EQ(Complete(quoted + "a b" + separator + "|"),
              quoted + "a b" + separator + "it$'s'; " + quoted + "a b" + separator + "it$'s'");
    EXPECT_EQ(Complete(plain + "none" + separator + "|"), plain + "none" + separator);
}

} // namespace
} // namespace quillmarsh
