#include <quillmarsh/dataobjects/fontimages.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/basetools/winutils.h>
#include <quillmarsh/dataobjects/signaloperations.h>

#include "source/dataobjects/containers/checkedsize.h"
#include "source/platform/drawing.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <optional>
#include <vector>

namespace quillmarsh
{
namespace
{

using Gdiplus::Color;
using Gdiplus::FontFamily;
using win_utils::GdiplusGuard;

constexpr unsigned char s_opaque = 255;

Color GetWhite()
{
    return {s_opaque, 255, 255, 255};
}

/// Image that can be drawn on.
class Canvas : NoCopy
{
public:
    Canvas(unsigned int numRows, unsigned int numColumns)
        : image_(e_format_A8R8G8B8, numRows, numColumns),
          bitmap_(static_cast<int>(numColumns), static_cast<int>(numRows), static_cast<int>(image_.GetRowByteSize()),
                  PixelFormat32bppARGB, image_.GetSamplesB())
    {
    }

    Image<Sample32> &GetImage() { return image_; }
    Gdiplus::Bitmap &GetBitmap() { return bitmap_; }

private:
    Image<Sample32> image_;
    Gdiplus::Bitmap bitmap_;
};

/// A family, and the style that it is used in.
class ChosenFamily : NoCopy
{
public:
    ChosenFamily(string const &name, bool bold, bool italic)
    {
        wstring wide;
        AsciiToUnicode(name, wide);
        own_.emplace(platform::ToDrawingText(wide.c_str()));
        if (bold)
            style_ |= Gdiplus::FontStyleBold;
        if (italic)
            style_ |= Gdiplus::FontStyleItalic;
    }

    FontFamily const &Get() const { return generic_ ? *generic_ : *own_; }
    int GetStyle() const { return style_; }
    bool IsAvailable() const { return Get().IsAvailable() && Get().IsStyleAvailable(style_); }

    void FallBack()
    {
        generic_ = FontFamily::GenericMonospace();
        style_ = Gdiplus::FontStyleRegular;
    }

    /// Size of the em in pixels at which a line is as high as this.
    float GetSizeOfLine(float height) const
    {
        auto const line = static_cast<float>(Get().GetCellAscent(style_) + Get().GetCellDescent(style_));
        return line > 0 ? height * static_cast<float>(Get().GetEmHeight(style_)) / line : height;
    }

private:
    std::optional<FontFamily> own_;
    FontFamily const *generic_ = nullptr;
    int style_ = Gdiplus::FontStyleRegular;
};

void ChooseFamily(ChosenFamily &family)
{
    if (!family.IsAvailable())
        family.FallBack();
    if (!family.Get().IsAvailable())
        QUILLMARSH_THROW(SystemResourceException, "Internal error, failed to create font-family.");
}

void SetFormat(Gdiplus::StringFormat &format, bool centered)
{
    // Nothing but the clipping region cuts a text off.
    format.SetFormatFlags(Gdiplus::StringFormatFlagsNoWrap | Gdiplus::StringFormatFlagsNoClip |
                          Gdiplus::StringFormatFlagsNoFitBlackBox);
    format.SetAlignment(centered ? Gdiplus::StringAlignmentCenter : Gdiplus::StringAlignmentNear);
    format.SetLineAlignment(Gdiplus::StringAlignmentCenter);
}

Gdiplus::TextRenderingHint ChooseHint(bool antiAliased, bool hinted)
{
    if (antiAliased)
        return hinted ? Gdiplus::TextRenderingHintAntiAliasGridFit : Gdiplus::TextRenderingHintAntiAlias;
    return hinted ? Gdiplus::TextRenderingHintSingleBitPerPixelGridFit : Gdiplus::TextRenderingHintSingleBitPerPixel;
}

/// Additions to the edges of a rectangle, as they are passed.
struct EdgeOffsets
{
    float left;
    float top;
    float right;
    float bottom;
};

Gdiplus::RectF MoveEdges(Gdiplus::Rect const &rect, EdgeOffsets const &offsets)
{
    return {static_cast<float>(rect.X) + offsets.left, static_cast<float>(rect.Y) + offsets.top,
            static_cast<float>(rect.Width) + offsets.right - offsets.left,
            static_cast<float>(rect.Height) + offsets.bottom - offsets.top};
}

/// Rows of tiles and their size; throws NoMemoryException if the sheet is one that no image holds.
struct SheetLayout
{
    SheetLayout(unsigned int numGlyphs, unsigned int columns, unsigned int width)
        : numColumns(std::max(columns, 1u)),
          tileWidth(std::max(width, 1u)),
          numRows((numGlyphs - 1) / numColumns + 1)
    {
        std::uint64_t const byteSize = SaturatingProduct({numRows, numColumns, tileWidth, tileWidth, sizeof(Sample32)});
        std::uint64_t const longerSide = std::uint64_t{std::max(numRows, numColumns)} * tileWidth;
        if (byteSize > s_largestByteSize || longerSide > std::numeric_limits<int>::max() / sizeof(Sample32))
            ThrowNoMemory(byteSize);
    }

