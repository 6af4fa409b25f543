// Export and build marks of the library's public surface.
#ifndef QUILLMARSH_PLATFORM_API_H
#define QUILLMARSH_PLATFORM_API_H

#include <quillmarsh/platform/config.h>

// QUILLMARSH_API marks a class or function that the shared module shows to programs and plug-ins.
// QUILLMARSH_API_TEMPLATE marks a class template whose run-time type is the same one in all modules.
// QUILLMARSH_API_MEMBER marks a member with a body, of a class template that the library instantiates.
// QUILLMARSH_PLUGIN_EXPORT marks the entry point of a plug-in library.
//
// They are defined in linux/system.h and win32/system.h, one of which config.h includes.

#endif
