// The program that shows files, with the workbench in place of its own application.
#include "tests/support/host_process.h"
#include "tests/support/leaks.h"

#include <gtest/gtest.h>

namespace quillmarsh::tests
{
namespace
{

ProcessResult RunView(std::vector<string> arguments, string const &input = "")
{
    arguments.insert(arguments.begin(), {"--plugin", "workbench"});
    return RunProcess(QUILLMARSH_TEST_VIEW, arguments, input);
}

constexpr char s_szRecording[] = "quillmarsh-recording 1\n"
                                 "description Nothing\n"
                                 "controller keyboard\n"
                                 "0.3 end\n";

TEST(View, OpensFilesAheadOfAScript)
{
    NoLeakCheckInChildren const noLeakCheck;
    // The workbench has no command that opens files, so their lines fail.
    ScratchDirectory const scratch;
    string const script = scratch.Write("script", "greet -to=script\n");
    HostResult const failed = RunView({"--video", "none", "/a 'b'.png", "--script", script, "--no-start-script"});
    EXPECT_EQ(1, failed.status);
    EXPECT_EQ("quillmarsh-view: the arguments(1): the line failed\n", failed.err);
    std::size_t const opens = failed.out.find(".png'\nCommand not recognized.");
    EXPECT_LT(opens, failed.out.find("Hello from the workbench, script!")) << failed.out;

    HostResult const stopped = RunView({"--video=none", "/b", "--script", script, "--stop-on-error"});
    EXPECT_EQ("quillmarsh-view: the arguments(1): the line failed, the script stops here\n", stopped.err);
    EXPECT_EQ(string::npos, stopped.out.find("Hello"));
}

TEST(View, TakesStandardInputForAScriptOnlyWhenAsked)
{
    NoLeakCheckInChildren const noLeakCheck;
    HostResult const plain = RunView({"--video=none"}, "greet\n");
    EXPECT_EQ(0, plain.status) << plain.err;
    EXPECT_EQ("", plain.out);
    HostResult const asked = RunView({"--video=none", "--script=-"}, "greet\n");
    EXPECT_EQ("greet\nHello from the workbench!\n", asked.out);
}

TEST(View, BringsWhatItsOwnApplicationNeeds)
{
    NoLeakCheckInChildren const noLeakCheck;
    ScratchDirectory const home;
    EnvironmentVariable const settings("XDG_CONFIG_HOME", home.GetPath().string().c_str());
    HostResult const result = RunProcess(
        QUILLMARSH_TEST_VIEW, {"--headless", "320x240", "--video", "video_null", "--frames", "3", "--script", "-"},
        "list-plugins\n");
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_EQ("", result.err);
    for (char const *const plugin : {"viewer", "standard_look", "input_desktop", "input_recording"})
        EXPECT_NE(string::npos, result.out.find(plugin)) << plugin;
}

TEST(View, EndsWithItsRecording)
{
    NoLeakCheckInChildren const noLeakCheck;
    ScratchDirectory const scratch;
    string const recording = scratch.Write("nothing.txt", s_szRecording);
    HostResult const result = RunView({"--headless", "320x240", "--video", "video_null", "--play", recording,
                                       "--screenshots", scratch / "new/folder"});
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_NE(string::npos, result.out.find("nothing.txt, 0.3 s\n")) << result.out;
    EXPECT_TRUE(std::filesystem::is_directory(scratch / "new/folder"));

    HostResult const missing = RunView({"--headless", "320x240", "--video", "video_null", "--play", scratch / "none"});
    EXPECT_EQ(1, missing.status);
    EXPECT_EQ("quillmarsh-view: the arguments(1): the line failed, the script stops here\n", missing.err);
    HostResult const blocked =
        RunView({"--headless", "320x240", "--video", "video_null", "--screenshots", recording + "/below"});
    EXPECT_EQ(2, blocked.status);
    EXPECT_TRUE(blocked.err.starts_with("quillmarsh-view: --screenshots: cannot create the folder '")) << blocked.err;
}

} // namespace
} // namespace quillmarsh::tests
