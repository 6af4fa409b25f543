// Runs the host as a process.
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
/// The host's message for a truncated plug-in library.
constexpr char s_szCutOffReason[] = "the library cannot be loaded: ";
/// The reason for a missing file: on Windows it is in the user's language, so tests do not compare it.
constexpr char s_szNotFoundReason[] = "";
#else
constexpr char s_szPluginExtension[] = ".so";
/// The host's message for a truncated plug-in library.
constexpr char s_szCutOffReason[] = "the library is cut off: ";
/// The reason for a missing file.
constexpr char s_szNotFoundReason[] = "No such file or directory";
#endif

using HostResult = ProcessResult;

/// Runs the host until it ends, with a text on its standard input.
inline HostResult RunHost(std::vector<string> const &arguments, string const &input = "")
{
    return RunProcess(QUILLMARSH_TEST_HOST, arguments, input);
}

/// Returns the file name of a test plug-in.
inline string TestPlugin(string const &name)
{
    return Preferred(QUILLMARSH_TEST_PLUGINS + name + s_szPluginExtension);
}

/// Runs the host, and returns the lines that the test plug-ins recorded. The environment variables are for these
/// plug-ins.
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
