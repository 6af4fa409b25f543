// Constants of the math types, and what becomes of a macro that would hide one of their names.
#ifndef QUILLMARSH_MATHTOOLS_MATHCONSTANTS_H
#define QUILLMARSH_MATHTOOLS_MATHCONSTANTS_H

#include <cfloat>
#include <cmath>
#include <limits>
#include <math.h>

// The C library has a macro INFINITY, and our types have constants of that name. The headers that define the macro are
// all read above, so it does not come back once it is gone; a constant stands in for other uses of it.
#if defined(INFINITY)
#undef INFINITY
/// Positive infinity, the value of the macro of that name.
inline constexpr float INFINITY = std::numeric_limits<float>::infinity();
#endif

namespace quillmarsh
{

/// Constants of the math tools. Angles are in degrees everywhere; factors here convert to radians and back.
namespace math_constants
{

/// @name Numbers
/// @{
constexpr double Pi = 3.14159265358979323846;
constexpr double PiOver180 = Pi / 180.0;
constexpr double _180OverPi = 180.0 / Pi;
constexpr double Log10_Of_2 = 0.30102999566398119521;
/// @}

/// The largest finite number; it becomes infinite when it is converted to float.
constexpr double PlusInfinity = std::numeric_limits<double>::max();
/// The lowest finite number.
constexpr double MinusInfinity = -PlusInfinity;

/// @name Default tolerances
/// @{
constexpr float MatrixInverseDefaultDeterminantTolerance = 1e-6f;
constexpr float MatrixInverseDefaultDividerTolerance = 1e-6f;
constexpr float MatrixNoiseFilterDefaultTolerance = 1e-6f;
constexpr float QuaternionNoiseFilterDefaultTolerance = 1e-6f;
constexpr float VectorNoiseFilterDefaultTolerance = 1e-6f;
constexpr float VectorEqualTestDefaultToleranceRadius = 1e-4f;
/// Cosine of 89.9999 degrees.
constexpr float VectorOrthogonalTestDefaultMaxCosAngle = 1.74532925e-06f;
/// Cosine of 0.0001 degrees, which is 1 in single precision.
constexpr float VectorParallelTestDefaultMinCosAngle = 1.0f;
/// @}

} // namespace math_constants

/// Axis of a coordinate system.
enum eAxis
{
    e_axisX = 0,
    e_axisY = 1,
    e_axisZ = 2
};

} // namespace quillmarsh

#endif
