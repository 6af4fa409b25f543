// Scaling of blocks of samples in up to three dimensions.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_SCALING_SCALINGBLOCKS_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_SCALING_SCALINGBLOCKS_H

#include <quillmarsh/dataobjects/scaling.h>

#include "source/dataobjects/operations/resampling.h"

namespace quillmarsh
{

// The blocks must not be empty or share memory. Samples have `numElements` elements: 1, 2 or 4. Any thread.

/// Computes means of bytes where each dimension of `src` is a multiple of that of `dst`.
void ScaleByWholeFactors(SampleBlock<unsigned char> const &dst, SampleBlock<unsigned char const> const &src,
                         unsigned int numElements);

/// Computes weighted sums of bytes, or of floats in 0..1. Floats need no alignment.
void ScaleByWeights(SampleBlock<unsigned char> const &dst, SampleBlock<unsigned char const> const &src,
                    unsigned int numElements, bool areFloats, eScaleFilter filter);

} // namespace quillmarsh

#endif
