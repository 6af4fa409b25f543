// Images from the system's drawing service: glyphs of fonts, and a test image.
#ifndef QUILLMARSH_DATAOBJECTS_FONTIMAGES_H
#define QUILLMARSH_DATAOBJECTS_FONTIMAGES_H

#include <quillmarsh/dataobjects/imagebase.h>

#include <vector>

namespace Gdiplus
{

class Bitmap;
class BitmapData;

} // namespace Gdiplus

namespace quillmarsh
{

/// Fills an image with four opaque quadrants, each with a white letter: red with "R" at the top left, green with "G" at
/// the top right, blue with "B" at the bottom left, black with "A" at the bottom right. Keeps the image's size and
/// format. Does nothing for an empty image, or if "A8R8G8B8" cannot be transferred into its format. Any thread; only
/// one thread may use an image at a time.
QUILLMARSH_API void GenerateRGBATest(ImageBase &image);

/// @name Sheets of glyphs
/// Each glyph is drawn in the middle of a square tile; the tiles are placed row by row from the top left. Glyphs are
/// white with their coverage as alpha, and the background is transparent black. `dst` gets the size of the sheet and
/// keeps its format.
///
/// With `sizeScale` 1, a line of the font is as high as a tile; parts outside a tile are cut off. The four additions,
/// in pixels, move the edges of the glyph's rectangle, which is the tile at first. `antiAliased` smooths the edges;
/// `hinted` fits the glyphs to whole pixels; `centered` centres a glyph horizontally instead of placing it at the left.
///
/// If CanGenerateFont refuses a family, the system's fixed-width font is used, neither bold nor italic. Throws
/// SystemResourceException, "Internal error, failed to create font-family." (on Linux followed by the library that is
/// missing) or "Failed to create gdiplus-font.", and NoMemoryException when the sheet does not fit in memory. Any
/// thread; only one thread may use an image at a time.
/// @{

/// Draws the glyphs of a table of UTF-16 codes; a code without a glyph leaves its tile empty. Asserts "Invalid
/// argument." for a null table or 0 glyphs.
QUILLMARSH_API void GenerateFontGlyphs(ImageBase &dst, unsigned int numGlyphs, unsigned short const *glyphs,
                                       string const &family, bool bold, bool italic, unsigned int numColumns,
                                       unsigned int tileWidth, float sizeScale, float addLeft, float addTop,
                                       float addRight, float addBottom, bool antiAliased, bool hinted, bool centered);
/// Draws the glyphs of all codes from the first to the last.
QUILLMARSH_API void GenerateFontGlyphsAscii(ImageBase &dst, unsigned int firstGlyph, unsigned int lastGlyph,
                                            string const &family, bool bold, bool italic, unsigned int numColumns,
                                            unsigned int tileWidth, float sizeScale, float addLeft, float addTop,
                                            float addRight, float addBottom, bool antiAliased, bool hinted,
                                            bool centered);
/// @}

/// Measures of a font at the size that GenerateFontGlyphs() draws it. A plain record.
struct FontMeasures
{
    /// Height of the em, in pixels.
    float emHeight = 0;
    /// Distance from each glyph to the next on a line, in pixels; 0 for a code without a glyph.
    std::vector<float> advances;
};

/// Measures the glyphs of a table of UTF-16 codes, which may be empty, in a font whose line is `lineHeight` pixels high.
/// Takes the fixed-width font and throws as GenerateFontGlyphs() does. Any thread.
QUILLMARSH_API FontMeasures MeasureFontGlyphs(unsigned int numGlyphs, unsigned short const *glyphs,
                                              string const &family, bool bold, bool italic, float lineHeight,
                                              bool antiAliased, bool hinted);

/// True when the system has the family, or a substitute for it, in this style.
QUILLMARSH_API bool CanGenerateFont(string const &family, bool bold, bool italic);

/// @name Pixels of the drawing service's bitmaps
/// The types belong to Windows' drawing service; on Linux, platform/linux/gdiplus.h declares them.
/// @{

/// Describes the samples of an image to the drawing service, without a copy.
QUILLMARSH_API void GdiplusFillBitmapData(Gdiplus::BitmapData &data, int pixelFormat, ImageBase const &image);
/// Copies all pixels: with `read` from the bitmap to the described pixels, else the other way. False if there are no
/// pixels, or if the service refuses.
QUILLMARSH_API bool GdiplusTransferBitmapPixels(Gdiplus::Bitmap &bitmap, Gdiplus::BitmapData &data, bool read);

/// @}

} // namespace quillmarsh

#endif
