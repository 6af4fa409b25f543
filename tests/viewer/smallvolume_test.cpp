// Volumes made small, and their greatest values along the line of sight.
#include <viewer_model/volumes/smallvolume.h>

#include <quillmarsh/dataobjects/sampleddataoperations.h>

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

namespace viewer
{
namespace
{

using namespace quillmarsh;
using sampled_data::SampledData;

Content MakeBytes(sampled_data::Dimensions const &dimensions, std::vector<unsigned char> const &bytes)
{
    SampledData data(e_format_L8, dimensions);
    std::memcpy(data.GetSamples().GetSamplesB(), bytes.data(), bytes.size());
    return Content(std::move(data));
}

TEST(SmallVolume, HasTheMeanOfBlocks)
{
    // Three layers of one row and four columns: layers 0 and 1 become one, layer 2 stays alone.
    Content const content = MakeBytes({3, 1, 4}, {0, 10, 100, 120, 20, 30, 140, 160, 8, 8, 255, 255});
    SmallVolumePtr const small = MakeSmallVolume(content, -1, 2);
    ASSERT_NE(nullptr, small);
    EXPECT_EQ(2, small->numColumns);
    EXPECT_EQ(1, small->numRows);
    EXPECT_EQ(2, small->numLayers);
    EXPECT_DOUBLE_EQ(8 / 255.0, small->low);
    EXPECT_DOUBLE_EQ(1, small->high);
    auto const code = [](double value) { return static_cast<std::uint16_t>((value - 8) / 247 * 65535 + 0.5); };
    EXPECT_EQ((std::vector<std::uint16_t>{code(15), code(130), 0, 65535}), small->values);
    // Half of the last layer, and half of the only row, are beyond the end.
    EXPECT_FLOAT_EQ(1, small->end.x);
    EXPECT_FLOAT_EQ(0.5F, small->end.y);
    EXPECT_FLOAT_EQ(0.75F, small->end.z);
    EXPECT_FLOAT_EQ(0.25F, small->halfExtent.y);
}

TEST(SmallVolume, TakesChannelsAndColours)
{
    SignalOperationsManager const operations;
    SampledData data(e_format_A8R8G8B8, {1, 1, 2});
    unsigned int const words[] = {0xFF204060, 0x80000000};
    std::memcpy(data.GetSamples().GetSamplesB(), words, sizeof(words));
    Content const content(std::move(data));
    SmallVolumePtr const colours = MakeSmallVolume(content, -1, 256);
    EXPECT_TRUE(colours->isColour);
    EXPECT_EQ((std::vector<Pixel>{0xFF204060, 0x80000000}), colours->colours);
    SmallVolumePtr const alpha = MakeSmallVolume(content, 3, 256);
    EXPECT_FALSE(alpha->isColour);
    EXPECT_EQ((std::vector<std::uint16_t>{65535, 0}), alpha->values);
    EXPECT_EQ(nullptr, MakeSmallVolume(content, 4, 256)) << "no such channel";
    int numCalls = 0;
    EXPECT_EQ(nullptr, MakeSmallVolume(content, -1, 256, [&](double) { return ++numCalls < 1; })) << "stopped";
}

TEST(SmallVolume, ExtremesAreThoseOfNumbers)
{
    SampledData data(e_format_FP32NormL, {1, 1, 4});
    float const infinity = std::numeric_limits<float>::infinity();
    float const floats[] = {std::numeric_limits<float>::quiet_NaN(), -2, 6, infinity};
    std::memcpy(data.GetSamples().GetSamplesB(), floats, sizeof(floats));
    SmallVolumePtr const small = MakeSmallVolume(Content(std::move(data)), -1, 256);
    EXPECT_EQ(-2, small->low);
    EXPECT_EQ(6, small->high);
    EXPECT_EQ(0, small->values[1]);
    EXPECT_EQ(65535, small->values[2]);
    // So are those of means.
    SampledData pairs(e_format_FP32NormA, {1, 2, 3});
    float const six[] = {-3, 1, 8, -5, 3, 4};
    std::memcpy(pairs.GetSamples().GetSamplesB(), six, sizeof(six));
    SmallVolumePtr const means = MakeSmallVolume(Content(std::move(pairs)), -1, 2);
    EXPECT_EQ(-1, means->low);
    EXPECT_EQ(6, means->high);
}

TEST(SmallVolume, ProjectionsFollowTheRotation)
{
    // One bright sample among dark ones: at the right, in front, of a cube of three.
    std::vector<unsigned char> bytes(27, 10);
    bytes[1 * 3 + 2] = 200;
    SmallVolumePtr const small = MakeSmallVolume(MakeBytes({3, 3, 3}, bytes), -1, 256);
    ToneMap const tones(e_format_L8, DisplaySettings());
    AutoPtr<ImageBase> const picture(ManufactureImage(e_format_A8R8G8B8, 104, 104));
    // The cube's sides cover 60 pixels, its samples 20 each.
    auto const find = [&](RotationAngles const &angles, unsigned int row, unsigned int column)
    {
        ComposeProjection(*picture, *small, MakeRotation(angles), 1, tones, 0xFF000000);
        return static_cast<unsigned int>(*picture->SampleB(row, column));
    };
    EXPECT_EQ(200, find({}, 52, 72));
    EXPECT_EQ(10, find({}, 52, 32));
    EXPECT_EQ(0, find({}, 52, 5)) << "beside the volume";
    EXPECT_EQ(200, find({.yaw = 180}, 52, 32)) << "from behind";
    // With layers to the right, the front is at the left.
    EXPECT_EQ(200, find({.yaw = 90}, 52, 32));
    EXPECT_EQ(10, find({.yaw = 90}, 52, 72));
    EXPECT_EQ(200, find({.roll = 90}, 72, 52)) << "with the clock";
}

} // namespace
} // namespace viewer
