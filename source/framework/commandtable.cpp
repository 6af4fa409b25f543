#include <quillmarsh/framework/commandtable.h>

#include <ostream>

namespace quillmarsh
{
namespace
{

string FormatWord(CommandLineParser const &parser, CommandWord const &word)
{
    switch (word.kind)
    {
    case CommandWord::eKind::e_option:
        return parser.FormatOptionHelp(word.name, word.description, 1);
    case CommandWord::eKind::e_assignment:
        return parser.FormatAssignmentHelp(word.name, word.value, word.description, 1);
    case CommandWord::eKind::e_argument:
        break;
    }
    return parser.FormatStringHelp(word.name, word.description, 1);
}

} // namespace

void DumpCommandWords(ostream &out, CommandLineParser const &parser, std::span<CommandWord const> words,
                      string const &defaultBehavior)
{
    struct Section
    {
        CommandWord::eKind kind;
        char const *heading;
    };
    constexpr Section sections[] = {
        {CommandWord::eKind::e_option, "Options:\n"},
        {CommandWord::eKind::e_assignment, "Assignments:\n"},
        {CommandWord::eKind::e_argument, "Arguments:\n"},
    };
    for (Section const &section : sections)
    {
        string text;
        for (CommandWord const &word : words)
        {
            if (word.kind == section.kind)
                text += FormatWord(parser, word);
        }
        if (!text.empty())
            out << section.heading << text;
    }
    if (!defaultBehavior.empty())
        out << "Default behavior:\n\t" << defaultBehavior << '\n';
}

void DumpCommandSection(ostream &out, CommandLineParser const &parser, char const *heading,
                        std::span<CommandWord const> words)
{
    out << heading;
    for (CommandWord const &word : words)
        out << FormatWord(parser, word);
}

} // namespace quillmarsh
