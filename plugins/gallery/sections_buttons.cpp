#include "sections.h"

#include <quillmarsh/widgets/label.h>
#include <quillmarsh/widgets/textbutton.h>

namespace gallery
{

using namespace quillmarsh;
using namespace quillmarsh::widgets;

namespace
{

struct ButtonKind
{
    char const *title;
    char const *text;
    TextButton::eStyle style;
    bool isDefault;
    bool isToggled;
    eMark mark;
    char const *shaderName;
};

constexpr ButtonKind s_buttonKinds[] = {
    {"Push", "Apply", TextButton::e_style_push, false, false, e_mark_none, ShaderName_Button},
    {"Default", "Save", TextButton::e_style_push, true, false, e_mark_none, ShaderName_Button},
    {"With a mark", "Open", TextButton::e_style_push, false, false, e_mark_folder, ShaderName_Button},
    {"Toggled", "Grid", TextButton::e_style_on_off, false, true, e_mark_none, ShaderName_Button},
    {"Tool", "", TextButton::e_style_push, false, false, e_mark_settings, ShaderName_ToolButton},
    {"Tool, toggled", "", TextButton::e_style_on_off, false, true, e_mark_search, ShaderName_ToolButton},
};

TextButton &MakeButton(gui::Component &parent, ButtonKind const &kind)
{
    auto *const button = new TextButton(&parent, kind.text, kind.style);
    button->SetShaderName(kind.shaderName);
    button->SetMark(kind.mark);
    button->SetDefault(kind.isDefault);
    button->SetToggled(kind.isToggled);
    return *button;
}

template<typename Make>
void AddStates(Grid &grid, char const *title, Make const &make)
{
    new Label(&grid, title);
    for (State const &state : GetStates())
        state.apply(make(grid));
}

} // namespace

void BuildButtons(Stack &page)
{
    auto *const grid = new Grid(static_cast<unsigned int>(GetStates().size()) + 2, &page, {20, 12});
    AddStateTitles(*grid, true);
    for (ButtonKind const &kind : s_buttonKinds)
    {
        AddStates(*grid, kind.title, [&](Grid &parent) -> gui::Component & { return MakeButton(parent, kind); });
        TextButton &pressed = MakeButton(*grid, kind);
        pressed.SetMouseOver(true, true);
        pressed.SetPressed(true);
    }

    new Label(&page, "A held press button repeats its command.", ShaderName_Hint);
    auto *const row = new Stack(false, &page);
    auto *const minus = new TextButton(row, string(), TextButton::e_style_press);
    minus->SetMark(e_mark_minus);
    auto *const count = new Label(row, "0");
    auto *const plus = new TextButton(row, string(), TextButton::e_style_press);
    plus->SetMark(e_mark_plus);
    minus->SetAction([count] { count->SetText(std::to_string(std::stoi(count->GetText()) - 1)); });
    plus->SetAction([count] { count->SetText(std::to_string(std::stoi(count->GetText()) + 1)); });
}

void BuildChoices(Stack &page)
{
    auto *const grid = new Grid(static_cast<unsigned int>(GetStates().size()) + 1, &page, {20, 12});
    AddStateTitles(*grid, false);
    for (bool const on : {false, true})
    {
        AddStates(*grid, on ? "Check box, on" : "Check box",
                  [&](Grid &parent) -> gui::Component & { return *new CheckBox(&parent, "Show the grid", on); });
    }
    // Samples of one state stand alone in their groups.
    unsigned int groupID = 100;
    for (bool const on : {false, true})
    {
        AddStates(*grid, on ? "Radio button, on" : "Radio button",
                  [&](Grid &parent) -> gui::Component & { return *new RadioButton(&parent, "Linear", ++groupID, on); });
    }

    new Label(&page, "Filter", ShaderName_Hint);
    auto *const filters = new Stack(true, &page, 4);
    bool isFirst = true;
    for (char const *filter : {"Nearest", "Linear", "Area", "Lanczos"})
    {
        new RadioButton(filters, filter, 1, isFirst);
        isFirst = false;
    }
}

} // namespace gallery
