#include "landscape.h"

#include "formulas.h"

#include <cmath>

namespace makesamples
{

namespace
{

constexpr double s_shore = 0.66, s_sunX = 1.12, s_sunY = 0.4;
/// From the farthest to the nearest.
constexpr unsigned int s_numRidges = 5;

Color Mix(Color const &a, Color const &b, double part)
{
    return {makesamples::Mix(a.red, b.red, part), makesamples::Mix(a.green, b.green, part),
            makesamples::Mix(a.blue, b.blue, part), 1};
}

/// Height above the shore of a ridge at a place.
double FindRidge(unsigned int ridge, double x)
{
    double const size = 2.2 + 1.1 * ridge, height = 0.4 - 0.065 * ridge;
    // Peaks are sharp and valleys are round.
    double const fold = 1 - std::abs(2 * Fractal(7, size * x + 31.7 * ridge) - 1);
    return height * (0.15 + 0.85 * fold * fold);
}

Color FindSky(double x, double y)
{
    double const high = Step(0.62, 0, y);
    Color sky = Mix({0.98, 0.74, 0.52, 1}, {0.2, 0.33, 0.58, 1}, high);
    double const dx = x - s_sunX, dy = y - s_sunY, distance = std::sqrt(dx * dx + dy * dy);
    sky = Mix(sky, {1, 0.86, 0.6, 1}, 0.75 * Exponential(-6 * distance));
    // Clouds in long bands, lit from below.
    double const cloud = Step(0.5, 0.72, Fractal(6, 2.4 * x + 9, 11 * y + 0.8 * x)) * Step(0.02, 0.2, y);
    sky = Mix(sky, Mix({0.62, 0.5, 0.6, 1}, {1, 0.82, 0.68, 1}, Step(0.05, 0.5, y)), 0.6 * cloud);
    return Mix(sky, {1, 0.97, 0.86, 1}, Step(0.052, 0.047, distance));
}

Color FindMountain(unsigned int ridge, double x, double height, double top)
{
    double const near = ridge / (s_numRidges - 1.0);
    Color color = Mix({0.62, 0.56, 0.62, 1}, {0.09, 0.15, 0.16, 1}, Step(0, 1, near));
    // Slopes towards the sun are brighter, with gullies that bend down from the ridge.
    double const detail = Fractal(5, 38 * x + 7 * ridge, 60 * height);
    double const gully = x + 0.5 * (Fractal(4, 12 * x + 3 * ridge, 16 * height) - 0.5) * (top - height + 0.02);
    double const slope = FindRidge(ridge, gully + 0.01) - FindRidge(ridge, gully - 0.01);
    double const light = makesamples::Clamp(0.7 * detail - 11 * slope - 0.2);
    color = Mix(color, {0.98, 0.72, 0.54, 1}, light * (0.42 - 0.3 * near));
    double const snow = Step(0.19, 0.26, height + 0.1 * (detail - 0.5)) * Step(0.1, 0.02, top - height);
    color = Mix(color, {0.97, 0.9, 0.9, 1}, ridge < 3 ? 0.7 * snow : 0);
    // Mist in the valleys.
    return Mix(color, {0.9, 0.72, 0.62, 1}, 0.65 * Step(0.12, 0, height) * (1 - near));
}

/// Sky and mountains above the shore.
Color FindLand(double x, double y)
{
    double const height = s_shore - y;
    Color color = FindSky(x, y);
    for (unsigned int ridge = 0; ridge < s_numRidges; ++ridge)
    {
        double const top = FindRidge(ridge, x);
        color = Mix(color, FindMountain(ridge, x, height, top), Step(-0.0012, 0.0012, top - height));
    }
    return color;
}

} // namespace

Color FindLandscape(double x, double y)
{
    if (y < s_shore)
        return FindLand(x, y);
    // The lake mirrors the land, shaken by waves that are long nearby and short far away.
    double const depth = (y - s_shore) / (1 - s_shore), far = 1 / (0.04 + depth);
    double const wave = Fractal(3, 5 * x * far * 0.4, 26 * far) - 0.5;
    Color const mirrored =
        FindLand(x + 0.012 * wave, s_shore - (y - s_shore) * (1 + 0.12 * wave) - 0.03 * wave * depth);
    Color water = Mix(mirrored, {0.1, 0.2, 0.3, 1}, 0.22 + 0.35 * depth);
    double const dx = (x - s_sunX) / (0.05 + 0.16 * depth);
    double const glitter = Step(0.1, 0.28, wave) * Exponential(-dx * dx);
    return Mix(water, {1, 0.85, 0.62, 1}, 0.85 * glitter);
}

} // namespace makesamples
