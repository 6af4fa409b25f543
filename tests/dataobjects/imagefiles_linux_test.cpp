// Files written by the image libraries themselves, with all their kinds of pixels, and damaged files.
#include <quillmarsh/dataobjects/datacodecparameters.h>
#include <quillmarsh/dataobjects/imagecodecs_gdiplus.h>
#include <quillmarsh/dataobjects/imagelimits.h>
#include <quillmarsh/dataobjects/sampletransfer.h>

#include "source/platform/plainfiles.h"
#include "tests/support/package_bytes.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <map>
#include <random>
#include <vector>

#include <png.h>
#include <sys/stat.h>
#include <tiffio.h>
#include <turbojpeg.h>

namespace quillmarsh
{
namespace
{

/// Blue, green, red, alpha.
using Pixel = std::array<int, 4>;
using Bytes = std::vector<unsigned char>;

struct Picture
{
    unsigned int numRows, numColumns;
    std::vector<Pixel> pixels = std::vector<Pixel>(std::size_t{numRows} * numColumns);
};

class ImageFiles : public testing::Test
{
protected:
    AutoPtr<ImageBase> Load(string const &name)
    {
        return AutoPtr<ImageBase>(ImageDecoderGdiplus().LoadImageA(name, NamedParameterList()));
    }

    /// Loads a file with these bytes and deletes it at once, because file systems are slow at overwriting.
    AutoPtr<ImageBase> LoadBytes(string const &bytes)
    {
        string const name = directory_.Write("bytes", bytes);
        AutoPtr<ImageBase> image = Load(name);
        std::filesystem::remove(name);
        return image;
    }

    /// Returns the reason for which a file with these bytes cannot be loaded.
    string TellWhyNotLoaded(string const &bytes)
    {
        CodecFailureSentry const reason;
        EXPECT_EQ(LoadBytes(bytes), nullptr);
        return reason.GetText();
    }

    /// Compares the loaded file with the picture.
    void Check(string const &name, Picture const &picture, eSampleFormat format, int tolerance = 0)
    {
        auto const image = Load(name);
        ASSERT_TRUE(image);
        EXPECT_EQ(image->GetSampleFormat(), format);
        ASSERT_TRUE(image->GetNumRows() == picture.numRows && image->GetNumColumns() == picture.numColumns);
        for (unsigned int i = 0; i < 4 * image->GetNumSamples(); ++i)
            ASSERT_NEAR(image->GetSamplesB()[i], picture.pixels[i / 4][i % 4], tolerance) << i;
    }

    unsigned int Random(unsigned int count) { return static_cast<unsigned int>(random_() % count); }

