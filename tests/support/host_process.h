// The host as a process of its own, with pipes or with a terminal.
#ifndef QUILLMARSH_TESTS_SUPPORT_HOST_PROCESS_H
#define QUILLMARSH_TESTS_SUPPORT_HOST_PROCESS_H

#include "tests/support/process.h"

#include <chrono>
#include <utility>

#include <poll.h>
#include <pty.h>
#include <signal.h>

namespace quillmarsh::tests
{

/// Sets environment variables for a scope.
class ScopedEnvironment
{
public:
    explicit ScopedEnvironment(std::vector<std::pair<std::string, std::string>> variables)
        : variables_(std::move(variables))
    {
        for (auto const &[name, value] : variables_)
            setenv(name.c_str(), value.c_str(), 1);
    }
    ~ScopedEnvironment()
    {
        for (auto const &[name, value] : variables_)
            unsetenv(name.c_str());
    }
    ScopedEnvironment(ScopedEnvironment const &) = delete;

private:
    std::vector<std::pair<std::string, std::string>> variables_;
};

[[noreturn]] inline void ExecuteHost(std::vector<std::string> const &arguments)
{
    Execute(QUILLMARSH_TEST_HOST, arguments);
}

using HostResult = ProcessResult;

/// Runs the host to its end, with a text on its standard input.
inline HostResult RunHost(std::vector<std::string> const &arguments, std::string const &input = "")
{
    return RunProcess(QUILLMARSH_TEST_HOST, arguments, input);
}

/// The host in a terminal of 80 columns.
class HostTerminal
{
public:
    explicit HostTerminal(std::vector<std::string> const &arguments = {})
    {
        winsize size{24, 80, 0, 0};
        process_ = forkpty(&terminal_, nullptr, nullptr, &size);
        if (process_ == 0)
        {
            setenv("TERM", "xterm", 1);
            setenv("HOME", "/nonexistent", 1);
            ExecuteHost(arguments);
        }
    }
    ~HostTerminal()
    {
        if (process_ > 0)
        {
            kill(process_, SIGKILL);
            WaitForExit(process_);
        }
        close(terminal_);
    }
    HostTerminal(HostTerminal const &) = delete;

    void Send(std::string const &keys) { static_cast<void>(!write(terminal_, keys.data(), keys.size())); }
    void Signal(int signal) { kill(process_, signal); }

    /// Waits for a text behind what was waited for last; false when it does not come.
    bool Expect(std::string const &text)
    {
        auto const end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (true)
        {
            std::size_t const found = shown_.find(text, seen_);
            if (found != std::string::npos)
            {
                seen_ = found + text.size();
                return true;
            }
            if (std::chrono::steady_clock::now() > end || !ReadMore())
                return false;
        }
    }

    /// Waits for the end; what is still shown is read.
    int Wait()
    {
        while (ReadMore())
        {
        }
        return WaitForExit(std::exchange(process_, -1));
    }

    std::string const &GetShown() const { return shown_; }

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
    std::string shown_;
    std::size_t seen_ = 0;
};

} // namespace quillmarsh::tests

#endif
