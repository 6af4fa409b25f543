// Door through which a console passes its lines.
#ifndef QUILLMARSH_BASETOOLS_COMMANDINTERPRETER_H
#define QUILLMARSH_BASETOOLS_COMMANDINTERPRETER_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh
{

/// Interprets lines and scripts of a console. By itself it is a null interpreter, which knows no command.
/// An interpreter is used from the console's thread.
class QUILLMARSH_API CommandInterpreter
{
public:
    CommandInterpreter();
    CommandInterpreter(CommandInterpreter const &);
    CommandInterpreter &operator=(CommandInterpreter const &);
    virtual ~CommandInterpreter();

    /// Runs the lines of a script in order; each is echoed to `out` first. Returns the count of lines that failed or,
    /// with `stopOnError`, the number of the line that failed and stopped it, from 1. 0 is always success.
    virtual unsigned int InterpretScript(ostream &out, string const &script, bool stopOnError);

    /// Name of the interpreter for a reader.
    virtual string GetInterpreterDesc() const;

    /// Runs one line. True when there was a command that did its work.
    virtual bool InterpretCommandLine(string const &line, ostream &out);

    /// Completes what is typed so far. True when there is a completion, which `completed` then holds; several
    /// candidates may be listed on `out`.
    virtual bool CompleteCommandLine(string const &line, string &completed, ostream &out);
};

} // namespace quillmarsh

#endif
