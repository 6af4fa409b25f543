// Console command that shows and sets exported variables.
#ifndef QUILLMARSH_FRAMEWORK_COMMANDS_VARIABLECMD_H
#define QUILLMARSH_FRAMEWORK_COMMANDS_VARIABLECMD_H

#include <quillmarsh/framework/commandtable.h>

namespace quillmarsh
{
class VariableProxy;
class VariableRegistry;
} // namespace quillmarsh

namespace quillmarsh::framework_commands
{

/// "var": prints the variables that a name or prefix selects, or sets the one of that name.
///
/// Variables for developers are shown in every mode; only writing to them needs the kernel's developer mode. Console's
/// thread.
class QUILLMARSH_API VariableCmd : public Command, public CommandVocabulary
{
public:
    /// @name Words
    /// @{
    static constexpr char const *s_szDefaultName = "var";
    static constexpr char const *s_szOptionInfo = "i";
    /// @}

    /// Works on the kernel's registry.
    VariableCmd();
    ~VariableCmd() override;

    /// The registry to work on, borrowed; null for the kernel's.
    void SetVariableRegistry(VariableRegistry *registry);
    /// The registry in use, or null if the kernel has none.
    VariableRegistry *GetVariableRegistry() const { return registry_; }

    bool ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &commandLine) override;
    void DumpHelp(ostream &out, CommandLineParser const &parser) override;
    std::span<CommandWord const> GetWords() const override;

    /// True when the text converts to a value of the variable. Variables of types of their own take what they take.
    static bool AcceptsValue(VariableProxy const &variable, string const &text);

    /// Prints name and value in one line.
    static void DumpVar(ostream &out, VariableProxy const &variable);

private:
    VariableRegistry *registry_ = nullptr;
};

} // namespace quillmarsh::framework_commands

#endif
