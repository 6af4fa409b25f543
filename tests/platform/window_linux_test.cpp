// A window under simulated input, on a virtual display.
#include <quillmarsh/basetools/windows/messageloop.h>
#include <quillmarsh/platform/clipboard.h>
#include <quillmarsh/platform/desktopevents.h>
#include <quillmarsh/platform/openglcontext.h>
#include <quillmarsh/platform/window.h>

#include "source/platform/messagequeue.h"
#include "source/platform/threads.h"
#include "tests/support/environment_variable.h"
#include "tests/support/leaks.h"
#include "tests/support/virtual_display.h"
#include "tests/support/waiting.h"
#include "tests/support/x11_client_linux.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <future>
#include <optional>

namespace quillmarsh::platform
{
namespace
{

template<typename Condition>
bool PumpUntil(Condition condition)
{
    return tests::WaitUntil([&] { return PumpDesktop(), condition(); });
}

/// Keeps the events since the last look.
class RecordingListener : public DesktopListener
{
public:
    void OnDesktopEvent(DesktopEvent const &event) override { events.push_back(event); }
    /// Pumps until an event of this kind fulfils the condition.
    template<typename Condition>
    bool Await(eDesktopEvent kind, Condition condition)
    {
        auto const fits = [&](DesktopEvent const &event) { return event.kind == kind && condition(event); };
        return PumpUntil([&] { return std::any_of(events.begin(), events.end(), fits); });
    }
    bool Await(eDesktopEvent kind, bool isOn)
    {
        return Await(kind, [=](DesktopEvent const &event) { return event.isOn == isOn; });
    }

