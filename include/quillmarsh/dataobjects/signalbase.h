// One-dimensional arrays of samples: untyped, typed, and over borrowed memory.
#ifndef QUILLMARSH_DATAOBJECTS_SIGNALBASE_H
#define QUILLMARSH_DATAOBJECTS_SIGNALBASE_H

#include <quillmarsh/dataobjects/sampleformats.h>

#include <cstddef>

namespace quillmarsh
{

/// One contiguous block of samples of a fixed size, with a format code.
///
/// A container does not interpret its bytes; the format code gives their meaning to other code. Images and volumes are
/// signals, too, with all their samples in one row. If the size exceeds 32 bits, or memory is short, the container
/// throws NoMemoryException and is empty.
///
/// There is no lock: several threads may read at the same time, but a thread that changes the storage must be alone.
class QUILLMARSH_API SignalBase : NoCopy
{
public:
    virtual ~SignalBase();

    /// Makes this many samples. An unchanged count keeps block and contents; another count gives a new block with
    /// undefined contents. Throws NoMemoryException, and is empty then.
    virtual void ReserveSampleStorage(unsigned int numSamples);
    /// Releases all samples. Keeps the format.
    virtual void ReleaseSampleStorage();

    /// @name Size and format
    /// Sizes are in bytes, and 0 for an empty container except the size of a sample.
    /// @{
    eSampleFormat GetSampleFormat() const { return format_; }
    unsigned int GetNumSamples() const { return numSamples_; }
    unsigned int GetSampleByteSize() const { return sampleByteSize_; }
    unsigned int GetTotalByteSize() const { return totalByteSize_; }
    /// @}

    /// @name First byte of all samples
    /// Null for an empty container. Valid until the storage changes.
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

    /// Changes only the format code; the samples stay unchanged. Asserts "Setting invalid sample-format." for a format
    /// of another sample size.
    void SetSampleFormat(eSampleFormat format);
    /// True when samples of this format have the size of this container's samples.
    bool IsValidSampleFormat(eSampleFormat format) const;

    /// @name Comparison with another container
    /// They return the result, and do not assert.
    /// @{
    bool CheckDimensionMatch(SignalBase const &other) const;
    bool CheckSampleByteSizeMatch(SignalBase const &other) const;
    bool CheckTotalByteSizeMatch(SignalBase const &other) const;
    bool CheckSampleFormatMatch(SignalBase const &other) const;
    /// @}

protected:
    /// Creates an empty container. The size of a sample never changes. Asserts "Invalid sample-byte-size." for 0.
    explicit SignalBase(unsigned int sampleByteSize);

    /// Releases the samples. Then borrows the external block, or allocates a block if that is null.
    void AllocateStorage(unsigned int numSamples, unsigned char *external);
    /// Frees the block, or forgets it if it is borrowed.
    void DeallocateStorage();

    /// Asserts that the index is in range. False after an ignored assertion.
    bool CheckAccess1D(unsigned int index) const;

    /// Returns the sample, or a substitute for null.
    template<typename T>
    static T &OrStandIn(T *sample)
    {
        return sample ? *sample : *reinterpret_cast<T *>(GetStandIn());
    }

private:
    /// Returns the calling thread's substitute: bytes of 0, as many as the largest sample has.
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
    /// Creates a signal with undefined contents; empty for 0 samples.
    QUILLMARSH_API_MEMBER Signal(eSampleFormat format, unsigned int numSamples) : SignalBase(sizeof(T))
    {
        SetSampleFormat(format);
        if (numSamples != 0)
            SignalBase::ReserveSampleStorage(numSamples);
    }

    /// @name Typed samples
    /// They assert like the untyped forms. After an ignored assertion, the reference is to a substitute of the calling
    /// thread with bytes of 0.
    /// @{
    QUILLMARSH_API_MEMBER T const *GetSamples() const { return reinterpret_cast<T const *>(GetSamplesB()); }
    QUILLMARSH_API_MEMBER T *GetSamples() { return reinterpret_cast<T *>(GetSamplesB()); }
    QUILLMARSH_API_MEMBER T const &Sample(unsigned int index) const
    {
        return SignalBase::OrStandIn(reinterpret_cast<T const *>(SignalBase::SampleB(index)));
    }
    QUILLMARSH_API_MEMBER T &Sample(unsigned int index)
    {
        return SignalBase::OrStandIn(reinterpret_cast<T *>(SignalBase::SampleB(index)));
    }
    /// @}
};

// Instantiated in the library, so that every module uses the same classes.
extern template class QUILLMARSH_API Signal<Sample8>;
extern template class QUILLMARSH_API Signal<Sample16>;
extern template class QUILLMARSH_API Signal<Sample24>;
extern template class QUILLMARSH_API Signal<Sample32>;
extern template class QUILLMARSH_API Signal<Sample48>;
extern template class QUILLMARSH_API Signal<Sample64>;
extern template class QUILLMARSH_API Signal<Sample96>;
extern template class QUILLMARSH_API Signal<Sample128>;

/// Gives borrowed memory the interface of a signal. The adapter never frees or resizes the block: reserving throws
/// InvalidUsageException, and only SetExternalStorage with null forgets the block.
class QUILLMARSH_API SignalBaseFromExternalStorageAdapter : public SignalBase
{
public:
    /// Creates an empty adapter for samples of this format.
    explicit SignalBaseFromExternalStorageAdapter(eSampleFormat format);

    /// Borrows a block until the next call or the end of the adapter. Null forgets the block; the count is then
    /// ignored. Asserts "Invalid argument combination passed to SignalBase adapter." for a block of 0 samples.
    void SetExternalStorage(unsigned char *samples, unsigned int numSamples);

    /// Throws InvalidUsageException.
    void ReserveSampleStorage(unsigned int numSamples) override;
    /// Does nothing.
    void ReleaseSampleStorage() override;
};

/// Creates a signal of the plain sample with the format's size: 1, 2, 3, 4, 6, 8, 12 or 16 bytes; null for any other
/// size. The caller owns it.
QUILLMARSH_API SignalBase *ManufactureSignal(eSampleFormat format, unsigned int numSamples);

} // namespace quillmarsh

#endif
