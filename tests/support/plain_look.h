// A look without pictures, for tests of widgets.
#ifndef QUILLMARSH_TESTS_SUPPORT_PLAIN_LOOK_H
#define QUILLMARSH_TESTS_SUPPORT_PLAIN_LOOK_H

#include "tests/support/gui_desk.h"

#include <quillmarsh/gui/gui_cursors.h>
#include <quillmarsh/gui/gui_shaders.h>
#include <quillmarsh/widgets/looknames.h>

namespace quillmarsh::tests
{

/// Shader that draws nothing. Its text has no font and is 20 pixels high, so that each glyph is 10 pixels wide.
class PlainShader : public gui::BaseShader
{
public:
    explicit PlainShader(string const &name) : BaseShader(name)
    {
        SetTextAttributes({string(), gui::TextMetricsL(gui::TextMetrics(), 1)});
    }
    void DrawComponent(gui::Component &, gui::Renderer &) const override {}
};

/// Registers one shader and one cursor under all names that widgets know.
inline void InstallPlainLook(gui::Manager &manager)
{
    using namespace widgets;
    constexpr char name[] = "plain";
    new PlainShader(name);
    for (char const *const alias :
         {ShaderName_Panel,     ShaderName_Desk,        ShaderName_Popup,       ShaderName_Group,
          ShaderName_Label,     ShaderName_Heading,     ShaderName_Section,     ShaderName_Hint,
          ShaderName_Failure,   ShaderName_Sign,        ShaderName_Button,      ShaderName_ToolButton,
          ShaderName_CheckBox,  ShaderName_RadioButton, ShaderName_Slider,      ShaderName_SliderThumb,
          ShaderName_ScrollBar, ShaderName_ScrollThumb, ShaderName_TextField,   ShaderName_ListBox,
          ShaderName_TabView,   ShaderName_Tab,         ShaderName_ProgressBar, ShaderName_SplitterThumb,
          ShaderName_ToolTip,   ShaderName_Menu,        ShaderName_ConsoleText})
        manager.AddShaderAlias(alias, name);
    new gui::Cursor(name, {0, 0}, {16, 16}, {255, 255, 255, 255});
    for (char const *const alias :
         {CursorName_Text, CursorName_Hand, CursorName_SplitHorizontal, CursorName_SplitVertical})
        manager.AddCursorAlias(alias, name);
}

/// A desk with that look.
class WidgetDesk : public GuiDesk
{
public:
    WidgetDesk() { InstallPlainLook(manager); }

    /// Types a key while others are held, each in one frame.
    void TypeWith(std::initializer_list<eKey> held, eKey key)
    {
        for (eKey const each : held)
            keyboard.pressed.insert(each);
        Frame();
        TypeKey(key);
        for (eKey const each : held)
            keyboard.pressed.erase(each);
        Frame();
    }
    /// Types letters and digits, whose keys have these names.
    void TypeKeys(std::initializer_list<eKey> keys)
    {
        for (eKey const key : keys)
            TypeKey(key);
    }
};

} // namespace quillmarsh::tests

#endif
