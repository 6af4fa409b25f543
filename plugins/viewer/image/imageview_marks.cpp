// What the view of images draws over its picture.
#include "imageview.h"

#include "../clip.h"
#include "numbers.h"

#include <quillmarsh/widgets/measures.h>

#include <algorithm>
#include <cmath>

namespace viewer
{

using namespace quillmarsh;
using widgets::Measures;

namespace
{

constexpr float s_noteMargin = 8;
constexpr float s_noteLine = 18;
constexpr color4b s_light = {255, 255, 255, 255};
constexpr color4b s_dark = {0, 0, 0, 200};
constexpr color4b s_mark = {255, 214, 64, 255};
constexpr color4b s_markArea = {255, 214, 64, 28};
/// Size of the bar that shows the colours of a difference, in units.
constexpr float s_scaleWidth = 160;
constexpr float s_scaleHeight = 10;
constexpr unsigned int s_scaleSteps = 40;

/// Draws a line as two triangles.
void DrawLine(gui::Renderer &renderer, vec2 const &from, vec2 const &to, float thickness, color4b color)
{
    vec2 const along = to - from;
    float const length = std::hypot(along.x, along.y);
    if (length <= 0)
        return;
    vec2 const across(-along.y / length * thickness / 2, along.x / length * thickness / 2);
    vec2 const end(along.x / length * thickness / 2, along.y / length * thickness / 2);
    gui::VertexBufferC vertices(4);
    vec2 const corners[] = {from - end + across, to + end + across, from - end - across, to + end - across};
    for (unsigned int i = 0; i < 4; ++i)
        vertices[i] = gui::VertexC(vec3(corners[i].x, corners[i].y, 0), color);
    renderer.DrawPrimitive(vertices, gui::Renderer::e_triangleStrip, 2, 0);
}

/// Draws a line with a dark edge, which can be seen on any picture.
void DrawEdgedLine(gui::Renderer &renderer, vec2 const &from, vec2 const &to, color4b color)
{
    float const unit = Measures::Pixels(1);
    DrawLine(renderer, from, to, 3 * unit, s_dark);
    DrawLine(renderer, from, to, unit, color);
}

color4b ToColour(Pixel pixel)
{
    return {static_cast<unsigned char>(pixel >> 16 & 255), static_cast<unsigned char>(pixel >> 8 & 255),
            static_cast<unsigned char>(pixel & 255), 255};
}

} // namespace

void ImageView::DrawOver(gui::Renderer &renderer)
{
    for (Pane const &pane : panes_)
    {
        vec2 const corner(static_cast<float>(pane.area.x), static_cast<float>(pane.area.y));
        vec2 const size(static_cast<float>(pane.area.width), static_cast<float>(pane.area.height));
        Clip const clip(renderer, gui::Rectangle(GetAbsolutePosition() + corner, size));
        marks_.Draw(renderer, *this, pane, GetTones(pane), state_->level);
    }
    DrawMeasurement(renderer);
    DrawDivision(renderer);
    DrawTwinOfMouse(renderer);
    DrawTitles(renderer);
    DrawScale(renderer);
}

void ImageView::DrawTitles(gui::Renderer &renderer)
{
    float const margin = Measures::Pixels(s_noteMargin);
    for (Pane const &pane : panes_)
    {
        vec2 const corner(static_cast<float>(pane.area.x), static_cast<float>(pane.area.y));
        vec2 const size(static_cast<float>(pane.area.width), static_cast<float>(pane.area.height));
        Clip const clip(renderer, gui::Rectangle(GetAbsolutePosition() + corner, size));
        DrawNote(renderer, corner + vec2(margin, margin), pane.title);
    }
    Comparison const &comparison = state_->comparison;
    if (panes_.empty() || !comparison.IsOn())
        return;
    string text = comparison.GetFailure();
    if (comparison.GetOther() == nullptr && text.empty())
        text = "loading " + comparison.GetDocument()->GetTitle();
    else if (comparison.IsComputing())
        text = "computing the difference";
    DrawNote(renderer, {margin, margin + Measures::Pixels(s_noteLine)}, text, s_mark);
}

void ImageView::DrawDivision(gui::Renderer &renderer) const
{
    if (panes_.size() != 2)
        return;
    float const height = GetSize().y;
    if (state_->comparison.Is(eComparison::e_side))
    {
        auto const left = static_cast<float>(panes_[0].area.width);
        auto const right = static_cast<float>(panes_[1].area.x);
        renderer.DrawRectangle(gui::RectangleC({left, 0, right - left, height}, {128, 128, 128, 255}));
        return;
    }
    auto const place = static_cast<float>(panes_[1].area.x);
    float const unit = Measures::Pixels(1);
    renderer.DrawRectangle(gui::RectangleC({place - 2 * unit, 0, 4 * unit, height}, s_dark));
    renderer.DrawRectangle(gui::RectangleC({place - unit, 0, 2 * unit, height}, s_light));
    // Handle in the middle.
    gui::Rectangle const handle(place - 4 * unit, std::round(height / 2) - 14 * unit, 8 * unit, 28 * unit);
    gui::Rectangle edge = handle;
    edge.Grow(unit);
    renderer.DrawRectangle(gui::RectangleC(edge, s_dark));
    renderer.DrawRectangle(gui::RectangleC(handle, s_light));
}

/// Shows in the other half where the mouse points.
void ImageView::DrawTwinOfMouse(gui::Renderer &renderer) const
{
    if (!mouse_ || panes_.size() != 2 || !state_->comparison.Is(eComparison::e_side))
        return;
    std::optional<ImagePosition> const at = FindPosition(*mouse_);
    if (!at)
        return;
    Pane const &other = at->pane == &panes_[0] ? panes_[1] : panes_[0];
    double const width = std::round(static_cast<double>(GetSize().x));
    float const x = static_cast<float>(other.placement.ToViewX(at->x, width)), y = mouse_->y;
    if (x < static_cast<float>(other.area.x) || x > static_cast<float>(other.area.x + other.area.width))
        return;
    float const reach = Measures::Pixels(8);
    DrawEdgedLine(renderer, {x - reach, y}, {x + reach, y}, s_light);
    DrawEdgedLine(renderer, {x, y - reach}, {x, y + reach}, s_light);
}

/// Shows the colours of a difference, with the values at both ends.
void ImageView::DrawScale(gui::Renderer &renderer)
{
    bool const isDifference = panes_.size() == 1 && panes_.front().levels == state_->comparison.GetDifference() &&
                              panes_.front().levels != nullptr;
    if (!isDifference)
        return;
    Pane const &pane = panes_.front();
    float const margin = Measures::Pixels(s_noteMargin), line = Measures::Pixels(s_noteLine);
    float const width = Measures::Pixels(s_scaleWidth), height = Measures::Pixels(s_scaleHeight);
    float const top = GetSize().y - margin - height;
    ToneMap const &tones = GetTones(pane);
    gui::RectangleC frame({margin, top, width, height}, s_dark);
    frame.Grow(Measures::Pixels(1));
    renderer.DrawRectangle(frame);
    for (unsigned int step = 0; step < s_scaleSteps; ++step)
    {
        auto const place = [&](unsigned int index)
        { return std::round(margin + width * static_cast<float>(index) / s_scaleSteps); };
        double const part = pane.display.high * (step + 0.5) / s_scaleSteps;
        renderer.DrawRectangle(
            gui::RectangleC({place(step), top, place(step + 1) - place(step), height}, ToColour(tones.MapValue(part))));
    }
    string const white = FormatNumber(pane.display.high, 3);
    float const whiteWidth = widgets::CalcTextWidth(*this, white);
    DrawNote(renderer, {margin, top - line}, "0");
    DrawNote(renderer, {margin + width - whiteWidth, top - line}, white);
    ChannelFigures const *const figures = state_->comparison.GetFigures();
    if (figures == nullptr)
        return;
    DrawNote(renderer, {margin, top - 2 * line},
             "mean " + FormatNumber(figures->mean, 4) + "   greatest " + FormatNumber(figures->maximum, 4));
}

void ImageView::DrawMeasurement(gui::Renderer &renderer)
{
    std::optional<Measurement> const &measurement = state_->GetMeasurement();
    if (!measurement || state_->GetImage() == nullptr)
        return;
    double const width = std::round(static_cast<double>(GetSize().x)),
                 height = std::round(static_cast<double>(GetSize().y));
    for (Pane const &pane : panes_)
    {
        vec2 const corner(static_cast<float>(pane.area.x), static_cast<float>(pane.area.y));
        vec2 const size(static_cast<float>(pane.area.width), static_cast<float>(pane.area.height));
        Clip const clip(renderer, gui::Rectangle(GetAbsolutePosition() + corner, size));
        auto const toView = [&](double x, double y)
        {
            return vec2(static_cast<float>(std::round(pane.placement.ToViewX(x, width))),
                        static_cast<float>(std::round(pane.placement.ToViewY(y, height))));
        };
        string const text = measurement->FormatSize(*state_->GetImage());
        if (measurement->isLine)
        {
            vec2 const from = toView(measurement->x0, measurement->y0), to = toView(measurement->x1, measurement->y1);
            DrawEdgedLine(renderer, from, to, s_mark);
            DrawNote(renderer, vec2(std::min(from.x, to.x), std::max(from.y, to.y) + Measures::Pixels(6)), text,
                     s_mark);
            continue;
        }
        SampleArea const area = measurement->GetArea(*state_->GetImage());
        vec2 const from = toView(area.x, area.y), to = toView(area.x + area.width, area.y + area.height);
        gui::RectangleC frame(gui::Rectangle(from, to - from), s_markArea);
        renderer.DrawRectangle(frame);
        frame.SetColor(s_dark);
        frame.Grow(Measures::Pixels(1));
        renderer.DrawRectangleFrame(frame, Measures::Pixels(3));
        frame.SetColor(s_mark);
        frame.Shrink(Measures::Pixels(1));
        renderer.DrawRectangleFrame(frame, Measures::Pixels(1));
        DrawNote(renderer, vec2(from.x, to.y + Measures::Pixels(6)), text, s_mark);
    }
}

} // namespace viewer
