// The application that ships with the host: a bench to try the framework on, and an example to copy from.
#include "balls.h"
#include "benchcommands.h"
#include "benchpicture.h"
#include "datacommands.h"
#include "inputwatch.h"

#include <quillmarsh/basetools/variableregistry.h>
#include <quillmarsh/framework/application.h>
#include <quillmarsh/framework/frameworkprofiler.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/framework/pluginlibrary.h>
#include <quillmarsh/framework/stdcommandinterpreter.h>

namespace workbench
{
namespace
{

using namespace quillmarsh;

/// Lets balls bounce, works on sampled data, draws both, and shows how an application exports variables, adds commands, profiles
/// its blocks and reads devices.
class WorkbenchApplication : public Application
{
public:
    WorkbenchApplication() : balls_(settings_), inputWatch_(watchSettings_) {}

    void BeginStartup(StartupInfo const &, StartupResult &result) override { result.AppWindowText = "workbench"; }

    void Initialize() override
    {
        ExportVariables(*Kernel::Instance().GetVariableRegistry());
        data_.ExportVariables(*Kernel::Instance().GetVariableRegistry());
        // The interpreter owns its commands, and deletes them before this object is deleted.
        std_command_interpreter::Interpreter &interpreter = *Kernel::Instance().GetCommandInterpreter();
        interpreter.RegisterExternalCommand(new BenchCmd(balls_));
        interpreter.RegisterExternalCommand(new GreetCmd(settings_));
        RegisterDataCommands(interpreter, data_);
    }

    void ConnectHumanInterfaceDevice(HumanInterfaceDevice &device) override { inputWatch_.Connect(device); }

    void DisconnectHumanInterfaceDevices() override { inputWatch_.DisconnectAll(); }

    void FrameBegin(double) override
    {
        if (frameRate_ == frameRateInForce_)
            return;
        frameRateInForce_ = frameRate_;
        Kernel::Instance().SetFrameRateLimit(frameRate_);
    }

    /// Accepts all extensions: they may register codecs, which the data commands use.
    bool ConfirmGenericExtension(string const &, string const &) override { return true; }

    void FrameSampleInput() override { inputWatch_.Update(GetConOut()); }

    void FrameUpdateStates(double timeDelta) override
    {
        QUILLMARSH_PROFILE_BLOCK("Workbench");
        balls_.Move(timeDelta);
    }

    void ConnectVideoRenderer(VideoRenderer &renderer) override { picture_.ConnectVideoRenderer(renderer); }

    void DisconnectVideoRenderer() override { picture_.DisconnectVideoRenderer(); }

    void CreateVideoResources(bool) override { picture_.CreateVideoResources(); }

    void ReleaseVideoResources(bool) override { picture_.ReleaseVideoResources(); }

    void FrameRenderVideo() override { picture_.Draw(); }

private:
    /// Exports the variables. The registry copies the proxies, which refer to the variables in this object.
    void ExportVariables(VariableRegistry &registry)
    {
        registry.RegisterVariable(
            VariableProxyRangeCheckedUInt(&settings_.count, 0, 100000, "bench.balls", "number of balls"));
        registry.RegisterVariable(
            VariableProxyFloat(&settings_.gravity, "bench.gravity", "acceleration towards the floor"));
        registry.RegisterVariable(VariableProxyRangeCheckedDouble(&settings_.bounce, 0.0, 1.0, "bench.bounce",
                                                                  "fraction of its speed that a bouncing ball keeps"));
        registry.RegisterVariable(
            VariableProxyRangeCheckedInt(&settings_.steps, 1, 64, "bench.steps", "steps in each frame", true));
        registry.RegisterVariable(VariableProxyBool(&settings_.paused, "bench.paused", "stop the balls"));
        registry.RegisterVariable(
            VariableProxyString(&settings_.greeting, "bench.greeting", "text that the command greet prints"));
        registry.RegisterVariable(VariableProxyRangeCheckedDouble(&frameRate_, 0.0, 1000.0, "bench.frame-rate",
                                                                  "most frames per second, 0 for no limit"));
        registry.RegisterVariable(
            VariableProxyBool(&watchSettings_.gestures, "bench.gestures", "print gestures as they begin and end"));
        registry.RegisterVariable(VariableProxyBool(&watchSettings_.orientations, "bench.orientations",
                                                    "print the orientations of trackers"));
    }

    BallSettings settings_;
    Balls balls_;
    double frameRate_ = 0;
    double frameRateInForce_ = 0;
    WatchSettings watchSettings_;
    InputWatch inputWatch_;
    DataBench data_;
    BenchPicture picture_{balls_, data_};
};

class WorkbenchDescriptor : public ApplicationPluginDescriptor
{
public:
    WorkbenchDescriptor()
        : ApplicationPluginDescriptor(PluginInfo(library_info::GetHeaderVersion(), e_plugin_application, "workbench",
                                                 PluginVersion(1, 0, 0, 0), library_info::GetBuildTimestamp(),
                                                 "A bench to try the framework on", "The Quillmarsh authors"))
    {
    }

    Application *CreateApplication() override { return new WorkbenchApplication; }
};

} // namespace
} // namespace workbench

QUILLMARSH_PLUGIN_LIBRARY(workbench::WorkbenchDescriptor)
