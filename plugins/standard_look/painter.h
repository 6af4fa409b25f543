// Draws the pieces that the look's pictures of widgets are made of.
#ifndef QUILLMARSH_PLUGINS_STANDARD_LOOK_PAINTER_H
#define QUILLMARSH_PLUGINS_STANDARD_LOOK_PAINTER_H

#include "sheetfont.h"
#include "themes.h"

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_renderer.h>
#include <quillmarsh/widgets/measures.h>

namespace standard_look
{

using gui::Rectangle;
using quillmarsh::vec2;
using widgets::Measures;

/// Which corners of a rectangle are round.
enum eCorners : unsigned int
{
    e_corners_top = 3,
    e_corners_all = 15
};

/// Draws for one component. Everything stands at whole pixels, and comes from the sheet of the text font, so that a
/// whole GUI needs few draw calls. It allocates nothing.
class Painter
{
public:
    /// What a shader draws with. `sheet` and `font` may be null while there are none: then no shapes, or no texts, are
    /// drawn.
    struct Tools
    {
        Theme const &theme;
        SheetFont const *sheet;
        gui::Font const *font;
        gui::TextMetrics const &metrics;
        /// For details, at the right end of rows.
        SheetFont const *smallFont;
    };

    Painter(gui::Renderer &renderer, gui::Component const &component, Tools const &tools)
        : renderer_(renderer),
          component_(component),
          tools_(tools)
    {
    }

    Ink const &GetInk(eInk ink) const { return tools_.theme.inks[ink]; }
    Signals const &GetSignals() const { return tools_.theme.signals; }
    gui::TextMetrics const &GetMetrics() const { return tools_.metrics; }
    /// Rectangle of the component, at (0, 0).
    Rectangle GetArea() const { return {{0, 0}, component_.GetSize()}; }
    static float Pixels(float units) { return Measures::Pixels(units); }

    /// @name Shapes
    /// @{
    void Fill(Rectangle const &area, color4b color);
    void FillRound(Rectangle const &area, ePart corner, color4b color, eCorners corners = e_corners_all);
    void DrawRing(Rectangle const &area, ePart ring, color4b color);
    /// Draws surface and frame of an ink.
    void DrawBox(Rectangle const &area, ePart corner, ePart ring, Ink const &ink);
    /// Draws the ring of the focus around a rectangle with round corners: e_part_focus7 around corners of 4 units.
    void DrawFocus(Rectangle const &area, ePart ring = e_part_focus7);
    /// Draws a soft shadow around and below a rectangle.
    void DrawShadow(Rectangle const &area);
    void DrawPart(ePart part, Rectangle const &area, color4b color);
    /// Draws a mark in the middle of an area.
    void DrawMark(widgets::eMark mark, Rectangle const &area, color4b color);
    /// @}

    /// @name Texts
    /// One line in the middle of the height of an area. What is too wide ends with three dots.
    /// @{
    void DrawText(string const &glyphs, Rectangle const &area, color4b color, float alignment = 0);
    void DrawSmallText(string const &glyphs, Rectangle const &area, color4b color, float alignment);
    /// Draws at a place, whatever the width is.
    void DrawTextAt(char const *glyphs, std::size_t length, vec2 const &position, color4b color);
    float CalcTextWidth(string const &glyphs) const;
    float CalcSmallTextWidth(string const &glyphs) const;
    /// @}

    /// Draws only inside an area of the component, for its own life.
    class Clip;

private:
    struct Writing
    {
        gui::Font const *font;
        gui::TextMetrics const *metrics;
    };

    void DrawLine(Writing const &writing, string const &glyphs, Rectangle const &area, color4b color, float alignment);
    void DrawCorners(Rectangle const &area, Part const &part, float size, color4b color, unsigned int corners);

    gui::Renderer &renderer_;
    gui::Component const &component_;
    Tools const &tools_;
};

class Painter::Clip : quillmarsh::NoCopy
{
public:
    Clip(Painter &painter, Rectangle const &area);
    ~Clip();

private:
    gui::Renderer &renderer_;
    Rectangle saved_ = {0, 0, 0, 0};
    bool hadClip_;
};

} // namespace standard_look

#endif
