// Files whose bytes lie in memory without being read first.
#ifndef QUILLMARSH_PLATFORM_MAPPEDFILE_H
#define QUILLMARSH_PLATFORM_MAPPEDFILE_H

#include <quillmarsh/platform/types.h>

#include <cstdint>

namespace quillmarsh::platform
{

/// A plain file, mapped into memory to be read. The system reads a page when it is touched for the first time, and may
/// drop it again when memory is short. It stays the same file even if another file gets its name.
///
/// Others may change the file in the meantime, and their changes show. Windows refuses to shorten a mapped file. On
/// Linux, touching a page that is no longer in the file, or that the disk cannot read, would end the program by the
/// signal SIGBUS; the first mapped file therefore installs a handler that puts zeros in such a place, and IsDamaged() is
/// true from then on. Faults at other places go to the handler that was there before. A program that installs a handler
/// for SIGBUS later has to pass on what it does not know.
///
/// Any thread may read the bytes, and ask IsDamaged().
class QUILLMARSH_API MappedFile : NoCopy
{
public:
    /// Opens and maps the whole file. Returns null, with a reason of one line such as "cannot be opened: No such file or
    /// directory", for anything that is no plain file, and when it does not fit into the address space.
    static AutoPtr<MappedFile> Open(string const &fileName, string &reason);
    ~MappedFile();

    /// Returns the bytes, at the beginning of a page; null if the file was empty.
    unsigned char const *GetBytes() const;
    /// Returns the size that the file had when it was opened.
    std::uint64_t GetByteSize() const;
    /// True when bytes that were touched could not be read, and are 0 now.
    bool IsDamaged() const;

private:
    struct State;

    explicit MappedFile(AutoPtr<State> state);

    AutoPtr<State> state_;
};

} // namespace quillmarsh::platform

#endif
