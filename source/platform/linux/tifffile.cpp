#include "source/platform/linux/imagefile.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <string_view>
#include <type_traits>
#include <vector>

#include <tiffio.h>

namespace quillmarsh::platform
{
namespace
{

/// Upper bound for the bytes that one byte of compressed pixels can produce.
constexpr std::uint64_t s_largestRatio = 4096;
/// Bytes of a tile that are accepted for a picture of any size.
constexpr std::uint64_t s_smallBlock = std::uint64_t{64} << 20;
/// Approximate size of the pieces in which pixels are compressed.
constexpr std::size_t s_stripByteSize = std::size_t{64} << 10;

/// @name The library's access to files
/// @{

std::FILE *ToFile(thandle_t handle)
{
    return static_cast<std::FILE *>(handle);
}

tmsize_t ReadBytes(thandle_t handle, void *bytes, tmsize_t size)
{
    return static_cast<tmsize_t>(std::fread(bytes, 1, static_cast<std::size_t>(size), ToFile(handle)));
}

tmsize_t WriteBytes(thandle_t handle, void *bytes, tmsize_t size)
{
    return static_cast<tmsize_t>(std::fwrite(bytes, 1, static_cast<std::size_t>(size), ToFile(handle)));
}

toff_t Seek(thandle_t handle, toff_t offset, int whence)
{
    if (fseeko(ToFile(handle), static_cast<off_t>(offset), whence) != 0)
        return static_cast<toff_t>(-1);
    return static_cast<toff_t>(ftello(ToFile(handle)));
}

int LeaveOpen(thandle_t)
{
    return 0;
}

toff_t GetSize(thandle_t handle)
{
    off_t const at = ftello(ToFile(handle));
    fseeko(ToFile(handle), 0, SEEK_END);
    off_t const size = ftello(ToFile(handle));
    fseeko(ToFile(handle), at, SEEK_SET);
    return static_cast<toff_t>(size);
}

int IgnoreMessage(TIFF *, void *, char const *, char const *, va_list)
{
    return 1;
}

/// Keeps the first message of a file; later ones are consequences of it.
int KeepMessage(TIFF *, void *failure, char const *module, char const *format, va_list arguments)
{
    auto &kept = *static_cast<ImageFailure *>(failure);
    if (kept.kind != eImageFailure::e_none)
        return 1;
    char message[512];
    std::vsnprintf(message, sizeof(message), format, arguments);
    // Some messages begin with the name of the file, which the library is not told.
    string const text(message + (std::string_view(message).starts_with(": ") ? 2 : 0));
    // For example a codec that the library was built without.
    bool const isUnsupported = text.find("not support") != string::npos || text.find("not configured") != string::npos;
    kept = {isUnsupported ? eImageFailure::e_unsupported : eImageFailure::e_damaged,
            "libtiff: " + (module && *module ? string(module) + ": " : string()) + text};
    return 1;
}

struct TiffCloser
{
    void operator()(TIFF *tiff) const { TIFFClose(tiff); }
};
using TiffPtr = std::unique_ptr<TIFF, TiffCloser>;

/// Opens a file. `largestBlock` limits the size of one allocation by the library; 0 means no limit. `failure` receives
/// the library's messages while the file is open.
TiffPtr OpenTiff(std::FILE *file, char const *mode, std::uint64_t largestBlock, ImageFailure &failure)
{
    TIFFOpenOptions *const options = TIFFOpenOptionsAlloc();
    if (!options)
        return nullptr;
    TIFFOpenOptionsSetErrorHandlerExtR(options, &KeepMessage, &failure);
    TIFFOpenOptionsSetWarningHandlerExtR(options, &IgnoreMessage, nullptr);
    constexpr std::uint64_t limit = std::numeric_limits<tmsize_t>::max();
    TIFFOpenOptionsSetMaxSingleMemAlloc(options, static_cast<tmsize_t>(std::min(largestBlock, limit)));
    TiffPtr tiff(TIFFClientOpenExt("", mode, file, &ReadBytes, &WriteBytes, &Seek, &LeaveOpen, &GetSize, nullptr,
                                   nullptr, options));
    TIFFOpenOptionsFree(options);
    return tiff;
}

/// @}

/// Meaning of the extra samples.
enum class eAlpha
{
    e_none,
    e_straight,
    e_multiplied
};

struct TiffLayout
{
    std::uint32_t numRows = 0;
    std::uint32_t numColumns = 0;
    std::uint16_t numComponents = 1;
    std::uint16_t numColors = 1;
    std::uint16_t photometric = 0;
    eAlpha alpha = eAlpha::e_none;
    bool isPlanar = false;
    /// True when components are whole bytes of grey or colour; the library converts everything else.
    bool isPlain = false;
    std::uint16_t bits = 1;
    bool areFloats = false;
    /// True when components are whole numbers or floats of more than eight bits, of grey or colour.
    bool isDeep = false;
};

/// Adds a component of many bits to luminance, in a part of a row.
template<typename Number>
void AddDeep(float *values, unsigned char const *component, std::size_t step, std::size_t count, float weight)
{
    for (std::size_t i = 0; i < count; ++i, component += step)
    {
        Number number = {};
        std::memcpy(&number, component, sizeof(number));
        if constexpr (std::is_floating_point_v<Number>)
            values[i] += static_cast<float>(number) * weight;
        else
            values[i] += static_cast<float>(number) / static_cast<float>(std::numeric_limits<Number>::max()) * weight;
    }
}

/// The bytes of a pixel that receive one component.
struct Target
{
    unsigned char offset;
    unsigned char count;
};

void CopyComponent(unsigned char *pixel, unsigned char const *component, std::size_t step, std::size_t count,
                   Target target, unsigned char mask)
{
    for (std::size_t i = 0; i < count; ++i, pixel += 4, component += step)
        std::fill_n(pixel + target.offset, target.count, static_cast<unsigned char>(*component ^ mask));
}

void CopyColors(unsigned char *pixel, unsigned char const *colors, std::size_t step, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i, pixel += 4, colors += step)
    {
        pixel[0] = colors[2];
        pixel[1] = colors[1];
        pixel[2] = colors[0];
        pixel[3] = step == 4 ? colors[3] : 0xFF;
    }
}

/// Divides colours by alpha, for files that store them multiplied.
void DivideByAlpha(unsigned char *pixel, std::size_t count)
{
    for (; count > 0; --count, pixel += 4)
    {
        unsigned int const alpha = pixel[3];
        for (int i = 0; alpha != 0 && i < 3; ++i)
            pixel[i] = static_cast<unsigned char>(std::min((pixel[i] * 255u + alpha / 2) / alpha, 255u));
    }
}

class TiffReader final : public ImageFileReader
{
public:
    TiffReader(std::FILE *file, ImageReadOptions const &options) : file_(file), options_(options) {}

