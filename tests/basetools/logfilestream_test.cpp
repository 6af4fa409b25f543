#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/logfilestream.h>
#include <quillmarsh/basetools/platforminfo.h>

#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <regex>
#include <sstream>

namespace quillmarsh
{
namespace
{

/// Returns the text of a file, with its line ends translated.
string ReadText(string const &name)
{
    std::stringstream text;
    text << std::ifstream(file_system::GetStreamPath(name)).rdbuf();
    return text.str();
}

TEST(LogFileStream, WrapsTheTextInItsBlocks)
{
    tests::ScratchDirectory const scratch;
    string const name = scratch.GetPath().string() + "/l\u00f6g.txt";
    for (int run = 0; run < 2; ++run)
    {
        LogFileStream log("Game", name);
        EXPECT_TRUE(log.good());
        log << "text" << std::endl << std::setw(100);
    }

    string const text = ReadText(name);
    string const origin = "/" + platform_info::GetMachineName() + "/" + platform_info::GetUserNameA() + "\n";
    std::smatch match;
    ASSERT_TRUE(
        std::regex_match(text, match,
                         std::regex("(-+)\n(Game log opened @ [0-9]{4}-[0-9]{2}-[0-9]{2}/[0-9:]{8})(/[^\n]*\n)(-+)\n\n"
                                    "text\n\n"
                                    "(-+)\n(Game log closed @ [0-9]{4}-[0-9]{2}-[0-9]{2}/[0-9:]{8})(/[^\n]*\n)(-+)\n")))
        << text;
    EXPECT_EQ(match[3], origin);
    EXPECT_EQ(match[7], origin);
    for (std::size_t separator : {1, 4, 5, 8})
        EXPECT_EQ(match.length(separator), match.length(2) + match.length(3) - 1);
}

TEST(LogFileStream, FailsQuietly)
{
    for (string const &name : {string(), string("/absent/folder/log"), string("/proc/version"), string("a\0b", 3)})
    {
        LogFileStream log("Log", name);
        EXPECT_TRUE(log.fail()) << name;
        log << "swallowed" << std::endl;
        log.Close();
        EXPECT_TRUE(log.fail()) << name;
    }
    EXPECT_FALSE(std::filesystem::exists("a"));
}

TEST(LogFileStream, FullDiskFailsQuietly)
{
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "no full disk here";
    LogFileStream log("Log", "/dev/full");
    log << "text" << std::endl;
    EXPECT_TRUE(log.fail());
    log.clear();
    log << "more";
    log.exceptions(std::ios_base::badbit | std::ios_base::failbit);
}

TEST(LogFileStream, DerivedClassWritesBlocksOfItsOwn)
{
    class TaggedLog : public LogFileStream
    {
    public:
        using LogFileStream::LogFileStream;

    protected:
        void OnClose() override { OutputBlockPE(false, time::DateTimeSeparators('.', 'h', ' ')); }
    };
    tests::ScratchDirectory const scratch;
    TaggedLog log("Log", scratch / "log");
    log.Close();
    log.Close();
    EXPECT_TRUE(log.good());
    EXPECT_TRUE(std::regex_search(
        ReadText(scratch / "log"),
        std::regex("\n-+\nLog log closed @ [0-9]{4}\\.[0-9]{2}\\.[0-9]{2} [0-9]{2}h[0-9]{2}h[0-9]{2}/[^\n]*\n-+\n$")));
}

} // namespace
} // namespace quillmarsh
