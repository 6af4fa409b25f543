#include <quillmarsh/host/subsystemgroup.h>

#include <quillmarsh/host/hostkernel.h>

#include <utility>

namespace quillmarsh::host
{

void SubsystemGroup::ConnectToWindow()
{
    platform::Window const *const window = kernel_.GetAppWindow();
    HWND const handle = window != nullptr ? window->GetHandle() : nullptr;
    bool const isFullscreen = window != nullptr && window->GetState() == platform::eWindowState::e_fullscreen;
    kernel_.CallHook("ConnectSubsystemsToAppWindow",
                     [=](Application &application) { application.ConnectSubsystemsToAppWindow(handle, isFullscreen); });
    isConnected_ = true;
    window_ = handle;
}

void SubsystemGroup::DisconnectFromWindow()
{
    if (std::exchange(isConnected_, false))
        kernel_.CallHook("DisconnectSubsystemsFromAppWindow",
                         [](Application &application) { application.DisconnectSubsystemsFromAppWindow(); });
}

void SubsystemGroup::Initialize(unsigned int code, unsigned int subcode)
{
    kernel_.CallHook("InitializeSubsystems",
                     [=](Application &application) { application.InitializeSubsystems(code, subcode); });
    isInitialized_ = true;
}

void SubsystemGroup::CleanUp(unsigned int code, unsigned int subcode)
{
    if (std::exchange(isInitialized_, false))
        kernel_.CallHook("CleanupSubsystems",
                         [=](Application &application) { application.CleanupSubsystems(code, subcode); });
}

} // namespace quillmarsh::host
