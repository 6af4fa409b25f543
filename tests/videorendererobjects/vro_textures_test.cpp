#include <quillmarsh/videorendererobjects/vro_textures.h>

#include <quillmarsh/dataobjects/sampletransfer.h>
#include <quillmarsh/dataobjects/signaloperations.h>

#include "tests/support/recording_textures.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <array>

namespace quillmarsh::video_renderer_objects
{
namespace
{

using tests::Bytes;
using tests::RecordingTexture1D;
using tests::RecordingTexture2D;
using tests::RecordingTexture3D;
using tests::ScriptedDialogs;
using Arguments = std::vector<unsigned int>;
using Texts = std::vector<string>;

class Textures : public testing::Test
{
    SignalOperationsManager manager_;
};

TEST_F(Textures, HaveLevelsDownToOneSample)
{
    RecordingTexture2D wide(e_format_L8, true, 256, 64);
    EXPECT_EQ(wide.GetResourceType(), 1);
    EXPECT_EQ(wide.GetNumLevels(), 9u);
    EXPECT_EQ(std::pair(wide.GetWidth(6), wide.GetHeight(6)), std::pair(4u, 1u));
    EXPECT_EQ(std::pair(wide.GetWidth(8), wide.GetHeight(40)), std::pair(1u, 1u));
    EXPECT_EQ(RecordingTexture1D(e_format_L8, true, 0).GetNumLevels(), 1u);
    EXPECT_EQ(RecordingTexture1D(e_format_L8, true, 7).GetNumLevels(), 3u);
    EXPECT_EQ(RecordingTexture1D(e_format_L8, true, ~0u).GetNumLevels(), 32u);

    RecordingTexture3D const deep(e_format_L8, true, 2, 4, 16);
    EXPECT_EQ(deep.GetNumLevels(), 5u);
    EXPECT_EQ((Arguments{deep.GetWidth(1), deep.GetHeight(1), deep.GetDepth(1)}), (Arguments{1, 2, 8}));

    EXPECT_TRUE(TextureBase::CheckDimension(48, false) && TextureBase::CheckDimension(64, true));
    for (auto const &[size, isPowerOf2] : {std::pair(48u, true), {0u, false}, {0u, true}})
        EXPECT_FALSE(TextureBase::CheckDimension(size, isPowerOf2)) << size;
}

TEST_F(Textures, TellTheRendererOnlyAboutChanges)
{
    RecordingTexture2D texture(e_format_L8, false, 8, 8);
    EXPECT_EQ(texture.GetPriority(), 0x7fffffffu);
    texture.SetPriority(0x7fffffff);
    EXPECT_EQ(texture.numPriorityChanges, 0u);
    texture.SetPriority(3);
    EXPECT_EQ(texture.GetPriority(), 3u);
    EXPECT_EQ(texture.numPriorityChanges, 1u);

    EXPECT_TRUE(texture.SetBaseLevel(0));
    EXPECT_EQ(texture.numBaseLevelChanges, 0u);
    texture.acceptsBaseLevel = false;
    EXPECT_FALSE(texture.SetBaseLevel(3));
    EXPECT_EQ(texture.GetBaseLevel(), 1u);
    EXPECT_EQ(texture.numBaseLevelChanges, 1u);
    EXPECT_TRUE(texture.SetBaseLevel(1));
}

TEST_F(Textures, LoadBlocksWithTheirPlaces)
{
    RecordingTexture3D volume(e_format_L8, true, 16, 8, 4);
    Volume<Sample8> const wholeVolume(e_format_L8, 2, 4, 8);
    ASSERT_TRUE(volume.LoadLevel(1, wholeVolume));
    EXPECT_EQ(volume.loads[0].arguments, (Arguments{1, 2, 4, 8, 0, 0, 0, 0, 0, 0, 0, 0}));
    // A block that ends at the last sample of both sides.
    Texture3D::SetSourceRowOrderBottomToTop(true);
    ASSERT_TRUE(volume.LoadLevel(0, wholeVolume, 1, 2, 3, 3, 6, 13, 1, 2, 5));
    Texture3D::SetSourceRowOrderBottomToTop(false);
    EXPECT_EQ(volume.loads[1].arguments, (Arguments{0, 1, 2, 3, 3, 6, 13, 1, 2, 5, 1, 0}));
    Texture3D::SetSourceLayerOrderBackToFront(true);
    ASSERT_TRUE(volume.LoadLevel(0, wholeVolume, 0, 2, 0));
    EXPECT_TRUE(Texture3D::IsSourceLayerOrderBackToFront());
    Texture3D::SetSourceLayerOrderBackToFront(false);
    EXPECT_EQ(volume.loads[2].arguments, (Arguments{0, 2, 2, 8, 0, 0, 0, 0, 0, 0, 0, 1}));

    RecordingTexture2D image(e_format_L8, true, 16, 8);
    Texture2D::SetSourceRowOrderBottomToTop(true);
    ASSERT_TRUE(image.LoadLevel(1, Image<Sample8>(e_format_L8, 9, 9), 2, 3, 1, 4, 7, 6));
    EXPECT_FALSE(Texture3D::IsSourceRowOrderBottomToTop());
    Texture2D::SetSourceRowOrderBottomToTop(false);
    EXPECT_EQ(image.loads[0].arguments, (Arguments{1, 2, 3, 1, 4, 7, 6, 1}));

    RecordingTexture1D signal(e_format_L8, true, 16);
    ASSERT_TRUE(signal.LoadLevel(2, Signal<Sample8>(e_format_L8, 5), 2, 2, 3));
    EXPECT_EQ(signal.loads[0].arguments, (Arguments{2, 2, 2, 3}));
    signal.numGoodLoads = 1;
    EXPECT_FALSE(signal.LoadLevel(2, Signal<Sample8>(e_format_L8, 1)));
}

TEST_F(Textures, RefuseBlocksThatAreOutside)
{
    constexpr unsigned int most = ~0u;
    struct BrokenLoad
    {
        char const *text;
        unsigned int level;
        std::array<unsigned int, 9> block;
    };
    // Level 1 has 2 layers, 4 rows, 8 columns; the source has 2 more of each.
    constexpr BrokenLoad broken[] = {
        {"Level-index out of range.", 5, {1, 1, 1}},
        {"Destination-offset-z / data-depth out of range.", 1, {0, 1, 1}},
        {"Destination-offset-z / data-depth out of range.", 1, {1, 5, 1, 2}},
        {"Destination-offset-z / data-depth out of range.", 1, {2, 1, 1, most}},
        {"Destination-offset-z / data-depth out of range.", 1, {most, 1, 1, 2}},
        {"Destination-offset-y / data-height out of range.", 1, {1, 5, 9}},
        {"Destination-offset-y / data-height out of range.", 1, {2, 4, 8, 0, 1, 0, 3}},
        {"Destination-offset-y / data-height out of range.", 1, {1, 4, 1, 0, most - 2}},
        {"Destination-offset-x / data-width out of range.", 1, {1, 1, 9}},
        {"Destination-offset-x / data-width out of range.", 1, {1, 1, 8, 0, 0, most - 6, 4}},
        {"Source-offset-z / data-depth out of range.", 1, {2, 4, 8, 0, 0, 0, 3, 3}},
        {"Source-offset-z / data-depth out of range.", 1, {2, 1, 1, 0, 0, 0, most}},
        {"Source-offset-y / data-height out of range.", 1, {1, 3, 1, 0, 0, 0, 0, 4, 10}},
        {"Source-offset-y / data-height out of range.", 1, {1, 3, 1, 0, 0, 0, 0, most - 1}},
        {"Source-offset-x / data-width out of range.", 1, {1, 1, 8, 0, 0, 0, 0, 0, 3}},
        {"Source-offset-x / data-width out of range.", 1, {1, 1, 8, 0, 0, 0, 0, 0, most}},
    };
    ScriptedDialogs dialogs(platform::eDialogAnswer::e_retry);
    RecordingTexture3D volume(e_format_L8, true, 16, 8, 4);
    RecordingTexture2D image(e_format_L8, true, 16, 8);
    RecordingTexture1D signal(e_format_L8, true, 16);
    Volume<Sample8> const volumeSource(e_format_L8, 4, 6, 10);
    Image<Sample8> const imageSource(e_format_L8, 6, 10);
    Signal<Sample8> const signalSource(e_format_L8, 10);
    for (auto const &[text, level, b] : broken)
    {
        EXPECT_FALSE(volume.LoadLevel(level, volumeSource, b[0], b[1], b[2], b[3], b[4], b[5], b[6], b[7], b[8]));
        EXPECT_EQ(dialogs.TakeTexts(), Texts{text});
        // The other classes have the same checks on fewer axes.
        if (string(text).find("-z ") != string::npos)
            continue;
        EXPECT_FALSE(image.LoadLevel(level, imageSource, b[1], b[2], b[4], b[5], b[7], b[8]));
        EXPECT_EQ(dialogs.TakeTexts(), Texts{text});
        if (string(text).find("-y ") != string::npos)
            continue;
        EXPECT_FALSE(signal.LoadLevel(level, signalSource, b[2], b[5], b[8]));
        EXPECT_EQ(dialogs.TakeTexts(), Texts{text});
    }
    EXPECT_TRUE(volume.loads.empty() && image.loads.empty() && signal.loads.empty());
}

TEST_F(Textures, RefuseSourcesThatDoNotFit)
{
    ScriptedDialogs dialogs(platform::eDialogAnswer::e_retry);
    RecordingTexture2D texture(e_format_L8, true, 4, 2);
    Image<Sample8> source(e_format_A8, 2, 4);
    EXPECT_FALSE(texture.LoadLevel(0, source));
    EXPECT_EQ(dialogs.TakeTexts(), Texts{"Sample-format mismatch."});
    source.SetSampleFormat(e_format_L8);
    source.ReleaseSampleStorage();
    EXPECT_FALSE(texture.LoadLevel(0, source, 1, 1));
    EXPECT_EQ(dialogs.TakeTexts(), Texts{"Source empty."});
    // Samples that belong to no row.
    source.SignalBase::ReserveSampleStorage(8);
    EXPECT_FALSE(texture.LoadLevel(0, source, 0, 1));
    EXPECT_EQ(dialogs.TakeTexts(), Texts{"Data-range empty."});
    source.SignalBase::ReleaseSampleStorage();

    auto const refuses = [&](unsigned int numRows, eSampleFormat format, string const &text)
    {
        ImageMipmapChain chain(format);
        EXPECT_EQ(numRows != 0 && chain.Build(Image<Sample8>(format, numRows, 4), true), numRows != 0);
        EXPECT_FALSE(texture.LoadLevels(chain));
        EXPECT_EQ(dialogs.TakeTexts(), Texts{text});
    };
    refuses(2, e_format_A8, "Sample-format mismatch.");
    refuses(0, e_format_L8, "Level-count mismatch.");
    refuses(8, e_format_L8, "Level-count mismatch.");
    refuses(4, e_format_L8, "Level-0 dimension mismatch.");
    EXPECT_FALSE(texture.LoadLevels(Image<Sample8>(e_format_L8, 4, 2)));
    EXPECT_EQ(dialogs.TakeTexts(), Texts{"Level-0 dimension mismatch."});

    // These formats have no transfer.
    EXPECT_FALSE(texture.LoadLevels(Image<Sample16>(e_format_A4R4G4B4, 2, 4)));
    RecordingTexture1D flat(e_format_A8R8G8B8, false, 4);
    EXPECT_FALSE(flat.LoadLevels(Signal<Sample32>(e_format_FP32NormL, 4)));
    // No container has samples of 5 bytes.
    RecordingTexture2D odd(static_cast<eSampleFormat>(0x05000000), false, 4, 2);
    EXPECT_FALSE(odd.LoadLevels(7));
    EXPECT_TRUE(texture.loads.empty() && flat.loads.empty() && odd.loads.empty());
}

TEST_F(Textures, LoadAllLevels)
{
    Image<Sample8> source(e_format_L8, 4, 8);
    tests::CountUp(source, 100);
    ImageMipmapChain chain(e_format_X8R8G8B8);
    ASSERT_TRUE(chain.Build(source, true));
    RecordingTexture2D fromChain(e_format_X8R8G8B8, true, 8, 4);
    RecordingTexture2D fromImage(e_format_X8R8G8B8, true, 8, 4);
    ASSERT_TRUE(fromChain.LoadLevels(chain));
    ASSERT_TRUE(fromImage.LoadLevels(source));
    Arguments const expected[] = {{0, 4, 8}, {1, 2, 4}, {2, 1, 2}, {3, 1, 1}};
    ASSERT_EQ(fromChain.loads.size(), std::size(expected));
    for (unsigned int level = 0; level < std::size(expected); ++level)
    {
        Arguments arguments = expected[level];
        arguments.resize(8);
        EXPECT_EQ(fromChain.loads[level].arguments, arguments);
        EXPECT_EQ(fromImage.loads[level].arguments, arguments);
        EXPECT_EQ(fromImage.loads[level].format, e_format_X8R8G8B8);
        EXPECT_EQ(fromImage.loads[level].bytes, tests::BytesOf(chain.GetLevel(level)));
    }
    RecordingTexture2D failing(e_format_X8R8G8B8, true, 8, 4);
    failing.numGoodLoads = 2;
    EXPECT_FALSE(failing.LoadLevels(chain));
    EXPECT_EQ(failing.loads.size(), 2u);
}

TEST_F(Textures, ConvertAndFillASingleLevel)
{
    Volume<Sample8> source(e_format_L8, 1, 3, 2);
    tests::CountUp(source, 1);
    RecordingTexture3D converted(e_format_A8R8G8B8, false, 2, 3, 1);
    ASSERT_TRUE(converted.LoadLevels(source));
    Bytes expected;
    for (unsigned char value = 1; value <= 6; ++value)
        expected.insert(expected.end(), {value, value, value, 0});
    ASSERT_EQ(converted.loads.size(), 1u);
    EXPECT_EQ(converted.loads[0].arguments, (Arguments{0, 1, 3, 2, 0, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(converted.loads[0].bytes, expected);

    RecordingTexture3D same(e_format_L8, false, 2, 3, 1);
    ASSERT_TRUE(same.LoadLevels(source));
    EXPECT_EQ(same.loads[0].bytes, (Bytes{1, 2, 3, 4, 5, 6}));

    RecordingTexture1D filled(e_format_A8R8G8B8, true, 4);
    ASSERT_TRUE(filled.LoadLevels(200));
    ASSERT_EQ(filled.loads.size(), 3u);
    for (auto const &load : filled.loads)
        EXPECT_EQ(load.bytes, Bytes(std::size_t{4} << 2 >> load.arguments[0], 200));
}

} // namespace
} // namespace quillmarsh::video_renderer_objects
