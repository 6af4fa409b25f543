// The system's services for the program that the library does not have: reads that another thread can cancel, and the
// place of the program in its terminal.
#ifndef QUILLMARSH_HOST_SYSTEM_H
#define QUILLMARSH_HOST_SYSTEM_H

#include <quillmarsh/platform/types.h>

#include <cstddef>

// linux/ and win32/ implement these declarations, and the build picks one of them.
namespace quillmarsh::host::system
{

/// Reads bytes of a file or of standard input. Another thread can cancel a read.
class Input : NoCopy
{
public:
    virtual ~Input();

    /// Opens a file, or standard input for "-". If that fails, returns null and the system's reason in `error`.
    static AutoPtr<Input> Open(string const &name, string &error);

    /// Reads up to `size` bytes, and waits for the first. Returns 0 at the end, after a failure, and once it is
    /// cancelled.
    virtual std::size_t Read(char *buffer, std::size_t size) = 0;
    /// True for a file, which is read without waiting.
    virtual bool IsFile() const = 0;
    /// Cancels reading. Called by another thread. False when a waiting Read() cannot be cancelled.
    virtual bool Cancel() = 0;
};

/// True when the program may read from the terminal on standard input. A program that was put into the background may
/// not: the system would stop it.
bool IsInForeground();

} // namespace quillmarsh::host::system

#endif
