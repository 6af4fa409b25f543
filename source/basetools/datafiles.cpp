#include <quillmarsh/basetools/filesystem.h>

#include "source/basetools/datadirectory.h"
#include "source/platform/modules.h"

namespace quillmarsh::file_system
{

string FindDataFile(string const &name)
{
    string path, base, extension;
    SplitFileName(GetFullPathNameA(platform::FindLibraryFile(), false), path, base, extension);
    if (name.empty() || path.empty())
        return {};
    for (char const *const directory : {"data", QUILLMARSH_DATA_DIRECTORY})
    {
        string full;
        if (ExpandPathName(path + directory, full, true) && FileExists(full + name))
            return full + name;
    }
    return {};
}

} // namespace quillmarsh::file_system
