#include <quillmarsh/platform/program.h>

#include "tests/support/process_linux.h"

#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/resource.h>
#include <thread>

namespace quillmarsh::platform
{
namespace
{

/// Runs the action in a process of its own, and returns its exit status, or minus the signal.
int RunInProcess(std::function<int()> const &action)
{
    pid_t const process = fork();
    if (process == 0)
        _exit(action());
    return tests::WaitForExit(process);
}

TEST(Program, EndsByTheSignalThatItsWatchReceived)
{
    for (int const number : {SIGINT, SIGTERM, SIGHUP})
    {
        auto const dieByHand = [number]
        {
            signal(number, SIG_DFL);
            SignalWatch const watch([](eSignal signal) { EndProcessBySignal(signal); });
            kill(getpid(), number);
            pause();
            return 1;
        };
        EXPECT_EQ(RunInProcess(dieByHand), -number);
    }
}

TEST(Program, IgnoredSignalsStayIgnored)
{
    auto const surviveHangUp = []
    {
        signal(SIGHUP, SIG_IGN);
        signal(SIGTERM, SIG_DFL);
        SignalWatch const watch([](eSignal signal) { _exit(signal == eSignal::e_terminate ? 0 : 1); });
        kill(getpid(), SIGHUP);
        kill(getpid(), SIGTERM);
        pause();
        return 2;
    };
    EXPECT_EQ(RunInProcess(surviveHangUp), 0);
}

TEST(Program, KnowsItsTerminal)
{
    winsize size = {24, 77, 0, 0};
    int terminal = -1;
    pid_t const process = forkpty(&terminal, nullptr, nullptr, &size);
    if (process == 0)
    {
        setenv("TERM", "xterm", 1);
        bool const follows = TakesEscapeSequences(eStandardStream::e_output);
        bool obeys = !IsTerminal(eStandardStream::e_error);
        for (char const *const kind : {"dumb", ""})
        {
            setenv("TERM", kind, 1);
            obeys = obeys || TakesEscapeSequences(eStandardStream::e_output);
        }
        _exit(follows && !obeys ? static_cast<int>(GetTerminalWidth(eStandardStream::e_input)) : 1);
    }
    EXPECT_EQ(tests::WaitForExit(process), 77);
    close(terminal);
}

TEST(Program, RefusesPrioritiesThatThreadsDoNotHave)
{
    std::thread(
        []
        {
            int const before = getpriority(PRIO_PROCESS, GetCurrentThreadNumber());
            EXPECT_FALSE(SetCurrentThreadPriority(-3));
            EXPECT_TRUE(SetCurrentThreadPriority(-1));
            EXPECT_EQ(getpriority(PRIO_PROCESS, GetCurrentThreadNumber()), std::min(before + 5, 19));
        })
        .join();
}

} // namespace
} // namespace quillmarsh::platform
