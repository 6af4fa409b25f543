#include "sections.h"

#include <quillmarsh/widgets/label.h>

namespace gallery
{

using namespace quillmarsh;
using namespace quillmarsh::widgets;

namespace
{

constexpr Section s_sections[] = {
    {"Buttons", "Kinds of button in all states. The default button of a panel stands out.", "push press tool mark",
     BuildButtons},
    {"Check boxes", "On or off, or one of several.", "radio buttons choice select toggle", BuildChoices},
    {"Sliders", "Values that are dragged, scroll bars, and work that goes on.", "progress scroll bar thumb",
     BuildSliders},
    {"Text fields", "One line of text, with selection, undo and the clipboard.", "edit input entry search",
     BuildFields},
    {"Lists", "Rows to choose from: one, or several with control and shift.", "list box rows selection", BuildLists},
    {"Tabs", "Pages of which one shows, and areas with an edge to drag.", "tab view splitter pages", BuildTabs},
    {"Panels", "Windows inside the window, message boxes, the file dialog.", "dialog message box file modal tool tip",
     BuildPanels},
    {"Menus", "Menus come up where they are asked for.", "popup context submenu", BuildMenus},
    {"Texts", "The type scale, and the whole of Latin-1.", "typography fonts labels heading hint", BuildTexts},
    {"Marks", "Pictures that the look draws in its own colours.", "icons signs", BuildMarks},
    {"Console", "The console's text as a component; F9 opens the panel.", "terminal commands output", BuildConsole},
};

constexpr State s_states[] = {
    {"At rest", [](gui::Component &) {}},
    {"Hot", [](gui::Component &component) { component.SetMouseOver(true, true); }},
    {"Focused", [](gui::Component &component) { component.SetFocused(true); }},
    {"Disabled",
     [](gui::Component &component)
     {
         component.SetCanDisable(true);
         component.SetEnabled(false);
     }},
};

} // namespace

std::span<Section const> GetSections()
{
    return s_sections;
}

std::span<State const> GetStates()
{
    return s_states;
}

void AddStateTitles(Grid &grid, bool withPressed)
{
    new Label(&grid, string(), ShaderName_Hint);
    for (State const &state : s_states)
        new Label(&grid, state.title, ShaderName_Hint);
    if (withPressed)
        new Label(&grid, "Pressed", ShaderName_Hint);
}

} // namespace gallery
