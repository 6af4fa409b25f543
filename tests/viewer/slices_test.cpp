// Slices, slabs and planes of small volumes, with values by hand.
#include <viewer_model/volumes/slices.h>

#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

namespace viewer
{
namespace
{

using namespace quillmarsh;

constexpr unsigned int s_numLayers = 2;
constexpr unsigned int s_numRows = 3;
constexpr unsigned int s_numColumns = 4;

/// Volume of 2 layers, 3 rows and 4 columns whose bytes tell their place: layer, row and column as decimal digits.
AutoPtr<VolumeBase> MakeDigits()
{
    AutoPtr<VolumeBase> volume(ManufactureVolume(e_format_L8, s_numLayers, s_numRows, s_numColumns));
    for (unsigned int layer = 0; layer < s_numLayers; ++layer)
        for (unsigned int row = 0; row < s_numRows; ++row)
            for (unsigned int column = 0; column < s_numColumns; ++column)
                *volume->SampleB(layer, row, column) = static_cast<unsigned char>(layer * 100 + row * 10 + column);
    return volume;
}

std::vector<unsigned int> GetBytes(ImageBase const &image)
{
    return {image.GetSamplesB(), image.GetSamplesB() + image.GetTotalByteSize()};
}

/// Volume of one row and one column, whose layers are the given samples.
template<typename Sample, std::size_t count>
AutoPtr<VolumeBase> MakeColumn(eSampleFormat format, Sample const (&samples)[count])
{
    AutoPtr<VolumeBase> volume(ManufactureVolume(format, count, 1, 1));
    std::memcpy(volume->GetSamplesB(), samples, sizeof(samples));
    return volume;
}

template<typename Sample>
Sample ProjectAll(VolumeBase const &volume, eProjection projection)
{
    AutoPtr<ImageBase> const image =
        ExtractSlice(volume, eSliceAxis::e_layer, volume.GetNumLayers() / 2, projection, 2 * volume.GetNumLayers());
    Sample sample;
    std::memcpy(&sample, image->GetSamplesB(), sizeof(sample));
    return sample;
}

TEST(Slices, LieAcrossTheirAxis)
{
    AutoPtr<VolumeBase> const volume = MakeDigits();
    struct
    {
        eSliceAxis axis;
        unsigned int index, numRows, numColumns;
        std::vector<unsigned int> bytes;
    } const all[] = {
        {eSliceAxis::e_layer, 1, 3, 4, {100, 101, 102, 103, 110, 111, 112, 113, 120, 121, 122, 123}},
        {eSliceAxis::e_row, 2, 2, 4, {20, 21, 22, 23, 120, 121, 122, 123}},
        {eSliceAxis::e_column, 3, 2, 3, {3, 13, 23, 103, 113, 123}},
    };
    for (auto const &each : all)
    {
        AutoPtr<ImageBase> const image = ExtractSlice(*volume, each.axis, each.index, eProjection::e_slice, 1);
        EXPECT_EQ(each.numRows, image->GetNumRows());
        EXPECT_EQ(each.numColumns, image->GetNumColumns());
        EXPECT_EQ(each.bytes, GetBytes(*image)) << each.index;
    }
}

TEST(Slices, SlabsAreCutToTheVolume)
{
    AutoPtr<VolumeBase> const volume = MakeDigits();
    auto const project = [&](unsigned int index, eProjection projection, unsigned int thickness)
    { return GetBytes(*ExtractSlice(*volume, eSliceAxis::e_column, index, projection, thickness)); };
    // Columns 0 to 2 around 1, 0 and 1 around 0, 2 and 3 around 2.
    EXPECT_EQ((std::vector<unsigned int>{2, 12, 22, 102, 112, 122}), project(1, eProjection::e_maximum, 3));
    EXPECT_EQ((std::vector<unsigned int>{1, 11, 21, 101, 111, 121}), project(0, eProjection::e_maximum, 3));
    EXPECT_EQ((std::vector<unsigned int>{3, 13, 23, 103, 113, 123}), project(2, eProjection::e_maximum, 2));
    EXPECT_EQ((std::vector<unsigned int>{1, 11, 21, 101, 111, 121}), project(1, eProjection::e_mean, 3));
    // The mean of 0 to 3 is rounded up.
    EXPECT_EQ((std::vector<unsigned int>{2, 12, 22, 102, 112, 122}), project(3, eProjection::e_mean, 4000000000U));
    EXPECT_EQ((std::vector<unsigned int>{3, 13, 23, 103, 113, 123}), project(3, eProjection::e_slice, 9));
}

TEST(Slices, ThinOnesHaveTheMiddleOfEachStep)
{
    AutoPtr<VolumeBase> const volume = MakeDigits();
    auto const thin = [&](eSliceAxis axis, unsigned int step, eProjection projection)
    { return GetBytes(*ExtractSlice(*volume, axis, 1, projection, 3, step)); };
    EXPECT_EQ((std::vector<unsigned int>{111, 113}), thin(eSliceAxis::e_layer, 2, eProjection::e_slice));
    EXPECT_EQ((std::vector<unsigned int>{121, 123}), thin(eSliceAxis::e_row, 2, eProjection::e_maximum));
    EXPECT_EQ((std::vector<unsigned int>{111}), thin(eSliceAxis::e_column, 3, eProjection::e_slice));
    EXPECT_EQ((std::vector<unsigned int>{112}), thin(eSliceAxis::e_layer, 100, eProjection::e_slice));
    for (eProjection const projection : {eProjection::e_slice, eProjection::e_mean})
        EXPECT_EQ(nullptr, ExtractSlice(*volume, eSliceAxis::e_row, 1, projection, 3, 1, [](double) { return false; }));
}

TEST(Slices, ProjectEachComponentOfItsFormat)
{
    unsigned char const pairs[][2] = {{10, 200}, {20, 100}, {31, 0}};
    AutoPtr<VolumeBase> const a8l8 = MakeColumn(e_format_A8L8, pairs);
    EXPECT_EQ(31 + 200 * 256, ProjectAll<unsigned short>(*a8l8, eProjection::e_maximum));
    EXPECT_EQ(20 + 100 * 256, ProjectAll<unsigned short>(*a8l8, eProjection::e_mean));
    unsigned short const nibbles[] = {0x1F20, 0xE00A, 0x0030};
    AutoPtr<VolumeBase> const a4r4g4b4 = MakeColumn(e_format_A4R4G4B4, nibbles);
    EXPECT_EQ(0xEF3A, ProjectAll<unsigned short>(*a4r4g4b4, eProjection::e_maximum));
    EXPECT_EQ(0x5523, ProjectAll<unsigned short>(*a4r4g4b4, eProjection::e_mean));
    unsigned short const fives[] = {0x8000 | 31 << 10, 4 << 5, 9};
    AutoPtr<VolumeBase> const a1r5g5b5 = MakeColumn(e_format_A1R5G5B5, fives);
    EXPECT_EQ(0x8000 | 31 << 10 | 4 << 5 | 9, ProjectAll<unsigned short>(*a1r5g5b5, eProjection::e_maximum));
    EXPECT_EQ(10 << 10 | 1 << 5 | 3, ProjectAll<unsigned short>(*a1r5g5b5, eProjection::e_mean));
    unsigned int const words[] = {0xFF102030, 0x00302010};
    for (eSampleFormat const format : {e_format_A8R8G8B8, e_format_X8R8G8B8})
        EXPECT_EQ(0xFF302030, ProjectAll<unsigned int>(*MakeColumn(format, words), eProjection::e_maximum));
    float const nan = std::numeric_limits<float>::quiet_NaN();
    float const floats[] = {nan, -2, 5, nan};
    AutoPtr<VolumeBase> const holes = MakeColumn(e_format_FP32NormL, floats);
    EXPECT_EQ(5, ProjectAll<float>(*holes, eProjection::e_maximum));
    EXPECT_TRUE(std::isnan(ProjectAll<float>(*holes, eProjection::e_mean)));
    float const numbers[] = {-2, 5, 9};
    EXPECT_EQ(4, ProjectAll<float>(*MakeColumn(e_format_FP32NormA, numbers), eProjection::e_mean));
}

TEST(Slices, BeyondTheEndIsTheLastOne)
{
    tests::ScriptedDialogs dialogs;
    AutoPtr<VolumeBase> const volume = MakeDigits();
    AutoPtr<ImageBase> const image = ExtractSlice(*volume, eSliceAxis::e_column, 4, eProjection::e_slice, 1);
    EXPECT_EQ(3, *image->SampleB(0, 0));
    EXPECT_EQ(1, dialogs.TakeRequests().size()) << "the assertion";
}

/// A picture of a plane through the volume of digits, as grey bytes; 255 stands for the background.
class Planes : public testing::Test
{
protected:
    std::vector<unsigned int> Compose(unsigned int height, unsigned int width, Plane const &plane) const
    {
        AutoPtr<ImageBase> const picture(ManufactureImage(e_format_A8R8G8B8, height, width));
        ComposePlane(*picture, *volume_, plane, tones_, 0xFFFFFFFF);
        std::vector<unsigned int> bytes;
        for (unsigned int i = 0; i < picture->GetNumSamples(); ++i)
            bytes.push_back(*picture->SampleB(i));
        return bytes;
    }

