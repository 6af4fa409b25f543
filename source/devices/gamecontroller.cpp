#include <quillmarsh/devices/gamecontroller.h>

#include "source/basetools/clamping.h"
#include "source/devices/dumpline.h"

#include <quillmarsh/framework/humaninterfacedevice.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace quillmarsh
{

namespace
{

constexpr char const *s_axisLabels[] = {
    "AxisX.....: ", "AxisY.....: ", "AxisZ.....: ", "AxisRX....: ", "AxisRY....: ", "AxisRZ....: "};

constexpr float s_defaultDeadZone = 0.0f;
constexpr float s_defaultSaturation = 1.0f;

template<std::size_t Count>
void Fill(float (&values)[Count], float value)
{
    std::fill(std::begin(values), std::end(values), value);
}

void SetProperties(float &storedDeadZone, float &storedSaturation, float deadZone, float saturation)
{
    storedDeadZone = ClampSetting(deadZone, 0.0f, 1.0f, s_defaultDeadZone);
    storedSaturation = ClampSetting(saturation, storedDeadZone, 1.0f, s_defaultSaturation);
}

} // namespace

GameController::GameController()
{
    ReportHardwareCaps_Axes(false, false, false, false, false, false);
    ReportHardwareCaps_Gadgets(0, 0, 0);
    InitOperationModifiers();
    GameController::ResetInputReadings();
}

GameController::~GameController() = default;

string GameController::GetControllerInterfaceName() const
{
    return "GameController";
}

void GameController::DumpControllerInfo(ostream &out, unsigned int tabs) const
{
    for (unsigned int axis = 0; axis < s_numAxes; ++axis)
        DumpLine(out, tabs, s_axisLabels[axis], hasAxis_[axis]);
    DumpLine(out, tabs, "NumSliders: ", numSliders_);
    DumpLine(out, tabs, "NumPOVHats: ", numPOVHats_);
    DumpLine(out, tabs, "NumButtons: ", numButtons_);
}

void GameController::ResetInputReadings()
{
    ResetAxisStates();
    ResetSliderStates();
    ResetPOVHatStates();
    ResetButtonStates();
}

void GameController::PreSampleUpdate()
{
    if (IsSampledAsync())
        ClearCurrentButtonStates();
    else
        ShiftButtonStates();
}

void GameController::PostSampleUpdate() {}

void GameController::OnBeginAsyncSampleRead() {}

void GameController::OnEndAsyncSampleRead()
{
    ShiftCopyButtonStates();
}

void GameController::SetAxisProperties(eAxis axis, float deadZone, float saturation)
{
    SetProperties(axisDeadZones_[axis], axisSaturations_[axis], deadZone, saturation);
    OnOperationModifiersChanged();
}

void GameController::SetSliderProperties(unsigned int slider, float deadZone, float saturation)
{
    SetProperties(sliderDeadZones_[slider], sliderSaturations_[slider], deadZone, saturation);
    OnOperationModifiersChanged();
}

void GameController::ResetAxisProperties()
{
    for (unsigned int axis = 0; axis < s_numAxes; ++axis)
        SetAxisProperties(static_cast<eAxis>(axis), s_defaultDeadZone, s_defaultSaturation);
}

void GameController::ResetSliderProperties()
{
    for (unsigned int slider = 0; slider < numSliders_; ++slider)
        SetSliderProperties(slider, s_defaultDeadZone, s_defaultSaturation);
}

void GameController::ReportHardwareCaps_Axes(bool x, bool y, bool z, bool rx, bool ry, bool rz)
{
    bool const present[s_numAxes] = {x, y, z, rx, ry, rz};
    std::copy(std::begin(present), std::end(present), hasAxis_);
}

void GameController::ReportHardwareCaps_Gadgets(unsigned int sliders, unsigned int hats, unsigned int buttons)
{
    numSliders_ = std::min(sliders, s_maxSliders);
    numPOVHats_ = std::min(hats, s_maxPOVHats);
    numButtons_ = std::min(buttons, s_maxButtons);
}

float GameController::ApplyModifiers(float position, float deadZone, float saturation)
{
    float const way = std::fabs(position);
    if (way <= deadZone)
        return 0.0f;
    return std::copysign(way >= saturation ? 1.0f : (way - deadZone) / (saturation - deadZone), position);
}

void GameController::InitOperationModifiers()
{
    Fill(axisSigns_, 1.0f);
    Fill(sliderSigns_, 1.0f);
    Fill(axisDeadZones_, s_defaultDeadZone);
    Fill(sliderDeadZones_, s_defaultDeadZone);
    Fill(axisSaturations_, s_defaultSaturation);
    Fill(sliderSaturations_, s_defaultSaturation);
}

void GameController::ResetAxisStates()
{
    Fill(axisPositions_, 0.0f);
}

void GameController::ResetSliderStates()
{
    Fill(sliderPositions_, 0.0f);
}

void GameController::ResetPOVHatStates()
{
    Fill(povHatPositions_, -1.0f);
}

} // namespace quillmarsh
