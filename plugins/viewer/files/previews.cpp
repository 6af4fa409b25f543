#include "files/previews.h"

namespace viewer
{

void Previews::Ask(std::vector<string> const &fileNames)
{
    if (fileNames == asked_)
        return;
    asked_ = fileNames;
    std::vector<string> missing;
    for (string const &name : fileNames)
    {
        if (!previews_.contains(name))
            missing.push_back(name);
    }
    if (!missing.empty())
        loader_.MakePreviews(std::move(missing));
}

bool Previews::Take(LoadResult const &result)
{
    if (result.part == LoadResult::ePart::e_content)
    {
        // A file that has changed has another preview.
        if (previews_.erase(result.fileName) != 0)
            loader_.MakePreviews({result.fileName});
        return false;
    }
    if (result.part != LoadResult::ePart::e_preview)
        return false;
    if (previews_.size() >= s_maxPreviews)
    {
        // Those that can be seen are asked for again.
        previews_.clear();
        asked_.clear();
    }
    previews_[result.fileName] = result.preview;
    return true;
}

std::shared_ptr<Preview const> Previews::Find(string const &fileName) const
{
    auto const found = previews_.find(fileName);
    return found != previews_.end() ? found->second : nullptr;
}

} // namespace viewer
