// The options of qmdp: help, parsing and completions are made from this table.
#ifndef QUILLMARSH_TOOLS_QMDP_OPTIONTABLE_H
#define QUILLMARSH_TOOLS_QMDP_OPTIONTABLE_H

#include "arguments.h"

#include <span>

namespace quillmarsh::tools
{

/// One option of the command line.
struct Option
{
    /// Group of options; a command lists the groups that it takes.
    char group;
    char const *name;
    /// Another name, of one letter; null for none.
    char const *shortName;
    /// Word for the value; null for an option without one. "FILE" stands for the name of a file.
    char const *value;
    char const *description;
    void (*take)(Arguments &arguments, string const &value);
    /// Returns all values that the option can have; null if there is no list of them.
    std::vector<string> (*listValues)() = nullptr;
};

/// Returns all options in the order of the help.
std::span<Option const> GetOptions();
/// True when the command takes the option. `command` is null before the command is known.
bool Takes(Command const *command, Option const &option);

} // namespace quillmarsh::tools

#endif
