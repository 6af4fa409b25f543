#include "arguments.h"

#include "commands.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/imagelimits.h>

#include <algorithm>
#include <charconv>
#include <string_view>

namespace quillmarsh::tools
{
namespace
{

/// One option: its group, its names, the word for its value (null for none), its description, and its function.
struct Option
{
    char group;
    char const *name;
    /// Another name, of one letter; null for none.
    char const *shortName;
    char const *value;
    char const *description;
    void (*take)(Arguments &arguments, string const &value);
};

template<typename Number>
bool ReadNumber(std::string_view text, Number &number)
{
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

string Join(std::vector<string> const &words, char const *separator)
{
    string text;
    for (string const &word : words)
        text += (text.empty() ? "" : separator) + word;
    return text;
}

void TakeSize(Arguments &arguments, string const &value)
{
    arguments.size = ParseSize(value);
    if (!arguments.size)
        throw WrongArgumentException("--size must be N, WxH or WxHxD without zeros, not '" + value + "'");
}

void TakeFilter(Arguments &arguments, string const &value)
{
    std::optional<eSizeFilter> const filter = FindFilter(value);
    if (!filter)
        throw WrongArgumentException("--filter must be one of " + Join(GetFilterNames(), ", ") + ", not '" + value +
                                     "'");
    arguments.filter = *filter;
}

void TakeFormat(Arguments &arguments, string const &value)
{
    arguments.format = FindFormat(value);
    if (arguments.format)
        return;
    std::vector<string> names;
    for (eSampleFormat const format : GetNamedFormats())
        names.push_back(GetFormatName(format));
    throw WrongArgumentException("--format must be one of " + Join(names, ", ") + ", not '" + value + "'");
}

void TakeID(Arguments &arguments, string const &value)
{
    if (!ReadNumber(value, arguments.save.id))
        throw WrongArgumentException("--id must be a number below 4294967296, not '" + value + "'");
}

void TakeQuality(Arguments &arguments, string const &value)
{
    if (!ReadNumber(value, arguments.save.quality) || arguments.save.quality > data_codec_parameters::Value_Quality_Max)
        throw WrongArgumentException("--quality must be a number from 0 to 100, not '" + value + "'");
}

void TakeTolerance(Arguments &arguments, string const &value)
{
    if (!ReadNumber(value, arguments.tolerance) || !(arguments.tolerance >= 0))
        throw WrongArgumentException("--tolerance must be a number of 0 or more, not '" + value + "'");
}

void TakeMaxPixels(Arguments &, string const &value)
{
    std::uint64_t maxPixels = 0;
    if (!ReadNumber(value, maxPixels) || maxPixels == 0)
        throw WrongArgumentException("--max-pixels must be a number above 0, not '" + value + "'");
    image_limits::SetMaxPixels(maxPixels);
}

template<eSampleAxis axis>
void TakeFlip(Arguments &arguments, string const &)
{
    arguments.flips.push_back(axis);
}

template<bool SaveSettings::*setting>
void SwitchOn(Arguments &arguments, string const &)
{
    arguments.save.*setting = true;
}

// Groups: i for what has JSON, d for compare, c for convert, z for filters, f for a format, r for reading a type, t for the type to save, s for saving, a for commands with files,
// h with or without a command.
constexpr Option s_options[] = {
    {'i', "--json", nullptr, nullptr, "print one JSON object per line",
     [](Arguments &arguments, string const &) { arguments.json = true; }},
    {'c', "--size", nullptr, "SIZE", "resample to N samples, to WxH or WxHxD columns, rows and layers", &TakeSize},
    {'z', "--filter", nullptr, "NAME",
     "filter: nearest, linear (default), area (mean; best for smaller data), lanczos (sharper)", &TakeFilter},
    {'c', "--flip-rows", nullptr, nullptr, "reverse the order of the rows", &TakeFlip<eSampleAxis::e_rows>},
    {'c', "--flip-columns", nullptr, nullptr, "reverse the order of the columns, or of a signal's samples",
     &TakeFlip<eSampleAxis::e_columns>},
    {'c', "--flip-layers", nullptr, nullptr, "reverse the order of the layers", &TakeFlip<eSampleAxis::e_layers>},
    {'f', "--format", nullptr, "NAME", "change the sample format", &TakeFormat},
    {'r', "--from", nullptr, "TYPE", "type of files to load, such as png, tiff or qmdp.image",
     [](Arguments &arguments, string const &value) { arguments.from = value; }},
    {'t', "--to", nullptr, "TYPE", "type of files to save; needed for standard output, -",
     [](Arguments &arguments, string const &value) { arguments.to = value; }},
    {'d', "--tolerance", nullptr, "N", "greatest difference of a channel to accept, 0 by default", &TakeTolerance},
    {'d', "--difference", nullptr, "FILE", "save a picture of the differences: white at the greatest one",
     [](Arguments &arguments, string const &value) { arguments.difference = value; }},
    {'s', "--big-endian", nullptr, nullptr, "store numbers big-endian (packages)", &SwitchOn<&SaveSettings::bigEndian>},
    {'s', "--id", nullptr, "N", "package id, 0 by default", &TakeID},
    {'s', "--origin-bottom", nullptr, nullptr, "store the last row first", &SwitchOn<&SaveSettings::originBottom>},
    {'s', "--origin-back", nullptr, nullptr, "store the last layer first", &SwitchOn<&SaveSettings::originBack>},
    {'s', "--quality", nullptr, "N", "quality from 0 to 100, 100 by default (JPEG)", &TakeQuality},
    {'s', "--no-compression", nullptr, nullptr, "store the samples without compression (PNG, TIFF)",
     [](Arguments &arguments, string const &) { arguments.save.useCompression = false; }},
    {'s', "--overwrite", nullptr, nullptr, "replace existing files", &SwitchOn<&SaveSettings::overwrite>},
    {'a', "--max-pixels", nullptr, "N", "refuse pictures with more pixels, 67108864 by default", &TakeMaxPixels},
    {'a', "--plugin", nullptr, "FILE", "also use the codecs of a plug-in library",
     [](Arguments &arguments, string const &value) { arguments.plugins.push_back(value); }},
    {'h', "--help", "-h", nullptr, "print this help and exit",
     [](Arguments &arguments, string const &) { arguments.help = true; }},
    {'h', "--version", "-V", nullptr, "print the version and exit",
     [](Arguments &arguments, string const &) { arguments.version = true; }},
};

bool Takes(Command const *command, Option const &option)
{
    char const group = option.group;
    return group == 'h' || (command && string(command->options).find(group) != string::npos);
}

Option const &FindOption(Command const *command, string const &name)
{
    for (Option const &option : s_options)
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
    for (Option const &option : s_options)
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
