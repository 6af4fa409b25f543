#include "consoleinput.h"

#include <quillmarsh/basetools/texttools.h>

#include <algorithm>
#include <string_view>
#include <vector>

#include <windows.h>

namespace quillmarsh::host
{

namespace
{

constexpr wchar_t s_endOfInput = 26;
constexpr wchar_t s_tab = L'\t';

string ToText(std::wstring const &typed)
{
    string text;
    UnicodeToAscii(wstring(typed.begin(), typed.end()), text);
    return text;
}

std::wstring FromText(string const &text)
{
    wstring units;
    AsciiToUnicode(text, units);
    return {units.begin(), units.end()};
}

} // namespace

bool ReadConsoleLine(string &line, std::function<string(string const &)> const &onTab)
{
    HANDLE const input = GetStdHandle(STD_INPUT_HANDLE);
    std::vector<wchar_t> buffer(8192);
    std::wstring typed;
    // Text at the start of the buffer that the editor begins with.
    std::size_t initial = 0;
    while (!typed.ends_with(L'\n'))
    {
        CONSOLE_READCONSOLE_CONTROL control{};
        control.nLength = sizeof(control);
        control.nInitialChars = static_cast<ULONG>(initial);
        // Of a line that is longer than the buffer, only the first part can be completed.
        control.dwCtrlWakeupMask = typed.empty() ? 1u << s_tab : 0;
        DWORD count = 0;
        SetLastError(ERROR_SUCCESS);
        // The run-time library would read in the system's code page, and take an interrupt for the end of input.
        bool const succeeded =
            ReadConsoleW(input, buffer.data(), static_cast<DWORD>(buffer.size()), &count, &control) != FALSE;
        bool const isInterrupt = count == 0 && GetLastError() == ERROR_OPERATION_ABORTED;
        initial = 0;
        if (isInterrupt)
            typed.clear();
        else if (!succeeded || count == 0)
            return false;
        std::wstring_view const got(buffer.data(), count);
        std::size_t const tab = control.dwCtrlWakeupMask != 0 ? got.find(s_tab) : got.npos;
        if (tab == got.npos)
        {
            typed.append(got);
            continue;
        }
        std::wstring const next = FromText(onTab(ToText(std::wstring(got.substr(0, tab)))));
        initial = std::min(next.size(), buffer.size() - 1);
        std::copy_n(next.begin(), initial, buffer.begin());
    }
    if (typed.front() == s_endOfInput)
        return false;
    typed.erase(typed.find_last_not_of(L"\r\n") + 1);
    line = ToText(typed);
    return true;
}

} // namespace quillmarsh::host
