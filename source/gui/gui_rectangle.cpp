#include <quillmarsh/gui/gui_rectangle.h>

#include <quillmarsh/gui/gui_vertices.h>

#include <iterator>

namespace quillmarsh::gui
{

void Rectangle::Set(float newX, float newY, float newWidth, float newHeight)
{
    *this = Rectangle(newX, newY, newWidth, newHeight);
}

void Rectangle::Set(vec2 const &position, vec2 const &size)
{
    *this = Rectangle(position, size);
}

void Rectangle::SetPosition(float newX, float newY)
{
    x = newX;
    y = newY;
}

void Rectangle::SetPosition(vec2 const &position)
{
    SetPosition(position.x, position.y);
}

void Rectangle::SetSize(float newWidth, float newHeight)
{
    width = newWidth;
    height = newHeight;
}

void Rectangle::SetSize(vec2 const &size)
{
    SetSize(size.x, size.y);
}

void Rectangle::Offset(float deltaX, float deltaY)
{
    x += deltaX;
    y += deltaY;
}

void Rectangle::Offset(vec2 const &delta)
{
    Offset(delta.x, delta.y);
}

void Rectangle::Grow(float distance)
{
    x -= distance;
    y -= distance;
    width += 2 * distance;
    height += 2 * distance;
}

void Rectangle::Shrink(float distance)
{
    // A height may become 0, a width may not.
    if (2 * distance < width)
    {
        x += distance;
        width -= 2 * distance;
    }
    if (2 * distance <= height)
    {
        y += distance;
        height -= 2 * distance;
    }
}

bool Rectangle::HitTest(float pointX, float pointY) const
{
    return x <= pointX && pointX <= x + width && y <= pointY && pointY <= y + height;
}

namespace
{

bool SpansIntersect(float beginA, float sizeA, float beginB, float sizeB)
{
    return beginA < beginB ? beginA + sizeA >= beginB : beginB + sizeB >= beginA;
}

bool SpanContains(float outerBegin, float outerSize, float begin, float size)
{
    return outerBegin <= begin && begin + size <= outerBegin + outerSize;
}

} // namespace

bool Rectangle::Intersects(Rectangle const &other) const
{
    return SpansIntersect(x, width, other.x, other.width) && SpansIntersect(y, height, other.y, other.height);
}

bool Rectangle::Contains(Rectangle const &other) const
{
    return SpanContains(x, width, other.x, other.width) && SpanContains(y, height, other.y, other.height);
}

void RectangleC::SetColor(color4b color)
{
    SetColorTop(color);
    SetColorBottom(color);
}

void RectangleC::SetColorLeft(color4b color)
{
    colorTopLeft = colorBottomLeft = color;
}

void RectangleC::SetColorRight(color4b color)
{
    colorTopRight = colorBottomRight = color;
}

void RectangleC::SetColorTop(color4b color)
{
    colorTopLeft = colorTopRight = color;
}

void RectangleC::SetColorBottom(color4b color)
{
    colorBottomLeft = colorBottomRight = color;
}

void RectangleC::CopyColorParamsFrom(RectangleC const &other)
{
    colorTopLeft = other.colorTopLeft;
    colorTopRight = other.colorTopRight;
    colorBottomLeft = other.colorBottomLeft;
    colorBottomRight = other.colorBottomRight;
}

void RectangleCT::SetStandardTexCoords()
{
    uMin = vMin = 0;
    uMax = vMax = 1;
}

void RectangleCT::CopyTexCoordParamsFrom(RectangleCT const &other)
{
    uMin = other.uMin;
    uMax = other.uMax;
    vMin = other.vMin;
    vMax = other.vMax;
}

void RectangleCT::FillTransformedTexCoords(VertexCT &topLeft, VertexCT &topRight, VertexCT &bottomLeft,
                                           VertexCT &bottomRight) const
{
    // The corner of the texture in each corner of the rectangle: top left, top right, bottom left, bottom right.
    enum eCorner
    {
        e_tl,
        e_tr,
        e_bl,
        e_br
    };
    static constexpr eCorner s_corners[][4] = {
        {e_tl, e_tr, e_bl, e_br}, // none
        {e_tr, e_tl, e_br, e_bl}, // mirror_h
        {e_bl, e_br, e_tl, e_tr}, // mirror_v
        {e_tr, e_br, e_tl, e_bl}, // rotate_a
        {e_br, e_bl, e_tr, e_tl}, // rotate_b
        {e_bl, e_tl, e_br, e_tr}, // rotate_c
    };
    if (TexTransform >= std::size(s_corners))
        return;
    vec2 const corners[] = {{uMin, vMin}, {uMax, vMin}, {uMin, vMax}, {uMax, vMax}};
    auto const &row = s_corners[TexTransform];
    topLeft.texCoord = corners[row[0]];
    topRight.texCoord = corners[row[1]];
    bottomLeft.texCoord = corners[row[2]];
    bottomRight.texCoord = corners[row[3]];
}

} // namespace quillmarsh::gui
