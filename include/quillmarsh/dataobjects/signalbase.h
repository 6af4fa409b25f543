// One-dimensional arrays of samples: untyped, typed, and over memory that somebody else owns.
#ifndef QUILLMARSH_DATAOBJECTS_SIGNALBASE_H
#define QUILLMARSH_DATAOBJECTS_SIGNALBASE_H

#include <quillmarsh/dataobjects/sampleformats.h>

#include <cstddef>

namespace quillmarsh
{

/// One contiguous block of samples of a fixed size, with a format code beside it.
///
/// A container knows nothing of what its bytes mean: the format code tells it to those who work on them. Images and
/// volumes are signals too, of as many samples as they have in all. A container that cannot be held (its size passes
/// 32 bits, or there is no memory) throws NoMemoryException and is empty then.
///
/// There is no lock: any number of threads may read, and who changes the storage keeps the others out.
class QUILLMARSH_API SignalBase : NoCopy
{
public:
    virtual ~SignalBase();

    /// Holds this many samples afterwards. An unchanged count keeps block and contents and costs nothing; another one
    /// gives a new block with undefined contents.
    virtual void ReserveSampleStorage(unsigned int numSamples);
    /// Lets go of all samples. The format stays.
    virtual void ReleaseSampleStorage();

    /// @name Size and format
    /// @{
    eSampleFormat GetSampleFormat() const { return format_; }
    unsigned int GetNumSamples() const { return numSamples_; }
    unsigned int GetSampleByteSize() const { return sampleByteSize_; }
    unsigned int GetTotalByteSize() const { return totalByteSize_; }
    /// @}

    /// @name First byte of all samples; null when there are none
    /// @{
    unsigned char const *GetSamplesB() const { return samples_; }
    unsigned char *GetSamplesB() { return samples_; }
    /// @}

    /// @name First byte of one sample
    /// Asserts "Accessing 0-size signal." and "Sample-index out of range."; null after an ignored assertion.
    /// @{
    unsigned char const *SampleB(unsigned int index) const;
    unsigned char *SampleB(unsigned int index);
    /// @}

    /// Changes the tag only; the samples stay as they are. Asserts "Setting invalid sample-format." for a format of
    /// another sample size.
    void SetSampleFormat(eSampleFormat format);
    /// Whether samples of this format have the size of those in here.
    bool IsValidSampleFormat(eSampleFormat format) const;

    /// @name Comparison with another container
    /// They report, and do not assert.
    /// @{
    bool CheckDimensionMatch(SignalBase const &other) const;
    bool CheckSampleByteSizeMatch(SignalBase const &other) const;
    bool CheckTotalByteSizeMatch(SignalBase const &other) const;
    bool CheckSampleFormatMatch(SignalBase const &other) const;
    /// @}

protected:
    /// Empty, with a size of samples that never changes. Asserts "Invalid sample-byte-size." for 0.
    explicit SignalBase(unsigned int sampleByteSize);

    /// Drops what is held. Then borrows the external block, or makes one of its own when that is null.
    void AllocateStorage(unsigned int numSamples, unsigned char *external);
    /// Frees the block, or forgets it when it is borrowed.
    void DeallocateStorage();

    /// Asserts that the index names a sample. False after an ignored assertion.
    bool CheckAccess1D(unsigned int index) const;

    /// The sample; a stand-in where there is none.
    template<typename T>
    static T &OrStandIn(T *sample)
    {
        return sample ? *sample : *reinterpret_cast<T *>(GetStandIn());
    }

private:
    /// Bytes of 0, as many as the largest sample has, for the calling thread.
    static unsigned char *GetStandIn();

    eSampleFormat format_ = e_format_none;
    unsigned int sampleByteSize_;
    unsigned int numSamples_ = 0;
    unsigned int totalByteSize_ = 0;
    bool externalStorage_ = false;
    unsigned char *samples_ = nullptr;
};

/// Signal whose samples are records of the type T, one of the eight plain samples.
template<typename T>
class Signal : public virtual SignalBase
{
    static_assert(alignof(T) == 1);

public:
    /// With undefined contents; 0 samples make it empty.
    Signal(eSampleFormat format, unsigned int numSamples) : SignalBase(sizeof(T))
    {
        SetSampleFormat(format);
        if (numSamples != 0)
            SignalBase::ReserveSampleStorage(numSamples);
    }

    /// @name Samples by their type; as the untyped forms
    /// In place of null, a reference is to a stand-in of the calling thread, with bytes of 0.
    /// @{
    T const *GetSamples() const { return reinterpret_cast<T const *>(GetSamplesB()); }
    T *GetSamples() { return reinterpret_cast<T *>(GetSamplesB()); }
    T const &Sample(unsigned int index) const
    {
        return SignalBase::OrStandIn(reinterpret_cast<T const *>(SignalBase::SampleB(index)));
    }
    T &Sample(unsigned int index) { return SignalBase::OrStandIn(reinterpret_cast<T *>(SignalBase::SampleB(index))); }
    /// @}
};

// Made in the library, so that every module has the same classes.
extern template class QUILLMARSH_API Signal<Sample8>;
extern template class QUILLMARSH_API Signal<Sample16>;
extern template class QUILLMARSH_API Signal<Sample24>;
extern template class QUILLMARSH_API Signal<Sample32>;
extern template class QUILLMARSH_API Signal<Sample48>;
extern template class QUILLMARSH_API Signal<Sample64>;
extern template class QUILLMARSH_API Signal<Sample96>;
extern template class QUILLMARSH_API Signal<Sample128>;

/// Gives a block of memory that somebody else owns the interface of a signal. The block is never freed and never grown:
/// reserving throws InvalidUsageException, and only SetExternalStorage with null lets go of the block.
class QUILLMARSH_API SignalBaseFromExternalStorageAdapter : public SignalBase
{
public:
    /// Empty, for samples of this format.
    explicit SignalBaseFromExternalStorageAdapter(eSampleFormat format);

    /// Borrows a block, which has to outlive its use here; null lets go of it, whatever the count. Asserts "Invalid
    /// argument combination passed to SignalBase adapter." for a block of 0 samples.
    void SetExternalStorage(unsigned char *samples, unsigned int numSamples);

    /// Throws InvalidUsageException.
    void ReserveSampleStorage(unsigned int numSamples) override;
    /// Does nothing.
    void ReleaseSampleStorage() override;
};

/// Makes a signal whose record the sample size of the format selects: 1, 2, 3, 4, 6, 8, 12 or 16 bytes; null for any
/// other size. The caller owns it.
QUILLMARSH_API SignalBase *ManufactureSignal(eSampleFormat format, unsigned int numSamples);

} // namespace quillmarsh

#endif
