// Application that records the calls of its hooks, and fails in one of them on request.
#include "../waiting.h"
#include "trace.h"

#include <quillmarsh/basetools/commandlineparser.h>
#include <quillmarsh/basetools/consolebuffers.h>
#include <quillmarsh/basetools/namedparameter.h>
#include <quillmarsh/basetools/variableregistry.h>
#include <quillmarsh/framework/application.h>
#include <quillmarsh/framework/frameobserver.h>
#include <quillmarsh/framework/genericextension.h>
#include <quillmarsh/framework/humaninterfacedevice.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/framework/pluginlibrary.h>
#include <quillmarsh/framework/reconfigobserver.h>
#include <quillmarsh/framework/stdcommandinterpreter.h>
#include <quillmarsh/platform/desktopevents.h>
#include <quillmarsh/platform/window.h>

#include <functional>
#include <thread>

namespace
{

using namespace quillmarsh;

using tests::GetSetting;
using tests::Trace;

class TracerExtension : public GenericExtension
{
public:
    ~TracerExtension() override { Trace("~TracerExtension"); }
    string GetGenericExtensionInterfaceName() override { return "tracing"; }
    bool SetPluginParameter(NamedParameter const &parameter) override
    {
        Trace("parameter", parameter.GetName(), parameter.GetValueString());
        return true;
    }
};

using Call = std::function<void(CommandLineParser const &)>;

/// A command that calls a function.
class FunctionCmd : public Command
{
public:
    FunctionCmd(char const *name, Call call) : call_(std::move(call)) { SetDefaultName(name); }
    bool ParseAndExecute(ostream &, CommandLineParser const &parser, string const &) override
    {
        call_(parser);
        return true;
    }
    void DumpHelp(ostream &, CommandLineParser const &) override {}

private:
    Call call_;
};

/// Writes lines to the console from another thread while frames run: "talk way count".
void Talk(std::thread &talker, CommandLineParser const &parser)
{
    unsigned int count = 0;
    ToValue(parser.GetArgument(1).String(), count);
    bool const ownStream = parser.GetArgument(0).String() == "buffer";
    talker = std::thread(
        [count, ownStream]
        {
            AutoPtr<ostream> const own(Kernel::Instance().GetConsoleBuffers()->CreateOutputStream());
            ostream &out = ownStream ? *own : GetConOut();
            for (unsigned int i = 0; i < count; ++i)
                out << "<spoken line " << i << ">" << std::endl;
        });
}

/// Sends the kernel every kind of request that it handles between frames.
void AskKernel(CommandLineParser const &)
{
    Kernel::Instance().RequestGenericReconfig(7, 8);
    Kernel::Instance().NotifyVSyncUpdate();
    Kernel::Instance().QueueCommandLine("trace queued");
}

/// Queues its own line.
void RunAgain(CommandLineParser const &)
{
    Trace("again");
    Kernel::Instance().QueueCommandLine("again");
}

class Observer : public FrameObserver, public ReconfigObserver
{
    void OnFrame(bool &removeObserver, unsigned int frameNumber, double) override
    {
        Trace("OnFrame");
        removeObserver = frameNumber == 2;
    }
    void OnHIDReconfig() override { Trace("OnHIDReconfig"); }
    void OnVSyncReconfig(bool) override { Trace("OnVSyncReconfig"); }
};

class TracerApplication : public Application
{
    void BeginStartup(StartupInfo const &, StartupResult &result) override
    {
        Trace("BeginStartup");
        result.ContinueStartup = GetSetting("TRACER_STOP").empty();
        Kernel::Instance().AddFrameObserver(&observer_);
        Kernel::Instance().AddReconfigObserver(&observer_);
    }
    void QueryAutoInit(AutoInitInfo &info) override
    {
        Trace("QueryAutoInit");
        info.OpenVideo = GetSetting("TRACER_NO_VIDEO").empty();
    }
    void Initialize() override
    {
        Trace("Initialize");
        std::pair<char const *, Call> const commands[] = {
            {"talk", [this](CommandLineParser const &parser) { Talk(talker_, parser); }},
            {"ask", &AskKernel},
            {"again", &RunAgain},
            {"window", [this](CommandLineParser const &parser) { Work(parser.GetArgument(0).String()); }},
            {"trace", [](CommandLineParser const &parser) { Trace("trace", parser.GetArgument(0).String()); }},
        };
        for (auto const &[name, call] : commands)
            Kernel::Instance().GetCommandInterpreter()->RegisterExternalCommand(new FunctionCmd(name, call));
        Kernel::Instance().GetVariableRegistry()->RegisterVariable(VariableProxyInt(&number_, "tracer.number"));
        Kernel::Instance().GetVariableRegistry()->RegisterVariable(
            VariableProxyInt(&number_, "tracer.secret", "", true));
    }
    void EndStartup() override { Trace("EndStartup"); }
    void Cleanup(bool failed, FailureDesc const &failure) override
    {
        if (talker_.joinable())
            talker_.join();
        Trace("Cleanup", failed ? "failed" : "well",
              MakeString(static_cast<unsigned int>(failure.KernelLevel)) +
                  (failure.ApplicationFailure ? " application" : "") + (failure.StandardException ? " standard" : ""),
              "number", number_);
    }
    bool ConfirmGenericExtension(string const &plugin, string const &interfaceName) override
    {
        Trace("ConfirmGenericExtension", plugin, interfaceName);
        return true;
    }
    void ConnectGenericExtensions() override { Trace("ConnectGenericExtensions"); }
    bool ConfirmHIDDriver(string const &plugin, unsigned int index, unsigned int &flags) override
    {
        Trace("ConfirmHIDDriver", plugin, index);
        flags = 3;
        return true;
    }
    void QueryHIDConfig(DirectInputConfig &, unsigned int code, unsigned int subcode) override
    {
        Trace("QueryHIDConfig", code, subcode);
    }
    void BeginConfirmHumanInterfaceDevices() override { Trace("BeginConfirmHumanInterfaceDevices"); }
    bool ConfirmHumanInterfaceDevice(HumanInterfaceDevice &device) override
    {
        Trace("Confirm", device.GetDeviceInfo().MakeShortDesc());
        return device.GetDeviceInfo().GetDeviceDescription() != "dull";
    }
    void EndConfirmHumanInterfaceDevices() override { Trace("EndConfirmHumanInterfaceDevices"); }
    void BeginConnectHumanInterfaceDevices(DirectInputConfig const &) override
    {
        Trace("BeginConnectHumanInterfaceDevices");
    }
    void ConnectHumanInterfaceDevice(HumanInterfaceDevice &device) override
    {
        Trace("Connect", device.GetDeviceInfo().MakeShortDesc());
    }
    void EndConnectHumanInterfaceDevices() override { Trace("EndConnectHumanInterfaceDevices"); }
    void SetupAsyncHIDSampling() override
    {
        Trace("SetupAsyncHIDSampling");
        if (HumanInterfaceDevice *const device = Kernel::Instance().GetHumanInterfaceDevice(0);
            device != nullptr && !GetSetting("TRACER_ASYNC").empty())
            device->StartAsyncSampling();
    }
    void DisconnectHumanInterfaceDevices() override { Trace("DisconnectHumanInterfaceDevices"); }
    void OnVSyncUpdate(bool) override { Trace("OnVSyncUpdate"); }
    void GenericReconfig(unsigned int code, unsigned int subcode) override { Trace("GenericReconfig", code, subcode); }
    void InitializeSubsystems(unsigned int, unsigned int) override { Trace("InitializeSubsystems"); }
    void CleanupSubsystems(unsigned int, unsigned int) override { Trace("CleanupSubsystems"); }
    void ConnectSubsystemsToAppWindow(HWND, bool) override { Trace("ConnectSubsystemsToAppWindow"); }
    void DisconnectSubsystemsFromAppWindow() override
    {
        Trace("DisconnectSubsystemsFromAppWindow");
        window_.reset();
    }
    bool CheckSubsystems() override
    {
        Trace("CheckSubsystems");
        return false;
    }
    void FixSubsystems() override { Trace("FixSubsystems"); }
    void OnKernelLevelChanged(eKernelLevel level) override { Trace("level", static_cast<unsigned int>(level)); }
    void FrameBegin(double) override { Trace("FrameBegin"); }
    void FrameSampleInput() override { Trace("FrameSampleInput"); }
    void FrameUpdateStates(double) override { Trace("FrameUpdateStates"); }
    void FramePreRenderVideo() override { Trace("FramePreRenderVideo"); }
    void FrameRenderVideo() override { Trace("FrameRenderVideo"); }
    void FramePostRenderVideo() override { Trace("FramePostRenderVideo"); }
    void FrameEnd() override { Trace("FrameEnd"); }

