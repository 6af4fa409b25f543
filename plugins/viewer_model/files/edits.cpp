#include "edits.h"

#include "loading.h"

#include <quillmarsh/basetools/texttools.h>

#include <algorithm>
#include <cstring>
#include <optional>

namespace viewer
{

using namespace quillmarsh;
using namespace quillmarsh::sampled_data;

namespace
{

using Progress = std::function<bool(double)>;

/// Part of the work that the samples take; the rest is for the levels.
constexpr double s_samplesPart = 0.6;
/// Bytes between two reports of progress.
constexpr std::size_t s_blockByteSize = std::size_t(1) << 22;

bool Report(Progress const &progress, double part)
{
    return !progress || progress(part);
}

constexpr char const *s_dimensionNames[] = {"layers", "rows", "columns"};

/// Samples in order, as layers of rows of columns.
struct Shape
{
    explicit Shape(Dimensions const &dimensions)
    {
        std::size_t const first = 3 - dimensions.size();
        for (std::size_t i = 0; i < dimensions.size(); ++i)
            size[first + i] = dimensions[i];
    }

    std::size_t size[3] = {1, 1, 1};
};

/// Copies samples block by block; false if it was stopped.
bool Copy(SignalBase &dst, SignalBase const &src, Progress const &progress)
{
    std::size_t const byteSize = src.GetTotalByteSize();
    for (std::size_t at = 0; at < byteSize; at += s_blockByteSize)
    {
        if (!Report(progress, static_cast<double>(at) / static_cast<double>(byteSize) * s_samplesPart))
            return false;
        std::memcpy(dst.GetSamplesB() + at, src.GetSamplesB() + at, std::min(s_blockByteSize, byteSize - at));
    }
    return true;
}

/// Changes the format block by block, so that it can be stopped and takes no third copy of all samples.
std::optional<SampledData> Convert(SampledData const &data, eSampleFormat format, Progress const &progress)
{
    SignalBase &src = data.GetSamples();
    SampledData result(format, data.GetDimensions());
    SignalBase &dst = result.GetSamples();
    auto const blockSize = static_cast<unsigned int>(s_blockByteSize / src.GetSampleByteSize());
    for (unsigned int begin = 0; begin < src.GetNumSamples();)
    {
        if (!Report(progress, double(begin) / src.GetNumSamples() * s_samplesPart))
            return std::nullopt;
        unsigned int const count = std::min(blockSize, src.GetNumSamples() - begin);
        auto block = std::make_unique<SignalBaseFromExternalStorageAdapter>(src.GetSampleFormat());
        block->SetExternalStorage(src.SampleB(begin), count);
        SampledData part(AutoPtr<SignalBase>(std::move(block)));
        ChangeFormat(part, format);
        std::memcpy(dst.SampleB(begin), part.GetSamples().GetSamplesB(), part.GetSamples().GetTotalByteSize());
        begin += count;
    }
    return result;
}

void RequireDimensions(Dimensions const &size, SampledData const &data)
{
    Dimensions const present = data.GetDimensions();
    if (size.size() != present.size())
        throw DataException("a size of " + MakeString(size.size()) + " numbers does not fit " +
                            GetKindPhrase(present.size()));
}

/// Throws for a block that does not lie in the data.
void RequireBlock(Edit const &edit, SampledData const &data)
{
    RequireDimensions(edit.size, data);
    RequireDimensions(edit.origin, data);
    Shape const whole(data.GetDimensions());
    Shape const size(edit.size);
    Shape origin(edit.origin);
    for (std::size_t i = 3 - edit.origin.size(); i < 3; ++i)
    {
        if (size.size[i] == 0 || origin.size[i] + size.size[i] > whole.size[i])
            throw DataException(MakeString(size.size[i]) + " " + s_dimensionNames[i] + " from " +
                                MakeString(origin.size[i]) + " on do not lie in " + MakeString(whole.size[i]) + " " +
                                s_dimensionNames[i]);
    }
}

std::optional<SampledData> Crop(SampledData const &data, Edit const &edit, Progress const &progress)
{
    Shape const size(edit.size);
    Shape const whole(data.GetDimensions());
    std::size_t origin[3] = {};
    std::copy(edit.origin.begin(), edit.origin.end(), origin + 3 - edit.origin.size());
    SampledData result(data.GetFormat(), edit.size);
    std::size_t const sampleByteSize = data.GetSamples().GetSampleByteSize();
    unsigned char const *const src = data.GetSamples().GetSamplesB();
    unsigned char *dst = result.GetSamples().GetSamplesB();
    std::size_t const rowByteSize = size.size[2] * sampleByteSize;
    std::size_t const numRows = size.size[0] * size.size[1];
    std::size_t const rowsPerReport = std::max<std::size_t>(1, s_blockByteSize / rowByteSize);
    for (std::size_t i = 0; i < numRows; ++i, dst += rowByteSize)
    {
        if (i % rowsPerReport == 0 &&
            !Report(progress, static_cast<double>(i) / static_cast<double>(numRows) * s_samplesPart))
            return std::nullopt;
        std::size_t const row = (origin[0] + i / size.size[1]) * whole.size[1] + origin[1] + i % size.size[1];
        std::memcpy(dst, src + (row * whole.size[2] + origin[2]) * sampleByteSize, rowByteSize);
    }
    return result;
}

std::optional<SampledData> FlipCopy(SampledData const &data, eSampleAxis axis, Progress const &progress)
{
    SampledData result(data.GetFormat(), data.GetDimensions());
    if (!Copy(result.GetSamples(), data.GetSamples(), progress))
        return std::nullopt;
    Flip(result, axis);
    return result;
}

std::optional<SampledData> Resize(SampledData const &data, Edit const &edit, Progress const &progress)
{
    if (!Report(progress, -1))
        return std::nullopt;
    return Resample(data, edit.size, edit.filter);
}

std::optional<SampledData> Make(SampledData const &data, Edit const &edit, Progress const &progress)
{
    switch (edit.kind)
    {
    case Edit::eKind::e_convert:
        return Convert(data, edit.format, progress);
    case Edit::eKind::e_resize:
        return Resize(data, edit, progress);
    case Edit::eKind::e_flip:
        return FlipCopy(data, edit.axis, progress);
    default:
        return Crop(data, edit, progress);
    }
}

} // namespace

void RequirePossible(Content const &content, Edit const &edit)
{
    SampledData const &data = content.GetData();
    std::size_t const numDimensions = content.GetNumDimensions();
    if (edit.kind == Edit::eKind::e_convert)
        RequireTransfer(edit.format, data.GetFormat());
    else if (edit.kind == Edit::eKind::e_resize)
        RequireDimensions(edit.size, data);
    else if (edit.kind == Edit::eKind::e_crop)
        RequireBlock(edit, data);
    else if (!HasAxis(numDimensions, edit.axis))
        throw DataException(GetKindPhrase(numDimensions) + " has no " + GetAxisName(edit.axis));
}

LoadedPtr Apply(Content const &content, Edit const &edit, Progress const &progress)
{
    RequirePossible(content, edit);
    std::optional<SampledData> result = Make(content.GetData(), edit, progress);
    if (!result)
        return nullptr;
    return Prepare(std::make_shared<Content const>(std::move(*result)),
                   [&](double part) { return Report(progress, s_samplesPart + part * (1 - s_samplesPart)); });
}

LoadedPtr Prepare(ContentPtr content, Progress const &progress)
{
    return Complete(*MakeLoaded(std::move(content)), progress);
}

} // namespace viewer
