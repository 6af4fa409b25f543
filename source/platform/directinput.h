// The record that the system's DirectInput describes devices by, complete.
#ifndef QUILLMARSH_SOURCE_PLATFORM_DIRECTINPUT_H
#define QUILLMARSH_SOURCE_PLATFORM_DIRECTINPUT_H

#include <quillmarsh/platform/types.h>

#if defined(_WIN32)
#include "source/platform/win32/windows.h"

#define DIRECTINPUT_VERSION 0x0800
#include <dinput.h>
#endif

#endif
