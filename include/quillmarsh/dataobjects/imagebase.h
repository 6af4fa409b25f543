// Two-dimensional arrays of samples: untyped, typed, and over borrowed memory.
#ifndef QUILLMARSH_DATAOBJECTS_IMAGEBASE_H
#define QUILLMARSH_DATAOBJECTS_IMAGEBASE_H

#include <quillmarsh/dataobjects/signalbase.h>

namespace quillmarsh
{

/// Rows of samples in one block without padding. Row 0 comes first in memory, and column 0 first in its row.
///
/// Both dimensions are above zero, or both are zero. For threads, the rules of SignalBase apply.
class QUILLMARSH_API ImageBase : public virtual SignalBase
{
public:
    ~ImageBase() override;

    /// Makes one row of this many columns.
    void ReserveSampleStorage(unsigned int numSamples) override;
    void ReleaseSampleStorage() override;
    /// Makes this many rows and columns; none when either is 0. Keeps block and contents if the product is unchanged.
    /// Throws NoMemoryException, and is empty then.
    virtual void ReserveSampleStorage(unsigned int numRows, unsigned int numColumns);

    /// @name Size, in rows, columns and bytes
    /// All are 0 for an empty image.
    /// @{
    unsigned int GetNumRows() const { return numRows_; }
    unsigned int GetNumColumns() const { return numColumns_; }
    unsigned int GetRowByteSize() const { return rowByteSize_; }
    /// @}

    using SignalBase::SampleB;
    /// @name First byte of one sample
    /// Asserts "Accessing 0x0 image.", "Row-index out of range." and "Column-index out of range."; null after an
    /// ignored assertion.
    /// @{
    unsigned char const *SampleB(unsigned int row, unsigned int column) const;
    unsigned char *SampleB(unsigned int row, unsigned int column);
    /// @}

    using SignalBase::CheckDimensionMatch;
    /// True when both have as many rows and columns.
    bool CheckDimensionMatch(ImageBase const &other) const;

protected:
    /// Creates an empty image. SignalBase is a virtual base, so the most derived class sets the size of the samples.
    explicit ImageBase(unsigned int sampleByteSize);

    /// Stores the dimensions, both as 0 if either is 0, and the sizes that result.
    void SetupInternalImageProperties(unsigned int numRows, unsigned int numColumns);

    /// Asserts that row and column are in range. False after an ignored assertion.
    bool CheckAccess2D(unsigned int row, unsigned int column) const;

private:
    std::size_t OffsetOf(unsigned int row, unsigned int column) const;

    unsigned int numRows_ = 0;
    unsigned int numColumns_ = 0;
    unsigned int rowByteSize_ = 0;
};

/// Image whose samples are records of the type T, one of the eight plain samples.
template<typename T>
class Image : public ImageBase, public Signal<T>
{
public:
    /// Creates an image with undefined contents; empty when a dimension is 0.
    QUILLMARSH_API_MEMBER Image(eSampleFormat format, unsigned int numRows, unsigned int numColumns)
        : SignalBase(sizeof(T)),
          ImageBase(sizeof(T)),
          Signal<T>(sample_formats::UnknownSampleFormat(sizeof(T)), 0)
    {
        SignalBase::SetSampleFormat(format);
        if (numRows != 0 && numColumns != 0)
            ImageBase::ReserveSampleStorage(numRows, numColumns);
    }

    using Signal<T>::Sample;
    /// @name Typed samples
    /// They assert like the untyped forms. After an ignored assertion, the reference is to a substitute of the calling
    /// thread with bytes of 0.
    /// @{
    QUILLMARSH_API_MEMBER T const &Sample(unsigned int row, unsigned int column) const
    {
        return SignalBase::OrStandIn(reinterpret_cast<T const *>(ImageBase::SampleB(row, column)));
    }
    QUILLMARSH_API_MEMBER T &Sample(unsigned int row, unsigned int column)
    {
        return SignalBase::OrStandIn(reinterpret_cast<T *>(ImageBase::SampleB(row, column)));
    }
    /// @}
};

extern template class QUILLMARSH_API Image<Sample8>;
extern template class QUILLMARSH_API Image<Sample16>;
extern template class QUILLMARSH_API Image<Sample24>;
extern template class QUILLMARSH_API Image<Sample32>;
extern template class QUILLMARSH_API Image<Sample48>;
extern template class QUILLMARSH_API Image<Sample64>;
extern template class QUILLMARSH_API Image<Sample96>;
extern template class QUILLMARSH_API Image<Sample128>;

/// Gives borrowed memory the interface of an image, such as a locked texture surface or a decoded bitmap. Behaves like
/// SignalBaseFromExternalStorageAdapter.
class QUILLMARSH_API ImageBaseFromExternalStorageAdapter : public ImageBase
{
public:
    /// Creates an empty adapter for samples of this format.
    explicit ImageBaseFromExternalStorageAdapter(eSampleFormat format);

    /// Borrows a block of rows without padding, until the next call or the end of the adapter. Null forgets the block;
    /// the dimensions are then ignored. Asserts "Invalid argument combination passed to ImageBase adapter." for a
    /// dimension of 0.
    void SetExternalStorage(unsigned char *samples, unsigned int numRows, unsigned int numColumns);

    /// Throws InvalidUsageException.
    void ReserveSampleStorage(unsigned int numSamples) override;
    /// Throws InvalidUsageException.
    void ReserveSampleStorage(unsigned int numRows, unsigned int numColumns) override;
    /// Does nothing.
    void ReleaseSampleStorage() override;
};

/// Creates an image of the plain sample with the format's size, as ManufactureSignal does; null when no plain sample
/// has this size. The caller owns it.
QUILLMARSH_API ImageBase *ManufactureImage(eSampleFormat format, unsigned int numRows, unsigned int numColumns);

} // namespace quillmarsh

#endif