    bool ReadHeader(std::uint64_t fileSize);
    bool Read(PixelRows const &rows) override;
    bool ReadLuminance(float *values) override;

private:
    template<typename T>
    T GetField(std::uint32_t tag)
    {
        T value = 0;
        TIFFGetFieldDefaulted(tiff_.get(), tag, &value);
        return value;
    }

    bool OpenPage();
    void ReadLayout();
    void ReadAlpha();
    void ReadFacts();
    bool IsPlausible(std::uint64_t fileSize);
    /// Fails when the library cannot convert the pixels to colours of one byte.
    bool CanConvert();
    bool ReadPixels(PixelRows const &rows);
    /// Calls `copy(row, column, components, count, plane)` for each part of a row in the file's strips or tiles.
    template<typename OnPart>
    bool ReadParts(OnPart const &onPart)
    {
        return TIFFIsTiled(tiff_.get()) ? ReadTiles(onPart) : ReadStrips(onPart);
    }
    template<typename OnPart>
    bool ReadStrips(OnPart const &onPart);
    template<typename OnPart>
    bool ReadTiles(OnPart const &onPart);
    /// Adds components of a part of a row, of one plane or of all, to its luminance.
    void AddLuminance(float *values, unsigned char const *components, std::size_t count, std::uint16_t plane) const;
    std::size_t GetComponentSize() const { return layout_.isDeep ? layout_.bits / 8u : 1u; }
    bool ReadConverted(PixelRows const &rows);
    /// Copies the components of a part of a row, of one plane or of all, to its pixels.
    void Copy(unsigned char *pixels, unsigned char const *components, std::size_t count, std::uint16_t plane) const;
    std::uint16_t GetNumPlanes() const { return layout_.isPlanar ? layout_.numComponents : std::uint16_t{1}; }

