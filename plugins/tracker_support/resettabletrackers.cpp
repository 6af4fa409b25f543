#include "resettabletrackers.h"

#include <quillmarsh/mathtools/transforms.h>

namespace tracker_support
{

using namespace quillmarsh;

namespace
{

struct Angles
{
    float head;
    float pitch;
    float roll;
};

/// Returns the angles of MakeOrientation(). The order of turns there is the opposite of the factored one.
Angles FactorOrientation(quat const &orientation)
{
    mat3 matrix;
    orientation.ToRotationMatrixMV(matrix);
    Angles angles;
    FactorEulerHPR_VM(matrix, angles.head, angles.pitch, angles.roll);
    return {-angles.head, -angles.pitch, -angles.roll};
}

} // namespace

quat MakeOrientation(float head, float pitch, float roll)
{
    return quat(vec3::UNIT_Y, head) * quat(vec3::UNIT_X, pitch) * quat(vec3::UNIT_Z, roll);
}

ResettableOrientationTracker::ResettableOrientationTracker(HumanInterfaceDevice &device, eSamplingMode mode)
{
    SetParentHID(device);
    ReportHardwareCaps_ResetControls(true, true, true, true);
    ReportHardwareCaps_SamplingMode(EulerSamplingMode, true);
    ReportHardwareCaps_SamplingMode(QuaternionSamplingMode, true);
    SetSamplingMode(mode);
}

void ResettableOrientationTracker::Sample(quat const &unitOrientation)
{
    isAtRest_ = false;
    sensor_ = unitOrientation;
    quat const corrected = GetCorrected();
    PreSampleUpdate();
    if (GetSamplingMode() == EulerSamplingMode)
    {
        mat3 matrix;
        corrected.ToRotationMatrixMV(matrix);
        Angles angles;
        FactorEulerHPR_MV(matrix, angles.head, angles.pitch, angles.roll);
        SetOrientation(angles.head, angles.pitch, angles.roll);
    }
    else
    {
        SetOrientation(corrected);
    }
    PostSampleUpdate();
}

void ResettableOrientationTracker::SampleRest()
{
    isAtRest_ = true;
    PreSampleUpdate();
    ResetInputReadings();
    PostSampleUpdate();
}

// The heading is reset in the world, pitch and roll on the sensor. Vertical lines stay vertical for any mount.

bool ResettableOrientationTracker::DoResetOrientation()
{
    if (isAtRest_)
        return false;
    quat const head(vec3::UNIT_Y, FactorOrientation(sensor_).head);
    world_ = head.InverseU();
    mount_ = sensor_.InverseU() * head;
    return true;
}

bool ResettableOrientationTracker::DoResetHead()
{
    if (isAtRest_)
        return false;
    world_ = (quat(vec3::UNIT_Y, -FactorOrientation(GetCorrected()).head) * world_).Unit();
    return true;
}

bool ResettableOrientationTracker::DoResetPitch()
{
    if (isAtRest_)
        return false;
    Angles const angles = FactorOrientation(GetCorrected());
    quat const roll(vec3::UNIT_Z, angles.roll);
    mount_ = (mount_ * roll.InverseU() * quat(vec3::UNIT_X, -angles.pitch) * roll).Unit();
    return true;
}

bool ResettableOrientationTracker::DoResetRoll()
{
    if (isAtRest_)
        return false;
    mount_ = (mount_ * quat(vec3::UNIT_Z, -FactorOrientation(GetCorrected()).roll)).Unit();
    return true;
}

ResettablePositionTracker::ResettablePositionTracker(HumanInterfaceDevice &device)
{
    SetParentHID(device);
    ReportHardwareCaps(true, true, true, true);
}

void ResettablePositionTracker::Sample(vec3 const &position)
{
    isAtRest_ = false;
    sensor_ = position;
    PreSampleUpdate();
    SetPosition(sensor_ - origin_);
    PostSampleUpdate();
}

void ResettablePositionTracker::SampleRest()
{
    isAtRest_ = true;
    PreSampleUpdate();
    ResetInputReadings();
    PostSampleUpdate();
}

bool ResettablePositionTracker::DoResetPosition()
{
    if (isAtRest_)
        return false;
    origin_ = sensor_;
    return true;
}

bool ResettablePositionTracker::ResetAxis(unsigned int axis)
{
    if (isAtRest_)
        return false;
    origin_[axis] = sensor_[axis];
    return true;
}

} // namespace tracker_support
