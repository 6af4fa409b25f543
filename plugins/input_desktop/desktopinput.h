// Passes the events of the desktop to keyboard and mouse.
#ifndef QUILLMARSH_PLUGINS_INPUT_DESKTOP_DESKTOPINPUT_H
#define QUILLMARSH_PLUGINS_INPUT_DESKTOP_DESKTOPINPUT_H

#include "desktop.h"

#include <quillmarsh/platform/desktopevents.h>
#include <quillmarsh/platform/window.h>

namespace input_desktop
{

/// Passes the events of the desktop to Desktop, and the wishes of Desktop to the cursor. Opens its own window if the
/// program has none when a frame begins. Frame thread only.
class DesktopInput final : quillmarsh::platform::DesktopListener, quillmarsh::NoCopy
{
public:
    explicit DesktopInput(Desktop &desktop) : desktop_(desktop) {}
    ~DesktopInput() override;

    /// True makes Update() open a window whenever there is none; false closes it, and makes it never open one.
    void SetWantsWindow(bool wants);
    /// True while there is a window to which keyboard and mouse belong, or while Update() will open one.
    bool HasOrWantsWindow() const;
    /// Opens the window if one is missing, and carries out the wishes for the cursor. Call it once in each frame.
    void Update();

private:
    using Window = quillmarsh::platform::Window;

    void OnDesktopEvent(quillmarsh::platform::DesktopEvent const &event) override;
    void OnWindowEvent(quillmarsh::platform::DesktopEvent const &event);
    void OpenWindow();
    /// Returns the active window, or else the main window, or else the driver's own; null without any.
    Window *GetCurrentWindow() const;

    Desktop &desktop_;
    bool wantsWindow_ = false;
    /// The window could not be opened.
    bool hasFailed_ = false;
    bool isCursorHeld_ = false;
    quillmarsh::AutoPtr<Window> window_;
    quillmarsh::platform::DesktopSubscription const subscription_{*this};
};

} // namespace input_desktop

#endif
