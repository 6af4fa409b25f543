// A top-level window on a headless desktop, with messages that the test plays.
#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/windows/messageloop.h>
#include <quillmarsh/basetools/windows/toplevelwindow.h>
#include <quillmarsh/basetools/windows/virtualkeys.h>
#include <quillmarsh/platform/desktopevents.h>

#include "source/platform/desktopevents.h"
#include "tests/support/failures.h"
#include "tests/support/headless_desktop.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <thread>

namespace quillmarsh
{
namespace
{

using namespace win_utils;

/// Writes down its calls. It has a caption of 20 pixels with a close box at its right, a command box beside it, and edges
/// of 4 pixels at the left, at the right and at the bottom right corner.
class NotingWindow : public TopLevelWindow
{
public:
    void Create(unsigned long style = e_style_popup, unsigned long exStyle = 0)
    {
        CreateSystemWindow(0, style, exStyle);
    }
    /// Creates and shows it, and forgets what it noted.
    void Open()
    {
        Create();
        Show();
        platform::PumpDesktop();
        Take();
    }
    void Destroy() { DestroySystemWindow(); }
    string Take() { return std::exchange(notes, {}); }
    long Play(unsigned int message, unsigned int wParam = 0, long lParam = 0)
    {
        return MessageHandlerMapper(GetHWND(), message, wParam, lParam);
    }
    /// Moves the mouse to each point, with the left button down between the first and the last.
    void Drag(std::initializer_list<Point> points)
    {
        auto const pair = [](Point const &point)
        { return MakePair(static_cast<int>(point.x), static_cast<int>(point.y)); };
        Play(e_message_mouseMove, 0, pair(*points.begin()));
        Play(e_message_leftButtonDown, e_mouseKeys_left, pair(*points.begin()));
        for (Point const &point : points)
            Play(e_message_mouseMove, e_mouseKeys_left, pair(point));
        Play(e_message_leftButtonUp, 0, pair(*(points.end() - 1)));
    }
    std::pair<int, int> Position() const
    {
        int x, y;
        GetCurrentPosition(x, y);
        return {x, y};
    }
    std::pair<unsigned int, unsigned int> Size() const
    {
        unsigned int width, height;
        GetSize(width, height);
        return {width, height};
    }

    bool MessageHandler(long &result, HWND window, unsigned int message, unsigned int wParam, long lParam) override
    {
        if (message == e_message_enterSizeMove || message == e_message_exitSizeMove)
            Note(message == e_message_enterSizeMove ? "<" : ">");
        return TopLevelWindow::MessageHandler(result, window, message, wParam, lParam);
    }
    eWindowArea MouseHitTest(Point const &point, unsigned int &subCode) override
    {
        unsigned int width, height;
        GetClientAreaSize(width, height);
        long const right = static_cast<long>(width) - point.x;
        subCode = 0;
        if (point.y < 20 && right <= 20)
            return e_area_close;
        if (point.y < 20 && right <= 40)
            return subCode = 7, e_area_command;
        if (point.y < 20)
            return e_area_caption;
        if (point.x < 4)
            return e_area_left;
        if (right <= 4)
            return static_cast<long>(height) - point.y <= 4 ? e_area_bottomRight : e_area_right;
        return TopLevelWindow::MouseHitTest(point, subCode);
    }
    void OnActivated(bool active) override { Note(active ? "active" : "inactive"); }
    void OnClose() override
    {
        Note("close");
        if (closesItself)
            DestroySystemWindow();
    }
    void OnMoved() override { Note("moved"); }
    void OnResized(eResizeAction action) override { Note("resized " + std::to_string(action)); }
    void OnPaint() override
    {
        Note("paint");
        if (repaints)
            PostRepaint();
        if (paintsByDefault)
            TopLevelWindow::OnPaint();
    }
    void OnMouseEnter(eWindowArea area, unsigned int subCode) override
    {
        Note("enter " + std::to_string(area) + (subCode ? "." + std::to_string(subCode) : ""));
    }
    void OnCommandAreaActivated(unsigned int subCode) override { Note("command " + std::to_string(subCode)); }
    void OnMouseMove(Point const &point, unsigned int) override { Note("move " + std::to_string(point.x)); }
    void OnMouseWheel(int delta, Point const &point, unsigned int keys) override
    {
        Note("wheel " + std::to_string(delta) + " at " + std::to_string(point.x) + " with " + std::to_string(keys));
    }
    void OnMouseButtonLeft(bool down, Point const &, unsigned int) override { Note(down ? "down" : "up"); }
    void OnKeyDown(unsigned int key, long) override { Note("key " + std::to_string(key)); }
    void OnChar(char character) override { Note(string("char ") + character); }

