// The working interpreter of the console: commands, aliases, completion, help.
#ifndef QUILLMARSH_FRAMEWORK_STDCOMMANDINTERPRETER_H
#define QUILLMARSH_FRAMEWORK_STDCOMMANDINTERPRETER_H

#include <quillmarsh/basetools/command.h>
#include <quillmarsh/basetools/commandinterpreter.h>
#include <quillmarsh/basetools/commandlineparser.h>

#include <functional>
#include <map>
#include <typeinfo>
#include <utility>
#include <vector>

namespace quillmarsh
{
class ConsoleBuffers;
} // namespace quillmarsh

namespace quillmarsh::std_command_interpreter
{

/// Interprets console lines with two registers of commands: internal ones, which it creates itself (see
/// stdinternalcommands.h), and external ones, which the framework and the application register.
///
/// A line is expanded by at most one alias, parsed, and handed to the command of its name, internal ones first. What is
/// wrong with a line is written to the stream; nothing is thrown for bad input. The line goes into the history of the
/// console's buffers as it was typed.
///
/// Both registers own their commands. They are searched by their commands' current names: Rehash() after a command was
/// renamed puts it in its place in listings. An interpreter belongs to one thread at a time.
class QUILLMARSH_API Interpreter : public CommandInterpreter, NoCopy
{
public:
    /// Needs a kernel, whose console buffers and developer mode it takes.
    Interpreter();
    ~Interpreter() override;

    /// @name Lines
    /// @{

    /// "Standard-command-interpreter v1.0".
    string GetInterpreterDesc() const override;

    /// Runs one line. True when a command did its work, or when help was printed for one. What a command throws passes
    /// to the caller.
    bool InterpretCommandLine(string const &line, ostream &out) override;

    /// Completes a command word by the names of commands and aliases. With several that match they are listed on `out`
    /// and the text that they share is the completion. False for a line that is the same as at the last call.
    bool CompleteCommandLine(string const &line, string &completed, ostream &out) override;

    /// @}
    /// @name Settings
    /// @{

    /// Buffers for the history of commands, borrowed; null for the kernel's.
    void SetConsoleBuffers(ConsoleBuffers *buffers);
    /// The buffers in use, or null if the kernel has none.
    ConsoleBuffers *GetConsoleBuffers() const { return consoleBuffers_; }

    /// Whether commands for developers run. The kernel's parameter is read at construction only.
    void SetDeveloperModeActive(bool active);
    bool IsActiveDeveloperMode() const { return isDeveloperModeActive_; }

    /// Whether each line is printed as it was expanded and parsed.
    void SetDebugDumpPreprocessedCommandLine(bool dump);
    bool GetDebugDumpPreprocessedCommandLine() const { return debugDumpPreprocessedCommandLine_; }

    /// Option with which any command prints its help instead of running; "h" by default, empty for none.
    void SetGlobalHelpSwitch(string const &helpSwitch);
    string const &GetGlobalHelpSwitch() const { return globalHelpSwitch_; }

    /// What is said to an unknown command, ahead of the hint at the command that lists them.
    void SetCommandNotRecognizedMessage(string const &message);
    string const &GetCommandNotRecognizedMessage() const { return notRecognizedBaseMessage_; }

    /// Is asked about each line that is about to run a command; false refuses the line, and its result is false.
    using LineInspector = std::function<bool(Command const &command, CommandLineParser const &parser)>;
    /// Sets the inspector; an empty one, the default, lets all lines run.
    void SetLineInspector(LineInspector inspector);

    /// @}
    /// @name Aliases
    /// A line that begins with an alias as a whole word is run with the alias' target in its place.
    /// @{

    /// Sets or replaces an alias. An empty target removes it, and an empty alias does nothing.
    void RegisterAlias(string const &alias, string const &target);
    void UnregisterAlias(string const &alias);
    void UnregisterAllAliases();
    /// False, and an empty target, when there is no such alias.
    bool FindAlias(string const &alias, string &target) const;
    /// Pairs of alias and target, sorted by alias.
    void GetAliases(std::vector<std::pair<string, string>> &aliases) const;

