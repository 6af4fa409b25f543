#include <quillmarsh/basetools/filesystem.h>

#include <quillmarsh/basetools/logfilestream.h>
#include <quillmarsh/basetools/texttools.h>

#include "source/platform/win32/widetext.h"
#include "source/platform/win32/windows.h"
#include "tests/support/files_win32.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <optional>

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
    EXPECT_TRUE(DirectoryExists(directory) && CreateDirectoryPath("\\\\?\\" + directory + "\\i\\j"));
    EXPECT_TRUE(DeleteDirectory(directory + "\\i\\j") && DeleteDirectory(directory + "\\i"));
    string const from = scratch.Write("from", "text");
    string const file = directory + "\\file";
    EXPECT_TRUE(CopyFileA(from, file, false));
    EXPECT_FALSE(CopyFileA(from, file, false));
    EXPECT_TRUE(FileExists(file) && CopyFileA("\\\\?\\" + file, scratch / "copy", false));
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
    EXPECT_TRUE(CopyFileA(from, name, false) && std::filesystem::exists(scratch.GetPath() / u8"caf\u00e9 \u4e2d"));
    EXPECT_TRUE(DeleteFileA(name));
    EXPECT_FALSE(FileExists(scratch.GetPath().string() + "\\caf\xe9"));
}

TEST(FileSystem, FullNamesGetTheLongPathPrefix)
{
    std::pair<string, char const *> const conversions[] = {
        {"c:/dir\\.\\sub\\..\\file", "\\\\?\\c:\\dir\\file"},
        {"c:\\dir\\file. .", "\\\\?\\c:\\dir\\file"},
        {"\\\\?\\nul", ""},
        {"\\\\server\\share\\file", "\\\\?\\UNC\\server\\share\\file"},
        {"\\\\?\\c:\\dir\\..\\nul.", "\\\\?\\c:\\dir\\..\\nul."},
        {"\\\\?\\UNC\\server\\share\\file", "\\\\?\\UNC\\server\\share\\file"},
        {"\\\\.\\pipe\\name", ""},
        {"c:\\dir\\nul.txt", ""},
        {"", ""},
        {"a\xff", ""},
    };
    for (auto const &[name, converted] : conversions)
    {
        wstring path;
        string text;
        EXPECT_EQ(platform::MakeSystemPath(name, path), *converted != 0) << name;
        UnicodeToAscii(path, text);
        EXPECT_EQ(text, converted);
    }
    EXPECT_EQ(GetStreamPath("\\\\server\\share\\file"), L"\\\\server\\share\\file");
    EXPECT_EQ(GetStreamPath("c:\\a/b"), L"c:\\a\\b");
}

TEST(FileSystem, StreamsTakeNamesOfAnyLength)
{
    ScratchDirectory const scratch;
    tests::DeepDirectory const directory(scratch);
    for (string const &name : {directory / "caf\u00e9", "\\\\?\\" + (directory / "log. ")})
    {
        EXPECT_EQ(GetFileType(name, true), std::filesystem::file_type::not_found);
        LogFileStream("long", name) << "text";
        EXPECT_EQ(GetFileType(name, false), std::filesystem::file_type::regular);
        std::ifstream file(GetStreamPath(name));
        EXPECT_NE(string(std::istreambuf_iterator<char>(file), {}).find("text"), string::npos) << name;
        file.close();
        EXPECT_TRUE(DeleteFileA(name));
    }
}

TEST(FileSystem, BlanksAndDotsAtTheEndOfANameDoNotCount)
{
    ScratchDirectory const scratch;
    string const file = scratch.Write("file", "text");
    EXPECT_TRUE(FileExists(file + ". ."));
    EXPECT_FALSE(CopyFileA(file, file + ".", true) || IfFileExistsDeleteOnOverwrite(file + " ", false));
    EXPECT_EQ(GetStreamPath(file + "."), GetStreamPath(file));
}

TEST(FileSystem, FileThatAnotherProgramHasOpenStays)
{
    ScratchDirectory const scratch;
    string const held = scratch.Write("held", "old");
    string const other = scratch.Write("other", "new");
    std::optional<tests::FileHolder> holder(std::in_place, held, 0);
    string const reason = platform::DescribeSystemError(ERROR_SHARING_VIOLATION);
    EXPECT_TRUE(FileExists(held));
    EXPECT_EQ(GetFileType(held, true), std::filesystem::file_type::regular);
    EXPECT_FALSE(DeleteFileA(held));
    EXPECT_EQ(GetLastFailureReason(), reason);
    EXPECT_FALSE(CopyFileA(other, held, true) || CopyFileA(held, scratch / "copy", true));
    EXPECT_EQ(GetLastFailureReason(), reason);
    EXPECT_FALSE(MoveFileA(held, scratch / "moved", true) || MoveFileA(other, held, true));
    EXPECT_FALSE(IfFileExistsDeleteOnOverwrite(held, true));
    EXPECT_TRUE(LogFileStream("held", held).fail());
    EXPECT_EQ(GetLastFailureReason(), reason);
    holder.reset();
    EXPECT_EQ(ReadFile(held), "old");
    EXPECT_EQ(scratch.CountEntries(), 2);
}

TEST(FileSystem, DevicesAndMissingDrivesAreNoFiles)
{
    ScratchDirectory const scratch;
    string const from = scratch.Write("from", "text");
    string const drive = tests::FindMissingDrive();
    EXPECT_FALSE(DirectoryExists(drive) || CreateDirectoryPath(drive + "a\\b") || SetProcessDirectory(drive));
    string const deviceReason = platform::DescribeSystemError(ERROR_BAD_DEVICE);
    for (string const &name : {string("CON"), scratch / "nul.txt", string("\\\\?\\nul"), drive + "file"})
    {
        EXPECT_FALSE(CopyFileA(from, name, true)) << name;
        EXPECT_FALSE(CopyFileA(name, scratch / "copy", true)) << name;
        EXPECT_FALSE(MoveFileA(from, name, true)) << name;
        EXPECT_FALSE(CreateDirectoryA(name)) << name;
        EXPECT_TRUE(LogFileStream("none", name).fail()) << name;
        EXPECT_EQ(GetLastFailureReason() == deviceReason, name != drive + "file") << name;
    }
    EXPECT_EQ(ReadFile(from), "text");
    EXPECT_EQ(scratch.CountEntries(), 1);
}

TEST(FileSystem, PrefixOfATempFileLeadsToNoOtherDirectory)
{
    ScratchDirectory const scratch;
    string result;
    for (char const *prefix : {"../", "a/b", "c:x", "..\\"})
        EXPECT_FALSE(CreateTempFile(result, scratch.GetPath().string(), prefix)) << prefix;
}

} // namespace
} // namespace quillmarsh::file_system
