// Transfers between sample formats, beside plain copies that move as many bytes.
#include <quillmarsh/dataobjects/sampletransfer.h>

#include "benchmarks/support/allocation_counter.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <string>
#include <vector>

namespace quillmarsh::benchmarks
{
namespace
{

/// One of each layout that the default transfers have.
struct TransferCase
{
    char const *name;
    eSampleFormat dst, src;
    bool keepsBytes; ///< some bytes of the destination stay, so that it has to be read as well
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

constexpr unsigned int s_sides[] = {256, 1024, 4096};

/// Bytes that a transfer reads and writes for each sample.
unsigned int MovedBytes(TransferCase const &transfer)
{
    unsigned int const dst = sample_formats::ExtractByteSize(transfer.dst);
    return sample_formats::ExtractByteSize(transfer.src) + (transfer.keepsBytes ? 2 * dst : dst);
}

AutoPtr<ImageBase> MakeImage(eSampleFormat format, unsigned int side)
{
    AutoPtr<ImageBase> image(ManufactureImage(format, side, side));
    for (unsigned int i = 0; i < image->GetTotalByteSize(); ++i)
        image->GetSamplesB()[i] = static_cast<unsigned char>(i * 2654435761u >> 24);
    if (format == e_format_FP32NormL)
    {
        for (unsigned int i = 0; i < image->GetNumSamples(); ++i)
        {
            float const value = static_cast<float>(i % 1000) / 999.0f;
            std::memcpy(image->SignalBase::SampleB(i), &value, sizeof value);
        }
    }
    return image;
}

void RunTransfer(benchmark::State &state, TransferCase const &transfer, unsigned int side)
{
    SignalOperationsManager const manager;
    AutoPtr<ImageBase> const src = MakeImage(transfer.src, side);
    AutoPtr<ImageBase> const dst = MakeImage(transfer.dst, side);
    AllocationReport const report(state);
    for (auto _ : state)
    {
        TransferSamples2D(*dst, *src, true);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * MovedBytes(transfer) * side * side);
}

/// A copy moves each byte twice: out of one place and into another.
void RunCopy(benchmark::State &state, unsigned int movedBytes, unsigned int side)
{
    Signal<Sample8> const src(e_format_L8, movedBytes * side * side / 2);
    Signal<Sample8> dst(e_format_L8, src.GetNumSamples());
    std::memset(const_cast<unsigned char *>(src.GetSamplesB()), 1, src.GetTotalByteSize());
    std::memset(dst.GetSamplesB(), 2, dst.GetTotalByteSize());
    for (auto _ : state)
    {
        std::memcpy(dst.GetSamplesB(), src.GetSamplesB(), src.GetTotalByteSize());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * movedBytes * side * side);
}

bool RegisterAll()
{
    bool hasLimit[16] = {};
    for (TransferCase const &transfer : s_cases)
    {
        for (unsigned int const side : s_sides)
        {
            std::string const name = std::string("transfer/") + transfer.name + "/" + std::to_string(side);
            benchmark::RegisterBenchmark(name.c_str(), RunTransfer, transfer, side);
        }
        unsigned int const moved = MovedBytes(transfer);
        if (hasLimit[moved])
            continue;
        hasLimit[moved] = true;
        for (unsigned int const side : s_sides)
        {
            std::string const name =
                "limit/copy_of_" + std::to_string(moved) + "_bytes_a_sample/" + std::to_string(side);
            benchmark::RegisterBenchmark(name.c_str(), RunCopy, moved, side);
        }
    }
    return true;
}

[[maybe_unused]] bool const s_isRegistered = RegisterAll();

} // namespace
} // namespace quillmarsh::benchmarks
