// The files of a folder that the viewer can open.
#ifndef QUILLMARSH_PLUGINS_VIEWER_MODEL_FILES_FOLDER_H
#define QUILLMARSH_PLUGINS_VIEWER_MODEL_FILES_FOLDER_H

#include <quillmarsh/platform/types.h>

#include <cstdint>
#include <vector>

namespace viewer
{

using quillmarsh::string;

/// Entry of a folder.
struct FolderEntry
{
    /// Without the folder.
    string name;
    bool isFolder = false;
    /// 1 signal, 2 image, 3 volume, 0 where the name does not tell.
    unsigned int numDimensions = 0;
    std::uint64_t byteSize = 0;
    /// One line: why the file could not be opened; empty if it was not tried or can be.
    string failure = string();
    /// Of the last change, as in FileStamp.
    std::int64_t time = 0;
};

/// Folders and the files of known types in a folder: folders first, then by name, numbers in names by their value. Names
/// that begin with a dot are left out. Frame thread only.
class Folder
{
public:
    /// Reads a folder. False, with a reason of one line and nothing changed, if it cannot be read. Keeps the failures of
    /// entries that are still there and have not changed.
    bool Read(string const &path, string &reason);
    /// With a trailing separator; empty at first.
    string const &GetPath() const { return path_; }
    /// All entries that have every word of the filter in their names, in upper or lower case. Words stand between
    /// spaces.
    std::vector<FolderEntry> const &GetEntries() const { return shown_; }
    void SetFilter(string const &words);
    string const &GetFilter() const { return filter_; }
    void SetFailure(string const &name, string const &failure);
    /// Returns the name with path of the next file that is shown, or the previous one, around at the ends; empty if there
    /// is no other. A file that is not in the folder has the place of its name.
    string FindNeighbour(string const &fileName, bool forward) const;
    /// Counts changes of what GetEntries() returns.
    unsigned int GetRevision() const { return revision_; }

private:
    void Filter();

    string path_;
    string filter_;
    std::vector<FolderEntry> all_;
    std::vector<FolderEntry> shown_;
    unsigned int revision_ = 0;
};

} // namespace viewer

#endif
