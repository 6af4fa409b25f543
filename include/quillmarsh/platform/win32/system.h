// What the public headers need of Windows. Included by config.h; nobody else includes it.
#ifndef QUILLMARSH_PLATFORM_WIN32_SYSTEM_H
#define QUILLMARSH_PLATFORM_WIN32_SYSTEM_H

#if defined(QUILLMARSH_STATIC)
#define QUILLMARSH_API
#define QUILLMARSH_API_MEMBER
#elif defined(quillmarsh_EXPORTS)
#define QUILLMARSH_API __declspec(dllexport)
#define QUILLMARSH_API_MEMBER __declspec(dllexport)
#else
#define QUILLMARSH_API __declspec(dllimport)
// A member with a body cannot be imported by its declaration; the import library has it all the same.
#define QUILLMARSH_API_MEMBER
#endif
#define QUILLMARSH_API_TEMPLATE
#define QUILLMARSH_PLUGIN_EXPORT extern "C" __declspec(dllexport)
#define QUILLMARSH_OPENGL_CALL __stdcall

// Records that the operating system publishes, declared as its own headers declare them.
/// @cond
#ifndef GUID_DEFINED
#define GUID_DEFINED
/// Globally unique identifier.
struct _GUID
{
    unsigned long Data1;
    unsigned short Data2;
    unsigned short Data3;
    unsigned char Data4[8];
};
using GUID = _GUID;
#endif

union _LARGE_INTEGER;
struct _devicemodeA;
struct DIDEVICEINSTANCEA;
struct IUnknown;
using LARGE_INTEGER = _LARGE_INTEGER;
/// @endcond

#endif
