#include <quillmarsh/basetools/commandlineparser.h>
#include <quillmarsh/devices/mouse.h>
#include <quillmarsh/devices/orientationtracker.h>
#include <quillmarsh/framework/commands/hidconfigcmd.h>
#include <quillmarsh/framework/commands/hidcontrolcmd.h>

#include "tests/support/controller_device.h"
#include "tests/support/test_kernel.h"

#include <gtest/gtest.h>

namespace quillmarsh::framework_commands
{
namespace
{

class TestMouse : public tests::AttachedController<Mouse>
{
public:
    TestMouse() : AttachedController(false) {}
    void OnRelativeModeChanged() override {}
    void OnSyncWithSystemCursorChanged() override {}
};

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

class HIDCommands : public testing::Test
{
protected:
    HIDCommands() { kernel.devices = {&mouse, &tracker}; }

    static string Run(Command &command, string const &line)
    {
        CommandLineParser parser;
        EXPECT_TRUE(parser.Parse(line)) << line;
        std::ostringstream out;
        bool const result = command.ParseAndExecute(out, parser, line);
        return out.str() + (result ? "true" : "false");
    }

    tests::TestKernel kernel;
    TestDevice<TestMouse> mouse{4, "wheel"};
    TestDevice<TestTracker> tracker{9, "head"};
    HIDConfigCmd config{21};
    HIDControlCmd control;
};

TEST_F(HIDCommands, ConfigReconfiguresWithAVersionOnly)
{
    kernel.directInputConfig = {false, true, 5, true, false};
    string const present = "EnableDirectInput............: false\nUseLastVersion...............: true\n"
                           "DirectInputVersion...........: 5\nEnableFullscreenExclusiveMode: true\n"
                           "UseAtDeviceInit..............: false\ntrue";
    for (char const *line : {"hid-config", "hid-config -exclusive -nodiinit", "hid-config -version=newest"})
        EXPECT_EQ(present, Run(config, line));
    EXPECT_TRUE(kernel.hidReconfigs.empty());

    std::pair<char const *, DirectInputConfig> const cases[] = {
        {"hid-config -version=last", {true, true, 0, false, true}},
        {"hid-config -version=8 -exclusive", {true, false, 8, true, true}},
        {"hid-config -nodiinit -version=0", {false, true, 0, false, false}}};
    for (auto const &[line, wanted] : cases)
    {
        EXPECT_EQ("true", Run(config, line));
        EXPECT_EQ(wanted, kernel.hidReconfigs.back().first) << line;
        EXPECT_EQ(21u, kernel.hidReconfigs.back().second);
    }
    config.SetHIDReconfigCode(3);
    Run(config, "hid-config -version=last");
    EXPECT_EQ(3u, kernel.hidReconfigs.back().second);
}

TEST_F(HIDCommands, ControlListsAndFindsDevices)
{
    string const list = "Available human-interface-devices:\n4/wheel/Unknown\n\tController 0: Mouse\n"
                        "9/head/Unknown\n\tController 0: OrientationTracker\ntrue";
    EXPECT_EQ(list, Run(control, "hid-control"));
    EXPECT_EQ(list, Run(control, "hid-control -d=many -di"));
    EXPECT_EQ("Cannot find human-interface-device 99.\nfalse", Run(control, "hid-control -d=99"));
    EXPECT_EQ("4/wheel/Unknown\nUsingDirectInput: true\ntrue", Run(control, "hid-control -d=4 -di -c=1"));
    EXPECT_TRUE(mouse.IsUsingDirectInput());
    string const info = Run(control, "hid-control -d=4 -nodi -info -c=1");
    EXPECT_EQ(0u, info.find("4/wheel/Unknown\nUsingDirectInput: false\n\tCreationID........: 4\n"));
    EXPECT_NE(string::npos, info.find("\n\tController 0: Mouse\n\t\tIsSystemMouse: false\n"));
}

TEST_F(HIDCommands, ControlUpdatesTheChosenController)
{
    string const title = "4/wheel/Unknown\nUsingDirectInput: false\nMouse-controller \n\tSyncWithSystemCursor: ";
    EXPECT_EQ(title + "true\ntrue", Run(control, "hid-control -d=4"));
    EXPECT_EQ(title + "false\ntrue", Run(control, "hid-control -d=4 -mouse-sync=off"));
    EXPECT_EQ("9/head/Unknown\nUsingDirectInput: false\nOrientationTracker-controller \n"
              "\tEnableHPRModifier.....: true\n\tEnableReverseModifiers: false\n\tReverseHead...........: true\n"
              "\tReversePitch..........: false\n\tReverseRoll...........: true\ntrue",
              Run(control, "hid-control -d=9 -ot-reset -ot-reset-h -ot-mod-hpr=true -ot-mod-rev=false -ot-rev-h=true "
                           "-ot-rev-p=false -ot-rev-r=true"));
    EXPECT_EQ("orientation head ", tracker.controller.resets);
    std::ostringstream help;
    control.DumpHelp(help, CommandLineParser());
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
    Run(control, "hid-control -d=4");
    EXPECT_FALSE(mouse.IsSampledDataLocked());
    mouse.LockSampledData();
    Run(control, "hid-control -d=4");
    EXPECT_TRUE(mouse.IsSampledDataLocked());
}

} // namespace
} // namespace quillmarsh::framework_commands
