#include <quillmarsh/gui/gui_fonts.h>

#include <quillmarsh/basetools/diagnostics.h>

#include "source/basetools/clamping.h"
#include "source/gui/sourceimage.h"

#include <algorithm>
#include <optional>

namespace quillmarsh::gui
{
namespace
{

/// Extent of a glyph, in pixels from the top left corner of its tile.
struct GlyphBox
{
    float minX;
    float maxX;
    float minY;
    float maxY;
};

/// Pixels that are added on each side of a glyph.
struct Pads
{
    float left;
    float right;
    float top;
    float bottom;
};

/// Texels of a sheet, in tiles.
struct Sheet
{
    ImageBase const &image;
    bool originBottom;
    unsigned int tileWidth;
    unsigned int tileHeight;

    /// Returns the first and the last texel with ink in each direction; nothing for a tile without ink.
    std::optional<GlyphBox> FindInk(unsigned int tileRow, unsigned int tileColumn) const
    {
        unsigned int minX = tileWidth, maxX = 0, minY = tileHeight, maxY = 0;
        for (unsigned int y = 0; y < tileHeight; ++y)
        {
            unsigned char const *const texels = GetTexels(tileRow * tileHeight + y, tileColumn * tileWidth);
            for (unsigned int x = 0; x < tileWidth; ++x)
            {
                if (texels[std::size_t{x} * sizeof(Sample32)] == 0)
                    continue;
                minX = std::min(minX, x);
                maxX = std::max(maxX, x);
                minY = std::min(minY, y);
                maxY = y;
            }
        }
        if (minY == tileHeight)
            return std::nullopt;
        return GlyphBox{static_cast<float>(minX), static_cast<float>(maxX), static_cast<float>(minY),
                        static_cast<float>(maxY)};
    }

    unsigned char const *GetTexels(unsigned int row, unsigned int column) const
    {
        return image.SampleB(originBottom ? image.GetNumRows() - 1 - row : row, column);
    }
};

/// Box of a glyph without ink, in the middle of its tile and half as high as it is wide, in tiles.
GlyphBox MakeEmptyBox(float emptyWidth)
{
    float const left = (1 - emptyWidth) * 0.5f;
    float const top = (1 - emptyWidth * 0.5f) * 0.5f;
    return {left, 1 - left, top, 1 - top};
}

GlyphBox Extend(GlyphBox const &box, Pads const &pads, float tilePixelWidth, float tilePixelHeight)
{
    // Tiles are square, so it makes no difference that the limits of x and y are swapped.
    return {std::max(box.minX - pads.left, 0.0f), std::min(box.maxX + pads.right, tilePixelHeight),
            std::max(box.minY - pads.top, 0.0f), std::min(box.maxY + pads.bottom, tilePixelWidth)};
}

float ClampPad(float pad, float tilePixelSize)
{
    return ClampSetting(pad, 0.0f, tilePixelSize, 0.0f);
}

} // namespace

void FontTexture::CalcGlyphPropertiesFromImage(float emptyWidth, float addLeft, float addRight, float addTop,
                                               float addBottom)
{
    SourceImageSentry const source(*this);
    ImageBase const *const image = source.Get();
    bool const hasFormat = !image || image->GetSampleFormat() == GetSampleFormat();
    bool const hasSize = !image || (image->GetNumRows() == GetHeight() && image->GetNumColumns() == GetWidth());
    QUILLMARSH_ASSERT(hasFormat, "Sample-format mismatch.");
    QUILLMARSH_ASSERT(hasSize, "Font-texture / source-image dimension mismatch.");
    if (!image || !hasFormat || !hasSize)
    {
        ClearGlyphProperties();
        return;
    }

    float const pixelWidth = GetTilePixelSizeU();
    float const pixelHeight = GetTilePixelSizeV();
    emptyWidth_ = ClampSetting(emptyWidth, 0.0f, 1.0f, 0.5f);
    addLeft_ = ClampPad(addLeft, pixelWidth);
    addRight_ = ClampPad(addRight, pixelWidth);
    addTop_ = ClampPad(addTop, pixelHeight);
    addBottom_ = ClampPad(addBottom, pixelHeight);

    Sheet const sheet{*image, source.IsOriginBottom(), static_cast<unsigned int>(pixelWidth),
                      static_cast<unsigned int>(pixelHeight)};
    GlyphBox const empty = MakeEmptyBox(emptyWidth_);
    GlyphBox const emptyPixels = {empty.minX * pixelWidth, empty.maxX * pixelWidth, empty.minY * pixelHeight,
                                  empty.maxY * pixelHeight};
    Pads const pads = {addLeft_, addRight_, addTop_, addBottom_};
    float const u = 1 / pixelWidth;
    float const v = 1 / pixelHeight;
    GlyphBox all = {1, 0, 1, 0};
    Table widths = {};
    Table offsets = {};
    for (unsigned int row = 0; row < GetNumTileRows(); ++row)
    {
        for (unsigned int column = 0; column < GetNumTileColumns(); ++column)
        {
            GlyphBox const box =
                Extend(sheet.FindInk(row, column).value_or(emptyPixels), pads, pixelWidth, pixelHeight);
            all = {std::min(all.minX, box.minX * u), std::max(all.maxX, box.maxX * u), std::min(all.minY, box.minY * v),
                   std::max(all.maxY, box.maxY * v)};
            unsigned int const glyph = row * GetNumTileColumns() + column;
            widths[glyph] = (box.maxX - box.minX) * u;
            offsets[glyph] = box.minX * u;
        }
    }
    SetGlyphWidthMono(all.maxX - all.minX);
    SetGlyphHOffsetMono(all.minX);
    SetGlyphHeight(all.maxY - all.minY);
    SetGlyphVOffset(all.minY);
    SetGlyphWidths(widths.data());
    SetGlyphHOffsets(offsets.data());
}

} // namespace quillmarsh::gui
