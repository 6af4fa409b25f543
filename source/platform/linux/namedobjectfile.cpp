#include "source/platform/linux/namedobjectfile.h"

#include <quillmarsh/basetools/texttools.h>

#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillmarsh::platform
{
namespace
{

constexpr std::size_t s_maxNameLength = 260;
constexpr std::size_t s_maxFileNameLength = 200;

constexpr off_t s_transitionByte = 0;
constexpr off_t s_lifetimeByte = 1;

bool Lock(int descriptor, off_t byte, short type, bool wait)
{
    struct flock lock = {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = byte;
    lock.l_len = 1;
    int result = 0;
    do
        result = fcntl(descriptor, wait ? F_OFD_SETLKW : F_OFD_SETLK, &lock);
    while (result != 0 && errno == EINTR);
    return result == 0;
}

char const *GetFolder()
{
    return access("/dev/shm", W_OK | X_OK) == 0 ? "/dev/shm/" : "/tmp/";
}

std::uint64_t HashBytes(string const &text, std::uint64_t seed)
{
    // FNV-1a.
    std::uint64_t hash = seed;
    for (char const c : text)
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3u;
    return hash;
}

string MakeHexadecimal(std::uint64_t value)
{
    string high;
    string low;
    ToStringHex(high, static_cast<unsigned int>(value >> 32), 8);
    ToStringHex(low, static_cast<unsigned int>(value), 8);
    return high + low;
}

/// Makes a file name: letters, digits, "-" and "_" stay, every other character becomes its code. A result that is too
/// long ends in two hash values.
string Mangle(string const &name)
{
    string mangled;
    for (char const c : name)
    {
        if (IsLetter(c) || IsDigit(c) || c == '-' || c == '_')
        {
            mangled += c;
            continue;
        }
        string code;
        ToStringHex(code, static_cast<unsigned int>(static_cast<unsigned char>(c)), 2);
        mangled += '%' + code;
    }
    if (mangled.size() > s_maxFileNameLength)
    {
        mangled.resize(s_maxFileNameLength - 33);
        mangled += '~' + MakeHexadecimal(HashBytes(name, 0xcbf29ce484222325u)) +
                   MakeHexadecimal(HashBytes(name, 0x9e3779b97f4a7c15u));
    }
    return mangled;
}

bool IsForAllUsers(string const &path)
{
    return path.find("/quillmarsh-all-") != string::npos;
}

int OpenFile(string const &path)
{
    // Tries an existing file first: in a shared folder, the system may refuse O_CREAT for another user's file.
    constexpr int flags = O_RDWR | O_CLOEXEC | O_NOFOLLOW;
    for (;;)
    {
        int descriptor = open(path.c_str(), flags);
        if (descriptor >= 0 || errno != ENOENT)
            return descriptor;
        descriptor = open(path.c_str(), flags | O_CREAT | O_EXCL, 0600);
        if (descriptor >= 0 && IsForAllUsers(path))
            static_cast<void>(fchmod(descriptor, 0666));
        if (descriptor >= 0 || errno != EEXIST)
            return descriptor;
    }
}

} // namespace

string MakeNamedObjectPath(string const &name)
{
    if (name.size() > s_maxNameLength)
        return string();
    string rest = name;
    bool const isForAllUsers = EatPrefix(rest, "Global\\");
    if (!isForAllUsers && !EatPrefix(rest, "Local\\"))
        EatPrefix(rest, "Session\\");
    if (rest.empty() || rest.find('\\') != string::npos)
        return string();
    string const owner = isForAllUsers ? string("all") : std::to_string(geteuid());
    return GetFolder() + ("quillmarsh-" + owner + "-") + Mangle(rest);
}

AutoPtr<NamedObjectFile> NamedObjectFile::Open(string const &path, eUse use, void const *content, std::size_t size)
{
    for (;;)
    {
        int const descriptor = OpenFile(path);
        if (descriptor < 0)
            return nullptr;
        AutoPtr<NamedObjectFile> file(new NamedObjectFile(path, descriptor));

        struct stat status = {};
        bool const isOurs = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
                            (IsForAllUsers(path) || status.st_uid == geteuid());
        bool const isEntered =
            isOurs && Lock(descriptor, s_transitionByte, F_WRLCK, true) && fstat(descriptor, &status) == 0;
        bool const isGone = isEntered && status.st_nlink == 0;
        bool const isOpen = isEntered && !isGone && file->Enter(use, content, size);
        if (isEntered)
            Lock(descriptor, s_transitionByte, F_UNLCK, false);
        if (isOpen)
            return file;

        // This handle has not opened the object, so its destructor must not remove the file.
        file->path_.clear();
        if (!isGone)
            return nullptr;
    }
}

bool NamedObjectFile::Enter(eUse use, void const *content, std::size_t size)
{
    bool const isFirst = Lock(descriptor_, s_lifetimeByte, F_WRLCK, false);
    if (!isFirst)
        return use == eUse::e_shared && Lock(descriptor_, s_lifetimeByte, F_RDLCK, false);

    bool const isWritten =
        ftruncate(descriptor_, 0) == 0 && pwrite(descriptor_, content, size, 0) == static_cast<ssize_t>(size);
    return isWritten && (use == eUse::e_exclusive || Lock(descriptor_, s_lifetimeByte, F_RDLCK, false));
}

NamedObjectFile::~NamedObjectFile()
{
    if (!path_.empty() && Lock(descriptor_, s_transitionByte, F_WRLCK, true))
    {
        bool const isLast = Lock(descriptor_, s_lifetimeByte, F_WRLCK, false);
        if (isLast)
            unlink(path_.c_str());
    }
    close(descriptor_);
}

} // namespace quillmarsh::platform
