// Loads an application from a plug-in library and runs it with a console. The build makes a program of each kind.
#include "program.h"

#include <quillmarsh/basetools/memory.h>
#include <quillmarsh/platform/program.h>

#include <exception>

namespace quillmarsh::host
{
namespace
{

int PrintText(ProgramKind const &kind, string const &text)
{
    string error;
    if (platform::WriteStandardStream(platform::eStandardStream::e_output, text, error))
        return e_exit_ok;
    PrintMessage(kind, "cannot write to standard output: " + error);
    return e_exit_failed;
}

/// Returns null, and says why, when the library does not fit this program.
AutoPtr<Program> MakeProgram(ProgramKind const &kind, Arguments const &arguments, std::vector<string> const &words)
{
    try
    {
        return std::make_unique<Program>(kind, arguments, words);
    }
    catch (KernelException const &thrown)
    {
        PrintMessage(kind, thrown.GetMessage());
        return nullptr;
    }
}

int Main(ProgramKind const &kind, std::vector<string> const &words)
{
    platform::PrepareStandardStreams();
    Arguments arguments;
    try
    {
        arguments = ParseArguments(kind, {words.begin() + 1, words.end()});
    }
    catch (WrongArgumentException const &thrown)
    {
        PrintMessage(kind, thrown.GetMessage());
        return e_exit_wrong_argument;
    }
    if (!arguments.answer.empty())
        return PrintText(kind, arguments.answer);
    int status = e_exit_ok;
    std::optional<platform::eSignal> signal;
    {
        AutoPtr<Program> const program = MakeProgram(kind, arguments, words);
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
    quillmarsh::host::ProgramKind const &kind = quillmarsh::host::GetProgramKind(QUILLMARSH_PROGRAM_NAME);
    std::vector<std::string> words = quillmarsh::platform::GetProgramArguments(argc, argv);
    if (words.empty())
        words.emplace_back(kind.name);
    return quillmarsh::host::Main(kind, words);
}
