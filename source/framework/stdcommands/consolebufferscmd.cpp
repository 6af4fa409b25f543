#include <quillmarsh/framework/stdinternalcommands.h>

#include <quillmarsh/basetools/consolebuffers.h>

namespace quillmarsh::std_command_interpreter
{
namespace
{

using Cmd = ConsoleBuffersCmd;
using command_values::s_uinteger;

constexpr CommandWord s_words[] = {
    CommandWord::Option(Cmd::s_szOptionClearOutput, "clear output buffer\n"),
    CommandWord::Option(Cmd::s_szOptionClearHistory, "clear command history\n"),
    CommandWord::Assignment(Cmd::s_szAssignMaxOutput, Cmd::s_szValueMaxOutput, "limit number of output-lines\n",
                            s_uinteger),
    CommandWord::Assignment(Cmd::s_szAssignMaxHistory, Cmd::s_szValueMaxHistory,
                            "limit number of commands in history\n", s_uinteger),
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
    CommandArguments const arguments(*this, parser, s_words);
    ConsoleBuffers *const buffers = GetInterpreter().GetConsoleBuffers();
    if (buffers == nullptr)
    {
        out << "Console-buffers not hooked to interpreter.\n";
        return true;
    }
    if (arguments.HasOption(s_szOptionClearOutput))
    {
        buffers->ClearOutput();
        return true;
    }
    if (arguments.HasOption(s_szOptionClearHistory))
    {
        buffers->ClearCommandHistory();
        return true;
    }

    unsigned int limit = 0;
    if (arguments.ReadAssignment(s_szAssignMaxOutput, limit))
        buffers->SetMaxOutputLines(limit);
    if (arguments.ReadAssignment(s_szAssignMaxHistory, limit))
        buffers->SetMaxCommandsInHistory(limit);
    out << "MaxOutputLines......: " << buffers->GetMaxOutputLines() << nl;
    out << "MaxCommandsInHistory: " << buffers->GetMaxCommandsInHistory() << nl;
    return true;
}

void ConsoleBuffersCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_words, "print parameters");
}

std::span<CommandWord const> ConsoleBuffersCmd::GetWords() const
{
    return s_words;
}

} // namespace quillmarsh::std_command_interpreter
