#include <quillmarsh/dataobjects/imageoperations.h>
#include <quillmarsh/dataobjects/volumeoperations.h>

#include "tests/support/sample_blocks.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>

namespace quillmarsh
{
namespace
{

using tests::Bytes;
using tests::BytesOf;
using tests::CountUp;
using tests::ScriptedDialogs;
using Texts = std::vector<string>;

using Size3D = std::array<unsigned int, 3>;

TEST(VolumeOperations, FlipEachAxis)
{
    for (unsigned int const size : {1u, 2u, 3u, 4u, 8u, 12u})
        for (auto const &[layers, rows, columns] : {Size3D{1, 1, 1}, {2, 3, 4}, {3, 2, 75}, {1, 5, 140}, {4, 1, 33}})
        {
            auto const format = sample_formats::UnknownSampleFormat(size);
            AutoPtr<VolumeBase> const original(ManufactureVolume(format, layers, rows, columns));
            CountUp(*original);
            std::tuple<void (*)(VolumeBase &), bool, bool, bool> const flips[] = {
                {FlipLayers, true, false, false}, {FlipRows, false, true, false}, {FlipColumns, false, false, true}};
            for (auto const &[flip, hasLayers, hasRows, hasColumns] : flips)
            {
                AutoPtr<VolumeBase> const volume(CloneVolume(*original));
                flip(*volume);
                Bytes expected;
                for (unsigned int i = 0; i < volume->GetNumSamples(); ++i)
                {
                    unsigned int const l = i / (rows * columns), r = i / columns % rows, c = i % columns;
                    unsigned char const *const sample = original->SampleB(
                        hasLayers ? layers - 1 - l : l, hasRows ? rows - 1 - r : r, hasColumns ? columns - 1 - c : c);
                    expected.insert(expected.end(), sample, sample + size);
                }
                EXPECT_EQ(BytesOf(*volume), expected) << size << ", " << columns << " columns";
            }

            // A layer is an image.
            ImageBaseFromExternalStorageAdapter image(format);
            AutoPtr<VolumeBase> const volume(CloneVolume(*original)), expected(CloneVolume(*original));
            for (unsigned int layer = 0; layer < layers; ++layer)
            {
                image.SetExternalStorage(volume->SampleB(layer, 0, 0), rows, columns);
                FlipRows(image);
                FlipColumns(image);
            }
            FlipColumns(*expected);
            FlipRows(*expected);
            EXPECT_EQ(BytesOf(*volume), BytesOf(*expected));
        }
}

TEST(ImageOperations, CopyBlocks)
{
    Image<Sample16> src(e_format_A8L8, 4, 5), dst(e_format_A8L8, 5, 5);
    auto const copied = [&](auto... arguments)
    {
        ProcessSamples_Clear(dst);
        CopySamples2D(dst, src, arguments...);
        Bytes luminance;
        for (unsigned int i = 0; i < dst.GetNumSamples(); ++i)
            luminance.push_back(dst.SignalBase::SampleB(i)[0]);
        return luminance;
    };
    CountUp(src, 2);
    EXPECT_EQ(copied(2u, 3u, 1u, 2u, 2u, 1u, false),
              (Bytes{0, 0, 0, 0, 0, 0, 0, 24, 26, 28, 0, 0, 34, 36, 38, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(copied(2u, 3u, 1u, 2u, 2u, 1u, true),
              (Bytes{0, 0, 0, 0, 0, 0, 0, 34, 36, 38, 0, 0, 24, 26, 28, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(copied(2u, 0u, 3u, 0u, 1u, 0u, false),
              (Bytes{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30}));
    EXPECT_EQ(copied(0u, 1u, 1u, 4u, 0u, 0u, true),
              (Bytes{0, 0, 0, 0, 0, 0, 0, 0, 0, 32, 0, 0, 0, 0, 22, 0, 0, 0, 0, 12, 0, 0, 0, 0, 2}));
    AutoPtr<ImageBase> const clone(CloneImage(src));
    EXPECT_TRUE(clone->CheckDimensionMatch(src));
    EXPECT_EQ(BytesOf(*clone), BytesOf(src));
    EXPECT_EQ(CloneImage(ImageBaseFromExternalStorageAdapter(sample_formats::UnknownSampleFormat(5))), nullptr);
}

TEST(VolumeOperations, CopyBlocksAndLayers)
{
    Volume<Sample8> src(e_format_L8, 2, 3, 2), dst(e_format_L8, 3, 3, 3), same(e_format_L8, 3, 3, 2);
    CountUp(src, 1);
    for (bool const flipLayers : {false, true})
        for (bool const flipRows : {false, true})
        {
            ProcessSamples_Clear(dst);
            CopySamples3D(dst, src, 0, 2, 1, 1, 1, 2, 0, 1, 1, flipLayers, flipRows);
            Bytes expected(27, 0);
            for (unsigned int layer = 0; layer < 2; ++layer)
                for (unsigned int row = 0; row < 2; ++row)
                    expected[(1 + layer) * 9 + (1 + row) * 3 + 2] =
                        *src.VolumeBase::SampleB(flipLayers ? 1 - layer : layer, 1 + (flipRows ? 1 - row : row), 1);
            EXPECT_EQ(BytesOf(dst), expected);
        }
    ProcessSamples_Clear(same);
    CopySamples3D(same, src, 0, 0, 0, 1, 0, 0, 0, 0, 0, false, false);
    EXPECT_EQ(BytesOf(same), (Bytes{0, 0, 0, 0, 0, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));

    // Copies of layers compare numbers of bytes, so other samples fit as well.
    Signal<Sample16> words(e_format_A8L8, 3);
    CopyToLayer(same, 0, CountUp(words, 40));
    CopyFromLayer(words, same, 2);
    EXPECT_EQ(BytesOf(same), (Bytes{40, 41, 42, 43, 44, 45, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
    EXPECT_EQ(BytesOf(words), (Bytes{7, 8, 9, 10, 11, 12}));
}

TEST(ImageOperations, FillOneByteOfABlock)
{
    Image<Sample16> image(e_format_A8L8, 3, 4);
    for (auto const &[row, numRows, column, numColumns] :
         std::initializer_list<std::array<unsigned int, 4>>{{1, 2, 1, 2}, {0, 3, 0, 4}, {2, 1, 3, 1}, {1, 0, 0, 4}})
    {
        Bytes expected = BytesOf(CountUp(image));
        for (unsigned int r = row; r < row + numRows; ++r)
            for (unsigned int c = column; c < column + numColumns; ++c)
                expected[(r * 4 + c) * 2 + 1] = 99;
        FillBlock(image, 1, 99, row, numRows, column, numColumns);
        EXPECT_EQ(BytesOf(image), expected);
    }
}

TEST(ImageOperations, CheckerboardsTakeTurns)
{
    for (unsigned int const blockRows : {0u, 1u, 2u, 5u, 100u})
        for (unsigned int const blockColumns : {0u, 3u, 64u, 0xFFFFFFFFu})
        {
            Image<Sample32> image(e_format_A8R8G8B8, 11, 131);
            Bytes expected = BytesOf(CountUp(image)), expectedColours = expected;
            for (unsigned int i = 0; i < image.GetNumSamples(); ++i)
            {
                unsigned int const block = i / 131 / std::max(blockRows, 1u) + i % 131 / std::max(blockColumns, 1u);
                expected[4 * i + 2] = block % 2 == 0 ? 7 : 8;
                for (unsigned int k = 0; k < 3; ++k)
                    expectedColours[4 * i + k + 1] = static_cast<unsigned char>((block % 2 == 0 ? 10 : 20) + k);
            }
            GenerateCheckerboard(image, 2, 7, 8, blockRows, blockColumns);
            EXPECT_EQ(BytesOf(image), expected) << blockRows << " by " << blockColumns;
            CountUp(image);
            GenerateCheckerboard(image, 1, color4b(12, 11, 10, 1), color4b(22, 21, 20, 2), blockRows, blockColumns);
            EXPECT_EQ(BytesOf(image), expectedColours) << blockRows << " by " << blockColumns;
        }
}

TEST(ImageOperations, AssertWhatDoesNotFitAndLeaveItAlone)
{
    ScriptedDialogs dialogs(platform::eDialogAnswer::e_retry);
    Image<Sample8> image(e_format_L8, 2, 3), other(e_format_A8, 2, 3), none(e_format_L8, 0, 0);
    Volume<Sample8> volume(e_format_L8, 2, 2, 3), wrong(e_format_A8, 1, 1, 1);
    Bytes const before = BytesOf(CountUp(image));
    string const offset = "Byte-offset out of range.", block = "Block-indices out of range";
    std::pair<std::function<void()>, Texts> const misuses[] = {
        {[&] { CopySamples2D(image, other, 3, 4, 0, 0, 0, 0, false); },
         {"Sample-format mismatch.", "Destination-row-offset/row-count out of range.",
          "Destination-column-offset/column-count out of range.", "Source-row-offset/row-count out of range.",
          "Source-column-offset/column-count out of range."}},
        {[&] { CopySamples2D(none, none, 0, 0, 0, 0, 0, 0, true); }, {"Destination is empty.", "Source is empty."}},
        {[&] { FillBlock(image, 1, 0, 2, 1, 0, 1); }, {offset, block}},
        {[&] { FillBlock(image, 0, 0, 1, 2, 0, 1); }, {block}},
        {[&] { FillBlock(image, 0, 0, 0, 1, 3, 0); }, {block}},
        {[&] { FillBlock(image, 0, 0, 0, 1, 1, 0xFFFFFFFF); }, {block}},
        {[&] { GenerateCheckerboard(image, 1, 0, 0, 1, 1); }, {offset}},
        {[&] { GenerateCheckerboard(image, 0, color4b(), color4b(), 1, 1); }, {"Triplet-offset out of range."}},
        {[&] { GenerateCheckerboard(none, 0, 0, 0, 1, 1); }, {}},
        {[&] { FlipRows(none), FlipColumns(none); }, {}},
        {[&] { CopySamples3D(volume, wrong, 3, 3, 4, 0, 0, 0, 0, 0, 0, false, false); },
         {"Sample-format mismatch.", "Destination-offset-z/layer-count out of range.",
          "Destination-offset-y/row-count out of range.", "Destination-offset-x/column-count out of range.",
          "Source-offset-z/layer-count out of range.", "Source-offset-y/row-count out of range.",
          "Source-offset-x/column-count out of range."}},
        {[&] { CopyToLayer(volume, 2, wrong); }, {"Byte-size mismatch.", "Destination-layer-index out of range."}},
        {[&] { CopyFromLayer(image, volume, 2); }, {"Source-layer-index out of range."}},
        {[&] { CopyFromLayer(image, wrong, 0); }, {"Byte-size mismatch."}},
    };
    for (auto const &misuse : misuses)
    {
        misuse.first();
        EXPECT_EQ(dialogs.TakeTexts(), misuse.second) << &misuse - misuses;
        EXPECT_EQ(BytesOf(image), before) << &misuse - misuses;
    }
}

} // namespace
} // namespace quillmarsh
