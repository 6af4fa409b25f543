// Fills of channels by the format of the samples.
#include <quillmarsh/dataobjects/signaloperations.h>

#include "source/dataobjects/transfer/sampleparts.h"

#include <algorithm>

namespace quillmarsh
{
namespace
{

enum class eChannel
{
    e_luminance,
    e_alpha,
    e_red,
    e_green,
    e_blue
};

/// Place of a channel in the samples of a format, read as one word.
struct ChannelField
{
    eSampleFormat format;
    eChannel channel;
    unsigned int shift, numBits;
};

constexpr ChannelField s_fields[] = {
    {e_format_L8, eChannel::e_luminance, 0, 8},    {e_format_A8, eChannel::e_alpha, 0, 8},
    {e_format_A8L8, eChannel::e_luminance, 0, 8},  {e_format_A8L8, eChannel::e_alpha, 8, 8},
    {e_format_A4R4G4B4, eChannel::e_alpha, 12, 4}, {e_format_A4R4G4B4, eChannel::e_red, 8, 4},
    {e_format_A4R4G4B4, eChannel::e_green, 4, 4},  {e_format_A4R4G4B4, eChannel::e_blue, 0, 4},
    {e_format_A1R5G5B5, eChannel::e_alpha, 15, 1}, {e_format_A1R5G5B5, eChannel::e_red, 10, 5},
    {e_format_A1R5G5B5, eChannel::e_green, 5, 5},  {e_format_A1R5G5B5, eChannel::e_blue, 0, 5},
    {e_format_X8R8G8B8, eChannel::e_red, 16, 8},   {e_format_X8R8G8B8, eChannel::e_green, 8, 8},
    {e_format_X8R8G8B8, eChannel::e_blue, 0, 8},   {e_format_A8R8G8B8, eChannel::e_alpha, 24, 8},
    {e_format_A8R8G8B8, eChannel::e_red, 16, 8},   {e_format_A8R8G8B8, eChannel::e_green, 8, 8},
    {e_format_A8R8G8B8, eChannel::e_blue, 0, 8},
};

struct ChannelValue
{
    eChannel channel;
    unsigned char value;
};

/// Bytes of a word, the lowest first.
struct WordBytes
{
    unsigned char bytes[4];

    explicit WordBytes(unsigned int word)
    {
        for (unsigned int i = 0; i < 4; ++i)
            bytes[i] = static_cast<unsigned char>(word >> 8 * i);
    }
    std::span<unsigned char const> First(unsigned int count) const { return {bytes, count}; }
};

/// Fills all these channels at once; returns false and fills none if the format lacks one.
bool FillChannels(SignalBase &signal, std::initializer_list<ChannelValue> values)
{
    unsigned int mask = 0, bits = 0;
    for (ChannelValue const &wanted : values)
    {
        auto const *const field =
            std::find_if(std::begin(s_fields), std::end(s_fields),
                         [&](ChannelField const &candidate) {
                             return candidate.format == signal.GetSampleFormat() && candidate.channel == wanted.channel;
                         });
        if (field == std::end(s_fields))
            return false;
        mask |= ((1u << field->numBits) - 1) << field->shift;
        bits |= static_cast<unsigned int>(wanted.value >> (8 - field->numBits)) << field->shift;
    }
    unsigned int const size = signal.GetSampleByteSize();
    FillSamples(signal, 0, WordBytes(mask).First(size), WordBytes(bits).First(size));
    return true;
}

/// Writes colours from `startColor` towards `endColor`, which is never reached.
void FillWithSteps(SignalBase &colours, color4f const &startColor, color4f const &endColor)
{
    color4f const step = (endColor - startColor) / static_cast<float>(colours.GetNumSamples());
    color4f running = startColor;
    for (unsigned int i = 0; i < colours.GetNumSamples(); ++i)
    {
        color4b const colour = running;
        std::memcpy(colours.SampleB(i), colour.ToPtr(), sizeof colour);
        running += step;
    }
}

} // namespace

bool Fill_Luminance(SignalBase &signal, unsigned char value)
{
    return FillChannels(signal, {{eChannel::e_luminance, value}});
}

bool Fill_Alpha(SignalBase &signal, unsigned char value)
{
    return FillChannels(signal, {{eChannel::e_alpha, value}});
}

bool Fill_Red(SignalBase &signal, unsigned char value)
{
    return FillChannels(signal, {{eChannel::e_red, value}});
}

bool Fill_Green(SignalBase &signal, unsigned char value)
{
    return FillChannels(signal, {{eChannel::e_green, value}});
}

bool Fill_Blue(SignalBase &signal, unsigned char value)
{
    return FillChannels(signal, {{eChannel::e_blue, value}});
}

bool Fill_RGB(SignalBase &signal, color4b color)
{
    return FillChannels(signal,
                        {{eChannel::e_red, color.r}, {eChannel::e_green, color.g}, {eChannel::e_blue, color.b}});
}

bool Fill_ARGB(SignalBase &signal, color4b color)
{
    return FillChannels(signal, {{eChannel::e_alpha, color.a},
                                 {eChannel::e_red, color.r},
                                 {eChannel::e_green, color.g},
                                 {eChannel::e_blue, color.b}});
}

bool GradientFill(SignalBase &signal, color4f const &startColor, color4f const &endColor, unsigned int startIndex,
                  unsigned int endIndex)
{
    QUILLMARSH_ASSERT(signal.GetNumSamples() != 0, "Signal is empty.");
    QUILLMARSH_ASSERT(startIndex < signal.GetNumSamples(), "Start-index out of range.");
    QUILLMARSH_ASSERT(endIndex < signal.GetNumSamples(), "End-index out of range.");
    QUILLMARSH_ASSERT(startIndex <= endIndex, "End-index preceds start-index.");

    unsigned int const count = startIndex < endIndex ? endIndex - startIndex + 1 : 1;
    Signal<Sample32> colours(e_format_A8R8G8B8, count);
    FillWithSteps(colours, startColor, endColor);
    if (signal.GetSampleFormat() == e_format_A8R8G8B8)
    {
        CopySamples1D(signal, colours, count, startIndex, 0);
        return true;
    }
    AutoPtr<SignalBase> const converted(ManufactureSignal(signal.GetSampleFormat(), count));
    if (!converted || !TransferSamples1D(*converted, colours, true))
        return false;
    CopySamples1D(signal, *converted, count, startIndex, 0);
    return true;
}

} // namespace quillmarsh
