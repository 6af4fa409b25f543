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

/// Formats that samples can be transferred into on their way to another one. The first that fits is taken, so those
/// that keep more come first.
constexpr eSampleFormat s_stations[] = {e_format_A8R8G8B8, e_format_X8R8G8B8, e_format_A8L8, e_format_L8, e_format_A8};

bool HasAlpha(eSampleFormat format)
{
    return format == e_format_A8L8 || format == e_format_A8R8G8B8 || format == e_format_A4R4G4B4 ||
           format == e_format_A1R5G5B5;
}

/// Returns the formats that samples get one after the other, the target last; none if they have it already. Throws a
/// DataException when there is no way.
std::vector<eSampleFormat> FindRoute(eSampleFormat target, eSampleFormat source)
{
    SignalOperationsManager const &manager = SignalOperationsManager::Instance();
    if (target == source)
        return {};
    if (manager.IsTransferSupported(target, source))
        return {target};
    // Alpha as floats comes from alpha, by way of the bytes that floats are made of.
    if (target == e_format_FP32NormA && HasAlpha(source))
    {
        std::vector<eSampleFormat> route = FindRoute(e_format_A8, source);
        route.insert(route.end(), {e_format_L8, target});
        return route;
    }
    for (eSampleFormat const station : s_stations)
    {
        if (manager.IsTransferSupported(station, source) && manager.IsTransferSupported(target, station))
            return {station, target};
    }
    throw DataException("no transfer leads from the sample format " + GetFormatName(source) + " to " +
                        GetFormatName(target));
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
    static_cast<void>(FindRoute(target, source));
}

void ChangeFormat(SampledData &data, eSampleFormat format)
{
    std::vector<eSampleFormat> const route = FindRoute(format, data.GetFormat());
    std::optional<SampledData> result;
    for (eSampleFormat const next : route)
    {
        SampledData transferred(next, data.GetDimensions());
        TransferSamples1D(transferred.GetSamples(), (result ? *result : data).GetSamples(), false);
        result = std::move(transferred);
    }
    if (result)
        data = std::move(*result);
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
