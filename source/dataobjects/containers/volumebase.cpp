#include <quillmarsh/dataobjects/volumebase.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/exception.h>

#include "source/dataobjects/containers/checkedsize.h"
#include "source/dataobjects/containers/manufacture.h"

namespace quillmarsh
{

VolumeBase::VolumeBase(unsigned int sampleByteSize) : SignalBase(sampleByteSize) {}

VolumeBase::~VolumeBase() = default;

void VolumeBase::ReserveSampleStorage(unsigned int numSamples)
{
    ReserveSampleStorage(1, 1, numSamples);
}

void VolumeBase::ReleaseSampleStorage()
{
    SetupInternalVolumeProperties(0, 0, 0);
    SignalBase::ReleaseSampleStorage();
}

void VolumeBase::ReserveSampleStorage(unsigned int numLayers, unsigned int numRows, unsigned int numColumns)
{
    std::uint64_t const byteSize = SaturatingProduct({numLayers, numRows, numColumns, GetSampleByteSize()});
    if (byteSize > s_largestByteSize)
    {
        VolumeBase::ReleaseSampleStorage();
        ThrowNoMemory(byteSize);
    }
    SetupInternalVolumeProperties(numLayers, numRows, numColumns);
    try
    {
        SignalBase::ReserveSampleStorage(numLayers_ * numSamplesPerLayer_);
    }
    catch (...)
    {
        SetupInternalVolumeProperties(0, 0, 0);
        throw;
    }
}

unsigned char const *VolumeBase::SampleB(unsigned int layer, unsigned int row, unsigned int column) const
{
    return CheckAccess3D(layer, row, column) ? GetSamplesB() + OffsetOf(layer, row, column) : nullptr;
}

unsigned char *VolumeBase::SampleB(unsigned int layer, unsigned int row, unsigned int column)
{
    return CheckAccess3D(layer, row, column) ? GetSamplesB() + OffsetOf(layer, row, column) : nullptr;
}

bool VolumeBase::CheckDimensionMatch(VolumeBase const &other) const
{
    return numLayers_ == other.numLayers_ && numRows_ == other.numRows_ && numColumns_ == other.numColumns_;
}

void VolumeBase::SetupInternalVolumeProperties(unsigned int numLayers, unsigned int numRows, unsigned int numColumns)
{
    bool const isEmpty = numLayers == 0 || numRows == 0 || numColumns == 0;
    numLayers_ = isEmpty ? 0 : numLayers;
    numRows_ = isEmpty ? 0 : numRows;
    numColumns_ = isEmpty ? 0 : numColumns;
    numSamplesPerLayer_ = numRows_ * numColumns_;
    rowByteSize_ = numColumns_ * GetSampleByteSize();
    layerByteSize_ = numRows_ * rowByteSize_;
}

bool VolumeBase::CheckAccess3D(unsigned int layer, unsigned int row, unsigned int column) const
{
    QUILLMARSH_ASSERT(GetNumSamples() != 0, "Accessing 0x0x0 volume.");
    QUILLMARSH_ASSERT(layer < numLayers_, "Layer-index out of range.");
    QUILLMARSH_ASSERT(row < numRows_, "Row-index out of range.");
    QUILLMARSH_ASSERT(column < numColumns_, "Column-index out of range.");
    return layer < numLayers_ && row < numRows_ && column < numColumns_;
}

std::size_t VolumeBase::OffsetOf(unsigned int layer, unsigned int row, unsigned int column) const
{
    return (std::size_t{layer} * numSamplesPerLayer_ + std::size_t{row} * numColumns_ + column) * GetSampleByteSize();
}

template class Volume<Sample8>;
template class Volume<Sample16>;
template class Volume<Sample24>;
template class Volume<Sample32>;
template class Volume<Sample48>;
template class Volume<Sample64>;
template class Volume<Sample96>;
template class Volume<Sample128>;

VolumeBaseFromExternalStorageAdapter::VolumeBaseFromExternalStorageAdapter(eSampleFormat format)
    : SignalBase(sample_formats::ExtractByteSize(format)),
      VolumeBase(sample_formats::ExtractByteSize(format))
{
    SetSampleFormat(format);
}

void VolumeBaseFromExternalStorageAdapter::SetExternalStorage(unsigned char *samples, unsigned int numLayers,
                                                              unsigned int numRows, unsigned int numColumns)
{
    SetupInternalVolumeProperties(0, 0, 0);
    DeallocateStorage();
    if (!samples)
        return;
    QUILLMARSH_ASSERT(numLayers != 0 && numRows != 0 && numColumns != 0,
                      "Invalid argument combination passed to VolumeBase adapter.");
    std::uint64_t const byteSize = SaturatingProduct({numLayers, numRows, numColumns, GetSampleByteSize()});
    if (byteSize > s_largestByteSize)
        ThrowNoMemory(byteSize);
    SetupInternalVolumeProperties(numLayers, numRows, numColumns);
    AllocateStorage(GetNumLayers() * GetNumSamplesPerLayer(), samples);
}

void VolumeBaseFromExternalStorageAdapter::ReserveSampleStorage(unsigned int)
{
    QUILLMARSH_THROW(InvalidUsageException, "Cannot manage external storage through VolumeBase adapter.");
}

void VolumeBaseFromExternalStorageAdapter::ReserveSampleStorage(unsigned int, unsigned int, unsigned int)
{
    QUILLMARSH_THROW(InvalidUsageException, "Cannot manage external storage through VolumeBase adapter.");
}

void VolumeBaseFromExternalStorageAdapter::ReleaseSampleStorage() {}

VolumeBase *ManufactureVolume(eSampleFormat format, unsigned int numLayers, unsigned int numRows,
                              unsigned int numColumns)
{
    return Manufacture<VolumeBase, Volume>(format, numLayers, numRows, numColumns);
}

} // namespace quillmarsh
