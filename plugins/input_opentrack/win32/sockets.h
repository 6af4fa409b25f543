// Sockets as the system has them.
#ifndef QUILLMARSH_PLUGINS_INPUT_OPENTRACK_WIN32_SOCKETS_H
#define QUILLMARSH_PLUGINS_INPUT_OPENTRACK_WIN32_SOCKETS_H

#include <string>
#include <system_error>

#include <winsock2.h>
#include <ws2tcpip.h>

namespace input_opentrack
{

using SocketHandle = SOCKET;
constexpr SocketHandle s_noSocket = INVALID_SOCKET;
/// Length of a buffer.
using SocketLength = int;

/// @name Use of sockets by this process
/// Calls are counted.
/// @{
inline bool StartSockets()
{
    WSADATA data;
    return WSAStartup(MAKEWORD(2, 2), &data) == 0;
}
inline void StopSockets()
{
    WSACleanup();
}
/// @}

inline void CloseSocket(SocketHandle socket)
{
    closesocket(socket);
}

/// Reading does not wait.
inline bool MakeNonBlocking(SocketHandle socket)
{
    u_long enable = 1;
    return ioctlsocket(socket, FIONBIO, &enable) == 0;
}

/// Number of the last failure, and its text.
inline int GetSocketError()
{
    return WSAGetLastError();
}
inline std::string GetSocketErrorText(int error)
{
    return std::system_category().message(error);
}

/// @name What a failure to read means
/// @{
inline bool IsNothingThere(int error)
{
    return error == WSAEWOULDBLOCK;
}
/// The datagram is lost, the socket is well: it was longer than the buffer, or answers something of an earlier owner.
inline bool IsDatagramLost(int error)
{
    return error == WSAEINTR || error == WSAEMSGSIZE || error == WSAECONNRESET;
}
/// @}

} // namespace input_opentrack

#endif
