#include <quillmarsh/host/applicationwalk.h>

#include "screenshotsettings.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/framework/commands/frameworkcommands.h>
#include <quillmarsh/framework/kernelthreadinfo.h>

#include <ostream>

namespace quillmarsh::host
{

ApplicationWalk::ApplicationWalk(HostKernel &kernel) : kernel_(kernel) {}

ApplicationWalk::~ApplicationWalk() = default;

bool ApplicationWalk::Up(std::function<AutoPtr<Application>()> const &create, Application::StartupInfo const &info)
{
    info_ = info;
    kernel_.GetFailures().SetPlace("the creation of the application");
    bool const created = kernel_.GetFailures().Guard(
        [&]
        {
            kernel_.MakeGUI();
            application_ = create();
            if (application_ == nullptr)
                QUILLMARSH_THROW(KernelException, "The plug-in created no application.");
        });
    if (!created)
    {
        // Its constructor may have made components before it failed.
        kernel_.ReleaseGUI();
        return false;
    }
    kernel_.SetApplication(application_.get());
    HostKernel::GUIManager_ConnectApplication(true);

    Application::AutoInitInfo const &autoInit = kernel_.GetAutoInit();
    return Climb(e_kernel_startup, true, &ApplicationWalk::StartUp) && result_.ContinueStartup &&
           Climb(e_kernel_generic_extensions, autoInit.OpenGenericExtensions,
                 &ApplicationWalk::OpenGenericExtensions) &&
           Climb(e_kernel_devices, autoInit.OpenDevices, &ApplicationWalk::OpenDevices) &&
           Climb(e_kernel_video, autoInit.OpenVideo, &ApplicationWalk::OpenVideo) &&
           Climb(e_kernel_subsystems, autoInit.OpenSubsystems, &ApplicationWalk::OpenSubsystems) &&
           Climb(e_kernel_running, true, &ApplicationWalk::ReachFrames);
}

bool ApplicationWalk::Climb(eKernelLevel level, bool enabled, void (ApplicationWalk::*stage)())
{
    if (!enabled)
        return true;
    climbed_.push_back(level);
    return kernel_.GetFailures().Guard(
        [&]
        {
            kernel_.SetLevel(level);
            (this->*stage)();
        });
}

void ApplicationWalk::StartUp()
{
    Application::AutoInitInfo &autoInit = kernel_.GetAutoInit();
    kernel_.CallHook("BeginStartup", [this](Application &application) { application.BeginStartup(info_, result_); });
    kernel_.CallHook("QueryAutoInit", [&](Application &application) { application.QueryAutoInit(autoInit); });
    kernel_.GetFailures().SetPlace("the start-up of the host");
    if (onStartupResult)
        onStartupResult(result_);
    if (autoInit.LogPaths)
    {
        kernel_.GetLog() << "Paths of the host:\n";
        info_.DumpPaths(kernel_.GetLog(), 1);
        kernel_.GetLog() << "Paths of the application:\n";
        result_.DumpPaths(kernel_.GetLog(), 1);
    }
    if (autoInit.LogPlugins)
        kernel_.GetPlugins().Dump(kernel_.GetLog());
    kernel_.GetConsole().SetLogging(autoInit.LogConsole);
    if (autoInit.RegisterCommands)
        framework_commands::CreateAndRegisterAllCommands(*kernel_.GetCommandInterpreter(), nullptr, 0, 0);
    screenshots_ = std::make_unique<ScreenshotSettings>(kernel_);
    if (autoInit.RaiseThreadPriority)
    {
        KernelThreadInfo thread;
        kernel_.GetThreadInfo(thread);
        thread.Priority = 1;
        kernel_.SetThreadInfo(thread);
    }
    kernel_.CallHook("Initialize", [](Application &application) { application.Initialize(); });
    kernel_.CallHook("EndStartup", [](Application &application) { application.EndStartup(); });
}

void ApplicationWalk::OpenGenericExtensions()
{
    std::vector<AutoPtr<GenericExtension>> &extensions = kernel_.GetGenericExtensions();
    undo_.push_back({climbed_.back(), [&extensions]
                     {
                         while (!extensions.empty())
                             extensions.pop_back();
                     }});
    for (PluginSet::Entry const &entry : kernel_.GetPlugins().GetEntries())
    {
        PluginInfo const &info = entry.descriptor->GetPluginInfo();
        if (info.GetPluginType() != e_plugin_generic_extension)
            continue;
        kernel_.GetFailures().SetPlace("the creation of a generic extension");
        auto extension = kernel_.GetPlugins().CreateAs<GenericExtension>(*entry.descriptor);
        if (extension == nullptr)
            continue;
        string const interfaceName = extension->GetGenericExtensionInterfaceName();
        bool confirmed = false;
        kernel_.CallHook("ConfirmGenericExtension", [&](Application &application)
                         { confirmed = application.ConfirmGenericExtension(info.GetPluginName(), interfaceName); });
        if (confirmed)
            extensions.push_back(std::move(extension));
    }
    kernel_.CallHook("ConnectGenericExtensions",
                     [](Application &application) { application.ConnectGenericExtensions(); });
}

void ApplicationWalk::OpenDevices()
{
    DeviceGroup &devices = kernel_.GetDevices();
    undo_.push_back({climbed_.back(), [&devices] { devices.Release(); }});
    undo_.push_back({climbed_.back(), [&devices] { devices.Disconnect(); }});
    devices.Open(DirectInputConfig(), 0, 0);
}

void ApplicationWalk::OpenVideo()
{
    VideoGroup &video = kernel_.GetVideo();
    VideoSettings &settings = video.GetSettings();
    if (!result_.AppWindowText.empty())
        settings.title = result_.AppWindowText;
    settings.logDirectory =
        result_.AppProfileDirectory.empty() ? info_.AppProfileDirectory : result_.AppProfileDirectory;
    undo_.push_back({climbed_.back(), [&video] { video.Release(); }});
    undo_.push_back({climbed_.back(), [&video] { video.Close(); }});
    video.Open(0, 0);
}

void ApplicationWalk::OpenSubsystems()
{
    SubsystemGroup &subsystems = kernel_.GetSubsystems();
    undo_.push_back({climbed_.back(), [&subsystems] { subsystems.DisconnectFromWindow(); }});
    undo_.push_back({climbed_.back(), [&subsystems] { subsystems.CleanUp(0, 0); }});
    subsystems.ConnectToWindow();
    subsystems.Initialize(0, 0);
}

void ApplicationWalk::ReachFrames()
{
    if (kernel_.GetAutoInit().RunProfiler)
        kernel_.GetProfiler()->Enable(true);
}

void ApplicationWalk::Down()
{
    if (application_ == nullptr)
        return;
    for (; !climbed_.empty(); climbed_.pop_back())
    {
        eKernelLevel const level = climbed_.back();
        if (level != e_kernel_running && level != e_kernel_startup)
            Descend(level);
    }
    CleanUp();
}

/// Undoes one stage. Reports and keeps a failure in it, and then undoes the rest.
void ApplicationWalk::Descend(eKernelLevel level)
{
    if (kernel_.GetKernelLevel() != level)
        kernel_.GetFailures().Guard([&] { kernel_.SetLevel(level); });
    while (!undo_.empty() && undo_.back().level == level)
    {
        std::function<void()> const call = std::move(undo_.back().call);
        undo_.pop_back();
        kernel_.GetFailures().Guard(call);
    }
}

void ApplicationWalk::CleanUp()
{
    Failures &failures = kernel_.GetFailures();
    failures.Guard([&] { kernel_.SetLevel(e_kernel_cleanup); });
    failures.Guard(
        [&]
        {
            kernel_.CallHook("Cleanup", [&](Application &application)
                             { application.Cleanup(failures.HasFailed(), failures.GetDesc()); });
        });
    failures.SetPlace("the release of the application");
    screenshots_.reset();
    failures.Guard([this] { kernel_.ReleasePluginLeftovers(); });
    if (HostKernel::HasGUI())
        HostKernel::GUIManager_ConnectApplication(false);
    kernel_.SetApplication(nullptr);
    failures.Guard([this] { application_.reset(); });
    kernel_.ReleaseGUI();
    kernel_.SetLevel(e_kernel_none);
}

} // namespace quillmarsh::host
