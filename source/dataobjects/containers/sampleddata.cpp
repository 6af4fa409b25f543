#include <quillmarsh/dataobjects/sampleddata.h>

#include <quillmarsh/basetools/texttools.h>

#include <cstring>
#include <iterator>

namespace quillmarsh::sampled_data
{
namespace
{

struct NamedFormat
{
    eSampleFormat format;
    char const *name;
};

/// Formats that the library knows without a name.
constexpr NamedFormat s_floatFormats[] = {{e_format_FP32NormL, "FP32NormL"}, {e_format_FP32NormA, "FP32NormA"}};

constexpr eSampleFormat s_formats[] = {e_format_L8,       e_format_A8,        e_format_A8L8,
                                       e_format_A4R4G4B4, e_format_A1R5G5B5,  e_format_X8R8G8B8,
                                       e_format_A8R8G8B8, e_format_FP32NormL, e_format_FP32NormA};

constexpr char const *s_kindNames[] = {"signal", "image", "volume"};
constexpr char const *s_dimensionNames[] = {" layers, ", " rows, ", " columns"};

Dimensions DimensionsOf(SignalBase const &signal)
{
    return {signal.GetNumSamples()};
}

Dimensions DimensionsOf(ImageBase const &image)
{
    return {image.GetNumRows(), image.GetNumColumns()};
}

Dimensions DimensionsOf(VolumeBase const &volume)
{
    return {volume.GetNumLayers(), volume.GetNumRows(), volume.GetNumColumns()};
}

} // namespace

char const *GetKindName(std::size_t numDimensions)
{
    return s_kindNames[numDimensions - 1];
}

string GetKindPhrase(std::size_t numDimensions)
{
    return (numDimensions == 2 ? "an " : "a ") + string(GetKindName(numDimensions));
}

string Describe(Dimensions const &dimensions)
{
    if (dimensions.size() == 1)
        return MakeString(dimensions[0]) + " samples";
    string text;
    char const *const *name = s_dimensionNames + 3 - dimensions.size();
    for (unsigned int const dimension : dimensions)
        text += MakeString(dimension) + *name++;
    return text;
}

string GetFormatName(unsigned int format)
{
    for (NamedFormat const &named : s_floatFormats)
    {
        if (named.format == format)
            return named.name;
    }
    return sample_formats::MapSampleFormatToName(format);
}

std::optional<eSampleFormat> FindFormat(string const &name)
{
    string wanted = name;
    UpperCase(wanted);
    for (eSampleFormat const format : s_formats)
    {
        string known = GetFormatName(format);
        UpperCase(known);
        if (known == wanted)
            return format;
    }
    return std::nullopt;
}

std::vector<eSampleFormat> GetNamedFormats()
{
    return {std::begin(s_formats), std::end(s_formats)};
}

SampledData::SampledData(eSampleFormat format, Dimensions const &dimensions)
{
    switch (dimensions.size())
    {
    case 1:
        container_ = AutoPtr<SignalBase>(ManufactureSignal(format, dimensions[0]));
        break;
    case 2:
        container_ = AutoPtr<ImageBase>(ManufactureImage(format, dimensions[0], dimensions[1]));
        break;
    default:
        container_ = AutoPtr<VolumeBase>(ManufactureVolume(format, dimensions[0], dimensions[1], dimensions[2]));
    }
    if (!std::visit([](auto const &container) { return container != nullptr; }, container_))
        throw DataException("no samples of " + MakeString(sample_formats::ExtractByteSize(format)) + " bytes");
    std::memset(GetSamples().GetSamplesB(), 255, GetSamples().GetTotalByteSize());
}

SignalBase &SampledData::GetSamples() const
{
    return Visit([](auto &container) -> SignalBase & { return container; });
}

Dimensions SampledData::GetDimensions() const
{
    return Visit([](auto const &container) { return DimensionsOf(container); });
}

} // namespace quillmarsh::sampled_data
