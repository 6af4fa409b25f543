// Saves data in files: replaces a file only if that is allowed, and only by a complete one.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_CODECS_FILEREPLACEMENT_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_CODECS_FILEREPLACEMENT_H

#include <quillmarsh/platform/types.h>

#include <filesystem>

namespace quillmarsh
{

/// New contents for a file. The file keeps its old contents until the new ones are complete.
///
/// The contents are written to a new file beside the target, which no other program creates or opens, and which
/// replaces the target at the end. A symbolic link stays and then leads to the new contents, even if it led to no file
/// before. The permissions stay. A pipe or a socket is replaced by a file. A device is written in place, and so is a
/// file in a directory where no new file can be created.
///
/// When it refuses or fails, it tells a codec's failure (see CodecFailureSentry).
/// @code
/// FileReplacement replacement(fileName, overwrite);
/// bool const succeeded = !replacement.GetPath().empty() && Write(replacement.GetPath()) && replacement.Commit();
/// @endcode
class FileReplacement : NoCopy
{
public:
    /// Prepares the new file. Without `overwrite`, the name must be free now and again when the contents are complete.
    FileReplacement(string const &fileName, bool overwrite);
    /// Removes the new file if it was not committed.
    ~FileReplacement();

    /// Returns the file to write to. Empty when the name exists and must not be replaced, belongs to a directory, or to
    /// a file that cannot be written.
    std::filesystem::path const &GetPath() const { return path_; }

    /// Replaces the old contents by the new ones; the caller has written and closed the file. False if that fails.
    bool Commit();

private:
    void ReplaceFile(string const &fileName);
    bool CreateBeside(std::filesystem::path const &target);

    bool overwrite_;
    std::filesystem::path path_;
    /// Final name of the file at path_; empty when it is written in place.
    std::filesystem::path target_;
    std::filesystem::perms permissions_ = std::filesystem::perms::unknown;
};

/// A name for a temporary file, in a new folder that only this user can open. The folder is removed at the end, with
/// the file if there is one.
class TemporaryFile : NoCopy
{
public:
    TemporaryFile();
    ~TemporaryFile();

    /// Returns the full name; empty when the folder cannot be created, with the reason in errno.
    string const &GetName() const { return name_; }

private:
    std::filesystem::path folder_;
    string name_;
};

} // namespace quillmarsh

#endif
