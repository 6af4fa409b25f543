#include "controllerpainter.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/hidcontroller.h>

#include <quillmarsh/widgets/measures.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace viewer
{

using namespace quillmarsh;
using widgets::Measures;

namespace
{

constexpr float s_axisHeight = 20;
constexpr float s_barHeight = 8;
constexpr float s_poseSize = 112;
constexpr float s_boxSize = 20;
constexpr float s_hatSize = 36;

constexpr color4b s_axisColours[] = {{0xF2, 0x68, 0x5F, 255}, {0x62, 0xCC, 0x72, 255}, {0x5E, 0xA2, 0xFA, 255}};
constexpr char const *s_axisNames[] = {"X", "Y", "Z"};

color4b Mix(color4b from, color4b to, double part)
{
    auto const mix = [part](unsigned char a, unsigned char b)
    { return static_cast<unsigned char>(a + (b - a) * part); };
    return {mix(from.r, to.r), mix(from.g, to.g), mix(from.b, to.b), 255};
}

string FormatFixed(double value, unsigned int precision)
{
    string text;
    ToStringFix(text, value, 0, precision);
    bool const isZero = text.find_first_not_of("-0.") == string::npos;
    return isZero && MatchNext(text, '-') ? text.substr(1) : text;
}

/// A view from the front right and above, without perspective: x to the right, y up, z towards the eye.
vec3 Project(vec3 const &v)
{
    constexpr float turn = 0.45F;
    constexpr float tilt = 0.4F;
    float const x = v.x * std::cos(turn) + v.z * std::sin(turn);
    float const z = v.z * std::cos(turn) - v.x * std::sin(turn);
    return {x, v.y * std::cos(tilt) - z * std::sin(tilt), z * std::cos(tilt) + v.y * std::sin(tilt)};
}

} // namespace

float ControllerPainter::Paint(float x, float y, float width) const
{
    Readings const &readings = watched_.readings;
    painter_.Text(x, y, watched_.title, s_boardAccent, width);
    y += painter_.GetTextHeight() + Measures::Pixels(Measures::Grid) / 2;
    if (!readings.note.empty())
    {
        painter_.Text(x, y, readings.note, s_boardHint, width);
        y += painter_.GetTextHeight();
    }
    y = readings.pose.empty() ? PaintAxes(x, y, width) : PaintPose(x, y, width);
    y = PaintHats(x, y, width);
    y = PaintButtons(x, y, width);
    std::vector<std::pair<string, double>> chips;
    for (string const &key : readings.keys)
        chips.emplace_back(key, 1);
    for (GestureMark const &gesture : watched_.gestures)
        chips.emplace_back(gesture.name, gesture.age < 0 ? 1 : 0.5 * (1 - gesture.age / DeviceWatch::s_gestureSeconds));
    return PaintChips(x, y, width, chips);
}

float ControllerPainter::PaintPose(float x, float y, float width) const
{
    float const size = Measures::Pixels(s_poseSize);
    float const gap = Measures::Pixels(Measures::Gap);
    painter_.Fill(x, y, size, size, s_fieldBack);
    vec2 const middle(x + size / 2, y + size / 2);
    float const length = size * 0.4F;
    auto const place = [&](vec3 const &v)
    {
        vec3 const seen = Project(v);
        return vec2(middle.x + seen.x * length, middle.y - seen.y * length);
    };
    std::vector<vec3> const &pose = watched_.readings.pose;
    // The plane of the first and the last axis, as a little board.
    vec3 const right = pose[0] * 0.55F;
    vec3 const ahead = pose[2] * 0.55F;
    color4b const plane(255, 255, 255, 36);
    painter_.Triangle(place(right + ahead), place(right - ahead), place(-right - ahead), plane);
    painter_.Triangle(place(right + ahead), place(-right - ahead), place(-right + ahead), plane);
    unsigned int order[] = {0, 1, 2};
    std::sort(std::begin(order), std::end(order),
              [&](unsigned int a, unsigned int b) { return Project(pose[a]).z < Project(pose[b]).z; });
    for (unsigned int const axis : order)
    {
        vec2 const tip = place(pose[axis]);
        painter_.Line(middle, tip, Measures::Pixels(3), s_axisColours[axis]);
        vec2 const label = place(pose[axis] * 1.14F);
        painter_.Text(label.x - painter_.GetTextWidth(s_axisNames[axis]) / 2, label.y - painter_.GetTextHeight() / 2,
                      s_axisNames[axis], s_axisColours[axis]);
    }
    float const bottom = PaintAxes(x + size + gap, y, width - size - gap);
    return std::max(y + size, bottom) + Measures::Pixels(Measures::Grid);
}

float ControllerPainter::PaintAxes(float x, float y, float width) const
{
    Readings const &readings = watched_.readings;
    for (std::size_t i = 0; i < readings.axes.size(); ++i)
    {
        PaintAxis(x, y, width, readings.axes[i], i < watched_.traces.size() ? &watched_.traces[i] : nullptr);
        y += Measures::Pixels(s_axisHeight);
    }
    return y;
}

void ControllerPainter::PaintAxis(float x, float y, float width, AxisReading const &axis, Trace const *trace) const
{
    if (!painter_.IsDrawing())
        return;
    float const gap = Measures::Pixels(Measures::Gap);
    float const height = Measures::Pixels(s_axisHeight);
    float const nameWidth = std::min(Measures::Pixels(84), width * 0.28F);
    float const valueWidth = std::min(Measures::Pixels(48), width * 0.2F);
    float const barWidth = std::max(0.0F, (width - nameWidth - valueWidth - 2 * gap) * 0.4F);
    float const textY = y + (height - painter_.GetTextHeight()) / 2;
    painter_.Text(x, textY, axis.name, s_boardHint, nameWidth - gap / 2);
    string const value = FormatFixed(axis.value, axis.precision);
    painter_.Text(x + nameWidth + valueWidth - painter_.GetTextWidth(value), textY, value, s_boardText);
    double low = axis.low;
    double high = axis.high;
    if (low >= high)
    {
        Trace::Step const extremes = trace != nullptr ? trace->GetExtremes() : Trace::Step();
        double const room = std::max((extremes.high - extremes.low) * 0.05, std::pow(10.0, -1.0 * axis.precision) * 5);
        low = extremes.low - room;
        high = extremes.high + room;
    }
    float const barX = x + nameWidth + valueWidth + gap;
    float const barHeight = Measures::Pixels(s_barHeight);
    float const barY = y + std::round((height - barHeight) / 2);
    auto const toX = [&](double at)
    { return barX + barWidth * static_cast<float>(std::clamp((at - low) / (high - low), 0.0, 1.0)); };
    painter_.Fill(barX, barY, barWidth, barHeight, s_fieldBack);
    float const zero = toX(low < 0 && high > 0 ? 0 : low);
    float const end = toX(axis.value);
    painter_.Fill(std::min(zero, end), barY, std::max(Measures::Pixels(2), std::abs(end - zero)), barHeight,
                  s_boardAccent);
    float const traceX = barX + barWidth + gap;
    vec2 const size(std::max(0.0F, x + width - traceX), height - Measures::Pixels(2));
    painter_.Fill(traceX, y, size.x, size.y, s_fieldBack);
    if (trace != nullptr)
        painter_.DrawTrace({traceX, y}, size, *trace, now_, low, high, s_boardTrace);
}

float ControllerPainter::PaintHats(float x, float y, float width) const
{
    std::vector<double> const &hats = watched_.readings.hats;
    if (hats.empty())
        return y;
    float const size = Measures::Pixels(s_hatSize);
    float const gap = Measures::Pixels(Measures::Gap);
    float const dot = Measures::Pixels(8);
    float left = x;
    for (double const hat : hats)
    {
        if (left + size > x + width && left > x)
            break;
        painter_.Fill(left, y, size, size, s_fieldBack);
        double const angle = hat * std::numbers::pi / 180;
        double const reach = hat < 0 ? 0 : static_cast<double>(size) * 0.35;
        painter_.Fill(left + (size - dot) / 2 + static_cast<float>(std::sin(angle) * reach),
                      y + (size - dot) / 2 - static_cast<float>(std::cos(angle) * reach), dot, dot,
                      hat < 0 ? s_boardHint : s_boardAccent);
        left += size + gap;
    }
    return y + size + gap / 2;
}

float ControllerPainter::PaintButtons(float x, float y, float width) const
{
    std::vector<bool> const &buttons = watched_.readings.buttons;
    if (buttons.empty())
        return y;
    float const size = Measures::Pixels(s_boxSize);
    float const step = size + Measures::Pixels(Measures::Grid);
    float left = x;
    for (std::size_t i = 0; i < buttons.size(); ++i)
    {
        if (left + size > x + width && left > x)
        {
            left = x;
            y += step;
        }
        painter_.Fill(left, y, size, size, buttons[i] ? s_boardAccent : s_fieldBack);
        string const number = MakeString(i + 1);
        painter_.Text(left + (size - painter_.GetTextWidth(number)) / 2, y + (size - painter_.GetTextHeight()) / 2,
                      number, buttons[i] ? s_boardBack : s_boardHint);
        left += step;
    }
    return y + step;
}

float ControllerPainter::PaintChips(float x, float y, float width,
                                    std::vector<std::pair<string, double>> const &chips) const
{
    bool const canHaveChips = dynamic_cast<Glove *>(watched_.controller) != nullptr ||
                              (watched_.readings.axes.empty() && watched_.readings.buttons.empty());
    if (!canHaveChips || !watched_.readings.note.empty())
        return y;
    float const height = Measures::Pixels(s_boxSize);
    float const margin = Measures::Pixels(Measures::Gap) / 2;
    float const step = height + Measures::Pixels(Measures::Grid);
    float left = x;
    if (chips.empty())
        painter_.Text(x, y + (height - painter_.GetTextHeight()) / 2,
                      watched_.readings.axes.empty() ? "no key is down" : "no gesture", s_boardHint, width);
    for (auto const &[name, strength] : chips)
    {
        float const chipWidth = painter_.GetTextWidth(name) + 2 * margin;
        // One line only, so that a board does not move while keys come and go.
        if (left + chipWidth > x + width)
            break;
        painter_.Fill(left, y, chipWidth, height, Mix(s_fieldBack, s_boardAccent, strength));
        painter_.Text(left + margin, y + (height - painter_.GetTextHeight()) / 2, name,
                      strength > 0.75 ? s_boardBack : Mix(s_boardHint, s_boardText, strength));
        left += chipWidth + margin;
    }
    return y + step;
}

} // namespace viewer
