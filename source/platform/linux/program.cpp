#include <quillmarsh/platform/program.h>

#include "source/platform/files.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace quillmarsh::platform
{
namespace
{

int GetDescriptor(eStandardStream stream)
{
    switch (stream)
    {
    case eStandardStream::e_input:
        return STDIN_FILENO;
    case eStandardStream::e_output:
        return STDOUT_FILENO;
    default:
        return STDERR_FILENO;
    }
}

} // namespace

std::vector<string> GetProgramArguments(int count, char **arguments)
{
    return {arguments, arguments + count};
}

string GetProgramFileName(string const &invokedName)
{
    std::array<char, 4096> name;
    ssize_t const length = readlink("/proc/self/exe", name.data(), name.size());
    return length > 0 ? string(name.data(), static_cast<std::size_t>(length)) : invokedName;
}

void PrepareStandardStreams()
{
    std::signal(SIGPIPE, SIG_IGN);
    // A descriptor that the parent left closed would go to the first file opened here, and that file would become the
    // standard stream. /dev/null takes its place, for reading only, so that writing still fails.
    for (int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    {
        if (fcntl(descriptor, F_GETFD) < 0 && errno == EBADF)
            static_cast<void>(open("/dev/null", O_RDONLY));
    }
}

bool IsTerminal(eStandardStream stream)
{
    return isatty(GetDescriptor(stream)) == 1;
}

bool TakesEscapeSequences(eStandardStream stream)
{
    char const *const kind = std::getenv("TERM");
    bool const isKnown = kind != nullptr && *kind != '\0' && std::strcmp(kind, "dumb") != 0;
    return isKnown && IsTerminal(stream);
}

unsigned int GetTerminalWidth(eStandardStream stream)
{
    winsize size = {};
    return ioctl(GetDescriptor(stream), TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

bool WriteStandardStream(eStandardStream stream, std::string_view text, string &reason)
{
    int const descriptor = GetDescriptor(stream);
    while (!text.empty())
    {
        ssize_t const written = write(descriptor, text.data(), text.size());
        if (written >= 0)
        {
            text.remove_prefix(static_cast<std::size_t>(written));
            continue;
        }
        if (errno == EAGAIN || errno == EWOULDBLOCK)
        {
            pollfd wait = {descriptor, POLLOUT, 0};
            poll(&wait, 1, -1);
        }
        else if (errno != EINTR)
        {
            reason = DescribeLastFailure();
            return false;
        }
    }
    return true;
}

} // namespace quillmarsh::platform
