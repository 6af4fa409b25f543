#include <quillmarsh/basetools/variableregistry.h>
#include <quillmarsh/devices/orientationtracker.h>
#include <quillmarsh/framework/commands/crashcmd.h>
#include <quillmarsh/framework/commands/frameworkcommands.h>
#include <quillmarsh/framework/frameworkprofiler.h>
#include <quillmarsh/framework/stdcommandinterpreter.h>

#include "tests/support/controller_device.h"
#include "tests/support/failures.h"
#include "tests/support/scripted_dialogs.h"
#include "tests/support/test_kernel.h"

#include <gtest/gtest.h>

namespace quillmarsh::framework_commands
{
namespace
{

using tests::ScriptedDialogs;

class FrameworkCommands : public testing::Test
{
protected:
    FrameworkCommands()
    {
        interpreter = std::make_unique<std_command_interpreter::Interpreter>();
        interpreter->SetDeveloperModeActive(true);
        CreateAndRegisterAllCommands(*interpreter, nullptr, 21, 0);
    }

    string Run(string const &line) { return tests::RunLine(*interpreter, line); }

    tests::TestKernel kernel;
    Profiler &profiler = *kernel.GetProfiler();
    VariableRegistry &registry = *kernel.GetVariableRegistry();
    AutoPtr<std_command_interpreter::Interpreter> interpreter;
};

TEST_F(FrameworkCommands, ExitAsksTheKernel)
{
    EXPECT_EQ(Run("exit"), "true");
    EXPECT_EQ(kernel.numExitRequests, 1u);
    EXPECT_FALSE(kernel.params.WaitCloseConfirmationOnExit);
    EXPECT_EQ(Run("exit -w"), "true");
    EXPECT_EQ(kernel.numExitRequests, 2u);
    EXPECT_TRUE(kernel.params.WaitCloseConfirmationOnExit);
}

TEST_F(FrameworkCommands, CrashForcesTheFirstFailureAskedFor)
{
    {
        ScriptedDialogs dialogs({platform::eDialogAnswer::e_retry, platform::eDialogAnswer::e_retry});
        EXPECT_EQ(Run("crash -throw -assert -hre"), "true");
        EXPECT_EQ(Run("crash -verify"), "true");
        auto const requests = dialogs.TakeRequests();
        ASSERT_EQ(requests.size(), 2u);
        EXPECT_EQ(requests[0].title, "Assert Failed");
        EXPECT_NE(requests[0].text.find("\n! Forced assert by crash-command."), string::npos);
        EXPECT_EQ(requests[1].title, "Assert Failed");
        EXPECT_NE(requests[1].text.find("\n! Forced verify by crash-command."), string::npos);
    }
    EXPECT_FALSE(kernel.params.EnableHardRethrowExit);
    EXPECT_EQ(tests::MessageOf<ApplicationException>([&] { Run("crash -throw -zeroptrr"); },
                                                     "source/framework/commands/crashcmd.cpp"),
              "Forced throw by crash-command.");
}

TEST_F(FrameworkCommands, CrashSetsParameters)
{
    EXPECT_EQ(Run("crash -hccl -nohccl -hre -logmwc=on"), "true");
    EXPECT_FALSE(kernel.params.EnableHardCleanupConfigLoop);
    EXPECT_TRUE(kernel.params.EnableHardRethrowExit && kernel.params.LogWinMsgOnMainWindowCleanup);
    EXPECT_EQ(Run("crash -hccl -nohre -logmwc=maybe"), "true");
    EXPECT_TRUE(kernel.params.EnableHardCleanupConfigLoop);
    EXPECT_FALSE(kernel.params.EnableHardRethrowExit);
    EXPECT_TRUE(kernel.params.LogWinMsgOnMainWindowCleanup);
}

TEST_F(FrameworkCommands, CrashDereferencesZeroPointers)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (string const option : {CrashCmd::s_szOptionZeroPtrRead, CrashCmd::s_szOptionZeroPtrWrite})
        EXPECT_DEATH(Run("crash -" + option), "");
}

TEST_F(FrameworkCommands, VarShowsAndSetsVariables)
{
    int speed = 5;
    float speedUp = 1.5f;
    bool secret = false;
    registry.RegisterVariable(VariableProxyRangeCheckedInt(&speed, 0, 10, "speed", "how fast"));
    registry.RegisterVariable(VariableProxyFloat(&speedUp, "speed-up"));
    registry.RegisterVariable(VariableProxyBool(&secret, "secret", "", true));
    string const all = "secret = false\nspeed = 5\nspeed-up = 1.5\ntrue";
    for (char const *const line : {"var", "var -i speed", "var s"})
        EXPECT_EQ(Run(line), all) << line;
    EXPECT_EQ(Run("var spee 7"), "speed = 5\nspeed-up = 1.5\ntrue");
    EXPECT_EQ(Run("var speed"), "speed = 5\ntrue");
    EXPECT_EQ(Run("var x"), "true");
    EXPECT_EQ(Run("var speed 15"), "speed = 10\ntrue");
    EXPECT_EQ(Run("var speed -i"), "Variable....: speed\nDescription.: how fast\nDevModeOnly.: false\n"
                                   "Type........: int\nRestrictions: range=[0, 10]\nTarget......: " +
                                       registry.GetVariable("speed")->GetTargetObjectName() +
                                       "\nValue.......: 10\ntrue");
    EXPECT_EQ(Run("var secret yes"), "Variable: secret is developer-mode only.\ntrue");
    EXPECT_FALSE(secret);
    kernel.params.DeveloperMode = true;
    EXPECT_EQ(Run("var secret yes"), "secret = true\ntrue");
}

TEST_F(FrameworkCommands, ProfilerSamplesACleanPeriod)
{
    string const states = "RecursionHandlerEnabled: true\nMaxExpectedStackDepth..: 2\nAutoResetThreshold.....: 0\n"
                          "IterationCount.........: 0\nElapsedSeconds.........: 0\n";
    EXPECT_EQ(Run("profiler -rh=on -auto-reset=0 -max-depth=1"), states + "Profiler running.......: false\ntrue");
    EXPECT_EQ(Run("profiler -run"), states + "Profiler running.\ntrue");
    EXPECT_EQ(Run("profiler -run -rh=x"), states + "Profiler running.......: true\ntrue");
    profiler.EnterRootNode();
    profiler.ExitRootNode();

    string const cycle = Run("profiler -stop -dump -ec -clear -reset -run");
    string const begin = "Profiler stopped.\nProfile statistics:\nRecursionHandlerEnabled.........: true\n";
    EXPECT_EQ(cycle.substr(0, begin.size()), begin);
    EXPECT_NE(cycle.find(" EntryCounts   | BlockNames\n Min  Avg  Max | \n   1    1    1 | Root\n\n"
                         "Cleaning profiler nodes.\nReseting profiler statistics.\nProfiler running.\ntrue"),
              string::npos)
        << cycle;
    EXPECT_EQ(Run("profiler -stop -stop"), "Profiler stopped.\n" + states + "Profiler running.......: false\ntrue");
}

class TestTracker : public tests::AttachedController<OrientationTracker>
{
public:
    TestTracker() { ReportHardwareCaps_ResetControls(true, true, false, false); }
    bool DoResetOrientation() override { return Note("orientation "); }
    bool DoResetHead() override { return Note("head "); }
    bool DoResetPitch() override { return false; }
    bool DoResetRoll() override { return false; }
    bool DoChangeSamplingMode(eSamplingMode) override { return true; }

