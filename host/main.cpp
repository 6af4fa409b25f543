// Reference host: loads an application from a plug-in library and runs it with a console.
#include "program.h"

#include <quillmarsh/basetools/memory.h>
#include <quillmarsh/platform/program.h>

#include <exception>

namespace quillmarsh::host
{
namespace
{

int PrintText(string const &text)
{
    string error;
    if (platform::WriteStandardStream(platform::eStandardStream::e_output, text, error))
        return e_exit_ok;
    PrintMessage("cannot write to standard output: " + error);
    return e_exit_failed;
}

/// Returns null, and says why, when the library does not fit this program.
AutoPtr<Program> MakeProgram(Arguments const &arguments, std::vector<string> const &words)
{
    try
    {
        return std::make_unique<Program>(arguments, words);
    }
    catch (KernelException const &thrown)
    {
        PrintMessage(thrown.GetMessage());
        return nullptr;
    }
}

int Main(std::vector<string> const &words)
{
    platform::PrepareStandardStreams();
    Arguments arguments;
    try
    {
        arguments = ParseArguments({words.begin() + 1, words.end()});
    }
    catch (WrongArgumentException const &thrown)
    {
        PrintMessage(thrown.GetMessage());
        return e_exit_wrong_argument;
    }
    if (!arguments.answer.empty())
        return PrintText(arguments.answer);
    int status = e_exit_ok;
    std::optional<platform::eSignal> signal;
    {
        AutoPtr<Program> const program = MakeProgram(arguments, words);
        if (!program)
            return e_exit_failed;
        status = program->Run();
        signal = program->GetEndingSignal();
    }
    if (signal)
        platform::EndProcessBySignal(*signal);
    return status;
}

} // namespace
} // namespace quillmarsh::host

int main(int argc, char **argv)
{
    quillmarsh::NewThrowsExceptionSentry const sentry;
    std::vector<std::string> words = quillmarsh::platform::GetProgramArguments(argc, argv);
    if (words.empty())
        words.emplace_back("quillmarsh-host");
    return quillmarsh::host::Main(words);
}
