// The library's own bitmaps, which replace the other system's here.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_GDIPLUS_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_GDIPLUS_H

#include <quillmarsh/platform/linux/gdiplus.h>

#endif
