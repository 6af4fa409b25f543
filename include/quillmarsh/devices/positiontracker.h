// PositionTracker, the controller of a sensor that measures its position.
#ifndef QUILLMARSH_DEVICES_POSITIONTRACKER_H
#define QUILLMARSH_DEVICES_POSITIONTRACKER_H

#include <quillmarsh/framework/hidcontroller.h>
#include <quillmarsh/mathtools/matrix44.h>

namespace quillmarsh
{

/// Raw position of a sensor, and the position corrected by reversals and then by the application's transform.
///
/// Modifiers take effect with the next reading. Read a tracker, and change its modifiers, under a sentry of its device:
/// they take no lock of their own.
class QUILLMARSH_API PositionTracker : public HIDController
{
public:
    ~PositionTracker() override;

    /// "PositionTracker".
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
    bool ResetPosition() { return isResetPositionSupported_ && DoResetPosition(); }
    bool ResetX() { return isResetXSupported_ && DoResetX(); }
    bool ResetY() { return isResetYSupported_ && DoResetY(); }
    bool ResetZ() { return isResetZSupported_ && DoResetZ(); }
    bool IsSupportedResetPosition() const { return isResetPositionSupported_; }
    bool IsSupportedResetX() const { return isResetXSupported_; }
    bool IsSupportedResetY() const { return isResetYSupported_; }
    bool IsSupportedResetZ() const { return isResetZSupported_; }
    /// @}

    /// @name Modifiers
    /// Reversals are off at first.
    /// @{
    void SetReverseX(bool reverse) { reverseSignX_ = reverse ? -1.0f : 1.0f; }
    void SetReverseY(bool reverse) { reverseSignY_ = reverse ? -1.0f : 1.0f; }
    void SetReverseZ(bool reverse) { reverseSignZ_ = reverse ? -1.0f : 1.0f; }
    bool IsReversedX() const { return reverseSignX_ < 0.0f; }
    bool IsReversedY() const { return reverseSignY_ < 0.0f; }
    bool IsReversedZ() const { return reverseSignZ_ < 0.0f; }
    /// Sets a transform that is applied to column vectors, with the homogeneous division; the identity at first.
    void SetTransform(mat4 const &transform) { transform_ = transform; }
    /// @}

    /// @name Position
    /// Corrected by the modifiers, and raw.
    /// @{
    vec3 const &GetPosition() const { return position_; }
    vec3 const &GetPositionRaw() const { return rawPosition_; }
    /// @}

protected:
    PositionTracker() = default;

    /// Reports which resets the hardware supports; none at first.
    void ReportHardwareCaps(bool resetPosition, bool resetX, bool resetY, bool resetZ);
    /// Writes a sample.
    void SetPosition(vec3 const &position);

    /// @name Work of the hardware
    /// Called only if the hardware supports it. Each returns false on failure.
    /// @{
    virtual bool DoResetPosition() = 0;
    virtual bool DoResetX() = 0;
    virtual bool DoResetY() = 0;
    virtual bool DoResetZ() = 0;
    /// @}

private:
    bool isResetPositionSupported_ = false;
    bool isResetXSupported_ = false;
    bool isResetYSupported_ = false;
    bool isResetZSupported_ = false;
    float reverseSignX_ = 1.0f;
    float reverseSignY_ = 1.0f;
    float reverseSignZ_ = 1.0f;
    mat4 transform_ = mat4::IDENTITY;
    vec3 position_ = vec3::ZERO;
    vec3 rawPosition_ = vec3::ZERO;
};

} // namespace quillmarsh

#endif
