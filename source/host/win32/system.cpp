#include "../system.h"

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/platforminfo.h>
#include <quillmarsh/host/pluginset.h>

#include <cstring>
#include <fstream>

#include <windows.h>

namespace quillmarsh::host
{

char const *GetPluginExtension()
{
    return ".dll";
}

namespace system
{

bool IsLibraryFile(string const &fileName)
{
    std::ifstream file(file_system::GetStreamPath(fileName), std::ios::binary);
    char head[2] = {};
    file.read(head, sizeof(head));
    return std::memcmp(head, "MZ", sizeof(head)) == 0;
}

bool IsCompleteLibraryFile(string const &)
{
    // The system's loader checks this itself, and reports it.
    return true;
}

char const s_folderSeparator = ';';

string GetUserPluginDirectory()
{
    string data;
    return platform_info::ExpandEnvironmentVariable("%LOCALAPPDATA%", data) ? data + "\\quillmarsh\\plugins" : "";
}

HICON LoadProgramIcon(unsigned int number)
{
    return LoadIconW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(static_cast<WORD>(number)));
}

} // namespace system

} // namespace quillmarsh::host
