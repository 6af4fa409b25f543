#include "rowblends.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace viewer
{

using namespace quillmarsh;

namespace
{

template<typename Sample>
Sample Load(unsigned char const *row, std::size_t index)
{
    Sample sample;
    std::memcpy(&sample, row + index * sizeof(sample), sizeof(sample));
    return sample;
}

template<typename Sample>
void Pick(unsigned char *samples, unsigned char const *row, std::span<SamplePlace const> places)
{
    for (std::size_t i = 0; i < places.size(); ++i)
    {
        Sample const sample = Load<Sample>(row, places[i].index);
        std::memcpy(samples + i * sizeof(sample), &sample, sizeof(sample));
    }
}

constexpr unsigned int s_squareParts = s_blendParts * s_blendParts;

/// The weights of four samples: upper and lower, each first and next.
struct Weights
{
    unsigned int upperFirst, upperNext, lowerFirst, lowerNext;
};

/// Fields of a word, each given by its lowest bit and its largest value.
template<typename Word, unsigned int... fields>
struct Fields
{
    using Sample = Word;
    static Sample Blend(unsigned int a, unsigned int b, unsigned int c, unsigned int d, Weights const &weights)
    {
        unsigned int result = 0;
        ((result |= BlendField(a & fields, b & fields, c & fields, d & fields, fields, weights)), ...);
        return static_cast<Sample>(result);
    }
    static unsigned int BlendField(std::uint64_t a, std::uint64_t b, std::uint64_t c, std::uint64_t d,
                                   unsigned int mask, Weights const &weights)
    {
        std::uint64_t const lowest = mask & (~mask + 1);
        std::uint64_t const sum = a * weights.upperFirst + b * weights.upperNext + c * weights.lowerFirst +
                                  d * weights.lowerNext + lowest * (s_squareParts / 2);
        return static_cast<unsigned int>(sum / s_squareParts) & mask;
    }
};

struct Floats
{
    using Sample = float;
    static Sample Blend(double a, double b, double c, double d, Weights const &weights)
    {
        // A sample without weight counts for nothing, even if it is infinite or no number.
        double const upper = Add(a * weights.upperFirst, b, weights.upperNext);
        double const lower = Add(c * weights.lowerFirst, d, weights.lowerNext);
        double const sum = weights.lowerFirst + weights.lowerNext != 0 ? upper + lower : upper;
        return static_cast<float>(sum / s_squareParts);
    }
    static double Add(double sum, double value, unsigned int weight)
    {
        return weight != 0 ? sum + value * weight : sum;
    }
};

template<typename Kind>
class PlainBlender : public RowBlender
{
public:
    void Blend(unsigned char *samples, unsigned char const *upper, unsigned char const *lower, unsigned int weight,
               std::span<SamplePlace const> places) override
    {
        using Sample = typename Kind::Sample;
        for (std::size_t i = 0; i < places.size(); ++i)
        {
            auto const [index, next, nextWeight] = places[i];
            unsigned int const firstWeight = s_blendParts - nextWeight, upperWeight = s_blendParts - weight;
            Sample const sample = Kind::Blend(
                Load<Sample>(upper, index), Load<Sample>(upper, next), Load<Sample>(lower, index),
                Load<Sample>(lower, next),
                {upperWeight * firstWeight, upperWeight * nextWeight, weight * firstWeight, weight * nextWeight});
            std::memcpy(samples + i * sizeof(sample), &sample, sizeof(sample));
        }
    }
};

template<typename Kind>
AutoPtr<RowBlender> Make()
{
    return std::make_unique<PlainBlender<Kind>>();
}

using Bytes1 = Fields<std::uint8_t, 0xFF>;
using Bytes2 = Fields<std::uint16_t, 0xFF, 0xFF00>;
using Bytes4 = Fields<std::uint32_t, 0xFF, 0xFF00, 0xFF0000, 0xFF000000>;
using Fields4444 = Fields<std::uint16_t, 0xF, 0xF0, 0xF00, 0xF000>;
using Fields1555 = Fields<std::uint16_t, 0x1F, 0x3E0, 0x7C00, 0x8000>;

struct FormatBlender
{
    eSampleFormat format;
    AutoPtr<RowBlender> (*make)();
};

constexpr FormatBlender s_formats[] = {
    {e_format_L8, &Make<Bytes1>},           {e_format_A8, &Make<Bytes1>},           {e_format_A8L8, &Make<Bytes2>},
    {e_format_A4R4G4B4, &Make<Fields4444>}, {e_format_A1R5G5B5, &Make<Fields1555>}, {e_format_X8R8G8B8, &Make<Bytes4>},
    {e_format_A8R8G8B8, &Make<Bytes4>},     {e_format_FP32NormL, &Make<Floats>},    {e_format_FP32NormA, &Make<Floats>},
};

} // namespace

void PickSamples(unsigned char *samples, unsigned char const *row, unsigned int sampleByteSize,
                 std::span<SamplePlace const> places)
{
    if (sampleByteSize == 1)
        Pick<std::uint8_t>(samples, row, places);
    else if (sampleByteSize == 2)
        Pick<std::uint16_t>(samples, row, places);
    else if (sampleByteSize == 4)
        Pick<std::uint32_t>(samples, row, places);
}

AutoPtr<RowBlender> MakeRowBlender(eSampleFormat format)
{
    for (FormatBlender const &row : s_formats)
    {
        if (row.format == format)
            return row.make();
    }
    return nullptr;
}

} // namespace viewer
