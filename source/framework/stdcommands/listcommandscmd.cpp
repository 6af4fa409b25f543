#include <quillmarsh/framework/stdinternalcommands.h>

#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/texttools.h>

#include <algorithm>

namespace quillmarsh::std_command_interpreter
{
namespace
{

using Cmd = ListCommandsCmd;

constexpr CommandWord s_words[] = {
    CommandWord::Option(Cmd::s_szOptionInternal, "list internal commands\n"),
    CommandWord::Option(Cmd::s_szOptionExternal, "list external commands\n"),
};

string FormatName(Command const &command)
{
    return "  " + command.GetName() + (command.IsDeveloperModeOnly() ? "[DM]" : "");
}

using GetByIndex = Command *(Interpreter::*)(unsigned int) const;

void List(ostream &out, Interpreter const &interpreter, GetByIndex getCommand, unsigned int numCommands)
{
    std::size_t width = 0;
    for (unsigned int i = 0; i < numCommands; ++i)
        width = std::max(width, FormatName(*(interpreter.*getCommand)(i)).size());
    for (unsigned int i = 0; i < numCommands; ++i)
    {
        Command const &command = *(interpreter.*getCommand)(i);
        string const name = FormatName(command);
        out << name << ", " << string(width - name.size(), ' ') << command.GetShortDesc() << nl;
    }
}

} // namespace

ListCommandsCmd::ListCommandsCmd(Interpreter &interpreter) : InternalCommand(interpreter)
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("List commands registered with command-interpreter");
}

ListCommandsCmd::~ListCommandsCmd() = default;

bool ListCommandsCmd::ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &)
{
    CommandArguments const arguments(*this, parser, s_words);
    Interpreter const &interpreter = GetInterpreter();
    bool const wantsInternal = arguments.HasOption(s_szOptionInternal);
    bool const wantsExternal = arguments.HasOption(s_szOptionExternal);
    bool const wantsBoth = wantsInternal == wantsExternal;

    out << "DeveloperMode: " << MakeString(interpreter.IsActiveDeveloperMode()) << nl << nl;
    if (wantsBoth || wantsInternal)
    {
        out << "Internal commands:\n";
        List(out, interpreter, &Interpreter::GetInternalCommand, interpreter.GetNumInternalCommands());
    }
    if (wantsBoth)
        out << nl;
    if (wantsBoth || wantsExternal)
    {
        out << "External commands:\n";
        List(out, interpreter, &Interpreter::GetExternalCommand, interpreter.GetNumExternalCommands());
    }
    return true;
}

void ListCommandsCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_words, "list all commands");
}

std::span<CommandWord const> ListCommandsCmd::GetWords() const
{
    return s_words;
}

} // namespace quillmarsh::std_command_interpreter
