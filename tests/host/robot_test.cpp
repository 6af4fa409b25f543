// The robot of the host: its command, and scripts for it.
#include "tests/support/host_process.h"
#include "tests/support/leaks.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <fstream>

namespace quillmarsh::tests
{
namespace
{

/// Runs the board in a window that nobody sees.
HostResult RunBoard(std::vector<string> arguments, string const &input)
{
    NoLeakCheckInChildren const noLeakCheck;
    arguments.insert(arguments.end(),
                     {"--headless", "640x480", "--video", "video_null", "--plugin", TestPlugin("board")});
    return RunHost(arguments, input);
}

TEST(HostRobot, CarriesOutAScript)
{
    HostResult const result = RunBoard({"--robot", "-"}, "# A comment.\n\n"
                                                         "wait 'Button \"Open\"' -gone\n"
                                                         "click 'Board / Key \"Open\"'\n"
                                                         "click Field\n"
                                                         "type 'Grün & 7'\n"
                                                         "wait Field -text='Grün & 7'\n"
                                                         "key Enter\n"
                                                         "list Key\n");
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_EQ("", result.err);
    EXPECT_EQ("robot wait 'Button \"Open\"' -gone\n"
              "robot click 'Board / Key \"Open\"'\n"
              "<Open>\n"
              "robot click Field\n"
              "robot type 'Grün & 7'\n"
              "robot wait Field -text='Grün & 7'\n"
              "robot key Enter\n"
              "<Gr\xfcn & 7>\n"
              "robot list Key\n"
              "/Board 'Board'/Key 'Open' at 30,30 size 80x20\n"
              "/Board 'Board'/Key 'Close' at 130,30 size 80x20, disabled\n"
              "2 components\n",
              result.out);
}

TEST(HostRobot, FailureNamesTheLineAndWhatWasSeen)
{
    ScratchDirectory const scratch;
    string const file = scratch / "robot.txt";
    std::ofstream(file) << "click 'Key \"Open\"'\n\nclick 'Board / Key \"Shut\"'\nclick 'Key \"Open\"'\n";
    HostResult result = RunBoard({"--robot", file}, "");
    EXPECT_EQ(1, result.status);
    EXPECT_EQ(
        "quillmarsh-host: " + file +
            "(3): The robot cannot click Board / Key \"Shut\": there is no such component. There is no Key \"Shut\". "
            "The path leads to /Board 'Board', which has the children Key 'Open', Key 'Close', Field. "
            "The script stops here.\n",
        result.err);
    EXPECT_EQ("robot click 'Key \"Open\"'\n<Open>\nrobot click 'Board / Key \"Shut\"'\n", result.out);

    // A script goes on, as after any line that fails.
    result = RunBoard({}, "robot click 'Key \"Close\"'\nrobot fly\nrobot click\nrobot click 'Key \"Open\"'\n");
    EXPECT_EQ(1, result.status);
    EXPECT_TRUE(Contains(result.err, "(1): The robot cannot click Key \"Close\": it is disabled.\n")) << result.err;
    EXPECT_TRUE(Contains(result.out, "'fly' is not what the robot can do")) << result.out;
    EXPECT_TRUE(Contains(result.out, "robot: click needs the path of a component\n")) << result.out;
    EXPECT_TRUE(result.out.ends_with("<Open>\n")) << result.out;

    // A failure in the middle of a drag releases the button for the lines that follow.
    result = RunBoard({}, "robot drag 'Key \"Open\"' -to=Nowhere\nrobot click 'Key \"Open\"'\n");
    EXPECT_EQ(1, result.status);
    EXPECT_TRUE(Contains(result.err, "(1): The robot cannot drag ")) << result.err;
    EXPECT_TRUE(result.out.ends_with("\"'\n<Open>\n")) << result.out;
}

TEST(HostRobot, SaysThatItsDevicesAreRefused)
{
    EnvironmentVariable const refuse("BOARD_REFUSE", "1");
    HostResult const result = RunBoard({"--robot", "-"}, "click Field\n");
    EXPECT_EQ(1, result.status);
    EXPECT_TRUE(Contains(result.err, "(1): The robot has no mouse and keyboard: the application has refused them."))
        << result.err;
}

// Presses and releases are closer together than the frames.
TEST(HostRobot, RecordingIsTheHandOfAGUI)
{
    ScratchDirectory const scratch;
    string const file = scratch / "hand.txt";
    std::ofstream(file) << "quillmarsh-recording 1\n"
                           "controller keyboard\n"
                           "controller mouse\n"
                           "0 mouse position=40,40 inside=1\n"
                           "0.1 mouse buttons=0\n"
                           "0.101 mouse buttons=none\n"
                           "0.2 mouse position=40,80\n"
                           "0.3 mouse buttons=0\n"
                           "0.301 mouse buttons=none\n"
                           "0.4 keyboard keys=L-Shift,H\n"
                           "0.401 keyboard keys=none\n"
                           "0.402 keyboard keys=I\n"
                           "0.403 keyboard keys=Enter\n"
                           "0.404 keyboard keys=none\n"
                           "0.5 end\n";
    string const play = "play '" + file + "' -once";
    HostResult const result = RunBoard({"--plugin", "input_recording", "--frame-rate", "50"},
                                       play + "\nwait 12\nplay -stop\n" + play + " -system\nwait 40\n");
    EXPECT_EQ(0, result.status) << result.err;
    std::size_t const system = result.out.find("-system\n");
    ASSERT_NE(string::npos, system) << result.out;
    EXPECT_FALSE(Contains(result.out.substr(0, system), "<")) << result.out;
    EXPECT_TRUE(Contains(result.out, "wait 40\n<Open>\n<Hi>\n")) << result.out;
}

} // namespace
} // namespace quillmarsh::tests
