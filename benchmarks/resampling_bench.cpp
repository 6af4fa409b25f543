// Resampling and mipmap chains, compared with OpenCV's resizing and a plain loop over the interpolator.
#include <quillmarsh/dataobjects/mipmapchains.h>
#include <quillmarsh/dataobjects/sampleprocessors.h>
#include <quillmarsh/dataobjects/scaling.h>
#include <quillmarsh/dataobjects/volumeoperations.h>

#include "benchmarks/support/allocation_counter.h"

#include <benchmark/benchmark.h>
#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <string>
#include <vector>

namespace quillmarsh::benchmarks
{
namespace
{

struct FormatCase
{
    char const *name;
    eSampleFormat format;
    int openCV; ///< OpenCV's type for these samples; negative when it has none
};

constexpr FormatCase s_formats[] = {
    {"A8R8G8B8", e_format_A8R8G8B8, CV_8UC4},
    {"X8R8G8B8", e_format_X8R8G8B8, -1},
    {"L8", e_format_L8, CV_8UC1},
    {"FP32NormL", e_format_FP32NormL, CV_32FC1},
    {"A4R4G4B4", e_format_A4R4G4B4, -1},
    {"A1R5G5B5", e_format_A1R5G5B5, -1},
};

constexpr unsigned int s_sizes[][2] = {{1000, 777}, {512, 1024}};

void FillSamples(SignalBase &signal)
{
    bool const areFloats = signal.GetSampleFormat() == e_format_FP32NormL;
    for (unsigned int i = 0; i < signal.GetTotalByteSize(); ++i)
        signal.GetSamplesB()[i] = static_cast<unsigned char>(areFloats && i % 4 == 3 ? 0x3E : i * 2654435761u >> 24);
}

AutoPtr<ImageBase> MakeImage(eSampleFormat format, unsigned int side)
{
    AutoPtr<ImageBase> image(ManufactureImage(format, side, side));
    FillSamples(*image);
    return image;
}

cv::Mat AsMat(ImageBase const &image, int type)
{
    return cv::Mat(static_cast<int>(image.GetNumRows()), static_cast<int>(image.GetNumColumns()), type,
                   const_cast<unsigned char *>(image.GetSamplesB()));
}

void RunResample2D(benchmark::State &state, eSampleFormat format, eResampleFilter filter, unsigned int from,
                   unsigned int to)
{
    AutoPtr<ImageBase> const src = MakeImage(format, from), dst = MakeImage(format, to);
    RunCounted(state,
               [&]
               {
                   Resample2D(*dst, *src, filter);
                   benchmark::ClobberMemory();
               });
}

void RunOpenCV(benchmark::State &state, FormatCase const &format, eResampleFilter filter, unsigned int from,
               unsigned int to)
{
    cv::setNumThreads(1);
    AutoPtr<ImageBase> const src = MakeImage(format.format, from), dst = MakeImage(format.format, to);
    cv::Mat const srcMat = AsMat(*src, format.openCV);
    cv::Mat dstMat = AsMat(*dst, format.openCV);
    for (auto _ : state)
    {
        cv::resize(srcMat, dstMat, dstMat.size(), 0, 0,
                   filter == e_resample_linear ? cv::INTER_LINEAR : cv::INTER_NEAREST);
        benchmark::ClobberMemory();
    }
}

void RunResample3D(benchmark::State &state)
{
    Volume<Sample32> src(e_format_A8R8G8B8, 128, 128, 128), dst(e_format_A8R8G8B8, 96, 96, 96);
    FillSamples(src);
    FillSamples(dst);
    for (auto _ : state)
    {
        Resample3D(dst, src, e_resample_linear);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(RunResample3D)->Name("resample/3D/linear/A8R8G8B8/128_to_96");

/// Positions and weights of the plain loop along one axis.
struct Walk
{
    float step, u, count;
    unsigned int last, first = 0, second = 0;
    float fraction = 0;

    Walk(unsigned int to, unsigned int from)
        : step(1.0f / static_cast<float>(to + 1)),
          u(step * 0.5f),
          count(static_cast<float>(from)),
          last(from - 1)
    {
    }
    void Next()
    {
        float const position = u * count;
        u += step;
        first = std::min(static_cast<unsigned int>(position), last);
        second = std::min(first + 1, last);
        fraction = position - static_cast<float>(first);
    }
};

void RunInterpolatorLoop3D(benchmark::State &state)
{
    constexpr unsigned int from = 128, to = 96;
    Volume<Sample32> src(e_format_A8R8G8B8, from, from, from), dst(e_format_A8R8G8B8, to, to, to);
    FillSamples(src);
    FillSamples(dst);
    sample_processors::LinearInterpolator3D_NBytes interpolator(4);
    unsigned char const *const samples = src.GetSamplesB();
    auto const at = [samples](unsigned int z, unsigned int y, unsigned int x)
    { return samples + ((std::size_t{z} * from + y) * from + x) * 4; };
    for (auto _ : state)
    {
        unsigned char *out = dst.GetSamplesB();
        Walk z(to, from);
        for (unsigned int layer = 0; layer < to; ++layer)
        {
            z.Next();
            Walk y(to, from);
            for (unsigned int row = 0; row < to; ++row)
            {
                y.Next();
                Walk x(to, from);
                float const fz = z.fraction, fy = y.fraction;
                for (unsigned int column = 0; column < to; ++column, out += 4)
                {
                    x.Next();
                    float const fx = x.fraction;
                    interpolator.Process(
                        out, at(z.first, y.first, x.first), (1 - fz) * (1 - fy) * (1 - fx),
                        at(z.first, y.first, x.second), (1 - fz) * (1 - fy) * fx, at(z.first, y.second, x.first),
                        (1 - fz) * fy * (1 - fx), at(z.first, y.second, x.second), (1 - fz) * fy * fx,
                        at(z.second, y.first, x.first), fz * (1 - fy) * (1 - fx), at(z.second, y.first, x.second),
                        fz * (1 - fy) * fx, at(z.second, y.second, x.first), fz * fy * (1 - fx),
                        at(z.second, y.second, x.second), fz * fy * fx);
                }
            }
        }
        benchmark::ClobberMemory();
    }
}
BENCHMARK(RunInterpolatorLoop3D)->Name("limit/interpolator_loop/3D/A8R8G8B8/128_to_96");

constexpr unsigned int s_mipmapSide = 2048;

void RunMipmaps(benchmark::State &state)
{
    SignalOperationsManager const manager;
    AutoPtr<ImageBase> const src = MakeImage(e_format_A8R8G8B8, s_mipmapSide);
    ImageMipmapChain chain(e_format_A8R8G8B8);
    for (auto _ : state)
    {
        chain.Build(*src, false);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(RunMipmaps)->Name("mipmaps/A8R8G8B8/2048");

void RunOpenCVMipmaps(benchmark::State &state)
{
    cv::setNumThreads(1);
    AutoPtr<ImageBase> const src = MakeImage(e_format_A8R8G8B8, s_mipmapSide);
    std::vector<cv::Mat> chain;
    for (auto _ : state)
    {
        chain.clear();
        chain.push_back(AsMat(*src, CV_8UC4));
        while (chain.back().cols > 1)
        {
            cv::Mat level;
            cv::resize(chain.back(), level, chain.back().size() / 2, 0, 0, cv::INTER_LINEAR);
            chain.push_back(level);
        }
        benchmark::ClobberMemory();
    }
}
BENCHMARK(RunOpenCVMipmaps)->Name("peer/opencv_mipmaps/A8R8G8B8/2048");

/// Sizes of areas: whole factors, and one that is not.
constexpr unsigned int s_areaSizes[][2] = {{2048, 1024}, {1200, 400}, {1024, 256}, {1000, 777}, {1000, 300}};

void RunArea(benchmark::State &state, eSampleFormat format, unsigned int from, unsigned int to)
{
    AutoPtr<ImageBase> const src = MakeImage(format, from), dst = MakeImage(format, to);
    for (auto _ : state)
    {
        ScaleSamples(*dst, *src, e_scale_area);
        benchmark::ClobberMemory();
    }
}

void RunOpenCVArea(benchmark::State &state, FormatCase const &format, unsigned int from, unsigned int to)
{
    cv::setNumThreads(1);
    AutoPtr<ImageBase> const src = MakeImage(format.format, from), dst = MakeImage(format.format, to);
    cv::Mat const srcMat = AsMat(*src, format.openCV);
    cv::Mat dstMat = AsMat(*dst, format.openCV);
    for (auto _ : state)
    {
        cv::resize(srcMat, dstMat, dstMat.size(), 0, 0, cv::INTER_AREA);
        benchmark::ClobberMemory();
    }
}

void RegisterAreas(FormatCase const &format)
{
    for (auto const &[from, to] : s_areaSizes)
    {
        std::string const name = std::string(format.name) + '/' + std::to_string(from) + "_to_" + std::to_string(to);
        benchmark::RegisterBenchmark(("scale/area/" + name).c_str(), RunArea, format.format, from, to);
        benchmark::RegisterBenchmark(("peer/opencv_area/" + name).c_str(), RunOpenCVArea, format, from, to);
    }
}

bool RegisterAll()
{
    for (FormatCase const &format : s_formats)
    {
        if (format.openCV >= 0)
            RegisterAreas(format);
    }
    for (eResampleFilter const filter : {e_resample_nearest, e_resample_linear})
    {
        for (FormatCase const &format : s_formats)
        {
            for (auto const &[from, to] : s_sizes)
            {
                std::string const name = std::string(filter == e_resample_linear ? "linear/" : "nearest/") +
                                         format.name + '/' + std::to_string(from) + "_to_" + std::to_string(to);
                benchmark::RegisterBenchmark(("resample/" + name).c_str(), RunResample2D, format.format, filter, from,
                                             to);
                if (format.openCV >= 0)
                    benchmark::RegisterBenchmark(("peer/opencv_resize/" + name).c_str(), RunOpenCV, format, filter,
                                                 from, to);
            }
        }
    }
    return true;
}

[[maybe_unused]] bool const s_isRegistered = RegisterAll();

} // namespace
} // namespace quillmarsh::benchmarks
