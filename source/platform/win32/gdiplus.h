// The system's drawing library, GDI+. Only this header includes its headers.
#ifndef QUILLMARSH_SOURCE_PLATFORM_WIN32_GDIPLUS_H
#define QUILLMARSH_SOURCE_PLATFORM_WIN32_GDIPLUS_H

#include "source/platform/win32/windows.h"

#include <algorithm>
#include <objidl.h>

// GDI+'s headers call min and max, which windows.h of this folder removes.
namespace Gdiplus
{
using std::max;
using std::min;
} // namespace Gdiplus

#include <gdiplus.h>

#endif
