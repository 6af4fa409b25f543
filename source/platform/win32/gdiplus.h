// The system's drawing library. Nobody else includes it.
#ifndef QUILLMARSH_SOURCE_PLATFORM_WIN32_GDIPLUS_H
#define QUILLMARSH_SOURCE_PLATFORM_WIN32_GDIPLUS_H

#include "source/platform/win32/windows.h"

#include <algorithm>
#include <objidl.h>

// The drawing library's own headers call min and max, which our header of the system takes away.
namespace Gdiplus
{
using std::max;
using std::min;
} // namespace Gdiplus

#include <gdiplus.h>

#endif
