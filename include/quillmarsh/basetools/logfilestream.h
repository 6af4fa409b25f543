// Log file with a block of text at its opening and its closing.
#ifndef QUILLMARSH_BASETOOLS_LOGFILESTREAM_H
#define QUILLMARSH_BASETOOLS_LOGFILESTREAM_H

#include <quillmarsh/basetools/time.h>

#include <fstream>
#include <ostream>

namespace quillmarsh
{

/// Output stream on a log file.
///
/// It never throws by itself: a file that cannot be opened or written sets the stream's failure bits, and what is
/// written from then on is swallowed. Who cares tests the stream. One thread at a time.
class QUILLMARSH_API LogFileStream : public ostream, NoCopy
{
public:
    /// Opens the file, whose name is UTF-8, and empties it. An empty name, or a file that cannot be opened, sets the
    /// fail bit; otherwise OnOpen() runs, this class's own, as the object is still being made.
    LogFileStream(string const &logName, string const &fileName);
    /// Closes the file; OnClose() is this class's own by then, so that a derived class calls Close() itself.
    ~LogFileStream() override;

    /// If the file is open: OnClose(), and closes it. Sets the fail bit when closing fails.
    void Close();

    string const &GetLogName() const { return logName_; }
    string const &GetFileName() const { return fileName_; }

    /// Writes log name, date and time, machine and user between two separator lines.
    void OutputBlockPE(bool opening, time::DateTimeSeparators const &separators);

protected:
    /// Writes the block of the opening and an empty line.
    virtual void OnOpen();
    /// Writes an empty line and the block of the closing.
    virtual void OnClose();

private:
    string logName_;
    string fileName_;
    std::filebuf file_;
};

} // namespace quillmarsh

#endif
