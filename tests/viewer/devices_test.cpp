// The panel of input devices: recordings are played into it and recorded again.
#include "tests/viewer/drive_viewer.h"

#include "viewer_model/signals/trace.h"

#include <gtest/gtest.h>

#include <cmath>

namespace quillmarsh::tests
{
namespace
{

TEST(DevicesRoom, ShowsDevicesThatComeAndGo)
{
    ScratchDirectory const directory;
    string const recordings = QUILLMARSH_TEST_SOURCES "examples/recordings/";
    string const copy = directory / "copy.txt";
    string const out = DriveViewer(directory, "devices\nplay '" + recordings + R"(gestures.txt' -speed=4
robot wait 'DevicesPanel // DeviceBoard "*Right hand*"'
robot wait 'DevicesPanel // DeviceBoard "*Right hand*, Grab*"' -limit=3000
robot wait 'DevicesPanel // DeviceBoard "*Right hand*, PinkyPoint*"' -limit=3000
record ')" + copy + R"('
robot wait -seconds=0.3
robot click 'DevicesPanel // TextButton "Stop recording"'
play ')" + recordings + R"(head.txt'
robot wait 'DevicesPanel // DeviceBoard "*Head turning*"'
robot wheel 'DevicesPanel // ScrolledBoard' -delta=-1200
robot click 'DevicesPanel // TextButton "Stop playing"'
robot wait 'DevicesPanel // DeviceBoard "*Right hand*"' -gone
robot hold K
robot wait 'DevicesPanel // DeviceBoard "*robot*, K*"'
robot release K
robot wait 'DevicesPanel // DeviceBoard "*robot*, K*"' -gone
robot key F6
robot wait 'DevicesPanel "Input devices"' -gone
tab devices
robot wait 'DeviceBoard "*Mouse of the robot*"'
play ')" + copy + R"('
robot wait 'DeviceBoard "*; Recorded*"'
)");
    EXPECT_TRUE(HasPart(out, "Recorded " + copy));
    EXPECT_TRUE(HasPart(out, "Stopped " + recordings + "gestures.txt"));
}

TEST(Trace, KeepsTenSecondsInFewSteps)
{
    viewer::Trace trace;
    EXPECT_EQ(0, trace.GetExtremes().high);
    for (unsigned int i = 0; i < 100'000; ++i)
        trace.Add(i / 4000.0, i == 70'001 ? 9 : std::sin(i / 1000.0));
    trace.Add(25, NAN);
    EXPECT_LE(trace.GetSteps().size(), viewer::Trace::s_numSteps + 1);
    EXPECT_GE(trace.GetSteps().size(), viewer::Trace::s_numSteps * 9 / 10);
    EXPECT_GE(trace.GetSteps().front().time, 15);
    // A peak of one value stays, as long as it is new enough.
    EXPECT_EQ(9, trace.GetExtremes().high);
    trace.Add(28, 0);
    EXPECT_LT(trace.GetExtremes().high, 1.01);
}

} // namespace
} // namespace quillmarsh::tests
