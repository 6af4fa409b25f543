#include <quillmarsh/framework/stdinternalcommands.h>

#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/framework/commandtable.h>

namespace quillmarsh::std_command_interpreter
{
namespace
{

using Cmd = HelpCmd;

constexpr CommandWord s_words[] = {
    CommandWord::Assignment(Cmd::s_szAssignSwitch, Cmd::s_szValueSwitch, "sets global help switch\n"),
    CommandWord::Argument("0) target-name", "command whose help will be printed\n"),
};

} // namespace

HelpCmd::HelpCmd(Interpreter &interpreter) : InternalCommand(interpreter)
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Print help for any command");
}

HelpCmd::~HelpCmd() = default;

bool HelpCmd::ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &)
{
    Interpreter &interpreter = GetInterpreter();
    string helpSwitch;
    if (parser.GetAssignment(s_szAssignSwitch, helpSwitch))
    {
        interpreter.SetGlobalHelpSwitch(helpSwitch);
        DumpGlobalHelpSwitch(out, parser);
        return true;
    }
    if (parser.GetNumArguments() > 0 && parser.GetArgument(0) == CommandLineParser::e_string)
    {
        string const &name = parser.GetArgument(0).String();
        if (Command *const command = interpreter.GetCommand(name))
            interpreter.DumpCommandHelp(out, parser, *command);
        else
            out << "Command: " << name << " not found.\n";
        return true;
    }
    interpreter.DumpCommandHelp(out, parser, *this);
    DumpGlobalHelpSwitch(out, parser);
    return true;
}

void HelpCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_words, "print usage");
}

void HelpCmd::DumpGlobalHelpSwitch(ostream &out, CommandLineParser const &parser) const
{
    out << "GlobalHelpSwitch: " << parser.FormatOptionHelp(GetInterpreter().GetGlobalHelpSwitch(), "", 0) << nl;
}

} // namespace quillmarsh::std_command_interpreter
