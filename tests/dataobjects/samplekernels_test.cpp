#include "source/dataobjects/transfer/samplekernels.h"
#include "tests/support/sample_blocks.h"

#include <quillmarsh/dataobjects/sampletransfer.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace quillmarsh
{
namespace
{

using tests::Bytes;
using tests::RandomBytes;

struct Pair
{
    eSampleFormat dst, src;
};

constexpr Pair s_pairs[] = {
    {e_format_L8, e_format_A8L8},           {e_format_A8, e_format_A8L8},           {e_format_A8, e_format_A8R8G8B8},
    {e_format_L8, e_format_X8R8G8B8},       {e_format_L8, e_format_FP32NormL},      {e_format_A8L8, e_format_L8},
    {e_format_A8L8, e_format_A8},           {e_format_A8L8, e_format_X8R8G8B8},     {e_format_A8L8, e_format_A8R8G8B8},
    {e_format_A4R4G4B4, e_format_A8R8G8B8}, {e_format_A1R5G5B5, e_format_A8R8G8B8}, {e_format_A8R8G8B8, e_format_A8},
    {e_format_X8R8G8B8, e_format_L8},       {e_format_X8R8G8B8, e_format_A8L8},     {e_format_A8R8G8B8, e_format_A8L8},
    {e_format_A8R8G8B8, e_format_A4R4G4B4}, {e_format_A8R8G8B8, e_format_A1R5G5B5}, {e_format_FP32NormL, e_format_L8},
};

std::size_t SourceSize(Pair const &pair)
{
    return sample_formats::ExtractByteSize(pair.src);
}

/// Each test runs with every instruction set of this machine.
class SampleKernels : public testing::Test
{
protected:
    ~SampleKernels() override { SetKernelTarget(0); }

    /// Runs a transfer between two places of one block, and returns all of the block.
    static Bytes Run(Bytes block, Pair const &pair, long long target, unsigned int count, std::size_t dstAt,
                     std::size_t srcAt)
    {
        SetKernelTarget(target);
        SignalBaseFromExternalStorageAdapter dst(pair.dst), src(pair.src);
        dst.SetExternalStorage(block.data() + dstAt, count);
        src.SetExternalStorage(block.data() + srcAt, count);
        EXPECT_TRUE(TransferSamples1D(dst, src, false));
        return block;
    }

    static void ExpectSameBits(Bytes const &block, Pair const &pair, unsigned int count, std::size_t dstAt,
                               std::size_t srcAt)
    {
        Bytes const expected = Run(block, pair, GetKernelTargets().back(), count, dstAt, srcAt);
        for (long long const target : GetKernelTargets())
        {
            ASSERT_TRUE(Run(block, pair, target, count, dstAt, srcAt) == expected)
                << std::hex << pair.dst << " from " << pair.src << " by " << target << std::dec << ", " << count
                << " at " << srcAt;
        }
    }

    /// Compares a transfer of these samples into a block of other bytes.
    static void ExpectSameBits(Pair const &pair, Bytes const &source)
    {
        auto const count = static_cast<unsigned int>(source.size() / SourceSize(pair));
        std::size_t const srcAt = std::size_t{count} * sample_formats::ExtractByteSize(pair.dst);
        Bytes block(srcAt, 0xA5);
        block.insert(block.end(), source.begin(), source.end());
        ExpectSameBits(block, pair, count, 0, srcAt);
    }

    SignalOperationsManager manager_;
};

TEST_F(SampleKernels, AgreeOnEveryByteAndWord)
{
    Bytes bytes(256), words(2 * 0x10000);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<unsigned char>(i);
    for (std::size_t i = 0; i < words.size(); ++i)
        words[i] = static_cast<unsigned char>(i % 2 == 0 ? i / 2 : i / 512);
    for (Pair const &pair : s_pairs)
    {
        if (SourceSize(pair) < 4)
            ExpectSameBits(pair, SourceSize(pair) == 1 ? bytes : words);
    }
}

TEST_F(SampleKernels, AgreeOnEveryColour)
{
    constexpr unsigned int step = 1 << 20;
    for (unsigned int first = 0; first < 1 << 24; first += step)
    {
        Bytes colours(4 * step);
        for (unsigned int i = 0; i < step; ++i)
        {
            for (unsigned int k = 0; k < 3; ++k)
                colours[4 * i + k] = static_cast<unsigned char>((first + i) >> 8 * k);
            colours[4 * i + 3] = static_cast<unsigned char>(i * 77 >> 4);
        }
        for (Pair const &pair : s_pairs)
        {
            bool const isColour = pair.src == e_format_X8R8G8B8 || pair.src == e_format_A8R8G8B8;
            // Only luminance mixes the bytes; for the other transfers, a part of the colours covers all cases.
            bool const isLuminance = pair.dst != e_format_A4R4G4B4 && pair.dst != e_format_A1R5G5B5;
            if (isColour && (isLuminance || first == 5 * step))
                ExpectSameBits(pair, colours);
        }
    }
}

TEST_F(SampleKernels, AgreeOnFloatsOfEveryKind)
{
    Pair const &pair = *std::find_if(std::begin(s_pairs), std::end(s_pairs),
                                     [](Pair const &candidate) { return candidate.src == e_format_FP32NormL; });
    ExpectSameBits(pair, RandomBytes(1 << 20));

    // Values around every rounding step, and around the limits of 32 bits.
    std::vector<float> values;
    for (int step = -600; step <= 1200; ++step)
        values.push_back((static_cast<float>(step) * 0.5f) / 255.0f);
    for (float const large : {0x1p31f, 0x1p32f, 0x1p40f, 3e38f})
        values.insert(values.end(), {large / 255.0f, -large / 255.0f, large, -large});
    std::vector<float> const middle = values;
    for (float const value : middle)
        values.insert(values.end(), {std::nextafter(value, -1e9f), std::nextafter(value, 1e9f)});
    auto const *const start = reinterpret_cast<unsigned char const *>(values.data());
    ExpectSameBits(pair, Bytes(start, start + values.size() * sizeof(float)));
}

TEST_F(SampleKernels, AgreeOnBlocksThatGoPastTheCaches)
{
    // The destination begins and ends inside a cache line.
    constexpr std::size_t dstByteSize = (std::size_t{8} << 20) + 1000, srcAt = dstByteSize + 65;
    Bytes const random = RandomBytes(srcAt + 4 * dstByteSize);
    for (Pair const &pair : s_pairs)
    {
        std::size_t const count = dstByteSize / sample_formats::ExtractByteSize(pair.dst);
        auto const size = static_cast<std::ptrdiff_t>(srcAt + count * SourceSize(pair));
        ExpectSameBits(Bytes(random.begin(), random.begin() + size), pair, static_cast<unsigned int>(count), 4, srcAt);
    }
}

TEST_F(SampleKernels, KeepToTheirBlockAtAnyLengthAndPlace)
{
    constexpr std::size_t half = 1024;
    for (Pair const &pair : s_pairs)
        for (unsigned int count = 1; count < 200; count += count < 70 ? 1 : 13)
            ExpectSameBits(RandomBytes(2 * half), pair, count, 64 + count % 5, half + count % 7);
    // Long blocks are written from a cache line on.
    Bytes const random = RandomBytes(160000);
    for (Pair const &pair : s_pairs)
        for (unsigned int start = 0; start < 64; ++start)
            ExpectSameBits(random, pair, 16500 + start, 64 + start, 68000 + start % 7);
}

TEST_F(SampleKernels, LeaveBlocksThatOverlapToTheOneElementProcessors)
{
    constexpr unsigned int count = 300;
    for (Pair const &pair : s_pairs)
        for (std::size_t const srcAt : {0, 64, 65, 128, 400})
            ExpectSameBits(RandomBytes(4 * count + 512), pair, count, 64, srcAt);
}

TEST_F(SampleKernels, HaveCodeForVectorsOfThisMachine)
{
    // Without such code, the tests above would compare the plain loops with themselves. The last target has none.
    Bytes block(512);
    EXPECT_GT(RunSampleKernel(eSampleKernel::e_byteFromWordLow, block.data(), block.data() + 128, 128), 0u);
    SetKernelTarget(GetKernelTargets().back());
    bool const hasOthers = GetKernelTargets().size() > 1;
    EXPECT_EQ(RunSampleKernel(eSampleKernel::e_byteFromWordLow, block.data(), block.data() + 128, 128) == 0, hasOthers);
}

} // namespace
} // namespace quillmarsh
