#include "source/dataobjects/scaling/scalingaxis.h"
#include "source/dataobjects/scaling/scalingblocks.h"
#include "source/dataobjects/scaling/scalingkernels.h"

#include <quillmarsh/dataobjects/sampleprocessors.h>

#include <algorithm>
#include <cstring>
#include <type_traits>
#include <vector>

namespace quillmarsh
{
namespace
{

/// Approximate number of samples of a row that are summed before the next row is begun.
constexpr std::size_t s_chunkSize = 2048;

/// Elements of a row of groups.
constexpr std::size_t s_groupSize = 4;

template<typename Element>
constexpr float s_largest = std::is_same_v<Element, float> ? 1.0f : 255.0f;

float ToFloat(unsigned char const *at)
{
    return static_cast<float>(*at);
}

float ToFloat(float const *at)
{
    return *at;
}

/// Stores a sum, clamped in the same way as by vectors, where NaN becomes 0.
void StoreClamped(float sum, unsigned char *at)
{
    float const positive = sum > 0 ? sum : 0;
    *at = static_cast<unsigned char>(sample_processors::Round(positive < 255 ? positive : 255));
}

void StoreClamped(float sum, float *at)
{
    float const positive = sum > 0 ? sum : 0;
    *at = positive < 1 ? positive : 1;
}

template<typename Element>
void Run(RowBlend<Element> const &job)
{
    for (std::size_t i = RunKernel(job); i < job.count; ++i)
    {
        float sum = ToFloat(job.rows[0] + i) * job.weights[0];
        for (std::size_t row = 1; row < job.numRows; ++row)
            sum += ToFloat(job.rows[row] + i) * job.weights[row];
        job.sums[i] = sum;
    }
}

void Run(RowInterleaving const &job)
{
    for (std::size_t i = RunKernel(job); i < job.count; ++i)
    {
        for (std::size_t row = 0; row < s_groupSize; ++row)
            job.groups[i * s_groupSize + row] = job.rows[row][i];
    }
}

template<typename Element>
void Run(ColumnBlend<Element> const &job)
{
    for (std::size_t i = RunKernel(job); i < job.count; ++i)
    {
        float const *const at = job.groups + std::size_t{job.first[i]} * s_groupSize;
        for (std::size_t k = 0; k < s_groupSize; ++k)
        {
            float sum = at[k] * job.weights[job.start[i]];
            for (std::size_t tap = 1; tap < job.start[i + 1] - job.start[i]; ++tap)
                sum += at[tap * s_groupSize + k] * job.weights[job.start[i] + tap];
            StoreClamped(sum, job.dst + i * s_groupSize + k);
        }
    }
}

void Run(FactorBlend const &job)
{
    for (std::size_t i = RunKernel(job); i < job.count; ++i)
    {
        float const *const at = job.row + i * job.factor;
        float sum = at[0] * job.weights[0];
        for (std::size_t tap = 1; tap < job.factor; ++tap)
            sum += at[tap] * job.weights[tap];
        StoreClamped(sum, job.dst + i);
    }
}

void Run(FloatHalving const &job)
{
    for (std::size_t i = RunKernel(job); i < job.count; ++i)
    {
        float const *const a = job.row0 + 2 * i, *const b = job.row1 + 2 * i;
        float const even = a[0] * job.rowWeights[0] + b[0] * job.rowWeights[1];
        float const odd = a[1] * job.rowWeights[0] + b[1] * job.rowWeights[1];
        StoreClamped(even * job.weights[0] + odd * job.weights[1], job.dst + i);
    }
}

/// Columns of the destination that are computed at a time, with the columns of the source that they need.
struct ColumnRun
{
    std::size_t begin, end;
    std::size_t srcBegin, srcEnd;
};

/// Scales runs of columns: first along the layers, then along the rows, then along the columns. Samples of fewer than
/// four elements are put side by side with those of the next rows, so that the last step always works on groups of
/// four.
template<typename Element>
class WeightedScaler
{
public:
    WeightedScaler(Element *dst, SampleBlock<unsigned char> const &dstShape, Element const *src,
                   SampleBlock<unsigned char const> const &srcShape, unsigned int numElements, eScaleFilter filter)
        : dst_(dst),
          src_(src),
          dstShape_(dstShape),
          srcShape_(srcShape),
          size_(numElements),
          layers_(MakeScalingAxis(dstShape.numLayers, srcShape.numLayers, filter)),
          rows_(MakeScalingAxis(dstShape.numRows, srcShape.numRows, filter)),
          columns_(MakeScalingAxis(dstShape.numColumns, srcShape.numColumns, filter)),
          dstRowSize_(std::size_t{dstShape.numColumns} * size_),
          srcRowSize_(std::size_t{srcShape.numColumns} * size_)
    {
        unsigned int const factor = srcShape.numColumns / dstShape.numColumns;
        bool const isWhole = filter == e_scale_area && factor * dstShape.numColumns == srcShape.numColumns;
        factor_ = std::is_same_v<Element, float> && isWhole && factor >= 2 && factor <= 4 ? factor : 0;
    }

