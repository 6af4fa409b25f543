#include "tests/support/files_win32.h"
#include "tests/support/package_bytes.h"
#include "tests/support/process.h"

#include <gtest/gtest.h>

namespace quillmarsh::tests
{
namespace
{

TEST(Qmdp, FailuresNameFileAndReasonAndLoseNothing)
{
    ScratchDirectory const scratch;
    string const bytes = PackageBytes({2}, {1, 1, 0x01000001, 0, 0}, "a");
    string const in = scratch.Write("in.qmdp", bytes);
    string const held = scratch.Write("held.png", "old");
    string const read = scratch.Write("read.qmdp", "old");
    FileHolder const holder(held, 0);
    FileHolder const reader(read, FILE_SHARE_READ | FILE_SHARE_WRITE);
    for (string const &name :
         {held, read, scratch / "nul.qmdp", scratch / "com1.png", FindMissingDrive() + "file.qmdp"})
    {
        ProcessResult const saved = RunProcess(QUILLMARSH_TEST_QMDP, {"convert", in, name, "--overwrite"});
        EXPECT_EQ(1, saved.status) << name;
        bool const isDevice = name.starts_with(scratch / "nul") || name.starts_with(scratch / "com");
        string const failure = isDevice                 ? ": not a name of a file"
                               : name.ends_with(".png") ? ": cannot be written as PNG: "
                                                        : ": cannot be written as QMDP: ";
        EXPECT_EQ(0u, saved.err.find("qmdp: " + name + failure)) << saved.err;
        EXPECT_EQ(1, std::count(saved.err.begin(), saved.err.end(), '\n')) << saved.err;
    }
    EXPECT_EQ(0u, RunProcess(QUILLMARSH_TEST_QMDP, {"info", held}).err.find("qmdp: " + held + ": cannot be opened: "));
    string const taken = RunProcess(QUILLMARSH_TEST_QMDP, {"convert", in, read}).err;
    EXPECT_EQ("qmdp: " + read + ": already exists, and overwriting must be allowed with --overwrite\n", taken);
    EXPECT_EQ("old", ReadFile(read));
    EXPECT_EQ(3, std::distance(std::filesystem::directory_iterator(scratch.GetPath()), {}));
}

} // namespace
} // namespace quillmarsh::tests
