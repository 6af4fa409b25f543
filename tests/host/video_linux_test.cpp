#include "tests/support/host_process.h"
#include "tests/support/leaks.h"
#include "tests/support/terminal_linux.h"
#include "tests/support/virtual_display.h"
#include "tests/support/waiting.h"
#include "tests/support/x11_client_linux.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <future>
#include <optional>

namespace quillmarsh::tests
{
namespace
{

TEST(HostVideo, DrawsWithoutADisplayAndExchangesTheRenderer)
{
    DisplayEnvironment const environment("");
    NoLeakCheckInChildren const noLeakCheck;
    ScratchDirectory const scratch;
    HostResult const result =
        RunHost({"--headless", "320x240", "--size", "200x100", "--plugin", "video_null", "--video", "video_opengl",
                 "--set", "screenshot.folder=" + scratch / ""},
                "wait 2\nscreenshot -all\nwait 5\nvideo-config -rp=video_null -r\nwait 2\nvideo-config\n"
                "video-config -rp=video_opengl -r\nwait 2\nvideo-config\n");
    if (Contains(result.err, "OpenGL"))
        GTEST_SKIP() << result.err;
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_EQ("", result.err);
    for (char const *const name : {"color", "depth", "stencil"})
        EXPECT_TRUE(std::filesystem::exists(scratch / ("screenshot.0000." + string(name) + ".png"))) << result.out;
    std::size_t const null = result.out.find("Video-renderer: video_null/Null\n", result.out.find("wait 2\nvideo-"));
    EXPECT_TRUE(Contains(result.out.substr(std::min(null, result.out.size())), "Video-renderer: video_opengl/OpenGL\n"))
        << result.out;
}

TEST(HostVideo, GoesOnWithoutADisplayAndTellsWhy)
{
    DisplayEnvironment const environment("");
    NoLeakCheckInChildren const noLeakCheck;
    HostResult const optional = RunHost({"--size", "640x480", "--frames", "3"});
    EXPECT_EQ(0, optional.status);
    EXPECT_EQ("quillmarsh-host: The run goes on without video: there is no display.\n", optional.err);
    HostResult const required = RunHost({"--video", "video_opengl", "--frames", "3"});
    EXPECT_EQ(3, required.status);
    EXPECT_TRUE(Contains(required.err,
                         "No video configuration fits. Wanted: renderer 'video_opengl', a window of 640 x "
                         "480 x 32 @ 0"))
        << required.err;
    EXPECT_TRUE(Contains(required.err, "DISPLAY")) << required.err;
    Terminal terminal(QUILLMARSH_TEST_HOST, {});
    EXPECT_TRUE(terminal.Expect("without video: there is no display."));
    EXPECT_TRUE(terminal.Enter("exit\r", {}));
    EXPECT_EQ(0, terminal.Wait());
}

using HostVideoOnADisplay = OnADisplay;

TEST_F(HostVideoOnADisplay, EndsWithItsWindow)
{
    NoLeakCheckInChildren const noLeakCheck;
    std::future<bool> hand =
        std::async(std::launch::async, [this] { return X11Client(display_.GetName()).PressCloseButton("workbench"); });
    HostResult const result = RunHost({"--video", "video_opengl", "--frame-rate", "60"}, "wait 60000\ngreet\n");
    EXPECT_TRUE(hand.get());
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_EQ("", result.err);
    EXPECT_FALSE(Contains(result.out, "Hello"));
}

TEST(HostVideo, EndsInGoodOrderWhenTheDisplayGoes)
{
    std::optional<VirtualDisplay> display(std::in_place);
    if (display->GetName().empty())
        GTEST_SKIP() << "Xvfb or xdotool is not installed.";
    DisplayEnvironment const environment(display->GetName());
    NoLeakCheckInChildren const noLeakCheck;
    ScratchFile const trace;
    EnvironmentVariable const file("TRACER_FILE", trace.GetName().c_str());
    auto const run = [] {
        return RunHost({"--plugin", TestPlugin("tracer"), "--frame-rate", "100"},
                       "window open\nwait 60000\ntrace late\n");
    };
    std::future<HostResult> host = std::async(std::launch::async, run);
    EXPECT_TRUE(WaitUntil([&trace] { return Contains(trace.Read(), "window open"); }));
    display.reset();
    HostResult const result = host.get();
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_EQ("quillmarsh-host: The display has gone, and the program ends.\n", result.err);
    EXPECT_FALSE(Contains(trace.Read(), "late"));
    EXPECT_TRUE(Contains(trace.Read(), "Cleanup well"));
}

} // namespace
} // namespace quillmarsh::tests
