// Starts a program on Linux.
#ifndef QUILLMARSH_TESTS_SUPPORT_PROCESS_LINUX_H
#define QUILLMARSH_TESTS_SUPPORT_PROCESS_LINUX_H

#include <quillmarsh/platform/types.h>

#include <vector>

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillmarsh::tests
{

/// Status of a process that an exception ended.
constexpr int s_abortStatus = -SIGABRT;

/// Names of the files for the standard streams.
struct StreamFiles
{
    string in, out, err;
};

[[noreturn]] inline void Execute(string const &program, std::vector<string> const &arguments)
{
    std::vector<string> words = {program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char *> pointers;
    for (string &word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    // Background jobs of a shell, and their children, ignore interrupts.
    for (int const number : {SIGINT, SIGHUP, SIGTERM})
        signal(number, SIG_DFL);
    execv(pointers[0], pointers.data());
    _exit(127);
}

/// Returns the exit status, or minus the signal.
inline int WaitForExit(pid_t process)
{
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

inline int RunWithStreams(string const &program, std::vector<string> const &arguments, StreamFiles const &streams)
{
    pid_t const process = fork();
    if (process == 0)
    {
        dup2(open(streams.in.c_str(), O_RDONLY), 0);
        dup2(open(streams.out.c_str(), O_WRONLY), 1);
        dup2(open(streams.err.c_str(), O_WRONLY), 2);
        Execute(program, arguments);
    }
    return WaitForExit(process);
}

} // namespace quillmarsh::tests

#endif
