// A window on a headless desktop: state and focus without a window manager.
#ifndef QUILLMARSH_SOURCE_PLATFORM_HEADLESSWINDOW_H
#define QUILLMARSH_SOURCE_PLATFORM_HEADLESSWINDOW_H

#include <quillmarsh/platform/window.h>

#include <memory>

namespace quillmarsh::platform
{

/// Keeps the state of a window that the system never shows, and sends the events that a window manager would cause.
class Window::Headless : NoCopy
{
public:
    explicit Headless(Window &window) : window_(window) {}
    ~Headless();

    eWindowState GetState() const { return state_; }
    /// Enters a state, and gives the window the size that belongs to it. `size` is only for full screen; without a value
    /// it is that of the desktop.
    void Enter(eWindowState state, std::optional<Size> size = {});
    /// Undoes the last Enter() of another state than e_normal and e_hidden.
    void Restore();
    /// Gives the window the focus.
    void Activate();
    bool IsActive() const;

private:
    /// Takes the focus from the window that has it.
    static void Deactivate();
    void Place(Area const &area);
    /// Takes the state as it is, and sends the events.
    void Become(eWindowState state);

    Window &window_;
    /// Ends with the window, which a listener of an event may close.
    std::shared_ptr<char> const life_ = std::make_shared<char>();
    eWindowState state_ = eWindowState::e_hidden;
    /// State to go back to from minimized.
    eWindowState stateBefore_ = eWindowState::e_normal;
    /// Place to go back to from maximized and full screen.
    std::optional<Area> placeBefore_;
};

} // namespace quillmarsh::platform

#endif
