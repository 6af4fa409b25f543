#include <quillmarsh/basetools/filesystem.h>

#include "tests/support/scratch_directory.h"
#include "tests/support/walk_recorder.h"

#include <gtest/gtest.h>

namespace quillmarsh::file_system
{
namespace
{

using tests::ScratchDirectory;
using tests::WalkRecorder;

void MakeTree(ScratchDirectory const &scratch)
{
    std::filesystem::create_directories(scratch / "b/inner");
    std::filesystem::create_directory(scratch / "d");
    scratch.Write("a", "");
    scratch.Write("b/inner/deep", "");
    scratch.Write("b/z", "");
    scratch.Write("c.txt", "");
}

TEST(FileSystemWalker, GoesDepthFirstAndCountsWhatItDelivers)
{
    ScratchDirectory const scratch;
    MakeTree(scratch);
    WalkRecorder recorder(scratch.GetPath().string());
    EXPECT_TRUE(recorder.Walk(scratch.GetPath().string()));
    EXPECT_EQ(recorder.lines, (std::vector<string>{"begin", "file 0.0 / a", "directory 0.1 / b",
                                                   "directory 1.0 /b/ inner", "file 2.0 /b/inner/ deep",
                                                   "file 1.1 /b/ z", "file 0.2 / c.txt", "directory 0.3 / d", "end"}));
}

TEST(FileSystemWalker, RefusedDirectoryIsNotEntered)
{
    ScratchDirectory const scratch;
    MakeTree(scratch);
    WalkRecorder recorder(scratch / "");
    recorder.refused = "b";
    EXPECT_TRUE(recorder.Walk(scratch / ""));
    EXPECT_EQ(recorder.lines, (std::vector<string>{"begin", "file 0.0  a", "directory 0.1  b", "file 0.2  c.txt",
                                                   "directory 0.3  d", "end"}));
}

TEST(FileSystemWalker, CancelEndsTheWholeWalkAtTheNextEntry)
{
    ScratchDirectory const scratch;
    MakeTree(scratch);
    string const root = scratch.GetPath().string();
    WalkRecorder recorder(root);
    recorder.cancelAt = "deep";
    EXPECT_FALSE(recorder.Walk(root));
    EXPECT_EQ(recorder.lines, (std::vector<string>{"begin", "file 0.0 / a", "directory 0.1 / b",
                                                   "directory 1.0 /b/ inner", "file 2.0 /b/inner/ deep", "end"}));

    recorder.lines.clear();
    recorder.cancelAt = "b";
    EXPECT_FALSE(recorder.Walk(root));
    EXPECT_EQ(recorder.lines, (std::vector<string>{"begin", "file 0.0 / a", "directory 0.1 / b", "end"}));

    recorder.lines.clear();
    recorder.cancelAt = "begin";
    EXPECT_FALSE(recorder.Walk(root));
    EXPECT_EQ(recorder.lines, (std::vector<string>{"begin", "end"}));

    recorder.cancelAt.clear();
    EXPECT_TRUE(recorder.Walk(root));
}

TEST(FileSystemWalker, RootThatCannotBeListedFails)
{
    ScratchDirectory const scratch;
    string const file = scratch.Write("file", "");
    for (string const &root : {scratch / "nowhere", file, string()})
    {
        WalkRecorder recorder(root);
        EXPECT_FALSE(recorder.Walk(root));
        EXPECT_EQ(recorder.lines, (std::vector<string>{"begin", "end"}));
    }
}

} // namespace
} // namespace quillmarsh::file_system
