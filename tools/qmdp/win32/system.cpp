#include "../system.h"

#include <cstdio>
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
    SetConsoleOutputCP(CP_UTF8);
}

bool IsOutputTerminal()
{
    return _isatty(_fileno(stdout)) != 0 && _isatty(_fileno(stderr)) != 0;
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
