#include "tests/support/host_process.h"
#include "tests/support/leaks.h"
#include "tests/support/package_bytes.h"
#include "tests/support/pictures.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <regex>

namespace quillmarsh::tests
{
namespace
{

/// Console commands for data, in a directory of the test's own.
class WorkbenchData : public testing::Test
{
protected:
    WorkbenchData() { std::filesystem::current_path(directory_.GetPath()); }
    ~WorkbenchData() override { std::filesystem::current_path(before_); }

    /// Runs the lines, and returns their output without their echo.
    string RunLines(string const &lines, int status)
    {
        HostResult const result = RunHost({"--set", "data.overwrite=true", "--developer-mode", "--strict"}, lines);
        EXPECT_EQ(status, result.status) << result.out << result.err;
        return result.out;
    }

    std::filesystem::path before_ = std::filesystem::current_path();
    ScratchDirectory directory_;
};

TEST_F(WorkbenchData, FirstStepsMakeAPictureAndAPackage)
{
    std::filesystem::create_directory("build");
    std::filesystem::create_directory_symlink(QUILLMARSH_TEST_SOURCES "examples", "examples");
    // The other waits would take long.
    for (string const name : {"examples/first_console.txt", "examples/gestures.txt"})
        RunLines(std::regex_replace(ReadFile(name), std::regex("\nwait .*"), "\nwait"), 0);
    RunLines(ReadFile("examples/first_steps.txt"), 0);
    EXPECT_EQ(0u, ReadFile("build/first_steps.png").find("\x89PNG"));
    EXPECT_EQ(44u + 20 + 128 * 128 * 2 + 32, std::filesystem::file_size("build/first_steps.qmdp.image"));
    EXPECT_EQ(44u + 20 + 1 + 32, std::filesystem::file_size("build/first_steps.7.qmdp.image"));
}

TEST_F(WorkbenchData, CommandsWorkOnTheCurrentData)
{
    directory_.Write("in.qmdp", PackageBytes({2}, {2, 1, 0x01000001, 0, 0}, "ab"));
    RunLines("load in.qmdp\nflip -rows\nconvert A8R8G8B8\nfill -red=65 -alpha=66\nvar data.filter nearest\n"
             "resample 2x2\nflip -columns\nvar data.big_endian true\nvar data.id 5\nsave out.qmdp\n",
             0);
    EXPECT_EQ(PackageBytes({2, 5, true}, {2, 2, 0x04000002, 0, 0}, "BAbbBAbbBAaaBAaa"), ReadFile("out.qmdp"));
    EXPECT_NE(string::npos, RunLines("load in.qmdp\ninfo\nformats\n", 0).find("A1R5G5B5  to: X8R8G8B8 A8R8G8B8\n"));
}

#ifdef QUILLMARSH_TEST_dotcodec
TEST_F(WorkbenchData, CodecsOfPluginsAreUsed)
{
    directory_.Write("in.dot", string("DOT\1\3abc"));
    HostResult const result = RunHost({"--plugin", QUILLMARSH_TEST_dotcodec},
                                      "load in.dot\nflip -columns\nsave out.dot\nconvert A8\nsave no.dot\n");
    EXPECT_EQ(1, result.status);
    EXPECT_EQ("DOT\1\3cba", ReadFile("out.dot"));
    EXPECT_NE(string::npos, result.out.find("no.dot: dots are luminance\n")) << result.out;
    EXPECT_FALSE(std::filesystem::exists("no.dot"));
}
#endif

TEST_F(WorkbenchData, FailuresAreToldAndKeepTheData)
{
    directory_.Write("in.qmdp", PackageBytes({2}, {2, 3, 0x02000020, 0, 0}, "abcdefabcdef"));
    std::pair<char const *, char const *> const cases[] = {
        {"load nothing.qmdp", "nothing.qmdp: cannot be opened: No such file or directory"},
        {"load", "the name of a file is missing"},
        {"convert FP32NormL", "no transfer leads from the sample format A1R5G5B5 to FP32NormL"},
        {"convert R8", "no sample format has the name R8"},
        {"resample 5", "not a size of an image: 5"},
        {"flip -layers -rows", "an image has no layers"},
        {"fill -red=255 -blue=256", "fill: -blue=256: '256' is not a number from 0 to 255 (see 'help fill')"},
        {"flip -row", "flip: unknown option -row"},
        {"fill -luminance=1", "the sample format A1R5G5B5 has no luminance"},
        {"mipmaps m", "mipmaps need dimensions that are powers of two, but there are 2 rows, 3 columns"},
    };
    for (auto const &[line, message] : cases)
    {
        string const out = RunLines(string("load in.qmdp\n") + line + "\nsave out.qmdp\n", 1);
        EXPECT_NE(string::npos, out.find(string(line) + '\n' + message)) << out;
        EXPECT_EQ(ReadFile("in.qmdp"), ReadFile("out.qmdp")) << line;
    }
    EXPECT_NE(string::npos, RunLines("info\n", 1).find("no data are loaded"));
    EXPECT_NE(string::npos, RunLines("load in.qmdp\nvar data.overwrite false\nsave in.qmdp\n", 1)
                                .find("allowed with 'var data.overwrite true'\n"));
    EXPECT_NE(string::npos, RunLines("var data.max_pixels 5\nload in.qmdp\n", 1)
                                .find("the limit of 5 pixels (see 'var data.max_pixels')\n"));
}

TEST_F(WorkbenchData, DrawsItsBallsAndThePicture)
{
    NoLeakCheckInChildren const noLeakCheck;
    string const lines = "load " QUILLMARSH_TEST_SOURCES "examples/picture.png\nwait\n"
                         "screenshot\nwait 4\n";
    HostResult const result = RunHost({"--headless", "480x320", "--video", "video_opengl", "--set", "bench.paused=true",
                                       "--set", "bench.balls=12", "--strict"},
                                      lines);
    ASSERT_EQ(0, result.status) << result.out << result.err;
    AutoPtr<ImageBase> const image = pictures::Load("screenshot.0000.color.png");
    ASSERT_NE(image, nullptr) << result.out << result.err;
    EXPECT_TRUE(MatchesPicture(*image, "workbench"));
}

} // namespace
} // namespace quillmarsh::tests
