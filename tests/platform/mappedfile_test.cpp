#include <quillmarsh/platform/mappedfile.h>

#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

namespace quillmarsh::platform
{
namespace
{

TEST(MappedFile, HasTheBytesOfTheFileThatWasOpened)
{
    tests::ScratchDirectory const directory;
    string reason;
    string const text = "some bytes" + string(100000, 'x') + "end";
    AutoPtr<MappedFile> const file = MappedFile::Open(directory.Write("a file", text), reason);
    ASSERT_TRUE(file) << reason;
    ASSERT_EQ(file->GetByteSize(), text.size());
    EXPECT_EQ(string(reinterpret_cast<char const *>(file->GetBytes()), text.size()), text);
    EXPECT_FALSE(file->IsDamaged());

    AutoPtr<MappedFile> const empty = MappedFile::Open(directory.Write("empty", ""), reason);
    ASSERT_TRUE(empty) << reason;
    EXPECT_EQ(empty->GetByteSize(), 0u);
    EXPECT_FALSE(empty->IsDamaged());
}

TEST(MappedFile, SaysWhyItCannotBeOpened)
{
    tests::ScratchDirectory const directory;
    for (string const &name : {directory / "missing", directory.GetPath().string(), string()})
    {
        string reason;
        EXPECT_FALSE(MappedFile::Open(name, reason));
        EXPECT_TRUE(reason.starts_with("cannot be opened: ")) << reason;
        EXPECT_GT(reason.size(), string("cannot be opened: ").size());
    }
}

} // namespace
} // namespace quillmarsh::platform
