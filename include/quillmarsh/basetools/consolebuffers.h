// Output buffer and command history of a console.
#ifndef QUILLMARSH_BASETOOLS_CONSOLEBUFFERS_H
#define QUILLMARSH_BASETOOLS_CONSOLEBUFFERS_H

#include <quillmarsh/basetools/consoleoutputbuffer.h>
#include <quillmarsh/basetools/consoleoutputstream.h>

#include <atomic>
#include <deque>

namespace quillmarsh
{

/// What a console keeps in memory: one output buffer and the history of its commands.
///
/// Any thread may use it. The history has a lock of its own, which a reader holds around what it reads; nothing here
/// holds both locks at once.
class QUILLMARSH_API ConsoleBuffers : NoCopy
{
public:
    ConsoleBuffers();

    /// Sets the output type of streams that are made later.
    virtual void SetDefaultOutputType(unsigned int type);

    virtual ~ConsoleBuffers();

    /// @name Output
    /// @{
    void SetMaxOutputLines(unsigned int maxLines);
    unsigned int GetMaxOutputLines() const;
    void SetOutputTabWidth(unsigned int width);
    unsigned int GetOutputTabWidth() const;
    void ClearOutput();
    ConsoleOutputBuffer &GetOutputBuffer() { return outputBuffer_; }
    ConsoleOutputBuffer const &GetOutputBuffer() const { return outputBuffer_; }
    /// A new stream on the output buffer with the default type. The caller owns it, and destroys it before this object.
    ConsoleOutputStream *CreateOutputStream();
    /// @}

    /// @name Command history
    /// @{

    /// The lock of the history. A thread that holds it may take it again. CommandHistorySentry holds it for a scope.
    void LockCommandHistory() const;
    void UnlockCommandHistory() const;
    /// Greatest number of commands kept; 0 keeps none. Drops the oldest that are too many.
    void SetMaxCommandsInHistory(unsigned int maxCommands);
    unsigned int GetMaxCommandsInHistory() const;
    void ClearCommandHistory();
    /// Adds a command behind the latest, and drops the oldest one past the maximum. An empty text is ignored.
    void PushCommandInHistory(string const &command);
    /// @}

    /// @name Reading the history, under its lock
    /// @{
    unsigned int GetNumCommandsInHistory() const;
    /// Command by index, 0 the oldest. Asserts "Input-command index out of range." past the end, and gives an empty text
    /// then.
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
