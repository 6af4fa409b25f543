// Operations on images: copies of blocks, resampling, flips, fills of blocks, checkerboards.
#ifndef QUILLMARSH_DATAOBJECTS_IMAGEOPERATIONS_H
#define QUILLMARSH_DATAOBJECTS_IMAGEOPERATIONS_H

#include <quillmarsh/dataobjects/fontimages.h>
#include <quillmarsh/dataobjects/imagebase.h>
#include <quillmarsh/dataobjects/signaloperations.h>

namespace quillmarsh
{

// The rules in signaloperations.h for offsets, allocation and threads apply here, too.

/// Creates an image with the format and samples of another one, which must not be empty; null when no plain sample has
/// the format's size. The caller owns it.
QUILLMARSH_API ImageBase *CloneImage(ImageBase const &src);

/// Copies a block of samples of one format between two places; a count of 0 means all rows or columns of `src`. With
/// `flipRows` the last row of the block comes first. Asserts "Sample-format mismatch.", "Destination is empty.",
/// "Source is empty.", "Destination-row-offset/row-count out of range.", "Destination-column-offset/column-count out of
/// range.", "Source-row-offset/row-count out of range." and "Source-column-offset/column-count out of range.".
QUILLMARSH_API void CopySamples2D(ImageBase &dst, ImageBase const &src, unsigned int numRows, unsigned int numColumns,
                                  unsigned int dstRow, unsigned int dstColumn, unsigned int srcRow,
                                  unsigned int srcColumn, bool flipRows);

/// @name Resampling
/// Resample rows and columns as Resample1D does. The linear filter weighs four samples, in the order (row 0, column 0),
/// (0, 1), (1, 0), (1, 1); the weight of a sample is the weight of its row times the weight of its column. Results and
/// assertions are the same as for signals.
/// @{
QUILLMARSH_API bool Resample2D(ImageBase &dst, ImageBase const &src, eResampleFilter filter);
QUILLMARSH_API void Resample2D_Nearest(ImageBase &dst, ImageBase const &src);
QUILLMARSH_API void Resample2D_Linear_NBytes(ImageBase &dst, ImageBase const &src, unsigned int byteOffset,
                                             unsigned int numBytes);
QUILLMARSH_API void Resample2D_Linear_NFloats(ImageBase &dst, ImageBase const &src, unsigned int componentOffset,
                                              unsigned int numComponents);
QUILLMARSH_API void Resample2D_Linear_PackedSample_UShort4444(ImageBase &dst, ImageBase const &src);
QUILLMARSH_API void Resample2D_Linear_PackedSample_UShort1555(ImageBase &dst, ImageBase const &src);
/// @}

/// @name Flips
/// @{

/// Reverses the order of the rows.
QUILLMARSH_API void FlipRows(ImageBase &image);
/// Reverses the order of the columns.
QUILLMARSH_API void FlipColumns(ImageBase &image);
/// @}

/// @name Fills
/// @{

/// Sets one byte in every sample of a block. Asserts "Byte-offset out of range." and "Block-indices out of range".
QUILLMARSH_API void FillBlock(ImageBase &image, unsigned int byteOffset, unsigned char value, unsigned int row,
                              unsigned int numRows, unsigned int column, unsigned int numColumns);

/// Sets one byte of every sample to one of two values, which alternate block by block; the block at the top left gets
/// the first value. Block sizes of 0 count as 1. Does nothing to an empty image. Asserts "Byte-offset out of range.".
QUILLMARSH_API void GenerateCheckerboard(ImageBase &image, unsigned int byteOffset, unsigned char firstValue,
                                         unsigned char secondValue, unsigned int blockRows, unsigned int blockColumns);
/// Does the same with blue, green and red of two colours. Asserts "Triplet-offset out of range.".
QUILLMARSH_API void GenerateCheckerboard(ImageBase &image, unsigned int tripletOffset, color4b firstColor,
                                         color4b secondColor, unsigned int blockRows, unsigned int blockColumns);
/// @}

} // namespace quillmarsh

#endif
