// Mouse, the controller that pointer input comes from.
#ifndef QUILLMARSH_DEVICES_MOUSE_H
#define QUILLMARSH_DEVICES_MOUSE_H

#include <quillmarsh/devices/buttonstates.h>
#include <quillmarsh/framework/hidcontroller.h>
#include <quillmarsh/platform/inputcodes.h>

namespace quillmarsh
{

/// Position, movement, wheel and buttons of a mouse.
///
/// In absolute mode the mouse tracks a position, in relative mode only movements count. In synchronous mode movements
/// and wheel are those of the last sample; in asynchronous mode they add up from read to read. Buttons behave like the
/// keys of a Keyboard. A concrete mouse writes its samples between PreSampleUpdate() and PostSampleUpdate(), and
/// applies the modifiers of its mode to movements. Read a mouse, and change its modes and modifiers, under a sentry of
/// its device.
class QUILLMARSH_API Mouse : public HIDController
{
public:
    ~Mouse() override;

    /// "Mouse".
    string GetControllerInterfaceName() const override;
    void DumpControllerInfo(ostream &out, unsigned int tabs) const override;
    void ResetInputReadings() override;
    void PreSampleUpdate() override;
    void PostSampleUpdate() override;
    void OnBeginAsyncSampleRead() override;
    void OnEndAsyncSampleRead() override;

    /// Called by each ActivateRelativeMode().
    virtual void OnRelativeModeChanged() = 0;
    /// Called by each ActivateSyncWithSystemCursor().
    virtual void OnSyncWithSystemCursorChanged() = 0;

    /// True for the mouse of the system, false for any other one.
    bool IsSystemMouse() const { return isSystemMouse_; }

    /// @name Cursor of the system
    /// While synchronisation is active, which it is at first, a mouse that supports it moves the system's cursor or
    /// follows it.
    /// @{
    bool CanDisplaySystemCursor() const { return canDisplaySystemCursor_; }
    bool CanSyncWithSystemCursor() const { return canSyncWithSystemCursor_; }
    void ActivateSyncWithSystemCursor(bool activate);
    bool IsActiveSyncWithSystemCursor() const { return isSyncWithSystemCursorActive_; }
    /// @}

    /// @name Relative mode
    /// @{

    /// Switches between relative and absolute mode. Clears position and movements, also when the mode stays the same.
    void ActivateRelativeMode(bool activate);
    /// True in relative mode; false at first.
    bool IsActiveRelativeMode() const { return isRelativeModeActive_; }
    /// Sets the factors of movements; 1 at first. NaN counts as 1.
    void SetRelativeModeSensitivity(float x, float y);
    /// Gives the factors of movements.
    void GetRelativeModeSensitivity(float &x, float &y) const;

    /// @}
    /// @name Absolute mode
    /// Each level of acceleration doubles movements that are above its threshold in x or in y.
    /// @{

    /// Sets the factor of movements, at least 0. NaN counts as the default, 1.
    void SetAbsoluteModeSpeed(float speed);
    /// Factor of movements.
    float GetAbsoluteModeSpeed() const { return absoluteModeSpeed_; }
    /// Sets the thresholds. The first is at least 0, the second at least the first. NaN counts as the default, 64 and
    /// 256.
    void SetAbsoluteModeAccelerationThresholds(float first, float second);
    /// Gives the thresholds.
    void GetAbsoluteModeAccelerationThresholds(float &first, float &second) const;
    /// Sets how many levels are used, from 0, which is the default, to 2.
    void SetAbsoluteModeAccelerationLevel(unsigned int level);
    /// How many levels are used.
    unsigned int GetAbsoluteModeAccelerationLevel() const { return absoluteModeAccelerationLevel_; }

    /// @}
    /// @name Reversal
    /// Of movements and wheel; off at first. It does not change the position.
    /// @{
    void SetReverseDeltaX(bool reverse) { deltaSignX_ = reverse ? -1 : 1; }
    void SetReverseDeltaY(bool reverse) { deltaSignY_ = reverse ? -1 : 1; }
    void SetReverseDeltaWheel(bool reverse) { deltaSignWheel_ = reverse ? -1 : 1; }
    bool IsReversedDeltaX() const { return deltaSignX_ < 0; }
    bool IsReversedDeltaY() const { return deltaSignY_ < 0; }
    bool IsReversedDeltaWheel() const { return deltaSignWheel_ < 0; }
    /// @}

