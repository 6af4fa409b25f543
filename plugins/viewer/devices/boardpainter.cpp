#include "boardpainter.h"

#include <quillmarsh/gui/gui_fonts.h>
#include <quillmarsh/gui/gui_renderer.h>
#include <quillmarsh/gui/gui_shaders.h>
#include <quillmarsh/widgets/measures.h>
#include <quillmarsh/widgets/textencoding.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace viewer
{

using namespace quillmarsh;
using widgets::Measures;

float BoardPainter::GetTextHeight() const
{
    return widgets::GetLineHeight(component_);
}

float BoardPainter::GetTextWidth(string const &text) const
{
    return widgets::CalcTextWidth(component_, widgets::ToGlyphs(text));
}

void BoardPainter::Fill(float x, float y, float width, float height, color4b color) const
{
    if (renderer_ != nullptr && width > 0 && height > 0)
        renderer_->DrawRectangle(gui::RectangleC(gui::Rectangle(x, y, width, height), color));
}

void BoardPainter::Frame(float x, float y, float width, float height, color4b color) const
{
    if (renderer_ != nullptr)
        renderer_->DrawRectangleFrame(gui::RectangleC(gui::Rectangle(x, y, width, height), color), 1);
}

float BoardPainter::Text(float x, float y, string const &text, color4b color, float maxWidth) const
{
    string const glyphs = widgets::ShortenText(component_, widgets::ToGlyphs(text), maxWidth);
    gui::BaseShader const *const shader = component_.GetBaseShader();
    gui::Font const *const font = shader != nullptr ? shader->GetFont() : nullptr;
    if (renderer_ != nullptr && font != nullptr)
    {
        gui::DrawTextParams params;
        params.metrics = shader->GetTextMetricsL();
        params.position = {std::round(x), std::round(y)};
        params.color = color;
        renderer_->DrawText(*font, glyphs, params);
    }
    return widgets::CalcTextWidth(component_, glyphs);
}

void BoardPainter::Line(vec2 const &from, vec2 const &to, float thickness, color4b color) const
{
    float const length = std::hypot(to.x - from.x, to.y - from.y);
    if (renderer_ == nullptr || length <= 0)
        return;
    float const x = -(to.y - from.y) / length * thickness / 2;
    float const y = (to.x - from.x) / length * thickness / 2;
    vertices_.Resize(4);
    vertices_[0] = gui::VertexC({from.x + x, from.y + y, 0}, color);
    vertices_[1] = gui::VertexC({from.x - x, from.y - y, 0}, color);
    vertices_[2] = gui::VertexC({to.x + x, to.y + y, 0}, color);
    vertices_[3] = gui::VertexC({to.x - x, to.y - y, 0}, color);
    renderer_->DrawPrimitive(vertices_, gui::Renderer::e_triangleStrip, 2, 0);
}

void BoardPainter::Triangle(vec2 const &a, vec2 const &b, vec2 const &c, color4b color) const
{
    if (renderer_ == nullptr)
        return;
    vertices_.Resize(3);
    vertices_[0] = gui::VertexC({a.x, a.y, 0}, color);
    vertices_[1] = gui::VertexC({b.x, b.y, 0}, color);
    vertices_[2] = gui::VertexC({c.x, c.y, 0}, color);
    renderer_->DrawPrimitive(vertices_, gui::Renderer::e_triangleList, 1, 0);
}

namespace
{

/// Longest time between two values that a trace bridges.
constexpr double s_maxGap = 1;

/// Finds the extremes of a trace for one column after the other, from left to right.
class TraceColumns
{
public:
    explicit TraceColumns(std::deque<Trace::Step> const &steps) : steps_(steps) {}

    /// Gives the extremes of the values up to a time, and of what connects them with those before. False if there is
    /// nothing to draw.
    bool TakeUntil(double time, double &low, double &high)
    {
        bool const hasBefore = next_ > 0 && time - last_.time <= s_maxGap;
        low = hasBefore ? last_.low : std::numeric_limits<double>::infinity();
        high = hasBefore ? last_.low : -std::numeric_limits<double>::infinity();
        for (; next_ < steps_.size() && steps_[next_].time <= time; ++next_)
        {
            low = std::min(low, steps_[next_].low);
            high = std::max(high, steps_[next_].high);
            last_ = steps_[next_];
        }
        return low <= high;
    }

private:
    std::deque<Trace::Step> const &steps_;
    std::size_t next_ = 0;
    Trace::Step last_;
};

void SetColumn(gui::VertexC *vertices, float x, float top, float bottom, color4b color)
{
    vec3 const corners[] = {{x, top, 0},     {x + 1, top, 0},    {x, bottom, 0},
                            {x + 1, top, 0}, {x + 1, bottom, 0}, {x, bottom, 0}};
    for (vec3 const &corner : corners)
        *vertices++ = gui::VertexC(corner, color);
}

} // namespace

void BoardPainter::DrawTrace(vec2 const &position, vec2 const &size, Trace const &trace, double now, double low,
                             double high, color4b color) const
{
    constexpr unsigned int verticesOfColumn = 6;
    auto const width = static_cast<unsigned int>(std::max(0.0F, size.x));
    if (renderer_ == nullptr || trace.GetSteps().empty() || !(low < high) || width == 0)
        return;
    float const thickness = Measures::Pixels(1.5F);
    auto const toY = [&](double value)
    {
        return position.y +
               (size.y - thickness) * (1 - static_cast<float>(std::clamp((value - low) / (high - low), 0.0, 1.0)));
    };
    TraceColumns columns(trace.GetSteps());
    vertices_.Resize(verticesOfColumn * width);
    unsigned int count = 0;
    for (unsigned int x = 0; x < width; ++x)
    {
        double bottom = 0;
        double top = 0;
        if (columns.TakeUntil(now - Trace::s_seconds * (1 - (x + 1.0) / width), bottom, top))
            SetColumn(&vertices_[verticesOfColumn * count++], position.x + static_cast<float>(x), toY(top),
                      toY(bottom) + thickness, color);
    }
    renderer_->DrawPrimitive(vertices_, gui::Renderer::e_triangleList, 2 * count, 0);
}

} // namespace viewer
