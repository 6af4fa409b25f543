// Pictures of images in the viewer: composing a view, the levels of an image, and the figures of its samples.
#include <viewer_model/images/composer.h>
#include <viewer_model/images/figures.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <map>
#include <string>

namespace quillmarsh::benchmarks
{
namespace
{

using viewer::ContentPtr;
using viewer::ImageLevels;

constexpr unsigned int s_viewWidth = 1000;
constexpr unsigned int s_viewHeight = 800;

struct FormatCase
{
    char const *name;
    eSampleFormat format;
    bool isOpaque = false;
};

constexpr FormatCase s_formats[] = {
    {"A8R8G8B8", e_format_A8R8G8B8, true},
    {"clear_A8R8G8B8", e_format_A8R8G8B8},
    {"L8", e_format_L8},
    {"A8L8", e_format_A8L8},
    {"A4R4G4B4", e_format_A4R4G4B4},
    {"FP32NormL", e_format_FP32NormL},
};

/// An image of random samples: floats in 0..1, and colours whose alpha is 255 unless they are clear ones.
ContentPtr MakeContent(FormatCase const &format, unsigned int side, std::uint32_t seed = 1)
{
    AutoPtr<ImageBase> image(ManufactureImage(format.format, side, side));
    auto *const words = reinterpret_cast<std::uint32_t *>(image->GetSamplesB());
    std::uint32_t word = seed;
    for (std::size_t i = 0; i < image->GetTotalByteSize() / 4; ++i)
    {
        word = word * 1664525 + 1013904223;
        float const value = static_cast<float>(word >> 8) / 0x1000000;
        words[i] = format.format == e_format_FP32NormL ? std::bit_cast<std::uint32_t>(value)
                   : format.isOpaque                   ? word >> 3 | 0xFF000000
                                                       : word >> 3 ^ word << 16;
    }
    return std::make_shared<viewer::Content>(sampled_data::SampledData(std::move(image)));
}

/// Composes one view after the other, each moved by a step.
void RunCompose(benchmark::State &state, FormatCase const &format, unsigned int side, double zoom,
                viewer::DisplaySettings const &settings)
{
    static std::map<std::pair<char const *, unsigned int>, std::shared_ptr<ImageLevels const>> s_levels;
    std::shared_ptr<ImageLevels const> &levels = s_levels[{format.name, side}];
    if (!levels)
        levels = ImageLevels::Build(MakeContent(format, side));
    viewer::ToneMap const tones(format.format, settings);
    AutoPtr<ImageBase> const picture(ManufactureImage(e_format_A8R8G8B8, s_viewHeight, s_viewWidth));
    double const middle = side / 2.0, step = 7 / zoom, range = std::max(middle - 500 / zoom, 0.0);
    double way = 0;
    for (auto _ : state)
    {
        way = way + step < range ? way + step : -range;
        ComposeImage(*picture, {0, 0, s_viewWidth, s_viewHeight}, *levels, tones, {middle + way, middle, zoom}, true,
                     -1, 0xFF000000);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations());
}

struct ZoomCase
{
    char const *name;
    double zoom;
};

constexpr ZoomCase s_zooms[] = {{"4_to_1", 4}, {"1_to_1", 1}, {"smooth_0.7", 0.7}, {"smooth_0.51", 0.51}};

void RunBuildLevels(benchmark::State &state, FormatCase const &format, unsigned int side)
{
    ContentPtr const content = MakeContent(format, side);
    for (auto _ : state)
        benchmark::DoNotOptimize(ImageLevels::Build(content));
}

/// Reads the samples once, and writes as many to new memory.
void RunCopy(benchmark::State &state, FormatCase const &format, unsigned int side)
{
    ContentPtr const content = MakeContent(format, side);
    for (auto _ : state)
    {
        AutoPtr<ImageBase> const copy(ManufactureImage(format.format, side, side));
        std::memcpy(copy->GetSamplesB(), content->GetData().GetSamples().GetSamplesB(), copy->GetTotalByteSize());
        benchmark::DoNotOptimize(copy->GetSamplesB());
    }
}

void RunFigures(benchmark::State &state, FormatCase const &format, unsigned int side)
{
    ContentPtr const content = MakeContent(format, side);
    for (auto _ : state)
        benchmark::DoNotOptimize(viewer::ComputeFigures(*content->Get<ImageBase>(), {0, 0, side, side}));
    state.SetItemsProcessed(state.iterations() * side * side);
}

void RunDifference(benchmark::State &state, FormatCase const &format, unsigned int side)
{
    ContentPtr const a = MakeContent(format, side), b = MakeContent(format, side, 2);
    for (auto _ : state)
        benchmark::DoNotOptimize(MakeDifference(*a, *b, viewer::eDifference::e_absolute, 1));
    state.SetItemsProcessed(state.iterations() * side * side);
}

bool RegisterAll()
{
    for (FormatCase const &format : s_formats)
    {
        std::string const name(format.name);
        for (ZoomCase const &zoom : s_zooms)
        {
            benchmark::RegisterBenchmark(("viewer/compose/" + name + '/' + zoom.name).c_str(), RunCompose, format,
                                         4096u, zoom.zoom, viewer::DisplaySettings());
        }
        benchmark::RegisterBenchmark(("viewer/compose/" + name + "/gamma").c_str(), RunCompose, format, 4096u, 1.0,
                                     viewer::DisplaySettings{.gamma = 2.2, .showAlpha = false});
        benchmark::RegisterBenchmark(("viewer/levels/" + name + "/4096").c_str(), RunBuildLevels, format, 4096u);
        benchmark::RegisterBenchmark(("viewer/figures/" + name + "/4096").c_str(), RunFigures, format, 4096u);
        benchmark::RegisterBenchmark(("viewer/difference/" + name + "/1024").c_str(), RunDifference, format, 1024u);
    }
    // The same view of a small image and of a large one, both seen whole.
    for (unsigned int const side : {1024u, 16384u})
    {
        benchmark::RegisterBenchmark(("viewer/compose_whole/" + std::to_string(side)).c_str(), RunCompose, s_formats[0],
                                     side, 750.0 / side, viewer::DisplaySettings());
        benchmark::RegisterBenchmark(("viewer/pan/" + std::to_string(side)).c_str(), RunCompose, s_formats[0], side,
                                     1.0, viewer::DisplaySettings());
    }
    for (auto const &[format, side] : {std::pair(s_formats[0], 8192u), std::pair(s_formats[2], 16384u)})
    {
        std::string const name = std::string(format.name) + '/' + std::to_string(side);
        benchmark::RegisterBenchmark(("viewer/levels/" + name).c_str(), RunBuildLevels, format, side);
        benchmark::RegisterBenchmark(("limit/copy_to_new_image/" + name).c_str(), RunCopy, format, side);
    }
    return true;
}

bool const s_registered = RegisterAll();

} // namespace
} // namespace quillmarsh::benchmarks
