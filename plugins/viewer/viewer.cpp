// The viewer as a plug-in: pictures, volumes, signals and devices in one window.
#include "shell.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/framework/application.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/framework/pluginlibrary.h>
#include <quillmarsh/framework/videorenderer.h>

namespace viewer
{
namespace
{

using namespace quillmarsh;

class ViewerApplication : public Application
{
public:
    void BeginStartup(StartupInfo const &, StartupResult &result) override { result.AppWindowText = "viewer"; }

    void Initialize() override { shell_ = std::make_unique<Shell>(); }

    bool ConfirmGenericExtension(string const &, string const &) override { return true; }

    void ConnectGenericExtensions() override
    {
        if (Kernel::Instance().FindGenericExtension("standard_look") == nullptr)
            QUILLMARSH_THROW(KernelException, "The viewer needs the plug-in standard_look.");
        shell_->MakeGUI();
    }

    void ConnectHumanInterfaceDevice(HumanInterfaceDevice &device) override
    {
        for (std::unique_ptr<Room> const &room : shell_->GetRooms())
            room->ConnectDevice(device);
    }

    void DisconnectHumanInterfaceDevices() override
    {
        for (std::unique_ptr<Room> const &room : shell_->GetRooms())
            room->DisconnectDevices();
    }

    void CreateVideoResources(bool deviceWasLost) override
    {
        for (std::unique_ptr<Room> const &room : shell_->GetRooms())
            room->CreateVideoResources(deviceWasLost);
    }

    void ReleaseVideoResources(bool deviceWasLost) override
    {
        for (std::unique_ptr<Room> const &room : shell_->GetRooms())
            room->ReleaseVideoResources(deviceWasLost);
    }

    void ConnectSubsystemsToAppWindow(HWND window, bool) override
    {
        shell_->SetWindow(window != nullptr ? platform::Window::Find(window) : nullptr);
    }

    void DisconnectSubsystemsFromAppWindow() override { shell_->SetWindow(nullptr); }

    void FrameUpdateStates(double timeDelta) override { shell_->Update(timeDelta); }

    /// The desk covers the window; there is nothing to clear.
    void FrameRenderVideo() override {}

    void FrameRenderArea(gui::InterleavedRenderArea const &area) override
    {
        for (std::unique_ptr<Room> const &room : shell_->GetRooms())
        {
            if (room->RenderArea(area))
                return;
        }
    }

    bool GUIOnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char) override
    {
        return down && shell_->RunKey(key, repeatCount);
    }

    void Cleanup(bool failed, FailureDesc const &) override
    {
        if (shell_ != nullptr && !failed)
            shell_->End();
        shell_.reset();
    }

private:
    std::unique_ptr<Shell> shell_;
};

class ViewerDescriptor : public ApplicationPluginDescriptor
{
public:
    ViewerDescriptor()
        : ApplicationPluginDescriptor(PluginInfo(library_info::GetHeaderVersion(), e_plugin_application, "viewer",
                                                 PluginVersion(1, 0, 0, 0), library_info::GetBuildTimestamp(),
                                                 "Viewer for pictures, volumes, signals and devices",
                                                 "The Quillmarsh authors"))
    {
    }

    Application *CreateApplication() override { return new ViewerApplication; }
};

} // namespace
} // namespace viewer

QUILLMARSH_PLUGIN_LIBRARY(viewer::ViewerDescriptor)
