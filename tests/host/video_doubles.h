// A video stack and an application that note their calls, and fail in one of them on request.
#ifndef QUILLMARSH_TESTS_HOST_VIDEO_DOUBLES_H
#define QUILLMARSH_TESTS_HOST_VIDEO_DOUBLES_H

#include <video_null/nullguirenderer.h>
#include <video_null/nullsubsystem.h>

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/application.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/plugindescriptors.h>
#include <quillmarsh/framework/reconfigobserver.h>
#include <quillmarsh/framework/videoprofile.h>
#include <quillmarsh/framework/videorenderer.h>
#include <quillmarsh/framework/videosubsystem.h>
#include <quillmarsh/framework/videosubsystemwindow.h>
#include <quillmarsh/gui/gui_widgets.h>

#include <algorithm>

namespace quillmarsh::tests
{

/// The calls of a run, in their order.
struct VideoCalls
{
    std::vector<string> lines;
    /// The call that fails, and how many of them succeed before.
    string failing;
    int numPassing = 0;
    /// Faults that the GUI renderers found in the order of their calls.
    string faults;

    /// Notes a call. Throws Failure when it is the one that fails.
    template<typename Failure>
    void Note(string const &line)
    {
        lines.push_back(line);
        if (line == failing && numPassing-- == 0)
            QUILLMARSH_THROW(Failure, "asked to fail in " + line);
    }

    unsigned int Count(string const &line) const
    {
        return static_cast<unsigned int>(std::count(lines.begin(), lines.end(), line));
    }
    /// Returns the calls since the last call of this function, without those of each frame, joined by blanks.
    string TakeNew()
    {
        string joined;
        for (; numTaken_ < lines.size(); ++numTaken_)
        {
            if (string const &line = lines[numTaken_]; line != "AppRender" && line != "End" && line != "Present")
                joined += (joined.empty() ? "" : " ") + line;
        }
        return joined;
    }

private:
    std::size_t numTaken_ = 0;
};

inline string Lost(bool deviceWasLost)
{
    return deviceWasLost ? "(lost)" : "";
}

class TestWindow : public VideoSubsystemWindow
{
public:
    TestWindow(VideoConfig const &config, string const &title) : VideoSubsystemWindow(config.FrameBuffer.Fullscreen)
    {
        SetText(title);
        CreateSystemWindow(0, win_utils::e_style_overlapped, 0);
        platform::Window &window = *GetPlatformWindow();
        window.SetSize({static_cast<int>(config.DisplayMode.Width), static_cast<int>(config.DisplayMode.Height)});
        if (config.FrameBuffer.Fullscreen)
            window.SetFullscreen();
    }
    ~TestWindow() override { DestroySystemWindow(); }
};

class TestSubsystem : public video_null::NullSubsystem
{
public:
    explicit TestSubsystem(VideoCalls &calls) : calls_(calls) {}
    ~TestSubsystem() override { calls_.lines.push_back("~Subsystem"); }

    /// True gives each opened subsystem a window.
    static inline bool s_hasWindow = false;
    /// What the next subsystem offers.
    static inline std::vector<FrameBufferConfig> s_buffers = {FrameBufferConfig(false, true, 1, 24, 8, 0),
                                                              FrameBufferConfig(true, true, 1, 24, 8, 0)};
    eOperationalState stateAfterPresent = e_video_operational;
    bool isBack = true;
    bool isRefusing = false;

