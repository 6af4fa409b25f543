#include <quillmarsh/framework/commands/hidcontrolcmd.h>

#include <quillmarsh/basetools/outputstream.h>
#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/devices/gamecontroller.h>
#include <quillmarsh/devices/glove.h>
#include <quillmarsh/devices/keyboard.h>
#include <quillmarsh/devices/mouse.h>
#include <quillmarsh/devices/orientationtracker.h>
#include <quillmarsh/devices/positiontracker.h>
#include <quillmarsh/framework/commandtable.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/samplereadsentry.h>

namespace quillmarsh::framework_commands
{
namespace
{

using Cmd = HIDControlCmd;

constexpr CommandWord s_options[] = {
    CommandWord::Option(Cmd::s_szOptionDI, "use DirectInput\n"),
    CommandWord::Option(Cmd::s_szOptionNoDI, "dont use DirectInput\n"),
};

constexpr CommandWord s_assignments[] = {
    CommandWord::Assignment(Cmd::s_szAssignDevice, Cmd::s_szValueDevice, "select device by creation-id\n"),
    CommandWord::Assignment(Cmd::s_szAssignController, Cmd::s_szValueController,
                            "select controller by number (default = 0)\n"),
};

constexpr CommandWord s_mouseWords[] = {
    CommandWord::Assignment(Cmd::s_szAssignMouseSync, Cmd::s_szValueMouseSync,
                            "synchronize absolute position with system-cursor\n"),
};

/// A switch of orientation trackers, with its label in the command's output.
struct TrackerSwitch
{
    CommandWord word;
    char const *label;
    void (OrientationTracker::*set)(bool);
    bool (OrientationTracker::*get)() const;
};

using OT = OrientationTracker;

constexpr TrackerSwitch s_trackerSwitches[] = {
    {CommandWord::Assignment(Cmd::s_szAssignOTModifierHPR, Cmd::s_szValueOT, "enable/disable hpr modifier\n"),
     "\tEnableHPRModifier.....: ", &OT::EnableHPRModifier, &OT::IsEnabledHPRModifier},
    {CommandWord::Assignment(Cmd::s_szAssignOTModifierReverse, Cmd::s_szValueOT, "enable/diable reverse modifiers\n"),
     "\tEnableReverseModifiers: ", &OT::EnableReverseModifiers, &OT::AreEnabledReverseModifiers},
    {CommandWord::Assignment(Cmd::s_szAssignOTReverseHead, Cmd::s_szValueOT, "reverse head\n"),
     "\tReverseHead...........: ", &OT::SetReverseHead, &OT::IsReversedHead},
    {CommandWord::Assignment(Cmd::s_szAssignOTReversePitch, Cmd::s_szValueOT, "reverse pitch\n"),
     "\tReversePitch..........: ", &OT::SetReversePitch, &OT::IsReversedPitch},
    {CommandWord::Assignment(Cmd::s_szAssignOTReverseRoll, Cmd::s_szValueOT, "reverse roll\n"),
     "\tReverseRoll...........: ", &OT::SetReverseRoll, &OT::IsReversedRoll},
};

constexpr CommandWord s_trackerWords[] = {
    CommandWord::Option(Cmd::s_szOptionOTReset, "soft-reset orientation\n"),
    CommandWord::Option(Cmd::s_szOptionOTResetHead, "soft-reset head\n"),
    s_trackerSwitches[0].word,
    s_trackerSwitches[1].word,
    s_trackerSwitches[2].word,
    s_trackerSwitches[3].word,
    s_trackerSwitches[4].word,
};

void DumpControllers(ostream &out, HumanInterfaceDevice &device, unsigned int tabs, bool withInfo)
{
    unsigned int const count = device.GetNumControllers();
    for (unsigned int index = 0; index < count; index++)
    {
        HIDController &controller = *device.GetController(index);
        out << TabEffector(tabs) << "Controller " << index << ": " << controller.GetControllerInterfaceName() << nl;
        if (withInfo)
            controller.DumpControllerInfo(out, tabs + 1);
    }
}

} // namespace

HIDControlCmd::HIDControlCmd()
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Control human-interface-devices & associated controllers");
}

HIDControlCmd::~HIDControlCmd() = default;

bool HIDControlCmd::ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &)
{
    unsigned int creationID = 0;
    if (!parser.ExtractArgumentUInteger(s_szAssignDevice, creationID))
    {
        ListDevices(out);
        return true;
    }
    HumanInterfaceDevice *const device = FindHID(creationID);
    if (device == nullptr)
    {
        out << SetOutputTypeEffector(OutputStream::e_typeError) << "Cannot find human-interface-device " << creationID
            << ".\n"
            << SetOutputTypeEffector(OutputStream::e_typeInfo);
        return false;
    }
    // A lock that somebody else left on stays.
    AsyncSampleReadSentry const sentry(*device, !device->IsSampledDataLocked());
    UpdateDevice(out, parser, *device);
    return true;
}

