// Three-dimensional arrays of samples: untyped, typed, and over borrowed memory.
#ifndef QUILLMARSH_DATAOBJECTS_VOLUMEBASE_H
#define QUILLMARSH_DATAOBJECTS_VOLUMEBASE_H

#include <quillmarsh/dataobjects/signalbase.h>

namespace quillmarsh
{

/// Layers of rows of samples in one block without padding: layer 0 comes first in memory, row 0 first in its layer, and
/// column 0 first in its row.
///
/// All dimensions are above zero, or all are zero. For threads, the rules of SignalBase apply.
class QUILLMARSH_API VolumeBase : public virtual SignalBase
{
public:
    ~VolumeBase() override;

    /// Makes one layer with one row of this many columns.
    void ReserveSampleStorage(unsigned int numSamples) override;
    void ReleaseSampleStorage() override;
    /// Makes this many layers, rows and columns; none when one of them is 0. Keeps block and contents if the product is
    /// unchanged. Throws NoMemoryException, and is empty then.
    virtual void ReserveSampleStorage(unsigned int numLayers, unsigned int numRows, unsigned int numColumns);

    /// @name Size, in layers, rows, columns, samples and bytes
    /// All are 0 for an empty volume.
    /// @{
    unsigned int GetNumLayers() const { return numLayers_; }
    unsigned int GetNumRows() const { return numRows_; }
    unsigned int GetNumColumns() const { return numColumns_; }
    unsigned int GetNumSamplesPerLayer() const { return numSamplesPerLayer_; }
    unsigned int GetRowByteSize() const { return rowByteSize_; }
    unsigned int GetLayerByteSize() const { return layerByteSize_; }
    /// @}

    using SignalBase::SampleB;
    /// @name First byte of one sample
    /// Asserts "Accessing 0x0x0 volume.", "Layer-index out of range.", "Row-index out of range." and "Column-index out
    /// of range."; null after an ignored assertion.
    /// @{
    unsigned char const *SampleB(unsigned int layer, unsigned int row, unsigned int column) const;
    unsigned char *SampleB(unsigned int layer, unsigned int row, unsigned int column);
    /// @}

    using SignalBase::CheckDimensionMatch;
    /// True when both have as many layers, rows and columns.
    bool CheckDimensionMatch(VolumeBase const &other) const;

protected:
    /// Creates an empty volume. SignalBase is a virtual base, so the most derived class sets the size of the samples.
    explicit VolumeBase(unsigned int sampleByteSize);

    /// Stores the dimensions, all as 0 if one is 0, and the sizes that result.
    void SetupInternalVolumeProperties(unsigned int numLayers, unsigned int numRows, unsigned int numColumns);

    /// Asserts that layer, row and column are in range. False after an ignored assertion.
    bool CheckAccess3D(unsigned int layer, unsigned int row, unsigned int column) const;

private:
    std::size_t OffsetOf(unsigned int layer, unsigned int row, unsigned int column) const;

    unsigned int numLayers_ = 0;
    unsigned int numRows_ = 0;
    unsigned int numColumns_ = 0;
    unsigned int numSamplesPerLayer_ = 0;
    unsigned int rowByteSize_ = 0;
    unsigned int layerByteSize_ = 0;
};

/// Volume whose samples are records of the type T, one of the eight plain samples.
template<typename T>
class Volume : public VolumeBase, public Signal<T>
{
public:
    /// Creates a volume with undefined contents; empty when a dimension is 0.
    QUILLMARSH_API_MEMBER Volume(eSampleFormat format, unsigned int numLayers, unsigned int numRows,
                                 unsigned int numColumns)
        : SignalBase(sizeof(T)),
          VolumeBase(sizeof(T)),
          Signal<T>(sample_formats::UnknownSampleFormat(sizeof(T)), 0)
    {
        SignalBase::SetSampleFormat(format);
        if (numLayers != 0 && numRows != 0 && numColumns != 0)
            VolumeBase::ReserveSampleStorage(numLayers, numRows, numColumns);
    }

    using Signal<T>::Sample;
    /// @name Typed samples
    /// They assert like the untyped forms. After an ignored assertion, the reference is to a substitute of the calling
    /// thread with bytes of 0.
    /// @{
    QUILLMARSH_API_MEMBER T const &Sample(unsigned int layer, unsigned int row, unsigned int column) const
    {
        return SignalBase::OrStandIn(reinterpret_cast<T const *>(VolumeBase::SampleB(layer, row, column)));
    }
    QUILLMARSH_API_MEMBER T &Sample(unsigned int layer, unsigned int row, unsigned int column)
    {
        return SignalBase::OrStandIn(reinterpret_cast<T *>(VolumeBase::SampleB(layer, row, column)));
    }
    /// @}
};

extern template class QUILLMARSH_API Volume<Sample8>;
extern template class QUILLMARSH_API Volume<Sample16>;
extern template class QUILLMARSH_API Volume<Sample24>;
extern template class QUILLMARSH_API Volume<Sample32>;
extern template class QUILLMARSH_API Volume<Sample48>;
extern template class QUILLMARSH_API Volume<Sample64>;
extern template class QUILLMARSH_API Volume<Sample96>;
extern template class QUILLMARSH_API Volume<Sample128>;

/// Gives borrowed memory the interface of a volume. Behaves like SignalBaseFromExternalStorageAdapter.
class QUILLMARSH_API VolumeBaseFromExternalStorageAdapter : public VolumeBase
{
public:
    /// Creates an empty adapter for samples of this format.
    explicit VolumeBaseFromExternalStorageAdapter(eSampleFormat format);

    /// Borrows a block without padding, until the next call or the end of the adapter. Null forgets the block; the
    /// dimensions are then ignored. Asserts "Invalid argument combination passed to VolumeBase adapter." for a
    /// dimension of 0.
    void SetExternalStorage(unsigned char *samples, unsigned int numLayers, unsigned int numRows,
                            unsigned int numColumns);

    /// Throws InvalidUsageException.
    void ReserveSampleStorage(unsigned int numSamples) override;
    /// Throws InvalidUsageException.
    void ReserveSampleStorage(unsigned int numLayers, unsigned int numRows, unsigned int numColumns) override;
    /// Does nothing.
    void ReleaseSampleStorage() override;
};

/// Creates a volume of the plain sample with the format's size, as ManufactureSignal does; null when no plain sample
/// has this size. The caller owns it.
QUILLMARSH_API VolumeBase *ManufactureVolume(eSampleFormat format, unsigned int numLayers, unsigned int numRows,
                                             unsigned int numColumns);

} // namespace quillmarsh

#endif
