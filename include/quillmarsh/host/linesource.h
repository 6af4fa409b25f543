// Interface of the sources of console lines.
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

/// A source of console lines: a script or the terminal. Only the frame thread calls it.
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

    /// Takes the next line without waiting. Changes `line` only when it returns eNext::e_line.
    virtual eNext Take(SourceLine &line) = 0;
    /// Called when the last taken line has run.
    virtual void OnDone() = 0;
    /// True when the user types the lines, and so sees them already.
    virtual bool IsTyped() const = 0;
    /// True for lines that run by themselves at the start: they are not echoed, and a failed one is reported, but neither
    /// ends anything nor counts as a failure of the run. False by default.
    virtual bool IsStartScript() const;
    /// Returns the name of the source, for messages.
    virtual string const &GetName() const = 0;
    /// Answers requests of a user who types, such as the completion of a command. Called between frames; does nothing
    /// by default.
    virtual void Serve(std_command_interpreter::Interpreter &interpreter, ostream &out);
};

} // namespace quillmarsh::host

#endif
