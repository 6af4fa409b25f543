// The host's command line.
#ifndef QUILLMARSH_HOST_ARGUMENTS_H
#define QUILLMARSH_HOST_ARGUMENTS_H

#include <quillmarsh/host/pluginset.h>

#include <quillmarsh/basetools/exception.h>

#include <optional>
#include <utility>
#include <vector>

namespace quillmarsh::host
{

/// An argument that cannot be followed. Its message is one line that names the argument.
class WrongArgumentException : public Exception
{
};

/// Throws a WrongArgumentException with the message and a hint at the help.
[[noreturn]] void ThrowWrongArgument(string const &message);

/// What the command line asks for.
struct Arguments
{
    /// Text that is asked for in place of a run: the help or the version.
    string answer;
    std::vector<string> plugins;
    /// File of the script; "-" is standard input.
    std::optional<string> script;
    bool stopOnError = false;
    /// Whether lines with a mistake in them are refused before they run.
    bool strict = false;
    /// Number of frames after which the run ends.
    std::optional<unsigned int> frames;
    /// Frames a second; 0 leaves it to the way the host is used.
    double frameRate = 0;
    std::optional<string> log;
    /// Exported variables and their values.
    std::vector<std::pair<string, string>> variables;
    /// Parameters of plug-ins.
    std::vector<PluginParameter> parameters;
    bool developerMode = false;
};

/// Reads the arguments behind the program's name. Throws a WrongArgumentException.
Arguments ParseArguments(std::vector<string> words);

} // namespace quillmarsh::host

#endif
