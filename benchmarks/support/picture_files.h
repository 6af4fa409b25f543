// Files of pictures, and their decoding by direct calls of the libraries.
#ifndef QUILLMARSH_BENCHMARKS_SUPPORT_PICTURE_FILES_H
#define QUILLMARSH_BENCHMARKS_SUPPORT_PICTURE_FILES_H

#include <quillmarsh/dataobjects/imagebase.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <random>

#include <png.h>
#include <turbojpeg.h>

namespace quillmarsh::benchmarks
{

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

inline FileHandle Open(string const &name, char const *mode)
{
    return FileHandle(std::fopen(name.c_str(), mode), &std::fclose);
}

/// Samples of four bytes; null for a file that cannot be read.
using DecodedPixels = std::unique_ptr<unsigned char[]>;

inline DecodedPixels DecodePng(string const &name)
{
    FileHandle const in = Open(name, "rb");
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, in.get());
    png_read_info(png, info);
    png_set_bgr(png);
    png_set_filler(png, 0xFF, PNG_FILLER_AFTER);
    png_read_update_info(png, info);
    std::size_t const numRows = png_get_image_height(png, info), rowSize = png_get_rowbytes(png, info);
    auto pixels = std::make_unique_for_overwrite<unsigned char[]>(numRows * rowSize);
    for (std::size_t row = 0; row < numRows; ++row)
        png_read_row(png, pixels.get() + row * rowSize, nullptr);
    png_read_end(png, nullptr);
    png_destroy_read_struct(&png, &info, nullptr);
    return pixels;
}

inline DecodedPixels DecodeJpeg(string const &name)
{
    auto const numBytes = static_cast<unsigned long>(std::filesystem::file_size(name));
    auto const bytes = std::make_unique_for_overwrite<unsigned char[]>(numBytes);
    if (std::fread(bytes.get(), 1, numBytes, Open(name, "rb").get()) != numBytes)
        return nullptr;
    tjhandle const handle = tjInitDecompress();
    int width = 0, height = 0, subsampling = 0, colours = 0;
    tjDecompressHeader3(handle, bytes.get(), numBytes, &width, &height, &subsampling, &colours);
    auto pixels = std::make_unique_for_overwrite<unsigned char[]>(std::size_t(width) * std::size_t(height) * 4);
    tjDecompress2(handle, bytes.get(), numBytes, pixels.get(), width, 0, height, TJPF_BGRX, 0);
    tjDestroy(handle);
    return pixels;
}

} // namespace quillmarsh::benchmarks

#endif
