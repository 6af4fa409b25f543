#include "tests/support/files_win32.h"
#include "tests/support/host_process.h"

#include <gtest/gtest.h>

namespace quillmarsh::tests
{
namespace
{

/// True when a text begins like this, and a reason follows on the same line.
bool TellsWhy(string const &text, string const &beginning)
{
    std::size_t const at = text.find(beginning);
    std::size_t const reason = at + beginning.size();
    return at != string::npos && reason < text.size() && text[reason] != '\r' && text[reason] != '\n';
}

TEST(Host, TellsWhyAFileCannotBeUsed)
{
    ScratchDirectory const scratch;
    string const held = scratch.Write("held", "wait 0\n");
    FileHolder const holder(held, 0);
    for (string const &name :
         {held, scratch / "nul.txt", string("con"), string("\\\\.\\nul"), FindMissingDrive() + "file"})
    {
        HostResult const log = RunHost({"--log", name});
        EXPECT_EQ(2, log.status) << name;
        EXPECT_TRUE(TellsWhy(log.err, "cannot write the log '" + name + "': ")) << log.err;
        HostResult const script = RunHost({"--script", name});
        EXPECT_EQ(2, script.status) << name;
        EXPECT_TRUE(TellsWhy(script.err, "cannot read the script '" + name + "': ")) << script.err;

        string const driver = Preferred(QUILLMARSH_TEST_PLUGINS "driftmouse.dll");
        HostResult const commands =
            RunHost({"--plugin", driver}, "record '" + name + "' -overwrite\nplay '" + name + "'\n");
        EXPECT_EQ(1, commands.status) << name;
        EXPECT_TRUE(TellsWhy(commands.out, name + ": the file cannot be written: ")) << commands.out;
        EXPECT_TRUE(TellsWhy(commands.out, name + ": the file cannot be opened: ")) << commands.out;
    }
    EXPECT_EQ(1, scratch.CountEntries());
}

} // namespace
} // namespace quillmarsh::tests
