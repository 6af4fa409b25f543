// Console commands that work on the current data.
#ifndef QUILLMARSH_PLUGINS_WORKBENCH_DATACOMMANDS_H
#define QUILLMARSH_PLUGINS_WORKBENCH_DATACOMMANDS_H

#include "databench.h"

#include <quillmarsh/framework/stdcommandinterpreter.h>

namespace workbench
{

/// Registers "load", "info", "convert", "resample", "flip", "fill", "mipmaps", "save" and "formats". The commands
/// borrow `bench`, which must outlive them.
void RegisterDataCommands(quillmarsh::std_command_interpreter::Interpreter &interpreter, DataBench &bench);

} // namespace workbench

#endif
