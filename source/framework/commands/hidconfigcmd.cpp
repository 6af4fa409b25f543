#include <quillmarsh/framework/commands/hidconfigcmd.h>

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/commandtable.h>
#include <quillmarsh/framework/directinputconfig.h>
#include <quillmarsh/framework/kernel.h>

namespace quillmarsh::framework_commands
{
namespace
{

using Cmd = HIDConfigCmd;

constexpr CommandWord s_words[] = {
    CommandWord::Option(Cmd::s_szOptionNoDIInit, "dont use DirectInput at hid-init\n"),
    CommandWord::Option(Cmd::s_szOptionExclusive, "enable DirectInput fullscreen exclusive mode\n"),
    CommandWord::Assignment(Cmd::s_szAssignVersion, Cmd::s_szValueVersion,
                            "specify DirectInput version, 0 disables DI\n"),
};

/// Takes the version over; false when there is none that can be read.
bool ExtractVersion(CommandLineParser const &parser, DirectInputConfig &config)
{
    string text;
    if (!parser.GetAssignment(Cmd::s_szAssignVersion, text))
        return false;
    if (text == Cmd::s_szVersionLast)
        return true;
    unsigned int version = 0;
    if (!ToValue(text, version))
        return false;
    if (version > 0)
    {
        config.UseLastVersion = false;
        config.DirectInputVersion = version;
    }
    else
    {
        config.EnableDirectInput = false;
    }
    return true;
}

} // namespace

HIDConfigCmd::HIDConfigCmd(unsigned int hidReconfigCode) : hidReconfigCode_(hidReconfigCode)
{
    SetDefaultName(s_szDefaultName);
    SetShortDesc("Configure human-interface-device subsystems");
}

HIDConfigCmd::~HIDConfigCmd() = default;

bool HIDConfigCmd::ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &)
{
    DirectInputConfig config;
    config.EnableFullscreenExclusiveMode = parser.GetOption(s_szOptionExclusive);
    config.UseAtDeviceInit = !parser.GetOption(s_szOptionNoDIInit);
    if (ExtractVersion(parser, config))
    {
        Kernel::Instance().ApplyHIDReconfig(config, hidReconfigCode_);
        return true;
    }
    Kernel::Instance().GetDirectInputConfig(config);
    config.Dump(out, 0);
    return true;
}

void HIDConfigCmd::DumpHelp(ostream &out, CommandLineParser const &parser)
{
    DumpCommandWords(out, parser, s_words, "print parameters");
}

} // namespace quillmarsh::framework_commands