    void Run()
    {
        for (std::size_t column = 0; column < columns_.GetCount();)
        {
            ColumnRun const run = FindRun(column);
            sums_.resize(s_groupSize / size_ * GetSpan(run));
            groups_.resize((run.srcEnd - run.srcBegin) * s_groupSize);
            out_.resize((run.end - run.begin) * s_groupSize);
            // Columns count from the begin of the run.
            first_.assign(columns_.first.begin() + static_cast<std::ptrdiff_t>(run.begin),
                          columns_.first.begin() + static_cast<std::ptrdiff_t>(run.end));
            for (unsigned int &first : first_)
                first -= static_cast<unsigned int>(run.srcBegin);
            for (std::size_t layer = 0; layer < dstShape_.numLayers; ++layer)
                ScaleLayer(run, layer);
            column = run.end;
        }
    }

private:
    /// Returns the number of elements in a row of a run's source.
    std::size_t GetSpan(ColumnRun const &run) const { return (run.srcEnd - run.srcBegin) * size_; }

    ColumnRun FindRun(std::size_t begin) const
    {
        std::size_t const srcBegin = columns_.first[begin];
        ColumnRun run = {begin, begin, srcBegin, srcBegin};
        while (run.end < columns_.GetCount() && (run.end == begin || columns_.first[run.end] < srcBegin + s_chunkSize))
        {
            ScalingAxis::Taps const taps = columns_.GetTaps(run.end);
            run.srcEnd = std::max<std::size_t>(run.srcEnd, std::size_t{taps.first} + taps.count);
            ++run.end;
        }
        return run;
    }

    void ScaleLayer(ColumnRun const &run, std::size_t layer)
    {
        ScalingAxis::Taps const taps = layers_.GetTaps(layer);
        Element *const dst = dst_ + layer * dstShape_.numRows * dstRowSize_;
        std::size_t const layerSize = srcShape_.numRows * srcRowSize_;
        Element const *const src = src_ + taps.first * layerSize + run.srcBegin * size_;
        if (taps.count == 1)
            return ScaleRows(run, dst, src, srcRowSize_);
        std::size_t const span = GetSpan(run);
        slice_.resize(srcShape_.numRows * span);
        std::vector<Element const *> rows(taps.count);
        for (std::size_t row = 0; row < srcShape_.numRows; ++row)
        {
            for (std::size_t i = 0; i < taps.count; ++i)
                rows[i] = src + i * layerSize + row * srcRowSize_;
            quillmarsh::Run(RowBlend<Element>{rows.data(), taps.weights, taps.count, slice_.data() + row * span, span});
        }
        ScaleRows(run, dst, slice_.data(), span);
    }

    /// Scales the rows of a layer, whose rows of the source are a number of elements apart.
    template<typename Source>
    void ScaleRows(ColumnRun const &run, Element *dst, Source const *src, std::size_t rowSize)
    {
        std::size_t const together = s_groupSize / size_, span = GetSpan(run);
        std::vector<Source const *> taken;
        for (std::size_t row = 0; row < dstShape_.numRows; row += together)
        {
            std::size_t const numRows = std::min<std::size_t>(together, dstShape_.numRows - row);
            for (std::size_t i = 0; i < numRows; ++i)
            {
                ScalingAxis::Taps const taps = rows_.GetTaps(row + i);
                if (Halves<Source>(taps))
                {
                    HalveRow(run, dst + (row + i) * dstRowSize_ + run.begin, src + taps.first * rowSize, rowSize, taps);
                    continue;
                }
                taken.resize(taps.count);
                for (std::size_t tap = 0; tap < taps.count; ++tap)
                    taken[tap] = src + (taps.first + tap) * rowSize;
                quillmarsh::Run(
                    RowBlend<Source>{taken.data(), taps.weights, taps.count, sums_.data() + i * span, span});
            }
            if (!Halves<Source>(rows_.GetTaps(row)))
                ScaleColumns(run, dst + row * dstRowSize_ + run.begin * size_, numRows);
        }
    }

    /// True when a row consists of means of two by two floats.
    template<typename Source>
    bool Halves(ScalingAxis::Taps const &taps) const
    {
        return std::is_same_v<Source, float> && factor_ == 2 && taps.count == 2;
    }

    template<typename Source>
    void HalveRow([[maybe_unused]] ColumnRun const &run, [[maybe_unused]] Element *dst,
                  [[maybe_unused]] Source const *src, [[maybe_unused]] std::size_t rowSize,
                  [[maybe_unused]] ScalingAxis::Taps const &taps)
    {
        if constexpr (std::is_same_v<Element, float>)
            quillmarsh::Run(FloatHalving{src, src + rowSize, taps.weights, columns_.GetTaps(run.begin).weights,
                                         s_largest<float>, dst, run.end - run.begin});
    }

