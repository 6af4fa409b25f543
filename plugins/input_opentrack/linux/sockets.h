// The system's sockets.
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
/// Type of a buffer's length.
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

/// Makes reads return at once. False when that fails.
inline bool MakeNonBlocking(SocketHandle socket)
{
    return fcntl(socket, F_SETFL, O_NONBLOCK) == 0;
}

/// Returns the number of the last failure.
inline int GetSocketError()
{
    return errno;
}
inline std::string GetSocketErrorText(int error)
{
    return std::generic_category().message(error);
}

/// @name Meaning of a failed read
/// @{
inline bool IsNothingThere(int error)
{
    return error == EAGAIN || error == EWOULDBLOCK;
}
/// True when a datagram is lost, but the socket still works.
inline bool IsDatagramLost(int error)
{
    return error == EINTR;
}
/// @}

} // namespace input_opentrack

#endif
