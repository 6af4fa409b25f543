#include <quillmarsh/gui/gui_fonts.h>

#include <quillmarsh/dataobjects/fontimages.h>
#include <quillmarsh/dataobjects/sampletransfer.h>

#include "tests/support/recording_renderer.h"
#include "tests/support/scripted_dialogs.h"
#include "tests/support/wine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <sstream>

namespace quillmarsh
{
namespace
{

using gui::FontTexture;
using gui::TextMetrics;
using Floats = std::vector<float>;

/// The smallest box, in pixels of a tile of 16.
constexpr float s_least = 0.01f * 16;
constexpr float s_nan = std::numeric_limits<float>::quiet_NaN();

/// Sheet of 256 by 128 pixels without ink, in tiles of 16 pixels.
struct BlankSheet : Image<Sample32>
{
    BlankSheet() : SignalBase(4), Image(e_format_A8R8G8B8, 128, 256)
    {
        std::fill_n(GetSamplesB(), GetTotalByteSize(), static_cast<unsigned char>(0));
    }

    /// Puts ink on a part of a glyph's tile, to the last row and column.
    void Fill(unsigned int glyph, unsigned int left, unsigned int top, unsigned int right, unsigned int bottom)
    {
        for (unsigned int y = top; y <= bottom; ++y)
            for (unsigned int x = left; x <= right; ++x)
                SampleB(glyph / 16 * 16 + y, glyph % 16 * 16 + x)[0] = 1;
    }
};

class GuiFonts : public testing::Test
{
protected:
    GuiFonts() { SetWidths({}); }

    /// Sets the widths of some codes in tiles; those of the others are 1.
    void SetWidths(std::vector<std::pair<unsigned char, float>> const &widths)
    {
        Floats all(256, 1);
        for (auto const &[code, width] : widths)
            all[code] = width;
        font_.SetGlyphWidths(all.data());
    }

    void Measure(BlankSheet const &sheet, bool originBottom, float emptyWidth, float left, float right, float top,
                 float bottom)
    {
        font_.SetGenerateImageFromSystemFont(false);
        ASSERT_TRUE(font_.SetSourceImage(&sheet, originBottom));
        font_.CalcGlyphPropertiesFromImage(emptyWidth, left, right, top, bottom);
    }

    /// Offset and width of a glyph's box, in pixels of a tile of 16.
    Floats BoxOf(unsigned char glyph) const
    {
        return {font_.GetGlyphHOffset(glyph) * 16, font_.GetGlyphWidth(glyph) * 16};
    }
    /// Offset and width of the common box, and then offset and height.
    Floats CommonBox() const
    {
        return {font_.GetGlyphHOffsetMono() * 16, font_.GetGlyphWidthMono() * 16, font_.GetGlyphVOffset() * 16,
                font_.GetGlyphHeight() * 16};
    }

