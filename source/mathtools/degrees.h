// Trigonometry in degrees.
#ifndef QUILLMARSH_SOURCE_MATHTOOLS_DEGREES_H
#define QUILLMARSH_SOURCE_MATHTOOLS_DEGREES_H

#include <quillmarsh/mathtools/mathconstants.h>

namespace quillmarsh
{

// The functions work in double precision and round once at the end: so single precision gets the same bits from every
// C library.

/// Sine and cosine of an angle.
struct SineCosine
{
    explicit SineCosine(float degrees)
        : sine(static_cast<float>(std::sin(static_cast<double>(degrees) * math_constants::PiOver180))),
          cosine(static_cast<float>(std::cos(static_cast<double>(degrees) * math_constants::PiOver180)))
    {
    }

    float sine;
    float cosine;
};

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
