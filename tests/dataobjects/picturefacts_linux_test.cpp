// What pictures' files tell beside their pixels, and pictures at full precision.
#include <quillmarsh/basetools/serializer.h>
#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/dataobjects/datafiles.h>
#include <quillmarsh/dataobjects/sampleddataoperations.h>
#include <quillmarsh/dataobjects/sampletransfer.h>

#include "tests/support/sample_blocks.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/tiff_bytes.h"

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>

namespace quillmarsh::sampled_data
{
namespace
{

using tests::TiffBytes;
using tests::TiffPage;

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
    std::istringstream records(tests::ReadFile(QUILLMARSH_TEST_GOLDEN "imagefiles.bin"));
    unsigned int numDeep = 0;
    while (records.peek() != std::istringstream::traits_type::eof())
    {
        string kind, bytes, pixels;
        unsigned int format = 0, numRows = 0, numColumns = 0;
        records >= kind;
        for (unsigned int *const number : {&format, &numRows, &numColumns})
            records >= *number;
        records >= bytes;
        records >= pixels;
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
    try
    {
        Describe(bytes, {.page = 3});
        ADD_FAILURE();
    }
    catch (DataException const &thrown)
    {
        EXPECT_EQ((directory_ / "file") + ": has no page 3, but 3 pages, counted from 0", thrown.GetMessage());
    }
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
