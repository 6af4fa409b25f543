// Files written by the image libraries themselves, with all their kinds of pixels, and damaged files.
#include <quillmarsh/basetools/serializer.h>
#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/dataobjects/datafiles.h>
#include <quillmarsh/dataobjects/imagecodecs_gdiplus.h>
#include <quillmarsh/dataobjects/imagelimits.h>
#include <quillmarsh/dataobjects/sampleddataoperations.h>
#include <quillmarsh/dataobjects/sampletransfer.h>

#include "tests/support/failures.h"
#include "tests/support/package_bytes.h"
#include "tests/support/sample_blocks.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/tiff_bytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <random>
#include <sstream>
#include <vector>

namespace quillmarsh::sampled_data
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

/// A record of the golden file: an image file, and the pixels that it was made of. A size of 0 marks a file that is not
/// read.
/// libpng, libtiff and libjpeg-turbo wrote their kinds of files; the BMP files and the refused TIFF were put together by
/// hand.
struct StoredFile
{
    string kind, bytes, pixels;
    unsigned int format = 0, numRows = 0, numColumns = 0;

    bool Is(char const *beginOfKind) const { return kind.find(beginOfKind) == 0; }
    Picture MakePicture() const
    {
        Picture picture = {numRows, numColumns};
        for (std::size_t i = 0; i < pixels.size(); ++i)
            picture.pixels[i / 4][i % 4] = static_cast<unsigned char>(pixels[i]);
        return picture;
    }
};

std::vector<StoredFile> ReadStoredFiles()
{
    std::vector<StoredFile> files;
    std::istringstream records(tests::ReadFile(QUILLMARSH_TEST_GOLDEN "imagefiles.bin"));
    while (records.peek() != std::istringstream::traits_type::eof())
    {
        StoredFile &file = files.emplace_back();
        records >= file.kind;
        for (unsigned int *const number : {&file.format, &file.numRows, &file.numColumns})
            records >= *number;
        records >= file.bytes;
        records >= file.pixels;
    }
    return files;
}

string FindStoredFile(char const *beginOfKind)
{
    std::vector<StoredFile> const files = ReadStoredFiles();
    auto const isWanted = [=](StoredFile const &file) { return file.Is(beginOfKind); };
    return std::find_if(files.begin(), files.end(), isWanted)->bytes;
}

TEST_F(ImageFiles, FilesOfEveryKindGiveTheirPixels)
{
    std::vector<StoredFile> const files = ReadStoredFiles();
    EXPECT_EQ(files.size(), 106u);
    for (StoredFile const &file : files)
    {
        SCOPED_TRACE(file.kind);
        string const name = directory_.Write("file", file.bytes);
        if (file.numRows == 0)
            EXPECT_EQ(Load(name), nullptr);
        else
            Check(name, file.MakePicture(), static_cast<eSampleFormat>(file.format), file.Is("JPEG") ? 4 : 0);
        for (std::size_t length = 0; file.Is("BMP") && length < file.bytes.size(); ++length)
            ASSERT_EQ(LoadBytes(file.bytes.substr(0, length)), nullptr) << length;
    }
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
    string bmp = FindStoredFile("BMP, 8 in runs");
    bmp.replace(18, 8, tests::NumberBytes(0x7000) + tests::NumberBytes(0x7000));
    for (string const &bytes : {jpeg, png, bmp})
        EXPECT_EQ("claims to be larger than its file can hold", TellWhyNotLoaded(bytes));
}

