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
struct DirectInputConfig;
struct KernelExecutionParams;
struct KernelThreadInfo;

namespace std_command_interpreter
{
class Interpreter;
}

/// The way from anywhere in the library, in an application or in a plug-in to the program's host.
///
/// A host derives its kernel from this class, makes exactly one, and gives the library its two streams before anything
/// prints. The kernel outlives everything that was registered with it. All operations are for the frame thread, but for
/// those that say otherwise; instance and streams are set before other threads use them, and stay.
class QUILLMARSH_API Kernel : NoCopy
{
public:
    /// The one kernel. Asserts "Kernel singleton is not created." without one.
    static Kernel &Instance();
    /// The one kernel, or null, behind the same assertion.
    static Kernel *InstancePtr();

    /// The application. Asserts "No active application." while there is none.
    Application &GetApplication();

    /// @name Input devices
    /// Names are those of HIDController::GetControllerInterfaceName. A device counts once, with its first controller of
    /// that name.
    /// @{

    /// Applies the present configuration of the devices again. `code` reaches the application unchanged.
    void RequestHIDReconfig(unsigned int code);
    /// Number of devices that have such a controller.
    unsigned int GetNumHIDControllers(string const &interfaceName);
    /// Controller of one of them, by index; null past the end. Good until the devices are torn down.
    HIDController *GetHIDController(string const &interfaceName, unsigned int index);
    /// @}

    /// @name Execution
    /// @{
    virtual void SetExecutionParams(KernelExecutionParams const &params) = 0;
    virtual void GetExecutionParams(KernelExecutionParams &params) = 0;
    /// Changes priority and boost of the frame thread; handle and identifier in the record are not read. A priority
    /// that the system refuses stays as it is.
    virtual void SetThreadInfo(KernelThreadInfo const &info) = 0;
    virtual void GetThreadInfo(KernelThreadInfo &info) = 0;
    /// The stage that the program is in. Any thread.
    virtual eKernelLevel GetKernelLevel() = 0;
    /// Frames a second that are not to be exceeded; 0 runs frames without a pause. Negative values count as 0.
    virtual void SetFrameRateLimit(double framesPerSecond) = 0;
    virtual double GetFrameRateLimit() = 0;
    /// True from the first RequestExit on. Any thread.
    virtual bool IsExitRequested() = 0;
    /// Ends the frame loop after the present frame, in good order. Any thread.
    virtual void RequestExit() = 0;
    /// Tears the devices down and builds them again between two frames. `code` reaches the application unchanged.
    virtual void ApplyHIDReconfig(DirectInputConfig const &config, unsigned int code) = 0;
    /// The same for the video stack, with the named renderer.
    virtual void ApplyVideoReconfig(string const &pluginName, VideoConfig const &config, unsigned int code) = 0;
    /// @}

    /// @name Plug-ins
    /// @{

    /// Asks for Application::GenericReconfig(`code`, `subcode`) between two frames. Any thread.
    virtual void RequestGenericReconfig(unsigned int code, unsigned int subcode) = 0;
    /// Number of plug-ins that the loaded libraries offer.
    virtual unsigned int GetNumPlugins() = 0;
    /// Identity of a plug-in; false past the end.
    virtual bool GetPluginInfo(unsigned int index, PluginInfo &info) = 0;
    /// File of the library that a plug-in comes from; empty past the end.
    virtual string GetPluginFileName(unsigned int index) = 0;
    /// Number of generic extensions that the application confirmed.
    virtual unsigned int GetNumGenericExtensions() = 0;
    /// Generic extension by index; null past the end.
    virtual GenericExtension *GetGenericExtension(unsigned int index) = 0;
    /// First generic extension with the interface name; null without one.
    virtual GenericExtension *FindGenericExtension(string const &interfaceName) = 0;
    /// The application; null before it was created and after it is gone.
    virtual Application *GetApplicationPtr() = 0;
    /// @}

    /// @name Video
    /// @{
    virtual unsigned int GetNumVideoRenderers() = 0;
    virtual void GetVideoRendererInfo(unsigned int index, VideoRendererInfo &info) = 0;
    virtual void GetVideoRendererProfile(unsigned int index, VideoProfile &profile) = 0;
    /// The video renderer in use; null while there is none.
    virtual VideoRenderer *GetActiveVideoRendererPtr() = 0;
    virtual void GetActiveVideoRendererInfo(VideoRendererInfo &info) = 0;
    virtual void GetActiveVideoProfile(VideoProfile &profile) = 0;
    /// @}

    /// @name Console
    /// @{

    /// The interpreter that console lines go to: the place to register commands. Null before the application starts.
    virtual std_command_interpreter::Interpreter *GetCommandInterpreter() = 0;
    /// Interprets a line between two frames, as if it had been typed. Any thread.
    virtual void QueueCommandLine(string const &line) = 0;
    /// @}

    /// @name Devices
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
    /// Frames begun since the loop started.
    virtual unsigned int GetFrameNumber() = 0;
    /// Seconds from the start of the frame loop to the begin of the present frame.
    virtual double GetFrameTime() = 0;
    /// Seconds between the begins of the last frame and of the present one; 0 in the first.
    virtual double GetFrameTimeDelta() = 0;
    /// @}

    /// @name Services that the kernel owns
    /// @{
    virtual Profiler *GetProfiler() = 0;
    virtual ConsoleBuffers *GetConsoleBuffers() = 0;
    virtual VariableRegistry *GetVariableRegistry() = 0;
    /// @}

    /// @name Observers
    /// Not owned. Adding twice counts once, null is ignored, and so is the removal of a pointer that is not held. An
    /// observer may add and remove any observer, itself too, while it is called: one that was removed is not called any
    /// more, one that was added is called from the next time on.
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

    /// What is known of a device, for the kernel to fill in creation id and creator.
    static HumanInterfaceDeviceInfo &HumanInterfaceDevice_DeviceInfo(HumanInterfaceDevice &device);

private:
    friend QUILLMARSH_API ostream &GetConOut();
    friend QUILLMARSH_API ostream &GetLogOut();

    static Kernel *s_pInstanceKernel;
    static ostream *s_pConOut;
    static ostream *s_pLogOut;
};

/// The console's stream, once a host has set it. A SharedOutputStream gives each thread a stream of its own, so that any
/// thread may print; any other stream is returned as it was set, and belongs to the frame thread.
QUILLMARSH_API ostream &GetConOut();
/// The log's stream, likewise. A device that fails on its sampling thread prints there.
QUILLMARSH_API ostream &GetLogOut();

} // namespace quillmarsh

#endif
