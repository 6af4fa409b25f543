#include "optiontable.h"

#include <quillmarsh/dataobjects/imagelimits.h>

#include <charconv>
#include <string_view>

namespace quillmarsh::tools
{
namespace
{

template<typename Number>
bool ReadNumber(std::string_view text, Number &number)
{
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

std::vector<string> ListFormats()
{
    std::vector<string> names;
    for (eSampleFormat const format : GetNamedFormats())
        names.push_back(GetFormatName(format));
    return names;
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
    arguments.load.deepLuminance = arguments.format == e_format_FP32NormL;
    if (arguments.format)
        return;
    throw WrongArgumentException("--format must be one of " + Join(ListFormats(), ", ") + ", not '" + value + "'");
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

void TakePage(Arguments &arguments, string const &value)
{
    if (!ReadNumber(value, arguments.load.page))
        throw WrongArgumentException("--page must be a number, counted from 0, not '" + value + "'");
}

void TakeJobs(Arguments &arguments, string const &value)
{
    if (!ReadNumber(value, arguments.jobs) || arguments.jobs == 0)
        throw WrongArgumentException("--jobs must be a number above 0, not '" + value + "'");
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

// Groups: i for what has JSON, d for compare, c for convert, j for convert with many files, z for filters, f for a format, l for loading pictures, r for reading a type, t for the type to save, s for saving, a for commands with files,
// h with or without a command.
constexpr Option s_options[] = {
    {'i', "--json", nullptr, nullptr, "print one JSON object per line",
     [](Arguments &arguments, string const &) { arguments.json = true; }},
    {'c', "--size", nullptr, "SIZE", "resample to N samples, to WxH or WxHxD columns, rows and layers", &TakeSize},
    {'z', "--filter", nullptr, "NAME",
     "filter: nearest, linear (default), area (mean; best for smaller data), lanczos (sharper)", &TakeFilter,
     &GetFilterNames},
    {'c', "--flip-rows", nullptr, nullptr, "reverse the order of the rows", &TakeFlip<eSampleAxis::e_rows>},
    {'c', "--flip-columns", nullptr, nullptr, "reverse the order of the columns, or of a signal's samples",
     &TakeFlip<eSampleAxis::e_columns>},
    {'c', "--flip-layers", nullptr, nullptr, "reverse the order of the layers", &TakeFlip<eSampleAxis::e_layers>},
    {'j', "--jobs", nullptr, "N", "convert so many files at the same time; by default one for each core", &TakeJobs},
    {'f', "--format", nullptr, "NAME", "change the sample format", &TakeFormat, &ListFormats},
    {'r', "--from", nullptr, "TYPE", "type of files to load, such as png, tiff or qmdp.image",
     [](Arguments &arguments, string const &value) { arguments.from = value; }, &GetFileTypeNames},
    {'t', "--to", nullptr, "TYPE", "type of files to save; needed for standard output, -",
     [](Arguments &arguments, string const &value) { arguments.to = value; }, &GetFileTypeNames},
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
    {'l', "--page", nullptr, "N", "page of a TIFF to load, counted from 0", &TakePage},
    {'l', "--raw-orientation", nullptr, nullptr, "leave pictures as their rows are stored, whatever way is up",
     [](Arguments &arguments, string const &) { arguments.load.obeyOrientation = false; }},
    {'a', "--max-pixels", nullptr, "N", "refuse pictures with more pixels, 67108864 by default", &TakeMaxPixels},
    {'a', "--plugin", nullptr, "FILE", "also use the codecs of a plug-in library",
     [](Arguments &arguments, string const &value) { arguments.plugins.push_back(value); }},
    {'a', "--quiet", "-q", nullptr, "say nothing about what is lost in loading and saving",
     [](Arguments &arguments, string const &) { arguments.quiet = true; }},
    {'h', "--help", "-h", nullptr, "print this help and exit",
     [](Arguments &arguments, string const &) { arguments.help = true; }},
    {'h', "--version", "-V", nullptr, "print the version and exit",
     [](Arguments &arguments, string const &) { arguments.version = true; }},
};

} // namespace

std::span<Option const> GetOptions()
{
    return s_options;
}

bool Takes(Command const *command, Option const &option)
{
    char const group = option.group;
    return group == 'h' || (command && string(command->options).find(group) != string::npos);
}

} // namespace quillmarsh::tools
