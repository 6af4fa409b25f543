// Contract between the library and the host's kernel.
#ifndef QUILLMARSH_FRAMEWORK_KERNEL_H
#define QUILLMARSH_FRAMEWORK_KERNEL_H

#include <quillmarsh/framework/kernellevel.h>
#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

class Application;
class ConsoleBuffers;
class FrameObserver;
class GenericExtension;
class HIDController;
class HumanInterfaceDevice;
class HumanInterfaceDeviceInfo;
class PluginInfo;
class Profiler;
class ReconfigObserver;
class VariableRegistry;
class VideoConfig;
class VideoProfile;
class VideoRenderer;
class VideoRendererInfo;
class VideoSubsystem;
struct DirectInputConfig;
struct KernelExecutionParams;
struct KernelThreadInfo;

namespace std_command_interpreter
{
class Interpreter;
}

/// Gives the library, applications and plug-ins access to the program's host.
///
/// A host derives its kernel from this class, makes exactly one object, and gives the library its two streams before
/// anything prints. The kernel outlives everything that was registered with it. All operations are for the frame thread
/// unless they say otherwise. Instance and streams are set before other threads use them, and do not change after that.
class QUILLMARSH_API Kernel : NoCopy
{
public:
    /// The one kernel. Asserts "Kernel singleton is not created." without one.
    static Kernel &Instance();
    /// The one kernel, with the same assertion; null without one.
    static Kernel *InstancePtr();

    /// The application. Asserts "No active application." while there is none.
    Application &GetApplication();

    /// @name Video stack
    /// @{

    /// The video renderer in use. Asserts "No active video-renderer." while there is none.
    VideoRenderer &GetActiveVideoRenderer();
    /// Applies the present configuration of the video stack again; without an active renderer, an empty name and a
    /// default configuration. `code` is passed on to the application.
    void RequestVideoReconfig(unsigned int code);
    /// @}

    /// @name Input devices
    /// Names are those of HIDController::GetControllerInterfaceName(). A device counts once, with its first controller
    /// of that name.
    /// @{

    /// Applies the present configuration of the devices again. `code` is passed on to the application.
    void RequestHIDReconfig(unsigned int code);
    /// Number of devices that have such a controller.
    unsigned int GetNumHIDControllers(string const &interfaceName);
    /// Controller of one of these devices, by index; null past the end. Good until the devices are deleted.
    HIDController *GetHIDController(string const &interfaceName, unsigned int index);
    /// @}

    /// @name Execution
    /// A getter gives the values that count now.
    /// @{
    virtual void SetExecutionParams(KernelExecutionParams const &params) = 0;
    virtual void GetExecutionParams(KernelExecutionParams &params) = 0;
    /// Changes priority and boost of the frame thread; handle and identifier in the record are ignored. If the system
    /// refuses a priority, the old one stays.
    virtual void SetThreadInfo(KernelThreadInfo const &info) = 0;
    virtual void GetThreadInfo(KernelThreadInfo &info) = 0;
    /// Present stage of the program. Any thread.
    virtual eKernelLevel GetKernelLevel() = 0;
    /// Sets the limit of frames per second; 0 runs frames without a pause. Negative values and NaN count as 0.
    virtual void SetFrameRateLimit(double framesPerSecond) = 0;
    virtual double GetFrameRateLimit() = 0;
    /// True after the first RequestExit(). Any thread.
    virtual bool IsExitRequested() = 0;
    /// Ends the frame loop after the present frame, in good order. Any thread.
    virtual void RequestExit() = 0;
    /// Deletes the devices and builds them again between two frames. `code` is passed on to the application.
    virtual void ApplyHIDReconfig(DirectInputConfig const &config, unsigned int code) = 0;
    /// Opens the video stack anew between two frames, with the named renderer; an empty name lets the host choose.
    virtual void ApplyVideoReconfig(string const &pluginName, VideoConfig const &config, unsigned int code) = 0;
    /// @}

