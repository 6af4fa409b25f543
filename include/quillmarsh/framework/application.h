// Base of the plug-in that is the program: the hooks that the kernel walks it through.
#ifndef QUILLMARSH_FRAMEWORK_APPLICATION_H
#define QUILLMARSH_FRAMEWORK_APPLICATION_H

#include <quillmarsh/basetools/uid.h>
#include <quillmarsh/framework/failuredesc.h>
#include <quillmarsh/framework/kernellevel.h>
#include <quillmarsh/framework/mainwindow.h>
#include <quillmarsh/framework/plugin.h>
#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

class HumanInterfaceDevice;
class VideoConfig;
class VideoProfile;
class VideoRenderer;
class vec2;
struct DirectInputConfig;
enum eKey : unsigned int;
enum eMouseButton : unsigned int;

namespace gui
{
class Cursor;
class InterleavedRenderArea;
} // namespace gui

/// Base of the plug-in that is the program.
///
/// The kernel calls the hooks on the frame thread, group by group: start-up, generic extensions, devices, video,
/// subsystems, then frames, and on the way down what undoes each group, in reverse. Every hook has a default body; an
/// application overrides those that it needs. What a hook throws ends the run: the kernel walks everything down that was
/// up, and hands Cleanup() a description of the failure.
///
/// What is called when a hook throws:
///
/// - A hook that undoes another one is called exactly once for each call of the other one that returned, whatever threw
///   since, and in a reconfiguration that fails too. It is not called when the other one threw, and not again when it
///   threw itself. DisconnectHumanInterfaceDevices() undoes BeginConnectHumanInterfaceDevices() and all that follows it,
///   before the devices are deleted; DisconnectSubsystemsFromAppWindow() undoes ConnectSubsystemsToAppWindow();
///   CleanupSubsystems() undoes InitializeSubsystems(). The hooks of video follow the same rule.
/// - A hook that ends what another one began is called only when nothing threw in between: EndStartup(),
///   EndConfirmHumanInterfaceDevices(), EndConnectHumanInterfaceDevices(), FrameEnd().
/// - Cleanup() is called once for every application.
///
/// The pairs of codes that some hooks take come from whoever asked for a reconfiguration; both are 0 at start-up.
class QUILLMARSH_API Application : public Plugin
{
public:
    /// What the host tells about itself at start-up.
    struct QUILLMARSH_API StartupInfo
    {
        /// The host's command line: program and arguments, joined by blanks.
        string CommandLine;
        /// File of the host program.
        string ProgramFilename;
        string ProcessDirectory;
        string UserHomeDirectory;
        string UserProfileDirectory;
        /// Directory that belongs to the application's own files, in the user's profile.
        string AppProfileDirectory;
        /// File of the log; empty when none is written.
        string AppLogFilename;

        /// Prints the five paths, one a line, behind `tabs` tabs.
        void DumpPaths(ostream &out, unsigned int tabs) const;
    };

    /// What the application answers. An empty text leaves what StartupInfo said.
    struct QUILLMARSH_API StartupResult
    {
        /// Directory to change to.
        string ProcessDirectory;
        /// Directory of the application's own files; made by the host when it is not there.
        string AppProfileDirectory;
        /// File of the log, when the user named none.
        string AppLogFilename;
        /// Name of the program for people: in the window's title, and in front of the console's prompt.
        string AppWindowText;
        /// Without it the program ends in good order behind EndStartup().
        bool ContinueStartup = true;
        /// The host offers its console in the terminal when it was started from one.
        bool EnableConsole = true;
        /// Sets KernelExecutionParams::WaitCloseConfirmationOnExit.
        bool WaitCloseConfirmation = false;

        /// Prints the four texts, one a line, behind `tabs` tabs.
        void DumpPaths(ostream &out, unsigned int tabs) const;
    };

