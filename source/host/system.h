// What a host needs from the system beyond the library: a look into files of plug-in libraries.
#ifndef QUILLMARSH_SOURCE_HOST_SYSTEM_H
#define QUILLMARSH_SOURCE_HOST_SYSTEM_H

#include <quillmarsh/platform/types.h>

// linux/ and win32/ implement what is declared here, and the build picks one.
namespace quillmarsh::host::system
{

/// Whether the file begins as the system's libraries do.
bool IsLibraryFile(string const &fileName);
/// False when a library is cut off: what it loads lies behind the end of the file, where a loader that maps it without
/// a look would end the process.
bool IsCompleteLibraryFile(string const &fileName);

} // namespace quillmarsh::host::system

#endif
