// Seam: files, directories, and the environment of the process.
#ifndef QUILLMARSH_SOURCE_PLATFORM_FILES_H
#define QUILLMARSH_SOURCE_PLATFORM_FILES_H

#include <quillmarsh/platform/types.h>

#include <cstdint>
#include <filesystem>

namespace quillmarsh::file_system
{

struct PathRules;

} // namespace quillmarsh::file_system

namespace quillmarsh::platform
{

/// How the running system writes paths.
file_system::PathRules const &GetSystemPathRules();

/// @name Files
/// Names are usable ones (file_system::IsUsableName). Each is false on failure, and then the run-time library's number
/// of the error tells why; see filesystem.h for what they promise.
/// @{

/// Whether the listing of a directory shows the name; a name on Windows can end in "\*".
bool FindEntry(string const &name);
bool RemoveFile(string const &name);
bool CopyOneFile(string const &from, string const &to, bool overwrite);
bool MoveEntry(string const &from, string const &to, bool overwrite);
bool MakeDirectory(string const &name);
bool RemoveEmptyDirectory(string const &name);
bool FindLongName(string const &shortName, string &longName);
bool MakeTempFile(string &result, string const &directory, string const &prefix);
std::filesystem::file_type ReadFileType(string const &name, bool followLinks);
/// The file that a name stands for in the end, through links; the name itself if the system does not tell.
string FollowLinks(string const &name);
/// Empty for a name that no file has, and for an empty one.
std::filesystem::path MakeStreamPath(string const &name);
string DescribeLastFailure();

/// @}
/// @name Directories that the process knows
/// The outputs are not changed on failure.
/// @{

bool ReadProcessDirectory(string &directory);
bool ChangeProcessDirectory(string const &directory);
bool ReadTempDirectory(string &directory);
/// The user's home directory where the environment does not name one; false on a system on which it always does.
bool ReadHomeDirectory(string &directory);

/// @}

/// Replaces references "%NAME%" to variables that are set. False if the system cannot.
bool ExpandEnvironment(string const &in, string &out);

/// What makes a directory the same one under two names.
struct DirectoryIdentity
{
    std::uint64_t device = 0;
    std::uint64_t node = 0;

    bool operator==(DirectoryIdentity const &) const = default;
};

/// Entries of one directory, one after the other.
class DirectoryListing
{
public:
    virtual ~DirectoryListing() = default;

    /// Null when the directory cannot be listed. `path` ends in a path separator.
    static AutoPtr<DirectoryListing> Open(string const &path);

    /// Which directory this is; false if the system does not tell.
    virtual bool GetIdentity(DirectoryIdentity &identity) const = 0;
    /// The next entry, "." and ".." among them where the system lists them; false at the end. A link to a directory
    /// counts as a directory.
    virtual bool Next(string &name, bool &isDirectory) = 0;
};

} // namespace quillmarsh::platform

#endif