    /// @name Plug-ins
    /// @{

    /// Requests a call of Application::GenericReconfig() with these codes between two frames. Any thread.
    virtual void RequestGenericReconfig(unsigned int code, unsigned int subcode) = 0;
    /// Number of plug-ins that the loaded libraries offer.
    virtual unsigned int GetNumPlugins() = 0;
    /// Identity of a plug-in; false past the end.
    virtual bool GetPluginInfo(unsigned int index, PluginInfo &info) = 0;
    /// File of the library that a plug-in comes from; empty past the end.
    virtual string GetPluginFileName(unsigned int index) = 0;
    /// Number of generic extensions that the application confirmed.
    virtual unsigned int GetNumGenericExtensions() = 0;
    /// Generic extension by index; null past the end. The kernel owns it.
    virtual GenericExtension *GetGenericExtension(unsigned int index) = 0;
    /// First generic extension with the interface name; null without one.
    virtual GenericExtension *FindGenericExtension(string const &interfaceName) = 0;
    /// The application; null before it was created and after it was deleted.
    virtual Application *GetApplicationPtr() = 0;
    /// @}

    /// @name Video
    /// Video renderers by index, and the one in use. Past the end, and without one in use, outputs stay as they are.
    /// @{
    virtual unsigned int GetNumVideoRenderers() = 0;
    virtual void GetVideoRendererInfo(unsigned int index, VideoRendererInfo &info) = 0;
    virtual void GetVideoRendererProfile(unsigned int index, VideoProfile &profile) = 0;
    /// The video renderer in use; null while there is none.
    virtual VideoRenderer *GetActiveVideoRendererPtr() = 0;
    virtual void GetActiveVideoRendererInfo(VideoRendererInfo &info) = 0;
    virtual void GetActiveVideoProfile(VideoProfile &profile) = 0;
    /// Makes the closest configuration to a wish that a renderer's profile offers. The first renderer that has one wins;
    /// a renderer whose interface has another name than `rendererName` is passed over, unless that is empty. Gives the
    /// name of the renderer's plug-in. Without such a renderer it returns false, and gives the wish and an empty name.
    bool ConstructClosestSafeVideoConfig(string const &rendererName, VideoConfig const &wish, string &outRendererName,
                                         VideoConfig &out);
    /// @}

    /// @name Console
    /// @{

    /// Interpreter of the console's lines, where commands are registered. Null before the application starts.
    virtual std_command_interpreter::Interpreter *GetCommandInterpreter() = 0;
    /// Interprets a line between two frames, as if it had been typed. Any thread.
    virtual void QueueCommandLine(string const &line) = 0;
    /// @}

    /// @name Devices
    /// The kernel owns them.
    /// @{
    virtual unsigned int GetNumHumanInterfaceDevices() = 0;
    /// Device by index; null past the end.
    virtual HumanInterfaceDevice *GetHumanInterfaceDevice(unsigned int index) = 0;
    virtual void GetDirectInputConfig(DirectInputConfig &config) = 0;
    /// @}

    /// @name Frames
    /// @{

    /// Ends the pause between two frames early, so that the next one begins at once. Any thread.
    virtual void WakeUp() = 0;
    /// Number of frames that were begun since the loop started.
    virtual unsigned int GetFrameNumber() = 0;
    /// Seconds from the start of the frame loop to the beginning of the present frame.
    virtual double GetFrameTime() = 0;
    /// Seconds between the beginnings of the last frame and of the present one; 0 in the first frame.
    virtual double GetFrameTimeDelta() = 0;
    /// @}

    /// @name Services
    /// The kernel owns them. They are good as long as the kernel.
    /// @{
    virtual Profiler *GetProfiler() = 0;
    virtual ConsoleBuffers *GetConsoleBuffers() = 0;
    virtual VariableRegistry *GetVariableRegistry() = 0;
    /// @}

