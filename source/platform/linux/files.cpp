#include "source/platform/files.h"

#include "source/basetools/pathrules.h"

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillmarsh::platform
{

file_system::PathRules const &GetSystemPathRules()
{
    return file_system::s_unixPathRules;
}

bool FindEntry(string const &name)
{
    // Looks at the entry itself, so that a broken link counts as well.
    struct stat status;
    return lstat(name.c_str(), &status) == 0;
}

bool RemoveFile(string const &name)
{
    return unlink(name.c_str()) == 0;
}

bool MakeDirectory(string const &name)
{
    return mkdir(name.c_str(), 0777) == 0;
}

bool RemoveEmptyDirectory(string const &name)
{
    return rmdir(name.c_str()) == 0;
}

bool FindLongName(string const &shortName, string &longName)
{
    longName = shortName;
    return FindEntry(shortName);
}

bool MakeTempFile(string &result, string const &directory, string const &prefix)
{
    constexpr char const *ending = ".tmp";
    string name = directory;
    file_system::ForceTrailingPathSeparator(GetSystemPathRules(), name);
    name += prefix + "XXXXXX" + ending;
    int const file = mkostemps(name.data(), 4, O_CLOEXEC);
    if (file < 0)
        return false;
    close(file);
    result = name;
    return true;
}

std::filesystem::file_type ReadFileType(string const &name, bool followLinks)
{
    std::error_code error;
    return followLinks ? std::filesystem::status(name, error).type()
                       : std::filesystem::symlink_status(name, error).type();
}

string FollowLinks(string const &name)
{
    std::unique_ptr<char, decltype(&free)> const resolved(realpath(name.c_str(), nullptr), &free);
    return resolved ? resolved.get() : name;
}

std::filesystem::path MakeStreamPath(string const &name)
{
    if (name.empty())
        errno = ENOENT;
    return name;
}

string DescribeLastFailure()
{
    return std::generic_category().message(errno);
}

} // namespace quillmarsh::platform
