// A virtual display, with simulated typing and pointing.
#ifndef QUILLMARSH_TESTS_SUPPORT_VIRTUAL_DISPLAY_H
#define QUILLMARSH_TESTS_SUPPORT_VIRTUAL_DISPLAY_H

#include "tests/support/environment_variable.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillmarsh::tests
{

/// An X server for one test. Its name is empty when the required programs are not installed.
class VirtualDisplay
{
public:
    VirtualDisplay()
    {
        int ends[2];
        if (std::system("command -v Xvfb xdotool >/dev/null") != 0 || pipe(ends) != 0)
            return;
        std::string const writeEnd = std::to_string(ends[1]);
        process_ = fork();
        if (process_ == 0)
        {
            execlp("Xvfb", "Xvfb", "-displayfd", writeEnd.c_str(), "-screen", "0", "800x600x24", "-noreset",
                   "-nolisten", "tcp", nullptr);
            _exit(127);
        }
        close(ends[1]);
        // The server writes its number and a line end when it is ready.
        std::string number;
        char letter = 0;
        while (read(ends[0], &letter, 1) == 1 && letter != '\n')
            number += letter;
        close(ends[0]);
        if (!number.empty())
            name_ = ":" + number;
    }
    ~VirtualDisplay()
    {
        if (process_ <= 0)
            return;
        // A server that is about to wait for its clients overlooks a signal now and then.
        kill(process_, SIGTERM);
        for (unsigned int tries = 1; waitpid(process_, nullptr, WNOHANG) == 0; ++tries)
        {
            usleep(5000);
            if (tries % 100 == 0)
                kill(process_, tries < 1000 ? SIGTERM : SIGKILL);
        }
    }
    VirtualDisplay(VirtualDisplay const &) = delete;

    std::string const &GetName() const { return name_; }
    /// Runs xdotool with these arguments.
    bool Do(std::string const &arguments) const
    {
        return std::system(("DISPLAY=" + name_ + " xdotool " + arguments + " >/dev/null").c_str()) == 0;
    }

private:
    pid_t process_ = -1;
    std::string name_;
};

/// The display of this process and of those that it starts, for a scope. An empty name stands for none.
class DisplayEnvironment
{
public:
    explicit DisplayEnvironment(string const &display) : name_("DISPLAY", display.empty() ? nullptr : display.c_str())
    {
    }

private:
    EnvironmentVariable const name_;
    EnvironmentVariable const noWayland_{"WAYLAND_DISPLAY", nullptr}, noDriver_{"SDL_VIDEODRIVER", nullptr};
};

/// A test on a display of its own.
class OnADisplay : public testing::Test
{
protected:
    void SetUp() override
    {
        if (display_.GetName().empty())
            GTEST_SKIP() << "Xvfb or xdotool is not installed.";
    }

    VirtualDisplay const display_;

private:
    DisplayEnvironment const environment_{display_.GetName()};
};

} // namespace quillmarsh::tests

#endif
