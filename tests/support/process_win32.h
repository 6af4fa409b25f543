// Starts a program on Windows.
#ifndef QUILLMARSH_TESTS_SUPPORT_PROCESS_WIN32_H
#define QUILLMARSH_TESTS_SUPPORT_PROCESS_WIN32_H

#include <quillmarsh/basetools/texttools.h>

#include "source/platform/win32/windows.h"
#include "tests/support/wine.h"

#include <iostream>
#include <vector>

namespace quillmarsh::tests
{

/// Status of a process that an exception ended.
constexpr int s_abortStatus = 3;

/// Names of the files for the standard streams.
struct StreamFiles
{
    string in;
    string out;
    string err;
};

inline std::wstring ToWide(string const &text)
{
    wstring wide;
    AsciiToUnicode(text, wide);
    return {wide.begin(), wide.end()};
}

/// Quotes one word of a command line. Backslashes stay, except before a quotation mark, where they are doubled.
inline string QuoteWord(string const &word)
{
    string quoted = "\"";
    std::size_t numBackslashes = 0;
    for (char const c : word)
    {
        if (c == '"')
            quoted.append(numBackslashes + 1, '\\');
        numBackslashes = c == '\\' ? numBackslashes + 1 : 0;
        quoted += c;
    }
    return quoted.append(numBackslashes, '\\') + '"';
}

inline std::wstring MakeCommandLine(string const &program, std::vector<string> const &arguments)
{
    string line = QuoteWord(program);
    for (string const &argument : arguments)
        line += ' ' + QuoteWord(argument);
    return ToWide(line);
}

inline int WaitForExit(PROCESS_INFORMATION const &process)
{
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD status = 0;
    GetExitCodeProcess(process.hProcess, &status);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<int>(status);
}

inline int RunWithStreams(string const &program, std::vector<string> const &arguments, StreamFiles const &streams)
{
    auto const open = [](string const &name, DWORD access)
    {
        SECURITY_ATTRIBUTES inherited{sizeof(inherited), nullptr, TRUE};
        constexpr DWORD sharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
        return CreateFileW(ToWide(name).c_str(), access, sharing, &inherited, OPEN_EXISTING, 0, nullptr);
    };
    STARTUPINFOW start{};
    start.cb = sizeof(start);
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = open(streams.in, GENERIC_READ);
    start.hStdOutput = open(streams.out, GENERIC_WRITE);
    start.hStdError = open(streams.err, GENERIC_WRITE);

    std::wstring const line = MakeCommandLine(program, arguments);
    PROCESS_INFORMATION process{};
    bool started = false;
    // On a busy machine, Wine sometimes fails to start a program and succeeds a moment later.
    for (int numTries = IsWine() ? 3 : 1; !started && numTries > 0; --numTries)
    {
        std::wstring changeable = line;
        started = CreateProcessW(nullptr, changeable.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                                 &process) != FALSE;
        if (!started)
            std::cerr << program << " cannot be started: " << GetLastError() << std::endl;
    }
    for (HANDLE const file : {start.hStdInput, start.hStdOutput, start.hStdError})
        CloseHandle(file);
    return started ? WaitForExit(process) : 127;
}

} // namespace quillmarsh::tests

#endif
