#include <quillmarsh/framework/videosubsystem.h>

#include <quillmarsh/framework/videoprofile.h>

#include "tests/support/scratch_directory.h"
#include "video_null/nullsubsystem.h"

#include <gtest/gtest.h>

#include <sstream>

namespace quillmarsh
{
namespace
{

/// Collects what it is told to.
class Collector : public video_null::NullSubsystem
{
public:
    bool CollectVideoProfile(ostream &log, VideoProfile &profile) override
    {
        log << "The collector was here." << std::endl;
        if (hasModes)
        {
            profile.Add(DisplayModeConfig(640, 480, 32, 75));
            profile.Add(DisplayModeConfig(640, 480, 32, 60));
        }
        if (hasBuffers)
            profile.Add(FrameBufferConfig(false, true, 1, 24, 8, 0));
        return result;
    }

    bool result = true;
    bool hasModes = true;
    bool hasBuffers = true;
};

/// Returns the log's text between its head and its end, without the dump of the profile.
string BuildAndReadLog(Collector &collector, VideoProfile &profile, bool expected)
{
    tests::ScratchDirectory const directory;
    string const fileName = directory / "video.log";
    EXPECT_EQ(collector.BuildVideoProfile(fileName, "Video profile", profile), expected);
    string log = tests::ReadFile(fileName);
    std::erase(log, '\r');
    EXPECT_NE(log.find("Video profile log opened @ "), string::npos) << log;
    EXPECT_NE(log.find("Video profile log closed @ "), string::npos) << log;
    std::ostringstream dump;
    profile.Dump(dump);
    std::size_t const begin = log.find("Collecting profile data.\n");
    std::size_t const dumpBegin = log.find(dump.str());
    std::size_t const end = log.find("\n", log.find("Validation result: "));
    EXPECT_LT(begin, dumpBegin) << log;
    EXPECT_LT(dumpBegin, end) << log;
    std::size_t const dumpEnd = dumpBegin + dump.str().size();
    return log.substr(begin, dumpBegin - begin) + log.substr(dumpEnd, end + 1 - dumpEnd);
}

constexpr char s_szHead[] = "Collecting profile data.\nThe collector was here.\n\nValidating profile.\n";

TEST(VideoSubsystem, LogsACompleteProfile)
{
    Collector collector;
    VideoProfile profile;
    profile.Add(DisplayModeConfig(1, 2, 3, 4));
    EXPECT_EQ(BuildAndReadLog(collector, profile, true), string(s_szHead) + "Validation result: PASSED\n");
    ASSERT_EQ(profile.GetNumDisplayModeProperties(), 1u);
    // Sorted.
    EXPECT_EQ(profile.GetDisplayModeProperties(0).GetRefreshFrequency(0), 60u);
}

TEST(VideoSubsystem, LogsEverythingThatIsMissing)
{
    Collector collector;
    VideoProfile profile;
    collector.hasModes = collector.hasBuffers = false;
    EXPECT_EQ(BuildAndReadLog(collector, profile, false),
              string(s_szHead) + "Error: No available display-modes.\n"
                                 "Error: No available frame-buffer-configurations.\nValidation result: FAILED\n");
    collector.hasModes = collector.hasBuffers = true;
    collector.result = false;
    EXPECT_EQ(BuildAndReadLog(collector, profile, false),
              string(s_szHead) + "Error: Failed to collect all required information.\nValidation result: FAILED\n");
    EXPECT_FALSE(profile.IsEmpty());
    // Without a log file, the result is the same.
    EXPECT_FALSE(collector.BuildVideoProfile("", "", profile));
}

} // namespace
} // namespace quillmarsh
