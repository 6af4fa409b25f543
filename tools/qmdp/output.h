// What qmdp prints on standard output about files.
#ifndef QUILLMARSH_TOOLS_QMDP_OUTPUT_H
#define QUILLMARSH_TOOLS_QMDP_OUTPUT_H

#include <quillmarsh/platform/types.h>

#include <nlohmann/json_fwd.hpp>

namespace quillmarsh::tools
{

/// Returns a name for standard output: unchanged, but control characters are escaped for a terminal.
string MakeShown(string const &fileName);

/// Prints an object as one line.
void PrintObject(nlohmann::ordered_json const &object);

} // namespace quillmarsh::tools

#endif
