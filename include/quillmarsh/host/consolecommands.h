// The console commands that every host has.
#ifndef QUILLMARSH_HOST_CONSOLECOMMANDS_H
#define QUILLMARSH_HOST_CONSOLECOMMANDS_H

#include <quillmarsh/platform/types.h>

#include <map>

namespace quillmarsh
{
class VariableProxy;
class VariableRegistry;
} // namespace quillmarsh

namespace quillmarsh::host
{

class ConsoleLines;
class HostKernel;

/// Values of variables by their names, as texts that set exactly these values.
using VariableTexts = std::map<string, string>;

/// Returns the text that sets a variable to its present value. Real numbers have as many digits as they need.
string GetVariableText(VariableProxy const &variable);
/// Returns the texts of all variables that a line of the console can set: pointers are left out.
VariableTexts GetVariableTexts(VariableRegistry const &registry);

/// Registers the commands with the kernel's interpreter:
///
/// - "wait" lets frames pass before the next line.
/// - "find" searches commands, variables and aliases.
/// - "list-plugins" lists the plug-ins, and the libraries that were refused.
/// - "hid-watch" shows the readings of devices.
/// - "robot" uses the GUI as a person does; the lines that follow wait for it.
/// - "save-variables" writes a script that sets the variables that differ from `startValues`.
///
/// Kernel, lines and values are borrowed, and must outlive the commands' last line.
void RegisterConsoleCommands(HostKernel &kernel, ConsoleLines &lines, VariableTexts const &startValues);

} // namespace quillmarsh::host

#endif
