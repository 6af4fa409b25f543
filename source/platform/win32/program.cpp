#include <quillmarsh/platform/program.h>

#include <quillmarsh/basetools/texttools.h>

#include "source/platform/files.h"
#include "source/platform/win32/consolesettings.h"
#include "source/platform/win32/widetext.h"
#include "source/platform/win32/windows.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

namespace quillmarsh::platform
{
namespace
{

constexpr DWORD s_followsEscapes = 0x0004; // ENABLE_VIRTUAL_TERMINAL_PROCESSING

HANDLE GetStreamHandle(eStandardStream stream)
{
    switch (stream)
    {
    case eStandardStream::e_input:
        return GetStdHandle(STD_INPUT_HANDLE);
    case eStandardStream::e_output:
        return GetStdHandle(STD_OUTPUT_HANDLE);
    default:
        return GetStdHandle(STD_ERROR_HANDLE);
    }
}

/// The console's earlier settings. The console outlives the program.
struct ConsoleSettings
{
    UINT outputCodePage = 0;
    DWORD inputMode = 0;
    DWORD outputMode = 0;
    DWORD errorMode = 0;
};

constinit ConsoleSettings s_before;

/// Adds flags to the mode of a console; has no effect on other streams.
void AddConsoleMode(eStandardStream stream, DWORD added, DWORD &before)
{
    HANDLE const handle = GetStreamHandle(stream);
    if (GetConsoleMode(handle, &before) != 0)
        SetConsoleMode(handle, before | added);
}

/// Writes whole characters to a console; the run-time library would write byte by byte and split them. Returns false
/// when the text is not UTF-8.
bool WriteConsoleText(HANDLE console, std::string_view text)
{
    // Stays below the limit of old systems for one call.
    constexpr std::size_t most = 16000;
    wstring wide;
    if (!AsciiToUnicode(string(text), wide))
        return false;
    DWORD written = 0;
    for (std::size_t begin = 0; begin < wide.size(); begin += written)
    {
        auto const size = static_cast<DWORD>(std::min(most, wide.size() - begin));
        if (!WriteConsoleW(console, wide.data() + begin, size, &written, nullptr) || written == 0)
            return false;
    }
    return true;
}

} // namespace

std::vector<string> GetProgramArguments(int, char **)
{
    // The arguments of main() are in the system's code page, so they are not used.
    std::vector<string> words;
    int count = 0;
    wchar_t **const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 0; arguments && i < count; ++i)
        words.push_back(FromSystem(arguments[i]));
    LocalFree(arguments);
    return words;
}

string GetProgramFileName(string const &invokedName)
{
    // The system's limit for a name; a shorter buffer would truncate it.
    wstring name(32768, 0);
    DWORD const length = GetModuleFileNameW(nullptr, ToSystem(name), static_cast<DWORD>(name.size()));
    return length > 0 && length < name.size() ? FromSystem(ToSystem(name)) : invokedName;
}

void PrepareStandardStreams()
{
    for (std::FILE *stream : {stdin, stdout, stderr})
        _setmode(_fileno(stream), _O_BINARY);
    // An empty drive is a failure; the system must not ask the user about it.
    SetErrorMode(SEM_FAILCRITICALERRORS);
    // The console takes UTF-8 and escape sequences, and the system edits input lines.
    s_before.outputCodePage = GetConsoleOutputCP();
    SetConsoleOutputCP(CP_UTF8);
    AddConsoleMode(eStandardStream::e_output, s_followsEscapes, s_before.outputMode);
    AddConsoleMode(eStandardStream::e_error, s_followsEscapes, s_before.errorMode);
    AddConsoleMode(eStandardStream::e_input, ENABLE_PROCESSED_INPUT | ENABLE_LINE_INPUT | ENABLE_ECHO_INPUT,
                   s_before.inputMode);
    std::atexit(&RestoreConsole);
}

void RestoreConsole()
{
    if (s_before.outputCodePage == 0)
        return;
    SetConsoleOutputCP(s_before.outputCodePage);
    SetConsoleMode(GetStreamHandle(eStandardStream::e_error), s_before.errorMode);
    SetConsoleMode(GetStreamHandle(eStandardStream::e_output), s_before.outputMode);
    SetConsoleMode(GetStreamHandle(eStandardStream::e_input), s_before.inputMode);
}

bool IsTerminal(eStandardStream stream)
{
    // The run-time library takes every device for a terminal, NUL included.
    DWORD mode = 0;
    return GetConsoleMode(GetStreamHandle(stream), &mode) != 0;
}

bool TakesEscapeSequences(eStandardStream stream)
{
    DWORD mode = 0;
    return GetConsoleMode(GetStreamHandle(stream), &mode) != 0 && (mode & s_followsEscapes) != 0;
}

unsigned int GetTerminalWidth(eStandardStream stream)
{
    CONSOLE_SCREEN_BUFFER_INFO info;
    if (!GetConsoleScreenBufferInfo(GetStreamHandle(stream), &info))
        return 0;
    return static_cast<unsigned int>(std::max(info.srWindow.Right - info.srWindow.Left + 1, 0));
}

bool WriteStandardStream(eStandardStream stream, std::string_view text, string &reason)
{
    if (IsTerminal(stream) && WriteConsoleText(GetStreamHandle(stream), text))
        return true;
    std::FILE *const file = stream == eStandardStream::e_error ? stderr : stdout;
    if (std::fwrite(text.data(), 1, text.size(), file) == text.size() && std::fflush(file) == 0)
        return true;
    reason = DescribeLastFailure();
    return false;
}

} // namespace quillmarsh::platform
