#include "source/platform/linux/imagefile.h"

#include <png.h>

#include <csetjmp>

namespace quillmarsh::platform
{
namespace
{

// The library reports a failure by a longjmp, which runs no destructors: functions that it skips must own nothing.

[[noreturn]] void OnError(png_structp png, png_const_charp message)
{
    *static_cast<ImageFailure *>(png_get_error_ptr(png)) = {eImageFailure::e_damaged, string("libpng: ") + message};
    png_longjmp(png, 1);
}

void OnWarning(png_structp, png_const_charp) {}

class PngReader final : public ImageFileReader
{
public:
    explicit PngReader(std::FILE *file)
        : file_(file),
          png_(png_create_read_struct(PNG_LIBPNG_VER_STRING, &GetFailureToFill(), &OnError, &OnWarning)),
          info_(png_ ? png_create_info_struct(png_) : nullptr)
    {
    }
    ~PngReader() override { png_destroy_read_struct(&png_, &info_, nullptr); }

    bool ReadHeader(std::uint64_t fileSize);
    bool Read(PixelRows const &rows) override;

private:
    /// Says what the library does not: that the file ended too early. Returns false.
    bool FailRead();
    /// Converts every kind of pixel to four bytes.
    void SetTransformations(bool hasAlpha);

    std::FILE *file_;
    png_structp png_;
    png_infop info_;
    int numPasses_ = 1;
};

bool PngReader::ReadHeader(std::uint64_t fileSize)
{
    if (!info_)
        return Fail(eImageFailure::e_system, "libpng: cannot start");
    if (setjmp(png_jmpbuf(png_)) != 0)
        return FailRead();
    png_init_io(png_, file_);
    png_set_user_limits(png_, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
    png_read_info(png_, info_);

    std::uint64_t const numRows = png_get_image_height(png_, info_);
    std::uint64_t const numColumns = png_get_image_width(png_, info_);
    std::uint64_t const pixelBits = std::uint64_t{png_get_bit_depth(png_, info_)} * png_get_channels(png_, info_);
    // Every row begins with a filter byte.
    if (numColumns * pixelBits / 8 + 1 > fileSize * s_largestDeflateRatio / numRows)
        return FailImplausible();
    bool const hasAlpha =
        (png_get_color_type(png_, info_) & PNG_COLOR_MASK_ALPHA) != 0 || png_get_valid(png_, info_, PNG_INFO_tRNS) != 0;
    if (!SetSize(numRows, numColumns, hasAlpha))
        return false;
    SetTransformations(hasAlpha);
    return png_get_rowbytes(png_, info_) == numColumns * 4 ||
           Fail(eImageFailure::e_unsupported, "a kind of PNG that is not supported");
}

bool PngReader::FailRead()
{
    if (std::feof(file_) != 0)
        GetFailureToFill().text += ": the file is cut short";
    return false;
}

void PngReader::SetTransformations(bool hasAlpha)
{
    png_set_expand(png_);
    png_set_scale_16(png_);
    png_set_gray_to_rgb(png_);
    png_set_bgr(png_);
    if (!hasAlpha)
        png_set_filler(png_, 0xFF, PNG_FILLER_AFTER);
    numPasses_ = png_set_interlace_handling(png_);
    png_read_update_info(png_, info_);
}

bool PngReader::Read(PixelRows const &rows)
{
    if (setjmp(png_jmpbuf(png_)) != 0)
        return FailRead();
    for (int pass = 0; pass < numPasses_; ++pass)
    {
        for (unsigned int row = 0; row < rows.numRows; ++row)
            png_read_row(png_, rows.GetRow(row), nullptr);
    }
    // The chunks after the pixels must be complete as well.
    png_read_end(png_, nullptr);
    return true;
}

class PngWriter : NoCopy
{
public:
    explicit PngWriter(ImageFailure &failure)
        : png_(png_create_write_struct(PNG_LIBPNG_VER_STRING, &failure, &OnError, &OnWarning)),
          info_(png_ ? png_create_info_struct(png_) : nullptr)
    {
    }
    ~PngWriter() { png_destroy_write_struct(&png_, &info_); }

    bool Write(std::FILE *file, PixelRows const &rows, ImageFileOptions const &options)
    {
        if (!info_ || setjmp(png_jmpbuf(png_)) != 0)
            return false;
        png_init_io(png_, file);
        png_set_user_limits(png_, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
        png_set_IHDR(png_, info_, rows.numColumns, rows.numRows, 8,
                     rows.hasAlpha ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                     PNG_COMPRESSION_TYPE_BASE, PNG_FILTER_TYPE_BASE);
        png_set_compression_level(png_, options.useCompression ? ToDeflateLevel(options.compressionLevel) : 0);
        if (!options.useCompression)
            png_set_filter(png_, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
        png_write_info(png_, info_);
        png_set_bgr(png_);
        if (!rows.hasAlpha)
            png_set_filler(png_, 0, PNG_FILLER_AFTER);
        for (unsigned int row = 0; row < rows.numRows; ++row)
            png_write_row(png_, rows.GetRow(row));
        png_write_end(png_, info_);
        return true;
    }

private:
    png_structp png_;
    png_infop info_;
};

} // namespace

AutoPtr<ImageFileReader> OpenPngFile(std::FILE *file, std::uint64_t fileSize, ImageFailure &failure)
{
    auto reader = std::make_unique<PngReader>(file);
    bool const isOpen = reader->ReadHeader(fileSize);
    return HandOut(std::move(reader), isOpen, failure);
}

bool WritePngFile(std::FILE *file, PixelRows const &rows, ImageFileOptions const &options, ImageFailure &failure)
{
    return PngWriter(failure).Write(file, rows, options);
}

} // namespace quillmarsh::platform
