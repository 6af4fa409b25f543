// qmdp: works on files of signals, images and volumes.
#include "commands.h"

#include <quillmarsh/basetools/libraryinfo.h>
#include <quillmarsh/basetools/memory.h>
#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/framework/genericextension.h>
#include <quillmarsh/host/pluginset.h>
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

/// The codecs and operations of the run. Codecs are deleted before the plug-in libraries that contain their code.
struct Registry : NoCopy
{
    host::PluginSet plugins;
    SignalOperationsManager operations;
    DataCodecManager codecs;
    std::vector<AutoPtr<GenericExtension>> extensions;
};

/// Creates the extensions of a plug-in library, which register their codecs.
void LoadPlugin(string const &name, string const &program, Registry &registry)
{
    std::vector<string> const directories =
        host::GetPluginDirectories(platform::GetProgramFileName(program), QMDP_PLUGIN_DIRECTORY);
    std::size_t const numBefore = registry.plugins.GetEntries().size();
    registry.plugins.Load(host::FindPluginFile(name, directories));
    auto const &entries = registry.plugins.GetEntries();
    std::size_t const numExtensions = registry.extensions.size();
    for (std::size_t i = numBefore; i < entries.size(); ++i)
    {
        if (entries[i].descriptor->GetPluginInfo().GetPluginType() == e_plugin_generic_extension)
            registry.extensions.push_back(registry.plugins.CreateAs<GenericExtension>(*entries[i].descriptor));
    }
    if (registry.extensions.size() == numExtensions)
        throw DataException(name + ": has no extension, but qmdp takes codecs only from extensions");
}

bool Run(std::vector<string> words, string const &program, Registry &registry)
{
    Command const *command = nullptr;
    if (!words.empty() && !words.front().starts_with('-'))
    {
        command = &FindCommand(words.front());
        words.erase(words.begin());
    }
    Arguments const arguments = ParseArguments(words, command);
    if (arguments.help)
        std::cout << GetUsage(command);
    else if (arguments.version)
        std::cout << "qmdp " << library_info::GetLibraryVersion().MakeString() << '\n';
    if (arguments.help || arguments.version)
        return true;
    for (string const &plugin : arguments.plugins)
        LoadPlugin(plugin, program, registry);
    return command->run(arguments);
}

eExit RunGuarded(std::vector<string> const &words, string const &program, Registry &registry)
{
    try
    {
        return Run(words, program, registry) ? e_exit_ok : e_exit_failed;
    }
    catch (WrongArgumentException const &thrown)
    {
        PrintError(thrown.GetMessage());
        return e_exit_wrong_argument;
    }
    catch (Exception const &thrown)
    {
        PrintError(DescribeFailure(thrown));
    }
    catch (std::exception const &thrown)
    {
        PrintError(thrown.what());
    }
    return e_exit_failed;
}

/// Returns false, and says so, when the library is of another kind or version than the headers of this program.
bool FitsLibrary()
{
    constexpr library_info::LibraryVersion own = library_info::GetHeaderVersion();
    library_info::LibraryVersion const found = library_info::GetLibraryVersion();
    if (!found.IsCompatibleWith(own))
        PrintError("compiled for version " + own.MakeString() + " of the library, and runs with " + found.MakeString());
    return found.IsCompatibleWith(own);
}

eExit Main(std::vector<string> const &words, string const &program)
{
    if (!FitsLibrary())
        return e_exit_failed;
    Registry registry;
    RegisterDefaultDataCodecs();
    eExit const exit = RunGuarded(words, program, registry);
    // A command that writes data to standard output has reported its failure.
    bool const isReported = !std::cout && exit != e_exit_ok;
    errno = 0;
    if (std::cout.flush() || isReported)
        return exit;
    PrintError("cannot write to standard output" +
               (errno != 0 ? ": " + std::generic_category().message(errno) : string()));
    return exit == e_exit_ok ? e_exit_failed : exit;
}

/// Deletes unfinished files, and ends the program as the signal would have ended it.
void OnSignal(platform::eSignal signal)
{
    if (signal == platform::eSignal::e_resize || signal == platform::eSignal::e_continue)
        return;
    RemoveUnfinishedFiles();
    platform::EndProcessBySignal(signal);
}

} // namespace
} // namespace quillmarsh::tools

int main(int argc, char **argv)
{
    using namespace quillmarsh::tools;
    quillmarsh::platform::PrepareStandardStreams();
    quillmarsh::platform::SignalWatch const watch(&OnSignal);
    quillmarsh::NewThrowsExceptionSentry const sentry;
    std::vector<std::string> words = quillmarsh::platform::GetProgramArguments(argc, argv);
    std::string const program = words.empty() ? "" : words.front();
    words.erase(words.begin(), words.begin() + (words.empty() ? 0 : 1));
    return Main(words, program);
}
