// The working interpreter of the console: commands, aliases, completion, help.
#ifndef QUILLMARSH_FRAMEWORK_STDCOMMANDINTERPRETER_H
#define QUILLMARSH_FRAMEWORK_STDCOMMANDINTERPRETER_H

#include <quillmarsh/basetools/command.h>
#include <quillmarsh/basetools/commandinterpreter.h>
#include <quillmarsh/basetools/commandlineparser.h>
#include <quillmarsh/framework/completion.h>

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
/// A line is expanded by at most one alias, parsed, and handed to the command of its name; internal commands are
/// searched first. Errors in a line are written to the stream; bad input throws nothing. The line is stored in the
/// history of the console's buffers as it was typed.
///
/// Both registers own their commands, and are searched by the commands' current names. After a command was renamed,
/// Rehash() puts it in its place in listings. An interpreter belongs to one thread at a time.
class QUILLMARSH_API Interpreter : public CommandInterpreter, NoCopy
{
public:
    /// Takes console buffers and developer mode from the kernel, which must exist.
    Interpreter();
    ~Interpreter() override;

    /// @name Lines
    /// @{

    /// "Standard-command-interpreter v1.0".
    string GetInterpreterDesc() const override;

    /// Runs one line. Returns true when a command did its work, or when the help of one was printed. An exception of a
    /// command passes to the caller.
    bool InterpretCommandLine(string const &line, ostream &out) override;

    /// Completes a command word by the names of commands and aliases. If several match, they are listed on `out`, and
    /// the text that they have in common is the completion. Returns false for the same line as at the last call.
    bool CompleteCommandLine(string const &line, string &completed, ostream &out) override;

    /// Finds what can stand at the cursor of a half-typed line: commands and aliases, and the words that the table of
    /// the line's command offers. `cursor` is an index in the line; one behind the end counts as the end. Commands for
    /// developers are found when such commands run. Changes nothing, and does not depend on earlier requests.
    Completions FindCompletions(string const &line, std::size_t cursor = string::npos) const;

    /// Offers the names of the commands that run, and of the aliases if `withAliases` is set, in one order.
    void OfferCommands(bool withAliases, CompletionOffers &offers) const;

    /// Finds the command that a line would run; null when there is none, or when the line is not well-formed.
    Command *FindCommandOfLine(string const &line) const;

    /// @}
    /// @name Settings
    /// @{

    /// Sets the buffers for the history of commands, which are borrowed; null means those of the kernel.
    void SetConsoleBuffers(ConsoleBuffers *buffers);
    /// Buffers in use; null if the kernel has none.
    ConsoleBuffers *GetConsoleBuffers() const { return consoleBuffers_; }

    /// Sets whether commands for developers run. The kernel's parameter is read at construction only.
    void SetDeveloperModeActive(bool active);
    /// True when commands for developers run.
    bool IsActiveDeveloperMode() const { return isDeveloperModeActive_; }

    /// Sets whether each line is printed as it was expanded and parsed.
    void SetDebugDumpPreprocessedCommandLine(bool dump);
    /// True when each line is printed; false at first.
    bool GetDebugDumpPreprocessedCommandLine() const { return debugDumpPreprocessedCommandLine_; }

    /// Sets the option that makes any command print its help instead of running; "h" by default, empty for none.
    void SetGlobalHelpSwitch(string const &helpSwitch);
    /// Option that makes any command print its help.
    string const &GetGlobalHelpSwitch() const { return globalHelpSwitch_; }

    /// Sets the answer to an unknown command. A hint at the command that lists all commands follows it.
    void SetCommandNotRecognizedMessage(string const &message);
    /// Answer to an unknown command, without the hint.
    string const &GetCommandNotRecognizedMessage() const { return notRecognizedBaseMessage_; }

    /// Function that is asked about each line before its command runs. False refuses the line, whose result is then
    /// false.
    using LineInspector = std::function<bool(Command const &command, CommandLineParser const &parser)>;
    /// Sets the inspector; an empty one, the default, lets all lines run.
    void SetLineInspector(LineInspector inspector);

    /// @}
    /// @name Aliases
    /// In a line that begins with an alias as a whole word, the target of the alias takes its place.
    /// @{

    /// Sets or replaces an alias. An empty target removes it, and an empty alias does nothing.
    void RegisterAlias(string const &alias, string const &target);
    /// Removes an alias if it exists.
    void UnregisterAlias(string const &alias);
    /// Removes all aliases.
    void UnregisterAllAliases();
    /// Gives the target of an alias. Returns false, and an empty target, when there is no such alias.
    bool FindAlias(string const &alias, string &target) const;
    /// Gives pairs of alias and target, sorted by alias.
    void GetAliases(std::vector<std::pair<string, string>> &aliases) const;

    /// @}
    /// @name External commands
    /// @{

    /// Adds a command, which the interpreter owns from then on; null is ignored. Names are not tested: of several
    /// commands with one name the first is found.
    void RegisterExternalCommand(Command *command);
    /// Removes all commands. The caller owns them then.
    void UnregisterAllExternalCommands();
    /// Removes a command, which the caller owns then. Returns false when it was not registered.
    bool UnregisterExternalCommand(Command &command);
    /// Removes all commands of that name, which the caller owns then. Returns their number.
    unsigned int UnregisterExternalCommand(string const &name);
    /// Deletes all commands.
    void DeleteAllExternalCommands();
    /// Deletes a command. Returns false when it was not registered.
    bool DeleteExternalCommand(Command &command);
    /// Deletes all commands of that name. Returns their number.
    unsigned int DeleteExternalCommand(string const &name);

    /// Number of commands.
    unsigned int GetNumExternalCommands() const;
    /// Command by index. Asserts "Index out of range." past the end, and gives null then.
    Command *GetExternalCommand(unsigned int index) const;
    /// Same as FindExternalCommand().
    Command *GetExternalCommand(string const &name) const;
    /// First external command with that current name; null without one.
    Command *FindExternalCommand(string const &name) const;

    /// @}
    /// @name Internal commands
    /// These work as those of external commands do.
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

    /// Same as FindCommand().
    Command *GetCommand(string const &name) const;
    /// First internal command of that name; without one, the first external command; null without either.
    Command *FindCommand(string const &name) const;
    /// First command of exactly that run-time type; null without one.
    static Command *FindCommand(std::vector<Command *> const &commands, std::type_info const &type);

    /// Sorts both registers by current names, and calls MakeMessages().
    void Rehash();
    /// Builds the answer to an unknown command.
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

    std::pair<string const, string> const *FindAliasPrefix(string const &line) const;
    bool ExpandAliasPrefix(string const &line, string &expanded) const;
    Command *PrepareCommand(string const &expanded, ostream &out, bool &result);
    Command *SelectCommand(ostream &out, bool &result);
    std::vector<string> CollectCompletions(string const &prefix) const;
    void OfferArguments(CommandLineParser const &ahead, CommandLineParser::UnfinishedWord const &word,
                        string const &rest, CompletionOffers &offers) const;

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
    /// The interpreter is borrowed; usually it owns the command.
    explicit InternalCommand(Interpreter &interpreter);
    ~InternalCommand() override;

    /// The interpreter.
    Interpreter &GetInterpreter() const { return interpreter_; }

private:
    Interpreter &interpreter_;
};

} // namespace quillmarsh::std_command_interpreter

#endif