    /// @}
    /// @name External commands
    /// @{

    /// Takes the command over; null is ignored. Names are not tested: the first of equal ones is found.
    void RegisterExternalCommand(Command *command);
    /// Gives the commands back to the caller, who owns them then.
    void UnregisterAllExternalCommands();
    /// True when the command was there.
    bool UnregisterExternalCommand(Command &command);
    /// Takes out all commands of that name; returns their number.
    unsigned int UnregisterExternalCommand(string const &name);
    void DeleteAllExternalCommands();
    /// True when the command was there.
    bool DeleteExternalCommand(Command &command);
    /// Deletes all commands of that name; returns their number.
    unsigned int DeleteExternalCommand(string const &name);

    unsigned int GetNumExternalCommands() const;
    /// Command by index. Asserts "Index out of range." past the end, and gives null then.
    Command *GetExternalCommand(unsigned int index) const;
    /// Same as FindExternalCommand.
    Command *GetExternalCommand(string const &name) const;
    /// First external command whose current name is the text, or null.
    Command *FindExternalCommand(string const &name) const;

    /// @}
    /// @name Internal commands
    /// As for external ones.
    /// @{
    void RegisterInternalCommand(Command *command);
    void UnregisterAllInternalCommands();
    bool UnregisterInternalCommand(Command &command);
    unsigned int UnregisterInternalCommand(string const &name);
    void DeleteAllInternalCommands();
    bool DeleteInternalCommand(Command &command);
    unsigned int DeleteInternalCommand(string const &name);
    unsigned int GetNumInternalCommands() const;
    Command *GetInternalCommand(unsigned int index) const;
    Command *GetInternalCommand(string const &name) const;
    Command *FindInternalCommand(string const &name) const;
    /// @}

    /// @name Both registers
    /// @{

    /// Same as FindCommand.
    Command *GetCommand(string const &name) const;
    /// Internal command of that name, else the external one, else null.
    Command *FindCommand(string const &name) const;
    /// First command of exactly that run-time type, or null.
    static Command *FindCommand(std::vector<Command *> const &commands, std::type_info const &type);

    /// Sorts both registers by current names, and runs MakeMessages().
    void Rehash();
    /// Composes the message for unknown commands.
    void MakeMessages();

    /// Prints names, kind and summary of a command, and its help.
    void DumpCommandHelp(ostream &out, CommandLineParser const &parser, Command &command);

    /// @}

private:
    using Register = std::vector<Command *>;
    using AliasMap = std::map<string, string, std::less<>>;

    void RegisterCommand(Register &commands, Command *command);
    bool RemoveCommand(Register &commands, Command &command, bool deleteIt);
    unsigned int RemoveCommands(Register &commands, string const &name, bool deleteThem);

    bool ExpandAliasPrefix(string const &line, string &expanded) const;
    Command *PrepareCommand(string const &expanded, ostream &out, bool &result);
    Command *SelectCommand(ostream &out, bool &result);
    std::vector<string> CollectCompletions(string const &prefix) const;

    Register externalCommands_;
    Register internalCommands_;
    AliasMap aliases_;
    CommandLineParser parser_;
    ConsoleBuffers *consoleBuffers_ = nullptr;
    bool debugDumpPreprocessedCommandLine_ = false;
    bool isDeveloperModeActive_ = false;
    string globalHelpSwitch_ = "h";
    string lastCompletionInput_;
    string notRecognizedMessage_;
    string notRecognizedBaseMessage_ = "Command not recognized.";
    LineInspector lineInspector_;
};

/// Base of the commands that an interpreter creates for itself.
class QUILLMARSH_API InternalCommand : public Command
{
public:
    /// The interpreter is borrowed, and as a rule owns the command.
    explicit InternalCommand(Interpreter &interpreter);
    ~InternalCommand() override;

    Interpreter &GetInterpreter() const { return interpreter_; }

private:
    Interpreter &interpreter_;
};

} // namespace quillmarsh::std_command_interpreter

#endif
