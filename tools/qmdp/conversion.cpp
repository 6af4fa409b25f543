// Commands that make new files: convert, mipmaps, volume and slice.
#include "commands.h"
#include "dataplaces.h"
#include "progress.h"

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/paralleljobs.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/volumeoperations.h>

#include <algorithm>
#include <charconv>
#include <functional>
#include <mutex>

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

using OnStep = std::function<void(string const &step)>;

void Work(Arguments const &arguments, SampledData &data, OnStep const &onStep)
{
    if (arguments.size)
    {
        onStep("Resampling");
        data = Resample(data, *arguments.size, arguments.filter);
    }
    for (eSampleAxis const axis : {eSampleAxis::e_rows, eSampleAxis::e_columns, eSampleAxis::e_layers})
    {
        if (std::count(arguments.flips.begin(), arguments.flips.end(), axis) > 0)
            Flip(data, axis);
    }
    if (arguments.format)
    {
        onStep("Changing the format");
        ChangeFormat(data, *arguments.format);
    }
}

void ConvertFile(Arguments const &arguments, DataPlace const &in, DataPlace const &out, OnStep const &onStep)
{
    onStep("Loading");
    AutoPtr<DataFile> const file = OpenData(arguments, in);
    SampledData data = file->Load();
    CheckFits(arguments, in.GetInputName(), data);
    NameFile(in.GetInputName(), [&] { Work(arguments, data, onStep); });
    if (!arguments.format)
        KeepGrey(data, file->GetDesc(), out);
    onStep("Saving");
    SaveData(arguments, data, out);
}

/// Converts files at the same time, and reports their failures in their order as far as that is known.
class FolderConversion : NoCopy
{
public:
    FolderConversion(Arguments const &arguments, std::vector<DataPlace> const &inputs,
                     std::vector<DataPlace> const &outputs)
        : arguments_(arguments),
          inputs_(inputs),
          outputs_(outputs),
          failures_(inputs.size())
    {
    }

    /// False when some file failed.
    bool Run()
    {
        progress_.Begin("Converting");
        RunInParallel(arguments_.jobs != 0 ? arguments_.jobs : GetNumParallelThreads(), inputs_.size(),
                      [this](std::size_t i) { Finish(i, Convert(i)); });
        return succeeded_;
    }

private:
    /// Converts a file, and returns the text of the failure.
    string Convert(std::size_t i) const
    {
        try
        {
            ConvertFile(arguments_, inputs_[i], outputs_[i], [](string const &) {});
            return "";
        }
        catch (Exception const &thrown)
        {
            return DescribeFailure(thrown);
        }
        catch (std::exception const &thrown)
        {
            return inputs_[i].name + ": " + thrown.what();
        }
    }

    void Finish(std::size_t i, string const &failure)
    {
        std::lock_guard const lock(mutex_);
        failures_[i] = failure;
        succeeded_ = succeeded_ && failure.empty();
        ++numDone_;
        for (; numReported_ < failures_.size() && failures_[numReported_]; ++numReported_)
        {
            if (!failures_[numReported_]->empty())
                PrintError(*failures_[numReported_]);
        }
        progress_.Update(numDone_, inputs_.size(), "files");
    }

    Arguments const &arguments_;
    std::vector<DataPlace> const &inputs_, &outputs_;
    Progress progress_;
    std::mutex mutex_;
    /// The failure of each file, empty for none; nothing for a file that is not finished.
    std::vector<std::optional<string>> failures_;
    std::size_t numDone_ = 0, numReported_ = 0;
    bool succeeded_ = true;
};

bool ConvertIntoFolder(Arguments const &arguments)
{
    std::vector<DataPlace> inputs;
    for (std::size_t i = 0; i + 1 < arguments.operands.size(); ++i)
        inputs.push_back(FindInput(arguments, arguments.operands[i]));
    std::vector<DataPlace> const outputs = FindOutputsInFolder(arguments, inputs, arguments.operands.back());
    return FolderConversion(arguments, inputs, outputs).Run();
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

SampledData LoadSlice(Arguments const &arguments, DataPlace const &place)
{
    SampledData slice = LoadData(arguments, place);
    std::size_t const numDimensions = slice.GetDimensions().size();
    if (numDimensions != 2)
        throw DataException(place.GetInputName() + ": holds " + GetKindPhrase(numDimensions) +
                            ", but a slice must be an image");
    return slice;
}

} // namespace

bool Convert(Arguments const &arguments)
{
    std::vector<string> const &operands = arguments.operands;
    if (file_system::GetFileType(operands.back(), true) == std::filesystem::file_type::directory)
        return ConvertIntoFolder(arguments);
    if (operands.size() > 2)
        throw WrongArgumentException("convert needs a folder for several files, and '" + operands.back() + "' is none");
    DataPlace const in = FindInput(arguments, operands[0]);
    DataPlace const out = FindOutput(arguments, operands[1]);
    Progress progress;
    ConvertFile(arguments, in, out, [&](string const &step) { progress.Begin(step); });
    return true;
}

bool Mipmaps(Arguments const &arguments)
{
    DataPlace const in = FindInput(arguments, arguments.operands[0]);
    Progress progress;
    progress.Begin("Loading");
    SampledData const data = LoadData(arguments, in);
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
        SampledData const slice = LoadSlice(arguments, slices[i]);
        if (!volume)
            volume = NameFile(out.name, [&] { return MakeVolumeFor(slice, slices.size()); });
        CheckSlice(*volume, slice, slices[i].GetInputName());
        CopyToLayer(*volume->Get<VolumeBase>(), static_cast<unsigned int>(i), slice.GetSamples());
        progress.Update(i + 1, slices.size(), "slices");
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
    SampledData const data = LoadData(arguments, in);
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
