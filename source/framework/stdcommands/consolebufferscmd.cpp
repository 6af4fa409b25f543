#include <quillmarsh/framework/stdinternalcommands.h>

#include <quillmarsh/basetools/consolebuffers.h>
#include <quillmarsh/framework/commandtable.h>

namespace quillmarsh::std_command_interpreter
{
namespace
{

using Cmd = ConsoleBuffersCmd;

constexpr CommandWord s_words[] = {
    CommandWord::Option(Cmd::s_szOptionClearOutput, "clear output buffer\n"),
    CommandWord::Option(Cmd::s_szOptionClearHistory, "clear command history\n"),
    CommandWord::Assignment(Cmd::s_szAssignMaxOutput, Cmd::s_szValueMaxOutput, "limit number of output-lines\n"),
    CommandWord::Assignment(Cmd::s_szAssignMaxHistory, Cmd::s_szValueMaxHistory,
                            "limit number of commands in history\n"),
};

} // namespace

ConsoleBuffersCmd::ConsoleBuffersCmd(Interpreter &interpreter) : InternalCommand(interpreter)
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Control console-buffers");
}

ConsoleBuffersCmd::~ConsoleBuffersCmd() = default;

bool ConsoleBuffersCmd::ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &)
{
    ConsoleBuffers *const buffers = GetInterpreter().GetConsoleBuffers();
    if (buffers == nullptr)
    {
        out << "Console-buffers not hooked to interpreter.\n";
        return true;
    }
    if (parser.GetOption(s_szOptionClearOutput))
    {
        buffers->ClearOutput();
        return true;
    }
    if (parser.GetOption(s_szOptionClearHistory))
    {
        buffers->ClearCommandHistory();
        return true;
    }

    unsigned int limit = 0;
    if (parser.ExtractArgumentUInteger(s_szAssignMaxOutput, limit))
        buffers->SetMaxOutputLines(limit);
    if (parser.ExtractArgumentUInteger(s_szAssignMaxHistory, limit))
        buffers->SetMaxCommandsInHistory(limit);
    out << "MaxOutputLines......: " << buffers->GetMaxOutputLines() << nl;
    out << "MaxCommandsInHistory: " << buffers->GetMaxCommandsInHistory() << nl;
    return true;
}

void ConsoleBuffersCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_words, "print parameters");
}

} // namespace quillmarsh::std_command_interpreter
