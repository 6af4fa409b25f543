// Parameters of text and tiles that the GUI draws. Plain records.
#ifndef QUILLMARSH_GUI_GUI_DRAWPARAMS_H
#define QUILLMARSH_GUI_GUI_DRAWPARAMS_H

#include <quillmarsh/gui/gui_rectangle.h>

namespace quillmarsh::gui
{

/// Size and spacing of a line of text. FontTexture tells what they make of a glyph.
struct TextMetrics
{
    /// Height of a glyph in pixels.
    float Height = 20;
    /// Gives every glyph the same width.
    bool Mono = false;
    /// Takes the spacing from the font instead of from Spacing.
    bool UseDefaultSpacing = true;
    /// Space between two glyphs, as a part of the height.
    float Spacing = 0;
    /// Factor for the widths of the glyphs.
    float GlyphWidthScale = 1;
    /// Factor for the spacing.
    float SpacingScale = 1;
};

/// Metrics of several lines of text.
struct TextMetricsL : TextMetrics
{
    /// Distance between two lines, as a multiple of the height.
    float LineSpacing = 1;

    TextMetricsL() = default;
    TextMetricsL(TextMetrics const &metrics, float lineSpacing) : TextMetrics(metrics), LineSpacing(lineSpacing) {}

    /// Returns the distance between two lines in pixels.
    float AbsLineHeight() const { return Height * LineSpacing; }
};

/// Font and metrics of a text.
struct TextAttributes
{
    /// Name of the font; empty for none.
    string fontName;
    TextMetricsL metrics;
};

/// Colour, place and metrics of a line of text.
struct DrawTextParams
{
    color4b color = {255, 255, 255, 255};
    /// Top left corner of the first glyph, in pixels.
    vec2 position = {0, 0};
    TextMetrics metrics;
};

/// Names a tile of a texture, and how it is turned.
struct TileParams
{
    string tileTextureName;
    unsigned int tileColumn = 0;
    unsigned int tileRow = 0;
    RectangleCT::eTexTransform texTransform = RectangleCT::e_tex_none;
};

} // namespace quillmarsh::gui

#endif
