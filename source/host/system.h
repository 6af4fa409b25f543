// The system's services for hosts that the library does not have: checks of plug-in library files.
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

} // namespace quillmarsh::host::system

#endif
