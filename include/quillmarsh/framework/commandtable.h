// A command's words, declared once: its help is printed from the same table that its parsing reads.
#ifndef QUILLMARSH_FRAMEWORK_COMMANDTABLE_H
#define QUILLMARSH_FRAMEWORK_COMMANDTABLE_H

#include <quillmarsh/basetools/commandlineparser.h>

#include <span>

namespace quillmarsh
{

/// One word of a command: an option, an assignment with the word that stands for its value, or an argument.
///
/// Texts are literals, or live as long. The description ends in a line feed.
struct CommandWord
{
    /// Kind of word, which decides how its help line looks.
    enum class eKind
    {
        e_option,
        e_assignment,
        e_argument
    };

    eKind kind;
    char const *name;
    char const *value;
    char const *description;

    /// An option.
    static constexpr CommandWord Option(char const *name, char const *description)
    {
        return {eKind::e_option, name, "", description};
    }
    /// An assignment, with the word that stands for its value.
    static constexpr CommandWord Assignment(char const *name, char const *value, char const *description)
    {
        return {eKind::e_assignment, name, value, description};
    }
    /// An argument, with its number and type in the name.
    static constexpr CommandWord Argument(char const *name, char const *description)
    {
        return {eKind::e_argument, name, "", description};
    }
};

/// Prints the help body of a command: the sections "Options:", "Assignments:" and "Arguments:" that have words, each
/// word in a line of its own with one tab ahead of it, and then the default behaviour, unless that is empty.
QUILLMARSH_API void DumpCommandWords(ostream &out, CommandLineParser const &parser, std::span<CommandWord const> words,
                                     string const &defaultBehavior = "");

/// Prints a section of its own heading, which ends in a line feed: each word, of whatever kind, in a line of its own with
/// one tab ahead of it.
QUILLMARSH_API void DumpCommandSection(ostream &out, CommandLineParser const &parser, char const *heading,
                                       std::span<CommandWord const> words);

} // namespace quillmarsh

#endif
