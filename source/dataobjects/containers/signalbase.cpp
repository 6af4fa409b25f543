#include <quillmarsh/dataobjects/signalbase.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/exception.h>

#include "source/dataobjects/containers/checkedsize.h"
#include "source/dataobjects/containers/manufacture.h"
#include "source/platform/allocation.h"

#include <new>

namespace quillmarsh
{
namespace
{

// Blocks begin at a cache line, so that no vector crosses one.
constexpr std::align_val_t s_blockAlignment{64};

// From this size on, a block gets large pages.
constexpr std::size_t s_largeBlockSize = 8 << 20;

/// Allocates an uninitialised block. Calls the program's new-handler, which may free memory, before it fails.
unsigned char *NewBlock(std::size_t byteSize)
{
    void *const block = ::operator new[](byteSize, s_blockAlignment, std::nothrow);
    if (!block)
        ThrowNoMemory(byteSize);
    if (byteSize >= s_largeBlockSize)
        platform::PreferLargePages(block, byteSize);
    return static_cast<unsigned char *>(block);
}

void DeleteBlock(unsigned char *block)
{
    ::operator delete[](block, s_blockAlignment);
}

} // namespace

SignalBase::SignalBase(unsigned int sampleByteSize) : sampleByteSize_(sampleByteSize)
{
    QUILLMARSH_ASSERT(sampleByteSize != 0, "Invalid sample-byte-size.");
}

SignalBase::~SignalBase()
{
    DeallocateStorage();
}

void SignalBase::ReserveSampleStorage(unsigned int numSamples)
{
    if (numSamples != numSamples_)
        AllocateStorage(numSamples, nullptr);
}

void SignalBase::ReleaseSampleStorage()
{
    DeallocateStorage();
}

unsigned char const *SignalBase::SampleB(unsigned int index) const
{
    return CheckAccess1D(index) ? samples_ + std::size_t{index} * sampleByteSize_ : nullptr;
}

unsigned char *SignalBase::SampleB(unsigned int index)
{
    return CheckAccess1D(index) ? samples_ + std::size_t{index} * sampleByteSize_ : nullptr;
}

void SignalBase::SetSampleFormat(eSampleFormat format)
{
    QUILLMARSH_ASSERT(IsValidSampleFormat(format), "Setting invalid sample-format.");
    format_ = format;
}

bool SignalBase::IsValidSampleFormat(eSampleFormat format) const
{
    return sample_formats::ExtractByteSize(format) == sampleByteSize_;
}

bool SignalBase::CheckDimensionMatch(SignalBase const &other) const
{
    return numSamples_ == other.numSamples_;
}

bool SignalBase::CheckSampleByteSizeMatch(SignalBase const &other) const
{
    return sampleByteSize_ == other.sampleByteSize_;
}

bool SignalBase::CheckTotalByteSizeMatch(SignalBase const &other) const
{
    return totalByteSize_ == other.totalByteSize_;
}

bool SignalBase::CheckSampleFormatMatch(SignalBase const &other) const
{
    return format_ == other.format_;
}

void SignalBase::AllocateStorage(unsigned int numSamples, unsigned char *external)
{
    DeallocateStorage();
    std::uint64_t const byteSize = std::uint64_t{numSamples} * sampleByteSize_;
    if (byteSize > s_largestByteSize)
        ThrowNoMemory(byteSize);
    if (external)
        samples_ = external;
    else if (numSamples != 0)
        samples_ = NewBlock(static_cast<std::size_t>(byteSize));
    // Set after the allocation, so that the container is empty if that throws.
    numSamples_ = numSamples;
    totalByteSize_ = static_cast<unsigned int>(byteSize);
    externalStorage_ = external != nullptr;
}

void SignalBase::DeallocateStorage()
{
    numSamples_ = 0;
    totalByteSize_ = 0;
    if (!externalStorage_)
        DeleteBlock(samples_);
    samples_ = nullptr;
    externalStorage_ = false;
}

bool SignalBase::CheckAccess1D(unsigned int index) const
{
    QUILLMARSH_ASSERT(numSamples_ != 0, "Accessing 0-size signal.");
    QUILLMARSH_ASSERT(index < numSamples_, "Sample-index out of range.");
    return index < numSamples_;
}

unsigned char *SignalBase::GetStandIn()
{
    constinit thread_local Sample128 standIn = {};
    standIn = {};
    return standIn.bytes;
}

template class Signal<Sample8>;
template class Signal<Sample16>;
template class Signal<Sample24>;
template class Signal<Sample32>;
template class Signal<Sample48>;
template class Signal<Sample64>;
template class Signal<Sample96>;
template class Signal<Sample128>;

SignalBaseFromExternalStorageAdapter::SignalBaseFromExternalStorageAdapter(eSampleFormat format)
    : SignalBase(sample_formats::ExtractByteSize(format))
{
    SetSampleFormat(format);
}

void SignalBaseFromExternalStorageAdapter::SetExternalStorage(unsigned char *samples, unsigned int numSamples)
{
    if (!samples)
    {
        DeallocateStorage();
        return;
    }
    QUILLMARSH_ASSERT(numSamples != 0, "Invalid argument combination passed to SignalBase adapter.");
    AllocateStorage(numSamples, samples);
}

void SignalBaseFromExternalStorageAdapter::ReserveSampleStorage(unsigned int)
{
    QUILLMARSH_THROW(InvalidUsageException, "Cannot manage external storage through SignalBase adapter.");
}

void SignalBaseFromExternalStorageAdapter::ReleaseSampleStorage() {}

SignalBase *ManufactureSignal(eSampleFormat format, unsigned int numSamples)
{
    return Manufacture<SignalBase, Signal>(format, numSamples);
}

} // namespace quillmarsh
