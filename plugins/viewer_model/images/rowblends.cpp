#include "rowblends.h"

#include <cstdint>
#include <cstring>
#include <vector>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

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

/// The fields of a sample, 16 bits for each.
using Lanes = std::uint64_t;

/// Bits of a word that move, and bits that stay.
struct Move
{
    unsigned int shift = 0;
    Lanes moved = 0;
    Lanes staying = ~Lanes{0};
};

/// Samples in words. Two moves spread the fields to lanes, and two bring them back from bytes.
template<typename Word, Move outer = Move{}, Move inner = Move{}, Move innerBack = Move{}, Move outerBack = Move{}>
struct WordKind
{
    using Sample = Word;
    static Lanes Spread(Lanes word)
    {
        word = (word & outer.staying) | (word & outer.moved) << outer.shift;
        return (word & inner.staying) | (word & inner.moved) << inner.shift;
    }
    static Word Join(Lanes bytes)
    {
        bytes = (bytes & innerBack.staying) | (bytes & innerBack.moved) >> innerBack.shift;
        return static_cast<Word>((bytes & outerBack.staying) | (bytes & outerBack.moved) >> outerBack.shift);
    }
};

using Bytes1 = WordKind<std::uint8_t>;
using Bytes2 = WordKind<std::uint16_t, Move{}, Move{8, 0xFF00, 0x00FF}>;
using Bytes4 =
    WordKind<std::uint32_t, Move{16, 0xFFFF0000, 0x0000FFFF}, Move{8, 0x0000FF000000FF00, 0x000000FF000000FF}>;
using Fields4444 = WordKind<std::uint16_t, Move{24, 0xFF00, 0x00FF}, Move{12, 0x000000F0000000F0, 0x0000000F0000000F},
                            Move{4, 0x0F000F00, 0x000F000F}, Move{8, 0x00FF0000, 0x000000FF}>;
using Fields1555 = WordKind<std::uint16_t, Move{22, 0xFC00, 0x03FF}, Move{11, 0x00000020000003E0, 0x0000001F0000001F},
                            Move{3, 0x01001F00, 0x001F001F}, Move{6, 0x003F0000, 0x000003FF}>;

/// Writes the weighed sums of two rows, in parts.
template<typename Kind>
void BlendRows(Lanes *sums, unsigned char const *upper, unsigned char const *lower, std::size_t count,
               unsigned int weight)
{
    using Sample = typename Kind::Sample;
    for (std::size_t i = 0; i < count; ++i)
    {
        sums[i] = Kind::Spread(Load<Sample>(upper, i)) * (s_blendParts - weight) +
                  Kind::Spread(Load<Sample>(lower, i)) * weight;
    }
}

#if defined(__SSE2__)

template<>
void BlendRows<Bytes4>(Lanes *sums, unsigned char const *upper, unsigned char const *lower, std::size_t count,
                       unsigned int weight)
{
    __m128i const zero = _mm_setzero_si128();
    __m128i const lowerWeight = _mm_set1_epi16(static_cast<short>(weight));
    __m128i const upperWeight = _mm_set1_epi16(static_cast<short>(s_blendParts - weight));
    auto const blend = [&](__m128i a, __m128i b)
    { return _mm_add_epi16(_mm_mullo_epi16(a, upperWeight), _mm_mullo_epi16(b, lowerWeight)); };
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4)
    {
        __m128i const a = _mm_loadu_si128(reinterpret_cast<__m128i const *>(upper + 4 * i));
        __m128i const b = _mm_loadu_si128(reinterpret_cast<__m128i const *>(lower + 4 * i));
        auto *const target = reinterpret_cast<__m128i *>(sums + i);
        _mm_storeu_si128(target, blend(_mm_unpacklo_epi8(a, zero), _mm_unpacklo_epi8(b, zero)));
        _mm_storeu_si128(target + 1, blend(_mm_unpackhi_epi8(a, zero), _mm_unpackhi_epi8(b, zero)));
    }
    for (; i < count; ++i)
    {
        sums[i] = Bytes4::Spread(Load<std::uint32_t>(upper, i)) * (s_blendParts - weight) +
                  Bytes4::Spread(Load<std::uint32_t>(lower, i)) * weight;
    }
}

