#include "video_doubles.h"

#include "tests/support/probe_component.h"
#include "tests/support/waiting.h"

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/host/session.h>
#include <quillmarsh/platform/displaymodes.h>

#include <gtest/gtest.h>

#include <map>

namespace quillmarsh::tests
{
namespace
{

string const s_openCalls = "Open Connect Resize AppConnect AppInit Create AppCreate";
string const s_closeCalls = "AppRelease Release AppDisconnect Disconnect Close";

/// A desktop that nobody sees, with subsystems that have a window.
class HeadlessDesktop : NoCopy
{
public:
    HeadlessDesktop()
    {
        string reason;
        EXPECT_TRUE(platform::UseHeadlessDesktop(1024, 768, reason)) << reason;
        TestSubsystem::s_hasWindow = true;
    }
    ~HeadlessDesktop()
    {
        TestSubsystem::s_hasWindow = false;
        EXPECT_TRUE(platform::LeaveHeadlessDesktop());
    }
};

/// A session of doubles with two renderers, which have a subsystem each.
class VideoRun
{
public:
    explicit VideoRun(string const &failing = "", unsigned int numPassing = 0)
    {
        calls.failing = failing;
        calls.numPassing = static_cast<int>(numPassing);
        for (PluginDescriptor *const descriptor :
             std::initializer_list<PluginDescriptor *>{&subsystem, &first, &second})
            session.GetKernel().GetPlugins().Add(*descriptor);
    }
    ~VideoRun()
    {
        session.Close();
        EXPECT_EQ("", calls.faults);
    }

    bool Open() { return session.Open(std::move(owned)); }
    /// Opens, runs the first frame, and drops the calls of that.
    void Begin()
    {
        ASSERT_TRUE(Open()) << reports;
        ASSERT_TRUE(session.RunFrame()) << reports;
        calls.TakeNew();
    }
    /// Runs one frame with what follows it, and returns the calls.
    string RunFrame()
    {
        session.RunFrame();
        return calls.TakeNew();
    }
    /// Requests a configuration of the active renderer.
    void Request(std::function<void(VideoConfig &)> const &change)
    {
        VideoConfig config = GetRenderer()->GetVideoConfig();
        change(config);
        session.GetKernel().ApplyVideoReconfig(GetActiveName(), config, 7);
    }
    VideoRenderer *GetRenderer() { return session.GetKernel().GetActiveVideoRendererPtr(); }
    string GetActiveName() { return GetRenderer() != nullptr ? GetRenderer()->GetPluginInfo().GetPluginName() : ""; }
    /// Returns the size of the configuration in force.
    string GetSize()
    {
        DisplayModeConfig const &mode = GetRenderer()->GetVideoConfig().DisplayMode;
        return MakeString(mode.Width) + "x" + MakeString(mode.Height);
    }
    TestSubsystem &GetSubsystem() { return dynamic_cast<TestSubsystem &>(*GetRenderer()->GetVideoSubsystem()); }

