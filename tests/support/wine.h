// Tells Wine from Windows, because Wine lacks some features of Windows.
#ifndef QUILLMARSH_TESTS_SUPPORT_WINE_H
#define QUILLMARSH_TESTS_SUPPORT_WINE_H

#if defined(_WIN32)
#include "source/platform/win32/windows.h"
#endif

namespace quillmarsh::tests
{

constexpr bool IsWindows()
{
#if defined(_WIN32)
    return true;
#else
    return false;
#endif
}

inline bool IsWine()
{
#if defined(_WIN32)
    return GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr;
#else
    return false;
#endif
}

} // namespace quillmarsh::tests

#endif
