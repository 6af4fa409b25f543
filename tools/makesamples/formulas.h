// Functions of which the samples are made. They use only operations whose results are the same on every machine.
#ifndef QUILLMARSH_TOOLS_MAKESAMPLES_FORMULAS_H
#define QUILLMARSH_TOOLS_MAKESAMPLES_FORMULAS_H

#include <algorithm>
#include <cstdint>

namespace makesamples
{

/// Sine and cosine of a number of turns, to about nine digits.
double Sine(double turns);
double Cosine(double turns);
/// e to the power of x, for -80 to 80.
double Exponential(double x);
/// 0 up to `begin`, 1 from `end` on, and a smooth step between them. `begin` may be the greater one.
double Step(double begin, double end, double x);
/// Between `a` for 0 and `b` for 1.
inline double Mix(double a, double b, double part)
{
    return a + (b - a) * part;
}
inline double Clamp(double x)
{
    return std::clamp(x, 0.0, 1.0);
}

/// @name Noise
/// From 0 to 1, and the same for the same numbers.
/// @{
double Hash(std::int64_t x, std::int64_t y = 0, std::int64_t z = 0);
/// Smooth, with bumps about one unit wide.
double Noise(double x, double y = 0, double z = 0);
/// The same in `octaves` sizes, each half as large and half as strong as the one before.
double Fractal(unsigned int octaves, double x, double y = 0, double z = 0);
/// @}

} // namespace makesamples

#endif
