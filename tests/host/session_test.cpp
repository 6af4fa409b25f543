#include "tests/support/failures.h"
#include "tests/support/host_process.h"
#include "tests/support/waiting.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/devices/mouse.h>
#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/host/session.h>
#include <quillmarsh/platform/window.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>

namespace quillmarsh::tests
{
namespace
{

/// The lines that tracer and test driver write during a session of three frames, with requests after the first one.
/// The line of this text that comes for the time `occurrence`, counted from 0, throws.
std::vector<string> RunSession(string const &failing, unsigned int occurrence, bool &failed)
{
    ScratchFile const trace;
    EnvironmentVariable const file("TRACER_FILE", trace.GetName().c_str());
    EnvironmentVariable const fail("TRACER_FAIL", failing.c_str());
    EnvironmentVariable const skip("TRACER_SKIP", std::to_string(occurrence).c_str());
    {
        host::Session session({.report = [](string const &) {}});
        session.GetKernel().GetPlugins().Load(TestPlugin("testdriver"));
        if (session.Open(TestPlugin("tracer")) && session.RunFrame())
        {
            session.GetKernel().RequestHIDReconfig(5);
            session.GetKernel().RequestGenericReconfig(7, 8);
            session.GetKernel().NotifyVSyncUpdate();
            while (session.RunFrame() && session.GetKernel().GetFrameNumber() < 3)
            {
            }
        }
        session.Close();
        failed = session.HasFailed();
    }
    std::vector<string> lines;
    std::istringstream text(trace.Read());
    for (string line; std::getline(text, line);)
        lines.push_back(line);
    return lines;
}

/// A hook, the hook that undoes it, and what is gone only behind that.
struct Pair
{
    string first, second, gone;
};

Pair const s_pairs[] = {
    {"BeginConnectHumanInterfaceDevices", "DisconnectHumanInterfaceDevices", "~ball"},
    {"ConnectSubsystemsToAppWindow", "DisconnectSubsystemsFromAppWindow", "level 4"},
    {"InitializeSubsystems", "CleanupSubsystems", "DisconnectSubsystemsFromAppWindow"},
};

/// Checks that each call of the first hook that returned is undone once, in time.
void CheckPair(Pair const &pair, std::vector<string> const &lines, string const &failing, unsigned int occurrence)
{
    bool isOpen = false;
    for (string const &line : lines)
    {
        if (line == pair.first)
            isOpen = line != failing || occurrence-- != 0;
        EXPECT_TRUE(line != pair.second || std::exchange(isOpen, false)) << "undone twice: " << pair.second;
        EXPECT_FALSE(isOpen && line == pair.gone) << "too early: " << line;
    }
    EXPECT_FALSE(isOpen) << "not undone: " << pair.first;
}

TEST(Session, EveryHookThatThrowsIsMetByItsCounterparts)
{
    bool failed = true;
    std::vector<string> const whole = RunSession("", 0, failed);
    EXPECT_FALSE(failed);
    ASSERT_EQ(2, std::count(whole.begin(), whole.end(), "Connect 1/ball/testdriver"));

    // What drivers and devices throw does not end a run.
    std::vector<string> const others = {
        "~", "OpenDriver", "CloseDriver", "EnumerateDevices", "CreateDevice", "ConnectDevice", "DisconnectDevice"};
    std::map<string, unsigned int> occurrences;
    for (string const &failing : whole)
    {
        if (std::any_of(others.begin(), others.end(), [&](string const &other) { return failing.starts_with(other); }))
            continue;
        unsigned int const occurrence = occurrences[failing]++;
        SCOPED_TRACE(failing + " " + std::to_string(occurrence));
        std::vector<string> const lines = RunSession(failing, occurrence, failed);
        EXPECT_TRUE(failed);
        for (Pair const &pair : s_pairs)
            CheckPair(pair, lines, failing, occurrence);
        auto const count = [&lines](string const &begin) {
            return std::count_if(lines.begin(), lines.end(),
                                 [&](string const &line) { return line.starts_with(begin); });
        };
        EXPECT_EQ(1, count("Cleanup "));
        EXPECT_EQ(count("OpenDriver"), count("CloseDriver"));
        EXPECT_EQ(count("CreateDevice 0"), count("~ball"));
    }
}

TEST(Session, RunsAnApplicationOfTheProgramsOwn)
{
    struct Talker : Application
    {
        void FrameUpdateStates(double) override { GetConOut() << "frame" << std::endl; }
        void FrameEnd() override
        {
            if (Kernel::Instance().GetFrameNumber() == 2)
                Kernel::Instance().RequestExit();
        }
    };
    std::ostringstream out, log;
    host::Session session({.programName = "talker", .out = &out, .log = &log});
    EXPECT_FALSE(session.RunFrame());
    EXPECT_TRUE(session.Open(std::make_unique<Talker>()));
    EXPECT_TRUE(session.RunFrame());
    EXPECT_FALSE(session.RunFrame());
    EXPECT_FALSE(session.RunFrame());
    session.Close();
    session.Close();
    EXPECT_FALSE(session.HasFailed());
    EXPECT_EQ("frame\nframe\n", out.str());
    EXPECT_NE(string::npos, log.str().find("Kernel level: running\nframe\n")) << log.str();
}

/// Application and component in one session, which note what they are told.
struct GUIApplication : Application
{
    struct Clock : gui::Component
    {
        explicit Clock(string &told) : told_(told) { gui::Manager::Instance().TimeNotifyRegister(*this, true); }
        ~Clock() override { told_ += "~Clock "; }
        void OnTimeDelta(double) override { told_ += "gui "; }
        string &told_;
    };

