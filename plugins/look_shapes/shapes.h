// Shapes, and the coverage of pixels by them.
#ifndef QUILLMARSH_PLUGINS_LOOK_SHAPES_SHAPES_H
#define QUILLMARSH_PLUGINS_LOOK_SHAPES_SHAPES_H

#include "sheet.h"

#include <span>

namespace look_shapes
{

/// Kind of a shape, and the meaning of its numbers. A frame and a ring are lines of a width, whose middle is the edge
/// of the box or disc.
enum class eShape
{
    e_disc,    ///< middle x, y, radius
    e_ring,    ///< middle x, y, radius, width
    e_box,     ///< left, top, right, bottom, radius of the corners
    e_frame,   ///< left, top, right, bottom, radius of the corners, width
    e_stroke,  ///< from x, y, to x, y, width; with round ends
    e_triangle ///< three corners x, y, and the radius by which the triangle grows
};

/// A shape in units. The ones of a drawing are put together in their order.
struct Shape
{
    eShape kind;
    /// Takes its area away from the shapes before it.
    bool cuts;
    float numbers[7];
};

/// Draws shapes into an area, whose top left corner is (0, 0), and outside of which nothing is drawn. The coverage of a
/// pixel on an edge is that of 16 by 16 points in it; it is the same on every system.
void DrawShapes(Sheet &sheet, Area const &area, std::span<Shape const> shapes, float pixelsPerUnit);

/// @name Parts of rounded rectangles
/// The top left quarters, in squares from a pixel of the sheet on; the other quarters are mirror images.
/// @{

/// Draws a quarter of a disc of this radius in pixels.
void DrawCorner(Sheet &sheet, unsigned int x, unsigned int y, unsigned int radius);
/// Draws a quarter of a ring of this outer radius, and this width of the line.
void DrawRingCorner(Sheet &sheet, unsigned int x, unsigned int y, unsigned int radius, unsigned int width);
/// Draws the quarter of a soft shadow: 255 at the lower right corner of the square, falling to 0 at `radius` from it.
void DrawShadowCorner(Sheet &sheet, unsigned int x, unsigned int y, unsigned int radius);
/// @}

} // namespace look_shapes

#endif
