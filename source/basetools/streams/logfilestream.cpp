#include <quillmarsh/basetools/logfilestream.h>

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/platforminfo.h>
#include <quillmarsh/basetools/streameffectors.h>

namespace quillmarsh
{
namespace
{

bool OpenForWriting(std::filebuf &file, string const &fileName)
{
    std::filesystem::path const path = file_system::GetStreamPath(fileName);
    return !path.empty() && file.open(path, std::ios_base::out | std::ios_base::trunc) != nullptr;
}

} // namespace

LogFileStream::LogFileStream(string const &logName, string const &fileName)
    : ostream(nullptr),
      logName_(logName),
      fileName_(fileName)
{
    std::ios::rdbuf(&file_);
    if (OpenForWriting(file_, fileName_))
        LogFileStream::OnOpen();
    else
        setstate(std::ios_base::failbit);
}

LogFileStream::~LogFileStream()
{
    try
    {
        exceptions(std::ios_base::goodbit);
        Close();
    }
    catch (...)
    {
        // A destructor has no caller to whom it could report the failure.
    }
    std::ios::rdbuf(nullptr);
}

void LogFileStream::Close()
{
    if (!file_.is_open())
        return;
    OnClose();
    if (file_.close() == nullptr)
        setstate(std::ios_base::failbit);
}

void LogFileStream::OnOpen()
{
    OutputBlockPE(true, time::DateTimeSeparators());
    *this << nl;
}

void LogFileStream::OnClose()
{
    *this << nl;
    OutputBlockPE(false, time::DateTimeSeparators());
}

void LogFileStream::OutputBlockPE(bool opening, time::DateTimeSeparators const &separators)
{
    string dateTime;
    time::GetFormattedSystemDateTime(dateTime, false, false, false, separators);
    string const line = logName_ + (opening ? " log opened @ " : " log closed @ ") + dateTime + "/" +
                        platform_info::GetMachineName() + "/" + platform_info::GetUserNameA();

    SeparatorLineEffector const separator(static_cast<unsigned int>(line.size()), '-');
    // The block is a fixed text, which takes no width that was left on the stream.
    width(0);
    *this << separator << line << nl << separator;
}

} // namespace quillmarsh
