// Keyboard, the controller that text input comes from, and the codes of its keys.
#ifndef QUILLMARSH_DEVICES_KEYBOARD_H
#define QUILLMARSH_DEVICES_KEYBOARD_H

#include <quillmarsh/devices/buttonstates.h>
#include <quillmarsh/framework/hidcontroller.h>

namespace quillmarsh
{

/// Key, named by what stands on it in the layout of the United States.
enum eKey : unsigned int
{
    e_key_escape = 0,
    e_key_f1,
    e_key_f2,
    e_key_f3,
    e_key_f4,
    e_key_f5,
    e_key_f6,
    e_key_f7,
    e_key_f8,
    e_key_f9,
    e_key_f10,
    e_key_f11,
    e_key_f12,
    e_key_grave_accent,
    e_key_1,
    e_key_2,
    e_key_3,
    e_key_4,
    e_key_5,
    e_key_6,
    e_key_7,
    e_key_8,
    e_key_9,
    e_key_0,
    e_key_minus,
    e_key_equals,
    e_key_backspace,
    e_key_tab,
    e_key_q,
    e_key_w,
    e_key_e,
    e_key_r,
    e_key_t,
    e_key_y,
    e_key_u,
    e_key_i,
    e_key_o,
    e_key_p,
    e_key_l_bracket,
    e_key_r_bracket,
    e_key_enter,
    e_key_caps_lock,
    e_key_a,
    e_key_s,
    e_key_d,
    e_key_f,
    e_key_g,
    e_key_h,
    e_key_j,
    e_key_k,
    e_key_l,
    e_key_semicolon,
    e_key_apostrophe,
    e_key_backslash,
    e_key_l_shift,
    e_key_oem102,
    e_key_z,
    e_key_x,
    e_key_c,
    e_key_v,
    e_key_b,
    e_key_n,
    e_key_m,
    e_key_comma,
    e_key_period,
    e_key_slash,
    e_key_r_shift,
    e_key_l_control,
    e_key_l_win,
    e_key_l_alt,
    e_key_space,
    e_key_r_alt,
    e_key_r_win,
    e_key_app_menu,
    e_key_r_control,
    e_key_print_screen,
    e_key_scroll_lock,
    e_key_pause,
    e_key_insert,
    e_key_delete,
    e_key_home,
    e_key_end,
    e_key_page_up,
    e_key_page_down,
    e_key_arrow_up,
    e_key_arrow_down,
    e_key_arrow_left,
    e_key_arrow_right,
    e_key_num_lock,
    e_key_num_divide,
    e_key_num_multiply,
    e_key_num_subtract,
    e_key_num_add,
    e_key_num_enter,
    e_key_num_decimal,
    e_key_num_0,
    e_key_num_1,
    e_key_num_2,
    e_key_num_3,
    e_key_num_4,
    e_key_num_5,
    e_key_num_6,
    e_key_num_7,
    e_key_num_8,
    e_key_num_9,
    /// Number of keys; as a key it means none.
    e_key_none
};

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
