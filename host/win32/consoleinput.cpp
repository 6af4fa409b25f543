#include "consoleinput.h"

#include <quillmarsh/basetools/texttools.h>

#include <windows.h>

namespace quillmarsh::host
{

bool ReadConsoleLine(string &line)
{
    constexpr wchar_t endOfInput = 26;
    HANDLE const input = GetStdHandle(STD_INPUT_HANDLE);
    std::wstring typed;
    while (!typed.ends_with(L'\n'))
    {
        wchar_t buffer[512];
        DWORD count = 0;
        SetLastError(ERROR_SUCCESS);
        // The run-time library would read in the system's code page, and take an interrupt for the end of input.
        bool const succeeded = ReadConsoleW(input, buffer, 512, &count, nullptr) != FALSE;
        bool const isInterrupt = count == 0 && GetLastError() == ERROR_OPERATION_ABORTED;
        if (isInterrupt)
            typed.clear();
        else if (!succeeded || count == 0)
            return false;
        typed.append(buffer, count);
    }
    if (typed.front() == endOfInput)
        return false;
    typed.erase(typed.find_last_not_of(L"\r\n") + 1);
    wstring const units(typed.begin(), typed.end());
    line.clear();
    UnicodeToAscii(units, line);
    return true;
}

} // namespace quillmarsh::host
