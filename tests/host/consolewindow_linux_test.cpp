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

TEST(HostWithoutADisplay, ChangesNothingAboutARunWithoutADisplay)
{
    DisplayEnvironment const none("");
    HostResult const plain = RunHost({"--plugin", TestPlugin("tracer")}, s_szScript);
    HostResult const headless = RunWithWindow({"--headless", "800x600", "--video", "none"}, s_szScript);
    EXPECT_EQ(0, headless.status);
    EXPECT_EQ("", headless.err);
    EXPECT_EQ(plain.out, headless.out);
    HostResult const unseen = RunWithWindow({}, s_szScript);
    EXPECT_EQ(0, unseen.status);
    EXPECT_EQ("quillmarsh-host: The run goes on without a window for the console: there is no display.\n", unseen.err);
    EXPECT_EQ(plain.out, unseen.out);
}

/// A user presses escape in the window and closes it; the program goes on until its main window is closed.
using HostConsoleWindow = OnADisplay;

TEST_F(HostConsoleWindow, IsHiddenByItsButtonWhileTheProgramGoesOn)
{
    ScratchFile const trace;
    EnvironmentVariable const file("TRACER_FILE", trace.GetName().c_str());
    std::future<bool> hand =
        std::async(std::launch::async,
                   [&]
                   {
                       string const find = "search --onlyvisible --name '^quillmarsh$' ";
                       X11Client client(display_.GetName());
                       return WaitUntil([&] { return display_.Do(find + "windowfocus --sync"); }) &&
                              display_.Do("key Escape") && client.PressCloseButton("quillmarsh") &&
                              WaitUntil([&] { return !display_.Do(find); }) && client.PressCloseButton("Tracer");
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
