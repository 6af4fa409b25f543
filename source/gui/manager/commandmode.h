// Move and resize of top-level components by the mouse.
#ifndef QUILLMARSH_SOURCE_GUI_MANAGER_COMMANDMODE_H
#define QUILLMARSH_SOURCE_GUI_MANAGER_COMMANDMODE_H

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_watch.h>

namespace quillmarsh::gui::manager_parts
{

struct Parts;

/// A running move or resize. Calls KeyboardFocus at its start, and resets the repeats of MouseButtons and
/// KeyboardDispatch.
class CommandMode : NoCopy
{
public:
    explicit CommandMode(Parts &parts) : parts_(parts) {}

    /// Asks the top-level ancestor of `hit`, and begins if it confirms.
    void TryStart(Component &hit, eCommandArea area, vec2 const &mousePosition);
    /// Proposes place and size for this position, and applies what the target lets pass.
    void Step(vec2 const &mousePosition);
    /// Harmless if none runs. The target is told once, also if it calls this meanwhile.
    void End();

    bool IsActive() const { return target_.Get() != nullptr; }
    /// Null if none runs, and after the target was deleted.
    Component *GetTarget() const { return target_.Get(); }
    eCommandArea GetArea() const { return area_; }
    eMouseButton GetButton() const { return button_; }

private:
    /// Tells the target of the begin, and sets its state.
    void Begin();
    void Apply(vec2 const &position, vec2 const &size);

    Parts &parts_;
    Watch<Component> target_;
    /// The target has been told of the end.
    bool isEnding_ = false;
    eCommandArea area_ = e_area_void;
    eMouseButton button_ = e_mouse_button_extra3;
    vec2 startMouse_ = {0, 0};
    vec2 startPosition_ = {0, 0};
    vec2 startSize_ = {0, 0};
};

} // namespace quillmarsh::gui::manager_parts

#endif
