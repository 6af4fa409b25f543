#include "source/dataobjects/resampling.h"

#include "source/dataobjects/resamplingcolumns.h"

#include <cstring>
#include <memory>

namespace quillmarsh
{
namespace
{

/// Samples that were picked from rows of the source, kept for the rows of the destination that share them.
class PickedRows
{
public:
    /// For another run of columns.
    void Forget() { std::fill_n(keys_, s_numSlots, s_noKey); }

    /// Picks what is not there yet of the source rows in `wanted`, and enters their samples into the job.
    void Fetch(std::size_t const *wanted, ResamplingColumns const &columns, unsigned char const *src,
               std::size_t rowSize, BlendJob &job)
    {
        for (unsigned int i = 0; i < job.numRows; ++i)
        {
            std::size_t const *slot = std::find(keys_, keys_ + s_numSlots, wanted[i]);
            if (slot == keys_ + s_numSlots)
                slot = Pick(FindFree(wanted, job.numRows), wanted[i], columns, src + wanted[i] * rowSize);
            job.tap0[i] = tap0_[slot - keys_];
            job.tap1[i] = tap1_[slot - keys_];
        }
    }

private:
    static constexpr unsigned int s_numSlots = BlendJob::s_maxRows;
    static constexpr std::size_t s_noKey = static_cast<std::size_t>(-1);

    /// There are as many slots as rows are ever wanted at once.
    std::size_t FindFree(std::size_t const *wanted, unsigned int numWanted) const
    {
        std::size_t slot = 0;
        while (std::find(wanted, wanted + numWanted, keys_[slot]) != wanted + numWanted)
            ++slot;
        return slot;
    }

    std::size_t const *Pick(std::size_t slot, std::size_t key, ResamplingColumns const &columns,
                            unsigned char const *row)
    {
        columns.Gather(row, tap0_[slot], tap1_[slot]);
        keys_[slot] = key;
        return keys_ + slot;
    }

