// A run of columns, which a resampling computes for all rows before it goes on to the next run.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_OPERATIONS_RESAMPLINGCOLUMNS_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_OPERATIONS_RESAMPLINGCOLUMNS_H

#include "source/dataobjects/operations/resampling.h"
#include "source/dataobjects/operations/resamplingaxis.h"

#include <cstddef>

namespace quillmarsh
{

/// The source places of the columns of a run, computed once for all rows.
///
/// A run is so short that its data stay in the nearest cache. The object is large, because it contains all data of a
/// resampling, without further allocations.
class ResamplingColumns
{
public:
    /// Bytes of the samples of a run, in each array of samples.
    static constexpr unsigned int s_maxBytes = 4096;
    /// Bytes between one such array and the next.
    static constexpr unsigned int s_stagger = 5 * 64;

    /// Returns the number of columns of a run, for a row of `numColumns` with picked samples of that size.
    static unsigned int GetRunLength(unsigned int numColumns, unsigned int pickedSize);

    /// @name Set-up, from the current position of the walk
    /// @{
    void SetNearest(AxisWalk &walk, unsigned int numColumns, unsigned int srcColumns, unsigned int sampleSize);
    /// With `areWide`, colours are converted to floats when they are picked, not in each of the sums.
    void SetLinear(AxisWalk &walk, unsigned int numColumns, unsigned int srcColumns, SamplePart const &part,
                   unsigned int numRows, bool areWide);
    /// @}

    /// True when the part is a colour and there is a kernel for colours as floats.
    static bool CanBeWide(SamplePart const &part);

    unsigned int GetNumColumns() const { return numColumns_; }
    std::size_t GetByteSize() const { return std::size_t{numColumns_} * part_.sampleSize; }

    /// Picks the samples at the first taps and those at the second taps from a row of the source.
    void Gather(unsigned char const *src, unsigned char *tap0, unsigned char *tap1) const;

    /// @name Weighted sums of picked samples, for the number of rows in the set-up
    /// @{

    /// Returns a job with the values that are the same for every row of the destination. The caller adds the picked
    /// samples, the weights of their rows, the destination, which is the run's part of a row, and the places that are
    /// read next.
    BlendJob MakeJob() const;
    void Blend(BlendJob const &job) const;
    /// Returns the offset of the run's part in a row of the source, in bytes.
    std::size_t GetSourceStart() const { return std::size_t{taps_[0].first} * part_.sampleSize; }
    /// @}

private:
    static constexpr unsigned int s_maxColumns = 2048;
    static constexpr unsigned int s_maxVector = 64;

    void SetBlocks(unsigned int srcColumns, bool wantsBoth);
    bool SetBlock(unsigned int column, unsigned int srcColumns, std::uint32_t &window, unsigned char *control) const;
    void SetElements(bool areWide);
    eSampleElement FindElement(bool areWide) const;
    void Pick(unsigned char const *src, unsigned char *tap0, unsigned char *tap1) const;
    void SetMask();

    unsigned int numColumns_ = 0;
    unsigned int numRows_ = 0;
    SamplePart part_{};
    GatherKernel gather_{}; ///< none: the samples are picked one by one
    BlendKernel blend_{};   ///< none: the sums are made one by one
    bool areWide_ = false;  ///< picked colours become floats
    std::size_t numElements_ = 0;

    AxisTaps taps_[s_maxColumns];
    std::uint32_t windows_[s_maxBytes / 8 + 1];
    alignas(s_maxVector) unsigned char controls_[2 * s_maxBytes + s_maxVector];
    alignas(s_maxVector) float weights0_[s_maxBytes + s_stagger], weights1_[s_maxBytes + s_stagger];
    alignas(s_maxVector) unsigned char mask_[s_maxBytes];
};

} // namespace quillmarsh

#endif
