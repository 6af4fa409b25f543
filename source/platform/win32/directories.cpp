#include "source/platform/files.h"

#include <quillmarsh/basetools/texttools.h>

#include "source/platform/win32/widetext.h"
#include "source/platform/win32/windows.h"

#include <algorithm>

namespace quillmarsh::platform
{

bool ReadProcessDirectory(string &directory)
{
    wstring found;
    return ReadSystemText([](wchar_t *buffer, DWORD size) { return GetCurrentDirectoryW(size, buffer); }, found) &&
           UnicodeToAscii(found, directory);
}

bool ChangeProcessDirectory(string const &directory)
{
    // This is the only operation that does not accept the long-path prefix.
    wstring wide;
    return AsciiToUnicode(directory, wide) && SetCurrentDirectoryW(ToSystem(wide)) != 0;
}

bool ReadTempDirectory(string &directory)
{
    wstring found;
    return ReadSystemText([](wchar_t *buffer, DWORD size) { return GetTempPathW(size, buffer); }, found) &&
           UnicodeToAscii(found, directory);
}

bool ReadHomeDirectory(string &)
{
    return false;
}

bool ReadUserDirectory(eUserDirectory kind, string &directory)
{
    string const variable = kind == eUserDirectory::e_config ? "%APPDATA%" : "%LOCALAPPDATA%";
    string expanded;
    if (!ExpandEnvironment(variable, expanded) || expanded == variable || expanded.empty())
        return false;
    directory = expanded;
    return true;
}

bool ReadVolumes(std::vector<string> &volumes)
{
    // Each root ends in a 0.
    wstring roots;
    if (!ReadSystemText([](wchar_t *buffer, DWORD size) { return GetLogicalDriveStringsW(size, buffer); }, roots))
        return false;
    volumes.clear();
    for (std::size_t begin = 0; begin < roots.size();)
    {
        std::size_t const end = std::min(roots.find(wstring::value_type(0), begin), roots.size());
        string name;
        if (end > begin && UnicodeToAscii(roots.substr(begin, end - begin), name))
            volumes.push_back(name);
        begin = end + 1;
    }
    return true;
}

bool ExpandEnvironment(string const &in, string &out)
{
    wstring wide;
    if (!AsciiToUnicode(in, wide))
        return false;
    // This function's size always includes the 0 at the end.
    DWORD const size = ExpandEnvironmentStringsW(ToSystem(wide), nullptr, 0);
    wstring expanded(size, 0);
    if (size == 0 || ExpandEnvironmentStringsW(ToSystem(wide), ToSystem(expanded), size) != size)
        return false;
    expanded.pop_back();
    return UnicodeToAscii(expanded, out);
}

} // namespace quillmarsh::platform
