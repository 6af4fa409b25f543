#include <quillmarsh/framework/application.h>

#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/videorenderer.h>
#include <quillmarsh/gui/gui_renderer.h>

#include <ostream>

namespace quillmarsh
{

namespace
{

void DumpPath(ostream &out, unsigned int tabs, char const *label, string const &path)
{
    out << IndentEffector(tabs) << label << path << std::endl;
}

} // namespace

void Application::StartupInfo::DumpPaths(ostream &out, unsigned int tabs) const
{
    DumpPath(out, tabs, "ProcessDirectory....: ", ProcessDirectory);
    DumpPath(out, tabs, "UserHomeDirectory...: ", UserHomeDirectory);
    DumpPath(out, tabs, "UserProfileDirectory: ", UserProfileDirectory);
    DumpPath(out, tabs, "AppProfileDirectory.: ", AppProfileDirectory);
    DumpPath(out, tabs, "AppLogFilename......: ", AppLogFilename);
}

void Application::StartupResult::DumpPaths(ostream &out, unsigned int tabs) const
{
    DumpPath(out, tabs, "ProcessDirectory...: ", ProcessDirectory);
    DumpPath(out, tabs, "AppProfileDirectory: ", AppProfileDirectory);
    DumpPath(out, tabs, "AppLogFilename.....: ", AppLogFilename);
    DumpPath(out, tabs, "AppWindowText......: ", AppWindowText);
}

Application::Application() = default;

Application::~Application() = default;

UID Application::GetApplicationUID()
{
    return UID();
}

// Start-up

void Application::BeginStartup(StartupInfo const &, StartupResult &) {}

void Application::QueryAutoInit(AutoInitInfo &) {}

void Application::Initialize() {}

void Application::EndStartup() {}

void Application::Cleanup(bool, FailureDesc const &) {}

// Generic extensions

bool Application::ConfirmGenericExtension(string const &, string const &)
{
    return false;
}

void Application::ConnectGenericExtensions() {}

// Devices

bool Application::ConfirmDirectInputVersion(unsigned int)
{
    return true;
}

bool Application::ConfirmHIDDriver(string const &, unsigned int, unsigned int &)
{
    return true;
}

void Application::QueryHIDConfig(DirectInputConfig &, unsigned int, unsigned int) {}

bool Application::QueryIgnoreHIDDriver(string const &)
{
    return false;
}

void Application::BeginConfirmHumanInterfaceDevices() {}

bool Application::ConfirmHumanInterfaceDevice(HumanInterfaceDevice &)
{
    return true;
}

void Application::EndConfirmHumanInterfaceDevices() {}

void Application::BeginConnectHumanInterfaceDevices(DirectInputConfig const &) {}

void Application::ConnectHumanInterfaceDevice(HumanInterfaceDevice &) {}

void Application::EndConnectHumanInterfaceDevices() {}

void Application::SetupAsyncHIDSampling() {}

void Application::DisconnectHumanInterfaceDevices() {}

// Video

void Application::FilterVideoProfile(VideoProfile const &, VideoProfile &) {}

bool Application::ConfirmVideoRenderer(string const &, string const &)
{
    return true;
}

void Application::QueryVideoConfig(string &, VideoConfig &, unsigned int, unsigned int) {}

void Application::PostCreateMainWindow(MainWindowProperties &, MainWindowGeometry &, string const &,
                                       VideoConfig const &, unsigned int)
{
}

void Application::PreDestroyMainWindow(MainWindowGeometry const &, string const &, VideoConfig const &) {}

void Application::OnVSyncUpdate(bool) {}

void Application::ConnectVideoRenderer(VideoRenderer &) {}

void Application::DisconnectVideoRenderer() {}

void Application::InitVideoRendererStates(bool) {}

void Application::CreateVideoResources(bool) {}

void Application::ReleaseVideoResources(bool) {}

// Reconfiguration and subsystems

void Application::GenericReconfig(unsigned int, unsigned int) {}

void Application::InitializeSubsystems(unsigned int, unsigned int) {}

void Application::CleanupSubsystems(unsigned int, unsigned int) {}

void Application::ConnectSubsystemsToAppWindow(HWND, bool) {}

void Application::DisconnectSubsystemsFromAppWindow() {}

bool Application::CheckSubsystems()
{
    return true;
}

void Application::FixSubsystems() {}

// Notices of kernel and window

void Application::OnKernelLevelChanged(eKernelLevel) {}

void Application::OnWindowActive(bool) {}

void Application::OnWindowResize(unsigned int, unsigned int) {}

// Frame

void Application::FrameBegin(double) {}

void Application::FrameSampleInput() {}

void Application::FrameUpdateStates(double) {}

void Application::FramePreRenderVideo() {}

void Application::FrameRenderVideo()
{
    // A run without video has nothing to clear.
    if (VideoRenderer *const renderer = Kernel::Instance().GetActiveVideoRendererPtr())
    {
        renderer->GetGUIRenderer().ClearBuffers(gui::Renderer::ClearParams(
            true, color4b(0, 0, 128, 255), true, 1.0f, false, 0, false, gui::Rectangle(0, 0, 0, 0)));
    }
}

void Application::FrameRenderArea(gui::InterleavedRenderArea const &) {}

void Application::FramePostRenderVideo() {}

void Application::FrameEnd() {}

// GUI

bool Application::GUIOnCommand(unsigned int)
{
    return false;
}

bool Application::GUIOnActivate(bool, bool)
{
    return false;
}

bool Application::GUIOnMouseCapture(bool)
{
    return false;
}

bool Application::GUIOnMouseEnterExit(bool, vec2 const &)
{
    return false;
}

bool Application::GUIOnMouseQueryCursor(gui::Cursor const *&, vec2 const &)
{
    return false;
}

bool Application::GUIOnMouseMove(bool, double, vec2 const &)
{
    return false;
}

bool Application::GUIOnMouseWheel(int, vec2 const &)
{
    return false;
}

bool Application::GUIOnMouseButton(bool, eMouseButton, bool, unsigned int, vec2 const &)
{
    return false;
}

bool Application::GUIOnKeyboardQueryFocus(bool, eMouseButton, bool &, bool &)
{
    return false;
}

bool Application::GUIOnKeyboardFocus(bool)
{
    return false;
}

bool Application::GUIOnKeyboardKey(bool, eKey, unsigned int, char)
{
    return false;
}

} // namespace quillmarsh
