#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/dataobjects/datacodecparameters.h>
#include <quillmarsh/dataobjects/sampletransfer.h>

#include "tests/support/sample_blocks.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/wine.h"

#include <gtest/gtest.h>

#include <cstring>

namespace quillmarsh
{
namespace
{

constexpr char const *s_formats[] = {"PNG", "TIFF", "BMP", "JPEG"};

/// Colours that change slowly from pixel to pixel.
class Gradient : public Image<Sample32>
{
public:
    Gradient(eSampleFormat format, unsigned int numRows, unsigned int numColumns)
        : SignalBase(sizeof(Sample32)),
          Image(format, numRows, numColumns)
    {
        for (unsigned int i = 0; i < GetNumSamples(); ++i)
        {
            unsigned int const pixel[] = {i * 3, i / numColumns * 5, 200 - i,
                                          format == e_format_A8R8G8B8 ? i * 7 : 255};
            for (int byte = 0; byte < 4; ++byte)
                GetSamples()[i].bytes[byte] = static_cast<unsigned char>(pixel[byte]);
        }
    }
};

class ImageCodecs : public testing::Test
{
protected:
    ImageCodecs() { RegisterDefaultDataCodecs(); }

    AutoPtr<ImageBase> Load(string const &name, NamedParameterList const &parameters = {}) const
    {
        return AutoPtr<ImageBase>(LoadImageA(name, &parameters));
    }