    explicit GUIApplication(string &told) : told_(told) {}
    void Initialize() override { new Clock(told_); }
    void FrameUpdateStates(double) override { told_ += "update "; }
    bool GUIOnKeyboardQueryFocus(bool, eMouseButton, bool &want, bool &) override { return want = true; }
    bool GUIOnKeyboardFocus(bool gotFocus) override
    {
        told_ += gotFocus ? "focus " : "";
        return true;
    }
    string &told_;
};

TEST(Session, HasAGUIManagerForItsApplication)
{
    string told;
    host::Session session({.report = [](string const &) {}});
    host::HostKernel &kernel = session.GetKernel();
    kernel.GetPlugins().Load(TestPlugin("testdriver"));
    ASSERT_TRUE(session.Open(std::make_unique<GUIApplication>(told)));
    auto const runFrame = [&]
    {
        session.RunFrame();
        return std::exchange(told, "");
    };
    EXPECT_EQ("update gui ", runFrame());
    kernel.GetParams().GUIEventsPreFrameUpdateStates = true;
    EXPECT_EQ("gui update ", runFrame());
    kernel.GetParams().AutoDispatchGUIEvents = false;
    EXPECT_EQ("update ", runFrame());

    gui::Manager &manager = gui::Manager::Instance();
    EXPECT_TRUE(manager.RequestKeyboardFocus(kernel.GetApplication()));
    EXPECT_EQ("focus ", std::exchange(told, ""));
    // The driver brings a mouse, and no keyboard; a reconfiguration brings another one.
    ASSERT_NE(nullptr, manager.GetMouse());
    EXPECT_EQ(nullptr, manager.GetKeyboard());
    kernel.RequestHIDReconfig(0);
    runFrame();
    EXPECT_EQ(dynamic_cast<Mouse *>(kernel.GetHIDController("Mouse", 0)), manager.GetMouse());
    ASSERT_NE(nullptr, manager.GetMouse());

    session.Close();
    EXPECT_EQ("~Clock ", told);
    EXPECT_FALSE(gui::Manager::IsCreated());
}

TEST(Session, LeavesTheProgramItsOwnGUIManager)
{
    string told;
    host::Session session({.report = [](string const &) {}});
    {
        gui::Manager manager;
        ASSERT_TRUE(session.Open(std::make_unique<GUIApplication>(told)));
        session.RunFrame();
        EXPECT_EQ("update gui ", std::exchange(told, ""));
        session.Close();
        ASSERT_TRUE(gui::Manager::IsCreated());
        EXPECT_EQ(&manager, &gui::Manager::Instance());
        EXPECT_EQ(1u, manager.GetNumTopLevelComponents());
    }
    EXPECT_EQ("~Clock ", told);
}

TEST(Session, ReportsTheMainWindowAndWhatIsLeftOfSeveral)
{
    struct Watcher : Application
    {
        string told;
        HWND window = nullptr;
        void ConnectSubsystemsToAppWindow(HWND connected, bool) override { window = connected; }
        void DisconnectSubsystemsFromAppWindow() override { window = nullptr; }
        void OnWindowResize(unsigned int width, unsigned int height) override
        {
            told += std::to_string(width) + "x" + std::to_string(height) + " ";
        }
    };
    EnvironmentVariable const driver("SDL_VIDEODRIVER", "dummy");
    string reason;
    // A program with a main loop of its own may have its window before the session.
    AutoPtr<platform::Window> window = platform::Window::Open({.width = 200, .height = 100}, reason);
    ASSERT_NE(nullptr, window) << reason;
    host::Session session({});
    auto owned = std::make_unique<Watcher>();
    Watcher const &watcher = *owned;
    ASSERT_TRUE(session.Open(std::move(owned)));
    EXPECT_EQ(window->GetHandle(), watcher.window);
    EXPECT_EQ(window->GetHandle(), session.GetKernel().GetDevices().GetAppWindow());

    AutoPtr<platform::Window> second = platform::Window::Open({.width = 300, .height = 200}, reason);
    ASSERT_NE(nullptr, second) << reason;
    EXPECT_EQ(second.get(), session.GetKernel().GetAppWindow());
    second.reset();
    EXPECT_EQ(window->GetHandle(), session.GetKernel().GetDevices().GetAppWindow());
    window->Show();
    window->SetSize({400, 250});
    auto const isTold = [&]
    {
        session.RunFrame();
        return !watcher.told.empty();
    };
    EXPECT_TRUE(tests::WaitUntil(isTold));
    EXPECT_EQ("400x250 ", watcher.told);
    EXPECT_EQ(window->GetHandle(), watcher.window);
    window.reset();
    EXPECT_EQ(nullptr, watcher.window);
    EXPECT_EQ(nullptr, session.GetKernel().GetDevices().GetAppWindow());
}

TEST(Session, RefusesWhatDoesNotFit)
{
    library_info::LibraryVersion const own = library_info::GetHeaderVersion();
    string const message = MessageOf<KernelException>(
        [&own] { host::Session({}, library_info::LibraryVersion(9, 1, 0, own.GetBuildType())); });
    EXPECT_NE(string::npos, message.find("compiled for version 9.1.")) << message;

    for (string const file : {"missing", "testdriver"})
    {
        string reported;
        host::Session session({.report = [&reported](string const &text) { reported = text; }});
        EXPECT_FALSE(session.Open(TestPlugin(file)));
        EXPECT_TRUE(session.HasFailed());
        EXPECT_NE(string::npos, reported.find(file)) << reported;
    }
}

TEST(HostKernel, OrdersAreWhatTheDocumentationTells)
{
    string const page = ReadFile(QUILLMARSH_TEST_SOURCES "docs/ARCHITECTURE.md");
    auto const expectSteps = [&page](char const *title, auto const &steps)
    {
        std::size_t at = page.find(title);
        for (auto const &step : steps)
        {
            at = page.find(string("`") + step.name + "`: " + step.description, at);
            EXPECT_NE(string::npos, at) << step.name;
        }
    };
    expectSteps("## The way of a frame", host::HostKernel::GetFrameOrder());
    expectSteps("## The way of the video stack", host::VideoGroup::GetSteps());
}

} // namespace
} // namespace quillmarsh::tests
