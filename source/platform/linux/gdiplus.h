// The library's own bitmaps in the place of the other system's.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_GDIPLUS_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_GDIPLUS_H

#include <quillmarsh/platform/linux/gdiplus.h>

#endif