    using TopLevelWindow::AddWindowStyles;
    using TopLevelWindow::EnableCloseThroughAltF4;
    using TopLevelWindow::IsMouseInCommandArea;
    using TopLevelWindow::PostQuit;
    using TopLevelWindow::PostRepaint;
    using TopLevelWindow::RemoveWindowStyles;
    using TopLevelWindow::SetUseGdiplus;

    bool closesItself = false;
    bool paintsByDefault = false;
    bool repaints = false;
    string notes;

private:
    void Note(string const &note) { notes += notes.empty() ? note : ", " + note; }
};

using TopLevelWindowHeadless = tests::OnAHeadlessDesktop;

TEST_F(TopLevelWindowHeadless, IsCreatedOnceWithWhatWasSetBefore)
{
    tests::ScriptedDialogs dialogs(platform::eDialogAnswer::e_retry);
    NotingWindow window;
    EXPECT_EQ(nullptr, window.GetHWND());
    window.Show();
    window.Destroy();
    EXPECT_EQ((std::vector<string>{"System-window not created.", "System-window not created."}), dialogs.TakeTexts());

    window.SetText("Gr\u00fc\u00dfe");
    window.SetMinSize(100, 80);
    window.SetMaxSize(400, 300);
    window.SetPositionAndSize(30, 40, 5000, 1);
    window.Create(e_style_popup, e_extendedStyle_topmost | e_extendedStyle_layered);
    EXPECT_EQ(std::pair(400u, 80u), window.Size());
    EXPECT_EQ(std::pair(30, 40), window.Position());
    EXPECT_TRUE(window.IsAlwaysOnTop());
    EXPECT_EQ("Gr\u00fc\u00dfe", window.GetPlatformWindow()->GetTitle());
    EXPECT_EQ(platform::eWindowRole::e_tool, window.GetPlatformWindow()->GetRole());
    HWND const handle = window.GetHWND();
    window.Create();
    EXPECT_EQ(handle, window.GetHWND());
    EXPECT_EQ(std::vector<string>{"System-window already created."}, dialogs.TakeTexts());
    EXPECT_TRUE(window.AddWindowStyles(e_style_sizeFrame));
    EXPECT_FALSE(window.AddWindowStyles(e_style_sizeFrame | e_style_popup));
    EXPECT_TRUE(window.RemoveWindowStyles(e_style_sizeFrame | e_style_maximizeBox));
    EXPECT_FALSE(window.RemoveWindowStyles(e_style_sizeFrame));
    window.SetMouseCursorShape(TopLevelWindow::e_area_numAreas, nullptr);
    EXPECT_EQ(std::vector<string>{"Invalid enumeration value."}, dialogs.TakeTexts());
    window.CenterOnDesktop();
    EXPECT_EQ(std::pair(300, 310), window.Position());
    window.Destroy();
    EXPECT_EQ(0, TopLevelWindow::MessageHandlerMapper(handle, e_message_close, 0, 0));
    EXPECT_EQ(0u, platform::Window::GetNumOpen());

    string created;
    std::thread([&] { created = platform::Window::GetNumOpen() == 0 ? "" : "open"; }).join();
    window.Create();
    std::thread(
        [&]
        {
            NotingWindow other;
            created = tests::MessageOf<SystemResourceException>([&] { other.Create(); });
        })
        .join();
    EXPECT_EQ("CreateWindowEx() failed.", created);
}

TEST_F(TopLevelWindowHeadless, TellsItsStatesAndGoesBackToItsPlace)
{
    NotingWindow window;
    window.SetPositionAndSize(50, 60, 300, 200);
    window.Create();
    window.Show();
    platform::PumpDesktop();
    EXPECT_EQ("active, paint", window.Take());
    window.SetMaximizedPosition(10, 20);
    window.SetMaxSize(800, 0);
    window.Maximize();
    platform::PumpDesktop();
    EXPECT_NE(string::npos, window.Take().find("resized 2"));
    EXPECT_EQ(std::pair(10, 20), window.Position());
    EXPECT_EQ(std::pair(800u, 700u), window.Size());
    window.Minimize();
    EXPECT_TRUE(window.IsMinimized());
    EXPECT_TRUE(window.IsMaximized());
    int left, top, right, bottom;
    EXPECT_FALSE(window.GetVisibleClientAreaScreenCoords(left, top, right, bottom));
    EXPECT_EQ("inactive, resized 1", window.Take());
    window.Restore();
    EXPECT_EQ("resized 2, active", window.Take());
    window.Restore();
    platform::PumpDesktop();
    EXPECT_NE(string::npos, window.Take().find("resized 0"));
    EXPECT_EQ(std::pair(50, 60), window.Position());
    EXPECT_EQ(std::pair(300u, 200u), window.Size());
    window.SetSize(320, 240);
    platform::PumpDesktop();
    EXPECT_EQ("resized 3", window.Take());
    window.SetPosition(900, -100);
    ASSERT_TRUE(window.GetVisibleClientAreaScreenCoords(left, top, right, bottom));
    EXPECT_EQ((std::vector{900, 0, 1000, 140}), (std::vector{left, top, right, bottom}));
}

TEST_F(TopLevelWindowHeadless, CountsTheFrameOfTheDesktopIn)
{
    NotingWindow window;
    window.SetMinSize(320, 240);
    window.SetPositionAndSize(40, 50, 400, 300);
    window.Create(e_style_overlapped);
    window.Show();
    EXPECT_EQ(std::pair(400u, 300u), window.Size());
    EXPECT_EQ(std::pair(40, 50), window.Position());
    window.SetPositionAndSize(60, 70, 10, 10);
    EXPECT_EQ(std::pair(320u, 240u), window.Size());
    EXPECT_EQ(std::pair(60, 70), window.Position());
    unsigned int width, height;
    window.GetClientAreaSize(width, height);
    window.RemoveWindowStyles(e_style_caption | e_style_sizeFrame);
    EXPECT_EQ(std::pair(width, height), window.Size());
    window.Maximize();
    EXPECT_EQ(std::pair(1000u, 700u), window.Size());
    window.Hide();
    EXPECT_EQ(platform::eWindowState::e_hidden, window.GetPlatformWindow()->GetState());
}

TEST_F(TopLevelWindowHeadless, FrameAreasMoveSizeAndCommand)
{
    NotingWindow window;
    window.SetPositionAndSize(100, 100, 300, 200);
    window.Open();
    window.Drag({{100, 10}, {130, 15}});
    platform::PumpDesktop();
    // Some systems tell the new position at once.
    string const told = window.Take();
    EXPECT_TRUE(told == "enter 1, <, >, moved" || told == "enter 1, <, moved, >") << told;
    EXPECT_EQ(std::pair(130, 105), window.Position());

    // The right edge stays in place while the left one is dragged past the smallest size.
    window.SetMinSize(200, 150);
    window.SetMaxSize(400, 300);
    window.Drag({{1, 100}, {250, 100}});
    EXPECT_EQ(std::pair(200u, 200u), window.Size());
    EXPECT_EQ(std::pair(230, 105), window.Position());
    window.Drag({{198, 198}, {900, 900}});
    EXPECT_EQ(std::pair(400u, 300u), window.Size());
    EXPECT_EQ(std::pair(230, 105), window.Position());
    window.SetMaxSize(400, 0);
    window.SetMinSize(400, 0);
    window.Drag({{399, 100}, {500, 100}});
    EXPECT_EQ(std::pair(400u, 300u), window.Size());
    platform::PumpDesktop();
    window.Take();

    window.Drag({{370, 5}, {370, 5}});
    EXPECT_EQ("enter 7.7, command 7", window.Take());
    EXPECT_TRUE(window.IsMouseInCommandArea(7));
    // Let go elsewhere, a box does nothing.
    window.Drag({{390, 5}, {200, 100}});
    EXPECT_EQ("enter 4, enter 10", window.Take());
    window.closesItself = true;
    window.Drag({{390, 5}});
    EXPECT_EQ("enter 4, close", window.Take());
    EXPECT_EQ(nullptr, window.GetHWND());
}

/// Closes its window, or destroys itself, in the middle of a message.
class EndingWindow : public TopLevelWindow
{
public:
    EndingWindow(unsigned int lastMessage, bool isDeleted) : lastMessage_(lastMessage), isDeleted_(isDeleted)
    {
        CreateSystemWindow(0, e_style_popup, 0);
    }
    bool MessageHandler(long &result, HWND window, unsigned int message, unsigned int wParam, long lParam) override
    {
        if (message != lastMessage_)
            return TopLevelWindow::MessageHandler(result, window, message, wParam, lParam);
        result = 0;
        if (isDeleted_)
            delete this;
        else
            DestroySystemWindow();
        return true;
    }
    void OnPaint() override {}
    using TopLevelWindow::DestroySystemWindow;

private:
    unsigned int const lastMessage_;
    bool const isDeleted_;
};

TEST_F(TopLevelWindowHeadless, MayEndDuringItsOwnMessages)
{
    constexpr unsigned int messages[] = {e_message_showWindow, e_message_activate, e_message_move,
                                         e_message_size,       e_message_paint,    e_message_close};
    for (unsigned int const lastMessage : messages)
    {
        for (bool const isDeleted : {false, true})
        {
            auto *const window = new EndingWindow(lastMessage, isDeleted);
            HWND const handle = window->GetHWND();
            window->ShowMinimized(true);
            if (platform::Window::Find(handle))
                window->Restore();
            if (platform::Window::Find(handle))
                window->ShowMaximized();
            if (platform::Window::Find(handle))
                window->SetPositionAndSize(10, 20, 330, 220);
            platform::PumpDesktop();
            TopLevelWindow::MessageHandlerMapper(handle, e_message_close, 0, 0);
            EXPECT_EQ(0u, platform::Window::GetNumOpen()) << lastMessage << isDeleted;
            if (!isDeleted)
                delete window;
        }
    }

    // The message that the window is about to close asks for the same once more.
    EndingWindow window(e_message_destroy, false);
    HWND const handle = window.GetHWND();
    TopLevelWindow::MessageHandlerMapper(handle, e_message_destroy, 0, 0);
    EXPECT_EQ(0u, platform::Window::GetNumOpen());
    auto *const deleted = new EndingWindow(e_message_destroy, true);
    deleted->DestroySystemWindow();
    EXPECT_EQ(0u, platform::Window::GetNumOpen());
}

TEST_F(TopLevelWindowHeadless, TakesNoEventsOfOtherWindows)
{
    NotingWindow window, other;
    window.Create();
    other.Create();
    platform::DesktopEvent event = {platform::eDesktopEvent::e_key};
    event.key = e_key_a;
    event.isOn = true;
    // The window of this event has been closed.
    platform::TellDesktop(event);
    event.window = other.GetPlatformWindow();
    platform::TellDesktop(event);
    EXPECT_EQ("", window.Take());
    EXPECT_EQ("key 65", other.Take());
}

TEST_F(TopLevelWindowHeadless, LimitsSizesThatNoDisplayHas)
{
    NotingWindow window;
    window.SetSize(0, 0);
    EXPECT_EQ(std::pair(1u, 1u), window.Size());
    unsigned int width, height;
    window.SetSize(300, 200);
    window.GetClientAreaSize(width, height);
    EXPECT_EQ(std::pair(300u, 200u), std::pair(width, height));
    window.Create();
    for (unsigned int const limit : {0u, 100000u})
    {
        window.SetMaxSize(limit, limit);
        window.SetSize(100000, 100000);
        platform::PumpDesktop();
        EXPECT_GE(16384u, window.Size().first);
        window.SetSize(0, 0);
        EXPECT_EQ(std::pair(1u, 1u), window.Size());
    }
}

TEST_F(TopLevelWindowHeadless, InputReachesTheCallsThatAreSwitchedOn)
{
    NotingWindow window;
    window.SetPositionAndSize(100, 100, 300, 200);
    window.Open();
    // A button that went down in the client area goes up there, wherever the mouse is by then.
    window.Drag({{50, 100}, {60, -30}});
    EXPECT_EQ("enter 10, move 50, down, move 50, move 60, up", window.Take());
    window.Play(e_message_mouseWheel, e_mouseKeys_control | static_cast<unsigned int>(-240) << 16, MakePair(150, 110));
    window.Play(e_message_keyDown, e_vk_left, 1);
    window.Play(e_message_char, 'x', 1);
    EXPECT_EQ("enter 1, wheel -240 at 50 with 8, key 37, char x", window.Take());
    // It went down in another window.
    window.Play(e_message_leftButtonUp, 0, MakePair(50, 100));
    EXPECT_EQ("enter 10, up", window.Take());
    window.Play(e_message_mouseLeave);
    EXPECT_EQ("enter 0", window.Take());

    window.Play(e_message_sysKeyDown, e_vk_f4, e_keyFlags_alt);
    EXPECT_EQ("close", window.Take());
    window.EnableCloseThroughAltF4(false);
    window.Play(e_message_sysKeyDown, e_vk_f4, e_keyFlags_alt);
    EXPECT_EQ("key 115", window.Take());

    window.EnableMessageDispatchMouseMove(false);
    window.EnableMessageDispatchMouseButtons(false);
    window.EnableMessageDispatchMouseWheel(false);
    window.EnableMessageDispatchKeyboardKeyStates(false);
    window.EnableMessageDispatchKeyboardCharEvents(false);
    window.Drag({{50, 100}, {60, 100}});
    window.Play(e_message_mouseWheel, 120u << 16, MakePair(160, 200));
    window.Play(e_message_keyDown, e_vk_left, 1);
    window.Play(e_message_char, 'x', 1);
    EXPECT_EQ("enter 10", window.Take());
    EXPECT_EQ('Y' + 0u, ToVirtualKey(e_key_y));
    EXPECT_EQ(e_vk_shift + 0u, ToVirtualKey(e_key_r_shift));
    EXPECT_EQ(e_vk_num0 + 9u, ToVirtualKey(e_key_num_9));
    EXPECT_EQ('0' + 0u, ToVirtualKey(e_key_0));
    EXPECT_EQ(0u, ToVirtualKey(e_key_none));
}

/// Notes the numbers of messages, with a minus sign when they have been handled.
template<typename Hook>
class NotingHook : public Hook
{
public:
    void OnBeginMessage(MessageHook::WinMsg const &message) override
    {
        notes.push_back(static_cast<int>(message.message));
    }
    void OnEndMessage(MessageHook::WinMsg const &message) override
    {
        notes.push_back(-static_cast<int>(message.message));
    }
    std::vector<int> Take() { return std::exchange(notes, {}); }

