// The room of volumes as its users see it: mouse, keys and console move the same cross hair.
#include "tests/viewer/drive_viewer.h"

#include <quillmarsh/dataobjects/datacodecmanager.h>
#include <quillmarsh/dataobjects/datacodecs.h>
#include <quillmarsh/dataobjects/datafiles.h>

#include <gtest/gtest.h>

namespace quillmarsh::tests
{
namespace
{

/// Saves a volume of 30 layers, 20 rows and 40 columns, whose bytes are layer and column added up.
string SaveVolume(ScratchDirectory const &directory)
{
    sampled_data::SampledData data(e_format_L8, {30, 20, 40});
    auto &volume = *data.Get<VolumeBase>();
    for (unsigned int i = 0; i < volume.GetNumSamples(); ++i)
        *volume.SampleB(i) = static_cast<unsigned char>(i / 800 + i % 40);
    DataCodecManager const codecs;
    RegisterDefaultDataCodecs();
    string const fileName = directory / "sum.qmdp.volume";
    sampled_data::SaveFile(data, fileName, *sampled_data::FindFileType(fileName), {});
    return fileName;
}

/// What a line printed: the text between its own echo and the next line.
string FindAnswer(string const &out, string const &line)
{
    std::size_t const begin = out.rfind('\n' + line + '\n');
    if (begin == string::npos)
        return "no such line";
    std::size_t const answer = begin + line.size() + 2;
    return out.substr(answer, out.find('\n', answer) - answer);
}

class VolumeRoom : public testing::Test
{
protected:
    string Drive(string const &script, bool fails = false) const
    {
        return DriveViewer(directory_, "open '" + SaveVolume(directory_) + "'\nrobot wait SlicePane\n" + script, fails);
    }

    ScratchDirectory directory_;
};

TEST_F(VolumeRoom, PanesAreLinkedAtTheCross)
{
    string const out = Drive(R"(
cut
robot wait 'Label "cut 20, 10, 15: L 35*40 × 20 × 30*"'
volume-zoom 4
robot click 'SlicePane "layer"'
robot drag 'SlicePane "layer"' -dx=40 -dy=-20
robot wheel 'SlicePane "column"' -delta=-240
robot wait -seconds=0.6
robot click 'SlicePane "row"'
robot key Period
robot key Shift+Comma
robot key ArrowRight
robot key ArrowUp
cut 3 4 5
robot move 'SlicePane "layer"' -x=20 -y=20
robot wait 'Label "cut 3, 4, 5: L 8*400%"'
robot hold Control
robot wheel 'SlicePane "layer"' -delta=120
robot release Control
robot wait -seconds=0.6
volume-zoom
robot drag 'SlicePane "layer"' -button=right -dx=100
volume-window
volume-window auto
robot wait -seconds=0.3
volume-window
)");
    EXPECT_EQ("20 10 15", FindAnswer(out, "cut")) << "at first in the middle";
    // Four pixels are a sample: ten columns to the right and five rows up, from the middle.
    EXPECT_TRUE(HasPart(out, "\ncut 30 4 15\n"));
    EXPECT_TRUE(HasPart(out, "\ncut 32 4 15\n")) << "by the wheel";
    EXPECT_TRUE(HasPart(out, "\nstep 1\n")) << "by a key";
    EXPECT_TRUE(HasPart(out, "\nnudge 0 -1\n"));
    EXPECT_EQ("5", FindAnswer(out, "volume-zoom"));
    EXPECT_TRUE(HasPart(out, "volume-window -82.7"));
    EXPECT_EQ("0 68", FindAnswer(out, "volume-window"));
}

TEST_F(VolumeRoom, ObliqueSliceAndVolumeTurn)
{
    string const out = Drive(R"(
oblique 0 0
robot hold Shift
robot drag ObliquePane -dx=40 -dy=-20
robot release Shift
robot click 'TextButton "Volume"'
robot wait TurnPane
robot drag TurnPane -dx=-50 -dy=0
turn
robot double-click TurnPane -x=100 -y=100
robot wait SlicePane -gone
robot wait -seconds=0.3
robot key M
robot wait 'SlicePane "row"'
turn 10 20 30
turn
robot key O
robot wait ObliquePane
robot click 'TextButton "Maximum"'
slab
robot key R-Bracket
slab
robot key V
robot key V
robot key M
robot wait 'SlicePane "layer"' -gone
robot key 0
panes 0.25 0.75
panes
)");
    EXPECT_TRUE(HasPart(out, "\noblique -20 10\n"));
    EXPECT_TRUE(HasPart(out, "\nturn 20 0 0\n"));
    EXPECT_TRUE(HasPart(out, "\nmaximize\n"));
    EXPECT_EQ("10 20 30", FindAnswer(out, "turn"));
    EXPECT_EQ("6 maximum", FindAnswer(out, "slab"));
    EXPECT_EQ("0.25 0.75", FindAnswer(out, "panes"));
}

TEST_F(VolumeRoom, ATrackerTurnsTheVolume)
{
    directory_.Write("turn.txt",
                     "quillmarsh-recording 1\ncontroller orientation-tracker angles\n"
                     "0.0 orientation-tracker angles=0,0,0\n0.3 orientation-tracker angles=40,0,0\n"
                     "0.6 orientation-tracker angles=0,0,0\n1.0 orientation-tracker angles=0,-30,0\n1.1 end\n");
    string const out = Drive("fourth volume\nrobot wait TurnPane\nplay '" + string(directory_ / "turn.txt") +
                             "' -once\nfollow-tracker on\nrobot wait -seconds=2.5\nturn\n");
    // Looking up by 30 degrees, the upper end comes nearer.
    EXPECT_EQ("0 -30 0", FindAnswer(out, "turn"));
}

TEST_F(VolumeRoom, RefusesWhatIsOutOfRange)
{
    struct
    {
        char const *line;
        char const *message;
    } const lines[] = {
        {"cut 1 2 30", "the layer is not within 0 and 29: 30"},
        {"cut 1 2", "the layer is missing"},
        {"slab 0", "the thickness is not within 1 and 4096: 0"},
        {"slab 3 median", "the kind of slab is none of slice, maximum, mean: median"},
        {"oblique 10 91", "the pitch is not within -90 and 90: 91"},
        {"volume-zoom 100", "the zoom is not within 0.015625 and 64: 100"},
        {"volume-window 5 5", "the value for white is not above that for black: 5"},
        {"volume-channel red", "the volume has no channel red"},
        {"pane left", "the pane is none of layer, row, column, oblique, volume: left"},
        {"density 0", "the density is not within 0.05 and 20: 0"},
    };
    string script;
    for (auto const &each : lines)
        script += string(each.line) + '\n';
    string const out = Drive(script + "cut\nclose\nrobot wait -frames=3\ncut\n", true);
    for (auto const &each : lines)
        EXPECT_EQ(each.message, FindAnswer(out, each.line));
    EXPECT_TRUE(HasPart(out, "\ncut\n20 10 15\n")) << "unchanged";
    EXPECT_EQ("no volume is shown", FindAnswer(out, "cut"));
}

} // namespace
} // namespace quillmarsh::tests
