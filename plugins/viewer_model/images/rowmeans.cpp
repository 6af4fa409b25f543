#include "rowmeans.h"

#include <cstdint>
#include <cstring>

namespace viewer
{

using namespace quillmarsh;

namespace
{

template<typename Word>
Word Load(unsigned char const *bytes)
{
    Word word;
    std::memcpy(&word, bytes, sizeof(word));
    return word;
}

/// Means of several fields of a word at once. The fields in `mask` have room above them for the sum of four.
template<std::uint32_t mask, std::uint32_t halves>
constexpr std::uint32_t MeanOfFields(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d)
{
    return ((a & mask) + (b & mask) + (c & mask) + (d & mask) + halves) >> 2 & mask;
}

struct Bytes1
{
    using Sample = std::uint8_t;
    static Sample Mean(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d)
    {
        return static_cast<Sample>((a + b + c + d + 2) >> 2);
    }
};

struct Bytes2
{
    using Sample = std::uint16_t;
    static Sample Mean(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d)
    {
        return static_cast<Sample>(MeanOfFields<0x00FF, 2>(a, b, c, d) | MeanOfFields<0xFF00, 0x200>(a, b, c, d));
    }
};

struct Fields4444
{
    using Sample = std::uint16_t;
    static Sample Mean(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d)
    {
        return static_cast<Sample>(MeanOfFields<0x0F0F, 0x0202>(a, b, c, d) | MeanOfFields<0xF0F0, 0x2020>(a, b, c, d));
    }
};

struct Fields1555
{
    using Sample = std::uint16_t;
    static Sample Mean(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d)
    {
        return static_cast<Sample>(MeanOfFields<0x7C1F, 2 << 10 | 2>(a, b, c, d) |
                                   MeanOfFields<0x83E0, 2 << 15 | 2 << 5>(a, b, c, d));
    }
};

struct Bytes4
{
    using Sample = std::uint32_t;
    static Sample Mean(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d)
    {
        return MeanOfFields<0x00FF00FF, 0x00020002>(a, b, c, d) |
               MeanOfFields<0x00FF00FF, 0x00020002>(a >> 8, b >> 8, c >> 8, d >> 8) << 8;
    }
};

struct Float
{
    using Sample = float;
    static Sample Mean(double a, double b, double c, double d)
    {
        return static_cast<float>(((a + b) + (c + d)) * 0.25);
    }
};

template<typename Kind>
void WriteMeans(unsigned char *means, unsigned char const *upper, unsigned char const *lower, unsigned int numColumns)
{
    using Sample = typename Kind::Sample;
    constexpr std::size_t size = sizeof(Sample);
    std::size_t const numPairs = numColumns / 2;
    for (std::size_t i = 0; i < numPairs; ++i)
    {
        Sample const mean = Kind::Mean(Load<Sample>(upper + 2 * i * size), Load<Sample>(upper + (2 * i + 1) * size),
                                       Load<Sample>(lower + 2 * i * size), Load<Sample>(lower + (2 * i + 1) * size));
        std::memcpy(means + i * size, &mean, size);
    }
    if (numColumns % 2 != 0)
    {
        Sample const a = Load<Sample>(upper + 2 * numPairs * size), b = Load<Sample>(lower + 2 * numPairs * size);
        Sample const mean = Kind::Mean(a, a, b, b);
        std::memcpy(means + numPairs * size, &mean, size);
    }
}

struct FormatMeans
{
    eSampleFormat format;
    MeanRow meanRow;
};

constexpr FormatMeans s_formats[] = {
    {e_format_L8, &WriteMeans<Bytes1>},           {e_format_A8, &WriteMeans<Bytes1>},
    {e_format_A8L8, &WriteMeans<Bytes2>},         {e_format_A4R4G4B4, &WriteMeans<Fields4444>},
    {e_format_A1R5G5B5, &WriteMeans<Fields1555>}, {e_format_X8R8G8B8, &WriteMeans<Bytes4>},
    {e_format_A8R8G8B8, &WriteMeans<Bytes4>},     {e_format_FP32NormL, &WriteMeans<Float>},
    {e_format_FP32NormA, &WriteMeans<Float>},
};

} // namespace

MeanRow FindMeanRow(eSampleFormat format)
{
    for (FormatMeans const &row : s_formats)
    {
        if (row.format == format)
            return row.meanRow;
    }
    return nullptr;
}

} // namespace viewer