    /// Opens, widens or closes the window: "open", "widen", "close".
    void Work(string const &way)
    {
        string reason;
        if (way == "open")
            window_ = platform::Window::Open({.title = "Tracer", .width = 200, .height = 100}, reason);
        if (way == "close" || window_ == nullptr)
            window_.reset();
        else
            way == "open" ? window_->Show() : window_->SetSize({300, 100});
        auto const isDone = [this]
        {
            platform::PumpDesktop();
            return window_ == nullptr || window_->IsActive();
        };
        tests::WaitUntil(isDone);
        Trace("window", way + reason);
    }

    Observer observer_;
    AutoPtr<platform::Window> window_;
    std::thread talker_;
    int number_ = 1;
};

class TracerDescriptor : public ApplicationPluginDescriptor
{
public:
    TracerDescriptor()
        : ApplicationPluginDescriptor(
              PluginInfo(library_info::GetHeaderVersion(), e_plugin_application, "tracer", PluginVersion(), "", "", ""))
    {
    }
    Application *CreateApplication() override { return new TracerApplication; }
};

class TracerExtensionDescriptor : public GenericExtensionPluginDescriptor
{
public:
    TracerExtensionDescriptor()
        : GenericExtensionPluginDescriptor(PluginInfo(library_info::GetHeaderVersion(), e_plugin_generic_extension,
                                                      "tracer.ext", PluginVersion(), "", "", ""))
    {
    }
    GenericExtension *CreateGenericExtension() override { return new TracerExtension; }
};

} // namespace

QUILLMARSH_PLUGIN_LIBRARY(TracerDescriptor, TracerExtensionDescriptor)
