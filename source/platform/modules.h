// Seam: modules loaded at run time.
#ifndef QUILLMARSH_SOURCE_PLATFORM_MODULES_H
#define QUILLMARSH_SOURCE_PLATFORM_MODULES_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh::platform
{

/// Loads a module, or adds a reference when it is loaded already. On failure it returns null and sets `error` to the
/// file's name and the system's reason, with the name of a missing dependency.
HINSTANCE OpenModule(string const &fileName, string &error);

/// Releases a reference; false on failure.
bool CloseModule(HINSTANCE module);

/// Returns the address of a symbol; null when the module does not have it.
void *FindModuleSymbol(HINSTANCE module, string const &symbol);

/// Returns the name of the file that contains this library: its own, or that of a program into which it is linked.
/// Empty when the system does not tell.
string FindLibraryFile();

} // namespace quillmarsh::platform

#endif
