// Console command that provokes failures, and sets what the kernel does about them.
#ifndef QUILLMARSH_FRAMEWORK_COMMANDS_CRASHCMD_H
#define QUILLMARSH_FRAMEWORK_COMMANDS_CRASHCMD_H

#include <quillmarsh/framework/commandtable.h>

namespace quillmarsh::framework_commands
{

/// "crash": forces a failure of the kind that is asked for, or sets the kernel's parameters of failing.
///
/// Assertions and verifications are forced in builds without assertions, too. For developers; console's thread.
class QUILLMARSH_API CrashCmd : public Command, public CommandVocabulary
{
public:
    /// @name Words
    /// @{
    static constexpr char const *s_szDefaultName = "crash";
    static constexpr char const *s_szOptionAssert = "assert";
    static constexpr char const *s_szOptionVerify = "verify";
    static constexpr char const *s_szOptionThrow = "throw";
    static constexpr char const *s_szOptionZeroPtrRead = "zeroptrr";
    static constexpr char const *s_szOptionZeroPtrWrite = "zeroptrw";
    static constexpr char const *s_szOptionHardCleanup = "hccl";
    static constexpr char const *s_szOptionNoHardCleanup = "nohccl";
    static constexpr char const *s_szOptionHardRethrow = "hre";
    static constexpr char const *s_szOptionNoHardRethrow = "nohre";
    static constexpr char const *s_szAssignLogWinMsg = "logmwc";
    static constexpr char const *s_szValueLogWinMsg = "boolean";
    /// @}

    CrashCmd();
    ~CrashCmd() override;

    /// Throws an ApplicationException when that is asked for.
    bool ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &commandLine) override;
    void DumpHelp(ostream &out, CommandLineParser const &parser) override;
    std::span<CommandWord const> GetWords() const override;
};

} // namespace quillmarsh::framework_commands

#endif
