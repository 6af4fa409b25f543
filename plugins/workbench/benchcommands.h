// Console commands of the workbench.
#ifndef QUILLMARSH_PLUGINS_WORKBENCH_BENCHCOMMANDS_H
#define QUILLMARSH_PLUGINS_WORKBENCH_BENCHCOMMANDS_H

#include "balls.h"

#include <quillmarsh/framework/commandtable.h>

namespace workbench
{

/// "bench": prints the state of the balls, or resets them.
class BenchCmd : public quillmarsh::TableCommand
{
public:
    static constexpr char const *s_szDefaultName = "bench";
    static constexpr char const *s_szOptionReset = "reset";

    /// Borrows `balls`, which must outlive the command.
    explicit BenchCmd(Balls &balls);

    std::span<quillmarsh::CommandWord const> GetWords() const override;

protected:
    bool Execute(quillmarsh::ostream &out, quillmarsh::CommandArguments const &arguments) override;
    quillmarsh::string GetDefaultBehavior() const override;

private:
    Balls &balls_;
};

/// "greet": prints the greeting, with a name if one is given.
class GreetCmd : public quillmarsh::TableCommand
{
public:
    static constexpr char const *s_szDefaultName = "greet";
    static constexpr char const *s_szAssignTo = "to";
    static constexpr char const *s_szValueTo = "name";

    /// Borrows `settings`, which must outlive the command.
    explicit GreetCmd(BallSettings const &settings);

    std::span<quillmarsh::CommandWord const> GetWords() const override;

protected:
    bool Execute(quillmarsh::ostream &out, quillmarsh::CommandArguments const &arguments) override;
    quillmarsh::string GetDefaultBehavior() const override;

private:
    BallSettings const &settings_;
};

} // namespace workbench

#endif