    std::size_t keys_[s_numSlots];
    alignas(64) unsigned char tap0_[s_numSlots][ResamplingColumns::s_maxBytes];
    alignas(64) unsigned char tap1_[s_numSlots][ResamplingColumns::s_maxBytes];
};

/// All that a resampling needs besides its samples.
struct Workspace
{
    ResamplingColumns columns;
    PickedRows rows;
};

/// The weights of the rows around a place, and where these rows are in the source.
struct RowTaps
{
    unsigned int count;
    std::size_t rows[BlendJob::s_maxRows];
    float weights[BlendJob::s_maxRows];
};

RowTaps CombineTaps(unsigned int numDimensions, AxisTaps const &layer, AxisTaps const &row, std::size_t numRows)
{
    switch (numDimensions)
    {
    case 1:
        return {1, {0}, {1.0f}};
    case 2:
        return {2, {row.first, row.second}, {row.weight0, row.weight1}};
    default:
        return {4,
                {layer.first * numRows + row.first, layer.first * numRows + row.second,
                 layer.second * numRows + row.first, layer.second * numRows + row.second},
                {layer.weight0 * row.weight0, layer.weight0 * row.weight1, layer.weight1 * row.weight0,
                 layer.weight1 * row.weight1}};
    }
}

/// Names the two rows behind the last that a job needs: they are read next, as a rule.
void PointAhead(BlendJob &job, ResamplingColumns const &columns, SampleBlock<unsigned char const> const &src,
                std::size_t row, std::size_t rowSize)
{
    std::size_t const lastRow = std::size_t{src.numLayers} * src.numRows - 1;
    job.ahead0 = columns.GetSource(src.samples + std::min(row + 1, lastRow) * rowSize);
    job.ahead1 = columns.GetSource(src.samples + std::min(row + 2, lastRow) * rowSize);
    job.aheadSize = columns.GetSourceSize();
}

/// Does all rows of one run of columns, which starts at `dst`.
void BlendRun(Workspace &work, unsigned char *dst, SampleBlock<unsigned char> const &dstShape,
              SampleBlock<unsigned char const> const &src, unsigned int sampleSize, unsigned int numDimensions)
{
    std::size_t const dstRowSize = std::size_t{dstShape.numColumns} * sampleSize;
    std::size_t const srcRowSize = std::size_t{src.numColumns} * sampleSize;
    work.rows.Forget();
    AxisWalk layers(dstShape.numLayers, src.numLayers);
    for (unsigned int layer = 0; layer < dstShape.numLayers; ++layer)
    {
        AxisTaps const layerTaps = layers.NextLinear();
        AxisWalk rows(dstShape.numRows, src.numRows);
        for (unsigned int row = 0; row < dstShape.numRows; ++row, dst += dstRowSize)
        {
            RowTaps const taps = CombineTaps(numDimensions, layerTaps, rows.NextLinear(), src.numRows);
            BlendJob job;
            job.numRows = taps.count;
            job.dst = dst;
            std::copy_n(taps.weights, taps.count, job.rowWeights);
            work.rows.Fetch(taps.rows, work.columns, src.samples, srcRowSize, job);
            PointAhead(job, work.columns, src, taps.rows[taps.count - 1], srcRowSize);
            work.columns.Blend(job);
        }
    }
}

/// Does all rows of one run of columns, which starts at `dst`.
void PickRun(ResamplingColumns const &columns, unsigned char *dst, SampleBlock<unsigned char> const &dstShape,
             SampleBlock<unsigned char const> const &src, unsigned int sampleSize)
{
    std::size_t const dstRowSize = std::size_t{dstShape.numColumns} * sampleSize;
    std::size_t const srcRowSize = std::size_t{src.numColumns} * sampleSize;
    AxisWalk layers(dstShape.numLayers, src.numLayers);
    for (unsigned int layer = 0; layer < dstShape.numLayers; ++layer)
    {
        unsigned char const *const srcLayer =
            src.samples + std::size_t{layers.NextNearest()} * src.numRows * srcRowSize;
        unsigned char const *previous = nullptr;
        AxisWalk rows(dstShape.numRows, src.numRows);
        for (unsigned int row = 0; row < dstShape.numRows; ++row, dst += dstRowSize)
        {
            unsigned char const *const srcRow = srcLayer + rows.NextNearest() * srcRowSize;
            if (srcRow == previous)
                std::memcpy(dst, dst - dstRowSize, columns.GetByteSize());
            else
                columns.Gather(srcRow, dst, nullptr);
            previous = srcRow;
        }
    }
}

/// Goes through the runs of columns: `set(walk, n)` sets up the next `n`, and `run(dst)` does all rows of them.
template<typename Set, typename Run>
void ForEachRun(SampleBlock<unsigned char> const &dst, unsigned int srcColumns, unsigned int sampleSize, Set set,
                Run run)
{
    AxisWalk walk(dst.numColumns, srcColumns);
    unsigned int const runLength = ResamplingColumns::GetRunLength(dst.numColumns, sampleSize);
    for (unsigned int column = 0; column < dst.numColumns;)
    {
        unsigned int const numColumns = std::min(runLength, dst.numColumns - column);
        set(walk, numColumns);
        run(dst.samples + std::size_t{column} * sampleSize);
        column += numColumns;
    }
}

} // namespace

void ResampleNearest(SampleBlock<unsigned char> const &dst, SampleBlock<unsigned char const> const &src,
                     unsigned int sampleSize)
{
    auto const columns = std::make_unique_for_overwrite<ResamplingColumns>();
    ForEachRun(
        dst, src.numColumns, sampleSize,
        [&](AxisWalk &walk, unsigned int numColumns)
        { columns->SetNearest(walk, numColumns, src.numColumns, sampleSize); },
        [&](unsigned char *start) { PickRun(*columns, start, dst, src, sampleSize); });
}

void ResampleLinear(SampleBlock<unsigned char> const &dst, SampleBlock<unsigned char const> const &src,
                    SamplePart const &part, unsigned int numDimensions)
{
    auto const work = std::make_unique_for_overwrite<Workspace>();
    ForEachRun(
        dst, src.numColumns, part.sampleSize,
        [&](AxisWalk &walk, unsigned int numColumns)
        { work->columns.SetLinear(walk, numColumns, src.numColumns, part); },
        [&](unsigned char *start) { BlendRun(*work, start, dst, src, part.sampleSize, numDimensions); });
}

} // namespace quillmarsh
