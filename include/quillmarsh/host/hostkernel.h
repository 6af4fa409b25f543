// The host's kernel.
#ifndef QUILLMARSH_HOST_HOSTKERNEL_H
#define QUILLMARSH_HOST_HOSTKERNEL_H

#include <quillmarsh/host/appwindow.h>
#include <quillmarsh/host/devicegroup.h>
#include <quillmarsh/host/failures.h>
#include <quillmarsh/host/frameorder.h>
#include <quillmarsh/host/framepacer.h>
#include <quillmarsh/host/hostconsole.h>
#include <quillmarsh/host/hostrobot.h>
#include <quillmarsh/host/kernelrequests.h>
#include <quillmarsh/host/pluginset.h>
#include <quillmarsh/host/subsystemgroup.h>
#include <quillmarsh/host/videogroup.h>

#include <quillmarsh/basetools/observerlist.h>
#include <quillmarsh/basetools/variableregistry.h>
#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/dataobjects/sampletransfer.h>
#include <quillmarsh/framework/application.h>
#include <quillmarsh/framework/frameobserver.h>
#include <quillmarsh/framework/frameworkprofiler.h>
#include <quillmarsh/framework/genericextension.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/kernelexecutionparams.h>
#include <quillmarsh/framework/reconfigobserver.h>
#include <quillmarsh/framework/stdcommandinterpreter.h>
#include <quillmarsh/gui/gui_manager.h>

#include <span>

namespace quillmarsh::host
{

/// The kernel of a host: owns the services that library and plug-ins share, runs frames, and carries out requests
/// between them. Frame thread only, except where Kernel permits any thread.
///
/// ApplicationWalk brings an application up to the frames and down again, and Session uses both. A program that needs
/// other behaviour derives from this class and overrides single operations.
class HostKernel : public Kernel
{
public:
    /// Borrows `log`; if several threads print, it must be a SharedOutputStream. `report` shows a message to the user.
    HostKernel(ostream &log, std::function<void(string const &)> report, bool developerMode = false);
    ~HostKernel() override;

    /// @name Parts of the kernel
    /// The kernel owns them; references are valid while it lives.
    /// @{
    Failures &GetFailures() { return failures_; }
    Failures const &GetFailures() const { return failures_; }
    PluginSet &GetPlugins() { return plugins_; }
    HostConsole &GetConsole() { return console_; }
    ostream &GetLog() { return log_; }
    HostRobot &GetRobot() { return robot_; }
    /// Returns the current parameters, which the caller may change.
    KernelExecutionParams &GetParams() { return params_; }
    /// @}

    /// @name For the walk
    /// ApplicationWalk uses these to bring the application up and down.
    /// @{