    std::vector<int> notes;
};

TEST_F(TopLevelWindowHeadless, HooksSeeMessagesBeforeAndAfterTheirHandling)
{
    NotingWindow window;
    window.Create();
    NotingHook<MessageHook> all;
    NotingHook<KeyboardMessageHook> keyboard;
    NotingHook<MouseMessageHook> mouse;
    TopLevelWindow::SetMessageHook(&all);
    window.SetKeyboardMessageHook(&keyboard);
    window.SetMouseMessageHook(&mouse);
    window.Play(e_message_char, 'a');
    EXPECT_EQ((std::vector{0x102, -0x102}), keyboard.Take());
    window.Play(e_message_mouseLeave);
    EXPECT_EQ((std::vector{0x2a3, -0x2a3}), mouse.Take());
    window.closesItself = true;
    window.Play(e_message_sysCommand, e_command_close);
    EXPECT_EQ((std::vector{0x102, -0x102, 0x2a3, -0x2a3, 0x112, 0x10, 2, -2, -0x10, -0x112}), all.Take());
    EXPECT_TRUE(keyboard.Take().empty() && mouse.Take().empty());
    TopLevelWindow::SetMessageHook(nullptr);
    EXPECT_EQ(nullptr, TopLevelWindow::GetMessageHook());
}

TEST_F(TopLevelWindowHeadless, PaintsOnRequestAndAssertsOnceWithoutDrawing)
{
    NotingWindow window;
    window.Open();
    // Requests of other threads are gathered while the window has not been painted.
    std::thread([&] { window.PostRepaint(), window.PostRepaint(); }).join();
    platform::PumpDesktop();
    EXPECT_EQ("paint", window.Take());

    // A window that asks for the next painting in each one does not hold up the pump.
    window.repaints = true;
    window.PostRepaint();
    platform::PumpDesktop();
    platform::PumpDesktop();
    window.repaints = false;
    EXPECT_EQ("paint, paint", window.Take());
    platform::PumpDesktop();

    window.paintsByDefault = true;
    {
        /// Repaints the window while its dialog stands.
        class : public tests::ScriptedDialogs
        {
        public:
            platform::eDialogAnswer Present(platform::DialogRequest const &request) override
            {
                tests::ScriptedDialogs::Present(request);
                window->Play(e_message_paint);
                return platform::eDialogAnswer::e_retry;
            }
            NotingWindow *window = nullptr;
        } dialogs;
        dialogs.window = &window;
        window.Take();
        window.Play(e_message_paint);
        EXPECT_EQ("paint, paint", window.Take());
        EXPECT_EQ(std::vector<string>{"Gdiplus not initialized."}, dialogs.TakeTexts());
        window.Play(e_message_paint);
        EXPECT_EQ(std::vector<string>{"Gdiplus not initialized."}, dialogs.TakeTexts());
    }
    window.SetUseGdiplus(true);
    window.Play(e_message_paint);

    window.PostNullMessage();
    window.PostQuit();
    RunStandardMessageLoop();
}

} // namespace
} // namespace quillmarsh
