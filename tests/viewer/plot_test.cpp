// Plots of signals: what they show, and what they measure.
#include "viewer_model/signals/plot.h"

#include <quillmarsh/dataobjects/signalbase.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

namespace viewer
{
namespace
{

using namespace quillmarsh;

template<typename T>
std::shared_ptr<SignalLevels const> MakeLevels(eSampleFormat format, std::vector<T> const &values)
{
    AutoPtr<SignalBase> signal(ManufactureSignal(format, 1));
    signal->ReserveSampleStorage(
        static_cast<unsigned int>(values.size() * sizeof(T) / sample_formats::ExtractByteSize(format)));
    std::memcpy(signal->GetSamplesB(), values.data(), values.size() * sizeof(T));
    return SignalLevels::Build(std::make_shared<Content>(sampled_data::SampledData(std::move(signal))));
}

/// A picture of a plot without axes: one lane, as large as the picture.
class Plot
{
public:
    static constexpr unsigned int s_width = 300;
    static constexpr unsigned int s_height = 64;

    Plot(SignalLevels const &levels, PlotSettings const &settings)
        : picture(ManufactureImage(e_format_A8R8G8B8, s_height, s_width))
    {
        PlotSize size;
        size.width = s_width;
        size.height = s_height;
        // No lines of a grid.
        size.tickWidth = size.tickHeight = 1'000'000;
        layout = LayOutPlot(levels, settings, size);
        layout.ticks.clear();
        for (PlotLane &lane : layout.lanes)
            lane.ticks.clear();
        ComposePlot(*picture, levels, settings, layout);
    }

    Pixel Get(unsigned int x, unsigned int y) const
    {
        Pixel pixel;
        std::memcpy(&pixel, picture->SampleB(y, x), sizeof(pixel));
        return pixel;
    }
    /// True if the pixel has more than the colour of the background, as far as two plots tell.
    bool IsDrawn(unsigned int x, unsigned int y) const { return Get(x, y) != s_background; }