TEST_F(ImageFiles, OnlyAsMuchOfAJpegIsReadAsIsNeeded)
{
    Image<Sample32> image(e_format_X8R8G8B8, 16, 16);
    ASSERT_TRUE(ImageEncoderGdiplus().SaveImage(image, directory_ / "jpeg", "JPEG", NamedParameterList()));
    string jpeg = tests::ReadFile(directory_ / "jpeg");
    auto const expected = LoadBytes(jpeg);
    ASSERT_TRUE(expected);
    // Comments that are longer together than the first piece of a file that is read.
    for (int i = 0; i < 5; ++i)
        jpeg.insert(2, "\xFF\xFE\xFF\xFF" + string(0xFFFD, 'c'));
    auto const loaded = LoadBytes(jpeg);
    ASSERT_TRUE(loaded);
    EXPECT_EQ(std::memcmp(loaded->GetSamplesB(), expected->GetSamplesB(), expected->GetTotalByteSize()), 0);

    // A file without blocks on the disk, of more bytes than the machine has memory.
    string const sparse = directory_.Write("sparse", "\xFF\xD8\xFF");
    std::filesystem::resize_file(sparse, std::uint64_t{1} << 40);
    CodecFailureSentry const reason;
    EXPECT_EQ(Load(sparse), nullptr);
    EXPECT_EQ(reason.GetText(), "a JPEG without pixels");
}

