// Operations on volumes: copies of blocks and of layers, resampling, flips.
#ifndef QUILLMARSH_DATAOBJECTS_VOLUMEOPERATIONS_H
#define QUILLMARSH_DATAOBJECTS_VOLUMEOPERATIONS_H

#include <quillmarsh/dataobjects/imageoperations.h>
#include <quillmarsh/dataobjects/volumebase.h>

namespace quillmarsh
{

// The rules in signaloperations.h for offsets, allocation and threads apply here, too.

/// Creates a volume with the format and samples of another one, which must not be empty; null when no plain sample has
/// the format's size. The caller owns it.
QUILLMARSH_API VolumeBase *CloneVolume(VolumeBase const &src);

/// Copies a block of samples of one format between two places; a count of 0 means all layers, rows or columns of `src`.
/// With `flipLayers` the last layer of the block comes first, with `flipRows` the last row of each layer. Asserts
/// "Sample-format mismatch.", "Destination is empty.", "Source is empty.", "Destination-offset-z/layer-count out of
/// range.", "Destination-offset-y/row-count out of range.", "Destination-offset-x/column-count out of range.", and the
/// same three of "Source-".
QUILLMARSH_API void CopySamples3D(VolumeBase &dst, VolumeBase const &src, unsigned int numLayers, unsigned int numRows,
                                  unsigned int numColumns, unsigned int dstLayer, unsigned int dstRow,
                                  unsigned int dstColumn, unsigned int srcLayer, unsigned int srcRow,
                                  unsigned int srcColumn, bool flipLayers, bool flipRows);

/// @name Single layers
/// @{

/// Copies all bytes of a signal of any format into a layer. Asserts "Byte-size mismatch." and "Destination-layer-index
/// out of range.".
QUILLMARSH_API void CopyToLayer(VolumeBase &dst, unsigned int layer, SignalBase const &src);
/// Copies all bytes of a layer into a signal of any format. Asserts "Byte-size mismatch." and "Source-layer-index out
/// of range.".
QUILLMARSH_API void CopyFromLayer(SignalBase &dst, VolumeBase const &src, unsigned int layer);
/// @}

/// @name Resampling
/// Resample layers, rows and columns as Resample1D does. The linear filter weighs eight samples, in an order in which
/// the column changes fastest and the layer slowest; the weight of a sample is the weight of its layer times the weight
/// of its row, times the weight of its column. Results and assertions are the same as for signals.
/// @{
QUILLMARSH_API bool Resample3D(VolumeBase &dst, VolumeBase const &src, eResampleFilter filter);
QUILLMARSH_API void Resample3D_Nearest(VolumeBase &dst, VolumeBase const &src);
QUILLMARSH_API void Resample3D_Linear_NBytes(VolumeBase &dst, VolumeBase const &src, unsigned int byteOffset,
                                             unsigned int numBytes);
QUILLMARSH_API void Resample3D_Linear_NFloats(VolumeBase &dst, VolumeBase const &src, unsigned int componentOffset,
                                              unsigned int numComponents);
QUILLMARSH_API void Resample3D_Linear_PackedSample_UShort4444(VolumeBase &dst, VolumeBase const &src);
QUILLMARSH_API void Resample3D_Linear_PackedSample_UShort1555(VolumeBase &dst, VolumeBase const &src);
/// @}

/// @name Flips
/// @{

/// Reverses the order of the rows of each layer.
QUILLMARSH_API void FlipRows(VolumeBase &volume);
/// Reverses the order of the columns.
QUILLMARSH_API void FlipColumns(VolumeBase &volume);
/// Reverses the order of the layers.
QUILLMARSH_API void FlipLayers(VolumeBase &volume);
/// @}

} // namespace quillmarsh

#endif
