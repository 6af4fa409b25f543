#include "formulas.h"

#include <cmath>

namespace makesamples
{

double Sine(double turns)
{
    // To a quarter of a turn on both sides of 0, where the series of the sine converges fast.
    double x = turns - std::floor(turns + 0.5);
    if (x > 0.25)
        x = 0.5 - x;
    else if (x < -0.25)
        x = -0.5 - x;
    double const angle = x * 6.283185307179586, square = angle * angle;
    double term = angle, sum = angle;
    for (int i = 2; i < 16; i += 2)
    {
        term *= -square / (i * (i + 1));
        sum += term;
    }
    return sum;
}

double Cosine(double turns)
{
    return Sine(turns + 0.25);
}

double Exponential(double x)
{
    // The series for a small part of x, squared again.
    constexpr int halvings = 8;
    double const part = x / (1 << halvings);
    double sum = 1, term = 1;
    for (int i = 1; i < 12; ++i)
    {
        term *= part / i;
        sum += term;
    }
    for (int i = 0; i < halvings; ++i)
        sum *= sum;
    return sum;
}

double Step(double begin, double end, double x)
{
    double const part = Clamp((x - begin) / (end - begin));
    return part * part * (3 - 2 * part);
}

double Hash(std::int64_t x, std::int64_t y, std::int64_t z)
{
    // The constants are odd numbers without a pattern; the mixing is that of a common 64-bit finaliser.
    std::uint64_t bits = static_cast<std::uint64_t>(x) * 0x9E3779B97F4A7C15u +
                         static_cast<std::uint64_t>(y) * 0xC2B2AE3D27D4EB4Fu +
                         static_cast<std::uint64_t>(z) * 0x165667B19E3779F9u;
    for (std::uint64_t const factor : {0xBF58476D1CE4E5B9u, 0x94D049BB133111EBu})
    {
        bits ^= bits >> 30;
        bits *= factor;
    }
    bits ^= bits >> 31;
    return static_cast<double>(bits >> 11) / static_cast<double>(std::uint64_t(1) << 53);
}

double Noise(double x, double y, double z)
{
    double const cell[3] = {std::floor(x), std::floor(y), std::floor(z)};
    auto const ease = [](double part) { return part * part * (3 - 2 * part); };
    double const partX = ease(x - cell[0]), partY = ease(y - cell[1]), partZ = ease(z - cell[2]);
    std::int64_t const column = std::int64_t(cell[0]), row = std::int64_t(cell[1]), layer = std::int64_t(cell[2]);
    auto const line = [&](std::int64_t dy, std::int64_t dz)
    { return Mix(Hash(column, row + dy, layer + dz), Hash(column + 1, row + dy, layer + dz), partX); };
    return Mix(Mix(line(0, 0), line(1, 0), partY), Mix(line(0, 1), line(1, 1), partY), partZ);
}

double Fractal(unsigned int octaves, double x, double y, double z)
{
    double sum = 0, whole = 0, weight = 1;
    for (unsigned int i = 0; i < octaves; ++i, weight /= 2)
    {
        sum += weight * Noise(x, y, z);
        whole += weight;
        // Beside each other, so that the cells of two sizes do not share their corners.
        x = 2 * x + 17.3;
        y = 2 * y + 5.1;
        z = 2 * z + 11.7;
    }
    return sum / whole;
}

} // namespace makesamples
