// The host's command line.
#ifndef QUILLMARSH_HOST_ARGUMENTS_H
#define QUILLMARSH_HOST_ARGUMENTS_H

#include "programkind.h"

#include <quillmarsh/host/pluginset.h>

#include <quillmarsh/basetools/exception.h>

#include <optional>
#include <utility>
#include <vector>

namespace quillmarsh::host
{

/// Thrown for a wrong argument. Its message is one line that names the argument.
class WrongArgumentException : public Exception
{
};

/// Throws a WrongArgumentException with the message and a hint at the help.
[[noreturn]] void ThrowWrongArgument(string const &message);

/// Width and height in pixels.
struct PixelSize
{
    unsigned int width = 0;
    unsigned int height = 0;

    bool operator==(PixelSize const &) const = default;
};

/// The contents of the command line.
struct Arguments
{
    /// The help or the version, if the user asks for it instead of a run.
    string answer;
    std::vector<string> plugins;
    /// Files that a viewer opens, as they were given.
    std::vector<string> files;
    /// File of the script; "-" is standard input.
    std::optional<string> script;
    /// File of the robot's script; "-" is standard input.
    std::optional<string> robot;
    /// Recording of mouse and keyboard that is played; the run ends with it.
    std::optional<string> recording;
    /// Folder for screenshots.
    std::optional<string> screenshots;
    bool stopOnError = false;
    /// True to refuse lines with a mistake before they run.
    bool strict = false;
    /// Number of frames after which the run ends.
    std::optional<unsigned int> frames;
    /// Frames per second; 0 lets the host choose.
    double frameRate = 0;
    std::optional<string> log;
    /// Exported variables and their values.
    std::vector<std::pair<string, string>> variables;
    /// Parameters of plug-ins.
    std::vector<PluginParameter> parameters;
    bool developerMode = false;
    /// Plug-in library of the video renderer; "none" for a run without video. Not set when the host chooses.
    std::optional<string> video;
    /// Size of the window, or of the full screen.
    std::optional<PixelSize> size;
    bool fullscreen = false;
    /// Size of a desktop that nobody sees.
    std::optional<PixelSize> headless;
    /// True to show the console in a window of its own, too.
    bool consoleWindow = false;
    /// True to leave the user's own start script out.
    bool noStartScript = false;
};

/// Value of --video for a run without video.
constexpr char s_szNoVideo[] = "none";

/// Reads the arguments after the program's name. Throws a WrongArgumentException.
Arguments ParseArguments(ProgramKind const &program, std::vector<string> words);

} // namespace quillmarsh::host

#endif
