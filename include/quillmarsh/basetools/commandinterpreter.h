// Door through which a console passes its lines.
#ifndef QUILLMARSH_BASETOOLS_COMMANDINTERPRETER_H
#define QUILLMARSH_BASETOOLS_COMMANDINTERPRETER_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// Interprets lines and scripts of a console. This class itself is a null interpreter, which knows no command.
/// An interpreter is used from the console's thread.
class QUILLMARSH_API CommandInterpreter
{
public:
    /// @name Life
    /// The class has no data, so that copying copies nothing.
    /// @{
    CommandInterpreter();
    CommandInterpreter(CommandInterpreter const &);
    CommandInterpreter &operator=(CommandInterpreter const &);
    virtual ~CommandInterpreter();
    /// @}

    /// Runs the lines of a script in order, and echoes each line to `out` first. Returns the number of lines that
    /// failed or, with `stopOnError`, the number of the line that failed and ended the script, counted from 1. The
    /// result 0 always means success.
    virtual unsigned int InterpretScript(ostream &out, string const &script, bool stopOnError);

    /// Name of the interpreter, as it is shown to users.
    virtual string GetInterpreterDesc() const;

    /// Runs one line. Returns true when the line named a command and that command did its work.
    virtual bool InterpretCommandLine(string const &line, ostream &out);

    /// Completes the line that is typed so far. Returns true and sets `completed` when there is a completion; several
    /// candidates may be listed on `out`.
    virtual bool CompleteCommandLine(string const &line, string &completed, ostream &out);
};

} // namespace quillmarsh

#endif
