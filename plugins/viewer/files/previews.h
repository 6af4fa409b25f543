// Previews of the files that were listed.
#ifndef QUILLMARSH_PLUGINS_VIEWER_FILES_PREVIEWS_H
#define QUILLMARSH_PLUGINS_VIEWER_FILES_PREVIEWS_H

#include <viewer_model/files/loader.h>

#include <unordered_map>

namespace viewer
{

/// Previews by the names of their files; the latest ones are kept. Frame thread only.
class Previews : quillmarsh::NoCopy
{
public:
    /// Borrows the loader.
    explicit Previews(Loader &loader) : loader_(loader) {}

    /// Asks for those of these files that are not there, unless it is the same list as in the last call.
    void Ask(std::vector<string> const &fileNames);
    /// Keeps what has come. True if it was a preview.
    bool Take(LoadResult const &result);
    /// Null if it is not there.
    std::shared_ptr<Preview const> Find(string const &fileName) const;

private:
    /// Previews that are kept: 16 MiB.
    static constexpr std::size_t s_maxPreviews = 1024;

    Loader &loader_;
    std::unordered_map<string, std::shared_ptr<Preview const>> previews_;
    std::vector<string> asked_;
};

} // namespace viewer

#endif
