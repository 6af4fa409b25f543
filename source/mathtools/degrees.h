// Trigonometry in degrees.
#ifndef QUILLMARSH_SOURCE_MATHTOOLS_DEGREES_H
#define QUILLMARSH_SOURCE_MATHTOOLS_DEGREES_H

#include <quillmarsh/mathtools/mathconstants.h>

namespace quillmarsh
{

/// Sine and cosine of an angle, with the same bits on every system. The C libraries differ near multiples of a quarter
/// turn, where some of them use too few digits of pi.
struct SineCosine
{
    explicit SineCosine(float degrees);

    float sine;
    float cosine;
};

// The functions below work in double precision and round once at the end, so that single precision has the same bits
// with every C library.

inline float ToDegrees(double radians)
{
    return static_cast<float>(radians * math_constants::_180OverPi);
}

inline float ArcSine(float sine)
{
    return ToDegrees(std::asin(static_cast<double>(sine)));
}

inline float ArcTangent(float y, float x)
{
    return ToDegrees(std::atan2(static_cast<double>(y), static_cast<double>(x)));
}

} // namespace quillmarsh

#endif
