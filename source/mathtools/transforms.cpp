#include <quillmarsh/mathtools/transforms.h>

#include "source/mathtools/degrees.h"

namespace quillmarsh
{

namespace
{

mat2 MakeRotation(float angle)
{
    auto const [s, c] = SineCosine(angle);
    return mat2(c, -s, s, c);
}

mat3 MakeRotation(float angle, eAxis axis)
{
    auto const [s, c] = SineCosine(angle);
    switch (axis)
    {
    case e_axisX:
        return mat3(1.0f, 0.0f, 0.0f, 0.0f, c, -s, 0.0f, s, c);
    case e_axisY:
        return mat3(c, 0.0f, s, 0.0f, 1.0f, 0.0f, -s, 0.0f, c);
    case e_axisZ:
        break;
    }
    return mat3(c, -s, 0.0f, s, c, 0.0f, 0.0f, 0.0f, 1.0f);
}

mat3 MakeRotation(float angle, vec3 const &unitAxis)
{
    auto const [s, c] = SineCosine(angle);
    auto const &[x, y, z] = unitAxis;
    float const rest = 1.0f - c;
    return mat3(x * x * rest + c, x * y * rest - z * s, x * z * rest + y * s, //
                y * x * rest + z * s, y * y * rest + c, y * z * rest - x * s, //
                z * x * rest - y * s, z * y * rest + x * s, z * z * rest + c);
}

mat3 MakeRotation(vec3 const &xAxis, vec3 const &yAxis, vec3 const &zAxis)
{
    return mat3(xAxis, yAxis, zAxis).Transposed();
}

mat3 MakeEulerHPR(float heading, float pitch, float roll)
{
    return MakeRotation(roll, e_axisZ) * MakeRotation(pitch, e_axisX) * MakeRotation(heading, e_axisY);
}

mat3 MakeEulerPHR(float heading, float pitch, float roll)
{
    return MakeRotation(roll, e_axisZ) * MakeRotation(heading, e_axisY) * MakeRotation(pitch, e_axisX);
}

} // namespace

// ---------------------------------------------------------------------------------------------- scale and translation

void GenerateUniformScale(mat2 &matrix, float scale)
{
    GenerateNonUniformScale(matrix, scale, scale);
}

void GenerateUniformScale(mat3 &matrix, float scale)
{
    GenerateNonUniformScale(matrix, scale, scale, scale);
}

void GenerateUniformScale(mat4 &matrix, float scale)
{
    GenerateNonUniformScale(matrix, scale, scale, scale);
}

void GenerateNonUniformScale(mat2 &matrix, float scaleX, float scaleY)
{
    matrix.Set(scaleX, 0.0f, 0.0f, scaleY);
}

void GenerateNonUniformScale(mat3 &matrix, float scaleX, float scaleY, float scaleZ)
{
    matrix.Set(scaleX, 0.0f, 0.0f, 0.0f, scaleY, 0.0f, 0.0f, 0.0f, scaleZ);
}

void GenerateNonUniformScale(mat4 &matrix, float scaleX, float scaleY, float scaleZ)
{
    mat3 block;
    GenerateNonUniformScale(block, scaleX, scaleY, scaleZ);
    matrix = block;
}

void GenerateTranslateMV(mat3 &matrix, float offsetX, float offsetY)
{
    matrix.Set(1.0f, 0.0f, offsetX, 0.0f, 1.0f, offsetY, 0.0f, 0.0f, 1.0f);
}

void GenerateTranslateMV(mat4 &matrix, float offsetX, float offsetY, float offsetZ)
{
    GenerateTranslateVM(matrix, offsetX, offsetY, offsetZ);
    matrix.Transpose();
}

void GenerateTranslateVM(mat3 &matrix, float offsetX, float offsetY)
{
    matrix.Set(vec3::UNIT_X, vec3::UNIT_Y, vec3(offsetX, offsetY, 1.0f));
}

void GenerateTranslateVM(mat4 &matrix, float offsetX, float offsetY, float offsetZ)
{
    matrix.Set(vec4::UNIT_X, vec4::UNIT_Y, vec4::UNIT_Z, vec4(offsetX, offsetY, offsetZ, 1.0f));
}

// ----------------------------------------------------------------------------------------------------------- rotation

void GenerateRotateMV(mat2 &matrix, float angle)
{
    matrix = MakeRotation(angle);
}

void GenerateRotateMV(mat3 &matrix, float angle, eAxis axis)
{
    matrix = MakeRotation(angle, axis);
}

void GenerateRotateMV(mat4 &matrix, float angle, eAxis axis)
{
    matrix = MakeRotation(angle, axis);
}

void GenerateRotateMV(mat3 &matrix, float angle, vec3 const &unitAxis)
{
    matrix = MakeRotation(angle, unitAxis);
}

void GenerateRotateMV(mat4 &matrix, float angle, vec3 const &unitAxis)
{
    matrix = MakeRotation(angle, unitAxis);
}

void GenerateRotateMV(mat3 &matrix, vec3 const &xAxis, vec3 const &yAxis, vec3 const &zAxis)
{
    matrix = MakeRotation(xAxis, yAxis, zAxis);
}

void GenerateRotateMV(mat4 &matrix, vec3 const &xAxis, vec3 const &yAxis, vec3 const &zAxis)
{
    matrix = MakeRotation(xAxis, yAxis, zAxis);
}

void GenerateRotateVM(mat2 &matrix, float angle)
{
    matrix = MakeRotation(angle).Transposed();
}

void GenerateRotateVM(mat3 &matrix, float angle, eAxis axis)
{
    matrix = MakeRotation(angle, axis).Transposed();
}

void GenerateRotateVM(mat4 &matrix, float angle, eAxis axis)
{
    matrix = MakeRotation(angle, axis).Transposed();
}

void GenerateRotateVM(mat3 &matrix, float angle, vec3 const &unitAxis)
{
    matrix = MakeRotation(angle, unitAxis).Transposed();
}

void GenerateRotateVM(mat4 &matrix, float angle, vec3 const &unitAxis)
{
    matrix = MakeRotation(angle, unitAxis).Transposed();
}

void GenerateRotateVM(mat3 &matrix, vec3 const &xAxis, vec3 const &yAxis, vec3 const &zAxis)
{
    matrix.Set(xAxis, yAxis, zAxis);
}

void GenerateRotateVM(mat4 &matrix, vec3 const &xAxis, vec3 const &yAxis, vec3 const &zAxis)
{
    matrix = mat3(xAxis, yAxis, zAxis);
}

void FactorRotateMV(mat3 const &matrix, vec3 &xAxis, vec3 &yAxis, vec3 &zAxis)
{
    FactorRotateVM(matrix.Transposed(), xAxis, yAxis, zAxis);
}

void FactorRotateMV(mat4 const &matrix, vec3 &xAxis, vec3 &yAxis, vec3 &zAxis)
{
    FactorRotateMV(mat3(matrix), xAxis, yAxis, zAxis);
}

void FactorRotateVM(mat3 const &matrix, vec3 &xAxis, vec3 &yAxis, vec3 &zAxis)
{
    xAxis = matrix.Row0();
    yAxis = matrix.Row1();
    zAxis = matrix.Row2();
}

void FactorRotateVM(mat4 const &matrix, vec3 &xAxis, vec3 &yAxis, vec3 &zAxis)
{
    FactorRotateVM(mat3(matrix), xAxis, yAxis, zAxis);
}

// ------------------------------------------------------------------------------------------------------- Euler angles

void GenerateEulerHPR_MV(mat3 &matrix, float heading, float pitch, float roll)
{
    matrix = MakeEulerHPR(heading, pitch, roll);
}

void GenerateEulerHPR_MV(mat4 &matrix, float heading, float pitch, float roll)
{
    matrix = MakeEulerHPR(heading, pitch, roll);
}

void GenerateEulerHPR_VM(mat3 &matrix, float heading, float pitch, float roll)
{
    matrix = MakeEulerHPR(heading, pitch, roll).Transposed();
}

void GenerateEulerHPR_VM(mat4 &matrix, float heading, float pitch, float roll)
{
    matrix = MakeEulerHPR(heading, pitch, roll).Transposed();
}

void GenerateEulerPHR_MV(mat3 &matrix, float heading, float pitch, float roll)
{
    matrix = MakeEulerPHR(heading, pitch, roll);
}

void GenerateEulerPHR_MV(mat4 &matrix, float heading, float pitch, float roll)
{
    matrix = MakeEulerPHR(heading, pitch, roll);
}

void GenerateEulerPHR_VM(mat3 &matrix, float heading, float pitch, float roll)
{
    matrix = MakeEulerPHR(heading, pitch, roll).Transposed();
}

void GenerateEulerPHR_VM(mat4 &matrix, float heading, float pitch, float roll)
{
    matrix = MakeEulerPHR(heading, pitch, roll).Transposed();
}

void FactorEulerHPR_MV(mat3 const &matrix, float &heading, float &pitch, float &roll)
{
    float const sinePitch = matrix[2][1];
    bool const isUp = sinePitch >= 1.0f;
    if (isUp || sinePitch <= -1.0f)
    {
        float const turn = ArcTangent(matrix[0][2], matrix[0][0]);
        heading = isUp ? turn : -turn;
        pitch = isUp ? 90.0f : -90.0f;
        roll = 0.0f;
        return;
    }
    heading = ArcTangent(-matrix[2][0], matrix[2][2]);
    pitch = ArcSine(sinePitch);
    roll = ArcTangent(-matrix[0][1], matrix[1][1]);
}

void FactorEulerHPR_MV(mat4 const &matrix, float &heading, float &pitch, float &roll)
{
    FactorEulerHPR_MV(mat3(matrix), heading, pitch, roll);
}

void FactorEulerHPR_VM(mat3 const &matrix, float &heading, float &pitch, float &roll)
{
    FactorEulerHPR_MV(matrix.Transposed(), heading, pitch, roll);
}

void FactorEulerHPR_VM(mat4 const &matrix, float &heading, float &pitch, float &roll)
{
    FactorEulerHPR_VM(mat3(matrix), heading, pitch, roll);
}

void FactorEulerPHR_MV(mat3 const &matrix, float &heading, float &pitch, float &roll)
{
    float const minusSineHeading = matrix[2][0];
    bool const isLeft = minusSineHeading >= 1.0f;
    if (isLeft || minusSineHeading <= -1.0f)
    {
        float const turn = ArcTangent(-matrix[1][2], matrix[1][1]);
        heading = isLeft ? -90.0f : 90.0f;
        pitch = isLeft ? turn : -turn;
        roll = 0.0f;
        return;
    }
    heading = ArcSine(-minusSineHeading);
    pitch = ArcTangent(matrix[2][1], matrix[2][2]);
    roll = ArcTangent(matrix[1][0], matrix[0][0]);
}

void FactorEulerPHR_MV(mat4 const &matrix, float &heading, float &pitch, float &roll)
{
    FactorEulerPHR_MV(mat3(matrix), heading, pitch, roll);
}

void FactorEulerPHR_VM(mat3 const &matrix, float &heading, float &pitch, float &roll)
{
    FactorEulerPHR_MV(matrix.Transposed(), heading, pitch, roll);
}

void FactorEulerPHR_VM(mat4 const &matrix, float &heading, float &pitch, float &roll)
{
    FactorEulerPHR_VM(mat3(matrix), heading, pitch, roll);
}

void DirectionFromEulerHP(vec3 &direction, float heading, float pitch)
{
    SineCosine const h(heading);
    SineCosine const p(pitch);
    direction.Set(p.cosine * h.sine, -p.sine, p.cosine * h.cosine);
}

void EulerHPFromDirection(vec3 const &direction, float &heading, float &pitch)
{
    heading = ArcTangent(direction.x, direction.z);
    pitch = ArcSine(-direction.y);
}

// --------------------------------------------------------------------------------------------------------- projection

void GenerateProjectionOrthoMV(mat4 &matrix, bool negateZ, bool zeroBasedDepth, float left, float right, float bottom,
                               float top, float nearDepth, float farDepth)
{
    float const width = right - left;
    float const height = top - bottom;
    float const depth = farDepth - nearDepth;
    if (width == 0.0f || height == 0.0f || depth == 0.0f)
        return;
    float const iw = 1.0f / width;
    float const ih = 1.0f / height;
    float const id = 1.0f / depth;
    float const sign = negateZ ? -1.0f : 1.0f;
    float const depthScale = zeroBasedDepth ? sign * id : 2.0f * sign * id;
    float const depthOffset = zeroBasedDepth ? -nearDepth * id : -(farDepth + nearDepth) * id;
    matrix.Set(2.0f * iw, 0.0f, 0.0f, -(right + left) * iw, //
               0.0f, 2.0f * ih, 0.0f, -(top + bottom) * ih, //
               0.0f, 0.0f, depthScale, depthOffset,         //
               0.0f, 0.0f, 0.0f, 1.0f);
}

void GenerateProjectionOrthoVM(mat4 &matrix, bool negateZ, bool zeroBasedDepth, float left, float right, float bottom,
                               float top, float nearDepth, float farDepth)
{
    // A matrix that is not changed is the same again after it was transposed twice.
    matrix.Transpose();
    GenerateProjectionOrthoMV(matrix, negateZ, zeroBasedDepth, left, right, bottom, top, nearDepth, farDepth);
    matrix.Transpose();
}

// -------------------------------------------------------------------------------------------------------------- ranges

namespace
{

/// Removes whole turns, counted in whole degrees. A number that no integer can hold is left alone.
void RemoveWholeTurns(float &angle)
{
    bool const hasWholeDegrees = math_details::Absolute(angle) < 9.0e18f;
    if (!hasWholeDegrees)
        return;
    long long const turns = static_cast<long long>(angle) / 360;
    angle -= static_cast<float>(turns * 360);
}

} // namespace

void RemapAngleTo180DegRange(float &angle)
{
    RemoveWholeTurns(angle);
    if (angle < -180.0f)
        angle += 360.0f;
    else if (angle > 180.0f)
        angle -= 360.0f;
}

void RemapAngleTo90DegRange(float &angle)
{
    RemoveWholeTurns(angle);
    if (angle < -90.0f)
        angle += 360.0f;
    else if (angle >= 270.0f)
        angle -= 360.0f;
    if (angle > 90.0f)
        angle = 180.0f - angle;
}

} // namespace quillmarsh
