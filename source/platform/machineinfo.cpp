#include "source/platform/machineinfo.h"

namespace quillmarsh::platform
{

string DescribeWindows(SystemVersion const &version)
{
    string text = "Microsoft Windows";
    if (version.majorNumber == 5 && version.minorNumber == 0)
        text += " 2000";
    else if (version.majorNumber == 5 && version.minorNumber == 1)
        text += " XP";
    text += " / " + std::to_string(version.majorNumber) + '.' + std::to_string(version.minorNumber) + '.' +
            std::to_string(version.buildNumber);
    text +=
        " / Service Pack " + std::to_string(version.servicePackMajor) + '.' + std::to_string(version.servicePackMinor);
    return text;
}

} // namespace quillmarsh::platform
