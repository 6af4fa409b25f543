#include "source/dataobjects/transfer/samplecopies.h"

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/dataobjects/sampleprocessors.h>
#include <quillmarsh/dataobjects/sampletransfer.h>

#include "source/dataobjects/transfer/samplekernels.h"
#include "source/dataobjects/transfer/sampleparts.h"

#include <cstring>

namespace quillmarsh
{
namespace
{

using element_processors::Copy_1;
using element_processors::Copy_N;

/// A part of each sample of a signal. The start is null for an empty signal.
template<typename Byte>
struct Part
{
    Byte *start;
    std::ptrdiff_t stride;

    Part AtSample(std::size_t index) const
    {
        return {start ? start + static_cast<std::ptrdiff_t>(index) * stride : nullptr, stride};
    }
};

template<typename Signal>
auto PartOf(Signal &signal, unsigned int offset)
{
    auto *const samples = signal.GetSamplesB();
    using Byte = std::remove_pointer_t<decltype(samples)>;
    return Part<std::remove_pointer_t<Byte>>{samples ? samples + offset : nullptr,
                                             static_cast<std::ptrdiff_t>(signal.GetSampleByteSize())};
}

/// Runs a processor over all samples. A kernel with the same results handles the first of them if the blocks do not
/// overlap; if they do, the order of the elements matters.
template<typename Processor>
void ProcessAll(eSampleKernel kernel, Processor processor, SignalBase &dst, unsigned int dstOffset,
                SignalBase const &src, unsigned int srcOffset)
{
    std::size_t const count = dst.GetNumSamples();
    bool const usesKernel = kernel != eSampleKernel::e_none && count != 0 && src.GetSamplesB() && !Overlap(dst, src);
    std::size_t const done =
        usesKernel ? RunSampleKernel(kernel, dst.GetSamplesB(), src.GetSamplesB(), count) : std::size_t{0};
    auto const to = PartOf(dst, dstOffset).AtSample(done);
    auto const from = PartOf(src, srcOffset).AtSample(done);
    element_processors::ProcessElements(processor, count - done, to.start, to.stride, from.start, from.stride);
}

/// Layout of a copy of one part: sizes of the samples, and the part's offset in them.
struct CopyLayout
{
    unsigned int dstSize, dstOffset, srcSize, srcOffset;

