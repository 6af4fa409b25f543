// Small images for tests of what shows them.
#ifndef QUILLMARSH_TESTS_VIEWER_IMAGES_H
#define QUILLMARSH_TESTS_VIEWER_IMAGES_H

#include <viewer_model/samples/channels.h>
#include <viewer_model/samples/content.h>

#include "tests/support/sample_blocks.h"

#include <cstring>

namespace viewer::tests
{

using quillmarsh::AutoPtr;
using quillmarsh::eSampleFormat;
using quillmarsh::ImageBase;

constexpr eSampleFormat s_formats[] = {
    quillmarsh::e_format_L8,       quillmarsh::e_format_A8,        quillmarsh::e_format_A8L8,
    quillmarsh::e_format_A4R4G4B4, quillmarsh::e_format_A1R5G5B5,  quillmarsh::e_format_X8R8G8B8,
    quillmarsh::e_format_A8R8G8B8, quillmarsh::e_format_FP32NormL, quillmarsh::e_format_FP32NormA};

/// Makes an image with these samples, row by row.
template<typename Sample>
ContentPtr MakeContent(eSampleFormat format, unsigned int rows, unsigned int columns,
                       std::vector<Sample> const &samples)
{
    AutoPtr<ImageBase> image(quillmarsh::ManufactureImage(format, rows, columns));
    std::memcpy(image->GetSamplesB(), samples.data(), image->GetTotalByteSize());
    return std::make_shared<Content>(quillmarsh::sampled_data::SampledData(std::move(image)));
}

/// Makes an image of random samples; floats lie between -0.5 and 1.5.
inline ContentPtr MakeRandomContent(eSampleFormat format, unsigned int rows, unsigned int columns)
{
    std::size_t const count = std::size_t(rows) * columns;
    auto const bytes = quillmarsh::tests::RandomBytes(count * 4);
    if (!GetChannels(format).front().isFloat)
        return MakeContent(format, rows, columns, bytes);
    std::vector<float> floats;
    for (std::size_t i = 0; i < count; ++i)
        floats.push_back(static_cast<float>(bytes[2 * i] * 256 + bytes[2 * i + 1]) / 32767.5f - 0.5f);
    return MakeContent(format, rows, columns, floats);
}

} // namespace viewer::tests

#endif
