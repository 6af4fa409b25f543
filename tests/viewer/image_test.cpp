// The image room: where an image lies, and the room as its users see it.
#include "tests/support/host_process.h"
#include "tests/support/leaks.h"
#include "tests/viewer/datafolder.h"
#include "tests/viewer/images.h"

#include <viewer_model/images/imageplace.h>

#include <gtest/gtest.h>

#include <cmath>

namespace viewer
{
namespace
{

using namespace quillmarsh;

TEST(ImagePlace, ZoomsAboutAPosition)
{
    ImagePlace place;
    place.SetViewSize({801, 602});
    place.SetImageSize({3000, 2000});
    for (double const zoom : {0.3, 0.5, 1.0, 1.7, 8.0, 64.0, 3.0, 0.4})
    {
        double const x = place.Get().ToImageX(700, 801), y = place.Get().ToImageY(40, 602);
        place.Zoom(zoom, x, y);
        EXPECT_EQ(place.Get().zoom, zoom);
        // Samples begin at whole pixels.
        EXPECT_NEAR(place.Get().ToViewX(x, 801), 700, 0.501) << zoom;
        EXPECT_NEAR(place.Get().ToViewY(y, 602), 40, 0.501) << zoom;
        double const edge = place.Get().ToViewX(0, 801);
        EXPECT_NEAR(edge, std::round(edge), 1e-4) << zoom;
    }
    place.Zoom(1e9, 0, 0);
    EXPECT_EQ(place.Get().zoom, 64);
}

TEST(ImagePlace, StepsFromTheFittedImageUpAndBack)
{
    ImagePlace place;
    place.SetViewSize({900, 600});
    place.SetImageSize({3000, 1000});
    EXPECT_DOUBLE_EQ(place.Get().zoom, 0.3);
    std::vector<double> zooms;
    while (place.Get().zoom < 64)
    {
        place.Step(true, 1500, 500);
        zooms.push_back(place.Get().zoom);
    }
    EXPECT_EQ(zooms, (std::vector<double>{0.375, 0.5, 0.75, 1, 1.5, 2, 3, 4, 6, 8, 12, 16, 24, 32, 48, 64}));
    for (std::size_t i = zooms.size() - 1; i-- > 0;)
    {
        place.Step(false, 1500, 500);
        EXPECT_EQ(place.Get().zoom, zooms[i]);
    }
    EXPECT_FALSE(place.IsFit());
    place.Step(false, 1500, 500);
    EXPECT_TRUE(place.IsFit());
    // A small image is enlarged by a whole number, and can be made smaller than that.
    place.SetImageSize({170, 130});
    EXPECT_EQ(place.Get().zoom, 4);
    place.Zoom(0.01, 0, 0);
    EXPECT_EQ(place.Get().zoom, 1);
}

TEST(ImagePlace, KeepsWhatIsInTheMiddle)
{
    ImagePlace place;
    place.SetViewSize({400, 300});
    place.SetImageSize({1000, 1000});
    place.Zoom(2, 500, 500);
    place.Center(123, 456);
    place.SetViewSize({700, 801});
    EXPECT_NEAR(place.Get().x, 123, 0.3);
    EXPECT_NEAR(place.Get().y, 456, 0.3);
    EXPECT_EQ(place.Get().zoom, 2);
    // The same size is not fitted anew; another one is.
    place.SetImageSize({1000, 1000});
    EXPECT_EQ(place.Get().zoom, 2);
    place.Pan(1e6, -1e6);
    EXPECT_NEAR(place.Get().x, 0, 0.3);
    EXPECT_NEAR(place.Get().y, 1000, 0.3);
    place.SetImageSize({1000, 999});
    EXPECT_TRUE(place.IsFit());
    place.SetViewSize({100, 100});
    EXPECT_DOUBLE_EQ(place.Get().zoom, 0.1);
}

/// Runs the viewer in a directory with images: two of 8 by 4 bytes that differ in one sample, and a larger one.
class ImageRoom : public tests::DataFolder
{
protected:
    ImageRoom()
    {
        std::vector<unsigned char> samples;
        for (unsigned int i = 0; i < 32; ++i)
            samples.push_back(static_cast<unsigned char>(4 * i));
        SaveContent("ramp", *tests::MakeContent(e_format_L8, 4, 8, samples));
        samples[9] = static_cast<unsigned char>(samples[9] + 51);
        SaveContent("other", *tests::MakeContent(e_format_L8, 4, 8, samples));
        SaveContent("colours", *tests::MakeRandomContent(e_format_A8R8G8B8, 40, 30));
        std::filesystem::current_path(directory_.GetPath());
    }
    ~ImageRoom() override { std::filesystem::current_path(before_); }

