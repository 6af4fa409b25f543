#include "datagramsocket.h"

#include "sockets.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/texttools.h>

#include <memory>

namespace input_opentrack
{

using namespace quillmarsh;

namespace
{

SocketHandle ToSocket(std::intptr_t handle)
{
    return static_cast<SocketHandle>(handle);
}

[[noreturn]] void ThrowSocketError(string const &what)
{
    QUILLMARSH_THROW(HIDException, what + ": " + GetSocketErrorText(GetSocketError()));
}

} // namespace

DatagramSocket::DatagramSocket(string const &address, unsigned int port)
    : handle_(static_cast<std::intptr_t>(s_noSocket)),
      name_(address + " port " + MakeString(port))
{
    if (!StartSockets())
        ThrowSocketError("The network cannot be used");
    try
    {
        Bind(address, port);
        FindName();
    }
    catch (...)
    {
        Close();
        throw;
    }
}

DatagramSocket::~DatagramSocket()
{
    Close();
}

DatagramSocket::eResult DatagramSocket::Receive(std::span<std::byte> buffer, std::size_t &size)
{
    auto const received =
        recv(ToSocket(handle_), reinterpret_cast<char *>(buffer.data()), static_cast<SocketLength>(buffer.size()), 0);
    if (received >= 0)
    {
        size = static_cast<std::size_t>(received);
        return e_datagram;
    }
    int const error = GetSocketError();
    if (IsNothingThere(error))
        return e_nothing;
    if (!IsDatagramLost(error))
        ThrowSocketError("Cannot receive at " + name_);
    return e_lost;
}

void DatagramSocket::Bind(string const &address, unsigned int port)
{
    addrinfo hints{};
    hints.ai_flags = AI_NUMERICHOST | AI_NUMERICSERV;
    hints.ai_socktype = SOCK_DGRAM;
    addrinfo *found = nullptr;
    if (getaddrinfo(address.c_str(), MakeString(port).c_str(), &hints, &found) != 0)
        QUILLMARSH_THROW(HIDException, "The address '" + address + "' is not an IP address");
    std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> const owned(found, &freeaddrinfo);

    SocketHandle const opened = socket(found->ai_family, found->ai_socktype, found->ai_protocol);
    handle_ = static_cast<std::intptr_t>(opened);
    if (opened == s_noSocket || !MakeNonBlocking(opened))
        ThrowSocketError("Cannot create a socket");
    if (bind(opened, found->ai_addr, static_cast<socklen_t>(found->ai_addrlen)) != 0)
        ThrowSocketError("Cannot listen at " + name_);
}

void DatagramSocket::FindName()
{
    sockaddr_storage taken{};
    socklen_t size = sizeof(taken);
    auto *const address = reinterpret_cast<sockaddr *>(&taken);
    char host[NI_MAXHOST];
    char service[NI_MAXSERV];
    if (getsockname(ToSocket(handle_), address, &size) != 0 ||
        getnameinfo(address, size, host, sizeof(host), service, sizeof(service), NI_NUMERICHOST | NI_NUMERICSERV) != 0)
        ThrowSocketError("Cannot listen at " + name_);
    name_ = string(host) + " port " + service;
}

void DatagramSocket::Close()
{
    if (ToSocket(handle_) != s_noSocket)
        CloseSocket(ToSocket(handle_));
    StopSockets();
}

} // namespace input_opentrack
