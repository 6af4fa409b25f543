// Name space of events and mutexes that processes share.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_NAMEDOBJECTFILE_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_NAMEDOBJECTFILE_H

#include <quillmarsh/platform/types.h>

#include <cstddef>

namespace quillmarsh::platform
{

/// Path of the file that stands for a name, which stays within its folder whatever the name. Empty for a name that
/// cannot be used.
string MakeNamedObjectPath(string const &name);

/// A file that stands for a named object, opened by everyone who has a handle of it.
///
/// Locks of the kernel on two of its bytes tell who is there, and end with their process: so the first to come can
/// tell a living object from what a crash has left. Byte 0 is held while one comes or goes, byte 1 for as long as an
/// object is open.
class NamedObjectFile : NoCopy
{
public:
    enum class eUse
    {
        e_exclusive,
        e_shared
    };

    /// Null when the path cannot be opened, or is in use and one side wants it exclusively. The first writes the content.
    static AutoPtr<NamedObjectFile> Open(string const &path, eUse use, void const *content, std::size_t size);
    /// The last one removes the file.
    ~NamedObjectFile();

    int GetDescriptor() const { return descriptor_; }

private:
    NamedObjectFile(string const &path, int descriptor) : path_(path), descriptor_(descriptor) {}

    bool Enter(eUse use, void const *content, std::size_t size);

    string path_;
    int descriptor_;
};

} // namespace quillmarsh::platform

#endif
