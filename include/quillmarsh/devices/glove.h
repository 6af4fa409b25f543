// Glove, the controller of a hand's flexure sensors.
#ifndef QUILLMARSH_DEVICES_GLOVE_H
#define QUILLMARSH_DEVICES_GLOVE_H

#include <quillmarsh/framework/hidcontroller.h>

namespace quillmarsh
{

/// Sensor of a data glove. The joints of a finger are counted from the palm outwards; abduction is the angle between
/// two neighbouring fingers.
enum eGloveSensor : unsigned int
{
    WristYaw = 0,
    WristPitch,
    WristRoll,
    AbductionThumbIndex,
    AbductionIndexMiddle,
    AbductionMiddleRing,
    AbductionRingPinky,
    ThumbRoll,
    ThumbJointInner,
    ThumbJointOuter,
    IndexJointInner,
    IndexJointMiddle,
    IndexJointOuter,
    MiddleJointInner,
    MiddleJointMiddle,
    MiddleJointOuter,
    RingJointInner,
    RingJointMiddle,
    RingJointOuter,
    PinkyJointInner,
    PinkyJointMiddle,
    PinkyJointOuter
};

/// Readings of a data glove, and their calibration.
///
/// A concrete glove writes raw values and flexures between PreSampleUpdate() and PostSampleUpdate(), and also angles if
/// it measures them. The range of flexures that a sensor has shown is mapped to normalized flexures from 0 to 1; while
/// auto-calibration is active, each sample extends the range. Read a glove, and calibrate it, under a sentry of its
/// device.
class QUILLMARSH_API Glove : public HIDController
{
public:
    static constexpr unsigned int s_numSensors = 22;

    ~Glove() override;

    /// "Glove".
    string GetControllerInterfaceName() const override;
    void DumpControllerInfo(ostream &out, unsigned int tabs) const override;
    /// Clears the readings; the calibration is kept.
    void ResetInputReadings() override;
    /// Without effect.
    void PreSampleUpdate() override;
    void PostSampleUpdate() override;
    /// @name Without effect: readings are levels
    /// @{
    void OnBeginAsyncSampleRead() override;
    void OnEndAsyncSampleRead() override;
    /// @}

    /// Name of a sensor; "Unknown" for any other value. Any thread.
    static string GetSensorName(eGloveSensor sensor);

    /// @name Capabilities
    /// As the concrete glove reported them; false at first.
    /// @{
    bool IsLeftHanded() const { return isLeftHanded_; }
    bool IsSupportedAngleMeasurement() const { return isAngleMeasurementSupported_; }
    bool IsSupportedSensor(eGloveSensor sensor) const { return isSensorSupported_[sensor]; }
    /// @}

    /// @name Readings
    /// Of one sensor; all are 0 at first.
    /// @{

    /// Angle in degrees.
    float GetAngle(eGloveSensor sensor) const { return angles_[sensor]; }
    /// Flexure, mapped to the range of the sensor: outside of 0 to 1 if the flexure is outside of the range.
    float GetNormalizedFlexure(eGloveSensor sensor) const { return normalizedFlexures_[sensor]; }
    float GetFlexure(eGloveSensor sensor) const { return flexures_[sensor]; }
    float GetRawValue(eGloveSensor sensor) const { return rawValues_[sensor]; }

    /// @}
    /// @name Calibration of flexures
    /// @{

    /// Switches auto-calibration on or off. With `reset`, switching on forgets the ranges.
    void ActivateFlexureAutoCalibration(bool activate, bool reset);
    /// True when auto-calibration is active, as it is at first.
    bool IsActiveFlexureAutoCalibration() const { return isFlexureAutoCalibrationActive_; }
    /// Forgets the ranges of all sensors; the next sample begins new ones.
    void ResetFlexureAutoCalibration();
    /// Sets the lower end of a sensor's range, and widens the range to the present flexure at once. NaN opens this end
    /// anew, as a reset does.
    void SetMinFlexure(eGloveSensor sensor, float flexure);
    /// Sets the upper end, likewise.
    void SetMaxFlexure(eGloveSensor sensor, float flexure);
    float GetMinFlexure(eGloveSensor sensor) const { return minFlexures_[sensor]; }
    float GetMaxFlexure(eGloveSensor sensor) const { return maxFlexures_[sensor]; }
    /// Sets the normalized flexure of a sensor that has shown no range at all; 0.5 by default, and for NaN.
    void SetEqualValueFlexureNormalization(eGloveSensor sensor, float value);
    float GetEqualValueFlexureNormalization(eGloveSensor sensor) const { return equalValueNormalizations_[sensor]; }
    void SetDefaultEqualValueFlexureNormalizations();

    /// @}
    /// @name Map from flexures to angles
    /// An angle is the flexure times the scale plus the bias.
    /// @{
    void SetFlexureToAngleScale(eGloveSensor sensor, float scale) { flexureToAngleScales_[sensor] = scale; }
    float GetFlexureToAngleScale(eGloveSensor sensor) const { return flexureToAngleScales_[sensor]; }
    void SetFlexureToAngleBias(eGloveSensor sensor, float bias) { flexureToAngleBiases_[sensor] = bias; }
    float GetFlexureToAngleBias(eGloveSensor sensor) const { return flexureToAngleBiases_[sensor]; }
    /// Sets a range of 180 degrees for the wrist, of 40 for abduction, and of 80 for joints.
    void SetDefaultFlexureToAngleMaps();
    /// @}

protected:
    Glove();

    /// @name Capabilities
    /// For the concrete glove, before its first sample.
    /// @{
    void ReportHandedness(bool leftHanded) { isLeftHanded_ = leftHanded; }
    void ReportHardwareCaps_Measurement(bool angles) { isAngleMeasurementSupported_ = angles; }
    void ReportHardwareCaps_Sensor(eGloveSensor sensor, bool supported) { isSensorSupported_[sensor] = supported; }
    /// @}

    /// @name Writing of samples
    /// Of one sensor, between PreSampleUpdate() and PostSampleUpdate().
    /// @{
    void SetAngle(eGloveSensor sensor, float angle) { angles_[sensor] = angle; }
    void SetFlexure(eGloveSensor sensor, float flexure) { flexures_[sensor] = flexure; }
    void SetRawValue(eGloveSensor sensor, float value) { rawValues_[sensor] = value; }
    /// For hardware that does not measure angles: sets them from the flexures, after those were written.
    void DeriveAnglesFromFlexures();
    /// @}

private:
    void UpdateFlexureNormalizer(unsigned int sensor);
    void CalculateNormalizedFlexures();

    bool isLeftHanded_;
    bool isAngleMeasurementSupported_;
    bool isSensorSupported_[s_numSensors];
    bool isFlexureAutoCalibrationActive_;
    float flexureToAngleScales_[s_numSensors];
    float flexureToAngleBiases_[s_numSensors];
    float angles_[s_numSensors];
    float normalizedFlexures_[s_numSensors];
    float flexures_[s_numSensors];
    float rawValues_[s_numSensors];
    float equalValueNormalizations_[s_numSensors];
    float minFlexures_[s_numSensors];
    float maxFlexures_[s_numSensors];
    float flexureNormalizers_[s_numSensors];
};

} // namespace quillmarsh

#endif
