#include "marks.h"

#include <array>
#include <cstddef>

namespace look_shapes
{
namespace
{

constexpr Shape Disc(float x, float y, float radius)
{
    return {eShape::e_disc, false, {x, y, radius}};
}
constexpr Shape Ring(float x, float y, float radius, float width)
{
    return {eShape::e_ring, false, {x, y, radius, width}};
}
constexpr Shape Box(float left, float top, float right, float bottom, float radius)
{
    return {eShape::e_box, false, {left, top, right, bottom, radius}};
}
constexpr Shape Stroke(float x0, float y0, float x1, float y1, float width)
{
    return {eShape::e_stroke, false, {x0, y0, x1, y1, width}};
}
constexpr Shape Triangle(float x0, float y0, float x1, float y1, float x2, float y2, float radius)
{
    return {eShape::e_triangle, false, {x0, y0, x1, y1, x2, y2, radius}};
}
constexpr Shape Cut(Shape shape)
{
    shape.cuts = true;
    return shape;
}

// Widths of lines: of marks, and of what is cut out of a sign.
constexpr float s_line = 1.7f;
constexpr float s_gap = 1.7f;

constexpr Shape s_check[] = {Stroke(3.6f, 8.4f, 6.6f, 11.4f, 1.9f), Stroke(6.6f, 11.4f, 12.4f, 4.8f, 1.9f)};
constexpr Shape s_dot[] = {Disc(8, 8, 3.5f)};
constexpr Shape s_dash[] = {Box(4, 7, 12, 9, 1)};
constexpr Shape s_arrowLeft[] = {Stroke(9.75f, 4, 5.75f, 8, s_line), Stroke(5.75f, 8, 9.75f, 12, s_line)};
constexpr Shape s_arrowRight[] = {Stroke(6.25f, 4, 10.25f, 8, s_line), Stroke(10.25f, 8, 6.25f, 12, s_line)};
constexpr Shape s_arrowUp[] = {Stroke(4, 9.75f, 8, 5.75f, s_line), Stroke(8, 5.75f, 12, 9.75f, s_line)};
constexpr Shape s_arrowDown[] = {Stroke(4, 6.25f, 8, 10.25f, s_line), Stroke(8, 10.25f, 12, 6.25f, s_line)};
constexpr Shape s_close[] = {Stroke(4.5f, 4.5f, 11.5f, 11.5f, s_line), Stroke(11.5f, 4.5f, 4.5f, 11.5f, s_line)};
constexpr Shape s_minus[] = {Box(3, 7, 13, 9, 0.6f)};
constexpr Shape s_plus[] = {Box(3, 7, 13, 9, 0.6f), Box(7, 3, 9, 13, 0.6f)};

constexpr Shape s_folder[] = {Box(1, 3, 7.5f, 8, 1.2f), Box(1, 4.5f, 15, 10, 1.2f), Cut(Box(0, 6, 16, 7, 0)),
                              Box(1, 7, 15, 13, 1.2f)};
constexpr Shape s_folderUp[] = {Box(1, 3, 7.5f, 8, 1.2f), Box(1, 4.5f, 15, 13, 1.2f), Cut(Stroke(8, 7, 8, 11.2f, 1.4f)),
                                Cut(Stroke(8, 7, 5.8f, 9.2f, 1.4f)), Cut(Stroke(8, 7, 10.2f, 9.2f, 1.4f))};
constexpr Shape s_file[] = {Box(3, 1, 13, 15, 1.2f),   Cut(Triangle(9, 0, 14, 0, 14, 5, 0)), Cut(Box(8, 0, 9, 6, 0)),
                            Cut(Box(8, 5, 14, 6, 0)),  Triangle(9, 1.6f, 9, 5, 12.4f, 5, 0), Cut(Box(5, 8, 11, 9, 0)),
                            Cut(Box(5, 11, 11, 12, 0))};
constexpr Shape s_picture[] = {Box(1, 3, 15, 13, 1.4f), Cut(Box(2.4f, 4.4f, 13.6f, 11.6f, 0.4f)),
                               Disc(5.4f, 6.9f, 1.2f), Triangle(5, 11.8f, 9.6f, 7, 13.6f, 11.8f, 0)};
constexpr Shape s_volume[] = {Box(1, 1, 11, 11, 1.2f), Cut(Box(3, 3, 13, 13, 1.2f)), Box(3, 3, 13, 13, 1.2f),
                              Cut(Box(4, 4, 16, 16, 1.2f)), Box(5, 5, 15, 15, 1.2f)};
constexpr Shape s_signal[] = {Stroke(1.5f, 8, 4, 8, 1.5f), Stroke(4, 8, 6, 3, 1.5f), Stroke(6, 3, 9.5f, 13, 1.5f),
                              Stroke(9.5f, 13, 11.5f, 8, 1.5f), Stroke(11.5f, 8, 14.5f, 8, 1.5f)};
constexpr Shape s_settings[] = {
    Box(1.5f, 4, 14.5f, 5.5f, 0.7f), Cut(Disc(10, 4.75f, 3.2f)), Disc(10, 4.75f, 2.2f), Box(1.5f, 10.5f, 5, 12, 0.7f),
    Box(9, 10.5f, 14.5f, 12, 0.7f),  Cut(Disc(6, 11.25f, 3.2f)), Disc(6, 11.25f, 2.2f)};
constexpr Shape s_drive[] = {Box(1, 4, 15, 12, 1.6f), Cut(Disc(12, 8, 1.2f)), Cut(Box(3, 7.5f, 8, 8.5f, 0.5f))};
constexpr Shape s_magnifier[] = {Ring(7, 7, 4.25f, 1.6f), Stroke(10.4f, 10.4f, 13.6f, 13.6f, 2)};
constexpr Shape s_information[] = {Disc(8, 8, 7), Cut(Disc(8, 4.6f, 1.15f)), Cut(Box(7, 7, 9, 12.2f, 0.9f))};
constexpr Shape s_warning[] = {Triangle(8, 2.2f, 14, 12.8f, 2, 12.8f, 1.2f), Cut(Box(7.1f, 5.2f, 8.9f, 10, 0.9f)),
                               Cut(Disc(8, 11.9f, 1.1f))};
constexpr Shape s_question[] = {Disc(8, 8, 7),
                                Cut(Stroke(5.9f, 6.2f, 6.2f, 5.2f, s_gap)),
                                Cut(Stroke(6.2f, 5.2f, 7, 4.5f, s_gap)),
                                Cut(Stroke(7, 4.5f, 8, 4.3f, s_gap)),
                                Cut(Stroke(8, 4.3f, 9, 4.5f, s_gap)),
                                Cut(Stroke(9, 4.5f, 9.8f, 5.2f, s_gap)),
                                Cut(Stroke(9.8f, 5.2f, 10, 6.2f, s_gap)),
                                Cut(Stroke(10, 6.2f, 9.6f, 7.1f, s_gap)),
                                Cut(Stroke(9.6f, 7.1f, 8.4f, 8, s_gap)),
                                Cut(Stroke(8.4f, 8, 8, 9.2f, s_gap)),
                                Cut(Disc(8, 11.8f, 1.1f))};
constexpr Shape s_error[] = {Disc(8, 8, 7), Cut(Stroke(5.5f, 5.5f, 10.5f, 10.5f, s_gap)),
                             Cut(Stroke(10.5f, 5.5f, 5.5f, 10.5f, s_gap))};
constexpr Shape s_grip[] = {Stroke(14, 5, 5, 14, 1.2f), Stroke(14, 8.5f, 8.5f, 14, 1.2f), Stroke(14, 12, 12, 14, 1.2f)};
constexpr Shape s_caret[] = {Box(7.25f, 2, 8.75f, 14, 0.4f), Box(5, 1, 11, 2.5f, 0.6f), Box(5, 13.5f, 11, 15, 0.6f)};

constexpr Shape s_cursorArrow[] = {Triangle(0.9f, 0.9f, 0.9f, 12.5f, 9.2f, 9.1f, 0.4f),
                                   Stroke(4.6f, 8.4f, 6.8f, 13.6f, 2.4f)};
constexpr Shape s_cursorMove[] = {Stroke(2, 8, 14, 8, 1.6f),
                                  Stroke(8, 2, 8, 14, 1.6f),
                                  Triangle(8, 0.8f, 10.6f, 4, 5.4f, 4, 0.3f),
                                  Triangle(8, 15.2f, 10.6f, 12, 5.4f, 12, 0.3f),
                                  Triangle(0.8f, 8, 4, 5.4f, 4, 10.6f, 0.3f),
                                  Triangle(15.2f, 8, 12, 5.4f, 12, 10.6f, 0.3f)};
constexpr Shape s_cursorHorizontal[] = {Stroke(3, 8, 13, 8, 1.8f), Triangle(1, 8, 5, 4.4f, 5, 11.6f, 0.4f),
                                        Triangle(15, 8, 11, 4.4f, 11, 11.6f, 0.4f)};
constexpr Shape s_cursorRising[] = {Stroke(4.5f, 11.5f, 11.5f, 4.5f, 1.8f),
                                    Triangle(13, 3, 12.4f, 8.2f, 7.8f, 3.6f, 0.4f),
                                    Triangle(3, 13, 8.2f, 12.4f, 3.6f, 7.8f, 0.4f)};
constexpr Shape s_cursorStop[] = {Ring(8, 8, 6, 2), Stroke(3.9f, 3.9f, 12.1f, 12.1f, 2)};
constexpr Shape s_cursorHand[] = {Box(5.2f, 0.8f, 7.4f, 10, 1.1f),  Box(7.4f, 5.4f, 9.4f, 10, 1),
                                  Box(9.4f, 6, 11.4f, 10, 1),       Box(11.4f, 6.8f, 13.2f, 10, 0.9f),
                                  Box(5.2f, 7.6f, 13.2f, 15, 2.6f), Stroke(3.4f, 8.6f, 6.4f, 12.6f, 2)};
constexpr Shape s_cursorSplit[] = {Box(6, 2, 7.2f, 14, 0.3f), Box(8.8f, 2, 10, 14, 0.3f),
                                   Triangle(1, 8, 4.4f, 5, 4.4f, 11, 0.3f), Triangle(15, 8, 11.6f, 5, 11.6f, 11, 0.3f)};

constexpr std::array<std::span<Shape const>, s_numMarks> s_marks = {
    s_check, s_dot,         s_dash,       s_arrowLeft,        s_arrowRight,   s_arrowUp,    s_arrowDown,  s_close,
    s_minus, s_plus,        s_folder,     s_folderUp,         s_file,         s_picture,    s_volume,     s_signal,
    s_drive, s_magnifier,   s_settings,   s_information,      s_warning,      s_question,   s_error,      s_grip,
    s_caret, s_cursorArrow, s_cursorMove, s_cursorHorizontal, s_cursorRising, s_cursorStop, s_cursorHand, s_cursorSplit,
};

} // namespace

std::span<Shape const> GetMark(eMark mark)
{
    auto const index = static_cast<std::size_t>(mark);
    return index < s_marks.size() ? s_marks[index] : std::span<Shape const>();
}

void DrawMark(Sheet &sheet, unsigned int x, unsigned int y, eMark mark, unsigned int size)
{
    DrawShapes(sheet, {x, y, size, size}, GetMark(mark), static_cast<float>(size) / s_markSize);
}

} // namespace look_shapes
