// Folders that were listed before.
#ifndef QUILLMARSH_PLUGINS_VIEWER_FILES_RECENTFOLDERS_H
#define QUILLMARSH_PLUGINS_VIEWER_FILES_RECENTFOLDERS_H

#include <quillmarsh/basetools/filesystem.h>

#include <algorithm>
#include <vector>

namespace viewer
{

/// The last folders, the latest first, each once.
class RecentFolders
{
public:
    static constexpr std::size_t s_maxFolders = 10;

    void Add(quillmarsh::string folder)
    {
        quillmarsh::file_system::ForceTrailingPathSeparator(folder);
        std::erase(folders_, folder);
        folders_.insert(folders_.begin(), folder);
        folders_.resize(std::min(folders_.size(), s_maxFolders));
    }
    std::vector<quillmarsh::string> const &GetAll() const { return folders_; }

private:
    std::vector<quillmarsh::string> folders_;
};

} // namespace viewer

#endif
