#include "source/platform/files.h"

#include <quillmarsh/basetools/texttools.h>

#include "source/basetools/pathrules.h"
#include "source/platform/win32/widetext.h"
#include "source/platform/win32/windows.h"

#include <array>

namespace quillmarsh::platform
{
namespace
{

/// Calls an operation of the system on a name.
template<typename Operation>
bool CallOnPath(Operation operation, string const &name)
{
    wstring path;
    return MakeSystemPath(name, path) && operation(ToSystem(path)) != 0;
}

/// Which file a name stands for; false if it cannot be told.
bool Identify(wstring const &path, DirectoryIdentity &identity)
{
    constexpr DWORD sharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    HANDLE const file =
        CreateFileW(ToSystem(path), 0, sharing, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    BY_HANDLE_FILE_INFORMATION information;
    bool const succeeded = GetFileInformationByHandle(file, &information) != 0;
    CloseHandle(file);
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

/// A free name in the directory of a file.
wstring MakeNameBeside(wstring const &path)
{
    static LONG s_counter = 0;
    wstring suffix;
    AsciiToUnicode(".copy-" + std::to_string(GetCurrentProcessId()) + '-' +
                       std::to_string(InterlockedIncrement(&s_counter)),
                   suffix);
    return path.substr(0, path.rfind('\\') + 1) + suffix;
}

/// Copies to a new file beside the target and puts it in place when it is complete, so that a failure loses nothing.
bool CopyOver(wstring const &from, wstring const &to)
{
    wstring const copy = MakeNameBeside(to);
    if (CopyFileW(ToSystem(from), ToSystem(copy), TRUE) == 0)
        return false;
    if (MoveFileExW(ToSystem(copy), ToSystem(to), MOVEFILE_REPLACE_EXISTING) != 0)
        return true;
    SetFileAttributesW(ToSystem(copy), FILE_ATTRIBUTE_NORMAL);
    DeleteFileW(ToSystem(copy));
    return false;
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
        // A name that is not well-formed has no 8-bit form, and is passed over.
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
    if (!MakeSystemPath(name, path))
        return false;
    WIN32_FIND_DATAW entry;
    HANDLE const search =
        FindFirstFileExW(ToSystem(path), FindExInfoStandard, &entry, FindExSearchNameMatch, nullptr, 0);
    return search != INVALID_HANDLE_VALUE && FindClose(search) != 0;
}

bool RemoveFile(string const &name)
{
    return CallOnPath(DeleteFileW, name);
}

bool CopyOneFile(string const &from, string const &to, bool overwrite)
{
    wstring source;
    wstring target;
    if (!MakeSystemPath(from, source) || !MakeSystemPath(to, target) || IsSameFile(source, target))
        return false;
    return overwrite ? CopyOver(source, target) : CopyFileW(ToSystem(source), ToSystem(target), TRUE) != 0;
}

bool MoveEntry(string const &from, string const &to, bool overwrite)
{
    wstring source;
    wstring target;
    if (!MakeSystemPath(from, source) || !MakeSystemPath(to, target))
        return false;
    DWORD const flags = overwrite ? MOVEFILE_REPLACE_EXISTING : 0;
    if (MoveFileExW(ToSystem(source), ToSystem(target), flags) != 0)
        return true;
    return GetLastError() == ERROR_NOT_SAME_DEVICE && CopyOneFile(from, to, overwrite) &&
           DeleteFileW(ToSystem(source)) != 0;
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
    bool const isUsable = file_system::IsAbsolutePathName(rules, shortName) ? MakeSystemPath(shortName, wide)
                                                                            : AsciiToUnicode(shortName, wide);
    auto const read = [&wide](wchar_t *buffer, DWORD size) { return GetLongPathNameW(ToSystem(wide), buffer, size); };
    wstring found;
    return isUsable && ReadSystemText(read, found) && file_system::ConvertPathName(rules, found, longName);
}

bool MakeTempFile(string &result, string const &directory, string const &prefix)
{
    wstring wideDirectory;
    wstring widePrefix;
    std::array<wchar_t, MAX_PATH> name;
    if (!AsciiToUnicode(directory, wideDirectory) || !AsciiToUnicode(prefix, widePrefix) ||
        GetTempFileNameW(ToSystem(wideDirectory), ToSystem(widePrefix), 0, name.data()) == 0)
        return false;
    result = FromSystem(name.data());
    return !result.empty();
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
