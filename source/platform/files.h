// Seam: files, directories, and the environment of the process.
#ifndef QUILLMARSH_SOURCE_PLATFORM_FILES_H
#define QUILLMARSH_SOURCE_PLATFORM_FILES_H

#include <quillmarsh/platform/types.h>

#include <cstdint>
#include <filesystem>
#include <vector>

namespace quillmarsh::file_system
{

struct PathRules;

} // namespace quillmarsh::file_system

namespace quillmarsh::platform
{

/// Returns the rules for paths of the running system.
file_system::PathRules const &GetSystemPathRules();

/// @name Files
/// Names have passed file_system::IsUsableName. Each function returns false on failure and sets errno. filesystem.h
/// says what each one promises.
/// @{

/// True when the listing of a directory shows the name. On Windows, a name may end in "\*".
bool FindEntry(string const &name);
bool RemoveFile(string const &name);
bool CopyOneFile(string const &from, string const &to, bool overwrite);
bool MoveEntry(string const &from, string const &to, bool overwrite);
bool MakeDirectory(string const &name);
bool RemoveEmptyDirectory(string const &name);
bool FindLongName(string const &shortName, string &longName);
bool MakeTempFile(string &result, string const &directory, string const &prefix);
std::filesystem::file_type ReadFileType(string const &name, bool followLinks);
/// Returns the name of the file that links lead to; the name itself when the system cannot resolve them.
string FollowLinks(string const &name);
/// Returns the path that opens the file in a stream of the standard library; empty for a name that no file can have.
std::filesystem::path MakeStreamPath(string const &name);
string DescribeLastFailure();

/// @}
/// @name Directories that the process knows
/// Each function returns false on failure, and leaves its output unchanged.
/// @{

bool ReadProcessDirectory(string &directory);
bool ChangeProcessDirectory(string const &directory);
bool ReadTempDirectory(string &directory);
/// Reads the user's home directory for when the environment does not name it. Always false on Windows, where it does.
bool ReadHomeDirectory(string &directory);

/// Directories of the user for files of programs.
enum class eUserDirectory
{
    e_config,
    e_state
};
/// Reads the name of a directory, which may not exist. False when the user has no home.
bool ReadUserDirectory(eUserDirectory kind, string &directory);

/// Reads the roots of all trees of files, with their separators.
bool ReadVolumes(std::vector<string> &volumes);

/// @}

/// Replaces each "%NAME%" by the value of the environment variable, when that is set. Returns false when the system
/// fails.
bool ExpandEnvironment(string const &in, string &out);

/// Identity of a directory: two names with equal identities mean the same directory.
struct DirectoryIdentity
{
    std::uint64_t device = 0;
    std::uint64_t node = 0;

    bool operator==(DirectoryIdentity const &) const = default;
};

/// Walks the entries of one directory.
class DirectoryListing
{
public:
    virtual ~DirectoryListing() = default;

    /// Opens a directory. Returns null when it cannot be listed. `path` ends in a path separator.
    static AutoPtr<DirectoryListing> Open(string const &path);

    /// Reads the identity of the directory; false when the system does not give one.
    virtual bool GetIdentity(DirectoryIdentity &identity) const = 0;
    /// Reads the next entry; false at the end. The entries "." and ".." are included when the system lists them. A link
    /// to a directory counts as a directory.
    virtual bool Next(string &name, bool &isDirectory) = 0;
};

} // namespace quillmarsh::platform

#endif
