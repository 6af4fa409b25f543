// Text types, ownership, and the system's handles as opaque pointers.
#ifndef QUILLMARSH_PLATFORM_TYPES_H
#define QUILLMARSH_PLATFORM_TYPES_H

#include <quillmarsh/platform/api.h>
#include <quillmarsh/platform/widechartraits.h>

#include <iosfwd>
#include <memory>
#include <string>

// Handles of the operating system, declared as its own headers declare them. On a system that has none of them they
// are pointers that stay null, or that only the platform layer understands. The records that it publishes stand in
// linux/system.h and win32/system.h, one of which config.h includes.
struct HWND__;
struct HDC__;
struct HICON__;
struct HINSTANCE__;
using HWND = HWND__ *;
using HDC = HDC__ *;
using HICON = HICON__ *;
using HCURSOR = HICON;
using HINSTANCE = HINSTANCE__ *;
using HANDLE = void *;

/// Root namespace of the library.
namespace quillmarsh
{

using std::basic_ios;
using std::exception;
using std::istream;
using std::ostream;
using std::string;

/// Wide text: UTF-16 units, of the same width on every system.
using wstring = std::basic_string<unsigned short, WideCharTraits>;

/// The library's name for an owning pointer.
template<typename T>
using AutoPtr = std::unique_ptr<T>;

/// Base of classes that are neither copied nor assigned.
class NoCopy
{
public:
    NoCopy(NoCopy const &) = delete;
    NoCopy &operator=(NoCopy const &) = delete;

protected:
    NoCopy() = default;
    ~NoCopy() = default;
};

} // namespace quillmarsh

#endif
