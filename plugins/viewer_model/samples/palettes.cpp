#include "palettes.h"

#include <algorithm>
#include <numbers>

namespace viewer
{

namespace
{

/// Colour by lightness 0..1, chroma and hue in degrees, in a space in which equal distances look equal.
struct Knot
{
    double lightness;
    double chroma;
    double hue;
};

/// From nearly black by purple, red and orange to a pale yellow, always lighter.
constexpr Knot s_heat[] = {{0.13, 0.04, 285}, {0.22, 0.14, 295}, {0.42, 0.20, 340}, {0.60, 0.20, 25},
                           {0.74, 0.165, 55}, {0.88, 0.15, 90},  {0.98, 0.05, 105}};
/// From dark blue by green and yellow, the lightest, to dark red.
constexpr Knot s_rainbow[] = {{0.34, 0.17, 275}, {0.56, 0.17, 255}, {0.72, 0.12, 210}, {0.80, 0.17, 155},
                              {0.88, 0.18, 115}, {0.77, 0.16, 70},  {0.60, 0.21, 35},  {0.42, 0.16, 25}};
/// Two sides of a pale middle: red below, blue above.
constexpr Knot s_spectral[] = {{0.42, 0.15, 15},  {0.62, 0.18, 35},  {0.80, 0.13, 70}, {0.96, 0.06, 105},
                               {0.84, 0.11, 150}, {0.64, 0.11, 220}, {0.42, 0.13, 285}};
/// All hues at one lightness.
constexpr double s_cyclicLightness = 0.74;
constexpr double s_cyclicChroma = 0.12;

/// Lightness, and two axes from green to red and from blue to yellow.
using LabColour = std::array<double, 3>;

LabColour ToLab(Knot const &knot)
{
    double const angle = knot.hue * std::numbers::pi / 180;
    return {knot.lightness, knot.chroma * std::cos(angle), knot.chroma * std::sin(angle)};
}

/// Smooth curve through the knots, for `place` in 0..1.
LabColour FindOnCurve(std::span<Knot const> knots, double place)
{
    std::size_t const last = knots.size() - 1;
    double const scaled = place * static_cast<double>(last);
    std::size_t const index = std::min(static_cast<std::size_t>(scaled), last - 1);
    double const t = scaled - static_cast<double>(index);
    LabColour const before = ToLab(knots[index > 0 ? index - 1 : 0]), from = ToLab(knots[index]),
                    to = ToLab(knots[index + 1]), after = ToLab(knots[std::min(index + 2, last)]);
    LabColour result;
    for (std::size_t i = 0; i < 3; ++i)
    {
        double const slope = (to[i] - before[i]) / 2, nextSlope = (after[i] - from[i]) / 2;
        double const step = to[i] - from[i];
        result[i] = from[i] + t * (slope + t * (3 * step - 2 * slope - nextSlope + t * (slope + nextSlope - 2 * step)));
    }
    return result;
}

Pixel ToByte(double linear)
{
    double const part = std::clamp(linear, 0.0, 1.0);
    double const encoded = part <= 0.0031308 ? 12.92 * part : 1.055 * std::pow(part, 1 / 2.4) - 0.055;
    return static_cast<Pixel>(std::lround(encoded * 255));
}

Pixel ToPixel(LabColour const &lab)
{
    auto const cube = [](double value) { return value * value * value; };
    double const l = cube(lab[0] + 0.3963377774 * lab[1] + 0.2158037573 * lab[2]);
    double const m = cube(lab[0] - 0.1055613458 * lab[1] - 0.0638541728 * lab[2]);
    double const s = cube(lab[0] - 0.0894841775 * lab[1] - 1.2914855480 * lab[2]);
    return 0xFF000000 | ToByte(4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s) << 16 |
           ToByte(-1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s) << 8 |
           ToByte(-0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s);
}

/// Takes the colours at equal distances along the curve.
void FillFromCurve(std::span<Knot const> knots, Colours &colours)
{
    constexpr unsigned int numPoints = 2048;
    std::vector<double> lengths(numPoints + 1);
    LabColour point = FindOnCurve(knots, 0);
    for (unsigned int i = 1; i <= numPoints; ++i)
    {
        LabColour const next = FindOnCurve(knots, static_cast<double>(i) / numPoints);
        lengths[i] = lengths[i - 1] + std::hypot(next[0] - point[0], next[1] - point[1], next[2] - point[2]);
        point = next;
    }
    for (std::size_t i = 0; i < 256; ++i)
    {
        double const wanted = lengths.back() * static_cast<double>(i) / 255;
        auto const found = std::lower_bound(lengths.begin(), lengths.end(), wanted);
        colours[i] = ToPixel(FindOnCurve(knots, static_cast<double>(found - lengths.begin()) / numPoints));
    }
}

/// In the order of the enumeration.
std::array<Colours, 5> MakePalettes()
{
    std::array<Colours, 5> palettes;
    for (Pixel i = 0; i < 256; ++i)
        palettes[0][i] = 0xFF000000 | i * 0x010101;
    FillFromCurve(s_heat, palettes[1]);
    FillFromCurve(s_rainbow, palettes[2]);
    FillFromCurve(s_spectral, palettes[3]);
    for (std::size_t i = 0; i < 256; ++i)
        palettes[4][i] = ToPixel(ToLab({s_cyclicLightness, s_cyclicChroma, static_cast<double>(i) * 360 / 256}));
    return palettes;
}

} // namespace

Colours const &GetPalette(ePalette palette)
{
    static std::array<Colours, 5> const s_palettes = MakePalettes();
    return s_palettes[static_cast<std::size_t>(palette)];
}

} // namespace viewer