    std::FILE *file_;
    ImageReadOptions options_;
    TiffPtr tiff_;
    TiffLayout layout_;
    std::uint64_t largestBlock_ = 0;
};

bool TiffReader::ReadHeader(std::uint64_t fileSize)
{
    largestBlock_ = std::min<std::uint64_t>(fileSize, std::uint64_t{1} << 40) * s_largestRatio;
    // The file is not mapped into memory: when it is shortened meanwhile, reading only fails.
    tiff_ = OpenTiff(file_, "rm", largestBlock_, GetFailureToFill());
    if (!tiff_)
        return Fail(eImageFailure::e_damaged, "libtiff: cannot open the file");
    if (!OpenPage())
        return false;
    ReadLayout();
    ReadFacts();
    if (layout_.numRows == 0 || layout_.numColumns == 0)
        return Fail(eImageFailure::e_damaged, "a TIFF without pixels");
    if (!IsPlausible(fileSize))
        return FailImplausible();
    bool const readsDeep = layout_.isDeep && options_.wantsLuminance;
    if (!layout_.isPlain && !readsDeep && !CanConvert())
        return false;
    return SetSize(layout_.numRows, layout_.numColumns, layout_.alpha != eAlpha::e_none);
}

bool TiffReader::OpenPage()
{
    ImageFileFacts &facts = GetFactsToFill();
    ImageFailure const before = GetFailure();
    facts.numPages = std::max<unsigned int>(TIFFNumberOfDirectories(tiff_.get()), 1);
    // A damaged list of pages does no harm to the first one.
    GetFailureToFill() = before;
    if (options_.page == 0)
        return true;
    if (!HasPage(options_.page))
        return false;
    return TIFFSetDirectory(tiff_.get(), static_cast<tdir_t>(options_.page)) != 0 ||
           Fail(eImageFailure::e_damaged, "libtiff: cannot open the page");
}

void TiffReader::ReadFacts()
{
    constexpr double centimetersPerInch = 2.54;
    ImageFileFacts &facts = GetFactsToFill();
    facts.bits = layout_.bits;
    facts.areFloats = layout_.areFloats;
    if (layout_.photometric == PHOTOMETRIC_PALETTE)
    {
        facts.colours = eImageColours::e_palette;
        facts.paletteSize = layout_.bits <= 16 ? 1u << layout_.bits : 0;
    }
    else if (layout_.photometric == PHOTOMETRIC_SEPARATED)
    {
        facts.colours = eImageColours::e_inks;
    }
    else if (layout_.numColors == 1)
    {
        facts.colours = eImageColours::e_grey;
    }
    double const factor =
        GetField<std::uint16_t>(TIFFTAG_RESOLUTIONUNIT) == RESUNIT_CENTIMETER ? centimetersPerInch : 1.0;
    bool const hasUnit = GetField<std::uint16_t>(TIFFTAG_RESOLUTIONUNIT) != RESUNIT_NONE;
    facts.resolutionX = hasUnit ? static_cast<double>(GetField<float>(TIFFTAG_XRESOLUTION)) * factor : 0;
    facts.resolutionY = hasUnit ? static_cast<double>(GetField<float>(TIFFTAG_YRESOLUTION)) * factor : 0;
    auto const orientation = GetField<std::uint16_t>(TIFFTAG_ORIENTATION);
    facts.orientation = orientation >= 1 && orientation <= 8 ? orientation : 1;
    std::uint32_t profileSize = 0;
    void *profile = nullptr;
    if (TIFFGetField(tiff_.get(), TIFFTAG_ICCPROFILE, &profileSize, &profile) == 1)
        facts.profileByteSize = profileSize;
    if (layout_.isDeep)
        SetHasDeepLuminance();
}

void TiffReader::ReadLayout()
{
    layout_.numRows = GetField<std::uint32_t>(TIFFTAG_IMAGELENGTH);
    layout_.numColumns = GetField<std::uint32_t>(TIFFTAG_IMAGEWIDTH);
    layout_.numComponents = GetField<std::uint16_t>(TIFFTAG_SAMPLESPERPIXEL);
    layout_.photometric = GetField<std::uint16_t>(TIFFTAG_PHOTOMETRIC);
    layout_.isPlanar = GetField<std::uint16_t>(TIFFTAG_PLANARCONFIG) == PLANARCONFIG_SEPARATE;
    auto const format = GetField<std::uint16_t>(TIFFTAG_SAMPLEFORMAT);
    bool const isGrey = layout_.photometric == PHOTOMETRIC_MINISBLACK || layout_.photometric == PHOTOMETRIC_MINISWHITE;
    bool const isColor = layout_.photometric == PHOTOMETRIC_RGB;
    layout_.numColors = isGrey ? 1 : 3;
    layout_.bits = GetField<std::uint16_t>(TIFFTAG_BITSPERSAMPLE);
    layout_.areFloats = format == SAMPLEFORMAT_IEEEFP;
    bool const areWhole = format == SAMPLEFORMAT_UINT || format == SAMPLEFORMAT_VOID;
    bool const hasColors = (isGrey || isColor) && layout_.numComponents >= layout_.numColors;
    layout_.isPlain = hasColors && areWhole && layout_.bits == 8;
    layout_.isDeep = hasColors && ((areWhole && (layout_.bits == 16 || layout_.bits == 32)) ||
                                   (layout_.areFloats && (layout_.bits == 32 || layout_.bits == 64)));
    ReadAlpha();
}

void TiffReader::ReadAlpha()
{
    std::uint16_t numExtra = 0;
    std::uint16_t *extra = nullptr;
    TIFFGetFieldDefaulted(tiff_.get(), TIFFTAG_EXTRASAMPLES, &numExtra, &extra);
    if (numExtra > 0 && extra)
    {
        // A single extra sample of unspecified meaning is taken as alpha.
        bool const isAlpha =
            extra[0] == EXTRASAMPLE_UNASSALPHA || (extra[0] == EXTRASAMPLE_UNSPECIFIED && numExtra == 1);
        if (extra[0] == EXTRASAMPLE_ASSOCALPHA)
            layout_.alpha = eAlpha::e_multiplied;
        else if (isAlpha)
            layout_.alpha = eAlpha::e_straight;
    }
    else if (layout_.isPlain && layout_.numComponents == layout_.numColors + 1)
    {
        layout_.alpha = eAlpha::e_straight;
    }
    if (layout_.numComponents <= layout_.numColors)
        layout_.alpha = eAlpha::e_none;
}

bool TiffReader::IsPlausible(std::uint64_t fileSize)
{
    auto const compression = GetField<std::uint16_t>(TIFFTAG_COMPRESSION);
    std::uint64_t const ratio = compression == COMPRESSION_NONE ? 1 : s_largestRatio;
    std::uint64_t const numBits = std::uint64_t{GetField<std::uint16_t>(TIFFTAG_BITSPERSAMPLE)} * layout_.numComponents;
    // Compressed colours may be subsampled, so each pixel has at least the bits of one component.
    std::uint64_t const rowBytes =
        layout_.numColumns * (layout_.isPlain || layout_.isDeep ? numBits : std::min<std::uint64_t>(numBits, 8)) / 8;
    return rowBytes <= fileSize * ratio / layout_.numRows && TIFFScanlineSize64(tiff_.get()) != 0;
}

bool TiffReader::CanConvert()
{
    if (GetField<std::uint16_t>(TIFFTAG_SAMPLEFORMAT) == SAMPLEFORMAT_IEEEFP)
        return Fail(eImageFailure::e_unsupported, "floating-point TIFF is not supported");
    char message[1024] = {};
    return TIFFRGBAImageOK(tiff_.get(), message) != 0 ||
           Fail(eImageFailure::e_unsupported, string("libtiff: ") + message);
}

bool TiffReader::Read(PixelRows const &rows)
{
    return ReadPixels(rows) || Fail(eImageFailure::e_damaged, "libtiff: cannot read the pixels");
}

bool TiffReader::ReadPixels(PixelRows const &rows)
{
    if (!layout_.isPlain)
        return ReadConverted(rows);
    bool const isRead =
        ReadParts([&](std::uint64_t row, std::uint64_t column, unsigned char const *components, std::size_t count,
                      std::uint16_t plane)
                  { Copy(rows.GetRow(static_cast<std::size_t>(row)) + column * 4, components, count, plane); });
    if (!isRead)
        return false;
    for (unsigned int row = 0; layout_.alpha == eAlpha::e_multiplied && row < rows.numRows; ++row)
        DivideByAlpha(rows.GetRow(row), rows.numColumns);
    return true;
}

void TiffReader::Copy(unsigned char *pixels, unsigned char const *components, std::size_t count,
                      std::uint16_t plane) const
{
    unsigned char const mask = layout_.photometric == PHOTOMETRIC_MINISWHITE ? 0xFF : 0;
    bool const hasAlpha = layout_.alpha != eAlpha::e_none;
    if (!layout_.isPlanar && layout_.numColors == 3 && layout_.numComponents == 3 + (hasAlpha ? 1 : 0))
        return CopyColors(pixels, components, layout_.numComponents, count);
    if (!hasAlpha && plane == 0)
        std::fill_n(pixels, count * 4, static_cast<unsigned char>(0xFF));
    std::size_t const step = layout_.isPlanar ? 1 : layout_.numComponents;
    auto const first = layout_.isPlanar ? plane : std::uint16_t{0};
    auto const last = layout_.isPlanar ? plane : static_cast<std::uint16_t>(layout_.numColors + (hasAlpha ? 0 : -1));
    for (std::uint16_t i = first; i <= last; ++i, ++components)
    {
        if (i < layout_.numColors && layout_.numColors == 1)
            CopyComponent(pixels, components, step, count, {0, 3}, mask);
        else if (i < layout_.numColors)
            CopyComponent(pixels, components, step, count, {static_cast<unsigned char>(2 - i), 1}, 0);
        else if (i == layout_.numColors && hasAlpha)
            CopyComponent(pixels, components, step, count, {3, 1}, 0);
    }
}

bool TiffReader::ReadLuminance(float *values)
{
    std::size_t const numColumns = GetNumColumns(), count = numColumns * GetNumRows();
    std::fill_n(values, count, 0.0f);
    bool const isRead = ReadParts(
        [&](std::uint64_t row, std::uint64_t column, unsigned char const *components, std::size_t length,
            std::uint16_t plane)
        { AddLuminance(values + static_cast<std::size_t>(row * numColumns + column), components, length, plane); });
    if (!isRead)
        return Fail(eImageFailure::e_damaged, "libtiff: cannot read the pixels");
    for (std::size_t i = 0; layout_.photometric == PHOTOMETRIC_MINISWHITE && i < count; ++i)
        values[i] = 1.0f - values[i];
    return true;
}

void TiffReader::AddLuminance(float *values, unsigned char const *components, std::size_t count,
                              std::uint16_t plane) const
{
    std::size_t const size = GetComponentSize();
    std::size_t const step = layout_.isPlanar ? size : size * layout_.numComponents;
    std::uint16_t const first = layout_.isPlanar ? plane : std::uint16_t{0};
    std::uint16_t const end = layout_.isPlanar ? static_cast<std::uint16_t>(plane + 1) : layout_.numColors;
    for (std::uint16_t i = first; i < std::min(end, layout_.numColors); ++i, components += size)
    {
        float const weight = layout_.numColors == 1 ? 1.0f : s_luminanceWeights[i];
        if (layout_.areFloats && size == sizeof(float))
            AddDeep<float>(values, components, step, count, weight);
        else if (layout_.areFloats)
            AddDeep<double>(values, components, step, count, weight);
        else if (size == sizeof(std::uint16_t))
            AddDeep<std::uint16_t>(values, components, step, count, weight);
        else
            AddDeep<std::uint32_t>(values, components, step, count, weight);
    }
}

template<typename OnPart>
bool TiffReader::ReadStrips(OnPart const &onPart)
{
    std::vector<unsigned char> components(
        static_cast<std::size_t>(std::max<tmsize_t>(TIFFScanlineSize(tiff_.get()), 0)));
    std::size_t const rowBytes =
        std::size_t{GetNumColumns()} * (layout_.isPlanar ? 1u : layout_.numComponents) * GetComponentSize();
    if (components.size() < rowBytes)
        return false;
    for (std::uint16_t plane = 0; plane < GetNumPlanes(); ++plane)
    {
        for (std::uint32_t row = 0; row < GetNumRows(); ++row)
        {
            if (TIFFReadScanline(tiff_.get(), components.data(), row, plane) < 0)
                return false;
            onPart(row, 0, components.data(), GetNumColumns(), plane);
        }
    }
    return true;
}

template<typename OnPart>
bool TiffReader::ReadTiles(OnPart const &onPart)
{
    std::uint64_t const numRows = GetNumRows(), numColumns = GetNumColumns();
    auto const tileColumns = GetField<std::uint32_t>(TIFFTAG_TILEWIDTH);
    auto const tileRows = GetField<std::uint32_t>(TIFFTAG_TILELENGTH);
    auto const tileRowBytes = static_cast<std::size_t>(TIFFTileRowSize(tiff_.get()));
    tmsize_t const tileBytes = TIFFTileSize(tiff_.get());
    // A tile may be larger than the picture, but not much.
    std::uint64_t const pictureBytes =
        numRows * numColumns * std::max<std::uint64_t>(layout_.numComponents * GetComponentSize(), 4);
    std::uint64_t const mostBytes = std::min(largestBlock_, std::max(4 * pictureBytes, s_smallBlock));
    if (tileBytes <= 0 || static_cast<std::uint64_t>(tileBytes) > mostBytes || tileColumns == 0 || tileRows == 0)
        return Fail(eImageFailure::e_damaged, "a TIFF with tiles of an impossible size");
    auto const tile = std::make_unique_for_overwrite<unsigned char[]>(static_cast<std::size_t>(tileBytes));
    for (std::uint16_t plane = 0; plane < GetNumPlanes(); ++plane)
    {
        for (std::uint64_t top = 0; top < numRows; top += tileRows)
        {
            for (std::uint64_t left = 0; left < numColumns; left += tileColumns)
            {
                if (TIFFReadTile(tiff_.get(), tile.get(), static_cast<std::uint32_t>(left),
                                 static_cast<std::uint32_t>(top), 0, plane) < 0)
                    return false;
                std::size_t const count = std::min<std::size_t>(tileColumns, numColumns - left);
                for (std::uint64_t row = top; row < std::min<std::uint64_t>(top + tileRows, numRows); ++row)
                    onPart(row, left, tile.get() + (row - top) * tileRowBytes, count, plane);
            }
        }
    }
    return true;
}

bool TiffReader::ReadConverted(PixelRows const &rows)
{
    TIFFRGBAImage image;
    char message[1024] = {};
    if (rows.stride != static_cast<std::ptrdiff_t>(rows.numColumns) * 4 ||
        TIFFRGBAImageBegin(&image, tiff_.get(), 1, message) == 0)
        return Fail(eImageFailure::e_damaged, string("libtiff: ") + message);
    // Asks for the rows in the file's order.
    image.req_orientation = image.orientation;
    bool const succeeded =
        TIFFRGBAImageGet(&image, reinterpret_cast<std::uint32_t *>(rows.first), rows.numColumns, rows.numRows) != 0;
    TIFFRGBAImageEnd(&image);
    for (unsigned int row = 0; succeeded && row < rows.numRows; ++row)
    {
        unsigned char *const pixels = rows.GetRow(row);
        for (std::size_t i = 0; i < rows.numColumns; ++i)
            std::swap(pixels[i * 4], pixels[i * 4 + 2]);
        if (image.alpha != 0)
            DivideByAlpha(pixels, rows.numColumns);
    }
    return succeeded;
}

void SetFields(TIFF *tiff, PixelRows const &rows, std::uint32_t rowsPerStrip, ImageFileOptions const &options)
{
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, rows.numColumns);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, rows.numRows);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, (options.isGrey ? 1 : 3) + (rows.hasAlpha ? 1 : 0));
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, options.isGrey ? PHOTOMETRIC_MINISBLACK : PHOTOMETRIC_RGB);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, rowsPerStrip);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, options.useCompression ? COMPRESSION_ADOBE_DEFLATE : COMPRESSION_NONE);
    if (options.useCompression)
    {
        TIFFSetField(tiff, TIFFTAG_ZIPQUALITY, ToDeflateLevel(options.compressionLevel));
        TIFFSetField(tiff, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
    }
    std::uint16_t const extra = EXTRASAMPLE_UNASSALPHA;
    if (rows.hasAlpha)
        TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &extra);
}

