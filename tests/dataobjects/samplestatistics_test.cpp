#include <quillmarsh/dataobjects/samplestatistics.h>

#include "tests/support/sample_blocks.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

namespace quillmarsh::sampled_data
{
namespace
{

SampledData MakeData(eSampleFormat format, Dimensions const &dimensions, tests::Bytes const &bytes)
{
    SampledData data(format, dimensions);
    std::copy(bytes.begin(), bytes.end(), data.GetSamples().GetSamplesB());
    return data;
}

SampledData MakeFloats(std::vector<float> const &values)
{
    SampledData data(e_format_FP32NormL, {static_cast<unsigned int>(values.size())});
    std::memcpy(data.GetSamples().GetSamplesB(), values.data(), values.size() * sizeof(float));
    return data;
}

void ExpectNumbers(auto const &channel, double minimum, double maximum, double mean, double deviation)
{
    EXPECT_EQ(std::tuple(minimum, maximum, mean), std::tuple(channel.minimum, channel.maximum, channel.mean));
    EXPECT_DOUBLE_EQ(deviation, channel.deviation);
}

TEST(SampleStatistics, MeasuresEachChannelInItsUnits)
{
    auto const colours = ComputeStatistics(MakeData(e_format_A8R8G8B8, {1, 2}, {1, 10, 100, 0, 3, 10, 200, 255}));
    ASSERT_EQ(4u, colours.size());
    EXPECT_EQ("red blue alpha", colours[0].name + ' ' + colours[2].name + ' ' + colours[3].name);
    ExpectNumbers(colours[0], 100, 200, 150, 50);
    ExpectNumbers(colours[1], 10, 10, 10, 0);
    EXPECT_EQ(2u, colours[1].histogram[10]);
    EXPECT_EQ(256u, colours[1].histogram.size());
    EXPECT_EQ(3u, ComputeStatistics(MakeData(e_format_X8R8G8B8, {1}, {1, 2, 3, 4})).size());

    // 0x8421: alpha 1, red 1, green 1, blue 1.
    auto const words = ComputeStatistics(MakeData(e_format_A1R5G5B5, {2}, {0x21, 0x84, 0xFF, 0x7F}));
    EXPECT_EQ(32u, words[0].histogram.size());
    EXPECT_EQ(16, words[1].mean);
    EXPECT_EQ(0.5, words[3].mean);
    EXPECT_THROW(ComputeStatistics(SampledData(sample_formats::UnknownSampleFormat(12), {1})), DataException);

    auto const floats = ComputeStatistics(MakeFloats({0.25f, -1, NAN, 0.5f, 1.25f}));
    EXPECT_EQ(1u, floats[0].numNaN);
    ExpectNumbers(floats[0], -1, 1.25, 0.25, std::sqrt((1.5625 + 0.0625 + 1.0) / 4));
    EXPECT_EQ(1u, floats[0].histogram[0]);
    EXPECT_EQ(1u, floats[0].histogram[64]);
    EXPECT_EQ(1u, floats[0].histogram[255]);
}

TEST(SampleStatistics, ComparesAndShowsWhere)
{
    SampledData const a = MakeData(e_format_A8L8, {1, 3}, {10, 0, 20, 0, 30, 255});
    SampledData const b = MakeData(e_format_A8L8, {1, 3}, {10, 0, 26, 0, 27, 253});
    Difference const difference = Compare(a, b);
    EXPECT_EQ(6, difference.greatest);
    EXPECT_EQ(3, difference.channels[0].mean);
    EXPECT_EQ(2, difference.channels[1].greatest);
    EXPECT_DOUBLE_EQ(10 * std::log10(255.0 * 255 / 15), difference.channels[0].psnr);
    EXPECT_EQ((tests::Bytes{0, 255, 128}), tests::BytesOf(MakeDifferencePicture(a, b).GetSamples()));

    EXPECT_TRUE(std::isinf(Compare(a, a).psnr));
    EXPECT_EQ(tests::Bytes(3, 0), tests::BytesOf(MakeDifferencePicture(a, a).GetSamples()));
    EXPECT_THROW(Compare(a, MakeData(e_format_A8L8, {3, 1}, {})), DataException);
    EXPECT_THROW(Compare(a, MakeData(e_format_A4R4G4B4, {1, 3}, {})), DataException);

    constexpr float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(0, Compare(MakeFloats({NAN, infinity}), MakeFloats({NAN, infinity})).greatest);
    EXPECT_TRUE(std::isinf(Compare(MakeFloats({NAN}), MakeFloats({1})).greatest));
}

} // namespace
} // namespace quillmarsh::sampled_data
