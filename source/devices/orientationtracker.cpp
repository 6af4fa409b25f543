#include <quillmarsh/devices/orientationtracker.h>

#include "source/devices/dumpline.h"

#include <quillmarsh/mathtools/transforms.h>

namespace quillmarsh
{

namespace
{

vec3 TransformMV(mat3 const &matrix, vec3 const &v)
{
    return vec3(matrix.Row0().Dot(v), matrix.Row1().Dot(v), matrix.Row2().Dot(v));
}

void TurnFirst(mat3 &matrix, float angle, eAxis axis)
{
    mat3 rotation;
    GenerateRotateMV(rotation, angle, axis);
    matrix *= rotation;
}

} // namespace

OrientationTracker::OrientationTracker()
{
    OrientationTracker::ResetInputReadings();
}

OrientationTracker::~OrientationTracker() = default;

string OrientationTracker::GetControllerInterfaceName() const
{
    return "OrientationTracker";
}

void OrientationTracker::DumpControllerInfo(ostream &out, unsigned int tabs) const
{
    DumpLine(out, tabs, "ResetOrientation: ", isResetOrientationSupported_);
    DumpLine(out, tabs, "ResetHead.......: ", isResetHeadSupported_);
    DumpLine(out, tabs, "ResetPitch......: ", isResetPitchSupported_);
    DumpLine(out, tabs, "ResetRoll.......: ", isResetRollSupported_);
    DumpLine(out, tabs, "EulerMode.......: ", IsSupportedSamplingMode(EulerSamplingMode));
    DumpLine(out, tabs, "QuaternionMode..: ", IsSupportedSamplingMode(QuaternionSamplingMode));
}

void OrientationTracker::ResetInputReadings()
{
    xAxis_ = rawXAxis_ = vec3::UNIT_X;
    yAxis_ = rawYAxis_ = vec3::UNIT_Y;
    zAxis_ = rawZAxis_ = vec3::UNIT_Z;
    rawHead_ = 0.0f;
    rawPitch_ = 0.0f;
    rawRoll_ = 0.0f;
    rawQuaternion_.FromRotationAxisAngle(vec3::UNIT_Z, 0.0f);
}

void OrientationTracker::PreSampleUpdate() {}

void OrientationTracker::PostSampleUpdate() {}

void OrientationTracker::OnBeginAsyncSampleRead() {}

void OrientationTracker::OnEndAsyncSampleRead() {}

bool OrientationTracker::SetSamplingMode(eSamplingMode mode)
{
    ResetInputReadings();
    if (mode == samplingMode_)
        return true;
    if (!IsSupportedSamplingMode(mode))
        return false;
    requestedSamplingMode_ = mode;
    if (DoChangeSamplingMode(samplingMode_))
        samplingMode_ = mode;
    requestedSamplingMode_ = samplingMode_;
    return samplingMode_ == mode;
}

bool OrientationTracker::IsSupportedSamplingMode(eSamplingMode mode) const
{
    return mode < s_numSamplingModes && isSamplingModeSupported_[mode];
}

void OrientationTracker::GetOrientation(vec3 &xAxis, vec3 &yAxis, vec3 &zAxis) const
{
    xAxis = xAxis_;
    yAxis = yAxis_;
    zAxis = zAxis_;
}

void OrientationTracker::GetOrientationRaw(vec3 &xAxis, vec3 &yAxis, vec3 &zAxis) const
{
    xAxis = rawXAxis_;
    yAxis = rawYAxis_;
    zAxis = rawZAxis_;
}

void OrientationTracker::GetOrientationRaw(float &head, float &pitch, float &roll) const
{
    head = rawHead_;
    pitch = rawPitch_;
    roll = rawRoll_;
}

void OrientationTracker::ReportHardwareCaps_ResetControls(bool orientation, bool head, bool pitch, bool roll)
{
    isResetOrientationSupported_ = orientation;
    isResetHeadSupported_ = head;
    isResetPitchSupported_ = pitch;
    isResetRollSupported_ = roll;
}

void OrientationTracker::ReportHardwareCaps_SamplingMode(eSamplingMode mode, bool supported)
{
    if (mode < s_numSamplingModes)
        isSamplingModeSupported_[mode] = supported;
}

void OrientationTracker::SetOrientation(vec3 const &yAxis, vec3 const &zAxis)
{
    rawYAxis_ = yAxis.Unit();
    rawZAxis_ = zAxis.Unit();
    rawXAxis_ = rawYAxis_.Cross(rawZAxis_);
    CorrectAxes();
}

void OrientationTracker::SetOrientation(vec3 const &direction, float roll)
{
    RemapAngleTo180DegRange(roll);
    float head = 0.0f;
    float pitch = 0.0f;
    EulerHPFromDirection(direction.Unit(), head, pitch);
    mat3 rotation;
    GenerateEulerHPR_MV(rotation, head, pitch, roll);
    SetRotation(rotation);
}

void OrientationTracker::SetOrientation(float head, float pitch, float roll)
{
    rawHead_ = head;
    rawPitch_ = pitch;
    rawRoll_ = roll;

    RemapAngleTo180DegRange(head);
    RemapAngleTo90DegRange(pitch);
    RemapAngleTo180DegRange(roll);
    mat3 rotation;
    if (isHPRModifierEnabled_)
    {
        GenerateEulerPHR_MV(rotation, head, pitch, roll);
        FactorEulerHPR_MV(rotation, head, pitch, roll);
    }
    GenerateEulerHPR_MV(rotation, head, pitch, roll);
    SetRotation(rotation);
}

void OrientationTracker::SetOrientation(quat const &orientation)
{
    rawQuaternion_ = orientation;
    mat3 rotation;
    orientation.Unit().ToRotationMatrixMV(rotation);
    SetRotation(rotation);
}

void OrientationTracker::SetRotation(mat3 const &rotation)
{
    vec3 xAxis;
    vec3 yAxis;
    vec3 zAxis;
    FactorRotateMV(rotation, xAxis, yAxis, zAxis);
    SetOrientation(yAxis, zAxis);
}

void OrientationTracker::CorrectAxes()
{
    if (!areReverseModifiersEnabled_)
    {
        xAxis_ = TransformMV(transform_, rawXAxis_);
        yAxis_ = TransformMV(transform_, rawYAxis_);
        zAxis_ = TransformMV(transform_, rawZAxis_);
        return;
    }
    mat3 rotation;
    GenerateRotateMV(rotation, rawXAxis_, rawYAxis_, rawZAxis_);
    float head = 0.0f;
    float pitch = 0.0f;
    float roll = 0.0f;
    FactorEulerHPR_MV(rotation, head, pitch, roll);

    mat3 corrected = transform_;
    TurnFirst(corrected, roll * reverseSignRoll_, e_axisZ);
    TurnFirst(corrected, pitch * reverseSignPitch_, e_axisX);
    TurnFirst(corrected, head * reverseSignHead_, e_axisY);
    FactorRotateMV(corrected, xAxis_, yAxis_, zAxis_);
}

} // namespace quillmarsh
