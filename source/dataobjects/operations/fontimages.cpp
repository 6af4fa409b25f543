#include <quillmarsh/dataobjects/fontimages.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/windows/winutils.h>
#include <quillmarsh/dataobjects/signaloperations.h>

#include "source/dataobjects/containers/checkedsize.h"
#include "source/platform/drawing.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <vector>

namespace quillmarsh
{
namespace
{

namespace drawing = platform::drawing;
using drawing::Color;
using drawing::FontFace;
using win_utils::GdiplusGuard;

constexpr Color s_white = {255, 255, 255};
constexpr Color s_black = {0, 0, 0};

platform::PixelRows ToPixelRows(Image<Sample32> &image)
{
    return {image.GetSamplesB(), static_cast<std::ptrdiff_t>(image.GetRowByteSize()), image.GetNumRows(),
            image.GetNumColumns(), true};
}

/// Returns the wanted face, or the fixed-width face if the system does not have it.
FontFace ChooseFace(FontFace const &wanted)
{
    if (drawing::HasFace(wanted))
        return wanted;
    FontFace face = drawing::GetMonospaceFace();
    if (face.family.empty())
    {
        string const reason = drawing::FindTextFailure();
        QUILLMARSH_THROW(SystemResourceException,
                         "Internal error, failed to create font-family." + (reason.empty() ? "" : " " + reason));
    }
    return face;
}

/// Returns the em size in pixels at which a line has this height.
float GetSizeOfLine(FontFace const &face, float height)
{
    drawing::FaceHeights const heights = drawing::MeasureFace(face);
    auto const line = static_cast<float>(heights.ascent + heights.descent);
    return line > 0 ? height * static_cast<float>(heights.em) / line : height;
}

/// Additions to the edges of a rectangle, in the order of the arguments.
struct EdgeOffsets
{
    float left;
    float top;
    float right;
    float bottom;
};

drawing::RectF MoveEdges(drawing::Rect const &rect, EdgeOffsets const &offsets)
{
    return {static_cast<float>(rect.x) + offsets.left, static_cast<float>(rect.y) + offsets.top,
            static_cast<float>(rect.width) + offsets.right - offsets.left,
            static_cast<float>(rect.height) + offsets.bottom - offsets.top};
}

/// Number and size of the tiles. Throws NoMemoryException if the sheet is too large for an image.
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

    drawing::Rect GetTile(unsigned int glyph) const
    {
        auto const width = static_cast<int>(tileWidth);
        return {static_cast<int>(glyph % numColumns) * width, static_cast<int>(glyph / numColumns) * width, width,
                width};
    }

    unsigned int numColumns;
    unsigned int tileWidth;
    unsigned int numRows;
};

/// Turns white on black into white with its coverage as alpha.
void TurnCoverageIntoAlpha(Image<Sample32> &image)
{
    CopySamples_3BytesBGRTo1ByteL(image, 3, image, 0);
    ThresholdSegmentationNBytes(image, 0, 3, 0, 0, 0, 255);
}

struct Quadrant
{
    bool right;
    bool bottom;
    Color color;
    unsigned short label;
};

constexpr Quadrant s_quadrants[] = {
    {false, false, {255, 0, 0}, 'R'},
    {true, false, {0, 255, 0}, 'G'},
    {false, true, {0, 0, 255}, 'B'},
    {true, true, s_black, 'A'},
};

drawing::Rect GetQuadrant(Quadrant const &quadrant, int width, int height)
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
    Image<Sample32> drawn(e_format_A8R8G8B8, image.GetNumRows(), image.GetNumColumns());
    {
        auto const width = static_cast<int>(image.GetNumColumns());
        auto const height = static_cast<int>(image.GetNumRows());
        drawing::Font font(ChooseFace({"Tahoma", true, false}), static_cast<float>(std::max(height / 4, 1)),
                           {true, false});
        drawing::Canvas canvas(ToPixelRows(drawn));
        for (Quadrant const &quadrant : s_quadrants)
        {
            drawing::Rect const rect = GetQuadrant(quadrant, width, height);
            canvas.SetClip(rect);
            canvas.FillRectangle(rect, quadrant.color);
            if (font.IsValid())
                canvas.DrawText(wstring(1, quadrant.label), font, MoveEdges(rect, {}), true, s_white);
        }
    }
    TransferSamples2D(image, drawn, true);
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
    FontFace const face = ChooseFace({family, bold, italic});
    drawing::Font font(face, GetSizeOfLine(face, static_cast<float>(sheet.tileWidth)) * sizeScale,
                       {antiAliased, hinted});
    if (!font.IsValid())
        QUILLMARSH_THROW(SystemResourceException, "Failed to create gdiplus-font.");

    Image<Sample32> drawn(e_format_A8R8G8B8, sheet.numRows * sheet.tileWidth, sheet.numColumns * sheet.tileWidth);
    {
        drawing::Canvas canvas(ToPixelRows(drawn));
        canvas.Clear(s_black);
        for (unsigned int i = 0; i < numGlyphs; ++i)
        {
            drawing::Rect const tile = sheet.GetTile(i);
            canvas.SetClip(tile);
            canvas.DrawText(wstring(1, glyphs[i]), font, MoveEdges(tile, {addLeft, addTop, addRight, addBottom}),
                            centered, s_white);
        }
    }
    TurnCoverageIntoAlpha(drawn);
    TransferSamples2D(dst, drawn, true);
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

FontMeasures MeasureFontGlyphs(unsigned int numGlyphs, unsigned short const *glyphs, string const &family, bool bold,
                               bool italic, float lineHeight, bool antiAliased, bool hinted)
{
    GdiplusGuard const guard;
    FontFace const face = ChooseFace({family, bold, italic});
    FontMeasures measures;
    measures.emHeight = GetSizeOfLine(face, lineHeight);
    drawing::Font font(face, measures.emHeight, {antiAliased, hinted});
    if (!font.IsValid())
        QUILLMARSH_THROW(SystemResourceException, "Failed to create gdiplus-font.");
    for (unsigned int i = 0; glyphs && i < numGlyphs; ++i)
        measures.advances.push_back(font.GetAdvance(glyphs[i]));
    return measures;
}

bool CanGenerateFont(string const &family, bool bold, bool italic)
{
    GdiplusGuard const guard;
    return drawing::HasFace({family, bold, italic});
}

} // namespace quillmarsh
