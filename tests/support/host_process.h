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

using HostResult = ProcessResult;

/// Runs the host to its end, with a text on its standard input.
inline HostResult RunHost(std::vector<string> const &arguments, string const &input = "")
{
    return RunProcess(QUILLMARSH_TEST_HOST, arguments, input);
}

/// Name of a plug-in library of the tests.
inline string TestPlugin(string const &name)
{
    return Preferred(QUILLMARSH_TEST_PLUGINS + name + s_szPluginExtension);
}

/// Runs the host, and gives the lines that plug-ins of the tests wrote down. The environment's variables are for them.
inline string RunTraced(std::vector<string> arguments, std::vector<std::pair<string, string>> settings,
                        std::initializer_list<char const *> plugins, HostResult &result, string const &input)
{
    ScratchFile const trace;
    settings.emplace_back("TRACER_FILE", trace.GetName());
    std::deque<EnvironmentVariable> environment;
    for (auto const &[name, value] : settings)
        environment.emplace_back(name, value.c_str());
    for (char const *const plugin : plugins)
        arguments.insert(arguments.end(), {"--plugin", TestPlugin(plugin)});
    result = RunHost(arguments, input);
    return trace.Read();
}

} // namespace quillmarsh::tests

#endif
