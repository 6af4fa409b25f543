// Where the lines of the console come from.
#ifndef QUILLMARSH_HOST_LINESOURCE_H
#define QUILLMARSH_HOST_LINESOURCE_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh::std_command_interpreter
{
class Interpreter;
}

namespace quillmarsh::host
{

/// One line of the console, without its end.
struct SourceLine
{
    string text;
    /// Number in its file, from 1.
    unsigned int number = 0;
};

/// Where the lines of the console come from: a script, or the terminal. Used by the frame thread.
class LineSource
{
public:
    /// Result of Take().
    enum class eNext
    {
        /// A line was taken.
        e_line,
        /// No line is there yet; one may come later.
        e_none,
        /// No line will come any more.
        e_end
    };

    virtual ~LineSource();

    /// Takes the next line, without waiting for it.
    virtual eNext Take(SourceLine &line) = 0;
    /// The line that was taken last is done with.
    virtual void OnDone() = 0;
    /// Whether the user sees the lines already, since they were typed.
    virtual bool IsTyped() const = 0;
    /// Name for messages.
    virtual string const &GetName() const = 0;
    /// Does what a user who types needs from the interpreter; called between frames.
    virtual void Serve(std_command_interpreter::Interpreter &interpreter, ostream &out);
};

} // namespace quillmarsh::host

#endif
