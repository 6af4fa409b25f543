// Trackers for hardware without a reset of its own: a reset stores an offset, which is applied to every sample.
#ifndef QUILLMARSH_PLUGINS_TRACKER_SUPPORT_RESETTABLETRACKERS_H
#define QUILLMARSH_PLUGINS_TRACKER_SUPPORT_RESETTABLETRACKERS_H

#include <quillmarsh/devices/orientationtracker.h>
#include <quillmarsh/devices/positiontracker.h>

namespace tracker_support
{

/// Returns the rotation by `head` about Y, then by `pitch` about the turned X, then by `roll` about the turned Z.
///
/// A head at rest looks along Z, with Y up and X to its left. Positive angles therefore turn it to the left (`head`)
/// and down (`pitch`), and lean it to the right (`roll`).
quillmarsh::quat MakeOrientation(float head, float pitch, float roll);

/// Orientation that a device samples as quaternions. The reader chooses the sampling mode; the axes are the same in
/// both modes. A reset takes effect with the next sample, and fails while the sensor is at rest. The constructor has
/// already called SetParentHID().
class ResettableOrientationTracker final : public quillmarsh::OrientationTracker
{
public:
    ResettableOrientationTracker(quillmarsh::HumanInterfaceDevice &device, eSamplingMode mode);

    /// @name Writing of a sample
    /// @{
    void Sample(quillmarsh::quat const &unitOrientation);
    /// For a sensor without readings.
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

    /// Turns the sensor's forward direction to the user's.
    quillmarsh::quat world_ = quillmarsh::quat::IDENTITY;
    quillmarsh::quat sensor_ = quillmarsh::quat::IDENTITY;
    /// Orientation of the sensor on the object that it is attached to.
    quillmarsh::quat mount_ = quillmarsh::quat::IDENTITY;
    bool isAtRest_ = true;
};

/// Position that a device samples, in metres on the same axes.
class ResettablePositionTracker final : public quillmarsh::PositionTracker
{
public:
    explicit ResettablePositionTracker(quillmarsh::HumanInterfaceDevice &device);

    /// @name Writing of a sample
    /// @{
    void Sample(quillmarsh::vec3 const &position);
    /// For a sensor without readings.
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
