#include "tests/support/files_win32.h"
#include "tests/support/package_bytes.h"
#include "tests/support/process.h"

#include <gtest/gtest.h>

namespace quillmarsh::tests
{
namespace
{

TEST(Qmdp, WritesFilesAndNamesReasons)
{
    ScratchDirectory const scratch;
    string const in = scratch.Write("in.qmdp", PackageBytes({2}, {1, 1, 0x01000001, 0, 0}, "a"));
    string const held = scratch.Write("held.png", "old");
    FileHolder const holder(held, 0);
    std::pair<string, char const *> const cases[] = {{held, ": cannot be written as PNG: "},
                                                     {scratch / "nul.qmdp", ": not a name of a file"}};
    for (auto const &[name, failure] : cases)
    {
        ProcessResult const saved = RunProcess(QUILLMARSH_TEST_QMDP, {"convert", in, name, "--overwrite"});
        EXPECT_EQ(1, saved.status) << name;
        EXPECT_EQ(0u, saved.err.find("qmdp: " + name + failure)) << saved.err;
    }
    string const out = scratch / "\u00e9.qmdp";
    EXPECT_EQ("", RunProcess(QUILLMARSH_TEST_QMDP, {"convert", in, out}).err);
    EXPECT_EQ(0, RunProcess(QUILLMARSH_TEST_QMDP, {"verify", out}).status);
    EXPECT_EQ(3, scratch.CountEntries());
}

} // namespace
} // namespace quillmarsh::tests
