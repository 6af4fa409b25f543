#include <quillmarsh/dataobjects/sampleddataoperations.h>

#include <quillmarsh/dataobjects/scaling.h>
#include <quillmarsh/dataobjects/volumeoperations.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <type_traits>

namespace quillmarsh::sampled_data
{
namespace
{

// One name for functions whose names in the library contain the number of dimensions.

bool ResampleWalking(SignalBase &dst, SignalBase const &src, eResampleFilter filter)
{
    return Resample1D(dst, src, filter);
}

bool ResampleWalking(ImageBase &dst, ImageBase const &src, eResampleFilter filter)
{
    return Resample2D(dst, src, filter);
}

bool ResampleWalking(VolumeBase &dst, VolumeBase const &src, eResampleFilter filter)
{
    return Resample3D(dst, src, filter);
}

template<typename Container>
bool ResampleInto(Container &dst, Container const &src, eSizeFilter filter)
{
    switch (filter)
    {
    case eSizeFilter::e_nearest:
        return ResampleWalking(dst, src, e_resample_nearest);
    case eSizeFilter::e_area:
        return ScaleSamples(dst, src, e_scale_area);
    case eSizeFilter::e_lanczos:
        return ScaleSamples(dst, src, e_scale_lanczos);
    default:
        return ResampleWalking(dst, src, e_resample_linear);
    }
}

/// The names of the filters, in the order of eSizeFilter.
constexpr char const *s_filterNames[] = {"nearest", "linear", "area", "lanczos"};

void FlipAxis(SignalBase &signal, eSampleAxis)
{
    FlipSamples(signal);
}

void FlipAxis(ImageBase &image, eSampleAxis axis)
{
    axis == eSampleAxis::e_rows ? FlipRows(image) : FlipColumns(image);
}

void FlipAxis(VolumeBase &volume, eSampleAxis axis)
{
    if (axis == eSampleAxis::e_layers)
        FlipLayers(volume);
    else
        axis == eSampleAxis::e_rows ? FlipRows(volume) : FlipColumns(volume);
}

} // namespace

std::vector<string> GetFilterNames()
{
    return {std::begin(s_filterNames), std::end(s_filterNames)};
}

std::optional<eSizeFilter> FindFilter(string const &name)
{
    auto const found = std::find(std::begin(s_filterNames), std::end(s_filterNames), name);
    if (found == std::end(s_filterNames))
        return std::nullopt;
    return static_cast<eSizeFilter>(found - std::begin(s_filterNames));
}

std::optional<Dimensions> ParseSize(string const &text)
{
    constexpr std::size_t mostDimensions = 3;
    // Columns come first in the text, and last in the library.
    Dimensions size;
    for (char const *at = text.data(), *const end = at + text.size();; ++at)
    {
        unsigned int &dimension = *size.insert(size.begin(), 0);
        auto const [behind, error] = std::from_chars(at, end, dimension);
        if (error != std::errc() || dimension == 0 || size.size() > mostDimensions)
            return std::nullopt;
        if (behind == end)
            return size;
        if (*behind != 'x' && *behind != 'X')
            return std::nullopt;
        at = behind;
    }
}

SampledData Resample(SampledData const &data, Dimensions const &dimensions, eSizeFilter filter)
{
    SampledData result(data.GetFormat(), dimensions);
    bool const resampled = result.Visit(
        [&](auto &dst)
        {
            using Container = std::decay_t<decltype(dst)>;
            return ResampleInto(dst, *data.Get<Container>(), filter);
        });
    if (!resampled)
        throw DataException("no filter supports the sample format " + GetFormatName(data.GetFormat()));
    return result;
}

void RequireTransfer(eSampleFormat target, eSampleFormat source)
{
    if (target == source || SignalOperationsManager::Instance().IsTransferSupported(target, source))
        return;
    throw DataException("no transfer leads from the sample format " + GetFormatName(source) + " to " +
                        GetFormatName(target));
}

void ChangeFormat(SampledData &data, eSampleFormat format)
{
    if (format == data.GetFormat())
        return;
    RequireTransfer(format, data.GetFormat());
    SampledData result(format, data.GetDimensions());
    TransferSamples1D(result.GetSamples(), data.GetSamples(), false);
    data = std::move(result);
}

void Flip(SampledData &data, eSampleAxis axis)
{
    data.Visit([&](auto &container) { FlipAxis(container, axis); });
}

bool HasAxis(std::size_t numDimensions, eSampleAxis axis)
{
    std::size_t const needed = axis == eSampleAxis::e_columns ? 1 : axis == eSampleAxis::e_rows ? 2 : 3;
    return numDimensions >= needed;
}

char const *GetAxisName(eSampleAxis axis)
{
    return axis == eSampleAxis::e_columns ? "columns" : axis == eSampleAxis::e_rows ? "rows" : "layers";
}

} // namespace quillmarsh::sampled_data
