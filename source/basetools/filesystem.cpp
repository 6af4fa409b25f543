#include <quillmarsh/basetools/filesystem.h>

#include <quillmarsh/basetools/platforminfo.h>

#include "source/basetools/pathrules.h"
#include "source/platform/files.h"

#include <algorithm>
#include <utility>

namespace quillmarsh::file_system
{
namespace
{

PathRules const &Rules()
{
    return platform::GetSystemPathRules();
}

/// Gives a directory with or without its trailing separator, or an empty text.
bool FinishDirectory(bool succeeded, string found, string &directory, bool trailingSeparator)
{
    directory.clear();
    if (!succeeded || found.empty())
        return false;
    ApplyTrailingPathSeparator(Rules(), found, trailingSeparator);
    directory = std::move(found);
    return true;
}

bool IsThereOrCreated(string const &directory)
{
    // Another process may create the directory between the test and the attempt, and a name that DirectoryExists()
    // refuses may exist: an attempt that fails is no proof of a failure.
    return DirectoryExists(directory) || CreateDirectoryA(directory) ||
           platform::ReadFileType(directory, true) == std::filesystem::file_type::directory;
}

} // namespace

char GetPathSeparator()
{
    return Rules().pathSeparator;
}

char GetExtensionSeparator()
{
    return Rules().extensionSeparator;
}

char GetVolumeSeparator()
{
    return Rules().volumeSeparator;
}

void SplitFileName(string const &full, string &path, string &base, string &extension)
{
    SplitFileName(Rules(), full, path, base, extension);
}

string GetFileNameExtension(string const &full)
{
    string path;
    string base;
    string extension;
    SplitFileName(full, path, base, extension);
    return extension;
}

void RemoveTrailingPathSeparator(string &name)
{
    RemoveTrailingPathSeparator(Rules(), name);
}

void ForceTrailingPathSeparator(string &name)
{
    ForceTrailingPathSeparator(Rules(), name);
}

bool IsAbsolutePathName(string const &name)
{
    return IsAbsolutePathName(Rules(), name);
}

void SplitPathName(string const &name, std::vector<string> &pieces)
{
    SplitPathName(Rules(), name, pieces);
}

bool ExpandPathName(string const &in, string &out, bool trailingSeparator)
{
    return ExpandPathName(Rules(), in, out, trailingSeparator);
}

bool ForceFullPathName(string &name, bool trailingSeparator)
{
    string directory;
    if (!IsAbsolutePathName(name) && !GetProcessDirectory(directory, false))
    {
        name.clear();
        return false;
    }
    ForceFullPathName(Rules(), directory, name, trailingSeparator);
    return true;
}

string GetFullPathNameA(string const &name, bool trailingSeparator)
{
    string full = name;
    ForceFullPathName(full, trailingSeparator);
    return full;
}

bool ConvertPathName(string const &name, wstring &wide)
{
    return ConvertPathName(Rules(), name, wide);
}

bool ConvertPathName(wstring const &wide, string &name)
{
    return ConvertPathName(Rules(), wide, name);
}

bool ConvertShortPathNameToLongPathName(string const &shortName, string &longName)
{
    string found;
    bool const succeeded = IsUsableName(shortName) && platform::FindLongName(shortName, found);
    longName = succeeded ? std::move(found) : string();
    return succeeded;
}

bool FileExists(string const &name)
{
    return CanBeLookedUp(Rules(), name) && platform::FindEntry(name);
}

bool DeleteFileA(string const &name)
{
    return IsUsableName(name) && platform::RemoveFile(name);
}

bool IfFileExistsDeleteOnOverwrite(string const &name, bool overwrite)
{
    if (!FileExists(name))
        return true;
    return overwrite && DeleteFileA(name);
}

bool CopyFileA(string const &from, string const &to, bool overwrite)
{
    return IsUsableName(from) && IsUsableName(to) && platform::CopyOneFile(from, to, overwrite);
}

bool MoveFileA(string const &from, string const &to, bool overwrite)
{
    return IsUsableName(from) && IsUsableName(to) && platform::MoveEntry(from, to, overwrite);
}

std::filesystem::file_type GetFileType(string const &name, bool followLinks)
{
    return IsUsableName(name) ? platform::ReadFileType(name, followLinks) : std::filesystem::file_type::none;
}

std::filesystem::path GetStreamPath(string const &name)
{
    return platform::MakeStreamPath(IsUsableName(name) ? name : string());
}

string GetLastFailureReason()
{
    return platform::DescribeLastFailure();
}

bool DirectoryExists(string const &name)
{
    string lookupName;
    return MakeDirectoryLookupName(Rules(), name, lookupName) && platform::FindEntry(lookupName);
}

bool DeleteDirectory(string const &name)
{
    return IsUsableName(name) && platform::RemoveEmptyDirectory(name);
}

bool CreateDirectoryA(string const &name)
{
    return IsUsableName(name) && platform::MakeDirectory(name);
}

bool CreateDirectoryPath(string const &path)
{
    string rest = path;
    string prefix = EatRoot(Rules(), rest);
    std::vector<string> pieces;
    SplitPathName(rest, pieces);
    if (pieces.empty() || !IsUsableName(path))
        return false;

    for (string const &piece : pieces)
    {
        prefix += piece + GetPathSeparator();
        if (!IsThereOrCreated(prefix))
            return false;
    }
    return true;
}

bool GetProcessDirectory(string &directory, bool trailingSeparator)
{
    string found;
    bool const succeeded = platform::ReadProcessDirectory(found);
    return FinishDirectory(succeeded, found, directory, trailingSeparator);
}

bool SetProcessDirectory(string const &directory)
{
    return IsUsableName(directory) && platform::ChangeProcessDirectory(directory);
}

bool GetUserHomeDirectory(string &directory, bool trailingSeparator)
{
    string drive;
    string path;
    bool const isNamed = platform_info::ExpandEnvironmentVariable("%HOMEDRIVE%", drive) &&
                         platform_info::ExpandEnvironmentVariable("%HOMEPATH%", path);
    string found = drive + path;
    bool const succeeded = isNamed || platform::ReadHomeDirectory(found);
    return FinishDirectory(succeeded, found, directory, trailingSeparator);
}

bool GetUserProfileDirectory(string &directory, bool trailingSeparator)
{
    string found;
    bool const succeeded =
        platform_info::ExpandEnvironmentVariable("%USERPROFILE%", found) || platform::ReadHomeDirectory(found);
    return FinishDirectory(succeeded, found, directory, trailingSeparator);
}

bool GetUserConfigDirectory(string &directory, bool trailingSeparator)
{
    string found;
    bool const succeeded = platform::ReadUserDirectory(platform::eUserDirectory::e_config, found);
    return FinishDirectory(succeeded, found, directory, trailingSeparator);
}

bool GetUserStateDirectory(string &directory, bool trailingSeparator)
{
    string found;
    bool const succeeded = platform::ReadUserDirectory(platform::eUserDirectory::e_state, found);
    return FinishDirectory(succeeded, found, directory, trailingSeparator);
}

namespace
{

string MakeUserFileName(bool (*getDirectory)(string &, bool), string const &name)
{
    string directory;
    if (!getDirectory(directory, true))
        return string();
    return directory + "quillmarsh" + GetPathSeparator() + name;
}

} // namespace

string GetUserConfigFileName(string const &name)
{
    return MakeUserFileName(&GetUserConfigDirectory, name);
}

string GetUserStateFileName(string const &name)
{
    return MakeUserFileName(&GetUserStateDirectory, name);
}

bool GetVolumes(std::vector<string> &volumes)
{
    volumes.clear();
    bool const succeeded = platform::ReadVolumes(volumes);
    std::sort(volumes.begin(), volumes.end());
    return succeeded;
}

bool GetTempDirectory(string &directory, bool trailingSeparator)
{
    string found;
    bool const succeeded = platform::ReadTempDirectory(found);
    return FinishDirectory(succeeded, found, directory, trailingSeparator);
}

bool CreateTempFile(string &result, string const &directory, string const &prefix)
{
    // The prefix is part of one name, not a way to another directory.
    bool const isPlainPrefix = prefix.find(GetPathSeparator()) == string::npos && prefix.find('\0') == string::npos;
    string created;
    bool const succeeded =
        isPlainPrefix && IsUsableName(directory) && platform::MakeTempFile(created, directory, prefix);
    result = succeeded ? std::move(created) : string();
    return succeeded;
}

} // namespace quillmarsh::file_system
