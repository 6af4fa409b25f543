#include <quillmarsh/basetools/filesystem.h>

#include <quillmarsh/basetools/texttools.h>

#include "source/basetools/pathrules.h"

#include <gtest/gtest.h>

namespace quillmarsh::file_system
{
namespace
{

constexpr PathRules const &s_win = s_windowsPathRules;
constexpr PathRules const &s_unix = s_unixPathRules;

TEST(PathRules, FileNameHasThreeParts)
{
    auto const cut = [](PathRules const &rules, string const &name)
    {
        string path = "old", base = "old", extension = "old";
        SplitFileName(rules, name, path, base, extension);
        return path + "|" + base + "|" + extension;
    };
    std::tuple<PathRules const &, string, string> const names[] = {
        {s_win, "a.tar.gz", "|a.tar|gz"},
        {s_win, ".profile", "|.profile|"},
        {s_win, "name.", "|name.|"},
        {s_win, "..a", "|.|a"},
        {s_win, "c:\\dir.d\\file", "c:\\dir.d\\|file|"},
        {s_win, "dir/file.x", "|dir/file|x"},
        {s_win, "", "||"},
        {s_unix, "/usr/lib/libm.so", "/usr/lib/|libm|so"},
    };
    for (auto const &[rules, name, pieces] : names)
        EXPECT_EQ(cut(rules, name), pieces);
    // The output may be the input string itself.
    string name = "\\a\\b.c", base, extension;
    SplitFileName(s_win, name, name, base, extension);
    EXPECT_EQ(name + "|" + base + "|" + extension, "\\a\\|b|c");
}

TEST(PathRules, PathIsSplit)
{
    std::vector<string> const two = {"c:", "a"};
    for (string const name : {"c:\\a", "c:\\\\a", "\\c:\\a\\", "\\\\c:\\\\\\a\\\\"})
    {
        std::vector<string> pieces = {"old"};
        SplitPathName(s_win, name, pieces);
        EXPECT_EQ(pieces, two) << name;
    }
    std::vector<string> pieces = two;
    SplitPathName(s_win, "\\\\", pieces);
    EXPECT_TRUE(pieces.empty());
}

TEST(PathRules, AbsoluteNames)
{
    for (string const name : {"\\", "\\a", "c:a", "c:", "c:\\a", "?:"})
        EXPECT_TRUE(IsAbsolutePathName(s_win, name)) << name;
    for (string const name : {"", "c", "a\\", ".\\a", "ab:c", "/a"})
        EXPECT_FALSE(IsAbsolutePathName(s_win, name)) << name;
    EXPECT_TRUE(IsAbsolutePathName(s_unix, "/"));
    EXPECT_FALSE(IsAbsolutePathName(s_unix, "c:/a") || IsAbsolutePathName(s_unix, string("a\0b", 3)));
}

TEST(PathRules, DotsAreResolved)
{
    std::tuple<PathRules const &, string, bool, string, string> const expansions[] = {
        {s_win, "a\\..\\b", true, "b", "b\\"},
        {s_win, ".\\a\\.\\\\b\\", true, "a\\b", "a\\b\\"},
        {s_win, "c:\\a\\..", true, "c:", "c:\\"},
        {s_win, "\\a\\b", true, "a\\b", "a\\b\\"},
        {s_win, "a\\..", true, "", ""},
        {s_win, "..", false, "", ""},
        {s_win, "a\\..\\..\\b", false, "", ""},
        {s_win, "c:\\..", false, "", ""},
        {s_win, "\\a\\..", false, "", ""},
        {s_win, "", true, "", ""},
        {s_unix, "/a/./b/../c", true, "/a/c", "/a/c/"},
        {s_unix, "//a", true, "/a", "/a/"},
        {s_unix, "/a/..", true, "/", "/"},
        {s_unix, "/..", false, "", ""},
        {s_unix, "a/../b", true, "b", "b/"},
        {s_unix, "...", true, "...", ".../"},
    };
    for (auto const &[rules, in, succeeds, expanded, outWithSeparator] : expansions)
    {
        string out = "old";
        EXPECT_EQ(ExpandPathName(rules, in, out, false), succeeds) << in;
        EXPECT_EQ(out, expanded) << in;
        out = in;
        EXPECT_EQ(ExpandPathName(rules, out, out, true), succeeds) << in;
        EXPECT_EQ(out, outWithSeparator) << in;
    }
}

TEST(PathRules, TrailingSeparators)
{
    std::tuple<PathRules const &, string, string, string, string> const names[] = {
        {s_win, "a", "a", "a\\", "a"},           {s_win, "a\\", "a", "a\\", "a"},
        {s_win, "a\\\\", "a\\", "a\\\\", "a\\"}, {s_win, "c:\\", "c:", "c:\\", "c:\\"},
        {s_win, "\\", "", "\\", "\\"},           {s_unix, "/", "/", "/", "/"},
        {s_unix, "/a/", "/a", "/a/", "/a"},      {s_unix, "c:/", "c:", "c:/", "c:"},
    };
    for (auto const &[rules, given, removed, forced, directory] : names)
    {
        string name = given;
        RemoveTrailingPathSeparator(rules, name);
        EXPECT_EQ(name, removed);
        name = given;
        ForceTrailingPathSeparator(rules, name);
        EXPECT_EQ(name, forced);
        name = given;
        ApplyTrailingPathSeparator(rules, name, false);
        EXPECT_EQ(name, directory);
    }
}

TEST(PathRules, FullNameBeginsWithTheDirectoryUnlessAbsolute)
{
    auto const full = [](PathRules const &rules, string const &directory, string name, bool trailing)
    {
        ForceFullPathName(rules, directory, name, trailing);
        return name;
    };
    EXPECT_EQ(full(s_win, "c:\\dir", "a\\b", false), "c:\\dir\\a\\b");
    EXPECT_EQ(full(s_win, "c:\\", "a", true), "c:\\a\\");
    EXPECT_EQ(full(s_win, "c:\\dir", "d:a", true), "d:a\\");
    EXPECT_EQ(full(s_win, "c:\\dir", "", false), "c:\\dir");
    EXPECT_EQ(full(s_win, "c:\\dir", "/a", false), "/a");
    EXPECT_EQ(full(s_unix, "/", "a", false), "/a");
    EXPECT_EQ(full(s_unix, "/dir", "/a", false), "/a");
}

TEST(PathRules, WideNamesHaveThePrefix)
{
    wstring wide;
    wstring expected;
    string name;
    ASSERT_TRUE(AsciiToUnicode("\\\\?\\c:\\\xc3\xa4", expected));
    ASSERT_TRUE(ConvertPathName(s_win, "c:\\\xc3\xa4", wide));
    EXPECT_TRUE(wide == expected);
    ASSERT_TRUE(ConvertPathName(s_win, wide, name));
    EXPECT_EQ(name, "c:\\\xc3\xa4");
    ASSERT_TRUE(ConvertPathName(s_unix, "/\xc3\xa4", wide));
    EXPECT_EQ(wide.size(), 2u);
    ASSERT_TRUE(ConvertPathName(s_win, wide, name));
    EXPECT_EQ(name, "/\xc3\xa4");

    EXPECT_FALSE(ConvertPathName(s_win, "bad\xff", wide));
    EXPECT_TRUE(wide.empty());
    EXPECT_FALSE(ConvertPathName(s_win, wstring(1, 0xd800), name));
    EXPECT_EQ(name, "");
}

TEST(PathRules, DirectoryNamesOfTwoCharactersAreDrives)
{
    std::tuple<PathRules const &, string, bool, string> const lookups[] = {
        {s_win, "c:", true, "c:\\*"},  {s_win, "Z:\\", true, "Z:\\*"},
        {s_win, "1:", false, ""},      {s_win, "ab", false, ""},
        {s_win, "abc\\", true, "abc"}, {s_win, "a*b", false, ""},
        {s_win, "", false, ""},        {s_unix, "ab", false, ""},
        {s_unix, "c:", false, ""},     {s_win, "\\\\?\\c:\\a\\", true, "\\\\?\\c:\\a"},
        {s_unix, "/a/", true, "/a"},   {s_unix, "/", true, "/"},
    };
    for (auto const &[rules, name, succeeds, wanted] : lookups)
    {
        string lookupName = "old";
        EXPECT_EQ(MakeDirectoryLookupName(rules, name, lookupName), succeeds) << name;
        EXPECT_EQ(lookupName, wanted);
    }
}

TEST(PathRules, DevicesHaveNamesInEachDirectory)
{
    for (char const *device : {"nul", "CON", "Prn.txt", "aux .a.b", "com1", "c:\\dir\\LPT9.x", "dir/com3 ", "c:nul",
                               "nul:", "con\\", "COM\u00b9", "conin$", "dir\\CONOUT$", "nul."})
    {
        EXPECT_TRUE(NamesDevice(s_win, device)) << device;
        EXPECT_FALSE(NamesDevice(s_unix, device)) << device;
        EXPECT_FALSE(NamesDevice(s_win, "\\\\?\\c:\\" + string(device))) << device;
    }
    for (char const *file :
         {"", ".", "\\", "null", "a.nul", "com", "com0", "com10", "con\\a", "lpt", "com1x", " con", "xcon", ".con"})
        EXPECT_FALSE(NamesDevice(s_win, file)) << file;
}

TEST(PathRules, PrefixIsForFilesOfVolumesAndServers)
{
    for (char const *file : {"c:\\", "Z:\\a\\nul", "UNC\\server\\share\\a", "unc\\s", "Volume{0}\\a"})
        EXPECT_FALSE(NamesDevice(s_win, "\\\\?\\" + string(file))) << file;
    for (char const *device :
         {"", "NUL", "con", "COM1", "pipe\\x", "GLOBALROOT\\Device\\Null", "c:", "c:a", "UNC", "1:\\a"})
        EXPECT_TRUE(NamesDevice(s_win, "\\\\?\\" + string(device))) << device;
}

TEST(PathRules, RootsAreNotCreated)
{
    std::tuple<PathRules const &, string, string> const names[] = {
        {s_win, "a\\b", ""},
        {s_win, "\\a\\b", "\\"},
        {s_win, "\\\\server\\share\\a\\b", "\\\\server\\share\\"},
        {s_win, "\\\\server", "\\\\server"},
        {s_win, "\\\\?\\c:\\a\\b", "\\\\?\\c:\\"},
        {s_win, "\\\\?\\UNC\\server\\share\\a", "\\\\?\\UNC\\server\\share\\"},
        {s_unix, "/a/b", "/"},
    };
    for (auto const &[rules, whole, root] : names)
    {
        string rest = whole;
        EXPECT_EQ(EatRoot(rules, rest), root) << whole;
        EXPECT_EQ(root + rest, whole);
    }
}

} // namespace
} // namespace quillmarsh::file_system
