// Base of the commands of a console.
#ifndef QUILLMARSH_BASETOOLS_COMMAND_H
#define QUILLMARSH_BASETOOLS_COMMAND_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

class CommandLineParser;

/// A command that a console executes. It has names, a one-line description, and operations that run it and print its
/// help.
///
/// The constructor of a command calls SetDefaultName() with the text of its static member `s_szDefaultName`,
/// SetShortDesc() and, when it is for developers only, SetDeveloperModeOnly(true). Commands are used from the console's
/// thread.
class QUILLMARSH_API Command
{
public:
    /// @name Life
    /// A copy has the same names and description.
    /// @{
    Command();
    Command(Command const &);
    Command &operator=(Command const &);
    virtual ~Command();
    /// @}

    /// Runs the command. `parser` holds the parsed line, and `commandLine` is that line after the expansion of aliases.
    /// Returns true when the command did its work; this is the result of the whole line.
    virtual bool ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &commandLine) = 0;

    /// Writes the body of the command's help; the interpreter writes the heading. The Format...Help operations of
    /// `parser` show the special characters that are set.
    ///
    /// A body has the sections "Options:\n", "Assignments:\n", "Arguments:\n", each only if it has entries, and then
    /// "Default behavior:\n\t" with one sentence. Each description ends in a line feed.
    virtual void DumpHelp(ostream &out, CommandLineParser const &parser) = 0;

    /// Sets the name by which the command is called. An empty name asserts, and the command is then called by the name
    /// of its class.
    void SetName(string const &name);
    /// Name by which the command is called.
    string const &GetName() const { return name_; }

    /// Sets the name that the command has at first, and calls SetName() with it. An empty name is treated as there.
    void SetDefaultName(string const &name);
    /// Name that the command had at first.
    string const &GetDefaultName() const { return defaultName_; }

    /// Sets the one-line description that lists of commands show.
    void SetShortDesc(string const &desc);
    /// One-line description; empty at first.
    string const &GetShortDesc() const { return shortDesc_; }

    /// Marks the command as one for developers: it is listed in every mode, and refused outside the developer mode.
    void SetDeveloperModeOnly(bool developerModeOnly);
    /// True when the command is for developers only.
    bool IsDeveloperModeOnly() const { return developerModeOnly_; }

private:
    bool developerModeOnly_ = false;
    string name_ = "command";
    string defaultName_ = "command";
    string shortDesc_;
};

} // namespace quillmarsh

#endif
