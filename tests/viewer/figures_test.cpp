#include <viewer_model/images/figures.h>

#include "tests/viewer/images.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace viewer::tests
{
namespace
{

using namespace quillmarsh;

constexpr double s_infinity = std::numeric_limits<double>::infinity();

/// The figures of a channel by the definition, in two passes.
void ExpectFigures(Channel const &channel, std::vector<double> const &values, ChannelFigures const &figures)
{
    SCOPED_TRACE(channel.name);
    double sum = 0, squares = 0;
    std::vector<std::uint64_t> histogram(256);
    for (double const value : values)
    {
        sum += value;
        ++histogram[static_cast<std::size_t>(std::clamp(std::floor(value / channel.largest * 256), 0.0, 255.0))];
    }
    double const count = static_cast<double>(values.size()), mean = sum / count;
    for (double const value : values)
        squares += (value - mean) * (value - mean);
    EXPECT_STREQ(channel.name, figures.name);
    EXPECT_EQ(*std::min_element(values.begin(), values.end()), figures.minimum);
    EXPECT_EQ(*std::max_element(values.begin(), values.end()), figures.maximum);
    EXPECT_NEAR(mean, figures.mean, 1e-12 * channel.largest);
    EXPECT_NEAR(std::sqrt(squares / count), figures.deviation, 1e-12 * channel.largest);
    EXPECT_EQ(histogram, figures.histogram);
}

TEST(Figures, AreThoseOfTheArea)
{
    constexpr SampleArea areas[] = {{0, 0, 83, 61}, {5, 7, 40, 30}, {80, 60, 1000, 4000000000u}, {82, 0, 1, 61}};
    for (eSampleFormat const format : s_formats)
    {
        SCOPED_TRACE(sampled_data::GetFormatName(format));
        ContentPtr const content = MakeRandomContent(format, 61, 83);
        ImageBase const &image = *content->Get<ImageBase>();
        for (SampleArea const &area : areas)
        {
            auto const figures = ComputeFigures(image, area);
            ASSERT_EQ(GetChannels(format).size(), figures->channels.size());
            for (std::size_t i = 0; i < figures->channels.size(); ++i)
            {
                std::vector<double> values;
                for (unsigned int row = area.y; row < 61 && row - area.y < area.height; ++row)
                {
                    for (unsigned int column = area.x; column < 83 && column - area.x < area.width; ++column)
                        values.push_back(GetChannels(format)[i].read(image.SampleB(row, column)));
                }
                EXPECT_EQ(values.size(), figures->numSamples);
                ExpectFigures(GetChannels(format)[i], values, figures->channels[i]);
            }
        }
        EXPECT_EQ(0u, ComputeFigures(image, {83, 0, 5, 5})->numSamples);
    }
}

TEST(Figures, TellFloatsApartThatAreNoNumbers)
{
    constexpr float nothing = std::numeric_limits<float>::quiet_NaN(),
                    infinity = std::numeric_limits<float>::infinity();
    auto const find = [](std::vector<float> const &values)
    {
        auto const content = MakeContent(e_format_FP32NormL, 1, static_cast<unsigned int>(values.size()), values);
        return ComputeFigures(*content->Get<ImageBase>(), {0, 0, 1000, 1})->channels[0];
    };
    ChannelFigures const figures = find({nothing, 0.25f, 0.75f, nothing, -4});
    EXPECT_EQ(2u, figures.numNaN);
    EXPECT_EQ(-4, figures.minimum);
    EXPECT_EQ(0.75, figures.maximum);
    EXPECT_EQ(-1, figures.mean);
    EXPECT_EQ(1u, figures.histogram[0]);
    EXPECT_EQ(1u, figures.histogram[64]);
    EXPECT_EQ(s_infinity, find({1, infinity, 0}).mean);
    EXPECT_EQ(s_infinity, find({1, infinity, 0}).maximum);
    EXPECT_TRUE(std::isnan(find({infinity, -infinity}).mean));
    EXPECT_TRUE(std::isnan(find({nothing}).minimum));
}

TEST(Figures, DoNotDriftWithTheNumberOfSamples)
{
    std::vector<float> values(std::size_t(1) << 22);
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = 1e8f + (i / 3 % 2 != 0 ? 8.0f : 0.0f);
    ContentPtr const content = MakeContent(e_format_FP32NormA, 1 << 11, 1 << 11, values);
    std::vector<double> parts;
    auto const figures = ComputeFigures(*content->Get<ImageBase>(), {0, 0, 1 << 11, 1 << 11},
                                        [&](double part) { return parts.push_back(part), true; });
    EXPECT_NEAR(1e8 + 4, figures->channels[0].mean, 1e-5);
    EXPECT_NEAR(4, figures->channels[0].deviation, 1e-6);
    EXPECT_GT(parts.size(), 2u);
    EXPECT_EQ(1, parts.back());
    EXPECT_FALSE(ComputeFigures(*content->Get<ImageBase>(), {0, 0, 9, 9}, [](double) { return false; }));
}

TEST(LineFigures, TakeOneSampleForEachStep)
{
    std::vector<unsigned char> values(100);
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = static_cast<unsigned char>(i);
    ContentPtr const content = MakeContent(e_format_L8, 10, 10, values);
    constexpr double nothing = std::numeric_limits<double>::quiet_NaN();
    struct
    {
        double x0, y0, x1, y1;
        std::uint64_t count;
        double mean;
    } constexpr s_lines[] = {
        {2.9, 1.5, 5.1, 1.5, 4, 13.5},    // along a row
        {3.5, 9.5, 3.5, 0, 10, 48},       // up a column
        {0.5, 0.5, 9.5, 9.5, 10, 49.5},   // the diagonal
        {4.2, 4.2, 4.8, 4.3, 1, 44},      // within a sample
        {-5, 2.5, 2.2, 2.5, 3, 21},       // from outside
        {-1e15, 0.5, 1e15, 0.5, 10, 4.5}, // far beyond both ends
        {0, 1.5, 9.5, 0.5, 10, 9.5},      // half a row each
        {20, 20, 30, 30, 0, 0},           // beside the image
        {0, -1, 9, -1, 0, 0},             // above it
        {nothing, 0, 5, 5, 0, 0},         // no line
        {0, 0, s_infinity, 0, 0, 0},
    };
    for (auto const &line : s_lines)
    {
        Figures const figures = ComputeLineFigures(*content->Get<ImageBase>(), line.x0, line.y0, line.x1, line.y1);
        EXPECT_EQ(line.count, figures.numSamples) << &line - s_lines;
        EXPECT_EQ(line.mean, figures.channels[0].mean) << &line - s_lines;
    }
}

} // namespace
} // namespace viewer::tests
