#include <quillmarsh/basetools/filesystem.h>

#include "tests/support/environment_variable.h"
#include "tests/support/scratch_directory.h"
#include "tests/support/walk_recorder.h"
#include "tests/support/wine.h"

#include <gtest/gtest.h>

#include <set>

namespace quillmarsh::file_system
{
namespace
{

using tests::EnvironmentVariable;
using tests::Preferred;
using tests::ReadFile;
using tests::ScratchDirectory;
using tests::WalkRecorder;

/// Changes the current directory for a scope.
class ProcessDirectorySentry : NoCopy
{
public:
    explicit ProcessDirectorySentry(string const &directory)
    {
        EXPECT_TRUE(GetProcessDirectory(before_, false) && SetProcessDirectory(directory));
    }
    ~ProcessDirectorySentry() { EXPECT_TRUE(SetProcessDirectory(before_)); }

private:
    string before_;
};

TEST(FileSystem, ExistenceIsThatOfAnEntry)
{
    ScratchDirectory const scratch;
    string const file = scratch.Write("a.txt", "");
    std::filesystem::create_directory(scratch / "ab");
    ProcessDirectorySentry const inside(scratch.GetPath().string());

    for (string const &name : {file, string("a.txt"), string("ab")})
        EXPECT_TRUE(FileExists(name)) << name;
    for (string const &name : {string("a.txt"), scratch.GetPath().string(), scratch / ""})
        EXPECT_TRUE(DirectoryExists(name)) << name;
    EXPECT_FALSE(DirectoryExists("ab"));
    for (string const &name : {string(), string("*"), string("a.tx?"), string("nowhere"), string("a.txt\0", 6)})
    {
        EXPECT_FALSE(FileExists(name) || DirectoryExists(name));
    }
}

TEST(FileSystem, CopyKeepsPermissionsAndReplacesOnlyOnDemand)
{
    ScratchDirectory const scratch;
    string const from = scratch.Write("from", string(200000, 'x'));
    using std::filesystem::perms;
    std::filesystem::permissions(from, perms::owner_read | perms::group_read);
    std::filesystem::last_write_time(from, std::filesystem::last_write_time(from) - std::chrono::hours(100));
    string const to = scratch.Write("to", "old");

    EXPECT_FALSE(CopyFileA(from, to, false));
    EXPECT_EQ(ReadFile(to), "old");
    EXPECT_TRUE(CopyFileA(from, to, true));
    EXPECT_EQ(ReadFile(to), ReadFile(from));
    EXPECT_EQ(std::filesystem::status(to).permissions(), std::filesystem::status(from).permissions());
    EXPECT_EQ(std::filesystem::last_write_time(to), std::filesystem::last_write_time(from));
    EXPECT_TRUE(CopyFileA(from, scratch / "new", false));
    EXPECT_EQ(scratch.CountEntries(), 3);
}

/// Two files in a directory of the test's own.
struct FileSystemPair : testing::Test
{
    ScratchDirectory const scratch;
    string const from = scratch.Write("from", "data");
    string const to = scratch.Write("to", "old");
};

TEST_F(FileSystemPair, FailedCopyOrMoveLeavesBothFilesAndNothingElse)
{
    std::filesystem::create_directory(scratch / "folder");
    for (string const &target : {from, scratch / "folder", scratch / "nowhere/to"})
        EXPECT_FALSE(CopyFileA(from, target, true)) << target;
    for (string const &source : {scratch / "folder", scratch / "nowhere", string()})
        EXPECT_FALSE(CopyFileA(source, to, true)) << source;
    EXPECT_FALSE(MoveFileA(from, to, false) || MoveFileA(from, scratch / "folder", true));
    EXPECT_FALSE(MoveFileA(scratch / "nowhere", to, true));
    EXPECT_EQ(ReadFile(from), "data");
    EXPECT_EQ(ReadFile(to), "old");
    EXPECT_EQ(scratch.CountEntries(), 3);
}

TEST_F(FileSystemPair, MoveRenamesFilesAndDirectories)
{
    EXPECT_TRUE(MoveFileA(from, to, true));
    EXPECT_EQ(ReadFile(to), "data");
    EXPECT_FALSE(FileExists(from));
    EXPECT_TRUE(MoveFileA(to, from, false));
    std::filesystem::create_directory(scratch / "folder");
    EXPECT_TRUE(MoveFileA(scratch / "folder", scratch / "renamed", false));
    EXPECT_EQ(scratch.CountEntries(), 2);
}

TEST(FileSystem, OverwriteRuleDeletesOnlyOnDemand)
{
    ScratchDirectory const scratch;
    string const file = scratch.Write("file", "");
    EXPECT_TRUE(IfFileExistsDeleteOnOverwrite(scratch / "nowhere", false));
    EXPECT_FALSE(IfFileExistsDeleteOnOverwrite(file, false));
    EXPECT_TRUE(FileExists(file) && IfFileExistsDeleteOnOverwrite(file, true));
    EXPECT_FALSE(FileExists(file) || IfFileExistsDeleteOnOverwrite(scratch.GetPath().string(), true));
    EXPECT_FALSE(DeleteFileA(string("file\0x", 6)));
}

TEST(FileSystem, DirectoriesAreCreatedAlongThePath)
{
    ScratchDirectory const scratch;
    EXPECT_TRUE(CreateDirectoryPath(scratch / "one/ab//three/") && DirectoryExists(scratch / "one/ab/three"));
    EXPECT_TRUE(CreateDirectoryPath(scratch / "one/ab/three/four"));
    EXPECT_FALSE(CreateDirectoryA(scratch / "one") || CreateDirectoryPath("") || CreateDirectoryPath(Preferred("//")));
    scratch.Write("file", "");
    EXPECT_FALSE(CreateDirectoryPath(scratch / "file/below") || CreateDirectoryPath(scratch / string("cut\0short", 9)));
    EXPECT_FALSE(FileExists(scratch / "cut"));

    EXPECT_FALSE(DeleteDirectory(scratch / "one"));
    EXPECT_TRUE(DeleteDirectory(scratch / "one/ab/three/four"));

    ProcessDirectorySentry const inside(scratch.GetPath().string());
    EXPECT_TRUE(CreateDirectoryPath(Preferred("ab/cd")) && CreateDirectoryPath(Preferred("ab/ef")));
    EXPECT_TRUE(DirectoryExists(Preferred("ab/ef")));
}

TEST(FileSystem, RelativeNameIsCompletedByTheProcessDirectory)
{
    ScratchDirectory const scratch;
    string const directory = std::filesystem::canonical(scratch.GetPath()).string();
    ProcessDirectorySentry const inside(directory);
    string name;
    ASSERT_TRUE(GetProcessDirectory(name, true));
    EXPECT_EQ(name, directory + GetPathSeparator());
    EXPECT_EQ(GetFullPathNameA("a", false), name + "a");
    EXPECT_EQ(GetFullPathNameA("a", true), name + "a" + GetPathSeparator());
    EXPECT_EQ(GetFullPathNameA(name, false), name);
}

TEST(FileSystem, UserDirectoriesComeFromTheEnvironmentFirst)
{
    string directory;
    EnvironmentVariable const drive("HOMEDRIVE", Preferred("/drive").c_str());
    EnvironmentVariable const path("HOMEPATH", Preferred("/home/path/").c_str());
    EnvironmentVariable const profile("USERPROFILE", Preferred("/profile").c_str());
    EXPECT_TRUE(GetUserHomeDirectory(directory, false));
    EXPECT_EQ(directory, Preferred("/drive/home/path"));
    EXPECT_TRUE(GetUserProfileDirectory(directory, true));
    EXPECT_EQ(directory, Preferred("/profile/"));
}

TEST(FileSystem, VolumeOfTheProcessDirectoryIsListed)
{
    std::vector<string> volumes = {"left over"};
    EXPECT_TRUE(file_system::GetVolumes(volumes));
    std::filesystem::path const root = std::filesystem::current_path().root_path();
    EXPECT_EQ(std::count(volumes.begin(), volumes.end(), root.string()), 1);
    EXPECT_TRUE(std::is_sorted(volumes.begin(), volumes.end()));
    for (string const &volume : volumes)
        EXPECT_EQ(volume.back(), file_system::GetPathSeparator()) << volume;
}

TEST(FileSystem, TempFilesAreEmptyAndUnique)
{
    ScratchDirectory const scratch;
    EnvironmentVariable const temp("TMPDIR", scratch.GetPath().string().c_str());
    EnvironmentVariable const windowsTemp("TMP", scratch.GetPath().string().c_str());
    string directory;
    ASSERT_TRUE(GetTempDirectory(directory, true));
    EXPECT_EQ(directory, scratch / "");

    std::set<string> names;
    for (int i = 0; i < 20; ++i)
    {
        string name;
        ASSERT_TRUE(CreateTempFile(name, directory, "pre"));
        EXPECT_EQ(name.substr(0, directory.size() + 3), directory + "pre");
        EXPECT_EQ(std::filesystem::file_size(name), 0u);
        names.insert(name);
    }
    EXPECT_EQ(names.size(), 20u);

    string name = "old";
    EXPECT_FALSE(CreateTempFile(name, scratch / "nowhere", "pre"));
    EXPECT_EQ(name, "");
    EXPECT_FALSE(CreateTempFile(name, directory, Preferred("../pre")) || CreateTempFile(name, "", "pre"));
}

TEST(FileSystem, LongNameIsThatOfAnExistingFile)
{
    ScratchDirectory const scratch;
    string const file = scratch.Write("with a long name.text", "");
    string name;
    EXPECT_TRUE(ConvertShortPathNameToLongPathName(file, name));
    EXPECT_EQ(name, file);
    if (tests::IsWine())
        return;
    EXPECT_FALSE(ConvertShortPathNameToLongPathName(scratch / "nowhere", name));
    EXPECT_EQ(name, "");
}

class FileSystemWalkerTest : public testing::Test
{
protected:
    FileSystemWalkerTest()
    {
        std::filesystem::create_directories(scratch_ / "b/inner");
        std::filesystem::create_directory(scratch_ / "d");
        for (char const *const file : {"a", "b/inner/deep", "b/z", "c.txt"})
            scratch_.Write(file, "");
    }

