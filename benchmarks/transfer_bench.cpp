// Transfers between sample formats, compared with plain copies of as many bytes, and with OpenCV and libyuv.
#include <quillmarsh/dataobjects/sampletransfer.h>

#include "benchmarks/support/allocation_counter.h"
#include "benchmarks/support/image_blocks.h"

#include <benchmark/benchmark.h>
#include <libyuv.h>
#include <opencv2/imgproc.hpp>

namespace quillmarsh::benchmarks
{
namespace
{

/// One transfer of each layout that the default transfers have.
struct TransferCase
{
    char const *name;
    eSampleFormat dst, src;
    bool keepsBytes; ///< some bytes of the destination stay, so it is read as well
};

constexpr TransferCase s_cases[] = {
    {"L8_from_L8", e_format_L8, e_format_L8, false},
    {"A8L8_from_A8L8", e_format_A8L8, e_format_A8L8, false},
    {"A8R8G8B8_from_A8R8G8B8", e_format_A8R8G8B8, e_format_A8R8G8B8, false},
    {"L8_from_A8L8", e_format_L8, e_format_A8L8, false},
    {"A8_from_A8L8", e_format_A8, e_format_A8L8, false},
    {"A8_from_A8R8G8B8", e_format_A8, e_format_A8R8G8B8, false},
    {"L8_from_A8R8G8B8", e_format_L8, e_format_A8R8G8B8, false},
    {"L8_from_FP32NormL", e_format_L8, e_format_FP32NormL, false},
    {"A8L8_from_L8", e_format_A8L8, e_format_L8, true},
    {"A8L8_from_A8", e_format_A8L8, e_format_A8, true},
    {"A8L8_from_X8R8G8B8", e_format_A8L8, e_format_X8R8G8B8, true},
    {"A8L8_from_A8R8G8B8", e_format_A8L8, e_format_A8R8G8B8, false},
    {"A4R4G4B4_from_A8R8G8B8", e_format_A4R4G4B4, e_format_A8R8G8B8, false},
    {"A1R5G5B5_from_A8R8G8B8", e_format_A1R5G5B5, e_format_A8R8G8B8, false},
    {"A8R8G8B8_from_A8", e_format_A8R8G8B8, e_format_A8, true},
    {"X8R8G8B8_from_L8", e_format_X8R8G8B8, e_format_L8, true},
    {"X8R8G8B8_from_A8L8", e_format_X8R8G8B8, e_format_A8L8, true},
    {"A8R8G8B8_from_A8L8", e_format_A8R8G8B8, e_format_A8L8, false},
    {"A8R8G8B8_from_A4R4G4B4", e_format_A8R8G8B8, e_format_A4R4G4B4, false},
    {"A8R8G8B8_from_A1R5G5B5", e_format_A8R8G8B8, e_format_A1R5G5B5, false},
    {"FP32NormL_from_L8", e_format_FP32NormL, e_format_L8, false},
};

/// Returns the bytes that a transfer reads and writes for each sample.
unsigned int MovedBytes(TransferCase const &transfer)
{
    unsigned int const dst = sample_formats::ExtractByteSize(transfer.dst);
    return sample_formats::ExtractByteSize(transfer.src) + (transfer.keepsBytes ? 2 * dst : dst);
}

void RunTransfer(benchmark::State &state, TransferCase const &transfer, unsigned int side)
{
    SignalOperationsManager const manager;
    BlockImage dst(transfer.dst, side, 0);
    BlockImage const src(transfer.src, side, 1);
    RunCounted(state,
               [&]
               {
                   TransferSamples2D(dst, src, false);
                   benchmark::ClobberMemory();
               });
    state.SetBytesProcessed(state.iterations() * MovedBytes(transfer) * side * side);
}

/// A peer with the same work, from the block to read into the block to write. Peers take strides and sizes.
struct Peer
{
    char const *name;
    void (*work)(unsigned char *dst, unsigned char const *src, int side);
};

cv::Mat Wrap(unsigned char const *block, int side, int type)
{
    return cv::Mat(side, side, type, const_cast<unsigned char *>(block));
}

constexpr Peer s_peers[] = {
    {"libyuv_A8_from_A8R8G8B8", [](unsigned char *dst, unsigned char const *src, int side)
     { libyuv::ARGBExtractAlpha(src, 4 * side, dst, side, side, side); }},
    {"libyuv_X8R8G8B8_from_L8", [](unsigned char *dst, unsigned char const *src, int side)
     { libyuv::J400ToARGB(src, side, dst, 4 * side, side, side); }},
    {"libyuv_L8_from_A8R8G8B8", [](unsigned char *dst, unsigned char const *src, int side)
     { libyuv::ARGBToJ400(src, 4 * side, dst, side, side, side); }},
    {"libyuv_A4R4G4B4_from_A8R8G8B8", [](unsigned char *dst, unsigned char const *src, int side)
     { libyuv::ARGBToARGB4444(src, 4 * side, dst, 2 * side, side, side); }},
    {"libyuv_A8R8G8B8_from_A4R4G4B4", [](unsigned char *dst, unsigned char const *src, int side)
     { libyuv::ARGB4444ToARGB(src, 2 * side, dst, 4 * side, side, side); }},
    {"opencv_L8_from_A8R8G8B8",
     [](unsigned char *dst, unsigned char const *src, int side)
     {
         cv::Mat to = Wrap(dst, side, CV_8UC1);
         cv::cvtColor(Wrap(src, side, CV_8UC4), to, cv::COLOR_BGRA2GRAY);
     }},
    {"opencv_L8_from_FP32NormL",
     [](unsigned char *dst, unsigned char const *src, int side)
     {
         cv::Mat to = Wrap(dst, side, CV_8UC1);
         Wrap(src, side, CV_32FC1).convertTo(to, CV_8U, 255.0);
     }},
    {"opencv_FP32NormL_from_L8",
     [](unsigned char *dst, unsigned char const *src, int side)
     {
         cv::Mat to = Wrap(dst, side, CV_32FC1);
         Wrap(src, side, CV_8UC1).convertTo(to, CV_32F, 1.0 / 255.0);
     }},
};

void RunPeer(benchmark::State &state, Peer const &peer, unsigned int side)
{
    cv::setNumThreads(1);
    for (auto _ : state)
    {
        peer.work(GetImageBlock(0), GetImageBlock(1), static_cast<int>(side));
        benchmark::ClobberMemory();
    }
}

bool RegisterAll()
{
    for (unsigned int const side : s_imageSides)
    {
        for (TransferCase const &transfer : s_cases)
            benchmark::RegisterBenchmark(NameOfCase("transfer", transfer.name, side).c_str(), RunTransfer, transfer,
                                         side);
        for (Peer const &peer : s_peers)
            benchmark::RegisterBenchmark(NameOfCase("peer", peer.name, side).c_str(), RunPeer, peer, side);
    }
    return true;
}

[[maybe_unused]] bool const s_isRegistered = RegisterAll();

} // namespace
} // namespace quillmarsh::benchmarks
