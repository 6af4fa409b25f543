// The console window on a headless desktop, with messages that the test plays.
#include <quillmarsh/basetools/consoleoutputstream.h>
#include <quillmarsh/basetools/windows/messageloop.h>
#include <quillmarsh/basetools/windows/virtualkeys.h>
#include <quillmarsh/gui/consoleoutputwindow.h>
#include <quillmarsh/platform/desktopevents.h>

#include "source/platform/messagequeue.h"
#include "tests/support/headless_desktop.h"
#include "tests/support/scripted_dialogs.h"
#include "tests/support/waiting.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace quillmarsh
{
namespace
{

using namespace win_utils;

class CountingWindow : public ConsoleOutputWindow
{
public:
    ~CountingWindow() override { SetTextSource(nullptr); }
    void OnPaint() override
    {
        ++numPaints;
        if (showsConsole)
            ConsoleOutputWindow::OnPaint();
    }
    void Play(unsigned int message, unsigned int wParam = 0, long lParam = 0)
    {
        MessageHandlerMapper(GetHWND(), message, wParam, lParam);
    }
    void Key(unsigned int key, long flags = 1) { Play(e_message_keyDown, key, flags); }
    void Destroy() { DestroySystemWindow(); }
    void Create() { CreateSystemWindow(0, e_style_popup, 0); }

    bool showsConsole = true;
    unsigned int numPaints = 0;
};

class ConsoleWindowHeadless : public tests::OnAHeadlessDesktop
{
protected:
    void SetUp() override
    {
        OnAHeadlessDesktop::SetUp();
        if (IsSkipped())
            return;
        window = std::make_unique<CountingWindow>();
        // A cursor would keep SDL in use after the test.
        window->ShowMouseCursor(false);
    }
    void TearDown() override
    {
        window.reset();
        OnAHeadlessDesktop::TearDown();
    }
    /// Shows the window with the buffer, and counts paintings from there.
    void Show(unsigned int width, unsigned int height)
    {
        window->SetTextSource(&buffer);
        window->SetSize(width, height);
        window->Show();
        platform::PumpDesktop();
        window->numPaints = 0;
    }
    void Write(unsigned int numLines, string const &line = "text")
    {
        ConsoleOutputBufferSentry const lock(buffer);
        for (unsigned int i = 0; i < numLines; ++i)
            buffer.Append(line + "\n", 0);
    }
    /// Lines that the window has room for, learnt by paging back from the end of the buffer.
    unsigned int GetNumVisible()
    {
        window->FocusOnLastLine();
        return buffer.GetNumLines() - window->GetFirstVisibleLine();
    }

    ConsoleOutputBuffer buffer;
    AutoPtr<CountingWindow> window;
};

TEST_F(ConsoleWindowHeadless, KnowsTheAreasOfItsFrame)
{
    using Area = TopLevelWindow::eWindowArea;
    auto const hit = [this](long x, long y)
    {
        unsigned int subCode = 5;
        Area const area = window->MouseHitTest({x, y}, subCode);
        EXPECT_EQ(0u, subCode);
        return area;
    };
    EXPECT_TRUE(window->IsSplashSized());
    window->SetSize(600, 300);
    platform::PumpDesktop();
    EXPECT_FALSE(window->IsSplashSized());
    struct Row
    {
        long x, y;
        Area area;
    };
    constexpr Row rows[] = {
        {0, 0, TopLevelWindow::e_area_caption},      {599, 47, TopLevelWindow::e_area_caption},
        {0, 48, TopLevelWindow::e_area_client},      {599, 252, TopLevelWindow::e_area_client},
        {0, 253, TopLevelWindow::e_area_caption},    {568, 268, TopLevelWindow::e_area_close},
        {583, 283, TopLevelWindow::e_area_close},    {584, 268, TopLevelWindow::e_area_caption},
        {568, 267, TopLevelWindow::e_area_caption},  {568, 284, TopLevelWindow::e_area_caption},
        {536, 268, TopLevelWindow::e_area_maximize}, {552, 268, TopLevelWindow::e_area_caption},
        {519, 283, TopLevelWindow::e_area_minimize}, {503, 283, TopLevelWindow::e_area_caption},
        {16, 268, TopLevelWindow::e_area_caption},   {599, 299, TopLevelWindow::e_area_caption},
    };
    for (Row const &row : rows)
        EXPECT_EQ(row.area, hit(row.x, row.y)) << row.x << ", " << row.y;
    window->EnableCloseGadget(true);
    EXPECT_EQ(TopLevelWindow::e_area_system, hit(16, 268));
    EXPECT_EQ(TopLevelWindow::e_area_system, hit(31, 283));
    EXPECT_EQ(TopLevelWindow::e_area_caption, hit(32, 283));
}

TEST_F(ConsoleWindowHeadless, FollowsTheBufferUntilTheUserScrollsBack)
{
    Show(600, 300);
    Write(100);
    unsigned int const visible = GetNumVisible();
    EXPECT_EQ(101 - visible, window->GetFirstVisibleLine());
    Write(10);
    EXPECT_EQ(111 - visible, window->GetFirstVisibleLine());
    window->Key(e_vk_up);
    Write(10);
    EXPECT_EQ(110 - visible, window->GetFirstVisibleLine());
    window->Key(e_vk_pageUp);
    EXPECT_EQ(110 - 2 * visible, window->GetFirstVisibleLine());
    window->Key(e_vk_home);
    EXPECT_EQ(0u, window->GetFirstVisibleLine());
    window->Key(e_vk_pageDown);
    EXPECT_EQ(visible, window->GetFirstVisibleLine());
    window->Key(e_vk_end);
    Write(1);
    EXPECT_EQ(122 - visible, window->GetFirstVisibleLine());

    // A minimized window takes in later what was written meanwhile, and other sizes keep it at the end.
    window->Minimize();
    Write(50);
    EXPECT_EQ(122 - visible, window->GetFirstVisibleLine());
    window->Restore();
    platform::PumpDesktop();
    EXPECT_EQ(172 - visible, window->GetFirstVisibleLine());
    window->SetSize(600, 250);
    platform::PumpDesktop();
    EXPECT_LT(GetNumVisible(), visible);
    unsigned int const first = window->GetFirstVisibleLine();
    EXPECT_GT(first, 172 - visible);
    Write(1);
    EXPECT_EQ(first + 1, window->GetFirstVisibleLine());

    ConsoleOutputBuffer other;
    window->SetTextSource(&other);
    EXPECT_EQ(0u, window->GetFirstVisibleLine());
    Write(1);
    EXPECT_EQ(0u, window->GetFirstVisibleLine());
    window->SetTextSource(nullptr);
    window->Key(e_vk_end);
    platform::PumpDesktop();
    buffer.Clear();
    window->SetTextSource(&buffer);
    buffer.SetLineLimit(1);
    window->OnChanged(buffer);
    EXPECT_EQ(0u, window->GetFirstVisibleLine());
}

TEST_F(ConsoleWindowHeadless, ScrollsByTheWheelAndSideways)
{
    Show(600, 300);
    Write(100, string(300, 'x'));
    unsigned int const end = window->GetFirstVisibleLine();
    window->OnMouseWheel(120, {}, 0);
    EXPECT_EQ(end - 3, window->GetFirstVisibleLine());
    window->SetMouseWheelStep(5);
    window->OnMouseWheel(240, {}, 0);
    EXPECT_EQ(end - 13, window->GetFirstVisibleLine());
    // Parts of a notch add up.
    window->OnMouseWheel(-70, {}, 0);
    EXPECT_EQ(end - 13, window->GetFirstVisibleLine());
    window->OnMouseWheel(-70, {}, 0);
    EXPECT_EQ(end - 8, window->GetFirstVisibleLine());
    window->SetMouseWheelStep(GetNumVisible() + 1);
    window->OnMouseWheel(120, {}, 0);
    EXPECT_EQ(end - 1, window->GetFirstVisibleLine());
    window->SetMouseWheelStep(4);
    window->OnMouseWheel(-1200, {}, 8);
    EXPECT_EQ(40u, window->GetFirstVisibleColumn());
    EXPECT_EQ(end - 1, window->GetFirstVisibleLine());
    window->Key(e_vk_left);
    EXPECT_EQ(39u, window->GetFirstVisibleColumn());
    window->OnMouseWheel(-120000, {}, 8);
    unsigned int const last = window->GetFirstVisibleColumn();
    EXPECT_GT(last, 230u);
    window->Key(e_vk_right);
    EXPECT_EQ(last, window->GetFirstVisibleColumn());
}

TEST_F(ConsoleWindowHeadless, MaximizesGoesToSplashSizeAndHidesWhenItIsClosed)
{
    tests::ScriptedDialogs dialogs(platform::eDialogAnswer::e_retry);
    Show(600, 300);
    window->SetPosition(10, 20);
    window->Key(e_vk_enter, 1 | static_cast<long>(e_keyFlags_alt));
    platform::PumpDesktop();
    EXPECT_TRUE(window->IsMaximized());
    // A maximized window does not move by keys, and follows the desktop.
    window->OnDisplaySettingsChanged();
    unsigned int width, height;
    window->GetSize(width, height);
    EXPECT_EQ((std::pair{1000u, 700u}), (std::pair{width, height}));
    window->Key(e_vk_f1 + 1);
    platform::PumpDesktop();
    EXPECT_TRUE(window->IsSplashSized());
    int x, y;
    window->GetCurrentPosition(x, y);
    EXPECT_EQ((std::pair{284, 302}), (std::pair{x, y}));
    window->SetPositionAndSize(900, -50, 5000, 200);
    window->OnDisplaySettingsChanged();
    window->GetCurrentPosition(x, y);
    window->GetSize(width, height);
    EXPECT_EQ((std::vector{0, 0, 1000, 200}), (std::vector{x, y, int(width), int(height)}));

    window->SetOutputTypeColor(static_cast<OutputStream::eOutputType>(7), color4b());
    EXPECT_EQ(std::vector<string>{"Invalid enumeration value."}, dialogs.TakeTexts());
    window->SetTitleText("Title");
    EXPECT_EQ("Title", window->GetPlatformWindow()->GetTitle());
    window->Play(e_message_sysCommand, e_command_close);
    EXPECT_EQ(platform::eWindowState::e_hidden, window->GetPlatformWindow()->GetState());
    window->Show();
    EXPECT_EQ(platform::eWindowState::e_normal, window->GetPlatformWindow()->GetState());
    // Once its window is gone, the object only waits for its end.
    window->Destroy();
    Write(1);
    window->SetStatusText("late");
    window->EnableCloseGadget(true);
    EXPECT_TRUE(dialogs.TakeTexts().empty());
}

TEST_F(ConsoleWindowHeadless, EscapeEndsTheLoopWhileTheCloseGadgetIsEnabled)
{
    Show(600, 300);
    window->Key(e_vk_escape);
    platform::ThreadMessage message;
    while (platform::PeekThreadMessage(message, true))
        EXPECT_NE(platform::s_messageQuit, message.message);
    window->EnableCloseGadget(true);
    window->Key(e_vk_escape);
    RunStandardMessageLoop();
}

TEST_F(ConsoleWindowHeadless, PostsOneRepaintForManyChanges)
{
    Show(600, 300);
    std::thread([this] { Write(1000); }).join();
    platform::PumpDesktop();
    EXPECT_EQ(1u, window->numPaints);
    platform::PumpDesktop();
    EXPECT_EQ(1u, window->numPaints);
    Write(1);
    platform::PumpDesktop();
    EXPECT_EQ(2u, window->numPaints);
    // Also for an override that paints something else.
    window->showsConsole = false;
    for (unsigned int i = 0; i < 2; ++i)
    {
        Write(1);
        platform::PumpDesktop();
    }
    EXPECT_EQ(4u, window->numPaints);
    window->Minimize();
    platform::PumpDesktop();
    window->numPaints = 0;
    Write(1);
    platform::PumpDesktop();
    EXPECT_EQ(0u, window->numPaints);

    // A window that is opened again follows the buffer, too.
    window->Destroy();
    Write(1);
    window->Create();
    window->Show();
    platform::PumpDesktop();
    window->numPaints = 0;
    Write(1);
    platform::PumpDesktop();
    EXPECT_EQ(1u, window->numPaints);
}

/// Threads write as fast as they can. The window is painted, sized, gets other sources and is destroyed meanwhile; each
/// pump of the desktop comes back.
TEST_F(ConsoleWindowHeadless, StaysResponsiveWhileOtherThreadsWrite)
{
    ConsoleOutputBuffer second(50);
    Show(800, 500);
    std::atomic<bool> ends{false};
    std::atomic<unsigned int> numWritten{0};
    auto const write = [&](ConsoleOutputBuffer &to, unsigned int type)
    {
        ConsoleOutputStream stream(to, type);
        while (!ends)
            stream << "line " << ++numWritten << ": " << string(numWritten % 200, '.') << std::endl;
    };
    std::thread writers[] = {std::thread(write, std::ref(buffer), 0), std::thread(write, std::ref(buffer), 2),
                             std::thread(write, std::ref(second), 1)};
    EXPECT_TRUE(tests::WaitUntil(
        [&]
        {
            unsigned int const turn = window->numPaints % 8;
            if (turn == 3)
                window->SetSize(600 + window->numPaints % 100, 400);
            if (turn == 5)
                window->SetTextSource(window->numPaints % 16 == 5 ? &second : &buffer);
            if (turn == 6)
                window->Key(e_vk_pageUp);
            if (turn == 7)
                window->FocusOnLastLine();
            platform::PumpDesktop();
            return window->numPaints >= 100 && numWritten >= 10000;
        }));
    window->Destroy();
    window.reset();
    unsigned int const before = numWritten;
    EXPECT_TRUE(tests::WaitUntil([&] { return numWritten > before + 100; }));
    ends = true;
    for (std::thread &writer : writers)
        writer.join();
}

} // namespace
} // namespace quillmarsh
