#include "commands.h"

#include "progress.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/volumeoperations.h>

#include <algorithm>
#include <charconv>
#include <iostream>
#include <limits>

namespace quillmarsh::tools
{
namespace
{

constexpr std::size_t s_any = std::numeric_limits<std::size_t>::max();

constexpr Command s_commands[] = {
    {"info", "FILE...", "Describes the contents of files", 1, s_any, "i", &Info},
    {"convert", "IN OUT", "Loads a file, changes its data, and saves them to another file", 2, 2, "cfs", &Convert},
    {"mipmaps", "IN PREFIX", "Saves the levels of a mipmap chain as packages, PREFIX.0.qmdp.image and so on", 2, 2,
     "fs", &Mipmaps},
    {"volume", "SLICE... OUT", "Builds a volume of equal images", 2, s_any, "s", &BuildVolume},
    {"slice", "IN LAYER OUT", "Saves a layer of a volume, counted from 0, as an image", 3, 3, "s", &Slice},
    {"verify", "FILE...", "Reads whole files, and reports their faults", 1, s_any, "", &Verify},
};

/// Runs work on a file. Puts the file's name before the messages of failures that it throws.
template<typename Work>
decltype(auto) NameFile(string const &fileName, Work const &work)
{
    try
    {
        return work();
    }
    catch (DataException const &thrown)
    {
        throw DataException(fileName + ": " + thrown.GetMessage());
    }
    catch (NoMemoryException const &thrown)
    {
        throw DataException(fileName + ": " + thrown.GetMessage());
    }
}

void CheckFits(Arguments const &arguments, string const &fileName, SampledData const &data)
{
    std::size_t const numDimensions = data.GetDimensions().size();
    string const holds = "'" + fileName + "' holds " + GetKindPhrase(numDimensions);
    if (arguments.size && arguments.size->size() != numDimensions)
        throw WrongArgumentException(holds + ", but --size is for " + GetKindPhrase(arguments.size->size()));
    for (eSampleAxis const axis : arguments.flips)
    {
        if (!HasAxis(numDimensions, axis))
            throw WrongArgumentException(holds + ", so --flip-" + GetAxisName(axis) + " does not apply");
    }
}

void Work(Arguments const &arguments, SampledData &data, Progress &progress)
{
    if (arguments.size)
    {
        progress.Begin("Resampling");
        data = Resample(data, *arguments.size, arguments.filter);
    }
    for (eSampleAxis const axis : {eSampleAxis::e_rows, eSampleAxis::e_columns, eSampleAxis::e_layers})
    {
        if (std::count(arguments.flips.begin(), arguments.flips.end(), axis) > 0)
            Flip(data, axis);
    }
    if (arguments.format)
    {
        progress.Begin("Changing the format");
        ChangeFormat(data, *arguments.format);
    }
}

/// Creates a volume with layers of the size and format of a slice.
SampledData MakeVolumeFor(SampledData const &slice, std::size_t numLayers)
{
    Dimensions dimensions = slice.GetDimensions();
    dimensions.insert(dimensions.begin(), static_cast<unsigned int>(numLayers));
    return SampledData(slice.GetFormat(), dimensions);
}

void CheckSlice(SampledData const &volume, SampledData const &slice, string const &fileName)
{
    Dimensions const dimensions = slice.GetDimensions();
    Dimensions const layers = volume.GetDimensions();
    Dimensions const equal(layers.begin() + 1, layers.end());
    if (dimensions != equal || slice.GetFormat() != volume.GetFormat())
        throw DataException(fileName + ": " + Describe(dimensions) + " of " + GetFormatName(slice.GetFormat()) +
                            ", but the first slice has " + Describe(equal) + " of " +
                            GetFormatName(volume.GetFormat()));
}

SampledData LoadSlice(string const &fileName, FileType const &type)
{
    SampledData slice = LoadFile(fileName, type);
    std::size_t const numDimensions = slice.GetDimensions().size();
    if (numDimensions != 2)
        throw DataException(fileName + ": holds " + GetKindPhrase(numDimensions) + ", but a slice must be an image");
    return slice;
}

} // namespace

bool Convert(Arguments const &arguments)
{
    string const &in = arguments.operands[0];
    string const &out = arguments.operands[1];
    FileType const inType = RequireFileType(in);
    FileType const outType = RequireFileType(out);
    Progress progress;
    progress.Begin("Loading");
    SampledData data = LoadFile(in, inType);
    CheckFits(arguments, in, data);
    NameFile(in, [&] { Work(arguments, data, progress); });
    progress.Begin("Saving");
    SaveFile(data, out, outType, arguments.save);
    return true;
}

bool Mipmaps(Arguments const &arguments)
{
    string const &in = arguments.operands[0];
    FileType const inType = RequireFileType(in);
    Progress progress;
    progress.Begin("Loading");
    SampledData const data = LoadFile(in, inType);
    progress.Begin("Building the levels");
    std::vector<SampledData> const levels =
        NameFile(in, [&] { return BuildMipmaps(data, arguments.format.value_or(data.GetFormat())); });
    progress.Begin("Saving");
    SaveLevels(levels, arguments.operands[1], arguments.save);
    return true;
}

bool BuildVolume(Arguments const &arguments)
{
    std::vector<string> const slices(arguments.operands.begin(), arguments.operands.end() - 1);
    string const &out = arguments.operands.back();
    FileType const outType = RequireFileType(out);
    std::vector<FileType> types;
    types.reserve(slices.size());
    for (string const &slice : slices)
        types.push_back(RequireFileType(slice));
    Progress progress;
    progress.Begin("Loading");
    std::optional<SampledData> volume;
    for (std::size_t i = 0; i < slices.size(); ++i)
    {
        SampledData const slice = LoadSlice(slices[i], types[i]);
        if (!volume)
            volume = NameFile(out, [&] { return MakeVolumeFor(slice, slices.size()); });
        CheckSlice(*volume, slice, slices[i]);
        CopyToLayer(*volume->Get<VolumeBase>(), static_cast<unsigned int>(i), slice.GetSamples());
        progress.Update(i + 1, slices.size());
    }
    progress.Begin("Saving");
    SaveFile(*volume, out, outType, arguments.save);
    return true;
}

bool Slice(Arguments const &arguments)
{
    string const &in = arguments.operands[0];
    string const &number = arguments.operands[1];
    string const &out = arguments.operands[2];
    FileType const inType = RequireFileType(in);
    FileType const outType = RequireFileType(out);
    unsigned int layer = 0;
    auto const [end, error] = std::from_chars(number.data(), number.data() + number.size(), layer);
    if (error != std::errc() || end != number.data() + number.size())
        throw WrongArgumentException("slice needs the number of a layer, not '" + number + "'");
    Progress progress;
    progress.Begin("Loading");
    SampledData const data = LoadFile(in, inType);
    VolumeBase const *const volume = data.Get<VolumeBase>();
    if (!volume)
        throw DataException(in + ": holds " + GetKindPhrase(data.GetDimensions().size()) +
                            ", but only volumes have layers");
    if (layer >= volume->GetNumLayers())
        throw WrongArgumentException("slice needs a layer below " + MakeString(volume->GetNumLayers()) + ", not " +
                                     number);
    SampledData const image(data.GetFormat(), {volume->GetNumRows(), volume->GetNumColumns()});
    CopyFromLayer(image.GetSamples(), *volume, layer);
    progress.Begin("Saving");
    SaveFile(image, out, outType, arguments.save);
    return true;
}

std::span<Command const> GetCommands()
{
    return s_commands;
}

string DescribeFailure(Exception const &thrown)
{
    auto const *const failed = dynamic_cast<DataException const *>(&thrown);
    switch (failed ? failed->GetFailure().kind : eCodecFailure::e_none)
    {
    case eCodecFailure::e_exists:
        return thrown.GetMessage() + " with --overwrite";
    case eCodecFailure::e_tooLarge:
        return thrown.GetMessage() + " (see --max-pixels)";
    default:
        return thrown.GetMessage();
    }
}

void PrintLine(string const &message)
{
    std::cerr << MakePrintable(message) + '\n' << std::flush;
}

void PrintError(string const &message)
{
    PrintLine("qmdp: " + message);
}

} // namespace quillmarsh::tools
