#include "plot.h"

#include <quillmarsh/basetools/texttools.h>

#include <algorithm>
#include <cmath>

namespace viewer
{

using namespace quillmarsh;

namespace
{

constexpr char const *s_valueRangeNames[] = {"auto", "visible", "nominal"};

string Print(double value, int precision)
{
    string text;
    ToStringFix(text, value, 0, static_cast<unsigned int>(precision));
    return text;
}

/// Number of decimals that tell multiples of a step apart.
int CountDecimals(double step)
{
    return std::clamp(static_cast<int>(-std::floor(std::log10(step) + 1e-9)), 0, 12);
}

struct Ends
{
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void Add(double from, double to)
    {
        if (!std::isfinite(from) || !std::isfinite(to))
            return;
        low = std::min(low, from);
        high = std::max(high, to);
    }
};

std::uint64_t ToSample(double place, std::uint64_t numSamples)
{
    return static_cast<std::uint64_t>(std::clamp(place, 0.0, static_cast<double>(numSamples)));
}

Ends FindEnds(SignalLevels const &levels, PlotSettings const &settings, unsigned int channels)
{
    Ends ends;
    std::span<Channel const> const all = levels.GetSignalChannels();
    std::uint64_t const count = levels.GetNumSamples();
    for (unsigned int i = 0; i < all.size(); ++i)
    {
        if ((channels >> i & 1) == 0)
            continue;
        bool const isVisible = settings.valueRange == eValueRange::e_visible;
        Extent const extent = isVisible ? levels.GetExtent(i, ToSample(std::floor(settings.begin), count),
                                                           ToSample(std::ceil(settings.end), count))
                                        : levels.GetExtent(i, 0, count);
        if (settings.valueRange == eValueRange::e_nominal)
            ends.Add(0, all[i].largest);
        else
            ends.Add(static_cast<double>(extent.low), static_cast<double>(extent.high));
    }
    if (ends.low > ends.high)
        ends = {0, 1};
    return ends;
}

/// Sets the ends of the value axis, with some room above and below the plot.
void SetEnds(PlotLane &lane, SignalLevels const &levels, PlotSettings const &settings)
{
    if (settings.valueRange == eValueRange::e_fixed)
    {
        lane.low = settings.low;
        lane.high = settings.high;
        return;
    }
    Ends const ends = FindEnds(levels, settings, lane.channels);
    double const length = ends.high - ends.low;
    double const room = length > 0 ? length / 16 : std::max(0.5, std::abs(ends.high) / 16);
    lane.low = ends.low - room;
    lane.high = ends.high + room;
}

void AddValueTicks(PlotLane &lane, unsigned int distance)
{
    RoundSteps const steps = FindRoundSteps(lane.low, lane.high, std::max(2U, lane.height / std::max(1U, distance)));
    for (unsigned int i = 0; i < steps.count; ++i)
        lane.ticks.push_back({lane.ToPixel(steps.GetValue(i)), FormatTick(steps.GetValue(i), steps.step)});
}

void AddPlaceTicks(PlotLayout &layout, double rate)
{
    double const scale = rate > 0 ? 1 / rate : 1;
    // The point of a sample stands in the middle of its place.
    double const begin = (layout.begin - 0.5) * scale;
    double const end = begin + layout.width * layout.samplesPerPixel * scale;
    unsigned int const maxCount = std::max(2U, layout.width / std::max(1U, layout.size.tickWidth));
    RoundSteps steps = FindRoundSteps(begin, end, maxCount);
    if (rate <= 0 && steps.step < 1)
        steps = {std::ceil(begin), 1, static_cast<unsigned int>(std::max(0.0, std::floor(end) - std::ceil(begin) + 1))};
    for (unsigned int i = 0; i < steps.count; ++i)
    {
        double const value = steps.GetValue(i);
        layout.ticks.push_back({layout.ToPixel(value / scale + 0.5),
                                rate > 0 ? FormatSeconds(value, steps.step) : FormatSampleNumber(value)});
    }
}

std::vector<unsigned int> FindLaneChannels(SignalLevels const &levels, PlotSettings const &settings)
{
    auto const numChannels = static_cast<unsigned int>(levels.GetSignalChannels().size());
    unsigned int const shown = settings.channels & ((1U << numChannels) - 1);
    if (!settings.isStacked)
        return shown != 0 ? std::vector<unsigned int>{shown} : std::vector<unsigned int>();
    std::vector<unsigned int> lanes;
    for (unsigned int i = 0; i < numChannels; ++i)
    {
        if ((shown >> i & 1) != 0)
            lanes.push_back(1U << i);
    }
    return lanes;
}

} // namespace

std::span<char const *const> GetValueRangeNames()
{
    return s_valueRangeNames;
}

void SetRange(PlotSettings &settings, double begin, double end, std::uint64_t numSamples)
{
    double const count = std::max(1.0, static_cast<double>(numSamples));
    double const length = std::clamp(end - begin, 1.0, count);
    settings.begin = std::clamp(begin, 0.0, count - length);
    settings.end = settings.begin + length;
}

void ScaleRange(PlotSettings &settings, double factor, double about, std::uint64_t numSamples)
{
    double const length = settings.end - settings.begin;
    double const wanted = std::clamp(length * factor, 1.0, std::max(1.0, static_cast<double>(numSamples)));
    double const begin = about - (about - settings.begin) * wanted / length;
    SetRange(settings, begin, begin + wanted, numSamples);
}

void ShiftRange(PlotSettings &settings, double distance, std::uint64_t numSamples)
{
    SetRange(settings, settings.begin + distance, settings.end + distance, numSamples);
}

RoundSteps FindRoundSteps(double low, double high, unsigned int maxCount)
{
    if (!std::isfinite(low) || !std::isfinite(high) || !(low < high) || maxCount == 0)
        return {};
    double const least = (high - low) / maxCount;
    double const power = std::pow(10.0, std::floor(std::log10(least)));
    if (!std::isfinite(power) || power <= 0)
        return {};
    for (double const factor : {1.0, 2.0, 5.0, 10.0})
    {
        double const step = factor * power;
        double const first = std::ceil(low / step) * step;
        // A step above the rounding of the last end still counts.
        auto const count = std::floor((high - first) / step + 1e-9) + 1;
        if (count <= maxCount && first + step != first)
            return {first, step, static_cast<unsigned int>(std::max(0.0, count))};
    }
    return {};
}

string FormatTick(double value, double step)
{
    if (std::abs(value) < step * 1e-6)
        value = 0;
    if (step >= 1e-6 && std::abs(value) < 1e9)
        return Print(value, CountDecimals(step));
    string text;
    ToStringSci(text, value, 0, 4);
    return text;
}

string FormatSeconds(double seconds, double step)
{
    if (step >= 0.01)
        return FormatTick(seconds, step) + " s";
    if (step >= 0.00001)
        return FormatTick(seconds * 1e3, step * 1e3) + " ms";
    return FormatTick(seconds * 1e6, step * 1e6) + " µs";
}

string FormatSampleNumber(double sample)
{
    // Zero without a sign.
    string text = Print(sample + 0.0, 0);
    for (std::size_t end = text.size(); end > 3 && text[end - 4] != '-';)
        text.insert(end -= 3, 1, ' ');
    return text;
}

PlotLane const *PlotLayout::FindLane(double pixel) const
{
    PlotLane const *found = nullptr;
    for (PlotLane const &lane : lanes)
    {
        if (found == nullptr || pixel >= lane.top)
            found = &lane;
    }
    return found;
}

PlotLayout LayOutPlot(SignalLevels const &levels, PlotSettings const &settings, PlotSize const &size)
{
    PlotLayout layout;
    layout.size = size;
    layout.left = std::min(size.left, size.width - 1);
    layout.width = size.width - layout.left;
    layout.begin = settings.begin;
    layout.samplesPerPixel = std::max(1e-9, (settings.end - settings.begin) / layout.width);
    std::vector<unsigned int> const lanes = FindLaneChannels(levels, settings);
    unsigned int const bottom = std::min(size.bottom, size.height - 1);
    auto const numLanes = static_cast<unsigned int>(lanes.size());
    for (unsigned int i = 0; i < numLanes; ++i)
    {
        PlotLane lane;
        unsigned int const height = size.height - bottom + size.gap;
        lane.top = height * i / numLanes;
        unsigned int const next = height * (i + 1) / numLanes;
        lane.height = next - lane.top > size.gap ? next - lane.top - size.gap : 1;
        lane.channels = lanes[i];
        SetEnds(lane, levels, settings);
        AddValueTicks(lane, size.tickHeight);
        layout.lanes.push_back(std::move(lane));
    }
    AddPlaceTicks(layout, settings.rate);
    return layout;
}

} // namespace viewer
