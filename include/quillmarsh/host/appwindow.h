// Reports the program's window to the devices and the kernel.
#ifndef QUILLMARSH_HOST_APPWINDOW_H
#define QUILLMARSH_HOST_APPWINDOW_H

#include <quillmarsh/platform/desktopevents.h>

namespace quillmarsh::host
{

class HostKernel;

/// Reports the program's main window to the devices: its opening, activation, geometry and end. Requests the exit of
/// the program when the user closes the window, or when the desktop ends the program. Frame thread only.
class AppWindow final : platform::DesktopListener, NoCopy
{
public:
    /// Listens from now on. Borrows `kernel`, which must outlive this object.
    explicit AppWindow(HostKernel &kernel) : kernel_(kernel) {}

private:
    void OnDesktopEvent(platform::DesktopEvent const &event) override;
    void OnWindowEvent(platform::DesktopEvent const &event);

    HostKernel &kernel_;
    /// The main window that was opened last; null if there is none.
    platform::Window *window_ = nullptr;
    platform::DesktopSubscription const subscription_{*this};
};

} // namespace quillmarsh::host

#endif
