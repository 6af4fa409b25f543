// The room of signals as its users see it: mouse, keys and console work on the same plot.
#include "tests/viewer/drive_viewer.h"

#include <quillmarsh/dataobjects/signalbase.h>
#include <quillmarsh/dataobjects/signalio.h>

#include <gtest/gtest.h>

#include <sstream>

namespace quillmarsh::tests
{
namespace
{

/// Saves a signal of A8L8: luminance counts from 0 to 199, again and again; alpha is 10, but for one peak of 250.
string SaveSignal(ScratchDirectory const &directory, string const &name, unsigned int numSamples)
{
    Signal<Sample16> signal(e_format_A8L8, numSamples);
    for (unsigned int i = 0; i < numSamples; ++i)
        signal.Sample(i) = {{static_cast<unsigned char>(i % 200), static_cast<unsigned char>(i == 150 ? 250 : 10)}};
    string const fileName = directory / name;
    EXPECT_TRUE(SignalEncoderQMDP().SaveSignal(signal, fileName, "QMDP", {}));
    return fileName;
}

/// Returns the last line of an output that begins with a word, without that word.
string FindLastLine(string const &out, string const &word)
{
    std::size_t const begin = out.rfind('\n' + word + ' ');
    if (begin == string::npos)
        return string();
    return out.substr(begin + word.size() + 2, out.find('\n', begin + 1) - begin - word.size() - 2);
}

TEST(SignalRoom, IsUsedByMouseKeysAndConsole)
{
    ScratchDirectory const directory;
    string const out = DriveViewer(directory, "open '" + SaveSignal(directory, "ramp.qmdp", 4000) + R"('
robot wait 'Label "4 000 samples, A8L8"'
span 100 300
range 100 300
robot key Z
robot key End
range
robot key T
robot wait -frames=2
robot drag SignalView -dx=100
rate 1000
robot wait 'Label "4 000 samples, 4.000 s, A8L8"'
robot click 'CheckBox "luminance"'
channels
robot hold Shift
robot drag SignalView -dx=-50
robot release Shift
robot wait 'Label "Maximum"'
robot key Delete
robot wait 'Label "Maximum"' -gone
robot key 0
robot wheel SignalView -delta=240
robot wait -seconds=0.6
robot hold Control
robot wheel SignalView -delta=120
robot release Control
robot wait -seconds=0.6
values
range
)" + "open '" + SaveSignal(directory, "other.qmdp", 70) +
                                                  R"('
robot wait 'Label "70 samples, 70.000 ms, A8L8"'
document 1
robot wait 'Label "4 000 samples, 4.000 s, A8L8"'
range
)");
    EXPECT_TRUE(HasPart(out, "200 samples from 100"));
    EXPECT_TRUE(HasPart(out, "luminance: minimum 0, maximum 199, mean 99.5, deviation 57.73"));
    EXPECT_TRUE(HasPart(out, "alpha: minimum 10, maximum 250, mean 11.2, deviation 16.928"));
    EXPECT_TRUE(HasPart(out, "\nrange 3800 4000 of 4 000\n")) << "by the key End";
    EXPECT_TRUE(HasPart(out, "\nlanes\n")) << "a key runs a line of the console";
    EXPECT_TRUE(HasPart(out, "\nchannels -toggle=luminance\n"));
    EXPECT_TRUE(HasPart(out, "\nluminance\nalpha (shown)\n"));
    EXPECT_TRUE(HasPart(out, "\nspan none\n"));
    // The wheel zooms about the mouse, in the middle of the view but for the axis at its left.
    double begin = 0;
    double end = 0;
    string const range = FindLastLine(out, "range");
    std::istringstream(range) >> begin >> end;
    EXPECT_NEAR(4000 / 1.5625, end - begin, 2);
    EXPECT_NEAR(2000, (begin + end) / 2, 100);
    EXPECT_EQ(range, FindLastLine(out.substr(0, out.find("other.qmdp")), "range")) << "a document keeps its place";
    EXPECT_NE("auto", FindLastLine(out, "values")) << "control with the wheel zooms the values";
}

TEST(SignalRoom, RefusesWhatIsOutOfRangeAndMeasuresLongSpansBesideTheFrames)
{
    ScratchDirectory const directory;
    string const out = DriveViewer(directory, "range all\nopen '" + SaveSignal(directory, "long.qmdp", 3'000'000) + R"('
robot wait 'Label "3 000 000 samples, A8L8"'
range 20 10
range 0 4000000
range 0 x
values 7 7
channels green
rate '-5'
stretch 0
span 10 3000001
range span
lanes sideways
values
range
span 0 3000000
robot wait 'Label "57.734"'
span
)",
                                   true);
    for (char const *const reason :
         {"no signal is shown", "at 3000000 at most: 20 to 10", "at 3000000 at most: 0 to 4000000",
          "'x' is not a number", "within -1e37 and 1e37: 7 to 7",
          "no channel has the name green; there is: luminance, "
          "alpha",
          "within 0 and 1e12 samples of a second: -5", "a factor is within 1e-6 and 1e6: 0",
          "whole numbers from 0 to 3 000 000", "no span is marked", "stacked or together, not sideways",
          "\nvalues auto\n", "\nrange 0 3000000 of 3 000 000\n", "its figures are being computed"})
        EXPECT_TRUE(HasPart(out, reason));
    EXPECT_TRUE(HasPart(out, "luminance: minimum 0, maximum 199, mean 99.5, deviation 57.73"));
}

} // namespace
} // namespace quillmarsh::tests
