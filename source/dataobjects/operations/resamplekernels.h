// The inner loops of resampling, a vector at a time: pick samples from a row, and compute weighted sums of them.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_OPERATIONS_RESAMPLEKERNELS_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_OPERATIONS_RESAMPLEKERNELS_H

#include <cstddef>
#include <cstdint>

namespace quillmarsh
{

/// Picks samples from one row. Every block has a window, and a vector of control values: the window's samples for the
/// first output, then those for the second. The values count samples of four bytes in words of 32 bits, and the bytes
/// of smaller samples in bytes.
struct GatherJob
{
    std::size_t numColumns; ///< at least those of a block; the last block ends with the last column
    std::uint32_t const *windows;
    unsigned char const *controls;
    unsigned char const *src;
    unsigned char *tap0;
    unsigned char *tap1; ///< unused if there is only the first output
};

/// Picks blocks of a number of columns, each from a window of a number of samples.
struct GatherKernel
{
    unsigned int blockColumns, windowSamples;
    void (*run)(GatherJob const &job); ///< null: there is no kernel
};

/// Returns the kernel for samples of this size. On machines with vectors, samples of one, two and four bytes have one.
GatherKernel GetGatherKernel(unsigned int sampleSize, bool wantsBoth);

/// Elements of samples.
enum class eSampleElement
{
    e_byte,
    e_colour,     ///< four bytes at once
    e_wideColour, ///< the same, with the picked bytes as floats
    e_float,
    e_word4444,
    e_word1555
};

/// Weighted sums of the elements of one to four rows, with two taps in each. The weight of a tap is the weight of its
/// row times the weight of its column. The sum takes the rows in order, tap by tap.
struct BlendJob
{
    static constexpr unsigned int s_maxRows = 4;

    unsigned char const *tap0[s_maxRows], *tap1[s_maxRows];
    float rowWeights[s_maxRows];
    float const *weights0, *weights1; ///< one for each element
    unsigned char const *mask;        ///< bits of `dst` that are set, the others stay
    unsigned char *dst;
    std::size_t count; ///< of elements, at least those of a vector

    /// @name Prefetched bytes that are read next, from two places with each vector
    /// @{
    unsigned char const *ahead0, *ahead1;
    std::size_t aheadStep;
    /// @}
};

/// Gives the same bits as the one-element interpolators.
struct BlendKernel
{
    std::size_t lanes;                ///< elements of a vector
    void (*run)(BlendJob const &job); ///< null: there is no kernel
};

/// Returns the kernel for 1, 2 or 4 rows. Machines with vectors have kernels for all elements, but for wide colours
/// only if these are faster.
BlendKernel GetBlendKernel(eSampleElement element, unsigned int numRows, bool isMasked);

/// Converts picked colours for the kernel of wide colours: each vector of colours gives a vector of floats for each
/// byte. Both blocks must have room for whole vectors. Call this only if that kernel exists.
void WidenColours(unsigned char *dst, unsigned char const *src, std::size_t count);

} // namespace quillmarsh

#endif
