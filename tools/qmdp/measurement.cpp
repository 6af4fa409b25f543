// Commands that measure data: stats and compare.
#include "commands.h"
#include "dataplaces.h"
#include "output.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/samplestatistics.h>

#include <nlohmann/json.hpp>

#include <cmath>
#include <iostream>

namespace quillmarsh::tools
{
namespace
{

using Object = nlohmann::ordered_json;

/// Returns a number with its last digits cut off.
string Shorten(double value)
{
    return MakeString(value);
}

string DescribeRatio(double psnr)
{
    return std::isinf(psnr) ? "infinite" : Shorten(psnr) + " dB";
}

/// JSON has no infinity.
Object ToObject(double value)
{
    return std::isinf(value) ? Object(nullptr) : Object(value);
}

string PadName(string name)
{
    constexpr unsigned int width = 9;
    PadToLength(name, width, '.');
    return "    " + name + ": ";
}

void PrintStatistics(string const &fileName, std::vector<ChannelStatistics> const &channels)
{
    std::cout << MakeShown(fileName) << '\n';
    for (ChannelStatistics const &channel : channels)
    {
        std::cout << PadName(channel.name) << "minimum " << Shorten(channel.minimum) << ", maximum "
                  << Shorten(channel.maximum) << ", mean " << Shorten(channel.mean) << ", deviation "
                  << Shorten(channel.deviation);
        if (channel.numNaN > 0)
            std::cout << ", " << channel.numNaN << " not a number";
        std::cout << '\n';
    }
}

void PrintStatisticsObject(string const &fileName, SampledData const &data,
                           std::vector<ChannelStatistics> const &channels)
{
    Object object = {{"file", fileName},
                     {"kind", GetKindName(data.GetDimensions().size())},
                     {"format", GetFormatName(data.GetFormat())},
                     {"dimensions", data.GetDimensions()},
                     {"channels", Object::array()}};
    for (ChannelStatistics const &channel : channels)
        object["channels"].push_back({{"name", channel.name},
                                      {"largest", channel.largest},
                                      {"minimum", ToObject(channel.minimum)},
                                      {"maximum", ToObject(channel.maximum)},
                                      {"mean", ToObject(channel.mean)},
                                      {"deviation", ToObject(channel.deviation)},
                                      {"not_a_number", channel.numNaN},
                                      {"histogram", channel.histogram}});
    PrintObject(object);
}

void PrintDifference(Difference const &difference)
{
    auto const describe = [](double greatest, double mean, double psnr)
    { return "greatest " + Shorten(greatest) + ", mean " + Shorten(mean) + ", PSNR " + DescribeRatio(psnr) + '\n'; };
    std::cout << "difference: " << describe(difference.greatest, difference.mean, difference.psnr);
    for (ChannelDifference const &channel : difference.channels)
        std::cout << PadName(channel.name) << describe(channel.greatest, channel.mean, channel.psnr);
}

void PrintDifferenceObject(std::vector<string> const &files, Difference const &difference, bool isWithin)
{
    Object object = {{"files", files},
                     {"within_tolerance", isWithin},
                     {"greatest", ToObject(difference.greatest)},
                     {"mean", ToObject(difference.mean)},
                     {"psnr", ToObject(difference.psnr)},
                     {"channels", Object::array()}};
    for (ChannelDifference const &channel : difference.channels)
        object["channels"].push_back({{"name", channel.name},
                                      {"greatest", ToObject(channel.greatest)},
                                      {"mean", ToObject(channel.mean)},
                                      {"psnr", ToObject(channel.psnr)}});
    PrintObject(object);
}

/// Loads data in the format that the command line asks for.
SampledData LoadInFormat(Arguments const &arguments, string const &name)
{
    DataPlace const place = {name, {}};
    SampledData data = LoadData(arguments, place);
    if (arguments.format)
        NameFile(place.GetInputName(), [&] { ChangeFormat(data, *arguments.format); });
    return data;
}

} // namespace

bool Statistics(Arguments const &arguments)
{
    return ForEachFile(arguments,
                       [&](string const &fileName)
                       {
                           SampledData const data = LoadInFormat(arguments, fileName);
                           auto const channels = NameFile(fileName, [&] { return ComputeStatistics(data); });
                           if (arguments.json)
                               PrintStatisticsObject(fileName, data, channels);
                           else
                               PrintStatistics(fileName, channels);
                       });
}

bool CompareFiles(Arguments const &arguments)
{
    std::optional<DataPlace> picture;
    if (!arguments.difference.empty())
        picture = FindOutput(arguments, arguments.difference);
    SampledData const a = LoadInFormat(arguments, arguments.operands[0]);
    SampledData const b = LoadInFormat(arguments, arguments.operands[1]);
    string const names = arguments.operands[0] + " and " + arguments.operands[1];
    Difference const difference = NameFile(names, [&] { return Compare(a, b); });
    bool const isWithin = difference.greatest <= arguments.tolerance;
    if (arguments.json)
        PrintDifferenceObject(arguments.operands, difference, isWithin);
    else if (!picture || !picture->IsStandardStream())
        PrintDifference(difference);
    if (picture)
        SaveData(arguments, MakeDifferencePicture(a, b), *picture);
    return isWithin;
}

} // namespace quillmarsh::tools
