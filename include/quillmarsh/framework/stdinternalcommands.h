// Commands that the standard interpreter creates for itself.
#ifndef QUILLMARSH_FRAMEWORK_STDINTERNALCOMMANDS_H
#define QUILLMARSH_FRAMEWORK_STDINTERNALCOMMANDS_H

#include <quillmarsh/framework/commandtable.h>
#include <quillmarsh/framework/stdcommandinterpreter.h>

namespace quillmarsh::std_command_interpreter
{

/// "dump-cmdline": switches on and off that lines are printed as they were expanded and parsed. For developers.
/// Interpreter's thread.
class QUILLMARSH_API DumpPreprocessedCommandLineCmd : public InternalCommand, public CommandVocabulary
{
public:
    /// @name Words
    /// @{
    static constexpr char const *s_szDefaultName = "dump-cmdline";
    static constexpr char const *s_szOptionOn = "on";
    static constexpr char const *s_szOptionOff = "off";
    /// @}

    /// The interpreter is borrowed.
    explicit DumpPreprocessedCommandLineCmd(Interpreter &interpreter);
    ~DumpPreprocessedCommandLineCmd() override;

    bool ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &commandLine) override;
    void DumpHelp(ostream &out, CommandLineParser const &parser) override;
    std::span<CommandWord const> GetWords() const override;
};

/// "list-commands": lists the commands of both registers; commands for developers are listed in every mode.
/// Interpreter's thread.
class QUILLMARSH_API ListCommandsCmd : public InternalCommand, public CommandVocabulary
{
public:
    /// @name Words
    /// @{
    static constexpr char const *s_szDefaultName = "list-commands";
    static constexpr char const *s_szOptionInternal = "int";
    static constexpr char const *s_szOptionExternal = "ext";
    /// @}

    /// The interpreter is borrowed.
    explicit ListCommandsCmd(Interpreter &interpreter);
    ~ListCommandsCmd() override;

    bool ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &commandLine) override;
    void DumpHelp(ostream &out, CommandLineParser const &parser) override;
    std::span<CommandWord const> GetWords() const override;
};

/// "help": prints the help of a command, or sets the global help switch. Interpreter's thread.
class QUILLMARSH_API HelpCmd : public InternalCommand, public CommandVocabulary
{
public:
    /// @name Words
    /// @{
    static constexpr char const *s_szDefaultName = "help";
    static constexpr char const *s_szAssignSwitch = "switch";
    static constexpr char const *s_szValueSwitch = "string";
    /// @}

    /// The interpreter is borrowed.
    explicit HelpCmd(Interpreter &interpreter);
    ~HelpCmd() override;

    bool ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &commandLine) override;
    void DumpHelp(ostream &out, CommandLineParser const &parser) override;
    std::span<CommandWord const> GetWords() const override;

private:
    void DumpGlobalHelpSwitch(ostream &out, CommandLineParser const &parser) const;
};

/// "alias": lists, sets and removes aliases. An alias of its own name cannot hide it. Interpreter's thread.
class QUILLMARSH_API AliasCmd : public InternalCommand, public CommandVocabulary
{
public:
    /// @name Words
    /// @{
    static constexpr char const *s_szDefaultName = "alias";
    static constexpr char const *s_szOptionClear = "clear";
    static constexpr char const *s_szAssignAlias = "alias";
    static constexpr char const *s_szValueAlias = "target";
    /// @}

    /// The interpreter is borrowed.
    explicit AliasCmd(Interpreter &interpreter);
    ~AliasCmd() override;

    bool ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &commandLine) override;
    void DumpHelp(ostream &out, CommandLineParser const &parser) override;
    std::span<CommandWord const> GetWords() const override;

private:
    bool SetAlias(ostream &out, string const &alias, string const &target);
};

/// "console-buffers": clears the console's buffers, and sets their limits. Interpreter's thread.
class QUILLMARSH_API ConsoleBuffersCmd : public InternalCommand, public CommandVocabulary
{
public:
    /// @name Words
    /// @{
    static constexpr char const *s_szDefaultName = "console-buffers";
    static constexpr char const *s_szOptionClearOutput = "clear-output";
    static constexpr char const *s_szOptionClearHistory = "clear-history";
    static constexpr char const *s_szAssignMaxOutput = "max-output";
    static constexpr char const *s_szValueMaxOutput = "uinteger";
    static constexpr char const *s_szAssignMaxHistory = "max-history";
    static constexpr char const *s_szValueMaxHistory = "uinteger";
    /// @}

    /// The interpreter is borrowed.
    explicit ConsoleBuffersCmd(Interpreter &interpreter);
    ~ConsoleBuffersCmd() override;

    bool ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &commandLine) override;
    void DumpHelp(ostream &out, CommandLineParser const &parser) override;
    std::span<CommandWord const> GetWords() const override;
};

/// "history": prints the latest commands. Interpreter's thread.
class QUILLMARSH_API HistoryCmd : public InternalCommand, public CommandVocabulary
{
public:
    /// @name Words
    /// @{
    static constexpr char const *s_szDefaultName = "history";
    static constexpr char const *s_szOptionAll = "a";
    /// @}

    /// The interpreter is borrowed.
    explicit HistoryCmd(Interpreter &interpreter);
    ~HistoryCmd() override;

    bool ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &commandLine) override;
    void DumpHelp(ostream &out, CommandLineParser const &parser) override;
    std::span<CommandWord const> GetWords() const override;

    /// Sets the number of commands that are printed unless all are asked for; 10 at first, at least 1.
    void SetDefaultNumPrinted(unsigned int number);
    /// Number of commands that are printed unless all are asked for.
    unsigned int GetDefaultNumPrinted() const { return defaultNumPrinted_; }

private:
    unsigned int defaultNumPrinted_ = 10;
};

} // namespace quillmarsh::std_command_interpreter

#endif