    ScratchDirectory const scratch_;
    string const root_ = scratch_.GetPath().string();
};

TEST_F(FileSystemWalkerTest, GoesDepthFirstAndCountsWhatItDelivers)
{
    EXPECT_EQ(WalkRecorder(root_).Record(),
              "begin;file 0.0 / a;directory 0.1 / b;directory 1.0 /b/ inner;file 2.0 /b/inner/ deep;file 1.1 /b/ z;"
              "file 0.2 / c.txt;directory 0.3 / d;end;");
}

TEST_F(FileSystemWalkerTest, RefusedDirectoryIsNotEntered)
{
    WalkRecorder recorder(scratch_ / "");
    recorder.refused = "b";
    EXPECT_EQ(recorder.Record(), "begin;file 0.0  a;directory 0.1  b;file 0.2  c.txt;directory 0.3  d;end;");
}

TEST_F(FileSystemWalkerTest, CancelEndsTheWholeWalkAtTheNextEntry)
{
    WalkRecorder recorder(root_);
    recorder.cancelAt = "deep";
    EXPECT_EQ(recorder.Record(),
              "begin;file 0.0 / a;directory 0.1 / b;directory 1.0 /b/ inner;file 2.0 /b/inner/ deep;end;-");
    recorder.cancelAt = "b";
    EXPECT_EQ(recorder.Record(), "begin;file 0.0 / a;directory 0.1 / b;end;-");
    recorder.cancelAt = "begin";
    EXPECT_EQ(recorder.Record(), "begin;end;-");
    recorder.cancelAt.clear();
    EXPECT_TRUE(recorder.Walk(root_));
}

TEST_F(FileSystemWalkerTest, RootThatCannotBeListedFails)
{
    for (string const &root : {scratch_ / "nowhere", scratch_ / "a", string()})
        EXPECT_EQ(WalkRecorder(root).Record(), "begin;end;-") << root;
}

} // namespace
} // namespace quillmarsh::file_system
