// A socket that receives datagrams.
#ifndef QUILLMARSH_PLUGINS_INPUT_OPENTRACK_DATAGRAMSOCKET_H
#define QUILLMARSH_PLUGINS_INPUT_OPENTRACK_DATAGRAMSOCKET_H

#include <quillmarsh/platform/types.h>

#include <cstddef>
#include <cstdint>
#include <span>

namespace input_opentrack
{

using quillmarsh::string;

/// Receives at an address and a port, which it occupies while it lives. One thread at a time.
class DatagramSocket : quillmarsh::NoCopy
{
public:
    enum eResult
    {
        e_nothing,
        e_datagram,
        /// A datagram was lost, or did not fit the buffer.
        e_lost
    };

    /// `address` is a numeric address of IP version 4 or 6; port 0 takes any free port. Throws a HIDException that
    /// names the reason.
    DatagramSocket(string const &address, unsigned int port);
    ~DatagramSocket();

    /// Text with the occupied address and port, for messages.
    string const &GetName() const { return name_; }

    /// Reads the next datagram without waiting. Throws a HIDException when the socket cannot be used any more.
    /// Allocates nothing.
    eResult Receive(std::span<std::byte> buffer, std::size_t &size);

private:
    void Bind(string const &address, unsigned int port);
    void FindName();
    void Close();

    /// Wide enough for the handles of any system.
    std::intptr_t handle_;
    string name_;
};

} // namespace input_opentrack

#endif
