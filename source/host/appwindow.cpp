#include <quillmarsh/host/appwindow.h>

#include <quillmarsh/host/hostkernel.h>

namespace quillmarsh::host
{

using platform::DesktopEvent;
using platform::eDesktopEvent;
using platform::Window;

AppWindow::AppWindow(HostKernel &kernel) : kernel_(kernel)
{
    Window *const window = Window::GetMain();
    if (window == nullptr)
        return;
    windows_.push_back(window);
    TellDevices();
}

void AppWindow::TellDevices()
{
    DeviceGroup &devices = kernel_.GetDevices();
    Window const *const window = Get();
    size_ = window != nullptr ? window->GetSize() : Window::Size();
    devices.SetAppWindow(window != nullptr ? window->GetHandle() : nullptr);
    if (window != nullptr && window->IsActive())
        devices.SetAppWindowActive(true);
}

void AppWindow::OnDesktopEvent(DesktopEvent const &event)
{
    if (event.kind == eDesktopEvent::e_exitWish)
        OnExitWish();
    else if (event.window != nullptr && event.window->GetRole() == platform::eWindowRole::e_main)
        OnWindowEvent(event);
}

void AppWindow::OnExitWish()
{
    if (!platform::HasDisplay())
        kernel_.GetFailures().Warn("The display has gone, and the program ends.");
    kernel_.RequestExit();
}

void AppWindow::OnWindowEvent(DesktopEvent const &event)
{
    if (event.kind == eDesktopEvent::e_windowOpened)
    {
        windows_.push_back(event.window);
        TellDevices();
        if (HostKernel::HasGUI())
            HostKernel::GUIManager_NotifyApplicationWindowCreated();
        return;
    }
    if (event.kind == eDesktopEvent::e_windowClosing)
        return OnClosing(*event.window);
    if (event.kind == eDesktopEvent::e_windowGeometry)
        kernel_.GetVideo().OnWindowGeometry(*event.window);
    if (event.window != Get())
        return;
    if (event.kind == eDesktopEvent::e_windowActive)
        OnActive(event.isOn);
    else if (event.kind == eDesktopEvent::e_windowGeometry)
        OnGeometry();
    else if (event.kind == eDesktopEvent::e_windowCloseWish)
        kernel_.RequestExit();
}

void AppWindow::OnClosing(Window &window)
{
    bool const isReported = &window == Get();
    DisconnectSubsystems(window);
    std::erase(windows_, &window);
    if (isReported)
        TellDevices();
}

void AppWindow::DisconnectSubsystems(Window const &window)
{
    SubsystemGroup &subsystems = kernel_.GetSubsystems();
    if (subsystems.GetWindow() != window.GetHandle())
        return;
    char const *const placeBefore = kernel_.GetFailures().GetPlace();
    // A window that closes cannot pass an exception on.
    if (!kernel_.GetFailures().Guard([&subsystems] { subsystems.DisconnectFromWindow(); }))
        kernel_.RequestExit();
    kernel_.GetFailures().SetPlace(placeBefore);
}

void AppWindow::OnActive(bool isActive)
{
    kernel_.GetDevices().SetAppWindowActive(isActive);
    if (HostKernel::HasGUI())
        HostKernel::GUIManager_NotifyApplicationWindowActive(isActive);
    CallHook("OnWindowActive", [isActive](Application &application) { application.OnWindowActive(isActive); });
}

void AppWindow::OnGeometry()
{
    kernel_.GetDevices().OnAppWindowGeometryChanged();
    Window::Size const size = Get()->GetSize();
    // Some systems give a minimized window no size.
    bool const isNew = size.width != size_.width || size.height != size_.height;
    if (!isNew || Get()->GetState() == platform::eWindowState::e_minimized)
        return;
    size_ = size;
    CallHook(
        "OnWindowResize", [size](Application &application)
        { application.OnWindowResize(static_cast<unsigned int>(size.width), static_cast<unsigned int>(size.height)); });
}

template<typename Hook>
void AppWindow::CallHook(char const *name, Hook &&hook)
{
    // The event may arrive during another hook. A later failure of that hook must name that hook again.
    char const *const placeBefore = kernel_.GetFailures().GetPlace();
    kernel_.CallHook(name, hook);
    kernel_.GetFailures().SetPlace(placeBefore);
}

} // namespace quillmarsh::host
