#include "source/dataobjects/scaling/scalingblocks.h"

#include "source/dataobjects/scaling/scalingkernels.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace quillmarsh
{
namespace
{

/// Approximate number of bytes of a row that are summed before the next row is begun.
constexpr std::size_t s_chunkSize = 16384;

/// Divides sums of `area` bytes by it, with halves rounded up.
class RoundedMean
{
public:
    explicit RoundedMean(std::uint64_t area) : area_(area), inverse_((std::uint64_t{1} << s_shift) / area + 1) {}

    unsigned char operator()(std::uint64_t total) const
    {
        std::uint64_t const rounded = total + area_ / 2;
        // For areas up to this one, the inverse is exact enough for every sum of bytes.
        return static_cast<unsigned char>(area_ <= 65535 ? rounded * inverse_ >> s_shift : rounded / area_);
    }

private:
    static constexpr int s_shift = 40;

    std::uint64_t area_, inverse_;
};

void Run(RowTotal const &job)
{
    for (std::size_t i = RunKernel(job); i < job.count; ++i)
    {
        unsigned int total = 0;
        for (std::size_t row = 0; row < job.numRows; ++row)
            total += job.rows[row][i];
        job.totals[i] = static_cast<std::uint16_t>(total);
    }
}

void Run(RowHalving const &job)
{
    std::size_t const size = job.sampleSize;
    for (std::size_t i = RunKernel(job); i < job.count; ++i)
    {
        unsigned char const *const a = job.row0 + 2 * i * size, *const b = job.row1 + 2 * i * size;
        for (std::size_t k = 0; k < size; ++k)
            job.dst[i * size + k] = static_cast<unsigned char>((a[k] + a[k + size] + b[k] + b[k + size] + 2) / 4);
    }
}

struct Factors
{
    unsigned int layer, row, column;
    std::uint64_t GetArea() const { return std::uint64_t{layer} * row * column; }
};

/// Scales one row after the other.
class WholeFactorScaler
{
public:
    WholeFactorScaler(SampleBlock<unsigned char> const &dst, SampleBlock<unsigned char const> const &src,
                      unsigned int numElements)
        : dst_(dst),
          src_(src),
          size_(numElements),
          factors_{src.numLayers / dst.numLayers, src.numRows / dst.numRows, src.numColumns / dst.numColumns},
          mean_(factors_.GetArea()),
          chunk_(std::clamp<std::size_t>(s_chunkSize / size_ / factors_.column, 1, dst.numColumns))
    {
        rows_.resize(std::size_t{factors_.layer} * factors_.row);
        std::size_t const count = chunk_ * factors_.column * size_;
        if (rows_.size() <= RowTotal::s_maxRows)
            totals_.resize(count);
        else
            bigTotals_.resize(count);
    }

    void Run()
    {
        std::size_t const rowSize = std::size_t{dst_.numColumns} * size_;
        unsigned char *dst = dst_.samples;
        for (unsigned int layer = 0; layer < dst_.numLayers; ++layer)
        {
            for (unsigned int row = 0; row < dst_.numRows; ++row, dst += rowSize)
            {
                FindRows(layer, row);
                if (factors_.column == 2 && rows_.size() == 2)
                    quillmarsh::Run(RowHalving{rows_[0], rows_[1], size_, dst, dst_.numColumns});
                else if (factors_.GetArea() == 1)
                    std::memcpy(dst, rows_[0], rowSize);
                else
                    ScaleRow(dst);
            }
        }
    }

private:
    /// Finds the rows of the source that are under a row of the destination.
    void FindRows(unsigned int layer, unsigned int row)
    {
        std::size_t const rowSize = std::size_t{src_.numColumns} * size_;
        auto found = rows_.begin();
        for (std::size_t i = 0; i < factors_.layer; ++i)
        {
            std::size_t const first =
                (std::size_t{layer} * factors_.layer + i) * src_.numRows + std::size_t{row} * factors_.row;
            for (std::size_t j = 0; j < factors_.row; ++j)
                *found++ = src_.samples + (first + j) * rowSize;
        }
    }

    void ScaleRow(unsigned char *dst)
    {
        for (std::size_t column = 0; column < dst_.numColumns; column += chunk_)
        {
            std::size_t const numColumns = std::min<std::size_t>(chunk_, dst_.numColumns - column);
            std::size_t const count = numColumns * factors_.column * size_;
            unsigned char *const at = dst + column * size_;
            if (bigTotals_.empty())
            {
                quillmarsh::Run(RowTotal{rows_.data(), rows_.size(), totals_.data(), count});
                // 32 bits hold the sums of this many totals.
                if (factors_.column <= 65536)
                    TakeMeans<std::uint32_t>(at, totals_.data(), numColumns);
                else
                    TakeMeans<std::uint64_t>(at, totals_.data(), numColumns);
            }
            else
            {
                std::fill_n(bigTotals_.begin(), count, 0);
                for (unsigned char const *row : rows_)
                {
                    for (std::size_t i = 0; i < count; ++i)
                        bigTotals_[i] += row[i];
                }
                TakeMeans<std::uint64_t>(at, bigTotals_.data(), numColumns);
            }
            for (unsigned char const *&row : rows_)
                row += count;
        }
    }

    template<typename Sum, typename Total>
    void TakeMeans(unsigned char *dst, Total const *totals, std::size_t numColumns) const
    {
        switch (size_)
        {
        case 1:
            return TakeMeansOf<1, Sum>(dst, totals, numColumns);
        case 2:
            return TakeMeansOf<2, Sum>(dst, totals, numColumns);
        default:
            return TakeMeansOf<4, Sum>(dst, totals, numColumns);
        }
    }

    template<std::size_t size, typename Sum, typename Total>
    void TakeMeansOf(unsigned char *dst, Total const *totals, std::size_t numColumns) const
    {
        RoundedMean const mean = mean_;
        std::size_t const factor = factors_.column;
        for (std::size_t column = 0; column < numColumns; ++column, dst += size)
        {
            Sum sums[size] = {};
            for (std::size_t i = 0; i < factor; ++i, totals += size)
            {
                for (std::size_t k = 0; k < size; ++k)
                    sums[k] += totals[k];
            }
            for (std::size_t k = 0; k < size; ++k)
                dst[k] = mean(sums[k]);
        }
    }

    SampleBlock<unsigned char> dst_;
    SampleBlock<unsigned char const> src_;
    unsigned int size_;
    Factors factors_;
    RoundedMean mean_;
    /// Number of columns of the destination that are computed at a time.
    std::size_t chunk_;
    std::vector<unsigned char const *> rows_;
    std::vector<std::uint16_t> totals_;
    std::vector<std::uint64_t> bigTotals_;
};

} // namespace

void ScaleByWholeFactors(SampleBlock<unsigned char> const &dst, SampleBlock<unsigned char const> const &src,
                         unsigned int numElements)
{
    WholeFactorScaler(dst, src, numElements).Run();
}

} // namespace quillmarsh