    void SaveContent(string const &name, Content const &content) const
    {
        string const file = directory_ / (name + ".qmdp.image");
        sampled_data::SaveFile(content.GetData(), file, *sampled_data::FindFileType(file), {});
    }
    /// Returns the output. Without `isStrict`, lines may fail.
    static string Drive(string const &lines, bool isStrict = true)
    {
        quillmarsh::tests::NoLeakCheckInChildren const noLeakCheck;
        std::vector<string> arguments = {"--headless", "1280x800",   "--frame-rate", "240",
                                         "--video",    "video_null", "--plugin",     "viewer"};
        if (isStrict)
            arguments.push_back("--strict");
        quillmarsh::tests::HostResult const result = quillmarsh::tests::RunHost(arguments, lines);
        EXPECT_EQ(isStrict ? 0 : 1, result.status) << result.out << result.err;
        return result.out;
    }
    static void ExpectLines(string const &out, std::vector<string> const &lines)
    {
        std::size_t at = 0;
        for (string const &line : lines)
        {
            std::size_t const found = out.find(line, at);
            EXPECT_NE(found, string::npos) << line << "\nis not in the rest of\n" << out;
            if (found != string::npos)
                at = found + line.size();
        }
    }

    std::filesystem::path before_ = std::filesystem::current_path();
};

TEST_F(ImageRoom, ZoomsMovesAndMeasuresByMouseAndKeys)
{
    // The middle of the view lies between the samples: that to the right and below is under the mouse.
    string const out = Drive(R"(
open ramp.qmdp.image
robot move ImageView
robot wait 'Label "(4, 2)*L 80*6400 %*8 × 4 L8*"'
robot wheel ImageView -delta=-360
robot wait 'Label "(4, 2)*L 80*2400 %*"'
robot wait -seconds=0.6
robot key ArrowRight
robot wait 'Label "(6, 2)*L 88*"'
robot key 1
robot wait 'Label "*100 %*"'
robot key 0
robot hold Shift
robot drag ImageView -dx=70 -dy=-70
robot release Shift
robot wait 'Label "2 × 3 samples*"'
robot hold Control
robot drag ImageView -dx=192 -dy=0
robot release Control
robot wait 'Label "Length 3*"'
robot drag ImageView -dx=64 -dy=0
zoom
open other.qmdp.image
robot wait 'Label "*8 × 4 L8*"'
zoom
quit
)");
    ExpectLines(out, {"zoom 24 -x=4 -y=2", "measure 4 2 5 0", "measure 4 2 7 2 -line", "pan 64 0",
                      "zoom 64 about (3, 2)", "zoom 64 about (3, 2)"});
}

TEST_F(ImageRoom, ComparesTwoImages)
{
    string const out = Drive(R"(
open ramp.qmdp.image
robot wait ImageView
compare other.qmdp.image -mode=divider
robot move ImageView -x=20
robot wait ImageView
robot key D
robot wait 'Label "Mean*"'
difference -scale=5
robot key B
robot key B
compare
compare colours.qmdp.image -mode=difference
robot wait 'Label "difference*"'
compare off
figures
quit
)");
    // One of 32 samples differs, by a fifth of the range.
    ExpectLines(out, {"mean 0.00625, greatest 0.2", "blink with other", "difference: ", "luminance: minimum 0"});
}

TEST_F(ImageRoom, RefusesWhatIsOutOfRange)
{
    string const out = Drive(R"(
zoom 2
open colours.qmdp.image
robot wait ImageView
robot wait -frames=3
zoom 1000
zoom nearly
level 7
channel luminance
exposure 17
gamma 0
window 1
palette grey
measure 100 100 120 120
measure 1 2 3
compare missing.qmdp.image
robot wait 'Label "*missing*"'
compare off
blink
channel alpha
exposure -by=0.5
exposure
quit
)",
                             false);
    ExpectLines(out, {"no image is shown", "the zoom must be from 1 to 64, not 1000",
                      "the zoom must be a number, not 'nearly'", "the level must be from 0 to 6, not 7",
                      "the channel must be all, red, green, blue or alpha, not 'luminance'",
                      "the exposure must be from -16 to 16, not 17", "gamma must be from 0.1 to 10, not 0",
                      "the window needs two numbers, or auto",
                      "the palette must be none, heat, rainbow, spectral or cyclic, not 'grey'",
                      "nothing of the image is there: it has 30 × 40 samples", "x0, y0, x1 and y1 must be numbers",
                      "missing.qmdp.image", "there is nothing to compare with", "0.5"});
}

} // namespace
} // namespace viewer
