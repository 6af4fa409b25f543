// Activation of components, the cycle queue, and modality.
#ifndef QUILLMARSH_SOURCE_GUI_MANAGER_ACTIVATION_H
#define QUILLMARSH_SOURCE_GUI_MANAGER_ACTIVATION_H

#include "source/gui/manager/safelists.h"

#include <quillmarsh/devices/keyboard.h>
#include <quillmarsh/gui/gui_manager.h>

namespace quillmarsh::gui::manager_parts
{

struct Parts;

/// Activation by mouse and by call. Ends capture and command mode, walks ClickBranches and the all-components queue,
/// and calls KeyboardFocus.
class Activation : NoCopy
{
public:
    explicit Activation(Parts &parts) : parts_(parts) {}

    void ActivateTopLevel(Component &component, bool bringToFront);
    /// Deactivates and activates the branches of a click; calls of ActivateTopLevel() are ignored meanwhile.
    void DispatchClick(vec2 const &position);
    Component *GetActiveTopLevel() const;
    bool IsAllowed() const { return allowed_; }

    void OnWindowActive(bool active);
    void OnWindowCreated();
    bool swallowOnActivate = true;
    bool swallowOnCreate = false;

private:
    /// Tells each component of a list, SafeList or ComponentRow, but `except`; then its state falls.
    template<typename List>
    void NotifyDeactivate(List &list, Component const *except, bool byMouse);
    void NotifyActivate(ComponentRow &list, bool byMouse, vec2 const &position);

    Parts &parts_;
    bool allowed_ = true;
};

/// Order in which a key activates top-level components and the application.
class CycleQueue : NoCopy
{
public:
    explicit CycleQueue(Parts &parts) : parts_(parts) {}

    void Activate(bool forward);
    /// Activates, and returns true, if the key went down.
    bool DispatchKey(Keyboard &keyboard);
    /// Swaps two members if `second` stands ahead of `first`.
    void Order(Component &first, Component &second);
    void Dump(ostream &out, unsigned int tabs) const;

    SafeList<Component> members{e_list_cycle};
    bool enabled = true;
    bool insertOnCreate = true;
    bool insertOnTopLevel = true;
    eKey key = e_key_grave_accent;
    eKeyModifier modifier = Manager::s_noKeyModifier;
    eKeyModifier reverseModifier = e_key_modifier_shift;

private:
    Parts &parts_;
};

/// Stack of modal targets. Calls Activation.
class Modality : NoCopy
{
public:
    explicit Modality(Parts &parts) : parts_(parts) {}

    void Run(Component &component);
    void End(Component &component);
    /// Ends the modality of a target that was hidden.
    void EndIfHidden();
    /// True without a modal target, and for components of its branch.
    bool Allows(Component const &component) const;
    /// Called for marked components: takes all its entries out, and activates nothing.
    void OnDeleted(Component &component);

    /// Null if there is none.
    Component *GetTarget() const { return stack_.empty() ? nullptr : stack_.back(); }

private:
    void ActivateTarget();

    Parts &parts_;
    std::vector<Component *> stack_;
};

} // namespace quillmarsh::gui::manager_parts

#endif
