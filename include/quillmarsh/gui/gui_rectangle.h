// Rectangles of the GUI: plain, with colours, and with a part of a texture.
#ifndef QUILLMARSH_GUI_GUI_RECTANGLE_H
#define QUILLMARSH_GUI_GUI_RECTANGLE_H

#include <quillmarsh/mathtools/color4b.h>
#include <quillmarsh/mathtools/vector2.h>

namespace quillmarsh::gui
{

struct VertexCT;

/// Rectangle in window pixels, with y down. A plain record: any thread.
struct QUILLMARSH_API Rectangle
{
    float x;
    float y;
    float width;
    float height;

    /// Leaves the fields unset.
    Rectangle() = default;
    constexpr Rectangle(float newX, float newY, float newWidth, float newHeight)
        : x(newX),
          y(newY),
          width(newWidth),
          height(newHeight)
    {
    }
    constexpr Rectangle(vec2 const &position, vec2 const &size) : Rectangle(position.x, position.y, size.x, size.y) {}

    /// @name Fields
    /// @{
    void Set(float newX, float newY, float newWidth, float newHeight);
    void Set(vec2 const &position, vec2 const &size);
    void SetPosition(float newX, float newY);
    void SetPosition(vec2 const &position);
    void SetSize(float newWidth, float newHeight);
    void SetSize(vec2 const &size);
    void CopyGeometryParamsFrom(Rectangle const &other) { *this = other; }
    /// @}

    /// @name Changes
    /// @{
    void Offset(float deltaX, float deltaY);
    void Offset(vec2 const &delta);
    /// Moves each edge outwards by `distance`.
    void Grow(float distance);
    /// Moves each edge inwards by `distance`. A width of at most twice the distance stays, and so does a height of less
    /// than twice the distance.
    void Shrink(float distance);
    /// @}

    /// @name Tests
    /// The edges belong to the rectangle.
    /// @{
    bool HitTest(float pointX, float pointY) const;
    bool HitTest(vec2 const &point) const { return HitTest(point.x, point.y); }
    bool Intersects(Rectangle const &other) const;
    bool Contains(Rectangle const &other) const;
    /// @}
};

/// Rectangle with a colour in each corner.
struct QUILLMARSH_API RectangleC : Rectangle
{
    color4b colorTopLeft;
    color4b colorTopRight;
    color4b colorBottomLeft;
    color4b colorBottomRight;

    /// Leaves the fields unset.
    RectangleC() = default;
    /// Sets all four colours.
    RectangleC(Rectangle const &rectangle, color4b color) : Rectangle(rectangle) { SetColor(color); }

    /// @name Colours
    /// Each operation sets the corners of its name; SetColor() sets all.
    /// @{
    void SetColor(color4b color);
    void SetColorLeft(color4b color);
    void SetColorRight(color4b color);
    void SetColorTop(color4b color);
    void SetColorBottom(color4b color);
    void CopyColorParamsFrom(RectangleC const &other);
    /// @}
};

/// Rectangle with colours and a part of a texture.
struct QUILLMARSH_API RectangleCT : RectangleC
{
    /// How the part of the texture is turned.
    enum eTexTransform : unsigned int
    {
        e_tex_none = 0,
        /// Left and right are swapped.
        e_tex_mirror_h,
        /// Top and bottom are swapped.
        e_tex_mirror_v,
        /// A quarter turn against the clock.
        e_tex_rotate_a,
        /// Half a turn.
        e_tex_rotate_b,
        /// A quarter turn with the clock.
        e_tex_rotate_c
    };

    /// @name Part of the texture
    /// In texture coordinates: 0 to 1 is the whole texture, with V down.
    /// @{
    float uMin;
    float uMax;
    float vMin;
    float vMax;
    /// @}
    eTexTransform TexTransform = e_tex_none;

    /// Leaves all fields but TexTransform unset.
    RectangleCT() = default;
    /// Shows the whole texture in one colour.
    RectangleCT(Rectangle const &rectangle, color4b color) : RectangleC(rectangle, color) { SetStandardTexCoords(); }

    /// Selects the whole texture.
    void SetStandardTexCoords();
    void SetTexTransform(eTexTransform transform) { TexTransform = transform; }
    /// Copies the part of the texture, without TexTransform.
    void CopyTexCoordParamsFrom(RectangleCT const &other);
    /// Sets the texture coordinates of the four corners. An unknown TexTransform sets none.
    void FillTransformedTexCoords(VertexCT &topLeft, VertexCT &topRight, VertexCT &bottomLeft,
                                  VertexCT &bottomRight) const;
};

} // namespace quillmarsh::gui

#endif
