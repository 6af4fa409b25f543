// Base of the plug-in that is the program: the hooks that the kernel walks it through.
#ifndef QUILLMARSH_FRAMEWORK_APPLICATION_H
#define QUILLMARSH_FRAMEWORK_APPLICATION_H

#include <quillmarsh/basetools/uid.h>
#include <quillmarsh/framework/failuredesc.h>
#include <quillmarsh/framework/kernellevel.h>
#include <quillmarsh/framework/mainwindow.h>
#include <quillmarsh/framework/plugin.h>
#include <quillmarsh/gui/gui_messagehandler.h>
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
/// subsystems, then frames. At the end it calls the hooks that undo each group, in reverse order. Every hook has a
/// default body, and an application overrides the hooks that it needs. An exception from a hook ends the run: the
/// kernel walks down everything that was up, and gives Cleanup() a description of the failure.
///
/// These rules tell which hooks are called after a hook has thrown:
///
/// - A hook that undoes another one is called exactly once for each call of the other one that returned, whichever hook
///   has thrown since, and also in a reconfiguration that fails. It is not called when the other one threw, and not
///   again when it threw itself. DisconnectHumanInterfaceDevices() undoes BeginConnectHumanInterfaceDevices() and all
///   that follows it, before the devices are deleted; DisconnectSubsystemsFromAppWindow() undoes
///   ConnectSubsystemsToAppWindow(); CleanupSubsystems() undoes InitializeSubsystems(); PreDestroyMainWindow() undoes
///   PostCreateMainWindow(); DisconnectVideoRenderer() undoes ConnectVideoRenderer(); ReleaseVideoResources() undoes
///   CreateVideoResources().
/// - A hook that ends what another one began is called only when no hook has thrown in between: EndStartup(),
///   EndConfirmHumanInterfaceDevices(), EndConnectHumanInterfaceDevices(), FrameEnd().
/// - Cleanup() is called once for every application.
///
/// Some hooks take a pair of codes. They come from the caller that asked for a reconfiguration; both are 0 at start-up.
class QUILLMARSH_API Application : public Plugin, public gui::MessageHandler
{
public:
    /// Paths and command line that the host tells at start-up.
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

    /// The application's answer. An empty text leaves the value of StartupInfo as it is.
    struct QUILLMARSH_API StartupResult
    {
        /// Directory to change to.
        string ProcessDirectory;
        /// Directory of the application's own files; the host creates it if it does not exist.
        string AppProfileDirectory;
        /// File of the log, used if the user has named none.
        string AppLogFilename;
        /// Name of the program for users: in the window's title, and in front of the console's prompt.
        string AppWindowText;
        /// If false, the program ends in good order after EndStartup().
        bool ContinueStartup = true;
        /// The host offers its console in the terminal when it was started from one.
        bool EnableConsole = true;
        /// Sets KernelExecutionParams::WaitCloseConfirmationOnExit.
        bool WaitCloseConfirmation = false;

        /// Prints the four texts, one a line, behind `tabs` tabs.
        void DumpPaths(ostream &out, unsigned int tabs) const;
    };

    /// Work that the host does by itself. An application changes the switches that it wants otherwise.
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
        /// Interpret console lines that were queued by Kernel::QueueCommandLine().
        bool InterpretQueuedLines = true;
        /// Copy the console's text to the log.
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

    /// Identifier of the application. By default its words are not set.
    virtual UID GetApplicationUID();

    /// @name Start-up
    /// @{

    /// The host tells its paths in `info`, and the application answers in `result`.
    virtual void BeginStartup(StartupInfo const &info, StartupResult &result);
    /// Asks which work the host is to do by itself. `info` holds the defaults.
    virtual void QueryAutoInit(AutoInitInfo &info);
    /// The place to register commands and export variables.
    virtual void Initialize();
    /// Start-up is complete.
    virtual void EndStartup();
    /// Last hook, called for every application. `failed` is true when a failure ended the run; `failure` then describes
    /// it.
    virtual void Cleanup(bool failed, FailureDesc const &failure);
    /// @}

    /// @name Generic extensions
    /// @{

    /// Returns true to use an extension. By default none is used.
    virtual bool ConfirmGenericExtension(string const &pluginName, string const &interfaceName);
    /// All confirmed extensions exist now: see Kernel::FindGenericExtension(). They are deleted after
    /// OnKernelLevelChanged() has told of their level on the way down.
    virtual void ConnectGenericExtensions();
    /// @}

    /// @name Devices
    /// @{
    /// Returns true to use a DirectInput proxy; 0x800 is version 8. Called for each proxy. The group begins here, at
    /// start-up and again for each reconfiguration. By default each proxy is used.
    virtual bool ConfirmDirectInputVersion(unsigned int version);
    /// Returns true to use a device driver, the `index`-th of all; `flags` goes to the driver. By default each is used.
    virtual bool ConfirmHIDDriver(string const &pluginName, unsigned int index, unsigned int &flags);
    /// Shows the coming configuration, which the application may change.
    virtual void QueryHIDConfig(DirectInputConfig &config, unsigned int code, unsigned int subcode);
    /// Returns true to leave a confirmed driver out under this configuration. By default none is left out.
    virtual bool QueryIgnoreHIDDriver(string const &pluginName);
    /// The devices that the drivers found follow, one by one.
    virtual void BeginConfirmHumanInterfaceDevices();
    /// Returns true to use a device. By default each is used.
    virtual bool ConfirmHumanInterfaceDevice(HumanInterfaceDevice &device);
    /// All devices were shown.
    virtual void EndConfirmHumanInterfaceDevices();
    /// The devices that were confirmed follow, one by one.
    virtual void BeginConnectHumanInterfaceDevices(DirectInputConfig const &config);
    /// Hands over a device. It is good until DisconnectHumanInterfaceDevices() returns.
    virtual void ConnectHumanInterfaceDevice(HumanInterfaceDevice &device);
    /// All devices were handed over.
    virtual void EndConnectHumanInterfaceDevices();
    /// The place to start sampling threads.
    virtual void SetupAsyncHIDSampling();
    /// The devices will be deleted, and nothing may refer to them any more. Called once for each
    /// BeginConnectHumanInterfaceDevices() that returned, before the devices are deleted.
    virtual void DisconnectHumanInterfaceDevices();
    /// @}

