// Path arithmetic, file operations, and the walk through a tree of directories.
#ifndef QUILLMARSH_BASETOOLS_FILESYSTEM_H
#define QUILLMARSH_BASETOOLS_FILESYSTEM_H

#include <quillmarsh/platform/types.h>

#include <filesystem>
#include <vector>

/// Files and their names. Paths are UTF-8; Linux passes any other bytes through.
///
/// Nothing here throws: a failure is false, and leaves text outputs empty. Any thread, but for the process directory,
/// which all threads share.
namespace quillmarsh::file_system
{

/// @name Separators of the running system
/// @{

/// Backslash on Windows, "/" on Linux.
QUILLMARSH_API char GetPathSeparator();
/// Full stop.
QUILLMARSH_API char GetExtensionSeparator();
/// Colon on Windows. Linux has no volumes and gives the character 0, which stands in no name.
QUILLMARSH_API char GetVolumeSeparator();

/// @}
/// @name Path arithmetic
/// On the text alone, with the separators of the running system.
/// @{

/// Cuts a name in three: `path` to the last path separator and with it; `base`; `extension` without its separator. A
/// dot at the first or last position of the base splits nothing off.
QUILLMARSH_API void SplitFileName(string const &full, string &path, string &base, string &extension);
/// The extension as SplitFileName gives it.
QUILLMARSH_API string GetFileNameExtension(string const &full);
/// Removes one path separator at the end. The root of the file system, "/" on Linux, keeps it.
QUILLMARSH_API void RemoveTrailingPathSeparator(string &name);
/// Appends a path separator when there is none at the end.
QUILLMARSH_API void ForceTrailingPathSeparator(string &name);
/// Whether a name has a volume or begins with a path separator.
QUILLMARSH_API bool IsAbsolutePathName(string const &name);
/// The pieces between the separators; empty ones are skipped.
QUILLMARSH_API void SplitPathName(string const &name, std::vector<string> &pieces);
/// Resolves the pieces "." and "..". False when ".." leads above the first piece of a relative name, or above the
/// volume or root.
///
/// On Windows the outcome is made of pieces only, so that a path separator at the front is lost, and the first piece
/// of an absolute name counts as its volume. On Linux an absolute name stays absolute.
QUILLMARSH_API bool ExpandPathName(string const &in, string &out, bool trailingSeparator);

/// @}
/// @name Full names
/// @{

/// Puts the process directory in front of a relative name, and with `trailingSeparator` a path separator at the end.
QUILLMARSH_API bool ForceFullPathName(string &name, bool trailingSeparator);
/// The same on a copy; empty on failure.
QUILLMARSH_API string GetFullPathNameA(string const &name, bool trailingSeparator);

/// Wide form of a name, on Windows with the long-path prefix "\\?\" in front. False if the name is not UTF-8.
QUILLMARSH_API bool ConvertPathName(string const &name, wstring &wide);
/// And back; the prefix is removed when it stands there.
QUILLMARSH_API bool ConvertPathName(wstring const &wide, string &name);
/// Long form of a name with short pieces of the kind "PROGRA~1". On Linux, which has none, the name itself. False when
/// there is no such file or directory.
QUILLMARSH_API bool ConvertShortPathNameToLongPathName(string const &shortName, string &longName);

/// @}
/// @name Files
/// @{

/// Whether there is anything by this name. False without a look for an empty name and for one with "?" or "*", but in
/// the long-path prefix of Windows. A directory counts as well.
QUILLMARSH_API bool FileExists(string const &name);
/// Deletes a file; a symbolic link goes itself and not what it stands for.
QUILLMARSH_API bool DeleteFileA(string const &name);
/// True when the name is free, or is made free since `overwrite` is set.
QUILLMARSH_API bool IfFileExistsDeleteOnOverwrite(string const &name, bool overwrite);
/// Copies a file with its permissions and time of change. Where `to` exists, it is replaced only with `overwrite`, and
/// only once the copy is complete: a failure leaves it as it was. No copy on itself.
QUILLMARSH_API bool CopyFileA(string const &from, string const &to, bool overwrite);
/// Renames a file or directory; a file is copied when the names lie on different devices, and the old one then deleted.
/// The same care for `to` as in CopyFileA.
QUILLMARSH_API bool MoveFileA(string const &from, string const &to, bool overwrite);

/// What bears a name; with `followLinks`, what a link of that name leads to. `none` if the system does not tell.
QUILLMARSH_API std::filesystem::file_type GetFileType(string const &name, bool followLinks);

/// @}
/// @name Files in streams of the standard library
/// @{

/// Path by which a stream opens a file; on Windows a full one, longer than the system's old limit if need be.
///
/// Empty for a name that no file has: an empty one, one with a character 0, and on Windows one that is not UTF-8, or a
/// device's, like "nul.txt".
QUILLMARSH_API std::filesystem::path GetStreamPath(string const &name);
/// The system's reason for the calling thread's last failure, of a file operation here, of a stream, or of
/// GetStreamPath.
QUILLMARSH_API string GetLastFailureReason();

/// @}
/// @name Directories
/// @{

/// Whether there is anything by this name, without its trailing separator. False without a look for an empty name, one
/// with "?" or "*", and one of two characters that is no drive; on Linux, which has no drives, "/x" is looked up.
QUILLMARSH_API bool DirectoryExists(string const &name);
/// Deletes an empty directory.
QUILLMARSH_API bool DeleteDirectory(string const &name);
/// Creates one directory in a directory that exists. False when the name is taken.
QUILLMARSH_API bool CreateDirectoryA(string const &name);
/// Creates all directories of a path that do not exist. False for an empty path.
QUILLMARSH_API bool CreateDirectoryPath(string const &path);

/// Current directory of the process.
QUILLMARSH_API bool GetProcessDirectory(string &directory, bool trailingSeparator);
QUILLMARSH_API bool SetProcessDirectory(string const &directory);
/// Home directory of the user: "%HOMEDRIVE%" and "%HOMEPATH%" together. On Linux, where they are not set as a rule, it
/// is else the one that the system knows.
QUILLMARSH_API bool GetUserHomeDirectory(string &directory, bool trailingSeparator);
/// "%USERPROFILE%"; on Linux, where it is not set as a rule, else the home directory.
QUILLMARSH_API bool GetUserProfileDirectory(string &directory, bool trailingSeparator);
/// Directory for temporary files.
QUILLMARSH_API bool GetTempDirectory(string &directory, bool trailingSeparator);
/// Creates an empty file with a new name in a directory. Windows takes the first three characters of the prefix, and no
/// directory beyond its old limit of some 250 characters.
QUILLMARSH_API bool CreateTempFile(string &result, string const &directory, string const &prefix);

/// @}

/// Walks a tree of directories depth first and calls a hook for each file and directory.
///
/// Derive, override what is of interest, and call Walk:
/// @code
/// class Lister : public file_system::FileSystemWalker
/// {
///     void OnFile(unsigned int, unsigned int, string const &path, string const &name) override
///     {
///         std::cout << path << name << '\n';
///     }
/// };
/// Lister().Walk("/usr/share");
/// @endcode
/// A link to a directory counts as one. A directory that the walk is inside of already (a circle of links) is given to
/// OnDirectory like any other but not entered again, so that each walk ends. A directory that cannot be read is empty.
/// On Linux the entries of a directory come sorted by their bytes, on Windows in the order of the system.
///
/// The walk runs on the thread that calls Walk; one walker makes one walk at a time.
class QUILLMARSH_API FileSystemWalker
{
public:
    virtual ~FileSystemWalker();

    /// Walks the tree under `root`. True if the root could be listed and the walk was not cancelled.
    bool Walk(string const &root);

protected:
    FileSystemWalker();
    FileSystemWalker(FileSystemWalker const &);
    FileSystemWalker &operator=(FileSystemWalker const &);

    /// @name Hooks
    /// `level` is 0 in the root, `index` counts the entries of one directory that are delivered, `path` ends in a path
    /// separator, and `path + name` is the entry's full name.
    /// @{
    virtual void OnBeginWalk(string const &root);
    virtual void OnEndWalk();
    virtual void OnFile(unsigned int level, unsigned int index, string const &path, string const &name);
    /// True, as by default, lets the walk enter the directory.
    virtual bool OnDirectory(unsigned int level, unsigned int index, string const &path, string const &name);
    /// @}

    /// Ends the walk at the next entry; for the hooks.
    void CancelWalk() { cancelled_ = true; }

private:
    struct Ancestors;

    bool WalkOneLevel(unsigned int level, string const &path, Ancestors const *ancestors);

    bool cancelled_ = false;
};

} // namespace quillmarsh::file_system

#endif
