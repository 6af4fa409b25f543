#include "channels.h"

#include <cstring>
#include <sstream>

namespace viewer
{

using namespace quillmarsh;
using namespace quillmarsh::sample_formats;

namespace
{

template<unsigned int index>
double ReadByte(unsigned char const *sample)
{
    return sample[index];
}

double ReadFloat(unsigned char const *sample)
{
    float value;
    std::memcpy(&value, sample, sizeof(value));
    return static_cast<double>(value);
}

template<typename Packed, unsigned int (Packed::*get)() const>
double ReadField(unsigned char const *sample)
{
    Packed packed;
    std::memcpy(&packed.word, sample, sizeof(packed.word));
    return (packed.*get)();
}

using Packed4444 = PackedSample_UShort4444;
using Packed1555 = PackedSample_UShort1555;

constexpr Channel s_l8[] = {{"luminance", 255, false, &ReadByte<0>}};
constexpr Channel s_a8[] = {{"alpha", 255, false, &ReadByte<0>}};
constexpr Channel s_a8l8[] = {{"luminance", 255, false, &ReadByte<0>}, {"alpha", 255, false, &ReadByte<1>, 8}};
constexpr Channel s_a4r4g4b4[] = {{"red", 15, false, &ReadField<Packed4444, &Packed4444::GetB>, 8},
                                  {"green", 15, false, &ReadField<Packed4444, &Packed4444::GetC>, 4},
                                  {"blue", 15, false, &ReadField<Packed4444, &Packed4444::GetD>},
                                  {"alpha", 15, false, &ReadField<Packed4444, &Packed4444::GetA>, 12}};
constexpr Channel s_a1r5g5b5[] = {{"red", 31, false, &ReadField<Packed1555, &Packed1555::GetB>, 10},
                                  {"green", 31, false, &ReadField<Packed1555, &Packed1555::GetC>, 5},
                                  {"blue", 31, false, &ReadField<Packed1555, &Packed1555::GetD>},
                                  {"alpha", 1, false, &ReadField<Packed1555, &Packed1555::GetA>, 15}};
constexpr Channel s_a8r8g8b8[] = {{"red", 255, false, &ReadByte<2>, 16},
                                  {"green", 255, false, &ReadByte<1>, 8},
                                  {"blue", 255, false, &ReadByte<0>},
                                  {"alpha", 255, false, &ReadByte<3>, 24}};
constexpr Channel s_luminance[] = {{"luminance", 1, true, &ReadFloat}};
constexpr Channel s_alpha[] = {{"alpha", 1, true, &ReadFloat}};

struct FormatChannels
{
    eSampleFormat format;
    std::span<Channel const> channels;
};

constexpr FormatChannels s_formats[] = {
    {e_format_L8, s_l8},
    {e_format_A8, s_a8},
    {e_format_A8L8, s_a8l8},
    {e_format_A4R4G4B4, s_a4r4g4b4},
    {e_format_A1R5G5B5, s_a1r5g5b5},
    {e_format_X8R8G8B8, std::span(s_a8r8g8b8).first(3)},
    {e_format_A8R8G8B8, s_a8r8g8b8},
    {e_format_FP32NormL, s_luminance},
    {e_format_FP32NormA, s_alpha},
};

} // namespace

std::span<Channel const> GetChannels(eSampleFormat format)
{
    for (FormatChannels const &row : s_formats)
    {
        if (row.format == format)
            return row.channels;
    }
    return {};
}

int FindChannel(eSampleFormat format, string const &name)
{
    std::span<Channel const> const channels = GetChannels(format);
    for (std::size_t i = 0; i < channels.size(); ++i)
    {
        if (name == channels[i].name)
            return static_cast<int>(i);
    }
    return -1;
}

string FormatSample(eSampleFormat format, unsigned char const *sample)
{
    std::ostringstream text;
    for (Channel const &channel : GetChannels(format))
    {
        if (text.tellp() > 0)
            text << ' ';
        text << static_cast<char>(channel.name[0] - 'a' + 'A') << ' ' << channel.read(sample);
    }
    return text.str();
}

} // namespace viewer
