#include <viewer_model/samples/palettes.h>

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

/// The step of a value by the definition.
long FindStep(DisplaySettings const &settings, double part)
{
    double const window = (part - settings.low) / (settings.high - settings.low) * std::pow(2, settings.exposure);
    return std::lround(std::pow(std::clamp(window, 0.0, 1.0), 1 / settings.gamma) * 255);
}

/// The colour of a sample by the definition.
Pixel FindColour(eSampleFormat format, DisplaySettings const &settings, unsigned char const *sample, int x, int y)
{
    Colours const &palette = GetPalette(settings.palette);
    auto const colourOf = [&](long step) { return palette[static_cast<std::size_t>(step)]; };
    std::span<Channel const> const channels = GetChannels(format);
    auto const part = [&](std::size_t i) { return channels[i].read(sample) / channels[i].largest; };
    if (settings.channel >= 0 || channels.size() == 1)
        return colourOf(FindStep(settings, part(static_cast<std::size_t>(std::max(settings.channel, 0)))));
    Pixel colour;
    if (channels.size() == 2)
        colour = colourOf(FindStep(settings, part(0)));
    else
    {
        long const red = FindStep(settings, part(0)), green = FindStep(settings, part(1)),
                   blue = FindStep(settings, part(2));
        colour = static_cast<Pixel>(0xFF000000 | red << 16 | green << 8 | blue);
        if (settings.palette != ePalette::e_none)
            colour = colourOf((77 * red + 150 * green + 29 * blue + 128) / 256);
    }
    if (!settings.showAlpha || channels.size() == 3)
        return colour;
    Pixel const board = (x / 8 + y / 8) % 2 == 0 ? 0x99 : 0x66;
    double const alpha = part(channels.size() - 1);
    Pixel result = 0xFF;
    for (int shift = 16; shift >= 0; shift -= 8)
        result = result << 8 | static_cast<Pixel>(std::lround((colour >> shift & 0xFF) * alpha + board * (1 - alpha)));
    return result;
}

TEST(ToneMap, GivesTheColoursOfTheDefinition)
{
    constexpr DisplaySettings s_settings[] = {
        {},
        {.showAlpha = false},
        {.exposure = 1.3, .gamma = 2.2, .low = 0.1, .high = 0.7},
        {.gamma = 0.6, .low = 0.9, .high = 0.2},
        {.palette = ePalette::e_heat},
        {.exposure = -0.4, .palette = ePalette::e_cyclic, .showAlpha = false},
        {.channel = 0},
        {.channel = 1, .gamma = 1.7},
        {.channel = 3, .palette = ePalette::e_spectral},
    };
    constexpr unsigned int width = 301, x = 5, y = 13;
    for (eSampleFormat const format : s_formats)
    {
        ContentPtr const content = MakeRandomContent(format, 1, width);
        // Opaque and clear samples have ways of their own.
        ImageBase &image = *content->GetData().Get<ImageBase>();
        std::memset(image.SampleB(0, 40), 0, 40 * image.GetSampleByteSize());
        if (!GetChannels(format).front().isFloat)
            std::memset(image.SampleB(0, 80), 255, 40 * image.GetSampleByteSize());
        for (DisplaySettings const &settings : s_settings)
        {
            if (settings.channel >= static_cast<int>(GetChannels(format).size()))
                continue;
            std::vector<Pixel> pixels(width + 1, 0x12345678);
            ToneMap(format, settings).Map(image.GetSamplesB(), width, pixels.data(), x, y);
            for (unsigned int i = 0; i < width; ++i)
                ASSERT_EQ(FindColour(format, settings, image.SampleB(0, i), static_cast<int>(x + i), y), pixels[i])
                    << sampled_data::GetFormatName(format) << " setting " << &settings - s_settings << ' ' << i;
            EXPECT_EQ(0x12345678u, pixels[width]);
        }
    }
}

TEST(ToneMap, ShowsFloatsThatAreNoNumbers)
{
    constexpr float infinity = std::numeric_limits<float>::infinity();
    float const values[] = {std::numeric_limits<float>::quiet_NaN(), infinity, -infinity, 3, -1, 1e-40f, 1};
    std::vector<Pixel> pixels(7);
    auto const map = [&](DisplaySettings const &settings)
    {
        ToneMap(e_format_FP32NormL, settings)
            .Map(reinterpret_cast<unsigned char const *>(values), 7, pixels.data(), 0, 0);
        return pixels;
    };
    constexpr Pixel black = 0xFF000000, white = 0xFFFFFFFF;
    EXPECT_EQ((std::vector<Pixel>{s_notANumber, white, black, white, black, black, white}), map({}));
    EXPECT_EQ((std::vector<Pixel>{s_notANumber, black, white, black, white, white, black}), map({.low = 1, .high = 0}));
    // A window without width parts the values below and above it.
    EXPECT_EQ((std::vector<Pixel>{s_notANumber, white, black, white, black, black, white}),
              map({.low = 0.5, .high = 0.5}));
}

TEST(ToneMap, HasEvenPalettes)
{
    ASSERT_EQ(5u, GetPaletteNames().size());
    for (int i = 1; i < 5; ++i)
    {
        Colours const &colours = GetPalette(static_cast<ePalette>(i));
        bool const isCyclic = i == static_cast<int>(ePalette::e_cyclic);
        int brightness = -1;
        for (std::size_t step = 0; step < (isCyclic ? 256 : 255); ++step)
        {
            Pixel const a = colours[step], b = colours[(step + 1) % 256];
            int distance = 0;
            for (int shift = 0; shift < 24; shift += 8)
                distance += std::abs(static_cast<int>(a >> shift & 255) - static_cast<int>(b >> shift & 255));
            EXPECT_GE(distance, 1) << GetPaletteNames()[static_cast<std::size_t>(i)] << ' ' << step;
            EXPECT_LE(distance, 12) << GetPaletteNames()[static_cast<std::size_t>(i)] << ' ' << step;
            if (i != static_cast<int>(ePalette::e_heat))
                continue;
            // Heat reads as a grey picture too, but for the rounding of its bytes.
            int const luminance = static_cast<int>(299 * (a >> 16 & 255) + 587 * (a >> 8 & 255) + 114 * (a & 255));
            EXPECT_GE(luminance, brightness - 1000) << step;
            brightness = luminance;
        }
    }
}

} // namespace
} // namespace viewer::tests
