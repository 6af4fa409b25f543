// The desktop without a display: its modes, and windows that nobody sees.
#include <quillmarsh/basetools/platforminfo.h>
#include <quillmarsh/platform/desktopevents.h>
#include <quillmarsh/platform/window.h>

#include "tests/support/environment_variable.h"
#include "tests/support/headless_desktop.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace quillmarsh::platform
{
namespace
{

class HeadlessDesktop : public tests::OnAHeadlessDesktop, DesktopListener
{
protected:
    static std::pair<int, int> SizeOf(Window const &window)
    {
        Window::Size const size = window.GetSize();
        return {size.width, size.height};
    }
    /// Returns the kinds of the events since the last call, as letters.
    string Take()
    {
        PumpDesktop();
        return std::exchange(told_, {});
    }

private:
    void OnDesktopEvent(DesktopEvent const &event) override
    {
        switch (event.kind)
        {
        case eDesktopEvent::e_windowActive:
            told_ += event.isOn ? 'A' : 'a';
            break;
        case eDesktopEvent::e_windowExposed:
            told_ += 'x';
            break;
        case eDesktopEvent::e_windowWoken:
            told_ += 'w';
            break;
        default:
            break;
        }
    }

    tests::EnvironmentVariable const noX_{"DISPLAY", nullptr};
    tests::EnvironmentVariable const noWayland_{"WAYLAND_DISPLAY", nullptr};
    DesktopSubscription const subscription_{*this};
    string told_;
};

TEST_F(HeadlessDesktop, HasStandInModesForEveryQuery)
{
    EXPECT_TRUE(IsHeadless());
    EXPECT_TRUE(HasDisplay());
    std::vector<DisplayMode> modes;
    ASSERT_TRUE(ReadDisplayModes(modes));
    EXPECT_EQ(6u, modes.size());
    EXPECT_EQ(1, std::count(modes.begin(), modes.end(), DisplayMode{1000, 700, 32, 60}));
    EXPECT_EQ((DisplayMode{640, 480, 32, 60}), modes.front());
    EXPECT_EQ("1000 x 700 x 32 @ 60", platform_info::GetDesktopDisplayModeDescription());
    unsigned int right = 0, bottom = 0;
    EXPECT_TRUE(platform_info::GetWorkArea(nullptr, nullptr, &right, &bottom));
    EXPECT_EQ(std::pair(1000u, 700u), std::pair(right, bottom));

    string reason;
    EXPECT_TRUE(LeaveHeadlessDesktop());
    for (auto const &[width, height] : {std::pair(0, 10), std::pair(10, 100000)})
        EXPECT_FALSE(UseHeadlessDesktop(width, height, reason));
    EXPECT_FALSE(IsHeadless());
    EXPECT_EQ("A headless desktop has 1 to 16384 pixels each way, and not 10 x 100000.", reason);
    // A stand-in is not doubled.
    ASSERT_TRUE(UseHeadlessDesktop(800, 600, reason)) << reason;
    ASSERT_TRUE(ReadDisplayModes(modes));
    EXPECT_EQ(5u, modes.size());
}

TEST_F(HeadlessDesktop, WindowsHaveStatesSizesAndFocus)
{
    string reason;
    AutoPtr<Window> const window = Window::Open({.width = 300, .height = 200}, reason);
    ASSERT_NE(nullptr, window) << reason;
    EXPECT_FALSE(UseHeadlessDesktop(10, 10, reason));
    EXPECT_FALSE(LeaveHeadlessDesktop());
    EXPECT_EQ(eWindowState::e_hidden, window->GetState());
    Take();
    window->Show();
    EXPECT_EQ("Ax", Take());
    EXPECT_EQ(window.get(), Window::GetActive());
    window->SetSize({320, 240});
    window->Maximize();
    EXPECT_EQ(std::pair(1000, 700), SizeOf(*window));
    window->Restore();
    EXPECT_EQ(std::pair(320, 240), SizeOf(*window));

    ASSERT_TRUE(window->SetFullscreen({640, 480, 32, 60}, reason)) << reason;
    EXPECT_EQ(eWindowState::e_fullscreen, window->GetState());
    Take();
    window->Minimize();
    EXPECT_EQ("a", Take());
    EXPECT_EQ(nullptr, Window::GetActive());
    window->Restore();
    EXPECT_EQ(eWindowState::e_fullscreen, window->GetState());
    EXPECT_EQ(std::pair(640, 480), SizeOf(*window));
    EXPECT_EQ("Ax", Take());
    window->Restore();
    EXPECT_EQ(eWindowState::e_normal, window->GetState());
    EXPECT_EQ(std::pair(320, 240), SizeOf(*window));

    // A second window takes the focus, and gives none back.
    AutoPtr<Window> second = Window::Open({}, reason);
    ASSERT_NE(nullptr, second) << reason;
    Take();
    second->Show();
    EXPECT_EQ("aAx", Take());
    second.reset();
    EXPECT_EQ(nullptr, Window::GetActive());
    window->Activate();
    window->Invalidate();
    window->Invalidate();
    EXPECT_EQ("Ax", Take());
    window->Wake();
    EXPECT_EQ("w", Take());
}

} // namespace
} // namespace quillmarsh::platform
