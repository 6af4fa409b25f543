// Console command that controls the profiler and prints its statistics.
#ifndef QUILLMARSH_FRAMEWORK_COMMANDS_PROFILERCMD_H
#define QUILLMARSH_FRAMEWORK_COMMANDS_PROFILERCMD_H

#include <quillmarsh/framework/commandtable.h>

namespace quillmarsh
{
class Profiler;
} // namespace quillmarsh

namespace quillmarsh::framework_commands
{

/// "profiler": starts and stops the profiler, sets it up, and dumps what it measured.
///
/// Stopping comes before the dump and starting behind it, so that "-stop -dump -reset -run" samples one clean period.
/// For developers; console's thread, which is the profiler's.
class QUILLMARSH_API ProfilerCmd : public Command, public CommandVocabulary
{
public:
    /// @name Words
    /// @{
    static constexpr char const *s_szDefaultName = "profiler";
    static constexpr char const *s_szOptionClear = "clear";
    static constexpr char const *s_szOptionReset = "reset";
    static constexpr char const *s_szOptionDump = "dump";
    static constexpr char const *s_szOptionEntryCounts = "ec";
    static constexpr char const *s_szOptionNodeTimes = "nt";
    static constexpr char const *s_szOptionBranchTimes = "bt";
    static constexpr char const *s_szOptionNodePercentages = "np";
    static constexpr char const *s_szOptionRun = "run";
    static constexpr char const *s_szOptionStop = "stop";
    static constexpr char const *s_szAssignRecursionHandler = "rh";
    static constexpr char const *s_szValueRecursionHandler = "boolean";
    static constexpr char const *s_szAssignAutoReset = "auto-reset";
    static constexpr char const *s_szValueAutoReset = "uinteger";
    static constexpr char const *s_szAssignMaxDepth = "max-depth";
    static constexpr char const *s_szValueMaxDepth = "uinteger";
    /// @}

    /// Works on the kernel's profiler.
    ProfilerCmd();
    ~ProfilerCmd() override;

    /// The profiler to work on, borrowed; null for the kernel's.
    void SetProfiler(Profiler *profiler);
    /// The profiler in use, or null if the kernel has none.
    Profiler *GetProfiler() const { return profiler_; }

    bool ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &commandLine) override;
    void DumpHelp(ostream &out, CommandLineParser const &parser) override;
    std::span<CommandWord const> GetWords() const override;

private:
    Profiler *profiler_ = nullptr;
};

} // namespace quillmarsh::framework_commands

#endif