    /// @name Video
    /// Video begins with each renderer that the plug-ins bring, at start-up only; then a renderer with a configuration is
    /// opened, at start-up and again for each reconfiguration. A `pluginName` is that of the renderer's plug-in. A bool
    /// `deviceWasLost` is true when everything in the device was lost: hooks with it are also called while video is
    /// open, for a device that is lost and comes back. The hooks of the window are called when the video has one.
    /// @{

    /// Removes what the application does not accept from the profile of a confirmed renderer. `filtered` contains the
    /// whole profile; VideoProfile::Filter() makes it smaller. By default all is accepted.
    virtual void FilterVideoProfile(VideoProfile const &profile, VideoProfile &filtered);
    /// Returns true to use a video renderer. By default each is used.
    virtual bool ConfirmVideoRenderer(string const &pluginName, string const &interfaceName);
    /// Shows renderer and configuration that are about to be opened, which the application may change. When they are not
    /// accepted, the closest ones are opened instead.
    virtual void QueryVideoConfig(string &pluginName, VideoConfig &config, unsigned int code, unsigned int subcode);
    /// The main window exists and is hidden. The application may change its look and place, which it gets when it is
    /// shown; a full screen has no place.
    virtual void PostCreateMainWindow(MainWindowProperties &properties, MainWindowGeometry &geometry,
                                      string const &pluginName, VideoConfig const &config, unsigned int code);
    /// The main window is about to be destroyed. Called once for each PostCreateMainWindow() that returned.
    virtual void PreDestroyMainWindow(MainWindowGeometry const &geometry, string const &pluginName,
                                      VideoConfig const &config);
    /// Waiting for the vertical retrace was switched without a reconfiguration. Also called when the frames begin.
    virtual void OnVSyncUpdate(bool vsync);
    /// Hands over the renderer, which knows the size of its window. It is good until DisconnectVideoRenderer() returns.
    virtual void ConnectVideoRenderer(VideoRenderer &renderer);
    /// Nothing may refer to the renderer any more.
    virtual void DisconnectVideoRenderer();
    /// Sets the states of the renderer that the application wants.
    virtual void InitVideoRendererStates(bool deviceWasLost);
    /// Creates what the application needs in the device.
    virtual void CreateVideoResources(bool deviceWasLost);
    /// Releases what CreateVideoResources() has created.
    virtual void ReleaseVideoResources(bool deviceWasLost);
    /// @}

    /// @name Reconfiguration and subsystems
    /// @{

    /// Carries out a reconfiguration that Kernel::RequestGenericReconfig() has asked for.
    virtual void GenericReconfig(unsigned int code, unsigned int subcode);
    /// Initialises the application's own subsystems.
    virtual void InitializeSubsystems(unsigned int code, unsigned int subcode);
    /// Cleans up what InitializeSubsystems() has made.
    virtual void CleanupSubsystems(unsigned int code, unsigned int subcode);
    /// Connects the subsystems to the application's window; `window` is null when there is none. Also called at the end
    /// of each reconfiguration of video.
    virtual void ConnectSubsystemsToAppWindow(HWND window, bool fullscreen);
    /// The window will be destroyed, at the end or for a reconfiguration of video, or because the program closes it
    /// itself.
    virtual void DisconnectSubsystemsFromAppWindow();
    /// Returns true when the subsystems work, as by default. Asked after a reconfiguration; false leads to
    /// FixSubsystems().
    virtual bool CheckSubsystems();
    /// Repairs the subsystems.
    virtual void FixSubsystems();
    /// @}

    /// @name Notices of kernel and window
    /// The application's window is the main window of the program: platform::eWindowRole::e_main. Its hooks are called
    /// between FrameBegin() and FrameSampleInput(), or within a call that changes the window; not when it closes.
    /// @{

    /// The kernel has reached another level.
    virtual void OnKernelLevelChanged(eKernelLevel level);
    /// The application's window has become the active one, or is not active any more.
    virtual void OnWindowActive(bool active);
    /// The client area of the application's window has a new size, in pixels.
    virtual void OnWindowResize(unsigned int width, unsigned int height);
    /// @}

    /// @name Frame
    /// Called in this order in each frame, except FrameRenderArea().
    /// @{

    /// Begins a frame. `timeDelta` is in seconds, like Kernel::GetFrameTimeDelta().
    virtual void FrameBegin(double timeDelta);
    virtual void FrameSampleInput();
    virtual void FrameUpdateStates(double timeDelta);
    virtual void FramePreRenderVideo();
    /// Draws the picture. By default the target is cleared: dark blue, with the farthest depth.
    virtual void FrameRenderVideo();
    /// Draws into an area of the GUI. Called while the GUI is drawn, and not part of the order.
    virtual void FrameRenderArea(gui::InterleavedRenderArea const &area);
    virtual void FramePostRenderVideo();
    virtual void FrameEnd();
    /// @}

    /// @name GUI messages that nobody consumed
    /// Each returns true when the message was handled; by default none is. Positions are those of the mouse.
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

    /// Calls the operation above of the message, and writes its answers back. Returns false for all other messages.
    bool HandleMessage(gui::Message &message) override;
};

} // namespace quillmarsh

#endif
