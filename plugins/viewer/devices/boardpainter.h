// Draws the readings of devices, or only finds out how high they are.
#ifndef QUILLMARSH_PLUGINS_VIEWER_DEVICES_BOARDPAINTER_H
#define QUILLMARSH_PLUGINS_VIEWER_DEVICES_BOARDPAINTER_H

#include <viewer_model/signals/trace.h>

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_drawparams.h>
#include <quillmarsh/gui/gui_vertices.h>
#include <quillmarsh/mathtools/vector3.h>

namespace viewer
{

using quillmarsh::color4b;
using quillmarsh::string;
using quillmarsh::vec2;

/// @name Colours of the board
/// It is dark in every theme, as the plots are.
/// @{
constexpr color4b s_boardBack(0x15, 0x18, 0x1D, 255);
constexpr color4b s_cardBack(0x20, 0x24, 0x2B, 255);
constexpr color4b s_fieldBack(0x15, 0x18, 0x1D, 255);
constexpr color4b s_boardText(0xE4, 0xE8, 0xEE, 255);
constexpr color4b s_boardHint(0x93, 0x9D, 0xAD, 255);
constexpr color4b s_boardAccent(0x5E, 0xA2, 0xFA, 255);
constexpr color4b s_boardTrace(0x58, 0xCB, 0xC9, 255);
/// @}

/// Draws shapes and texts in pixels. Without a renderer it draws nothing. For the time of one drawing.
class BoardPainter : quillmarsh::NoCopy
{
public:
    /// Texts have the font of the component's shader.
    BoardPainter(quillmarsh::gui::Component const &component, quillmarsh::gui::Renderer *renderer)
        : component_(component),
          renderer_(renderer)
    {
    }

    bool IsDrawing() const { return renderer_ != nullptr; }
    float GetTextHeight() const;
    /// Width of a text in UTF-8.
    float GetTextWidth(string const &text) const;
    void Fill(float x, float y, float width, float height, color4b color) const;
    void Frame(float x, float y, float width, float height, color4b color) const;
    /// Draws a text in UTF-8, cut to a width; returns the width that it takes.
    float Text(float x, float y, string const &text, color4b color, float maxWidth = 1e6F) const;
    void Line(vec2 const &from, vec2 const &to, float thickness, color4b color) const;
    void Triangle(vec2 const &a, vec2 const &b, vec2 const &c, color4b color) const;
    /// Draws a trace into a rectangle, whose right edge is the present.
    void DrawTrace(vec2 const &position, vec2 const &size, Trace const &trace, double now, double low, double high,
                   color4b color) const;

private:
    quillmarsh::gui::Component const &component_;
    quillmarsh::gui::Renderer *renderer_;
    mutable quillmarsh::gui::VertexBufferC vertices_;
};

} // namespace viewer

#endif
