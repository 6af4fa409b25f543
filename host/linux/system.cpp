#include "../system.h"

#include <quillmarsh/basetools/filesystem.h>

#include <atomic>
#include <cerrno>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillmarsh::host::system
{

Input::~Input() = default;

namespace
{

class DescriptorInput : public Input
{
public:
    DescriptorInput(int descriptor, bool owned) : descriptor_(descriptor), owned_(owned)
    {
        if (pipe2(cancel_, O_CLOEXEC) != 0)
            cancel_[0] = cancel_[1] = -1;
    }

    ~DescriptorInput() override
    {
        close(cancel_[0]);
        close(cancel_[1]);
        if (owned_)
            close(descriptor_);
    }

    std::size_t Read(char *buffer, std::size_t size) override
    {
        while (!cancelled_)
        {
            pollfd waits[2] = {{descriptor_, POLLIN, 0}, {cancel_[0], POLLIN, 0}};
            if (poll(waits, 2, -1) < 0 && errno != EINTR)
                return 0;
            if (waits[1].revents != 0 || waits[0].revents == 0)
                continue;
            ssize_t const got = read(descriptor_, buffer, size);
            if (got >= 0)
                return static_cast<std::size_t>(got);
            if (errno != EINTR && errno != EAGAIN)
                return 0;
        }
        return 0;
    }

    bool IsFile() const override
    {
        struct stat info;
        return fstat(descriptor_, &info) == 0 && S_ISREG(info.st_mode);
    }

    bool Cancel() override
    {
        cancelled_ = true;
        return write(cancel_[1], "", 1) == 1;
    }

private:
    int descriptor_;
    bool owned_;
    int cancel_[2];
    std::atomic<bool> cancelled_{false};
};

} // namespace

AutoPtr<Input> Input::Open(string const &name, string &error)
{
    bool const standardInput = name == "-";
    int const descriptor = standardInput ? STDIN_FILENO : open(name.c_str(), O_RDONLY | O_CLOEXEC);
    char probe;
    // A directory can be opened, but not read.
    if (descriptor < 0 || (!standardInput && read(descriptor, &probe, 0) < 0))
    {
        error = file_system::GetLastFailureReason();
        if (descriptor >= 0)
            close(descriptor);
        return nullptr;
    }
    return std::make_unique<DescriptorInput>(descriptor, !standardInput);
}

bool IsInForeground()
{
    return tcgetpgrp(STDIN_FILENO) == getpgrp();
}

} // namespace quillmarsh::host::system