    bool CollectVideoProfile(ostream &log, VideoProfile &profile) override
    {
        calls_.Note<VideoSubsystemException>("Collect");
        profile.Add(DisplayModeConfig(640, 480, 32, 60));
        profile.Add(DisplayModeConfig(800, 600, 32, 60));
        for (FrameBufferConfig const &buffer : s_buffers)
            profile.Add(buffer);
        if (s_buffers.empty())
            log << "out of order\nsee the manual\n";
        return !s_buffers.empty();
    }
    void Open(VideoConfig const &config, string const &title) override
    {
        calls_.Note<VideoSubsystemException>("Open");
        if (isRefusing)
            QUILLMARSH_THROW(VideoSubsystemException, "no device");
        if (s_hasWindow)
            window_ = std::make_unique<TestWindow>(config, title);
        NullSubsystem::Open(config, title);
        stateAfterPresent = e_video_operational;
    }
    void Close() override
    {
        window_.reset();
        SetOperationalState(e_video_closed);
        calls_.Note<VideoSubsystemException>("Close");
    }
    VideoSubsystemWindow *GetWindow() override { return window_.get(); }
    void PresentBackBuffer() override
    {
        SetOperationalState(stateAfterPresent);
        calls_.Note<VideoSubsystemRecoverableException>("Present");
    }
    bool RestoreDevice() override
    {
        calls_.Note<VideoSubsystemException>("Restore");
        if (isBack)
            SetOperationalState(stateAfterPresent = e_video_operational);
        return isBack;
    }
    void OnWindowResize(unsigned int width, unsigned int height) override
    {
        size = MakeString(width) + "x" + MakeString(height);
    }

    /// The size that it was told last.
    string size;

private:
    VideoCalls &calls_;
    AutoPtr<TestWindow> window_;
};

class TestGUIRenderer : public video_null::NullGUIRenderer
{
public:
    TestGUIRenderer(VideoRenderer &parent, VideoCalls &calls)
        : NullGUIRenderer(parent, [&calls](string const &fault) { calls.faults += fault + "\n"; }),
          calls_(calls)
    {
    }

    void End() override
    {
        NullGUIRenderer::End();
        calls_.Note<VideoRendererException>("End");
    }

private:
    VideoCalls &calls_;
};

class TestRenderer : public VideoRenderer
{
public:
    TestRenderer(VideoCalls &calls, string const &interfaceName) : calls_(calls), interfaceName_(interfaceName)
    {
        AttachGUIRenderer(*new TestGUIRenderer(*this, calls));
    }
    ~TestRenderer() override { calls_.lines.push_back("~Renderer"); }

    string GetVideoRendererInterfaceName() const override { return interfaceName_; }
    bool IsCompatibleWith(VideoSubsystem const &) const override
    {
        calls_.Note<VideoRendererException>("IsCompatibleWith");
        return true;
    }

protected:
    // A call that fails leaves nothing behind.
    void ConnectVideoSubsystem(VideoSubsystem &subsystem) override
    {
        calls_.Note<VideoRendererException>("Connect");
        VideoRenderer::ConnectVideoSubsystem(subsystem);
    }
    void DisconnectVideoSubsystem() override
    {
        VideoRenderer::DisconnectVideoSubsystem();
        calls_.Note<VideoRendererException>("Disconnect");
    }
    void CreateVideoResources(bool deviceWasLost) override
    {
        calls_.Note<VideoRendererException>("Create" + Lost(deviceWasLost));
        VideoRenderer::CreateVideoResources(deviceWasLost);
    }
    void ReleaseVideoResources(bool deviceWasLost) override
    {
        VideoRenderer::ReleaseVideoResources(deviceWasLost);
        calls_.Note<VideoRendererException>("Release" + Lost(deviceWasLost));
    }
    void OnWindowResize(unsigned int width, unsigned int height) override
    {
        calls_.Note<VideoRendererException>("Resize");
        VideoRenderer::OnWindowResize(width, height);
    }

private:
    VideoCalls &calls_;
    string interfaceName_;
};

/// Notes the hooks of video, each with "App" before its name, and what Cleanup() is told.
class VideoApplication : public Application
{
public:
    explicit VideoApplication(VideoCalls &calls) : calls_(calls) {}

    std::function<void(VideoConfig &)> change;
    std::function<void(MainWindowProperties &, MainWindowGeometry &)> changeWindow;
    std::function<void(VideoProfile const &, VideoProfile &)> filter;
    bool isConfirming = true;
    bool opensFrame = false;
    std::vector<unsigned int> drawnAreas;
    /// What the window has told.
    MainWindowGeometry lastGeometry;
    bool isActive = false;
    string size;
    HWND window = nullptr;

