// The window of the program, as the devices and the kernel hear of it.
#ifndef QUILLMARSH_HOST_APPWINDOW_H
#define QUILLMARSH_HOST_APPWINDOW_H

#include <quillmarsh/platform/desktopevents.h>

namespace quillmarsh::host
{

class HostKernel;

/// Tells the devices of the main window that the program opens, of its activation and its geometry, until it goes; makes
/// the wish to close it, and the desktop's wish to end the program, a request to exit. Frame thread only.
class AppWindow final : platform::DesktopListener, NoCopy
{
public:
    explicit AppWindow(HostKernel &kernel) : kernel_(kernel) {}

private:
    void OnDesktopEvent(platform::DesktopEvent const &event) override;
    void OnWindowEvent(platform::DesktopEvent const &event);

    HostKernel &kernel_;
    /// The main window that was opened last; null without one.
    platform::Window *window_ = nullptr;
    platform::DesktopSubscription const subscription_{*this};
};

} // namespace quillmarsh::host

#endif
