// Runs a program in a terminal.
#ifndef QUILLMARSH_TESTS_SUPPORT_TERMINAL_LINUX_H
#define QUILLMARSH_TESTS_SUPPORT_TERMINAL_LINUX_H

#include "tests/support/process.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <utility>

#include <poll.h>
#include <pty.h>
#include <signal.h>

namespace quillmarsh::tests
{

/// A program in a terminal with 80 columns.
class Terminal
{
public:
    explicit Terminal(string const &program, std::vector<string> const &arguments = {})
    {
        winsize size{24, 80, 0, 0};
        process_ = forkpty(&terminal_, nullptr, nullptr, &size);
        if (process_ == 0)
        {
            setenv("TERM", "xterm", 1);
            setenv("HOME", "/nonexistent", 1);
            Execute(program, arguments);
        }
    }
    ~Terminal()
    {
        if (process_ > 0)
        {
            kill(process_, SIGKILL);
            WaitForExit(process_);
        }
        close(terminal_);
    }
    Terminal(Terminal const &) = delete;

    void Send(string const &keys) { static_cast<void>(!write(terminal_, keys.data(), keys.size())); }
    /// Sends keys, and waits for texts one after another.
    bool Enter(string const &keys, std::initializer_list<string> texts)
    {
        Send(keys);
        return std::all_of(texts.begin(), texts.end(), [this](string const &text) { return Expect(text); });
    }
    void Signal(int signal) { kill(process_, signal); }

    /// Waits for a text after the last one that was found; false when it does not come.
    bool Expect(string const &text)
    {
        auto const end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (true)
        {
            std::size_t const found = shown_.find(text, seen_);
            if (found != string::npos)
            {
                seen_ = found + text.size();
                return true;
            }
            if (std::chrono::steady_clock::now() > end || !ReadMore())
                return false;
        }
    }

    /// Waits for the end of the program, and reads the rest of its output.
    int Wait()
    {
        while (ReadMore())
        {
        }
        return WaitForExit(std::exchange(process_, -1));
    }

    string const &GetShown() const { return shown_; }

private:
    bool ReadMore()
    {
        pollfd wait = {terminal_, POLLIN, 0};
        if (poll(&wait, 1, 20000) <= 0)
            return false;
        char text[4096];
        ssize_t const got = read(terminal_, text, sizeof(text));
        if (got <= 0)
            return false;
        shown_.append(text, static_cast<std::size_t>(got));
        return true;
    }

    pid_t process_ = -1;
    int terminal_ = -1;
    string shown_;
    std::size_t seen_ = 0;
};

} // namespace quillmarsh::tests

#endif
