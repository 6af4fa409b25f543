// The commands of qmdp.
#ifndef QUILLMARSH_TOOLS_QMDP_COMMANDS_H
#define QUILLMARSH_TOOLS_QMDP_COMMANDS_H

#include "arguments.h"

#include <functional>
#include <span>

namespace quillmarsh::tools
{

// Each command throws a DataException or a WrongArgumentException when it cannot go on.

bool Info(Arguments const &arguments);
bool Convert(Arguments const &arguments);
bool Mipmaps(Arguments const &arguments);
bool BuildVolume(Arguments const &arguments);
bool Slice(Arguments const &arguments);
bool Verify(Arguments const &arguments);
bool Statistics(Arguments const &arguments);
bool CompareFiles(Arguments const &arguments);
bool Completion(Arguments const &arguments);
bool Help(Arguments const &arguments);

/// Returns all commands in the order of the help.
std::span<Command const> GetCommands();

/// Returns the command with a name. Throws a WrongArgumentException for an unknown name.
Command const &FindCommand(string const &name);

/// Returns the message of a failure, with the option that avoids it if there is one.
string DescribeFailure(Exception const &thrown);
/// Prints the message on standard error as one line: control characters in it are escaped.
void PrintLine(string const &message);
/// Prints the message after the program's name.
void PrintError(string const &message);

/// Runs work on all operands, reports failures and goes on after them. False when some file failed.
bool ForEachFile(Arguments const &arguments, std::function<void(string const &fileName)> const &work,
                 void (*report)(string const &message) = &PrintError);

/// Runs work on a file. Puts the file's name before the messages of failures that it throws.
template<typename Work>
decltype(auto) NameFile(string const &fileName, Work const &work)
{
    try
    {
        return work();
    }
    catch (DataException const &thrown)
    {
        throw DataException(fileName + ": " + thrown.GetMessage());
    }
    catch (NoMemoryException const &thrown)
    {
        throw DataException(fileName + ": " + thrown.GetMessage());
    }
}

} // namespace quillmarsh::tools

#endif
