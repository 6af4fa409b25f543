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
/// It never throws by itself. A file that cannot be opened or written sets the stream's failure bits, and all text from
/// then on is lost; a caller that wants to know tests the stream. One thread at a time.
class QUILLMARSH_API LogFileStream : public ostream, NoCopy
{
public:
    /// Opens the file, whose name is UTF-8, empties it, and calls OnOpen(). That is OnOpen() of this class, since a
    /// derived class does not exist yet. For an empty name, and when the file cannot be opened, it sets the fail bit
    /// instead.
    LogFileStream(string const &logName, string const &fileName);
    /// Calls Close(). That reaches OnClose() of this class only: a derived class that overrides it calls Close() in its
    /// own destructor.
    ~LogFileStream() override;

    /// Calls OnClose() and closes the file, if it is open. Sets the fail bit when closing fails.
    void Close();

    /// @name Names
    /// As they were given to the constructor.
    /// @{
    string const &GetLogName() const { return logName_; }
    string const &GetFileName() const { return fileName_; }
    /// @}

    /// Writes log name, date and time, machine and user between two separator lines, as the block of an opening or of a
    /// closing.
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