    tests::ScratchDirectory directory_;
    std::mt19937 random_{1};
};

/// Packs component values into rows of whole bytes, highest bit first.
class PackedRows
{
public:
    PackedRows(unsigned int numRows, std::size_t valuesPerRow, unsigned int bits)
        : rows_(numRows, Bytes((valuesPerRow * bits + 7) / 8)),
          bits_(bits)
    {
    }
    void Set(unsigned int row, std::size_t index, unsigned int value)
    {
        for (unsigned int bit = 0; bit < bits_; ++bit)
        {
            std::size_t const at = index * bits_ + bit;
            rows_[row][at / 8] |= static_cast<unsigned char>((value >> (bits_ - 1 - bit) & 1) << (7 - at % 8));
        }
    }
    Bytes &GetRow(unsigned int row) { return rows_[row]; }

private:
    std::vector<Bytes> rows_;
    unsigned int bits_;
};

int ToByte(unsigned int value, unsigned int bits)
{
    return static_cast<int>(std::lround(value * 255.0 / ((1u << bits) - 1)));
}

struct PngKind
{
    int colorType, bits;
    bool hasTransparency;
    int interlace;
};

void WritePng(string const &name, PngKind const &kind, Picture const &picture, PackedRows &rows,
              std::vector<png_color> const &palette, std::vector<unsigned char> const &alphas)
{
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    std::FILE *const file = std::fopen(name.c_str(), "wb");
    png_init_io(png, file);
    png_set_IHDR(png, info, picture.numColumns, picture.numRows, kind.bits, kind.colorType, kind.interlace,
                 PNG_COMPRESSION_TYPE_BASE, PNG_FILTER_TYPE_BASE);
    if (!palette.empty())
        png_set_PLTE(png, info, palette.data(), static_cast<int>(palette.size()));
    png_color_16 key = {};
    if (kind.hasTransparency)
        png_set_tRNS(png, info, alphas.empty() ? nullptr : alphas.data(), static_cast<int>(alphas.size()), &key);
    std::vector<png_bytep> pointers;
    for (unsigned int row = 0; row < picture.numRows; ++row)
        pointers.push_back(rows.GetRow(row).data());
    png_set_rows(png, info, pointers.data());
    png_write_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
    png_destroy_write_struct(&png, &info);
    std::fclose(file);
}

TEST_F(ImageFiles, PngOfEveryColourTypeAndDepth)
{
    constexpr int types[] = {PNG_COLOR_TYPE_GRAY, PNG_COLOR_TYPE_RGB, PNG_COLOR_TYPE_PALETTE, PNG_COLOR_TYPE_GRAY_ALPHA,
                             PNG_COLOR_TYPE_RGB_ALPHA};
    for (int index = 0; index < 5 * 5 * 2 * 2; ++index)
    {
        PngKind const kind = {types[index % 5], 1 << index / 5 % 5, index / 25 % 2 != 0, index / 50 % 2};
        bool const isGrey = kind.colorType == PNG_COLOR_TYPE_GRAY;
        bool const isPalette = kind.colorType == PNG_COLOR_TYPE_PALETTE;
        bool const hasAlphaChannel = (kind.colorType & PNG_COLOR_MASK_ALPHA) != 0;
        if ((isPalette && kind.bits > 8) || (!isPalette && !isGrey && kind.bits < 8) ||
            (hasAlphaChannel && kind.hasTransparency))
            continue;
        SCOPED_TRACE(std::to_string(kind.colorType) + " " + std::to_string(kind.bits) +
                     (kind.interlace ? " interlaced" : "") + (kind.hasTransparency ? " transparent" : ""));
        Picture picture = {13, 11};
        auto const bits = static_cast<unsigned int>(kind.bits);
        bool const isColour = (kind.colorType & PNG_COLOR_MASK_COLOR) != 0 && !isPalette;
        std::size_t const numComponents = (isColour ? 3u : 1u) + (hasAlphaChannel ? 1u : 0u);
        std::vector<png_color> palette;
        std::vector<unsigned char> alphas;
        for (unsigned int i = 0; isPalette && i < 1u << bits; ++i)
        {
            palette.push_back({static_cast<png_byte>(Random(256)), static_cast<png_byte>(Random(256)), 7});
            if (kind.hasTransparency)
                alphas.push_back(static_cast<unsigned char>(Random(256)));
        }
        PackedRows rows(picture.numRows, picture.numColumns * numComponents, bits);
        for (unsigned int i = 0; i < picture.pixels.size(); ++i)
        {
            std::array<unsigned int, 4> values = {};
            bool isKey = true;
            for (std::size_t component = 0; component < numComponents; ++component)
            {
                values[component] = i % 7 == 0 ? 0 : Random(1u << bits);
                isKey = isKey && values[component] == 0;
                rows.Set(i / picture.numColumns, i % picture.numColumns * numComponents + component, values[component]);
            }
            auto const byte = [&](std::size_t component) { return ToByte(values[component], bits); };
            int const keyed = kind.hasTransparency && isKey ? 0 : 255;
            if (isPalette)
                picture.pixels[i] = {palette[values[0]].blue, palette[values[0]].green, palette[values[0]].red,
                                     kind.hasTransparency ? alphas[values[0]] : 255};
            else if (numComponents < 3)
                picture.pixels[i] = {byte(0), byte(0), byte(0), numComponents == 2 ? byte(1) : keyed};
            else
                picture.pixels[i] = {byte(2), byte(1), byte(0), numComponents == 4 ? byte(3) : keyed};
        }
        string const name = directory_ / std::to_string(index);
        WritePng(name, kind, picture, rows, palette, alphas);
        Check(name, picture, hasAlphaChannel || kind.hasTransparency ? e_format_A8R8G8B8 : e_format_X8R8G8B8);
    }
}

struct TiffKind
{
    std::uint16_t photometric, numComponents, extra, compression;
    bool isTiled, isPlanar;
};

void WriteTiff(string const &name, TiffKind const &kind, Picture const &picture, std::vector<Bytes> &planes)
{
    TIFF *const tiff = TIFFOpen(name.c_str(), kind.isPlanar ? "wb" : "wl");
    constexpr std::uint32_t tile = 16;
    std::pair<std::uint32_t, std::uint32_t> const fields[] = {
        {TIFFTAG_IMAGEWIDTH, picture.numColumns},
        {TIFFTAG_IMAGELENGTH, picture.numRows},
        {TIFFTAG_BITSPERSAMPLE, 8},
        {TIFFTAG_SAMPLESPERPIXEL, kind.numComponents},
        {TIFFTAG_PHOTOMETRIC, kind.photometric},
        {TIFFTAG_PLANARCONFIG, kind.isPlanar ? PLANARCONFIG_SEPARATE : PLANARCONFIG_CONTIG},
        {TIFFTAG_COMPRESSION, kind.compression},
        // The file asks for a rotation, which readers ignore.
        {TIFFTAG_ORIENTATION, ORIENTATION_BOTRIGHT},
        {kind.isTiled ? TIFFTAG_TILEWIDTH : TIFFTAG_ROWSPERSTRIP, kind.isTiled ? tile : 5},
        {TIFFTAG_TILELENGTH, tile}};
    for (auto const &[tag, value] : fields)
    {
        if (tag != TIFFTAG_TILELENGTH || kind.isTiled)
            TIFFSetField(tiff, tag, value);
    }
    if (kind.extra != 0)
        TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &kind.extra);
    std::size_t const pixelBytes = kind.isPlanar ? 1 : kind.numComponents;
    for (std::uint16_t plane = 0; plane < planes.size(); ++plane)
    {
        std::size_t const rowBytes = picture.numColumns * pixelBytes;
        for (std::uint32_t row = 0; !kind.isTiled && row < picture.numRows; ++row)
            TIFFWriteScanline(tiff, planes[plane].data() + row * rowBytes, row, plane);
        for (std::uint32_t top = 0; kind.isTiled && top < picture.numRows; top += tile)
            for (std::uint32_t left = 0; left < picture.numColumns; left += tile)
            {
                Bytes bytes(tile * tile * pixelBytes);
                for (std::uint32_t row = top; row < std::min(top + tile, picture.numRows); ++row)
                    std::copy_n(planes[plane].data() + row * rowBytes + left * pixelBytes,
                                std::min(tile, picture.numColumns - left) * pixelBytes,
                                bytes.data() + (row - top) * tile * pixelBytes);
                TIFFWriteTile(tiff, bytes.data(), left, top, 0, plane);
            }
    }
    TIFFClose(tiff);
}

TEST_F(ImageFiles, TiffOfEveryLayout)
{
    constexpr std::array<std::uint16_t, 3> colours[] = {{PHOTOMETRIC_MINISBLACK, 1, 0},
                                                        {PHOTOMETRIC_MINISWHITE, 1, 0},
                                                        {PHOTOMETRIC_RGB, 3, 0},
                                                        {PHOTOMETRIC_RGB, 4, EXTRASAMPLE_UNASSALPHA},
                                                        {PHOTOMETRIC_RGB, 4, EXTRASAMPLE_ASSOCALPHA},
                                                        {PHOTOMETRIC_MINISBLACK, 2, EXTRASAMPLE_UNASSALPHA}};
    constexpr std::uint16_t compressions[] = {COMPRESSION_NONE, COMPRESSION_LZW, COMPRESSION_ADOBE_DEFLATE};
    for (unsigned int index = 0; index < 6 * 3 * 4; ++index)
    {
        auto const &[photometric, numComponents, extra] = colours[index % 6];
        TiffKind const kind = {photometric,         numComponents,  extra, compressions[index / 6 % 3],
                               index / 18 % 2 != 0, index / 36 != 0};
        SCOPED_TRACE(index);
        Picture picture = {23, 37};
        std::vector<Bytes> planes(kind.isPlanar ? numComponents : 1u,
                                  Bytes(picture.pixels.size() * (kind.isPlanar ? 1u : numComponents)));
        for (std::size_t i = 0; i < picture.pixels.size(); ++i)
        {
            std::array<int, 4> values = {};
            bool const isMultiplied = kind.extra == EXTRASAMPLE_ASSOCALPHA;
            int const alpha = isMultiplied ? 51 * static_cast<int>(1 + i % 5) : static_cast<int>(Random(256));
            for (std::size_t component = 0; component < numComponents; ++component)
            {
                bool const isAlpha = kind.extra != 0 && component + 1 == numComponents;
                values[component] = isAlpha        ? alpha
                                    : isMultiplied ? 5 * static_cast<int>(Random(52))
                                                   : static_cast<int>(Random(256));
                int const stored = isMultiplied && !isAlpha ? values[component] * alpha / 255 : values[component];
                (kind.isPlanar ? planes[component][i] : planes[0][i * numComponents + component]) =
                    static_cast<unsigned char>(stored);
            }
            int const grey = kind.photometric == PHOTOMETRIC_MINISWHITE ? 255 - values[0] : values[0];
            if (numComponents < 3)
                picture.pixels[i] = {grey, grey, grey, numComponents == 2 ? values[1] : 255};
            else
                picture.pixels[i] = {values[2], values[1], values[0], numComponents == 4 ? values[3] : 255};
        }
        string const name = directory_ / std::to_string(index);
        WriteTiff(name, kind, picture, planes);
        Check(name, picture, kind.extra != 0 ? e_format_A8R8G8B8 : e_format_X8R8G8B8);
    }
}

TEST_F(ImageFiles, JpegOfEveryKind)
{
    constexpr std::tuple<int, int, int> kinds[] = {
        {TJPF_GRAY, TJSAMP_GRAY, 0}, {TJPF_RGB, TJSAMP_444, 0},
        {TJPF_RGB, TJSAMP_420, 0},   {TJPF_RGB, TJSAMP_422, TJFLAG_PROGRESSIVE},
        {TJPF_CMYK, TJSAMP_444, 0},  {TJPF_CMYK, TJSAMP_444, TJFLAG_PROGRESSIVE}};
    for (auto const &[pixelFormat, subsampling, flags] : kinds)
    {
        SCOPED_TRACE(pixelFormat * 10 + subsampling);
        Picture picture = {33, 21};
        auto const size = static_cast<std::size_t>(tjPixelSize[pixelFormat]);
        Bytes values;
        for (unsigned int i = 0; i < picture.pixels.size(); ++i)
        {
            int const row = static_cast<int>(i / picture.numColumns);
            Pixel const value = {40 + row * 2, 90 + row, 200 - row, 250 - row};
            for (std::size_t component = 0; component < size; ++component)
                values.push_back(static_cast<unsigned char>(value[component]));
            // Inks are stored inverted, as the light that they let through.
            auto const light = [&](int ink) { return (ink * value[3] + 127) / 255; };
            if (size == 1)
                picture.pixels[i] = {value[0], value[0], value[0], 255};
            else if (size == 3)
                picture.pixels[i] = {value[2], value[1], value[0], 255};
            else
                picture.pixels[i] = {light(value[2]), light(value[1]), light(value[0]), 255};
        }
        tjhandle const handle = tjInitCompress();
        unsigned char *bytes = nullptr;
        unsigned long numBytes = 0;
        ASSERT_EQ(tjCompress2(handle, values.data(), static_cast<int>(picture.numColumns), 0,
                              static_cast<int>(picture.numRows), pixelFormat, &bytes, &numBytes, subsampling, 100,
                              flags),
                  0);
        string const name = directory_.Write("jpeg", string(bytes, bytes + numBytes));
        tjFree(bytes);
        tjDestroy(handle);
        Check(name, picture, e_format_X8R8G8B8, 4);
    }
}

/// Writes a 16-bit number, lowest byte first.
string Word(unsigned int value)
{
    return tests::NumberBytes(value).substr(0, 2);
}

/// Makes a BMP file with 3 columns, 2 rows and a header of this size. The given fields follow the compression field, or
/// the first 40 bytes of a larger header.
string MakeBmp(unsigned int headerSize, unsigned int bits, unsigned int compression, string const &fields,
               string const &palette, string const &pixels, bool topDown = false)
{
    string header = tests::NumberBytes(headerSize);
    if (headerSize == 12)
        header += Word(3) + Word(2) + Word(1) + Word(bits);
    else
        header += tests::NumberBytes(3) + tests::NumberBytes(topDown ? 0u - 2 : 2) + Word(1) + Word(bits);
    if (headerSize > 16)
        header += tests::NumberBytes(compression);
    if (headerSize > 40)
        header.resize(40);
    header += fields;
    header.resize(std::max<std::size_t>(header.size(), headerSize));
    string const body = header + palette;
    return "BM" + tests::NumberBytes(0) + tests::NumberBytes(0) +
           tests::NumberBytes(static_cast<unsigned int>(14 + body.size())) + body + pixels;
}

TEST_F(ImageFiles, BmpOfEveryVersion)
{
    using namespace std::literals;
    auto const masks = [](std::initializer_list<unsigned int> values)
    {
        string bytes;
        for (unsigned int const value : values)
            bytes += tests::NumberBytes(value);
        return bytes;
    };
    string const colours = "\x10\x20\x30\0\x40\x50\x60\0"s;
    Pixel const a = {0x10, 0x20, 0x30, 255};
    Pixel const b = {0x40, 0x50, 0x60, 255};
    std::vector<Pixel> const pattern = {a, b, a, b, b, a};
    string const palette16 = colours + string(14 * 4, 'x');
    string const bits1 = "\xC0\0\0\0\x40\0\0\0"s, bits4 = "\x11\0\0\0\x01\0\0\0"s, bits8 = "\1\1\0\0\0\1\0\0"s;
    string const bits24 = "\x40\x50\x60\x40\x50\x60\x10\x20\x30\0\0\0\x10\x20\x30\x40\x50\x60\x10\x20\x30\0\0\0"s;
    std::vector<Pixel> const packed = {{0, 0, 255, 0}, {0, 255, 0, 0}, {255, 0, 0, 0},
                                       {0, 0, 0, 255}, {0, 0, 0, 0},   {255, 255, 255, 255}};
    auto const opaque = [](std::vector<Pixel> pixels)
    {
        for (Pixel &pixel : pixels)
            pixel[3] = 255;
        return pixels;
    };
    string const words555 =
        Word(0x8000) + Word(0) + Word(0xFFFF) + Word(0) + Word(0x7C00) + Word(0x3E0) + Word(0x1F) + Word(0);
    string const words565 =
        Word(0) + Word(0) + Word(0xFFFF) + Word(0) + Word(0xF800) + Word(0x7E0) + Word(0x1F) + Word(0);
    string const longs = masks({0xFF000000, 0, 0xFFFFFFFF, 0xFF0000, 0xFF00, 0xFF});
    string const longs1010102 = masks({0xC0000000, 0, 0xFFFFFFFF, 0x3FF, 0xFFC00, 0x3FF00000});
    struct Case
    {
        char const *name;
        string bytes;
        std::vector<Pixel> pixels;
        bool hasAlpha = false;
    };
    Case const cases[] = {
        {"core, 24", MakeBmp(12, 24, 0, "", "", bits24), pattern},
        {"core, 8", MakeBmp(12, 8, 0, "", "\x10\x20\x30\x40\x50\x60"s + string(254 * 3, 'x'), bits8), pattern},
        {"16 bytes, 4", MakeBmp(16, 4, 0, "", palette16, bits4), pattern},
        {"1", MakeBmp(40, 1, 0, "", colours, bits1), pattern},
        {"4", MakeBmp(40, 4, 0, "", palette16, bits4), pattern},
        {"8, two colours", MakeBmp(40, 8, 0, masks({0, 0, 0, 2, 0}), colours, bits8), pattern},
        {"24, other system", MakeBmp(64, 24, 0, "", "", bits24), pattern},
        {"24, top down", MakeBmp(40, 24, 0, "", "", bits24, true), {b, b, a, a, b, a}},
        {"16", MakeBmp(40, 16, 0, "", "", words555), opaque(packed)},
        {"16 with masks behind", MakeBmp(40, 16, 3, string(20, '\0') + masks({0xF800, 0x7E0, 0x1F}), "", words565),
         opaque(packed)},
        {"32", MakeBmp(40, 32, 0, "", "", longs), opaque(packed)},
        {"32, version 3", MakeBmp(56, 32, 3, masks({0xFF0000, 0xFF00, 0xFF, 0xFF000000}), "", longs), packed, true},
        {"32, version 4", MakeBmp(108, 32, 3, masks({0x3FF, 0xFFC00, 0x3FF00000, 0xC0000000}), "", longs1010102),
         packed, true},
        {"32, version 5", MakeBmp(124, 32, 3, masks({0xFF0000, 0xFF00, 0xFF, 0}), "", longs), opaque(packed)},
        {"32, alpha behind",
         MakeBmp(40, 32, 6, string(20, '\0') + masks({0xFF0000, 0xFF00, 0xFF, 0xFF000000}), "", longs), packed, true},
        {"8 in runs", MakeBmp(40, 8, 1, "", colours + string(254 * 4, 'x'), "\2\1\1\0\0\0\0\3\0\1\0\0\0\1"s), pattern},
        {"8 in runs, passed over",
         MakeBmp(40, 8, 1, "", colours + string(254 * 4, 'x'), "\2\1\0\2\1\1\0\1"s),
         {a, a, a, b, b, a}},
        {"4 in runs", MakeBmp(40, 4, 2, "", palette16, "\2\x11\1\0\0\0\3\1\0\1"s), pattern},
    };
    for (Case const &test : cases)
    {
        SCOPED_TRACE(test.name);
        Check(directory_.Write("bmp", test.bytes), {2, 3, test.pixels},
              test.hasAlpha ? e_format_A8R8G8B8 : e_format_X8R8G8B8);
        for (std::size_t length = 0; length < test.bytes.size(); ++length)
            ASSERT_EQ(LoadBytes(test.bytes.substr(0, length)), nullptr) << length;
    }
    string const broken[] = {
        MakeBmp(40, 8, 0, masks({0, 0, 0, 1, 0}), colours.substr(0, 4), bits8),
        MakeBmp(40, 8, 1, "", colours + string(254 * 4, 'x'), "\2\1\0\0\2\1\0\0\2\1\0\1"s),
        MakeBmp(40, 2, 0, "", palette16, bits8),
        MakeBmp(64, 24, 4, "", "", bits24),
        MakeBmp(40, 8, 1, "", colours + string(254 * 4, 'x'), "\0\1"s, true),
    };
    for (string const &bytes : broken)
        EXPECT_EQ(LoadBytes(bytes), nullptr) << &bytes - broken;
}

TEST_F(ImageFiles, DamagedFilesAreRefused)
{
    SignalOperationsManager const operations;
    Image<Sample32> image(e_format_A8R8G8B8, 5, 9);
    for (unsigned int i = 0; i < image.GetTotalByteSize(); ++i)
        image.GetSamplesB()[i] = static_cast<unsigned char>(Random(256));
    for (string const format : {"PNG", "JPEG", "BMP", "TIFF"})
    {
        SCOPED_TRACE(format);
        ASSERT_TRUE(ImageEncoderGdiplus().SaveImage(image, directory_ / format, format, NamedParameterList()));
        string const bytes = tests::ReadFile(directory_ / format);
        for (std::size_t length = 0; length < bytes.size(); ++length)
            ASSERT_EQ(LoadBytes(bytes.substr(0, length)), nullptr) << length;
        // Whatever the header claims, the reader uses only the bytes that exist.
        auto const flip = [&](std::size_t begin, std::size_t end)
        {
            for (std::size_t bit = begin * 8; bit < end * 8; ++bit)
            {
                auto const loaded = LoadBytes(tests::FlipBit(bytes, bit));
                EXPECT_TRUE(!loaded || loaded->GetNumSamples() < (bytes.size() << 14)) << bit;
                EXPECT_TRUE(!loaded || format != "PNG") << bit;
            }
        };
        flip(0, std::min<std::size_t>(bytes.size(), 70));
        if (format == "TIFF")
            flip(bytes.size() - 200, bytes.size());
    }
}

TEST_F(ImageFiles, HugeClaimsAreRefusedBeforePixelsAreReadInto)
{
    Image<Sample32> const image(e_format_X8R8G8B8, 16, 16);
    ASSERT_TRUE(ImageEncoderGdiplus().SaveImage(image, directory_ / "jpeg", "JPEG", NamedParameterList()));
    string jpeg = tests::ReadFile(directory_ / "jpeg");
    jpeg.replace(jpeg.find("\xFF\xC0") + 5, 4, "\x70\1\x70\1");

    // A header with 28672 rows and columns of colours, its checksum, and the start of the samples.
    string const png("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\x70\0\0\0\x70\0\x08\2\0\0\0\xa6\xa3\x69\x9d\0\0\0\1IDAT\0", 42);
    string bmp = MakeBmp(40, 8, 1, "", string(1024, 'x'), string(2, '\1'));
    bmp.replace(18, 8, tests::NumberBytes(0x7000) + tests::NumberBytes(0x7000));
    for (string const &bytes : {jpeg, png, bmp})
        EXPECT_EQ("claims to be larger than its file can hold", TellWhyNotLoaded(bytes));
}

TEST_F(ImageFiles, FullDisksAndPipesFail)
{
    SignalOperationsManager const operations;
    Image<Sample32> const image(e_format_A8R8G8B8, 5, 5);
    NamedParameterList parameters;
    parameters.Insert(NamedParameter(data_codec_parameters::Param_FileOverwrite, true), true);
    for (string const format : {"PNG", "JPEG", "BMP", "TIFF"})
        EXPECT_FALSE(ImageEncoderGdiplus().SaveImage(image, "/dev/full", format, parameters)) << format;
    string const pipe = directory_ / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(Load(pipe), nullptr);
    std::uint64_t size = 0;
    EXPECT_EQ(platform::OpenPlainFile(pipe, size), nullptr);
}

TEST_F(ImageFiles, FailuresTellTheirReason)
{
    string const tiff = directory_ / "float.tif";
    TIFF *const file = TIFFOpen(tiff.c_str(), "w");
    for (auto const &[tag, value] : {std::pair<std::uint32_t, int>{TIFFTAG_IMAGEWIDTH, 1},
                                     {TIFFTAG_IMAGELENGTH, 1},
                                     {TIFFTAG_BITSPERSAMPLE, 32},
                                     {TIFFTAG_SAMPLESPERPIXEL, 1},
                                     {TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK},
                                     {TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_IEEEFP}})
        TIFFSetField(file, tag, value);
    float sample = 0.5f;
    TIFFWriteScanline(file, &sample, 0, 0);
    TIFFClose(file);
    EXPECT_EQ("floating-point TIFF is not supported", TellWhyNotLoaded(tests::ReadFile(tiff)));

    Image<Sample32> const image(e_format_X8R8G8B8, 40, 50);
    std::map<string, string> files;
    for (string const format : {"PNG", "JPEG", "BMP", "TIFF"})
    {
        ASSERT_TRUE(ImageEncoderGdiplus().SaveImage(image, directory_ / format, format, NamedParameterList()));
        files[format] = tests::ReadFile(directory_ / format);
    }
    std::pair<char const *, char const *> const cut[] = {
        {"PNG", "libpng: "}, {"JPEG", "libjpeg-turbo: "}, {"TIFF", "libtiff: "}, {"BMP", "claims to be larger"}};
    for (auto const &[format, begin] : cut)
    {
        string const &bytes = files[format];
        EXPECT_EQ(0u, TellWhyNotLoaded(bytes.substr(0, bytes.size() * 3 / 4)).find(begin)) << format;
    }
    EXPECT_EQ("neither TIFF nor JPEG nor PNG nor BMP", TellWhyNotLoaded("GIF89a"));

    image_limits::SetMaxPixels(1999);
    for (auto const &[format, bytes] : files)
        EXPECT_EQ("40 rows of 50 pixels are more than the limit of 1999 pixels", TellWhyNotLoaded(bytes)) << format;
    image_limits::SetMaxPixels(image_limits::s_defaultMaxPixels);
    for (auto const &[format, bytes] : files)
        EXPECT_NE(nullptr, LoadBytes(bytes)) << format;
}

} // namespace
} // namespace quillmarsh