HumanInterfaceDevice *HIDControlCmd::FindHID(unsigned int creationID)
{
    Kernel &kernel = Kernel::Instance();
    unsigned int const count = kernel.GetNumHumanInterfaceDevices();
    for (unsigned int index = 0; index < count; index++)
    {
        HumanInterfaceDevice *const device = kernel.GetHumanInterfaceDevice(index);
        if (device != nullptr && device->GetDeviceInfo().GetCreationID() == creationID)
            return device;
    }
    return nullptr;
}

void HIDControlCmd::ListDevices(ostream &out)
{
    Kernel &kernel = Kernel::Instance();
    out << "Available human-interface-devices:\n";
    unsigned int const count = kernel.GetNumHumanInterfaceDevices();
    for (unsigned int index = 0; index < count; index++)
    {
        HumanInterfaceDevice *const device = kernel.GetHumanInterfaceDevice(index);
        if (device == nullptr)
            continue;
        out << device->GetDeviceInfo().MakeShortDesc() << nl;
        DumpControllers(out, *device, 1, false);
    }
}

void HIDControlCmd::UpdateDevice(ostream &out, CommandLineParser const &parser, HumanInterfaceDevice &device)
{
    out << device.GetDeviceInfo().MakeShortDesc() << nl;
    if (parser.GetOption(s_szOptionDI))
        device.SetUseDirectInput(true);
    if (parser.GetOption(s_szOptionNoDI))
        device.SetUseDirectInput(false);
    out << "UsingDirectInput: " << MakeString(device.IsUsingDirectInput()) << nl;
    if (parser.GetOption(s_szOptionInfo))
    {
        device.GetDeviceInfo().Dump(out, 1);
        device.DumpDeviceCaps(out, 1);
        DumpControllers(out, device, 1, true);
    }
    unsigned int number = 0;
    parser.ExtractArgumentUInteger(s_szAssignController, number);
    if (number < device.GetNumControllers())
        UpdateController(out, parser, *device.GetController(number));
}

template<typename Controller>
bool HIDControlCmd::UpdateAs(ostream &out, CommandLineParser const &parser, HIDController &controller)
{
    auto *const typed = dynamic_cast<Controller *>(&controller);
    if (typed != nullptr)
        Update(out, parser, *typed);
    return typed != nullptr;
}

void HIDControlCmd::UpdateController(ostream &out, CommandLineParser const &parser, HIDController &controller)
{
    static_cast<void>(UpdateAs<Keyboard>(out, parser, controller) || UpdateAs<Mouse>(out, parser, controller) ||
                      UpdateAs<OrientationTracker>(out, parser, controller) ||
                      UpdateAs<PositionTracker>(out, parser, controller) || UpdateAs<Glove>(out, parser, controller) ||
                      UpdateAs<GameController>(out, parser, controller));
}

void HIDControlCmd::Update(ostream &out, CommandLineParser const &parser, Mouse &mouse)
{
    bool sync = false;
    if (parser.ExtractArgumentBool(s_szAssignMouseSync, sync))
        mouse.ActivateSyncWithSystemCursor(sync);
    out << "Mouse-controller " << nl;
    out << "\tSyncWithSystemCursor: " << MakeString(mouse.IsActiveSyncWithSystemCursor()) << nl;
}

void HIDControlCmd::Update(ostream &out, CommandLineParser const &parser, OrientationTracker &tracker)
{
    if (parser.GetOption(s_szOptionOTReset))
        tracker.ResetOrientation();
    if (parser.GetOption(s_szOptionOTResetHead))
        tracker.ResetHead();
    out << "OrientationTracker-controller " << nl;
    for (TrackerSwitch const &trackerSwitch : s_trackerSwitches)
    {
        bool value = false;
        if (parser.ExtractArgumentBool(trackerSwitch.word.name, value))
            (tracker.*trackerSwitch.set)(value);
        out << trackerSwitch.label << MakeString((tracker.*trackerSwitch.get)()) << nl;
    }
}

// These kinds have nothing to be controlled.

void HIDControlCmd::Update(ostream &, CommandLineParser const &, Keyboard &) {}

void HIDControlCmd::Update(ostream &, CommandLineParser const &, PositionTracker &) {}

void HIDControlCmd::Update(ostream &, CommandLineParser const &, Glove &) {}

void HIDControlCmd::Update(ostream &, CommandLineParser const &, GameController &) {}

void HIDControlCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandSection(out, parser, "Options:\n", s_options);
    DumpCommandSection(out, parser, "Assignments:\n", s_assignments);
    DumpCommandSection(out, parser, "Mouse-controller arguments:\n", s_mouseWords);
    DumpCommandSection(out, parser, "OrientationTracker-controller arguments:\n", s_trackerWords);
    DumpCommandWords(out, parser, {}, "list available human-interface-devices & controllers");
}

} // namespace quillmarsh::framework_commands
