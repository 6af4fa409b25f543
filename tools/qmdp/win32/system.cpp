#include "../system.h"

#include <quillmarsh/basetools/texttools.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>

namespace quillmarsh::tools::system
{

namespace
{

/// Whether errors go to a console that follows escape sequences.
bool s_takesEscapes = false;

} // namespace

void PrepareStandardStreams()
{
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    // A drive without a medium is a failure, and no question to the user.
    SetErrorMode(SEM_FAILCRITICALERRORS);
    // Text is UTF-8, and the display of progress uses an escape sequence.
    static UINT const s_codePage = GetConsoleOutputCP();
    static DWORD s_mode = 0;
    SetConsoleOutputCP(CP_UTF8);
    HANDLE const output = GetStdHandle(STD_ERROR_HANDLE);
    s_takesEscapes = GetConsoleMode(output, &s_mode) != 0 &&
                     SetConsoleMode(output, s_mode | 0x0004 /* ENABLE_VIRTUAL_TERMINAL_PROCESSING */) != 0;
    if (s_codePage == 0)
        return;
    // The console outlives the program.
    std::atexit(
        []
        {
            SetConsoleOutputCP(s_codePage);
            SetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), s_mode);
        });
}

bool IsOutputTerminal()
{
    // The run-time library takes every device for a terminal, the one for nothing too.
    DWORD mode = 0;
    return s_takesEscapes && GetConsoleMode(GetStdHandle(STD_OUTPUT_HANDLE), &mode) != 0;
}

std::vector<string> GetWords(int, char **)
{
    // The words that main() gets are in the system's code page, which has no room for all names.
    int count = 0;
    wchar_t **const words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<string> result;
    for (int i = 1; i < count; ++i)
    {
        std::wstring_view const word(words[i]);
        UnicodeToAscii(wstring(word.begin(), word.end()), result.emplace_back());
    }
    LocalFree(words);
    return result;
}

} // namespace quillmarsh::tools::system
