// Console command that configures the group of input devices.
#ifndef QUILLMARSH_FRAMEWORK_COMMANDS_HIDCONFIGCMD_H
#define QUILLMARSH_FRAMEWORK_COMMANDS_HIDCONFIGCMD_H

#include <quillmarsh/framework/commandtable.h>

namespace quillmarsh::framework_commands
{

/// "hid-config": prints the configuration of the input devices, or has them torn down and built again with another one.
///
/// Only with a version that can be read something changes; the two options then count too. Console's thread.
class QUILLMARSH_API HIDConfigCmd : public Command, public CommandVocabulary
{
public:
    /// @name Words
    /// @{
    static constexpr char const *s_szDefaultName = "hid-config";
    static constexpr char const *s_szOptionNoDIInit = "nodiinit";
    static constexpr char const *s_szOptionExclusive = "exclusive";
    static constexpr char const *s_szAssignVersion = "version";
    static constexpr char const *s_szValueVersion = "uinteger/last";
    static constexpr char const *s_szVersionLast = "last";
    /// @}

    /// With the code that goes along with a reconfiguration; see Kernel::ApplyHIDReconfig.
    explicit HIDConfigCmd(unsigned int hidReconfigCode);
    ~HIDConfigCmd() override;

    void SetHIDReconfigCode(unsigned int code) { hidReconfigCode_ = code; }

    bool ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &commandLine) override;
    void DumpHelp(ostream &out, CommandLineParser const &parser) override;
    std::span<CommandWord const> GetWords() const override;

private:
    unsigned int hidReconfigCode_;
};

} // namespace quillmarsh::framework_commands

#endif
