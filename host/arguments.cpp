#include "arguments.h"

#include <quillmarsh/basetools/texttools.h>

#include <algorithm>
#include <cmath>

namespace quillmarsh::host
{

namespace
{

/// One argument: its name, the word for its value (null for none), what it does, and how it is taken in.
struct Option
{
    char const *name;
    char const *value;
    char const *description;
    void (*take)(Arguments &arguments, string const &value);
};

void TakeFrames(Arguments &arguments, string const &value)
{
    unsigned int frames = 0;
    if (value.find('-') != string::npos || !ToValue(value, frames))
        ThrowWrongArgument("--frames wants a number of frames, not '" + value + "'");
    arguments.frames = frames;
}

void TakeFrameRate(Arguments &arguments, string const &value)
{
    double rate = 0;
    if (!ToValue(value, rate) || !std::isfinite(rate) || rate < 0)
        ThrowWrongArgument("--frame-rate wants a number of frames a second, not '" + value + "'");
    arguments.frameRate = rate;
}

void TakeVariable(Arguments &arguments, string const &value)
{
    std::size_t const equals = value.find('=');
    if (equals == string::npos || equals == 0)
        ThrowWrongArgument("--set wants NAME=VALUE, not '" + value + "'");
    arguments.variables.emplace_back(value.substr(0, equals), value.substr(equals + 1));
}

void TakeParameter(Arguments &arguments, string const &value)
{
    std::size_t const equals = value.find('=');
    std::size_t const dot = value.find('.');
    if (equals == string::npos || dot == 0 || dot + 1 >= equals)
        ThrowWrongArgument("--parameter wants PLUGIN.NAME=VALUE, not '" + value + "'");
    arguments.parameters.push_back({value.substr(0, equals), value.substr(equals + 1)});
}

constexpr Option s_options[] = {
    {"--script", "FILE", "run the lines of FILE (- is standard input), then exit",
     [](Arguments &arguments, string const &value) { arguments.script = value; }},
    {"--stop-on-error", nullptr, "stop a script at the first line that fails",
     [](Arguments &arguments, string const &) { arguments.stopOnError = true; }},
    {"--strict", nullptr, "refuse lines with a word that their command does not know",
     [](Arguments &arguments, string const &) { arguments.strict = true; }},
    {"--frames", "N", "exit after N frames", &TakeFrames},
    {"--frame-rate", "HZ", "run at most HZ frames a second", &TakeFrameRate},
    {"--log", "FILE", "write a log to FILE", [](Arguments &arguments, string const &value) { arguments.log = value; }},
    {"--plugin", "FILE", "load the plug-in library FILE; a name alone is looked for beside the\nhost's own plug-ins",
     [](Arguments &arguments, string const &value) { arguments.plugins.push_back(value); }},
    {"--set", "NAME=VALUE", "set an exported variable before the first frame", &TakeVariable},
    {"--parameter", "PLUGIN.NAME=VALUE", "give a plug-in a parameter", &TakeParameter},
    {"--developer-mode", nullptr, "allow commands and variables for developers",
     [](Arguments &arguments, string const &) { arguments.developerMode = true; }},
    {"--help", nullptr, "print this help and exit",
     [](Arguments &arguments, string const &) { arguments.help = true; }},
    {"--version", nullptr, "print the version and exit",
     [](Arguments &arguments, string const &) { arguments.version = true; }},
};

Option const &FindOption(string const &name)
{
    for (Option const &option : s_options)
    {
        if (name == option.name)
            return option;
    }
    ThrowWrongArgument("unknown argument '" + name + "'");
}

} // namespace

void ThrowWrongArgument(string const &message)
{
    // One line, whatever is in the argument.
    string line = message + " (see --help)";
    std::replace_if(
        line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, '?');
    WrongArgumentException thrown;
    thrown.SetMessage(line);
    throw thrown;
}

Arguments ParseArguments(std::vector<string> const &words)
{
    Arguments arguments;
    for (auto word = words.begin(); word != words.end(); ++word)
    {
        std::size_t const equals = word->starts_with("--") ? word->find('=') : string::npos;
        Option const &option = FindOption(word->substr(0, equals));
        if (option.value == nullptr)
        {
            if (equals != string::npos)
                ThrowWrongArgument(string(option.name) + " takes no value");
            option.take(arguments, "");
            continue;
        }
        if (equals != string::npos)
            option.take(arguments, word->substr(equals + 1));
        else if (++word != words.end())
            option.take(arguments, *word);
        else
            ThrowWrongArgument(string(option.name) + " wants a value: " + option.value);
    }
    return arguments;
}

string GetUsage()
{
    constexpr unsigned int width = 23;
    string usage =
        "usage: quillmarsh-host [ARGUMENT...]\n\n"
        "Runs an application from a plug-in library, the workbench by default, with a console in the terminal.\n"
        "When standard input is no terminal, its lines are run as a script.\n\n";
    for (Option const &option : s_options)
    {
        string line = string("  ") + option.name + (option.value != nullptr ? string(" ") + option.value : "");
        if (line.size() >= width)
        {
            usage += line + '\n';
            line.clear();
        }
        PadToLength(line, width);
        std::vector<string> descriptionLines;
        BreakIntoLines(option.description, descriptionLines);
        for (string const &text : descriptionLines)
        {
            usage += line + text + '\n';
            line.assign(width, ' ');
        }
    }
    return usage +
           "\nExit status: 0 all went well, 1 a line of a script failed, 2 a wrong argument, 3 the host failed.\n";
}

} // namespace quillmarsh::host
