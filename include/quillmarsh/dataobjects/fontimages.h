// Images that the system's drawing service makes: glyphs of fonts, and a test image.
#ifndef QUILLMARSH_DATAOBJECTS_FONTIMAGES_H
#define QUILLMARSH_DATAOBJECTS_FONTIMAGES_H

#include <quillmarsh/dataobjects/imagebase.h>

namespace Gdiplus
{

class Bitmap;
class BitmapData;

} // namespace Gdiplus

namespace quillmarsh
{

/// Four quadrants of opaque colour, each with its letter in white: red "R" at the top left, green "G" at the top right,
/// blue "B" at the bottom left, black "A" at the bottom right. The image keeps its size and its format; nothing happens
/// to an empty one, nor to one whose format cannot take over "A8R8G8B8". Any thread, for images of its own.
QUILLMARSH_API void GenerateRGBATest(ImageBase &image);

/// @name Sheets of glyphs
/// A glyph is drawn in the middle of a square tile, tiles stand row by row from the top left. What was drawn is white,
/// with its coverage as alpha, all else transparent black. `dst` takes the size of the sheet and keeps its format.
///
/// With `sizeScale` 1 a line of the font is as high as a tile; what goes beyond its tile is cut off. The four additions
/// in pixels move the edges of the rectangle that the glyph is placed in, which are those of the tile at first.
/// `antiAliased` gives edges in between; `hinted` fits the glyphs to whole pixels; `centered` places a glyph in the
/// middle between left and right, instead of beginning it at the left.
///
/// A family that CanGenerateFont refuses gives way to the system's font of equal widths, neither bold nor italic.
/// Throws SystemResourceException, "Internal error, failed to create font-family." or "Failed to create gdiplus-font.",
/// and NoMemoryException for a sheet that cannot be held. Any thread, for images of its own.
/// @{

/// Glyphs of a table of UTF-16 codes; a code without a glyph leaves its tile empty. Asserts "Invalid argument." for no
/// table or no glyphs.
QUILLMARSH_API void GenerateFontGlyphs(ImageBase &dst, unsigned int numGlyphs, unsigned short const *glyphs,
                                       string const &family, bool bold, bool italic, unsigned int numColumns,
                                       unsigned int tileWidth, float sizeScale, float addLeft, float addTop,
                                       float addRight, float addBottom, bool antiAliased, bool hinted, bool centered);
/// Glyphs of all codes from the first to the last.
QUILLMARSH_API void GenerateFontGlyphsAscii(ImageBase &dst, unsigned int firstGlyph, unsigned int lastGlyph,
                                            string const &family, bool bold, bool italic, unsigned int numColumns,
                                            unsigned int tileWidth, float sizeScale, float addLeft, float addTop,
                                            float addRight, float addBottom, bool antiAliased, bool hinted,
                                            bool centered);
/// @}

/// Whether the system has the family, or a font that stands in for it, in that style.
QUILLMARSH_API bool CanGenerateFont(string const &family, bool bold, bool italic);

/// @name Pixels of the drawing service's bitmaps
/// The types are those of Windows' drawing service; on Linux they stand in platform/linux/gdiplus.h.
/// @{

/// Describes the samples of an image, as they are, to the drawing service.
QUILLMARSH_API void GdiplusFillBitmapData(Gdiplus::BitmapData &data, int pixelFormat, ImageBase const &image);
/// Copies all pixels, from the bitmap to the described ones with `read`, else the other way. False if there are none,
/// or if the service refuses.
QUILLMARSH_API bool GdiplusTransferBitmapPixels(Gdiplus::Bitmap &bitmap, Gdiplus::BitmapData &data, bool read);

/// @}

} // namespace quillmarsh

#endif
