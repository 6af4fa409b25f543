// Console command that switches vertical synchronisation.
#ifndef QUILLMARSH_FRAMEWORK_COMMANDS_VSYNCCMD_H
#define QUILLMARSH_FRAMEWORK_COMMANDS_VSYNCCMD_H

#include <quillmarsh/framework/commandtable.h>

namespace quillmarsh::framework_commands
{

/// "vsync": switches waiting for the vertical retrace, and how such a switch takes effect; then prints both.
///
/// Without dynamic updates the switch is a reconfiguration, and the old state is still printed. "on" wins against "off".
/// Without an active video renderer the command does nothing. Console's thread.
class QUILLMARSH_API VSyncCmd : public Command, public CommandVocabulary
{
public:
    /// @name Words
    /// @{
    static constexpr char const *s_szDefaultName = "vsync";
    static constexpr char const *s_szOptionOn = "on";
    static constexpr char const *s_szOptionOff = "off";
    static constexpr char const *s_szAssignDynamic = "dynamic";
    static constexpr char const *s_szValueDynamic = "boolean";
    /// @}

    VSyncCmd();
    ~VSyncCmd() override;

    bool ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &commandLine) override;
    void DumpHelp(ostream &out, CommandLineParser const &parser) override;
    std::span<CommandWord const> GetWords() const override;
};

} // namespace quillmarsh::framework_commands

#endif
