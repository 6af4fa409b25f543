#include "source/dataobjects/transfer/samplekernels.h"
#include "tests/support/sample_blocks.h"

#include <quillmarsh/dataobjects/sampleprocessors.h>
#include <quillmarsh/dataobjects/sampletransfer.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <vector>

namespace quillmarsh
{
namespace
{

using namespace sample_processors;
using tests::Bytes;
using tests::BytesOf;
using tests::RandomBytes;
using Copy = std::function<void(SignalBase &, SignalBase const &)>;

/// Does a transfer with the one-element processors, element by element.
template<typename Processor>
Copy OneByOne(unsigned int dstOffset = 0, unsigned int srcOffset = 0)
{
    return [=](SignalBase &dst, SignalBase const &src)
    {
        Processor processor;
        element_processors::ProcessElements(processor, dst.GetNumSamples(), dst.GetSamplesB() + dstOffset,
                                            dst.GetSampleByteSize(), src.GetSamplesB() + srcOffset,
                                            src.GetSampleByteSize());
    };
}

Copy Both(Copy first, Copy second)
{
    return [=](SignalBase &dst, SignalBase const &src)
    {
        first(dst, src);
        second(dst, src);
    };
}

struct Pair
{
    eSampleFormat dst, src;
    Copy oneByOne;
};

using CopyByte = element_processors::Copy_1<unsigned char>;
using ToL8 = CopyConverter_B8G8R8_To_L8;
using ToBGR = CopyConverter_L8_To_B8G8R8;

Pair const s_pairs[] = {
    {e_format_L8, e_format_A8L8, OneByOne<CopyByte>(0, 0)},
    {e_format_A8, e_format_A8L8, OneByOne<CopyByte>(0, 1)},
    {e_format_A8, e_format_A8R8G8B8, OneByOne<CopyByte>(0, 3)},
    {e_format_L8, e_format_X8R8G8B8, OneByOne<ToL8>()},
    {e_format_L8, e_format_FP32NormL, OneByOne<CopyConverter_FP32Norm_To_UInt8>()},
    {e_format_A8L8, e_format_L8, OneByOne<CopyByte>(0, 0)},
    {e_format_A8L8, e_format_A8, OneByOne<CopyByte>(1, 0)},
    {e_format_A8L8, e_format_X8R8G8B8, OneByOne<ToL8>()},
    {e_format_A8L8, e_format_A8R8G8B8, Both(OneByOne<ToL8>(), OneByOne<CopyByte>(1, 3))},
    {e_format_A4R4G4B4, e_format_A8R8G8B8, OneByOne<CopyConverter_UInt8888_To_UShort4444>()},
    {e_format_A1R5G5B5, e_format_A8R8G8B8, OneByOne<CopyConverter_UInt8888_To_UShort1555>()},
    {e_format_A8R8G8B8, e_format_A8, OneByOne<CopyByte>(3, 0)},
    {e_format_X8R8G8B8, e_format_L8, OneByOne<ToBGR>()},
    {e_format_X8R8G8B8, e_format_A8L8, OneByOne<ToBGR>()},
    {e_format_A8R8G8B8, e_format_A8L8, Both(OneByOne<ToBGR>(), OneByOne<CopyByte>(3, 1))},
    {e_format_A8R8G8B8, e_format_A4R4G4B4, OneByOne<CopyConverter_UShort4444_To_UInt8888>()},
    {e_format_A8R8G8B8, e_format_A1R5G5B5, OneByOne<CopyConverter_UShort1555_To_UInt8888>()},
    {e_format_FP32NormL, e_format_L8, OneByOne<CopyConverter_UInt8_To_FP32Norm>()},
};

/// Runs a copy between two places of one block, and checks that the bytes around the destination stay the same.
Bytes RunWithin(Bytes block, Pair const &pair, Copy const &copy, unsigned int count, std::size_t dstAt,
                std::size_t srcAt)
{
    SignalBaseFromExternalStorageAdapter dst(pair.dst), src(pair.src);
    dst.SetExternalStorage(block.data() + dstAt, count);
    src.SetExternalStorage(block.data() + srcAt, count);
    copy(dst, src);
    return block;
}

void Transfer(SignalBase &dst, SignalBase const &src)
{
    ASSERT_TRUE(TransferSamples1D(dst, src, false));
}

/// Each test runs with every instruction set of this machine.
class SampleKernels : public testing::Test
{
protected:
    ~SampleKernels() override { SetKernelTarget(0); }

