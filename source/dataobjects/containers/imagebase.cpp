#include <quillmarsh/dataobjects/imagebase.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/exception.h>

#include "source/dataobjects/containers/checkedsize.h"
#include "source/dataobjects/containers/manufacture.h"

namespace quillmarsh
{

ImageBase::ImageBase(unsigned int sampleByteSize) : SignalBase(sampleByteSize) {}

ImageBase::~ImageBase() = default;

void ImageBase::ReserveSampleStorage(unsigned int numSamples)
{
    ReserveSampleStorage(1, numSamples);
}

void ImageBase::ReleaseSampleStorage()
{
    SetupInternalImageProperties(0, 0);
    SignalBase::ReleaseSampleStorage();
}

void ImageBase::ReserveSampleStorage(unsigned int numRows, unsigned int numColumns)
{
    std::uint64_t const byteSize = SaturatingProduct({numRows, numColumns, GetSampleByteSize()});
    if (byteSize > s_largestByteSize)
    {
        ImageBase::ReleaseSampleStorage();
        ThrowNoMemory(byteSize);
    }
    SetupInternalImageProperties(numRows, numColumns);
    try
    {
        SignalBase::ReserveSampleStorage(numRows_ * numColumns_);
    }
    catch (...)
    {
        SetupInternalImageProperties(0, 0);
        throw;
    }
}

unsigned char const *ImageBase::SampleB(unsigned int row, unsigned int column) const
{
    return CheckAccess2D(row, column) ? GetSamplesB() + OffsetOf(row, column) : nullptr;
}

unsigned char *ImageBase::SampleB(unsigned int row, unsigned int column)
{
    return CheckAccess2D(row, column) ? GetSamplesB() + OffsetOf(row, column) : nullptr;
}

bool ImageBase::CheckDimensionMatch(ImageBase const &other) const
{
    return numRows_ == other.numRows_ && numColumns_ == other.numColumns_;
}

void ImageBase::SetupInternalImageProperties(unsigned int numRows, unsigned int numColumns)
{
    bool const isEmpty = numRows == 0 || numColumns == 0;
    numRows_ = isEmpty ? 0 : numRows;
    numColumns_ = isEmpty ? 0 : numColumns;
    rowByteSize_ = numColumns_ * GetSampleByteSize();
}

bool ImageBase::CheckAccess2D(unsigned int row, unsigned int column) const
{
    QUILLMARSH_ASSERT(GetNumSamples() != 0, "Accessing 0x0 image.");
    QUILLMARSH_ASSERT(row < numRows_, "Row-index out of range.");
    QUILLMARSH_ASSERT(column < numColumns_, "Column-index out of range.");
    return row < numRows_ && column < numColumns_;
}

std::size_t ImageBase::OffsetOf(unsigned int row, unsigned int column) const
{
    return (std::size_t{row} * numColumns_ + column) * GetSampleByteSize();
}

template class Image<Sample8>;
template class Image<Sample16>;
template class Image<Sample24>;
template class Image<Sample32>;
template class Image<Sample48>;
template class Image<Sample64>;
template class Image<Sample96>;
template class Image<Sample128>;

ImageBaseFromExternalStorageAdapter::ImageBaseFromExternalStorageAdapter(eSampleFormat format)
    : SignalBase(sample_formats::ExtractByteSize(format)),
      ImageBase(sample_formats::ExtractByteSize(format))
{
    SetSampleFormat(format);
}

void ImageBaseFromExternalStorageAdapter::SetExternalStorage(unsigned char *samples, unsigned int numRows,
                                                             unsigned int numColumns)
{
    SetupInternalImageProperties(0, 0);
    DeallocateStorage();
    if (!samples)
        return;
    QUILLMARSH_ASSERT(numRows != 0 && numColumns != 0, "Invalid argument combination passed to ImageBase adapter.");
    std::uint64_t const byteSize = SaturatingProduct({numRows, numColumns, GetSampleByteSize()});
    if (byteSize > s_largestByteSize)
        ThrowNoMemory(byteSize);
    SetupInternalImageProperties(numRows, numColumns);
    AllocateStorage(GetNumRows() * GetNumColumns(), samples);
}

void ImageBaseFromExternalStorageAdapter::ReserveSampleStorage(unsigned int)
{
    QUILLMARSH_THROW(InvalidUsageException, "Cannot manage external storage through ImageBase adapter.");
}

void ImageBaseFromExternalStorageAdapter::ReserveSampleStorage(unsigned int, unsigned int)
{
    QUILLMARSH_THROW(InvalidUsageException, "Cannot manage external storage through ImageBase adapter.");
}

void ImageBaseFromExternalStorageAdapter::ReleaseSampleStorage() {}

ImageBase *ManufactureImage(eSampleFormat format, unsigned int numRows, unsigned int numColumns)
{
    return Manufacture<ImageBase, Image>(format, numRows, numColumns);
}

} // namespace quillmarsh
