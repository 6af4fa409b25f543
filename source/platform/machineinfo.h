// Seam: machine, user, operating system.
#ifndef QUILLMARSH_SOURCE_PLATFORM_MACHINEINFO_H
#define QUILLMARSH_SOURCE_PLATFORM_MACHINEINFO_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh::platform
{

struct SystemVersion
{
    unsigned int majorNumber = 0;
    unsigned int minorNumber = 0;
    unsigned int buildNumber = 0;
    unsigned int servicePackMajor = 0;
    unsigned int servicePackMinor = 0;
};

/// Whether the system is the one whose versions 5.0 and 5.1 have names of their own.
bool IsWindows();

/// @name Empty, or false, if the system does not tell
/// @{
string ReadMachineName();
string ReadUserName();
bool ReadSystemVersion(SystemVersion &version);
/// @}

/// One line for people about the running system.
string DescribeSystem();

/// The line for Windows, of any version.
string DescribeWindows(SystemVersion const &version);

} // namespace quillmarsh::platform

#endif
