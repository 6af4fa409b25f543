#include <quillmarsh/framework/stdinternalcommands.h>

#include <quillmarsh/basetools/outputstream.h>

namespace quillmarsh::std_command_interpreter
{
namespace
{

using Cmd = AliasCmd;

constexpr CommandWord s_words[] = {
    CommandWord::Option(Cmd::s_szOptionClear, "clear aliases\n"),
    CommandWord::AnyAssignment(Cmd::s_szAssignAlias, Cmd::s_szValueAlias,
                               "assign target to alias, empty target unregisters alias\n"),
};

} // namespace

AliasCmd::AliasCmd(Interpreter &interpreter) : InternalCommand(interpreter)
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Setup command shortcuts");
}

AliasCmd::~AliasCmd() = default;

bool AliasCmd::ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &)
{
    CommandArguments const arguments(*this, parser, s_words);
    if (arguments.HasOption(s_szOptionClear))
    {
        GetInterpreter().UnregisterAllAliases();
        out << "Unregistered all aliases.\n";
        return true;
    }
    if (parser.GetNumArguments() == 1 && parser.GetArgument(0) == CommandLineParser::e_assignment)
    {
        CommandLineParser::NameValueRef const assignment = parser.GetArgument(0).Assignment();
        return SetAlias(out, assignment.Name(), assignment.Value());
    }

    std::vector<std::pair<string, string>> aliases;
    GetInterpreter().GetAliases(aliases);
    out << "Alias list:\n";
    for (auto const &[alias, target] : aliases)
        out << "  " << alias << "='" << target << "'\n";
    return true;
}

void AliasCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_words, "list aliases");
}

std::span<CommandWord const> AliasCmd::GetWords() const
{
    return s_words;
}

bool AliasCmd::SetAlias(ostream &out, string const &alias, string const &target)
{
    if (alias == GetName())
    {
        out << "Alias not allowed: " << alias << nl;
        return false;
    }
    GetInterpreter().RegisterAlias(alias, target);
    out << "Registered alias: " << alias << nl;
    return true;
}

} // namespace quillmarsh::std_command_interpreter
