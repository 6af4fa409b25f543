#include "source/platform/machineinfo.h"

#include <quillmarsh/basetools/texttools.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <pwd.h>
#include <sys/utsname.h>
#include <unistd.h>
#include <vector>

namespace quillmarsh::platform
{
namespace
{

constexpr char const *s_releaseFiles[] = {"/etc/os-release", "/usr/lib/os-release"};

/// Returns the distribution's name for users from its release file; empty when the file has none.
string ReadDistribution()
{
    for (char const *const fileName : s_releaseFiles)
    {
        std::ifstream file(fileName);
        for (string line; std::getline(file, line);)
        {
            if (!EatPrefix(line, "PRETTY_NAME="))
                continue;
            TrimWhitespace(line);
            TrimQuotes(line);
            return line;
        }
    }
    return {};
}

} // namespace

bool IsWindows()
{
    return false;
}

string ReadMachineName()
{
    std::array<char, 256> name{};
    return gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

string ReadUserName()
{
    std::vector<char> buffer(16384);
    passwd record;
    passwd *found = nullptr;
    bool const isKnown = getpwuid_r(geteuid(), &record, buffer.data(), buffer.size(), &found) == 0 && found;
    return isKnown && found->pw_name ? found->pw_name : "";
}

bool ReadSystemVersion(SystemVersion &version)
{
    utsname names;
    if (uname(&names) != 0)
        return false;
    version = {};
    return std::sscanf(names.release, "%u.%u.%u", &version.majorNumber, &version.minorNumber, &version.buildNumber) >=
           2;
}

string DescribeSystem()
{
    utsname names;
    string const kernel = uname(&names) == 0 ? string(names.sysname) + ' ' + names.release : string("Linux");
    string const distribution = ReadDistribution();
    return distribution.empty() ? kernel : distribution + " / " + kernel;
}

} // namespace quillmarsh::platform
