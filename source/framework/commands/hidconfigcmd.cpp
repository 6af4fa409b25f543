#include <quillmarsh/framework/commands/hidconfigcmd.h>

#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/framework/directinputconfig.h>
#include <quillmarsh/framework/kernel.h>

namespace quillmarsh::framework_commands
{
namespace
{

using Cmd = HIDConfigCmd;

constexpr CommandValue s_version{"a version's whole number, or \"last\"",
                                 [](CommandArguments const &, string const &text)
                                 { return text == Cmd::s_szVersionLast || command_values::IsUnsigned(text); },
                                 [](CommandArguments const &, CompletionOffers &offers)
                                 { offers.Add(Cmd::s_szVersionLast, "the last version that there is"); }};

constexpr CommandWord s_words[] = {
    CommandWord::Option(Cmd::s_szOptionNoDIInit, "dont use DirectInput at hid-init\n"),
    CommandWord::Option(Cmd::s_szOptionExclusive, "enable DirectInput fullscreen exclusive mode\n"),
    CommandWord::Assignment(Cmd::s_szAssignVersion, Cmd::s_szValueVersion,
                            "specify DirectInput version, 0 disables DI\n", s_version),
};

/// Takes the version over; false when there is none that can be read.
bool ExtractVersion(CommandArguments const &arguments, DirectInputConfig &config)
{
    string text;
    if (!arguments.ReadAssignment(Cmd::s_szAssignVersion, text))
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
    CommandArguments const arguments(*this, parser, s_words);
    DirectInputConfig config;
    config.EnableFullscreenExclusiveMode = arguments.HasOption(s_szOptionExclusive);
    config.UseAtDeviceInit = !arguments.HasOption(s_szOptionNoDIInit);
    if (ExtractVersion(arguments, config))
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

std::span<CommandWord const> HIDConfigCmd::GetWords() const
{
    return s_words;
}

} // namespace quillmarsh::framework_commands
