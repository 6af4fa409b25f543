// The tour of the whole program, as anybody can run it: a recording of mouse and keys, played without a display.
#include "tests/support/host_process.h"
#include "tests/support/leaks.h"

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/dataobjects/datafiles.h>

#include <gtest/gtest.h>

namespace quillmarsh::tests
{
namespace
{

constexpr char s_szTour[] = QUILLMARSH_TEST_SOURCES "examples/tour.txt";

/// Returns the number of remarks of the tour that announce a picture.
unsigned int CountAnnouncedPictures()
{
    string const text = ReadFile(s_szTour);
    unsigned int count = 0;
    for (std::size_t at = 0; (at = text.find("\n# Picture ", at)) != string::npos; ++at)
        ++count;
    return count;
}

TEST(Tour, ShowsEverythingAndFailsNowhere)
{
    NoLeakCheckInChildren const noLeakCheck;
    ScratchDirectory const pictures;
    HostResult const result =
        RunProcess(QUILLMARSH_TEST_VIEW, {"--headless", "1280x800", "--play", s_szTour, "--screenshots",
                                          pictures.GetPath().string(), "--no-start-script", "--stop-on-error"});
    if (Contains(result.err, "OpenGL"))
        GTEST_SKIP() << result.err;
    EXPECT_EQ(0, result.status) << result.out;
    EXPECT_EQ("", result.err);
    EXPECT_FALSE(Contains(result.out, "cannot be opened")) << result.out;

    DataCodecManager const codecs;
    RegisterDefaultDataCodecs();
    unsigned int const numPictures = CountAnnouncedPictures();
    EXPECT_GE(numPictures, 12u);
    EXPECT_EQ(static_cast<std::ptrdiff_t>(numPictures), pictures.CountEntries()) << result.out;
    string before;
    for (unsigned int i = 0; i < numPictures; ++i)
    {
        string number = MakeString(i);
        number.insert(0, 4 - number.size(), '0');
        string const name = pictures / ("screenshot." + number + ".color.png");
        ASSERT_TRUE(std::filesystem::exists(name)) << result.out;
        EXPECT_EQ((sampled_data::Dimensions{800, 1280}), sampled_data::DataFile(name).GetDesc().dimensions);
        // Each picture shows something else.
        string const bytes = ReadFile(name);
        EXPECT_NE(before, bytes) << name;
        before = bytes;
    }
}

} // namespace
} // namespace quillmarsh::tests
