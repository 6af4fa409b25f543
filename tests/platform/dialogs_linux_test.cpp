// The system's own dialogs without a display: with a terminal, and without one.
#include "source/platform/dialogs.h"
#include "tests/support/process_linux.h"

#include <quillmarsh/platform/program.h>

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

namespace quillmarsh::platform
{
namespace
{

constexpr int s_modesChanged = 100;

DialogRequest MakeAssertDialog()
{
    return {eDialogButtons::e_abortRetryIgnore, eDialogAnswer::e_retry, "Assert Failed", "@ a.cpp(1)\n! Broken"};
}

/// Sets the terminal as a line editor does.
termios MakeRaw()
{
    termios modes{};
    tcgetattr(STDIN_FILENO, &modes);
    cfmakeraw(&modes);
    tcsetattr(STDIN_FILENO, TCSANOW, &modes);
    tcgetattr(STDIN_FILENO, &modes);
    return modes;
}

[[noreturn]] void PresentInChild(DialogRequest const &request, bool isRaw)
{
    unsetenv("DISPLAY");
    unsetenv("WAYLAND_DISPLAY");
    SignalWatch const watch([](eSignal) {});
    termios before{};
    tcgetattr(STDIN_FILENO, &before);
    if (isRaw)
        before = MakeRaw();
    eDialogAnswer const answer = PresentSystemDialog(request);
    termios after{};
    tcgetattr(STDIN_FILENO, &after);
    bool const isKept = before.c_lflag == after.c_lflag && before.c_oflag == after.c_oflag;
    _exit(isKept ? static_cast<int>(answer) : s_modesChanged);
}

/// Reads until the text ends with `end`, or no more text arrives.
string ReadUntil(int descriptor, string const &end)
{
    string text;
    std::array<char, 256> part;
    while (end.empty() || !text.ends_with(end))
    {
        ssize_t const count = read(descriptor, part.data(), part.size());
        if (count <= 0)
            break;
        text.append(part.data(), static_cast<std::size_t>(count));
    }
    return text;
}

struct TerminalRun
{
    string shown;
    int status;
};

/// Answers by keys, or else by a signal.
TerminalRun AnswerOnTerminal(DialogRequest const &request, string const &keys, bool isRaw, int signal = 0)
{
    int terminal = -1;
    pid_t const child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0)
        PresentInChild(request, isRaw);
    TerminalRun run;
    run.shown = ReadUntil(terminal, "? ");
    kill(child, signal);
    EXPECT_EQ(write(terminal, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
    ReadUntil(terminal, "");
    run.status = tests::WaitForExit(child);
    close(terminal);
    return run;
}

TEST(TerminalDialog, TakesOneKeyForAButton)
{
    std::pair<char const *, eDialogAnswer> const cases[] = {
        {"a", eDialogAnswer::e_abort},
        {"R", eDialogAnswer::e_retry},
        {"\r", eDialogAnswer::e_retry},
        {"\x04", eDialogAnswer::e_retry},
        // Mistyped input is no answer, whatever letters it contains.
        {"no way\ri", eDialogAnswer::e_ignore},
        {"\x1b[A\r\r", eDialogAnswer::e_retry},
    };
    for (bool const isRaw : {false, true})
        for (auto const &[keys, answer] : cases)
        {
            TerminalRun const run = AnswerOnTerminal(MakeAssertDialog(), keys, isRaw);
            EXPECT_EQ(run.status, static_cast<int>(answer));
            for (char const *const part :
                 {"Assert Failed", "@ a.cpp(1)", "! Broken", "[A]bort, [R]etry, [I]gnore", "Retry)?"})
                EXPECT_NE(run.shown.find(part), string::npos) << run.shown;
        }
    DialogRequest const request{eDialogButtons::e_cancelOk, eDialogAnswer::e_ok, "Title", "Text"};
    EXPECT_EQ(AnswerOnTerminal(request, "c", false).status, static_cast<int>(eDialogAnswer::e_cancel));
    EXPECT_EQ(AnswerOnTerminal(request, "a\n\n", false).status, static_cast<int>(eDialogAnswer::e_ok));
}

TEST(TerminalDialog, SignalsToEndAnswerWithTheDefault)
{
    for (int const signal : {SIGTERM, SIGHUP})
        EXPECT_EQ(AnswerOnTerminal(MakeAssertDialog(), "", true, signal).status,
                  static_cast<int>(eDialogAnswer::e_retry));
}

TEST(TerminalDialog, WithoutATerminalTheDefaultAnswers)
{
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    pid_t const child = fork();
    if (child == 0)
    {
        setsid();
        dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
        dup2(ends[1], STDERR_FILENO);
        close(ends[0]);
        close(ends[1]);
        PresentInChild(MakeAssertDialog(), false);
    }
    close(ends[1]);
    EXPECT_EQ(ReadUntil(ends[0], ""), "Assert Failed\n@ a.cpp(1)\n! Broken\n");
    EXPECT_EQ(tests::WaitForExit(child), static_cast<int>(eDialogAnswer::e_retry));
    close(ends[0]);
}

} // namespace
} // namespace quillmarsh::platform
