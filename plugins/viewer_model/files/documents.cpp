#include "documents.h"

#include "loading.h"

#include <quillmarsh/basetools/filesystem.h>

#include <algorithm>
#include <utility>

namespace viewer
{

using namespace quillmarsh;

namespace
{

/// A document looks at its file this often.
constexpr auto s_watchInterval = std::chrono::milliseconds(250);

} // namespace

string Document::GetTitle() const
{
    string path;
    string base;
    string extension;
    if (fileName_.empty())
        return title_;
    file_system::SplitFileName(fileName_, path, base, extension);
    return fileName_.substr(path.size());
}

void Document::TakeResult(LoadResult const &result)
{
    ++revision_;
    stamp_ = result.stamp;
    if (result.part == LoadResult::ePart::e_failed)
    {
        failure_ = result.failure;
        return;
    }
    failure_.clear();
    if (ReplaceEqual(result.loaded))
        return;
    // The steps since the last save would be lost.
    if (IsChanged())
        Change(result.loaded, "reload");
    else
    {
        undo_.clear();
        redo_.clear();
        loaded_ = result.loaded;
    }
    saved_ = result.loaded->content;
}

bool Document::ReplaceEqual(LoadedPtr const &loaded)
{
    bool isFound = false;
    auto const replace = [&](LoadedPtr &own)
    {
        if (!own || own->content != loaded->content)
            return;
        own = loaded;
        isFound = true;
    };
    replace(loaded_);
    for (std::deque<Step> *const steps : {&undo_, &redo_})
    {
        for (Step &step : *steps)
            replace(step.loaded);
    }
    return isFound;
}

void Document::TakeLevels(LoadedPtr const &loaded)
{
    if (ReplaceEqual(loaded))
        ++revision_;
}

void Document::Fail(FileStamp const &stamp, string const &failure)
{
    ++revision_;
    stamp_ = stamp;
    failure_ = failure;
}

void Document::Change(LoadedPtr loaded, string const &step)
{
    ++revision_;
    undo_.push_back({step, std::move(loaded_)});
    if (undo_.size() > s_maxSteps)
        undo_.pop_front();
    redo_.clear();
    loaded_ = std::move(loaded);
}

string Document::Undo()
{
    return Move(undo_, redo_);
}

string Document::Redo()
{
    return Move(redo_, undo_);
}

string Document::Move(std::deque<Step> &from, std::deque<Step> &to)
{
    if (from.empty())
        return string();
    ++revision_;
    Step step = std::move(from.back());
    from.pop_back();
    to.push_back({step.name, std::move(loaded_)});
    loaded_ = std::move(step.loaded);
    return step.name;
}

void Document::SetSaved(string const &fileName, FileStamp const &stamp, ContentPtr const &content)
{
    ++revision_;
    fileName_ = fileName;
    title_.clear();
    stamp_ = stamp;
    saved_ = content;
    failure_.clear();
}

void Documents::Open(string const &fileName)
{
    auto const found = std::find_if(all_.begin(), all_.end(),
                                    [&](DocumentPtr const &document) { return document->GetFileName() == fileName; });
    if (found != all_.end())
    {
        SetCurrent(*found);
        if (!current_->GetFailure().empty())
            loader_.Load(fileName);
        return;
    }
    Add(std::make_shared<Document>(fileName));
    loader_.Load(fileName);
}

void Documents::Add(DocumentPtr document)
{
    all_.push_back(document);
    MakeCurrent(std::move(document));
}

void Documents::Close()
{
    auto const found = std::find(all_.begin(), all_.end(), current_);
    if (found == all_.end())
        return;
    // Those of the document count no longer.
    revision_ += 1 + current_->GetRevision();
    if (!current_->GetFileName().empty())
        loader_.Cancel(current_->GetFileName());
    auto const index = static_cast<std::size_t>(found - all_.begin());
    all_.erase(found);
    MakeCurrent(all_.empty() ? nullptr : all_[index == 0 ? 0 : index - 1]);
}

void Documents::SetCurrent(DocumentPtr const &document)
{
    if (document != current_)
        MakeCurrent(document);
}

void Documents::MakeCurrent(DocumentPtr document)
{
    ++revision_;
    current_ = std::move(document);
    if (!current_)
        return;
    current_->currentTime_ = ++time_;
    if (std::exchange(current_->isReleased_, false))
        loader_.Load(current_->fileName_);
}

/// Returns the document that was current longest ago, among those whose files have all of them; null if the others take
/// little memory.
Document *Documents::FindReleasable() const
{
    // The document itself, and the loader.
    constexpr long ownHolders = 2;
    std::uint64_t byteSize = 0;
    Document *oldest = nullptr;
    for (DocumentPtr const &document : all_)
    {
        if (document == current_ || !document->loaded_)
            continue;
        byteSize += CountBytes(*document->loaded_);
        bool const isOnDisk = !document->fileName_.empty() && document->failure_.empty() && !document->IsChanged();
        bool const isHeld =
            document->loaded_.use_count() > ownHolders || !document->undo_.empty() || !document->redo_.empty();
        if (isOnDisk && !isHeld && (!oldest || document->currentTime_ < oldest->currentTime_))
            oldest = document.get();
    }
    return byteSize > othersByteSize_ ? oldest : nullptr;
}

void Documents::Release()
{
    for (Document *document = FindReleasable(); document; document = FindReleasable())
    {
        ++document->revision_;
        document->isReleased_ = true;
        document->loaded_ = nullptr;
    }
}

unsigned int Documents::GetRevision() const
{
    unsigned int revision = revision_;
    for (DocumentPtr const &document : all_)
        revision += document->GetRevision();
    return revision;
}

std::vector<LoadResult> Documents::Poll()
{
    std::vector<LoadResult> results = loader_.Poll();
    for (LoadResult const &result : results)
    {
        if (result.part == LoadResult::ePart::e_preview)
            continue;
        for (DocumentPtr const &document : all_)
        {
            if (document->GetFileName() == result.fileName)
                document->TakeResult(result);
        }
    }
    if (!results.empty())
        Release();
    Watch();
    return results;
}

void Documents::Watch()
{
    auto const now = std::chrono::steady_clock::now();
    if (all_.empty() || now < nextWatch_)
        return;
    nextWatch_ = now + s_watchInterval / all_.size();
    Document &document = *all_[++watched_ % all_.size()];
    if (document.GetFileName().empty() || document.IsLoading())
        return;
    FileStamp const stamp = GetFileStamp(document.GetFileName());
    // Whoever writes the file shall have come to an end: the stamp must stay the same from one look to the next.
    bool const isSettled = stamp == document.seenStamp_;
    document.seenStamp_ = stamp;
    if (stamp == document.GetStamp() || !isSettled)
        return;
    if (stamp == FileStamp())
    {
        document.Fail(stamp, document.GetFileName() + ": is gone");
        return;
    }
    document.stamp_ = stamp;
    loader_.Load(document.GetFileName());
}

} // namespace viewer
