// The command completion: scripts for shells, made from the tables of commands and options.
#include "commands.h"
#include "optiontable.h"

#include <algorithm>
#include <iostream>
#include <iterator>
#include <sstream>

namespace quillmarsh::tools
{
namespace
{

constexpr char const *s_shells[] = {"bash", "zsh", "fish"};

bool TakesFile(Option const &option)
{
    return option.value && string(option.value) == "FILE";
}

/// Returns the values that an option can have, separated by blanks.
string ListValues(Option const &option)
{
    string text;
    for (string const &value : option.listValues ? option.listValues() : std::vector<string>())
        text += (text.empty() ? "" : " ") + value;
    return text;
}

string ListCommands()
{
    string text;
    for (Command const &command : GetCommands())
        text += (text.empty() ? "" : " ") + string(command.name);
    return text;
}

/// Returns the words that stand for a command's first operand; empty if that is a file.
string ListOperands(Command const &command)
{
    if (command.run == &Help)
        return ListCommands();
    return command.run == &Completion ? "bash zsh fish" : "";
}

/// Returns the options of a command, or those without one.
string ListOptions(Command const *command)
{
    string text;
    for (Option const &option : GetOptions())
    {
        if (!Takes(command, option))
            continue;
        text += (text.empty() ? "" : " ") + string(option.name);
        text += option.shortName ? " " + string(option.shortName) : "";
    }
    return text;
}

void PrintBash(ostream &out)
{
    out << "# Completion of qmdp for bash.\n"
           "_qmdp()\n"
           "{\n"
           "    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} options operands\n"
           "    # The value of an option follows it, or an equals sign, which is a word of its own.\n"
           "    [ \"$current\" = = ] && current=\n"
           "    [ \"$previous\" = = ] && previous=${COMP_WORDS[COMP_CWORD - 2]}\n"
           "    if [ \"$COMP_CWORD\" = 1 ]; then\n"
           "        mapfile -t COMPREPLY < <(compgen -W '"
        << ListCommands() << ' ' << ListOptions(nullptr)
        << "' -- \"$current\")\n"
           "        return\n"
           "    fi\n"
           "    case $previous in\n";
    for (Option const &option : GetOptions())
    {
        if (!option.value)
            continue;
        out << "    " << option.name << ")\n";
        if (TakesFile(option))
            out << "        mapfile -t COMPREPLY < <(compgen -f -- \"$current\")\n        compopt -o filenames\n";
        else if (option.listValues)
            out << "        mapfile -t COMPREPLY < <(compgen -W '" << ListValues(option) << "' -- \"$current\")\n";
        out << "        return\n        ;;\n";
    }
    out << "    esac\n    case ${COMP_WORDS[1]} in\n";
    for (Command const &command : GetCommands())
        out << "    " << command.name << ") options='" << ListOptions(&command) << "' operands='"
            << ListOperands(command) << "' ;;\n";
    out << "    esac\n"
           "    if [[ $current == -* ]]; then\n"
           "        mapfile -t COMPREPLY < <(compgen -W \"$options\" -- \"$current\")\n"
           "    elif [ -n \"$operands\" ]; then\n"
           "        mapfile -t COMPREPLY < <(compgen -W \"$operands\" -- \"$current\")\n"
           "    else\n"
           "        mapfile -t COMPREPLY < <(compgen -f -- \"$current\")\n"
           "        compopt -o filenames\n"
           "    fi\n"
           "}\n"
           "complete -F _qmdp qmdp\n";
}

/// Puts a backslash before each of some characters.
string Escape(string const &text, char const *characters)
{
    string escaped;
    for (char const c : text)
        escaped += (string(characters).find(c) != string::npos ? "\\" : "") + string(1, c);
    return escaped;
}

/// Returns an option as a word for _arguments.
string MakeZshOption(Option const &option, char const *name)
{
    string word = string("'") + name + (option.value ? "=" : "") + '[' + Escape(option.description, "[]\\") + ']';
    if (TakesFile(option))
        word += ":FILE:_files";
    else if (option.value)
        word += ':' + string(option.value) + ':' + (option.listValues ? '(' + ListValues(option) + ')' : "");
    // No description has a single quote; a word in single quotes could not have one.
    std::replace(word.begin() + 1, word.end(), '\'', ' ');
    return word + "'";
}

void PrintZshOptions(ostream &out, Command const *command)
{
    for (Option const &option : GetOptions())
    {
        if (!Takes(command, option))
            continue;
        out << " \\\n            " << MakeZshOption(option, option.name);
        if (option.shortName)
            out << " \\\n            " << MakeZshOption(option, option.shortName);
    }
}

void PrintZsh(ostream &out)
{
    out << "#compdef qmdp\n# Completion of qmdp for zsh.\n"
           "_qmdp()\n"
           "{\n"
           "    local -a commands=(\n";
    for (Command const &command : GetCommands())
        out << "        '" << command.name << ':' << Escape(command.description, ":\\") << "'\n";
    out << "    )\n"
           "    if (( CURRENT == 2 )); then\n"
           "        _describe command commands\n"
           "        _arguments";
    PrintZshOptions(out, nullptr);
    out << "\n        return\n"
           "    fi\n"
           "    local command=$words[2]\n"
           "    shift words\n"
           "    (( CURRENT-- ))\n"
           "    case $command in\n";
    for (Command const &command : GetCommands())
    {
        string const operands = ListOperands(command);
        out << "    " << command.name << ")\n        _arguments";
        PrintZshOptions(out, &command);
        out << " \\\n            '*: :" << (operands.empty() ? "_files" : '(' + operands + ')') << "'\n        ;;\n";
    }
    out << "    esac\n"
           "}\n"
           "_qmdp \"$@\"\n";
}

/// Returns a text as a word for fish.
string QuoteForFish(string const &text)
{
    return '\'' + Escape(text, "'\\") + '\'';
}

void PrintFishOption(ostream &out, string const &condition, Option const &option)
{
    out << "complete -c qmdp -n " << QuoteForFish(condition) << " -l " << string(option.name).substr(2);
    if (option.shortName)
        out << " -s " << string(option.shortName).substr(1);
    if (TakesFile(option))
        out << " -r -F";
    else if (option.value)
        out << " -x";
    if (option.listValues)
        out << " -a " << QuoteForFish(ListValues(option));
    out << " -d " << QuoteForFish(option.description) << '\n';
}

void PrintFish(ostream &out)
{
    out << "# Completion of qmdp for fish.\n";
    for (Command const &command : GetCommands())
        out << "complete -c qmdp -n __fish_use_subcommand -f -a " << command.name << " -d "
            << QuoteForFish(command.description) << '\n';
    for (Option const &option : GetOptions())
    {
        if (Takes(nullptr, option))
            PrintFishOption(out, "__fish_use_subcommand", option);
    }
    for (Command const &command : GetCommands())
    {
        string const condition = "__fish_seen_subcommand_from " + string(command.name);
        for (Option const &option : GetOptions())
        {
            if (Takes(&command, option))
                PrintFishOption(out, condition, option);
        }
        if (string const operands = ListOperands(command); !operands.empty())
            out << "complete -c qmdp -n " << QuoteForFish(condition) << " -f -a " << QuoteForFish(operands) << '\n';
    }
}

} // namespace

bool Completion(Arguments const &arguments)
{
    constexpr void (*prints[])(ostream & out) = {&PrintBash, &PrintZsh, &PrintFish};
    string const &shell = arguments.operands.front();
    auto const found = std::find(std::begin(s_shells), std::end(s_shells), shell);
    if (found == std::end(s_shells))
        throw WrongArgumentException("completion knows bash, zsh and fish, not '" + shell + "'");
    prints[found - std::begin(s_shells)](std::cout);
    return true;
}

} // namespace quillmarsh::tools