    /// What the host does by itself. An application changes what it wants to have otherwise.
    struct AutoInitInfo
    {
        /// Start the profiler before the first frame.
        bool RunProfiler = false;
        /// Register the framework's console commands before Initialize().
        bool RegisterCommands = true;
        /// Raise the priority of the frame thread.
        bool RaiseThreadPriority = false;
        /// Walk the group of generic extensions, ...
        bool OpenGenericExtensions = true;
        /// ... of devices, ...
        bool OpenDevices = true;
        /// ... of video, ...
        bool OpenVideo = true;
        /// ... and of subsystems.
        bool OpenSubsystems = true;
        /// Count each frame as an iteration of the profiler.
        bool ProfileFrames = true;
        /// Profile each frame hook as a block.
        bool ProfileHooks = true;
        /// Profile the frame observers as a block.
        bool ProfileObservers = false;
        /// Hold the limit of the frame rate.
        bool PaceFrames = true;
        /// Interpret console lines that were asked for by Kernel::QueueCommandLine.
        bool InterpretQueuedLines = true;
        /// Copy what the console shows to the log.
        bool LogConsole = true;
        /// Log each change of the kernel's level, ...
        bool LogKernelLevels = true;
        /// ... the plug-ins that were found, ...
        bool LogPlugins = true;
        /// ... the paths of start-up, ...
        bool LogPaths = true;
        /// ... and the requests that are carried out between frames.
        bool LogRequests = true;
        /// Log the number of frames and their rate at the end.
        bool LogFrameSummary = false;
        /// Log the profiler's statistics at the end.
        bool LogProfilerStatistics = false;
    };

    ~Application() override;

    /// Identifier of the application; by default one whose words are not set.
    virtual UID GetApplicationUID();

    /// @name Start-up
    /// @{

    /// The host tells its paths, the application answers.
    virtual void BeginStartup(StartupInfo const &info, StartupResult &result);
    virtual void QueryAutoInit(AutoInitInfo &info);
    /// The place to register commands and export variables.
    virtual void Initialize();
    virtual void EndStartup();
    /// Last hook, called for every application. `failed` says whether a failure ended the run, which `failure` then
    /// describes.
    virtual void Cleanup(bool failed, FailureDesc const &failure);
    /// @}

    /// @name Generic extensions
    /// @{

    /// Whether to use an extension. By default none is used.
    virtual bool ConfirmGenericExtension(string const &pluginName, string const &interfaceName);
    /// All confirmed extensions are there: see Kernel::FindGenericExtension. They go when OnKernelLevelChanged() has told
    /// of their level on the way down.
    virtual void ConnectGenericExtensions();
    /// @}

    /// @name Devices
    /// @{
    /// The group is walked from here on, when it is opened and again for each reconfiguration. Asked for each DirectInput
    /// proxy; 0x800 is version 8.
    virtual bool ConfirmDirectInputVersion(unsigned int version);
    /// Whether to use a device driver, the `index`-th of all; `flags` goes to the driver. By default each is used.
    virtual bool ConfirmHIDDriver(string const &pluginName, unsigned int index, unsigned int &flags);
    /// The configuration that is to come, which may be changed. The codes are those of the request, and 0 at start-up.
    virtual void QueryHIDConfig(DirectInputConfig &config, unsigned int code, unsigned int subcode);
    /// Whether to leave a confirmed driver out under this configuration. By default none is.
    virtual bool QueryIgnoreHIDDriver(string const &pluginName);
    /// The devices that the drivers found follow, one by one.
    virtual void BeginConfirmHumanInterfaceDevices();
    virtual bool ConfirmHumanInterfaceDevice(HumanInterfaceDevice &device);
    virtual void EndConfirmHumanInterfaceDevices();
    /// The devices that were confirmed follow, one by one.
    virtual void BeginConnectHumanInterfaceDevices(DirectInputConfig const &config);
    virtual void ConnectHumanInterfaceDevice(HumanInterfaceDevice &device);
    virtual void EndConnectHumanInterfaceDevices();
    /// The place to start sampling threads.
    virtual void SetupAsyncHIDSampling();
    /// Devices go away; nothing may refer to them any more. Called once for each BeginConnectHumanInterfaceDevices()
    /// that returned, before the devices are deleted.
    virtual void DisconnectHumanInterfaceDevices();
    /// @}

