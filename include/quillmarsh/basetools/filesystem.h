// Path arithmetic, file operations, and the walk through a tree of directories.
#ifndef QUILLMARSH_BASETOOLS_FILESYSTEM_H
#define QUILLMARSH_BASETOOLS_FILESYSTEM_H

#include <quillmarsh/platform/types.h>

#include <filesystem>
#include <vector>

/// Files and their names. Paths are UTF-8; Linux passes any other bytes through.
///
/// Nothing here throws: an operation that fails returns false, and leaves its text outputs empty. Any thread may call
/// everything here; the process directory is shared by all threads.
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
/// These work on the text alone, with the separators of the running system.
/// @{

/// Cuts a name into three parts: `path` up to and with the last path separator, `base`, and `extension` without its
/// separator. A dot at the first or last position of the base splits nothing off.
QUILLMARSH_API void SplitFileName(string const &full, string &path, string &base, string &extension);
/// Extension of a name, as SplitFileName() gives it.
QUILLMARSH_API string GetFileNameExtension(string const &full);
/// Removes one path separator at the end. The root of the file system, "/" on Linux, keeps its separator.
QUILLMARSH_API void RemoveTrailingPathSeparator(string &name);
/// Appends a path separator when there is none at the end.
QUILLMARSH_API void ForceTrailingPathSeparator(string &name);
/// True when a name has a volume or begins with a path separator.
QUILLMARSH_API bool IsAbsolutePathName(string const &name);
/// Gives the pieces between the separators; empty pieces are skipped.
QUILLMARSH_API void SplitPathName(string const &name, std::vector<string> &pieces);
/// Resolves the pieces "." and "..". Returns false when ".." leads above the first piece of a relative name, or above
/// the volume or root.
///
/// On Windows the result consists of pieces only: a path separator at the front is lost, and the first piece of an
/// absolute name counts as its volume. On Linux an absolute name stays absolute.
QUILLMARSH_API bool ExpandPathName(string const &in, string &out, bool trailingSeparator);

/// @}
/// @name Full names
/// @{

/// Puts the process directory in front of a relative name, and with `trailingSeparator` a path separator at the end.
QUILLMARSH_API bool ForceFullPathName(string &name, bool trailingSeparator);
/// Returns a copy of the name that went through ForceFullPathName(); empty on failure.
QUILLMARSH_API string GetFullPathNameA(string const &name, bool trailingSeparator);

/// Gives the wide form of a name, on Windows with the long-path prefix "\\?\" in front. Returns false if the name is
/// not UTF-8.
QUILLMARSH_API bool ConvertPathName(string const &name, wstring &wide);
/// Gives the name of a wide form, and removes the long-path prefix if it is there.
QUILLMARSH_API bool ConvertPathName(wstring const &wide, string &name);
/// Gives the long form of a name that has short pieces such as "PROGRA~1". Linux has no short pieces, and gives the
/// name itself. Returns false when there is no such file or directory.
QUILLMARSH_API bool ConvertShortPathNameToLongPathName(string const &shortName, string &longName);

/// @}
/// @name Files
/// @{

/// True when there is a file or directory of this name. False, without asking the system, for an empty name and for one
/// with "?" or "*" behind the long-path prefix of Windows.
QUILLMARSH_API bool FileExists(string const &name);
/// Deletes a file. Of a symbolic link the link itself is deleted, and not the file that it leads to.
QUILLMARSH_API bool DeleteFileA(string const &name);
/// Deletes the file of this name if there is one and `overwrite` is set. Returns true when the name is free then.
QUILLMARSH_API bool IfFileExistsDeleteOnOverwrite(string const &name, bool overwrite);
/// Copies a file with its permissions and time of change. If `to` exists, it is replaced only with `overwrite`, and
/// only when the copy is complete: a failure leaves it as it was. Returns false for a copy of a file to itself.
QUILLMARSH_API bool CopyFileA(string const &from, string const &to, bool overwrite);
/// Renames a file or directory. If the names lie on different devices, a file is copied and the old one deleted. Treats
/// `to` as CopyFileA() does.
QUILLMARSH_API bool MoveFileA(string const &from, string const &to, bool overwrite);

/// Kind of the file of this name; with `followLinks`, kind of the file that a link of this name leads to. `none` if the
/// system does not tell.
QUILLMARSH_API std::filesystem::file_type GetFileType(string const &name, bool followLinks);

/// @}
/// @name Files in streams of the standard library
/// @{

/// Path by which a stream opens a file. On Windows it is a full path, which may be longer than the system's old limit.
///
/// The path is empty for a name that no file has: an empty name, one with a character 0, and on Windows one that is not
/// UTF-8 or that is the name of a device, such as "nul.txt".
QUILLMARSH_API std::filesystem::path GetStreamPath(string const &name);
/// The system's reason for the last failure on the calling thread: of a file operation here, of a stream, or of
/// GetStreamPath().
QUILLMARSH_API string GetLastFailureReason();

