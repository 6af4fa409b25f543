#include <quillmarsh/host/appwindow.h>

#include <quillmarsh/host/hostkernel.h>
#include <quillmarsh/platform/window.h>

namespace quillmarsh::host
{

using platform::DesktopEvent;
using platform::eDesktopEvent;

void AppWindow::OnDesktopEvent(DesktopEvent const &event)
{
    bool const isOpened = event.kind == eDesktopEvent::e_windowOpened;
    if (event.kind == eDesktopEvent::e_exitWish)
        kernel_.RequestExit();
    else if (isOpened && event.window->GetRole() == platform::eWindowRole::e_main)
        kernel_.GetDevices().SetAppWindow((window_ = event.window)->GetHandle());
    else if (event.window != nullptr && event.window == window_)
        OnWindowEvent(event);
}

void AppWindow::OnWindowEvent(DesktopEvent const &event)
{
    DeviceGroup &devices = kernel_.GetDevices();
    switch (event.kind)
    {
    case eDesktopEvent::e_windowActive:
        devices.SetAppWindowActive(event.isOn);
        break;
    case eDesktopEvent::e_windowGeometry:
        devices.OnAppWindowGeometryChanged();
        break;
    case eDesktopEvent::e_windowCloseWish:
        kernel_.RequestExit();
        break;
    case eDesktopEvent::e_windowClosing:
        window_ = nullptr;
        devices.SetAppWindow(nullptr);
        break;
    default:
        break;
    }
}

} // namespace quillmarsh::host
