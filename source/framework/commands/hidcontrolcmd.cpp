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
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/samplereadsentry.h>

namespace quillmarsh::framework_commands
{
namespace
{

using Cmd = HIDControlCmd;

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
    {CommandWord::Assignment(Cmd::s_szAssignOTModifierHPR, Cmd::s_szValueOT, "enable/disable hpr modifier\n",
                             command_values::s_boolean),
     "\tEnableHPRModifier.....: ", &OT::EnableHPRModifier, &OT::IsEnabledHPRModifier},
    {CommandWord::Assignment(Cmd::s_szAssignOTModifierReverse, Cmd::s_szValueOT, "enable/diable reverse modifiers\n",
                             command_values::s_boolean),
     "\tEnableReverseModifiers: ", &OT::EnableReverseModifiers, &OT::AreEnabledReverseModifiers},
    {CommandWord::Assignment(Cmd::s_szAssignOTReverseHead, Cmd::s_szValueOT, "reverse head\n",
                             command_values::s_boolean),
     "\tReverseHead...........: ", &OT::SetReverseHead, &OT::IsReversedHead},
    {CommandWord::Assignment(Cmd::s_szAssignOTReversePitch, Cmd::s_szValueOT, "reverse pitch\n",
                             command_values::s_boolean),
     "\tReversePitch..........: ", &OT::SetReversePitch, &OT::IsReversedPitch},
    {CommandWord::Assignment(Cmd::s_szAssignOTReverseRoll, Cmd::s_szValueOT, "reverse roll\n",
                             command_values::s_boolean),
     "\tReverseRoll...........: ", &OT::SetReverseRoll, &OT::IsReversedRoll},
};

/// The controller of the device that the same line selects.
bool IsController(CommandArguments const &line, string const &text);

void OfferControllers(CommandArguments const &line, CompletionOffers &offers);

constexpr CommandValue s_controller{"the number of one of the device's controllers", &IsController, &OfferControllers};
constexpr char s_szMouseHeading[] = "Mouse-controller arguments:\n";
constexpr char s_szTrackerHeading[] = "OrientationTracker-controller arguments:\n";

constexpr CommandWord s_words[] = {
    CommandWord::Option(Cmd::s_szOptionDI, "use DirectInput\n"),
    CommandWord::Option(Cmd::s_szOptionNoDI, "dont use DirectInput\n"),
    // The help does not mention it.
    CommandWord::Option(Cmd::s_szOptionInfo, nullptr),
    CommandWord::Assignment(Cmd::s_szAssignDevice, Cmd::s_szValueDevice, "select device by creation-id\n",
                            command_values::s_device),
    CommandWord::Assignment(Cmd::s_szAssignController, Cmd::s_szValueController,
                            "select controller by number (default = 0)\n", s_controller),
    CommandWord::Assignment(Cmd::s_szAssignMouseSync, Cmd::s_szValueMouseSync,
                            "synchronize absolute position with system-cursor\n", command_values::s_boolean)
        .Under(s_szMouseHeading),
    CommandWord::Option(Cmd::s_szOptionOTReset, "soft-reset orientation\n").Under(s_szTrackerHeading),
    CommandWord::Option(Cmd::s_szOptionOTResetHead, "soft-reset head\n").Under(s_szTrackerHeading),
    s_trackerSwitches[0].word.Under(s_szTrackerHeading),
    s_trackerSwitches[1].word.Under(s_szTrackerHeading),
    s_trackerSwitches[2].word.Under(s_szTrackerHeading),
    s_trackerSwitches[3].word.Under(s_szTrackerHeading),
    s_trackerSwitches[4].word.Under(s_szTrackerHeading),
};

bool IsController(CommandArguments const &line, string const &text)
{
    unsigned int creationID = 0;
    unsigned int number = 0;
    if (!command_values::IsUnsigned(text) || !ToValue(text, number))
        return false;
    // Without a device there is no controller to miss: the assignment of the device has its own mistake.
    HumanInterfaceDevice *const device =
        line.ReadAssignment(Cmd::s_szAssignDevice, creationID) ? command_values::FindDevice(creationID) : nullptr;
    return device == nullptr || number < device->GetNumControllers();
}

void OfferControllers(CommandArguments const &line, CompletionOffers &offers)
{
    unsigned int creationID = 0;
    HumanInterfaceDevice *const device =
        line.ReadAssignment(Cmd::s_szAssignDevice, creationID) ? command_values::FindDevice(creationID) : nullptr;
    for (unsigned int i = 0; device != nullptr && i < device->GetNumControllers(); ++i)
        offers.Add(MakeString(i), device->GetController(i)->GetControllerInterfaceName());
}

void DumpControllers(ostream &out, HumanInterfaceDevice &device, unsigned int tabs, bool withInfo)
{
    unsigned int const count = device.GetNumControllers();
    for (unsigned int index = 0; index < count; index++)
    {
        HIDController &controller = *device.GetController(index);
        out << IndentEffector(tabs) << "Controller " << index << ": " << controller.GetControllerInterfaceName() << nl;
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
    CommandArguments const arguments(*this, parser, s_words);
    unsigned int creationID = 0;
    if (!arguments.ReadAssignment(s_szAssignDevice, creationID))
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
    UpdateDevice(out, arguments, *device);
    return true;
}

HumanInterfaceDevice *HIDControlCmd::FindHID(unsigned int creationID)
{
    return command_values::FindDevice(creationID);
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

void HIDControlCmd::UpdateDevice(ostream &out, CommandArguments const &arguments, HumanInterfaceDevice &device)
{
    out << device.GetDeviceInfo().MakeShortDesc() << nl;
    if (arguments.HasOption(s_szOptionDI))
        device.SetUseDirectInput(true);
    if (arguments.HasOption(s_szOptionNoDI))
        device.SetUseDirectInput(false);
    out << "UsingDirectInput: " << MakeString(device.IsUsingDirectInput()) << nl;
    if (arguments.HasOption(s_szOptionInfo))
    {
        device.GetDeviceInfo().Dump(out, 1);
        device.DumpDeviceCaps(out, 1);
        DumpControllers(out, device, 1, true);
    }
    unsigned int number = 0;
    arguments.ReadAssignment(s_szAssignController, number);
    if (number < device.GetNumControllers())
        UpdateController(out, arguments, *device.GetController(number));
}

template<typename Controller>
bool HIDControlCmd::UpdateAs(ostream &out, CommandArguments const &arguments, HIDController &controller)
{
    auto *const typed = dynamic_cast<Controller *>(&controller);
    if (typed != nullptr)
        Update(out, arguments, *typed);
    return typed != nullptr;
}

void HIDControlCmd::UpdateController(ostream &out, CommandArguments const &arguments, HIDController &controller)
{
    static_cast<void>(UpdateAs<Keyboard>(out, arguments, controller) || UpdateAs<Mouse>(out, arguments, controller) ||
                      UpdateAs<OrientationTracker>(out, arguments, controller) ||
                      UpdateAs<PositionTracker>(out, arguments, controller) ||
                      UpdateAs<Glove>(out, arguments, controller) ||
                      UpdateAs<GameController>(out, arguments, controller));
}

void HIDControlCmd::Update(ostream &out, CommandArguments const &arguments, Mouse &mouse)
{
    bool sync = false;
    if (arguments.ReadAssignment(s_szAssignMouseSync, sync))
        mouse.ActivateSyncWithSystemCursor(sync);
    out << "Mouse-controller " << nl;
    out << "\tSyncWithSystemCursor: " << MakeString(mouse.IsActiveSyncWithSystemCursor()) << nl;
}

void HIDControlCmd::Update(ostream &out, CommandArguments const &arguments, OrientationTracker &tracker)
{
    if (arguments.HasOption(s_szOptionOTReset))
        tracker.ResetOrientation();
    if (arguments.HasOption(s_szOptionOTResetHead))
        tracker.ResetHead();
    out << "OrientationTracker-controller " << nl;
    for (TrackerSwitch const &trackerSwitch : s_trackerSwitches)
    {
        bool value = false;
        if (arguments.ReadAssignment(trackerSwitch.word.name, value))
            (tracker.*trackerSwitch.set)(value);
        out << trackerSwitch.label << MakeString((tracker.*trackerSwitch.get)()) << nl;
    }
}

// These kinds have nothing to be controlled.

void HIDControlCmd::Update(ostream &, CommandArguments const &, Keyboard &) {}

void HIDControlCmd::Update(ostream &, CommandArguments const &, PositionTracker &) {}

void HIDControlCmd::Update(ostream &, CommandArguments const &, Glove &) {}

void HIDControlCmd::Update(ostream &, CommandArguments const &, GameController &) {}

void HIDControlCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_words, "list available human-interface-devices & controllers");
}

std::span<CommandWord const> HIDControlCmd::GetWords() const
{
    return s_words;
}

} // namespace quillmarsh::framework_commands
