#include <quillmarsh/basetools/filesystem.h>

#include "tests/support/environment_variable.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/walk_recorder.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace quillmarsh::file_system
{
namespace
{

using tests::EnvironmentVariable;
using tests::ReadFile;
using tests::ScratchDirectory;
using tests::WalkRecorder;

TEST(FileSystem, BrokenLinkExists)
{
    ScratchDirectory const scratch;
    std::filesystem::create_symlink("nowhere", scratch / "dangling");
    EXPECT_TRUE(FileExists(scratch / "dangling") && IfFileExistsDeleteOnOverwrite(scratch / "dangling", true));
    EXPECT_FALSE(FileExists(scratch / "dangling"));
}

TEST(FileSystem, CopyThroughALinkKeepsTheLink)
{
    ScratchDirectory const scratch;
    string const from = scratch.Write("from", "new");
    string const target = scratch.Write("target", "old");
    std::filesystem::create_symlink(target, scratch / "link");
    EXPECT_TRUE(CopyFileA(from, scratch / "link", true) && std::filesystem::is_symlink(scratch / "link"));
    EXPECT_EQ(ReadFile(target), "new");
    EXPECT_FALSE(CopyFileA(target, scratch / "link", true));
    EXPECT_EQ(ReadFile(target), "new");
}

TEST(FileSystem, MoveToAnotherDeviceCopies)
{
    constexpr char const *otherDevice = "/dev/shm";
    string elsewhere;
    if (!DirectoryExists(otherDevice) || !CreateTempFile(elsewhere, otherDevice, "qm"))
        GTEST_SKIP() << "no second device";
    ScratchDirectory const scratch;
    string const from = scratch.Write("from", "data");
    EXPECT_FALSE(MoveFileA(from, elsewhere, false));
    EXPECT_EQ(ReadFile(elsewhere), "");
    EXPECT_TRUE(MoveFileA(from, elsewhere, true));
    EXPECT_EQ(ReadFile(elsewhere), "data");
    EXPECT_FALSE(FileExists(from));
    EXPECT_TRUE(DeleteFileA(elsewhere));
}

TEST(FileSystemWalker, CirclesOfLinksEnd)
{
    ScratchDirectory const scratch;
    std::filesystem::create_directories(scratch / "a");
    std::filesystem::create_directories(scratch / "b");
    std::filesystem::create_directory_symlink("..", scratch / "a/up");
    std::filesystem::create_directory_symlink("../b", scratch / "a/x");
    std::filesystem::create_directory_symlink("../a", scratch / "b/y");
    std::filesystem::create_symlink("nowhere", scratch / "dangling");
    EXPECT_EQ(WalkRecorder(scratch.GetPath().string()).Record(),
              "begin;directory 0.0 / a;directory 1.0 /a/ up;directory 1.1 /a/ x;directory 2.0 /a/x/ y;"
              "directory 0.1 / b;directory 1.0 /b/ y;directory 2.0 /b/y/ up;directory 2.1 /b/y/ x;"
              "file 0.2 / dangling;end;");
}

TEST(FileSystemWalker, NamesOfAnyBytesSurvive)
{
    ScratchDirectory const scratch;
    string const name = "caf\xe9\xff \n";
    std::filesystem::create_directory(scratch / name);
    scratch.Write(name + "/" + name, "");
    EXPECT_EQ(WalkRecorder(scratch.GetPath().string()).Record(),
              "begin;directory 0.0 / " + name + ";file 1.0 /" + name + "/ " + name + ";end;");
    EXPECT_TRUE(FileExists(scratch / name));
}

TEST(FileSystem, ProcessDirectoryMayBeDeleted)
{
    string before;
    ASSERT_TRUE(GetProcessDirectory(before, false));
    string directory;
    {
        ScratchDirectory const scratch;
        directory = scratch.GetPath().string();
        ASSERT_TRUE(SetProcessDirectory(directory));
    }
    string name = "a";
    EXPECT_FALSE(ForceFullPathName(name, false));
    EXPECT_EQ(name, "");
    EXPECT_FALSE(GetProcessDirectory(name, false) || SetProcessDirectory(directory));
    EXPECT_TRUE(SetProcessDirectory(before));
}

TEST(FileSystem, UserDirectoriesComeFromTheHomeDirectoryNext)
{
    EnvironmentVariable const drive("HOMEDRIVE", "/drive");
    EnvironmentVariable const path("HOMEPATH", nullptr);
    EnvironmentVariable const profile("USERPROFILE", nullptr);
    EnvironmentVariable const home("HOME", "/root/of/user");
    string directory;
    EXPECT_TRUE(GetUserHomeDirectory(directory, true));
    EXPECT_EQ(directory, "/root/of/user/");
    EXPECT_TRUE(GetUserProfileDirectory(directory, false));
    EXPECT_EQ(directory, "/root/of/user");

    EnvironmentVariable const noHome("HOME", nullptr);
    EXPECT_TRUE(GetUserHomeDirectory(directory, false) && IsAbsolutePathName(directory));
}

TEST(FileSystemWalker, DirectoryThatCannotBeReadIsEmpty)
{
    ScratchDirectory const scratch;
    std::filesystem::create_directory(scratch / "closed");
    scratch.Write("closed/secret", "");
    scratch.Write("open", "");
    std::filesystem::permissions(scratch / "closed", std::filesystem::perms::none);
    // The superuser may open everything, so the test goes on as an ordinary user.
    uid_t const before = geteuid();
    EXPECT_EQ(seteuid(before == 0 ? 65534 : before), 0);
    string const record = WalkRecorder(scratch.GetPath().string()).Record();
    EXPECT_EQ(seteuid(before), 0);
    std::filesystem::permissions(scratch / "closed", std::filesystem::perms::owner_all);
    EXPECT_EQ(record, "begin;directory 0.0 / closed;file 0.1 / open;end;");
}

} // namespace
} // namespace quillmarsh::file_system