void TakeColors(unsigned char *component, unsigned char const *pixel, std::size_t count, bool hasAlpha)
{
    for (std::size_t i = 0; i < count; ++i, pixel += 4)
    {
        *component++ = pixel[2];
        *component++ = pixel[1];
        *component++ = pixel[0];
        if (hasAlpha)
            *component++ = pixel[3];
    }
}

} // namespace

AutoPtr<ImageFileReader> OpenTiffFile(std::FILE *file, std::uint64_t fileSize, ImageReadOptions const &options,
                                      ImageFailure &failure)
{
    auto reader = std::make_unique<TiffReader>(file, options);
    bool const isOpen = reader->ReadHeader(fileSize);
    return HandOut(std::move(reader), isOpen, failure);
}

bool WriteTiffFile(std::FILE *file, PixelRows const &rows, ImageFileOptions const &options, ImageFailure &failure)
{
    TiffPtr const tiff = OpenTiff(file, "w", 0, failure);
    if (!tiff)
        return false;
    std::size_t const numComponents = (options.isGrey ? 1u : 3u) + (rows.hasAlpha ? 1u : 0u);
    std::size_t const rowBytes = rows.numColumns * numComponents;
    auto const rowsPerStrip = static_cast<std::uint32_t>(std::max<std::size_t>(s_stripByteSize / rowBytes, 1));
    SetFields(tiff.get(), rows, rowsPerStrip, options);
    std::vector<unsigned char> strip(rowBytes * std::min(rowsPerStrip, rows.numRows));
    for (std::uint32_t row = 0; row < rows.numRows; row += rowsPerStrip)
    {
        std::uint32_t const numRows = std::min(rowsPerStrip, rows.numRows - row);
        unsigned char *component = strip.data();
        for (std::uint32_t i = 0; i < numRows; ++i, component += rowBytes)
        {
            if (options.isGrey)
                TakeGrey(component, rows.GetRow(row + i), rows.numColumns, rows.hasAlpha);
            else
                TakeColors(component, rows.GetRow(row + i), rows.numColumns, rows.hasAlpha);
        }
        if (TIFFWriteEncodedStrip(tiff.get(), row / rowsPerStrip, strip.data(),
                                  static_cast<tmsize_t>(rowBytes * numRows)) < 0)
            return false;
    }
    return TIFFWriteDirectory(tiff.get()) != 0;
}

} // namespace quillmarsh::platform
