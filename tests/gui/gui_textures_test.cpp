#include <quillmarsh/gui/gui_textures.h>

#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/dataobjects/sampletransfer.h>

#include "tests/support/failures.h"
#include "tests/support/recording_renderer.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace quillmarsh
{
namespace
{

using tests::Bytes;
using tests::ScriptedDialogs;
using Floats = std::vector<float>;
using video_renderer_objects::Texture2D;

struct Picture : Image<Sample32>
{
    Picture(unsigned int numRows, unsigned int numColumns)
        : SignalBase(4),
          Image(e_format_A8R8G8B8, numRows, numColumns)
    {
        tests::CountUp(*this, 1);
    }
};

class GuiTextures : public testing::Test
{
protected:
    GuiTextures() { RegisterDefaultDataCodecs(); }

    /// Returns the samples of level 0 that are in the renderer now.
    Bytes GetLoaded() const
    {
        auto const &loads = gui_.texture->loads;
        for (auto load = loads.rbegin(); load != loads.rend(); ++load)
        {
            if (load->arguments[0] == 0)
                return load->bytes;
        }
        return {};
    }

    SignalOperationsManager operations_;
    DataCodecManager codecs_;
    tests::RecordingRenderer renderer_;
    tests::RecordingGUIRenderer &gui_ = renderer_.GetGUI();
};

TEST_F(GuiTextures, RefuseOtherSizesAndFormats)
{
    constexpr char const *badSize = "Texture dimensions are not power-of-2.";
    constexpr char const *badFormat = "Texture sample-format not supported by gui.";
    std::tuple<eSampleFormat, unsigned int, unsigned int, char const *> const parameters[] = {
        {e_format_A8R8G8B8, 1, 0x80000000u, ""}, {e_format_X8R8G8B8, 64, 4, ""}, {e_format_A8R8G8B8, 48, 64, badSize},
        {e_format_A8R8G8B8, 64, 0, badSize},     {e_format_L8, 63, 63, badSize}, {e_format_L8, 64, 64, badFormat},
        {e_format_FP32NormA, 64, 64, badFormat},
    };
    for (auto const &[format, height, width, text] : parameters)
    {
        auto const make = [f = format, h = height, w = width] { gui::Texture(f, true, h, w); };
        auto const makeTiles = [f = format, h = height, w = width] { gui::TileTexture(f, true, h, w, 2, 2); };
        EXPECT_EQ(tests::MessageOf<GUIException>(make), text);
        EXPECT_EQ(tests::MessageOf<GUIException>(makeTiles), text);
    }
    EXPECT_EQ(tests::MessageOf<GUIException>([] { gui::Texture(Image<Sample8>(e_format_L8, 4, 4), false); }),
              badFormat);
}

TEST_F(GuiTextures, CreateTheirPartInTheRenderer)
{
    gui::Texture texture(e_format_A8R8G8B8, true, 256, 512);
    texture.UpdateVideoRendererResource();
    EXPECT_EQ(texture.GetVideoRendererResource(), nullptr);
    texture.CreateVideoRendererResource(renderer_);
    EXPECT_EQ(gui_.requests.back(), (tests::RecordingGUIRenderer::TextureRequest{0x04000002, true, 256, 512, true, 0}));
    ASSERT_EQ(texture.GetVideoRendererResource(), gui_.texture);
    EXPECT_EQ(gui_.texture->GetWidth(), 512u);
    EXPECT_EQ(gui_.texture->loads.size(), 10u);
    EXPECT_EQ(GetLoaded(), Bytes(std::size_t{512} * 256 * 4, 255));
    EXPECT_EQ(texture.GetSourceFailure(), "");

    // The old part is gone before there is a new one, also when the renderer refuses that.
    texture.CreateVideoRendererResource(renderer_);
    EXPECT_EQ(gui_.requests.back().numLiving, 0);
    EXPECT_EQ(gui_.GetNumTextures(), 1);
    gui_.refusesTextures = true;
    EXPECT_EQ(tests::MessageOf<GUIException>([&] { texture.CreateVideoRendererResource(renderer_); },
                                             "source/gui/gui_textures.cpp"),
              "Failed to create gui-texture resource.");
    EXPECT_EQ(gui_.GetNumTextures(), 0);
    EXPECT_EQ(texture.GetVideoRendererResource(), nullptr);
    gui_.refusesTextures = false;

    gui::Texture flat(e_format_X8R8G8B8, false, 4, 8);
    flat.CreateVideoRendererResource(renderer_);
    EXPECT_EQ(gui_.requests.back(), (tests::RecordingGUIRenderer::TextureRequest{0x04000001, false, 4, 8, true, 0}));
    flat.ReleaseVideoRendererResource();
    EXPECT_EQ(gui_.GetNumTextures(), 0);
}

TEST_F(GuiTextures, LoadTheirSourceImage)
{
    Picture const image(2, 4);
    gui::Texture texture(image, false);
    texture.CreateVideoRendererResource(renderer_);
    EXPECT_EQ(GetLoaded(), tests::BytesOf(image));
    bool originBottom = true;
    EXPECT_EQ(tests::BytesOf(*texture.GenerateSourceImage(originBottom)), tests::BytesOf(image));
    EXPECT_FALSE(originBottom);

    // A source without alpha is opaque. The program's own order of rows is not touched.
    Image<Sample8> grey(e_format_L8, 2, 4);
    tests::CountUp(grey, 10);
    Texture2D::SetSourceRowOrderBottomToTop(false);
    EXPECT_TRUE(texture.SetSourceImage(&grey, true));
    EXPECT_EQ(GetLoaded(), tests::BytesOf(image));
    texture.UpdateVideoRendererResource();
    Bytes expected;
    for (unsigned char value = 10; value < 18; ++value)
        expected.insert(expected.end(), {value, value, value, 255});
    EXPECT_EQ(GetLoaded(), expected);
    EXPECT_EQ(gui_.texture->loads.back().arguments.back(), 1u);
    EXPECT_FALSE(Texture2D::IsSourceRowOrderBottomToTop());
    Texture2D::SetSourceRowOrderBottomToTop(true);
    EXPECT_TRUE(texture.SetSourceImage(&image, false));
    texture.UpdateVideoRendererResource();
    EXPECT_EQ(gui_.texture->loads.back().arguments.back(), 0u);
    EXPECT_TRUE(Texture2D::IsSourceRowOrderBottomToTop());
    Texture2D::SetSourceRowOrderBottomToTop(false);

    // What cannot be taken leaves no source.
    ScriptedDialogs dialogs(platform::eDialogAnswer::e_retry);
    Image<Sample32> const unknown(e_format_FP32NormL, 2, 4);
    Picture const tooLarge(4, 4);
    for (ImageBase const *const bad :
         {static_cast<ImageBase const *>(nullptr), static_cast<ImageBase const *>(&unknown),
          static_cast<ImageBase const *>(&tooLarge)})
    {
        EXPECT_TRUE(texture.SetSourceImage(&image, false));
        EXPECT_FALSE(texture.SetSourceImage(bad, false));
        EXPECT_EQ(texture.GenerateSourceImage(originBottom), nullptr);
    }
    EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>{"GUI-texture / source-image dimension mismatch."});
    texture.UpdateVideoRendererResource();
    EXPECT_EQ(GetLoaded(), Bytes(32, 255));
}

TEST_F(GuiTextures, LoadTheirSourceFile)
{
    tests::ScratchDirectory const scratch;
    Picture const image(2, 4);
    string const file = scratch / "image.qmdp";
    ASSERT_TRUE(SaveImage(image, file, "QMDP"));
    gui::Texture texture(e_format_A8R8G8B8, false, 2, 4);
    texture.SetSourceImage(file, false);
    texture.CreateVideoRendererResource(renderer_);
    EXPECT_EQ(GetLoaded(), tests::BytesOf(image));
    EXPECT_EQ(gui_.texture->loads.back().arguments.back(), 0u);

    texture.SetSourceImage(file, true);
    texture.UpdateVideoRendererResource();
    Bytes flipped = tests::BytesOf(image);
    std::rotate(flipped.begin(), flipped.begin() + 16, flipped.end());
    EXPECT_EQ(GetLoaded(), flipped);
    EXPECT_EQ(gui_.texture->loads.back().arguments.back(), 1u);
    EXPECT_EQ(texture.GetSourceFailure(), "");

    string const missing = scratch / "missing.png";
    texture.SetSourceImage(missing, true);
    texture.UpdateVideoRendererResource();
    EXPECT_EQ(GetLoaded(), Bytes(32, 255));
    EXPECT_EQ(texture.GetSourceFailure().find(missing + ": "), 0u);
    EXPECT_GT(texture.GetSourceFailure().length(), missing.length() + 2);

    ScriptedDialogs dialogs;
    ASSERT_TRUE(SaveImage(Picture(4, 4), file + "2", "QMDP"));
    texture.SetSourceImage(file + "2", false);
    texture.UpdateVideoRendererResource();
    EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>{"Level-0 dimension mismatch."});
    EXPECT_EQ(GetLoaded(), Bytes(32, 255));
    EXPECT_EQ(texture.GetSourceFailure(),
              file +
                  "2: 4 rows, 4 columns in A8R8G8B8 cannot be loaded into a texture of 2 rows, 4 columns in A8R8G8B8");

    // An image takes the place of the file.
    ASSERT_TRUE(texture.SetSourceImage(&image, false));
    texture.UpdateVideoRendererResource();
    EXPECT_EQ(GetLoaded(), tests::BytesOf(image));
    EXPECT_EQ(texture.GetSourceFailure(), "");
    texture.SetSourceImage(nullptr, false);
    bool originBottom = false;
    EXPECT_EQ(texture.GenerateSourceImage(originBottom), nullptr);
}

