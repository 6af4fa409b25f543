#include "source/platform/files.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillmarsh::platform
{
namespace
{

/// An open file, closed at the end of the scope.
class File : NoCopy
{
public:
    explicit File(int descriptor) : descriptor_(descriptor) {}
    ~File() { Close(); }

    int Get() const { return descriptor_; }
    bool IsOpen() const { return descriptor_ >= 0; }
    /// Closes the file; false when written data did not reach it.
    bool Close()
    {
        bool const succeeded = descriptor_ < 0 || close(descriptor_) == 0;
        descriptor_ = -1;
        return succeeded;
    }

private:
    int descriptor_;
};

bool WriteAll(File const &file, char const *data, std::size_t size)
{
    while (size != 0)
    {
        ssize_t const written = write(file.Get(), data, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        data += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

bool CopyData(File const &from, File const &to)
{
    std::array<char, 65536> buffer;
    for (;;)
    {
        ssize_t const got = read(from.Get(), buffer.data(), buffer.size());
        if (got == 0)
            return true;
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0 || !WriteAll(to, buffer.data(), static_cast<std::size_t>(got)))
            return false;
    }
}

/// Renames only when the new name is free. A system or file system that cannot check and rename in one step leaves a
/// moment in which another process can take the name.
bool RenameToFreeName(string const &from, string const &to)
{
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS)
        return false;
    if (FindEntry(to))
    {
        errno = EEXIST;
        return false;
    }
    return rename(from.c_str(), to.c_str()) == 0;
}

bool Rename(string const &from, string const &to, bool overwrite)
{
    return overwrite ? rename(from.c_str(), to.c_str()) == 0 : RenameToFreeName(from, to);
}

/// Fills `to` with the data, permissions and time of change of `from`, and closes it.
bool FillCopy(File const &from, struct stat const &status, File &to)
{
    if (!CopyData(from, to))
        return false;
    // Failures are ignored: not every file system has permissions and times.
    timespec const times[] = {status.st_atim, status.st_mtim};
    bool const keptPermissions = fchmod(to.Get(), status.st_mode & 0777) == 0;
    bool const keptTimes = futimens(to.Get(), times) == 0;
    static_cast<void>(keptPermissions && keptTimes);
    return to.Close();
}

/// Copies to a new file beside the target, and renames it when it is complete. A failure leaves the target as it was.
bool CopyBeside(string const &from, string const &to, bool overwrite)
{
    // Without blocking, in case the name is that of a pipe.
    File const source(open(from.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status;
    if (!source.IsOpen() || fstat(source.Get(), &status) != 0 || !S_ISREG(status.st_mode))
        return false;

    struct stat targetStatus;
    bool const targetExists = stat(to.c_str(), &targetStatus) == 0;
    bool const isSameFile =
        targetExists && targetStatus.st_dev == status.st_dev && targetStatus.st_ino == status.st_ino;
    if (isSameFile || (targetExists && !overwrite))
        return false;

    string copy = to.substr(0, to.rfind('/') + 1) + ".copy-XXXXXX";
    File target(mkostemp(copy.data(), O_CLOEXEC));
    if (!target.IsOpen())
        return false;
    if (FillCopy(source, status, target) && Rename(copy, to, overwrite))
        return true;
    unlink(copy.c_str());
    return false;
}

} // namespace

bool CopyOneFile(string const &from, string const &to, bool overwrite)
{
    // Follows a link: the file that it leads to is replaced, the link stays.
    return CopyBeside(from, FollowLinks(to), overwrite);
}

bool MoveEntry(string const &from, string const &to, bool overwrite)
{
    if (Rename(from, to, overwrite))
        return true;
    if (errno != EXDEV)
        return false;
    struct stat status;
    bool const isFile = lstat(from.c_str(), &status) == 0 && S_ISREG(status.st_mode);
    return isFile && CopyBeside(from, to, overwrite) && RemoveFile(from);
}

} // namespace quillmarsh::platform
