#include "loading.h"
#include <viewer_model/samples/display.h>

#include <quillmarsh/dataobjects/scaling.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace viewer
{

using namespace quillmarsh;

namespace
{

/// Colours of the channels of a plot, in the order of GetChannels().
constexpr Pixel s_plotColours[] = {0xFFE06C60, 0xFF6CC070, 0xFF6C9CE8, 0xFFD0D0D0};
constexpr Pixel s_plotBackground = 0xFF202428;
constexpr unsigned int s_plotHeight = 40;
/// Samples that the plot looks at for each column, so that long signals take no longer.
constexpr unsigned int s_plotSamplesPerColumn = 512;
/// A picture is first thinned out to this many samples in each direction, so that large ones take no longer.
constexpr unsigned int s_thinnedSize = 8 * Preview::s_size;

Pixel *GetPixels(ImageBase &picture, unsigned int row)
{
    return reinterpret_cast<Pixel *>(picture.SampleB(row, 0));
}

/// Returns every n-th sample of a block of rows.
AutoPtr<ImageBase> Thin(unsigned char const *samples, unsigned int numRows, unsigned int numColumns,
                        eSampleFormat format)
{
    unsigned int const step = std::max(1u, std::max(numRows, numColumns) / s_thinnedSize);
    unsigned int const byteSize = sample_formats::ExtractByteSize(format);
    AutoPtr<ImageBase> thin(ManufactureImage(format, (numRows + step - 1) / step, (numColumns + step - 1) / step));
    for (unsigned int row = 0; row < thin->GetNumRows(); ++row)
    {
        for (unsigned int column = 0; column < thin->GetNumColumns(); ++column)
        {
            std::size_t const index = std::size_t(row) * step * numColumns + std::size_t(column) * step;
            std::memcpy(thin->SampleB(row, column), samples + index * byteSize, byteSize);
        }
    }
    return thin;
}

/// Returns an image at the size of a preview; small images keep theirs.
AutoPtr<ImageBase> Shrink(AutoPtr<ImageBase> image)
{
    unsigned int const longest = std::max(image->GetNumRows(), image->GetNumColumns());
    if (longest <= Preview::s_size)
        return image;
    auto const scale = [&](unsigned int size)
    { return std::max(1u, static_cast<unsigned int>(std::uint64_t(size) * Preview::s_size / longest)); };
    AutoPtr<ImageBase> small(
        ManufactureImage(image->GetSampleFormat(), scale(image->GetNumRows()), scale(image->GetNumColumns())));
    ScaleSamples(*small, *image, e_scale_area);
    return small;
}

/// Floats outside of their nominal range are shown from the smallest to the greatest.
DisplaySettings ChooseSettings(ImageBase const &image)
{
    DisplaySettings settings;
    Channel const &channel = GetChannels(image.GetSampleFormat())[0];
    if (!channel.isFloat)
        return settings;
    double low = std::numeric_limits<double>::infinity();
    double high = -low;
    for (unsigned int i = 0; i < image.GetNumSamples(); ++i)
    {
        double const value = channel.read(image.SampleB(i));
        if (std::isfinite(value))
        {
            low = std::min(low, value);
            high = std::max(high, value);
        }
    }
    if (low < high && (low < 0 || high > 1))
    {
        settings.low = low;
        settings.high = high;
    }
    return settings;
}

AutoPtr<ImageBase> PreviewRows(unsigned char const *samples, unsigned int numRows, unsigned int numColumns,
                               eSampleFormat format)
{
    AutoPtr<ImageBase> thin = Thin(samples, numRows, numColumns, format);
    ToneMap const tones(format, ChooseSettings(*thin));
    // Floats are mapped first, because the filter would cut them to 0..1.
    AutoPtr<ImageBase> picture(ManufactureImage(e_format_A8R8G8B8, thin->GetNumRows(), thin->GetNumColumns()));
    for (unsigned int row = 0; row < thin->GetNumRows(); ++row)
        tones.Map(thin->SampleB(row, 0), thin->GetNumColumns(), GetPixels(*picture, row), 0, static_cast<int>(row));
    return Shrink(std::move(picture));
}

struct Range
{
    double low = std::numeric_limits<double>::infinity();
    double high = -low;

    void Add(double value)
    {
        if (std::isfinite(value))
        {
            low = std::min(low, value);
            high = std::max(high, value);
        }
    }
    void Add(Range const &other)
    {
        low = std::min(low, other.low);
        high = std::max(high, other.high);
    }
};

/// Returns the extremes of a channel for each column of a plot.
std::vector<Range> FindRanges(SignalBase const &signal, Channel const &channel)
{
    std::uint64_t const numSamples = signal.GetNumSamples();
    std::vector<Range> ranges(Preview::s_size);
    for (std::size_t column = 0; column < ranges.size(); ++column)
    {
        std::uint64_t const begin = std::min(numSamples - 1, numSamples * column / ranges.size());
        std::uint64_t const end = std::max(begin + 1, numSamples * (column + 1) / ranges.size());
        std::uint64_t const step = std::max<std::uint64_t>(1, (end - begin) / s_plotSamplesPerColumn);
        for (std::uint64_t i = begin; i < end; i += step)
            ranges[column].Add(channel.read(signal.SampleB(static_cast<unsigned int>(i))));
    }
    return ranges;
}

AutoPtr<ImageBase> PreviewSignal(SignalBase const &signal)
{
    AutoPtr<ImageBase> picture(ManufactureImage(e_format_A8R8G8B8, s_plotHeight, Preview::s_size));
    std::fill_n(GetPixels(*picture, 0), picture->GetNumSamples(), s_plotBackground);
    std::span<Channel const> const channels = GetChannels(signal.GetSampleFormat());
    for (std::size_t i = 0; i < channels.size(); ++i)
    {
        std::vector<Range> const ranges = FindRanges(signal, channels[i]);
        Range whole;
        for (Range const &range : ranges)
            whole.Add(range);
        double const span = std::max(whole.high - whole.low, std::numeric_limits<double>::min());
        auto const toRow = [&](double value)
        { return static_cast<unsigned int>(std::lround((whole.high - value) / span * (s_plotHeight - 1))); };
        for (unsigned int column = 0; column < ranges.size(); ++column)
        {
            if (!(ranges[column].low <= ranges[column].high))
                continue;
            for (unsigned int row = toRow(ranges[column].high); row <= toRow(ranges[column].low); ++row)
                GetPixels(*picture, row)[column] = s_plotColours[i % std::size(s_plotColours)];
        }
    }
    return picture;
}

} // namespace

AutoPtr<ImageBase> MakePreviewPicture(Content const &content)
{
    eSampleFormat const format = content.GetData().GetFormat();
    if (GetChannels(format).empty())
        return nullptr;
    if (auto const *const image = content.Get<ImageBase>())
        return PreviewRows(image->GetSamplesB(), image->GetNumRows(), image->GetNumColumns(), format);
    if (auto const *const volume = content.Get<VolumeBase>())
        return PreviewRows(volume->SampleB(volume->GetNumLayers() / 2, 0, 0), volume->GetNumRows(),
                           volume->GetNumColumns(), format);
    return PreviewSignal(content.GetData().GetSamples());
}

} // namespace viewer
