#include "shaders.h"

#include <quillmarsh/gui/gui_manager.h>

namespace standard_look
{
namespace
{

constexpr ShaderRow s_rows[] = {
    {widgets::ShaderName_Panel, widgets::FontName_Title, &DrawPanel},
    {widgets::ShaderName_Desk, widgets::FontName_Text, &DrawDesk},
    {widgets::ShaderName_Popup, widgets::FontName_Text, &DrawPopup},
    {widgets::ShaderName_Group, widgets::FontName_Text, &DrawGroup},
    {widgets::ShaderName_Label, widgets::FontName_Text, &DrawLabel},
    {widgets::ShaderName_Heading, widgets::FontName_Large, &DrawLabel},
    {widgets::ShaderName_Section, widgets::FontName_Bold, &DrawLabel},
    {widgets::ShaderName_Hint, widgets::FontName_Small, &DrawHint},
    {widgets::ShaderName_Failure, widgets::FontName_Text, &DrawFailure},
    {widgets::ShaderName_Sign, widgets::FontName_Text, &DrawSign},
    {widgets::ShaderName_Button, widgets::FontName_Text, &DrawButton},
    {widgets::ShaderName_ToolButton, widgets::FontName_Text, &DrawToolButton},
    {widgets::ShaderName_CheckBox, widgets::FontName_Text, &DrawCheckBox},
    {widgets::ShaderName_RadioButton, widgets::FontName_Text, &DrawRadioButton},
    {widgets::ShaderName_Slider, widgets::FontName_Text, &DrawSlider},
    {widgets::ShaderName_SliderThumb, widgets::FontName_Text, &DrawSliderThumb},
    {widgets::ShaderName_ScrollBar, widgets::FontName_Text, &DrawScrollBar},
    {widgets::ShaderName_ScrollThumb, widgets::FontName_Text, &DrawScrollThumb},
    {widgets::ShaderName_TextField, widgets::FontName_Text, &DrawTextField},
    {widgets::ShaderName_ListBox, widgets::FontName_Text, &DrawListBox},
    {widgets::ShaderName_TabView, widgets::FontName_Text, &DrawTabView},
    {widgets::ShaderName_Tab, widgets::FontName_Text, &DrawTab},
    {widgets::ShaderName_SplitterThumb, widgets::FontName_Text, &DrawSplitterThumb},
    {widgets::ShaderName_ProgressBar, widgets::FontName_Small, &DrawProgressBar},
    {widgets::ShaderName_ToolTip, widgets::FontName_Small, &DrawToolTip},
    {widgets::ShaderName_Menu, widgets::FontName_Text, &DrawMenu},
    {widgets::ShaderName_ConsoleText, widgets::FontName_Mono, &DrawConsoleText},
};

} // namespace

std::span<ShaderRow const> GetShaderRows()
{
    return s_rows;
}

bool LookShader::CacheFontHandles(gui::Manager &manager)
{
    bool const hasFont = BaseShader::CacheFontHandles(manager);
    sheet_ = dynamic_cast<SheetFont const *>(manager.GetFont(fontNames_.sheet));
    smallFont_ = dynamic_cast<SheetFont const *>(manager.GetFont(fontNames_.small));
    return hasFont;
}

void LookShader::DrawComponent(gui::Component &component, gui::Renderer &renderer) const
{
    Painter::Tools const tools = {theme_, sheet_, GetFont(), GetTextMetricsL(), smallFont_};
    Painter painter(renderer, component, tools);
    row_.draw(painter, component);
}

} // namespace standard_look
