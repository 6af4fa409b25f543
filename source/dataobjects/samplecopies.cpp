#include <quillmarsh/dataobjects/sampletransfer.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/dataobjects/sampleprocessors.h>

#include <cstring>

namespace quillmarsh
{
namespace
{

using element_processors::Copy_1;
using element_processors::Copy_N;

/// First byte of a part of the samples; null for an empty container.
unsigned char *PartOf(SignalBase &signal, unsigned int offset)
{
    return signal.GetSamplesB() ? signal.GetSamplesB() + offset : nullptr;
}

unsigned char const *PartOf(SignalBase const &signal, unsigned int offset)
{
    return signal.GetSamplesB() ? signal.GetSamplesB() + offset : nullptr;
}

template<typename Processor>
void ProcessAll(Processor processor, SignalBase &dst, unsigned int dstOffset, SignalBase const &src,
                unsigned int srcOffset)
{
    element_processors::ProcessElements(processor, dst.GetNumSamples(), PartOf(dst, dstOffset), dst.GetSampleByteSize(),
                                        PartOf(src, srcOffset), src.GetSampleByteSize());
}

bool HoldsPart(SignalBase const &signal, unsigned int offset, unsigned int byteSize)
{
    return signal.GetSampleByteSize() >= byteSize && offset <= signal.GetSampleByteSize() - byteSize;
}

void CheckCounts([[maybe_unused]] SignalBase const &dst, [[maybe_unused]] SignalBase const &src)
{
    QUILLMARSH_ASSERT(dst.CheckDimensionMatch(src), "Sample-count mismatch.");
}

void CheckSizes(SignalBase const &dst, [[maybe_unused]] unsigned int dstSize, SignalBase const &src,
                [[maybe_unused]] unsigned int srcSize)
{
    CheckCounts(dst, src);
    QUILLMARSH_ASSERT(dst.GetSampleByteSize() == dstSize, "Invalid destination-sample-size.");
    QUILLMARSH_ASSERT(src.GetSampleByteSize() == srcSize, "Invalid source-sample-size.");
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
    CheckCounts(dst, src);
    QUILLMARSH_ASSERT(fits, "Num-bytes-per-sample out of range.");
    QUILLMARSH_ASSERT(!fits || HoldsPart(dst, dstOffset, n), "Destination-byte-offset out of range.");
    QUILLMARSH_ASSERT(!fits || HoldsPart(src, srcOffset, n), "Source-byte-offset out of range.");

    if (n == dst.GetSampleByteSize() && n == src.GetSampleByteSize())
    {
        if (src.GetTotalByteSize() != 0)
            std::memmove(dst.GetSamplesB(), src.GetSamplesB(), src.GetTotalByteSize());
    }
    else if (n == 1)
        ProcessAll(Copy_1<unsigned char>(), dst, dstOffset, src, srcOffset);
    else
        ProcessAll(Copy_N<unsigned char>(n), dst, dstOffset, src, srcOffset);
}

void CopySamples_3BytesBGRTo1ByteL(SignalBase &dst, unsigned int dstLOffset, SignalBase const &src,
                                   unsigned int srcBGROffset)
{
    CheckCounts(dst, src);
    QUILLMARSH_ASSERT(HoldsPart(dst, dstLOffset, 1), "Destination-L-offset out of range.");
    QUILLMARSH_ASSERT(HoldsPart(src, srcBGROffset, 3), "Source-BGR-offset out of range.");
    ProcessAll(sample_processors::CopyConverter_B8G8R8_To_L8(), dst, dstLOffset, src, srcBGROffset);
}

void CopySamples_1ByteLTo3BytesBGR(SignalBase &dst, unsigned int dstBGROffset, SignalBase const &src,
                                   unsigned int srcLOffset)
{
    CheckCounts(dst, src);
    QUILLMARSH_ASSERT(HoldsPart(src, srcLOffset, 1), "Source-L-offset out of range.");
    QUILLMARSH_ASSERT(HoldsPart(dst, dstBGROffset, 3), "Destination-BGR-offset out of range.");
    ProcessAll(sample_processors::CopyConverter_L8_To_B8G8R8(), dst, dstBGROffset, src, srcLOffset);
}

void CopySamples_UInt8888_To_UShort4444(SignalBase &dst, SignalBase const &src)
{
    CheckSizes(dst, 2, src, 4);
    ProcessAll(sample_processors::CopyConverter_UInt8888_To_UShort4444(), dst, 0, src, 0);
}

void CopySamples_UShort4444_To_UInt8888(SignalBase &dst, SignalBase const &src)
{
    CheckSizes(dst, 4, src, 2);
    ProcessAll(sample_processors::CopyConverter_UShort4444_To_UInt8888(), dst, 0, src, 0);
}

void CopySamples_UInt8888_To_UShort1555(SignalBase &dst, SignalBase const &src)
{
    CheckSizes(dst, 2, src, 4);
    ProcessAll(sample_processors::CopyConverter_UInt8888_To_UShort1555(), dst, 0, src, 0);
}

void CopySamples_UShort1555_To_UInt8888(SignalBase &dst, SignalBase const &src)
{
    CheckSizes(dst, 4, src, 2);
    ProcessAll(sample_processors::CopyConverter_UShort1555_To_UInt8888(), dst, 0, src, 0);
}

void CopySamples_FP32Norm_To_UInt8(SignalBase &dst, SignalBase const &src)
{
    CheckSizes(dst, 1, src, 4);
    ProcessAll(sample_processors::CopyConverter_FP32Norm_To_UInt8(), dst, 0, src, 0);
}

void CopySamples_UInt8_To_FP32Norm(SignalBase &dst, SignalBase const &src)
{
    CheckSizes(dst, 4, src, 1);
    ProcessAll(sample_processors::CopyConverter_UInt8_To_FP32Norm(), dst, 0, src, 0);
}

} // namespace quillmarsh
