#include "source/platform/linux/imagefile.h"

#include <png.h>

#include <bit>
#include <csetjmp>
#include <vector>

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
    bool ReadLuminance(float *values) override;

private:
    void ReadFacts();
    /// Says what the library does not: that the file ended too early. Returns false.
    bool FailRead();
    /// Converts every kind of pixel to four bytes.
    void SetTransformations();
    /// Converts every kind of pixel to one or three numbers of 16 bits.
    void SetDeepTransformations();

    std::FILE *file_;
    png_structp png_;
    png_infop info_;
    int numPasses_ = 1;
    /// A row of numbers of 16 bits; all rows, if the picture is interlaced.
    std::vector<std::uint16_t> deep_;
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
    ReadFacts();
    return true;
}

void PngReader::ReadFacts()
{
    constexpr double metersPerInch = 0.0254;
    ImageFileFacts &facts = GetFactsToFill();
    int const type = png_get_color_type(png_, info_);
    facts.bits = png_get_bit_depth(png_, info_);
    facts.colours = type == PNG_COLOR_TYPE_PALETTE       ? eImageColours::e_palette
                    : (type & PNG_COLOR_MASK_COLOR) == 0 ? eImageColours::e_grey
                                                         : eImageColours::e_colours;
    png_colorp palette = nullptr;
    int paletteSize = 0;
    if (png_get_PLTE(png_, info_, &palette, &paletteSize) != 0 && facts.colours == eImageColours::e_palette)
        facts.paletteSize = static_cast<unsigned int>(paletteSize);
    facts.resolutionX = png_get_x_pixels_per_meter(png_, info_) * metersPerInch;
    facts.resolutionY = png_get_y_pixels_per_meter(png_, info_) * metersPerInch;
    png_charp name = nullptr;
    int compression = 0;
    png_bytep profile = nullptr;
    png_uint_32 profileSize = 0;
    if (png_get_iCCP(png_, info_, &name, &compression, &profile, &profileSize) != 0)
        facts.profileByteSize = profileSize;
    png_bytep exif = nullptr;
    png_uint_32 exifSize = 0;
    if (png_get_eXIf_1(png_, info_, &exifSize, &exif) != 0)
        facts.orientation = ReadExif(exif, exifSize).orientation;
    if (facts.bits == 16)
        SetHasDeepLuminance();
}

bool PngReader::FailRead()
{
    if (std::feof(file_) != 0)
        GetFailureToFill().text += ": the file is cut short";
    return false;
}

void PngReader::SetTransformations()
{
    png_set_expand(png_);
    png_set_scale_16(png_);
    png_set_gray_to_rgb(png_);
    png_set_bgr(png_);
    if (!HasAlpha())
        png_set_filler(png_, 0xFF, PNG_FILLER_AFTER);
    numPasses_ = png_set_interlace_handling(png_);
    png_read_update_info(png_, info_);
}

void PngReader::SetDeepTransformations()
{
    png_set_expand(png_);
    png_set_strip_alpha(png_);
    // The file has big-endian numbers.
    if constexpr (std::endian::native == std::endian::little)
        png_set_swap(png_);
    numPasses_ = png_set_interlace_handling(png_);
    png_read_update_info(png_, info_);
}

bool PngReader::Read(PixelRows const &rows)
{
    if (setjmp(png_jmpbuf(png_)) != 0)
        return FailRead();
    SetTransformations();
    if (png_get_rowbytes(png_, info_) != std::size_t{rows.numColumns} * 4)
        return Fail(eImageFailure::e_unsupported, "a kind of PNG that is not supported");
    for (int pass = 0; pass < numPasses_; ++pass)
    {
        for (unsigned int row = 0; row < rows.numRows; ++row)
            png_read_row(png_, rows.GetRow(row), nullptr);
    }
    // The chunks after the pixels must be complete as well.
    png_read_end(png_, nullptr);
    return true;
}

