// Two-dimensional arrays of samples: untyped, typed, and over memory that somebody else owns.
#ifndef QUILLMARSH_DATAOBJECTS_IMAGEBASE_H
#define QUILLMARSH_DATAOBJECTS_IMAGEBASE_H

#include <quillmarsh/dataobjects/signalbase.h>

namespace quillmarsh
{

/// Rows of samples in one block without padding. Columns run fastest; row 0 comes first in memory.
///
/// Either both dimensions are above zero or both are zero. Threads: as SignalBase.
class QUILLMARSH_API ImageBase : public virtual SignalBase
{
public:
    ~ImageBase() override;

    /// One row of this many columns.
    void ReserveSampleStorage(unsigned int numSamples) override;
    void ReleaseSampleStorage() override;
    /// Holds this many rows and columns afterwards; none at all when either is 0. As long as the product stays, so do
    /// block and contents.
    virtual void ReserveSampleStorage(unsigned int numRows, unsigned int numColumns);

    /// @name Size
    /// @{
    unsigned int GetNumRows() const { return numRows_; }
    unsigned int GetNumColumns() const { return numColumns_; }
    unsigned int GetRowByteSize() const { return rowByteSize_; }
    /// @}

    using SignalBase::SampleB;
    /// @name First byte of one sample
    /// Asserts "Accessing 0x0 image.", "Row-index out of range." and "Column-index out of range."; null after an ignored
    /// assertion.
    /// @{
    unsigned char const *SampleB(unsigned int row, unsigned int column) const;
    unsigned char *SampleB(unsigned int row, unsigned int column);
    /// @}

    using SignalBase::CheckDimensionMatch;
    /// Whether rows and columns are equal.
    bool CheckDimensionMatch(ImageBase const &other) const;

protected:
    /// Empty. As with every virtual base, it is the most derived class that sets the size of the samples.
    explicit ImageBase(unsigned int sampleByteSize);

    /// Stores the dimensions, both as 0 if either is, and what follows from them.
    void SetupInternalImageProperties(unsigned int numRows, unsigned int numColumns);

    /// Asserts that row and column name a sample. False after an ignored assertion.
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
    /// With undefined contents; empty when a dimension is 0.
    Image(eSampleFormat format, unsigned int numRows, unsigned int numColumns)
        : SignalBase(sizeof(T)),
          ImageBase(sizeof(T)),
          Signal<T>(sample_formats::UnknownSampleFormat(sizeof(T)), 0)
    {
        SignalBase::SetSampleFormat(format);
        if (numRows != 0 && numColumns != 0)
            ImageBase::ReserveSampleStorage(numRows, numColumns);
    }

    using Signal<T>::Sample;
    /// @name Samples by their type; as the untyped forms
    /// @{
    T const &Sample(unsigned int row, unsigned int column) const
    {
        return SignalBase::OrStandIn(reinterpret_cast<T const *>(ImageBase::SampleB(row, column)));
    }
    T &Sample(unsigned int row, unsigned int column)
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

/// Gives a block of memory that somebody else owns the interface of an image: a locked texture surface, a decoded
/// bitmap. As SignalBaseFromExternalStorageAdapter.
class QUILLMARSH_API ImageBaseFromExternalStorageAdapter : public ImageBase
{
public:
    /// Empty, for samples of this format.
    explicit ImageBaseFromExternalStorageAdapter(eSampleFormat format);

    /// Borrows a block of rows without padding, which has to outlive its use here; null lets go of it, whatever the
    /// dimensions. Asserts "Invalid argument combination passed to ImageBase adapter." for a dimension of 0.
    void SetExternalStorage(unsigned char *samples, unsigned int numRows, unsigned int numColumns);

    /// Throws InvalidUsageException.
    void ReserveSampleStorage(unsigned int numSamples) override;
    /// Throws InvalidUsageException.
    void ReserveSampleStorage(unsigned int numRows, unsigned int numColumns) override;
    /// Does nothing.
    void ReleaseSampleStorage() override;
};

/// Makes an image whose record the sample size of the format selects, as ManufactureSignal does; null for a size that
/// has no record. The caller owns it.
QUILLMARSH_API ImageBase *ManufactureImage(eSampleFormat format, unsigned int numRows, unsigned int numColumns);

} // namespace quillmarsh

#endif
