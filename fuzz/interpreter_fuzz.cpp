// Runs scripts in the standard interpreter with the framework's commands.
#include <quillmarsh/basetools/consolebuffers.h>
#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/variableregistry.h>
#include <quillmarsh/framework/commands/crashcmd.h>
#include <quillmarsh/framework/commands/frameworkcommands.h>
#include <quillmarsh/framework/stdcommandinterpreter.h>

#include "tests/support/test_kernel.h"

#include <cstddef>
#include <cstdint>

namespace
{

using namespace quillmarsh;

/// The crash command without the options that really end the process.
class HarmlessCrashCmd : public framework_commands::CrashCmd
{
public:
    bool ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &commandLine) override
    {
        for (char const *const option :
             {s_szOptionAssert, s_szOptionVerify, s_szOptionZeroPtrRead, s_szOptionZeroPtrWrite})
        {
            if (parser.GetOption(option))
                return false;
        }
        return CrashCmd::ParseAndExecute(out, parser, commandLine);
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    tests::TestKernel kernel;
    ConsoleBuffers &buffers = *kernel.GetConsoleBuffers();
    VariableRegistry &registry = *kernel.GetVariableRegistry();
    int number = 1;
    string text = "text";
    registry.RegisterVariable(VariableProxyRangeCheckedInt(&number, 0, 9, "number"));
    registry.RegisterVariable(VariableProxyString(&text, "text", "", true));

    std_command_interpreter::Interpreter interpreter;
    framework_commands::CreateAndRegisterAllCommands(interpreter, nullptr, 0, 0);
    interpreter.DeleteExternalCommand(framework_commands::CrashCmd::s_szDefaultName);
    interpreter.RegisterExternalCommand(new HarmlessCrashCmd);
    interpreter.SetDeveloperModeActive(true);
    kernel.params.DeveloperMode = true;

    string const script(reinterpret_cast<char const *>(data), size);
    AutoPtr<ConsoleOutputStream> const out(buffers.CreateOutputStream());
    try
    {
        interpreter.InterpretScript(*out, script, false);
    }
    catch (ApplicationException const &)
    {
        // "crash -throw" throws, which ends the script.
    }
    string completed;
    interpreter.CompleteCommandLine(script.substr(0, 32), completed, *out);
    return 0;
}
