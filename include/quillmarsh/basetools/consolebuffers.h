// Output buffer and command history of a console.
#ifndef QUILLMARSH_BASETOOLS_CONSOLEBUFFERS_H
#define QUILLMARSH_BASETOOLS_CONSOLEBUFFERS_H

#include <quillmarsh/basetools/consoleoutputbuffer.h>
#include <quillmarsh/basetools/consoleoutputstream.h>

#include <atomic>
#include <deque>

namespace quillmarsh
{

/// The memory of a console: one output buffer and the history of its commands.
///
/// Any thread may use it. The history has a lock of its own, which a reader holds while it reads; no operation here
/// holds both locks at once.
class QUILLMARSH_API ConsoleBuffers : NoCopy
{
public:
    ConsoleBuffers();

    /// Sets the output type of streams that are made later.
    virtual void SetDefaultOutputType(unsigned int type);

    virtual ~ConsoleBuffers();

    /// @name Output
    /// These pass on to the output buffer, which takes its own lock.
    /// @{
    void SetMaxOutputLines(unsigned int maxLines);
    unsigned int GetMaxOutputLines() const;
    void SetOutputTabWidth(unsigned int width);
    unsigned int GetOutputTabWidth() const;
    void ClearOutput();
    ConsoleOutputBuffer &GetOutputBuffer() { return outputBuffer_; }
    ConsoleOutputBuffer const &GetOutputBuffer() const { return outputBuffer_; }
    /// Makes a stream on the output buffer, with the default type. The caller owns it, and destroys it before this
    /// object.
    ConsoleOutputStream *CreateOutputStream();
    /// @}

    /// @name Command history
    /// @{

    /// Takes the lock of the history. A thread that holds it may take it again. CommandHistorySentry holds it for a
    /// scope.
    void LockCommandHistory() const;
    /// Releases the lock, once for each LockCommandHistory().
    void UnlockCommandHistory() const;
    /// Sets the greatest number of commands that are kept, and drops the oldest ones above it; 0 keeps none.
    void SetMaxCommandsInHistory(unsigned int maxCommands);
    /// Greatest number of commands that are kept; 50 at first.
    unsigned int GetMaxCommandsInHistory() const;
    /// Drops all commands.
    void ClearCommandHistory();
    /// Adds a command as the latest, and drops the oldest one above the maximum. Ignores an empty text.
    void PushCommandInHistory(string const &command);
    /// @}

    /// @name Reading the history, under its lock
    /// @{

    /// Number of commands that are kept now.
    unsigned int GetNumCommandsInHistory() const;
    /// Command by index, 0 the oldest. Asserts "Input-command index out of range." past the end, and gives an empty
    /// text then.
    string const &GetCommandFromHistory(unsigned int index) const;

    /// @}

private:
    ConsoleOutputBuffer outputBuffer_;
    std::atomic<unsigned int> defaultOutputType_{0};
    mutable CriticalSection historyCriticalSection_;
    std::deque<string> commandHistory_;
    std::atomic<unsigned int> maxCommandsInHistory_{50};
};

/// Holds the lock of a console's command history for a scope.
class CommandHistorySentry : NoCopy
{
public:
    /// The buffers are borrowed and outlive the sentry.
    explicit CommandHistorySentry(ConsoleBuffers const &buffers) : buffers_(buffers) { buffers_.LockCommandHistory(); }
    ~CommandHistorySentry() { buffers_.UnlockCommandHistory(); }

private:
    ConsoleBuffers const &buffers_;
};

} // namespace quillmarsh

#endif
