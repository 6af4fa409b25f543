// Names, versions and display of the machine that the program runs on.
#ifndef QUILLMARSH_BASETOOLS_PLATFORMINFO_H
#define QUILLMARSH_BASETOOLS_PLATFORMINFO_H

#include <quillmarsh/platform/types.h>

/// Facts about machine, user and operating system. Any thread.
namespace quillmarsh::platform_info
{

/// @name Machine, user, environment
/// @{

/// Name of the machine; empty if the system does not tell.
QUILLMARSH_API string GetMachineName();
/// Name of the user that the process runs for; empty if the system does not tell.
QUILLMARSH_API string GetUserNameA();

/// Replaces each "%NAME%" by the value of the environment variable, on every system. Names of variables that are not
/// set stay as they are. Returns false, and gives an empty output, when the text is the same as before.
QUILLMARSH_API bool ExpandEnvironmentVariable(string const &in, string &out);

/// @}
/// @name Operating system
/// @{

/// Gives the version of the system, on Linux that of its kernel, which has no service packs. Any pointer may be null.
/// Returns false if the system does not tell.
QUILLMARSH_API bool GetOperatingSystemVersion(unsigned int *major, unsigned int *minor, unsigned int *build,
                                              unsigned int *servicePackMajor, unsigned int *servicePackMinor);
/// True on Windows 2000.
QUILLMARSH_API bool RunningOnWindows2000();
/// True on Windows XP.
QUILLMARSH_API bool RunningOnWindowsXP();
/// One line for users: the system, its version and service pack, joined by " / "; on Linux the distribution and the
/// kernel.
QUILLMARSH_API string GetOperatingSystemDescription();

/// @}
/// @name Desktop
/// Without a display these return false and give zeros, and the description is made of zeros. On Linux they describe
/// the first display. They do not leave the window system started if the program has not started it.
/// @{

/// Gives the part of the desktop that no task bar covers, in pixels. Any pointer may be null.
QUILLMARSH_API bool GetWorkArea(unsigned int *left, unsigned int *top, unsigned int *right, unsigned int *bottom);
/// Gives the present mode of the desktop's first display.
QUILLMARSH_API bool GetDesktopDisplayMode(_devicemodeA &mode);
/// Gives that mode as width and height in pixels, bits per pixel, and hertz. Any pointer may be null.
QUILLMARSH_API bool GetDesktopDisplayMode(unsigned int *width, unsigned int *height, unsigned int *bitsPerPixel,
                                          unsigned int *frequency);
/// Text of that mode: "width x height x bits @ hertz".
QUILLMARSH_API string GetDesktopDisplayModeDescription();

/// @}

} // namespace quillmarsh::platform_info

#endif
