#include "formulas.h"
#include "landscape.h"
#include "samples.h"

#include <cmath>
#include <cstring>

namespace makesamples
{

namespace
{

using namespace quillmarsh;

unsigned int ToField(double value, unsigned int largest)
{
    return static_cast<unsigned int>(std::lround(Clamp(value) * largest));
}

double FindLuminance(Color const &color)
{
    return 0.299 * color.red + 0.587 * color.green + 0.114 * color.blue;
}

void PutBytes(unsigned char *sample, std::initializer_list<double> values)
{
    for (double const value : values)
        *sample++ = static_cast<unsigned char>(ToField(value, 255));
}

template<typename Value>
void PutValue(unsigned char *sample, Value value)
{
    std::memcpy(sample, &value, sizeof value);
}

/// Writes a colour as a sample.
void Put(eSampleFormat format, unsigned char *sample, Color const &color)
{
    auto const [red, green, blue, alpha] = color;
    switch (format)
    {
    case e_format_L8:
        return PutBytes(sample, {FindLuminance(color)});
    case e_format_A8:
        return PutBytes(sample, {alpha});
    case e_format_A8L8:
        return PutBytes(sample, {FindLuminance(color), alpha});
    case e_format_A4R4G4B4:
        return PutValue(sample, static_cast<std::uint16_t>(ToField(alpha, 15) << 12 | ToField(red, 15) << 8 |
                                                           ToField(green, 15) << 4 | ToField(blue, 15)));
    case e_format_A1R5G5B5:
        return PutValue(sample, static_cast<std::uint16_t>(ToField(alpha, 1) << 15 | ToField(red, 31) << 10 |
                                                           ToField(green, 31) << 5 | ToField(blue, 31)));
    case e_format_X8R8G8B8:
        return PutBytes(sample, {blue, green, red, 1});
    case e_format_A8R8G8B8:
        return PutBytes(sample, {blue, green, red, alpha});
    case e_format_FP32NormA:
        return PutValue(sample, static_cast<float>(alpha));
    default:
        return PutValue(sample, static_cast<float>(FindLuminance(color)));
    }
}

/// Fills an image; the formula gets the middle of each sample, in samples.
template<typename Formula>
SampledData Make(eSampleFormat format, unsigned int width, unsigned int height, Formula const &formula)
{
    SampledData data(format, {height, width});
    auto &image = *data.Get<ImageBase>();
    for (unsigned int row = 0; row < height; ++row)
    {
        for (unsigned int column = 0; column < width; ++column)
            Put(format, image.SampleB(row, column), formula(column + 0.5, row + 0.5));
    }
    return data;
}

Color FindHue(double turns)
{
    auto const channel = [turns](double shift) { return Clamp(0.5 + Cosine(turns - shift)); };
    return {channel(0), channel(1 / 3.0), channel(2 / 3.0), 1};
}

/// A disc of all hues on nothing, white in its middle, with a ramp of grey below: shows the steps of each format.
template<eSampleFormat format>
SampledData MakeFormat()
{
    constexpr unsigned int width = 160, height = 160;
    return Make(format, width, height,
                [](double x, double y)
                {
                    double const dx = x - 80, dy = y - 66, radius = std::sqrt(dx * dx + dy * dy);
                    if (y > 138)
                        return Color{x / width, x / width, x / width, 1};
                    // The hue goes around once: half the angle has the sine and cosine of the whole one.
                    double const up = radius > 0 ? dy / radius : 0;
                    double turns = 0;
                    // The inverse of the cosine, by halving.
                    for (double low = 0, high = 0.5; high - low > 1e-6;)
                    {
                        turns = (low + high) / 2;
                        (Cosine(turns) > (radius > 0 ? dx / radius : 1) ? low : high) = turns;
                    }
                    Color const hue = FindHue(up < 0 ? 1 - turns : turns);
                    double const colour = Step(6, 56, radius);
                    return Color{Mix(1, hue.red, colour), Mix(1, hue.green, colour), Mix(1, hue.blue, colour),
                                 Step(64, 50, radius)};
                });
}

/// Patterns that tell how a program scales: rings that get finer, pairs of lines, single samples, ramps, colours.
Color FindTestChart(double x, double y)
{
    auto const grey = [](double value) { return Color{value, value, value, 1}; };
    unsigned int const column = static_cast<unsigned int>(x), row = static_cast<unsigned int>(y);
    if (row < 64)
    {
        // Eight colours, and below them as many steps of grey.
        unsigned int const field = 7 - column * 8 / 512;
        if (row >= 40)
            return grey(field / 7.0);
        return {field & 2 ? 1.0 : 0.0, field & 4 ? 1.0 : 0.0, field & 1 ? 1.0 : 0.0, 1};
    }
    if (column >= 384)
    {
        // Lines of one to eight samples, across and upright, and a checkerboard of single samples at the bottom.
        unsigned int const band = (row - 64) / 40, width = 1 + band;
        if (band >= 7)
            return grey((row + column) % 2);
        return grey((column < 448 ? (column - 384) / width : (row - 64) % 40 / width) % 2);
    }
    double const dx = x - 192, dy = y - 224, square = dx * dx + dy * dy;
    // The rings reach half a wave for a sample at the edge of the field.
    return grey(0.5 + 0.5 * Cosine(square / (4 * 192)) * Step(196 * 196, 188 * 188, square));
}

/// A night with a moon, windows and lamps: values from 0.001 to 100, as a scene has them.
float FindNight(unsigned int column, unsigned int row)
{
    double const x = column / 384.0, y = row / 256.0;
    auto const glow = [&](double atX, double atY, double size)
    {
        double const dx = (x - atX) * 1.5, dy = y - atY;
        return 1 / (1 + (dx * dx + dy * dy) / (size * size));
    };
    double value = 0.004 + 0.02 * y * y + 0.003 * Fractal(4, 6 * x, 12 * y);
    if (Hash(column, row, 7) > 0.9985)
        value += 0.6 * Hash(column, row, 8);
    double const dx = (x - 0.74) * 1.5, dy = y - 0.22;
    double const moon = Step(0.062, 0.058, std::sqrt(dx * dx + dy * dy));
    value += 0.6 * glow(0.74, 0.22, 0.05) + 90 * moon * (0.5 + 0.5 * Fractal(4, 24 * x, 16 * y));
    // Houses, and a window in each cell.
    double const house = std::floor(x * 11);
    if (y > 0.56 + 0.22 * Hash(static_cast<std::int64_t>(house), 3))
    {
        double const cellX = x * 55 - std::floor(x * 55), cellY = y * 28 - std::floor(y * 28);
        std::int64_t const window = static_cast<std::int64_t>(x * 55), floor = static_cast<std::int64_t>(y * 28);
        bool const isPane = cellX > 0.25 && cellX < 0.75 && cellY > 0.25 && cellY < 0.8;
        bool const isLit = isPane && Hash(window, floor, 5) > 0.62;
        value = isLit ? 1.5 + 6 * Hash(window, floor, 6) : isPane ? 0.012 : 0.003 + 0.002 * Hash(column, row, 9);
    }
    for (double const lamp : {0.08, 0.33, 0.61, 0.9})
        value += 45 * Step(0.9997, 0.9999, glow(lamp, 0.9, 1)) + 0.5 * glow(lamp, 0.9, 0.02);
    return static_cast<float>(value);
}

SampledData MakeNight()
{
    SampledData data(e_format_FP32NormL, {256, 384});
    auto &image = *data.Get<ImageBase>();
    for (unsigned int row = 0; row < 256; ++row)
    {
        for (unsigned int column = 0; column < 384; ++column)
            PutValue(image.SampleB(row, column), FindNight(column, row));
    }
    return data;
}

/// The landscape at a height of `height` samples.
template<eSampleFormat format, unsigned int height>
SampledData MakeLandscape()
{
    return Make(format, height * 8 / 5, height,
                [](double x, double y) { return FindLandscape(x / height, y / height); });
}

SampledData MakeTestChart()
{
    return Make(e_format_X8R8G8B8, 512, 384, &FindTestChart);
}

constexpr Sample s_pictures[] = {
    {"formats/A1R5G5B5.qmdp.image", &MakeFormat<e_format_A1R5G5B5>},
    {"formats/A4R4G4B4.qmdp.image", &MakeFormat<e_format_A4R4G4B4>},
    {"formats/A8.qmdp.image", &MakeFormat<e_format_A8>},
    {"formats/A8L8.qmdp.image", &MakeFormat<e_format_A8L8>},
    {"formats/A8R8G8B8.qmdp.image", &MakeFormat<e_format_A8R8G8B8>},
    {"formats/FP32NormA.qmdp.image", &MakeFormat<e_format_FP32NormA>},
    {"formats/FP32NormL.qmdp.image", &MakeFormat<e_format_FP32NormL>},
    {"formats/L8.qmdp.image", &MakeFormat<e_format_L8>},
    {"formats/X8R8G8B8.qmdp.image", &MakeFormat<e_format_X8R8G8B8>},
    // The same picture without and with losses, for comparisons.
    {"landscape.png", &MakeLandscape<e_format_X8R8G8B8, 480>},
    {"landscape.jpg", &MakeLandscape<e_format_X8R8G8B8, 480>, 35},
    {"landscape-small.bmp", &MakeLandscape<e_format_X8R8G8B8, 160>},
    {"landscape-grey.tif", &MakeLandscape<e_format_L8, 320>},
    {"night-high-range.qmdp.image", &MakeNight},
    {"test-chart.png", &MakeTestChart},
};

} // namespace

std::span<Sample const> GetPictures()
{
    return s_pictures;
}

} // namespace makesamples
