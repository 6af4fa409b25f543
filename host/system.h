// What the program needs from the system beyond the library: reading that can be called off.
#ifndef QUILLMARSH_HOST_SYSTEM_H
#define QUILLMARSH_HOST_SYSTEM_H

#include <quillmarsh/platform/types.h>

#include <cstddef>

// linux/ and win32/ implement what is declared here, and the build picks one.
namespace quillmarsh::host::system
{

/// Bytes of a file or of standard input, read on a thread that can be called off.
class Input : NoCopy
{
public:
    virtual ~Input();

    /// Opens a file, or standard input for "-". Null, and the system's cause, when that fails.
    static AutoPtr<Input> Open(string const &name, string &error);

    /// Reads up to `size` bytes, and waits for the first. 0 at the end, after a failure, and once it is called off.
    virtual std::size_t Read(char *buffer, std::size_t size) = 0;
    /// Whether this is a file, which is read without waiting for anybody.
    virtual bool IsFile() const = 0;
    /// Calls reading off; from another thread. False when a Read() that waits cannot be reached.
    virtual bool Cancel() = 0;
};

} // namespace quillmarsh::host::system

#endif