    SignalOperationsManager operations_;
    FontTexture font_{true, 256, false};
};

TEST_F(GuiFonts, HaveSheetsOfSquareTiles)
{
    unsigned int const widths[][2] = {{0, 256},     {511, 256},   {512, 512}, {1023, 512},
                                      {1024, 1024}, {5000, 1024}, {~0u, 1024}};
    for (auto const &[wanted, width] : widths)
    {
        EXPECT_EQ(FontTexture::FixTextureWidth(wanted), width);
        for (bool const ascii : {false, true})
        {
            FontTexture const font(ascii, wanted, true);
            EXPECT_EQ(std::pair(font.GetWidth(), font.GetHeight()), std::pair(width, ascii ? width / 2 : width));
            EXPECT_EQ(std::tuple(font.GetNumGlyphRows(), font.GetNumGlyphColumns(), font.GetNumGlyphs()),
                      ascii ? std::tuple(8u, 16u, 128u) : std::tuple(16u, 16u, 256u));
            EXPECT_EQ((Floats{font.GetGlyphPixelSizeU(), font.GetGlyphPixelSizeV()}),
                      Floats(2, static_cast<float>(width) / 16));
            EXPECT_TRUE(font.IsMultiLevel() && font.GetSampleFormat() == e_format_A8R8G8B8);
        }
    }
}

TEST_F(GuiFonts, MeasureTheInkOfEachTile)
{
    BlankSheet sheet;
    sheet.Fill('A', 2, 3, 9, 12);
    sheet.Fill('l', 7, 1, 7, 13);
    sheet.Fill('_', 0, 15, 15, 15);
    sheet.Fill(0, 0, 0, 0, 0);
    Measure(sheet, false, 0.5f, 0, 0, 0, 0);
    // A glyph ends at the index of its last texel.
    EXPECT_EQ(BoxOf('A'), (Floats{2, 7}));
    EXPECT_EQ(BoxOf('l'), (Floats{7, s_least}));
    EXPECT_EQ(BoxOf(' '), (Floats{4, 8}));
    EXPECT_EQ(CommonBox(), (Floats{0, 15, 0, 15}));
    EXPECT_EQ(BoxOf(200)[1], s_least);

    // The pads stay within the tile.
    Measure(sheet, false, 0.25f, 1, 2, 100, s_nan);
    EXPECT_EQ(BoxOf('A'), (Floats{1, 10}));
    EXPECT_EQ(BoxOf('_'), (Floats{0, 16}));
    EXPECT_EQ(BoxOf(' '), (Floats{5, 7}));
    EXPECT_EQ(font_.GetGlyphVOffset(), 0.0f);
    FontTexture::CreationParams params;
    font_.GetCreationParameters(params);
    EXPECT_EQ(
        (Floats{params.ACWidthEmptyGlyph, params.ACAddPixelsRight, params.ACAddPixelsTop, params.ACAddPixelsBottom}),
        (Floats{0.25f, 2, 16, 0}));
}

TEST_F(GuiFonts, MeasureSheetsWithTheirLastRowFirst)
{
    // The tile of glyph 0 is then the first of the last row in memory, upside down.
    BlankSheet sheet;
    sheet.Fill(112, 3, 2, 6, 9);
    Measure(sheet, true, 0, 0, 0, 0, 0);
    EXPECT_EQ(BoxOf(0), (Floats{3, 3}));
    // The common box reaches to the middle, where that of an empty glyph is.
    EXPECT_EQ(CommonBox(), (Floats{3, 5, 6, 7}));
    EXPECT_EQ(BoxOf(112)[1], s_least);

    // An empty sheet leaves the box of an empty glyph, half as high as it is wide.
    Measure(BlankSheet(), false, 0.5f, 0, 0, 0, 0);
    EXPECT_EQ(CommonBox(), (Floats{4, 8, 6, 4}));
}

TEST_F(GuiFonts, KeepWholeTilesWithoutASheet)
{
    auto const expectsWholeTiles = [&]
    {
        EXPECT_EQ(BoxOf('A'), (Floats{0, 16}));
        EXPECT_EQ(CommonBox(), (Floats{0, 16, 0, 16}));
    };
    Measure(BlankSheet(), false, 0.5f, 0, 0, 0, 0);
    font_.SetSourceImage(nullptr, false);
    font_.CalcGlyphPropertiesFromImage(0.25f, 1, 1, 1, 1);
    expectsWholeTiles();
    FontTexture::CreationParams params;
    font_.GetCreationParameters(params);
    EXPECT_EQ(params.ACWidthEmptyGlyph, 0.5f);

    // A sheet with more glyphs than the texture has room for.
    tests::ScriptedDialogs dialogs;
    Measure(BlankSheet(), false, 0.5f, 0, 0, 0, 0);
    font_.SetGenerateImageFromSystemFont(true);
    font_.SetAsciiSubsetOnly(false);
    font_.CalcGlyphPropertiesFromImage(0.5f, 1, 1, 1, 1);
    EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>{"Font-texture / source-image dimension mismatch."});
    expectsWholeTiles();
}

TEST_F(GuiFonts, ClampBoxesAndPlaceThemInTheTexture)
{
    font_.SetGlyphHeight(0.001f);
    font_.SetGlyphWidthMono(-1);
    font_.SetGlyphVOffset(-1);
    font_.SetGlyphHOffsetMono(2);
    EXPECT_EQ(CommonBox(), (Floats{16, s_least, 0, s_least}));
    font_.SetGlyphHeight(7);
    EXPECT_EQ(font_.GetGlyphHeight(), 1.0f);
    font_.SetGlyphWidths(s_nan);
    EXPECT_EQ(font_.GetGlyphWidth(255), 1.0f);
    Floats offsets(256, 0.25f);
    offsets['B'] = 5;
    font_.SetGlyphHOffsets(offsets.data());
    EXPECT_EQ(font_.GetGlyphHOffset('B'), 1.0f);
    tests::ScriptedDialogs dialogs;
    font_.SetGlyphWidths(nullptr);
    font_.SetGlyphHOffsets(nullptr);
    EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>(2, "Invalid argument."));