/// Blends the sums of two columns, and returns a byte for each lane.
unsigned int BlendColumns(Lanes const &first, Lanes const &next, unsigned int weight)
{
    __m128i const lanes = _mm_unpacklo_epi16(_mm_loadl_epi64(reinterpret_cast<__m128i const *>(&first)),
                                             _mm_loadl_epi64(reinterpret_cast<__m128i const *>(&next)));
    __m128i const weights = _mm_set1_epi32(static_cast<int>(weight << 16 | (s_blendParts - weight)));
    __m128i const sum = _mm_add_epi32(_mm_madd_epi16(lanes, weights), _mm_set1_epi32(s_squareParts / 2));
    __m128i const words = _mm_packs_epi32(_mm_srli_epi32(sum, 14), sum);
    return static_cast<unsigned int>(_mm_cvtsi128_si32(_mm_packus_epi16(words, words)));
}

#else

unsigned int BlendColumns(Lanes const &first, Lanes const &next, unsigned int weight)
{
    // Two lanes of 32 bits at once.
    constexpr Lanes mask = 0x0000FFFF0000FFFF, halves = Lanes{s_squareParts / 2} << 32 | s_squareParts / 2;
    auto const blend = [&](Lanes a, Lanes b)
    { return ((a & mask) * (s_blendParts - weight) + (b & mask) * weight + halves) >> 14; };
    Lanes const even = blend(first, next), odd = blend(first >> 16, next >> 16);
    return static_cast<unsigned int>((even & 0xFF) | (odd & 0xFF) << 8 | (even >> 32 & 0xFF) << 16 |
                                     (odd >> 32 & 0xFF) << 24);
}

#endif

template<typename Kind>
class WordBlender : public RowBlender
{
public:
    void Blend(unsigned char *samples, unsigned char const *upper, unsigned char const *lower, unsigned int weight,
               std::span<SamplePlace const> places) override
    {
        using Sample = typename Kind::Sample;
        std::size_t const first = places.front().index;
        sums_.resize(places.back().next - first + 1);
        BlendRows<Kind>(sums_.data(), upper + first * sizeof(Sample), lower + first * sizeof(Sample), sums_.size(),
                        weight);
        Lanes const *const sums = sums_.data();
        for (std::size_t i = 0; i < places.size(); ++i)
        {
            auto const [index, next, nextWeight] = places[i];
            Sample const sample = Kind::Join(BlendColumns(sums[index - first], sums[next - first], nextWeight));
            std::memcpy(samples + i * sizeof(sample), &sample, sizeof(sample));
        }
    }

private:
    /// Of both rows, for each column that counts.
    std::vector<Lanes> sums_;
};

/// A sample without weight counts for nothing, even if it is infinite or no number.
float BlendFloats(float first, float next, unsigned int weight)
{
    float const part = static_cast<float>(weight) * (1.0f / s_blendParts);
    return weight == 0 ? first : first * (1 - part) + next * part;
}

class FloatBlender : public RowBlender
{
public:
    void Blend(unsigned char *samples, unsigned char const *upper, unsigned char const *lower, unsigned int weight,
               std::span<SamplePlace const> places) override
    {
        std::size_t const first = places.front().index;
        blends_.resize(places.back().next - first + 1);
        for (std::size_t i = 0; i < blends_.size(); ++i)
            blends_[i] = BlendFloats(Load<float>(upper, first + i), Load<float>(lower, first + i), weight);
        for (std::size_t i = 0; i < places.size(); ++i)
        {
            auto const [index, next, nextWeight] = places[i];
            float const sample = BlendFloats(blends_[index - first], blends_[next - first], nextWeight);
            std::memcpy(samples + i * sizeof(sample), &sample, sizeof(sample));
        }
    }

private:
    /// Of both rows, for each column that counts.
    std::vector<float> blends_;
};

template<typename Blender>
AutoPtr<RowBlender> Make()
{
    return std::make_unique<Blender>();
}

struct FormatBlender
{
    eSampleFormat format;
    AutoPtr<RowBlender> (*make)();
};

constexpr FormatBlender s_formats[] = {
    {e_format_L8, &Make<WordBlender<Bytes1>>},           {e_format_A8, &Make<WordBlender<Bytes1>>},
    {e_format_A8L8, &Make<WordBlender<Bytes2>>},         {e_format_A4R4G4B4, &Make<WordBlender<Fields4444>>},
    {e_format_A1R5G5B5, &Make<WordBlender<Fields1555>>}, {e_format_X8R8G8B8, &Make<WordBlender<Bytes4>>},
    {e_format_A8R8G8B8, &Make<WordBlender<Bytes4>>},     {e_format_FP32NormL, &Make<FloatBlender>},
    {e_format_FP32NormA, &Make<FloatBlender>},
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
