#include "signalview.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/dataexception.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/gui/gui_renderer.h>
#include <quillmarsh/widgets/measures.h>
#include <quillmarsh/widgets/textencoding.h>

#include <algorithm>
#include <cmath>

namespace viewer
{

using namespace quillmarsh;
using widgets::Measures;

namespace
{

constexpr color4b s_axisInk(165, 174, 188, 255);
constexpr color4b s_markerInk(255, 255, 255, 120);
constexpr float s_notch = 120;
/// Zoom of a notch of the wheel, and its part of the range when it scrolls.
constexpr double s_zoomStep = 1.25;
constexpr double s_scrollStep = 0.1;
/// Rest after which a movement of the wheel has ended.
constexpr double s_echoDelay = 0.3;
/// A shorter movement of the mouse is a click.
constexpr float s_clickDistance = 3;

color4b ToColour(Pixel pixel)
{
    return {static_cast<unsigned char>(pixel >> 16), static_cast<unsigned char>(pixel >> 8),
            static_cast<unsigned char>(pixel), 255};
}

bool IsPressed(eKeyModifier modifier)
{
    return gui::Manager::Instance().IsKeyModifierPressed(modifier);
}

unsigned int ToPixels(float units)
{
    return static_cast<unsigned int>(Measures::Pixels(units));
}

} // namespace

string FormatRangeLine(PlotSettings const &settings)
{
    // Hundredths of a pixel are enough.
    double const precision = std::pow(10.0, std::floor(std::log10((settings.end - settings.begin) / 1e5)));
    auto const round = [&](double value) { return precision < 1 ? value : std::round(value); };
    return "range " + FormatWord(round(settings.begin)) + ' ' + FormatWord(round(settings.end));
}

string FormatValuesLine(PlotSettings const &settings)
{
    if (settings.valueRange != eValueRange::e_fixed)
        return string("values ") + GetValueRangeNames()[static_cast<std::size_t>(settings.valueRange)];
    return "values " + FormatWord(settings.low) + ' ' + FormatWord(settings.high);
}

string FormatSpanLine(PlotSettings const &settings)
{
    if (settings.span.IsEmpty())
        return "span none";
    return "span " + MakeString(settings.span.begin) + ' ' + MakeString(settings.span.end);
}

SignalView::SignalView(gui::Component &parent, SignalState &state) : View(&parent), state_(state) {}

SignalView::~SignalView() = default;

void SignalView::Update(double seconds)
{
    if (revision_ != state_.GetRevision())
    {
        revision_ = state_.GetRevision();
        Invalidate();
    }
    if (pendingEcho_.empty())
        return;
    restSeconds_ += seconds;
    if (restSeconds_ >= s_echoDelay)
        state_.GetWorkspace().Echo(std::exchange(pendingEcho_, string()));
    else
        state_.GetWorkspace().Invalidate();
}

// Picture.

PlotSize SignalView::CalcSize(unsigned int width, unsigned int height) const
{
    PlotSize size;
    size.width = width;
    size.height = height;
    size.gap = ToPixels(Measures::Gap);
    size.bottom = static_cast<unsigned int>(widgets::GetLineHeight(*this)) + ToPixels(Measures::Gap);
    size.tickWidth = ToPixels(96);
    size.tickHeight = ToPixels(36);
    size.line = 1.5 * static_cast<double>(Measures::GetScale());
    return size;
}

void SignalView::LayOut(unsigned int width, unsigned int height)
{
    PlotSize size = CalcSize(width, height);
    layout_ = LayOutPlot(*state_.GetLevels(), state_.GetSettings(), size);
    // The ticks tell how much room they need.
    float widest = Measures::Pixels(24);
    for (PlotLane const &lane : layout_.lanes)
    {
        for (PlotTick const &tick : lane.ticks)
            widest = std::max(widest, widgets::CalcTextWidth(*this, widgets::ToGlyphs(tick.text)));
    }
    size.left = static_cast<unsigned int>(widest) + 2 * ToPixels(Measures::Gap);
    layout_ = LayOutPlot(*state_.GetLevels(), state_.GetSettings(), size);
}

void SignalView::Compose(ImageBase &picture)
{
    if (SignalLevels const *const levels = state_.GetLevels())
    {
        LayOut(picture.GetNumColumns(), picture.GetNumRows());
        ComposePlot(picture, *levels, state_.GetSettings(), layout_);
        return;
    }
    layout_ = PlotLayout();
    auto *const pixels = reinterpret_cast<Pixel *>(picture.GetSamplesB());
    std::fill_n(pixels, picture.GetNumSamples(), GetPlotBackground());
}

void SignalView::DrawOver(gui::Renderer &renderer)
{
    if (state_.GetLevels() == nullptr)
    {
        float const margin = Measures::Pixels(Measures::Margin);
        DrawNote(renderer, {margin, margin}, "Looking for the extremes of the signal…", s_axisInk);
        return;
    }
    if (layout_.lanes.empty())
        DrawNote(renderer, {Measures::Pixels(Measures::Margin), Measures::Pixels(Measures::Margin)},
                 "No channel is chosen.", s_axisInk);
    DrawAxes(renderer);
    DrawNames(renderer);
    DrawMarker(renderer);
}

void SignalView::DrawAxes(gui::Renderer &renderer)
{
    float const gap = Measures::Pixels(Measures::Gap);
    float const textHeight = widgets::GetTextHeight(*this);
    float const right = static_cast<float>(layout_.left) - gap;
    for (PlotLane const &lane : layout_.lanes)
    {
        for (PlotTick const &tick : lane.ticks)
        {
            float const width = widgets::CalcTextWidth(*this, widgets::ToGlyphs(tick.text));
            float const y = std::clamp(
                static_cast<float>(tick.pixel) - textHeight / 2, static_cast<float>(lane.top),
                std::max(static_cast<float>(lane.top), static_cast<float>(lane.top + lane.height) - textHeight));
            DrawLabel(renderer, {right - width, y}, tick.text, s_axisInk);
        }
    }
    float const y = static_cast<float>(layout_.size.height - layout_.size.bottom) + gap / 2;
    for (PlotTick const &tick : layout_.ticks)
    {
        float const width = widgets::CalcTextWidth(*this, widgets::ToGlyphs(tick.text));
        // Those at the ends move inwards.
        float const least = static_cast<float>(layout_.left) - gap;
        float const most = std::max(least, GetSize().x - width - gap / 2);
        DrawLabel(renderer, {std::clamp(static_cast<float>(tick.pixel) - width / 2, least, most), y}, tick.text,
                  s_axisInk);
    }
}

void SignalView::DrawNames(gui::Renderer &renderer)
{
    float const gap = Measures::Pixels(Measures::Gap);
    std::span<Channel const> const channels = state_.GetChannels();
    for (PlotLane const &lane : layout_.lanes)
    {
        float x = static_cast<float>(layout_.left) + gap;
        for (unsigned int i = 0; i < channels.size(); ++i)
        {
            if ((lane.channels >> i & 1) != 0)
                x += 2 * gap + DrawNote(renderer, {x, static_cast<float>(lane.top) + gap / 2}, channels[i].name,
                                        ToColour(GetChannelColour(channels[i])));
        }
    }
}

void SignalView::DrawMarker(gui::Renderer &renderer)
{
    if (!FindSample() || drag_ == eDrag::e_pan)
        return;
    // A sample that is wider than a pixel has its marker in its middle.
    double const point = layout_.ToPixel(static_cast<double>(*FindSample()) + 0.5);
    float const x = layout_.samplesPerPixel < 1 ? static_cast<float>(std::floor(point)) : std::floor(mouse_->x);
    for (PlotLane const &lane : layout_.lanes)
    {
        renderer.DrawRectangle(gui::RectangleC(
            gui::Rectangle(x, static_cast<float>(lane.top), 1, static_cast<float>(lane.height)), s_markerInk));
        DrawValues(renderer, lane, x);
    }
}

void SignalView::DrawValues(gui::Renderer &renderer, PlotLane const &lane, float x)
{
    float const gap = Measures::Pixels(Measures::Gap);
    float const lineHeight = widgets::GetLineHeight(*this);
    std::span<Channel const> const channels = state_.GetChannels();
    std::uint64_t const sample = *FindSample();
    float y = static_cast<float>(lane.top) + gap / 2;
    for (unsigned int i = 0; i < channels.size(); ++i)
    {
        if ((lane.channels >> i & 1) == 0)
            continue;
        double const value = state_.GetLevels()->GetValue(i, sample);
        string text = FormatValue(value);
        if (layout_.samplesPerPixel > 1)
        {
            double const begin = layout_.ToPlace(static_cast<double>(x));
            Extent const extent =
                state_.GetLevels()->GetExtent(i, static_cast<std::uint64_t>(std::max(0.0, begin)),
                                              static_cast<std::uint64_t>(begin + layout_.samplesPerPixel) + 1);
            text = FormatValue(static_cast<double>(extent.low)) + " to " +
                   FormatValue(static_cast<double>(extent.high)) + ", mean " +
                   FormatValue(static_cast<double>(extent.mean));
        }
        float const width = widgets::CalcTextWidth(*this, text);
        float const left = x + gap + width <= GetSize().x ? x + gap : x - gap - width;
        // A row below the names of the channels, which stand at the left.
        bool const coversNames = left < static_cast<float>(layout_.left) + Measures::Pixels(120);
        DrawNote(renderer, {left, y + (coversNames ? lineHeight : 0)}, text, ToColour(GetChannelColour(channels[i])));
        y += lineHeight;
        auto const pixel = static_cast<float>(lane.ToPixel(value));
        float const size = Measures::Pixels(5);
        if (layout_.samplesPerPixel <= 1 && std::isfinite(pixel))
            renderer.DrawRectangleFrame(
                gui::RectangleC(gui::Rectangle(static_cast<float>(layout_.ToPixel(static_cast<double>(sample) + 0.5)) -
                                                   std::floor(size / 2),
                                               pixel - std::floor(size / 2), size, size),
                                color4b(255, 255, 255, 255)),
                1);
    }
}

// Mouse.

std::optional<std::uint64_t> SignalView::FindSample() const
{
    if (!mouse_ || state_.GetLevels() == nullptr || layout_.lanes.empty() ||
        mouse_->x < static_cast<float>(layout_.left))
        return std::nullopt;
    double const place = std::floor(layout_.ToPlace(static_cast<double>(mouse_->x)));
    if (place < 0 || place >= static_cast<double>(state_.GetNumSamples()))
        return std::nullopt;
    return static_cast<std::uint64_t>(place);
}

string SignalView::DescribeMouse() const
{
    std::optional<std::uint64_t> const sample = FindSample();
    if (!sample)
        return string();
    SignalLevels const &levels = *state_.GetLevels();
    SignalBase const &signal = *levels.GetContent()->Get<SignalBase>();
    return state_.FormatPlace(static_cast<double>(*sample)) + ": " +
           FormatSample(signal.GetSampleFormat(),
                        signal.GetSamplesB() + static_cast<std::size_t>(*sample) * signal.GetSampleByteSize());
}

bool SignalView::OnMouseWheel(int delta, vec2 const &position)
{
    if (state_.GetLevels() == nullptr)
        return false;
    double const notches = static_cast<double>(static_cast<float>(delta) / s_notch);
    PlotSettings settings = state_.GetSettings();
    restSeconds_ = 0;
    if (IsPressed(e_key_modifier_control))
    {
        ScaleValues(std::pow(s_zoomStep, -notches), static_cast<double>(position.y));
        pendingEcho_ = FormatValuesLine(state_.GetSettings());
        return true;
    }
    if (IsPressed(e_key_modifier_shift))
        ShiftRange(settings, -notches * s_scrollStep * (settings.end - settings.begin), state_.GetNumSamples());
    else
        ScaleRange(settings, std::pow(s_zoomStep, -notches), layout_.ToPlace(static_cast<double>(position.x)),
                   state_.GetNumSamples());
    state_.SetSettings(settings);
    pendingEcho_ = FormatRangeLine(settings);
    return true;
}

void SignalView::ScaleValues(double factor, double pixel)
{
    PlotLane const *const lane = layout_.FindLane(pixel);
    if (lane == nullptr)
        return;
    double const about = lane->ToValue(pixel);
    try
    {
        state_.SetValues(about - (about - lane->low) * factor, about + (lane->high - about) * factor);
    }
    catch (sampled_data::DataException const &)
    {
        // As far as it goes.
    }
}

bool SignalView::OnMouseButton(bool down, eMouseButton button, bool doubleClick, unsigned int, vec2 const &position)
{
    if (state_.GetLevels() == nullptr || (button != e_mouse_button_left && button != e_mouse_button_right))
        return false;
    if (!down)
    {
        EndDrag();
        return true;
    }
    if (doubleClick && button == e_mouse_button_left)
    {
        state_.GetWorkspace().Run("range all");
        return true;
    }
    bool const marks = button == e_mouse_button_right || IsPressed(e_key_modifier_shift);
    drag_ = marks ? eDrag::e_span : eDrag::e_pan;
    dragSettings_ = state_.GetSettings();
    dragLayout_ = layout_;
    dragBegin_ = position;
    mouse_ = position;
    RequestMouseCapture();
    return true;
}

bool SignalView::OnMouseMove(bool, double, vec2 const &position)
{
    if (mouse_ && *mouse_ == position)
        return true;
    mouse_ = position;
    if (drag_ != eDrag::e_none)
        DragTo(position);
    state_.GetWorkspace().Invalidate();
    return true;
}

void SignalView::DragTo(vec2 const &position)
{
    PlotSettings settings = state_.GetSettings();
    auto const distance = static_cast<double>(position.x - dragBegin_.x);
    if (drag_ == eDrag::e_span)
    {
        double const from = dragLayout_.ToPlace(static_cast<double>(dragBegin_.x));
        double const to = from + distance * dragLayout_.samplesPerPixel;
        double const count = static_cast<double>(state_.GetNumSamples());
        SampleSpan const span = {static_cast<std::uint64_t>(std::clamp(std::floor(std::min(from, to)), 0.0, count)),
                                 static_cast<std::uint64_t>(std::clamp(std::ceil(std::max(from, to)), 0.0, count))};
        state_.SetSpan(std::abs(distance) < static_cast<double>(s_clickDistance) ? SampleSpan() : span, false);
        return;
    }
    settings.begin = dragSettings_.begin;
    settings.end = dragSettings_.end;
    ShiftRange(settings, -distance * dragLayout_.samplesPerPixel, state_.GetNumSamples());
    PlotLane const *const lane = dragLayout_.FindLane(static_cast<double>(dragBegin_.y));
    if (lane != nullptr && settings.valueRange == eValueRange::e_fixed)
    {
        double const shift =
            (dragSettings_.high - dragSettings_.low) / lane->height * static_cast<double>(position.y - dragBegin_.y);
        settings.low = dragSettings_.low + shift;
        settings.high = dragSettings_.high + shift;
    }
    state_.SetSettings(settings);
}

void SignalView::EndDrag()
{
    eDrag const drag = std::exchange(drag_, eDrag::e_none);
    if (drag == eDrag::e_none)
        return;
    ReleaseMouseCapture();
    Workspace &workspace = state_.GetWorkspace();
    PlotSettings const settings = state_.GetSettings();
    workspace.Invalidate();
    if (drag == eDrag::e_span && settings.span != dragSettings_.span)
    {
        state_.SetSpan(settings.span);
        workspace.Echo(FormatSpanLine(settings));
    }
    if (settings.begin != dragSettings_.begin)
        workspace.Echo(FormatRangeLine(settings));
    if (settings.low != dragSettings_.low)
        workspace.Echo(FormatValuesLine(settings));
}

bool SignalView::OnMouseCapture(bool begin)
{
    if (!begin)
        EndDrag();
    return true;
}

bool SignalView::OnMouseEnterExit(bool enter, bool, vec2 const &position)
{
    mouse_ = enter ? std::optional(position) : std::nullopt;
    state_.GetWorkspace().Invalidate();
    return true;
}

} // namespace viewer
