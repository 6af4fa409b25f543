// Export and build marks of the library's public surface.
#ifndef QUILLMARSH_PLATFORM_API_H
#define QUILLMARSH_PLATFORM_API_H

#include <quillmarsh/platform/config.h>

// QUILLMARSH_API marks a class or function that the shared module shows to programs and plug-ins.
// QUILLMARSH_API_TEMPLATE marks a class template whose run-time type is the same one in all modules.
// QUILLMARSH_PLUGIN_EXPORT marks the entry point of a plug-in library.
#if defined(_WIN32)
#if defined(QUILLMARSH_STATIC)
#define QUILLMARSH_API
#elif defined(quillmarsh_EXPORTS)
#define QUILLMARSH_API __declspec(dllexport)
#else
#define QUILLMARSH_API __declspec(dllimport)
#endif
#define QUILLMARSH_API_TEMPLATE
#define QUILLMARSH_PLUGIN_EXPORT extern "C" __declspec(dllexport)
#else
#define QUILLMARSH_API __attribute__((visibility("default")))
#define QUILLMARSH_API_TEMPLATE __attribute__((visibility("default")))
#define QUILLMARSH_PLUGIN_EXPORT extern "C" __attribute__((visibility("default")))
#endif

#endif