/// Converts one row of numbers of 16 bits.
void ConvertDeepRow(float *values, std::uint16_t const *numbers, std::size_t count, std::size_t numChannels)
{
    constexpr float largest = 65535.0f;
    for (std::size_t i = 0; i < count; ++i, numbers += numChannels)
    {
        values[i] = static_cast<float>(numbers[0]) / largest;
        if (numChannels == 3)
            values[i] = values[i] * s_luminanceWeights[0] +
                        static_cast<float>(numbers[1]) / largest * s_luminanceWeights[1] +
                        static_cast<float>(numbers[2]) / largest * s_luminanceWeights[2];
    }
}

bool PngReader::ReadLuminance(float *values)
{
    // The buffer is a member, so a jump out of the library leaves nothing behind.
    std::size_t const numColumns = GetNumColumns(), numRows = GetNumRows();
    if (setjmp(png_jmpbuf(png_)) != 0)
        return FailRead();
    SetDeepTransformations();
    std::size_t const numChannels = png_get_channels(png_, info_), rowLength = numColumns * numChannels;
    if (png_get_rowbytes(png_, info_) != rowLength * sizeof(std::uint16_t))
        return Fail(eImageFailure::e_unsupported, "a kind of PNG that is not supported");
    deep_.resize(numPasses_ > 1 ? rowLength * numRows : rowLength);
    for (int pass = 0; pass < numPasses_; ++pass)
    {
        for (std::size_t row = 0; row < numRows; ++row)
        {
            std::uint16_t *const numbers = deep_.data() + (numPasses_ > 1 ? row * rowLength : 0);
            png_read_row(png_, reinterpret_cast<png_bytep>(numbers), nullptr);
            if (pass == numPasses_ - 1)
                ConvertDeepRow(values + row * numColumns, numbers, numColumns, numChannels);
        }
    }
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
        int const colours = options.isGrey ? PNG_COLOR_TYPE_GRAY : PNG_COLOR_TYPE_RGB;
        png_set_IHDR(png_, info_, rows.numColumns, rows.numRows, 8,
                     colours | (rows.hasAlpha ? PNG_COLOR_MASK_ALPHA : 0), PNG_INTERLACE_NONE,
                     PNG_COMPRESSION_TYPE_BASE, PNG_FILTER_TYPE_BASE);
        png_set_compression_level(png_, options.useCompression ? ToDeflateLevel(options.compressionLevel) : 0);
        if (!options.useCompression)
            png_set_filter(png_, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
        png_write_info(png_, info_);
        if (options.isGrey)
            WriteGreyRows(rows);
        else
            WriteColourRows(rows);
        png_write_end(png_, info_);
        return true;
    }

private:
    void WriteColourRows(PixelRows const &rows)
    {
        png_set_bgr(png_);
        if (!rows.hasAlpha)
            png_set_filler(png_, 0, PNG_FILLER_AFTER);
        for (unsigned int row = 0; row < rows.numRows; ++row)
            png_write_row(png_, rows.GetRow(row));
    }

    void WriteGreyRows(PixelRows const &rows)
    {
        std::size_t const size = rows.hasAlpha ? 2 : 1;
        grey_.resize(rows.numColumns * size);
        for (unsigned int row = 0; row < rows.numRows; ++row)
        {
            TakeGrey(grey_.data(), rows.GetRow(row), rows.numColumns, rows.hasAlpha);
            png_write_row(png_, grey_.data());
        }
    }

    png_structp png_;
    png_infop info_;
    /// A row of a grey picture.
    std::vector<unsigned char> grey_;
};

} // namespace

AutoPtr<ImageFileReader> OpenPngFile(std::FILE *file, std::uint64_t fileSize, ImageReadOptions const &options,
                                     ImageFailure &failure)
{
    auto reader = std::make_unique<PngReader>(file);
    bool const isOpen = reader->ReadHeader(fileSize) && reader->HasPage(options.page);
    return HandOut(std::move(reader), isOpen, failure);
}

bool WritePngFile(std::FILE *file, PixelRows const &rows, ImageFileOptions const &options, ImageFailure &failure)
{
    return PngWriter(failure).Write(file, rows, options);
}

} // namespace quillmarsh::platform
