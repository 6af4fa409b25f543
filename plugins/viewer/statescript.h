// Console scripts that keep the state of the viewer's window.
#ifndef QUILLMARSH_PLUGINS_VIEWER_STATESCRIPT_H
#define QUILLMARSH_PLUGINS_VIEWER_STATESCRIPT_H

#include <quillmarsh/platform/types.h>

#include <functional>
#include <vector>

namespace viewer
{

using quillmarsh::string;

/// Returns the text of a script. Throws a DataException, which names the file, if it cannot be read or is no script.
string ReadStateScript(string const &fileName);
/// Runs the lines of a script for which `accepts` is true, without showing them. Blank lines and those that begin with
/// "#" are passed over. Returns a line for each that failed: the place and the reason. `name` stands for the script in
/// these. Not within a command.
std::vector<string> RunStateScript(string const &text, string const &name,
                                   std::function<bool(string const &line)> const &accepts);
/// Puts a script in place of an old one, and makes its directory. Throws a DataException, which names the file; the old
/// script stays then.
void WriteStateScript(string const &fileName, string const &text);

} // namespace viewer

#endif
