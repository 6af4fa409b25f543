// Resampling of blocks of samples in up to three dimensions, for the functions on signals, images and volumes.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_OPERATIONS_RESAMPLING_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_OPERATIONS_RESAMPLING_H

#include "source/dataobjects/operations/resamplekernels.h"

namespace quillmarsh
{

/// Samples without padding. An image is one layer, and a signal is one row of one layer.
template<typename Byte>
struct SampleBlock
{
    Byte *samples;
    unsigned int numLayers, numRows, numColumns;
};

/// The part of each sample that is resampled. Samples have the same size on both sides.
struct SamplePart
{
    unsigned int sampleSize; ///< in bytes
    eSampleElement element;
    unsigned int offset; ///< in bytes
    unsigned int numElements;
};

/// The blocks must not be empty or share memory. Any thread may call these functions.
/// @{

/// Takes whole nearest samples.
void ResampleNearest(SampleBlock<unsigned char> const &dst, SampleBlock<unsigned char const> const &src,
                     unsigned int sampleSize);

/// Computes weighted sums over some dimensions: 1 for columns only, 2 for columns and rows, 3 for all.
void ResampleLinear(SampleBlock<unsigned char> const &dst, SampleBlock<unsigned char const> const &src,
                    SamplePart const &part, unsigned int numDimensions);
/// @}

} // namespace quillmarsh

#endif
