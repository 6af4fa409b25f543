// The shaders of the look.
#ifndef QUILLMARSH_PLUGINS_STANDARD_LOOK_SHADERS_H
#define QUILLMARSH_PLUGINS_STANDARD_LOOK_SHADERS_H

#include "painter.h"

#include <quillmarsh/gui/gui_shaders.h>

#include <span>

namespace standard_look
{

/// One shader: its name, which widgets know, its font, and what it draws.
struct ShaderRow
{
    char const *name;
    char const *font;
    void (*draw)(Painter &painter, gui::Component const &component);
};

/// Returns all shaders.
std::span<ShaderRow const> GetShaderRows();

/// Shader of a theme and a scale. It draws by a row.
class LookShader : public gui::BaseShader
{
public:
    /// Names of the fonts of a scale that each shader uses: with the parts, and for details.
    struct FontNames
    {
        string sheet;
        string small;
    };

    LookShader(string const &name, ShaderRow const &row, Theme const &theme, FontNames const &fonts)
        : BaseShader(name),
          row_(row),
          theme_(theme),
          fontNames_(fonts)
    {
    }

    bool CacheFontHandles(gui::Manager &manager) override;
    void DrawComponent(gui::Component &component, gui::Renderer &renderer) const override;

private:
    ShaderRow const &row_;
    Theme const &theme_;
    FontNames fontNames_;
    SheetFont const *sheet_ = nullptr;
    SheetFont const *smallFont_ = nullptr;
};

/// @name What the shaders draw
/// A component of another class than the one that a shader is for is drawn as far as the shader can.
/// @{
void DrawPanel(Painter &painter, gui::Component const &component);
void DrawDesk(Painter &painter, gui::Component const &component);
void DrawPopup(Painter &painter, gui::Component const &component);
void DrawGroup(Painter &painter, gui::Component const &component);
void DrawLabel(Painter &painter, gui::Component const &component);
void DrawHint(Painter &painter, gui::Component const &component);
void DrawFailure(Painter &painter, gui::Component const &component);
void DrawSign(Painter &painter, gui::Component const &component);
void DrawToolTip(Painter &painter, gui::Component const &component);
void DrawButton(Painter &painter, gui::Component const &component);
void DrawToolButton(Painter &painter, gui::Component const &component);
void DrawCheckBox(Painter &painter, gui::Component const &component);
void DrawRadioButton(Painter &painter, gui::Component const &component);
void DrawSlider(Painter &painter, gui::Component const &component);
void DrawSliderThumb(Painter &painter, gui::Component const &component);
void DrawScrollBar(Painter &painter, gui::Component const &component);
void DrawScrollThumb(Painter &painter, gui::Component const &component);
void DrawSplitterThumb(Painter &painter, gui::Component const &component);
void DrawProgressBar(Painter &painter, gui::Component const &component);
void DrawTextField(Painter &painter, gui::Component const &component);
void DrawListBox(Painter &painter, gui::Component const &component);
void DrawTabView(Painter &painter, gui::Component const &component);
void DrawTab(Painter &painter, gui::Component const &component);
void DrawMenu(Painter &painter, gui::Component const &component);
void DrawConsoleText(Painter &painter, gui::Component const &component);
/// @}

} // namespace standard_look

#endif
