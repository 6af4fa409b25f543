// Socket that datagrams arrive at.
#ifndef QUILLMARSH_PLUGINS_INPUT_OPENTRACK_DATAGRAMSOCKET_H
#define QUILLMARSH_PLUGINS_INPUT_OPENTRACK_DATAGRAMSOCKET_H

#include <quillmarsh/platform/types.h>

#include <cstddef>
#include <cstdint>
#include <span>

namespace input_opentrack
{

using quillmarsh::string;

/// An address and a port, taken for as long as the object lives. One thread at a time.
class DatagramSocket : quillmarsh::NoCopy
{
public:
    enum eResult
    {
        e_nothing,
        e_datagram,
        /// Something came that does not fit the buffer, or was lost.
        e_lost
    };

    /// `address` is of IP version 4 or 6, in numbers; port 0 is one that is free. Throws a HIDException that says what
    /// was wrong.
    DatagramSocket(string const &address, unsigned int port);
    ~DatagramSocket();

    /// Address and port as they were taken, for people.
    string const &GetName() const { return name_; }

    /// The next datagram, without waiting for it. Throws a HIDException when the socket is of no use any more.
    /// Allocates nothing.
    eResult Receive(std::span<std::byte> buffer, std::size_t &size);

private:
    void Bind(string const &address, unsigned int port);
    void FindName();
    void Close();

    /// As wide as the handles of any system.
    std::intptr_t handle_;
    string name_;
};

} // namespace input_opentrack

#endif
