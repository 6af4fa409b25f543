// A run of columns that a resampling does for all rows before it goes on to the next.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_RESAMPLINGCOLUMNS_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_RESAMPLINGCOLUMNS_H

#include "source/dataobjects/resampling.h"
#include "source/dataobjects/resamplingaxis.h"

#include <cstddef>

namespace quillmarsh
{

/// Where the columns of a run come from, worked out once for all rows.
///
/// A run is so short that what belongs to it stays in the nearest cache. The object is large; it holds everything that a
/// resampling needs, without further allocations.
class ResamplingColumns
{
public:
    /// Bytes of the samples of a run, in every array that holds such.
    static constexpr unsigned int s_maxBytes = 4096;

    /// The number of columns for a run, of so many that there are.
    static unsigned int GetRunLength(unsigned int numColumns, unsigned int sampleSize);

    /// @name Set-up, from where the walk stands
    /// @{
    void SetNearest(AxisWalk &walk, unsigned int numColumns, unsigned int srcColumns, unsigned int sampleSize);
    void SetLinear(AxisWalk &walk, unsigned int numColumns, unsigned int srcColumns, SamplePart const &part);
    /// @}

    unsigned int GetNumColumns() const { return numColumns_; }
    std::size_t GetByteSize() const { return std::size_t{numColumns_} * part_.sampleSize; }

    /// @name The part of a row of the source that the columns come from
    /// @{
    unsigned char const *GetSource(unsigned char const *row) const
    {
        return row + std::size_t{taps_[0].first} * part_.sampleSize;
    }
    std::size_t GetSourceSize() const
    {
        return (std::size_t{taps_[numColumns_ - 1].second} - taps_[0].first + 1) * part_.sampleSize;
    }
    /// @}

    /// Picks the samples at the first taps out of a row of the source, and those at the second taps.
    void Gather(unsigned char const *src, unsigned char *tap0, unsigned char *tap1) const;

    /// Writes the weighted sums of picked samples: `job` names these, their number and the weights of their rows, and
    /// the destination, which is the run's part of a row.
    void Blend(BlendJob job) const;

private:
    static constexpr unsigned int s_maxColumns = 2048;
    static constexpr unsigned int s_maxVector = 64;

    void SetBlocks(unsigned int srcColumns);
    bool SetBlock(unsigned int column, unsigned int srcColumns, std::uint32_t &window, unsigned char *control) const;
    void SetElements();
    void SetMask();

    unsigned int numColumns_ = 0;
    SamplePart part_{};
    GatherShape shape_{};             ///< no columns: the samples are picked one by one
    unsigned int columnElements_ = 0; ///< of each column in the weights below; 0: the sums are made one by one
    bool isMasked_ = false;

    AxisTaps taps_[s_maxColumns];
    std::uint32_t windows_[s_maxBytes / 8 + 1];
    alignas(s_maxVector) unsigned char controls_[2 * s_maxBytes + s_maxVector];
    alignas(s_maxVector) float weights0_[s_maxBytes], weights1_[s_maxBytes];
    alignas(s_maxVector) unsigned char mask_[s_maxBytes];
};

} // namespace quillmarsh

#endif
