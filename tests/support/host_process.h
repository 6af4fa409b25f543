// The host as a process of its own.
#ifndef QUILLMARSH_TESTS_SUPPORT_HOST_PROCESS_H
#define QUILLMARSH_TESTS_SUPPORT_HOST_PROCESS_H

#include "tests/support/environment_variable.h"
#include "tests/support/process.h"

#include <deque>
#include <utility>

namespace quillmarsh::tests
{

#if defined(_WIN32)
constexpr char s_szPluginExtension[] = ".dll";
/// What the host says of a plug-in library that is cut off.
constexpr char s_szCutOffReason[] = "the library cannot be loaded: ";
/// Why a file that is not there cannot be opened, in the user's language on Windows.
constexpr char s_szNotFoundReason[] = "";
#else
constexpr char s_szPluginExtension[] = ".so";
/// What the host says of a plug-in library that is cut off.
constexpr char s_szCutOffReason[] = "the library is cut off: ";
/// Why a file that is not there cannot be opened.
constexpr char s_szNotFoundReason[] = "No such file or directory";
#endif

/// Sets environment variables for a scope.
class ScopedEnvironment : NoCopy
{
public:
    explicit ScopedEnvironment(std::vector<std::pair<string, string>> const &variables)
    {
        for (auto const &[name, value] : variables)
            variables_.emplace_back(name, value.c_str());
    }

private:
    std::deque<EnvironmentVariable> variables_;
};

using HostResult = ProcessResult;

/// Runs the host to its end, with a text on its standard input.
inline HostResult RunHost(std::vector<string> const &arguments, string const &input = "")
{
    return RunProcess(QUILLMARSH_TEST_HOST, arguments, input);
}

} // namespace quillmarsh::tests

#endif
