// qmdp: works on files of signals, images and volumes.
#include "commands.h"

#include <quillmarsh/basetools/libraryinfo.h>
#include <quillmarsh/basetools/memory.h>
#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/platform/program.h>

#include <cerrno>
#include <exception>
#include <iostream>
#include <system_error>

namespace quillmarsh::tools
{
namespace
{

enum eExit
{
    e_exit_ok = 0,
    e_exit_failed = 1,
    e_exit_wrong_argument = 2
};

Command const *FindCommand(string const &name)
{
    for (Command const &command : GetCommands())
    {
        if (name == command.name)
            return &command;
    }
    throw WrongArgumentException("unknown command '" + name + "'");
}

bool Run(std::vector<string> words)
{
    Command const *command = nullptr;
    if (!words.empty() && !words.front().starts_with('-'))
    {
        command = FindCommand(words.front());
        words.erase(words.begin());
    }
    Arguments const arguments = ParseArguments(words, command);
    if (arguments.help)
        std::cout << GetUsage(command);
    else if (arguments.version)
        std::cout << "qmdp " << library_info::GetLibraryVersion().MakeString() << '\n';
    else
        return command->run(arguments);
    return true;
}

eExit RunGuarded(std::vector<string> const &words)
{
    try
    {
        return Run(words) ? e_exit_ok : e_exit_failed;
    }
    catch (WrongArgumentException const &thrown)
    {
        PrintError(thrown.GetMessage());
        return e_exit_wrong_argument;
    }
    catch (Exception const &thrown)
    {
        PrintError(thrown.GetMessage());
    }
    catch (std::exception const &thrown)
    {
        PrintError(thrown.what());
    }
    return e_exit_failed;
}

eExit Main(std::vector<string> const &words)
{
    SignalOperationsManager const operations;
    DataCodecManager const codecs;
    RegisterDefaultDataCodecs();
    eExit const exit = RunGuarded(words);
    errno = 0;
    if (std::cout.flush())
        return exit;
    PrintError("cannot write to standard output" +
               (errno != 0 ? ": " + std::generic_category().message(errno) : string()));
    return exit == e_exit_ok ? e_exit_failed : exit;
}

} // namespace
} // namespace quillmarsh::tools

int main(int argc, char **argv)
{
    using namespace quillmarsh::tools;
    quillmarsh::platform::PrepareStandardStreams();
    quillmarsh::NewThrowsExceptionSentry const sentry;
    std::vector<std::string> words = quillmarsh::platform::GetProgramArguments(argc, argv);
    // The program's own name is none of them.
    words.erase(words.begin(), words.begin() + (words.empty() ? 0 : 1));
    return Main(words);
}