    Gdiplus::Rect GetTile(unsigned int glyph) const
    {
        auto const width = static_cast<int>(tileWidth);
        return {static_cast<int>(glyph % numColumns) * width, static_cast<int>(glyph / numColumns) * width, width,
                width};
    }

    unsigned int numColumns;
    unsigned int tileWidth;
    unsigned int numRows;
};

/// White on black becomes white with its coverage as alpha.
void TurnCoverageIntoAlpha(Image<Sample32> &image)
{
    CopySamples_3BytesBGRTo1ByteL(image, 3, image, 0);
    ThresholdSegmentationNBytes(image, 0, 3, 0, 0, 0, 255);
}

struct Quadrant
{
    bool right;
    bool bottom;
    unsigned char red;
    unsigned char green;
    unsigned char blue;
    unsigned short label;
};

constexpr Quadrant s_quadrants[] = {
    {false, false, 255, 0, 0, 'R'},
    {true, false, 0, 255, 0, 'G'},
    {false, true, 0, 0, 255, 'B'},
    {true, true, 0, 0, 0, 'A'},
};

Gdiplus::Rect GetQuadrant(Quadrant const &quadrant, int width, int height)
{
    int const halfWidth = width / 2;
    int const halfHeight = height / 2;
    return {quadrant.right ? halfWidth : 0, quadrant.bottom ? halfHeight : 0,
            quadrant.right ? width - halfWidth : halfWidth, quadrant.bottom ? height - halfHeight : halfHeight};
}

} // namespace

void GenerateRGBATest(ImageBase &image)
{
    if (image.GetNumSamples() == 0)
        return;
    GdiplusGuard const guard;
    Canvas canvas(image.GetNumRows(), image.GetNumColumns());
    {
        auto const width = static_cast<int>(image.GetNumColumns());
        auto const height = static_cast<int>(image.GetNumRows());
        ChosenFamily family("Tahoma", true, false);
        ChooseFamily(family);
        Gdiplus::Font const font(&family.Get(), static_cast<float>(std::max(height / 4, 1)), family.GetStyle(),
                                 Gdiplus::UnitPixel);
        Gdiplus::StringFormat format(Gdiplus::StringFormat::GenericTypographic());
        SetFormat(format, true);
        Gdiplus::SolidBrush const white(GetWhite());
        Gdiplus::Graphics graphics(&canvas.GetBitmap());
        graphics.SetTextRenderingHint(Gdiplus::TextRenderingHintAntiAlias);
        for (Quadrant const &quadrant : s_quadrants)
        {
            Gdiplus::Rect const rect = GetQuadrant(quadrant, width, height);
            Gdiplus::SolidBrush const brush(Color(s_opaque, quadrant.red, quadrant.green, quadrant.blue));
            graphics.SetClip(rect);
            graphics.FillRectangle(&brush, rect.X, rect.Y, rect.Width, rect.Height);
            graphics.DrawString(platform::ToDrawingText(&quadrant.label), 1, &font, MoveEdges(rect, {}), &format,
                                &white);
        }
    }
    TransferSamples2D(image, canvas.GetImage(), true);
}

void GenerateFontGlyphs(ImageBase &dst, unsigned int numGlyphs, unsigned short const *glyphs, string const &family,
                        bool bold, bool italic, unsigned int numColumns, unsigned int tileWidth, float sizeScale,
                        float addLeft, float addTop, float addRight, float addBottom, bool antiAliased, bool hinted,
                        bool centered)
{
    bool const hasGlyphs = glyphs && numGlyphs != 0;
    QUILLMARSH_ASSERT(hasGlyphs, "Invalid argument.");
    if (!hasGlyphs)
        return;
    SheetLayout const sheet(numGlyphs, numColumns, tileWidth);
    GdiplusGuard const guard;
    ChosenFamily chosen(family, bold, italic);
    ChooseFamily(chosen);
    float const fontSize = chosen.GetSizeOfLine(static_cast<float>(sheet.tileWidth)) * sizeScale;
    Gdiplus::Font const font(&chosen.Get(), fontSize, chosen.GetStyle(), Gdiplus::UnitPixel);
    // Not every version of the drawing library looks at the size.
    if (!(fontSize > 0) || font.GetLastStatus() != Gdiplus::Ok)
        QUILLMARSH_THROW(SystemResourceException, "Failed to create gdiplus-font.");

    Canvas canvas(sheet.numRows * sheet.tileWidth, sheet.numColumns * sheet.tileWidth);
    {
        Gdiplus::StringFormat format(Gdiplus::StringFormat::GenericTypographic());
        SetFormat(format, centered);
        Gdiplus::SolidBrush const white(GetWhite());
        Gdiplus::Graphics graphics(&canvas.GetBitmap());
        graphics.SetTextRenderingHint(ChooseHint(antiAliased, hinted));
        graphics.Clear(Color(s_opaque, 0, 0, 0));
        for (unsigned int i = 0; i < numGlyphs; ++i)
        {
            Gdiplus::Rect const tile = sheet.GetTile(i);
            graphics.SetClip(tile);
            graphics.DrawString(platform::ToDrawingText(&glyphs[i]), 1, &font,
                                MoveEdges(tile, {addLeft, addTop, addRight, addBottom}), &format, &white);
        }
    }
    Gdiplus::BitmapData data;
    GdiplusFillBitmapData(data, PixelFormat32bppARGB, canvas.GetImage());
    GdiplusTransferBitmapPixels(canvas.GetBitmap(), data, true);
    TurnCoverageIntoAlpha(canvas.GetImage());
    TransferSamples2D(dst, canvas.GetImage(), true);
}

void GenerateFontGlyphsAscii(ImageBase &dst, unsigned int firstGlyph, unsigned int lastGlyph, string const &family,
                             bool bold, bool italic, unsigned int numColumns, unsigned int tileWidth, float sizeScale,
                             float addLeft, float addTop, float addRight, float addBottom, bool antiAliased,
                             bool hinted, bool centered)
{
    std::vector<unsigned short> glyphs(lastGlyph < firstGlyph ? 0 : std::size_t{lastGlyph} - firstGlyph + 1);
    std::iota(glyphs.begin(), glyphs.end(), static_cast<unsigned short>(firstGlyph));
    GenerateFontGlyphs(dst, static_cast<unsigned int>(glyphs.size()), glyphs.data(), family, bold, italic, numColumns,
                       tileWidth, sizeScale, addLeft, addTop, addRight, addBottom, antiAliased, hinted, centered);
}

bool CanGenerateFont(string const &family, bool bold, bool italic)
{
    GdiplusGuard const guard;
    return ChosenFamily(family, bold, italic).IsAvailable();
}

void GdiplusFillBitmapData(Gdiplus::BitmapData &data, int pixelFormat, ImageBase const &image)
{
    data.Width = image.GetNumColumns();
    data.Height = image.GetNumRows();
    data.Stride = static_cast<int>(image.GetRowByteSize());
    data.PixelFormat = pixelFormat;
    data.Scan0 = const_cast<unsigned char *>(image.GetSamplesB());
    data.Reserved = 0;
}

bool GdiplusTransferBitmapPixels(Gdiplus::Bitmap &bitmap, Gdiplus::BitmapData &data, bool read)
{
    if (data.Width == 0 || data.Height == 0)
        return false;
    Gdiplus::Rect const rect(0, 0, static_cast<int>(data.Width), static_cast<int>(data.Height));
    unsigned int const mode = read ? Gdiplus::ImageLockModeRead : Gdiplus::ImageLockModeWrite;
    return bitmap.LockBits(&rect, Gdiplus::ImageLockModeUserInputBuf | mode, data.PixelFormat, &data) == Gdiplus::Ok &&
           bitmap.UnlockBits(&data) == Gdiplus::Ok;
}

} // namespace quillmarsh
