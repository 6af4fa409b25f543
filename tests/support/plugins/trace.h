// Records the calls of test plug-ins, and makes them fail on request.
#ifndef QUILLMARSH_TESTS_SUPPORT_PLUGINS_TRACE_H
#define QUILLMARSH_TESTS_SUPPORT_PLUGINS_TRACE_H

#include <quillmarsh/basetools/exception.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace quillmarsh::tests
{

inline string GetSetting(char const *name)
{
    char const *const value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// Number of lines so far that equal TRACER_FAIL.
inline int s_numFailing = 0;

/// Appends a line of words to the file TRACER_FILE. Throws when the line equals TRACER_FAIL; when TRACER_FAIL has "!"
/// after the line, it throws an exception of the standard library. The first TRACER_SKIP of such lines do not throw.
inline void Trace(auto const &...words)
{
    static std::ofstream s_file(GetSetting("TRACER_FILE"), std::ios::app);
    std::ostringstream line;
    char const *separator = "";
    ((line << std::exchange(separator, " ") << words), ...);
    string const text = line.str();
    s_file << text << std::endl;
    string const failing = GetSetting("TRACER_FAIL"), skip = GetSetting("TRACER_SKIP");
    bool const isFailing = text == failing || text + "!" == failing;
    if (!isFailing || s_numFailing++ < std::atoi(skip.c_str()))
        return;
    if (text == failing)
        QUILLMARSH_THROW(ApplicationException, "asked to fail");
    throw std::runtime_error("asked to fail");
}

} // namespace quillmarsh::tests

#endif
