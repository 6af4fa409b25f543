// The marks of a GUI: check, arrows, signs, cursors.
#ifndef QUILLMARSH_PLUGINS_LOOK_SHAPES_MARKS_H
#define QUILLMARSH_PLUGINS_LOOK_SHAPES_MARKS_H

#include "shapes.h"

namespace look_shapes
{

/// A mark, in a square of 16 by 16 units.
enum class eMark : unsigned int
{
    e_check,
    e_dot,
    e_dash,
    e_arrowLeft,
    e_arrowRight,
    e_arrowUp,
    e_arrowDown,
    e_close,
    e_minus,
    e_plus,
    e_folder,
    e_folderUp,
    e_file,
    e_picture,
    e_volume,
    e_signal,
    e_drive,
    e_magnifier,
    e_settings,
    e_information,
    e_warning,
    e_question,
    e_error,
    e_grip,
    e_caret,
    e_cursorArrow,
    e_cursorMove,
    e_cursorHorizontal,
    e_cursorRising,
    e_cursorStop,
    e_cursorHand,
    e_cursorSplit
};
/// Number of marks.
inline constexpr unsigned int s_numMarks = static_cast<unsigned int>(eMark::e_cursorSplit) + 1;
/// Side of a mark, in units.
inline constexpr float s_markSize = 16;

/// Returns the shapes of a mark.
std::span<Shape const> GetMark(eMark mark);

/// Draws a mark into a square of `size` by `size` pixels.
void DrawMark(Sheet &sheet, unsigned int x, unsigned int y, eMark mark, unsigned int size);

} // namespace look_shapes

#endif
