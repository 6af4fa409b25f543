// Plots of long signals in the viewer: their levels, and the picture of a frame while they scroll.
#include <viewer_model/signals/plot.h>

#include <benchmark/benchmark.h>

#include <cmath>

namespace quillmarsh::benchmarks
{
namespace
{

using namespace viewer;

constexpr unsigned int s_numSamples = 100'000'000;

/// A slow wave with noise, from 1 to 254 in each byte.
ContentPtr MakeSignal(eSampleFormat format, unsigned int numSamples)
{
    AutoPtr<SignalBase> signal(ManufactureSignal(format, numSamples));
    unsigned char *const bytes = signal->GetSamplesB();
    std::uint32_t noise = 1;
    for (unsigned int i = 0; i < signal->GetTotalByteSize(); ++i)
    {
        noise = noise * 1664525 + 1013904223;
        double const wave = i % 1024 == 0 ? std::sin(i * 1e-6) : 0;
        bytes[i] = static_cast<unsigned char>(i % 1024 == 0 ? 127 + wave * 60 : bytes[i - 1] / 2 + 40 + (noise >> 26));
    }
    return std::make_shared<Content>(sampled_data::SampledData(std::move(signal)));
}

void BuildLevels(benchmark::State &state)
{
    ContentPtr const content = MakeSignal(e_format_L8, s_numSamples);
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(SignalLevels::Build(content));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(s_numSamples));
}
BENCHMARK(BuildLevels)->Name("viewer/signal/levels")->UseRealTime();

/// Lays out and composes a plot that moves by seven pixels in each frame. The range of the case is the number of samples
/// that show.
void Scroll(benchmark::State &state, eSampleFormat format, unsigned int numSamples, bool isStacked)
{
    auto const levels = SignalLevels::Build(MakeSignal(format, numSamples));
    auto const length = static_cast<double>(state.range(0));
    PlotSettings settings;
    settings.isStacked = isStacked;
    SetRange(settings, 0, length, numSamples);
    PlotSize size;
    size.width = 1280;
    size.height = 720;
    size.left = 48;
    size.bottom = 24;
    size.gap = 8;
    AutoPtr<ImageBase> picture(ManufactureImage(e_format_A8R8G8B8, size.height, size.width));
    for ([[maybe_unused]] auto _ : state)
    {
        ShiftRange(settings, length * 7 / size.width, numSamples);
        if (settings.end >= numSamples)
            SetRange(settings, 0, length, numSamples);
        ComposePlot(*picture, *levels, settings, LayOutPlot(*levels, settings, size));
        benchmark::DoNotOptimize(picture->GetSamplesB());
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK_CAPTURE(Scroll, one, e_format_L8, s_numSamples, true)
    ->Name("viewer/signal/scroll")
    ->Arg(90'000'000)
    ->Arg(1'000'000)
    ->Arg(20'000)
    ->Arg(200);
BENCHMARK_CAPTURE(Scroll, four, e_format_A8R8G8B8, s_numSamples / 4, true)
    ->Name("viewer/signal/scroll_four_lanes")
    ->Arg(20'000'000);
BENCHMARK_CAPTURE(Scroll, together, e_format_A8R8G8B8, s_numSamples / 4, false)
    ->Name("viewer/signal/scroll_four_together")
    ->Arg(20'000'000);

} // namespace
} // namespace quillmarsh::benchmarks