    AutoPtr<VolumeBase> volume_ = MakeDigits();
    ToneMap tones_{e_format_L8, DisplaySettings()};
};

TEST_F(Planes, AlongTheAxesShowTheSamplesThemselves)
{
    EXPECT_EQ((std::vector<unsigned int>{255, 100, 101, 102, 103, 255, 255, 110, 111, 112, 113, 255}),
              Compose(2, 6, {{2, 1, 1.5F}, {1, 0, 0}, {0, 1, 0}}));
    // Rows to the right, layers downwards, beyond both ends.
    EXPECT_EQ((std::vector<unsigned int>{255, 255, 255, 2, 12, 22, 102, 112, 122, 255, 255, 255}),
              Compose(4, 3, {{2.5F, 1.5F, 1}, {0, 1, 0}, {0, 0, 1}}));
    // Backwards.
    EXPECT_EQ((std::vector<unsigned int>{23, 22, 21, 20}), Compose(1, 4, {{2, 2.5F, 0.5F}, {-1, 0, 0}, {0, 1, 0}}));
}

TEST_F(Planes, BetweenSamplesAreLinear)
{
    // In the middle of the eight samples around a corner; and a quarter of the way from one to the next.
    EXPECT_EQ((std::vector<unsigned int>{56}), Compose(1, 1, {{1, 1, 1}, {1, 0, 0}, {0, 1, 0}}));
    EXPECT_EQ((std::vector<unsigned int>{25}), Compose(1, 1, {{0.5F, 0.5F, 0.75F}, {1, 0, 0}, {0, 1, 0}}));
    // Diagonally through rows and layers: each step goes half a row, and half a layer.
    EXPECT_EQ((std::vector<unsigned int>{1, 56, 111, 255}),
              Compose(1, 4, {{1.5F, 1.25F, 1.25F}, {0, 0.5F, 0.5F}, {1, 0, 0}}));
    // Half a sample at the edge repeats it.
    EXPECT_EQ((std::vector<unsigned int>{0, 3}), Compose(1, 2, {{2, 0.1F, 0.1F}, {3.9F, 0, 0}, {0, 1, 0}}));
}

TEST_F(Planes, WithoutNumbersAreBackground)
{
    float const infinity = std::numeric_limits<float>::infinity();
    for (float const bad : {infinity, -infinity, std::numeric_limits<float>::quiet_NaN()})
    {
        EXPECT_EQ((std::vector<unsigned int>{255, 255}), Compose(1, 2, {{bad, 1, 1}, {1, 0, 0}, {0, 1, 0}}));
        EXPECT_EQ((std::vector<unsigned int>{255, 255}), Compose(1, 2, {{1, 1, 1}, {1, bad, 0}, {0, 1, 0}}));
    }
}

} // namespace
} // namespace viewer
