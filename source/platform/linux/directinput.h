// The public headers define the whole record.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_DIRECTINPUT_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_DIRECTINPUT_H

#include <quillmarsh/platform/types.h>

#endif