    /// Compares the transfer of a block with the result of the one-element processors.
    void ExpectSameBits(Pair const &pair, Bytes source)
    {
        SignalBaseFromExternalStorageAdapter src(pair.src);
        auto const count = static_cast<unsigned int>(source.size() / sample_formats::ExtractByteSize(pair.src));
        src.SetExternalStorage(source.data(), count);
        AutoPtr<SignalBase> const expected(ManufactureSignal(pair.dst, count));
        AutoPtr<SignalBase> const actual(ManufactureSignal(pair.dst, count));
        std::fill_n(expected->GetSamplesB(), expected->GetTotalByteSize(), 0xA5);
        pair.oneByOne(*expected, src);
        for (long long const target : GetKernelTargets())
        {
            SetKernelTarget(target);
            std::fill_n(actual->GetSamplesB(), actual->GetTotalByteSize(), 0xA5);
            Transfer(*actual, src);
            ASSERT_TRUE(BytesOf(*actual) == BytesOf(*expected))
                << std::hex << pair.dst << " from " << pair.src << " by " << target;
        }
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
        if (sample_formats::ExtractByteSize(pair.src) < 4)
            ExpectSameBits(pair, sample_formats::ExtractByteSize(pair.src) == 1 ? bytes : words);
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
    constexpr std::size_t dstByteSize = (std::size_t{8} << 20) + 1000, dstAt = 4, srcAt = dstByteSize + 65;
    Bytes const block = RandomBytes(srcAt + 4 * dstByteSize);
    for (Pair const &pair : s_pairs)
    {
        auto const count = static_cast<unsigned int>(dstByteSize / sample_formats::ExtractByteSize(pair.dst));
        Bytes const expected = RunWithin(block, pair, pair.oneByOne, count, dstAt, srcAt);
        for (long long const target : GetKernelTargets())
        {
            SetKernelTarget(target);
            ASSERT_TRUE(RunWithin(block, pair, Transfer, count, dstAt, srcAt) == expected)
                << std::hex << pair.dst << " from " << pair.src << " by " << target;
        }
    }
}

TEST_F(SampleKernels, KeepToTheirBlockAtAnyLengthAndPlace)
{
    constexpr std::size_t half = 1024;
    for (long long const target : GetKernelTargets())
    {
        SetKernelTarget(target);
        for (Pair const &pair : s_pairs)
            for (unsigned int count = 1; count < 200; count += count < 70 ? 1 : 13)
            {
                std::size_t const dstAt = 64 + count % 5, srcAt = half + count % 7;
                Bytes const block = RandomBytes(2 * half);
                ASSERT_EQ(RunWithin(block, pair, Transfer, count, dstAt, srcAt),
                          RunWithin(block, pair, pair.oneByOne, count, dstAt, srcAt))
                    << std::hex << pair.dst << " from " << pair.src << " by " << target << std::dec << ", " << count;
            }
    }
}

TEST_F(SampleKernels, LeaveBlocksThatOverlapToTheOneElementProcessors)
{
    constexpr unsigned int count = 300;
    for (Pair const &pair : s_pairs)
        for (std::size_t const srcAt : {0, 64, 65, 128, 400})
        {
            Bytes const block = RandomBytes(4 * count + 512);
            ASSERT_EQ(RunWithin(block, pair, Transfer, count, 64, srcAt),
                      RunWithin(block, pair, pair.oneByOne, count, 64, srcAt))
                << std::hex << pair.dst << " from " << pair.src << std::dec << " at " << srcAt;
        }
}

TEST_F(SampleKernels, HaveCodeForVectorsOfThisMachine)
{
    // Without such code, the tests above would compare the plain loops with themselves.
    Bytes block(512);
    EXPECT_GT(RunSampleKernel(eSampleKernel::e_byteFromWordLow, block.data(), block.data() + 128, 128), 0u);
}

} // namespace
} // namespace quillmarsh
