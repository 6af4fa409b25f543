#include <quillmarsh/dataobjects/signaloperations.h>

#include <quillmarsh/dataobjects/sampleprocessors.h>

#include "source/dataobjects/operations/inplacekernels.h"
#include "source/dataobjects/transfer/sampleparts.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace quillmarsh
{
namespace
{

using namespace element_processors;

/// Sets bits of a few bytes.
class Process_FillMasked final : public ElementProcessorInplace<unsigned char>
{
public:
    Process_FillMasked(std::span<unsigned char const> masks, std::span<unsigned char const> values)
        : masks_(masks),
          values_(values)
    {
    }
    void Process(unsigned char *element) override
    {
        for (std::size_t i = 0; i < masks_.size(); ++i)
            element[i] = static_cast<unsigned char>((element[i] & ~masks_[i]) | values_[i]);
    }

private:
    std::span<unsigned char const> masks_, values_;
};

/// Sets alpha by a colour key.
class Process_AlphaFromColorKey_A8R8G8B8 final : public ElementProcessorInplace<unsigned char>
{
public:
    Process_AlphaFromColorKey_A8R8G8B8(color4b key, unsigned char matchAlpha, unsigned char otherAlpha)
        : key_(key),
          matchAlpha_(matchAlpha),
          otherAlpha_(otherAlpha)
    {
    }
    void Process(unsigned char *element) override
    {
        bool const matches = element[0] == key_.b && element[1] == key_.g && element[2] == key_.r;
        element[3] = matches ? matchAlpha_ : otherAlpha_;
    }

private:
    color4b key_;
    unsigned char matchAlpha_, otherAlpha_;
};

/// Sets alpha to the luminance, then the colour by a threshold.
class Process_BGRToA_ThresholdBGR final : public ElementProcessorInplace<unsigned char>
{
public:
    explicit Process_BGRToA_ThresholdBGR(unsigned char threshold) : threshold_(threshold, 0, 0, 255) {}
    void Process(unsigned char *element) override
    {
        luminance_.Process(element + 3, element);
        for (unsigned int i = 0; i < 3; ++i)
            threshold_.Process(element + i);
    }

private:
    sample_processors::CopyConverter_B8G8R8_To_L8 luminance_;
    Process_ThresholdSegmentation<unsigned char> threshold_;
};

/// Returns an order of a sample's bytes in which byte i comes from `place(i)`.
template<typename Place>
ByteOrder MakeOrder(unsigned int sampleSize, Place place)
{
    ByteOrder order{};
    order.sampleSize = sampleSize;
    for (unsigned int i = 0; i < std::size(order.order); ++i)
        order.order[i] = static_cast<unsigned char>(i < sampleSize ? place(i) : i);
    return order;
}

/// Returns the place from which a byte comes when a part is reversed. Bytes outside the part keep their places.
constexpr unsigned int ReversedPlace(unsigned int at, unsigned int offset, unsigned int length)
{
    bool const isInPart = at >= offset && at < offset + length;
    return isInPart ? 2 * offset + length - 1 - at : at;
}

template<typename Processor>
void FlipBytes(SignalBase &signal, unsigned int offset, unsigned int length, Processor processor)
{
    SampleRun const run(signal);
    std::size_t done = 0;
    if (run.samples && run.sampleSize <= 16)
    {
        ByteOrder const order =
            MakeOrder(run.sampleSize, [&](unsigned int i) { return ReversedPlace(i, offset, length); });
        done = ReorderBytes(run.samples, run.samples, run.count, order);
    }
    run.ProcessRest(done, offset, processor);
}

/// Copies a part of each sample in reversed order.
template<unsigned int length>
void CopyFlipped(SignalBase &dst, unsigned int dstOffset, SignalBase const &src, unsigned int srcOffset)
{
    std::size_t const count = std::min(dst.GetNumSamples(), src.GetNumSamples());
    unsigned int const size = dst.GetSampleByteSize();
    std::size_t done = 0;
    if (count != 0 && size <= 16 && dst.CheckSampleByteSizeMatch(src) && !Overlap(dst, src))
    {
        unsigned int const last = srcOffset + length - 1;
        ByteOrder order = MakeOrder(size, [&](unsigned int i) { return last + dstOffset - i; });
        for (unsigned int i = 0; i < size; ++i)
            order.keeps[i] = i < dstOffset || i >= dstOffset + length;
        done = ReorderBytes(dst.GetSamplesB(), src.GetSamplesB(), count, order);
    }
    Copy_FlippedOrder<unsigned char, length> processor;
    bool const isEmpty = count == 0;
    ProcessElements(processor, count - done, isEmpty ? nullptr : dst.GetSamplesB() + done * size + dstOffset,
                    static_cast<std::ptrdiff_t>(size),
                    isEmpty ? nullptr : src.GetSamplesB() + done * src.GetSampleByteSize() + srcOffset,
                    static_cast<std::ptrdiff_t>(src.GetSampleByteSize()));
}

template<typename Sample>
void CopyFlippedSamples(Signal<Sample> &dst, Signal<Sample> const &src)
{
    QUILLMARSH_ASSERT(dst.CheckDimensionMatch(src), "Sample-count mismatch.");
    CopyFlipped<sizeof(Sample)>(dst, 0, src, 0);
}

/// Runs a threshold on bytes of each sample, which must exist.
template<typename Processor>
void RunThreshold(SignalBase &signal, unsigned int offset, unsigned int numBytes, ThresholdRule const &rule,
                  Processor processor)
{
    SampleRun const run(signal);
    std::size_t done = 0;
    if (run.samples)
    {
        BytePattern mask(run.sampleSize);
        for (unsigned int i = 0; i < numBytes; ++i)
            mask.Set(offset + i, std::array<unsigned char, 1>{0xFF});
        done = ApplyThreshold(run.samples, run.count, mask, rule);
    }
    for (unsigned int i = 0; i < numBytes; ++i)
        run.ProcessRest(done, offset + i, processor);
}

template<typename Processor>
void FilterByte(SignalBase &signal, unsigned int byteOffset, ThresholdRule const &rule, Processor processor)
{
    bool const holds = HoldsPart(signal, byteOffset, 1);
    QUILLMARSH_ASSERT(holds, "Byte-offset out of range.");
    if (holds)
        RunThreshold(signal, byteOffset, 1, rule, processor);
}

} // namespace

SampleFill::SampleFill(unsigned int sampleSize, unsigned int offset, std::span<unsigned char const> masks,
                       std::span<unsigned char const> values)
    : offset_(offset),
      masks_(masks),
      values_(values),
      maskPattern_(sampleSize),
      valuePattern_(sampleSize)
{
    maskPattern_.Set(offset, masks);
    valuePattern_.Set(offset, values);
}

void SampleFill::Run(SampleRun run) const
{
    std::size_t const done =
        run.samples ? FillMasked(run.samples, run.count, maskPattern_, valuePattern_) : std::size_t{0};
    run.ProcessRest(done, offset_, Process_FillMasked(masks_, values_));
}

void FillSamples(SignalBase &signal, unsigned int offset, std::span<unsigned char const> masks,
                 std::span<unsigned char const> values)
{
    SampleFill(signal.GetSampleByteSize(), offset, masks, values).Run(SampleRun(signal));
}

void CopySamples1D(SignalBase &dst, SignalBase const &src, unsigned int count, unsigned int dstOffset,
                   unsigned int srcOffset)
{
    if (count == 0)
        count = src.GetNumSamples();
    bool const fitsDst = FitsIn(dst.GetNumSamples(), dstOffset, count);
    bool const fitsSrc = FitsIn(src.GetNumSamples(), srcOffset, count);
    QUILLMARSH_ASSERT(dst.CheckSampleFormatMatch(src), "Sample-format mismatch.");
    QUILLMARSH_ASSERT(dst.GetNumSamples() != 0, "Destination is empty.");
    QUILLMARSH_ASSERT(src.GetNumSamples() != 0, "Source is empty.");
    QUILLMARSH_ASSERT(fitsDst, "Destination-offset/count out of range.");
    QUILLMARSH_ASSERT(fitsSrc, "Source-offset/count out of range.");
    std::size_t const size = dst.GetSampleByteSize();
    if (fitsDst && fitsSrc && count != 0 && dst.CheckSampleByteSizeMatch(src))
        std::memmove(dst.GetSamplesB() + dstOffset * size, src.GetSamplesB() + srcOffset * size, count * size);
}

SignalBase *CloneSignal(SignalBase const &src)
{
    AutoPtr<SignalBase> clone(ManufactureSignal(src.GetSampleFormat(), src.GetNumSamples()));
    if (clone)
        CopySamples1D(*clone, src, 0, 0, 0);
    return clone.release();
}

void FlipSamples(SignalBase &signal)
{
    FlipColumnsOfBlock(signal.GetSamplesB(), 1, signal.GetNumSamples(), signal.GetSampleByteSize());
}

void ProcessSamples_FlipByteOrder(Signal<Sample16> &signal)
{
    FlipBytes(signal, 0, 2, Process_FlipOrder2<unsigned char>());
}

void ProcessSamples_FlipByteOrder(Signal<Sample32> &signal)
{
    FlipBytes(signal, 0, 4, Process_FlipOrder4<unsigned char>());
}

void ProcessSamples_FlipByteOrder(SignalBase &signal)
{
    FlipBytes(signal, 0, signal.GetSampleByteSize(), Process_FlipOrderN<unsigned char>(signal.GetSampleByteSize()));
}

void ProcessSamples_3BytesFlipByteOrder(SignalBase &signal, unsigned int tripletOffset)
{
    bool const holds = HoldsPart(signal, tripletOffset, 3);
    QUILLMARSH_ASSERT(holds, "Triplet-offset out of range.");
    if (holds)
        FlipBytes(signal, tripletOffset, 3, Process_FlipOrder3<unsigned char>());
}

void ProcessSamples_SwapBytes(SignalBase &signal, unsigned int offset1, unsigned int offset2)
{
    unsigned int const size = signal.GetSampleByteSize();
    bool const holds1 = offset1 < size;
    bool const holds2 = offset2 < (holds1 ? size - offset1 : size);
    QUILLMARSH_ASSERT(holds1, "Byte-offset-1 out of range.");
    QUILLMARSH_ASSERT(holds2, "Byte-offset-2 out of range.");
    if (!holds1 || !holds2)
        return;
    SampleRun const run(signal);
    std::size_t done = 0;
    if (run.samples && size <= 16)
    {
        unsigned int const other = offset1 + offset2;
        auto const place = [&](unsigned int i) { return i == offset1 ? other : i == other ? offset1 : i; };
        done = ReorderBytes(run.samples, run.samples, run.count, MakeOrder(size, place));
    }
    run.ProcessRest(done, offset1, Process_Swap1<unsigned char>(offset2));
}

void CopySamples_FlippedByteOrder(Signal<Sample16> &dst, Signal<Sample16> const &src)
{
    CopyFlippedSamples(dst, src);
}

void CopySamples_FlippedByteOrder(Signal<Sample32> &dst, Signal<Sample32> const &src)
{
    CopyFlippedSamples(dst, src);
}

void CopySamples_3BytesFlippedByteOrder(SignalBase &dst, unsigned int dstOffset, SignalBase const &src,
                                        unsigned int srcOffset)
{
    bool const holdsDst = HoldsPart(dst, dstOffset, 3);
    bool const holdsSrc = HoldsPart(src, srcOffset, 3);
    QUILLMARSH_ASSERT(dst.CheckDimensionMatch(src), "Sample-count mismatch.");
    QUILLMARSH_ASSERT(holdsDst, "Destination-triplet-offset out of range.");
    QUILLMARSH_ASSERT(holdsSrc, "Source-triplet-offset out of range.");
    if (holdsDst && holdsSrc)
        CopyFlipped<3>(dst, dstOffset, src, srcOffset);
}

void ProcessSamples_Clear(SignalBase &signal)
{
    ProcessSamples_FillNBytes(signal, 0);
}

void ProcessSamples_Fill1Byte(SignalBase &signal, unsigned int byteOffset, unsigned char value)
{
    bool const holds = HoldsPart(signal, byteOffset, 1);
    QUILLMARSH_ASSERT(holds, "Byte-offset out of range.");
    if (holds)
        FillSamples(signal, byteOffset, std::array<unsigned char, 1>{0xFF}, {&value, 1});
}

void ProcessSamples_FillNBytes(SignalBase &signal, unsigned char value)
{
    QUILLMARSH_ASSERT(signal.GetSamplesB(), "Invalid argument.");
    if (signal.GetSamplesB())
        std::memset(signal.GetSamplesB(), value, signal.GetTotalByteSize());
}

void ProcessSamples_Fill3Bytes(SignalBase &signal, unsigned int tripletOffset, unsigned char value0,
                               unsigned char value1, unsigned char value2)
{
    bool const holds = HoldsPart(signal, tripletOffset, 3);
    QUILLMARSH_ASSERT(holds, "Triplet-offset out of range.");
    if (holds)
        FillSamples(signal, tripletOffset, std::array<unsigned char, 3>{0xFF, 0xFF, 0xFF},
                    std::array{value0, value1, value2});
}

void ProcessSamples_Fill1Nibble(SignalBase &signal, unsigned int byteOffset, bool highNibble, unsigned char value)
{
    bool const holds = HoldsPart(signal, byteOffset, 1);
    QUILLMARSH_ASSERT(holds, "Byte-offset out of range.");
    if (!holds)
        return;
    unsigned int const shift = highNibble ? 4 : 0;
    FillSamples(signal, byteOffset, std::array{static_cast<unsigned char>(0x0Fu << shift)},
                std::array{static_cast<unsigned char>((value & 0x0Fu) << shift)});
}

void ProcessSamples_Fill1Nibble_MapValueRange(SignalBase &signal, unsigned int byteOffset, bool highNibble,
                                              unsigned char value)
{
    ProcessSamples_Fill1Nibble(signal, byteOffset, highNibble, static_cast<unsigned char>(value >> 4));
}

void ProcessSamples_FillBits_UShort(SignalBase &signal, unsigned short value, unsigned short mask, unsigned short shift)
{
    bool const isWord = signal.GetSampleByteSize() == 2;
    QUILLMARSH_ASSERT(isWord, "Invalid target-sample-size.");
    if (!isWord)
        return;
    auto const low = [shift](unsigned int bits) { return static_cast<unsigned char>(bits << shift); };
    auto const high = [shift](unsigned int bits) { return static_cast<unsigned char>(bits << shift >> 8); };
    unsigned int const bits = value & mask;
    FillSamples(signal, 0, std::array{low(mask), high(mask)}, std::array{low(bits), high(bits)});
}

void ProcessSamples_BGRToA_ThresholdBGR(SignalBase &signal, unsigned char threshold)
{
    SampleRun const run(signal);
    if (run.sampleSize < 4)
        return;
    bool const usesKernel = run.samples && run.sampleSize == 4;
    std::size_t const done = usesKernel ? SetAlphaByLuminance(run.samples, run.count, threshold) : std::size_t{0};
    run.ProcessRest(done, 0, Process_BGRToA_ThresholdBGR(threshold));
}

void ProcessSamples_AlphaFromColorKey(SignalBase &signal, color4b key, unsigned char matchAlpha,
                                      unsigned char otherAlpha)
{
    SampleRun const run(signal);
    if (run.sampleSize < 4)
        return;
    bool const usesKernel = run.samples && run.sampleSize == 4;
    std::size_t const done =
        usesKernel ? SetAlphaByKey(run.samples, run.count, key, matchAlpha, otherAlpha) : std::size_t{0};
    run.ProcessRest(done, 0, Process_AlphaFromColorKey_A8R8G8B8(key, matchAlpha, otherAlpha));
}

void HighPassFilter(SignalBase &signal, unsigned int byteOffset, unsigned char threshold, unsigned char onEqual,
                    unsigned char onBelow)
{
    FilterByte(signal, byteOffset, {threshold, onBelow, onEqual, 0, false, true},
               Process_HighPassFilter<unsigned char>(threshold, onEqual, onBelow));
}

void LowPassFilter(SignalBase &signal, unsigned int byteOffset, unsigned char threshold, unsigned char onEqual,
                   unsigned char onAbove)
{
    FilterByte(signal, byteOffset, {threshold, 0, onEqual, onAbove, true, false},
               Process_LowPassFilter<unsigned char>(threshold, onEqual, onAbove));
}

void ThresholdSegmentation(SignalBase &signal, unsigned int byteOffset, unsigned char threshold, unsigned char onBelow,
                           unsigned char onEqual, unsigned char onAbove)
{
    FilterByte(signal, byteOffset, {threshold, onBelow, onEqual, onAbove, false, false},
               Process_ThresholdSegmentation<unsigned char>(threshold, onBelow, onEqual, onAbove));
}

void ThresholdSegmentationNBytes(SignalBase &signal, unsigned int byteOffset, unsigned int numBytes,
                                 unsigned char threshold, unsigned char onBelow, unsigned char onEqual,
                                 unsigned char onAbove)
{
    bool const holdsFirst = HoldsPart(signal, byteOffset, 1);
    bool const holdsAll = HoldsPart(signal, byteOffset, numBytes);
    QUILLMARSH_ASSERT(holdsFirst, "Byte-offset out of range.");
    QUILLMARSH_ASSERT(!holdsFirst || holdsAll, "Num-bytes-per-sample out of range.");
    if (holdsFirst && holdsAll)
        RunThreshold(signal, byteOffset, numBytes, {threshold, onBelow, onEqual, onAbove, false, false},
                     Process_ThresholdSegmentation<unsigned char>(threshold, onBelow, onEqual, onAbove));
}

} // namespace quillmarsh
