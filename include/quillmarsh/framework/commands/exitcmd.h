// Console command that ends the program.
#ifndef QUILLMARSH_FRAMEWORK_COMMANDS_EXITCMD_H
#define QUILLMARSH_FRAMEWORK_COMMANDS_EXITCMD_H

#include <quillmarsh/framework/commandtable.h>

namespace quillmarsh::framework_commands
{

/// "exit": asks the kernel to end the program, which it does when it gets around to it. Console's thread.
class QUILLMARSH_API ExitCmd : public Command, public CommandVocabulary
{
public:
    /// @name Words
    /// @{
    static constexpr char const *s_szDefaultName = "exit";
    static constexpr char const *s_szOptionWait = "w";
    /// @}

    ExitCmd();
    ~ExitCmd() override;

    bool ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &commandLine) override;
    void DumpHelp(ostream &out, CommandLineParser const &parser) override;
    std::span<CommandWord const> GetWords() const override;
};

} // namespace quillmarsh::framework_commands

#endif
