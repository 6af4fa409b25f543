// Texts and signs that only show.
#ifndef QUILLMARSH_WIDGETS_LABEL_H
#define QUILLMARSH_WIDGETS_LABEL_H

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/widgets/looknames.h>
#include <quillmarsh/widgets/measures.h>

namespace quillmarsh::widgets
{

/// Text of one or more lines, as large as the text needs. It is a ghost: the mouse goes through it to what is behind.
/// Frame thread only.
class QUILLMARSH_API Label : public gui::Component
{
public:
    /// Becomes a child of `parent`; stays top-level for null. The text is UTF-8. The shader is "look/label", or another
    /// one of looknames.h: heading, hint, failure.
    Label(gui::Component *parent, string const &text, string const &shaderName = ShaderName_Label);
    ~Label() override;

    /// Sets the text, in UTF-8, and reports the geometry dirty if that changes it.
    void SetText(string const &text);
    /// Returns the text, in UTF-8.
    string const &GetText() const { return text_; }
    /// Breaks lines that are wider, in units; 0 breaks none, which is so at first.
    void SetWrapWidth(float units);
    /// Returns the lines to draw, as glyph codes with line feeds. As of the last layout.
    string const &GetGlyphs() const { return shownGlyphs_; }
    /// Keeps the height of a line, but takes whatever width it is given, and ends a text that is longer, or has several
    /// lines, with three dots.
    void SetFixedWidth(bool fixed);
    bool HasFixedWidth() const { return fixedWidth_; }

    string GetCaption() const override { return text_; }
    void RecalcSize() override;
    void UpdateGeometryCache() override;

private:
    string text_;
    string glyphs_;
    string shownGlyphs_;
    float wrapWidth_ = 0;
    bool fixedWidth_ = false;
};

/// Picture beside a text, by default at twice the size of other marks. It is a ghost. The shader is "look/sign". Frame
/// thread only.
class QUILLMARSH_API Sign : public gui::Component
{
public:
    /// Becomes a child of `parent`; stays top-level for null. `size` is width and height in units.
    Sign(gui::Component *parent, eMark mark, float size = 2 * Measures::MarkSize);
    ~Sign() override;

    void SetMark(eMark mark) { mark_ = mark; }
    eMark GetMark() const { return mark_; }

    void RecalcSize() override;

private:
    eMark mark_;
    float sizeInUnits_;
};

} // namespace quillmarsh::widgets

#endif