    /// Sets the application and borrows it; null for none.
    void SetApplication(Application *application) { application_ = application; }
    std::vector<AutoPtr<GenericExtension>> &GetGenericExtensions() { return genericExtensions_; }
    /// Changes the level and notifies the application.
    void SetLevel(eKernelLevel level);
    Application::AutoInitInfo &GetAutoInit() { return autoInit_; }
    DeviceGroup &GetDevices() { return devices_; }
    VideoGroup &GetVideo() { return video_; }
    SubsystemGroup &GetSubsystems() { return subsystems_; }
    /// Returns the window that is reported to devices and application; null if there is none.
    platform::Window *GetAppWindow() const { return appWindow_.Get(); }
    /// Returns the description of a device for changes, as Kernel::HumanInterfaceDevice_DeviceInfo does.
    static HumanInterfaceDeviceInfo &GetDeviceInfo(HumanInterfaceDevice &device)
    {
        return HumanInterfaceDevice_DeviceInfo(device);
    }
    using Kernel::GUIManager_BeginConnectHumanInterfaceDevices;
    using Kernel::GUIManager_ConnectApplication;
    using Kernel::GUIManager_ConnectHumanInterfaceDevice;
    using Kernel::GUIManager_ConnectVideoRenderer;
    using Kernel::GUIManager_CreateVideoResources;
    using Kernel::GUIManager_DisconnectHumanInterfaceDevices;
    using Kernel::GUIManager_DisconnectVideoRenderer;
    using Kernel::GUIManager_EndConnectHumanInterfaceDevices;
    using Kernel::GUIManager_NotifyApplicationWindowActive;
    using Kernel::GUIManager_NotifyApplicationWindowCreated;
    using Kernel::GUIManager_OnWindowResize;
    using Kernel::GUIManager_ReleaseVideoResources;
    using Kernel::VideoRenderer_ConnectVideoSubsystem;
    using Kernel::VideoRenderer_CreateVideoResources;
    using Kernel::VideoRenderer_DisconnectVideoSubsystem;
    using Kernel::VideoRenderer_OnWindowResize;
    using Kernel::VideoRenderer_ReleaseVideoResources;
    /// Calls a hook of the application, if there is one. `name` is the place in the message of a failure. Throws what
    /// the hook throws.
    template<typename Hook>
    void CallHook(char const *name, Hook &&hook)
    {
        failures_.SetPlace(name);
        if (application_ != nullptr)
            hook(*application_);
    }
    /// Removes the commands, variables and observers that plug-ins may have left, before the plug-ins are unloaded.
    void ReleasePluginLeftovers();
    /// Makes the GUI manager, unless the program has made one itself.
    void MakeGUI();
    /// Deletes the manager that MakeGUI() has made, with everything that it owns: before the plug-ins are unloaded,
    /// whose components, shaders and cursors may be among that.
    void ReleaseGUI() { gui_.reset(); }
    static bool HasGUI() { return gui::Manager::IsCreated(); }
    /// @}

    /// @name For the loop
    /// @{
    /// Returns the steps of a frame in their order. RunFrame() does these steps, and nothing else.
    static std::span<FrameStep const> GetFrameOrder();
    /// Runs one frame. Throws what a hook throws.
    void RunFrame();
    /// Queues work for the time between two frames, as ApplyHIDReconfig() and its like do. Any thread.
    void Request(KernelRequest request);
    /// Carries out the requests since the last call.
    void CarryOutRequests();
    /// Moves the queued console lines to `lines`, whose old contents are dropped.
    void TakeQueuedLines(std::vector<string> &lines);
    /// Sleeps until the next frame is due. Without a limit of the frame rate, `idleRate` is the rate in frames per
    /// second.
    void PauseUntilNextFrame(double idleRate);
    /// @}

    void SetExecutionParams(KernelExecutionParams const &params) override;
    void GetExecutionParams(KernelExecutionParams &params) override;
    void SetThreadInfo(KernelThreadInfo const &info) override;
    void GetThreadInfo(KernelThreadInfo &info) override;
    eKernelLevel GetKernelLevel() override;
    void SetFrameRateLimit(double framesPerSecond) override;
    double GetFrameRateLimit() override;
    bool IsExitRequested() override;
    void RequestExit() override;
    void ApplyHIDReconfig(DirectInputConfig const &config, unsigned int code) override;
    void ApplyVideoReconfig(string const &pluginName, VideoConfig const &config, unsigned int code) override;
    void RequestGenericReconfig(unsigned int code, unsigned int subcode) override;
    unsigned int GetNumPlugins() override;
    bool GetPluginInfo(unsigned int index, PluginInfo &info) override;
    string GetPluginFileName(unsigned int index) override;
    unsigned int GetNumGenericExtensions() override;
    GenericExtension *GetGenericExtension(unsigned int index) override;
    GenericExtension *FindGenericExtension(string const &interfaceName) override;
    Application *GetApplicationPtr() override;
    unsigned int GetNumVideoRenderers() override;
    void GetVideoRendererInfo(unsigned int index, VideoRendererInfo &info) override;
    void GetVideoRendererProfile(unsigned int index, VideoProfile &profile) override;
    VideoRenderer *GetActiveVideoRendererPtr() override;
    void GetActiveVideoRendererInfo(VideoRendererInfo &info) override;
    void GetActiveVideoProfile(VideoProfile &profile) override;
    std_command_interpreter::Interpreter *GetCommandInterpreter() override;
    void QueueCommandLine(string const &line) override;
    unsigned int GetNumHumanInterfaceDevices() override;
    HumanInterfaceDevice *GetHumanInterfaceDevice(unsigned int index) override;
    void GetDirectInputConfig(DirectInputConfig &config) override;
    void WakeUp() override;
    unsigned int GetFrameNumber() override;
    double GetFrameTime() override;
    double GetFrameTimeDelta() override;
    Profiler *GetProfiler() override;
    ConsoleBuffers *GetConsoleBuffers() override;
    VariableRegistry *GetVariableRegistry() override;
    void AddFrameObserver(FrameObserver *observer) override;
    void RemoveFrameObserver(FrameObserver *observer) override;
    unsigned int GetNumFrameObservers() override;
    void AddReconfigObserver(ReconfigObserver *observer) override;
    void RemoveReconfigObserver(ReconfigObserver *observer) override;
    unsigned int GetNumReconfigObservers() override;
    void NotifyVSyncUpdate() override;

protected:
    /// Returns the current time for the frames. A test may override it with a clock of its own.
    virtual FramePacer::Clock::time_point GetNow();

private:
    static FrameStep const s_frameOrder[];

