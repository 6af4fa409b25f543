#include "../system.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>

namespace quillmarsh::tools::system
{

void PrepareStandardStreams()
{
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    // A drive without a medium is a failure, and no question to the user.
    SetErrorMode(SEM_FAILCRITICALERRORS);
    static UINT s_codePage = GetConsoleOutputCP();
    SetConsoleOutputCP(CP_UTF8);
    if (s_codePage != 0)
        std::atexit([] { SetConsoleOutputCP(s_codePage); });
}

bool IsOutputTerminal()
{
    // The run-time library takes every device for a terminal, the one for nothing too.
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_OUTPUT_HANDLE), &mode) != 0 &&
           GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

std::vector<string> GetWords(int, char **)
{
    // The words that main() gets are in the system's code page, which has no room for all names.
    int count = 0;
    wchar_t **const words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<string> result;
    for (int i = 1; i < count; ++i)
    {
        std::u8string const word = std::filesystem::path(words[i]).u8string();
        result.emplace_back(word.begin(), word.end());
    }
    LocalFree(words);
    return result;
}

} // namespace quillmarsh::tools::system
