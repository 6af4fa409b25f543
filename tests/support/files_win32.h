// Files in states that other programs on Windows cause.
#ifndef QUILLMARSH_TESTS_SUPPORT_FILES_WIN32_H
#define QUILLMARSH_TESTS_SUPPORT_FILES_WIN32_H

#include "source/platform/win32/windows.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

namespace quillmarsh::tests
{

/// Keeps a file open, as another program would, and shares a part of the access.
class FileHolder : NoCopy
{
public:
    FileHolder(string const &name, unsigned long sharing)
        : handle_(CreateFileA(name.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0, nullptr))
    {
        EXPECT_NE(handle_, INVALID_HANDLE_VALUE) << name;
    }
    ~FileHolder() { CloseHandle(handle_); }

private:
    HANDLE handle_;
};

/// A directory whose full name is longer than the system's old limit. It must be empty at the end of the scope.
class DeepDirectory : NoCopy
{
public:
    explicit DeepDirectory(ScratchDirectory const &scratch) : name_(scratch.GetPath().string())
    {
        for (; name_.size() <= MAX_PATH; ++depth_)
        {
            name_ += '\\' + string(50, 'd');
            EXPECT_NE(CreateDirectoryW(GetPath().c_str(), nullptr), FALSE);
        }
    }
    ~DeepDirectory()
    {
        for (; depth_ > 0; --depth_, name_.resize(name_.rfind('\\')))
            EXPECT_NE(RemoveDirectoryW(GetPath().c_str()), FALSE);
    }

    string operator/(string const &name) const { return name_ + '\\' + name; }

private:
    std::filesystem::path GetPath() const { return "\\\\?\\" + name_; }

    string name_;
    int depth_ = 0;
};

/// Returns "X:\" with the letter of a missing drive.
inline string FindMissingDrive()
{
    string drive = "b:\\";
    while ((GetLogicalDrives() >> (drive[0] - 'a') & 1) != 0)
        ++drive[0];
    return drive;
}

} // namespace quillmarsh::tests

#endif
