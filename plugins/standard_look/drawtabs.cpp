// Tabs.
#include "shaders.h"

#include <quillmarsh/widgets/tabview.h>

#include <algorithm>

namespace standard_look
{

void DrawTabView(Painter &painter, gui::Component const &component)
{
    auto const *const view = dynamic_cast<widgets::TabView const *>(&component);
    widgets::Tab const *const tab = view != nullptr ? view->GetTab(0) : nullptr;
    if (tab == nullptr)
        return;
    float const line = Painter::Pixels(1);
    painter.Fill({0, tab->CalcEndPositionY() - line, painter.GetArea().width, line}, painter.GetSignals().line);
}

void DrawTab(Painter &painter, gui::Component const &component)
{
    auto const *const tab = dynamic_cast<widgets::Tab const *>(&component);
    if (tab == nullptr)
        return;
    Rectangle const area = painter.GetArea();
    bool const isShown = tab->IsShown();
    bool const isHot = component.IsHot() && !isShown;
    eInk const state = isShown ? e_ink_tabShown : isHot ? e_ink_tabHot : e_ink_tab;
    Ink const &ink = painter.GetInk(component.IsEnabled() ? state : e_ink_tabDisabled);
    if (isHot && component.IsEnabled())
        painter.FillRound(area, e_part_corner4, ink.surface, e_corners_top);
    float const margin = std::min(Painter::Pixels(Measures::TextMargin), area.width / 4);
    painter.DrawText(tab->GetGlyphs(), {margin, 0, area.width - 2 * margin, area.height}, ink.text, 0.5f);
    if (isShown)
    {
        float const line = Painter::Pixels(2);
        painter.Fill({0, area.height - line, area.width, line}, painter.GetInk(e_ink_accentHot).frame);
    }
    if (component.IsFocused())
    {
        Rectangle inner = area;
        inner.Shrink(Painter::Pixels(4));
        painter.DrawFocus(inner);
    }
}

} // namespace standard_look
