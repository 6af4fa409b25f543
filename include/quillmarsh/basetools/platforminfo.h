// Names, versions and display of the machine that the program runs on.
#ifndef QUILLMARSH_BASETOOLS_PLATFORMINFO_H
#define QUILLMARSH_BASETOOLS_PLATFORMINFO_H

#include <quillmarsh/platform/types.h>

/// What is to be known about machine, user and operating system. Any thread.
namespace quillmarsh::platform_info
{

/// @name Machine, user, environment
/// @{

/// Empty if the system does not tell.
QUILLMARSH_API string GetMachineName();
/// Name of the user that the process runs for; empty if the system does not tell.
QUILLMARSH_API string GetUserNameA();

/// Replaces each "%NAME%" by the value of the environment variable, on every system; names of variables that are not
/// set stay as they are. False, and an empty output, when nothing was replaced or the text came out unchanged.
QUILLMARSH_API bool ExpandEnvironmentVariable(string const &in, string &out);

/// @}
/// @name Operating system
/// @{

/// Version of the system, on Linux of its kernel, which has no service packs. Any pointer may be null.
QUILLMARSH_API bool GetOperatingSystemVersion(unsigned int *major, unsigned int *minor, unsigned int *build,
                                              unsigned int *servicePackMajor, unsigned int *servicePackMinor);
QUILLMARSH_API bool RunningOnWindows2000();
QUILLMARSH_API bool RunningOnWindowsXP();
/// One line for people: the system, its version and service pack, joined by " / "; on Linux the distribution and the
/// kernel.
QUILLMARSH_API string GetOperatingSystemDescription();

/// @}
/// @name Desktop
/// Without a display they return false and write zeros, and the description is of zeros. On Linux the first display
/// answers; a program that has not started the window system is not left with it started.
/// @{

/// Part of the desktop that no task bar covers, in pixels. Any pointer may be null.
QUILLMARSH_API bool GetWorkArea(unsigned int *left, unsigned int *top, unsigned int *right, unsigned int *bottom);
/// Present mode of the desktop's first display.
QUILLMARSH_API bool GetDesktopDisplayMode(_devicemodeA &mode);
/// The same as width and height in pixels, bits per pixel, and hertz. Any pointer may be null.
QUILLMARSH_API bool GetDesktopDisplayMode(unsigned int *width, unsigned int *height, unsigned int *bitsPerPixel,
                                          unsigned int *frequency);
/// "width x height x bits @ hertz".
QUILLMARSH_API string GetDesktopDisplayModeDescription();

/// @}

} // namespace quillmarsh::platform_info

#endif