    /// Scales the columns of the next rows of the destination, whose sums are complete.
    void ScaleColumns(ColumnRun const &run, Element *dst, std::size_t numRows)
    {
        if constexpr (std::is_same_v<Element, float>)
        {
            float const *const weights = columns_.GetTaps(run.begin).weights;
            for (std::size_t row = 0; factor_ != 0 && row < numRows; ++row)
                quillmarsh::Run(FactorBlend{sums_.data() + row * GetSpan(run), factor_, weights, s_largest<float>,
                                            dst + row * dstRowSize_, run.end - run.begin});
            if (factor_ != 0)
                return;
        }
        bool const isGroup = size_ == s_groupSize;
        quillmarsh::Run(ColumnBlend<Element>{isGroup ? sums_.data() : MakeGroups(run), first_.data(),
                                             columns_.start.data() + run.begin, columns_.weights.data(),
                                             s_largest<Element>, isGroup ? dst : out_.data(), run.end - run.begin});
        for (std::size_t row = 0; !isGroup && row < numRows; ++row)
        {
            if (size_ == 1)
                TakeFromGroups<1>(dst + row * dstRowSize_, row, run.end - run.begin);
            else
                TakeFromGroups<2>(dst + row * dstRowSize_, row, run.end - run.begin);
        }
    }

    /// Takes one row's samples out of the groups.
    template<std::size_t size>
    void TakeFromGroups(Element *dst, std::size_t row, std::size_t count) const
    {
        Element const *out = out_.data() + row * size;
        for (std::size_t i = 0; i < count; ++i, out += s_groupSize, dst += size)
            std::copy_n(out, size, dst);
    }

    /// Puts the sums of consecutive rows side by side.
    float const *MakeGroups(ColumnRun const &run)
    {
        std::size_t const span = GetSpan(run);
        float const *const sums = sums_.data();
        if (size_ == 1)
            quillmarsh::Run(
                RowInterleaving{{sums, sums + span, sums + 2 * span, sums + 3 * span}, groups_.data(), span});
        for (std::size_t i = 0; size_ == 2 && i < span; i += 2)
        {
            std::copy_n(sums + i, 2, groups_.data() + 2 * i);
            std::copy_n(sums + span + i, 2, groups_.data() + 2 * i + 2);
        }
        return groups_.data();
    }

    Element *dst_;
    Element const *src_;
    SampleBlock<unsigned char> dstShape_;
    SampleBlock<unsigned char const> srcShape_;
    std::size_t size_; ///< of a sample, in elements
    ScalingAxis layers_, rows_, columns_;
    std::size_t dstRowSize_, srcRowSize_; ///< in elements
    /// Number of columns of the source for each of the destination if FactorBlend can sum them, else 0.
    std::size_t factor_ = 0;

    /// @name Buffers of the present run of columns
    /// @{
    std::vector<unsigned int> first_;
    std::vector<float> slice_;  ///< the rows of a layer
    std::vector<float> sums_;   ///< the rows that make up groups
    std::vector<float> groups_; ///< the same, side by side
    std::vector<Element> out_;
    /// @}
};

/// Scales a single row, as for a signal, without buffers.
template<typename Element>
void ScaleSingleRow(Element *dst, Element const *src, std::size_t size, ScalingAxis const &columns)
{
    for (std::size_t i = 0; i < columns.GetCount(); ++i)
    {
        ScalingAxis::Taps const taps = columns.GetTaps(i);
        for (std::size_t k = 0; k < size; ++k)
        {
            Element const *const at = src + taps.first * size + k;
            float sum = ToFloat(at) * taps.weights[0];
            for (std::size_t tap = 1; tap < taps.count; ++tap)
                sum += ToFloat(at + tap * size) * taps.weights[tap];
            StoreClamped(sum, dst + i * size + k);
        }
    }
}

template<typename Element>
void Scale(Element *dst, SampleBlock<unsigned char> const &dstShape, Element const *src,
           SampleBlock<unsigned char const> const &srcShape, unsigned int numElements, eScaleFilter filter)
{
    bool const isRow = std::max({dstShape.numLayers, dstShape.numRows, srcShape.numLayers, srcShape.numRows}) == 1;
    if (isRow)
        ScaleSingleRow(dst, src, numElements, MakeScalingAxis(dstShape.numColumns, srcShape.numColumns, filter));
    else
        WeightedScaler<Element>(dst, dstShape, src, srcShape, numElements, filter).Run();
}

} // namespace

void ScaleByWeights(SampleBlock<unsigned char> const &dst, SampleBlock<unsigned char const> const &src,
                    unsigned int numElements, bool areFloats, eScaleFilter filter)
{
    if (areFloats)
        Scale(reinterpret_cast<float *>(dst.samples), dst, reinterpret_cast<float const *>(src.samples), src,
              numElements, filter);
    else
        Scale(dst.samples, dst, src.samples, src, numElements, filter);
}

} // namespace quillmarsh
