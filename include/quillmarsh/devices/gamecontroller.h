// GameController, the controller of joysticks, game pads and the like.
#ifndef QUILLMARSH_DEVICES_GAMECONTROLLER_H
#define QUILLMARSH_DEVICES_GAMECONTROLLER_H

#include <quillmarsh/devices/buttonstates.h>
#include <quillmarsh/framework/hidcontroller.h>

namespace quillmarsh
{

/// Axes, sliders, hats and buttons of a joystick or game pad.
///
/// Buttons behave like the keys of a Keyboard; all other readings are levels. Dead zones and saturations are stored
/// here; the hardware or the concrete controller applies them. Indexes are not tested: the counts that the hardware
/// reported may be exceeded, but not the room for 8 sliders, 4 hats and 32 buttons. Read a game controller, and change
/// its modifiers, under a sentry of its device.
class QUILLMARSH_API GameController : public HIDController
{
public:
    static constexpr unsigned int s_numAxes = 6;
    static constexpr unsigned int s_maxSliders = 8;
    static constexpr unsigned int s_maxPOVHats = 4;
    static constexpr unsigned int s_maxButtons = 32;

    /// Axis. The last three are rotations about the first three.
    enum eAxis : unsigned int
    {
        AxisX = 0,
        AxisY,
        AxisZ,
        AxisRX,
        AxisRY,
        AxisRZ
    };

    ~GameController() override;

    /// "GameController".
    string GetControllerInterfaceName() const override;
    void DumpControllerInfo(ostream &out, unsigned int tabs) const override;
    void ResetInputReadings() override;
    void PreSampleUpdate() override;
    /// Without effect.
    void PostSampleUpdate() override;
    /// Without effect.
    void OnBeginAsyncSampleRead() override;
    void OnEndAsyncSampleRead() override;

    /// Called by each change of a dead zone and saturation, to pass them on to the hardware.
    virtual void OnOperationModifiersChanged() = 0;

    /// @name Capabilities
    /// As the hardware reported them; none at first.
    /// @{
    bool HasAxis(eAxis axis) const { return hasAxis_[axis]; }
    unsigned int GetNumSliders() const { return numSliders_; }
    unsigned int GetNumPOVHats() const { return numPOVHats_; }
    unsigned int GetNumButtons() const { return numButtons_; }
    /// @}

    /// @name Reversal
    /// Off at first. A change takes effect with the next reading.
    /// @{
    void SetAxisReverse(eAxis axis, bool reverse) { axisSigns_[axis] = reverse ? -1.0f : 1.0f; }
    void SetSliderReverse(unsigned int slider, bool reverse) { sliderSigns_[slider] = reverse ? -1.0f : 1.0f; }
    bool IsAxisReversed(eAxis axis) const { return axisSigns_[axis] < 0.0f; }
    bool IsSliderReversed(unsigned int slider) const { return sliderSigns_[slider] < 0.0f; }
    /// @}

    /// @name Dead zones and saturations
    /// Both are parts of the way from the centre to the end. Up to the dead zone, which is 0 to 1, a position counts as
    /// the centre; from the saturation, which is at least the dead zone and at most 1, as the end. NaN counts as the
    /// default, 0 and 1.
    /// @{
    void SetAxisProperties(eAxis axis, float deadZone, float saturation);
    void SetSliderProperties(unsigned int slider, float deadZone, float saturation);
    /// Sets 0 and 1 for all axes.
    void ResetAxisProperties();
    /// Sets 0 and 1 for the sliders that the hardware reported.
    void ResetSliderProperties();
    float GetAxisDeadZone(eAxis axis) const { return axisDeadZones_[axis]; }
    float GetAxisSaturation(eAxis axis) const { return axisSaturations_[axis]; }
    float GetSliderDeadZone(unsigned int slider) const { return sliderDeadZones_[slider]; }
    float GetSliderSaturation(unsigned int slider) const { return sliderSaturations_[slider]; }
    /// @}

    /// @name Positions
    /// As the concrete controller reported them, with the reversal applied.
    /// @{
    float GetAxisPosition(eAxis axis) const { return axisPositions_[axis]; }
    float GetSliderPosition(unsigned int slider) const { return sliderPositions_[slider]; }
    /// Direction of a hat, as the concrete controller reports it; negative at rest.
    float GetPOVHatPosition(unsigned int hat) const { return povHatPositions_[hat]; }
    bool IsPOVHatCentered(unsigned int hat) const { return povHatPositions_[hat] < 0.0f; }
    /// @}

    /// @name Buttons
    /// Each returns 0 for no.
    /// @{
    unsigned char ButtonPressed(unsigned int button) const { return buttonStates_.Pressed(button); }
    /// Pressed now, and not in the previous sample.
    unsigned char ButtonDown(unsigned int button) const { return buttonStates_.Down(button); }
    /// Pressed in the previous sample, and not now.
    unsigned char ButtonUp(unsigned int button) const { return buttonStates_.Up(button); }
    /// @}

protected:
    GameController();

    /// @name Capabilities
    /// For the concrete controller, before its first sample.
    /// @{
    void ReportHardwareCaps_Axes(bool x, bool y, bool z, bool rx, bool ry, bool rz);
    /// Counts above the room are cut.
    void ReportHardwareCaps_Gadgets(unsigned int sliders, unsigned int hats, unsigned int buttons);
    /// @}

    /// @name Writing of samples
    /// The reversal is applied here.
    /// @{
    void SetAxisPosition(eAxis axis, float position) { axisPositions_[axis] = position * axisSigns_[axis]; }
    void SetSliderPosition(unsigned int slider, float position)
    {
        sliderPositions_[slider] = position * sliderSigns_[slider];
    }
    /// Sets the direction of a hat, which is never reversed; negative at rest.
    void SetPOVHatPosition(unsigned int hat, float position) { povHatPositions_[hat] = position; }
    void SetButtonPressed(unsigned int button) { buttonStates_.SetPressed(button); }
    /// Applies a dead zone and a saturation to a position from -1 to 1: what lies between them is stretched to the way
    /// from the centre to the end. For concrete controllers whose hardware does not do it.
    static float ApplyModifiers(float position, float deadZone, float saturation);
    /// @}

    /// @name Steps of the hooks
    /// Parts of the operations above; for buttons see ButtonStates.
    /// @{

    /// Reversals off, dead zones 0, saturations 1, without OnOperationModifiersChanged().
    void InitOperationModifiers();
    void ResetAxisStates();
    void ResetSliderStates();
    void ResetPOVHatStates();
    void ResetButtonStates() { buttonStates_.Reset(); }
    void ClearCurrentButtonStates() { buttonStates_.ClearCurrent(); }
    void ShiftButtonStates() { buttonStates_.Shift(); }
    void ShiftCopyButtonStates() { buttonStates_.ShiftCopy(); }

    /// @}

private:
    bool hasAxis_[s_numAxes];
    unsigned int numSliders_;
    unsigned int numPOVHats_;
    unsigned int numButtons_;
    float axisSigns_[s_numAxes];
    float sliderSigns_[s_maxSliders];
    float axisDeadZones_[s_numAxes];
    float sliderDeadZones_[s_maxSliders];
    float axisSaturations_[s_numAxes];
    float sliderSaturations_[s_maxSliders];
    float axisPositions_[s_numAxes];
    float sliderPositions_[s_maxSliders];
    float povHatPositions_[s_maxPOVHats];
    ButtonStates<s_maxButtons> buttonStates_;
};

} // namespace quillmarsh

#endif
