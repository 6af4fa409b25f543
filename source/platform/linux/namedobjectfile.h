// Files that stand for events and mutexes which processes share.
#ifndef QUILLMARSH_SOURCE_PLATFORM_LINUX_NAMEDOBJECTFILE_H
#define QUILLMARSH_SOURCE_PLATFORM_LINUX_NAMEDOBJECTFILE_H

#include <quillmarsh/platform/types.h>

#include <cstddef>

namespace quillmarsh::platform
{

/// Returns the path of the file for a name; no name leads out of the folder. Empty for an unusable name.
string MakeNamedObjectPath(string const &name);

/// A file that stands for a named object. Each handle of the object has it open.
///
/// The kernel's locks on two of its bytes show who uses it. They end with their process, so that the first user can
/// tell a living object from the remains of a crash. Byte 0 is locked while a user opens or closes the object, byte 1
/// while the object is open.
class NamedObjectFile : NoCopy
{
public:
    enum class eUse
    {
        e_exclusive,
        e_shared
    };

    /// Opens the object; the first user writes `content`. Returns null when the file cannot be opened, or is in use and
    /// either side wants it exclusively.
    static AutoPtr<NamedObjectFile> Open(string const &path, eUse use, void const *content, std::size_t size);
    /// Closes the object; the last user removes the file.
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
