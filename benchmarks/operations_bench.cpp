// Operations on samples in place, compared with plain copies of as many bytes, and with OpenCV's equivalents.
#include <quillmarsh/dataobjects/imageoperations.h>

#include "benchmarks/support/allocation_counter.h"
#include "benchmarks/support/image_blocks.h"

#include <benchmark/benchmark.h>
#include <opencv2/core.hpp>

namespace quillmarsh::benchmarks
{
namespace
{

using Work = void (*)(ImageBase &image);

/// The block to read, as an image of the same size as the other.
template<typename Sample>
void CopyFlipped(ImageBase &image)
{
    // Typed images own their memory, so both are made once and kept.
    static AutoPtr<Image<Sample>> s_dst, s_src;
    if (!s_dst || !s_dst->ImageBase::CheckDimensionMatch(image))
    {
        for (AutoPtr<Image<Sample>> *const made : {&s_dst, &s_src})
        {
            *made = std::make_unique<Image<Sample>>(image.GetSampleFormat(), image.GetNumRows(), image.GetNumColumns());
            ProcessSamples_FillNBytes(**made, 7);
        }
    }
    CopySamples_FlippedByteOrder(*s_dst, *s_src);
}

struct OperationCase
{
    char const *name;
    eSampleFormat format;
    unsigned int movedBytes; ///< for each sample; bytes that stay are read as well
    Work work;
};

constexpr OperationCase s_cases[] = {
    {"clear", e_format_A8R8G8B8, 4, [](ImageBase &image) { ProcessSamples_Clear(image); }},
    {"fill_ARGB", e_format_A8R8G8B8, 4, [](ImageBase &image) { Fill_ARGB(image, color4b(1, 2, 3, 4)); }},
    {"fill_1_byte", e_format_A8R8G8B8, 8, [](ImageBase &image) { ProcessSamples_Fill1Byte(image, 3, 9); }},
    {"fill_3_bytes", e_format_A8R8G8B8, 8, [](ImageBase &image) { ProcessSamples_Fill3Bytes(image, 0, 1, 2, 3); }},
    {"fill_nibble", e_format_A4R4G4B4, 4, [](ImageBase &image) { ProcessSamples_Fill1Nibble(image, 1, true, 9); }},
    {"fill_bits", e_format_A1R5G5B5, 4, [](ImageBase &image) { ProcessSamples_FillBits_UShort(image, 9, 31, 5); }},
    {"fill_block", e_format_A8R8G8B8, 2,
     [](ImageBase &image)
     {
         unsigned int const half = image.GetNumRows() / 2;
         FillBlock(image, 1, 9, half / 2, half, half / 2, half);
     }},
    {"checkerboard", e_format_A8R8G8B8, 8,
     [](ImageBase &image) { GenerateCheckerboard(image, 0, color4b(1, 2, 3, 0), color4b(4, 5, 6, 0), 16, 16); }},
    {"high_pass", e_format_L8, 2, [](ImageBase &image) { HighPassFilter(image, 0, 100, 100, 100); }},
    {"low_pass", e_format_A8R8G8B8, 8, [](ImageBase &image) { LowPassFilter(image, 3, 100, 100, 100); }},
    {"threshold", e_format_A8L8, 4, [](ImageBase &image) { ThresholdSegmentation(image, 1, 100, 50, 100, 150); }},
    {"threshold_3_bytes", e_format_A8R8G8B8, 8,
     [](ImageBase &image) { ThresholdSegmentationNBytes(image, 0, 3, 100, 50, 100, 150); }},
    {"colour_key", e_format_A8R8G8B8, 8,
     [](ImageBase &image) { ProcessSamples_AlphaFromColorKey(image, color4b(1, 2, 3, 0), 9, 10); }},
    {"coverage", e_format_A8R8G8B8, 8, [](ImageBase &image) { ProcessSamples_BGRToA_ThresholdBGR(image); }},
    {"flip_2_bytes", e_format_A8L8, 4, [](ImageBase &image) { ProcessSamples_FlipByteOrder(image); }},
    {"flip_4_bytes", e_format_A8R8G8B8, 8, [](ImageBase &image) { ProcessSamples_FlipByteOrder(image); }},
    {"flip_3_bytes", e_format_A8R8G8B8, 8, [](ImageBase &image) { ProcessSamples_3BytesFlipByteOrder(image, 0); }},
    {"swap_bytes", e_format_A8R8G8B8, 8, [](ImageBase &image) { ProcessSamples_SwapBytes(image, 0, 2); }},
    {"copy_2_bytes_flipped", e_format_A8L8, 4, CopyFlipped<Sample16>},
    {"copy_4_bytes_flipped", e_format_A8R8G8B8, 8, CopyFlipped<Sample32>},
    {"flip_rows_L8", e_format_L8, 2, [](ImageBase &image) { FlipRows(image); }},
    {"flip_columns_L8", e_format_L8, 2, [](ImageBase &image) { FlipColumns(image); }},
    {"flip_rows", e_format_A8R8G8B8, 8, [](ImageBase &image) { FlipRows(image); }},
    {"flip_columns", e_format_A8R8G8B8, 8, [](ImageBase &image) { FlipColumns(image); }},
};

void RunOperation(benchmark::State &state, OperationCase const &operation, unsigned int side)
{
    BlockImage image(operation.format, side, 0);
    RunCounted(state,
               [&]
               {
                   operation.work(image);
                   benchmark::ClobberMemory();
               });
    state.SetBytesProcessed(state.iterations() * operation.movedBytes * side * side);
}

void RunOpenCVFlip(benchmark::State &state, int type, int code, int side)
{
    cv::setNumThreads(1);
    cv::Mat image(side, side, type, GetImageBlock(0));
    for (auto _ : state)
    {
        cv::flip(image, image, code);
        benchmark::ClobberMemory();
    }
}

bool RegisterAll()
{
    for (unsigned int const side : s_imageSides)
    {
        for (OperationCase const &operation : s_cases)
            benchmark::RegisterBenchmark(NameOfCase("operation", operation.name, side).c_str(), RunOperation, operation,
                                         side);
        auto const addPeer = [&](char const *name, int type, int code)
        {
            benchmark::RegisterBenchmark(NameOfCase("peer", name, side).c_str(), RunOpenCVFlip, type, code,
                                         static_cast<int>(side));
        };
        addPeer("opencv_flip_rows_L8", CV_8UC1, 0);
        addPeer("opencv_flip_columns_L8", CV_8UC1, 1);
        addPeer("opencv_flip_rows", CV_8UC4, 0);
        addPeer("opencv_flip_columns", CV_8UC4, 1);
    }
    return true;
}

[[maybe_unused]] bool const s_isRegistered = RegisterAll();

} // namespace
} // namespace quillmarsh::benchmarks
