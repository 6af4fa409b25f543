// Image files, compared with direct calls of their libraries with the same settings.
#include <quillmarsh/dataobjects/datacodecparameters.h>
#include <quillmarsh/dataobjects/imagecodecs_gdiplus.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <random>

#include <png.h>
#include <turbojpeg.h>

namespace quillmarsh::benchmarks
{
namespace
{

constexpr unsigned int s_quality = 85;
constexpr unsigned int s_compressionLevel = 50;
constexpr int s_deflateLevel = 5;

/// Name of a file that is removed with the case.
class ScratchImageFile : NoCopy
{
public:
    ~ScratchImageFile() { std::filesystem::remove(name_); }
    string const &GetName() const { return name_; }

private:
    string name_ = (std::filesystem::temp_directory_path() / "quillmarsh-benchmark-image").string();
};

/// Colour gradients with some noise, like a photograph.
class Photograph : public Image<Sample32>
{
public:
    explicit Photograph(unsigned int size) : SignalBase(sizeof(Sample32)), Image(e_format_X8R8G8B8, size, size)
    {
        std::mt19937 random(7);
        unsigned char *pixel = GetSamplesB();
        for (unsigned int row = 0; row < size; ++row)
        {
            for (unsigned int column = 0; column < size; ++column, pixel += 4)
            {
                auto const noise = random();
                for (unsigned int i = 0; i < 3; ++i)
                {
                    double const wave = std::sin((row * (i + 1) + column) * 0.01);
                    pixel[i] = static_cast<unsigned char>(128 + 100 * wave + static_cast<double>(noise >> 8 * i & 3));
                }
                pixel[3] = 255;
            }
        }
    }
};

using FileHandle = std::unique_ptr<std::FILE, int (*)(std::FILE *)>;

FileHandle Open(string const &name, char const *mode)
{
    return FileHandle(std::fopen(name.c_str(), mode), &std::fclose);
}

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
    auto const size = static_cast<std::size_t>(state.range(0));
    ImageEncoderGdiplus().SaveImage(Photograph(static_cast<unsigned int>(size)), file.GetName(), "PNG",
                                    MakeParameters());
    for (auto _ : state)
    {
        FileHandle const in = Open(file.GetName(), "rb");
        png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
        png_infop info = png_create_info_struct(png);
        png_init_io(png, in.get());
        png_read_info(png, info);
        png_set_bgr(png);
        png_set_filler(png, 0xFF, PNG_FILLER_AFTER);
        png_read_update_info(png, info);
        auto const pixels = std::make_unique_for_overwrite<unsigned char[]>(size * size * 4);
        for (std::size_t row = 0; row < size; ++row)
            png_read_row(png, pixels.get() + row * size * 4, nullptr);
        png_read_end(png, nullptr);
        png_destroy_read_struct(&png, &info, nullptr);
        benchmark::DoNotOptimize(pixels.get());
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
    auto const size = static_cast<std::size_t>(state.range(0));
    ImageEncoderGdiplus().SaveImage(Photograph(static_cast<unsigned int>(size)), file.GetName(), "JPEG",
                                    MakeParameters());
    for (auto _ : state)
    {
        auto const numBytes = static_cast<unsigned long>(std::filesystem::file_size(file.GetName()));
        auto const bytes = std::make_unique_for_overwrite<unsigned char[]>(numBytes);
        if (std::fread(bytes.get(), 1, numBytes, Open(file.GetName(), "rb").get()) != numBytes)
            state.SkipWithError("The file cannot be read.");
        tjhandle const handle = tjInitDecompress();
        auto const pixels = std::make_unique_for_overwrite<unsigned char[]>(size * size * 4);
        tjDecompress2(handle, bytes.get(), numBytes, pixels.get(), static_cast<int>(size), 0, static_cast<int>(size),
                      TJPF_BGRX, 0);
        tjDestroy(handle);
        benchmark::DoNotOptimize(pixels.get());
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
