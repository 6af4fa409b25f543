// Sizes that all widgets share, and how texts are measured.
#ifndef QUILLMARSH_WIDGETS_MEASURES_H
#define QUILLMARSH_WIDGETS_MEASURES_H

#include <quillmarsh/gui/gui_drawparams.h>
#include <quillmarsh/mathtools/vector2.h>
#include <quillmarsh/platform/types.h>

namespace quillmarsh::gui
{
class Component;
}

namespace quillmarsh::widgets
{

/// Sizes that all widgets share. Everything stands on a grid of units; one unit is one pixel at scale 1. A look sets the
/// scale. Frame thread only.
class QUILLMARSH_API Measures
{
public:
    /// @name Sizes in units
    /// @{
    /// Step of the grid.
    static constexpr float Grid = 4;
    /// Distance between two widgets.
    static constexpr float Gap = 8;
    /// Distance between a panel's edge and its content.
    static constexpr float Margin = 12;
    /// Height of buttons, fields, tabs.
    static constexpr float ControlHeight = 28;
    /// Height of a row in lists and menus.
    static constexpr float RowHeight = 24;
    static constexpr float TitleHeight = 32;
    /// Width and height of marks.
    static constexpr float MarkSize = 16;
    /// Distance between the frame of a widget and its text.
    static constexpr float TextMargin = 8;
    static constexpr float ScrollBarWidth = 12;
    static constexpr float MinThumbLength = 24;
    /// Width of the edge by which a panel is resized.
    static constexpr float ResizeEdge = 6;
    static constexpr float SplitterWidth = 6;
    /// @}

    /// Pixels of a unit; 1 at first.
    static float GetScale();
    /// Sets the scale within 0.5 and 4, and reports the geometry of all top-level components dirty.
    static void SetScale(float scale);
    /// Returns the pixels of a number of units, rounded to a whole number: at least 1 for more than 0 units.
    static float Pixels(float units);
    /// The same for both directions.
    static vec2 Pixels(vec2 const &units) { return {Pixels(units.x), Pixels(units.y)}; }
};

/// @name Texts of a component
/// Measured by font and metrics of the component's shader. Without a shader or a font, which is so until the first
/// synchronisation, a glyph counts as half as wide as high. All in pixels. Texts are glyph codes; see textencoding.h.
/// Frame thread only.
/// @{
/// Returns the height of a line.
QUILLMARSH_API float GetTextHeight(gui::Component const &component);
/// Returns the distance between two lines.
QUILLMARSH_API float GetLineHeight(gui::Component const &component);
/// Returns the width of one line, rounded up.
QUILLMARSH_API float CalcTextWidth(gui::Component const &component, string const &text);
/// Returns the size of a text with line feeds, rounded up; the lines of an empty text count as one.
QUILLMARSH_API vec2 CalcTextSize(gui::Component const &component, string const &text);
/// Breaks a text between words, or inside a word that is wider than a line, so that no line is wider than `width`; its
/// own line feeds stay.
QUILLMARSH_API string WrapText(gui::Component const &component, string const &text, float width);
/// Returns a line that is at most `width` wide: the whole one, or its beginning with three dots behind it; nothing where
/// not even these fit.
QUILLMARSH_API string ShortenText(gui::Component const &component, string const &line, float width);
/// Returns the number of glyphs ahead of a place in a line: the boundary between two glyphs that is nearest to `x`.
QUILLMARSH_API unsigned int FindTextPosition(gui::Component const &component, string const &line, float x);
/// @}

} // namespace quillmarsh::widgets

#endif
