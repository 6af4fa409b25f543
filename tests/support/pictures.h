// Compares what a test has drawn with a stored picture.
#ifndef QUILLMARSH_TESTS_SUPPORT_PICTURES_H
#define QUILLMARSH_TESTS_SUPPORT_PICTURES_H

#include <quillmarsh/dataobjects/codecfailure.h>
#include <quillmarsh/dataobjects/datacodecparameters.h>
#include <quillmarsh/dataobjects/imagecodecs_gdiplus.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace quillmarsh::tests
{

/// How much a picture may differ from the stored one. Drivers round edges, colours and texture coordinates in their own
/// ways.
struct PictureTolerance
{
    /// Difference of a colour channel that counts as equal.
    unsigned int channel = 8;
    /// Part of all pixels that may differ more.
    double pixels = 0.001;
};

namespace pictures
{

inline AutoPtr<ImageBase> Load(std::filesystem::path const &file)
{
    return AutoPtr<ImageBase>(ImageDecoderGdiplus().LoadImageA(file.string(), NamedParameterList()));
}

/// Saves as PNG; returns the reason of a failure.
inline string Save(ImageBase const &image, std::filesystem::path const &file)
{
    std::filesystem::create_directories(file.parent_path());
    NamedParameterList params;
    params.Insert({data_codec_parameters::Param_FileOverwrite, true}, true);
    params.Insert({data_codec_parameters::Param_UseCompression, true}, true);
    CodecFailureSentry const failure;
    return ImageEncoderGdiplus().SaveImage(image, file.string(), "PNG", params) ? "" : failure.GetText();
}

/// Returns the colours of an image without its alpha; null for a format that is not known here.
inline AutoPtr<ImageBase> GetColors(ImageBase const &image)
{
    AutoPtr<ImageBase> colors(ManufactureImage(e_format_X8R8G8B8, image.GetNumRows(), image.GetNumColumns()));
    bool const isGray = image.GetSampleFormat() == e_format_L8;
    if (!isGray && image.GetSampleByteSize() != 4)
        return nullptr;
    for (unsigned int i = 0; i < image.GetNumSamples(); ++i)
    {
        unsigned char const *const from = static_cast<SignalBase const &>(image).SampleB(i);
        unsigned char *const to = static_cast<SignalBase &>(*colors).SampleB(i);
        for (unsigned int channel = 0; channel < 3; ++channel)
            to[channel] = from[isGray ? 0 : channel];
        to[3] = 255;
    }
    return colors;
}

inline unsigned int GetDifference(unsigned char const *a, unsigned char const *b)
{
    unsigned int largest = 0;
    for (unsigned int channel = 0; channel < 3; ++channel)
        largest = std::max(largest, static_cast<unsigned int>(std::abs(a[channel] - b[channel])));
    return largest;
}

/// Returns the stored picture, the new one, and where they differ, side by side.
inline AutoPtr<ImageBase> MakeComparison(ImageBase const &stored, ImageBase const &drawn, PictureTolerance tolerance)
{
    unsigned int const width = stored.GetNumColumns();
    AutoPtr<ImageBase> comparison(ManufactureImage(e_format_X8R8G8B8, stored.GetNumRows(), width * 3));
    for (unsigned int row = 0; row < stored.GetNumRows(); ++row)
    {
        std::copy_n(stored.SampleB(row, 0), stored.GetRowByteSize(), comparison->SampleB(row, 0));
        std::copy_n(drawn.SampleB(row, 0), drawn.GetRowByteSize(), comparison->SampleB(row, width));
        for (unsigned int column = 0; column < width; ++column)
        {
            unsigned int const difference = GetDifference(stored.SampleB(row, column), drawn.SampleB(row, column));
            // Small differences are gray, those beyond the tolerance red.
            auto const level = static_cast<unsigned char>(std::min(255u, 64 + difference * 4));
            bool const isTooLarge = difference > tolerance.channel;
            unsigned char *const to = comparison->SampleB(row, width * 2 + column);
            std::fill_n(to, 4, difference == 0 ? static_cast<unsigned char>(0) : level);
            if (isTooLarge)
                to[0] = to[1] = 0;
        }
    }
    return comparison;
}

} // namespace pictures

/// Compares an image of the formats L8, X8R8G8B8 or A8R8G8B8, top row first, with tests/pictures/NAME.png; alpha does
/// not count. The test program needs the definition QUILLMARSH_TEST_SOURCES. A failure writes stored, drawn and different
/// pixels side by side to picture-failures/NAME.png in the current directory. With the environment variable
/// QUILLMARSH_WRITE_PICTURES, the image becomes the stored picture: look at it then.
inline testing::AssertionResult MatchesPicture(ImageBase const &image, string const &name,
                                               PictureTolerance tolerance = {})
{
    std::filesystem::path const file =
        std::filesystem::path(QUILLMARSH_TEST_SOURCES "tests/pictures") / (name + ".png");
    AutoPtr<ImageBase> const drawn = pictures::GetColors(image);
    if (!drawn)
        return testing::AssertionFailure() << name << ": pixels of format " << std::hex << image.GetSampleFormat();
    if (std::getenv("QUILLMARSH_WRITE_PICTURES") != nullptr)
    {
        string const reason = pictures::Save(*drawn, file);
        return reason.empty() ? testing::AssertionSuccess() : testing::AssertionFailure() << file << ": " << reason;
    }
    CodecFailureSentry const failure;
    AutoPtr<ImageBase> const stored = pictures::Load(file);
    if (!stored)
        return testing::AssertionFailure() << file << ": " << failure.GetText();
    if (!stored->CheckDimensionMatch(*drawn))
        return testing::AssertionFailure() << name << " is " << drawn->GetNumColumns() << " x " << drawn->GetNumRows()
                                           << ", not " << stored->GetNumColumns() << " x " << stored->GetNumRows();
    unsigned int numDifferent = 0;
    for (unsigned int i = 0; i < drawn->GetNumSamples(); ++i)
        numDifferent += pictures::GetDifference(static_cast<SignalBase const &>(*stored).SampleB(i),
                                                static_cast<SignalBase const &>(*drawn).SampleB(i)) > tolerance.channel;
    if (numDifferent <= tolerance.pixels * drawn->GetNumSamples())
        return testing::AssertionSuccess();
    std::filesystem::path const written = std::filesystem::current_path() / "picture-failures" / (name + ".png");
    pictures::Save(*pictures::MakeComparison(*stored, *drawn, tolerance), written);
    return testing::AssertionFailure() << name << ": " << numDifferent << " of " << drawn->GetNumSamples()
                                       << " pixels differ by more than " << tolerance.channel << "; see " << written;
}

} // namespace quillmarsh::tests

#endif
