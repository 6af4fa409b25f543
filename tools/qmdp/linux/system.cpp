#include "../system.h"

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace quillmarsh::tools::system
{

void PrepareStandardStreams()
{
    std::signal(SIGPIPE, SIG_IGN);
    // A number that the parent left closed would go to the first file opened here, and be written to as the stream.
    for (int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    {
        if (fcntl(descriptor, F_GETFD) < 0 && errno == EBADF)
            static_cast<void>(open("/dev/null", O_RDONLY));
    }
}

bool IsOutputTerminal()
{
    return isatty(STDOUT_FILENO) == 1 && isatty(STDERR_FILENO) == 1;
}

std::vector<string> GetWords(int argc, char **argv)
{
    return argc > 0 ? std::vector<string>(argv + 1, argv + argc) : std::vector<string>();
}

} // namespace quillmarsh::tools::system
