// OrientationTracker, the controller of a sensor that measures its orientation.
#ifndef QUILLMARSH_DEVICES_ORIENTATIONTRACKER_H
#define QUILLMARSH_DEVICES_ORIENTATIONTRACKER_H

#include <quillmarsh/framework/hidcontroller.h>
#include <quillmarsh/mathtools/matrix33.h>
#include <quillmarsh/mathtools/quaternion.h>

namespace quillmarsh
{

/// Raw orientation of a sensor, and the orientation corrected by the application's transform and reversals.
///
/// Angles are in degrees. A concrete tracker reports readings by one of the forms of SetOrientation(). Modifiers take
/// effect with the next reading. Read a tracker, and change its modifiers, under a sentry of its device: they take no
/// lock of their own.
class QUILLMARSH_API OrientationTracker : public HIDController
{
public:
    /// What the hardware reports.
    enum eSamplingMode : unsigned int
    {
        NoSamplingMode = 0,
        /// Heading, pitch and roll.
        EulerSamplingMode,
        QuaternionSamplingMode
    };

    ~OrientationTracker() override;

    /// "OrientationTracker".
    string GetControllerInterfaceName() const override;
    void DumpControllerInfo(ostream &out, unsigned int tabs) const override;
    void ResetInputReadings() override;
    /// @name Without effect: readings are levels
    /// @{
    void PreSampleUpdate() override;
    void PostSampleUpdate() override;
    void OnBeginAsyncSampleRead() override;
    void OnEndAsyncSampleRead() override;
    /// @}

    /// @name Zeroing by the hardware
    /// Each returns false when the tracker does not support it, or fails.
    /// @{
    bool ResetOrientation() { return isResetOrientationSupported_ && DoResetOrientation(); }
    bool ResetHead() { return isResetHeadSupported_ && DoResetHead(); }
    bool ResetPitch() { return isResetPitchSupported_ && DoResetPitch(); }
    bool ResetRoll() { return isResetRollSupported_ && DoResetRoll(); }
    bool IsSupportedResetOrientation() const { return isResetOrientationSupported_; }
    bool IsSupportedResetHead() const { return isResetHeadSupported_; }
    bool IsSupportedResetPitch() const { return isResetPitchSupported_; }
    bool IsSupportedResetRoll() const { return isResetRollSupported_; }
    /// @}

    /// @name Sampling mode
    /// @{

    /// Changes the mode, and clears the readings in any case. Returns false when the mode is not supported or the
    /// tracker refuses it; the old mode then stays.
    bool SetSamplingMode(eSamplingMode mode);
    /// Present mode; NoSamplingMode at first.
    eSamplingMode GetSamplingMode() const { return samplingMode_; }
    /// True when the hardware supports the mode.
    bool IsSupportedSamplingMode(eSamplingMode mode) const;

    /// @}
    /// @name Modifiers
    /// @{

    /// Sets whether the reversals below are applied. They are computed with Euler angles. Enabled at first.
    void EnableReverseModifiers(bool enable) { areReverseModifiersEnabled_ = enable; }
    bool AreEnabledReverseModifiers() const { return areReverseModifiersEnabled_; }
    void SetReverseHead(bool reverse) { reverseSignHead_ = reverse ? -1.0f : 1.0f; }
    void SetReversePitch(bool reverse) { reverseSignPitch_ = reverse ? -1.0f : 1.0f; }
    void SetReverseRoll(bool reverse) { reverseSignRoll_ = reverse ? -1.0f : 1.0f; }
    bool IsReversedHead() const { return reverseSignHead_ < 0.0f; }
    bool IsReversedPitch() const { return reverseSignPitch_ < 0.0f; }
    bool IsReversedRoll() const { return reverseSignRoll_ < 0.0f; }
    /// Sets whether the hardware's angles mean pitch first, then heading, then roll; they do not at first.
    void EnableHPRModifier(bool enable) { isHPRModifierEnabled_ = enable; }
    /// True when they do.
    bool IsEnabledHPRModifier() const { return isHPRModifierEnabled_; }
    /// Sets a transform that is applied after the raw orientation, to column vectors; the identity at first.
    void SetTransform(mat3 const &transform) { transform_ = transform; }

    /// @}
    /// @name Orientation
    /// As the axes of the sensor: corrected by the modifiers, and raw.
    /// @{
    void GetOrientation(vec3 &xAxis, vec3 &yAxis, vec3 &zAxis) const;
    void GetOrientationRaw(vec3 &xAxis, vec3 &yAxis, vec3 &zAxis) const;
    /// Gives the last angles that the hardware reported, unchanged.
    void GetOrientationRaw(float &head, float &pitch, float &roll) const;
    /// Gives the last quaternion that the hardware reported, unchanged.
    void GetOrientationRaw(quat &orientation) const { orientation = rawQuaternion_; }
    /// @}

protected:
    OrientationTracker();

    /// @name Capabilities
    /// For the concrete tracker, before its first sample. Nothing is supported at first.
    /// @{
    void ReportHardwareCaps_ResetControls(bool orientation, bool head, bool pitch, bool roll);
    void ReportHardwareCaps_SamplingMode(eSamplingMode mode, bool supported);
    /// @}

    /// @name Writing of samples
    /// @{

    /// Takes the axes Y and Z. They must be at right angles, which is not tested.
    void SetOrientation(vec3 const &yAxis, vec3 const &zAxis);
    /// Takes heading and pitch of a direction, and a roll.
    void SetOrientation(vec3 const &direction, float roll);
    /// Takes Euler angles.
    void SetOrientation(float head, float pitch, float roll);
    /// Takes a quaternion of any length.
    void SetOrientation(quat const &orientation);

    /// @}

    /// Within DoChangeSamplingMode(): the mode to change to. At any other time: the present mode.
    eSamplingMode GetRequestedSamplingMode() const { return requestedSamplingMode_; }

    /// @name Work of the hardware
    /// Called only if the hardware supports it. Each returns false on failure.
    /// @{
    virtual bool DoResetOrientation() = 0;
    virtual bool DoResetHead() = 0;
    virtual bool DoResetPitch() = 0;
    virtual bool DoResetRoll() = 0;
    /// Leaves `presentMode`, and takes the mode of GetRequestedSamplingMode().
    virtual bool DoChangeSamplingMode(eSamplingMode presentMode) = 0;
    /// @}

private:
    static constexpr unsigned int s_numSamplingModes = 3;

    /// Takes a rotation that is applied to column vectors.
    void SetRotation(mat3 const &rotation);
    /// Derives the corrected axes from the raw ones.
    void CorrectAxes();

    bool isResetOrientationSupported_ = false;
    bool isResetHeadSupported_ = false;
    bool isResetPitchSupported_ = false;
    bool isResetRollSupported_ = false;
    bool isSamplingModeSupported_[s_numSamplingModes] = {};
    eSamplingMode samplingMode_ = NoSamplingMode;
    bool areReverseModifiersEnabled_ = true;
    float reverseSignHead_ = 1.0f;
    float reverseSignPitch_ = 1.0f;
    float reverseSignRoll_ = 1.0f;
    bool isHPRModifierEnabled_ = false;
    mat3 transform_ = mat3::IDENTITY;
    vec3 xAxis_;
    vec3 yAxis_;
    vec3 zAxis_;
    vec3 rawXAxis_;
    vec3 rawYAxis_;
    vec3 rawZAxis_;
    float rawHead_;
    float rawPitch_;
    float rawRoll_;
    quat rawQuaternion_;
    eSamplingMode requestedSamplingMode_ = NoSamplingMode;
};

} // namespace quillmarsh

#endif