    /// @name Position
    /// In pixels of the client area of the application's window.
    /// @{
    bool IsPositionInsideAppWindowClientArea() const { return isPositionInsideClientArea_; }
    int GetPositionX() const { return positionX_; }
    int GetPositionY() const { return positionY_; }
    /// @}

    /// @name Movements
    /// Of the last sample, or since the last read in asynchronous mode.
    /// @{
    int GetDeltaX() const { return deltaX_; }
    int GetDeltaY() const { return deltaY_; }
    int GetDeltaWheel() const { return deltaWheel_; }
    /// @}

    /// @name Buttons
    /// Each returns 0 for no.
    /// @{
    unsigned char ButtonPressed(eMouseButton button) const { return buttonStates_.Pressed(button); }
    /// Pressed now, and not in the previous sample.
    unsigned char ButtonDown(eMouseButton button) const { return buttonStates_.Down(button); }
    /// Pressed in the previous sample, and not now.
    unsigned char ButtonUp(eMouseButton button) const { return buttonStates_.Up(button); }
    /// @}

    /// @name Any button
    /// Counts of the buttons in each of these states, and tests for at least one.
    /// @{
    bool ButtonPressed() const { return numButtonsPressed_ > 0; }
    bool ButtonDown() const { return numButtonsDown_ > 0; }
    bool ButtonUp() const { return numButtonsUp_ > 0; }
    unsigned int NumButtonsPressed() const { return numButtonsPressed_; }
    unsigned int NumButtonsDown() const { return numButtonsDown_; }
    unsigned int NumButtonsUp() const { return numButtonsUp_; }
    /// @}

protected:
    /// `isSystemMouse` is what IsSystemMouse() returns.
    explicit Mouse(bool isSystemMouse);

    /// @name Capabilities
    /// Both are false at first.
    /// @{
    void SetCanDisplaySystemCursor(bool can) { canDisplaySystemCursor_ = can; }
    void SetCanSyncWithSystemCursor(bool can) { canSyncWithSystemCursor_ = can; }
    /// @}

    /// @name Writing of samples
    /// Reset...() replaces movements, Accum...() adds to them. The reversal is applied here.
    /// @{
    void SetPosition(int x, int y, bool insideClientArea);
    void ResetDelta(int x, int y);
    void AccumDelta(int x, int y);
    void ResetWheelDelta(int delta);
    void AccumWheelDelta(int delta);
    void SetButtonPressed(eMouseButton button) { buttonStates_.SetPressed(button); }
    /// @}

    /// @name Modifiers
    /// Each applies the settings of its mode to a movement.
    /// @{
    void ApplyAbsoluteModeModifiers(float deltaX, float deltaY, float &outX, float &outY) const;
    void ApplyRelativeModeModifiers(float deltaX, float deltaY, float &outX, float &outY) const;
    /// @}

    /// @name Steps of the hooks
    /// Parts of the operations above; see ButtonStates.
    /// @{
    void ResetAxisStates();
    void ResetButtonStates() { buttonStates_.Reset(); }
    void ClearCurrentButtonStates() { buttonStates_.ClearCurrent(); }
    void ShiftButtonStates() { buttonStates_.Shift(); }
    void ShiftCopyButtonStates() { buttonStates_.ShiftCopy(); }
    void ResetNumButtonsCache();
    void UpdateNumButtonsCache();
    /// @}

private:
    static constexpr unsigned int s_numButtons = 6;
    static constexpr unsigned int s_numAccelerationLevels = 2;

    bool isSystemMouse_;
    bool canDisplaySystemCursor_ = false;
    bool canSyncWithSystemCursor_ = false;
    bool isSyncWithSystemCursorActive_ = true;
    bool isRelativeModeActive_ = false;
    float relativeModeSensitivityX_;
    float relativeModeSensitivityY_;
    float absoluteModeSpeed_;
    float absoluteModeAccelerationThresholds_[s_numAccelerationLevels];
    unsigned int absoluteModeAccelerationLevel_;
    int deltaSignX_;
    int deltaSignY_;
    int deltaSignWheel_;
    bool isPositionInsideClientArea_;
    int positionX_;
    int positionY_;
    int deltaX_;
    int deltaY_;
    int deltaWheel_;
    ButtonStates<s_numButtons> buttonStates_;
    unsigned int numButtonsPressed_;
    unsigned int numButtonsDown_;
    unsigned int numButtonsUp_;
};

} // namespace quillmarsh

#endif
