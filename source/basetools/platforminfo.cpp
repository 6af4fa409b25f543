#include <quillmarsh/basetools/platforminfo.h>

#include "source/platform/desktop.h"
#include "source/platform/files.h"
#include "source/platform/machineinfo.h"

#include <utility>

namespace quillmarsh::platform_info
{
namespace
{

/// Writes a value unless the pointer is null.
void Give(unsigned int *target, unsigned int value)
{
    if (target)
        *target = value;
}

bool RunningOnWindows(unsigned int majorNumber, unsigned int minorNumber)
{
    platform::SystemVersion version;
    return platform::IsWindows() && platform::ReadSystemVersion(version) && version.majorNumber == majorNumber &&
           version.minorNumber == minorNumber;
}

/// An edge of the desktop. An edge left of the first display or above it is moved to the display's border.
unsigned int ToEdge(int edge)
{
    return static_cast<unsigned int>(edge < 0 ? 0 : edge);
}

} // namespace

string GetMachineName()
{
    return platform::ReadMachineName();
}

string GetUserNameA()
{
    return platform::ReadUserName();
}

bool ExpandEnvironmentVariable(string const &in, string &out)
{
    string expanded;
    bool const succeeded = platform::ExpandEnvironment(in, expanded) && expanded != in;
    out = succeeded ? std::move(expanded) : string();
    return succeeded;
}

bool GetOperatingSystemVersion(unsigned int *major, unsigned int *minor, unsigned int *build,
                               unsigned int *servicePackMajor, unsigned int *servicePackMinor)
{
    platform::SystemVersion version;
    if (!platform::ReadSystemVersion(version))
        return false;
    Give(major, version.majorNumber);
    Give(minor, version.minorNumber);
    Give(build, version.buildNumber);
    Give(servicePackMajor, version.servicePackMajor);
    Give(servicePackMinor, version.servicePackMinor);
    return true;
}

bool RunningOnWindows2000()
{
    return RunningOnWindows(5, 0);
}

bool RunningOnWindowsXP()
{
    return RunningOnWindows(5, 1);
}

string GetOperatingSystemDescription()
{
    return platform::DescribeSystem();
}

bool GetWorkArea(unsigned int *left, unsigned int *top, unsigned int *right, unsigned int *bottom)
{
    platform::Area area;
    bool const succeeded = platform::ReadWorkArea(area);
    Give(left, ToEdge(area.left));
    Give(top, ToEdge(area.top));
    Give(right, ToEdge(area.right));
    Give(bottom, ToEdge(area.bottom));
    return succeeded;
}

bool GetDesktopDisplayMode(_devicemodeA &mode)
{
    return platform::ReadDesktopMode(mode);
}

bool GetDesktopDisplayMode(unsigned int *width, unsigned int *height, unsigned int *bitsPerPixel,
                           unsigned int *frequency)
{
    platform::DisplayMode mode;
    bool const succeeded = platform::ReadDesktopMode(mode);
    Give(width, mode.width);
    Give(height, mode.height);
    Give(bitsPerPixel, mode.bitsPerPixel);
    Give(frequency, mode.frequency);
    return succeeded;
}

string GetDesktopDisplayModeDescription()
{
    platform::DisplayMode mode;
    platform::ReadDesktopMode(mode);
    return std::to_string(mode.width) + " x " + std::to_string(mode.height) + " x " +
           std::to_string(mode.bitsPerPixel) + " @ " + std::to_string(mode.frequency);
}

} // namespace quillmarsh::platform_info
