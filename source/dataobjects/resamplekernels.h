// The inner work of resampling, a vector at a time: picking samples out of a row, and weighted sums of what was picked.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_RESAMPLEKERNELS_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_RESAMPLEKERNELS_H

#include <cstddef>
#include <cstdint>

namespace quillmarsh
{

/// How a row is picked from: by blocks of so many columns, each of which comes out of a window of so many samples. No
/// columns means that there is no kernel.
struct GatherShape
{
    unsigned int blockColumns, windowSamples;
};

/// Samples of one, two and four bytes have kernels where the machine has vectors.
GatherShape GetGatherShape(unsigned int sampleSize);

/// One row to be picked from. Every block has a window, and a vector of control values: which of the window's samples
/// go to the first output, then which go to the second. These count samples of four bytes in words of 32 bits, and the
/// bytes of smaller samples in bytes.
struct GatherJob
{
    unsigned int sampleSize;
    std::size_t numColumns; ///< at least those of a block; the last block ends with the last column
    std::uint32_t const *windows;
    unsigned char const *controls;
    unsigned char const *src;
    unsigned char *tap0;
    unsigned char *tap1; ///< null: only the first output is wanted
};

void RunGatherKernel(GatherJob const &job);

/// What samples consist of.
enum class eSampleElement
{
    e_byte,
    e_float,
    e_word4444,
    e_word1555
};

/// Weighted sums of the elements of one to four rows, with two taps in each. A tap's weight is that of its row times that
/// of its column, and the sum goes through the rows in order, tap by tap.
struct BlendJob
{
    static constexpr unsigned int s_maxRows = 4;

    eSampleElement element;
    unsigned int numRows; ///< 1, 2 or 4
    unsigned char const *tap0[s_maxRows], *tap1[s_maxRows];
    float rowWeights[s_maxRows];
    float const *weights0, *weights1; ///< one for each element
    unsigned char const *mask;        ///< bits of `dst` that are set, the others stay; null: all
    unsigned char *dst;
    std::size_t count; ///< of elements

    /// @name What is read next, and brought near meanwhile: two places and the length of each
    /// @{
    unsigned char const *ahead0, *ahead1;
    std::size_t aheadSize;
    /// @}
};

/// Does the work of the one-element interpolators, to the bit. False, with nothing done, when there is less than one
/// vector of elements or no vectors at all.
bool RunBlendKernel(BlendJob const &job);

} // namespace quillmarsh

#endif
