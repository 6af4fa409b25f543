#include <quillmarsh/dataobjects/sampleddataoperations.h>

#include <quillmarsh/dataobjects/mipmapchains.h>
#include <quillmarsh/mathtools/powersof2.h>

#include <algorithm>
#include <optional>

namespace quillmarsh::sampled_data
{
namespace
{

SignalMipmapChain ChainFor(SignalBase const &signal)
{
    return SignalMipmapChain(signal.GetSampleFormat());
}

ImageMipmapChain ChainFor(ImageBase const &image)
{
    return ImageMipmapChain(image.GetSampleFormat());
}

VolumeMipmapChain ChainFor(VolumeBase const &volume)
{
    return VolumeMipmapChain(volume.GetSampleFormat());
}

/// Copies a level in the same or another format. Bytes that the filter does not write become opaque.
SampledData CopyLevel(SignalBase const &level, unsigned int index, Dimensions dimensions, eSampleFormat format)
{
    for (unsigned int &dimension : dimensions)
        dimension = MipmapChain::ComputeDimensionAtLevel(index, dimension);
    SampledData copy(level.GetSampleFormat(), dimensions);
    CopySamples(copy.GetSamples(), level);
    if (index > 0 && level.GetSampleFormat() == e_format_X8R8G8B8)
        ProcessSamples_Fill1Byte(copy.GetSamples(), 3, 255);
    ChangeFormat(copy, format);
    return copy;
}

/// Appends the levels of a mipmap chain.
void BuildChain(SampledData const &data, eSampleFormat format, std::vector<SampledData> &levels)
{
    data.Visit(
        [&](auto &source)
        {
            // Built in the format of the source, because the chain would not make unwritten bytes opaque.
            auto chain = ChainFor(source);
            if (!chain.Build(source, false))
                throw DataException("no filter supports the sample format " + GetFormatName(data.GetFormat()));
            for (unsigned int i = 0; i < chain.GetNumLevels(); ++i)
                levels.push_back(CopyLevel(chain.GetLevel(i), i, data.GetDimensions(), format));
        });
}

/// Appends levels of half the size of the one before, which must be in the format of the source.
void Halve(SampledData const &data, eSampleFormat format, eSizeFilter filter, std::vector<SampledData> &levels)
{
    levels.push_back(CopyLevel(data.GetSamples(), 0, data.GetDimensions(), format));
    std::optional<SampledData> previous;
    unsigned int level = 0;
    for (Dimensions dimensions = data.GetDimensions(); *std::max_element(dimensions.begin(), dimensions.end()) > 1;)
    {
        for (unsigned int &dimension : dimensions)
            dimension = std::max(dimension / 2, 1u);
        previous = Resample(previous ? *previous : data, dimensions, filter);
        levels.push_back(CopyLevel(previous->GetSamples(), ++level, data.GetDimensions(), format));
    }
}

} // namespace

std::vector<SampledData> BuildMipmaps(SampledData const &data, eSampleFormat format, eSizeFilter filter)
{
    for (unsigned int const dimension : data.GetDimensions())
    {
        if (!IsPowerOf2(dimension))
            throw DataException("mipmaps need dimensions that are powers of two, but there are " +
                                Describe(data.GetDimensions()));
    }
    RequireTransfer(format, data.GetFormat());
    std::vector<SampledData> levels;
    if (filter == eSizeFilter::e_linear)
        BuildChain(data, format, levels);
    else
        Halve(data, format, filter, levels);
    return levels;
}

} // namespace quillmarsh::sampled_data
