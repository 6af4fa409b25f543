#include "samplemarks.h"

#include <quillmarsh/gui/gui_fonts.h>
#include <quillmarsh/gui/gui_renderer.h>
#include <quillmarsh/gui/gui_shaders.h>
#include <quillmarsh/widgets/measures.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace viewer
{

using namespace quillmarsh;

namespace
{

/// Pixels of a sample from which on lines are drawn.
constexpr double s_minLineCell = 16;
/// Units between the edges of a sample and its numbers.
constexpr float s_textMargin = 2;
constexpr color4b s_line = {128, 128, 128, 120};
constexpr color4b s_dark = {16, 16, 16, 255};
constexpr color4b s_light = {240, 240, 240, 255};
/// Brightness above which numbers are dark.
constexpr unsigned int s_brightFrom = 140;

/// Returns the brightness of a colour, 0 to 255, by the eye's weights.
unsigned int GetBrightness(Pixel colour)
{
    unsigned int const red = colour >> 16 & 255, green = colour >> 8 & 255, blue = colour & 255;
    return (red * 77 + green * 150 + blue * 29) >> 8;
}

/// A part of one axis: its samples, and where the first one begins in the view.
struct Span
{
    unsigned int first = 0;
    unsigned int count = 0;
    double start = 0;

    float At(unsigned int index, double cell) const { return static_cast<float>(std::round(start + index * cell)); }
};

/// Returns the samples whose cells lie in a part of the view. `origin` is the view's place of the first sample's edge.
Span FindSpan(double origin, double cell, unsigned int size, unsigned int from, unsigned int extent)
{
    double const first = std::clamp(std::floor((from - origin) / cell), 0.0, static_cast<double>(size));
    double const end = std::clamp(std::ceil((from + extent - origin) / cell), first, static_cast<double>(size));
    Span span;
    span.first = static_cast<unsigned int>(first);
    span.count = static_cast<unsigned int>(end - first);
    span.start = origin + first * cell;
    return span;
}

} // namespace

/// The visible samples of a pane.
struct SampleMarks::Cells
{
    ImageBase const *image = nullptr;
    /// Pixels of a sample.
    double size = 0;
    Span columns;
    Span rows;
};

/// What numbers are drawn with.
struct SampleMarks::Writing
{
    gui::Renderer &renderer;
    gui::Font const &font;
    gui::TextMetricsL const &metrics;
};

SampleMarks::Cells SampleMarks::FindCells(vec2 const &viewSize, Pane const &pane, int level)
{
    Cells cells;
    auto const number = std::min(static_cast<unsigned int>(std::max(level, 0)), pane.levels->GetNumLevels() - 1);
    cells.image = &pane.levels->GetLevel(number);
    cells.size = std::ldexp(pane.placement.zoom, static_cast<int>(number));
    if (cells.size < s_minLineCell)
        return cells;
    auto const width = std::round(static_cast<double>(viewSize.x)),
               height = std::round(static_cast<double>(viewSize.y));
    cells.columns = FindSpan(pane.placement.ToViewX(0, width), cells.size, cells.image->GetNumColumns(), pane.area.x,
                             pane.area.width);
    cells.rows = FindSpan(pane.placement.ToViewY(0, height), cells.size, cells.image->GetNumRows(), pane.area.y,
                          pane.area.height);
    return cells;
}

void SampleMarks::DrawLines(gui::Renderer &renderer, Pane const &pane, Cells const &cells)
{
    auto const left = std::max(cells.columns.At(0, cells.size), static_cast<float>(pane.area.x));
    auto const right =
        std::min(cells.columns.At(cells.columns.count, cells.size), static_cast<float>(pane.area.x + pane.area.width));
    auto const top = std::max(cells.rows.At(0, cells.size), static_cast<float>(pane.area.y));
    auto const bottom =
        std::min(cells.rows.At(cells.rows.count, cells.size), static_cast<float>(pane.area.y + pane.area.height));
    for (unsigned int column = 0; column <= cells.columns.count; ++column)
    {
        float const x = cells.columns.At(column, cells.size);
        if (x >= left && x <= right)
            renderer.DrawRectangle(gui::RectangleC({x, top, 1, bottom - top}, s_line));
    }
    for (unsigned int row = 0; row <= cells.rows.count; ++row)
    {
        float const y = cells.rows.At(row, cells.size);
        if (y >= top && y <= bottom)
            renderer.DrawRectangle(gui::RectangleC({left, y, right - left, 1}, s_line));
    }
}

void SampleMarks::DrawNumbers(Writing const &writing, Pane const &pane, ToneMap const &tones, Cells const &cells)
{
    std::span<Channel const> channels = GetChannels(cells.image->GetSampleFormat());
    if (pane.display.channel >= 0 && static_cast<std::size_t>(pane.display.channel) < channels.size())
        channels = channels.subspan(static_cast<std::size_t>(pane.display.channel), 1);
    float const margin = widgets::Measures::Pixels(s_textMargin), line = writing.metrics.Height;
    auto const cell = static_cast<float>(cells.size);
    float const needed = line * static_cast<float>(channels.size());
    if (channels.empty() || needed + margin > cell ||
        writing.font.CalcTextWidth(writing.metrics, "255") + 2 * margin > cell)
        return;
    gui::DrawTextParams params;
    params.metrics = writing.metrics;
    std::size_t const sampleSize = cells.image->GetSampleByteSize();
    for (unsigned int row = 0; row < cells.rows.count; ++row)
    {
        unsigned char const *sample = cells.image->SampleB(cells.rows.first + row, cells.columns.first);
        for (unsigned int column = 0; column < cells.columns.count; ++column, sample += sampleSize)
        {
            Pixel colour = 0;
            tones.Map(sample, 1, &colour, 0, 0);
            params.color = GetBrightness(colour) > s_brightFrom ? s_dark : s_light;
            float y = cells.rows.At(row, cells.size) + std::round((cell - needed) / 2);
            for (Channel const &channel : channels)
            {
                char text[16];
                int const length =
                    std::snprintf(text, sizeof(text), channel.isFloat ? "%.3g" : "%.0f", channel.read(sample));
                auto const count = static_cast<unsigned int>(std::max(length, 0));
                float const width = writing.font.CalcTextWidth(writing.metrics, count, text);
                params.position = {cells.columns.At(column, cells.size) + std::round((cell - width) / 2), y};
                if (width <= cell)
                    writing.renderer.DrawText(writing.font, count, text, params);
                y += line;
            }
        }
    }
}

void SampleMarks::Draw(gui::Renderer &renderer, gui::Component const &component, Pane const &pane, ToneMap const &tones,
                       int level) const
{
    Cells const cells = FindCells(component.GetSize(), pane, level);
    if (cells.columns.count == 0 || cells.rows.count == 0)
        return;
    DrawLines(renderer, pane, cells);
    gui::BaseShader const *const shader = component.GetBaseShader();
    if (shader != nullptr && shader->GetFont() != nullptr)
        DrawNumbers({renderer, *shader->GetFont(), shader->GetTextMetricsL()}, pane, tones, cells);
}

} // namespace viewer
