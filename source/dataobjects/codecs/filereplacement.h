// Files that data are saved in: replaced only when that is allowed, and only by whole ones.
#ifndef QUILLMARSH_SOURCE_DATAOBJECTS_CODECS_FILEREPLACEMENT_H
#define QUILLMARSH_SOURCE_DATAOBJECTS_CODECS_FILEREPLACEMENT_H

#include <quillmarsh/platform/types.h>

#include <filesystem>

namespace quillmarsh
{

/// Contents for a file, which is there whole or not at all, and keeps its old contents until the new ones are complete.
///
/// They are written to a file beside it, which nobody else makes or opens, and that takes its place at the end. A
/// symbolic link stays and leads to the new contents, also one that led nowhere; permissions stay. A
/// pipe or a socket gives way to a file. What is a device, or stands in a directory that takes no further file, is written in place.
///
/// Tells a codec's failure (see CodecFailureSentry) where it refuses or fails.
/// @code
/// FileReplacement replacement(fileName, overwrite);
/// bool const succeeded = !replacement.GetPath().empty() && Write(replacement.GetPath()) && replacement.Commit();
/// @endcode
class FileReplacement : NoCopy
{
public:
    /// With `overwrite` false, the name must be free now and when the new contents are complete.
    FileReplacement(string const &fileName, bool overwrite);
    /// Removes what was not committed.
    ~FileReplacement();

    /// Where to write; empty when the name is taken, or that of a directory, or of a file that cannot be written.
    std::filesystem::path const &GetPath() const { return path_; }

    /// Puts the new contents, which are written and closed, in the place of the old ones. False if that fails.
    bool Commit();

private:
    void ReplaceFile(string const &fileName);
    bool CreateBeside(std::filesystem::path const &target);

    bool overwrite_;
    std::filesystem::path path_;
    /// Name that the file at path_ gets in the end; empty when it is written in place.
    std::filesystem::path target_;
    std::filesystem::perms permissions_ = std::filesystem::perms::unknown;
};

} // namespace quillmarsh

#endif
