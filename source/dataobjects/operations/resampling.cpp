#include "source/dataobjects/operations/resampling.h"

#include "source/dataobjects/operations/resamplingcolumns.h"

#include <cstring>
#include <memory>

namespace quillmarsh
{
namespace
{

/// The source rows of a row of the destination.
struct RowTaps
{
    unsigned int count;
    std::size_t rows[BlendJob::s_maxRows];
    unsigned int slots[BlendJob::s_maxRows]; ///< see PickedRows
};

/// Samples that were picked from rows of the source, kept for the rows of the destination that share them. The rows of
/// one place are consecutive, and so are the layers, so the parity of row and layer gives each a slot of its own.
class PickedRows
{
public:
    static unsigned int GetSlot(unsigned int layer, unsigned int row) { return (layer & 1) << 1 | (row & 1); }

    /// Drops the samples, for another run of columns.
    void Forget() { std::fill_n(keys_, s_numSlots, s_noKey); }

    /// Picks the source rows that are missing, and enters the samples of all into the job.
    void Fetch(RowTaps const &taps, ResamplingColumns const &columns, unsigned char const *src, std::size_t rowSize,
               BlendJob &job)
    {
        for (unsigned int i = 0; i < taps.count; ++i)
        {
            unsigned int const slot = taps.slots[i];
            if (keys_[slot] != taps.rows[i])
            {
                columns.Gather(src + taps.rows[i] * rowSize, tap0_[slot], tap1_[slot]);
                keys_[slot] = taps.rows[i];
            }
            job.tap0[i] = tap0_[slot];
            job.tap1[i] = tap1_[slot];
        }
    }

private:
    static constexpr unsigned int s_numSlots = BlendJob::s_maxRows;
    static constexpr std::size_t s_noKey = static_cast<std::size_t>(-1);
    // All slots are read at the same time, so their starts must not share lines of the cache.
    static constexpr std::size_t s_slotSize = ResamplingColumns::s_maxBytes + ResamplingColumns::s_stagger;

    std::size_t keys_[s_numSlots];
    alignas(64) unsigned char tap0_[s_numSlots][s_slotSize];
    alignas(64) unsigned char tap1_[s_numSlots][s_slotSize];
};

/// The working memory of a resampling.
struct Workspace
{
    ResamplingColumns columns;
    PickedRows rows;
};

/// Finds the source rows of a place, and sets their weights.
RowTaps CombineTaps(unsigned int numDimensions, AxisTaps const &layer, AxisTaps const &row, std::size_t numRows,
                    float *weights)
{
    if (numDimensions == 1)
    {
        weights[0] = 1.0f;
        return {1, {0}, {0}};
    }
    unsigned int const slot0 = PickedRows::GetSlot(0, row.first), slot1 = PickedRows::GetSlot(0, row.second);
    if (numDimensions == 2)
    {
        weights[0] = row.weight0;
        weights[1] = row.weight1;
        return {2, {row.first, row.second}, {slot0, slot1}};
    }
    weights[0] = layer.weight0 * row.weight0;
    weights[1] = layer.weight0 * row.weight1;
    weights[2] = layer.weight1 * row.weight0;
    weights[3] = layer.weight1 * row.weight1;
    std::size_t const start0 = layer.first * numRows, start1 = layer.second * numRows;
    unsigned int const layerSlot0 = PickedRows::GetSlot(layer.first, 0);
    unsigned int const layerSlot1 = PickedRows::GetSlot(layer.second, 0);
    return {4,
            {start0 + row.first, start0 + row.second, start1 + row.first, start1 + row.second},
            {layerSlot0 | slot0, layerSlot0 | slot1, layerSlot1 | slot0, layerSlot1 | slot1}};
}

/// Computes the weighted sums in all rows of one run of columns, which starts at `dst`.
void BlendRun(Workspace &work, unsigned char *dst, SampleBlock<unsigned char> const &dstShape,
              SampleBlock<unsigned char const> const &src, unsigned int sampleSize, unsigned int numDimensions)
{
    std::size_t const dstRowSize = std::size_t{dstShape.numColumns} * sampleSize;
    std::size_t const srcRowSize = std::size_t{src.numColumns} * sampleSize;
    std::size_t const lastRow = std::size_t{src.numLayers} * src.numRows - 1;
    unsigned char const *const srcStart = src.samples + work.columns.GetSourceStart();
    BlendJob job = work.columns.MakeJob();
    work.rows.Forget();
    AxisWalk layers(dstShape.numLayers, src.numLayers);
    for (unsigned int layer = 0; layer < dstShape.numLayers; ++layer)
    {
        AxisTaps const layerTaps = layers.NextLinear();
        AxisWalk rows(dstShape.numRows, src.numRows);
        for (unsigned int row = 0; row < dstShape.numRows; ++row, dst += dstRowSize)
        {
            RowTaps const taps = CombineTaps(numDimensions, layerTaps, rows.NextLinear(), src.numRows, job.rowWeights);
            job.dst = dst;
            work.rows.Fetch(taps, work.columns, src.samples, srcRowSize, job);
            // Usually the two rows after the last one are read next.
            std::size_t const last = taps.rows[taps.count - 1];
            job.ahead0 = srcStart + std::min(last + 1, lastRow) * srcRowSize;
            job.ahead1 = srcStart + std::min(last + 2, lastRow) * srcRowSize;
            work.columns.Blend(job);
        }
    }
}

/// Picks the samples in all rows of one run of columns, which starts at `dst`.
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

/// Goes through the runs of columns: `set(walk, n)` sets up the next `n` columns, and `run(dst)` computes all their
/// rows.
template<typename Set, typename Run>
void ForEachRun(SampleBlock<unsigned char> const &dst, unsigned int srcColumns, unsigned int sampleSize,
                unsigned int pickedSize, Set set, Run run)
{
    AxisWalk walk(dst.numColumns, srcColumns);
    unsigned int const runLength = ResamplingColumns::GetRunLength(dst.numColumns, pickedSize);
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
        dst, src.numColumns, sampleSize, sampleSize,
        [&](AxisWalk &walk, unsigned int numColumns)
        { columns->SetNearest(walk, numColumns, src.numColumns, sampleSize); },
        [&](unsigned char *start) { PickRun(*columns, start, dst, src, sampleSize); });
}

void ResampleLinear(SampleBlock<unsigned char> const &dst, SampleBlock<unsigned char const> const &src,
                    SamplePart const &part, unsigned int numDimensions)
{
    auto const work = std::make_unique_for_overwrite<Workspace>();
    // Each row of the source is used for several rows of a larger destination.
    bool const reusesRows = numDimensions > 1 && dst.numRows >= src.numRows && dst.numLayers >= src.numLayers;
    bool const areWide = reusesRows && ResamplingColumns::CanBeWide(part);
    unsigned int const pickedSize = part.sampleSize * (areWide ? unsigned{sizeof(float)} : 1);
    ForEachRun(
        dst, src.numColumns, part.sampleSize, pickedSize,
        [&](AxisWalk &walk, unsigned int numColumns)
        { work->columns.SetLinear(walk, numColumns, src.numColumns, part, 1u << (numDimensions - 1), areWide); },
        [&](unsigned char *start) { BlendRun(*work, start, dst, src, part.sampleSize, numDimensions); });
}

} // namespace quillmarsh
