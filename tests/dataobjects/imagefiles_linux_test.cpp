// Files written by the image libraries themselves, with all their kinds of pixels, and damaged files.
#include <quillmarsh/basetools/serializer.h>
#include <quillmarsh/dataobjects/datacodecparameters.h>
#include <quillmarsh/dataobjects/imagecodecs_gdiplus.h>
#include <quillmarsh/dataobjects/imagelimits.h>
#include <quillmarsh/dataobjects/sampletransfer.h>

#include "source/platform/plainfiles.h"
#include "tests/support/package_bytes.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <random>
#include <sstream>
#include <vector>

#include <sys/stat.h>
#include <tiffio.h>

namespace quillmarsh
{
namespace
{

/// Blue, green, red, alpha.
using Pixel = std::array<int, 4>;

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

/// The golden file holds records: kind, format, size, an image file, and the pixels that it was made of. libpng, libtiff
/// and libjpeg-turbo wrote the files.
TEST_F(ImageFiles, FilesOfEveryKindGiveTheirPixels)
{
    std::istringstream records(tests::ReadFile(QUILLMARSH_TEST_GOLDEN "imagefiles.bin"));
    unsigned int numFiles = 0;
    for (; records.peek() != std::istringstream::traits_type::eof(); ++numFiles)
    {
        string kind, file, pixels;
        unsigned int format = 0, numRows = 0, numColumns = 0;
        records >= kind;
        records >= format;
        records >= numRows;
        records >= numColumns;
        records >= file;
        records >= pixels;
        SCOPED_TRACE(kind);
        Picture picture = {numRows, numColumns};
        for (std::size_t i = 0; i < pixels.size(); ++i)
            picture.pixels[i / 4][i % 4] = static_cast<unsigned char>(pixels[i]);
        bool const isExact = kind.find("JPEG") != 0;
        Check(directory_.Write("file", file), picture, static_cast<eSampleFormat>(format), isExact ? 0 : 4);
    }
    EXPECT_EQ(numFiles, 82u);
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