    /// @name Video
    /// @{
    virtual void FilterVideoProfile(VideoProfile const &profile, VideoProfile &filtered);
    virtual bool ConfirmVideoRenderer(string const &pluginName, string const &interfaceName);
    virtual void QueryVideoConfig(string &pluginName, VideoConfig &config, unsigned int code, unsigned int subcode);
    virtual void PostCreateMainWindow(MainWindowProperties &properties, MainWindowGeometry &geometry,
                                      string const &pluginName, VideoConfig const &config, unsigned int code);
    virtual void PreDestroyMainWindow(MainWindowGeometry const &geometry, string const &pluginName,
                                      VideoConfig const &config);
    virtual void OnVSyncUpdate(bool vsync);
    virtual void ConnectVideoRenderer(VideoRenderer &renderer);
    virtual void DisconnectVideoRenderer();
    virtual void InitVideoRendererStates(bool deviceWasLost);
    virtual void CreateVideoResources(bool deviceWasLost);
    virtual void ReleaseVideoResources(bool deviceWasLost);
    /// @}

    /// @name Reconfiguration and subsystems
    /// @{

    /// Somebody asked for it by Kernel::RequestGenericReconfig.
    virtual void GenericReconfig(unsigned int code, unsigned int subcode);
    virtual void InitializeSubsystems(unsigned int code, unsigned int subcode);
    virtual void CleanupSubsystems(unsigned int code, unsigned int subcode);
    /// `window` is null where there is no window.
    virtual void ConnectSubsystemsToAppWindow(HWND window, bool fullscreen);
    virtual void DisconnectSubsystemsFromAppWindow();
    /// Asked after a reconfiguration; a false leads to FixSubsystems().
    virtual bool CheckSubsystems();
    virtual void FixSubsystems();
    /// @}

    /// @name Notices of kernel and window
    /// @{
    virtual void OnKernelLevelChanged(eKernelLevel level);
    virtual void OnWindowActive(bool active);
    virtual void OnWindowResize(unsigned int width, unsigned int height);
    /// @}

    /// @name Frame, in this order
    /// @{

    /// `timeDelta` is in seconds, as Kernel::GetFrameTimeDelta.
    virtual void FrameBegin(double timeDelta);
    virtual void FrameSampleInput();
    virtual void FrameUpdateStates(double timeDelta);
    virtual void FramePreRenderVideo();
    virtual void FrameRenderVideo();
    /// Not part of the order: drawing into an area of the GUI, called while the GUI is drawn.
    virtual void FrameRenderArea(gui::InterleavedRenderArea const &area);
    virtual void FramePostRenderVideo();
    virtual void FrameEnd();
    /// @}

    /// @name GUI messages that nobody consumed
    /// True means handled; by default nothing is. Positions are those of the mouse.
    /// @{
    virtual bool GUIOnCommand(unsigned int commandID);
    virtual bool GUIOnActivate(bool activated, bool byMouse);
    virtual bool GUIOnMouseCapture(bool begin);
    virtual bool GUIOnMouseEnterExit(bool enter, vec2 const &position);
    virtual bool GUIOnMouseQueryCursor(gui::Cursor const *&cursor, vec2 const &position);
    virtual bool GUIOnMouseMove(bool hover, double hoverSeconds, vec2 const &position);
    virtual bool GUIOnMouseWheel(int delta, vec2 const &position);
    virtual bool GUIOnMouseButton(bool down, eMouseButton button, bool doubleClick, unsigned int repeatCount,
                                  vec2 const &position);
    virtual bool GUIOnKeyboardQueryFocus(bool byMouse, eMouseButton button, bool &wantFocus, bool &needCharacterData);
    virtual bool GUIOnKeyboardFocus(bool gotFocus);
    virtual bool GUIOnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character);
    /// @}

protected:
    Application();
};

} // namespace quillmarsh

#endif