    bool ConfirmVideoRenderer(string const &, string const &) override
    {
        Note("Confirm");
        return isConfirming;
    }
    void FilterVideoProfile(VideoProfile const &profile, VideoProfile &filtered) override
    {
        Note("Filter");
        if (filter)
            filter(profile, filtered);
    }
    void QueryVideoConfig(string &, VideoConfig &config, unsigned int code, unsigned int) override
    {
        Note("Query" + MakeString(code));
        if (change)
            change(config);
    }
    void PostCreateMainWindow(MainWindowProperties &properties, MainWindowGeometry &geometry, string const &,
                              VideoConfig const &, unsigned int) override
    {
        Note("PostCreate");
        if (changeWindow)
            changeWindow(properties, geometry);
    }
    void PreDestroyMainWindow(MainWindowGeometry const &geometry, string const &, VideoConfig const &) override
    {
        lastGeometry = geometry;
        Note("PreDestroy");
    }
    void OnWindowActive(bool active) override { isActive = active; }
    void OnWindowResize(unsigned int width, unsigned int height) override
    {
        size = MakeString(width) + "x" + MakeString(height);
    }
    void OnVSyncUpdate(bool vsync) override { Note(vsync ? "VSyncOn" : "VSyncOff"); }
    void ConnectVideoRenderer(VideoRenderer &) override { Note("Connect"); }
    void DisconnectVideoRenderer() override { Note("Disconnect"); }
    void InitVideoRendererStates(bool deviceWasLost) override { Note("Init" + Lost(deviceWasLost)); }
    void CreateVideoResources(bool deviceWasLost) override { Note("Create" + Lost(deviceWasLost)); }
    void ReleaseVideoResources(bool deviceWasLost) override { Note("Release" + Lost(deviceWasLost)); }
    void FrameRenderVideo() override
    {
        Note("Render");
        if (VideoRenderer *const renderer = Kernel::Instance().GetActiveVideoRendererPtr(); renderer && opensFrame)
            renderer->GetGUIRenderer().Begin();
    }
    void FrameRenderArea(gui::InterleavedRenderArea const &area) override { drawnAreas.push_back(area.GetAreaCode()); }
    void ConnectSubsystemsToAppWindow(HWND connected, bool) override
    {
        window = connected;
        Note("ConnectWindow");
    }
    void DisconnectSubsystemsFromAppWindow() override
    {
        window = nullptr;
        Note("DisconnectWindow");
    }
    void Cleanup(bool failed, FailureDesc const &failure) override
    {
        calls_.lines.push_back(
            string("Cleanup") + (failed ? ":failed" : "") + (failure.VideoSubsystemFailure ? ":subsystem" : "") +
            (failure.VideoRendererFailure ? ":renderer" : "") + (failure.ApplicationFailure ? ":application" : "") +
            (failure.KernelFailure ? ":kernel" : ""));
    }

private:
    void Note(string const &line) { calls_.Note<ApplicationException>("App" + line); }

    VideoCalls &calls_;
};

struct TestSubsystemDescriptor : VideoSubsystemPluginDescriptor
{
    explicit TestSubsystemDescriptor(VideoCalls &shared)
        : VideoSubsystemPluginDescriptor(PluginInfo(library_info::GetHeaderVersion(), e_plugin_video_subsystem,
                                                    "test_subsystem", PluginVersion(), "", "", "")),
          calls(shared)
    {
    }
    VideoSubsystem *CreateVideoSubsystem() override { return last = new TestSubsystem(calls); }

    VideoCalls &calls;
    /// The one that was created last.
    TestSubsystem *last = nullptr;
};

struct TestRendererDescriptor : VideoRendererPluginDescriptor
{
    TestRendererDescriptor(VideoCalls &shared, string const &name)
        : VideoRendererPluginDescriptor(
              PluginInfo(library_info::GetHeaderVersion(), e_plugin_video_renderer, name, PluginVersion(), "", "", "")),
          calls(shared)
    {
    }
    VideoRenderer *CreateVideoRenderer() override
    {
        return new TestRenderer(calls, GetPluginInfo().GetPluginName() + "-interface");
    }

    VideoCalls &calls;
};

} // namespace quillmarsh::tests

#endif
