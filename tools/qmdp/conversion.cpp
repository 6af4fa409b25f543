// Commands that make new files: convert, mipmaps, volume and slice.
#include "commands.h"
#include "dataplaces.h"
#include "progress.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/volumeoperations.h>

#include <algorithm>
#include <charconv>

namespace quillmarsh::tools
{
namespace
{

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

SampledData LoadSlice(DataPlace const &place)
{
    SampledData slice = LoadData(place);
    std::size_t const numDimensions = slice.GetDimensions().size();
    if (numDimensions != 2)
        throw DataException(place.GetInputName() + ": holds " + GetKindPhrase(numDimensions) +
                            ", but a slice must be an image");
    return slice;
}

} // namespace

bool Convert(Arguments const &arguments)
{
    DataPlace const in = FindInput(arguments, arguments.operands[0]);
    DataPlace const out = FindOutput(arguments, arguments.operands[1]);
    Progress progress;
    progress.Begin("Loading");
    SampledData data = LoadData(in);
    CheckFits(arguments, in.GetInputName(), data);
    NameFile(in.GetInputName(), [&] { Work(arguments, data, progress); });
    progress.Begin("Saving");
    SaveData(arguments, data, out);
    return true;
}

bool Mipmaps(Arguments const &arguments)
{
    DataPlace const in = FindInput(arguments, arguments.operands[0]);
    Progress progress;
    progress.Begin("Loading");
    SampledData const data = LoadData(in);
    progress.Begin("Building the levels");
    std::vector<SampledData> const levels =
        NameFile(in.GetInputName(),
                 [&] { return BuildMipmaps(data, arguments.format.value_or(data.GetFormat()), arguments.filter); });
    progress.Begin("Saving");
    SaveLevels(levels, arguments.operands[1], arguments.save);
    return true;
}

bool BuildVolume(Arguments const &arguments)
{
    DataPlace const out = FindOutput(arguments, arguments.operands.back());
    std::vector<DataPlace> slices;
    for (std::size_t i = 0; i + 1 < arguments.operands.size(); ++i)
        slices.push_back(FindInput(arguments, arguments.operands[i]));
    Progress progress;
    progress.Begin("Loading");
    std::optional<SampledData> volume;
    for (std::size_t i = 0; i < slices.size(); ++i)
    {
        SampledData const slice = LoadSlice(slices[i]);
        if (!volume)
            volume = NameFile(out.name, [&] { return MakeVolumeFor(slice, slices.size()); });
        CheckSlice(*volume, slice, slices[i].GetInputName());
        CopyToLayer(*volume->Get<VolumeBase>(), static_cast<unsigned int>(i), slice.GetSamples());
        progress.Update(i + 1, slices.size());
    }
    progress.Begin("Saving");
    SaveData(arguments, *volume, out);
    return true;
}

bool Slice(Arguments const &arguments)
{
    string const &number = arguments.operands[1];
    DataPlace const in = FindInput(arguments, arguments.operands[0]);
    DataPlace const out = FindOutput(arguments, arguments.operands[2]);
    unsigned int layer = 0;
    auto const [end, error] = std::from_chars(number.data(), number.data() + number.size(), layer);
    if (error != std::errc() || end != number.data() + number.size())
        throw WrongArgumentException("slice needs the number of a layer, not '" + number + "'");
    Progress progress;
    progress.Begin("Loading");
    SampledData const data = LoadData(in);
    VolumeBase const *const volume = data.Get<VolumeBase>();
    if (!volume)
        throw DataException(in.GetInputName() + ": holds " + GetKindPhrase(data.GetDimensions().size()) +
                            ", but only volumes have layers");
    if (layer >= volume->GetNumLayers())
        throw WrongArgumentException("slice needs a layer below " + MakeString(volume->GetNumLayers()) + ", not " +
                                     number);
    SampledData const image(data.GetFormat(), {volume->GetNumRows(), volume->GetNumColumns()});
    CopyFromLayer(image.GetSamples(), *volume, layer);
    progress.Begin("Saving");
    SaveData(arguments, image, out);
    return true;
}

} // namespace quillmarsh::tools