    // 'R' stands in row 5 and column 2 of 8 rows and 16 columns.
    font_.SetGlyphHeight(0.5f);
    font_.SetGlyphVOffset(0.25f);
    font_.SetGlyphWidths(0.5f);
    font_.SetGlyphWidthMono(0.75f);
    font_.SetGlyphHOffsetMono(0.125f);
    gui::RectangleCT rectangle({0, 0, 1, 1}, color4b(0, 0, 0, 0));
    auto const expectCoords = [&](float left, float right, float top, float bottom)
    {
        EXPECT_EQ((Floats{rectangle.uMin * 16, rectangle.uMax * 16, rectangle.vMin * 8, rectangle.vMax * 8}),
                  (Floats{left, right, top, bottom}));
    };
    font_.GetGlyphTileCoords('R', rectangle);
    expectCoords(2, 3, 5, 6);
    font_.GetGlyphCoords('R', rectangle);
    expectCoords(2.25f, 2.75f, 5.25f, 5.75f);
    font_.GetGlyphCoordsMono('R', rectangle);
    expectCoords(2.125f, 2.875f, 5.25f, 5.75f);
    font_.GetGlyphCoords(0xFF, rectangle);
    EXPECT_EQ(rectangle.vMin * 8, 15.25f);
}

TEST_F(GuiFonts, MeasureTexts)
{
    SetWidths({{'a', 0.5f}, {'b', 0.25f}, {0xE9, 0.75f}});
    font_.SetGlyphHeight(0.5f);
    font_.SetGlyphWidthMono(0.625f);
    font_.SetDefaultSpacing(0.25f);
    font_.SetDefaultSpacingMono(0.5f);
    // A tile is 32 pixels wide, and the spaces are 4 and 8 pixels.
    TextMetrics metrics;
    metrics.Height = 16;
    gui::Font const &font = font_;
    EXPECT_EQ(font.CalcTextWidth(metrics, ""), 0.0f);
    EXPECT_EQ(font.CalcTextWidth(metrics, "a"), 16.0f);
    EXPECT_EQ(font.CalcTextWidth(metrics, "ab\xE9"), 16 + 8 + 24 + 2 * 4.0f);
    EXPECT_EQ(font.CalcGlyphWidth(metrics, '\xE9'), 24.0f);
    Floats widths = {1, 2, 3};
    font.CalcTextWidths(widths, metrics, "ab\xE9");
    EXPECT_EQ(widths, (Floats{16, 28, 56}));
    font.CalcTextWidths(widths, metrics, "");
    EXPECT_EQ(widths, Floats());

    using Visible = std::tuple<float, unsigned int, float>;
    for (auto const &[maxWidth, count, width] :
         {Visible{-1, 0, 0}, {15.9f, 0, 0}, {16, 1, 16}, {27.9f, 1, 16}, {28, 2, 28}, {31, 2, 28}, {1e9f, 3, 56}})
    {
        unsigned int visible = 9;
        float visibleWidth = 9;
        font.CalcMaxVisibleText(visible, visibleWidth, maxWidth, metrics, "ab\xE9");
        EXPECT_EQ(std::pair(visible, visibleWidth), std::pair(count, width)) << maxWidth;
    }

    metrics.GlyphWidthScale = 2;
    metrics.SpacingScale = 0.5f;
    EXPECT_EQ(font.CalcTextWidth(metrics, "ab"), 2 * 24 + 2.0f);
    metrics.UseDefaultSpacing = false;
    metrics.Spacing = 1;
    EXPECT_EQ(font.CalcTextWidth(metrics, "ab"), 2 * 24 + 8.0f);
    metrics.Mono = true;
    EXPECT_EQ(font.CalcTextWidth(metrics, "ab"), 2 * 40 + 8.0f);
    metrics.UseDefaultSpacing = true;
    font.CalcTextWidths(widths, metrics, "ab");
    EXPECT_EQ(widths, (Floats{40, 84}));
    EXPECT_EQ(font.CalcTextWidth(metrics, ""), 0.0f);
}

/// Wine uses the fonts of the host system, under their own names only.
string GetFamily()
{
    return tests::IsWine() ? "Liberation Sans" : "Arial";
}

