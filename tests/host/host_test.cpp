#include "tests/support/host_process.h"

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/libraryinfo.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>

namespace quillmarsh::tests
{
namespace
{

/// Returns the hooks that the tracer recorded, joined by ";", with each complete frame as "frame".
string RunTracer(std::vector<std::pair<string, string>> settings, HostResult &result, string const &input = "",
                 std::vector<string> arguments = {"--frames", "2"})
{
    std::istringstream lines(RunTraced(std::move(arguments), std::move(settings), {"tracer"}, result, input));
    string joined;
    for (string line; std::getline(lines, line);)
        joined += (joined.empty() ? "" : ";") + line;
    string const frame = "FrameBegin;FrameSampleInput;FrameUpdateStates;FramePreRenderVideo;FrameRenderVideo;"
                         "FramePostRenderVideo;FrameEnd";
    for (std::size_t at; (at = joined.find(frame)) != string::npos;)
        joined.replace(at, frame.size(), "frame");
    return joined;
}

string const s_up =
    "level 1;BeginStartup;QueryAutoInit;Initialize;EndStartup;level 2;ConfirmGenericExtension tracer.ext tracing;"
    "ConnectGenericExtensions;level 3;QueryHIDConfig 0 0;BeginConfirmHumanInterfaceDevices;"
    "EndConfirmHumanInterfaceDevices;BeginConnectHumanInterfaceDevices;EndConnectHumanInterfaceDevices;"
    "SetupAsyncHIDSampling;level 4;level 5;ConnectSubsystemsToAppWindow;InitializeSubsystems;level 6";
string const s_down = "level 5;CleanupSubsystems;DisconnectSubsystemsFromAppWindow;level 4;level 3;"
                      "DisconnectHumanInterfaceDevices;level 2;~TracerExtension;level 7";

TEST(Host, WalksTheApplicationUpThroughFramesAndDown)
{
    HostResult result;
    EXPECT_EQ(s_up + ";frame;OnFrame;frame;OnFrame;frame;" + s_down + ";Cleanup well 0 number 5",
              RunTracer({}, result, "", {"--frames", "3", "--set", "tracer.number=5"}));
    EXPECT_EQ(0, result.status);
    EXPECT_EQ("", result.out);
    EXPECT_EQ("", result.err);
}

TEST(Host, RequestsAreCarriedOutBetweenFrames)
{
    HostResult result;
    EXPECT_EQ(s_up +
                  ";frame;OnFrame;frame;OnFrame;GenericReconfig 7 8;CheckSubsystems;FixSubsystems;OnVSyncUpdate;"
                  "OnVSyncReconfig;trace queued;" +
                  s_down + ";Cleanup well 0 number 1",
              RunTracer({}, result, "ask\nwait\n", {}));
    EXPECT_EQ("ask\nwait\ntrace queued\n", result.out);
}

TEST(Host, LineThatQueuesItselfLeavesFramesBetween)
{
    HostResult result;
    EXPECT_NE(string::npos,
              RunTracer({}, result, "again\n", {"--frames", "4"}).find(";frame;again;frame;again;level 5"));
    EXPECT_EQ(0, result.status) << result.err;
}

TEST(Host, LongestNameOfAPluginGetsTheParameter)
{
    HostResult result;
    string const trace = RunTracer({}, result, "", {"--frames", "1", "--parameter", "tracer.ext.way.far=1=2"});
    EXPECT_NE(string::npos, trace.find(";parameter way.far 1=2;")) << trace;
    RunTracer({}, result, "", {"--parameter", "trace.ext=1"});
    EXPECT_EQ(3, result.status);
    EXPECT_EQ("quillmarsh-host: No loaded plug-in is named in the parameter 'trace.ext'.\n", result.err);
}

TEST(Host, ApplicationMayLeaveOutAStageOrTheRun)
{
    HostResult result;
    string const skipping = RunTracer({{"TRACER_NO_VIDEO", "1"}}, result);
    EXPECT_FALSE(Contains(skipping, "level 4"));
    EXPECT_EQ(0, result.status);
    EXPECT_EQ("level 1;BeginStartup;QueryAutoInit;Initialize;EndStartup;level 7;Cleanup well 0 number 1",
              RunTracer({{"TRACER_STOP", "1"}}, result));
    EXPECT_EQ(0, result.status);
}

TEST(Host, FailuresAreWalkedDownFromWhereTheyHappen)
{
    // A test of the session throws in every hook. The mark asks for a failure of another class.
    std::tuple<string, string, string> const cases[] = {
        {"BeginStartup", "", "level 7;Cleanup failed 1 application number 1"},
        {"Initialize", "!", "level 7;Cleanup failed 1 standard number 1"},
        {"FrameRenderVideo", "", s_down + ";Cleanup failed 6 application number 1"},
        {"Cleanup well 0 number 1", "", ""},
    };
    for (auto const &[hook, mark, wanted] : cases)
    {
        HostResult result;
        string const trace = RunTracer({{"TRACER_FAIL", hook + mark}}, result);
        EXPECT_TRUE(trace.ends_with(hook + (wanted.empty() ? "" : ";") + wanted)) << trace;
        EXPECT_EQ(3, result.status) << hook;
        EXPECT_TRUE(Contains(result.err, "! asked to fail")) << result.err;
        EXPECT_EQ(mark.empty(), Contains(result.err, "@ tests/support/plugins/trace.h(")) << result.err;
        EXPECT_EQ("", result.out);
    }
}

TEST(Host, RefusesMisfitPlugins)
{
    ScratchDirectory const scratch;
    string const cutOff = scratch / "cut-off" + s_szPluginExtension;
    std::filesystem::copy_file(TestPlugin("empty"), cutOff);
    std::filesystem::resize_file(cutOff, std::filesystem::file_size(cutOff) / 8);

    string const own = library_info::GetLibraryVersion().MakeString();
    std::pair<string, string> const cases[] = {
        {TestPlugin("missing"), "there is no such file."},
        {"template-that-is-not-there", "there is no such file in "},
        {Preferred(QUILLMARSH_TEST_SOURCES "LICENSE"), "it is not a library ("},
        {Preferred(QUILLMARSH_TEST_SOURCES "host"), "it is not a library ("},
        {cutOff, s_szCutOffReason},
        {TestPlugin("dependent-plugin"), "quillmarsh-test-absent"},
        {TestPlugin("no-entry"), "it does not export QuillmarshGetPluginLibrary."},
        {TestPlugin("other-magic"), "is not the record of a plug-in library."},
        {TestPlugin("other-version"), "it was built with version 1.1.0."},
        {TestPlugin("other-version"), "of the library, and this host has " + own + "."},
        {TestPlugin("other-build"), "of the library, and this host has " + own + "."},
        {TestPlugin("other-layout"), "its record has layout 2 and "},
        {TestPlugin("other-size"), "its PluginInfo has "},
        {TestPlugin("empty"), "it offers no plug-in."},
        {TestPlugin("failing-entry"), "its entry failed: asked to fail"},
        {TestPlugin("failing-descriptor"), "its descriptors cannot be created: asked to fail"},
        {TestPlugin("failing-constructor"), "its constructor failed: asked to fail"},
        {TestPlugin("other-class"), "is of another class than its type Application says."},
    };
    for (auto const &[file, reason] : cases)
    {
        HostResult const result = RunHost({"--plugin", file});
        EXPECT_EQ(3, result.status) << file;
        EXPECT_TRUE(Contains(result.err, "The plug-in '")) << result.err;
        EXPECT_TRUE(Contains(result.err, file)) << result.err;
        EXPECT_TRUE(Contains(result.err, reason)) << result.err;
        EXPECT_EQ("", result.out);
    }
    HostResult const two = RunHost({"--plugin", TestPlugin("tracer"), "--plugin", "workbench"});
    EXPECT_EQ(3, two.status);
    EXPECT_TRUE(Contains(two.err, "both have an application")) << two.err;
}

TEST(Host, NeverLooksForAPluginInTheCurrentDirectory)
{
    std::filesystem::path const previous = std::filesystem::current_path();
    string const file = string("tracer") + s_szPluginExtension;
    std::filesystem::current_path(QUILLMARSH_TEST_PLUGINS);
    HostResult const bare = RunHost({"--plugin", file, "--frames", "1"});
    HostResult const path = RunHost({"--plugin", Preferred("./" + file), "--frames", "1"});
    std::filesystem::current_path(previous);
    EXPECT_EQ(3, bare.status);
    EXPECT_EQ(0, path.status) << path.err;
}

TEST(Host, FindsPluginsInTheUsersFolders)
{
    ScratchDirectory const scratch;
    std::filesystem::path const own = std::filesystem::path(scratch.GetPath()) / "quillmarsh" / "plugins";
    std::filesystem::create_directories(own);
    std::filesystem::copy_file(TestPlugin("tracer"), own / ("tracer" + string(s_szPluginExtension)));
    std::ofstream(own / ("workbench" + string(s_szPluginExtension))) << "no library";

    // The folder of the user's own plug-ins, on either system.
    string const home = scratch.GetPath().string();
    EnvironmentVariable const data("XDG_DATA_HOME", home.c_str());
    EnvironmentVariable const local("LOCALAPPDATA", home.c_str());
    EnvironmentVariable const unset("QUILLMARSH_PLUGIN_PATH", nullptr);
    EXPECT_EQ(0, RunHost({"--plugin", "tracer", "--frames", "1"}).status);
    // It hides no plug-in of the host, but the path does.
    EXPECT_EQ(0, RunHost({"--frames", "1"}).status);
    string const separator(1, std::filesystem::path::preferred_separator == '/' ? ':' : ';');
    string const path = scratch / "missing" + separator + own.string();
    EnvironmentVariable const set("QUILLMARSH_PLUGIN_PATH", path.c_str());
    HostResult const hidden = RunHost({"--frames", "1"});
    EXPECT_EQ(3, hidden.status);
    EXPECT_TRUE(Contains(hidden.err, "it is not a library (")) << hidden.err;

    // Names that are not full would find the current directory.
    EnvironmentVariable const relative("QUILLMARSH_PLUGIN_PATH", (separator + "." + separator).c_str());
    std::filesystem::path const previous = std::filesystem::current_path();
    std::filesystem::current_path(own);
    HostResult const current = RunHost({"--plugin", "workbench", "--frames", "1"});
    std::filesystem::current_path(previous);
    EXPECT_EQ(0, current.status) << current.err;
}

TEST(Host, LoadsThePluginsThatAPluginWantsBesideIt)
{
    ScratchDirectory const scratch;
    std::filesystem::path const library = scratch.GetPath() / ("tracer" + string(s_szPluginExtension));
    std::filesystem::copy_file(TestPlugin("tracer"), library);
    std::ofstream(scratch.GetPath() / "tracer.plugins") << "# Devices and pictures.\ninput_recording\r\n\nvideo_null\n";
    HostResult const result =
        RunHost({"--plugin", library.string(), "--plugin", "video_null", "--no-start-script"}, "list-plugins\n");
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_TRUE(Contains(result.out, "input_recording")) << result.out;

    std::ofstream(scratch.GetPath() / "tracer.plugins") << "absent\n";
    HostResult const absent = RunHost({"--plugin", library.string(), "--frames", "1"});
    EXPECT_EQ(3, absent.status);
    EXPECT_TRUE(Contains(absent.err, "The plug-in 'absent' cannot be used: there is no such file")) << absent.err;
}

TEST(Host, RunsScriptsLineByLine)
{
    string const script = "# a comment\n\n \t# another\ngreet\r\nfrobnicate\nwait 2\nhistory";
    HostResult result = RunHost({}, script);
    EXPECT_EQ(1, result.status);
    EXPECT_EQ("quillmarsh-host: standard input(5): the line failed\n", result.err);
    EXPECT_EQ(
        "greet\nHello from the workbench!\nfrobnicate\nCommand not recognized.\nType 'list-commands' to list valid "
        "commands.\nwait 2\nhistory\nCommand-history:\n0) greet\n1) frobnicate\n2) wait 2\n",
        result.out);

    ScratchFile const file(script);
    result = RunHost({"--script", file.GetName(), "--stop-on-error"});
    EXPECT_EQ(1, result.status);
    EXPECT_TRUE(Contains(result.err, file.GetName() + "(5): the line failed")) << result.err;
    EXPECT_FALSE(Contains(result.out, "wait"));

    EXPECT_EQ(0, RunHost({}, "exit\nfrobnicate\n").status);
    EXPECT_EQ(1, RunHost({}, "wait x\n").status);
    EXPECT_EQ(1, RunHost({}, "wait -1\n").status);
    EXPECT_EQ(1, RunHost({}, string("\0\xff'unclosed\n", 12) + string(1 << 20, 'x') + "\n").status);
}

TEST(Host, PlaysARecordedHand)
{
    HostResult const result =
        RunHost({"--frame-rate", "120"}, "play '" QUILLMARSH_TEST_SOURCES "examples/recordings/gestures.txt' -once "
                                         "-speed=2\nvar bench.gestures on\nwait 300\n");
    std::size_t const grab = result.out.find("Gesture begins: Grab\n"), end = result.out.find("Gesture ends: Grab\n");
    std::size_t const stop = result.out.find("Gesture begins: Stop\n");
    EXPECT_TRUE(grab < end && end < stop && stop != string::npos) << result.out;
}

TEST(Host, TellsOfMistypedWordsAndRefusesThemWhenStrict)
{
    string const script = "\xEF\xBB\xBFvar bench.bals\nvar bench.balls many\nalias -v=var\nv bench.balls 7 8\nwait -1\n"
                          "var bench.balls\ngreet -too=you\n";
    HostResult const hints = RunHost({}, script), strict = RunHost({"--strict"}, script);
    EXPECT_TRUE(Contains(hints.out, "var bench.bals\nvar bench.balls many\nbench.balls = 100\n")) << hints.out;
    EXPECT_TRUE(Contains(hints.out, "var bench.balls\nbench.balls = 7\n")) << hints.out;
    EXPECT_TRUE(Contains(strict.out, "var bench.balls\nbench.balls = 100\n")) << strict.out;
    for (HostResult const &result : {hints, strict})
    {
        EXPECT_TRUE(Contains(result.out, "wait: '-1' is not a whole number from 0 on (see 'help wait')\n"));
        EXPECT_TRUE(Contains(result.out, "greet: unknown assignment -too=you (see 'help greet')\n"));
        EXPECT_EQ(1, result.status);
        for (char const *const mistake :
             {"(1): var: 'bench.bals' is not the name of a variable, nor what such a name begins with (see 'help var')",
              "(2): var: 'many' is not a value of the variable's type", "(4): var: surplus argument '8'"})
            EXPECT_TRUE(Contains(result.err, string("standard input") + mistake)) << result.err;
    }
    EXPECT_EQ(0, RunHost({}, "var nosuch\n").status);
    EXPECT_EQ(1, RunHost({"--strict"}, "var nosuch\n").status);
}

TEST(Host, CountsFramesWithTheProfiler)
{
    HostResult const result =
        RunHost({"--developer-mode"}, "profiler -auto-reset=0 -reset\nprofiler -run\nwait 7\nprofiler -stop -dump\n");
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_TRUE(Contains(result.out, "IterationCount..................: 7\n")) << result.out;
    EXPECT_TRUE(Contains(result.out, "FrameUpdateStates\n")) << result.out;
    EXPECT_TRUE(Contains(result.out, "Balls::Step\n")) << result.out;
}

TEST(Host, SetsVariablesBeforeTheFirstFrame)
{
    HostResult const result = RunHost({"--set", "bench.balls=200000", "--set", "bench.paused=on"}, "var bench\n");
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_TRUE(Contains(result.out, "bench.balls = 100000\n")) << result.out;
    EXPECT_TRUE(Contains(result.out, "bench.paused = true\n")) << result.out;
    for (string const wrong : {"bench.balls=many", "bench.nothing=1", "bench.steps=2"})
    {
        HostResult const refused = RunHost({"--set", wrong});
        EXPECT_EQ(2, refused.status) << wrong;
        EXPECT_TRUE(Contains(refused.err, wrong.substr(0, wrong.find('=')))) << refused.err;
        EXPECT_TRUE(Contains(refused.err, "--help"));
        EXPECT_EQ(1, std::count(refused.err.begin(), refused.err.end(), '\n'));
    }
}

TEST(Host, FailingCommandEndsTheRun)
{
    HostResult const result = RunHost({"--developer-mode"}, "\ncrash -throw\ngreet\n");
    EXPECT_EQ(3, result.status);
    EXPECT_TRUE(Contains(result.err, "line 2 of standard input")) << result.err;
    EXPECT_TRUE(Contains(result.err, "! Forced throw by crash-command.")) << result.err;
    EXPECT_FALSE(Contains(result.out, "greet"));
    EXPECT_EQ(s_abortStatus, RunHost({"--developer-mode"}, "crash -hre\ncrash -throw\n").status);
}

TEST(Host, WritesItsLog)
{
    ScratchFile const log;
    EXPECT_EQ(0, RunHost({"--log", log.GetName()}, "greet\n").status);
    for (char const *part : {"quillmarsh-host log opened @ ", "PluginName....: workbench", "Kernel level: running",
                             "greet\nHello from the workbench!", "quillmarsh-host log closed @ "})
        EXPECT_TRUE(Contains(log.Read(), part)) << log.Read();
    HostResult const refused = RunHost({"--log", "/nonexistent/log"});
    EXPECT_EQ(2, refused.status);
    EXPECT_TRUE(Contains(refused.err, string("'/nonexistent/log': ") + s_szNotFoundReason)) << refused.err;
    bool const complains = Contains(RunHost({"--log", "/dev/full"}).err, "log");
    EXPECT_TRUE(complains || !std::filesystem::exists("/dev/full"));
}

TEST(Host, DrawsWithThePluginThatIsNamed)
{
    HostResult const result =
        RunHost({"--video", "video_null", "--size", "900x500", "--set", "window.show-statistics=on"},
                "wait 2\nvideo-config -ds=24.8\nvideo-config -w=1280 -h=720 -fs=1 -r\nwait\nvideo-config\n");
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_EQ("", result.err);
    std::size_t const before = result.out.find("900 x 500 x 32"), after = result.out.find("wait\nvideo-config\n");
    EXPECT_LT(before, after) << result.out;
    EXPECT_TRUE(Contains(result.out.substr(after), "1280 x 720")) << result.out;

    for (bool const isNamed : {true, false})
    {
        std::vector<string> arguments = {"--plugin", "video_null"};
        if (!isNamed)
            arguments.insert(arguments.end(), {"--video", "none"});
        HostResult const loaded = RunHost(arguments, "wait\nvsync\n");
        EXPECT_EQ(isNamed, Contains(loaded.out, "DynamicUpdate")) << loaded.out << loaded.err;
    }
    std::pair<char const *, char const *> const wrong[] = {{"workbench", "has no video renderer."},
                                                           {"video-that-is-not-there", "there is no such file in "}};
    for (auto const &[file, reason] : wrong)
    {
        HostResult const refused = RunHost({"--video", file});
        EXPECT_EQ(3, refused.status);
        EXPECT_TRUE(Contains(refused.err, reason)) << refused.err;
    }
}

TEST(Host, DocumentationShowsTheSourcesThatAreBuilt)
{
    for (auto const &[page, source] : {std::pair("docs/writing-a-plugin.md", "plugins/template/template.cpp"),
                                       std::pair("docs/writing-a-driver.md", "examples/driver/driftmouse.cpp")})
    {
        string const text = ReadFile(string(QUILLMARSH_TEST_SOURCES) + page),
                     code = ReadFile(string(QUILLMARSH_TEST_SOURCES) + source);
        EXPECT_FALSE(code.empty());
        EXPECT_TRUE(Contains(text, "```cpp\n" + code + "```")) << page;
    }
    HostResult const result = RunHost({"--plugin", TestPlugin("driftmouse")}, "hid-control\n");
    EXPECT_TRUE(Contains(result.out, "1/drifting mouse/driftmouse\n")) << result.out << result.err;
}

} // namespace
} // namespace quillmarsh::tests
