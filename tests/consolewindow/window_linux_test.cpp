// The console window under simulated input, on a virtual display.
#include <quillmarsh/basetools/windows/virtualkeys.h>
#include <quillmarsh/gui/consoleoutputwindow.h>
#include <quillmarsh/platform/desktopevents.h>

#include "source/gui/consolewindowcolors.h"
#include "source/platform/messagequeue.h"
#include "tests/support/virtual_display.h"
#include "tests/support/waiting.h"
#include "tests/support/x11_client_linux.h"

#include <gtest/gtest.h>

namespace quillmarsh
{
namespace
{

class DisplayedWindow : public ConsoleOutputWindow
{
public:
    using ConsoleOutputWindow::IsKeyDown;
};

class ConsoleWindowOnADisplay : public tests::OnADisplay
{
protected:
    void SetUp() override
    {
        OnADisplay::SetUp();
        if (IsSkipped())
            return;
        window = std::make_unique<DisplayedWindow>();
        // A cursor would keep the display in use after the test.
        window->ShowMouseCursor(false);
        window->SetTitleText("Console test");
        for (int i = 0; i < 100; ++i)
        {
            ConsoleOutputBufferSentry const lock(buffer);
            buffer.Append("line " + std::to_string(i) + "\n", OutputStream::e_typeInfo);
        }
        window->SetTextSource(&buffer);
        window->SetPositionAndSize(40, 30, 600, 300);
        window->Show();
        ASSERT_TRUE(Do("search --sync --name '^Console test$' windowfocus --sync"));
        ASSERT_TRUE(Await([this] { return window->IsActive(); }));
    }
    bool Do(string const &arguments) { return display_.Do(arguments); }
    template<typename Condition>
    bool Await(Condition condition)
    {
        return tests::WaitUntil([&] { return platform::PumpDesktop(), condition(); });
    }
    /// Waits until the window shows a place of its buffer.
    bool AwaitPlace(unsigned int line, unsigned int column)
    {
        return Await([&]
                     { return window->GetFirstVisibleLine() == line && window->GetFirstVisibleColumn() == column; });
    }
    bool AwaitGeometry(int x, int y, unsigned int width, unsigned int height)
    {
        return Await(
            [&]
            {
                int left, top;
                unsigned int columns, rows;
                window->GetCurrentPosition(left, top);
                window->GetSize(columns, rows);
                return left == x && top == y && columns == width && rows == height;
            });
    }

    ConsoleOutputBuffer buffer;
    AutoPtr<DisplayedWindow> window;
};

TEST_F(ConsoleWindowOnADisplay, ObeysKeysAndWheel)
{
    unsigned int const end = window->GetFirstVisibleLine();
    ASSERT_TRUE(Do("key Up key Up key Down mousemove 200 150 click 4"));
    EXPECT_TRUE(AwaitPlace(end - 4, 0));
    {
        ConsoleOutputBufferSentry const lock(buffer);
        buffer.Append(string(500, '-') + "\n", OutputStream::e_typeInfo);
    }
    ASSERT_TRUE(Do("keydown ctrl click 5 click 5 keyup ctrl key Left"));
    EXPECT_TRUE(AwaitPlace(end - 4, 5));
    ASSERT_TRUE(Do("key ctrl+Home"));
    EXPECT_TRUE(AwaitPlace(end - 4, 0));

    ASSERT_TRUE(Do("key ctrl+Right key ctrl+Down key ctrl+shift+Left"));
    EXPECT_TRUE(AwaitGeometry(55, 46, 600, 300));
    ASSERT_TRUE(Do("key shift+Right key shift+Up"));
    EXPECT_TRUE(AwaitGeometry(55, 46, 616, 284));
    ASSERT_TRUE(Do("key alt+Return"));
    EXPECT_TRUE(AwaitGeometry(0, 0, 800, 600));
    ASSERT_TRUE(Do("key alt+Return"));
    EXPECT_TRUE(AwaitGeometry(55, 46, 616, 284));
    ASSERT_TRUE(Do("key F2"));
    EXPECT_TRUE(AwaitGeometry(184, 252, 432, 96));
    window->EnableCloseGadget(true);
    ASSERT_TRUE(Do("key Escape"));
    platform::ThreadMessage message;
    EXPECT_TRUE(Await([&] { return platform::PeekThreadMessage(message, true); }));
    EXPECT_EQ(platform::s_messageQuit, message.message);
}

TEST_F(ConsoleWindowOnADisplay, IsDrawnMovedAndClosedByItsOwnFrame)
{
    tests::X11Client client(display_.GetName());
    auto const isColor = [&](int x, int y, console_window::Color color)
    {
        return client.GetPixel(x, y) == (static_cast<unsigned long>(color.red) << 16 |
                                         static_cast<unsigned long>(color.green) << 8 | color.blue);
    };
    EXPECT_TRUE(Await([&] { return isColor(40 + 300, 30 + 1, console_window::s_accent); }));
    EXPECT_TRUE(Await([&] { return isColor(40 + 5, 30 + 150, console_window::s_paper); }));
    // The box that closes lights up under the mouse.
    ASSERT_TRUE(Do("mousemove --sync 616 306"));
    EXPECT_TRUE(Await([&] { return isColor(606, 296, console_window::s_hotClose); }));
    // A drag begins where the mouse is when the window hears of the button.
    ASSERT_TRUE(Do("mousemove --sync 300 40 mousedown 1"));
    EXPECT_TRUE(Await([&] { return window->IsKeyDown(win_utils::e_vk_leftButton); }));
    ASSERT_TRUE(Do("mousemove --sync 330 60"));
    EXPECT_TRUE(AwaitGeometry(70, 50, 600, 300));
    ASSERT_TRUE(Do("mouseup 1"));
    ASSERT_TRUE(Do("mousemove --sync 646 326 click 1"));
    EXPECT_TRUE(Await([&] { return window->GetPlatformWindow()->GetState() == platform::eWindowState::e_hidden; }));
    window->Show();
    EXPECT_TRUE(Await([&] { return isColor(70 + 5, 50 + 150, console_window::s_paper); }));
}

} // namespace
} // namespace quillmarsh