    VideoCalls calls;
    TestSubsystemDescriptor subsystem{calls};
    TestRendererDescriptor first{calls, "first"}, second{calls, "second"};
    string reports;
    host::Session session{{.report = [this](string const &text) { reports += text + "\n"; }}};
    AutoPtr<VideoApplication> owned = std::make_unique<VideoApplication>(calls);
    VideoApplication &application = *owned;
};

TEST(VideoGroup, OpensInItsOrderAndClosesInReverse)
{
    VideoRun run;
    ASSERT_TRUE(run.Open());
    string const collected = "IsCompatibleWith Collect AppFilter";
    EXPECT_EQ("AppConfirm " + collected + " AppConfirm " + collected + " AppQuery0 " + s_openCalls +
                  " AppConnectWindow",
              run.calls.TakeNew());
    EXPECT_EQ("first", run.GetActiveName());
    EXPECT_EQ(2u, run.session.GetKernel().GetNumVideoRenderers());
    EXPECT_EQ("AppVSyncOn", run.RunFrame());
    run.session.Close();
    EXPECT_EQ("AppDisconnectWindow " + s_closeCalls + " ~Renderer ~Subsystem ~Renderer ~Subsystem Cleanup",
              run.calls.TakeNew());
    EXPECT_EQ(1u, run.calls.Count("Present"));
    EXPECT_EQ("", run.reports);
}

TEST(VideoGroup, ReconfiguresBetweenFrames)
{
    struct Observer : ReconfigObserver
    {
        explicit Observer(VideoCalls &calls) : calls_(calls) { Kernel::Instance().AddReconfigObserver(this); }
        void OnVideoReconfig() override { calls_.lines.push_back("OnVideoReconfig"); }
        void OnVSyncReconfig(bool vsync) override { calls_.lines.push_back(vsync ? "OnVSyncOn" : "OnVSyncOff"); }
        VideoCalls &calls_;
    };
    VideoRun run;
    run.Begin();
    Observer const observer(run.calls);
    VideoConfig config = run.GetRenderer()->GetVideoConfig();
    config.DisplayMode = DisplayModeConfig(800, 600, 32, 60);
    config.FrameBuffer.Fullscreen = true;
    Kernel::Instance().ApplyVideoReconfig("second", config, 7);
    EXPECT_EQ("AppDisconnectWindow AppQuery7 " + s_closeCalls + " " + s_openCalls + " AppConnectWindow OnVideoReconfig",
              run.RunFrame());
    EXPECT_EQ("second", run.GetActiveName());
    EXPECT_EQ(config, run.GetRenderer()->GetVideoConfig());

    Kernel::Instance().RequestVideoReconfig(8);
    EXPECT_EQ(0u, run.RunFrame().find("AppDisconnectWindow AppQuery8 "));
    EXPECT_EQ(config, run.GetRenderer()->GetVideoConfig());
    run.GetRenderer()->UpdateVSync(false);
    EXPECT_EQ("AppVSyncOff OnVSyncOff", run.RunFrame());
    EXPECT_FALSE(run.session.HasFailed());
}

TEST(VideoGroup, ChoosesTheClosestThatFits)
{
    VideoRun run;
    // A window has any size that a window can have.
    std::pair<unsigned int, char const *> const widths[] = {
        {900, "900x480"}, {0, "640x480"}, {100000, "800x600"}, {16384, "16384x480"}};
    run.application.filter = [](VideoProfile const &profile, VideoProfile &filtered)
    {
        EXPECT_EQ(2u, filtered.GetNumDisplayModeProperties());
        EXPECT_EQ(2u, profile.GetNumFrameBufferConfigs());
        filtered.Add(DisplayModeConfig(700, 500, 32, 60));
    };
    run.Begin();
    for (auto const &[width, wanted] : widths)
    {
        run.Request([width = width](VideoConfig &config) { config.DisplayMode = {width, 480, 32, 0}; });
        run.RunFrame();
        EXPECT_EQ(wanted, run.GetSize());
    }
    run.Request(
        [](VideoConfig &config)
        {
            config.DisplayMode = {780, 550, 32, 0};
            config.FrameBuffer.Fullscreen = true;
            config.FrameBuffer.StencilBits = 0;
        });
    run.RunFrame();
    EXPECT_EQ("700x500", run.GetSize());
    EXPECT_EQ(8u, run.GetRenderer()->GetVideoConfig().FrameBuffer.StencilBits);
    // An unknown name is any renderer.
    Kernel::Instance().ApplyVideoReconfig("third", VideoConfig(false), 0);
    run.RunFrame();
    EXPECT_EQ("first", run.GetActiveName());
    EXPECT_EQ("", run.reports);
}

TEST(VideoGroup, TellsWishesAndOffersWhenNothingFits)
{
    std::vector<FrameBufferConfig> const buffers = std::exchange(TestSubsystem::s_buffers, {});
    {
        VideoRun run;
        EXPECT_FALSE(run.Open());
        for (char const *const part :
             {"Wanted: renderer 'first', a window of 640 x 480 x 32 @ 0, hardware rasterizer, back buffers 1 of "
              "8.8.8.8, "
              "depth and stencil 24.8, accumulation 0.0.0.0. Offered by 'first': 2 display modes and no frame-buffer "
              "configurations (out of order; see the manual). Offered by 'second': "})
            EXPECT_NE(string::npos, run.reports.find(part)) << run.reports;
        run.session.Close();
        EXPECT_EQ(1u, run.calls.Count("Cleanup:failed:kernel"));
    }
    {
        VideoRun run;
        run.session.GetKernel().GetVideo().GetSettings().isOptional = true;
        run.Begin();
        EXPECT_EQ(0u, run.reports.find("The run goes on without video: ")) << run.reports;
        EXPECT_EQ(1, std::count(run.reports.begin(), run.reports.end(), '\n'));
        EXPECT_EQ(nullptr, run.GetRenderer());
        EXPECT_EQ(1u, run.calls.Count("AppRender"));
        EXPECT_FALSE(run.session.HasFailed());
    }
    TestSubsystem::s_buffers = buffers;
    for (bool const isEnabled : {true, false})
    {
        VideoRun run;
        run.session.GetKernel().GetVideo().GetSettings().isEnabled = isEnabled;
        run.application.isConfirming = false;
        run.Begin();
        EXPECT_EQ(0u, run.session.GetKernel().GetNumVideoRenderers());
        EXPECT_EQ("", run.reports);
    }
}

/// A run with a lost device, a reconfiguration, and another one.
void RunThroughAll(VideoRun &run)
{
    if (!run.Open() || !run.session.RunFrame())
        return;
    run.GetSubsystem().stateAfterPresent = e_video_device_lost;
    run.session.RunFrame();
    if (!run.session.RunFrame())
        return;
    run.Request([](VideoConfig &config) { config.FrameBuffer.Fullscreen = true; });
    for (unsigned int frame = 0; frame < 3 && run.session.RunFrame(); ++frame)
    {
    }
}

/// What undoes a call, and what must not come before that.
struct Pair
{
    char const *first, *second, *gone;
};
constexpr Pair s_pairs[] = {
    {"Open", "Close", "~Subsystem"},
    {"Connect", "Disconnect", "Close"},
    {"AppPostCreate", "AppPreDestroy", "Close"},
    {"AppConnect", "AppDisconnect", "Close"},
    {"AppConnectWindow", "AppDisconnectWindow", "Close"},
    {"Create", "Release", "Disconnect"},
    {"AppCreate", "AppRelease", "Release"},
};

/// Checks that each call that returned is undone once, in time.
void CheckPair(Pair const &pair, std::vector<string> const &lines, string const &failing, unsigned int occurrence)
{
    bool isDone = false;
    for (string line : lines)
    {
        bool const isFailing = line == failing && occurrence-- == 0;
        line = line.substr(0, line.find('('));
        EXPECT_TRUE(line != pair.second || std::exchange(isDone, false)) << "undone twice: " << pair.second;
        EXPECT_FALSE(isDone && line == pair.gone) << "too early: " << line;
        if (line == pair.first)
            isDone = !isFailing;
    }
    EXPECT_FALSE(isDone) << "not undone: " << pair.first;
}

/// What Cleanup() is told when a call fails.
string ExpectCleanup(string const &failing, bool isReconfiguring, bool isEnding)
{
    if (failing.starts_with("App"))
        return "Cleanup:failed:application";
    // One renderer is left out, the device is opened anew, the last configuration comes back, or an end is no end. The
    // GUI's end of drawing belongs to the frames.
    bool const isSurvived = failing == "IsCompatibleWith" || failing == "Collect" || failing == "Present" ||
                            failing == "Release(lost)" || (isReconfiguring && failing != "End");
    if (isSurvived && !isEnding)
        return "Cleanup";
    bool const isSubsystem = failing == "Open" || failing == "Close" || failing == "Restore" || failing == "Present";
    return string("Cleanup:failed:") + (isSubsystem ? "subsystem" : "renderer");
}

TEST(VideoGroup, WhateverThrowsIsMetByItsCounterparts)
{
    HeadlessDesktop const desktop;
    std::vector<string> whole;
    {
        VideoRun run;
        RunThroughAll(run);
        EXPECT_FALSE(run.session.HasFailed()) << run.reports;
        run.session.Close();
        whole = run.calls.lines;
    }
    std::map<string, unsigned int> occurrences;
    auto const lastFrame = std::find(whole.rbegin(), whole.rend(), "Present").base();
    auto const reconfiguration = std::find(whole.begin(), whole.end(), "AppQuery7");
    for (auto call = whole.begin(); *call != "~Renderer"; ++call)
    {
        string const &failing = *call;
        unsigned int const occurrence = occurrences[failing]++;
        SCOPED_TRACE(failing + " " + MakeString(occurrence));
        VideoRun run(failing, occurrence);
        RunThroughAll(run);
        run.session.Close();
        for (Pair const &pair : s_pairs)
            CheckPair(pair, run.calls.lines, failing, occurrence);
        EXPECT_NE("", run.reports);
        EXPECT_EQ(1u, run.calls.Count(ExpectCleanup(failing, call > reconfiguration, call >= lastFrame)))
            << run.calls.lines.back() << run.reports;
        EXPECT_EQ(run.calls.lines.back() != "Cleanup", run.session.HasFailed());
    }
}

TEST(VideoGroup, GoesBackToTheLastConfigurationThatWorked)
{
    VideoRun run("Create", 1);
    run.Begin();
    VideoConfig const before = run.GetRenderer()->GetVideoConfig();
    run.Request([](VideoConfig &config) { config.FrameBuffer.Fullscreen = true; });
    EXPECT_EQ("AppDisconnectWindow AppQuery7 " + s_closeCalls +
                  " Open Connect Resize AppConnect AppInit Create AppDisconnect Disconnect Close " + s_openCalls +
                  " AppConnectWindow",
              run.RunFrame());
    EXPECT_EQ(before, run.GetRenderer()->GetVideoConfig());
    EXPECT_NE(string::npos, run.reports.find("comes back, because the new one failed: VideoRendererException: asked"))
        << run.reports;
    EXPECT_FALSE(run.session.HasFailed());

    // Now the former one fails as well: each try to open fails.
    TestSubsystem &subsystem = run.GetSubsystem();
    subsystem.isRefusing = true;
    run.Request([](VideoConfig &config) { config.FrameBuffer.Fullscreen = true; });
    run.RunFrame();
    EXPECT_TRUE(run.session.HasFailed());
    run.session.Close();
    EXPECT_EQ(1u, run.calls.Count("Cleanup:failed:subsystem"));
}

TEST(VideoGroup, WaitsForALostDevice)
{
    VideoRun run;
    run.Begin();
    run.application.opensFrame = true;
    TestSubsystem &subsystem = run.GetSubsystem();
    subsystem.stateAfterPresent = e_video_device_lost;
    subsystem.isBack = false;
    EXPECT_EQ("", run.RunFrame());
    unsigned int const numDrawn = run.calls.Count("AppRender");
    EXPECT_EQ("AppRelease(lost) Release(lost) Restore", run.RunFrame());
    EXPECT_EQ("Restore", run.RunFrame());
    EXPECT_EQ(numDrawn, run.calls.Count("AppRender"));
    EXPECT_NE(nullptr, run.GetRenderer());
    subsystem.isBack = true;
    EXPECT_EQ("Restore AppInit(lost) Create(lost) AppCreate(lost)", run.RunFrame());
    EXPECT_EQ(numDrawn + 1, run.calls.Count("AppRender"));
    // A device may be lost while it closes, too.
    subsystem.stateAfterPresent = e_video_device_lost;
    subsystem.isBack = false;
    run.RunFrame();
    run.RunFrame();
    run.session.GetKernel().RequestVideoReconfig(0);
    EXPECT_EQ("Restore AppDisconnectWindow AppQuery0 AppDisconnect Disconnect Close " + s_openCalls +
                  " AppConnectWindow",
              run.RunFrame());
    EXPECT_EQ("", run.reports);
}

TEST(VideoGroup, OpensAFailedDeviceAnewAndGivesUpWhenThatDoesNotHelp)
{
    VideoRun run;
    run.Begin();
    TestSubsystem &subsystem = run.GetSubsystem();
    for (unsigned int failure = 0; failure < 3; ++failure)
    {
        subsystem.stateAfterPresent = e_video_failed;
        run.RunFrame();
        EXPECT_EQ("AppDisconnectWindow AppQuery0 " + s_closeCalls + " " + s_openCalls + " AppConnectWindow",
                  run.RunFrame());
        EXPECT_EQ("", run.RunFrame());
    }
    EXPECT_EQ(3, std::count(run.reports.begin(), run.reports.end(), '\n'));
    run.calls.failing = "Present";
    run.RunFrame();
    EXPECT_FALSE(run.session.HasFailed()) << run.reports;
    run.calls.failing = "Present";
    run.calls.numPassing = 0;
    run.RunFrame();
    EXPECT_TRUE(run.session.HasFailed());
    run.session.Close();
    EXPECT_EQ(1u, run.calls.Count("Cleanup:failed:subsystem"));
}

TEST(VideoGroup, DrawsTheGUI)
{
    string log;
    VideoRun run;
    run.Begin();
    auto &component = *new ProbeComponent("drawn", log);
    component.action = [&run](string const &what)
    { EXPECT_EQ(what == "draw", run.GetRenderer()->GetGUIRenderer().IsDrawing()); };
    new gui::InterleavedRenderArea(new gui::InterleavedRenderArea(nullptr, 5), 6);
    auto const expectDrawn = [&](bool isDrawn)
    {
        log.clear();
        run.RunFrame();
        EXPECT_EQ(isDrawn, log.find("drawn.draw;") != string::npos);
        EXPECT_EQ(log.find(".draw;"), log.rfind(".draw;"));
    };
    auto const expectSize = [&run]
    {
        EXPECT_EQ(run.GetRenderer()->GetWindowWidth(), gui::Manager::Instance().GetWindowWidth());
        EXPECT_EQ(run.GetRenderer()->GetWindowHeight(), gui::Manager::Instance().GetWindowHeight());
    };
    expectDrawn(true);
    expectSize();
    EXPECT_EQ((std::vector<unsigned int>{5, 6}), run.application.drawnAreas);
    EXPECT_EQ(2u, run.GetRenderer()->GetGUIRenderer().Stats().NumEndInterleaved);
    // With a frame that the application leaves open, and without.
    run.application.opensFrame = true;
    expectDrawn(true);
    run.application.opensFrame = false;
    run.session.GetKernel().GetParams().AutoDrawGUI = false;
    expectDrawn(false);
    run.session.GetKernel().GetParams().AutoDrawGUI = true;

    TestSubsystem &subsystem = run.GetSubsystem();
    subsystem.stateAfterPresent = e_video_device_lost;
    subsystem.isBack = false;
    expectDrawn(true);
    expectDrawn(false);
    subsystem.isBack = true;
    expectDrawn(true);
    run.Request([](VideoConfig &config) { config.DisplayMode.Width = 333; });
    run.RunFrame();
    expectDrawn(true);
    expectSize();
    EXPECT_EQ("", run.reports);
}

TEST(VideoGroup, TellsOfItsWindow)
{
    HeadlessDesktop const desktop;
    VideoRun run;
    run.application.changeWindow = [](MainWindowProperties &properties, MainWindowGeometry &geometry)
    {
        EXPECT_EQ("quillmarsh", properties.Title);
        EXPECT_EQ(640, geometry.Width);
        properties.Title = "Test";
        geometry = {false, 40, 50, 320, 240};
    };
    run.Begin();
    host::HostKernel &kernel = run.session.GetKernel();
    platform::Window *window = kernel.GetAppWindow();
    ASSERT_NE(nullptr, window);
    EXPECT_EQ(platform::eWindowState::e_normal, window->GetState());
    EXPECT_EQ("Test", window->GetTitle());
    EXPECT_EQ(window->GetHandle(), run.application.window);
    // Application, subsystem, renderer and GUI renderer.
    auto const waitForSize = [&run](string const &size)
    {
        auto const isTold = [&]
        {
            run.session.RunFrame();
            return run.application.size == size;
        };
        EXPECT_TRUE(WaitUntil(isTold)) << run.application.size;
        EXPECT_EQ(size, run.GetSubsystem().size);
        VideoRenderer const &renderer = *run.GetRenderer();
        EXPECT_EQ(size, MakeString(renderer.GetWindowWidth()) + "x" +
                            MakeString(renderer.GetGUIRenderer().GetWindowHeight()));
    };
    waitForSize("320x240");
    EXPECT_TRUE(run.application.isActive);
    window->SetSize({500, 400});
    waitForSize("500x400");
    window->Minimize();
    for (unsigned int frame = 0; frame < 3; ++frame)
        run.RunFrame();
    waitForSize("500x400");
    window->Restore();

    // The next window comes where the last one was.
    run.application.changeWindow = nullptr;
    run.calls.TakeNew();
    run.Request([](VideoConfig &config) { config.Resizable = false; });
    run.session.RunFrame();
    EXPECT_EQ(50, run.application.lastGeometry.PositionY);
    window = kernel.GetAppWindow();
    EXPECT_EQ(40, window->GetPosition().x - window->GetFrame().left);
    EXPECT_EQ(window->GetHandle(), run.application.window);
    EXPECT_FALSE(run.session.HasFailed()) << run.reports;
}

TEST(VideoGroup, FramesEndAndShowWhatIsDrawn)
{
    // The end of the frame that stays open fails, and its resources go nevertheless.
    VideoRun run("End", 2);
    run.application.opensFrame = true;
    run.Begin();
    KernelExecutionParams &params = run.session.GetKernel().GetParams();
    gui::Renderer &gui = run.GetRenderer()->GetGUIRenderer();
    EXPECT_EQ(1u, gui.Stats().NumBegin);
    EXPECT_EQ(1u, gui.Stats().NumEnd);
    run.RunFrame();
    EXPECT_EQ(1u, gui.Stats().NumBegin);
    params.AutoClearGUIStats = params.AutoEndGUIRenderer = params.AutoPresentBackBuffer = false;
    run.RunFrame();
    EXPECT_EQ(2u, gui.Stats().NumBegin);
    EXPECT_EQ(1u, gui.Stats().NumEnd);
    EXPECT_TRUE(gui.IsDrawing());
    EXPECT_EQ(2u, run.calls.Count("Present"));
    // The open frame ends with its device.
    run.session.GetKernel().RequestVideoReconfig(0);
    run.application.opensFrame = false;
    run.calls.TakeNew();
    run.session.GetKernel().CarryOutRequests();
    EXPECT_FALSE(gui.IsDrawing());
    EXPECT_EQ(3u, run.calls.Count("End"));
    EXPECT_NE(string::npos, run.calls.TakeNew().find(s_closeCalls + " Open"));
}

} // namespace
} // namespace quillmarsh::tests
