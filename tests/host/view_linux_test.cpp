// The program that shows files, as a desktop starts it.
#include "tests/support/host_process.h"
#include "tests/support/leaks.h"
#include "tests/support/terminal_linux.h"
#include "tests/support/virtual_display.h"
#include "tests/support/x11_client_linux.h"

#include <gtest/gtest.h>

#include <future>

namespace quillmarsh::tests
{
namespace
{

using ViewOnADisplay = OnADisplay;

TEST_F(ViewOnADisplay, StaysUntilItsWindowIsClosed)
{
    NoLeakCheckInChildren const noLeakCheck;
    ScratchFile const out, err;
    // Standard input is empty, or closed altogether.
    for (char const *const in : {"/dev/null", "/no such file"})
    {
        std::future<int> view = std::async(std::launch::async,
                                           [&] {
                                               return RunWithStreams(QUILLMARSH_TEST_VIEW, {"--plugin", "workbench"},
                                                                     {in, out.GetName(), err.GetName()});
                                           });
        X11Client client(display_.GetName());
        EXPECT_TRUE(client.PressCloseButton("workbench")) << in;
        EXPECT_EQ(0, view.get()) << in;
        EXPECT_EQ("", err.Read()) << in;
    }
}

TEST(View, NeedsADisplayOrATerminal)
{
    DisplayEnvironment const environment("");
    NoLeakCheckInChildren const noLeakCheck;
    HostResult const result = RunProcess(QUILLMARSH_TEST_VIEW, {"--plugin", "workbench"});
    EXPECT_EQ(3, result.status);
    EXPECT_EQ("quillmarsh-view: There can be no window: there is no display.\n", result.err);
    Terminal terminal(QUILLMARSH_TEST_VIEW, {"--plugin", "workbench"});
    EXPECT_TRUE(terminal.Expect("quillmarsh-view: The run goes on without video: there is no display."));
    EXPECT_TRUE(terminal.Enter("greet\r", {"Hello from the workbench!"}));
    EXPECT_TRUE(terminal.Enter("exit\r", {}));
    EXPECT_EQ(0, terminal.Wait());
}

} // namespace
} // namespace quillmarsh::tests
