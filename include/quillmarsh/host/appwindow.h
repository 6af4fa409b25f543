// Reports the program's window to the devices, the application and the kernel.
#ifndef QUILLMARSH_HOST_APPWINDOW_H
#define QUILLMARSH_HOST_APPWINDOW_H

#include <quillmarsh/platform/desktopevents.h>
#include <quillmarsh/platform/window.h>

#include <vector>

namespace quillmarsh::host
{

class HostKernel;

/// Reports the program's main window: to the devices its opening, activation, geometry and end, to the GUI manager its
/// opening and activation, and to the application its activation and new sizes; to the video stack the sizes of its own
/// window. Of several main windows, it reports the
/// one that was opened last. Requests the exit of the program when the user closes the window, or when the desktop ends
/// the program. When the window closes that the application's subsystems are connected to, it disconnects them first.
/// Frame thread only.
class AppWindow final : platform::DesktopListener, NoCopy
{
public:
    /// Listens from now on, and begins with the main window that is already open, if there is one. Borrows `kernel`,
    /// which must outlive this object.
    explicit AppWindow(HostKernel &kernel);

    /// Returns the reported window; null if there is none.
    platform::Window *Get() const { return windows_.empty() ? nullptr : windows_.back(); }

private:
    void OnDesktopEvent(platform::DesktopEvent const &event) override;
    void OnExitWish();
    void OnWindowEvent(platform::DesktopEvent const &event);
    void OnClosing(platform::Window &window);
    void DisconnectSubsystems(platform::Window const &window);
    void OnActive(bool isActive);
    void OnGeometry();
    /// Reports the window of Get() to the devices.
    void TellDevices();
    template<typename Hook>
    void CallHook(char const *name, Hook &&hook);

    HostKernel &kernel_;
    /// The open main windows, the last one at the end.
    std::vector<platform::Window *> windows_;
    /// The size that the application knows.
    platform::Window::Size size_;
    platform::DesktopSubscription const subscription_{*this};
};

} // namespace quillmarsh::host

#endif
