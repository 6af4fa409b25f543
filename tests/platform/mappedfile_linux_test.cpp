// Mapped files that others change.
#include <quillmarsh/platform/mappedfile.h>

#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <csignal>

#include <sys/mman.h>
#include <unistd.h>

namespace quillmarsh::platform
{
namespace
{

TEST(MappedFileOnLinux, GivesZerosForWhatIsNoLongerInTheFile)
{
    tests::ScratchDirectory const directory;
    auto const pageSize = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    string reason;
    string const name = directory.Write("shrinks", string(8 * pageSize, 'x'));
    string const otherName = directory.Write("other", string(2 * pageSize, 'y'));
    AutoPtr<MappedFile> const file = MappedFile::Open(name, reason);
    AutoPtr<MappedFile> const other = MappedFile::Open(otherName, reason);
    ASSERT_TRUE(file && other) << reason;
    ASSERT_EQ(truncate(name.c_str(), static_cast<off_t>(pageSize + 10)), 0);

    unsigned char const *const bytes = file->GetBytes();
    EXPECT_EQ(bytes[pageSize + 9], 'x');
    EXPECT_EQ(bytes[pageSize + 10], 0);
    EXPECT_FALSE(file->IsDamaged()) << "the end of a page reads as zeros";
    EXPECT_EQ(bytes[5 * pageSize], 0);
    EXPECT_TRUE(file->IsDamaged());
    for (std::size_t i = 0; i < 8 * pageSize; ++i)
        ASSERT_EQ(bytes[i], i < pageSize + 10 ? 'x' : 0) << i;
    EXPECT_FALSE(other->IsDamaged());
    EXPECT_EQ(other->GetBytes()[pageSize], 'y');

    // A file that takes the place of the damaged one begins anew.
    std::filesystem::remove(name);
    EXPECT_EQ(bytes[0], 'x');
    AutoPtr<MappedFile> const next = MappedFile::Open(directory.Write("shrinks", "z"), reason);
    ASSERT_TRUE(next) << reason;
    EXPECT_EQ(next->GetBytes()[0], 'z');
    EXPECT_FALSE(next->IsDamaged());
}

TEST(MappedFileOnLinuxDeathTest, LeavesOtherFaultsAlone)
{
    tests::ScratchDirectory const directory;
    string reason;
    AutoPtr<MappedFile> const file = MappedFile::Open(directory.Write("file", "x"), reason);
    ASSERT_TRUE(file) << reason;
    EXPECT_DEATH(raise(SIGBUS), "");
}

} // namespace
} // namespace quillmarsh::platform
