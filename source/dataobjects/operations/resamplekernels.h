// The inner work of resampling, a vector at a time: picking samples out of a row, and weighted sums of what was picked.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_OPERATIONS_RESAMPLEKERNELS_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_OPERATIONS_RESAMPLEKERNELS_H

#include <cstddef>
#include <cstdint>

namespace quillmarsh
{

/// One row to be picked from. Every block has a window, and a vector of control values: which of the window's samples
/// go to the first output, then which go to the second. These count samples of four bytes in words of 32 bits, and the
/// bytes of smaller samples in bytes.
struct GatherJob
{
    std::size_t numColumns; ///< at least those of a block; the last block ends with the last column
    std::uint32_t const *windows;
    unsigned char const *controls;
    unsigned char const *src;
    unsigned char *tap0;
    unsigned char *tap1; ///< unused when only the first output is wanted
};

/// Picks by blocks of so many columns, each of which comes out of a window of so many samples.
struct GatherKernel
{
    unsigned int blockColumns, windowSamples;
    void (*run)(GatherJob const &job); ///< null: there is no kernel
};

/// Samples of one, two and four bytes have kernels where the machine has vectors.
GatherKernel GetGatherKernel(unsigned int sampleSize, bool wantsBoth);

/// What samples consist of.
enum class eSampleElement
{
    e_byte,
    e_colour,     ///< four bytes at once
    e_wideColour, ///< the same, with the picked bytes as floats
    e_float,
    e_word4444,
    e_word1555
};

/// Weighted sums of the elements of one to four rows, with two taps in each. A tap's weight is that of its row times that
/// of its column, and the sum goes through the rows in order, tap by tap.
struct BlendJob
{
    static constexpr unsigned int s_maxRows = 4;

    unsigned char const *tap0[s_maxRows], *tap1[s_maxRows];
    float rowWeights[s_maxRows];
    float const *weights0, *weights1; ///< one for each element
    unsigned char const *mask;        ///< bits of `dst` that are set, the others stay
    unsigned char *dst;
    std::size_t count; ///< of elements, at least those of a vector

    /// @name What is read next, and brought near meanwhile: so many bytes from two places with each vector
    /// @{
    unsigned char const *ahead0, *ahead1;
    std::size_t aheadStep;
    /// @}
};

/// Does the work of the one-element interpolators, to the bit.
struct BlendKernel
{
    std::size_t lanes;                ///< elements of a vector
    void (*run)(BlendJob const &job); ///< null: there is no kernel
};

/// For 1, 2 or 4 rows. Machines with vectors have kernels for all, but for wide colours only where these are faster.
BlendKernel GetBlendKernel(eSampleElement element, unsigned int numRows, bool isMasked);

/// Converts picked colours for the kernel for wide ones: each vector of colours gives a vector of floats for each byte.
/// Both blocks must have room for whole vectors. Call this only when there is such a kernel.
void WidenColours(unsigned char *dst, unsigned char const *src, std::size_t count);

} // namespace quillmarsh

#endif