TEST_F(ImageFiles, FailuresTellTheirReason)
{
    EXPECT_EQ("floating-point TIFF is not supported", TellWhyNotLoaded(FindStoredFile("TIFF, refused")));

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

// What the files tell beside their pixels, and pictures at full precision.

using tests::TiffBytes;

class PictureFacts : public testing::Test
{
protected:
    PictureFacts() { RegisterDefaultDataCodecs(); }

    DataFileDesc Describe(string const &bytes, LoadSettings const &settings = {})
    {
        return DataFile(directory_.Write("file", bytes), settings).GetDesc();
    }
    SampledData Load(string const &bytes, LoadSettings const &settings = {})
    {
        return DataFile(directory_.Write("file", bytes), settings).Load();
    }
    /// Returns the green component of each pixel, row by row with a blank between.
    string LoadText(string const &bytes, LoadSettings const &settings = {})
    {
        SampledData const data = Load(bytes, settings);
        EXPECT_EQ(data.GetDimensions(), Describe(bytes, settings).dimensions);
        string text;
        for (unsigned int i = 0; i < data.GetSamples().GetNumSamples(); ++i)
            text += (i > 0 && i % data.GetDimensions()[1] == 0 ? " " : "") +
                    string(1, static_cast<char>(data.GetSamples().GetSamplesB()[i * 4 + 1]));
        return text;
    }
    std::vector<float> LoadFloats(string const &bytes)
    {
        SampledData const data = Load(bytes, s_deep);
        EXPECT_EQ(e_format_FP32NormL, data.GetFormat());
        std::vector<float> floats(data.GetSamples().GetNumSamples());
        std::memcpy(floats.data(), data.GetSamples().GetSamplesB(), floats.size() * sizeof(float));
        return floats;
    }

    static constexpr LoadSettings s_deep = {.deepLuminance = true};

    SignalOperationsManager operations_;
    DataCodecManager codecs_;
    tests::ScratchDirectory directory_;
};

TEST_F(PictureFacts, KindsOfPixelsAreNamedAndDeepOnesComeWhole)
{
    unsigned int numDeep = 0;
    for (auto const &[kind, bytes, pixels, format, numRows, numColumns] : ReadStoredFiles())
    {
        if (kind.find("PNG, ") != 0)
            continue;
        SCOPED_TRACE(kind);
        PictureDesc const picture = *Describe(bytes).picture;
        EXPECT_EQ(kind.find("grey") != string::npos, picture.colours == ePictureColours::e_grey);
        EXPECT_EQ(kind.find("palette") != string::npos, picture.paletteSize > 0);
        EXPECT_NE(string::npos, kind.find(' ' + std::to_string(picture.bits) + " bits"));
        EXPECT_EQ(picture.bits == 16, !ListLoadingLosses(Describe(bytes)).empty());
        if (picture.bits != 16)
            continue;
        // The luminance agrees with that of the bytes, and is finer.
        ++numDeep;
        std::vector<float> const floats = LoadFloats(bytes);
        SampledData grey = Load(bytes);
        ChangeFormat(grey, e_format_L8);
        for (std::size_t i = 0; i < floats.size(); ++i)
            ASSERT_NEAR(grey.GetSamples().GetSamplesB()[i] / 255.0, static_cast<double>(floats[i]), 1.01 / 255) << i;
        EXPECT_TRUE(std::any_of(floats.begin(), floats.end(),
                                [](float value) { return std::abs(std::remainder(value * 255.0f, 1.0f)) > 0.05f; }));
    }
    EXPECT_GE(numDeep, 8u);
}

TEST_F(PictureFacts, TiffComesAtFullPrecision)
{
    string const shorts("\0\0\1\0\0\x80\xFF\xFF", 8);
    std::vector<float> const grey = {0, 1 / 65535.0f, 32768 / 65535.0f, 1};
    EXPECT_EQ(grey, LoadFloats(TiffBytes({{2, 2, 16, shorts}})));
    EXPECT_EQ(
        (std::vector<float>{1, 1 - grey[1], 1 - grey[2], 0}),
        LoadFloats(TiffBytes({{.numRows = 2, .numColumns = 2, .bits = 16, .components = shorts, .photometric = 0}})));
    EXPECT_EQ(std::vector<float>{0.299f * 0 + 0.587f * 1 + 0.114f * grey[2]},
              LoadFloats(TiffBytes({{1, 1, 16, string("\0\0\xFF\xFF\0\x80", 6), 3, false, 1, 2}})));

    float const values[] = {-0.5f, 0.3f, 1.5f};
    string const bytes = TiffBytes({{.numRows = 1,
                                     .numColumns = 3,
                                     .bits = 32,
                                     .components = string(reinterpret_cast<char const *>(values), 12),
                                     .areFloats = true}});
    EXPECT_EQ((std::vector<float>{-0.5f, 0.3f, 1.5f}), LoadFloats(bytes));
    EXPECT_TRUE(Describe(bytes, s_deep).picture->areFloats && ListLoadingLosses(Describe(bytes, s_deep)).empty());
    EXPECT_EQ(std::vector<string>{"16 bits become 8"}, ListLoadingLosses(Describe(TiffBytes({{2, 2, 16, shorts}}))));
    // Eight bits stay bytes.
    EXPECT_EQ(e_format_X8R8G8B8, Load(TiffBytes({{1, 1, 8, "a"}}), s_deep).GetFormat());
}

TEST_F(PictureFacts, OrientationIsObeyed)
{
    constexpr char const *turned[] = {"abc def",  "cba fed",  "fed cba",  "def abc",
                                      "ad be cf", "da eb fc", "fc eb da", "cf be ad"};
    for (unsigned int orientation = 1; orientation <= 8; ++orientation)
    {
        string const bytes = TiffBytes({{2, 3, 8, "abcdef", 1, false, orientation}});
        EXPECT_EQ(turned[orientation - 1], LoadText(bytes)) << orientation;
        EXPECT_EQ("abc def", LoadText(bytes, {.obeyOrientation = false}));
        EXPECT_EQ(orientation, Describe(bytes).picture->orientation);
    }
    // In a JPEG, a segment of Exif data tells it: a TIFF file without pixels, here with big-endian numbers.
    SampledData const data(e_format_X8R8G8B8, {8, 16});
    string const name = directory_ / "a.jpg";
    SaveFile(data, name, *FindFileType(name), {});
    string jpeg = tests::ReadFile(name);
    string const exif("Exif\0\0MM\0*\0\0\0\x08\0\1\x01\x12\0\3\0\0\0\1\0\6\0\0\0\0\0\0", 32);
    jpeg.insert(2, string("\xFF\xE1\0\x22", 4) + exif);
    EXPECT_EQ(6u, Describe(jpeg).picture->orientation);
    EXPECT_EQ((Dimensions{16, 8}), Load(jpeg).GetDimensions());
    // Damaged Exif data do no harm.
    for (std::size_t i = 0; i < exif.size(); ++i)
    {
        string cut = jpeg;
        cut.replace(6 + i, exif.size() - i, string(exif.size() - i, '\xFF'));
        EXPECT_EQ(8u * 16, Load(cut).GetSamples().GetNumSamples());
    }
}

TEST_F(PictureFacts, PagesAreChosen)
{
    string const bytes = TiffBytes({{1, 1, 8, "a"}, {1, 2, 8, "bc"}, {1, 1, 16, "de"}});
    EXPECT_EQ("a", LoadText(bytes));
    EXPECT_EQ("bc", LoadText(bytes, {.page = 1}));
    EXPECT_EQ(3u, Describe(bytes).picture->numPages);
    EXPECT_EQ(16u, Describe(bytes, {.page = 2}).picture->bits);
    EXPECT_EQ((std::vector<string>{"16 bits become 8", "page 2 alone of 3"}),
              ListLoadingLosses(Describe(bytes, {.page = 2})));
    EXPECT_EQ((directory_ / "file") + ": has no page 3, but 3 pages, counted from 0",
              tests::MessageOf<DataException>([&] { Describe(bytes, {.page = 3}); }));
}

TEST_F(PictureFacts, GreyIsSavedGrey)
{
    for (eSampleFormat const format : {e_format_L8, e_format_A8L8})
    {
        SampledData data(format, {9, 70});
        for (unsigned int i = 0; i < data.GetSamples().GetTotalByteSize(); ++i)
            data.GetSamples().GetSamplesB()[i] = static_cast<unsigned char>(i * 7);
        for (string const extension : {".png", ".tiff", ".jpg", ".bmp"})
        {
            string const name = directory_ / ("g" + extension);
            SaveFile(data, name, *FindFileType(name), {.overwrite = true});
            DataFile file(name);
            EXPECT_EQ(extension != ".bmp", file.GetDesc().picture->colours == ePictureColours::e_grey) << extension;
            bool const hasAlpha = format == e_format_A8L8 && extension != ".jpg";
            EXPECT_EQ(hasAlpha, file.GetDesc().picture->hasAlpha);
            SampledData loaded = file.Load();
            if (extension == ".jpg")
                continue;
            ChangeFormat(loaded, format);
            EXPECT_EQ(tests::BytesOf(data.GetSamples()), tests::BytesOf(loaded.GetSamples())) << extension;
        }
        EXPECT_EQ(format == e_format_A8L8, !ListSavingLosses(data, *FindFileType("a.jpg")).empty());
        EXPECT_TRUE(ListSavingLosses(data, *FindFileType("a.png")).empty());
    }
}

TEST_F(PictureFacts, FormatsAreReachedByWayOfOthers)
{
    SampledData colours(e_format_A8R8G8B8, {1});
    std::fill_n(colours.GetSamples().GetSamplesB(), 3, static_cast<unsigned char>(51));
    colours.GetSamples().GetSamplesB()[3] = 102;
    auto const convert = [&](eSampleFormat format)
    {
        SampledData data(e_format_A8R8G8B8, {1});
        std::memcpy(data.GetSamples().GetSamplesB(), colours.GetSamples().GetSamplesB(), 4);
        ChangeFormat(data, format);
        float value = 0;
        std::memcpy(&value, data.GetSamples().GetSamplesB(), 4);
        return value;
    };
    EXPECT_FLOAT_EQ(0.2f, convert(e_format_FP32NormL));
    // Alpha comes from alpha, not from the colours.
    EXPECT_FLOAT_EQ(0.4f, convert(e_format_FP32NormA));
    SampledData words(e_format_A1R5G5B5, {1});
    ChangeFormat(words, e_format_L8);
    EXPECT_EQ(255, *words.GetSamples().GetSamplesB());
    EXPECT_THROW(RequireTransfer(e_format_L8, sample_formats::UnknownSampleFormat(12)), DataException);
}

} // namespace
} // namespace quillmarsh::sampled_data
