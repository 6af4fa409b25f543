#include <quillmarsh/host/consolecommands.h>

#include "hostcommands.h"

#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/host/waitcmd.h>

namespace quillmarsh::host
{

void RegisterConsoleCommands(HostKernel &kernel, ConsoleLines &lines, VariableTexts const &startValues)
{
    std_command_interpreter::Interpreter &interpreter = *kernel.GetCommandInterpreter();
    interpreter.RegisterExternalCommand(new WaitCmd(lines));
    interpreter.RegisterExternalCommand(new FindCmd(kernel));
    interpreter.RegisterExternalCommand(new ListPluginsCmd(kernel));
    interpreter.RegisterExternalCommand(new HidWatchCmd(kernel, lines));
    interpreter.RegisterExternalCommand(new RobotCmd(kernel, lines));
    interpreter.RegisterExternalCommand(new SaveVariablesCmd(kernel, startValues));
}

bool RefuseLine(ostream &out, string const &message)
{
    out << e_error << message << std::endl << e_info;
    return false;
}

} // namespace quillmarsh::host
