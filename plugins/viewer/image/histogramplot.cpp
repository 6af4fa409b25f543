#include "histogramplot.h"

#include "../room.h"
#include "numbers.h"

#include <quillmarsh/gui/gui_renderer.h>
#include <quillmarsh/widgets/looknames.h>
#include <quillmarsh/widgets/measures.h>

#include <algorithm>
#include <cmath>

namespace viewer
{

using namespace quillmarsh;
using widgets::Measures;

namespace
{

constexpr float s_height = 96;
constexpr unsigned int s_numParts = 256;
/// Units between the frame and the plot.
constexpr float s_inset = 1;

struct ChannelColour
{
    char const *name;
    color4b color;
};
constexpr ChannelColour s_colours[] = {{"red", {255, 80, 80, 150}},
                                       {"green", {70, 200, 90, 150}},
                                       {"blue", {80, 130, 255, 150}},
                                       {"luminance", {160, 165, 175, 200}},
                                       {"alpha", {160, 120, 200, 90}}};
constexpr color4b s_window = {255, 190, 60, 255};

/// Returns the number of samples at the upper edge. Few parts that have far more, such as a black background, are cut
/// there, so that the others can be seen.
double FindTop(std::vector<double> &counts)
{
    if (counts.empty())
        return 1;
    std::sort(counts.begin(), counts.end());
    double const high = counts[(counts.size() - 1) * 97 / 100];
    return std::min(counts.back(), high * 1.25);
}

color4b FindColour(string const &name)
{
    for (ChannelColour const &row : s_colours)
    {
        if (name == row.name)
            return row.color;
    }
    return s_colours[3].color;
}

} // namespace

HistogramPlot::HistogramPlot(gui::Component *parent, std::shared_ptr<ImageState> state) : state_(std::move(state))
{
    SetShaderName(widgets::ShaderName_Group);
    SetToolTipText("Number of samples by their value. The two lines are the window: drag them.");
    if (parent != nullptr)
        AttachTo(*parent);
}

HistogramPlot::~HistogramPlot() = default;

void HistogramPlot::RecalcSize()
{
    SetSize(Measures::Pixels(vec2(Room::s_inspectorWidth, s_height)));
}

double HistogramPlot::CountOf(std::uint64_t count) const
{
    auto const value = static_cast<double>(count);
    return state_->histogram.isLogarithmic ? std::log1p(value) : value;
}

void HistogramPlot::DrawChannel(gui::Renderer &renderer, ChannelFigures const &figures, double most,
                                color4b color) const
{
    float const inset = Measures::Pixels(s_inset);
    float const width = GetSize().x - 2 * inset, height = GetSize().y - 2 * inset;
    auto const place = [&](unsigned int part)
    { return inset + std::round(width * static_cast<float>(part) / s_numParts); };
    for (unsigned int part = 0; part < s_numParts && part < figures.histogram.size(); ++part)
    {
        double const share = std::min(CountOf(figures.histogram[part]) / most, 1.0);
        float const bar = std::ceil(static_cast<float>(share) * (height - 2 * inset));
        float const left = place(part), right = place(part + 1);
        if (bar > 0 && right > left)
            renderer.DrawRectangle(gui::RectangleC({left, inset + height - bar, right - left, bar}, color));
    }
}

void HistogramPlot::DrawSelf(gui::Renderer &renderer)
{
    Component::DrawSelf(renderer);
    Figures const *const figures = state_->GetFigures();
    if (figures == nullptr)
        return;
    int const shown = state_->display.channel;
    bool const hasColours = figures->channels.size() > 1 && shown < 0;
    std::vector<double> counts;
    auto const isShown = [&](std::size_t index)
    {
        // An image that is opaque everywhere has one bar of alpha, which would make the others flat.
        return shown >= 0 ? static_cast<std::size_t>(shown) == index
                          : !hasColours || string(figures->channels[index].name) != "alpha";
    };
    for (std::size_t i = 0; i < figures->channels.size(); ++i)
    {
        if (!isShown(i))
            continue;
        for (std::uint64_t const count : figures->channels[i].histogram)
        {
            if (count != 0)
                counts.push_back(CountOf(count));
        }
    }
    double const most = FindTop(counts);
    for (std::size_t i = 0; i < figures->channels.size(); ++i)
    {
        if (isShown(i))
            DrawChannel(renderer, figures->channels[i], most, FindColour(figures->channels[i].name));
    }
    float const inset = Measures::Pixels(s_inset), line = Measures::Pixels(1);
    for (double const part : {state_->display.low, state_->display.high})
    {
        if (part < 0 || part > 1)
            continue;
        float const x = inset + std::round((GetSize().x - 2 * inset - line) * static_cast<float>(part));
        renderer.DrawRectangle(gui::RectangleC({x, inset, line, GetSize().y - 2 * inset}, s_window));
    }
}

double HistogramPlot::ToPart(float x) const
{
    float const inset = Measures::Pixels(s_inset);
    double const part = static_cast<double>((x - inset) / std::max(GetSize().x - 2 * inset, 1.0f));
    return std::clamp(std::round(part * 1000) / 1000, 0.0, 1.0);
}

void HistogramPlot::DragTo(float x)
{
    DisplaySettings &display = state_->display;
    (dragged_ == 1 ? display.low : display.high) = ToPart(x);
    state_->Change();
}

bool HistogramPlot::OnMouseButton(bool down, eMouseButton button, bool, unsigned int repeatCount, vec2 const &position)
{
    if (button != e_mouse_button_left)
        return false;
    if (!down || repeatCount != 0 || state_->GetImage() == nullptr || !RequestMouseCapture())
        return true;
    DisplaySettings const &display = state_->display;
    double const part = ToPart(position.x);
    dragged_ = std::abs(part - display.low) < std::abs(part - display.high) ? 1 : 2;
    DragTo(position.x);
    return true;
}

bool HistogramPlot::OnMouseMove(bool hover, double, vec2 const &position)
{
    if (hover || dragged_ == 0)
        return false;
    DragTo(position.x);
    return true;
}

bool HistogramPlot::OnMouseCapture(bool begin)
{
    if (!begin && std::exchange(dragged_, 0) != 0)
    {
        state_->GetWorkspace().Echo("window " + FormatNumber(state_->display.low) + ' ' +
                                    FormatNumber(state_->display.high));
    }
    return true;
}

} // namespace viewer
