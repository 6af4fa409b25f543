// Seam: drawing into pixels in memory, and text in the system's fonts.
#ifndef QUILLMARSH_SOURCE_PLATFORM_DRAWING_H
#define QUILLMARSH_SOURCE_PLATFORM_DRAWING_H

#include <quillmarsh/platform/types.h>

#include <quillmarsh/platform/pixelrows.h>

#include <cstdint>
#include <vector>

namespace quillmarsh::platform::drawing
{

/// @name The service
/// The other functions work only between Start() and Stop(), which can be nested. Start() returns false when the system
/// has no drawing service. Any thread.
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

/// Position in pixels.
struct PointF
{
    float x;
    float y;
};

/// @name Faces
/// Any thread.
/// @{

/// Family and style of a font.
struct FontFace
{
    string family;
    bool bold = false;
    bool italic = false;
};

/// True when the system has the family, or a substitute for it, in that style.
bool HasFace(FontFace const &face);

/// Appends the names of all installed families, in no particular order, some of them twice. Returns false on failure.
/// Works without Start().
bool ReadFamilyNames(std::vector<string> &names);

/// Returns the system's monospace face, neither bold nor italic. Its family is empty when no fonts are installed.
FontFace GetMonospaceFace();

/// Heights of a line in the font's design units; `em` is the em in these units.
struct FaceHeights
{
    int em = 0;
    int ascent = 0;
    int descent = 0;
};

/// Returns why the system has no faces at all, as a sentence for users; empty when it has some, or gives no reason.
string FindTextFailure();

/// Measures a face; all heights are 0 when the system does not have it.
FaceHeights MeasureFace(FontFace const &face);

/// @}

/// How the edges of glyphs are rendered.
struct GlyphEdges
{
    /// Pixels on an edge may be covered in part.
    bool antiAliased = true;
    /// Outlines are fitted to whole pixels.
    bool hinted = true;
};

/// A face in one size, with its measures, each of which is taken only once. Only the thread that made it may use it.
///
/// Text is UTF-16. A character that cannot be printed has no width and is not drawn; Windows shows a box for some of
/// these.
class Font : NoCopy
{
public:
    /// Makes a font whose em has `size` pixels.
    Font(FontFace const &face, float size, GlyphEdges edges = {});
    ~Font();

    /// False when the system does not have the face, or the size is out of range. Nothing else may be called then.
    bool IsValid() const { return state_ != nullptr; }

    /// @name Measures in pixels
    /// @{
    float GetAscent() const;
    float GetDescent() const;
    /// Returns the distance from one line of text to the next.
    float GetLineHeight() const;
    /// Returns the width of a single character on a line.
    float GetAdvance(unsigned short character);
    /// Returns the width of a text on a line. Kerning can make it smaller than the sum of the advances.
    float MeasureText(wstring const &text);
    /// @}

private:
    friend class Canvas;
    struct State;

    AutoPtr<State> state_;
};

/// Draws into pixels, which must outlive the canvas and are complete once it is destroyed. One thread at a time.
class Canvas : NoCopy
{
public:
    explicit Canvas(PixelRows const &pixels);
    ~Canvas();

    /// Limits all further drawing to a rectangle. A new canvas has no limit.
    void SetClip(Rect const &rect);
    void Clear(Color color);
    void FillRectangle(Rect const &rect, Color color);
    /// Draws a line with smooth edges and flat ends. Whole coordinates are the corners of pixels.
    void DrawLine(PointF const &from, PointF const &to, float width, Color color);
    /// Draws one line of text, centred vertically in `layout`, and horizontally too with `centered`; otherwise it
    /// begins at the left edge. Text may run past `layout`; only the clipping rectangle cuts it off.
    void DrawText(wstring const &text, Font &font, RectF const &layout, bool centered, Color color);

private:
    struct State;

    AutoPtr<State> state_;
};

} // namespace quillmarsh::platform::drawing

#endif
