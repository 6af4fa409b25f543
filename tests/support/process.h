// A program as a process of its own.
#ifndef QUILLMARSH_TESTS_SUPPORT_PROCESS_H
#define QUILLMARSH_TESTS_SUPPORT_PROCESS_H

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillmarsh::tests
{

/// A file for a test, deleted with this object.
class ScratchFile
{
public:
    explicit ScratchFile(std::string const &content = "")
    {
        char name[] = "/tmp/quillmarsh-test-XXXXXX";
        close(mkstemp(name));
        name_ = name;
        std::ofstream(name_, std::ios::binary) << content;
    }
    ~ScratchFile() { unlink(name_.c_str()); }
    ScratchFile(ScratchFile const &) = delete;

    std::string const &GetName() const { return name_; }
    std::string Read() const
    {
        std::ifstream file(name_, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

private:
    std::string name_;
};

[[noreturn]] inline void Execute(std::string const &program, std::vector<std::string> const &arguments)
{
    std::vector<std::string> words = {program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char *> pointers;
    for (std::string &word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    execv(pointers[0], pointers.data());
    _exit(127);
}

/// Exit status, or minus the signal.
inline int WaitForExit(pid_t process)
{
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

struct ProcessResult
{
    int status = -1;
    std::string out;
    std::string err;
};

/// Runs a program to its end, with a text on its standard input. Its outputs go through files, which never fill up.
inline ProcessResult RunProcess(std::string const &program, std::vector<std::string> const &arguments,
                                std::string const &input = "")
{
    ScratchFile const in(input);
    ScratchFile const out;
    ScratchFile const err;
    pid_t const process = fork();
    if (process == 0)
    {
        dup2(open(in.GetName().c_str(), O_RDONLY), 0);
        dup2(open(out.GetName().c_str(), O_WRONLY), 1);
        dup2(open(err.GetName().c_str(), O_WRONLY), 2);
        Execute(program, arguments);
    }
    ProcessResult result;
    result.status = WaitForExit(process);
    result.out = out.Read();
    result.err = err.Read();
    return result;
}

} // namespace quillmarsh::tests

#endif
