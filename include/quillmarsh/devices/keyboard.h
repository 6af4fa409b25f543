// Keyboard, the controller that text input comes from.
#ifndef QUILLMARSH_DEVICES_KEYBOARD_H
#define QUILLMARSH_DEVICES_KEYBOARD_H

#include <quillmarsh/devices/buttonstates.h>
#include <quillmarsh/framework/hidcontroller.h>
#include <quillmarsh/platform/inputcodes.h>

namespace quillmarsh
{

/// Key that changes the meaning of other keys. The left and the right one count as the same.
enum eKeyModifier : unsigned int
{
    e_key_modifier_shift = 0,
    e_key_modifier_control,
    e_key_modifier_alt
};

/// Name of a key; "BadKeyCode" for any other value. Any thread.
QUILLMARSH_API string GetKeyName(eKey key);
/// Name of a modifier; empty for any other value. Any thread.
QUILLMARSH_API string GetKeyModifierName(eKeyModifier modifier);

/// States of the keys of a keyboard, with their edges and counts.
///
/// A concrete keyboard marks the pressed keys between PreSampleUpdate() and PostSampleUpdate(). In synchronous mode an
/// edge lasts from one sample to the next; in asynchronous mode it lasts for a whole read, and compares with the
/// previous read. Read a keyboard, and enable the mapping to characters, under a sentry of its device.
class QUILLMARSH_API Keyboard : public HIDController
{
public:
    ~Keyboard() override;

    /// "Keyboard".
    string GetControllerInterfaceName() const override;
    void DumpControllerInfo(ostream &out, unsigned int tabs) const override;
    void ResetInputReadings() override;
    void PreSampleUpdate() override;
    void PostSampleUpdate() override;
    void OnBeginAsyncSampleRead() override;
    void OnEndAsyncSampleRead() override;

    /// Gives the character of a key under the present modifiers. Returns false if the key has none.
    virtual bool MapKeyToCharacter(eKey key, char &character) = 0;
    /// Called when the mapping to characters was enabled or disabled.
    virtual void OnCharacterMappingChanged() = 0;

    /// True for the keyboard of the system, false for any other one.
    bool IsSystemKeyboard() const { return isSystemKeyboard_; }

    /// @name Mapping of keys to characters
    /// Disabled at first. A keyboard may save the work while the mapping is disabled.
    /// @{
    void EnableCharacterMapping(bool enable);
    bool IsEnabledCharacterMapping() const { return isCharacterMappingEnabled_; }
    /// @}

    /// @name Keys
    /// Each returns 0 for no. `key` is at most e_key_none.
    /// @{
    unsigned char KeyPressed(eKey key) const { return keyStates_.Pressed(key); }
    /// Pressed now, and not in the previous sample.
    unsigned char KeyDown(eKey key) const { return keyStates_.Down(key); }
    /// Pressed in the previous sample, and not now.
    unsigned char KeyUp(eKey key) const { return keyStates_.Up(key); }
    /// @}

    /// @name Any key
    /// Counts of the keys in each of these states, and tests for at least one.
    /// @{
    bool KeyPressed() const { return numKeysPressed_ > 0; }
    bool KeyDown() const { return numKeysDown_ > 0; }
    bool KeyUp() const { return numKeysUp_ > 0; }
    unsigned int NumKeysPressed() const { return numKeysPressed_; }
    unsigned int NumKeysDown() const { return numKeysDown_; }
    unsigned int NumKeysUp() const { return numKeysUp_; }
    /// @}

    /// @name Modifiers
    /// Derived from the keys once per sample or read. The first returns 0 for no.
    /// @{
    unsigned char KeyModifierPressed(eKeyModifier modifier) const
    {
        return keyModifierCache_[modifier] & ButtonStates<1>::s_current;
    }
    bool KeyModifierPressed() const { return numKeyModifiersPressed_ > 0; }
    unsigned int NumKeyModifiersPressed() const { return numKeyModifiersPressed_; }
    /// @}

protected:
    /// `isSystemKeyboard` is what IsSystemKeyboard() returns.
    explicit Keyboard(bool isSystemKeyboard);

    /// @name Writing of samples
    /// Marks a key as pressed in the current sample, or as not pressed.
    /// @{
    void SetKeyPressed(eKey key) { keyStates_.SetPressed(key); }
    void ResetKeyPressed(eKey key) { keyStates_.ResetPressed(key); }
    /// @}

    /// @name Steps of the hooks
    /// Parts of the operations above; see ButtonStates.
    /// @{
    void ResetKeyStates() { keyStates_.Reset(); }
    void ClearCurrentKeyStates() { keyStates_.ClearCurrent(); }
    void ShiftKeyStates() { keyStates_.Shift(); }
    void ShiftCopyKeyStates() { keyStates_.ShiftCopy(); }
    /// Clears the modifiers; ResetNumKeysCache() clears their count.
    void ResetKeyModifierCache();
    /// Derives modifiers and their count from the keys.
    void UpdateKeyModifierCache();
    void ResetNumKeysCache();
    void UpdateNumKeysCache();
    /// @}

private:
    static constexpr unsigned int s_numKeyModifiers = 4;

    bool isSystemKeyboard_;
    bool isCharacterMappingEnabled_ = false;
    ButtonStates<e_key_none + 1> keyStates_;
    unsigned char keyModifierCache_[s_numKeyModifiers];
    unsigned int numKeyModifiersPressed_;
    unsigned int numKeysPressed_;
    unsigned int numKeysDown_;
    unsigned int numKeysUp_;
};

} // namespace quillmarsh

#endif
