// Three-dimensional arrays of samples: untyped, typed, and over memory that somebody else owns.
#ifndef QUILLMARSH_DATAOBJECTS_VOLUMEBASE_H
#define QUILLMARSH_DATAOBJECTS_VOLUMEBASE_H

#include <quillmarsh/dataobjects/signalbase.h>

namespace quillmarsh
{

/// Layers of rows of samples in one block without padding. Columns run fastest, then rows, then layers.
///
/// Either all dimensions are above zero or all are zero. Threads: as SignalBase.
class QUILLMARSH_API VolumeBase : public virtual SignalBase
{
public:
    ~VolumeBase() override;

    /// One layer with one row of this many columns.
    void ReserveSampleStorage(unsigned int numSamples) override;
    void ReleaseSampleStorage() override;
    /// Holds this many layers, rows and columns afterwards; none at all when one of them is 0. As long as the product
    /// stays, so do block and contents.
    virtual void ReserveSampleStorage(unsigned int numLayers, unsigned int numRows, unsigned int numColumns);

    /// @name Size
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
    /// Whether layers, rows and columns are equal.
    bool CheckDimensionMatch(VolumeBase const &other) const;

protected:
    /// Empty. As with every virtual base, it is the most derived class that sets the size of the samples.
    explicit VolumeBase(unsigned int sampleByteSize);

    /// Stores the dimensions, all as 0 if one is, and what follows from them.
    void SetupInternalVolumeProperties(unsigned int numLayers, unsigned int numRows, unsigned int numColumns);

    /// Asserts that layer, row and column name a sample. False after an ignored assertion.
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
    /// With undefined contents; empty when a dimension is 0.
    Volume(eSampleFormat format, unsigned int numLayers, unsigned int numRows, unsigned int numColumns)
        : SignalBase(sizeof(T)),
          VolumeBase(sizeof(T)),
          Signal<T>(sample_formats::UnknownSampleFormat(sizeof(T)), 0)
    {
        SignalBase::SetSampleFormat(format);
        if (numLayers != 0 && numRows != 0 && numColumns != 0)
            VolumeBase::ReserveSampleStorage(numLayers, numRows, numColumns);
    }

    using Signal<T>::Sample;
    /// @name Samples by their type; as the untyped forms
    /// @{
    T const &Sample(unsigned int layer, unsigned int row, unsigned int column) const
    {
        return SignalBase::OrStandIn(reinterpret_cast<T const *>(VolumeBase::SampleB(layer, row, column)));
    }
    T &Sample(unsigned int layer, unsigned int row, unsigned int column)
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

/// Gives a block of memory that somebody else owns the interface of a volume. As SignalBaseFromExternalStorageAdapter.
class QUILLMARSH_API VolumeBaseFromExternalStorageAdapter : public VolumeBase
{
public:
    /// Empty, for samples of this format.
    explicit VolumeBaseFromExternalStorageAdapter(eSampleFormat format);

    /// Borrows a block without padding, which has to outlive its use here; null lets go of it, whatever the dimensions.
    /// Asserts "Invalid argument combination passed to VolumeBase adapter." for a dimension of 0.
    void SetExternalStorage(unsigned char *samples, unsigned int numLayers, unsigned int numRows,
                            unsigned int numColumns);

    /// Throws InvalidUsageException.
    void ReserveSampleStorage(unsigned int numSamples) override;
    /// Throws InvalidUsageException.
    void ReserveSampleStorage(unsigned int numLayers, unsigned int numRows, unsigned int numColumns) override;
    /// Does nothing.
    void ReleaseSampleStorage() override;
};

/// Makes a volume whose record the sample size of the format selects, as ManufactureSignal does; null for a size that
/// has no record. The caller owns it.
QUILLMARSH_API VolumeBase *ManufactureVolume(eSampleFormat format, unsigned int numLayers, unsigned int numRows,
                                             unsigned int numColumns);

} // namespace quillmarsh

#endif
