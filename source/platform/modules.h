// Seam: modules that are loaded at run time.
#ifndef QUILLMARSH_SOURCE_PLATFORM_MODULES_H
#define QUILLMARSH_SOURCE_PLATFORM_MODULES_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh::platform
{

/// Loads a module, or takes one more reference to it. Null on failure, and then `error` holds the system's reason, with
/// the file's name in front and the name of a missing dependency within.
HINSTANCE OpenModule(string const &fileName, string &error);

/// Gives a reference back.
bool CloseModule(HINSTANCE module);

/// Null when there is no such symbol.
void *FindModuleSymbol(HINSTANCE module, string const &symbol);

} // namespace quillmarsh::platform

#endif
