// The system's services for hosts that the library does not have: checks of plug-in library files, the folder of the
// user's own plug-ins, and the program's icons.
#ifndef QUILLMARSH_SOURCE_HOST_SYSTEM_H
#define QUILLMARSH_SOURCE_HOST_SYSTEM_H

#include <quillmarsh/platform/types.h>

// linux/ and win32/ implement these declarations, and the build picks one of them.
namespace quillmarsh::host::system
{

/// True when the file begins like a library of this system.
bool IsLibraryFile(string const &fileName);
/// False when a library is cut off: it loads bytes behind the end of the file. The system's loader maps such a file
/// without a check, and the process ends.
bool IsCompleteLibraryFile(string const &fileName);

/// Separates the folders of a list in an environment variable.
extern char const s_folderSeparator;
/// Returns the folder of the user's own plug-ins, which may not exist; empty when the user has no home.
string GetUserPluginDirectory();

/// Returns an icon of the program's file by its number; it is valid for as long as the program runs. Null when there is
/// no such icon, and on Linux, where programs have none.
HICON LoadProgramIcon(unsigned int number);

} // namespace quillmarsh::host::system

#endif
