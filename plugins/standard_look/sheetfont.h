// Fonts at exact sizes, and the parts of shapes in the sheet of the text font.
#ifndef QUILLMARSH_PLUGINS_STANDARD_LOOK_SHEETFONT_H
#define QUILLMARSH_PLUGINS_STANDARD_LOOK_SHEETFONT_H

#include <quillmarsh/gui/gui_fonts.h>
#include <quillmarsh/widgets/looknames.h>

#include <array>

namespace standard_look
{

using quillmarsh::string;
namespace gui = quillmarsh::gui;
namespace widgets = quillmarsh::widgets;

/// A font of the look: one row of its type scale.
struct FontRow
{
    /// Name that widgets know.
    char const *name;
    /// Height of the em in units.
    float emHeight;
    bool bold;
    bool mono;
};

/// The type scale. The first row is the text font, in whose sheet the shapes are.
inline constexpr FontRow s_fonts[] = {
    {widgets::FontName_Text, 13, false, false},  {widgets::FontName_Small, 11, false, false},
    {widgets::FontName_Bold, 13, true, false},   {widgets::FontName_Title, 14, true, false},
    {widgets::FontName_Large, 22, false, false}, {widgets::FontName_Mono, 13, false, true},
};

/// Parts of the sheet, by what they are.
enum ePart : unsigned int
{
    /// Corners and the shadow. Names tell the radius, and the width of rings, in units.
    e_part_corner2 = 0,
    e_part_corner3,
    e_part_corner4,
    e_part_corner6,
    e_part_corner8,
    e_part_ring3,
    e_part_ring4,
    e_part_ring6,
    e_part_ring8,
    e_part_focus6,
    e_part_focus7,
    e_part_focus11,
    e_part_shadow,
    /// Signs at the double size.
    e_part_signInformation,
    e_part_signQuestion,
    e_part_signWarning,
    e_part_signError,
    e_part_grip,
    /// Marks by widgets::eMark.
    e_part_marks,
    s_numParts = e_part_marks + widgets::s_numMarks
};

/// Returns the part that is a mark.
constexpr ePart ToPart(widgets::eMark mark)
{
    return static_cast<ePart>(static_cast<unsigned int>(e_part_marks) + static_cast<unsigned int>(mark));
}

/// Where a part is in the texture.
struct Part
{
    float uMin = 0;
    float uMax = 0;
    float vMin = 0;
    float vMax = 0;
};

/// Pixels of a corner: outer radius, and width of the line; 0 for a filled one.
struct CornerSize
{
    float radius;
    float line;
};

/// Font that is drawn for one scale, with one texel for each pixel. Its first sheet also has the parts.
class SheetFont : public gui::FontTexture
{
public:
    /// Draws the font of a row for a scale. With `withParts`, the tiles of control characters have the parts. Throws as
    /// quillmarsh::GenerateFontGlyphs() does.
    static quillmarsh::AutoPtr<SheetFont> Make(FontRow const &row, float scale, bool withParts);

    /// Returns height of a line and distance of lines for this font. The text is drawn at this height only.
    gui::TextMetricsL const &GetMetrics() const { return metrics_; }
    Part const &GetPart(ePart part) const { return parts_[part]; }
    /// Returns the size of a corner or ring at the scale.
    CornerSize GetCornerSize(ePart part) const;
    float GetScale() const { return scale_; }

private:
    struct Drawing;

    SheetFont(unsigned int textureWidth, float scale) : FontTexture(false, textureWidth, false), scale_(scale) {}
    static void FindInkRows(quillmarsh::ImageBase const &image, Drawing &drawing);
    static void DrawBoxGlyph(quillmarsh::ImageBase &image, Drawing const &drawing);
    void SetBoxes(Drawing const &drawing, quillmarsh::ImageBase const &image);
    void DrawParts(quillmarsh::ImageBase &image);

    float scale_;
    gui::TextMetricsL metrics_;
    std::array<Part, s_numParts> parts_;
};

} // namespace standard_look

#endif
