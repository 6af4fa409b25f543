#include <quillmarsh/dataobjects/volumeoperations.h>

#include "source/dataobjects/operations/inplacekernels.h"
#include "source/dataobjects/transfer/sampleparts.h"

namespace quillmarsh
{
namespace
{

/// The three counts or offsets of a block.
struct Place3D
{
    unsigned int layer, row, column;
};

/// Tells for each axis if a block is within a volume.
struct Fit3D
{
    bool layers, rows, columns;

    Fit3D(VolumeBase const &volume, Place3D const &offset, Place3D const &count)
        : layers(FitsIn(volume.GetNumLayers(), offset.layer, count.layer)),
          rows(FitsIn(volume.GetNumRows(), offset.row, count.row)),
          columns(FitsIn(volume.GetNumColumns(), offset.column, count.column))
    {
    }
    bool All() const { return layers && rows && columns; }
};

/// Copies a block that is within both volumes.
void CopyRows(VolumeBase &dst, VolumeBase const &src, Place3D const &count, Place3D const &to, Place3D const &from,
              bool flipLayers, bool flipRows)
{
    std::size_t const byteSize = std::size_t{count.column} * dst.GetSampleByteSize();
    for (unsigned int layer = 0; layer < count.layer; ++layer)
    {
        unsigned int const srcLayer = from.layer + (flipLayers ? count.layer - 1 - layer : layer);
        for (unsigned int row = 0; row < count.row; ++row)
        {
            unsigned int const srcRow = from.row + (flipRows ? count.row - 1 - row : row);
            CopyBlock(dst.VolumeBase::SampleB(to.layer + layer, to.row + row, to.column),
                      src.VolumeBase::SampleB(srcLayer, srcRow, from.column), byteSize);
        }
    }
}

} // namespace

VolumeBase *CloneVolume(VolumeBase const &src)
{
    AutoPtr<VolumeBase> clone(
        ManufactureVolume(src.GetSampleFormat(), src.GetNumLayers(), src.GetNumRows(), src.GetNumColumns()));
    if (clone)
        CopySamples3D(*clone, src, 0, 0, 0, 0, 0, 0, 0, 0, 0, false, false);
    return clone.release();
}

void CopySamples3D(VolumeBase &dst, VolumeBase const &src, unsigned int numLayers, unsigned int numRows,
                   unsigned int numColumns, unsigned int dstLayer, unsigned int dstRow, unsigned int dstColumn,
                   unsigned int srcLayer, unsigned int srcRow, unsigned int srcColumn, bool flipLayers, bool flipRows)
{
    Place3D const count{numLayers == 0 ? src.GetNumLayers() : numLayers, numRows == 0 ? src.GetNumRows() : numRows,
                        numColumns == 0 ? src.GetNumColumns() : numColumns};
    Place3D const to{dstLayer, dstRow, dstColumn}, from{srcLayer, srcRow, srcColumn};
    Fit3D const fitsDst(dst, to, count), fitsSrc(src, from, count);
    QUILLMARSH_ASSERT(dst.CheckSampleFormatMatch(src), "Sample-format mismatch.");
    QUILLMARSH_ASSERT(dst.GetNumSamples() != 0, "Destination is empty.");
    QUILLMARSH_ASSERT(src.GetNumSamples() != 0, "Source is empty.");
    QUILLMARSH_ASSERT(fitsDst.layers, "Destination-offset-z/layer-count out of range.");
    QUILLMARSH_ASSERT(fitsDst.rows, "Destination-offset-y/row-count out of range.");
    QUILLMARSH_ASSERT(fitsDst.columns, "Destination-offset-x/column-count out of range.");
    QUILLMARSH_ASSERT(fitsSrc.layers, "Source-offset-z/layer-count out of range.");
    QUILLMARSH_ASSERT(fitsSrc.rows, "Source-offset-y/row-count out of range.");
    QUILLMARSH_ASSERT(fitsSrc.columns, "Source-offset-x/column-count out of range.");
    if (!fitsDst.All() || !fitsSrc.All() || count.layer == 0 || !dst.CheckSampleByteSizeMatch(src))
        return;

    bool const isWhole = dst.CheckDimensionMatch(src) && count.row == src.GetNumRows() &&
                         count.column == src.GetNumColumns() && !flipLayers && !flipRows;
    if (isWhole)
        CopyBlock(dst.VolumeBase::SampleB(dstLayer, 0, 0), src.VolumeBase::SampleB(srcLayer, 0, 0),
                  std::size_t{count.layer} * src.GetLayerByteSize());
    else
        CopyRows(dst, src, count, to, from, flipLayers, flipRows);
}

void CopyToLayer(VolumeBase &dst, unsigned int layer, SignalBase const &src)
{
    bool const fits = src.GetTotalByteSize() == dst.GetLayerByteSize();
    QUILLMARSH_ASSERT(fits, "Byte-size mismatch.");
    QUILLMARSH_ASSERT(layer < dst.GetNumLayers(), "Destination-layer-index out of range.");
    if (fits && layer < dst.GetNumLayers())
        CopyBlock(dst.VolumeBase::SampleB(layer, 0, 0), src.GetSamplesB(), src.GetTotalByteSize());
}

void CopyFromLayer(SignalBase &dst, VolumeBase const &src, unsigned int layer)
{
    bool const fits = dst.GetTotalByteSize() == src.GetLayerByteSize();
    QUILLMARSH_ASSERT(fits, "Byte-size mismatch.");
    QUILLMARSH_ASSERT(layer < src.GetNumLayers(), "Source-layer-index out of range.");
    if (fits && layer < src.GetNumLayers())
        CopyBlock(dst.GetSamplesB(), src.VolumeBase::SampleB(layer, 0, 0), src.GetLayerByteSize());
}

void FlipRows(VolumeBase &volume)
{
    for (unsigned int layer = 0; layer < volume.GetNumLayers(); ++layer)
        FlipRowsOfBlock(volume.VolumeBase::SampleB(layer, 0, 0), volume.GetNumRows(), volume.GetRowByteSize());
}

void FlipColumns(VolumeBase &volume)
{
    FlipColumnsOfBlock(volume.GetSamplesB(), std::size_t{volume.GetNumLayers()} * volume.GetNumRows(),
                       volume.GetNumColumns(), volume.GetSampleByteSize());
}

void FlipLayers(VolumeBase &volume)
{
    FlipRowsOfBlock(volume.GetSamplesB(), volume.GetNumLayers(), volume.GetLayerByteSize());
}

} // namespace quillmarsh
