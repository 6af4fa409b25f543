// Console commands of the workbench.
#ifndef QUILLMARSH_PLUGINS_WORKBENCH_BENCHCOMMANDS_H
#define QUILLMARSH_PLUGINS_WORKBENCH_BENCHCOMMANDS_H

#include "balls.h"

#include <quillmarsh/basetools/command.h>

namespace workbench
{

/// "bench": prints how the balls are, and resets them.
class BenchCmd : public quillmarsh::Command
{
public:
    static constexpr char const *s_szDefaultName = "bench";
    static constexpr char const *s_szOptionReset = "reset";

    /// The balls are borrowed.
    explicit BenchCmd(Balls &balls);

    bool ParseAndExecute(quillmarsh::ostream &out, quillmarsh::CommandLineParser const &parser,
                         quillmarsh::string const &commandLine) override;
    void DumpHelp(quillmarsh::ostream &out, quillmarsh::CommandLineParser const &parser) override;

private:
    Balls &balls_;
};

/// "greet": says the greeting, to somebody if a name is given.
class GreetCmd : public quillmarsh::Command
{
public:
    static constexpr char const *s_szDefaultName = "greet";
    static constexpr char const *s_szAssignTo = "to";
    static constexpr char const *s_szValueTo = "name";

    /// The settings are borrowed.
    explicit GreetCmd(BallSettings const &settings);

    bool ParseAndExecute(quillmarsh::ostream &out, quillmarsh::CommandLineParser const &parser,
                         quillmarsh::string const &commandLine) override;
    void DumpHelp(quillmarsh::ostream &out, quillmarsh::CommandLineParser const &parser) override;

private:
    BallSettings const &settings_;
};

} // namespace workbench

#endif
