#include "source/platform/plainfiles.h"

#include <cerrno>
#include <cstdlib>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillmarsh::platform
{

FilePtr OpenPlainFile(std::filesystem::path const &name, std::uint64_t &byteSize)
{
    int const descriptor = open(name.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return nullptr;
    struct stat info = {};
    FilePtr file;
    errno = 0;
    if (fstat(descriptor, &info) == 0 && S_ISREG(info.st_mode))
        file.reset(fdopen(descriptor, "rb"));
    if (!file)
    {
        int const reason = errno != 0 ? errno : S_ISDIR(info.st_mode) ? EISDIR : EINVAL;
        close(descriptor);
        errno = reason;
    }
    byteSize = static_cast<std::uint64_t>(info.st_size);
    return file;
}

FilePtr OpenTemporaryFile()
{
    std::error_code error;
    std::filesystem::path const folder = std::filesystem::temp_directory_path(error);
    std::string name = (error ? "/tmp" : folder.string()) + "/quillmarsh-XXXXXX";
    int const descriptor = mkostemp(name.data(), O_CLOEXEC);
    if (descriptor < 0)
        return nullptr;
    unlink(name.c_str());
    FilePtr file(fdopen(descriptor, "w+b"));
    if (!file)
        close(descriptor);
    return file;
}

bool SeekFile(std::FILE *file, std::uint64_t offset)
{
    return fseeko(file, static_cast<off_t>(offset), SEEK_SET) == 0;
}

bool CreateNewFile(std::filesystem::path const &name)
{
    int const descriptor = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    return descriptor >= 0 && close(descriptor) == 0;
}

} // namespace quillmarsh::platform
