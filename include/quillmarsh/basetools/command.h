// Base of the commands of a console.
#ifndef QUILLMARSH_BASETOOLS_COMMAND_H
#define QUILLMARSH_BASETOOLS_COMMAND_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

class CommandLineParser;

/// Unit that a console executes: names, a one-line description, and the bodies for running and for help.
///
/// The constructor of a command calls SetDefaultName with the text of its static member `s_szDefaultName`, SetShortDesc
/// and, where it is for developers only, SetDeveloperModeOnly(true). Commands are used from the console's thread.
class QUILLMARSH_API Command
{
public:
    Command();
    Command(Command const &);
    Command &operator=(Command const &);
    virtual ~Command();

    /// Runs the command. `parser` holds the parsed line, and `commandLine` is that line after the expansion of aliases.
    /// True when the command did its work; this is the result of the whole line.
    virtual bool ParseAndExecute(ostream &out, CommandLineParser const &parser, string const &commandLine) = 0;

    /// Writes the body of the command's help; the heading is the interpreter's. The Format...Help operations of
    /// `parser` show the special characters in force.
    ///
    /// A body has the sections "Options:\n", "Assignments:\n", "Arguments:\n", each only if it has entries, and then
    /// "Default behavior:\n\t" with one sentence. Each description ends in a line feed.
    virtual void DumpHelp(ostream &out, CommandLineParser const &parser) = 0;

    /// Sets the name by which the command is called. An empty one asserts, and the class name stands in for it.
    void SetName(string const &name);
    string const &GetName() const { return name_; }

    /// Sets the name that the command has by itself, and calls SetName with it. An empty one as for SetName.
    void SetDefaultName(string const &name);
    string const &GetDefaultName() const { return defaultName_; }

    void SetShortDesc(string const &desc);
    string const &GetShortDesc() const { return shortDesc_; }

    /// A command for developers is listed in every mode, and refused outside the developer mode.
    void SetDeveloperModeOnly(bool developerModeOnly);
    bool IsDeveloperModeOnly() const { return developerModeOnly_; }

private:
    bool developerModeOnly_ = false;
    string name_ = "command";
    string defaultName_ = "command";
    string shortDesc_;
};

} // namespace quillmarsh

#endif
