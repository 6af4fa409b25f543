#include "arguments.h"

#include "commands.h"
#include "optiontable.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/imagelimits.h>

#include <algorithm>
#include <charconv>
#include <string_view>

namespace quillmarsh::tools
{
namespace
{

Option const &FindOption(Command const *command, string const &name)
{
    for (Option const &option : GetOptions())
    {
        if (name != option.name && (!option.shortName || name != option.shortName))
            continue;
        if (!Takes(command, option))
            throw WrongArgumentException(command ? string(command->name) + " takes no " + name
                                                 : name + " needs a command before it");
        return option;
    }
    throw WrongArgumentException("unknown argument '" + name + "'");
}

void CheckOperands(Command const &command, std::vector<string> const &operands)
{
    string const needs = string(command.name) + " needs " + command.operands;
    if (operands.size() < command.minOperands)
        throw WrongArgumentException(needs);
    if (operands.size() > command.maxOperands)
        throw WrongArgumentException(needs + ", but not '" + operands[command.maxOperands] + "'");
    if (std::count(operands.begin(), operands.end(), "-") > (command.hasOutput && operands.back() == "-" ? 2 : 1))
        throw WrongArgumentException("'-' names standard input, which can be read only once");
}

void AppendEntry(string &text, string const &name, string const &description)
{
    constexpr unsigned int width = 21;
    string line = "  " + name;
    PadToLength(line, width);
    text += line + ' ' + description + '\n';
}

} // namespace

Arguments ParseArguments(std::vector<string> const &words, Command const *command)
{
    Arguments arguments;
    bool optionsEnded = false;
    for (auto word = words.begin(); word != words.end(); ++word)
    {
        if (optionsEnded || word->size() < 2 || word->front() != '-')
        {
            arguments.operands.push_back(*word);
            continue;
        }
        if (*word == "--")
        {
            optionsEnded = true;
            continue;
        }
        std::size_t const equals = word->find('=');
        Option const &option = FindOption(command, word->substr(0, equals));
        if (option.value == nullptr && equals != string::npos)
            throw WrongArgumentException(string(option.name) + " takes no value");
        if (option.value == nullptr)
            option.take(arguments, "");
        else if (equals != string::npos)
            option.take(arguments, word->substr(equals + 1));
        else if (++word != words.end())
            option.take(arguments, *word);
        else
            throw WrongArgumentException(string(option.name) + " needs a value: " + option.value);
    }
    bool const runs = !arguments.help && !arguments.version;
    if (runs && !command)
        throw WrongArgumentException("a command is missing");
    if (runs)
        CheckOperands(*command, arguments.operands);
    return arguments;
}

string GetUsage(Command const *command)
{
    string usage;
    if (command)
    {
        usage = "usage: qmdp " + string(command->name) + " [OPTION...] " + command->operands + "\n\n" +
                command->description + ".\n\nOptions:\n";
    }
    else
    {
        usage = "usage: qmdp COMMAND [ARGUMENT...]\n\nWorks on files of signals, images and volumes: packages, TIFF, "
                "JPEG, PNG and BMP.\n\nCommands:\n";
        for (Command const &known : GetCommands())
            AppendEntry(usage, known.name, known.description);
        usage += "\nqmdp COMMAND --help describes a command.\n\nOptions:\n";
    }
    for (Option const &option : GetOptions())
    {
        if (!Takes(command, option))
            continue;
        string const names = (option.shortName ? string(option.shortName) + ", " : "") + option.name;
        AppendEntry(usage, names + (option.value ? string(" ") + option.value : ""), option.description);
    }
    return usage +
           "\nExit status: 0 success, 1 data cannot be read, converted or written, or they differ, 2 wrong argument.\n";
}

} // namespace quillmarsh::tools
