// OrientationTracker, the controller of a sensor that tells how it is turned.
#ifndef QUILLMARSH_DEVICES_ORIENTATIONTRACKER_H
#define QUILLMARSH_DEVICES_ORIENTATIONTRACKER_H

#include <quillmarsh/framework/hidcontroller.h>
#include <quillmarsh/mathtools/matrix33.h>
#include <quillmarsh/mathtools/quaternion.h>

namespace quillmarsh
{

/// Raw orientation of a sensor, and the orientation corrected by the application's transform and reversals.
///
/// Angles are in degrees. A concrete tracker reports readings by one of the forms of SetOrientation(); modifiers take
/// effect with the next reading. Read it, and change its modifiers, under a sentry of its device: they take no lock of
/// their own.
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
    /// False when the tracker does not support it, or fails.
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

    /// Clears the readings in any case. False when the mode is not supported or the tracker refuses; the mode then
    /// stays.
    bool SetSamplingMode(eSamplingMode mode);
    eSamplingMode GetSamplingMode() const { return samplingMode_; }
    bool IsSupportedSamplingMode(eSamplingMode mode) const;

    /// @}
    /// @name Modifiers
    /// @{

    /// The reversals by axis, which take the way through Euler angles; enabled at first.
    void EnableReverseModifiers(bool enable) { areReverseModifiersEnabled_ = enable; }
    bool AreEnabledReverseModifiers() const { return areReverseModifiersEnabled_; }
    void SetReverseHead(bool reverse) { reverseSignHead_ = reverse ? -1.0f : 1.0f; }
    void SetReversePitch(bool reverse) { reverseSignPitch_ = reverse ? -1.0f : 1.0f; }
    void SetReverseRoll(bool reverse) { reverseSignRoll_ = reverse ? -1.0f : 1.0f; }
    bool IsReversedHead() const { return reverseSignHead_ < 0.0f; }
    bool IsReversedPitch() const { return reverseSignPitch_ < 0.0f; }
    bool IsReversedRoll() const { return reverseSignRoll_ < 0.0f; }
    /// For hardware whose angles turn pitch first, then heading, then roll.
    void EnableHPRModifier(bool enable) { isHPRModifierEnabled_ = enable; }
    bool IsEnabledHPRModifier() const { return isHPRModifierEnabled_; }
    /// Applied in front of the raw orientation, to column vectors.
    void SetTransform(mat3 const &transform) { transform_ = transform; }

    /// @}
    /// @name Orientation, as the axes of the turned sensor
    /// @{
    void GetOrientation(vec3 &xAxis, vec3 &yAxis, vec3 &zAxis) const;
    void GetOrientationRaw(vec3 &xAxis, vec3 &yAxis, vec3 &zAxis) const;
    /// The last angles that the hardware reported, unchanged.
    void GetOrientationRaw(float &head, float &pitch, float &roll) const;
    /// The last quaternion that the hardware reported, unchanged.
    void GetOrientationRaw(quat &orientation) const { orientation = rawQuaternion_; }
    /// @}

protected:
    OrientationTracker();

    /// @name Capabilities
    /// @{
    void ReportHardwareCaps_ResetControls(bool orientation, bool head, bool pitch, bool roll);
    void ReportHardwareCaps_SamplingMode(eSamplingMode mode, bool supported);
    /// @}

    /// @name Writing of samples
    /// @{

    /// By the axes Y and Z, which are trusted to be at right angles.
    void SetOrientation(vec3 const &yAxis, vec3 const &zAxis);
    /// By heading and pitch of a direction, and a roll.
    void SetOrientation(vec3 const &direction, float roll);
    void SetOrientation(float head, float pitch, float roll);
    void SetOrientation(quat const &orientation);

    /// @}

    /// Mode that DoChangeSamplingMode() is asked for; the present mode at any other time.
    eSamplingMode GetRequestedSamplingMode() const { return requestedSamplingMode_; }

    /// @name What the hardware does
    /// Called for supported things only; false on failure.
    /// @{
    virtual bool DoResetOrientation() = 0;
    virtual bool DoResetHead() = 0;
    virtual bool DoResetPitch() = 0;
    virtual bool DoResetRoll() = 0;
    /// Gets the mode that is left; GetRequestedSamplingMode() tells the one to take.
    virtual bool DoChangeSamplingMode(eSamplingMode presentMode) = 0;
    /// @}

private:
    static constexpr unsigned int s_numSamplingModes = 3;

    /// By a rotation, to column vectors.
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
