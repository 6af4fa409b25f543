// Seam: drawing on pixels in memory, and text in the fonts of the system.
#ifndef QUILLMARSH_SOURCE_PLATFORM_DRAWING_H
#define QUILLMARSH_SOURCE_PLATFORM_DRAWING_H

#include <quillmarsh/platform/types.h>

#include "source/platform/pixelrows.h"

#include <cstdint>
#include <vector>

namespace quillmarsh::platform::drawing
{

/// @name The service
/// Between Start() and Stop(), which nest, everything here can be used. Start() is false when the service cannot be had.
/// Any thread.
/// @{
bool Start(std::uintptr_t &token);
void Stop(std::uintptr_t token);
/// @}

/// Opaque colour.
struct Color
{
    unsigned char red;
    unsigned char green;
    unsigned char blue;
};

/// Rectangle in pixels.
template<typename T>
struct RectOf
{
    T x;
    T y;
    T width;
    T height;
};
using Rect = RectOf<int>;
using RectF = RectOf<float>;

/// @name Faces
/// Any thread.
/// @{

/// What a font is chosen by.
struct FontFace
{
    string family;
    bool bold = false;
    bool italic = false;
};

/// True when the system has the family, or one that stands in for it, in that style.
bool HasFace(FontFace const &face);

/// Adds the names of all installed families, in no order, some more than once. False on failure. Needs no Start().
bool ReadFamilyNames(std::vector<string> &names);

/// Face of equal widths, neither bold nor italic. Its family is empty when the system has no fonts at all.
FontFace GetMonospaceFace();

/// Heights of a line, in units of which the em has `em`.
struct FaceHeights
{
    int em = 0;
    int ascent = 0;
    int descent = 0;
};

/// All 0 for a face that is not there.
FaceHeights MeasureFace(FontFace const &face);

/// @}

/// How the edges of glyphs are drawn.
struct GlyphEdges
{
    /// With coverages between none and all.
    bool antiAliased = true;
    /// Fitted to whole pixels.
    bool hinted = true;
};

/// A face in a size, with its measures, each of which is taken once. For the thread that made it.
///
/// Text is UTF-16. A character that cannot be printed has no width, and nothing is drawn for it; Windows shows boxes in
/// the place of some.
class Font : NoCopy
{
public:
    /// `size` is that of the em in pixels.
    Font(FontFace const &face, float size, GlyphEdges edges = {});
    ~Font();

    /// False when the face is not there, or the size is not one that a font can have; nothing else is to be called then.
    bool IsValid() const { return state_ != nullptr; }

    /// @name Measures in pixels
    /// @{
    float GetAscent() const;
    float GetDescent() const;
    /// From one line of text to the next.
    float GetLineHeight() const;
    /// Width that a character takes on a line by itself.
    float GetAdvance(unsigned short character);
    /// Width that a text takes on a line. Less than the sum of advances where the font moves pairs closer together.
    float MeasureText(wstring const &text);
    /// @}

private:
    friend class Canvas;
    struct State;

    AutoPtr<State> state_;
};

/// Draws on pixels, which must stay until the canvas is gone. One thread at a time; pixels are complete when it is gone.
class Canvas : NoCopy
{
public:
    explicit Canvas(PixelRows const &pixels);
    ~Canvas();

    /// Nothing outside is drawn on from now on; all of the pixels at first.
    void SetClip(Rect const &rect);
    void Clear(Color color);
    void FillRectangle(Rect const &rect, Color color);
    /// Draws one line in the vertical middle of the rectangle, from its left edge or in its horizontal middle. Only the
    /// clipping rectangle cuts it off.
    void DrawText(wstring const &text, Font &font, RectF const &layout, bool centered, Color color);

private:
    struct State;

    AutoPtr<State> state_;
};

} // namespace quillmarsh::platform::drawing

#endif
