// The keyboard's part of a frame, and the keyboard focus.
#ifndef QUILLMARSH_SOURCE_GUI_MANAGER_KEYBOARD_H
#define QUILLMARSH_SOURCE_GUI_MANAGER_KEYBOARD_H

#include "source/gui/manager/mousebuttons.h"

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_watch.h>
#include <quillmarsh/platform/inputcodes.h>

namespace quillmarsh
{
class Keyboard;
}

namespace quillmarsh::gui::manager_parts
{

struct Parts;

/// Keyboard focus. Sends Message_KeyboardQueryFocus and Message_KeyboardFocus; asks Modality and CommandMode; sets
/// MouseDispatch::focusRequest.
class KeyboardFocus : NoCopy
{
public:
    explicit KeyboardFocus(Parts &parts) : parts_(parts) {}

    /// Sets the first target; for Parts::Start().
    void Start(Component &nullTarget) { target_ = &nullTarget; }

    /// Asks `target` and its ancestors, and moves the focus to the first that wants it.
    void ChangeTarget(Component &target, bool byMouse, eMouseButton button);
    bool Request(Component &component);
    /// Acts only on the holder.
    void Release(Component &component);
    /// Passes the focus on if its target is disabled or hidden.
    void Repair();
    /// Switches the keyboard's characters as the target needs them; after a change of target or keyboard.
    void SetupKeyboard();
    /// The null target takes the place of a deleted target, without messages.
    void OnDeleted(Component &component);

    /// Never null.
    Component &GetTarget() const { return *target_; }
    bool NeedsCharacters() const { return needsCharacters_; }

private:
    /// What the components of a branch answered.
    struct Answer
    {
        /// First one that wants the focus; null if none does.
        Watch<Component> wanting;
        bool needsCharacters = false;
    };

    Answer Ask(Component &target, bool byMouse, eMouseButton button);
    /// Takes the focus from the target and gives it to another one, unless the target moves it elsewhere when it is told
    /// of the loss, which it is once.
    void MoveTo(Component &newTarget, bool needsCharacters);

    Parts &parts_;
    Component *target_ = nullptr;
    bool needsCharacters_ = false;
    /// The target has been told of the loss.
    bool isLeaving_ = false;
};

/// Key messages with their repeats. Asks KeyboardFocus for the target, and CycleQueue for its key.
class KeyboardDispatch : NoCopy
{
public:
    explicit KeyboardDispatch(Parts &parts) : parts_(parts) {}

    /// The caller holds the sample sentry of the keyboard.
    void Dispatch(Keyboard &keyboard);
    void ResetRepeat();

    RepeatTimes repeatTimes;

private:
    /// Key with its character.
    struct KeyEvent
    {
        eKey key;
        char character;
    };

    /// Reads what went down and up into the arrays, in ascending order of the keys.
    void Collect(Keyboard &keyboard);
    void SendDowns();
    void SendRepeats(Keyboard &keyboard);
    /// Sends to the focus target and up its parents until one consumes it.
    void NotifyKey(eKey key, bool down, unsigned int repeatCount, char character);

    Parts &parts_;
    eKey repeatKey_ = e_key_none;
    char repeatCharacter_ = 0;
    RepeatClock repeatClock_;
    unsigned int numDown_ = 0;
    unsigned int numUp_ = 0;
    KeyEvent down_[e_key_none];
    KeyEvent up_[e_key_none];
};

} // namespace quillmarsh::gui::manager_parts

#endif
