#include "../system.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

namespace quillmarsh::host::system
{

void PrepareStandardStreams()
{
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    // Text is UTF-8, and colours are escape sequences.
    SetConsoleOutputCP(CP_UTF8);
    HANDLE const output = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD mode = 0;
    if (GetConsoleMode(output, &mode) != 0)
        SetConsoleMode(output, mode | 0x0004 /* ENABLE_VIRTUAL_TERMINAL_PROCESSING */);
}

bool IsInputTerminal()
{
    return _isatty(_fileno(stdin)) != 0;
}

bool IsOutputTerminal()
{
    return _isatty(_fileno(stdout)) != 0;
}

bool IsErrorTerminal()
{
    return _isatty(_fileno(stderr)) != 0;
}

bool WriteStandardOutput(std::string_view text, string &error)
{
    if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0)
        return true;
    error = GetLastFileError();
    return false;
}

string GetProgramFile(string const &invokedName)
{
    char name[MAX_PATH];
    DWORD const length = GetModuleFileNameA(nullptr, name, sizeof(name));
    return length > 0 && length < sizeof(name) ? string(name, length) : invokedName;
}

char const *GetPluginExtension()
{
    return ".dll";
}

bool IsLibraryFile(string const &fileName)
{
    std::ifstream file(fileName, std::ios::binary);
    char head[2] = {};
    file.read(head, sizeof(head));
    return std::memcmp(head, "MZ", sizeof(head)) == 0;
}

bool IsCompleteLibraryFile(string const &)
{
    // The system's loader looks by itself, and tells.
    return true;
}

string GetLastFileError()
{
    return std::strerror(errno);
}

unsigned int GetThisThreadID()
{
    return GetCurrentThreadId();
}

bool SetThisThreadPriority(int steps)
{
    return SetThreadPriority(GetCurrentThread(), steps) != 0;
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
    std::FILE *const file = name == "-" ? stdin : std::fopen(name.c_str(), "rb");
    if (file != nullptr)
        return std::make_unique<FileInput>(file);
    error = GetLastFileError();
    return nullptr;
}

struct SignalWatch::State
{
    std::function<void(eSignal)> onSignal;
};

namespace
{

std::atomic<std::function<void(eSignal)> *> s_onSignal{nullptr};

BOOL WINAPI OnConsoleEvent(DWORD event)
{
    std::function<void(eSignal)> *const onSignal = s_onSignal;
    if (onSignal == nullptr)
        return FALSE;
    (*onSignal)(event == CTRL_C_EVENT ? eSignal::e_interrupt : eSignal::e_terminate);
    // The process ends when this returns for anything but an interrupt: the program has a moment to end by itself.
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT)
        Sleep(3000);
    return TRUE;
}

} // namespace

SignalWatch::SignalWatch(std::function<void(eSignal)> onSignal) : state_(std::make_unique<State>())
{
    state_->onSignal = std::move(onSignal);
    s_onSignal = &state_->onSignal;
    SetConsoleCtrlHandler(&OnConsoleEvent, TRUE);
}

SignalWatch::~SignalWatch()
{
    SetConsoleCtrlHandler(&OnConsoleEvent, FALSE);
    s_onSignal = nullptr;
}

} // namespace quillmarsh::host::system
