#include <quillmarsh/basetools/libraryinfo.h>

#include <gtest/gtest.h>

namespace quillmarsh::library_info
{
namespace
{

TEST(LibraryInfo, VersionsFitUnlessMoreThanTheThirdNumberDiffers)
{
    LibraryVersion const debug(1, 0, 0, 1);
    EXPECT_TRUE(debug.IsCompatibleWith(LibraryVersion(1, 0, 7, 1)));
    EXPECT_FALSE(debug.IsCompatibleWith(LibraryVersion(1, 0, 0, 0)));
    EXPECT_FALSE(debug.IsCompatibleWith(LibraryVersion(1, 1, 0, 1)));
    EXPECT_FALSE(debug.IsCompatibleWith(LibraryVersion(2, 0, 0, 1)));
    EXPECT_FALSE(debug == LibraryVersion(1, 0, 7, 1));
    EXPECT_TRUE(debug == LibraryVersion(1, 0, 0, 1));
}

TEST(LibraryInfo, VersionTextNamesTheBuildType)
{
    EXPECT_EQ(LibraryVersion(1, 0, 0, 1).MakeString(), "1.0.0.debug");
    EXPECT_EQ(LibraryVersion(2, 13, 4, 0).MakeString(), "2.13.4.release");
    EXPECT_EQ(LibraryVersion(1, 0, 0, 2).MakeString(), "1.0.0.UnknownBuildType");
}

TEST(LibraryInfo, LibraryDescribesItself)
{
    EXPECT_TRUE(GetLibraryVersion() == LibraryVersion(1, 0, 0, QUILLMARSH_ASSERTIONS));
    EXPECT_EQ(GetBuildTimestamp().size(), string("2026-01-01 00:00:00 UTC").size());

    EXPECT_EQ(GetDeveloperInfo(GetNumDevelopers()), "");
    EXPECT_EQ(GetDeveloperInfo(~0u), "");
}

} // namespace
} // namespace quillmarsh::library_info
