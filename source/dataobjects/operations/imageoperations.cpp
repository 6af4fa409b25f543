#include <quillmarsh/dataobjects/imageoperations.h>

#include "source/dataobjects/operations/inplacekernels.h"
#include "source/dataobjects/transfer/sampleparts.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quillmarsh
{
namespace
{

/// Sets bytes of each element to one of two patterns, which alternate. Begins with the first pattern.
class CheckerboardProcessor final : public element_processors::ElementProcessorInplace<unsigned char>
{
public:
    CheckerboardProcessor(unsigned int numBytes, unsigned char const *first, unsigned char const *second,
                          unsigned int blockRows, unsigned int blockColumns)
        : numBytes_(numBytes),
          first_(first),
          second_(second),
          blockRows_(blockRows),
          blockColumns_(blockColumns)
    {
    }

    void BeginDimension(unsigned int dimension) override
    {
        if (dimension == 0)
        {
            rowFirst_ = first_;
            rowSecond_ = second_;
            row_ = 0;
        }
        else
        {
            current_ = rowFirst_;
            other_ = rowSecond_;
            column_ = 0;
        }
    }

    void Process(unsigned char *element) override
    {
        std::copy_n(current_, numBytes_, element);
        CountTo(blockColumns_, column_, current_, other_);
    }

    void EndDimension(unsigned int dimension) override
    {
        if (dimension == 1)
            CountTo(blockRows_, row_, rowFirst_, rowSecond_);
    }

private:
    static void CountTo(unsigned int limit, unsigned int &counter, unsigned char const *&one,
                        unsigned char const *&other)
    {
        if (++counter < limit)
            return;
        counter = 0;
        std::swap(one, other);
    }

    unsigned int numBytes_;
    unsigned char const *first_, *second_;
    unsigned int blockRows_, blockColumns_;
    unsigned char const *rowFirst_ = nullptr, *rowSecond_ = nullptr, *current_ = nullptr, *other_ = nullptr;
    unsigned int row_ = 0, column_ = 0;
};

/// Runs the processor on the first rows of both kinds, and copies what it writes to all other rows.
void DrawCheckerboard(ImageBase &image, unsigned int offset, std::span<unsigned char const> first,
                      std::span<unsigned char const> second, unsigned int blockRows, unsigned int blockColumns)
{
    blockRows = std::clamp(blockRows, 1u, image.GetNumRows());
    auto const numBytes = static_cast<unsigned int>(first.size());
    CheckerboardProcessor processor(numBytes, first.data(), second.data(), 1, std::max(blockColumns, 1u));
    BytePattern mask(image.GetSampleByteSize());
    for (unsigned int i = 0; i < numBytes; ++i)
        mask.Set(offset + i, std::array<unsigned char, 1>{0xFF});

    // One row of each kind is enough for the processor: two blocks of one row.
    std::ptrdiff_t const size = image.GetSampleByteSize();
    std::ptrdiff_t const rowStep = static_cast<std::ptrdiff_t>(std::size_t{image.GetRowByteSize()} * blockRows);
    unsigned int const numKinds = image.GetNumRows() > blockRows ? 2 : 1;
    element_processors::ProcessElementsInplace2D(processor, numKinds, image.GetNumColumns(),
                                                 image.GetSamplesB() + offset, {rowStep, size});
    for (unsigned int row = 0; row < image.GetNumRows(); ++row)
    {
        unsigned int const original = row / blockRows % 2 * blockRows;
        if (row == original)
            continue;
        unsigned char *const to = image.ImageBase::SampleB(row, 0);
        unsigned char const *const from = image.ImageBase::SampleB(original, 0);
        std::size_t const done = MergeSamples(to, from, image.GetNumColumns(), mask);
        for (std::size_t column = done; column < image.GetNumColumns(); ++column)
            std::copy_n(from + column * static_cast<std::size_t>(size) + offset, numBytes,
                        to + column * static_cast<std::size_t>(size) + offset);
    }
}

} // namespace

ImageBase *CloneImage(ImageBase const &src)
{
    AutoPtr<ImageBase> clone(ManufactureImage(src.GetSampleFormat(), src.GetNumRows(), src.GetNumColumns()));
    if (clone)
        CopySamples2D(*clone, src, 0, 0, 0, 0, 0, 0, false);
    return clone.release();
}

void CopySamples2D(ImageBase &dst, ImageBase const &src, unsigned int numRows, unsigned int numColumns,
                   unsigned int dstRow, unsigned int dstColumn, unsigned int srcRow, unsigned int srcColumn,
                   bool flipRows)
{
    if (numRows == 0)
        numRows = src.GetNumRows();
    if (numColumns == 0)
        numColumns = src.GetNumColumns();
    bool const fitsDstRows = FitsIn(dst.GetNumRows(), dstRow, numRows);
    bool const fitsDstColumns = FitsIn(dst.GetNumColumns(), dstColumn, numColumns);
    bool const fitsSrcRows = FitsIn(src.GetNumRows(), srcRow, numRows);
    bool const fitsSrcColumns = FitsIn(src.GetNumColumns(), srcColumn, numColumns);
    QUILLMARSH_ASSERT(dst.CheckSampleFormatMatch(src), "Sample-format mismatch.");
    QUILLMARSH_ASSERT(dst.GetNumSamples() != 0, "Destination is empty.");
    QUILLMARSH_ASSERT(src.GetNumSamples() != 0, "Source is empty.");
    QUILLMARSH_ASSERT(fitsDstRows, "Destination-row-offset/row-count out of range.");
    QUILLMARSH_ASSERT(fitsDstColumns, "Destination-column-offset/column-count out of range.");
    QUILLMARSH_ASSERT(fitsSrcRows, "Source-row-offset/row-count out of range.");
    QUILLMARSH_ASSERT(fitsSrcColumns, "Source-column-offset/column-count out of range.");
    bool const fits = fitsDstRows && fitsDstColumns && fitsSrcRows && fitsSrcColumns;
    if (!fits || numRows == 0 || numColumns == 0 || !dst.CheckSampleByteSizeMatch(src))
        return;

    unsigned char *const to = dst.ImageBase::SampleB(dstRow, dstColumn);
    unsigned char const *const from = src.ImageBase::SampleB(srcRow, srcColumn);
    std::size_t const dstStep = dst.GetRowByteSize(), srcStep = src.GetRowByteSize();
    std::size_t const byteSize = std::size_t{numColumns} * dst.GetSampleByteSize();
    if (!flipRows && byteSize == dstStep && byteSize == srcStep)
    {
        CopyBlock(to, from, byteSize * numRows);
        return;
    }
    for (std::size_t row = 0; row < numRows; ++row)
        CopyBlock(to + row * dstStep, from + (flipRows ? numRows - 1 - row : row) * srcStep, byteSize);
}

void FlipRows(ImageBase &image)
{
    FlipRowsOfBlock(image.GetSamplesB(), image.GetNumRows(), image.GetRowByteSize());
}

void FlipColumns(ImageBase &image)
{
    FlipColumnsOfBlock(image.GetSamplesB(), image.GetNumRows(), image.GetNumColumns(), image.GetSampleByteSize());
}

void FillBlock(ImageBase &image, unsigned int byteOffset, unsigned char value, unsigned int row, unsigned int numRows,
               unsigned int column, unsigned int numColumns)
{
    bool const holds = HoldsPart(image, byteOffset, 1);
    bool const isInside = row < image.GetNumRows() && FitsIn(image.GetNumRows(), row, numRows) &&
                          column < image.GetNumColumns() && FitsIn(image.GetNumColumns(), column, numColumns);
    QUILLMARSH_ASSERT(holds, "Byte-offset out of range.");
    QUILLMARSH_ASSERT(isInside, "Block-indices out of range");
    if (!holds || !isInside)
        return;
    constexpr std::array<unsigned char, 1> mask{0xFF};
    bool const isAsWide = numColumns == image.GetNumColumns();
    std::size_t const numRuns = isAsWide ? std::min(numRows, 1u) : numRows;
    std::size_t const count = isAsWide ? std::size_t{numRows} * numColumns : numColumns;
    unsigned char *const start = image.ImageBase::SampleB(row, column);
    SampleFill const fill(image.GetSampleByteSize(), byteOffset, mask, {&value, 1});
    for (std::size_t i = 0; i < numRuns; ++i)
        fill.Run(SampleRun(start + i * image.GetRowByteSize(), count, image));
}

void GenerateCheckerboard(ImageBase &image, unsigned int byteOffset, unsigned char firstValue,
                          unsigned char secondValue, unsigned int blockRows, unsigned int blockColumns)
{
    bool const holds = HoldsPart(image, byteOffset, 1);
    QUILLMARSH_ASSERT(holds, "Byte-offset out of range.");
    if (holds && image.GetNumSamples() != 0)
        DrawCheckerboard(image, byteOffset, std::span(&firstValue, 1), std::span(&secondValue, 1), blockRows,
                         blockColumns);
}

void GenerateCheckerboard(ImageBase &image, unsigned int tripletOffset, color4b firstColor, color4b secondColor,
                          unsigned int blockRows, unsigned int blockColumns)
{
    bool const holds = HoldsPart(image, tripletOffset, 3);
    QUILLMARSH_ASSERT(holds, "Triplet-offset out of range.");
    if (holds && image.GetNumSamples() != 0)
        DrawCheckerboard(image, tripletOffset, std::span(std::as_const(firstColor).ToPtr(), 3),
                         std::span(std::as_const(secondColor).ToPtr(), 3), blockRows, blockColumns);
}

} // namespace quillmarsh
