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

/// True on Windows, whose versions have names.
bool IsWindows();

/// @name Empty, or false, when the system does not know
/// @{
string ReadMachineName();
string ReadUserName();
bool ReadSystemVersion(SystemVersion &version);
/// @}

/// Describes the running system in one line for the user.
string DescribeSystem();

/// Makes that line for a version of Windows.
string DescribeWindows(SystemVersion const &version);

} // namespace quillmarsh::platform

#endif
