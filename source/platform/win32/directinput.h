// The system's DirectInput.
#ifndef QUILLMARSH_SOURCE_PLATFORM_WIN32_DIRECTINPUT_H
#define QUILLMARSH_SOURCE_PLATFORM_WIN32_DIRECTINPUT_H

#include "source/platform/win32/windows.h"

#define DIRECTINPUT_VERSION 0x0800
#include <dinput.h>

#endif
