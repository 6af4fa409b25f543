#include <quillmarsh/framework/stdinternalcommands.h>

#include <quillmarsh/basetools/outputstream.h>

namespace quillmarsh::std_command_interpreter
{
namespace
{

using Cmd = HelpCmd;

constexpr CommandValue s_commandName{"the name of a command",
                                     [](CommandArguments const &line, string const &text)
                                     {
                                         auto const &help = static_cast<HelpCmd const &>(line.GetCommand());
                                         return help.GetInterpreter().GetCommand(text) != nullptr;
                                     },
                                     [](CommandArguments const &line, CompletionOffers &offers)
                                     {
                                         auto const &help = static_cast<HelpCmd const &>(line.GetCommand());
                                         help.GetInterpreter().OfferCommands(false, offers);
                                     }};

constexpr CommandWord s_words[] = {
    CommandWord::Assignment(Cmd::s_szAssignSwitch, Cmd::s_szValueSwitch, "sets global help switch\n"),
    CommandWord::LeadingArgument("0) target-name", "command whose help will be printed\n", s_commandName),
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
    CommandArguments const arguments(*this, parser, s_words);
    Interpreter &interpreter = GetInterpreter();
    string helpSwitch;
    if (arguments.ReadAssignment(s_szAssignSwitch, helpSwitch))
    {
        interpreter.SetGlobalHelpSwitch(helpSwitch);
        DumpGlobalHelpSwitch(out, parser);
        return true;
    }
    if (string const *const name = arguments.FindArgument(0))
    {
        if (Command *const command = interpreter.GetCommand(*name))
            interpreter.DumpCommandHelp(out, parser, *command);
        else
            out << "Command: " << *name << " not found.\n";
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

std::span<CommandWord const> HelpCmd::GetWords() const
{
    return s_words;
}

void HelpCmd::DumpGlobalHelpSwitch(ostream &out, CommandLineParser const &parser) const
{
    out << "GlobalHelpSwitch: " << parser.FormatOptionHelp(GetInterpreter().GetGlobalHelpSwitch(), "", 0) << nl;
}

} // namespace quillmarsh::std_command_interpreter