    std::vector<DesktopEvent> events;
};

using WindowOnADisplay = tests::OnADisplay;

TEST_F(WindowOnADisplay, ReportsUserInput)
{
    string reason;
    AutoPtr<Window> window = Window::Open({.title = "Quillmarsh test", .width = 200, .height = 100}, reason);
    ASSERT_NE(nullptr, window) << reason;
    RecordingListener listener;
    DesktopSubscription const subscription(listener);
    window->Show();
    ASSERT_TRUE(listener.Await(eDesktopEvent::e_windowExposed, false));
    ASSERT_TRUE(
        display_.Do("search --sync --name '^Quillmarsh test$' windowmove --sync 100 120 windowsize --sync 240 180"));
    ASSERT_TRUE(PumpUntil(
        [&] {
            return window->GetPosition().x == 100 && window->GetPosition().y == 120 && window->GetSize().width == 240;
        }));
    ASSERT_TRUE(display_.Do("search --name '^Quillmarsh test$' windowfocus --sync"));
    EXPECT_TRUE(listener.Await(eDesktopEvent::e_windowActive, true));
    EXPECT_EQ(window.get(), Window::GetActive());
    EXPECT_TRUE(listener.Await(eDesktopEvent::e_windowGeometry, [](auto &) { return true; }));

    ASSERT_TRUE(display_.Do("mousemove 150 170 click 3 keydown shift click 4 keyup shift"));
    EXPECT_TRUE(listener.Await(eDesktopEvent::e_mouseInside, true));
    auto const isAtPointer = [](DesktopEvent const &event) { return event.x == 50 && event.y == 50; };
    EXPECT_TRUE(listener.Await(eDesktopEvent::e_mouseMove, isAtPointer));
    EXPECT_TRUE(listener.Await(eDesktopEvent::e_mouseButton,
                               [&](auto &event) {
                                   return event.button == e_mouse_button_right && !event.isOn && isAtPointer(event) &&
                                          event.window == window.get();
                               }));
    EXPECT_TRUE(listener.Await(eDesktopEvent::e_mouseWheel, [&](auto &event)
                               { return event.wheel == 1 && isAtPointer(event) && event.modifiers.isShiftDown; }));
    ASSERT_TRUE(display_.Do("key shift+a"));
    EXPECT_TRUE(listener.Await(eDesktopEvent::e_key, [](auto &event)
                               { return event.key == e_key_a && event.modifiers.isShiftDown && event.isOn; }));
    EXPECT_TRUE(listener.Await(eDesktopEvent::e_text, [](auto &event) { return string(event.text) == "A"; }));
    char32_t character = 0;
    EXPECT_TRUE(FindKeyCharacter(e_key_a, {.isShiftDown = true}, character));
    EXPECT_EQ(U'A', character);

    EXPECT_TRUE(WriteClipboardText("text"));
    EXPECT_EQ("text", ReadClipboardText());
    tests::X11Client(display_.GetName()).TakeClipboard();
    EXPECT_TRUE(listener.Await(eDesktopEvent::e_clipboard, false));

    window->SetFullscreen();
    EXPECT_TRUE(PumpUntil([&] { return window->GetSize().width == 800 && window->GetPosition().y == 0; }));
    EXPECT_EQ(eWindowState::e_fullscreen, window->GetState());
    window->Restore();
    EXPECT_TRUE(PumpUntil([&] { return window->GetSize().width == 240 && window->GetPosition().y == 120; }));
    window->Hide();
    EXPECT_EQ(eWindowState::e_hidden, window->GetState());
}

TEST_F(WindowOnADisplay, TellsNamesOfDroppedFiles)
{
    struct Listener : DesktopListener
    {
        void OnDesktopEvent(DesktopEvent const &event) override
        {
            if (event.kind == eDesktopEvent::e_fileDropped)
                fileNames.push_back(string(event.fileName) + (event.window ? "" : ": without a window"));
        }
        std::vector<string> fileNames;
    } listener;
    string reason;
    AutoPtr<Window> window = Window::Open({.title = "Quillmarsh drop"}, reason);
    ASSERT_NE(nullptr, window) << reason;
    DesktopSubscription const subscription(listener);
    window->Show();
    tests::X11Client client(display_.GetName());
    ASSERT_TRUE(PumpUntil([&] { return client.DropFile("Quillmarsh drop", "file:///tmp/a%20b%C3%A4.png"); }));
    ASSERT_TRUE(PumpUntil([&] { return client.OfferDropped(), !listener.fileNames.empty(); }));
    EXPECT_EQ(listener.fileNames, (std::vector<string>{"/tmp/a b\u00e4.png"}));
}

TEST_F(WindowOnADisplay, ShowsPixelsWithinItsLimitsAndTakesNoUnknownMode)
{
    string reason;
    AutoPtr<Window> window = Window::Open({.width = 60, .height = 40, .hasFrame = false}, reason);
    ASSERT_NE(nullptr, window) << reason;
    window->SetPosition({200, 100});
    RecordingListener listener;
    DesktopSubscription const subscription(listener);
    window->Show();
    ASSERT_TRUE(listener.Await(eDesktopEvent::e_windowExposed, false));
    // Two rows of three pixels, with a fourth that does not belong to the image, and the lower row first in memory.
    std::uint32_t pixels[] = {0x111111, 0x222222, 0x333333, 0xffffff, 0x00ff8040, 0x00123456, 0x00654321, 0xffffff};
    window->ShowImage({reinterpret_cast<unsigned char *>(pixels + 4), -16, 2, 3, false});
    tests::X11Client client(display_.GetName());
    EXPECT_EQ(0xff8040u, client.GetPixel(200, 100));
    EXPECT_EQ(0x654321u, client.GetPixel(202, 100));
    EXPECT_EQ(0x222222u, client.GetPixel(201, 101));
    EXPECT_NE(0xffffffu, client.GetPixel(203, 100));

    window->SetSizeLimits({50, 30}, {0, 300});
    window->SetSize({10, 900});
    EXPECT_TRUE(PumpUntil([&] { return window->GetSize().width == 50 && window->GetSize().height == 300; }));
    // New limits count, whatever the former ones were.
    window->SetSizeLimits({60, 400}, {0, 500});
    window->SetSize({10, 10});
    EXPECT_TRUE(PumpUntil([&] { return window->GetSize().width == 60 && window->GetSize().height == 400; }));
    window->SetSizeLimits({50, 30}, {0, 300});
    window->SetSize({10, 900});
    EXPECT_TRUE(PumpUntil([&] { return window->GetSize().width == 50 && window->GetSize().height == 300; }));
    Window::Position mouse;
    ASSERT_TRUE(display_.Do("mousemove 321 123"));
    EXPECT_TRUE(PumpUntil([&] { return FindMouse(mouse) && mouse.x == 321 && mouse.y == 123; }));

    EXPECT_FALSE(window->SetFullscreen({4000, 3000, 32, 60}, reason));
    EXPECT_EQ("The display does not have the mode.", reason);
    EXPECT_EQ(eWindowState::e_normal, window->GetState());
    std::vector<DisplayMode> modes;
    ASSERT_TRUE(ReadDisplayModes(modes));
    // The virtual display does not tell its frequency.
    ASSERT_TRUE(window->SetFullscreen({modes.back().width, modes.back().height, 32, 60}, reason)) << reason;
    EXPECT_TRUE(PumpUntil([&] { return window->GetSize().width == static_cast<int>(modes.back().width); }));
    EXPECT_EQ(eWindowState::e_fullscreen, window->GetState());
    window->Restore();
    EXPECT_TRUE(PumpUntil([&] { return window->GetSize().width == 50 && window->GetPosition().x == 200; }));
}

TEST(WindowWithoutADisplay, IsRefusedAndNotOpenedWhereNobodySeesIt)
{
    tests::DisplayEnvironment const environment(":4711");
    string reason;
    EXPECT_EQ(nullptr, Window::Open({}, reason));
    EXPECT_TRUE(reason.starts_with("The display cannot be used: ")) << reason;
}

TEST_F(WindowOnADisplay, ServesOpenGLWithThePixelsThatAreWanted)
{
    // The driver of OpenGL is loaded for a window, and loses a little each time.
    tests::NoLeakCheck const noLeakCheck;
    string reason;
    if (Window::Open({.openGL = OpenGLPixels()}, reason) == nullptr)
        GTEST_SKIP() << "There is no driver of OpenGL: " << reason;
    EXPECT_EQ(nullptr, Window::Open({.openGL = OpenGLPixels{.numSamples = 1000}}, reason));
    EXPECT_TRUE(reason.starts_with("The display refuses a window: ")) << reason;
    // The pixels of one window are not those of the next.
    EXPECT_NE(nullptr, Window::Open({.openGL = OpenGLPixels()}, reason)) << reason;
}

TEST_F(WindowOnADisplay, EndsAMessageLoopAndIsClosedOnlyByItsOwner)
{
    string reason;
    AutoPtr<Window> window = Window::Open({.title = "Quillmarsh test"}, reason);
    ASSERT_NE(nullptr, window) << reason;
    window->Show();
    RecordingListener listener;
    DesktopSubscription const subscription(listener);
    EXPECT_TRUE(tests::X11Client(display_.GetName()).PressCloseButton("Quillmarsh test"));
    EXPECT_TRUE(listener.Await(eDesktopEvent::e_windowCloseWish, false));
    PumpDesktop();
    for (DesktopEvent const &event : listener.events)
        EXPECT_NE(eDesktopEvent::e_exitWish, event.kind);

    // The loop sleeps until the window's event comes; its listener ends the loop.
    class : public DesktopListener
    {
    public:
        void OnDesktopEvent(DesktopEvent const &event) override
        {
            if (event.kind == eDesktopEvent::e_mouseMove)
                PostMessageToThread(GetCurrentThreadNumber(), {nullptr, s_messageQuit});
        }
    } ends;
    DesktopSubscription const second(ends);
    std::future<bool> const hand =
        std::async(std::launch::async, [&] { return display_.Do("mousemove 1 1 mousemove --sync 60 60"); });
    win_utils::RunStandardMessageLoop();
    window.reset();
    EXPECT_EQ(eDesktopEvent::e_windowClosing, listener.events.back().kind);
}

/// Closes the display under an open window, and ends the process: with 0 if the program was asked to end.
[[noreturn]] void LoseDisplay()
{
    tests::NoLeakCheck const noLeakCheck;
    std::optional<tests::VirtualDisplay> display(std::in_place);
    tests::EnvironmentVariable const name("DISPLAY", display->GetName().c_str());
    string reason;
    AutoPtr<Window> window = Window::Open({.openGL = OpenGLPixels()}, reason);
    AutoPtr<OpenGLContext> context = window ? OpenGLContext::Create(*window, {}, reason) : nullptr;
    if (!context)
        std::_Exit(2);
    window->Show();
    PumpDesktop();
    RecordingListener listener;
    std::optional<DesktopSubscription> subscription(std::in_place, listener);
    display.reset();
    bool const isAsked = tests::WaitUntil(
        [&]
        {
            context->SwapBuffers();
            PumpDesktop();
            return std::any_of(listener.events.begin(), listener.events.end(),
                               [](DesktopEvent const &event) { return event.kind == eDesktopEvent::e_exitWish; });
        });
    // What a program may still do on its way out.
    window->SetTitle("late");
    window->SetSize({100, 100});
    window->SetFullscreen();
    window->Restore();
    window->Minimize();
    window->Hide();
    subscription.reset();
    context.reset();
    window.reset();
    bool const isRefused = Window::Open({}, reason) == nullptr && reason == "The connection to the display has ended.";
    std::_Exit(isAsked && isRefused ? 0 : 1);
}

TEST_F(WindowOnADisplay, AsksTheProgramToEndWhenTheDisplayGoesAway)
{
    EXPECT_EXIT(LoseDisplay(), testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace quillmarsh::platform
