// Plots of signals: what shows, where it lies in a view, and the picture of it.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_SIGNALS_PLOT_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_SIGNALS_PLOT_H

#include "signallevels.h"
#include <viewer_model/samples/display.h>

#include <quillmarsh/dataobjects/imagebase.h>

namespace viewer
{

/// Where the ends of the value axis come from.
enum class eValueRange
{
    /// The extremes of the whole signal, for each lane.
    e_auto,
    /// The extremes of what shows, for each lane.
    e_visible,
    /// The nominal range of the sample format.
    e_nominal,
    /// `low` and `high`.
    e_fixed
};
/// "auto", "visible", "nominal"; a fixed range has no name.
std::span<char const *const> GetValueRangeNames();

/// Samples from `begin` to ahead of `end`.
struct SampleSpan
{
    std::uint64_t begin = 0;
    std::uint64_t end = 0;

    bool IsEmpty() const { return end <= begin; }
    bool operator==(SampleSpan const &) const = default;
};

/// What of a signal shows, and how. A plain record.
///
/// Sample i takes the place from i to i + 1 on the axis; its point is in the middle of it.
struct PlotSettings
{
    /// Places at the left and the right edge.
    double begin = 0;
    double end = 1;
    eValueRange valueRange = eValueRange::e_auto;
    double low = 0;
    double high = 1;
    /// Bit of each channel that shows, by the index in GetChannels().
    unsigned int channels = ~0U;
    /// A lane for each channel, or all in one.
    bool isStacked = true;
    /// Samples of a second; 0 if it is not known.
    double rate = 0;
    /// Samples that are marked; empty for none.
    SampleSpan span;

    bool operator==(PlotSettings const &) const = default;
};

/// @name Changes of the settings
/// They keep the range inside of a signal of `numSamples`, and at least one sample long.
/// @{
void SetRange(PlotSettings &settings, double begin, double end, std::uint64_t numSamples);
/// Makes a range `factor` times as long, so that the place `about` stays where it is.
void ScaleRange(PlotSettings &settings, double factor, double about, std::uint64_t numSamples);
/// Moves the range by a number of samples.
void ShiftRange(PlotSettings &settings, double distance, std::uint64_t numSamples);
/// @}

/// Mark on an axis.
struct PlotTick
{
    /// Pixel of the picture, across the axis.
    double pixel = 0;
    string text;
};

/// Values between two numbers that are round: multiples of 1, 2 or 5 times a power of ten, at most `maxCount` of them.
/// Nothing for numbers that are not finite or not in order.
struct RoundSteps
{
    double first = 0;
    double step = 0;
    unsigned int count = 0;

    double GetValue(unsigned int index) const { return first + step * index; }
};
RoundSteps FindRoundSteps(double low, double high, unsigned int maxCount);
/// Returns a value with as many digits as neighbours at this distance need to differ.
string FormatTick(double value, double step);
/// Returns a place in time with a unit that suits `step`, as in "12.5 ms", in seconds where the step is 1 s or more.
string FormatSeconds(double seconds, double step);

/// Returns the number of a sample with its digits in groups, as in "1 234 567".
string FormatSampleNumber(double sample);

/// Horizontal strip with plots of one channel, or of all.
struct PlotLane
{
    unsigned int top = 0;
    unsigned int height = 0;
    /// Values at the lower and the upper edge.
    double low = 0;
    double high = 1;
    /// Bits, as in PlotSettings.
    unsigned int channels = 0;
    std::vector<PlotTick> ticks;

    double ToPixel(double value) const { return top + (high - value) / (high - low) * height; }
    double ToValue(double pixel) const { return high - (pixel - top) / height * (high - low); }
};

/// Sizes of a plot, in pixels.
struct PlotSize
{
    unsigned int width = 1;
    unsigned int height = 1;
    /// Room for the values beside the lanes, and for the places below them.
    unsigned int left = 0;
    unsigned int bottom = 0;
    unsigned int gap = 0;
    /// Least distances of ticks.
    unsigned int tickWidth = 100;
    unsigned int tickHeight = 40;
    /// Thickness of lines.
    double line = 1.5;
};

/// Where everything of a plot lies in its picture.
struct PlotLayout
{
    PlotSize size;
    double begin = 0;
    /// More than 0.
    double samplesPerPixel = 1;
    /// All lanes lie in this area.
    unsigned int left = 0;
    unsigned int width = 0;
    std::vector<PlotLane> lanes;
    std::vector<PlotTick> ticks;

    double ToPixel(double place) const { return left + (place - begin) / samplesPerPixel; }
    double ToPlace(double pixel) const { return begin + (pixel - left) * samplesPerPixel; }
    /// Returns the lane at a height, or the nearest one; null without lanes.
    PlotLane const *FindLane(double pixel) const;
};

/// Lays a plot out.
PlotLayout LayOutPlot(SignalLevels const &levels, PlotSettings const &settings, PlotSize const &size);

/// @name Colours
/// Of a channel's plot, and of what lies around the lanes.
/// @{
Pixel GetChannelColour(Channel const &channel);
Pixel GetPlotBackground();
/// @}

/// Fills a picture in A8R8G8B8 of the layout's size. More than one sample for a pixel show as the band of their extremes
/// with their mean in it; less, as a line with a dot for each sample. The time depends on the size only. Any thread.
void ComposePlot(quillmarsh::ImageBase &picture, SignalLevels const &levels, PlotSettings const &settings,
                 PlotLayout const &layout);

/// Figures of one channel of a span.
struct SpanFigures
{
    char const *name = "";
    double minimum = 0;
    double maximum = 0;
    double mean = 0;
    /// Of all values, not of a sample of them.
    double deviation = 0;
    std::uint64_t numNaN = 0;
};

/// Returns the figures of all channels of a span, which is cut to the signal. NaN counts in none of them; a channel of
/// NaN alone has NaN. `progress` as in ImageLevels::Build(); nothing when it stops. Any thread.
std::vector<SpanFigures> MeasureSpan(SignalLevels const &levels, SampleSpan span,
                                     std::function<bool(double)> const &progress = {});

} // namespace viewer

#endif