TEST_F(GuiFonts, DrawAndMeasureASystemFont)
{
    FontTexture::CreationParams params;
    params.Family = GetFamily();
    AutoPtr<FontTexture> const font = FontTexture::CreateFontTexture(params);
    EXPECT_EQ(font->GetFamilyName(), params.Family);
    tests::RecordingRenderer renderer;
    font->CreateVideoRendererResource(renderer);
    auto const &loads = renderer.GetGUI().texture->loads;
    ASSERT_EQ(loads.size(), 10u);
    EXPECT_EQ(loads[0].arguments, (std::vector<unsigned int>{0, 256, 512, 0, 0, 0, 0, 0}));

    // All ink lies in the boxes of the glyphs.
    auto const hasInk = [&](float u, float v)
    {
        auto const row = static_cast<std::size_t>(v), column = static_cast<std::size_t>(u);
        return loads[0].bytes[(row * 512 + column) * 4 + 3] != 0;
    };
    float top = 1, bottom = 0;
    for (unsigned char code = 0; code < 128; ++code)
    {
        gui::RectangleCT box({}, color4b()), mono({}, color4b()), tile({}, color4b());
        font->GetGlyphCoords(code, box);
        font->GetGlyphCoordsMono(code, mono);
        font->GetGlyphTileCoords(code, tile);
        EXPECT_TRUE(mono.uMin <= box.uMin && box.uMax <= mono.uMax + 1e-6f) << code;
        for (float y = tile.vMin * 256; y < tile.vMax * 256; ++y)
            for (float x = tile.uMin * 512; x < tile.uMax * 512; ++x)
            {
                if (!hasInk(x, y))
                    continue;
                EXPECT_TRUE(x >= box.uMin * 512 && x <= box.uMax * 512) << code << ' ' << x;
                EXPECT_TRUE(y >= box.vMin * 256 && y <= box.vMax * 256) << code << ' ' << y;
                top = std::min(top, y / 32 - tile.vMin * 8);
                bottom = std::max(bottom, y / 32 - tile.vMin * 8);
            }
    }
    // The pads are one pixel.
    EXPECT_NEAR(font->GetGlyphVOffset(), std::max(top - 1 / 32.0f, 0.0f), 1e-6f);
    EXPECT_NEAR(font->GetGlyphVOffset() + font->GetGlyphHeight(), bottom + 1 / 32.0f, 1e-6f);
    EXPECT_LT(font->GetGlyphWidth('i') * 2, font->GetGlyphWidth('W'));
    EXPECT_EQ(font->GetGlyphWidth(' '), 0.5f + 2 / 32.0f);
    EXPECT_EQ(font->GetGlyphHOffset(' '), 0.25f - 1 / 32.0f);
}

TEST_F(GuiFonts, KeepWhatTheyAreMadeFrom)
{
    FontTexture::CreationParams params;
    params.Family = "no such family";
    params.Bold = true;
    params.DefaultSpacing = 0.125f;
    params.AsciiSubsetOnly = false;
    params.TextureWidth = 300;
    params.IGScaleEmHeight = 0.75f;
    params.IGGlyphOffsetV = 1;
    params.ACAddPixelsLeft = 2;
    FontTexture::CreationParams made;
    FontTexture::CreateFontTexture(params)->GetCreationParameters(made);
    // Numbers are decimal, whatever the flags of the stream are.
    std::ostringstream out;
    out << std::hex << std::fixed;
    made.Dump(out, 1);
    EXPECT_EQ(out.str(), "\tFamily............: GenericMonospace\n"
                         "\tBold..............: false\n"
                         "\tItalic............: false\n"
                         "\tDefaultSpacingMono: 0\n"
                         "\tDefaultSpacing....: 0.125\n"
                         "\tAsciiSubsetOnly...: false\n"
                         "\tTextureWidth......: 256\n"
                         "\tTextureMultiLevel.: true\n"
                         "\tIGScaleEmHeight...: 0.75\n"
                         "\tIGGlyphOffsetH....: 0\n"
                         "\tIGGlyphOffsetV....: 1\n"
                         "\tIGGlyphSizeModifyH: 0\n"
                         "\tIGGlyphSizeModifyV: 0\n"
                         "\tACWidthEmptyGlyph.: 0.5\n"
                         "\tACAddPixelsLeft...: 2\n"
                         "\tACAddPixelsRight..: 1\n"
                         "\tACAddPixelsTop....: 1\n"
                         "\tACAddPixelsBottom.: 1\n");
}

TEST_F(GuiFonts, DrawThroughTheRenderer)
{
    tests::RecordingRenderer renderer;
    tests::RecordingGUIRenderer &gui = renderer.GetGUI();
    static_cast<gui::Renderer &>(gui).DrawText(static_cast<gui::Font const &>(font_), "first", {});
    EXPECT_EQ(gui.font, &font_);
    EXPECT_EQ(gui.text, "first");
    gui.DrawText(font_, "second", {});
    EXPECT_EQ(gui.text, "second");
    font_.DrawText(gui, string("a\0b", 3), {});
    EXPECT_EQ(gui.text, string("a\0b", 3));
}

} // namespace
} // namespace quillmarsh