    static constexpr Pixel s_background = 0xFF1B1F26;
    AutoPtr<ImageBase> picture;
    PlotLayout layout;
};

TEST(Plot, ShowsASinglePeakAtEveryZoom)
{
    constexpr unsigned int numSamples = 3'000'000;
    constexpr unsigned int peak = 1'234'567;
    std::vector<unsigned char> samples(numSamples, 10);
    samples[peak] = 250;
    auto const levels = MakeLevels(e_format_L8, samples);
    PlotSettings settings;
    SetRange(settings, 0, numSamples, numSamples);
    // A row in the upper half that nothing but the peak reaches.
    unsigned int const row = Plot::s_height / 4;
    for (double length = numSamples; length >= 10; length /= 3)
    {
        ScaleRange(settings, length / (settings.end - settings.begin), peak, numSamples);
        Plot const plot(*levels, settings);
        auto const pixel = static_cast<int>(std::floor(plot.layout.ToPixel(peak + 0.5)));
        // A line from the sample beside it comes down at an angle.
        int const reach = std::max(1, static_cast<int>(1 / plot.layout.samplesPerPixel));
        bool found = false;
        for (int x = std::max(0, pixel - reach); x <= std::min<int>(pixel + reach, Plot::s_width - 1); ++x)
            found |= plot.IsDrawn(static_cast<unsigned int>(x), row);
        EXPECT_TRUE(found) << "at " << length << " samples";
        EXPECT_FALSE(plot.IsDrawn(pixel < 150 ? 299 : 0, row) && length > 100) << "at " << length << " samples";
    }
}

TEST(Plot, MovesByWholePixelsWithoutFlicker)
{
    std::vector<float> samples;
    for (unsigned int i = 0; i < 400'000; ++i)
        samples.push_back(std::sin(static_cast<float>(i) * 1.7F) + static_cast<float>(i * 2654435761U % 97) / 97);
    auto const levels = MakeLevels(e_format_FP32NormL, samples);
    for (double const samplesPerPixel : {2.5, 40.0, 700.25})
    {
        PlotSettings settings;
        settings.valueRange = eValueRange::e_fixed;
        settings.low = -1;
        settings.high = 2;
        SetRange(settings, 1000, 1000 + samplesPerPixel * Plot::s_width, samples.size());
        Plot const before(*levels, settings);
        constexpr unsigned int distance = 7;
        ShiftRange(settings, samplesPerPixel * distance, samples.size());
        Plot const after(*levels, settings);
        unsigned int numDifferent = 0;
        for (unsigned int y = 0; y < Plot::s_height; ++y)
        {
            for (unsigned int x = 1; x + distance < Plot::s_width; ++x)
                numDifferent += before.Get(x + distance, y) != after.Get(x, y) ? 1 : 0;
        }
        EXPECT_EQ(0U, numDifferent) << "at " << samplesPerPixel << " samples a pixel";
    }
}

TEST(Plot, LeavesGapsForNaNAndSurvivesOddSettings)
{
    std::vector<float> samples(1000, 0.5F);
    std::fill(samples.begin() + 400, samples.begin() + 600, NAN);
    samples[10] = INFINITY;
    samples[11] = -INFINITY;
    auto const levels = MakeLevels(e_format_FP32NormL, samples);
    PlotSettings settings;
    SetRange(settings, 350, 650, samples.size());
    settings.valueRange = eValueRange::e_fixed;
    Plot const plot(*levels, settings);
    auto const isEmpty = [&](unsigned int x)
    {
        for (unsigned int y = 0; y < Plot::s_height; ++y)
        {
            if (plot.IsDrawn(x, y))
                return false;
        }
        return true;
    };
    EXPECT_FALSE(isEmpty(20));
    EXPECT_TRUE(isEmpty(150));
    EXPECT_FALSE(isEmpty(280));
    settings.channels = 0;
    EXPECT_TRUE(Plot(*levels, settings).layout.lanes.empty());
    settings.channels = ~0U;
    settings.valueRange = eValueRange::e_auto;
    EXPECT_TRUE(std::isfinite(Plot(*levels, settings).layout.lanes.at(0).high));
    settings.valueRange = eValueRange::e_fixed;
    settings.low = 1e30;
    settings.high = 2e30;
    settings.span = {900, 2000};
    SetRange(settings, 0, 1e9, samples.size());
    EXPECT_EQ(1000, settings.end);
    Plot const far(*levels, settings);
    SetRange(settings, 10, 10, samples.size());
    Plot const close(*levels, settings);
    EXPECT_EQ(1, settings.end - settings.begin);
    PlotSize tiny;
    AutoPtr<ImageBase> pixel(ManufactureImage(e_format_A8R8G8B8, 1, 1));
    tiny.left = tiny.bottom = tiny.gap = 50;
    ComposePlot(*pixel, *levels, settings, LayOutPlot(*levels, settings, tiny));
}

TEST(Plot, StepsOfAxesAreRound)
{
    struct Case
    {
        double low;
        double high;
        unsigned int maxCount;
        std::vector<string> texts;
    };
    Case const cases[] = {
        {-0.05, 1.02, 6, {"0.0", "0.2", "0.4", "0.6", "0.8", "1.0"}},
        {-130, 260, 5, {"-100", "0", "100", "200"}},
        {0.4991, 0.5003, 4, {"0.4995", "0.5000"}},
        {1e12, 4e12, 4, {"1.0000e+12", "2.0000e+12", "3.0000e+12", "4.0000e+12"}},
        {3, 3, 5, {}},
        {0, INFINITY, 5, {}},
    };
    for (Case const &row : cases)
    {
        RoundSteps const steps = FindRoundSteps(row.low, row.high, row.maxCount);
        std::vector<string> texts;
        for (unsigned int i = 0; i < steps.count; ++i)
            texts.push_back(FormatTick(steps.GetValue(i), steps.step));
        EXPECT_EQ(row.texts, texts);
    }
    EXPECT_EQ("2.5 s", FormatSeconds(2.5, 0.5));
    EXPECT_EQ("2.5 ms", FormatSeconds(0.0025, 0.0005));
    EXPECT_EQ("2.0 µs", FormatSeconds(0.000002, 5e-7));
    // Samples count in whole numbers, at their middle.
    auto const levels = MakeLevels(e_format_L8, std::vector<unsigned char>(5000));
    PlotSettings settings;
    SetRange(settings, 1000, 1003, 5000);
    PlotSize size;
    size.width = 300;
    PlotLayout const layout = LayOutPlot(*levels, settings, size);
    ASSERT_EQ(3U, layout.ticks.size());
    EXPECT_EQ("1 001", layout.ticks[1].text);
    EXPECT_EQ(150, layout.ticks[1].pixel);
}

TEST(Plot, MeasuresSpans)
{
    // Squares of a large mean would lose a small deviation.
    std::vector<float> samples;
    for (unsigned int i = 0; i < 2'000'000; ++i)
        samples.push_back(100'000 + (i % 2 == 0 ? 0.25F : -0.25F));
    samples[0] = -5;
    samples[1'999'999] = NAN;
    auto const levels = MakeLevels(e_format_FP32NormA, samples);
    SpanFigures const figures = MeasureSpan(*levels, {1, 3'000'000}).at(0);
    EXPECT_STREQ("alpha", figures.name);
    EXPECT_EQ(99'999.75, figures.minimum);
    EXPECT_EQ(100'000.25, figures.maximum);
    EXPECT_NEAR(100'000, figures.mean, 1e-6);
    EXPECT_NEAR(0.25, figures.deviation, 1e-6);
    EXPECT_EQ(1U, figures.numNaN);
    EXPECT_EQ(-5, MeasureSpan(*levels, {0, 1}).at(0).mean);
    EXPECT_TRUE(std::isnan(MeasureSpan(*levels, {1'999'999, 2'000'000}).at(0).mean));
    EXPECT_TRUE(MeasureSpan(*levels, {0, 2'000'000}, [](double part) { return part < 0.5; }).empty());
}

} // namespace
} // namespace viewer
