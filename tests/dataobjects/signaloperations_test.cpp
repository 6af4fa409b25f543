#include <quillmarsh/dataobjects/signaloperations.h>

#include "source/dataobjects/operations/inplacekernels.h"
#include "source/dataobjects/transfer/samplekernels.h"
#include "tests/support/sample_blocks.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/scripted_dialogs.h"
#include <quillmarsh/basetools/serializer.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <sstream>

namespace quillmarsh
{
namespace
{

using tests::Bytes;
using tests::BytesOf;
using tests::CountUp;
using tests::ScriptedDialogs;
using Texts = std::vector<string>;
using Work = std::function<void(SignalBase &)>;

/// Makes random bytes, some of them equal, so that thresholds and keys are hit.
Bytes RandomBytes(std::size_t size)
{
    Bytes bytes = tests::RandomBytes(size);
    for (unsigned char &byte : bytes)
        byte = static_cast<unsigned char>(byte % 5 * (byte >> 2));
    return bytes;
}

struct Operation
{
    char const *name;
    std::vector<unsigned int> sizes; ///< of samples
    Work work;
};

std::vector<Operation> const s_operations = {
    {"flip bytes", {2, 3, 4, 5, 6, 8, 12, 16}, [](SignalBase &s) { ProcessSamples_FlipByteOrder(s); }},
    {"flip a triplet", {4, 6, 7, 12}, [](SignalBase &s) { ProcessSamples_3BytesFlipByteOrder(s, 1); }},
    {"swap bytes", {4, 6, 16}, [](SignalBase &s) { ProcessSamples_SwapBytes(s, 1, 2); }},
    {"clear", {1, 3, 5}, ProcessSamples_Clear},
    {"fill a byte",
     {1, 2, 3, 4, 7, 12},
     [](SignalBase &s) { ProcessSamples_Fill1Byte(s, s.GetSampleByteSize() - 1, 9); }},
    {"fill all bytes", {3, 4}, [](SignalBase &s) { ProcessSamples_FillNBytes(s, 9); }},
    {"fill three bytes", {3, 4, 16}, [](SignalBase &s) { ProcessSamples_Fill3Bytes(s, 0, 1, 2, 3); }},
    {"fill nibbles",
     {2, 3},
     [](SignalBase &s)
     {
         ProcessSamples_Fill1Nibble(s, 1, true, 0x35);
         ProcessSamples_Fill1Nibble_MapValueRange(s, 0, false, 0x7A);
     }},
    {"fill bits", {2}, [](SignalBase &s) { ProcessSamples_FillBits_UShort(s, 0xFFFB, 0x1E, 7); }},
    {"colour key", {4, 6}, [](SignalBase &s) { ProcessSamples_AlphaFromColorKey(s, color4b(0, 0, 0, 77), 3, 200); }},
    {"coverage", {4, 8}, [](SignalBase &s) { ProcessSamples_BGRToA_ThresholdBGR(s, 60); }},
    {"high pass", {1, 2, 4, 6}, [](SignalBase &s) { HighPassFilter(s, 0, 60, 1, 2); }},
    {"low pass", {1, 3, 5}, [](SignalBase &s) { LowPassFilter(s, 0, 60, 1, 2); }},
    {"three values", {2, 4, 12}, [](SignalBase &s) { ThresholdSegmentation(s, 1, 0, 7, 8, 9); }},
    {"three values of two bytes", {4, 6, 7}, [](SignalBase &s) { ThresholdSegmentationNBytes(s, 2, 2, 255, 7, 8, 9); }},
    {"reverse", {1, 2, 3, 4, 5, 6, 8, 12, 16}, FlipSamples},
};

/// Runs an operation on a part of a block, and returns all of the block.
Bytes Processed(Operation const &operation, unsigned int size, unsigned int count, std::size_t start, Bytes block)
{
    SignalBaseFromExternalStorageAdapter signal(sample_formats::UnknownSampleFormat(size));
    signal.SetExternalStorage(block.data() + start, count);
    operation.work(signal);
    return block;
}

TEST(SignalOperations, GiveTheSameBytesWithAnyVectorsAtAnyLengthAndPlace)
{
    constexpr std::size_t margin = 64;
    for (Operation const &operation : s_operations)
        for (unsigned int const size : operation.sizes)
            for (unsigned int count = 1; count < 300; count += count < 40 ? 1 : 29)
            {
                Bytes const block = RandomBytes(2 * margin + std::size_t{size} * count);
                std::size_t const start = margin + count % 5;
                SetKernelTarget(GetKernelTargets().back());
                Bytes const expected = Processed(operation, size, count, start, block);
                for (long long const target : GetKernelTargets())
                {
                    SetKernelTarget(target);
                    ASSERT_EQ(Processed(operation, size, count, start, block), expected)
                        << operation.name << ", " << count << " of " << size << " by " << target;
                }
            }
    SetKernelTarget(0);
}

// With QUILLMARSH_WRITE_GOLDEN in the environment the file is written anew.
TEST(SignalOperations, GiveTheBytesOfTheGoldenFile)
{
    string const name = QUILLMARSH_TEST_GOLDEN "operations.bin";
    std::istringstream golden(tests::ReadFile(name));
    std::ostringstream made;
    for (Operation const &operation : s_operations)
        for (unsigned int const size : operation.sizes)
        {
            constexpr unsigned int count = 37;
            Bytes block(std::size_t{size} * count);
            for (std::size_t i = 0; i < block.size(); ++i)
                block[i] = static_cast<unsigned char>(i % 5 * (i * i / 3 % 64));
            block = Processed(operation, size, count, 0, block);
            string const bytes(block.begin(), block.end());
            string wanted;
            golden >= wanted;
            EXPECT_TRUE(bytes == wanted) << operation.name << " of " << size;
            made <= bytes;
        }
    if (std::getenv("QUILLMARSH_WRITE_GOLDEN") != nullptr)
        std::ofstream(name, std::ios::binary) << made.str();
}

TEST(SignalOperations, CopyPartsFlipped)
{
    using Case = std::array<unsigned int, 4>;
    for (long long const target : GetKernelTargets())
    {
        SetKernelTarget(target);
        for (auto const &[dstSize, dstOffset, srcSize, srcOffset] :
             {Case{4, 0, 4, 0}, {4, 1, 4, 0}, {4, 0, 4, 1}, {3, 0, 3, 0}, {6, 3, 6, 0}, {4, 0, 3, 0}, {16, 9, 16, 2}})
            for (unsigned int const count : {1u, 2u, 3u, 15u, 64u, 177u})
            {
                AutoPtr<SignalBase> const dst(ManufactureSignal(sample_formats::UnknownSampleFormat(dstSize), count));
                AutoPtr<SignalBase> const src(ManufactureSignal(sample_formats::UnknownSampleFormat(srcSize), count));
                Bytes expected = BytesOf(CountUp(*dst, 100));
                CountUp(*src);
                for (unsigned int i = 0; i < count; ++i)
                    for (unsigned int k = 0; k < 3; ++k)
                        expected[i * dstSize + dstOffset + k] = src->SampleB(i)[srcOffset + 2 - k];
                CopySamples_3BytesFlippedByteOrder(*dst, dstOffset, *src, srcOffset);
                ASSERT_EQ(BytesOf(*dst), expected) << dstSize << ' ' << srcSize << ' ' << count << " by " << target;
            }
        auto const check = [](auto &samples, auto &flipped)
        {
            CopySamples_FlippedByteOrder(flipped, CountUp(samples));
            EXPECT_EQ(*flipped.SampleB(1), flipped.GetSampleByteSize() * 2 - 1);
            ProcessSamples_FlipByteOrder(flipped);
            EXPECT_EQ(BytesOf(flipped), BytesOf(samples));
        };
        Signal<Sample16> words(e_format_A8L8, 99), flippedWords(e_format_A8L8, 99);
        check(words, flippedWords);
        Signal<Sample32> colours(e_format_A8R8G8B8, 99), flippedColours(e_format_A8R8G8B8, 99);
        check(colours, flippedColours);
    }
    SetKernelTarget(0);
}

TEST(SignalOperations, CopyRangesAndClone)
{
    Signal<Sample16> src(e_format_A8L8, 5), dst(e_format_A8L8, 7);
    CountUp(src, 50);
    CountUp(dst);
    CopySamples1D(dst, src, 2, 4, 3);
    EXPECT_EQ(BytesOf(dst), (Bytes{0, 1, 2, 3, 4, 5, 6, 7, 56, 57, 58, 59, 12, 13}));
    CopySamples1D(dst, src, 0, 1, 0);
    EXPECT_EQ(BytesOf(dst), (Bytes{0, 1, 50, 51, 52, 53, 54, 55, 56, 57, 58, 59, 12, 13}));

    AutoPtr<SignalBase> const clone(CloneSignal(src));
    EXPECT_EQ(clone->GetSampleFormat(), e_format_A8L8);
    EXPECT_EQ(BytesOf(*clone), BytesOf(src));
    SignalBaseFromExternalStorageAdapter const five(sample_formats::UnknownSampleFormat(5));
    EXPECT_EQ(CloneSignal(five), nullptr);
}

TEST(SignalOperations, AssertWhatDoesNotFitAndLeaveItAlone)
{
    ScriptedDialogs dialogs(platform::eDialogAnswer::e_retry);
    Signal<Sample32> s(e_format_A8R8G8B8, 3), other(e_format_X8R8G8B8, 3);
    Signal<Sample16> words(e_format_A8L8, 3), none(e_format_A8L8, 0), five(e_format_A8L8, 5);
    color4f const black(0, 0, 0, 0);
    Bytes const before = BytesOf(CountUp(s));
    string const byte = "Byte-offset out of range.", triplet = "Triplet-offset out of range.";
    std::pair<std::function<void()>, Texts> const misuses[] = {
        {[&] { ProcessSamples_3BytesFlipByteOrder(s, 2); }, {triplet}},
        {[&] { ProcessSamples_3BytesFlipByteOrder(words, 0); }, {triplet}},
        {[&] { ProcessSamples_SwapBytes(s, 4, 0); }, {"Byte-offset-1 out of range."}},
        {[&] { ProcessSamples_SwapBytes(s, 2, 2); }, {"Byte-offset-2 out of range."}},
        {[&] { ProcessSamples_Fill1Byte(s, 4, 0); }, {byte}},
        {[&] { ProcessSamples_Fill3Bytes(s, 2, 0, 0, 0); }, {triplet}},
        {[&] { ProcessSamples_Fill1Nibble(s, 4, true, 0); }, {byte}},
        {[&] { ProcessSamples_FillBits_UShort(s, 0, 1, 1); }, {"Invalid target-sample-size."}},
        {[&] { HighPassFilter(s, 4, 0, 0, 0); }, {byte}},
        {[&] { LowPassFilter(s, 4, 0, 0, 0); }, {byte}},
        {[&] { ThresholdSegmentation(s, 4, 0, 0, 0, 0); }, {byte}},
        {[&] { ThresholdSegmentationNBytes(s, 4, 1, 0, 0, 0, 0); }, {byte}},
        {[&] { ThresholdSegmentationNBytes(s, 2, 0xFFFFFFFF, 0, 0, 0, 0); }, {"Num-bytes-per-sample out of range."}},
        {[&] { CopySamples_FlippedByteOrder(five, words); }, {"Sample-count mismatch."}},
        {[&] { CopySamples_3BytesFlippedByteOrder(s, 2, words, 0); },
         {"Destination-triplet-offset out of range.", "Source-triplet-offset out of range."}},
        {[&] { CopySamples1D(s, words, 4, 0, 0); },
         {"Sample-format mismatch.", "Destination-offset/count out of range.", "Source-offset/count out of range."}},
        {[&] { CopySamples1D(s, s, 2, 0xFFFFFFFF, 0); }, {"Destination-offset/count out of range."}},
        {[&] { CopySamples1D(none, none, 0, 0, 0); }, {"Destination is empty.", "Source is empty."}},
        {[&] { ProcessSamples_Clear(none); }, {"Invalid argument."}},
        {[&] { FlipSamples(none); }, {}},
        {[&] { ProcessSamples_AlphaFromColorKey(words, color4b(0, 0, 0, 0), 0, 0); }, {}},
        {[&] { ProcessSamples_BGRToA_ThresholdBGR(words); }, {}},
        {[&] { GradientFill(s, black, black, 3, 3); },
         {"Start-index out of range.", "End-index out of range.", "Destination-offset/count out of range."}},
    };
    for (auto const &misuse : misuses)
    {
        misuse.first();
        EXPECT_EQ(dialogs.TakeTexts(), misuse.second) << &misuse - misuses;
        EXPECT_EQ(BytesOf(s), before) << &misuse - misuses;
    }
    // A different format of the same size is reported, and copied nevertheless.
    CopySamples1D(other, s, 0, 0, 0);
    EXPECT_EQ(dialogs.TakeTexts(), Texts{"Sample-format mismatch."});
    EXPECT_EQ(BytesOf(other), before);
    // The same is true of a gradient that ends before its start: it has one sample.
    EXPECT_TRUE(GradientFill(s, black, black, 2, 0));
    EXPECT_EQ(dialogs.TakeTexts(), Texts{"End-index preceds start-index."});
    EXPECT_EQ(BytesOf(s), (Bytes{0, 1, 2, 3, 4, 5, 6, 7, 0, 0, 0, 0}));
}

/// Result of a fill for a sample of bytes 0xA5; empty when the format has no such channel.
struct Fill
{
    eSampleFormat format;
    char const *luminance, *alpha, *red, *green, *blue, *rgb, *argb;
};

// Values: 0xC8 for a single channel; red 0x11, green 0x92, blue 0x53, alpha 0x74 for colours.
constexpr Fill s_fills[] = {
    {e_format_L8, "\xC8", "", "", "", "", "", ""},
    {e_format_A8, "", "\xC8", "", "", "", "", ""},
    {e_format_A8L8, "\xC8\xA5", "\xA5\xC8", "", "", "", "", ""},
    {e_format_A4R4G4B4, "", "\xA5\xC5", "\xA5\xAC", "\xC5\xA5", "\xAC\xA5", "\x95\xA1", "\x95\x71"},
    {e_format_A1R5G5B5, "", "\xA5\xA5", "\xA5\xE5", "\x25\xA7", "\xB9\xA5", "\x4A\x8A", "\x4A\x0A"},
    {e_format_X8R8G8B8, "", "", "\xA5\xA5\xC8\xA5", "\xA5\xC8\xA5\xA5", "\xC8\xA5\xA5\xA5", "\x53\x92\x11\xA5", ""},
    {e_format_A8R8G8B8, "", "\xA5\xA5\xA5\xC8", "\xA5\xA5\xC8\xA5", "\xA5\xC8\xA5\xA5", "\xC8\xA5\xA5\xA5",
     "\x53\x92\x11\xA5", "\x53\x92\x11\x74"},
    {e_format_FP32NormL, "", "", "", "", "", "", ""},
};

TEST(SignalOperations, FillTheChannelsThatTheFormatHas)
{
    color4b const colour(0x11, 0x92, 0x53, 0x74);
    constexpr unsigned char value = 0xC8;
    auto const check = [](eSampleFormat format, string const &expected, auto fill, auto const &argument)
    {
        AutoPtr<SignalBase> const signal(ManufactureSignal(format, 2));
        ProcessSamples_FillNBytes(*signal, 0xA5);
        Bytes const before = BytesOf(*signal);
        string const twice = expected + expected;
        EXPECT_EQ(fill(*signal, argument), !expected.empty()) << std::hex << format;
        EXPECT_EQ(BytesOf(*signal), expected.empty() ? before : Bytes(twice.begin(), twice.end()))
            << std::hex << format;
    };
    for (Fill const &fill : s_fills)
    {
        check(fill.format, fill.luminance, Fill_Luminance, value);
        check(fill.format, fill.alpha, Fill_Alpha, value);
        check(fill.format, fill.red, Fill_Red, value);
        check(fill.format, fill.green, Fill_Green, value);
        check(fill.format, fill.blue, Fill_Blue, value);
        check(fill.format, fill.rgb, Fill_RGB, colour);
        check(fill.format, fill.argb, Fill_ARGB, colour);
    }
    check(e_format_A1R5G5B5, "\xA5\x25", Fill_Alpha, static_cast<unsigned char>(100));
    // Large blocks are written past the caches.
    Signal<Sample32> big(e_format_A8R8G8B8, (2u << 20) + 77);
    EXPECT_TRUE(Fill_ARGB(big, colour));
    Bytes expected;
    for (unsigned int i = 0; i < big.GetNumSamples(); ++i)
        expected.insert(expected.end(), {0x53, 0x92, 0x11, 0x74});
    EXPECT_TRUE(BytesOf(big) == expected);
}

TEST(SignalOperations, CopiesPastTheCachesAreReordered)
{
    // The destination begins within a line of the caches, and ends within one.
    constexpr std::size_t byteSize = (std::size_t{8} << 20) + 1000, dstAt = 4;
    ByteOrder const order{4, {3, 2, 1, 0}, {}};
    Bytes const src = RandomBytes(byteSize);
    Bytes expected(dstAt + byteSize + dstAt);
    for (std::size_t i = 0; i < byteSize; ++i)
        expected[dstAt + i] = src[i ^ 3];
    for (long long const target : GetKernelTargets())
    {
        SetKernelTarget(target);
        Bytes dst(expected.size());
        std::size_t const done = 4 * ReorderBytes(dst.data() + dstAt, src.data(), byteSize / 4, order);
        EXPECT_TRUE(done == 0 || done + 256 > byteSize) << target;
        std::copy(expected.begin() + dstAt + done, expected.end() - dstAt, dst.begin() + dstAt + done);
        EXPECT_TRUE(dst == expected) << target;
    }
    SetKernelTarget(0);
}

} // namespace
} // namespace quillmarsh
