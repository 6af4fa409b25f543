// Image files, compared with direct calls of their libraries with the same settings.
#include <quillmarsh/dataobjects/datacodecparameters.h>
#include <quillmarsh/dataobjects/imagecodecs_gdiplus.h>

#include "benchmarks/support/picture_files.h"

#include <benchmark/benchmark.h>

namespace quillmarsh::benchmarks
{
namespace
{

constexpr unsigned int s_quality = 85;
constexpr unsigned int s_compressionLevel = 50;
constexpr int s_deflateLevel = 5;

NamedParameterList MakeParameters()
{
    using namespace data_codec_parameters;
    NamedParameterList parameters;
    parameters.Insert(NamedParameter(Param_FileOverwrite, true), true);
    parameters.Insert(NamedParameter(Param_CompressionLevel, s_compressionLevel), true);
    parameters.Insert(NamedParameter(Param_Quality, s_quality), true);
    return parameters;
}

void Save(benchmark::State &state, char const *format)
{
    ScratchImageFile const file;
    Photograph const image(static_cast<unsigned int>(state.range(0)));
    NamedParameterList const parameters = MakeParameters();
    ImageEncoderGdiplus encoder;
    for (auto _ : state)
    {
        if (!encoder.SaveImage(image, file.GetName(), format, parameters))
            state.SkipWithError("The image cannot be saved.");
    }
}

void Load(benchmark::State &state, char const *format)
{
    ScratchImageFile const file;
    ImageEncoderGdiplus().SaveImage(Photograph(static_cast<unsigned int>(state.range(0))), file.GetName(), format,
                                    MakeParameters());
    ImageDecoderGdiplus decoder;
    for (auto _ : state)
    {
        AutoPtr<ImageBase> const image(decoder.LoadImageA(file.GetName(), NamedParameterList()));
        if (!image)
            state.SkipWithError("The image cannot be loaded.");
        benchmark::DoNotOptimize(image.get());
    }
}

void PngSave(benchmark::State &state)
{
    ScratchImageFile const file;
    auto const size = static_cast<unsigned int>(state.range(0));
    Photograph image(size);
    for (auto _ : state)
    {
        FileHandle const out = Open(file.GetName(), "wb");
        png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
        png_infop info = png_create_info_struct(png);
        png_init_io(png, out.get());
        png_set_IHDR(png, info, size, size, 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_BASE,
                     PNG_FILTER_TYPE_BASE);
        png_set_compression_level(png, s_deflateLevel);
        png_write_info(png, info);
        png_set_bgr(png);
        png_set_filler(png, 0, PNG_FILLER_AFTER);
        for (unsigned int row = 0; row < size; ++row)
            png_write_row(png, image.ImageBase::SampleB(row, 0));
        png_write_end(png, info);
        png_destroy_write_struct(&png, &info);
    }
}

void PngLoad(benchmark::State &state)
{
    ScratchImageFile const file;
    ImageEncoderGdiplus().SaveImage(Photograph(static_cast<unsigned int>(state.range(0))), file.GetName(), "PNG",
                                    MakeParameters());
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(DecodePng(file.GetName()));
    }
}

void JpegSave(benchmark::State &state)
{
    ScratchImageFile const file;
    auto const size = static_cast<int>(state.range(0));
    Photograph const image(static_cast<unsigned int>(size));
    for (auto _ : state)
    {
        tjhandle const handle = tjInitCompress();
        unsigned char *bytes = nullptr;
        unsigned long numBytes = 0;
        tjCompress2(handle, image.GetSamplesB(), size, 0, size, TJPF_BGRX, &bytes, &numBytes, TJSAMP_420, s_quality, 0);
        FileHandle const out = Open(file.GetName(), "wb");
        if (std::fwrite(bytes, 1, numBytes, out.get()) != numBytes)
            state.SkipWithError("The file cannot be written.");
        tjFree(bytes);
        tjDestroy(handle);
    }
}

void JpegLoad(benchmark::State &state)
{
    ScratchImageFile const file;
    ImageEncoderGdiplus().SaveImage(Photograph(static_cast<unsigned int>(state.range(0))), file.GetName(), "JPEG",
                                    MakeParameters());
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(DecodeJpeg(file.GetName()));
    }
}

BENCHMARK_CAPTURE(Save, png, "PNG")->Name("imagefile/png_save")->Arg(1024)->Unit(benchmark::kMillisecond);
BENCHMARK(PngSave)->Name("peer/libpng_save")->Arg(1024)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Load, png, "PNG")->Name("imagefile/png_load")->Arg(1024)->Unit(benchmark::kMillisecond);
BENCHMARK(PngLoad)->Name("peer/libpng_load")->Arg(1024)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Save, jpeg, "JPEG")->Name("imagefile/jpeg_save")->Arg(1024)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK(JpegSave)->Name("peer/turbojpeg_save")->Arg(1024)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Load, jpeg, "JPEG")->Name("imagefile/jpeg_load")->Arg(1024)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK(JpegLoad)->Name("peer/turbojpeg_load")->Arg(1024)->Arg(4096)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quillmarsh::benchmarks
