#include "../system.h"

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/texttools.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>

namespace quillmarsh::host::system
{

namespace
{

string FromSystem(wchar_t const *text)
{
    string converted;
    UnicodeToAscii(reinterpret_cast<unsigned short const *>(text), converted);
    return converted;
}

/// The run-time library takes every device for a terminal, the one for nothing too.
bool IsConsole(DWORD stream)
{
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(stream), &mode) != 0;
}

/// The run-time library would hand a console byte after byte, and so cut characters. False when the text is not UTF-8.
bool WriteConsoleText(std::string_view text)
{
    // Old systems take no more than this at once, and a bit less.
    constexpr std::size_t most = 16000;
    wstring wide;
    if (!AsciiToUnicode(string(text), wide))
        return false;
    DWORD written = 0;
    for (std::size_t begin = 0; begin < wide.size(); begin += written)
    {
        auto const size = static_cast<DWORD>(std::min(most, wide.size() - begin));
        if (!WriteConsoleW(GetStdHandle(STD_OUTPUT_HANDLE), wide.data() + begin, size, &written, nullptr) ||
            written == 0)
            return false;
    }
    return true;
}

// What the console was like before. It outlives the program.
UINT s_outputCodePage = 0;
DWORD s_outputMode = 0;
DWORD s_inputMode = 0;

void RestoreConsole()
{
    SetConsoleOutputCP(s_outputCodePage);
    SetConsoleMode(GetStdHandle(STD_OUTPUT_HANDLE), s_outputMode);
    SetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), s_inputMode);
}

} // namespace

std::vector<string> GetArguments(int, char **)
{
    // What main is given stands in the code page of the system.
    std::vector<string> words;
    int count = 0;
    wchar_t **const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 0; arguments != nullptr && i < count; ++i)
        words.push_back(FromSystem(arguments[i]));
    LocalFree(arguments);
    return words;
}

void PrepareStandardStreams()
{
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    // A drive without a medium is a failure, and no question to the user.
    SetErrorMode(SEM_FAILCRITICALERRORS);
    // Text is UTF-8, and colours are escape sequences.
    s_outputCodePage = GetConsoleOutputCP();
    SetConsoleOutputCP(CP_UTF8);
    HANDLE const output = GetStdHandle(STD_OUTPUT_HANDLE);
    if (GetConsoleMode(output, &s_outputMode) != 0)
        SetConsoleMode(output, s_outputMode | 0x0004 /* ENABLE_VIRTUAL_TERMINAL_PROCESSING */);
    // Lines are edited by the system.
    HANDLE const input = GetStdHandle(STD_INPUT_HANDLE);
    if (GetConsoleMode(input, &s_inputMode) != 0)
        SetConsoleMode(input, s_inputMode | ENABLE_PROCESSED_INPUT | ENABLE_LINE_INPUT | ENABLE_ECHO_INPUT);
    if (s_outputCodePage != 0)
        std::atexit(&RestoreConsole);
}

bool IsInputTerminal()
{
    return IsConsole(STD_INPUT_HANDLE);
}

bool IsOutputTerminal()
{
    return IsConsole(STD_OUTPUT_HANDLE);
}

bool IsErrorTerminal()
{
    return IsConsole(STD_ERROR_HANDLE);
}

bool WriteStandardOutput(std::string_view text, string &error)
{
    if (IsOutputTerminal() && WriteConsoleText(text))
        return true;
    if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0)
        return true;
    error = file_system::GetLastFailureReason();
    return false;
}

string GetProgramFile(string const &invokedName)
{
    // The longest name that the system knows; a shorter buffer cuts it off.
    std::vector<wchar_t> name(32768);
    DWORD const length = GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
    return length > 0 && length < name.size() ? FromSystem(name.data()) : invokedName;
}

Input::~Input() = default;

namespace
{

/// A read that waits for a pipe or a console cannot be called off: the thread ends with the process.
class FileInput : public Input
{
public:
    explicit FileInput(std::FILE *file) : file_(file) {}

    ~FileInput() override
    {
        if (file_ != stdin)
            std::fclose(file_);
    }

    std::size_t Read(char *buffer, std::size_t size) override
    {
        if (cancelled_)
            return 0;
        int const got = _read(_fileno(file_), buffer, static_cast<unsigned int>(size));
        return got > 0 && !cancelled_ ? static_cast<std::size_t>(got) : 0;
    }

    bool IsFile() const override
    {
        return GetFileType(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file_)))) == FILE_TYPE_DISK;
    }

    bool Cancel() override
    {
        cancelled_ = true;
        return IsFile();
    }

private:
    std::FILE *file_;
    std::atomic<bool> cancelled_{false};
};

} // namespace

AutoPtr<Input> Input::Open(string const &name, string &error)
{
    std::FILE *file = stdin;
    if (name != "-")
    {
        std::filesystem::path const path = file_system::GetStreamPath(name);
        file = path.empty() ? nullptr : _wfopen(path.c_str(), L"rb");
    }
    if (file != nullptr)
        return std::make_unique<FileInput>(file);
    error = file_system::GetLastFailureReason();
    return nullptr;
}

struct SignalWatch::State
{
    std::function<void(eSignal)> onSignal;
};

namespace
{

std::mutex s_signalMutex;
std::function<void(eSignal)> const *s_onSignal = nullptr;

/// The system calls it on a thread that it makes for each event.
BOOL WINAPI OnConsoleEvent(DWORD event)
{
    {
        std::lock_guard const lock(s_signalMutex);
        if (s_onSignal == nullptr)
            return FALSE;
        (*s_onSignal)(event == CTRL_C_EVENT ? eSignal::e_interrupt : eSignal::e_terminate);
    }
    // The process ends when this returns for anything but an interrupt: the program has a moment to end by itself.
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT)
        Sleep(3000);
    return TRUE;
}

} // namespace

SignalWatch::SignalWatch(std::function<void(eSignal)> onSignal) : state_(std::make_unique<State>())
{
    state_->onSignal = std::move(onSignal);
    {
        std::lock_guard const lock(s_signalMutex);
        s_onSignal = &state_->onSignal;
    }
    SetConsoleCtrlHandler(&OnConsoleEvent, TRUE);
}

SignalWatch::~SignalWatch()
{
    SetConsoleCtrlHandler(&OnConsoleEvent, FALSE);
    // A call under way comes to its end.
    std::lock_guard const lock(s_signalMutex);
    s_onSignal = nullptr;
}

} // namespace quillmarsh::host::system
