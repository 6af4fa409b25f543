#include "../system.h"

#include <quillmarsh/basetools/filesystem.h>

#include <atomic>
#include <cstdio>

#include <io.h>
#include <windows.h>

namespace quillmarsh::host::system
{

Input::~Input() = default;

namespace
{

/// Reads a file. A read that waits for a pipe or a console cannot be cancelled: its thread ends with the process.
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

bool IsInForeground()
{
    return true;
}

} // namespace quillmarsh::host::system
