// What the tool loads: pictures need neither a desktop nor fonts.
#include "tests/support/environment_variable.h"
#include "tests/support/package_bytes.h"
#include "tests/support/process.h"

#include <gtest/gtest.h>

namespace quillmarsh::tests
{
namespace
{

/// Runs the tool, and returns what the system's loader reports of it: a line for each library that it loads, whenever
/// that is.
string ReadLoads(std::vector<string> const &words)
{
    EnvironmentVariable const report("LD_DEBUG", "files");
    ProcessResult const result = RunProcess(QUILLMARSH_TEST_QMDP, words);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.err.find("libpng"), string::npos) << "The loader reports nothing.";
    return result.err;
}

TEST(QmdpStart, LoadsNeitherDesktopNorFonts)
{
    ScratchDirectory const directory;
    string const package = directory.Write("a.qmdp", PackageBytes({2, 7}, {2, 3, 0x04000002, 0, 0}, string(24, 'x')));
    std::vector<std::vector<string>> const runs = {
        {"--version"},
        {"convert", package, directory / "a.png"},
        {"convert", directory / "a.png", directory / "b.tif", "--size", "5x4"},
        {"convert", directory / "b.tif", directory / "b.jpg"},
    };
    for (std::vector<string> const &words : runs)
    {
        string const loads = ReadLoads(words);
        for (char const *const library : {"libSDL2", "libX11", "libpango", "libcairo", "libfontconfig", "libgobject"})
            EXPECT_EQ(loads.find(library), string::npos) << words[0] << " loads " << library;
    }
    // Highway's library takes its time to start, so that only work on samples loads it.
    EXPECT_EQ(ReadLoads({"--version"}).find("libhwy"), string::npos);
}

} // namespace
} // namespace quillmarsh::tests
