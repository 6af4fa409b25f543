// Matrices of scales, translations, rotations and projections, and the way back to angles and axes.
#ifndef QUILLMARSH_MATHTOOLS_TRANSFORMS_H
#define QUILLMARSH_MATHTOOLS_TRANSFORMS_H

#include <quillmarsh/mathtools/matrix44.h>

namespace quillmarsh
{

// Angles are in degrees. Coordinate systems are right-handed, and positive angles turn counter-clockwise as seen from
// the tip of the axis. A matrix with the suffix `MV` applies to column vectors, one with `VM`, its transpose, to row
// vectors. Any thread.

/// @name Scale
/// By one factor, or by a factor for each axis.
/// @{
QUILLMARSH_API void GenerateUniformScale(mat2 &matrix, float scale);
QUILLMARSH_API void GenerateUniformScale(mat3 &matrix, float scale);
QUILLMARSH_API void GenerateUniformScale(mat4 &matrix, float scale);
QUILLMARSH_API void GenerateNonUniformScale(mat2 &matrix, float scaleX, float scaleY);
QUILLMARSH_API void GenerateNonUniformScale(mat3 &matrix, float scaleX, float scaleY, float scaleZ);
QUILLMARSH_API void GenerateNonUniformScale(mat4 &matrix, float scaleX, float scaleY, float scaleZ);
/// @}

/// @name Translation
/// A mat3 translates homogeneous vectors of the plane.
/// @{
QUILLMARSH_API void GenerateTranslateMV(mat3 &matrix, float offsetX, float offsetY);
QUILLMARSH_API void GenerateTranslateMV(mat4 &matrix, float offsetX, float offsetY, float offsetZ);
QUILLMARSH_API void GenerateTranslateVM(mat3 &matrix, float offsetX, float offsetY);
QUILLMARSH_API void GenerateTranslateVM(mat4 &matrix, float offsetX, float offsetY, float offsetZ);
/// @}

/// @name Rotation
/// In the plane, about a coordinate axis, about any axis of unit length, or from the axes of the rotated system.
/// @{
QUILLMARSH_API void GenerateRotateMV(mat2 &matrix, float angle);
QUILLMARSH_API void GenerateRotateMV(mat3 &matrix, float angle, eAxis axis);
QUILLMARSH_API void GenerateRotateMV(mat4 &matrix, float angle, eAxis axis);
QUILLMARSH_API void GenerateRotateMV(mat3 &matrix, float angle, vec3 const &unitAxis);
QUILLMARSH_API void GenerateRotateMV(mat4 &matrix, float angle, vec3 const &unitAxis);
QUILLMARSH_API void GenerateRotateMV(mat3 &matrix, vec3 const &xAxis, vec3 const &yAxis, vec3 const &zAxis);
QUILLMARSH_API void GenerateRotateMV(mat4 &matrix, vec3 const &xAxis, vec3 const &yAxis, vec3 const &zAxis);
QUILLMARSH_API void GenerateRotateVM(mat2 &matrix, float angle);
QUILLMARSH_API void GenerateRotateVM(mat3 &matrix, float angle, eAxis axis);
QUILLMARSH_API void GenerateRotateVM(mat4 &matrix, float angle, eAxis axis);
QUILLMARSH_API void GenerateRotateVM(mat3 &matrix, float angle, vec3 const &unitAxis);
QUILLMARSH_API void GenerateRotateVM(mat4 &matrix, float angle, vec3 const &unitAxis);
QUILLMARSH_API void GenerateRotateVM(mat3 &matrix, vec3 const &xAxis, vec3 const &yAxis, vec3 const &zAxis);
QUILLMARSH_API void GenerateRotateVM(mat4 &matrix, vec3 const &xAxis, vec3 const &yAxis, vec3 const &zAxis);
/// @}

/// @name Axes of a rotated system
/// Gives the images of the coordinate axes under the rotation.
/// @{
QUILLMARSH_API void FactorRotateMV(mat3 const &matrix, vec3 &xAxis, vec3 &yAxis, vec3 &zAxis);
QUILLMARSH_API void FactorRotateMV(mat4 const &matrix, vec3 &xAxis, vec3 &yAxis, vec3 &zAxis);
QUILLMARSH_API void FactorRotateVM(mat3 const &matrix, vec3 &xAxis, vec3 &yAxis, vec3 &zAxis);
QUILLMARSH_API void FactorRotateVM(mat4 const &matrix, vec3 &xAxis, vec3 &yAxis, vec3 &zAxis);
/// @}

/// @name Rotation by Euler angles
/// Heading turns about Y, pitch about X, roll about Z, in the order that the name tells.
/// @{
QUILLMARSH_API void GenerateEulerHPR_MV(mat3 &matrix, float heading, float pitch, float roll);
QUILLMARSH_API void GenerateEulerHPR_MV(mat4 &matrix, float heading, float pitch, float roll);
QUILLMARSH_API void GenerateEulerHPR_VM(mat3 &matrix, float heading, float pitch, float roll);
QUILLMARSH_API void GenerateEulerHPR_VM(mat4 &matrix, float heading, float pitch, float roll);
QUILLMARSH_API void GenerateEulerPHR_MV(mat3 &matrix, float heading, float pitch, float roll);
QUILLMARSH_API void GenerateEulerPHR_MV(mat4 &matrix, float heading, float pitch, float roll);
QUILLMARSH_API void GenerateEulerPHR_VM(mat3 &matrix, float heading, float pitch, float roll);
QUILLMARSH_API void GenerateEulerPHR_VM(mat4 &matrix, float heading, float pitch, float roll);
/// @}

/// @name Euler angles of a rotation
/// When the middle angle is 90 or -90 degrees, the other two angles turn about the same axis: roll is then 0, and the
/// first angle includes it.
/// @{
QUILLMARSH_API void FactorEulerHPR_MV(mat3 const &matrix, float &heading, float &pitch, float &roll);
QUILLMARSH_API void FactorEulerHPR_MV(mat4 const &matrix, float &heading, float &pitch, float &roll);
QUILLMARSH_API void FactorEulerHPR_VM(mat3 const &matrix, float &heading, float &pitch, float &roll);
QUILLMARSH_API void FactorEulerHPR_VM(mat4 const &matrix, float &heading, float &pitch, float &roll);
QUILLMARSH_API void FactorEulerPHR_MV(mat3 const &matrix, float &heading, float &pitch, float &roll);
QUILLMARSH_API void FactorEulerPHR_MV(mat4 const &matrix, float &heading, float &pitch, float &roll);
QUILLMARSH_API void FactorEulerPHR_VM(mat3 const &matrix, float &heading, float &pitch, float &roll);
QUILLMARSH_API void FactorEulerPHR_VM(mat4 const &matrix, float &heading, float &pitch, float &roll);
/// @}

/// @name Direction by heading and pitch
/// Heading 0 and pitch 0 look along Z; a positive pitch looks down. The second form needs a unit vector.
/// @{
QUILLMARSH_API void DirectionFromEulerHP(vec3 &direction, float heading, float pitch);
QUILLMARSH_API void EulerHPFromDirection(vec3 const &direction, float &heading, float &pitch);
/// @}

/// @name Orthographic projection
/// Maps a box to -1 to 1 in each direction; with `zeroBasedDepth` the depth is mapped to 0 to 1. `negateZ` is for
/// systems that look along -Z. If the box has no extent in a direction, the matrix stays as it was.
/// @{
QUILLMARSH_API void GenerateProjectionOrthoMV(mat4 &matrix, bool negateZ, bool zeroBasedDepth, float left, float right,
                                              float bottom, float top, float nearDepth, float farDepth);
QUILLMARSH_API void GenerateProjectionOrthoVM(mat4 &matrix, bool negateZ, bool zeroBasedDepth, float left, float right,
                                              float bottom, float top, float nearDepth, float farDepth);
/// @}

/// @name Ranges of angles
/// Whole turns are removed.
/// @{

/// Maps the angle to -180 to 180. Both ends stay as they are.
QUILLMARSH_API void RemapAngleTo180DegRange(float &angle);
/// Maps the angle to -90 to 90. An angle of the other half circle is mirrored: it becomes 180 minus the angle.
QUILLMARSH_API void RemapAngleTo90DegRange(float &angle);

/// @}

} // namespace quillmarsh

#endif
