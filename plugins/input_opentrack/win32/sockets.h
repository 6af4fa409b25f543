// The system's sockets.
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
/// Type of a buffer's length.
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

/// Makes reads return at once. False when that fails.
inline bool MakeNonBlocking(SocketHandle socket)
{
    u_long enable = 1;
    return ioctlsocket(socket, FIONBIO, &enable) == 0;
}

/// Returns the number of the last failure.
inline int GetSocketError()
{
    return WSAGetLastError();
}
inline std::string GetSocketErrorText(int error)
{
    return std::system_category().message(error);
}

/// @name Meaning of a failed read
/// @{
inline bool IsNothingThere(int error)
{
    return error == WSAEWOULDBLOCK;
}
/// True when a datagram is lost, but the socket still works: it was longer than the buffer, or it answers something
/// that an earlier owner of the port sent.
inline bool IsDatagramLost(int error)
{
    return error == WSAEINTR || error == WSAEMSGSIZE || error == WSAECONNRESET;
}
/// @}

} // namespace input_opentrack

#endif
