#include <quillmarsh/dataobjects/scaling.h>

#include "source/dataobjects/transfer/samplekernels.h"
#include "tests/support/sample_blocks.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

namespace quillmarsh
{
namespace
{

using tests::Bytes;
using tests::Shape;

constexpr eSampleFormat s_formats[] = {e_format_L8,        e_format_A8L8,     e_format_A8R8G8B8, e_format_X8R8G8B8,
                                       e_format_FP32NormL, e_format_A4R4G4B4, e_format_A1R5G5B5};

Bytes RandomSamples(eSampleFormat format, Shape const &shape)
{
    Bytes bytes = tests::RandomBytes(shape.GetCount() * sample_formats::ExtractByteSize(format));
    for (std::size_t i = 0; format == e_format_FP32NormL && i < bytes.size(); i += 4)
    {
        float const value = static_cast<float>(bytes[i] * 256 + bytes[i + 1]) / 65535.0f;
        std::memcpy(&bytes[i], &value, 4);
    }
    return bytes;
}

/// Scales a block: a volume with several layers, an image with several rows, else a signal.
Bytes Scale(eSampleFormat format, Shape const &to, Bytes src, Shape const &from, eScaleFilter filter)
{
    // Memory behind the block must stay as it is.
    constexpr std::size_t margin = 64;
    std::size_t const size = to.GetCount() * sample_formats::ExtractByteSize(format);
    Bytes dst(size + margin, 0x5A);
    unsigned int const numDimensions = to.layers + from.layers > 2 ? 3 : to.rows + from.rows > 2 ? 2 : 1;
    tests::WorkOnBlocks(numDimensions, format, dst.data(), to, src.data(), from,
                        [filter](auto &d, auto const &s) { EXPECT_TRUE(ScaleSamples(d, s, filter)); });
    EXPECT_EQ(Bytes(margin, 0x5A), Bytes(dst.begin() + static_cast<std::ptrdiff_t>(size), dst.end()));
    dst.resize(size);
    return dst;
}

TEST(Scaling, VectorsGiveTheBitsOfThePlainLoops)
{
    constexpr std::pair<Shape, Shape> shapes[] = {
        {{1, 5, 67}, {1, 10, 134}},   {{1, 7, 33}, {1, 21, 99}},     {{1, 9, 31}, {1, 13, 77}},
        {{1, 13, 130}, {1, 5, 61}},   {{1, 2, 3}, {1, 600, 3}},      {{1, 1, 40}, {1, 1, 80}},
        {{1, 1, 41}, {1, 1, 97}},     {{3, 5, 6}, {5, 7, 40}},       {{2, 4, 70}, {4, 8, 140}},
        {{1, 3, 2100}, {1, 4, 5003}}, {{1, 1, 1}, {1, 3, 5000}},     {{1, 5, 1100}, {1, 9, 4400}},
        {{1, 6, 50}, {1, 6, 50}},     {{1, 4, 16500}, {1, 4, 33000}}};
    for (auto const &[to, from] : shapes)
    {
        for (eSampleFormat const format : s_formats)
        {
            Bytes const src = RandomSamples(format, from);
            for (eScaleFilter const filter : {e_scale_area, e_scale_lanczos})
            {
                SetKernelTarget(GetKernelTargets().back());
                Bytes const expected = Scale(format, to, src, from, filter);
                for (long long const target : GetKernelTargets())
                {
                    SetKernelTarget(target);
                    ASSERT_EQ(expected, Scale(format, to, src, from, filter))
                        << format << ' ' << to.columns << ' ' << from.columns << ' ' << filter << ' ' << target;
                }
                SetKernelTarget(0);
            }
        }
    }
}

/// The definition: the sum of all covered bytes, divided in whole numbers.
Bytes RoundedMeans(Shape const &to, Bytes const &src, Shape const &from, unsigned int size)
{
    unsigned int const fz = from.layers / to.layers, fy = from.rows / to.rows, fx = from.columns / to.columns;
    unsigned long long const area = 1ull * fz * fy * fx;
    std::vector<unsigned long long> sums(to.GetCount() * size, area / 2);
    for (std::size_t i = 0; i < src.size(); ++i)
    {
        std::size_t const sample = i / size, x = sample % from.columns, y = sample / from.columns % from.rows;
        std::size_t const z = sample / from.columns / from.rows;
        sums[((z / fz * to.rows + y / fy) * to.columns + x / fx) * size + i % size] += src[i];
    }
    Bytes means(sums.size());
    std::transform(sums.begin(), sums.end(), means.begin(),
                   [area](auto sum) { return static_cast<unsigned char>(sum / area); });
    return means;
}

TEST(Scaling, AreaIsTheRoundedMeanForWholeFactors)
{
    constexpr std::pair<Shape, Shape> shapes[] = {
        {{1, 64, 65}, {1, 128, 130}}, {{1, 17, 19}, {1, 51, 57}}, {{1, 3, 2}, {1, 900, 600}}, {{1, 1, 50}, {1, 1, 350}},
        {{1, 2, 30}, {1, 6, 30}},     {{2, 4, 9}, {4, 8, 18}},    {{1, 2, 1}, {1, 600, 301}}, {{1, 1, 7}, {20, 20, 7}}};
    for (auto const &[to, from] : shapes)
    {
        for (eSampleFormat const format : {e_format_L8, e_format_A8L8, e_format_A8R8G8B8})
        {
            Bytes const src = RandomSamples(format, from);
            unsigned int const size = sample_formats::ExtractByteSize(format);
            EXPECT_EQ(RoundedMeans(to, src, from, size), Scale(format, to, src, from, e_scale_area)) << from.columns;
        }
    }
    // Halves go up, at both ends of the range.
    EXPECT_EQ((Bytes{1, 255, 128}), Scale(e_format_L8, {1, 1, 3}, {0, 1, 254, 255, 0, 255}, {1, 1, 6}, e_scale_area));
}

TEST(Scaling, AreaWeighsByWhatIsCovered)
{
    EXPECT_EQ((Bytes{10, 40}), Scale(e_format_L8, {1, 1, 2}, {0, 30, 45}, {1, 1, 3}, e_scale_area));
    EXPECT_EQ((Bytes{9, 9, 9, 200, 200, 200}), Scale(e_format_L8, {1, 1, 6}, {9, 200}, {1, 1, 2}, e_scale_area));
    // The fields of a word are filtered by themselves: 0xF to the left, 0x1 to the right.
    EXPECT_EQ((Bytes{0xF8, 0x80}),
              Scale(e_format_A4R4G4B4, {1, 1, 1}, {0xFF, 0x00, 0xF1, 0xF0}, {1, 1, 2}, e_scale_area));
    EXPECT_EQ((Bytes{2, 3, 4, 255}),
              Scale(e_format_X8R8G8B8, {1, 1, 1}, {1, 2, 3, 4, 3, 4, 5, 6}, {1, 1, 2}, e_scale_area));
}

TEST(Scaling, LanczosKeepsWhatItMust)
{
    // The same size, and a constant at any size.
    Shape const same = {1, 9, 31};
    Bytes const src = RandomSamples(e_format_A8R8G8B8, same);
    EXPECT_EQ(src, Scale(e_format_A8R8G8B8, same, src, same, e_scale_lanczos));
    for (Shape const to : {Shape{1, 3, 5}, Shape{1, 40, 90}})
        EXPECT_EQ(Bytes(to.GetCount(), 255),
                  Scale(e_format_L8, to, Bytes(same.GetCount(), 255), same, e_scale_lanczos));

    // An edge overshoots; it is clamped and does not wrap around. Mirrored samples give mirrored results.
    Bytes edge(16, 0);
    std::fill(edge.begin() + 8, edge.end(), static_cast<unsigned char>(255));
    Bytes const larger = Scale(e_format_L8, {1, 1, 64}, edge, {1, 1, 16}, e_scale_lanczos);
    EXPECT_LT(*std::max_element(larger.begin(), larger.begin() + 30), 30);
    EXPECT_GT(*std::min_element(larger.begin() + 34, larger.end()), 225);
    std::reverse(edge.begin(), edge.end());
    Bytes mirrored = Scale(e_format_L8, {1, 1, 64}, edge, {1, 1, 16}, e_scale_lanczos);
    std::reverse(mirrored.begin(), mirrored.end());
    EXPECT_EQ(larger, mirrored);

    // One sample among zeros, read at the places of four times as many: the kernel sinc(x) sinc(x / 3).
    float const samples[] = {0, 0, 0, 0, 0.5f, 0, 0, 0, 0};
    Bytes bytes(sizeof(samples));
    std::memcpy(bytes.data(), samples, bytes.size());
    Bytes const read = Scale(e_format_FP32NormL, {1, 1, 36}, bytes, {1, 1, 9}, e_scale_lanczos);
    for (unsigned int i = 16; i < 20; ++i)
    {
        double const x = std::acos(-1.0) * (std::abs((i + 0.5) / 4 - 4.5));
        double sum = 0;
        for (int j = -4; j <= 4; ++j)
        {
            double const y = x + std::acos(-1.0) * j;
            sum += std::abs(y) < 3 * std::acos(-1.0) ? std::sin(y) / y * std::sin(y / 3) / y * 3 : 0;
        }
        float value = 0;
        std::memcpy(&value, &read[i * 4], 4);
        EXPECT_NEAR(0.5 * std::sin(x) / x * std::sin(x / 3) / x * 3 / sum, value, 1e-6) << i;
    }
}

TEST(Scaling, RefusesWhatItDoesNotKnow)
{
    Image<Sample8> l8(e_format_L8, 2, 2), other(e_format_A8, 2, 2), none(e_format_L8, 0, 0);
    Image<Sample96> wide(sample_formats::UnknownSampleFormat(12), 2, 2);
    EXPECT_FALSE(ScaleSamples(wide, wide, e_scale_area));
    tests::ScriptedDialogs dialogs(platform::eDialogAnswer::e_retry);
    EXPECT_FALSE(ScaleSamples(l8, other, e_scale_area) || ScaleSamples(l8, none, e_scale_area));
    EXPECT_EQ((std::vector<string>{"Sample-format mismatch.", "Source is empty."}), dialogs.TakeTexts());
}

} // namespace
} // namespace quillmarsh
