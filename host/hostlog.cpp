#include "hostlog.h"

#include "arguments.h"
#include "system.h"

#include <quillmarsh/basetools/filesystem.h>

#include <cerrno>

namespace quillmarsh::host
{

HostLog::HostLog(string programName) : programName_(std::move(programName)), stream_(*this) {}

HostLog::~HostLog() = default;

void HostLog::Open(string const &fileName)
{
    if (fileName.empty())
        ThrowWrongArgument("--log needs the name of a file");
    errno = 0;
    auto file = std::make_unique<LogFileStream>(programName_, fileName);
    file->flush();
    if (!*file)
        ThrowWrongArgument("cannot write the log '" + fileName + "': " + file_system::GetLastFailureReason());
    std::lock_guard const lock(mutex_);
    file_ = std::move(file);
}

bool HostLog::Close()
{
    stream_.flush();
    std::lock_guard const lock(mutex_);
    if (file_ == nullptr)
        return true;
    file_->flush();
    bool const complete = file_->good();
    file_->Close();
    bool const closed = file_->good();
    file_.reset();
    return complete && closed;
}

void HostLog::OnText(std::string_view text, unsigned int)
{
    std::lock_guard const lock(mutex_);
    if (file_ != nullptr)
        *file_ << text << std::flush;
}

} // namespace quillmarsh::host
