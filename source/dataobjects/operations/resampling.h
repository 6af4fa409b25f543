// Resampling of blocks of samples in up to three dimensions, behind the functions on signals, images and volumes.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_OPERATIONS_RESAMPLING_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_OPERATIONS_RESAMPLING_H

#include "source/dataobjects/operations/resamplekernels.h"

namespace quillmarsh
{

/// Samples without padding. What has fewer dimensions than three is one layer, or one row of one layer.
template<typename Byte>
struct SampleBlock
{
    Byte *samples;
    unsigned int numLayers, numRows, numColumns;
};

/// What is resampled: a part of each sample, in samples of one size on both sides.
struct SamplePart
{
    unsigned int sampleSize; ///< in bytes
    eSampleElement element;
    unsigned int offset; ///< in bytes
    unsigned int numElements;
};

/// Neither block is empty, and they share no memory. Any thread may call these.
/// @{

/// Nearest samples, whole.
void ResampleNearest(SampleBlock<unsigned char> const &dst, SampleBlock<unsigned char const> const &src,
                     unsigned int sampleSize);

/// Weighted sums over so many of the dimensions: 1 for columns only, 2 for rows as well, 3 for all.
void ResampleLinear(SampleBlock<unsigned char> const &dst, SampleBlock<unsigned char const> const &src,
                    SamplePart const &part, unsigned int numDimensions);
/// @}

} // namespace quillmarsh

#endif
