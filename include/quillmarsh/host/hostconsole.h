// The console's text on its way from all writers to all readers.
#ifndef QUILLMARSH_HOST_HOSTCONSOLE_H
#define QUILLMARSH_HOST_HOSTCONSOLE_H

#include <quillmarsh/host/textoutput.h>

#include <quillmarsh/basetools/consolebuffers.h>
#include <quillmarsh/basetools/sharedoutputstream.h>

namespace quillmarsh::host
{

/// Brings what is written to the console, by whom and on which thread ever, to the console's buffers, to the output that
/// shows it, and to the log.
///
/// Writers have two ways: the stream of this class, and streams of their own from ConsoleBuffers::CreateOutputStream.
/// The lock of the output buffer keeps all texts in one order.
class HostConsole : public TextSink, private ConsoleOutputBuffer::Observer
{
public:
    /// The log is borrowed. Where several threads print, it is a SharedOutputStream.
    explicit HostConsole(ostream &log);
    ~HostConsole() override;

    /// The console's stream.
    SharedOutputStream &GetStream() { return stream_; }
    ConsoleBuffers &GetBuffers() { return buffers_; }

    /// Output that shows the text from now on, borrowed; null for none.
    void SetOutput(TextOutput *output);
    void SetLogging(bool logging) { logging_ = logging; }

    /// Enters a line that the user sees already, since it was typed where the output is shown.
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
    /// Open line up to which the buffer was shown, counted from the first line ever, and the characters of it.
    unsigned long long shownLine_ = 0;
    std::size_t shownLength_ = 0;
    /// @}
};

} // namespace quillmarsh::host

#endif
