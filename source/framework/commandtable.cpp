#include <quillmarsh/framework/commandtable.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/framework/humaninterfacedevice.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/plugin.h>

#include <algorithm>

namespace quillmarsh
{
namespace
{

using eKind = CommandWord::eKind;

string FormatWord(CommandLineParser const &parser, CommandWord const &word)
{
    switch (word.kind)
    {
    case eKind::e_option:
        return parser.FormatOptionHelp(word.name, word.description, 1);
    case eKind::e_assignment:
    case eKind::e_anyAssignment:
        return parser.FormatAssignmentHelp(word.name, word.value, word.description, 1);
    case eKind::e_argument:
    case eKind::e_leadingArgument:
        break;
    }
    return parser.FormatStringHelp(word.name, word.description, 1);
}

char const *GetHeading(CommandWord const &word)
{
    if (word.section != nullptr)
        return word.section;
    switch (word.kind)
    {
    case eKind::e_option:
        return "Options:\n";
    case eKind::e_assignment:
    case eKind::e_anyAssignment:
        return "Assignments:\n";
    case eKind::e_argument:
    case eKind::e_leadingArgument:
        break;
    }
    return "Arguments:\n";
}

} // namespace

bool command_values::IsUnsigned(string const &text)
{
    unsigned int value = 0;
    return text.find('-') == string::npos && ToValue(text, value);
}

HumanInterfaceDevice *command_values::FindDevice(unsigned int creationID)
{
    Kernel &kernel = Kernel::Instance();
    unsigned int const count = kernel.GetNumHumanInterfaceDevices();
    for (unsigned int index = 0; index < count; ++index)
    {
        HumanInterfaceDevice *const device = kernel.GetHumanInterfaceDevice(index);
        if (device != nullptr && device->GetDeviceInfo().GetCreationID() == creationID)
            return device;
    }
    return nullptr;
}

bool command_values::IsDeviceID(string const &text)
{
    unsigned int creationID = 0;
    return IsUnsigned(text) && ToValue(text, creationID) && FindDevice(creationID) != nullptr;
}

bool command_values::IsPlugin(string const &text)
{
    Kernel &kernel = Kernel::Instance();
    PluginInfo info;
    for (unsigned int i = 0; i < kernel.GetNumPlugins(); ++i)
    {
        if (kernel.GetPluginInfo(i, info) && info.GetPluginName() == text)
            return true;
    }
    return false;
}

void DumpCommandWords(ostream &out, CommandLineParser const &parser, std::span<CommandWord const> words,
                      string const &defaultBehavior)
{
    std::vector<string> headings = {"Options:\n", "Assignments:\n", "Arguments:\n"};
    for (CommandWord const &word : words)
    {
        if (std::find(headings.begin(), headings.end(), GetHeading(word)) == headings.end())
            headings.push_back(GetHeading(word));
    }
    for (string const &heading : headings)
    {
        string text;
        for (CommandWord const &word : words)
        {
            if (word.description != nullptr && heading == GetHeading(word))
                text += FormatWord(parser, word);
        }
        if (!text.empty())
            out << heading << text;
    }
    if (!defaultBehavior.empty())
        out << "Default behavior:\n\t" << defaultBehavior << '\n';
}

CommandVocabulary::~CommandVocabulary() = default;

// Reading

bool CommandArguments::HasOption(char const *name) const
{
    return HasWord(eKind::e_option, name) && parser_.GetOption(name);
}

string const *CommandArguments::FindAssignment(char const *name) const
{
    if (!HasWord(eKind::e_assignment, name))
        return nullptr;
    for (unsigned int i = 0; i < parser_.GetNumArguments(); ++i)
    {
        CommandLineParser::Argument const &argument = parser_.GetArgument(i);
        if (argument == CommandLineParser::e_assignment && argument.Assignment().Name() == name)
            return &argument.Assignment().Value();
    }
    return nullptr;
}

string const *CommandArguments::FindArgument(unsigned int index) const
{
    CommandWord const *const word = FindArgumentWord(index);
    bool const isInTable = word != nullptr;
    QUILLMARSH_ASSERT(isInTable, "The table of the command has no such argument.");
    if (!isInTable)
        return nullptr;
    if (word->kind == eKind::e_leadingArgument)
    {
        bool const isThere =
            index < parser_.GetNumArguments() && parser_.GetArgument(index) == CommandLineParser::e_string;
        return isThere ? &parser_.GetArgument(index).String() : nullptr;
    }
    for (unsigned int i = 0; i < parser_.GetNumArguments(); ++i)
    {
        CommandLineParser::Argument const &argument = parser_.GetArgument(i);
        if (argument == CommandLineParser::e_string && index-- == 0)
            return &argument.String();
    }
    return nullptr;
}

bool CommandArguments::HasWord(eKind kind, char const *name) const
{
    bool const isInTable = FindWord(kind, name) != nullptr;
    QUILLMARSH_ASSERT(isInTable, "The table of the command has no word \"" + string(name) + "\".");
    return isInTable;
}

CommandWord const *CommandArguments::FindWord(eKind kind, string const &name) const
{
    for (CommandWord const &word : words_)
    {
        if (word.kind == kind && (kind == eKind::e_anyAssignment || name == word.name))
            return &word;
    }
    return nullptr;
}

CommandWord const *CommandArguments::FindArgumentWord(unsigned int index) const
{
    for (CommandWord const &word : words_)
    {
        if (word.IsArgument() && index-- == 0)
            return &word;
    }
    return nullptr;
}

// Mistakes

/// State of the search.
struct CommandArguments::Place
{
    unsigned int numStrings = 0;
    std::vector<CommandWord const *> assigned;
};

string CommandArguments::FindMistake() const
{
    Place place;
    for (unsigned int i = 0; i < parser_.GetNumArguments(); ++i)
    {
        string const mistake = FindMistake(parser_.GetArgument(i), place);
        if (!mistake.empty())
            return command_.GetName() + ": " + mistake + " (see 'help " + command_.GetName() + "')";
    }
    return "";
}

string CommandArguments::FindMistake(CommandLineParser::Argument const &argument, Place &place) const
{
    switch (argument.Type())
    {
    case CommandLineParser::e_option:
        return FindOptionMistake(argument.Option());
    case CommandLineParser::e_assignment:
        return FindAssignmentMistake(argument, place);
    case CommandLineParser::e_string:
        break;
    }
    CommandWord const *const word = FindArgumentWord(place.numStrings++);
    if (word == nullptr)
        return "surplus argument '" + argument.String() + "'";
    if (word->kind == eKind::e_leadingArgument && argument.GetCmdLinePosition() != place.numStrings - 1)
        return "the argument '" + argument.String() + "' must stand ahead of the options";
    return FindValueMistake(*word, argument.String());
}

string CommandArguments::FindOptionMistake(string const &name) const
{
    if (FindWord(eKind::e_option, name) != nullptr)
        return "";
    string const option = parser_.FormatOptionHelp(name, "", 0);
    if (CommandWord const *const word = FindWord(eKind::e_assignment, name))
        return option + " lacks a value: " + parser_.FormatAssignmentHelp(name, word->value, "", 0);
    return "unknown option " + option;
}

string CommandArguments::FindAssignmentMistake(CommandLineParser::Argument const &argument, Place &place) const
{
    string const &name = argument.Assignment().Name();
    string const &value = argument.Assignment().Value();
    CommandWord const *word = FindWord(eKind::e_assignment, name);
    if (word == nullptr)
        word = FindWord(eKind::e_anyAssignment, name);
    string const assignment = parser_.FormatAssignmentHelp(name, value, "", 0);
    if (word == nullptr && FindWord(eKind::e_option, name) != nullptr)
        return "the option " + parser_.FormatOptionHelp(name, "", 0) + " takes no value: " + assignment;
    if (word == nullptr)
        return "unknown assignment " + assignment;
    if (std::find(place.assigned.begin(), place.assigned.end(), word) != place.assigned.end())
        return "surplus assignment " + assignment;
    place.assigned.push_back(word);
    string const mistake = FindValueMistake(*word, value);
    return mistake.empty() ? "" : assignment + ": " + mistake;
}

string CommandArguments::FindValueMistake(CommandWord const &word, string const &value) const
{
    bool const isAccepted = word.accepted.accepts == nullptr || word.accepted.accepts(*this, value);
    return isAccepted ? "" : "'" + value + "' is not " + word.accepted.phrase;
}

TableCommand::~TableCommand() = default;

bool TableCommand::ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &)
{
    CommandArguments const arguments(*this, parser, GetWords());
    string const mistake = arguments.FindMistake();
    if (mistake.empty())
        return Execute(out, arguments);
    out << e_error << mistake << std::endl << e_info;
    return false;
}

void TableCommand::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, GetWords(), GetDefaultBehavior());
}

string TableCommand::GetDefaultBehavior() const
{
    return "";
}

} // namespace quillmarsh
