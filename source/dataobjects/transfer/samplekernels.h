// Kernels that copy whole blocks of samples, a vector at a time.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_TRANSFER_SAMPLEKERNELS_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_TRANSFER_SAMPLEKERNELS_H

#include <cstddef>
#include <vector>

namespace quillmarsh
{

/// Copies that have a kernel. Samples have one byte, two (a word) or four (a colour). Kernels that set a byte leave the
/// other bytes of the destination unchanged.
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

/// Gives the same bits as the one-element processor for the first samples, and returns their number: all except a rest
/// of less than a vector. Blocks must not overlap; they need no alignment. Any thread.
std::size_t RunSampleKernel(eSampleKernel kernel, unsigned char *dst, unsigned char const *src, std::size_t count);

/// True when this machine has the vector instructions that the build requires.
bool CanRunKernels();

/// @name Choice of the machine's vectors, for tests
/// @{

/// Returns every set of vector instructions for which this build has code and that this machine can run.
/// The last one has no vectors, unless the build is for a single set.
std::vector<long long> GetKernelTargets();
/// Uses one of these sets from now on; 0 selects the best one again.
void SetKernelTarget(long long target);
/// @}

} // namespace quillmarsh

#endif