    template<auto Hook>
    static void CallFrameHook(HostKernel &kernel, char const *name);

    void AdvanceTime();
    static bool CanRender(HostKernel &kernel);
    void RunSteps(std::span<FrameStep const> steps, Profiler *profiler);
    void PumpDesktop();
    void PollDevices();
    void SampleDevices();
    bool MustDispatchGUIEvents(bool isAheadOfUpdate) const;
    void DispatchGUIEvents();
    void ClearGUIStats();
    void CallFrameObservers();
    void CarryOut(DeviceRequest const &request);
    void CarryOut(VideoRequest const &request);
    void CarryOut(GenericRequest const &request);
    void CarryOut(VSyncRequest const &request);
    void ReconfigureDevices(DeviceRequest const &request);
    void ReconfigureVideo(VideoRequest const &request);
    void CheckSubsystems();

    ostream &log_;
    HostConsole console_;
    Failures failures_;
    KernelExecutionParams params_;
    std::atomic<eKernelLevel> level_{e_kernel_none};
    std::atomic<bool> exitRequested_{false};
    FramePacer pacer_;
    double frameRateLimit_ = 0;
    int threadPriority_ = 0;
    bool threadPriorityBoost_ = true;

    Application *application_ = nullptr;
    Application::AutoInitInfo autoInit_;
    PluginSet plugins_;
    std::vector<AutoPtr<GenericExtension>> genericExtensions_;
    HostRobot robot_{*this};
    DeviceGroup devices_{*this};
    VideoGroup video_{*this};
    AppWindow appWindow_{*this};
    SubsystemGroup subsystems_{*this};

    unsigned int frameNumber_ = 0;
    FramePacer::Clock::time_point loopStart_;
    FramePacer::Clock::time_point frameStart_;
    double frameTimeDelta_ = 0;

    FrameworkProfiler profiler_;
    VariableRegistry variables_;
    SignalOperationsManager signalOperations_;
    DataCodecManager codecs_;
    ObserverList<FrameObserver> frameObservers_;
    ObserverList<ReconfigObserver> reconfigObservers_;

    /// @name Under the mutex
    /// @{
    std::mutex requestMutex_;
    std::vector<KernelRequest> requests_;
    std::vector<string> queuedLines_;
    /// @}
    /// True while something is queued; a frame without requests takes no lock.
    std::atomic<bool> hasRequests_{false};

    /// Null before the walk, and in a program that has a manager of its own.
    AutoPtr<gui::Manager> gui_;
    /// Made last and deleted first, because its commands use everything above.
    AutoPtr<std_command_interpreter::Interpreter> interpreter_;
};

} // namespace quillmarsh::host

#endif
