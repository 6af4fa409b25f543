#include "source/platform/files.h"

#include <quillmarsh/basetools/texttools.h>

#include "source/basetools/pathrules.h"
#include "source/platform/win32/widetext.h"
#include "source/platform/win32/windows.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <iterator>
#include <system_error>

namespace quillmarsh::platform
{
namespace
{

/// Returns the result of an operation; on failure it sets errno, as the run-time library does for its own functions.
bool Report(bool succeeded)
{
    if (!succeeded)
    {
        DWORD const code = GetLastError();
        std::error_condition const condition = std::system_category().default_error_condition(static_cast<int>(code));
        errno = condition.category() == std::generic_category() ? condition.value() : EIO;
        _doserrno = code;
    }
    return succeeded;
}

/// Calls a system function with the system's form of a name.
template<typename Operation>
bool CallOnPath(Operation operation, string const &name)
{
    wstring path;
    return Report(MakeSystemPath(name, path) && operation(ToSystem(path)) != 0);
}

/// A handle that reads the attributes of a file, through links. It works even while others have the file open
/// exclusively.
class FileView : NoCopy
{
public:
    explicit FileView(wstring const &path)
        : handle_(CreateFileW(ToSystem(path), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                              OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr))
    {
    }
    ~FileView()
    {
        if (IsOpen())
            CloseHandle(handle_);
    }

    bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return handle_; }

private:
    HANDLE handle_;
};

/// Reads the identity of a file; false when the system does not give one.
bool Identify(wstring const &path, DirectoryIdentity &identity)
{
    FileView const file(path);
    BY_HANDLE_FILE_INFORMATION information;
    // Volumes that do not number their files give all of them 0.
    bool const succeeded = file.IsOpen() && GetFileInformationByHandle(file.Get(), &information) != 0 &&
                           (information.nFileIndexHigh | information.nFileIndexLow) != 0;
    if (succeeded)
        identity = {information.dwVolumeSerialNumber,
                    static_cast<std::uint64_t>(information.nFileIndexHigh) << 32 | information.nFileIndexLow};
    return succeeded;
}

bool IsSameFile(wstring const &a, wstring const &b)
{
    DirectoryIdentity first;
    DirectoryIdentity second;
    return Identify(a, first) && Identify(b, second) && first == second;
}

/// Makes an unused name in the directory of a file.
wstring MakeNameBeside(wstring const &path)
{
    static LONG s_counter = 0;
    wstring suffix;
    AsciiToUnicode(".copy-" + std::to_string(GetCurrentProcessId()) + '-' +
                       std::to_string(InterlockedIncrement(&s_counter)),
                   suffix);
    return path.substr(0, path.rfind('\\') + 1) + suffix;
}

/// Copies to a new file beside the target, and renames it when it is complete. A failure leaves the target as it was.
bool CopyOver(wstring const &from, wstring const &to)
{
    wstring const copy = MakeNameBeside(to);
    if (CopyFileW(ToSystem(from), ToSystem(copy), TRUE) == 0)
        return false;
    if (MoveFileExW(ToSystem(copy), ToSystem(to), MOVEFILE_REPLACE_EXISTING) != 0)
        return true;
    DWORD const reason = GetLastError();
    SetFileAttributesW(ToSystem(copy), FILE_ATTRIBUTE_NORMAL);
    DeleteFileW(ToSystem(copy));
    SetLastError(reason);
    return false;
}

constexpr wstring::value_type s_oldWildcards[] = {'<', '>', '"'};

/// Reads the entry itself and does not follow links.
bool ReadEntry(wstring const &path, WIN32_FIND_DATAW &entry)
{
    // These characters are wildcards too, and are not allowed in names.
    if (path.find_first_of(s_oldWildcards, 0, std::size(s_oldWildcards)) != wstring::npos)
    {
        SetLastError(ERROR_INVALID_NAME);
        return false;
    }
    HANDLE const search =
        FindFirstFileExW(ToSystem(path), FindExInfoStandard, &entry, FindExSearchNameMatch, nullptr, 0);
    return search != INVALID_HANDLE_VALUE && FindClose(search) != 0;
}

bool IsLink(WIN32_FIND_DATAW const &entry)
{
    return (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && entry.dwReserved0 == IO_REPARSE_TAG_SYMLINK;
}

bool IsAbsent(DWORD code)
{
    return code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND || code == ERROR_INVALID_NAME;
}

/// Converts a server's name from its form after the long-path prefix to the usual form.
void RestoreServer(string &name)
{
    if (EatPrefix(name, "UNC\\"))
        name.insert(0, "\\\\");
}

class SystemListing : public DirectoryListing
{
public:
    explicit SystemListing(wstring const &path) : path_(path)
    {
        wstring pattern = path;
        pattern += '*';
        search_ = FindFirstFileExW(ToSystem(pattern), FindExInfoStandard, &entry_, FindExSearchNameMatch, nullptr, 0);
        hasEntry_ = IsOpen();
    }

    ~SystemListing() override
    {
        if (IsOpen())
            FindClose(search_);
    }

    bool IsOpen() const { return search_ != INVALID_HANDLE_VALUE; }

    bool GetIdentity(DirectoryIdentity &identity) const override { return Identify(path_, identity); }

    bool Next(string &name, bool &isDirectory) override
    {
        // Skips a name that is not valid UTF-16: it has no 8-bit form.
        for (name.clear(); hasEntry_ && name.empty(); hasEntry_ = FindNextFileW(search_, &entry_) != 0)
        {
            name = FromSystem(entry_.cFileName);
            isDirectory = (entry_.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        }
        return !name.empty();
    }

private:
    wstring path_;
    WIN32_FIND_DATAW entry_;
    HANDLE search_;
    bool hasEntry_;
};

} // namespace

file_system::PathRules const &GetSystemPathRules()
{
    return file_system::s_windowsPathRules;
}

bool FindEntry(string const &name)
{
    wstring path;
    WIN32_FIND_DATAW entry;
    return Report(MakeSystemPath(name, path) && ReadEntry(path, entry));
}

bool RemoveFile(string const &name)
{
    return CallOnPath(DeleteFileW, name);
}

bool CopyOneFile(string const &from, string const &to, bool overwrite)
{
    wstring source;
    wstring target;
    // Follows a link: the file that it leads to is replaced, the link stays.
    if (!MakeSystemPath(from, source) || !MakeSystemPath(FollowLinks(to), target))
        return Report(false);
    if (IsSameFile(source, target))
    {
        SetLastError(ERROR_SHARING_VIOLATION);
        return Report(false);
    }
    return Report(overwrite ? CopyOver(source, target) : CopyFileW(ToSystem(source), ToSystem(target), TRUE) != 0);
}

bool MoveEntry(string const &from, string const &to, bool overwrite)
{
    wstring source;
    wstring target;
    if (!MakeSystemPath(from, source) || !MakeSystemPath(to, target))
        return Report(false);
    DWORD const flags = overwrite ? MOVEFILE_REPLACE_EXISTING : 0;
    if (MoveFileExW(ToSystem(source), ToSystem(target), flags) != 0)
        return true;
    if (GetLastError() != ERROR_NOT_SAME_DEVICE)
        return Report(false);
    return CopyOneFile(from, to, overwrite) && Report(DeleteFileW(ToSystem(source)) != 0);
}

bool MakeDirectory(string const &name)
{
    return CallOnPath([](wchar_t const *path) { return CreateDirectoryW(path, nullptr); }, name);
}

bool RemoveEmptyDirectory(string const &name)
{
    return CallOnPath(RemoveDirectoryW, name);
}

bool FindLongName(string const &shortName, string &longName)
{
    file_system::PathRules const &rules = GetSystemPathRules();
    wstring wide;
    SetLastError(ERROR_INVALID_NAME);
    bool const isUsable = file_system::IsAbsolutePathName(rules, shortName) ? MakeSystemPath(shortName, wide)
                                                                            : AsciiToUnicode(shortName, wide);
    auto const read = [&wide](wchar_t *buffer, DWORD size) { return GetLongPathNameW(ToSystem(wide), buffer, size); };
    wstring found;
    if (!Report(isUsable && ReadSystemText(read, found)) || !UnicodeToAscii(found, longName))
        return false;
    if (EatPrefix(longName, rules.widePrefix))
        RestoreServer(longName);
    return true;
}

bool MakeTempFile(string &result, string const &directory, string const &prefix)
{
    wstring wideDirectory;
    wstring widePrefix;
    std::array<wchar_t, MAX_PATH> name;
    // The system takes these characters as separators too; they would lead out of the directory.
    if (prefix.find_first_of("/:") != string::npos || !AsciiToUnicode(directory, wideDirectory) ||
        !AsciiToUnicode(prefix, widePrefix))
    {
        SetLastError(ERROR_INVALID_NAME);
        return Report(false);
    }
    if (!Report(GetTempFileNameW(ToSystem(wideDirectory), ToSystem(widePrefix), 0, name.data()) != 0))
        return false;
    result = FromSystem(name.data());
    return !result.empty();
}

std::filesystem::file_type ReadFileType(string const &name, bool followLinks)
{
    using std::filesystem::file_type;
    wstring path;
    DWORD const attributes = MakeSystemPath(name, path) ? GetFileAttributesW(ToSystem(path)) : INVALID_FILE_ATTRIBUTES;
    if (attributes == INVALID_FILE_ATTRIBUTES)
    {
        bool const isAbsent = !path.empty() && IsAbsent(GetLastError());
        Report(false);
        return isAbsent ? file_type::not_found : file_type::none;
    }
    WIN32_FIND_DATAW entry;
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && ReadEntry(path, entry) && IsLink(entry))
    {
        if (!followLinks)
            return file_type::symlink;
        if (!FileView(path).IsOpen())
            return file_type::not_found;
    }
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? file_type::directory : file_type::regular;
}

string FollowLinks(string const &name)
{
    wstring path;
    if (ReadFileType(name, false) != std::filesystem::file_type::symlink || !MakeSystemPath(name, path))
        return name;
    FileView const file(path);
    auto const read = [&file](wchar_t *buffer, DWORD size)
    { return GetFinalPathNameByHandleW(file.Get(), buffer, size, FILE_NAME_NORMALIZED); };
    wstring found;
    string target;
    return file.IsOpen() && ReadSystemText(read, found) && UnicodeToAscii(found, target) ? target : name;
}

std::filesystem::path MakeStreamPath(string const &name)
{
    // Leaves room under the limit for a longer name in the same directory.
    constexpr std::size_t longestPlainName = MAX_PATH - 60;
    wstring path;
    string plain;
    if (!Report(MakeSystemPath(name, path)))
        return {};
    bool const hadPrefix = MatchPrefix(name, GetSystemPathRules().widePrefix);
    if (!hadPrefix && path.size() <= longestPlainName &&
        file_system::ConvertPathName(GetSystemPathRules(), path, plain))
    {
        RestoreServer(plain);
        AsciiToUnicode(plain, path);
    }
    return std::wstring(ToSystem(path), path.size());
}

string DescribeLastFailure()
{
    DWORD const code = _doserrno;
    return code != 0 ? DescribeSystemError(code) : std::generic_category().message(errno);
}

AutoPtr<DirectoryListing> DirectoryListing::Open(string const &path)
{
    wstring wide;
    if (!MakeSystemPath(path, wide))
        return nullptr;
    auto listing = std::make_unique<SystemListing>(wide);
    return listing->IsOpen() ? std::move(listing) : nullptr;
}

} // namespace quillmarsh::platform
