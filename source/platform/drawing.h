// Seam: drawing, as the namespace Gdiplus. On Windows it is the system's; elsewhere it has the operations in use.
#ifndef QUILLMARSH_SOURCE_PLATFORM_DRAWING_H
#define QUILLMARSH_SOURCE_PLATFORM_DRAWING_H

#include <quillmarsh/platform/types.h>

#ifdef _WIN32
#include "source/platform/win32/gdiplus.h"
#else
#include "source/platform/linux/gdiplus.h"
#endif

namespace quillmarsh::platform
{

/// The library's wide text under the name that the drawing service has for its units.
inline auto ToDrawingText(unsigned short const *text)
{
#ifdef _WIN32
    return reinterpret_cast<wchar_t const *>(text);
#else
    return text;
#endif
}

} // namespace quillmarsh::platform

#endif
