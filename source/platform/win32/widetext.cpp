#include "source/platform/win32/widetext.h"

#include <quillmarsh/basetools/texttools.h>

#include "source/basetools/pathrules.h"
#include "source/platform/files.h"
#include "source/platform/win32/windows.h"

namespace quillmarsh::platform
{

string FromSystem(wchar_t const *text)
{
    string converted;
    UnicodeToAscii(reinterpret_cast<unsigned short const *>(text), converted);
    return converted;
}

bool MakeSystemPath(string const &name, wstring &path)
{
    wstring wide;
    if (!AsciiToUnicode(name, wide))
        return false;
    // Behind the prefix the system takes a name as it is: it has to be full, and without dots.
    auto const read = [&wide](wchar_t *buffer, DWORD size)
    { return GetFullPathNameW(ToSystem(wide), size, buffer, nullptr); };
    wstring full;
    string text;
    if (!ReadSystemText(read, full) || !UnicodeToAscii(full, text))
        return false;
    bool const hasServerOrPrefix = MatchPrefix(text, "\\\\");
    if (hasServerOrPrefix)
        path = full;
    return hasServerOrPrefix || file_system::ConvertPathName(GetSystemPathRules(), text, path);
}

} // namespace quillmarsh::platform
