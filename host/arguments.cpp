#include "arguments.h"

#include <quillmarsh/basetools/libraryinfo.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/commandtable.h>
#include <quillmarsh/host/videooffers.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>

namespace quillmarsh::host
{

namespace
{

/// Reads only decimal digits. CLI11 would read 010 as eight.
void TakeFrames(Arguments &arguments, string const &text)
{
    unsigned int frames = 0;
    if (!command_values::IsUnsigned(text) || !ToValue(text, frames))
        ThrowWrongArgument("--frames needs a number of frames, not '" + text + "'");
    arguments.frames = frames;
}

void TakeFrameRate(Arguments &arguments, string const &text)
{
    double rate = 0;
    if (!ToValue(text, rate) || !std::isfinite(rate) || rate < 0)
        ThrowWrongArgument("--frame-rate needs a number of frames per second, not '" + text + "'");
    arguments.frameRate = rate;
}

/// Reads WxH. The sizes are those that windows can have.
PixelSize ReadSize(char const *option, string const &text)
{
    PixelSize size;
    std::size_t const at = text.find('x');
    auto const read = [](string const &number, unsigned int &value)
    {
        return command_values::IsUnsigned(number) && ToValue(number, value) && value > 0 &&
               value <= VideoOffers::s_maxWindowSize;
    };
    if (at == string::npos || !read(text.substr(0, at), size.width) || !read(text.substr(at + 1), size.height))
    {
        ThrowWrongArgument(string(option) + " needs WIDTHxHEIGHT, each from 1 to " +
                           MakeString(VideoOffers::s_maxWindowSize) + ", not '" + text + "'");
    }
    return size;
}

void TakeVariables(Arguments &arguments, std::vector<string> const &values)
{
    for (string const &value : values)
    {
        std::size_t const equals = value.find('=');
        if (equals == string::npos || equals == 0)
            ThrowWrongArgument("--set needs NAME=VALUE, not '" + value + "'");
        arguments.variables.emplace_back(value.substr(0, equals), value.substr(equals + 1));
    }
}

void TakeParameters(Arguments &arguments, std::vector<string> const &values)
{
    for (string const &value : values)
    {
        std::size_t const equals = value.find('=');
        std::size_t const dot = value.find('.');
        if (equals == string::npos || dot == 0 || dot + 1 >= equals)
            ThrowWrongArgument("--parameter needs PLUGIN.NAME=VALUE, not '" + value + "'");
        arguments.parameters.push_back({value.substr(0, equals), value.substr(equals + 1)});
    }
}

void AddOptions(CLI::App &app, Arguments &arguments)
{
    // If an option with one value is repeated, its last value counts.
    app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    app.add_option("--script", arguments.script, "run the lines of FILE (- is standard input), then exit")
        ->type_name("FILE");
    app.add_option("--robot", arguments.robot,
                   "let the robot carry out the lines of FILE (- is standard input), then exit")
        ->type_name("FILE");
    app.add_option("--play", arguments.recording, "play the recording FILE as mouse and keyboard, then exit")
        ->type_name("FILE");
    app.add_option("--screenshots", arguments.screenshots, "put screenshots into the folder DIR")->type_name("DIR");
    app.add_flag("--stop-on-error", arguments.stopOnError,
                 "stop at the first line that fails, of a script or of the GUI");
    app.add_flag("--no-start-script", arguments.noStartScript, "leave the user's own start script out");
    app.add_flag("--strict", arguments.strict, "refuse lines with words that their command does not know");
    app.add_option_function<string>(
           "--frames", [&arguments](string const &text) { TakeFrames(arguments, text); }, "exit after N frames")
        ->type_name("N");
    app.add_option_function<string>(
           "--frame-rate", [&arguments](string const &text) { TakeFrameRate(arguments, text); },
           "run at most HZ frames per second")
        ->type_name("HZ");
    app.add_option("--log", arguments.log, "write a log to FILE")->type_name("FILE");
    app.add_option("--video", arguments.video,
                   "draw with the video renderer of the plug-in library FILE (none draws nothing)")
        ->type_name("FILE");
    app.add_option_function<string>(
           "--size", [&arguments](string const &text) { arguments.size = ReadSize("--size", text); },
           "open the window with this size in pixels")
        ->type_name("WxH");
    app.add_flag("--fullscreen", arguments.fullscreen, "cover the display instead of opening a window");
    app.add_option_function<string>(
           "--headless", [&arguments](string const &text) { arguments.headless = ReadSize("--headless", text); },
           "draw on a desktop of this size that nobody sees")
        ->type_name("WxH");
    app.add_flag("--console-window", arguments.consoleWindow, "show the console in a window of its own, too");
    app.add_flag("--developer-mode", arguments.developerMode, "allow commands and variables for developers");

    app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_option("--plugin", arguments.plugins,
                   "load the plug-in library FILE; a name without a path is searched in the folders for plug-ins")
        ->type_name("FILE")
        ->allow_extra_args(false);
    app.add_option_function<std::vector<string>>(
           "--set", [&arguments](auto const &values) { TakeVariables(arguments, values); },
           "set an exported variable before the first frame")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    app.add_option_function<std::vector<string>>(
           "--parameter", [&arguments](auto const &values) { TakeParameters(arguments, values); },
           "give a plug-in a parameter")
        ->type_name("PLUGIN.NAME=VALUE")
        ->allow_extra_args(false);
}

/// Refuses arguments that do not fit each other.
void CheckTogether(Arguments const &arguments)
{
    if (arguments.robot && arguments.script)
        ThrowWrongArgument("--robot and --script cannot stand together: a script has lines for the robot, too");
    if (arguments.recording && (arguments.robot || arguments.script))
        ThrowWrongArgument("--play cannot stand together with --robot or --script: a script can have a line 'play'");
    if (arguments.video == s_szNoVideo && (arguments.size || arguments.fullscreen))
        ThrowWrongArgument("--size and --fullscreen need video, which --video none leaves out");
    if (std::find(arguments.files.begin(), arguments.files.end(), "") != arguments.files.end())
        ThrowWrongArgument("the name of a file is empty");
}

} // namespace

void ThrowWrongArgument(string const &message)
{
    // Keeps the message on one line, even if the argument has control characters.
    string line = message + " (see --help)";
    std::replace_if(
        line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, '?');
    WrongArgumentException thrown;
    thrown.SetMessage(line);
    throw thrown;
}

Arguments ParseArguments(ProgramKind const &program, std::vector<string> words)
{
    Arguments arguments;
    CLI::App app(program.description, program.name);
    app.footer("Exit status: 0 success, 1 a line of a script failed, 2 wrong argument, 3 the host failed.");
    app.set_help_flag("-h,--help", "print this help and exit");
    app.set_version_flag("-V,--version", string(program.name) + ' ' + library_info::GetLibraryVersion().MakeString(),
                         "print the version and exit");
    app.allow_extras();
    app.allow_windows_style_options(false);
    AddOptions(app, arguments);
    if (program.isViewer)
        app.add_option("FILE", arguments.files, "a file or a folder to open")->type_name("");
    try
    {
        std::reverse(words.begin(), words.end());
        app.parse(words);
    }
    catch (CLI::CallForHelp const &)
    {
        arguments.answer = app.help();
    }
    catch (CLI::CallForVersion const &thrown)
    {
        arguments.answer = string(thrown.what()) + '\n';
    }
    catch (CLI::ParseError const &thrown)
    {
        ThrowWrongArgument(thrown.what());
    }
    std::vector<string> unknown = app.remaining();
    // It stands ahead of files whose names begin with a dash.
    if (program.isViewer)
        std::erase(unknown, "--");
    if (arguments.answer.empty() && !unknown.empty())
        ThrowWrongArgument("unknown argument '" + unknown.front() + "'");
    CheckTogether(arguments);
    return arguments;
}

} // namespace quillmarsh::host
