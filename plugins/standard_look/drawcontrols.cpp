// Buttons, sliders, bars.
#include "shaders.h"

#include <quillmarsh/gui/gui_widgets.h>
#include <quillmarsh/widgets/progressbar.h>
#include <quillmarsh/widgets/scrollbar.h>
#include <quillmarsh/widgets/slider.h>
#include <quillmarsh/widgets/textbutton.h>

#include <algorithm>
#include <cmath>

namespace standard_look
{
namespace
{

struct ButtonInks
{
    eInk plain;
    eInk hot;
    eInk pressed;
    eInk disabled;
};
constexpr ButtonInks s_control = {e_ink_control, e_ink_controlHot, e_ink_controlPressed, e_ink_controlDisabled};
constexpr ButtonInks s_accent = {e_ink_accent, e_ink_accentHot, e_ink_accentPressed, e_ink_accentDisabled};

bool IsPressed(gui::Component const &component)
{
    if (auto const *const text = dynamic_cast<widgets::TextButton const *>(&component))
        return text->IsHeldByKey() || (text->IsPressed() && text->IsMouseOver());
    auto const *const button = dynamic_cast<gui::Button const *>(&component);
    return button != nullptr && button->IsPressed() && button->IsMouseOver();
}

bool IsToggled(gui::Component const &component)
{
    auto const *const button = dynamic_cast<gui::Button const *>(&component);
    return button != nullptr && button->IsToggled();
}

eInk FindInk(gui::Component const &component, ButtonInks const &inks)
{
    if (!component.IsEnabled())
        return inks.disabled;
    if (IsPressed(component))
        return inks.pressed;
    return component.IsHot() ? inks.hot : inks.plain;
}

/// Draws mark and text in the middle of an area: the mark, a gap, the text.
void DrawContent(Painter &painter, widgets::TextButton const &button, Rectangle const &area, color4b color)
{
    float const mark = button.GetMark() != widgets::e_mark_none ? Painter::Pixels(Measures::MarkSize) : 0;
    float const gap = mark > 0 && !button.GetGlyphs().empty() ? Painter::Pixels(Measures::Gap) : 0;
    float const width = std::min(mark + gap + painter.CalcTextWidth(button.GetGlyphs()), area.width);
    float const left = std::floor(area.x + (area.width - width) / 2);
    if (mark > 0)
        painter.DrawMark(button.GetMark(), {left, area.y, mark, area.height}, color);
    painter.DrawText(button.GetGlyphs(), {left + mark + gap, area.y, width - mark - gap, area.height}, color);
}

/// Area inside of the margins of a button.
Rectangle GetContentArea(Painter const &painter, widgets::TextButton const &button)
{
    Rectangle area = painter.GetArea();
    float const margin =
        button.GetGlyphs().empty() ? 0 : std::min(Painter::Pixels(Measures::TextMargin), area.width / 4);
    area.x += margin;
    area.width -= 2 * margin;
    return area;
}

/// Square at the left edge, for the mark of a check box or radio button.
Rectangle GetMarkArea(Painter const &painter)
{
    float const size = Painter::Pixels(Measures::MarkSize);
    return {0, std::floor((painter.GetArea().height - size) / 2), size, size};
}

void DrawMarkedText(Painter &painter, gui::Component const &component)
{
    auto const *const button = dynamic_cast<widgets::TextButton const *>(&component);
    if (button == nullptr)
        return;
    Rectangle const area = painter.GetArea();
    float const left = Painter::Pixels(Measures::MarkSize) + Painter::Pixels(Measures::Gap);
    painter.DrawText(button->GetGlyphs(), {left, 0, area.width - left, area.height},
                     painter.GetInk(component.IsEnabled() ? e_ink_label : e_ink_labelDisabled).text);
}

/// Shapes of the box of a check box or radio button, and what stands in it when it is on.
struct MarkShapes
{
    ePart corner;
    ePart ring;
    ePart focus;
    widgets::eMark mark;
};

void DrawMarked(Painter &painter, gui::Component const &component, MarkShapes const &shapes)
{
    bool const isOn = IsToggled(component);
    Ink const &ink = painter.GetInk(FindInk(component, isOn ? s_accent : s_control));
    Rectangle const box = GetMarkArea(painter);
    painter.DrawBox(box, shapes.corner, shapes.ring, ink);
    if (isOn)
        painter.DrawMark(shapes.mark, box, ink.text);
    if (component.IsFocused())
        painter.DrawFocus(box, shapes.focus);
    DrawMarkedText(painter, component);
}

} // namespace

void DrawButton(Painter &painter, gui::Component const &component)
{
    auto const *const button = dynamic_cast<widgets::TextButton const *>(&component);
    bool const isAccent = IsToggled(component) || (button != nullptr && button->IsDefault());
    Ink const &ink = painter.GetInk(FindInk(component, isAccent ? s_accent : s_control));
    painter.DrawBox(painter.GetArea(), e_part_corner4, e_part_ring4, ink);
    if (component.IsFocused())
        painter.DrawFocus(painter.GetArea());
    if (button != nullptr)
        DrawContent(painter, *button, GetContentArea(painter, *button), ink.text);
}

void DrawToolButton(Painter &painter, gui::Component const &component)
{
    bool const isToggled = IsToggled(component);
    color4b color = painter.GetInk(component.IsEnabled() ? e_ink_label : e_ink_labelDisabled).text;
    bool const isTouched = component.IsEnabled() && (IsPressed(component) || component.IsHot());
    if (isToggled || isTouched)
    {
        eInk const touched = IsPressed(component) ? e_ink_toolPressed : e_ink_toolHot;
        Ink const &ink = painter.GetInk(isToggled ? FindInk(component, s_accent) : touched);
        painter.FillRound(painter.GetArea(), e_part_corner4, ink.surface);
        color = ink.text;
    }
    if (component.IsFocused())
    {
        // Tool buttons may stand close together: their ring is inside.
        Rectangle area = painter.GetArea();
        area.Shrink(Painter::Pixels(2));
        painter.DrawFocus(area, e_part_focus6);
    }
    if (auto const *const button = dynamic_cast<widgets::TextButton const *>(&component))
        DrawContent(painter, *button, GetContentArea(painter, *button), color);
}

void DrawCheckBox(Painter &painter, gui::Component const &component)
{
    DrawMarked(painter, component, {e_part_corner3, e_part_ring3, e_part_focus6, widgets::e_mark_check});
}

void DrawRadioButton(Painter &painter, gui::Component const &component)
{
    DrawMarked(painter, component, {e_part_corner8, e_part_ring8, e_part_focus11, widgets::e_mark_dot});
}

void DrawSlider(Painter &painter, gui::Component const &component)
{
    auto const *const slider = dynamic_cast<widgets::Slider const *>(&component);
    if (slider == nullptr)
        return;
    Rectangle const area = painter.GetArea();
    bool const isVertical = slider->IsVertical();
    float const thickness = Painter::Pixels(4);
    float const begin = slider->GetTrackBegin() - thickness / 2, length = slider->GetTrackLength() + thickness;
    auto const place = [&](float from, float extent) -> Rectangle
    {
        return isVertical ? Rectangle{std::floor((area.width - thickness) / 2), from, thickness, extent}
                          : Rectangle{from, std::floor((area.height - thickness) / 2), extent, thickness};
    };
    painter.FillRound(place(begin, length), e_part_corner2, painter.GetInk(e_ink_track).surface);
    float const done = std::round(length * slider->GetFraction());
    color4b const color = painter.GetInk(component.IsEnabled() ? e_ink_accent : e_ink_accentDisabled).surface;
    painter.FillRound(place(isVertical ? begin + length - done : begin, done), e_part_corner2, color);
}

void DrawSliderThumb(Painter &painter, gui::Component const &component)
{
    Rectangle const whole = painter.GetArea();
    float const size = std::min({whole.width, whole.height, Painter::Pixels(Measures::MarkSize)});
    Rectangle const knob = {std::floor((whole.width - size) / 2), std::floor((whole.height - size) / 2), size, size};
    gui::Component const *const slider = component.GetParent();
    bool const isEnabled = component.IsEnabled() && (slider == nullptr || slider->IsEnabled());
    auto const *const thumb = dynamic_cast<gui::Thumb const *>(&component);
    bool const isHot = component.IsHot() || (slider != nullptr && slider->IsHot());
    bool const isTouched = isEnabled && (isHot || (thumb != nullptr && thumb->IsGrabbed()));
    Ink const &ink = painter.GetInk(isTouched ? e_ink_accentHot : isEnabled ? e_ink_accent : e_ink_accentDisabled);
    painter.FillRound(knob, e_part_corner8, ink.surface);
    Rectangle inner = knob;
    inner.Shrink(Painter::Pixels(isTouched ? 3 : 4));
    painter.FillRound(inner, e_part_corner8, ink.text);
    if (component.IsFocused() || (slider != nullptr && slider->IsFocused()))
        painter.DrawFocus(knob, e_part_focus11);
}

void DrawScrollBar(Painter &, gui::Component const &) {}

void DrawScrollThumb(Painter &painter, gui::Component const &component)
{
    Rectangle area = painter.GetArea();
    auto const *const thumb = dynamic_cast<gui::Thumb const *>(&component);
    bool const isTouched = component.IsHot() || (thumb != nullptr && thumb->IsGrabbed());
    // Thin until the mouse is there.
    float const margin = Painter::Pixels(isTouched ? 2 : 3);
    area.Shrink(std::min(margin, std::floor((std::min(area.width, area.height) - 1) / 2)));
    painter.FillRound(area, e_part_corner4, isTouched ? painter.GetSignals().thumbHot : painter.GetSignals().thumb);
}

void DrawSplitterThumb(Painter &painter, gui::Component const &component)
{
    Rectangle const area = painter.GetArea();
    auto const *const thumb = dynamic_cast<gui::Thumb const *>(&component);
    bool const isTouched = component.IsHot() || (thumb != nullptr && thumb->IsGrabbed());
    bool const isUpright = area.height > area.width;
    float const line = Painter::Pixels(isTouched || component.IsFocused() ? 2 : 1);
    Rectangle const middle = isUpright ? Rectangle{std::floor((area.width - line) / 2), 0, line, area.height}
                                       : Rectangle{0, std::floor((area.height - line) / 2), area.width, line};
    Signals const &signals = painter.GetSignals();
    painter.Fill(middle, component.IsFocused() ? signals.focus : isTouched ? signals.thumbHot : signals.line);
}

void DrawProgressBar(Painter &painter, gui::Component const &component)
{
    auto const *const bar = dynamic_cast<widgets::ProgressBar const *>(&component);
    Rectangle const area = painter.GetArea();
    painter.FillRound(area, e_part_corner4, painter.GetInk(e_ink_track).surface);
    if (bar == nullptr)
        return;
    Rectangle done = area;
    if (bar->IsEndKnown())
        done.width = std::round(area.width * bar->GetValue());
    else
    {
        // A piece goes there and back.
        float const there = 1 - std::abs(2 * bar->GetPhase() - 1);
        done.width = std::round(area.width / 4);
        done.x = std::round((area.width - done.width) * there);
    }
    painter.FillRound(done, e_part_corner4, painter.GetInk(e_ink_accent).surface);
    if (bar->GetGlyphs().empty())
        return;
    // In two colours, each on its own part of the bar.
    auto const draw = [&](Rectangle const &part, color4b color)
    {
        Painter::Clip const clip(painter, part);
        painter.DrawText(bar->GetGlyphs(), area, color, 0.5f);
    };
    draw({0, 0, done.x, area.height}, painter.GetInk(e_ink_track).text);
    draw(done, painter.GetInk(e_ink_accent).text);
    float const end = done.x + done.width;
    draw({end, 0, area.width - end, area.height}, painter.GetInk(e_ink_track).text);
}

} // namespace standard_look
