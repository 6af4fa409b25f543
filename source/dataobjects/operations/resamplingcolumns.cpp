#include "source/dataobjects/operations/resamplingcolumns.h"

#include <quillmarsh/dataobjects/sampleprocessors.h>

#include <cstring>

namespace quillmarsh
{
namespace
{

using sample_processors::Taps;

/// Copies one sample for each column, with a separate loop for each of the usual sizes.
template<unsigned int size>
void PickOneByOne(unsigned char *dst, unsigned char const *src, AxisTaps const *taps, unsigned int AxisTaps::*tap,
                  std::size_t numColumns)
{
    for (std::size_t i = 0; i < numColumns; ++i)
        std::memcpy(dst + i * size, src + std::size_t{taps[i].*tap} * size, size);
}

void PickOneByOne(unsigned char *dst, unsigned char const *src, AxisTaps const *taps, unsigned int AxisTaps::*tap,
                  std::size_t numColumns, unsigned int size)
{
    switch (size)
    {
    case 1:
        return PickOneByOne<1>(dst, src, taps, tap, numColumns);
    case 2:
        return PickOneByOne<2>(dst, src, taps, tap, numColumns);
    case 3:
        return PickOneByOne<3>(dst, src, taps, tap, numColumns);
    case 4:
        return PickOneByOne<4>(dst, src, taps, tap, numColumns);
    case 8:
        return PickOneByOne<8>(dst, src, taps, tap, numColumns);
    case 16:
        return PickOneByOne<16>(dst, src, taps, tap, numColumns);
    default:
        for (std::size_t i = 0; i < numColumns; ++i)
            std::memcpy(dst + i * size, src + std::size_t{taps[i].*tap} * size, size);
    }
}

/// The samples at all taps of one column, with their weights.
template<typename T, unsigned int numRows>
Taps<T, 2 * numRows> TapsOf(BlendJob const &job, AxisTaps const &column, std::size_t at)
{
    Taps<T, 2 * numRows> taps;
    for (unsigned int row = 0; row < numRows; ++row)
    {
        taps.src[2 * row] = reinterpret_cast<T const *>(job.tap0[row] + at);
        taps.src[2 * row + 1] = reinterpret_cast<T const *>(job.tap1[row] + at);
        taps.weights[2 * row] = job.rowWeights[row] * column.weight0;
        taps.weights[2 * row + 1] = job.rowWeights[row] * column.weight1;
    }
    return taps;
}

template<unsigned int numRows>
void BlendColumn(BlendJob const &job, AxisTaps const &column, std::size_t at, SamplePart const &part)
{
    using namespace sample_formats;
    unsigned char *const dst = job.dst + at;
    switch (part.element)
    {
    case eSampleElement::e_byte:
    case eSampleElement::e_colour:
    case eSampleElement::e_wideColour:
        return sample_processors::InterpolateComponents(dst, part.numElements,
                                                        TapsOf<unsigned char, numRows>(job, column, at));
    case eSampleElement::e_float:
        return sample_processors::InterpolateComponents(reinterpret_cast<float *>(dst), part.numElements,
                                                        TapsOf<float, numRows>(job, column, at));
    case eSampleElement::e_word4444:
        return sample_processors::InterpolatePacked<PackedSample_UShort4444>(
            reinterpret_cast<unsigned short *>(dst), TapsOf<unsigned short, numRows>(job, column, at));
    case eSampleElement::e_word1555:
        return sample_processors::InterpolatePacked<PackedSample_UShort1555>(
            reinterpret_cast<unsigned short *>(dst), TapsOf<unsigned short, numRows>(job, column, at));
    }
}

unsigned int ElementSize(eSampleElement element)
{
    switch (element)
    {
    case eSampleElement::e_byte:
        return 1;
    case eSampleElement::e_colour:
    case eSampleElement::e_wideColour:
    case eSampleElement::e_float:
        return 4;
    default:
        return 2;
    }
}

bool AreColours(SamplePart const &part)
{
    return part.element == eSampleElement::e_byte && part.sampleSize == 4;
}

} // namespace

bool ResamplingColumns::CanBeWide(SamplePart const &part)
{
    return AreColours(part) && GetBlendKernel(eSampleElement::e_wideColour, 2, false).run;
}

unsigned int ResamplingColumns::GetRunLength(unsigned int numColumns, unsigned int pickedSize)
{
    unsigned int const longest = std::min(s_maxBytes / pickedSize, s_maxColumns);
    // The runs have nearly the same length, so that none is too short for a vector.
    unsigned int const numRuns = (numColumns - 1) / longest + 1;
    return (numColumns - 1) / numRuns + 1;
}

void ResamplingColumns::SetNearest(AxisWalk &walk, unsigned int numColumns, unsigned int srcColumns,
                                   unsigned int sampleSize)
{
    numColumns_ = numColumns;
    areWide_ = false;
    part_ = {sampleSize, eSampleElement::e_byte, 0, sampleSize};
    for (unsigned int i = 0; i < numColumns; ++i)
        taps_[i].first = taps_[i].second = walk.NextNearest();
    SetBlocks(srcColumns, false);
}

void ResamplingColumns::SetLinear(AxisWalk &walk, unsigned int numColumns, unsigned int srcColumns,
                                  SamplePart const &part, unsigned int numRows, bool areWide)
{
    numColumns_ = numColumns;
    numRows_ = numRows;
    part_ = part;
    for (unsigned int i = 0; i < numColumns; ++i)
        taps_[i] = walk.NextLinear();
    SetBlocks(srcColumns, true);
    SetElements(areWide);
}

void ResamplingColumns::SetBlocks(unsigned int srcColumns, bool wantsBoth)
{
    gather_ = GetGatherKernel(part_.sampleSize, wantsBoth);
    bool fits = gather_.run && gather_.blockColumns <= numColumns_ && gather_.windowSamples <= srcColumns;
    std::size_t const controlSize = std::size_t{2} * gather_.blockColumns * part_.sampleSize;
    for (unsigned int block = 0; fits && block * gather_.blockColumns < numColumns_; ++block)
    {
        unsigned int const column = std::min(block * gather_.blockColumns, numColumns_ - gather_.blockColumns);
        fits = SetBlock(column, srcColumns, windows_[block], controls_ + block * controlSize);
    }
    if (!fits)
        gather_ = {};
}

bool ResamplingColumns::SetBlock(unsigned int column, unsigned int srcColumns, std::uint32_t &window,
                                 unsigned char *control) const
{
    AxisTaps const *const taps = taps_ + column;
    window = std::min(taps[0].first, srcColumns - gather_.windowSamples);
    if (taps[gather_.blockColumns - 1].second - window >= gather_.windowSamples)
        return false;
    for (unsigned int i = 0; i < 2 * gather_.blockColumns; ++i)
    {
        unsigned int const index =
            (i < gather_.blockColumns ? taps[i].first : taps[i - gather_.blockColumns].second) - window;
        unsigned char *const at = control + std::size_t{i} * part_.sampleSize;
        if (part_.sampleSize == sizeof index)
            std::memcpy(at, &index, sizeof index);
        else
        {
            for (unsigned int k = 0; k < part_.sampleSize; ++k)
                at[k] = static_cast<unsigned char>(index * part_.sampleSize + k);
        }
    }
    return true;
}

eSampleElement ResamplingColumns::FindElement(bool areWide) const
{
    // The kernel for bytes handles runs that do not fill a vector of colours.
    bool const areEnough = numColumns_ >= GetBlendKernel(eSampleElement::e_colour, numRows_, false).lanes;
    if (!AreColours(part_) || !areEnough)
        return part_.element;
    return areWide ? eSampleElement::e_wideColour : eSampleElement::e_colour;
}

void ResamplingColumns::SetElements(bool areWide)
{
    bool const isMasked = part_.numElements * ElementSize(part_.element) != part_.sampleSize;
    eSampleElement const element = FindElement(areWide);
    blend_ = GetBlendKernel(element, numRows_, isMasked);
    areWide_ = element == eSampleElement::e_wideColour;
    unsigned int const elementSize = ElementSize(element);
    unsigned int const columnElements = part_.sampleSize / elementSize;
    numElements_ = std::size_t{numColumns_} * columnElements;
    if (part_.sampleSize % elementSize != 0 || numElements_ < blend_.lanes)
        blend_ = {};
    if (!blend_.run)
        return;

    float *to0 = weights0_, *to1 = weights1_;
    for (unsigned int i = 0; i < numColumns_; ++i)
    {
        to0 = std::fill_n(to0, columnElements, taps_[i].weight0);
        to1 = std::fill_n(to1, columnElements, taps_[i].weight1);
    }
    if (isMasked)
        SetMask();
}

void ResamplingColumns::SetMask()
{
    std::memset(mask_, 0, GetByteSize());
    for (unsigned int i = 0; i < numColumns_; ++i)
        std::memset(mask_ + std::size_t{i} * part_.sampleSize + part_.offset, 0xFF,
                    std::size_t{part_.numElements} * ElementSize(part_.element));
}

void ResamplingColumns::Gather(unsigned char const *src, unsigned char *tap0, unsigned char *tap1) const
{
    if (!areWide_)
        return Pick(src, tap0, tap1);
    constexpr unsigned int size = s_maxBytes / sizeof(float) + s_maxVector;
    unsigned char colours0[size], colours1[size];
    Pick(src, colours0, colours1);
    WidenColours(tap0, colours0, numColumns_);
    WidenColours(tap1, colours1, numColumns_);
}

void ResamplingColumns::Pick(unsigned char const *src, unsigned char *tap0, unsigned char *tap1) const
{
    if (gather_.run)
    {
        gather_.run({numColumns_, windows_, controls_, src, tap0, tap1});
        return;
    }
    PickOneByOne(tap0, src, taps_, &AxisTaps::first, numColumns_, part_.sampleSize);
    if (tap1)
        PickOneByOne(tap1, src, taps_, &AxisTaps::second, numColumns_, part_.sampleSize);
}

BlendJob ResamplingColumns::MakeJob() const
{
    BlendJob job{};
    job.weights0 = weights0_;
    job.weights1 = weights1_;
    job.mask = mask_;
    job.count = numElements_;
    std::size_t const sourceEnd = (std::size_t{taps_[numColumns_ - 1].second} + 1) * part_.sampleSize;
    if (blend_.run)
        job.aheadStep = (sourceEnd - GetSourceStart()) * blend_.lanes / numElements_;
    return job;
}

void ResamplingColumns::Blend(BlendJob const &job) const
{
    if (blend_.run)
        return blend_.run(job);
    auto *const blendColumn = numRows_ == 1 ? BlendColumn<1> : numRows_ == 2 ? BlendColumn<2> : BlendColumn<4>;
    for (unsigned int i = 0; i < numColumns_; ++i)
        blendColumn(job, taps_[i], std::size_t{i} * part_.sampleSize + part_.offset, part_);
}

} // namespace quillmarsh
