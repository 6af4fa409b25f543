#include <quillmarsh/basetools/filesystem.h>

#include "source/platform/win32/windows.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

namespace quillmarsh::file_system
{
namespace
{

using tests::ReadFile;
using tests::ScratchDirectory;

TEST(FileSystem, NamesMayBeLongerThanTheSystemsOldLimit)
{
    ScratchDirectory const scratch;
    string directory = scratch.GetPath().string();
    for (int i = 0; i < 8; ++i)
        directory += '\\' + string(50, static_cast<char>('a' + i));
    ASSERT_TRUE(CreateDirectoryPath(directory));
    EXPECT_TRUE(DirectoryExists(directory));
    string const from = scratch.Write("from", "text");
    string const file = directory + "\\file";
    EXPECT_TRUE(CopyFileA(from, file, false));
    EXPECT_FALSE(CopyFileA(from, file, false));
    EXPECT_TRUE(FileExists(file));
    EXPECT_TRUE(CopyFileA("\\\\?\\" + file, scratch / "copy", false));
    EXPECT_TRUE(MoveFileA(file, scratch / "to", false));
    EXPECT_EQ(ReadFile(scratch / "to"), "text");
    for (int i = 0; i < 8; ++i, directory.resize(directory.rfind('\\')))
        EXPECT_TRUE(DeleteDirectory(directory));
}

TEST(FileSystem, NamesAreUnicode)
{
    ScratchDirectory const scratch;
    string const from = scratch.Write("from", "text");
    string const name = scratch.GetPath().string() + "\\caf\u00e9 \u4e2d";
    EXPECT_TRUE(CopyFileA(from, name, false));
    EXPECT_TRUE(std::filesystem::exists(scratch.GetPath() / u8"caf\u00e9 \u4e2d"));
    EXPECT_TRUE(DeleteFileA(name));
    EXPECT_FALSE(FileExists(scratch.GetPath().string() + "\\caf\xe9"));
}

TEST(FileSystem, FileThatAnotherHoldsOpenStays)
{
    ScratchDirectory const scratch;
    string const held = scratch.Write("held", "old");
    string const other = scratch.Write("other", "new");
    HANDLE const file = CreateFileA(held.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    EXPECT_TRUE(FileExists(held));
    EXPECT_FALSE(DeleteFileA(held));
    EXPECT_FALSE(CopyFileA(other, held, true));
    EXPECT_FALSE(CopyFileA(held, scratch / "copy", true));
    EXPECT_FALSE(MoveFileA(held, scratch / "moved", true));
    EXPECT_FALSE(IfFileExistsDeleteOnOverwrite(held, true));
    CloseHandle(file);
    EXPECT_EQ(ReadFile(held), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(scratch.GetPath()), {}), 2);
}

TEST(FileSystem, DevicesAndMissingDrivesAreNoFiles)
{
    ScratchDirectory const scratch;
    string const from = scratch.Write("from", "text");
    string drive = "b:\\";
    while ((GetLogicalDrives() >> (drive[0] - 'a') & 1) != 0)
        ++drive[0];
    EXPECT_FALSE(DirectoryExists(drive));
    EXPECT_FALSE(CopyFileA(from, drive + "file", true));
    EXPECT_FALSE(CreateDirectoryPath(drive + "a\\b"));
    EXPECT_FALSE(SetProcessDirectory(drive));
    for (char const *device : {"CON", "COM1"})
        EXPECT_FALSE(CreateDirectoryA(device)) << device;
    EXPECT_FALSE(MoveFileA(from, "NUL", false));
    EXPECT_EQ(ReadFile(from), "text");
}

} // namespace
} // namespace quillmarsh::file_system
