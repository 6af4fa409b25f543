// Brings the events of the desktop to keyboard and mouse.
#ifndef QUILLMARSH_PLUGINS_INPUT_DESKTOP_DESKTOPINPUT_H
#define QUILLMARSH_PLUGINS_INPUT_DESKTOP_DESKTOPINPUT_H

#include "desktop.h"

#include <quillmarsh/platform/desktopevents.h>
#include <quillmarsh/platform/window.h>

namespace input_desktop
{

/// Brings the events of the desktop into the record, and the record's wishes to the cursor. Opens a window of its own
/// where the program has none. Frame thread only.
class DesktopInput final : quillmarsh::platform::DesktopListener, quillmarsh::NoCopy
{
public:
    explicit DesktopInput(Desktop &desktop) : desktop_(desktop) {}
    ~DesktopInput() override;

    /// Opens a window now, and later whenever the program has none; or never does.
    void SetWantsWindow(bool wants);
    /// True while there is a window that keyboard and mouse belong to.
    bool HasWindow() const { return quillmarsh::platform::Window::GetNumOpen() > 0; }
    /// Called once in each frame.
    void Update();

private:
    using Window = quillmarsh::platform::Window;

    void OnDesktopEvent(quillmarsh::platform::DesktopEvent const &event) override;
    void OnWindowEvent(quillmarsh::platform::DesktopEvent const &event);
    void OpenWindow();
    /// The window that the user works with; null without one.
    Window *GetCurrentWindow() const;

    Desktop &desktop_;
    bool wantsWindow_ = false;
    bool isCursorHeld_ = false;
    quillmarsh::AutoPtr<Window> window_;
    quillmarsh::platform::DesktopSubscription const subscription_{*this};
};

} // namespace input_desktop

#endif
