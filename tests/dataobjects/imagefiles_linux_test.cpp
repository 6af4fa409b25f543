// Files written by the image libraries themselves, with all their kinds of pixels, and damaged files.
#include <quillmarsh/basetools/serializer.h>
#include <quillmarsh/dataobjects/imagecodecs_gdiplus.h>
#include <quillmarsh/dataobjects/imagelimits.h>
#include <quillmarsh/dataobjects/sampletransfer.h>

#include "tests/support/package_bytes.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <random>
#include <sstream>
#include <vector>

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

} // namespace
} // namespace quillmarsh
