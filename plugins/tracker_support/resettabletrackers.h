// Trackers for hardware that does not zero itself: resets are offsets, which every sample goes through.
#ifndef QUILLMARSH_PLUGINS_TRACKER_SUPPORT_RESETTABLETRACKERS_H
#define QUILLMARSH_PLUGINS_TRACKER_SUPPORT_RESETTABLETRACKERS_H

#include <quillmarsh/devices/orientationtracker.h>
#include <quillmarsh/devices/positiontracker.h>

namespace tracker_support
{

/// Orientation of what turns by `head` about Y, then by `pitch` about its own X, then by `roll` about its own Z.
///
/// A head at rest looks along Z, with Y up and X to its left. So `head` turns it to the left, `pitch` down, and `roll`
/// leans it to the right.
quillmarsh::quat MakeOrientation(float head, float pitch, float roll);

/// Orientation that a device samples as quaternions. The reader chooses between the sampling modes; the axes are the
/// same in both. Resets take effect with the next sample, and fail while the sensor is at rest. As other controllers,
/// but for SetParentHID(), which is done.
class ResettableOrientationTracker final : public quillmarsh::OrientationTracker
{
public:
    ResettableOrientationTracker(quillmarsh::HumanInterfaceDevice &device, eSamplingMode mode);

    /// @name Writing of a sample
    /// @{
    void Sample(quillmarsh::quat const &unitOrientation);
    /// For a sensor that tells nothing.
    void SampleRest();
    /// @}

protected:
    bool DoResetOrientation() override;
    bool DoResetHead() override;
    bool DoResetPitch() override;
    bool DoResetRoll() override;
    bool DoChangeSamplingMode(eSamplingMode) override { return true; }

private:
    quillmarsh::quat GetCorrected() const { return (world_ * sensor_ * mount_).Unit(); }

    /// Turns what the sensor calls ahead to what the user does.
    quillmarsh::quat world_ = quillmarsh::quat::IDENTITY;
    quillmarsh::quat sensor_ = quillmarsh::quat::IDENTITY;
    /// How the sensor sits on what it turns with.
    quillmarsh::quat mount_ = quillmarsh::quat::IDENTITY;
    bool isAtRest_ = true;
};

/// Position that a device samples, in metres, on the same axes.
class ResettablePositionTracker final : public quillmarsh::PositionTracker
{
public:
    explicit ResettablePositionTracker(quillmarsh::HumanInterfaceDevice &device);

    /// @name Writing of a sample
    /// @{
    void Sample(quillmarsh::vec3 const &position);
    /// For a sensor that tells nothing.
    void SampleRest();
    /// @}

protected:
    bool DoResetPosition() override;
    bool DoResetX() override { return ResetAxis(0); }
    bool DoResetY() override { return ResetAxis(1); }
    bool DoResetZ() override { return ResetAxis(2); }

private:
    bool ResetAxis(unsigned int axis);

    quillmarsh::vec3 sensor_ = quillmarsh::vec3::ZERO;
    quillmarsh::vec3 origin_ = quillmarsh::vec3::ZERO;
    bool isAtRest_ = true;
};

} // namespace tracker_support

#endif
