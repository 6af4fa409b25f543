#include "tests/support/host_process.h"

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>

namespace quillmarsh::tests
{
namespace
{

using std::string;

/// What tracer and test driver wrote down of the devices, and of what became of the run; frames are left out.
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

TEST(HostDevices, AreWalkedUpSampledInEachFrameAndWalkedDown)
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

TEST(HostDevices, ThatFailAreLeftOutWithAWordAboutIt)
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

TEST(HostDevices, HookThatFailsLeavesNothingOpen)
{
    for (char const *hook :
         {"Confirm 1/ball/testdriver", "Connect 1/ball/testdriver", "EndConfirmHumanInterfaceDevices"})
    {
        HostResult result;
        string const trace = RunWithDriver({{"TRACER_FAIL", hook}}, result);
        EXPECT_EQ(3, result.status);
        EXPECT_NE(string::npos, trace.find("~ball;")) << trace;
        EXPECT_NE(string::npos, trace.find("CloseDriver;~TestDriver;")) << trace;
        EXPECT_EQ(hook[3] == 'n' && hook[4] == 'e', trace.find("DisconnectDevice") != string::npos) << trace;
    }
}

} // namespace
} // namespace quillmarsh::tests
