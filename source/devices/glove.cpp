#include <quillmarsh/devices/glove.h>

#include "source/devices/dumpline.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace quillmarsh
{

namespace
{

constexpr char const *s_sensorNames[] = {"WristYaw",
                                         "WristPitch",
                                         "WristRoll",
                                         "AbductionThumbIndex",
                                         "AbductionIndexMiddle",
                                         "AbductionMiddleRing",
                                         "AbductionRingPinky",
                                         "ThumbRoll",
                                         "ThumbJointInner",
                                         "ThumbJointOuter",
                                         "IndexJointInner",
                                         "IndexJointMiddle",
                                         "IndexJointOuter",
                                         "MiddleJointInner",
                                         "MiddleJointMiddle",
                                         "MiddleJointOuter",
                                         "RingJointInner",
                                         "RingJointMiddle",
                                         "RingJointOuter",
                                         "PinkyJointInner",
                                         "PinkyJointMiddle",
                                         "PinkyJointOuter"};
static_assert(std::size(s_sensorNames) == Glove::s_numSensors);

/// Map of all sensors from this one on.
struct AngleMap
{
    eGloveSensor firstSensor;
    float scale;
    float bias;
};

constexpr AngleMap s_defaultAngleMaps[] = {
    {WristYaw, 180.0f, -90.0f}, {AbductionThumbIndex, 40.0f, 0.0f}, {ThumbRoll, 80.0f, 0.0f}};

/// In an empty range the lower end is above the upper one, so that the first reading sets both.
constexpr float s_startMinFlexure = 1.0f;
constexpr float s_startMaxFlexure = 0.0f;
constexpr float s_defaultEqualValueNormalization = 0.5f;

template<typename T, std::size_t Count>
void Fill(T (&values)[Count], T value)
{
    std::fill(std::begin(values), std::end(values), value);
}

} // namespace

Glove::Glove()
{
    Glove::ResetInputReadings();
    ReportHandedness(false);
    ReportHardwareCaps_Measurement(false);
    Fill(isSensorSupported_, false);
    SetDefaultFlexureToAngleMaps();
    SetDefaultEqualValueFlexureNormalizations();
    ActivateFlexureAutoCalibration(true, true);
}

Glove::~Glove() = default;

string Glove::GetControllerInterfaceName() const
{
    return "Glove";
}

string Glove::GetSensorName(eGloveSensor sensor)
{
    return sensor < s_numSensors ? s_sensorNames[sensor] : "Unknown";
}

void Glove::DumpControllerInfo(ostream &out, unsigned int tabs) const
{
    std::size_t length = 0;
    for (char const *const name : s_sensorNames)
        length = std::max(length, string(name).size());
    auto const dump = [&](string label, bool supported)
    {
        PadToLength(label, static_cast<unsigned int>(length), '.');
        DumpLine(out, tabs, label + ": ", supported);
    };

    dump("AngleMeasurement", isAngleMeasurementSupported_);
    for (unsigned int sensor = 0; sensor < s_numSensors; ++sensor)
        dump(s_sensorNames[sensor], isSensorSupported_[sensor]);
}

void Glove::ResetInputReadings()
{
    Fill(angles_, 0.0f);
    Fill(normalizedFlexures_, 0.0f);
    Fill(flexures_, 0.0f);
    Fill(rawValues_, 0.0f);
}

void Glove::PreSampleUpdate() {}

void Glove::PostSampleUpdate()
{
    if (isFlexureAutoCalibrationActive_)
    {
        for (unsigned int sensor = 0; sensor < s_numSensors; ++sensor)
            UpdateFlexureNormalizer(sensor);
    }
    CalculateNormalizedFlexures();
}

void Glove::OnBeginAsyncSampleRead() {}

void Glove::OnEndAsyncSampleRead() {}

void Glove::ActivateFlexureAutoCalibration(bool activate, bool reset)
{
    isFlexureAutoCalibrationActive_ = activate;
    if (activate && reset)
        ResetFlexureAutoCalibration();
}

void Glove::ResetFlexureAutoCalibration()
{
    Fill(minFlexures_, s_startMinFlexure);
    Fill(maxFlexures_, s_startMaxFlexure);
    Fill(flexureNormalizers_, 1.0f);
}

void Glove::SetMinFlexure(eGloveSensor sensor, float flexure)
{
    minFlexures_[sensor] = std::isnan(flexure) ? s_startMinFlexure : flexure;
    UpdateFlexureNormalizer(sensor);
}

void Glove::SetMaxFlexure(eGloveSensor sensor, float flexure)
{
    maxFlexures_[sensor] = std::isnan(flexure) ? s_startMaxFlexure : flexure;
    UpdateFlexureNormalizer(sensor);
}

void Glove::SetEqualValueFlexureNormalization(eGloveSensor sensor, float value)
{
    equalValueNormalizations_[sensor] = std::isnan(value) ? s_defaultEqualValueNormalization : value;
}

void Glove::SetDefaultEqualValueFlexureNormalizations()
{
    Fill(equalValueNormalizations_, s_defaultEqualValueNormalization);
}

void Glove::SetDefaultFlexureToAngleMaps()
{
    for (AngleMap const &map : s_defaultAngleMaps)
    {
        std::fill(flexureToAngleScales_ + map.firstSensor, std::end(flexureToAngleScales_), map.scale);
        std::fill(flexureToAngleBiases_ + map.firstSensor, std::end(flexureToAngleBiases_), map.bias);
    }
}

void Glove::DeriveAnglesFromFlexures()
{
    for (unsigned int sensor = 0; sensor < s_numSensors; ++sensor)
        angles_[sensor] = flexureToAngleScales_[sensor] * flexures_[sensor] + flexureToAngleBiases_[sensor];
}

void Glove::UpdateFlexureNormalizer(unsigned int sensor)
{
    minFlexures_[sensor] = std::min(minFlexures_[sensor], flexures_[sensor]);
    maxFlexures_[sensor] = std::max(maxFlexures_[sensor], flexures_[sensor]);
    float const range = maxFlexures_[sensor] - minFlexures_[sensor];
    flexureNormalizers_[sensor] = range != 0.0f ? 1.0f / range : 0.0f;
}

void Glove::CalculateNormalizedFlexures()
{
    for (unsigned int sensor = 0; sensor < s_numSensors; ++sensor)
    {
        float const normalizer = flexureNormalizers_[sensor];
        normalizedFlexures_[sensor] = normalizer != 0.0f ? (flexures_[sensor] - minFlexures_[sensor]) * normalizer
                                                         : equalValueNormalizations_[sensor];
    }
}

} // namespace quillmarsh
