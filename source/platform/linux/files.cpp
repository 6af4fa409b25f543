#include "source/platform/files.h"

#include "source/basetools/pathrules.h"

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
    // The entry itself: a link that leads nowhere is there, too.
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

} // namespace quillmarsh::platform