    /// @name Observers
    /// Observers are borrowed. Null is ignored; so are the addition of an observer that was added before, and the
    /// removal of one that was not. An observer may add and remove any observer, also itself, while it is called: a
    /// removed observer is not called any more, an added one is called from the next time on.
    /// @{
    virtual void AddFrameObserver(FrameObserver *observer) = 0;
    virtual void RemoveFrameObserver(FrameObserver *observer) = 0;
    virtual unsigned int GetNumFrameObservers() = 0;
    virtual void AddReconfigObserver(ReconfigObserver *observer) = 0;
    virtual void RemoveReconfigObserver(ReconfigObserver *observer) = 0;
    virtual unsigned int GetNumReconfigObservers() = 0;
    /// Tells application and reconfiguration observers that waiting for the vertical synchronisation was changed
    /// without a reconfiguration.
    virtual void NotifyVSyncUpdate() = 0;
    /// @}

protected:
    /// Asserts "Kernel singleton already created." when there is one.
    Kernel();
    /// Asserts "Destructing non-existent Kernel singleton." when there is none.
    virtual ~Kernel();

    /// Sets the streams that GetConOut() and GetLogOut() give. They are borrowed, set before other threads print, and
    /// outlive all printing. A program whose threads print gives streams of class SharedOutputStream.
    static void SetOutputStreams(ostream &conOut, ostream &logOut);

    /// Description of a device, for the kernel to fill in creation id and creator.
    static HumanInterfaceDeviceInfo &HumanInterfaceDevice_DeviceInfo(HumanInterfaceDevice &device);

    /// @name Doors to the GUI manager
    /// Each calls the private operation of that name of gui::Manager::Instance(), for the host to connect what it opens
    /// and to pass notices on.
    /// @{
    static void GUIManager_ConnectApplication(bool connect);
    static void GUIManager_NotifyApplicationWindowActive(bool active);
    static void GUIManager_NotifyApplicationWindowCreated();
    static void GUIManager_BeginConnectHumanInterfaceDevices();
    static void GUIManager_ConnectHumanInterfaceDevice(HumanInterfaceDevice &device);
    static void GUIManager_EndConnectHumanInterfaceDevices();
    static void GUIManager_DisconnectHumanInterfaceDevices();
    static void GUIManager_SetTolerateMissingInputDevice(bool tolerate);
    static void GUIManager_ConnectVideoRenderer(VideoRenderer &renderer);
    static void GUIManager_DisconnectVideoRenderer();
    static void GUIManager_CreateVideoResources(bool onlyIfUnmanaged);
    static void GUIManager_ReleaseVideoResources(bool onlyIfUnmanaged);
    static void GUIManager_OnWindowResize(unsigned int width, unsigned int height);
    /// @}

    /// @name Doors to the video renderer
    /// Each calls the renderer's protected operation of that name.
    /// @{
    static void VideoRenderer_ConnectVideoSubsystem(VideoRenderer &renderer, VideoSubsystem &subsystem);
    static void VideoRenderer_DisconnectVideoSubsystem(VideoRenderer &renderer);
    static void VideoRenderer_CreateVideoResources(VideoRenderer &renderer, bool deviceWasLost);
    static void VideoRenderer_ReleaseVideoResources(VideoRenderer &renderer, bool deviceWasLost);
    static void VideoRenderer_OnWindowResize(VideoRenderer &renderer, unsigned int width, unsigned int height);
    /// @}

private:
    friend QUILLMARSH_API ostream &GetConOut();
    friend QUILLMARSH_API ostream &GetLogOut();

    static Kernel *s_pInstanceKernel;
    static ostream *s_pConOut;
    static ostream *s_pLogOut;
};

/// The console's stream, once a host has set it. A SharedOutputStream gives each thread a stream of its own, so that
/// any thread may print; any other stream is returned as it was set, and belongs to the frame thread.
QUILLMARSH_API ostream &GetConOut();
/// The log's stream, likewise. A device that fails on its sampling thread prints there.
QUILLMARSH_API ostream &GetLogOut();

} // namespace quillmarsh

#endif
