#include "standard_look/look.h"
#include "standard_look/shaders.h"

#include "tests/support/gui_screen.h"

#include <quillmarsh/widgets/textencoding.h>

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/gui/gui_standardresources.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace standard_look
{
namespace
{

using namespace quillmarsh;

/// Relative luminance of a colour, as the accessibility guidelines for the web define it.
double GetLuminance(color4b color)
{
    auto const linear = [](unsigned char channel)
    {
        double const value = channel / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.r) + 0.7152 * linear(color.g) + 0.0722 * linear(color.b);
}

double GetContrast(color4b a, color4b b)
{
    double const first = GetLuminance(a), second = GetLuminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

TEST(StandardLookThemes, HaveTextsThatCanBeRead)
{
    EXPECT_NEAR(GetContrast(color4b(0, 0, 0, 255), color4b(255, 255, 255, 255)), 21, 0.01);
    EXPECT_NEAR(GetContrast(color4b(0x77, 0x77, 0x77, 255), color4b(255, 255, 255, 255)), 4.48, 0.01);
    for (Theme const &theme : GetThemes())
    {
        for (unsigned int i = 0; i < s_numInks; ++i)
        {
            Ink const &ink = theme.inks[i];
            EXPECT_EQ(ink.surface.a, 255) << theme.name << ' ' << i;
            EXPECT_EQ(ink.text.a, 255) << theme.name << ' ' << i;
            EXPECT_GE(GetContrast(ink.text, ink.surface), IsDisabled(static_cast<eInk>(i)) ? 3.0 : 4.5)
                << theme.name << ' ' << i;
        }
        // What shows where one is, and the signs, on all that they may stand on.
        Signals const &signals = theme.signals;
        for (eInk const ground : {e_ink_panel, e_ink_field, e_ink_popup})
        {
            color4b const surface = theme.inks[ground].surface;
            for (color4b const color : {signals.focus, signals.information, signals.warning, signals.error})
                EXPECT_GE(GetContrast(color, surface), 3.0) << theme.name << ' ' << ground;
        }
        // A marked state is another one than the plain state.
        EXPECT_GE(GetContrast(theme.inks[e_ink_rowSelected].surface, theme.inks[e_ink_row].surface), 2.0);
        EXPECT_GE(GetContrast(theme.inks[e_ink_accent].surface, theme.inks[e_ink_control].surface), 1.5);
    }
}

class StandardLook : public testing::Test
{
protected:
    gui::FontTexture const &GetFont(char const *name)
    {
        return dynamic_cast<gui::FontTexture const &>(*manager_.GetFont(name));
    }

    tests::GuiDesk desk_;
    gui::Manager &manager_ = desk_.manager;
    tests::GuiScreen screen_;
};

TEST_F(StandardLook, RegistersAllNamesAndTakesThemBack)
{
    {
        Look look(1);
        for (ShaderRow const &row : GetShaderRows())
            EXPECT_NE(manager_.GetShader(row.name), nullptr) << row.name;
        for (char const *const name : {"look/small", "look/text", "look/bold", "look/title", "look/large", "look/mono",
                                       "std/default", "std/console"})
            EXPECT_NE(manager_.GetFont(name), nullptr) << name;
        for (char const *const name :
             {"look/text", "look/hand", "look/split-horizontal", "look/split-vertical", "std/client", "std/stop"})
            EXPECT_NE(manager_.GetCursor(name), nullptr) << name;
        EXPECT_NE(manager_.GetTileTexture("std/set0"), nullptr);
        manager_.SyncObjectStates();

        // A theme exchanges aliases only.
        unsigned int const numShaders = manager_.GetNumShaders();
        gui::BaseShader const *const dark = manager_.GetShader("look/button");
        gui::Font const *const font = manager_.GetFont("look/text");
        EXPECT_TRUE(look.SetTheme("light"));
        EXPECT_NE(manager_.GetShader("look/button"), dark);
        EXPECT_EQ(manager_.GetFont("look/text"), font);
        EXPECT_EQ(manager_.GetNumShaders(), numShaders);
        EXPECT_FALSE(look.SetTheme("no such theme"));
        EXPECT_STREQ(look.GetTheme().name, "light");
        EXPECT_TRUE(look.SetTheme("dark"));
        EXPECT_EQ(manager_.GetShader("look/button"), dark);

        // A scale leaves nothing behind, and keeps the theme.
        look.SetTheme("light");
        look.SetScale(2);
        EXPECT_EQ(manager_.GetNumShaders(), numShaders);
        EXPECT_EQ(widgets::Measures::GetScale(), 2);
        EXPECT_EQ(manager_.GetShader("look/button")->GetName(), "look/button@2/light");
        for (float const scale : {0.5f, 1.25f, 4.0f, 100.0f, -1.0f})
        {
            look.SetScale(scale);
            manager_.SyncObjectStates();
            EXPECT_GE(look.GetScale(), 0.5f);
            EXPECT_LE(look.GetScale(), 4);
        }
        look.SetScale(1);
    }
    EXPECT_EQ(manager_.GetNumShaders(), 0u);
    EXPECT_EQ(manager_.GetFont("look/text"), nullptr);
    EXPECT_EQ(manager_.GetCursor("look/hand"), nullptr);
    manager_.SyncObjectStates();
}

TEST_F(StandardLook, KeepsStandardResourcesOfOthers)
{
    std::ostringstream log;
    gui::std_fonts::RegisterFont_Default(log, true, 256, false, gui::std_fonts::FontName_Default);
    ASSERT_TRUE(gui::std_tile_textures::RegisterTileTexture_Set0(
        log, false, file_system::FindDataFile(gui::std_tile_textures::DefaultFileName_Set0)));
    gui::Font const *const font = manager_.GetFont("std/default");
    gui::TileTexture const *const tiles = manager_.GetTileTexture("std/set0");
    {
        Look const look(1);
        EXPECT_EQ(manager_.GetFont("std/default"), font);
        EXPECT_EQ(manager_.GetTileTexture("std/set0"), tiles);
    }
    EXPECT_EQ(manager_.GetFont("std/default"), font);
    EXPECT_EQ(manager_.GetTileTexture("std/set0"), tiles);
    EXPECT_EQ(manager_.GetFont("std/console"), nullptr);
}

TEST_F(StandardLook, DrawsTextsWithOneTexelForEachPixel)
{
    for (float const scale : {1.0f, 1.5f, 2.0f})
    {
        Look const look(scale);
        manager_.SyncObjectStates();
        for (FontRow const &row : s_fonts)
        {
            gui::FontTexture const &font = GetFont(row.name);
            gui::TextMetrics const &metrics = dynamic_cast<SheetFont const &>(font).GetMetrics();
            EXPECT_NEAR(font.CalcGlyphWidthMultiplier(metrics), font.GetTilePixelSizeU(), 0.001f) << row.name;
            EXPECT_EQ(metrics.Height, std::round(metrics.Height));
            for (unsigned int code = 0x20; code < 0x100; ++code)
            {
                auto const glyph = static_cast<unsigned char>(code);
                float const width = font.CalcGlyphWidth(metrics, static_cast<char>(glyph));
                // Control characters and the soft hyphen have no picture.
                bool const isControl = code > 0x7F && code < 0xA0;
                if (!isControl && code != 0xAD)
                {
                    EXPECT_GE(width, 1) << row.name << ' ' << code;
                    EXPECT_NEAR(width, std::round(width), 0.01f) << row.name << ' ' << code;
                }
                EXPECT_LE(font.GetGlyphHOffset(glyph) + font.GetGlyphWidth(glyph), 1) << row.name << ' ' << code;
            }
            if (row.mono)
            {
                EXPECT_EQ(font.CalcTextWidth(metrics, "iiii"), font.CalcTextWidth(metrics, "WWWW"));
            }
        }
    }
    widgets::Measures::SetScale(1);
}

} // namespace
} // namespace standard_look
