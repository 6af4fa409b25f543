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