TEST_F(GuiTextures, HaveTiles)
{
    gui::TileTexture const texture(e_format_A8R8G8B8, false, 64, 256, 2, 8);
    EXPECT_EQ((Floats{texture.GetTilePixelSizeU(), texture.GetTilePixelSizeV()}), (Floats{32, 32}));
    EXPECT_EQ((Floats{texture.GetTileCoordU(2.5f), texture.GetTileCoordV(1)}), (Floats{0.3125f, 0.5f}));
    gui::RectangleCT rectangle({1, 2, 3, 4}, color4b(9, 9, 9, 9));
    texture.GetTileCoords(1, 3, rectangle);
    EXPECT_EQ((Floats{rectangle.uMin, rectangle.uMax, rectangle.vMin, rectangle.vMax, rectangle.width}),
              (Floats{0.375f, 0.5f, 0.5f, 1, 3}));

    gui::TileTexture const whole(Picture(4, 2), false, 0, 0);
    EXPECT_EQ(std::pair(whole.GetNumTileRows(), whole.GetNumTileColumns()), std::pair(1u, 1u));
    EXPECT_EQ((Floats{whole.GetTileSizeV(), whole.GetTilePixelSizeU()}), (Floats{1, 2}));
}

} // namespace
} // namespace quillmarsh
