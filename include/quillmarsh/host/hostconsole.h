// Passes the console's text from all writers to all readers.
#ifndef QUILLMARSH_HOST_HOSTCONSOLE_H
#define QUILLMARSH_HOST_HOSTCONSOLE_H

#include <quillmarsh/host/textoutput.h>

#include <quillmarsh/basetools/consolebuffers.h>
#include <quillmarsh/basetools/sharedoutputstream.h>

namespace quillmarsh::host
{

/// Passes all text that is written to the console, on any thread, to the console's buffers, to the output that shows
/// it, and to the log.
///
/// Code writes to the stream of this class, or to its own stream from ConsoleBuffers::CreateOutputStream. The lock of
/// the output buffer keeps all texts in one order.
class HostConsole : public TextSink, private ConsoleOutputBuffer::Observer
{
public:
    /// Borrows `log`, which must outlive this object. If several threads print, it must be a SharedOutputStream.
    explicit HostConsole(ostream &log);
    ~HostConsole() override;

    /// Returns the console's stream.
    SharedOutputStream &GetStream() { return stream_; }
    /// Returns the buffers that hold the console's text and the history.
    ConsoleBuffers &GetBuffers() { return buffers_; }

    /// Sets the output that shows the text from now on; borrows it, and null means none. Any thread.
    void SetOutput(TextOutput *output);
    /// Selects if the text goes to the log, too; it does at first. Any thread.
    void SetLogging(bool logging) { logging_ = logging; }

    /// Adds a typed line to the buffer without showing it: the user has typed it where the output is shown.
    void EnterTypedLine(string const &line);

    void OnText(std::string_view text, unsigned int type) override;

private:
    void OnChanged(ConsoleOutputBuffer const &buffer) override;
    void Show(std::string_view text, unsigned int type);
    void Append(std::string_view text, unsigned int type);

    ConsoleBuffers buffers_;
    ostream &log_;
    std::atomic<bool> logging_{true};
    SharedOutputStream stream_;

    /// @name Under the lock of the output buffer
    /// @{
    TextOutput *output_ = nullptr;
    bool appending_ = false;
    string appended_;
    /// The open line up to which the buffer has been shown, counted from the first line ever, and its shown length.
    unsigned long long shownLine_ = 0;
    std::size_t shownLength_ = 0;
    /// @}
};

} // namespace quillmarsh::host

#endif
