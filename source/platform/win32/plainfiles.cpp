#include "source/platform/plainfiles.h"

#include "source/platform/win32/windows.h"

#include <cerrno>
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

namespace quillmarsh::platform
{

FilePtr OpenPlainFile(std::filesystem::path const &name, std::uint64_t &byteSize)
{
    FilePtr file(_wfopen(name.c_str(), L"rbN"));
    if (!file)
        return nullptr;
    int const descriptor = _fileno(file.get());
    if (GetFileType(reinterpret_cast<HANDLE>(_get_osfhandle(descriptor))) != FILE_TYPE_DISK)
    {
        file.reset();
        errno = EINVAL;
        return nullptr;
    }
    byteSize = static_cast<std::uint64_t>(_filelengthi64(descriptor));
    return file;
}

FilePtr OpenTemporaryFile()
{
    wchar_t folder[MAX_PATH + 1] = {};
    wchar_t name[MAX_PATH + 1] = {};
    if (GetTempPathW(MAX_PATH, folder) == 0 || GetTempFileNameW(folder, L"qui", 0, name) == 0)
    {
        errno = EACCES;
        return nullptr;
    }
    // D: deleted when it is closed. N: not inherited. T: kept in memory if possible.
    return FilePtr(_wfopen(name, L"w+bDNT"));
}

bool SeekFile(std::FILE *file, std::uint64_t offset)
{
    return _fseeki64(file, static_cast<__int64>(offset), SEEK_SET) == 0;
}

bool CreateNewFile(std::filesystem::path const &name)
{
    int const descriptor =
        _wopen(name.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
    return descriptor >= 0 && _close(descriptor) == 0;
}

} // namespace quillmarsh::platform
