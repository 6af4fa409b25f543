// Runs a program as a process, with files as its standard streams.
#ifndef QUILLMARSH_TESTS_SUPPORT_PROCESS_H
#define QUILLMARSH_TESTS_SUPPORT_PROCESS_H

#include "tests/support/scratch_directory.h"

#include <vector>

#if defined(_WIN32)
#include "tests/support/process_win32.h"
#else
#include "tests/support/process_linux.h"
#endif

namespace quillmarsh::tests
{

/// A file for a test, deleted with this object.
class ScratchFile : NoCopy
{
public:
    explicit ScratchFile(string const &content = "") : name_(directory_.Write("file", content)) {}

    string const &GetName() const { return name_; }
    /// Returns the whole content, with a line feed alone at the end of each line.
    string Read() const
    {
        std::ifstream file(name_);
        return string(std::istreambuf_iterator<char>(file), {});
    }

private:
    ScratchDirectory directory_;
    string name_;
};

struct ProcessResult
{
    int status = -1;
    string out, err;
};

/// Runs a program until it ends, with a text on its standard input. Its output goes to files, which never block it.
inline ProcessResult RunProcess(string const &program, std::vector<string> const &arguments, string const &input = "")
{
    ScratchDirectory const scratch;
    StreamFiles const streams = {scratch.Write("in", input), scratch.Write("out", ""), scratch.Write("err", "")};
    ProcessResult result;
    result.status = RunWithStreams(program, arguments, streams);
    result.out = ReadFile(streams.out);
    result.err = ReadFile(streams.err);
    return result;
}

} // namespace quillmarsh::tests

#endif
