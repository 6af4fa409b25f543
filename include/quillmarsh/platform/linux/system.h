// What the public headers need of Linux. Included by config.h; nobody else includes it.
#ifndef QUILLMARSH_PLATFORM_LINUX_SYSTEM_H
#define QUILLMARSH_PLATFORM_LINUX_SYSTEM_H

#define QUILLMARSH_API __attribute__((visibility("default")))
#define QUILLMARSH_API_MEMBER
#define QUILLMARSH_API_TEMPLATE __attribute__((visibility("default")))
#define QUILLMARSH_PLUGIN_EXPORT extern "C" __attribute__((visibility("default")))
#define QUILLMARSH_OPENGL_CALL

// Records that another operating system publishes: here the library defines and describes them.
/// @cond
#ifndef GUID_DEFINED
#define GUID_DEFINED
/// Globally unique identifier.
struct _GUID
{
    unsigned int Data1;
    unsigned short Data2;
    unsigned short Data3;
    unsigned char Data4[8];
};
using GUID = _GUID;
#endif

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
using LARGE_INTEGER = _LARGE_INTEGER;
/// @endcond

#endif
