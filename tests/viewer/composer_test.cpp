#include <viewer_model/images/composer.h>

#include "tests/support/scripted_dialogs.h"
#include "tests/viewer/images.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace viewer::tests
{
namespace
{

using namespace quillmarsh;

constexpr Pixel s_background = 0xFF123456;
constexpr Pixel s_untouched = 0x0BADBEEF;

/// A request for a picture.
struct Order
{
    Placement placement;
    bool smooth = false;
    int level = -1;
};

std::vector<Pixel> Compose(ImageLevels const &levels, ToneMap const &tones, Order const &order, unsigned int width,
                           unsigned int height, PixelArea const &area)
{
    AutoPtr<ImageBase> picture(ManufactureImage(e_format_A8R8G8B8, height, width));
    std::vector<Pixel> pixels(std::size_t{width} * height, s_untouched);
    std::memcpy(picture->GetSamplesB(), pixels.data(), picture->GetTotalByteSize());
    ComposeImage(*picture, area, levels, tones, order.placement, order.smooth, order.level, s_background);
    std::memcpy(pixels.data(), picture->GetSamplesB(), picture->GetTotalByteSize());
    return pixels;
}

/// A position on one axis of a level: the sample, and the next one with its weight in 128 parts.
struct Place
{
    unsigned int index, next;
    double weight;
};

Place FindPlace(double position, unsigned int size, bool smooth)
{
    if (!smooth)
        return {std::min(static_cast<unsigned int>(position), size - 1), 0, 0};
    double const parts = std::clamp(std::round((position - 0.5) * 128), 0.0, (size - 1) * 128.0);
    auto const index = static_cast<unsigned int>(parts / 128);
    return {index, std::min(index + 1, size - 1), parts - index * 128.0};
}

/// The value of a channel of a pixel by the definition; nothing outside of the image.
std::optional<double> FindValue(ImageLevels const &levels, Channel const &channel, Order const &order, double x,
                                double y)
{
    ImageBase const &image = levels.GetLevel(0);
    if (!(x >= 0 && y >= 0 && x < image.GetNumColumns() && y < image.GetNumRows()))
        return std::nullopt;
    bool const smooth = order.smooth && order.placement.zoom < 1;
    unsigned int const number = order.level < 0
                                    ? levels.FindLevel(order.placement.zoom)
                                    : std::min(static_cast<unsigned int>(order.level), levels.GetNumLevels() - 1);
    ImageBase const &level = levels.GetLevel(number);
    Place const column = FindPlace(x / std::exp2(number), level.GetNumColumns(), smooth);
    Place const row = FindPlace(y / std::exp2(number), level.GetNumRows(), smooth);
    auto const read = [&](unsigned int r, unsigned int c) { return channel.read(level.SampleB(r, c)); };
    if (!smooth)
        return read(row.index, column.index);
    if (channel.isFloat)
    {
        auto const blend = [](double a, double b, double weight)
        {
            auto const part = static_cast<float>(weight / 128);
            return weight == 0 ? a : static_cast<float>(a) * (1 - part) + static_cast<float>(b) * part;
        };
        auto const blendRows = [&](unsigned int c) { return blend(read(row.index, c), read(row.next, c), row.weight); };
        return blend(blendRows(column.index), blendRows(column.next), column.weight);
    }
    auto const blendRows = [&](unsigned int c)
    { return read(row.index, c) * (128 - row.weight) + read(row.next, c) * row.weight; };
    double const value = blendRows(column.index) * (128 - column.weight) + blendRows(column.next) * column.weight;
    return std::floor(value / (128 * 128) + 0.5);
}

constexpr Order s_orders[] = {
    {{20, 15, 1}},
    {{20.3, 14.8, 3.7}},
    {{-1, 2, 64}},
    {{36.9, 28.9, 64}, true},
    {{10, 30, 0.83}},
    {{17.77, 9.1, 0.61}, true},
    {{18, 14, 0.5}, true},
    {{5, 5, 1.0 / 64}, true},
    {{11, 3, 0.29}},
    {{20, 20, 0.29}, true, 0},
    {{9, 9, 2.5}, true, 2},
    {{20, 15, 1}, false, 99},
    {{0.5, 0.5, 0.999999}, true},
};

TEST(ComposeImage, ShowsTheSampleUnderEachPixel)
{
    constexpr unsigned int width = 90, height = 60;
    constexpr PixelArea areas[] = {{0, 0, width, height}, {7, 11, 50, 9}, {80, 50, 1000, 1000}};
    for (eSampleFormat const format : s_formats)
    {
        auto const levels = ImageLevels::Build(MakeRandomContent(format, 29, 37));
        for (Order const &order : s_orders)
        {
            // One channel after the other, as greys.
            for (int channel = 0; channel < static_cast<int>(GetChannels(format).size()); ++channel)
            {
                Channel const &read = GetChannels(format)[static_cast<std::size_t>(channel)];
                ToneMap const tones(format, {.channel = channel});
                PixelArea const &area = areas[channel % 3];
                std::vector<Pixel> const pixels = Compose(*levels, tones, order, width, height, area);
                for (unsigned int i = 0; i < pixels.size(); ++i)
                {
                    unsigned int const x = i % width, y = i / width;
                    auto const value = FindValue(*levels, read, order, order.placement.ToImageX(x + 0.5, width),
                                                 order.placement.ToImageY(y + 0.5, height));
                    Pixel expected = value ? tones.MapValue(*value / read.largest) : s_background;
                    if (x < area.x || y < area.y || x >= area.x + area.width || y >= area.y + area.height)
                        expected = s_untouched;
                    ASSERT_EQ(expected, pixels[i]) << sampled_data::GetFormatName(format) << " order "
                                                   << &order - s_orders << ' ' << read.name << ' ' << x << ' ' << y;
                }
            }
        }
    }
}

TEST(ComposeImage, KeepsTheCheckerboardInItsPlace)
{
    // Clear samples of equal rows: only the board changes, also where a row repeats.
    auto const levels = ImageLevels::Build(MakeContent<unsigned int>(e_format_A8R8G8B8, 2, 2, {0, 0, 0, 0}));
    auto const pixels = Compose(*levels, ToneMap(e_format_A8R8G8B8, {}), {{1, 1, 30}}, 60, 60, {5, 3, 50, 50});
    for (unsigned int y = 3; y < 53; ++y)
    {
        for (unsigned int x = 5; x < 55; ++x)
            ASSERT_EQ(s_checkerboard[(x / 8 + y / 8) % 2], pixels[y * 60 + x]) << x << ' ' << y;
    }
}

TEST(ComposeImage, MovesAsAWholeByWholePixels)
{
    constexpr unsigned int size = 60;
    for (double const zoom : {0.5, 3.0})
    {
        auto const levels = ImageLevels::Build(MakeRandomContent(e_format_A8R8G8B8, 70, 70));
        ToneMap const tones(e_format_A8R8G8B8, {});
        auto const compose = [&](double right, double down)
        {
            Order const order = {{35 - right / zoom, 35 - down / zoom, zoom}, true};
            return Compose(*levels, tones, order, size, size, {0, 0, size, size});
        };
        std::vector<Pixel> const before = compose(0, 0), after = compose(5, -11);
        for (unsigned int y = 0; y < size - 11; ++y)
        {
            for (unsigned int x = 5; x < size; ++x)
                ASSERT_EQ(before[(y + 11) * size + x - 5], after[y * size + x]) << zoom << ' ' << x << ' ' << y;
        }
    }
}

TEST(ComposeImage, ShowsNothingForPlacesThatAreNone)
{
    constexpr double nothing = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    auto const levels = ImageLevels::Build(MakeRandomContent(e_format_L8, 3, 3));
    ToneMap const tones(e_format_L8, {});
    constexpr Placement places[] = {{1e300, 0, 1}, {0, -1e300, 1e-9}, {nothing, 1, 1}, {1, infinity, 1},
                                    {1, 1, 0},     {1, 1, -2},        {1, 1, nothing}, {1e9, 1, 64}};
    for (Placement const &placement : places)
    {
        EXPECT_EQ(std::vector<Pixel>(20, s_background), Compose(*levels, tones, {placement, true}, 5, 4, {0, 0, 5, 4}))
            << &placement - places;
    }
    EXPECT_EQ(std::vector<Pixel>(20, s_untouched), Compose(*levels, tones, {{1, 1, 1}}, 5, 4, {5, 0, 5, 4}));
}

TEST(ComposeImage, LetsNoSampleWithoutWeightThrough)
{
    constexpr float infinity = std::numeric_limits<float>::infinity();
    auto const levels = ImageLevels::Build(MakeContent<float>(e_format_FP32NormL, 1, 4, {1, 1, infinity, infinity}));
    auto const pixels =
        Compose(*levels, ToneMap(e_format_FP32NormL, {.high = 2}), {{2, 0.5, 0.5}, true}, 2, 1, {0, 0, 2, 1});
    EXPECT_EQ((std::vector<Pixel>{0xFF808080, 0xFFFFFFFF}), pixels);
}

std::vector<float> FindDifference(Content const &a, Content const &b, eDifference difference, double scale)
{
    ContentPtr const result = MakeDifference(a, b, difference, scale);
    EXPECT_EQ(e_format_FP32NormL, result->GetData().GetFormat());
    std::vector<float> values(result->Get<ImageBase>()->GetNumSamples());
    std::memcpy(values.data(), result->Get<ImageBase>()->GetSamplesB(), values.size() * sizeof(float));
    return values;
}

/// The difference of two samples by the definition.
float FindDifference(std::span<Channel const> channels, unsigned char const *a, unsigned char const *b,
                     eDifference difference, double scale)
{
    double greatest = 0;
    for (Channel const &channel : channels)
    {
        double const x = channel.read(a), y = channel.read(b), distance = std::abs(x - y);
        double const whole =
            difference == eDifference::e_relative ? std::max(std::abs(x), std::abs(y)) : channel.largest;
        double const part = distance == 0 ? 0 : distance / whole;
        greatest = std::max(greatest, difference == eDifference::e_squared ? part * part : part);
    }
    return static_cast<float>(greatest * scale);
}

TEST(MakeDifference, FollowsTheDefinitionInAllFormats)
{
    for (eSampleFormat const format : s_formats)
    {
        auto const a = MakeRandomContent(format, 7, 31), b = MakeRandomContent(format, 7, 31);
        for (int i = 0; i < 3; ++i)
        {
            auto const difference = static_cast<eDifference>(i);
            std::vector<float> const values = FindDifference(*a, *b, difference, 2.5);
            for (unsigned int sample = 0; sample < values.size(); ++sample)
            {
                float const expected = FindDifference(GetChannels(format), a->GetData().GetSamples().SampleB(sample),
                                                      b->GetData().GetSamples().SampleB(sample), difference, 2.5);
                ASSERT_EQ(expected, values[sample])
                    << sampled_data::GetFormatName(format) << ' ' << GetDifferenceNames()[static_cast<std::size_t>(i)];
            }
        }
    }
}

TEST(MakeDifference, TakesTheGreatestChannel)
{
    auto const a = MakeContent<unsigned int>(e_format_A8R8G8B8, 1, 3, {0x00000000, 0xFF336699, 0x80FF0000});
    auto const b = MakeContent<unsigned int>(e_format_A8R8G8B8, 1, 3, {0x00000000, 0xFF996699, 0x80FF3300});
    EXPECT_EQ((std::vector<float>{0, 0.8f, 0.4f}), FindDifference(*a, *b, eDifference::e_absolute, 2));
    EXPECT_EQ((std::vector<float>{0, 0.16f, 0.04f}), FindDifference(*a, *b, eDifference::e_squared, 1));
    EXPECT_EQ((std::vector<float>{0, static_cast<float>(2 / 3.0), 1}),
              FindDifference(*b, *a, eDifference::e_relative, 1));
    constexpr float nothing = std::numeric_limits<float>::quiet_NaN(),
                    infinity = std::numeric_limits<float>::infinity();
    auto const c = MakeContent<float>(e_format_FP32NormL, 1, 4, {nothing, nothing, infinity, infinity});
    auto const d = MakeContent<float>(e_format_FP32NormL, 1, 4, {nothing, 1, infinity, 1});
    auto const floats = FindDifference(*c, *d, eDifference::e_relative, 1);
    EXPECT_EQ(0, floats[0]);
    EXPECT_TRUE(std::isnan(floats[1]));
    EXPECT_EQ(0, floats[2]);
    EXPECT_EQ(1, floats[3]);
    EXPECT_EQ(nullptr, MakeDifference(*a, *b, eDifference::e_absolute, 1, [](double) { return false; }));
    try
    {
        MakeDifference(*a, *c, eDifference::e_absolute, 1);
        FAIL();
    }
    catch (sampled_data::DataException const &exception)
    {
        EXPECT_EQ("Only images of one format and size have a difference; these are A8R8G8B8, 1 rows, 3 columns and "
                  "FP32NormL, 1 rows, 4 columns.",
                  exception.GetMessage());
    }
}

} // namespace
} // namespace viewer::tests
