// Panels, texts and signs.
#include "shaders.h"

#include <quillmarsh/widgets/label.h>
#include <quillmarsh/widgets/panel.h>
#include <quillmarsh/widgets/tooltips.h>

#include <algorithm>

namespace standard_look
{
namespace
{

/// Calls for each line of a text; `line` is a piece of it.
template<typename Call>
void ForEachLine(string const &text, Call const &call)
{
    std::size_t begin = 0;
    while (begin <= text.size())
    {
        std::size_t const end = std::min(text.find('\n', begin), text.size());
        call(text.data() + begin, end - begin);
        begin = end + 1;
    }
}

void DrawLines(Painter &painter, gui::Component const &component, string const &glyphs, vec2 const &position,
               color4b color)
{
    float const distance = widgets::GetLineHeight(component);
    vec2 place = position;
    ForEachLine(glyphs,
                [&](char const *line, std::size_t length)
                {
                    painter.DrawTextAt(line, length, place, color);
                    place.y += distance;
                });
}

void DrawLabelWith(Painter &painter, gui::Component const &component, color4b color)
{
    auto const *const label = dynamic_cast<widgets::Label const *>(&component);
    if (label == nullptr)
        return;
    if (label->HasFixedWidth())
        painter.DrawText(label->GetGlyphs(), painter.GetArea(), color);
    else
        DrawLines(painter, component, label->GetGlyphs(), {0, 0}, color);
}

} // namespace

void DrawDesk(Painter &painter, gui::Component const &)
{
    painter.Fill(painter.GetArea(), painter.GetInk(e_ink_panel).surface);
}

void DrawPanel(Painter &painter, gui::Component const &component)
{
    Rectangle const area = painter.GetArea();
    auto const *const panel = dynamic_cast<widgets::Panel const *>(&component);
    painter.DrawShadow(area);
    painter.FillRound(area, e_part_corner8, painter.GetInk(e_ink_panel).surface);
    if (panel != nullptr && panel->HasTitle())
    {
        Ink const &ink = painter.GetInk(component.IsActive() ? e_ink_titleActive : e_ink_title);
        Rectangle const title = {0, 0, area.width, std::min(panel->GetTitleHeight(), area.height)};
        painter.FillRound(title, e_part_corner8, ink.surface, e_corners_top);
        float const line = Painter::Pixels(1);
        painter.Fill({0, title.height - line, title.width, line}, ink.frame);
        float const margin = Painter::Pixels(Measures::Margin);
        float const button = panel->IsClosable() ? title.height : margin;
        painter.DrawText(panel->GetTitleGlyphs(), {margin, 0, title.width - margin - button, title.height}, ink.text);
    }
    painter.DrawRing(area, e_part_ring8, painter.GetInk(e_ink_panel).frame);
    if (panel != nullptr && panel->IsResizable())
    {
        float const size = Painter::Pixels(Measures::MarkSize);
        painter.DrawPart(e_part_grip, {area.width - size, area.height - size, size, size},
                         painter.GetInk(e_ink_panel).frame);
    }
}

void DrawPopup(Painter &painter, gui::Component const &)
{
    painter.DrawShadow(painter.GetArea());
    painter.DrawBox(painter.GetArea(), e_part_corner6, e_part_ring6, painter.GetInk(e_ink_popup));
}

void DrawGroup(Painter &painter, gui::Component const &)
{
    painter.DrawRing(painter.GetArea(), e_part_ring6, painter.GetSignals().line);
}

void DrawLabel(Painter &painter, gui::Component const &component)
{
    DrawLabelWith(painter, component, painter.GetInk(component.IsEnabled() ? e_ink_label : e_ink_labelDisabled).text);
}

void DrawHint(Painter &painter, gui::Component const &component)
{
    DrawLabelWith(painter, component, painter.GetInk(e_ink_hint).text);
}

void DrawFailure(Painter &painter, gui::Component const &component)
{
    DrawLabelWith(painter, component, painter.GetInk(e_ink_failure).text);
}

void DrawSign(Painter &painter, gui::Component const &component)
{
    auto const *const sign = dynamic_cast<widgets::Sign const *>(&component);
    if (sign == nullptr || sign->GetMark() == widgets::e_mark_none || sign->GetMark() >= widgets::s_numMarks)
        return;
    struct Row
    {
        widgets::eMark mark;
        ePart large;
        color4b Signals::*color;
    };
    static constexpr Row s_rows[] = {
        {widgets::e_mark_information, e_part_signInformation, &Signals::information},
        {widgets::e_mark_question, e_part_signQuestion, &Signals::information},
        {widgets::e_mark_warning, e_part_signWarning, &Signals::warning},
        {widgets::e_mark_error, e_part_signError, &Signals::error},
    };
    Rectangle const area = painter.GetArea();
    auto const *const row = std::find_if(std::begin(s_rows), std::end(s_rows),
                                         [=](Row const &candidate) { return candidate.mark == sign->GetMark(); });
    bool const isSignal = row != std::end(s_rows);
    bool const isLarge = isSignal && area.width > Painter::Pixels(Measures::MarkSize);
    ePart const part = isLarge ? row->large : ToPart(sign->GetMark());
    painter.DrawPart(part, area, isSignal ? painter.GetSignals().*row->color : painter.GetInk(e_ink_label).text);
}

void DrawToolTip(Painter &painter, gui::Component const &component)
{
    auto const *const tips = dynamic_cast<widgets::ToolTips const *>(&component);
    Ink const &ink = painter.GetInk(e_ink_tip);
    painter.DrawShadow(painter.GetArea());
    painter.DrawBox(painter.GetArea(), e_part_corner4, e_part_ring4, ink);
    if (tips == nullptr)
        return;
    vec2 const size = widgets::CalcTextSize(component, tips->GetGlyphs());
    DrawLines(painter, component, tips->GetGlyphs(), (component.GetSize() - size) * 0.5f, ink.text);
}

} // namespace standard_look
