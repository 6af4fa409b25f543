// The host's window for its console.
#include "tests/support/environment_variable.h"
#include "tests/support/host_process.h"
#include "tests/support/virtual_display.h"
#include "tests/support/x11_client_linux.h"

#include <gtest/gtest.h>

#include <future>

namespace quillmarsh::tests
{
namespace
{

constexpr char s_szScript[] = "wait 3\nlist-commands\n";

HostResult RunWithWindow(std::vector<string> arguments, string const &input)
{
    arguments.insert(arguments.end(), {"--console-window", "--plugin", TestPlugin("tracer")});
    return RunHost(arguments, input);
}

TEST(HostConsoleWindow, ChangesNothingAboutARunWithoutADisplay)
{
    EnvironmentVariable const name("DISPLAY", nullptr);
    EnvironmentVariable const noWayland("WAYLAND_DISPLAY", nullptr);
    EnvironmentVariable const noDriver("SDL_VIDEODRIVER", nullptr);
    HostResult const plain = RunHost({"--plugin", TestPlugin("tracer")}, s_szScript);
    HostResult const headless = RunWithWindow({"--headless", "800x600", "--video", "none"}, s_szScript);
    EXPECT_EQ(0, headless.status);
    EXPECT_EQ("", headless.err);
    EXPECT_EQ(plain.out, headless.out);
    HostResult const none = RunWithWindow({}, s_szScript);
    EXPECT_EQ(0, none.status);
    EXPECT_EQ("quillmarsh-host: The run goes on without a window for the console: there is no display.\n", none.err);
    EXPECT_EQ(plain.out, none.out);
}

/// A user presses escape in the window and closes it; the program goes on until its main window is closed.
TEST(HostConsoleWindow, IsHiddenByItsButtonWhileTheProgramGoesOn)
{
    VirtualDisplay const display;
    if (display.GetName().empty())
        GTEST_SKIP() << "Xvfb or xdotool is not installed.";
    ScratchFile const trace;
    EnvironmentVariable const file("TRACER_FILE", trace.GetName().c_str());
    EnvironmentVariable const name("DISPLAY", display.GetName().c_str());
    EnvironmentVariable const noWayland("WAYLAND_DISPLAY", nullptr);
    EnvironmentVariable const noDriver("SDL_VIDEODRIVER", nullptr);
    std::future<bool> hand = std::async(std::launch::async,
                                        [&]
                                        {
                                            string const find = "search --onlyvisible --name '^quillmarsh$' ";
                                            X11Client client(display.GetName());
                                            return WaitUntil([&] { return display.Do(find + "windowfocus --sync"); }) &&
                                                   display.Do("key Escape") && client.PressCloseButton("quillmarsh") &&
                                                   WaitUntil([&] { return !display.Do(find); }) &&
                                                   client.PressCloseButton("Tracer");
                                        });
    HostResult const result =
        RunWithWindow({"--video", "none", "--frame-rate", "100"}, "window open\nwait 10000\ntrace late\n");
    EXPECT_TRUE(hand.get());
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_EQ("", result.err);
    EXPECT_EQ(string::npos, trace.Read().find("late"));
    EXPECT_NE(string::npos, trace.Read().find("Cleanup well"));
}

} // namespace
} // namespace quillmarsh::tests
