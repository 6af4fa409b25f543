// Sockets as the system has them.
#ifndef QUILLMARSH_PLUGINS_INPUT_OPENTRACK_LINUX_SOCKETS_H
#define QUILLMARSH_PLUGINS_INPUT_OPENTRACK_LINUX_SOCKETS_H

#include <cerrno>
#include <cstddef>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <netdb.h>
#include <sys/socket.h>
#include <unistd.h>

namespace input_opentrack
{

using SocketHandle = int;
constexpr SocketHandle s_noSocket = -1;
/// Length of a buffer.
using SocketLength = std::size_t;

/// @name Use of sockets by this process
/// @{
inline bool StartSockets()
{
    return true;
}
inline void StopSockets() {}
/// @}

inline void CloseSocket(SocketHandle socket)
{
    close(socket);
}

/// Reading does not wait.
inline bool MakeNonBlocking(SocketHandle socket)
{
    return fcntl(socket, F_SETFL, O_NONBLOCK) == 0;
}

/// Number of the last failure, and its text.
inline int GetSocketError()
{
    return errno;
}
inline std::string GetSocketErrorText(int error)
{
    return std::generic_category().message(error);
}

/// @name What a failure to read means
/// @{
inline bool IsNothingThere(int error)
{
    return error == EAGAIN || error == EWOULDBLOCK;
}
/// The datagram is lost, the socket is well.
inline bool IsDatagramLost(int error)
{
    return error == EINTR;
}
/// @}

} // namespace input_opentrack

#endif
