// Keyboard, the controller that text input comes from.
#ifndef QUILLMARSH_DEVICES_KEYBOARD_H
#define QUILLMARSH_DEVICES_KEYBOARD_H

#include <quillmarsh/devices/buttonstates.h>
#include <quillmarsh/framework/hidcontroller.h>
#include <quillmarsh/platform/inputcodes.h>

namespace quillmarsh
{

/// Key that changes the meaning of others; the left and the right one count as the same.
enum eKeyModifier : unsigned int
{
    e_key_modifier_shift = 0,
    e_key_modifier_control,
    e_key_modifier_alt
};

/// Name of a key, or "BadKeyCode". Any thread.
QUILLMARSH_API string GetKeyName(eKey key);
/// Name of a modifier, or an empty text. Any thread.
QUILLMARSH_API string GetKeyModifierName(eKeyModifier modifier);

/// States of the keys of a keyboard, with their edges and counts.
///
/// A concrete keyboard marks the keys that are down between PreSampleUpdate() and PostSampleUpdate(). In synchronous
/// mode an edge lasts from one sample to the next; in asynchronous mode it lasts for a whole read, and compares with
/// the read before. Read it, and enable the mapping to characters, under a sentry of its device.
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

    /// Writes the character of a key under the present modifiers; false if the key has none.
    virtual bool MapKeyToCharacter(eKey key, char &character) = 0;
    /// Told when the mapping to characters was enabled or disabled.
    virtual void OnCharacterMappingChanged() = 0;

    /// Whether this is the keyboard of the system, and not one beside it.
    bool IsSystemKeyboard() const { return isSystemKeyboard_; }

    /// @name Mapping of keys to characters
    /// A keyboard may save the work while nobody wants characters.
    /// @{
    void EnableCharacterMapping(bool enable);
    bool IsEnabledCharacterMapping() const { return isCharacterMappingEnabled_; }
    /// @}

    /// @name Keys
    /// Non-zero for yes. `key` is at most e_key_none.
    /// @{
    unsigned char KeyPressed(eKey key) const { return keyStates_.Pressed(key); }
    /// Pressed now, and not in the previous sample.
    unsigned char KeyDown(eKey key) const { return keyStates_.Down(key); }
    /// Pressed in the previous sample, and not now.
    unsigned char KeyUp(eKey key) const { return keyStates_.Up(key); }
    /// @}

    /// @name Any key
    /// @{
    bool KeyPressed() const { return numKeysPressed_ > 0; }
    bool KeyDown() const { return numKeysDown_ > 0; }
    bool KeyUp() const { return numKeysUp_ > 0; }
    unsigned int NumKeysPressed() const { return numKeysPressed_; }
    unsigned int NumKeysDown() const { return numKeysDown_; }
    unsigned int NumKeysUp() const { return numKeysUp_; }
    /// @}

    /// @name Modifiers
    /// @{
    unsigned char KeyModifierPressed(eKeyModifier modifier) const
    {
        return keyModifierCache_[modifier] & ButtonStates<1>::s_current;
    }
    bool KeyModifierPressed() const { return numKeyModifiersPressed_ > 0; }
    unsigned int NumKeyModifiersPressed() const { return numKeyModifiersPressed_; }
    /// @}

protected:
    explicit Keyboard(bool isSystemKeyboard);

    /// @name Writing of samples
    /// @{
    void SetKeyPressed(eKey key) { keyStates_.SetPressed(key); }
    void ResetKeyPressed(eKey key) { keyStates_.ResetPressed(key); }
    /// @}

    /// @name Steps of the hooks, see ButtonStates
    /// @{
    void ResetKeyStates() { keyStates_.Reset(); }
    void ClearCurrentKeyStates() { keyStates_.ClearCurrent(); }
    void ShiftKeyStates() { keyStates_.Shift(); }
    void ShiftCopyKeyStates() { keyStates_.ShiftCopy(); }
    /// Clears the modifiers; their count goes with ResetNumKeysCache().
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
