#include <quillmarsh/basetools/libraryinfo.h>
#include <quillmarsh/basetools/platforminfo.h>

#include "source/platform/machineinfo.h"
#include "tests/support/environment_variable.h"
#include "tests/support/wine.h"

#include <gtest/gtest.h>

namespace quillmarsh::platform_info
{
namespace
{

using library_info::LibraryVersion;
using tests::EnvironmentVariable;

TEST(PlatformInfo, ReferencesToVariablesAreReplaced)
{
    EnvironmentVariable const set("QM_TEST_SET", "va%QM_TEST_SET%lue");
    EnvironmentVariable const empty("QM_TEST_EMPTY", "");
    EnvironmentVariable const same("QM_TEST_SAME", "%QM_TEST_SAME%");
    EnvironmentVariable const unset("QM_TEST_UNSET", nullptr);

    struct Expansion
    {
        string in, out;
        bool wineDiffers = false;
    };
    Expansion const expansions[] = {
        {"%QM_TEST_SET%", "va%QM_TEST_SET%lue"},
        {"a%QM_TEST_SET%%QM_TEST_SET%b", "ava%QM_TEST_SET%lueva%QM_TEST_SET%lueb"},
        {"%QM_TEST_UNSET%QM_TEST_SET%", "%QM_TEST_UNSETva%QM_TEST_SET%lue", true},
        {"100%%QM_TEST_SET%%", "100%va%QM_TEST_SET%lue%", true},
        {"%QM_TEST_UNSET%", ""},
        {"%QM_TEST_SAME%", ""},
        {"plain", ""},
        {"%%", ""},
        {"%", ""},
        {"", ""},
    };
    for (Expansion const &expansion : expansions)
    {
        if (expansion.wineDiffers && tests::IsWine())
            continue;
        string out = "old";
        EXPECT_EQ(ExpandEnvironmentVariable(expansion.in, out), !expansion.out.empty()) << expansion.in;
        EXPECT_EQ(out, expansion.out) << expansion.in;
    }
#if !defined(_WIN32)
    // On Windows, a variable with an empty value counts as not set.
    string out;
    EXPECT_TRUE(ExpandEnvironmentVariable("%QM_TEST_EMPTY%", out));
    EXPECT_EQ(out, "");
#endif
}

TEST(PlatformInfo, DescriptionOfWindowsNamesTwoVersions)
{
    EXPECT_EQ(platform::DescribeWindows({5, 0, 2195, 4, 0}), "Microsoft Windows 2000 / 5.0.2195 / Service Pack 4.0");
    EXPECT_EQ(platform::DescribeWindows({5, 1, 2600, 3, 2}), "Microsoft Windows XP / 5.1.2600 / Service Pack 3.2");
    EXPECT_EQ(platform::DescribeWindows({5, 2, 3790, 0, 0}), "Microsoft Windows / 5.2.3790 / Service Pack 0.0");
}

TEST(LibraryInfo, VersionsFitUnlessMoreThanTheThirdNumberDiffers)
{
    LibraryVersion const debug(1, 0, 0, 1);
    EXPECT_TRUE(debug.IsCompatibleWith(LibraryVersion(1, 0, 7, 1)));
    EXPECT_FALSE(debug.IsCompatibleWith(LibraryVersion(1, 0, 0, 0)));
    EXPECT_FALSE(debug.IsCompatibleWith(LibraryVersion(1, 1, 0, 1)));
    EXPECT_FALSE(debug.IsCompatibleWith(LibraryVersion(2, 0, 0, 1)) || debug == LibraryVersion(1, 0, 7, 1));
    EXPECT_TRUE(debug == LibraryVersion(1, 0, 0, 1));
}

TEST(LibraryInfo, VersionTextNamesTheBuildType)
{
    EXPECT_EQ(LibraryVersion(1, 0, 0, 1).MakeString(), "1.0.0.debug");
    EXPECT_EQ(LibraryVersion(2, 13, 4, 0).MakeString(), "2.13.4.release");
    EXPECT_EQ(LibraryVersion(1, 0, 0, 2).MakeString(), "1.0.0.UnknownBuildType");
}

} // namespace
} // namespace quillmarsh::platform_info
