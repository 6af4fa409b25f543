// The component that has the mouse for itself.
#ifndef QUILLMARSH_SOURCE_GUI_MANAGER_MOUSECAPTURE_H
#define QUILLMARSH_SOURCE_GUI_MANAGER_MOUSECAPTURE_H

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_watch.h>

namespace quillmarsh::gui::manager_parts
{

struct Parts;

/// Capture of the mouse. Asks CommandMode and Modality, and resets MouseDispatch's hover time.
class MouseCapture : NoCopy
{
public:
    explicit MouseCapture(Parts &parts) : parts_(parts) {}

    bool Request(Component &component);
    /// Acts only on the holder.
    void Release(Component &component);
    /// Tells the target while it still has the capture, then clears it; forces a hit test in any case. A target that is
    /// told may end the capture itself, which tells it nothing more, and begin another one, which stays.
    void End();

    /// Null without a capture, and after the target was deleted.
    Component *GetTarget() const { return target_.Get(); }

private:
    Parts &parts_;
    Watch<Component> target_;
    /// The target has been told of the end.
    bool isEnding_ = false;
};

} // namespace quillmarsh::gui::manager_parts

#endif
