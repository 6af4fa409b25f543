#include "source/platform/win32/widetext.h"

#include <quillmarsh/basetools/texttools.h>

#include "source/basetools/pathrules.h"
#include "source/platform/files.h"
#include "source/platform/win32/windows.h"

#include <algorithm>

namespace quillmarsh::platform
{

bool IsAscii(string const &text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return (c & 0x80) == 0; });
}

string FromSystem(wchar_t const *text)
{
    string converted;
    UnicodeToAscii(reinterpret_cast<unsigned short const *>(text), converted);
    return converted;
}

string DescribeSystemError(DWORD code)
{
    wchar_t *text = nullptr;
    constexpr DWORD flags = FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
    FormatMessageW(flags, nullptr, code, 0, reinterpret_cast<wchar_t *>(&text), 0, nullptr);
    string description = text ? FromSystem(text) : "";
    LocalFree(text);
    description.erase(description.find_last_not_of(" \r\n") + 1);
    return description.empty() ? "error " + std::to_string(code) : description;
}

bool MakeSystemPath(string const &name, wstring &path)
{
    file_system::PathRules const &rules = GetSystemPathRules();
    wstring wide;
    if (name.empty() || !AsciiToUnicode(name, wide))
    {
        SetLastError(ERROR_INVALID_NAME);
        return false;
    }
    if (file_system::NamesDevice(rules, name))
    {
        SetLastError(ERROR_BAD_DEVICE);
        return false;
    }
    if (MatchPrefix(name, rules.widePrefix))
    {
        path = wide;
        return true;
    }
    // With the prefix, the system does not interpret a name, so it must be a full name without "." and "..".
    auto const read = [&wide](wchar_t *buffer, DWORD size)
    { return GetFullPathNameW(ToSystem(wide), size, buffer, nullptr); };
    wstring full;
    string text;
    if (!ReadSystemText(read, full))
        return false;
    if (!UnicodeToAscii(full, text))
    {
        SetLastError(ERROR_INVALID_NAME);
        return false;
    }
    if (MatchPrefix(text, "\\\\.\\"))
    {
        SetLastError(ERROR_BAD_DEVICE);
        return false;
    }
    // A server's name has a different form after the prefix.
    if (MatchPrefix(text, "\\\\"))
        text.replace(0, 1, "UNC");
    return file_system::ConvertPathName(rules, text, path);
}

} // namespace quillmarsh::platform