    tests::ScratchDirectory directory_;
    SignalOperationsManager operations_;
    DataCodecManager manager_;
};

NamedParameterList MakeList(std::initializer_list<NamedParameter> parameters)
{
    NamedParameterList list;
    for (NamedParameter const &parameter : parameters)
        list.Insert(parameter, true);
    return list;
}

TEST_F(ImageCodecs, SavedImagesComeBack)
{
    unsigned int const sizes[][2] = {{1, 1}, {3, 5}, {70, 300}};
    for (auto const &[numRows, numColumns] : sizes)
        for (string const format : s_formats)
            for (eSampleFormat const samples : {e_format_X8R8G8B8, e_format_A8R8G8B8})
            {
                SCOPED_TRACE(format + " " + std::to_string(numColumns));
                Gradient const image(samples, numRows, numColumns);
                string const name = directory_ / ("Gr\xC3\xBC\xC3\x9F"
                                                  "e " +
                                                  format + std::to_string(numRows * samples));
                ASSERT_TRUE(SaveImage(image, name, format));
                auto const loaded = Load(name);
                ASSERT_TRUE(loaded && loaded->CheckDimensionMatch(image));
                EXPECT_TRUE(loaded->GetSampleFormat() == samples || format == "BMP" || format == "JPEG");
                std::size_t const numBytes = loaded->GetSampleFormat() == e_format_A8R8G8B8 ? 4 : 3;
                for (unsigned int i = 0; format != "JPEG" && i < image.GetNumSamples(); ++i)
                    ASSERT_EQ(std::memcmp(loaded->SignalBase::SampleB(i), image.SignalBase::SampleB(i), numBytes), 0);
            }
}

TEST_F(ImageCodecs, EverySavedFormatPassesThroughItsForm)
{
    std::tuple<eSampleFormat, tests::Bytes, eSampleFormat, tests::Bytes> const cases[] = {
        {e_format_L8, {40}, e_format_X8R8G8B8, {40, 40, 40}},
        {e_format_A8, {40}, e_format_A8R8G8B8, {255, 255, 255, 40}},
        {e_format_A8L8, {40, 9}, e_format_A8R8G8B8, {40, 40, 40, 9}},
        {e_format_A4R4G4B4, {0x21, 0xF3}, e_format_A8R8G8B8, {}},
        {e_format_A1R5G5B5, {0x1F, 0x80}, e_format_A8R8G8B8, {}},
    };
    for (auto const &[format, sample, form, expected] : cases)
    {
        AutoPtr<ImageBase> const image(ManufactureImage(format, 1, 1));
        std::copy(sample.begin(), sample.end(), image->GetSamplesB());
        Image<Sample32> converted(form, 1, 1);
        if (expected.empty())
            TransferSamples2D(converted, *image, true);
        tests::Bytes const pixel = expected.empty() ? tests::BytesOf(converted) : expected;
        string const name = directory_ / std::to_string(format);
        ASSERT_TRUE(SaveImage(*image, name, "PNG"));
        auto const loaded = Load(name);
        ASSERT_TRUE(loaded);
        EXPECT_EQ(loaded->GetSampleFormat(), form);
        EXPECT_TRUE(std::equal(pixel.begin(), pixel.end(), loaded->GetSamplesB())) << format;
    }
    EXPECT_FALSE(SaveImage(Image<Sample32>(e_format_FP32NormL, 1, 1), directory_ / "float", "PNG"));
}

TEST_F(ImageCodecs, OriginMeansTheSameOnBothWays)
{
    Gradient const image(e_format_A8R8G8B8, 3, 2);
    NamedParameterList const bottom = MakeList({{signal_codec_parameters::Param_OriginBottom, true}});
    string const name = directory_ / "image";
    ASSERT_TRUE(SaveImage(image, name, "PNG", &bottom));
    auto const turned = Load(name);
    auto const back = Load(name, bottom);
    ASSERT_TRUE(turned && back);
    EXPECT_EQ(std::memcmp(turned->SampleB(0, 0), image.SampleB(2, 0), image.GetRowByteSize()), 0);
    EXPECT_EQ(std::memcmp(turned->SampleB(1, 0), image.SampleB(1, 0), image.GetRowByteSize()), 0);
    EXPECT_EQ(std::memcmp(back->GetSamplesB(), image.GetSamplesB(), image.GetTotalByteSize()), 0);
}

TEST_F(ImageCodecs, WhatCannotBeSavedLeavesNothingBehind)
{
    Gradient const image(e_format_X8R8G8B8, 2, 2);
    string const name = directory_ / "image";
    EXPECT_FALSE(SaveImage(image, name, "GIF") || SaveImage(image, name, "png") || SaveImage(image, "", "PNG"));
    EXPECT_FALSE(SaveImage(Image<Sample32>(e_format_X8R8G8B8, 0, 0), name, "PNG"));
    EXPECT_FALSE(SaveImage(image, directory_ / "absent/image", "PNG"));
    EXPECT_TRUE(std::filesystem::is_empty(directory_.GetPath()));
    std::filesystem::create_directory(name);
    EXPECT_EQ(Load(name), nullptr);
    NamedParameterList const overwrite = MakeList({{data_codec_parameters::Param_FileOverwrite, true}});
    EXPECT_FALSE(SaveImage(image, name, "PNG", &overwrite));
}

TEST_F(ImageCodecs, ParametersChangeTheSize)
{
    using namespace data_codec_parameters;
    if (tests::IsWine())
        GTEST_SKIP() << "Wine's drawing library has no use for the parameters of encoders.";
    std::vector<std::tuple<string, NamedParameter, NamedParameter>> cases = {
        {"TIFF", {Param_UseCompression, true}, {Param_UseCompression, false}},
        {"JPEG", {Param_Quality, 10u}, {Param_Quality, 1000u}},
    };
    // The PNG encoder of Windows takes no parameters.
    if (!tests::IsWindows())
        cases.push_back({"PNG", {Param_UseCompression, true}, {Param_UseCompression, false}});
    Gradient const image(e_format_X8R8G8B8, 64, 64);
    auto const sizeOf = [&](string const &format, NamedParameter const &parameter, string const &file)
    {
        NamedParameterList const list = MakeList({parameter});
        EXPECT_TRUE(SaveImage(image, file, format, &list));
        return std::filesystem::file_size(file);
    };
    for (auto const &[format, smaller, larger] : cases)
        EXPECT_LT(sizeOf(format, smaller, directory_ / (format + "s")),
                  sizeOf(format, larger, directory_ / (format + "l")))
            << format;
}

TEST_F(ImageCodecs, PackagesAreTriedFirst)
{
    EXPECT_EQ(manager_.GetEncoder(DataCategory_Image, 1)->GetCodecName(), "ImageEncoder/GDI+");
    EXPECT_EQ(manager_.GetDecoder(DataCategory_Image, 1)->GetCodecName(), "ImageDecoder/GDI+");
    EXPECT_EQ(manager_.GetDecoder(DataCategory_Image, 1)->GetFormatList(), "tiff jpeg png bmp");
}

} // namespace
} // namespace quillmarsh