/// @}
/// @name Directories
/// @{

/// True when there is a file or directory of this name without its trailing separator. False, without asking the
/// system, for an empty name, for one with "?" or "*", and for one of two characters that is no drive. Linux has no
/// drives, and looks up "/x".
QUILLMARSH_API bool DirectoryExists(string const &name);
/// Deletes an empty directory.
QUILLMARSH_API bool DeleteDirectory(string const &name);
/// Creates one directory in a directory that exists. Returns false when the name is taken.
QUILLMARSH_API bool CreateDirectoryA(string const &name);
/// Creates all directories of a path that do not exist. Returns false for an empty path.
QUILLMARSH_API bool CreateDirectoryPath(string const &path);

/// Gives the current directory of the process.
QUILLMARSH_API bool GetProcessDirectory(string &directory, bool trailingSeparator);
/// Sets the current directory of the process, for all threads.
QUILLMARSH_API bool SetProcessDirectory(string const &directory);
/// Gives the home directory of the user: "%HOMEDRIVE%" and "%HOMEPATH%" together. Where they are not set, as is usual
/// on Linux, Linux gives the directory that the system knows.
QUILLMARSH_API bool GetUserHomeDirectory(string &directory, bool trailingSeparator);
/// Gives the value of "%USERPROFILE%". Where it is not set, as is usual on Linux, Linux gives the home directory.
QUILLMARSH_API bool GetUserProfileDirectory(string &directory, bool trailingSeparator);
/// Gives the directory in which programs keep the user's settings: "%APPDATA%" on Windows; on Linux "XDG_CONFIG_HOME" if
/// that is an absolute path, or else ".config" in the home directory. It may not exist. Returns false when the user has
/// no home.
QUILLMARSH_API bool GetUserConfigDirectory(string &directory, bool trailingSeparator);
/// Gives the directory for what programs remember about the user, such as a history: "%LOCALAPPDATA%" on Windows,
/// "XDG_STATE_HOME" or ".local/state" on Linux. Otherwise like GetUserConfigDirectory().
QUILLMARSH_API bool GetUserStateDirectory(string &directory, bool trailingSeparator);
/// Gives the full name of a file that these programs keep in the directory of GetUserConfigDirectory(): in the directory
/// "quillmarsh" there, which may not exist. Empty when the user has no home.
QUILLMARSH_API string GetUserConfigFileName(string const &name);
/// Likewise in the directory of GetUserStateDirectory().
QUILLMARSH_API string GetUserStateFileName(string const &name);
/// Gives the full name of a file that is installed with the library, such as the pictures of the GUI; empty when there
/// is none. It is looked for in the directory "data" beside the library, and among the installed data.
QUILLMARSH_API string FindDataFile(string const &name);
/// Gives the directory for temporary files.
QUILLMARSH_API bool GetTempDirectory(string &directory, bool trailingSeparator);
/// Gives the roots of all trees of files, in ascending order and with a trailing separator: the drives of Windows, such
/// as "C:\", and "/" on Linux. A drive may be empty.
QUILLMARSH_API bool GetVolumes(std::vector<string> &volumes);
/// Creates an empty file with a new name in a directory. Windows uses the first three characters of the prefix, and
/// accepts no directory name longer than its old limit of about 250 characters.
QUILLMARSH_API bool CreateTempFile(string &result, string const &directory, string const &prefix);

/// @}

/// Walks a tree of directories depth first and calls a hook for each file and directory.
///
/// A derived class overrides the hooks that it needs:
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
/// A link to a directory counts as a directory. A directory that the walk is already inside of (a circle of links) is
/// given to OnDirectory() like any other, but is not entered again, so that each walk ends. A directory that cannot be
/// read counts as empty. On Linux the entries of a directory are sorted by their bytes, on Windows they have the order
/// of the system.
///
/// The walk runs on the thread that calls Walk(). One walker makes one walk at a time.
class QUILLMARSH_API FileSystemWalker
{
public:
    virtual ~FileSystemWalker();

    /// Walks the tree under `root`. Returns true if the root could be listed and the walk was not cancelled.
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
    /// The walk enters the directory if this returns true, as it does by default.
    virtual bool OnDirectory(unsigned int level, unsigned int index, string const &path, string const &name);
    /// @}

    /// For the hooks: ends the walk at the next entry.
    void CancelWalk() { cancelled_ = true; }

private:
    struct Ancestors;

    bool WalkOneLevel(unsigned int level, string const &path, Ancestors const *ancestors);

    bool cancelled_ = false;
};

} // namespace quillmarsh::file_system

#endif
