#include "source/platform/machineinfo.h"

#include "source/platform/win32/widetext.h"
#include "source/platform/win32/windows.h"

#include <array>

namespace quillmarsh::platform
{

bool IsWindows()
{
    return true;
}

string ReadMachineName()
{
    std::array<wchar_t, 257> name;
    auto size = static_cast<DWORD>(name.size());
    return GetComputerNameW(name.data(), &size) != 0 ? FromSystem(name.data()) : string();
}

string ReadUserName()
{
    std::array<wchar_t, 257> name;
    auto size = static_cast<DWORD>(name.size());
    return GetUserNameW(name.data(), &size) != 0 ? FromSystem(name.data()) : string();
}

bool ReadSystemVersion(SystemVersion &version)
{
    // The documented function returns the version that the program was built for.
    using RtlGetVersion = LONG(WINAPI *)(OSVERSIONINFOEXW *);
    HMODULE const module = GetModuleHandleA("ntdll.dll");
    auto const read = reinterpret_cast<RtlGetVersion>(
        reinterpret_cast<void *>(module ? GetProcAddress(module, "RtlGetVersion") : nullptr));
    OSVERSIONINFOEXW found = {};
    found.dwOSVersionInfoSize = sizeof(found);
    if (!read || read(&found) != 0)
        return false;
    version.majorNumber = found.dwMajorVersion;
    version.minorNumber = found.dwMinorVersion;
    version.buildNumber = found.dwBuildNumber;
    version.servicePackMajor = found.wServicePackMajor;
    version.servicePackMinor = found.wServicePackMinor;
    return true;
}

string DescribeSystem()
{
    SystemVersion version;
    return ReadSystemVersion(version) ? DescribeWindows(version) : string();
}

} // namespace quillmarsh::platform