    bool operator==(CopyLayout const &) const = default;
};

struct LaidOutKernel
{
    CopyLayout layout;
    eSampleKernel kernel;
};

constexpr LaidOutKernel s_byteKernels[] = {
    {{1, 0, 2, 0}, eSampleKernel::e_byteFromWordLow},     {{1, 0, 2, 1}, eSampleKernel::e_byteFromWordHigh},
    {{1, 0, 4, 3}, eSampleKernel::e_byteFromColourAlpha}, {{2, 0, 1, 0}, eSampleKernel::e_wordSetLowFromByte},
    {{2, 1, 1, 0}, eSampleKernel::e_wordSetHighFromByte}, {{4, 3, 1, 0}, eSampleKernel::e_colourSetAlphaFromByte},
};

constexpr LaidOutKernel s_luminanceKernels[] = {
    {{1, 0, 4, 0}, eSampleKernel::e_byteFromColourLuminance},
    {{2, 0, 4, 0}, eSampleKernel::e_wordSetLowFromColourLuminance},
};

constexpr LaidOutKernel s_spreadKernels[] = {
    {{4, 0, 1, 0}, eSampleKernel::e_colourSetBGRFromByte},
    {{4, 0, 2, 0}, eSampleKernel::e_colourSetBGRFromWordLow},
};

CopyLayout LayoutOf(SignalBase const &dst, unsigned int dstOffset, SignalBase const &src, unsigned int srcOffset)
{
    return {dst.GetSampleByteSize(), dstOffset, src.GetSampleByteSize(), srcOffset};
}

template<std::size_t n>
eSampleKernel FindKernel(LaidOutKernel const (&kernels)[n], SignalBase const &dst, unsigned int dstOffset,
                         SignalBase const &src, unsigned int srcOffset)
{
    CopyLayout const layout = LayoutOf(dst, dstOffset, src, srcOffset);
    for (LaidOutKernel const &candidate : kernels)
    {
        if (candidate.layout == layout)
            return candidate.kernel;
    }
    return eSampleKernel::e_none;
}

/// A converter that also copies one byte unchanged.
template<typename Converter>
class ConvertAndCloneByte final : public element_processors::ElementProcessorDstSrc<unsigned char, unsigned char const>
{
public:
    ConvertAndCloneByte(unsigned int dstOffset, unsigned int srcOffset) : dstOffset_(dstOffset), srcOffset_(srcOffset)
    {
    }
    void Process(unsigned char *dst, unsigned char const *src) override
    {
        converter_.Process(dst, src);
        dst[dstOffset_] = src[srcOffset_];
    }

private:
    Converter converter_;
    unsigned int dstOffset_, srcOffset_;
};

/// True when both passes of a copy can be made in one: all arguments are valid, and no written byte is read.
bool CanFuse(CopyLayout const &wanted, CopyLayout const &layout, SignalBase const &dst, SignalBase const &src)
{
    return wanted == layout && dst.CheckDimensionMatch(src) && !Overlap(dst, src);
}

/// Copies that assert by themselves: whoever ignores the assertion of one does not ignore that of another.
enum class eCopy
{
    e_convert,
    e_bytes,
    e_luminance,
    e_spread
};

/// Asserts that both have the same number of samples. False after an ignored assertion. A template, as each has a place
/// of its own.
template<eCopy copy, typename Converter = void>
bool CheckCounts(SignalBase const &dst, SignalBase const &src)
{
    bool const match = dst.CheckDimensionMatch(src);
    QUILLMARSH_ASSERT(match, "Sample-count mismatch.");
    return match;
}

/// Converts whole samples of the given sizes.
template<typename Converter>
void ConvertAll(eSampleKernel kernel, Converter converter, SignalBase &dst, unsigned int dstSize, SignalBase const &src,
                unsigned int srcSize)
{
    bool const match = CheckCounts<eCopy::e_convert, Converter>(dst, src);
    QUILLMARSH_ASSERT(dst.GetSampleByteSize() == dstSize, "Invalid destination-sample-size.");
    QUILLMARSH_ASSERT(src.GetSampleByteSize() == srcSize, "Invalid source-sample-size.");
    if (match && dst.GetSampleByteSize() == dstSize && src.GetSampleByteSize() == srcSize)
        ProcessAll(kernel, converter, dst, 0, src, 0);
}

} // namespace

void CopySamples(SignalBase &dst, SignalBase const &src)
{
    CopySamples_NBytes(dst, 0, src, 0, dst.GetSampleByteSize());
}

void CopySamples_NBytes(SignalBase &dst, unsigned int dstOffset, SignalBase const &src, unsigned int srcOffset,
                        unsigned int n)
{
    bool const fits = n <= dst.GetSampleByteSize() && n <= src.GetSampleByteSize();
    bool const match = CheckCounts<eCopy::e_bytes>(dst, src);
    QUILLMARSH_ASSERT(fits, "Num-bytes-per-sample out of range.");
    QUILLMARSH_ASSERT(!fits || HoldsPart(dst, dstOffset, n), "Destination-byte-offset out of range.");
    QUILLMARSH_ASSERT(!fits || HoldsPart(src, srcOffset, n), "Source-byte-offset out of range.");
    if (!match || !HoldsPart(dst, dstOffset, n) || !HoldsPart(src, srcOffset, n))
        return;

    if (n == dst.GetSampleByteSize() && n == src.GetSampleByteSize())
    {
        if (src.GetTotalByteSize() != 0)
            std::memmove(dst.GetSamplesB(), src.GetSamplesB(), src.GetTotalByteSize());
    }
    else if (n == 1)
        ProcessAll(FindKernel(s_byteKernels, dst, dstOffset, src, srcOffset), Copy_1<unsigned char>(), dst, dstOffset,
                   src, srcOffset);
    else
        ProcessAll(eSampleKernel::e_none, Copy_N<unsigned char>(n), dst, dstOffset, src, srcOffset);
}

void CopySamples_3BytesBGRTo1ByteL(SignalBase &dst, unsigned int dstLOffset, SignalBase const &src,
                                   unsigned int srcBGROffset)
{
    bool const match = CheckCounts<eCopy::e_luminance>(dst, src);
    QUILLMARSH_ASSERT(HoldsPart(dst, dstLOffset, 1), "Destination-L-offset out of range.");
    QUILLMARSH_ASSERT(HoldsPart(src, srcBGROffset, 3), "Source-BGR-offset out of range.");
    if (!match || !HoldsPart(dst, dstLOffset, 1) || !HoldsPart(src, srcBGROffset, 3))
        return;
    ProcessAll(FindKernel(s_luminanceKernels, dst, dstLOffset, src, srcBGROffset),
               sample_processors::CopyConverter_B8G8R8_To_L8(), dst, dstLOffset, src, srcBGROffset);
}

void CopySamples_1ByteLTo3BytesBGR(SignalBase &dst, unsigned int dstBGROffset, SignalBase const &src,
                                   unsigned int srcLOffset)
{
    bool const match = CheckCounts<eCopy::e_spread>(dst, src);
    QUILLMARSH_ASSERT(HoldsPart(src, srcLOffset, 1), "Source-L-offset out of range.");
    QUILLMARSH_ASSERT(HoldsPart(dst, dstBGROffset, 3), "Destination-BGR-offset out of range.");
    if (!match || !HoldsPart(src, srcLOffset, 1) || !HoldsPart(dst, dstBGROffset, 3))
        return;
    ProcessAll(FindKernel(s_spreadKernels, dst, dstBGROffset, src, srcLOffset),
               sample_processors::CopyConverter_L8_To_B8G8R8(), dst, dstBGROffset, src, srcLOffset);
}

void CopySamples_UInt8888_To_UShort4444(SignalBase &dst, SignalBase const &src)
{
    ConvertAll(eSampleKernel::e_word4444FromColour, sample_processors::CopyConverter_UInt8888_To_UShort4444(), dst, 2,
               src, 4);
}

void CopySamples_UShort4444_To_UInt8888(SignalBase &dst, SignalBase const &src)
{
    ConvertAll(eSampleKernel::e_colourFromWord4444, sample_processors::CopyConverter_UShort4444_To_UInt8888(), dst, 4,
               src, 2);
}

void CopySamples_UInt8888_To_UShort1555(SignalBase &dst, SignalBase const &src)
{
    ConvertAll(eSampleKernel::e_word1555FromColour, sample_processors::CopyConverter_UInt8888_To_UShort1555(), dst, 2,
               src, 4);
}

void CopySamples_UShort1555_To_UInt8888(SignalBase &dst, SignalBase const &src)
{
    ConvertAll(eSampleKernel::e_colourFromWord1555, sample_processors::CopyConverter_UShort1555_To_UInt8888(), dst, 4,
               src, 2);
}

void CopySamples_FP32Norm_To_UInt8(SignalBase &dst, SignalBase const &src)
{
    ConvertAll(eSampleKernel::e_byteFromFloat, sample_processors::CopyConverter_FP32Norm_To_UInt8(), dst, 1, src, 4);
}

void CopySamples_UInt8_To_FP32Norm(SignalBase &dst, SignalBase const &src)
{
    ConvertAll(eSampleKernel::e_floatFromByte, sample_processors::CopyConverter_UInt8_To_FP32Norm(), dst, 4, src, 1);
}

void CopySamples_3BytesBGRTo1ByteL1ByteClone(SignalBase &dst, unsigned int dstLOffset, SignalBase const &src,
                                             unsigned int srcBGROffset, unsigned int dstOffset, unsigned int srcOffset)
{
    using Converter = sample_processors::CopyConverter_B8G8R8_To_L8;
    bool const isKnown = dstLOffset == 0 && srcBGROffset == 0;
    if (isKnown && CanFuse({2, 1, 4, 3}, LayoutOf(dst, dstOffset, src, srcOffset), dst, src))
    {
        ProcessAll(eSampleKernel::e_wordFromColourLuminanceAlpha, ConvertAndCloneByte<Converter>(1, 3), dst, 0, src, 0);
        return;
    }
    CopySamples_3BytesBGRTo1ByteL(dst, dstLOffset, src, srcBGROffset);
    CopySamples_NBytes(dst, dstOffset, src, srcOffset, 1);
}

void CopySamples_1ByteLTo3BytesBGR1ByteClone(SignalBase &dst, unsigned int dstBGROffset, SignalBase const &src,
                                             unsigned int srcLOffset, unsigned int dstOffset, unsigned int srcOffset)
{
    using Converter = sample_processors::CopyConverter_L8_To_B8G8R8;
    bool const isKnown = dstBGROffset == 0 && srcLOffset == 0;
    if (isKnown && CanFuse({4, 3, 2, 1}, LayoutOf(dst, dstOffset, src, srcOffset), dst, src))
    {
        ProcessAll(eSampleKernel::e_colourFromWordLuminanceAlpha, ConvertAndCloneByte<Converter>(3, 1), dst, 0, src, 0);
        return;
    }
    CopySamples_1ByteLTo3BytesBGR(dst, dstBGROffset, src, srcLOffset);
    CopySamples_NBytes(dst, dstOffset, src, srcOffset, 1);
}

} // namespace quillmarsh
