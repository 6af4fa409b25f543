#include "tests/support/host_process.h"
#include "tests/support/virtual_display.h"

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>

namespace quillmarsh::tests
{
namespace
{

using std::string;

/// Returns the records of tracer and test driver about the devices and the result of the run, without the frames.
string RunWithDriver(std::vector<std::pair<string, string>> settings, HostResult &result, string const &input = "",
                     std::vector<string> arguments = {"--frames", "4"})
{
    string text = RunTraced(std::move(arguments), std::move(settings), {"tracer", "testdriver"}, result, input);
    std::size_t const begin = text.find("level 3\n"), end = text.rfind("level 2\n");
    if (begin == string::npos || end == string::npos || end < begin)
        return text;
    std::istringstream lines(text.substr(begin, end - begin));
    text.clear();
    for (string line; std::getline(lines, line);)
    {
        if (line.starts_with("Frame") || line.starts_with("OnFrame") || line.starts_with("level ") ||
            line.find("Subsystems") != string::npos)
            continue;
        std::size_t const name = line.find("HumanInterfaceDevices");
        text += (name == string::npos ? line : line.erase(name, std::strlen("HumanInterfaceDevices"))) + ";";
    }
    return text;
}

string MakeUp(string const &version)
{
    return "ConfirmHIDDriver testdriver 0;QueryHIDConfig 0 0;OpenDriver " + version +
           " 3;BeginConfirm;EnumerateDevices;CreateDevice 0;Confirm 1/ball/testdriver;CreateDevice 1;"
           "Confirm 2/dull/testdriver;~dull;EndConfirm;BeginConnect;ConnectDevice ball;Connect 1/ball/testdriver;"
           "EndConnect;SetupAsyncHIDSampling;";
}

string MakeDown(string const &samples)
{
    return "Disconnect;DisconnectDevice ball " + samples + ";~ball;CloseDriver;~TestDriver;";
}

TEST(HostDevices, AreStartedSampledInEachFrameAndShutDown)
{
    HostResult result;
    EXPECT_EQ(MakeUp("0") + MakeDown("4"), RunWithDriver({}, result));
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_EQ("", result.err);
}

TEST(HostDevices, AreReconfiguredOnRequestAndWhenTheyChange)
{
    HostResult result;
    string const trace = RunWithDriver(
        {}, result, "wait 2\nhid-config -version=8\nwait 3\nhid-config\nhid-control\nhid-control -d=1 -info\n", {});
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_EQ(MakeUp("0") + "Disconnect;DisconnectDevice ball",
              trace.substr(0, trace.find(" ", trace.find("DisconnectDevice ") + 17)));
    EXPECT_NE(string::npos, trace.find(MakeUp("8") + "OnHIDReconfig;Disconnect;")) << trace;
    for (char const *part : {"DirectInputVersion...........: 8\n", "UseLastVersion...............: false\n",
                             "Available human-interface-devices:\n1/ball/testdriver\n\tController 0: Mouse\n",
                             "SyncWithSystemCursor: true\n", "IsSystemMouse: true\n"})
        EXPECT_NE(string::npos, result.out.find(part)) << part << result.out;

    EXPECT_EQ(MakeUp("0") + MakeDown("2") + MakeUp("0") + "OnHIDReconfig;" + MakeDown("1"),
              RunWithDriver({{"TESTDRIVER_CHANGE", "1"}}, result, "", {"--frames", "3"}));
}

TEST(HostDevices, SampleOnTheirThreads)
{
    HostResult result;
    ScratchFile const log;
    string const trace = RunWithDriver({{"TRACER_ASYNC", "1"}}, result, "wait 3\n", {"--log", log.GetName()});
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_EQ(string::npos, trace.find("too early")) << trace;
    EXPECT_NE(string::npos, log.Read().find("Starting async-sampling on hid: 1\n"));
    EXPECT_NE(string::npos, log.Read().find("Stoping async-sampling on hid: 1\n"));
}

TEST(HostDevices, ThatFailAreLeftOutWithAMessage)
{
    std::tuple<char const *, char const *, char const *> const cases[] = {
        {"OpenDriver 0 3", "The device driver 'testdriver' is left out: ApplicationException: asked to fail", ""},
        {"EnumerateDevices!", "The devices of 'testdriver' are left out: asked to fail", ""},
        {"CreateDevice 1", "A device of 'testdriver' is left out: ApplicationException: asked to fail", " 4"},
        {"ConnectDevice ball", "The input device 1/ball/testdriver is left out: ApplicationException: ", ""},
        {"SampleDevice", "The input device 1/ball/testdriver is not sampled any more: HIDException: unplugged", " 2"},
        {"PollDeviceChanges", "'testdriver' is not asked for changes any more: HIDDriverException: no bus", " 4"}};
    for (auto const &[fail, message, numSamples] : cases)
    {
        HostResult result;
        string const trace = RunWithDriver({{"TRACER_FAIL", fail}}, result);
        EXPECT_EQ(0, result.status) << fail << result.err;
        EXPECT_NE(string::npos, result.err.find(message)) << fail << result.err;
        EXPECT_EQ(1, std::count(result.err.begin(), result.err.end(), '\n')) << result.err;
        EXPECT_EQ(*numSamples != 0, trace.find(string("DisconnectDevice ball") + numSamples) != string::npos) << trace;
        EXPECT_NE(string::npos, trace.find("~TestDriver;")) << trace;
    }
}

/// Removes repeated geometry, which a display may send any number of times, and the number of samples.
string Tidy(string const &trace)
{
    static constexpr char s_szGeometry[] = "OnAppWindowGeometryChanged";
    string tidy, geometry;
    std::istringstream lines(trace);
    for (string line; std::getline(lines, line, ';');)
    {
        bool const isAgain = line.starts_with(s_szGeometry) && line == geometry;
        if (line.starts_with(s_szGeometry) || line.starts_with("ConnectDevice"))
            geometry = line;
        if (line.starts_with("DisconnectDevice"))
            line.erase(line.rfind(' '));
        tidy += isAgain ? "" : line + ";";
    }
    return tidy;
}

using HostDevicesOnADisplay = OnADisplay;

TEST_F(HostDevicesOnADisplay, GetEventsOfAWindowFromOpenToClose)
{
    HostResult result;
    string const trace = RunWithDriver(
        {}, result, "window open\nwindow widen\nhid-config -version=8\nwait 2\nwindow close\nwindow open\n", {});
    EXPECT_EQ("", result.err);
    string const withWindow = "OnAppWindowGeometryChanged ball 300;OnAppWindowActive ball 1;";
    string again = MakeUp("8");
    again.insert(again.find("ConnectDevice ball;") + 18, " to a window;" + withWindow.substr(0, withWindow.size() - 1));
    EXPECT_EQ(Tidy(MakeUp("0") +
                   "OnAppWindowGeometryChanged ball 200;OnAppWindowActive ball 1;window open;"
                   "OnAppWindowGeometryChanged ball 300;window widen;" +
                   MakeDown("0") + again +
                   "OnHIDReconfig;OnAppWindowActive ball 0;OnAppWindowGeometryChanged ball 0;window close;"
                   "OnAppWindowGeometryChanged ball 200;OnAppWindowActive ball 1;window open;"
                   "OnAppWindowActive ball 0;OnAppWindowGeometryChanged ball 0;" +
                   MakeDown("0")),
              Tidy(trace));
}

} // namespace
} // namespace quillmarsh::tests
