// Checks of parts of samples and of ranges, and loops over the samples that kernels leave.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_TRANSFER_SAMPLEPARTS_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_TRANSFER_SAMPLEPARTS_H

#include <quillmarsh/basetools/elementprocessors.h>
#include <quillmarsh/dataobjects/signalbase.h>

#include "source/dataobjects/operations/inplacekernels.h"

#include <cstring>
#include <functional>
#include <span>

namespace quillmarsh
{

/// True when a range is within `total`.
constexpr bool FitsIn(unsigned int total, unsigned int start, unsigned int count)
{
    return start <= total && count <= total - start;
}

/// True when the samples have `byteSize` bytes at an offset.
inline bool HoldsPart(SignalBase const &signal, unsigned int offset, unsigned int byteSize)
{
    return FitsIn(signal.GetSampleByteSize(), offset, byteSize);
}

/// True when two containers share memory.
inline bool Overlap(SignalBase const &a, SignalBase const &b)
{
    // std::less orders any two pointers, unlike the operator.
    std::less<unsigned char const *> const isBefore;
    return isBefore(a.GetSamplesB(), b.GetSamplesB() + b.GetTotalByteSize()) &&
           isBefore(b.GetSamplesB(), a.GetSamplesB() + a.GetTotalByteSize());
}

/// Consecutive samples: all samples of a container, or a part of a row.
struct SampleRun
{
    unsigned char *samples; ///< null when there are none
    std::size_t count;
    unsigned int sampleSize;

    explicit SampleRun(SignalBase &signal) : SampleRun(signal.GetSamplesB(), signal.GetNumSamples(), signal) {}
    SampleRun(unsigned char *start, std::size_t numSamples, SignalBase const &signal)
        : samples(start),
          count(numSamples),
          sampleSize(signal.GetSampleByteSize())
    {
    }

    /// Runs a processor at an offset of each sample except the first ones, which a kernel has done.
    template<typename Processor>
    void ProcessRest(std::size_t done, unsigned int offset, Processor processor) const
    {
        unsigned char *const start = samples ? samples + done * sampleSize + offset : nullptr;
        element_processors::ProcessElementsInplace(processor, count - done, start,
                                                   static_cast<std::ptrdiff_t>(sampleSize));
    }
};

/// Sets the bits of the masks in each sample to those of the values, which must have no other bits. Borrows both.
class SampleFill
{
public:
    SampleFill(unsigned int sampleSize, unsigned int offset, std::span<unsigned char const> masks,
               std::span<unsigned char const> values);
    void Run(SampleRun run) const;

private:
    unsigned int offset_;
    std::span<unsigned char const> masks_, values_;
    BytePattern maskPattern_, valuePattern_;
};

/// Does the same for all samples of a container.
void FillSamples(SignalBase &signal, unsigned int offset, std::span<unsigned char const> masks,
                 std::span<unsigned char const> values);

/// Copies a block of bytes, which may be empty.
inline void CopyBlock(unsigned char *dst, unsigned char const *src, std::size_t byteSize)
{
    if (byteSize != 0)
        std::memmove(dst, src, byteSize);
}

} // namespace quillmarsh

#endif
