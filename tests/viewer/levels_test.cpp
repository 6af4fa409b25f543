#include <viewer_model/images/imagelevels.h>

#include "tests/viewer/images.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace viewer::tests
{
namespace
{

using namespace quillmarsh;

/// The mean of the up to four samples that are there.
double FindMean(Channel const &channel, ImageBase const &source, unsigned int row, unsigned int column)
{
    double sum = 0, number = 0;
    for (unsigned int y = 2 * row; y < std::min(2 * row + 2, source.GetNumRows()); ++y)
    {
        for (unsigned int x = 2 * column; x < std::min(2 * column + 2, source.GetNumColumns()); ++x, ++number)
            sum += channel.read(source.SampleB(y, x));
    }
    return channel.isFloat ? static_cast<double>(static_cast<float>(sum / number)) : std::floor(sum / number + 0.5);
}

TEST(ImageLevels, EachIsTheRoundedMeanOfTheOneBefore)
{
    constexpr unsigned int sizes[][2] = {{1, 1}, {1, 37}, {38, 1}, {5, 3}, {64, 32}, {33, 131}};
    for (eSampleFormat const format : s_formats)
    {
        for (auto const &[rows, columns] : sizes)
        {
            auto const levels = ImageLevels::Build(MakeRandomContent(format, rows, columns));
            for (unsigned int level = 1; level < levels->GetNumLevels(); ++level)
            {
                ImageBase const &source = levels->GetLevel(level - 1), &means = levels->GetLevel(level);
                ASSERT_EQ((source.GetNumRows() + 1) / 2, means.GetNumRows());
                ASSERT_EQ((source.GetNumColumns() + 1) / 2, means.GetNumColumns());
                ASSERT_EQ(format, means.GetSampleFormat());
                for (unsigned int i = 0; i < means.GetNumSamples(); ++i)
                {
                    unsigned int const row = i / means.GetNumColumns(), column = i % means.GetNumColumns();
                    for (Channel const &channel : GetChannels(format))
                        ASSERT_EQ(FindMean(channel, source, row, column), channel.read(means.SampleB(row, column)))
                            << sampled_data::GetFormatName(format) << ' ' << channel.name << ' ' << row << ' '
                            << column;
                }
            }
            EXPECT_EQ(1u, levels->GetLevel(99).GetNumSamples());
        }
    }
}

TEST(ImageLevels, HaveHandComputedSamples)
{
    auto const levels = ImageLevels::Build(MakeContent<unsigned char>(e_format_L8, 3, 3,
                                                                      {0, 1, 10, //
                                                                       0, 1, 21, //
                                                                       7, 8, 200}));
    ASSERT_EQ(3u, levels->GetNumLevels());
    unsigned char const halved[] = {1, 16, 8, 200};
    EXPECT_TRUE(std::equal(halved, halved + 4, levels->GetLevel(1).GetSamplesB()));
    EXPECT_EQ(56, *levels->GetLevel(2).GetSamplesB());
    // Alpha 1, 1, 0, 0 rounds up; red 31 and blue 31 alone are 8.
    auto const words =
        ImageLevels::Build(MakeContent<unsigned short>(e_format_A1R5G5B5, 2, 2, {0x8000, 0xFC00, 0x001F, 0x03E0}));
    unsigned short word;
    std::memcpy(&word, words->GetLevel(1).GetSamplesB(), 2);
    EXPECT_EQ(0x8000 | 8 << 10 | 8 << 5 | 8, word);
}

TEST(ImageLevels, FitTheZoomAndAThirdOfTheMemory)
{
    auto const levels = ImageLevels::Build(MakeRandomContent(e_format_A8L8, 256, 512));
    std::size_t size = 0;
    for (unsigned int level = 1; level < levels->GetNumLevels(); ++level)
        size += levels->GetLevel(level).GetTotalByteSize();
    EXPECT_NEAR(256 * 512 * 2 / 3.0, static_cast<double>(size), 8);
    struct
    {
        double zoom;
        unsigned int level;
    } constexpr s_cases[] = {{64, 0}, {1, 0}, {0.51, 0}, {0.5, 1}, {0.26, 1}, {0.25, 2}, {1.0 / 512, 9}, {1e-9, 9}};
    for (auto const &[zoom, level] : s_cases)
        EXPECT_EQ(level, levels->FindLevel(zoom)) << zoom;
    EXPECT_EQ(0u, ImageLevels(levels->GetContent()).FindLevel(0.01));
}

TEST(ImageLevels, TellProgressAndStop)
{
    ContentPtr const content = MakeContent(e_format_A8R8G8B8, 3000, 2000, std::vector<unsigned int>(6000000));
    std::vector<double> parts;
    auto const report = [&](double part)
    {
        parts.push_back(part);
        return part < 0.5;
    };
    EXPECT_EQ(nullptr, ImageLevels::Build(content, report));
    EXPECT_LT(parts.front(), 0.3);
    EXPECT_NEAR(0.5, parts.back(), 0.3);
    parts.clear();
    EXPECT_NE(nullptr, ImageLevels::Build(content, [&](double part) { return parts.push_back(part), true; }));
    EXPECT_TRUE(std::is_sorted(parts.begin(), parts.end()));
    EXPECT_NEAR(1, parts.back(), 0.01);
}

} // namespace
} // namespace viewer::tests
