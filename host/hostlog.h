// The host's log.
#ifndef QUILLMARSH_HOST_HOSTLOG_H
#define QUILLMARSH_HOST_HOSTLOG_H

#include <quillmarsh/basetools/logfilestream.h>
#include <quillmarsh/basetools/sharedoutputstream.h>

#include <mutex>

namespace quillmarsh::host
{

/// The host's log: a file, or nothing until one is opened. Any thread may write to the stream.
class HostLog : public TextSink, NoCopy
{
public:
    /// `programName` stands in the log.
    explicit HostLog(string programName);
    ~HostLog() override;

    /// Opens the file. Throws a WrongArgumentException that names the system's reason.
    void Open(string const &fileName);
    bool IsOpen() const { return file_ != nullptr; }
    /// Writes the end of the log. False when some text could not be written to the file.
    bool Close();

    ostream &GetStream() { return stream_; }

    void OnText(std::string_view text, unsigned int type) override;

private:
    string const programName_;
    std::mutex mutex_;
    AutoPtr<LogFileStream> file_;
    SharedOutputStream stream_;
};

} // namespace quillmarsh::host

#endif
