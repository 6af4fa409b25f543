#include <quillmarsh/mathtools/quaternion.h>

#include <quillmarsh/mathtools/transforms.h>

#include "source/mathtools/degrees.h"

namespace quillmarsh
{

quat &quat::FromRotationAxisAngle(vec3 const &unitAxis, float angle)
{
    SineCosine const half(angle / 2.0f);
    return Set(half.sine * unitAxis.x, half.sine * unitAxis.y, half.sine * unitAxis.z, half.cosine);
}

void quat::ToRotationAxisAngle(vec3 &axis, float &angle) const
{
    vec3 const vectorPart(x, y, z);
    float const norm = vectorPart.LengthSquared();
    if (norm <= 0.0f)
    {
        axis = vec3::UNIT_Z;
        angle = 0.0f;
        return;
    }
    axis = vectorPart * (1.0f / std::sqrt(norm));
    angle = ToDegrees(2.0 * std::acos(static_cast<double>(w)));
}

// The largest component gives the divisor of the others; among equal ones the first branch is taken.
quat &quat::FromRotationMatrixMV(mat3 const &matrix)
{
    auto const &[m00, m01, m02] = matrix.Row0();
    auto const &[m10, m11, m12] = matrix.Row1();
    auto const &[m20, m21, m22] = matrix.Row2();

    float const trace = matrix.Trace();
    if (trace > 0.0f)
    {
        float const newW = std::sqrt(trace + 1.0f) / 2.0f;
        float const q = 0.25f / newW;
        return Set((m21 - m12) * q, (m02 - m20) * q, (m10 - m01) * q, newW);
    }
    if (m11 <= m00 && m22 <= m00)
    {
        float const newX = std::sqrt(m00 - m11 - m22 + 1.0f) / 2.0f;
        float const q = 0.25f / newX;
        return Set(newX, (m01 + m10) * q, (m02 + m20) * q, (m21 - m12) * q);
    }
    if (m22 <= m11)
    {
        float const newY = std::sqrt(m11 - m00 - m22 + 1.0f) / 2.0f;
        float const q = 0.25f / newY;
        return Set((m10 + m01) * q, newY, (m12 + m21) * q, (m02 - m20) * q);
    }
    float const newZ = std::sqrt(m22 - m00 - m11 + 1.0f) / 2.0f;
    float const q = 0.25f / newZ;
    return Set((m20 + m02) * q, (m21 + m12) * q, newZ, (m10 - m01) * q);
}

void quat::ToCoordSystemAxes(vec3 &xAxis, vec3 &yAxis, vec3 &zAxis) const
{
    mat3 rotation;
    ToRotationMatrixMV(rotation);
    FactorRotateMV(rotation, xAxis, yAxis, zAxis);
}

quat &quat::FromCoordSystemAxes(vec3 const &xAxis, vec3 const &yAxis, vec3 const &zAxis)
{
    mat3 rotation;
    GenerateRotateMV(rotation, xAxis, yAxis, zAxis);
    return FromRotationMatrixMV(rotation);
}

quat &quat::ShortestArcRotation(vec3 const &from, vec3 const &to)
{
    vec3 const cross = from.Cross(to);
    float const s = std::sqrt((from.Dot(to) + 1.0f) * 2.0f);
    return Set(cross.x / s, cross.y / s, cross.z / s, s / 2.0f);
}

} // namespace quillmarsh
