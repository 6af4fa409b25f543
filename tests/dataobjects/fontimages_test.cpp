#include <quillmarsh/basetools/windows/winutils.h>
#include <quillmarsh/dataobjects/fontimages.h>

#include <quillmarsh/dataobjects/sampletransfer.h>

#include "source/platform/gdiplus.h"
#include "tests/support/failures.h"
#include "tests/support/scripted_dialogs.h"
#include "tests/support/wine.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace quillmarsh
{
namespace
{

using Sheet = Image<Sample32>;

/// Bounds of the pixels drawn in a part of a sheet. Without any, right is less than left.
struct Ink
{
    unsigned int left = ~0u, top = ~0u, right = 0, bottom = 0;
    /// True when some pixels are partly covered.
    bool hasEdges = false;

    bool IsThere() const { return left <= right; }
};

Ink FindInk(ImageBase const &sheet, unsigned int row, unsigned int column, unsigned int size)
{
    Ink ink;
    for (unsigned int y = 0; y < size; ++y)
        for (unsigned int x = 0; x < size; ++x)
        {
            unsigned char const *const pixel = sheet.SampleB(row + y, column + x);
            unsigned char const colour = pixel[3] > 0 ? 255 : 0;
            EXPECT_TRUE(pixel[0] == colour && pixel[1] == colour && pixel[2] == colour);
            if (pixel[3] == 0)
                continue;
            ink.left = std::min(ink.left, x);
            ink.right = std::max(ink.right, x);
            ink.top = std::min(ink.top, y);
            ink.bottom = std::max(ink.bottom, y);
            ink.hasEdges |= pixel[3] < 255;
        }
    return ink;
}

/// Wine uses the fonts of the host system, under their own names only.
string GetFamily()
{
    return tests::IsWine() ? "Liberation Sans" : "Tahoma";
}

class FontImages : public testing::Test
{
protected:
    /// Draws one glyph into a tile of 64 pixels.
    Ink Draw(unsigned short glyph, float scale, float move, bool antiAliased, bool centered, bool bold = false,
             string const &family = GetFamily()) const
    {
        Sheet sheet(e_format_A8R8G8B8, 0, 0);
        GenerateFontGlyphs(sheet, 1, &glyph, family, bold, false, 1, 64, scale, move, move, move, move, antiAliased,
                           true, centered);
        EXPECT_EQ(sheet.GetNumRows(), 64u);
        return FindInk(sheet, 0, 0, 64);
    }

    SignalOperationsManager operations_;
};

TEST_F(FontImages, TestImageHasItsQuadrants)
{
    Sheet image(e_format_X8R8G8B8, 61, 80);
    GenerateRGBATest(image);
    // Row, column, blue, green, red.
    constexpr unsigned int corners[][5] = {{0, 0, 0, 0, 255}, {0, 79, 0, 255, 0},  {60, 0, 255, 0, 0},
                                           {60, 79, 0, 0, 0}, {29, 39, 0, 0, 255}, {30, 40, 0, 0, 0}};
    for (auto const &[row, column, blue, green, red] : corners)
    {
        unsigned char const *const bytes = image.Sample(row, column).bytes;
        EXPECT_TRUE(bytes[0] == blue && bytes[1] == green && bytes[2] == red) << row << " " << column;
    }
    // The letter of the black quadrant is in its middle.
    unsigned int numLight = 0;
    for (unsigned int row = 30; row < 61; ++row)
        for (unsigned int column = 40; column < 80; ++column)
        {
            bool const isLight = image.Sample(row, column).bytes[0] > 128;
            numLight += isLight ? 1 : 0;
            EXPECT_TRUE(!isLight || (row >= 38 && row < 53 && column >= 50 && column < 70));
        }
    EXPECT_GT(numLight, 20u);

    Sheet tiny(e_format_A8R8G8B8, 1, 1);
    GenerateRGBATest(tiny);
    EXPECT_EQ(tiny.GetSamplesB()[3], 255);
    Sheet empty(e_format_A8R8G8B8, 0, 0);
    GenerateRGBATest(empty);
    EXPECT_EQ(empty.GetNumSamples(), 0u);
}

TEST_F(FontImages, GlyphsStandInTheirTiles)
{
    Sheet sheet(e_format_A8R8G8B8, 0, 0);
    GenerateFontGlyphsAscii(sheet, 0, 255, "Courier New", false, false, 16, 32, 1, 0, 0, 0, 0, true, true, true);
    ASSERT_TRUE(sheet.GetNumRows() == 512 && sheet.GetNumColumns() == 512);
    for (unsigned int glyph = 0; glyph < 256; ++glyph)
    {
        bool const isEmpty = glyph <= ' ' || (glyph >= 0x7F && glyph <= 0xA0);
        Ink const ink = FindInk(sheet, glyph / 16 * 32, glyph % 16 * 32, 32);
        // Windows shows boxes for some control characters.
        bool const isFree = glyph == 0xAD || (tests::IsWindows() && isEmpty);
        EXPECT_TRUE(ink.IsThere() == !isEmpty || isFree) << glyph;
    }

    // An incomplete last row, and sizes that are too small.
    Image<Sample8> narrow(e_format_L8, 0, 0);
    GenerateFontGlyphsAscii(narrow, 'a', 'e', "Arial", false, false, 0, 0, 1, 0, 0, 0, 0, true, true, true);
    EXPECT_TRUE(narrow.GetNumRows() == 5 && narrow.GetNumColumns() == 1);
    GenerateFontGlyphsAscii(narrow, 'a', 'e', "Arial", false, false, 2, 8, 1, 0, 0, 0, 0, true, true, true);
    EXPECT_TRUE(narrow.GetNumRows() == 24 && narrow.GetNumColumns() == 16);
}

TEST_F(FontImages, ArgumentsPlaceAndShapeAGlyph)
{
    Ink const plain = Draw('O', 1, 0, true, true);
    Ink const left = Draw('O', 1, 0, true, false);
    Ink const moved = Draw('O', 1, 5, true, false);
    Ink const half = Draw('O', 0.5f, 0, true, true);
    EXPECT_TRUE(plain.hasEdges);
    // Wine always smooths text.
    EXPECT_EQ(Draw('O', 1, 0, false, true).hasEdges, tests::IsWine());
    EXPECT_NEAR(plain.left, 63 - plain.right, 2);
    EXPECT_LT(left.left, 6u);
    EXPECT_EQ(moved.left, left.left + 5);
    EXPECT_EQ(moved.top, left.top + 5);
    EXPECT_NEAR((half.bottom - half.top) * 2, plain.bottom - plain.top, 4);
    // A line of the font fits its tile; Wine rounds its height up.
    EXPECT_LT(Draw('g', tests::IsWine() ? 0.95f : 1, 0, true, true).bottom, 63u);
    EXPECT_GT(Draw(0xC5, 1, 0, true, true).top, 0u);
    // Drawing outside the tile is cut off.
    EXPECT_FALSE(Draw('O', 1, 100, true, true).IsThere());
    Ink const bold = Draw('l', 1, 0, false, true, true);
    Ink const thin = Draw('l', 1, 0, false, true, false);
    EXPECT_GT(bold.right - bold.left, thin.right - thin.left);
}

TEST_F(FontImages, UnknownFamiliesBecomeMonospace)
{
    EXPECT_TRUE(CanGenerateFont(GetFamily(), true, true));
    EXPECT_FALSE(CanGenerateFont("no such family", false, false) || CanGenerateFont("", false, false));
    EXPECT_FALSE(CanGenerateFont("GenericMonospace", false, false));
    // Neither is it bold.
    EXPECT_EQ(Draw('l', 1, 0, false, true, true, "no such family").right,
              Draw('l', 1, 0, false, true, false, "GenericMonospace").right);
}

TEST_F(FontImages, WrongArgumentsAssert)
{
    Sheet sheet(e_format_A8R8G8B8, 1, 1);
    unsigned short const glyphs[] = {'a', 'b'};
    auto const generate = [&](unsigned int numGlyphs, unsigned short const *table, unsigned int tileWidth, float scale)
    {
        GenerateFontGlyphs(sheet, numGlyphs, table, "Arial", false, false, 1, tileWidth, scale, 0, 0, 0, 0, true, true,
                           true);
    };
    {
        tests::ScriptedDialogs dialogs;
        generate(1, nullptr, 8, 1);
        generate(0, glyphs, 8, 1);
        // After an ignored assertion, this place shows no more dialogs.
        EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>(1, "Invalid argument."));
    }
    EXPECT_EQ(tests::MessageOf<SystemResourceException>([&] { generate(1, glyphs, 8, 0); }),
              "Failed to create gdiplus-font.");
    EXPECT_NE(tests::MessageOf<NoMemoryException>([&] { generate(2, glyphs, 0x80000000u, 1); }), "");
    EXPECT_NE(tests::MessageOf<NoMemoryException>([&] { generate(1, glyphs, 40000, 1); }), "");
    EXPECT_EQ(sheet.GetNumSamples(), 1u);
}

TEST(GdiplusBitmaps, PixelsAreCopiedBothWays)
{
    win_utils::GdiplusGuard const guard;
    unsigned int pixels[] = {0xff000001, 0xff000002, 0xff000003, 0xff000004};
    Gdiplus::Bitmap bitmap(2, 2, 8, PixelFormat32bppARGB, reinterpret_cast<unsigned char *>(pixels));
    Image<Sample32> image(e_format_A8R8G8B8, 2, 2);
    Gdiplus::BitmapData data;
    GdiplusFillBitmapData(data, PixelFormat32bppARGB, image);
    ASSERT_TRUE(GdiplusTransferBitmapPixels(bitmap, data, true));
    EXPECT_EQ(image.GetSamplesB()[12], 4);
    image.GetSamplesB()[4] = 9;
    ASSERT_TRUE(GdiplusTransferBitmapPixels(bitmap, data, false));
    EXPECT_EQ(pixels[1], 0xff000009);

    Image<Sample32> larger(e_format_A8R8G8B8, 3, 2);
    GdiplusFillBitmapData(data, PixelFormat32bppARGB, larger);
    EXPECT_FALSE(GdiplusTransferBitmapPixels(bitmap, data, true));
    Image<Sample32> empty(e_format_A8R8G8B8, 0, 2);
    GdiplusFillBitmapData(data, PixelFormat32bppARGB, empty);
    EXPECT_FALSE(GdiplusTransferBitmapPixels(bitmap, data, true));
}

} // namespace
} // namespace quillmarsh
