// The video stack of a run.
#ifndef QUILLMARSH_HOST_VIDEOGROUP_H
#define QUILLMARSH_HOST_VIDEOGROUP_H

#include <quillmarsh/host/videooffers.h>
#include <quillmarsh/host/windowtitle.h>

#include <quillmarsh/framework/mainwindow.h>
#include <quillmarsh/platform/window.h>

#include <optional>
#include <span>

namespace quillmarsh::host
{

class VideoGroup;
struct VideoRequest;

/// What a program wants of its video. It may change these values before the application starts.
struct VideoSettings
{
    /// False leaves out the video plug-ins that are loaded.
    bool isEnabled = true;
    /// Lets the run go on without video when no renderer can be opened; a message then tells why.
    bool isOptional = false;
    /// Plug-in of the renderer to begin with; empty for the first one that fits.
    string pluginName = {};
    /// Configuration to begin with.
    VideoConfig config{true};
    /// Title of the window. An application may change it in PostCreateMainWindow().
    string title = "quillmarsh";
    /// Folder for the logs of video profiles, if it exists; empty for none.
    string logDirectory = {};
};

/// One step on the way from a closed video stack to one that draws. VideoGroup::GetSteps() returns all steps in their
/// order; the way back undoes them from the end.
struct VideoStep
{
    /// Name of the operation or hook.
    char const *name;
    /// One sentence for the reader.
    char const *description;
    /// Name of the operation or hook that undoes it; null if nothing does.
    char const *undoName;
    /// Does the step.
    void (VideoGroup::*run)();
    /// Undoes it; null if there is nothing to undo.
    void (VideoGroup::*undo)() = nullptr;
    /// True for a step that is undone for a lost device, and done again when the device is back.
    bool isInDevice = false;
};

/// The video stack of a run: a subsystem with its device and main window, and the renderer that draws with it.
///
/// Opens them step by step, reconfigures them, and closes them again. A step is undone exactly once when it succeeded,
/// and not at all when it failed. After a new configuration that fails, the last good one comes back. Exceptions of the
/// application's hooks pass through, as do failures of plug-ins that leave no working configuration. Frame thread only.
class VideoGroup : NoCopy
{
public:
    /// Borrows `kernel`, which must outlive this object.
    explicit VideoGroup(HostKernel &kernel);
    ~VideoGroup();

    VideoSettings &GetSettings() { return settings_; }
    /// Returns the steps of opening in their order.
    static std::span<VideoStep const> GetSteps();

    /// @name Life
    /// @{

    /// Collects the renderers, and opens the one that the settings ask for. Does nothing when no plug-in brings one.
    /// Passes the codes to QueryVideoConfig(). Throws what a hook or a plug-in throws.
    void Open(unsigned int code, unsigned int subcode);
    /// Closes the stack and opens it anew with another configuration. Does nothing when there is no renderer. When no
    /// configuration fits, tells so and changes nothing; when opening fails, tells so and goes back to the last good
    /// configuration. Throws what a hook throws, and what that last way throws.
    void Reconfigure(VideoRequest const &request);
    /// Closes the stack. Reports and keeps failures, and goes on.
    void Close();
    /// Deletes renderers and subsystems. Call it after Close().
    void Release();
    /// @}

    /// @name State
    /// @{
    VideoOffers const &GetOffers() const { return offers_; }
    /// Returns the renderer in use with its subsystem; null while none is connected.
    VideoOffer *GetActive() const;
    /// True when frames are drawn and shown.
    bool IsDrawable() const;
    /// True while a frame of the GUI renderer is open.
    bool IsDrawing() const;
    /// True when presenting a frame waits for the display, so that frames need no other pause.
    bool IsPacedByDisplay() const;
    /// @}

    /// @name Frames
    /// @{

    /// True when the device is lost or has failed.
    bool NeedsRepair() const;
    /// Releases what was in a lost device, and makes it anew when the device is back. Requests a reconfiguration for a
    /// device that has failed.
    void Repair();
    /// Lets the GUI manager draw.
    void DrawGUI();
    /// Ends the open frame of the GUI renderer.
    void EndGUIRenderer();
    /// Shows the frame.
    void Present();
    /// Tells subsystem, renderer and GUI manager the size of their window, if it has a new one.
    void OnWindowGeometry(platform::Window const &window);
    /// @}

private:
    static VideoStep const s_steps[];

    /// @name The steps, and what undoes them
    /// @{
    void OpenSubsystem();
    void CloseSubsystem();
    void PostCreateMainWindow();
    void PreDestroyMainWindow();
    void ShowMainWindow();
    void ConnectSubsystem();
    void DisconnectSubsystem();
    void TellSize();
    void ConnectGUI();
    void DisconnectGUI();
    void ConnectRenderer();
    void DisconnectRenderer();
    void InitRendererStates();
    void CreateRendererResources();
    void ReleaseRendererResources();
    void CreateGUIResources();
    void ReleaseGUIResources();
    void CreateResources();
    void ReleaseResources();
    /// @}

    void OpenFirst(unsigned int code, unsigned int subcode);
    VideoChoice Query(string pluginName, VideoConfig config, unsigned int code, unsigned int subcode);
    void OpenChoice(VideoChoice const &choice);
    void Raise();
    template<typename Guard>
    void Lower(std::size_t height, Guard &&guard);
    /// Undoes steps in the run. Reports failures of plug-ins; throws the first failure of a hook when all is undone.
    void LowerInRun(std::size_t height);
    /// Runs work on the device, and requests a reconfiguration when it fails in a way that this may mend.
    template<typename Call>
    void UseDevice(char const *place, Call &&call);
    void RequestReopening(string const &reason);
    platform::Window *FindWindow() const;
    /// True while the GUI manager has the renderer.
    bool HasGUI() const;
    bool SetWindowSize(platform::Window const &window);
    template<typename Hook>
    void CallHook(char const *name, Hook &&hook);
    /// Returns the reason when `call` throws, but lets an exception of a hook pass.
    template<typename Call>
    std::optional<string> CatchUnlessHook(Call &&call);
    VideoSubsystem &Subsystem() { return *choice_->offer->subsystem; }
    VideoRenderer &Renderer() { return *choice_->offer->renderer; }

    HostKernel &kernel_;
    VideoSettings settings_;
    VideoOffers offers_;
    WindowTitle title_;

    /// The renderer that is open or about to be, and the configuration that it was opened with.
    std::optional<VideoChoice> choice_;
    /// The last one that was open with all steps.
    std::optional<VideoChoice> lastGood_;
    /// Number of steps that are done.
    std::size_t height_ = 0;
    bool isConnected_ = false;
    bool isGUIConnected_ = false;
    unsigned int code_ = 0;
    bool deviceWasLost_ = false;
    /// A hook has thrown the last exception.
    bool hasHookFailed_ = false;
    /// The device has failed, and waits for a reconfiguration.
    bool isBroken_ = false;
    /// No frame was shown since the device failed.
    bool isReopened_ = false;
    /// Number of frames in a row that did not wait for the display.
    unsigned int numHastyFrames_ = 0;
    double hastyFrameTime_ = 0;

    /// @name The main window
    /// @{
    bool isWindowTold_ = false;
    MainWindowProperties properties_;
    MainWindowGeometry geometry_;
    /// Geometry of the last window that was not maximized.
    std::optional<MainWindowGeometry> lastGeometry_;
    platform::Window::Size windowSize_;
    /// @}
};

} // namespace quillmarsh::host

#endif
