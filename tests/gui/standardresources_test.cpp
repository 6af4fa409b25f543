#include <quillmarsh/gui/gui_standardresources.h>

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/dataobjects/datacodecmanager.h>

#include "tests/support/failures.h"
#include "tests/support/gui_screen.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace quillmarsh
{
namespace
{

using namespace gui::std_tile_textures;
using gui::FontTexture;
using tests::GuiDesk;
using tests::GuiScreen;

class GuiStandardResources : public testing::Test
{
protected:
    tests::ScratchDirectory folder_;
    std::ostringstream log_;
    GuiDesk desk_;
    gui::Manager &manager_ = desk_.manager;
    GuiScreen screen_;
};

TEST_F(GuiStandardResources, LoadSet0WithDarkTransparent)
{
    // Dark, but for two rows at the top: one as bright as the threshold, and a brighter one above it.
    struct Picture : Image<Sample32>
    {
        Picture() : SignalBase(4), Image(e_format_A8R8G8B8, 128, 128)
        {
            for (unsigned int row = 0; row < 128; ++row)
            {
                unsigned char const gray = row == 0 ? 0x61 : row == 1 ? 0x60 : 0x20;
                for (unsigned int column = 0; column < 128; ++column)
                {
                    std::fill_n(SampleB(row, column), 3, gray);
                    SampleB(row, column)[3] = 255;
                }
            }
        }
    } const picture;
    string const file = folder_ / DefaultFileName_Set0;
    ASSERT_TRUE(SaveImage(picture, file, "TIFF"));
    EXPECT_TRUE(RegisterTileTexture_Set0(log_, false, file));
    EXPECT_EQ(log_.str(), "");

    gui::TileTexture *const texture = manager_.GetTileTexture("std/set0");
    ASSERT_NE(texture, nullptr);
    EXPECT_EQ(texture->GetHeight() * texture->GetWidth(), 128u * 128);
    EXPECT_EQ(texture->GetTilePixelSizeU(), 32);
    EXPECT_EQ(texture->GetTilePixelSizeV(), 32);
    bool originBottom = false;
    ImageBase *const source = texture->GenerateSourceImage(originBottom);
    ASSERT_NE(source, nullptr);
    EXPECT_TRUE(originBottom);
    auto const texel = [&](unsigned int row)
    {
        unsigned char const *const bytes = source->SampleB(row, 64);
        return std::vector<int>(bytes, bytes + 4);
    };
    EXPECT_EQ(texel(127), (std::vector<int>{255, 255, 255, 0x61}));
    EXPECT_EQ(texel(126), (std::vector<int>{0, 0, 0, 0x60}));
    EXPECT_EQ(texel(0), (std::vector<int>{0, 0, 0, 0x20}));
    texture->ReleaseSourceImage(source);

    gui::std_cursors::RegisterCursors(log_);
    manager_.SyncObjectStates();
    EXPECT_EQ(manager_.GetNumCursors(), 12u);
    EXPECT_EQ(manager_.GetCursor("std/client")->GetHotSpot(), vec2(0, 0));
    EXPECT_EQ(manager_.GetCursor("std/resizeSW")->GetHotSpot(), vec2(0.5f, 0.5f));
    auto const *const stop = dynamic_cast<gui::ImageCursor *>(manager_.GetCursor("std/stop"));
    ASSERT_NE(stop, nullptr);
    EXPECT_EQ(stop->GetTileParams().tileRow, 2u);
    EXPECT_EQ(stop->GetTileParams().tileColumn, 3u);
}

TEST_F(GuiStandardResources, FindSet0WithoutADarkFringe)
{
    string const file = file_system::FindDataFile(DefaultFileName_Set0);
    ASSERT_NE(file, "");
    ASSERT_TRUE(RegisterTileTexture_Set0(log_, false, file)) << log_.str();
    gui::TileTexture *const texture = manager_.GetTileTexture("std/set0");
    bool originBottom = false;
    ImageBase *const source = texture->GenerateSourceImage(originBottom);
    ASSERT_NE(source, nullptr);
    std::array<unsigned int, 16> numVisible = {};
    for (unsigned int row = 0; row < 128; ++row)
    {
        for (unsigned int column = 0; column < 128; ++column)
        {
            unsigned char const *const texel = source->SampleB(127 - row, column);
            if (texel[3] == 0)
                continue;
            ++numVisible[row / 32 * 4 + column / 32];
            EXPECT_EQ(texel[0] & texel[1] & texel[2], 255) << row << ' ' << column;
        }
    }
    texture->ReleaseSourceImage(source);
    for (unsigned int const number : numVisible)
        EXPECT_GT(number, 60u);
    EXPECT_EQ(file_system::FindDataFile("no such file"), "");
    EXPECT_EQ(file_system::FindDataFile(""), "");
}

TEST_F(GuiStandardResources, TellOfAMissingSet0)
{
    string const file = folder_ / "none.tif";
    EXPECT_FALSE(RegisterTileTexture_Set0(log_, false, file));
    EXPECT_EQ(log_.str(), "Failed to load tile-texure: std/set0 from file: " + file + "\n");
    EXPECT_EQ(manager_.GetTileTexture(TileTextureName_Set0), nullptr);
    gui::std_cursors::RegisterCursors(log_);
    gui::Cursor const &first = *manager_.GetCursor(0u);
    EXPECT_EQ(tests::MessageOf<GUIException>([this] { manager_.SyncObjectStates(); }),
              "Missing tile-texture for: " + FormatObjectName(GetTypeName(typeid(first)), &first));
}

TEST_F(GuiStandardResources, NameTilesAndTurnThem)
{
    gui::TileParams const falling = MakeTileParams(e_tile_resize_falling);
    EXPECT_EQ(falling.tileTextureName, "std/set0");
    EXPECT_EQ(falling.tileRow, 1u);
    EXPECT_EQ(falling.tileColumn, 3u);
    EXPECT_EQ(falling.texTransform, gui::RectangleCT::e_tex_rotate_a);
    gui::TileParams const unknown = MakeTileParams(static_cast<eTile>(17));
    EXPECT_EQ(unknown.tileRow + unknown.tileColumn + unknown.texTransform, 0u);
}

TEST_F(GuiStandardResources, MeasureFonts)
{
    gui::std_fonts::RegisterFont_Default(log_, true, 512, false, "default");
    gui::std_fonts::RegisterFont_Console(log_, false, 256, false, "console");
    struct Row
    {
        char const *name, *family;
        bool asciiOnly;
        unsigned int width;
        float scale, spacing;
    };
    for (Row const &row :
         {Row{"default", "Tahoma", true, 512, 1, 0.05f}, Row{"console", "Lucida Console", false, 256, 0.9f, 0}})
    {
        auto const *const font = dynamic_cast<FontTexture *>(manager_.GetFont(row.name));
        ASSERT_NE(font, nullptr);
        FontTexture::CreationParams params, wanted;
        font->GetCreationParameters(params);
        wanted.Family = row.family;
        wanted.AsciiSubsetOnly = row.asciiOnly;
        wanted.TextureWidth = row.width;
        wanted.TextureMultiLevel = false;
        wanted.IGScaleEmHeight = row.scale;
        wanted.DefaultSpacing = row.spacing;
        wanted.ACWidthEmptyGlyph = 0.4f;
        // What the system has in place of the family is taken.
        FontTexture::CreateFontTexture(wanted)->GetCreationParameters(wanted);
        EXPECT_EQ(tests::DumpText(params, 1), tests::DumpText(wanted, 1));
        // It is measured: an empty box has one texel at each side.
        EXPECT_FLOAT_EQ(font->GetGlyphWidth(' '), 0.4f + 2 * 16 / static_cast<float>(row.width));
        EXPECT_LT(font->GetGlyphWidthMono(), 1);
    }
}

} // namespace
} // namespace quillmarsh
