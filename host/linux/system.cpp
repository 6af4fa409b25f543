#include "../system.h"

#include <quillmarsh/basetools/filesystem.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillmarsh::host::system
{

std::vector<string> GetArguments(int count, char **arguments)
{
    return {arguments, arguments + count};
}

void PrepareStandardStreams()
{
    std::signal(SIGPIPE, SIG_IGN);
    // A number that the parent left closed would go to the first file opened here, which would then be taken for the
    // standard stream. Each of them only reads, so that writing still fails.
    for (int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    {
        if (fcntl(descriptor, F_GETFD) < 0 && errno == EBADF)
            static_cast<void>(open("/dev/null", O_RDONLY));
    }
}

bool IsInputTerminal()
{
    return isatty(STDIN_FILENO) == 1;
}

bool IsOutputTerminal()
{
    return isatty(STDOUT_FILENO) == 1;
}

bool IsErrorTerminal()
{
    return isatty(STDERR_FILENO) == 1;
}

bool WriteStandardOutput(std::string_view text, string &error)
{
    while (!text.empty())
    {
        ssize_t const written = write(STDOUT_FILENO, text.data(), text.size());
        if (written >= 0)
        {
            text.remove_prefix(static_cast<std::size_t>(written));
            continue;
        }
        if (errno == EAGAIN || errno == EWOULDBLOCK)
        {
            pollfd wait = {STDOUT_FILENO, POLLOUT, 0};
            poll(&wait, 1, -1);
        }
        else if (errno != EINTR)
        {
            error = file_system::GetLastFailureReason();
            return false;
        }
    }
    return true;
}

string GetProgramFile(string const &invokedName)
{
    std::array<char, 4096> name;
    ssize_t const length = readlink("/proc/self/exe", name.data(), name.size());
    return length > 0 ? string(name.data(), static_cast<std::size_t>(length)) : invokedName;
}

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
    // A directory opens, but cannot be read.
    if (descriptor < 0 || (!standardInput && read(descriptor, &probe, 0) < 0))
    {
        error = file_system::GetLastFailureReason();
        if (descriptor >= 0)
            close(descriptor);
        return nullptr;
    }
    return std::make_unique<DescriptorInput>(descriptor, !standardInput);
}

struct SignalWatch::State
{
    sigset_t signals;
    sigset_t previous;
    std::atomic<bool> ending{false};
    std::thread thread;
};

SignalWatch::SignalWatch(std::function<void(eSignal)> onSignal) : state_(std::make_unique<State>())
{
    State &state = *state_;
    sigemptyset(&state.signals);
    for (int signal : {SIGINT, SIGTERM, SIGHUP, SIGWINCH})
        sigaddset(&state.signals, signal);
    // Blocked in every thread from here on; one thread waits for them, and may do anything when they come.
    pthread_sigmask(SIG_BLOCK, &state.signals, &state.previous);
    state.thread = std::thread(
        [&state, onSignal = std::move(onSignal)]
        {
            int signal = 0;
            while (sigwait(&state.signals, &signal) == 0 && !state.ending)
            {
                if (signal == SIGWINCH)
                    onSignal(eSignal::e_resize);
                else
                    onSignal(signal == SIGINT ? eSignal::e_interrupt : eSignal::e_terminate);
            }
        });
}

SignalWatch::~SignalWatch()
{
    state_->ending = true;
    pthread_kill(state_->thread.native_handle(), SIGWINCH);
    state_->thread.join();
    pthread_sigmask(SIG_SETMASK, &state_->previous, nullptr);
}

} // namespace quillmarsh::host::system
