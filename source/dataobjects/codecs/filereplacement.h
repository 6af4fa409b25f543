// Files that hold data: opened only when they are plain ones, and replaced only by whole ones.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_CODECS_FILEREPLACEMENT_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_CODECS_FILEREPLACEMENT_H

#include <quillmarsh/platform/types.h>

#include <filesystem>

namespace quillmarsh
{

/// Path of a plain file that can be read from; empty when there is none of that name. Whatever else bears the name is
/// no data file: a directory has nothing to read, and a pipe would keep the reader waiting.
std::filesystem::path FindDataFile(string const &fileName);

/// Whether a codec may save under a name: it is free, or `overwrite` is set. A link or a pipe goes at once, while a
/// plain file stays until a FileReplacement takes its place.
bool MayReplaceFile(string const &fileName, bool overwrite);

/// New contents for a file, which keeps its old ones until the new ones are complete.
///
/// They are written to a file beside it, and that takes its place at the end. A link stays and leads to the new
/// contents; permissions stay. What is no file (a device), or stands in a directory that takes no further file, is
/// written in place.
/// @code
/// FileReplacement replacement(fileName);
/// bool const succeeded = Write(replacement.GetPath()) && replacement.Commit();
/// @endcode
class FileReplacement : NoCopy
{
public:
    explicit FileReplacement(string const &fileName);
    /// Removes what was not committed.
    ~FileReplacement();

    /// Where to write; empty when the name is that of a directory or a pipe, or of a file that cannot be written.
    std::filesystem::path const &GetPath() const { return path_; }

    /// Puts the new contents, which are written and closed, in the place of the old ones. False if that fails.
    bool Commit();

private:
    bool CreateBeside(std::filesystem::path const &target);

    std::filesystem::path path_;
    /// Name that the file at path_ gets in the end; empty when it is written in place.
    std::filesystem::path target_;
    std::filesystem::perms permissions_ = std::filesystem::perms::unknown;
};

} // namespace quillmarsh

#endif
