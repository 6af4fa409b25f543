#include "painter.h"

#include <algorithm>
#include <cmath>

namespace standard_look
{
namespace
{

/// Makes edges whole pixels.
Rectangle Snap(Rectangle const &area)
{
    float const x = std::round(area.x), y = std::round(area.y);
    return {x, y, std::round(area.x + area.width) - x, std::round(area.y + area.height) - y};
}

} // namespace

void Painter::Fill(Rectangle const &area, color4b color)
{
    if (area.width > 0 && area.height > 0 && color.a != 0)
        renderer_.DrawRectangle(gui::RectangleC(Snap(area), color));
}

void Painter::DrawCorners(Rectangle const &area, Part const &part, float size, color4b color, unsigned int corners)
{
    for (unsigned int corner = 0; corner < 4; ++corner)
    {
        bool const isRight = (corner & 1) != 0, isBottom = (corner & 2) != 0;
        Rectangle const square = {isRight ? area.x + area.width - size : area.x,
                                  isBottom ? area.y + area.height - size : area.y, size, size};
        if ((corners >> corner & 1) == 0)
            continue;
        gui::RectangleCT drawn(square, color);
        drawn.uMin = isRight ? part.uMax : part.uMin;
        drawn.uMax = isRight ? part.uMin : part.uMax;
        drawn.vMin = isBottom ? part.vMax : part.vMin;
        drawn.vMax = isBottom ? part.vMin : part.vMax;
        renderer_.DrawRectangle(*tools_.sheet, drawn);
    }
}

void Painter::FillRound(Rectangle const &whole, ePart corner, color4b color, eCorners corners)
{
    Rectangle const area = Snap(whole);
    if (color.a == 0 || area.width <= 0 || area.height <= 0)
        return;
    float const radius = tools_.sheet != nullptr ? tools_.sheet->GetCornerSize(corner).radius : 0;
    // What is smaller than its corners has half of its side.
    float const size = std::min(radius, std::floor(std::min(area.width, area.height) / 2));
    if (size < 1)
        return Fill(area, color);
    float const bottom = corners == e_corners_all ? size : 0;
    DrawCorners(area, tools_.sheet->GetPart(corner), size, color, corners);
    Fill({area.x + size, area.y, area.width - 2 * size, size}, color);
    Fill({area.x, area.y + size, area.width, area.height - size - bottom}, color);
    Fill({area.x + size, area.y + area.height - bottom, area.width - 2 * size, bottom}, color);
}

void Painter::DrawRing(Rectangle const &whole, ePart ring, color4b color)
{
    Rectangle const area = Snap(whole);
    if (color.a == 0 || area.width <= 0 || area.height <= 0)
        return;
    CornerSize const corner = tools_.sheet != nullptr ? tools_.sheet->GetCornerSize(ring) : CornerSize{0, 1};
    float const size = std::min(corner.radius, std::floor(std::min(area.width, area.height) / 2));
    float const line = std::min(corner.line, std::max(size, 1.0f));
    if (size >= 1)
        DrawCorners(area, tools_.sheet->GetPart(ring), size, color, e_corners_all);
    Fill({area.x + size, area.y, area.width - 2 * size, line}, color);
    Fill({area.x + size, area.y + area.height - line, area.width - 2 * size, line}, color);
    Fill({area.x, area.y + size, line, area.height - 2 * size}, color);
    Fill({area.x + area.width - line, area.y + size, line, area.height - 2 * size}, color);
}

void Painter::DrawBox(Rectangle const &area, ePart corner, ePart ring, Ink const &ink)
{
    FillRound(area, corner, ink.surface);
    DrawRing(area, ring, ink.frame);
}

void Painter::DrawFocus(Rectangle const &area, ePart ring)
{
    Rectangle around = area;
    around.Grow(Pixels(3));
    DrawRing(around, ring, GetSignals().focus);
}

void Painter::DrawShadow(Rectangle const &whole)
{
    if (tools_.sheet == nullptr)
        return;
    float const size = tools_.sheet->GetCornerSize(e_part_shadow).radius;
    Rectangle area = Snap(whole);
    area.Grow(std::floor(size * 0.6f));
    area.Offset(0, Pixels(4));
    if (area.width < 2 * size || area.height < 2 * size)
        return;
    Part const &part = tools_.sheet->GetPart(e_part_shadow);
    color4b const color = GetSignals().shadow;
    DrawCorners(area, part, size, color, e_corners_all);
    // Edges are the last texels of the corner, made longer; what is under the rectangle itself is not seen.
    float const u = part.uMax - 0.5f / static_cast<float>(tools_.sheet->GetWidth());
    float const v = part.vMax - 0.5f / static_cast<float>(tools_.sheet->GetHeight());
    auto const draw = [&](Rectangle const &edge, Part const &coordinates)
    {
        gui::RectangleCT drawn(edge, color);
        drawn.uMin = coordinates.uMin;
        drawn.uMax = coordinates.uMax;
        drawn.vMin = coordinates.vMin;
        drawn.vMax = coordinates.vMax;
        renderer_.DrawRectangle(*tools_.sheet, drawn);
    };
    float const width = area.width - 2 * size, height = area.height - 2 * size;
    draw({area.x + size, area.y, width, size}, {u, u, part.vMin, part.vMax});
    draw({area.x + size, area.y + size + height, width, size}, {u, u, part.vMax, part.vMin});
    draw({area.x, area.y + size, size, height}, {part.uMin, part.uMax, v, v});
    draw({area.x + size + width, area.y + size, size, height}, {part.uMax, part.uMin, v, v});
}

void Painter::DrawPart(ePart index, Rectangle const &area, color4b color)
{
    if (tools_.sheet == nullptr)
        return;
    Part const &part = tools_.sheet->GetPart(index);
    gui::RectangleCT drawn(Snap(area), color);
    drawn.uMin = part.uMin;
    drawn.uMax = part.uMax;
    drawn.vMin = part.vMin;
    drawn.vMax = part.vMax;
    renderer_.DrawRectangle(*tools_.sheet, drawn);
}

void Painter::DrawMark(widgets::eMark mark, Rectangle const &area, color4b color)
{
    if (mark == widgets::e_mark_none || mark >= widgets::s_numMarks)
        return;
    float const size = Pixels(Measures::MarkSize);
    DrawPart(ToPart(mark),
             {std::floor(area.x + (area.width - size) / 2), std::floor(area.y + (area.height - size) / 2), size, size},
             color);
}

void Painter::DrawLine(Writing const &writing, string const &glyphs, Rectangle const &area, color4b color,
                       float alignment)
{
    if (writing.font == nullptr || glyphs.empty() || area.width <= 0)
        return;
    gui::Font const &font = *writing.font;
    gui::TextMetrics const &metrics = *writing.metrics;
    auto length = static_cast<unsigned int>(glyphs.size());
    float width = font.CalcTextWidth(metrics, length, glyphs.data());
    // Sums of widths may be a little more than a whole number.
    constexpr float tolerance = 0.01f;
    bool const isShortened = width > area.width + tolerance;
    static constexpr char s_dots[] = "...";
    constexpr unsigned int numDots = 3;
    if (isShortened)
    {
        float const room = area.width - font.CalcTextWidth(metrics, numDots, s_dots);
        if (room < 0)
            return;
        font.CalcMaxVisibleText(length, width, room + tolerance, metrics, length, glyphs.data());
    }
    gui::DrawTextParams params;
    params.metrics = metrics;
    params.color = color;
    params.position.x = std::round(area.x + (isShortened ? 0 : (area.width - width) * alignment));
    params.position.y = std::round(area.y + std::floor((area.height - metrics.Height) / 2));
    if (length != 0)
        renderer_.DrawText(font, length, glyphs.data(), params);
    if (!isShortened)
        return;
    params.position.x += std::round(width);
    renderer_.DrawText(font, numDots, s_dots, params);
}

void Painter::DrawText(string const &glyphs, Rectangle const &area, color4b color, float alignment)
{
    DrawLine({tools_.font, &tools_.metrics}, glyphs, area, color, alignment);
}

void Painter::DrawSmallText(string const &glyphs, Rectangle const &area, color4b color, float alignment)
{
    if (tools_.smallFont != nullptr)
        DrawLine({tools_.smallFont, &tools_.smallFont->GetMetrics()}, glyphs, area, color, alignment);
}

void Painter::DrawTextAt(char const *glyphs, std::size_t length, vec2 const &position, color4b color)
{
    if (tools_.font == nullptr || length == 0)
        return;
    gui::DrawTextParams params;
    params.metrics = tools_.metrics;
    params.color = color;
    params.position = {std::round(position.x), std::round(position.y)};
    renderer_.DrawText(*tools_.font, static_cast<unsigned int>(length), glyphs, params);
}

float Painter::CalcTextWidth(string const &glyphs) const
{
    return tools_.font != nullptr ? std::round(tools_.font->CalcTextWidth(tools_.metrics, glyphs)) : 0;
}

float Painter::CalcSmallTextWidth(string const &glyphs) const
{
    SheetFont const *const font = tools_.smallFont;
    return font != nullptr ? std::round(static_cast<gui::Font const *>(font)->CalcTextWidth(font->GetMetrics(), glyphs))
                           : 0;
}

Painter::Clip::Clip(Painter &painter, Rectangle const &area)
    : renderer_(painter.renderer_),
      hadClip_(renderer_.GetClipRectangle(saved_))
{
    Rectangle clip = area;
    clip.Offset(painter.component_.GetAbsolutePosition());
    if (hadClip_)
    {
        float const right = std::min(clip.x + clip.width, saved_.x + saved_.width);
        float const bottom = std::min(clip.y + clip.height, saved_.y + saved_.height);
        clip.x = std::max(clip.x, saved_.x);
        clip.y = std::max(clip.y, saved_.y);
        clip.SetSize(std::max(right - clip.x, 0.0f), std::max(bottom - clip.y, 0.0f));
    }
    renderer_.SetClipRectangle(clip);
}

Painter::Clip::~Clip()
{
    if (hadClip_)
        renderer_.SetClipRectangle(saved_);
    else
        renderer_.ResetClipRectangle();
}

} // namespace standard_look
