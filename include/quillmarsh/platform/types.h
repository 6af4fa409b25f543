// Text types, ownership, and the system's handles as opaque pointers.
#ifndef QUILLMARSH_PLATFORM_TYPES_H
#define QUILLMARSH_PLATFORM_TYPES_H

#include <quillmarsh/platform/api.h>
#include <quillmarsh/platform/widechartraits.h>

#include <iosfwd>
#include <memory>
#include <string>

// Handles of the operating system, declared as its own headers declare them. On a system that has none of them they
// are pointers that stay null, or that only the platform layer understands.
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

// Records that the operating system publishes, and describes, for systems that do not define them.
/// @cond
#ifndef GUID_DEFINED
#define GUID_DEFINED
/// Globally unique identifier.
struct _GUID
{
#if defined(_WIN32)
    unsigned long Data1;
#else
    unsigned int Data1;
#endif
    unsigned short Data2;
    unsigned short Data3;
    unsigned char Data4[8];
};
using GUID = _GUID;
#endif

#if defined(_WIN32)
union _LARGE_INTEGER;
struct _devicemodeA;
struct DIDEVICEINSTANCEA;
struct IUnknown;
#else
/// 64-bit integer that can be taken by halves.
union _LARGE_INTEGER
{
    __extension__ struct
    {
        unsigned int LowPart;
        int HighPart;
    };
    long long QuadPart;
};

/// Position of a display on the desktop.
struct _POINTL
{
    int x;
    int y;
};

/// Mode of a display; a record of 156 bytes. Fields that have to do with printers stay zero.
struct _devicemodeA
{
    unsigned char dmDeviceName[32];
    unsigned short dmSpecVersion;
    unsigned short dmDriverVersion;
    unsigned short dmSize;
    unsigned short dmDriverExtra;
    unsigned int dmFields;
    _POINTL dmPosition;
    unsigned int dmDisplayOrientation;
    unsigned int dmDisplayFixedOutput;
    short dmColor;
    short dmDuplex;
    short dmYResolution;
    short dmTTOption;
    short dmCollate;
    unsigned char dmFormName[32];
    unsigned short dmLogPixels;
    unsigned int dmBitsPerPel;
    unsigned int dmPelsWidth;
    unsigned int dmPelsHeight;
    unsigned int dmDisplayFlags;
    unsigned int dmDisplayFrequency;
    unsigned int dmICMMethod;
    unsigned int dmICMIntent;
    unsigned int dmMediaType;
    unsigned int dmDitherType;
    unsigned int dmReserved1;
    unsigned int dmReserved2;
    unsigned int dmPanningWidth;
    unsigned int dmPanningHeight;
};

/// Instance of an input device; a record of 580 bytes.
struct DIDEVICEINSTANCEA
{
    unsigned int dwSize;
    _GUID guidInstance;
    _GUID guidProduct;
    unsigned int dwDevType;
    char tszInstanceName[260];
    char tszProductName[260];
    _GUID guidFFDriver;
    unsigned short wUsagePage;
    unsigned short wUsage;
};

/// Root interface of components that count their references.
struct IUnknown
{
    /// Gives the interface of an identifier, with a reference of its own. Zero on success.
    virtual int QueryInterface(_GUID const &identifier, void **result) = 0;
    /// Takes one more reference; returns their number.
    virtual unsigned int AddRef() = 0;
    /// Gives a reference back, the last one with the object; returns the number that is left.
    virtual unsigned int Release() = 0;

protected:
    ~IUnknown() = default;
};
#endif
using LARGE_INTEGER = _LARGE_INTEGER;
/// @endcond

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
