// Work on whole blocks of samples, a vector at a time.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_TRANSFER_SAMPLEKERNELS_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_TRANSFER_SAMPLEKERNELS_H

#include <cstddef>
#include <vector>

namespace quillmarsh
{

/// Copies that have a kernel. Samples have one byte, two (a word) or four (a colour); what is said to be set leaves the
/// other bytes of the destination as they are.
enum class eSampleKernel
{
    e_none,
    e_byteFromWordLow,
    e_byteFromWordHigh,
    e_byteFromColourAlpha,
    e_byteFromColourLuminance,
    e_byteFromFloat,
    e_wordSetLowFromByte,
    e_wordSetHighFromByte,
    e_wordSetLowFromColourLuminance,
    e_wordFromColourLuminanceAlpha,
    e_word4444FromColour,
    e_word1555FromColour,
    e_colourSetAlphaFromByte,
    e_colourSetBGRFromByte,
    e_colourSetBGRFromWordLow,
    e_colourFromWordLuminanceAlpha,
    e_colourFromWord4444,
    e_colourFromWord1555,
    e_floatFromByte
};

/// Does the work of the one-element processor for the first samples, to the bit, and returns how many these were: all
/// but less than a vector of them. Blocks must not overlap; they need no alignment. Any thread.
std::size_t RunSampleKernel(eSampleKernel kernel, unsigned char *dst, unsigned char const *src, std::size_t count);

/// Whether this machine has the vectors that the build counts on.
bool CanRunKernels();

/// @name Choice of the machine's vectors, for tests
/// @{

/// Every set of vector instructions that this build has code for and this machine can run.
std::vector<long long> GetKernelTargets();
/// Uses one of them from now on, or with 0 the best again.
void SetKernelTarget(long long target);
/// @}

} // namespace quillmarsh

#endif
