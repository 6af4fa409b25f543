#include <quillmarsh/dataobjects/samplestatistics.h>

#include "source/dataobjects/operations/samplechannels.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quillmarsh::sampled_data
{
namespace
{

constexpr std::size_t s_numFloatParts = 256;

constexpr SampleChannel s_luminance[] = {{"luminance", 0, 255}};
constexpr SampleChannel s_alpha[] = {{"alpha", 0, 255}};
constexpr SampleChannel s_luminanceAlpha[] = {{"luminance", 0, 255}, {"alpha", 8, 255}};
constexpr SampleChannel s_word4444[] = {{"red", 8, 15}, {"green", 4, 15}, {"blue", 0, 15}, {"alpha", 12, 15}};
constexpr SampleChannel s_word1555[] = {{"red", 10, 31}, {"green", 5, 31}, {"blue", 0, 31}, {"alpha", 15, 1}};
constexpr SampleChannel s_colour[] = {{"red", 16, 255}, {"green", 8, 255}, {"blue", 0, 255}, {"alpha", 24, 255}};
constexpr SampleChannel s_floatLuminance[] = {{"luminance", 0, 0}};
constexpr SampleChannel s_floatAlpha[] = {{"alpha", 0, 0}};

/// A container's samples, one after the other.
struct Samples
{
    unsigned char const *bytes;
    std::size_t size;
    std::size_t count;

    explicit Samples(SampledData const &data)
        : bytes(data.GetSamples().GetSamplesB()),
          size(data.GetSamples().GetSampleByteSize()),
          count(data.GetSamples().GetNumSamples())
    {
    }
    unsigned char const *At(std::size_t i) const { return bytes + i * size; }
};

std::span<SampleChannel const> RequireChannels(SampledData const &data)
{
    std::span<SampleChannel const> const channels = GetSampleChannels(data.GetFormat());
    if (channels.empty())
        throw DataException("the channels of the sample format " + GetFormatName(data.GetFormat()) + " are not known");
    return channels;
}

/// Derives the figures of whole values from the numbers of samples with each.
void FinishHistogram(ChannelStatistics &figures)
{
    double count = 0, sum = 0, squares = 0;
    bool isFirst = true;
    for (std::size_t value = 0; value < figures.histogram.size(); ++value)
    {
        auto const times = static_cast<double>(figures.histogram[value]);
        auto const number = static_cast<double>(value);
        if (times == 0)
            continue;
        figures.minimum = isFirst ? number : figures.minimum;
        figures.maximum = number;
        isFirst = false;
        count += times;
        sum += times * number;
    }
    figures.mean = count > 0 ? sum / count : 0;
    for (std::size_t value = 0; value < figures.histogram.size(); ++value)
    {
        double const distance = static_cast<double>(value) - figures.mean;
        squares += static_cast<double>(figures.histogram[value]) * distance * distance;
    }
    figures.deviation = count > 0 ? std::sqrt(squares / count) : 0;
}

void CountFloats(ChannelStatistics &figures, Samples const &samples)
{
    double count = 0, sum = 0, squares = 0;
    float smallest = std::numeric_limits<float>::infinity(), greatest = -smallest;
    for (std::size_t i = 0; i < samples.count; ++i)
    {
        float const value = ReadFloat(samples.At(i));
        if (std::isnan(value))
        {
            ++figures.numNaN;
            continue;
        }
        smallest = std::min(smallest, value);
        greatest = std::max(greatest, value);
        sum += static_cast<double>(value);
        ++count;
        float const part = std::clamp(value, 0.0f, 1.0f) * static_cast<float>(s_numFloatParts);
        ++figures.histogram[std::min(static_cast<std::size_t>(part), s_numFloatParts - 1)];
    }
    if (count == 0)
        return;
    figures.minimum = static_cast<double>(smallest);
    figures.maximum = static_cast<double>(greatest);
    figures.mean = sum / count;
    for (std::size_t i = 0; i < samples.count; ++i)
    {
        double const distance = static_cast<double>(ReadFloat(samples.At(i))) - figures.mean;
        squares += std::isnan(distance) ? 0 : distance * distance;
    }
    figures.deviation = std::sqrt(squares / count);
}

/// Returns the absolute difference of a channel in two samples.
double Distance(SampleChannel const &channel, unsigned char const *a, unsigned char const *b, std::size_t size)
{
    if (!channel.IsFloat())
    {
        auto const x = static_cast<int>(ReadChannel(channel, a, size));
        return std::abs(x - static_cast<int>(ReadChannel(channel, b, size)));
    }
    float const x = ReadFloat(a), y = ReadFloat(b);
    // Equal infinities, whose difference is no number.
    if (x == y || (std::isnan(x) && std::isnan(y)))
        return 0;
    double const distance = std::abs(static_cast<double>(x) - static_cast<double>(y));
    return std::isnan(distance) ? std::numeric_limits<double>::infinity() : distance;
}

double GetLargest(SampleChannel const &channel)
{
    return channel.IsFloat() ? 1.0 : channel.largest;
}

/// Returns the ratio in decibels for the mean square of differences that are parts of their range.
double ToDecibels(double meanSquare)
{
    return meanSquare > 0 ? -10 * std::log10(meanSquare) : std::numeric_limits<double>::infinity();
}

std::span<SampleChannel const> RequireComparable(SampledData const &a, SampledData const &b)
{
    if (a.GetDimensions() != b.GetDimensions())
        throw DataException("the sizes differ: " + Describe(a.GetDimensions()) + " and " + Describe(b.GetDimensions()));
    if (a.GetFormat() != b.GetFormat())
        throw DataException("the sample formats differ: " + GetFormatName(a.GetFormat()) + " and " +
                            GetFormatName(b.GetFormat()));
    return RequireChannels(a);
}

} // namespace

std::span<SampleChannel const> GetSampleChannels(unsigned int format)
{
    switch (format)
    {
    case e_format_L8:
        return s_luminance;
    case e_format_A8:
        return s_alpha;
    case e_format_A8L8:
        return s_luminanceAlpha;
    case e_format_A4R4G4B4:
        return s_word4444;
    case e_format_A1R5G5B5:
        return s_word1555;
    case e_format_X8R8G8B8:
        return std::span(s_colour).first(3);
    case e_format_A8R8G8B8:
        return s_colour;
    case e_format_FP32NormL:
        return s_floatLuminance;
    case e_format_FP32NormA:
        return s_floatAlpha;
    default:
        return {};
    }
}

std::vector<ChannelStatistics> ComputeStatistics(SampledData const &data)
{
    Samples const samples(data);
    std::vector<ChannelStatistics> all;
    for (SampleChannel const &channel : RequireChannels(data))
    {
        ChannelStatistics &figures = all.emplace_back();
        figures.name = channel.name;
        figures.largest = GetLargest(channel);
        figures.histogram.resize(channel.IsFloat() ? s_numFloatParts : std::size_t{channel.largest} + 1);
        if (channel.IsFloat())
        {
            CountFloats(figures, samples);
            continue;
        }
        for (std::size_t i = 0; i < samples.count; ++i)
            ++figures.histogram[ReadChannel(channel, samples.At(i), samples.size)];
        FinishHistogram(figures);
    }
    return all;
}

Difference Compare(SampledData const &a, SampledData const &b)
{
    std::span<SampleChannel const> const channels = RequireComparable(a, b);
    Samples const first(a), second(b);
    auto const count = static_cast<double>(first.count);
    Difference difference;
    double squares = 0;
    for (SampleChannel const &channel : channels)
    {
        double const largest = GetLargest(channel);
        ChannelDifference found = {channel.name, largest, 0, 0, 0};
        double sum = 0, channelSquares = 0;
        for (std::size_t i = 0; i < first.count; ++i)
        {
            double const distance = Distance(channel, first.At(i), second.At(i), first.size);
            found.greatest = std::max(found.greatest, distance);
            sum += distance;
            channelSquares += distance / largest * (distance / largest);
        }
        found.mean = sum / count;
        found.psnr = ToDecibels(channelSquares / count);
        difference.greatest = std::max(difference.greatest, found.greatest);
        difference.mean += found.mean / static_cast<double>(channels.size());
        squares += channelSquares / count / static_cast<double>(channels.size());
        difference.channels.push_back(found);
    }
    difference.psnr = ToDecibels(squares);
    return difference;
}

SampledData MakeDifferencePicture(SampledData const &a, SampledData const &b)
{
    std::span<SampleChannel const> const channels = RequireComparable(a, b);
    Samples const first(a), second(b);
    // The greatest part of its range by which a channel of the sample differs.
    auto const measure = [&](std::size_t i)
    {
        double greatest = 0;
        for (SampleChannel const &channel : channels)
            greatest = std::max(greatest,
                                std::min(Distance(channel, first.At(i), second.At(i), first.size) / GetLargest(channel),
                                         std::numeric_limits<double>::max()));
        return greatest;
    };
    double greatest = 0;
    for (std::size_t i = 0; i < first.count; ++i)
        greatest = std::max(greatest, measure(i));
    SampledData picture(e_format_L8, a.GetDimensions());
    for (std::size_t i = 0; i < first.count; ++i)
    {
        double const part = greatest > 0 ? measure(i) / greatest : 0;
        // Rounded up, so that every difference is seen.
        picture.GetSamples().GetSamplesB()[i] = static_cast<unsigned char>(std::ceil(part * 255));
    }
    return picture;
}

} // namespace quillmarsh::sampled_data
