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
/// In absolute mode the mouse tracks a position, in relative mode only movements count. Movements and wheel count per
/// sample in synchronous mode, and add up from read to read in asynchronous mode; buttons behave as the keys of a
/// Keyboard do. A concrete mouse writes between PreSampleUpdate() and PostSampleUpdate(), and passes movements through
/// the modifiers of its mode. Read it, and change its modes and modifiers, under a sentry of its device.
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

    /// Told of each ActivateRelativeMode().
    virtual void OnRelativeModeChanged() = 0;
    /// Told of each ActivateSyncWithSystemCursor().
    virtual void OnSyncWithSystemCursorChanged() = 0;

    /// Whether this is the mouse of the system, and not one beside it.
    bool IsSystemMouse() const { return isSystemMouse_; }

    /// @name Cursor of the system
    /// While synchronisation is active, a mouse that can do so moves the system's cursor or follows it.
    /// @{
    bool CanDisplaySystemCursor() const { return canDisplaySystemCursor_; }
    bool CanSyncWithSystemCursor() const { return canSyncWithSystemCursor_; }
    void ActivateSyncWithSystemCursor(bool activate);
    bool IsActiveSyncWithSystemCursor() const { return isSyncWithSystemCursorActive_; }
    /// @}

    /// @name Relative mode
    /// @{

    /// Clears position and movements, also when the mode stays the same.
    void ActivateRelativeMode(bool activate);
    bool IsActiveRelativeMode() const { return isRelativeModeActive_; }
    /// Factors of movements.
    void SetRelativeModeSensitivity(float x, float y);
    void GetRelativeModeSensitivity(float &x, float &y) const;

    /// @}
    /// @name Absolute mode
    /// Each level of acceleration doubles movements that are above its threshold in either direction.
    /// @{

    /// Factor of movements, at least 0. NaN counts as the default, 1.
    void SetAbsoluteModeSpeed(float speed);
    float GetAbsoluteModeSpeed() const { return absoluteModeSpeed_; }
    /// The first is at least 0, the second at least the first. NaN counts as the default, 64 and 256.
    void SetAbsoluteModeAccelerationThresholds(float first, float second);
    void GetAbsoluteModeAccelerationThresholds(float &first, float &second) const;
    /// From 0, which is none, to 2.
    void SetAbsoluteModeAccelerationLevel(unsigned int level);
    unsigned int GetAbsoluteModeAccelerationLevel() const { return absoluteModeAccelerationLevel_; }

    /// @}
    /// @name Reversal of movements and wheel; the position stays as it is
    /// @{
    void SetReverseDeltaX(bool reverse) { deltaSignX_ = reverse ? -1 : 1; }
    void SetReverseDeltaY(bool reverse) { deltaSignY_ = reverse ? -1 : 1; }
    void SetReverseDeltaWheel(bool reverse) { deltaSignWheel_ = reverse ? -1 : 1; }
    bool IsReversedDeltaX() const { return deltaSignX_ < 0; }
    bool IsReversedDeltaY() const { return deltaSignY_ < 0; }
    bool IsReversedDeltaWheel() const { return deltaSignWheel_ < 0; }
    /// @}

    /// @name Position, in pixels of the application window's client area
    /// @{
    bool IsPositionInsideAppWindowClientArea() const { return isPositionInsideClientArea_; }
    int GetPositionX() const { return positionX_; }
    int GetPositionY() const { return positionY_; }
    /// @}

    /// @name Movements
    /// @{
    int GetDeltaX() const { return deltaX_; }
    int GetDeltaY() const { return deltaY_; }
    int GetDeltaWheel() const { return deltaWheel_; }
    /// @}

    /// @name Buttons
    /// Non-zero for yes.
    /// @{
    unsigned char ButtonPressed(eMouseButton button) const { return buttonStates_.Pressed(button); }
    /// Pressed now, and not in the previous sample.
    unsigned char ButtonDown(eMouseButton button) const { return buttonStates_.Down(button); }
    /// Pressed in the previous sample, and not now.
    unsigned char ButtonUp(eMouseButton button) const { return buttonStates_.Up(button); }
    /// @}

    /// @name Any button
    /// @{
    bool ButtonPressed() const { return numButtonsPressed_ > 0; }
    bool ButtonDown() const { return numButtonsDown_ > 0; }
    bool ButtonUp() const { return numButtonsUp_ > 0; }
    unsigned int NumButtonsPressed() const { return numButtonsPressed_; }
    unsigned int NumButtonsDown() const { return numButtonsDown_; }
    unsigned int NumButtonsUp() const { return numButtonsUp_; }
    /// @}

protected:
    explicit Mouse(bool isSystemMouse);

    /// @name Capabilities
    /// @{
    void SetCanDisplaySystemCursor(bool can) { canDisplaySystemCursor_ = can; }
    void SetCanSyncWithSystemCursor(bool can) { canSyncWithSystemCursor_ = can; }
    /// @}

    /// @name Writing of samples
    /// The reversal is applied here.
    /// @{
    void SetPosition(int x, int y, bool insideClientArea);
    void ResetDelta(int x, int y);
    void AccumDelta(int x, int y);
    void ResetWheelDelta(int delta);
    void AccumWheelDelta(int delta);
    void SetButtonPressed(eMouseButton button) { buttonStates_.SetPressed(button); }
    /// @}

    /// @name Modifiers, one for each mode
    /// @{
    void ApplyAbsoluteModeModifiers(float deltaX, float deltaY, float &outX, float &outY) const;
    void ApplyRelativeModeModifiers(float deltaX, float deltaY, float &outX, float &outY) const;
    /// @}

    /// @name Steps of the hooks, see ButtonStates
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
