// The commands of qmdp.
#ifndef QUILLMARSH_TOOLS_QMDP_COMMANDS_H
#define QUILLMARSH_TOOLS_QMDP_COMMANDS_H

#include "arguments.h"

#include <span>

namespace quillmarsh::tools
{

// Each throws a DataException or a WrongArgumentException for what ends it.

bool Info(Arguments const &arguments);
bool Convert(Arguments const &arguments);
bool Mipmaps(Arguments const &arguments);
bool BuildVolume(Arguments const &arguments);
bool Slice(Arguments const &arguments);
bool Verify(Arguments const &arguments);

/// All of them, in the order of the help.
std::span<Command const> GetCommands();

/// Prints one line on standard error, whatever is in the message.
void PrintLine(string const &message);
/// Prints the line behind the program's name.
void PrintError(string const &message);

} // namespace quillmarsh::tools

#endif
