// Console command that lists the input devices, and controls one of them.
#ifndef QUILLMARSH_FRAMEWORK_COMMANDS_HIDCONTROLCMD_H
#define QUILLMARSH_FRAMEWORK_COMMANDS_HIDCONTROLCMD_H

#include <quillmarsh/framework/commandtable.h>

namespace quillmarsh
{
class GameController;
class Glove;
class HIDController;
class HumanInterfaceDevice;
class Keyboard;
class Mouse;
class OrientationTracker;
class PositionTracker;
} // namespace quillmarsh

namespace quillmarsh::framework_commands
{

/// "hid-control": lists the input devices and their controllers, or shows and changes the device with a creation id.
///
/// A device that a thread samples is locked meanwhile. Console's thread, which is the one that reads the devices.
class QUILLMARSH_API HIDControlCmd : public Command, public CommandVocabulary
{
public:
    /// @name Words
    /// @{
    static constexpr char const *s_szDefaultName = "hid-control";
    static constexpr char const *s_szOptionDI = "di";
    static constexpr char const *s_szOptionNoDI = "nodi";
    static constexpr char const *s_szOptionInfo = "info";
    static constexpr char const *s_szAssignDevice = "d";
    static constexpr char const *s_szValueDevice = "uinteger";
    static constexpr char const *s_szAssignController = "c";
    static constexpr char const *s_szValueController = "uinteger";
    static constexpr char const *s_szAssignMouseSync = "mouse-sync";
    static constexpr char const *s_szValueMouseSync = "boolean";
    static constexpr char const *s_szOptionOTReset = "ot-reset";
    static constexpr char const *s_szOptionOTResetHead = "ot-reset-h";
    static constexpr char const *s_szAssignOTModifierHPR = "ot-mod-hpr";
    static constexpr char const *s_szAssignOTModifierReverse = "ot-mod-rev";
    static constexpr char const *s_szAssignOTReverseHead = "ot-rev-h";
    static constexpr char const *s_szAssignOTReversePitch = "ot-rev-p";
    static constexpr char const *s_szAssignOTReverseRoll = "ot-rev-r";
    static constexpr char const *s_szValueOT = "boolean";
    /// @}

    HIDControlCmd();
    ~HIDControlCmd() override;

    /// False, behind a message, when no device has the wanted creation id.
    bool ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &commandLine) override;
    void DumpHelp(ostream &out, CommandLineParser const &parser) override;
    std::span<CommandWord const> GetWords() const override;

private:
    static HumanInterfaceDevice *FindHID(unsigned int creationID);
    static void ListDevices(ostream &out);
    static void UpdateDevice(ostream &out, CommandArguments const &arguments, HumanInterfaceDevice &device);
    static void UpdateController(ostream &out, CommandArguments const &arguments, HIDController &controller);

    static void Update(ostream &out, CommandArguments const &arguments, Keyboard &keyboard);
    static void Update(ostream &out, CommandArguments const &arguments, Mouse &mouse);
    static void Update(ostream &out, CommandArguments const &arguments, OrientationTracker &tracker);
    static void Update(ostream &out, CommandArguments const &arguments, PositionTracker &tracker);
    static void Update(ostream &out, CommandArguments const &arguments, Glove &glove);
    static void Update(ostream &out, CommandArguments const &arguments, GameController &gameController);

    template<typename Controller>
    static bool UpdateAs(ostream &out, CommandArguments const &arguments, HIDController &controller);
};

} // namespace quillmarsh::framework_commands

#endif
