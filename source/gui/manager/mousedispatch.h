// The mouse's part of a frame.
#ifndef QUILLMARSH_SOURCE_GUI_MANAGER_MOUSEDISPATCH_H
#define QUILLMARSH_SOURCE_GUI_MANAGER_MOUSEDISPATCH_H

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_watch.h>

namespace quillmarsh
{
class Mouse;
}

namespace quillmarsh::gui::manager_parts
{

struct Parts;

/// Runs the steps of a frame in their order, and sends the messages of mouse-over, move, hover, wheel and buttons. The
/// only part that calls all others of the mouse: MouseButtons, MouseCapture, CommandMode, HitTest, ClickBranches;
/// besides Activation, KeyboardFocus and CursorDisplay.
class MouseDispatch : NoCopy
{
public:
    explicit MouseDispatch(Parts &parts) : parts_(parts) {}

    /// The caller holds the sample sentry of the mouse.
    void Dispatch(Mouse &mouse);

    /// The null target takes the place of a deleted button target.
    void OnDeleted(Component &component);

    bool IsInside() const { return inside_; }
    vec2 const &GetLastPosition() const { return lastPosition_; }
    double hoverTime = 0;
    /// Set by KeyboardFocus::Request(), so that the click of this frame does not move the focus.
    Watch<Component> focusRequest;
    /// Receiver of the button messages of this frame; never null once Parts::Start() has set it.
    Component *buttonTarget = nullptr;

private:
    /// @name Steps of Dispatch()
    /// @{
    void DispatchOutside(vec2 const &position, bool relativeMode);
    void DispatchInside(Mouse &mouse, vec2 const &position);
    /// Returns true if the capture ends the frame.
    bool DispatchCaptured(bool moved, vec2 const &position);
    /// Returns true if the command ends the frame.
    bool DispatchCommand(Mouse &mouse, bool moved, vec2 const &position);
    /// Tests what is under the mouse, and notifies of it.
    void DispatchMoves(bool &moved, vec2 const &position);
    void DispatchClick(vec2 const &position);
    /// Cursor, start of a command, wheel and buttons.
    void DispatchToTop(Mouse &mouse, vec2 const &position);
    /// @}

    void SetButtonTarget(Component &target);
    void NotifyMouseButtons(vec2 const &position);
    void NotifyMouseWheel(Component &target, vec2 const &position, int delta);
    void NotifyMouseMove(Component &target, vec2 const &position);
    void NotifyMouseHover(Component &target, vec2 const &position);
    void NotifyMouseOver(vec2 const &position);
    void NotifyMouseExit(vec2 const &position);
    void ReportMouseOver(Component &component, bool over, bool direct, vec2 const &position);

    Parts &parts_;
    vec2 lastPosition_ = {-1, -1};
    bool inside_ = false;
};

} // namespace quillmarsh::gui::manager_parts

#endif