    string resets;

private:
    bool Note(char const *what)
    {
        resets += what;
        return true;
    }
};

template<typename Controller>
class TestDevice : public tests::ControllerDevice<Controller>
{
public:
    TestDevice(unsigned int id, char const *description)
    {
        this->DeviceInfo().SetCreationID(id);
        this->DeviceInfo().SetDeviceDescription(description);
        this->DeviceInfo().SetCanUseDirectInput(true);
    }
    // Stops the thread before the destructor ends, because the thread calls this class.
    ~TestDevice() override { this->StopAsyncSampling(); }
};

class HIDCommands : public FrameworkCommands
{
protected:
    HIDCommands() { kernel.devices = {&mouse, &tracker}; }

    TestDevice<tests::PlainMouse> mouse{4, "wheel"};
    TestDevice<TestTracker> tracker{9, "head"};
};

TEST_F(HIDCommands, ConfigReconfiguresWithAVersionOnly)
{
    kernel.directInputConfig = {false, true, 5, true, false};
    string const present = "EnableDirectInput............: false\nUseLastVersion...............: true\n"
                           "DirectInputVersion...........: 5\nEnableFullscreenExclusiveMode: true\n"
                           "UseAtDeviceInit..............: false\ntrue";
    for (char const *line : {"hid-config", "hid-config -exclusive -nodiinit", "hid-config -version=newest"})
        EXPECT_EQ(present, Run(line));
    EXPECT_TRUE(kernel.hidReconfigs.empty());

    std::pair<char const *, DirectInputConfig> const cases[] = {
        {"hid-config -version=last", {true, true, 0, false, true}},
        {"hid-config -version=8 -exclusive", {true, false, 8, true, true}},
        {"hid-config -nodiinit -version=0", {false, true, 0, false, false}}};
    for (auto const &[line, wanted] : cases)
    {
        EXPECT_EQ("true", Run(line));
        EXPECT_EQ(wanted, kernel.hidReconfigs.back().first) << line;
        EXPECT_EQ(21u, kernel.hidReconfigs.back().second);
    }
}

TEST_F(HIDCommands, ControlListsAndFindsDevices)
{
    string const list = "Available human-interface-devices:\n4/wheel/Unknown\n\tController 0: Mouse\n"
                        "9/head/Unknown\n\tController 0: OrientationTracker\ntrue";
    EXPECT_EQ(list, Run("hid-control"));
    EXPECT_EQ(list, Run("hid-control -d=many -di"));
    EXPECT_EQ("Cannot find human-interface-device 99.\nfalse", Run("hid-control -d=99"));
    EXPECT_EQ("4/wheel/Unknown\nUsingDirectInput: true\ntrue", Run("hid-control -d=4 -di -c=1"));
    EXPECT_TRUE(mouse.IsUsingDirectInput());
    string const info = Run("hid-control -d=4 -nodi -info -c=1");
    EXPECT_EQ(0u, info.find("4/wheel/Unknown\nUsingDirectInput: false\n\tCreationID........: 4\n"));
    EXPECT_NE(string::npos, info.find("\n\tController 0: Mouse\n\t\tIsSystemMouse: false\n"));
}

TEST_F(HIDCommands, ControlUpdatesTheChosenController)
{
    string const title = "4/wheel/Unknown\nUsingDirectInput: false\nMouse-controller \n\tSyncWithSystemCursor: ";
    EXPECT_EQ(title + "true\ntrue", Run("hid-control -d=4"));
    EXPECT_EQ(title + "false\ntrue", Run("hid-control -d=4 -mouse-sync=off"));
    EXPECT_EQ("9/head/Unknown\nUsingDirectInput: false\nOrientationTracker-controller \n"
              "\tEnableHPRModifier.....: true\n\tEnableReverseModifiers: false\n\tReverseHead...........: true\n"
              "\tReversePitch..........: false\n\tReverseRoll...........: true\ntrue",
              Run("hid-control -d=9 -ot-reset -ot-reset-h -ot-mod-hpr=true -ot-mod-rev=false -ot-rev-h=true "
                  "-ot-rev-p=false -ot-rev-r=true"));
    EXPECT_EQ("orientation head ", tracker.controller.resets);
    std::ostringstream help;
    interpreter->GetExternalCommand("hid-control")->DumpHelp(help, CommandLineParser());
    EXPECT_EQ("Options:\n\t-di, use DirectInput\n\t-nodi, dont use DirectInput\nAssignments:\n"
              "\t-d=uinteger, select device by creation-id\n"
              "\t-c=uinteger, select controller by number (default = 0)\nMouse-controller arguments:\n"
              "\t-mouse-sync=boolean, synchronize absolute position with system-cursor\n"
              "OrientationTracker-controller arguments:\n\t-ot-reset, soft-reset orientation\n"
              "\t-ot-reset-h, soft-reset head\n\t-ot-mod-hpr=boolean, enable/disable hpr modifier\n"
              "\t-ot-mod-rev=boolean, enable/diable reverse modifiers\n\t-ot-rev-h=boolean, reverse head\n"
              "\t-ot-rev-p=boolean, reverse pitch\n\t-ot-rev-r=boolean, reverse roll\n"
              "Default behavior:\n\tlist available human-interface-devices & controllers\n",
              help.str());
}

TEST_F(HIDCommands, ControlLeavesALockAsItWas)
{
    mouse.StartAsyncSampling();
    Run("hid-control -d=4");
    EXPECT_FALSE(mouse.IsSampledDataLocked());
    mouse.LockSampledData();
    Run("hid-control -d=4");
    EXPECT_TRUE(mouse.IsSampledDataLocked());
}

TEST(FrameworkProfiler, SentriesNeedAnEnabledProfiler)
{
    auto const runFrame = []
    {
        QUILLMARSH_PROFILE_ITERATION();
        QUILLMARSH_PROFILE_BLOCK("outer");
        {
            QUILLMARSH_PROFILE_BLOCK("inner");
        }
        QUILLMARSH_PROFILE_BLOCK("after");
    };
    ScriptedDialogs dialogs;
    {
        FrameworkProfiler profiler;
        runFrame();
        EXPECT_EQ(profiler.GetRootNode().GetNumChildren(), 0u);
        profiler.Enable(true);
        runFrame();
        EXPECT_EQ(profiler.GetIterationCount(), 1u);
        ProfilerNode const *const outer = profiler.GetRootNode().GetChild(0);
        EXPECT_EQ(outer->GetNumChildren(), 2u);
        {
            QUILLMARSH_PROFILE_ITERATION();
            QUILLMARSH_PROFILE_BLOCK("outer");
            profiler.Enable(false);
        }
        EXPECT_EQ(profiler.GetIterationCount(), 1u);
        {
            FrameworkProfiler const second;
        }
        EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>{"FrameworkProfiler singleton already created."});
        static_cast<void>(FrameworkProfiler::InstancePtr());
        EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>{"FrameworkProfiler singleton is not created."});
        runFrame();
    }
    EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>{"Destructing non-existent FrameworkProfiler singleton."});
}

} // namespace
} // namespace quillmarsh::framework_commands
