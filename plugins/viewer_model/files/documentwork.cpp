#include "documentwork.h"

#include "loading.h"

#include <quillmarsh/basetools/filesystem.h>
#include <quillmarsh/basetools/texttools.h>

#include <algorithm>
#include <limits>
#include <mutex>

namespace viewer
{

using namespace quillmarsh;
using namespace quillmarsh::sampled_data;

namespace
{

string Join(std::vector<string> const &words)
{
    string text;
    for (string const &word : words)
        text += (text.empty() ? "" : ", ") + word;
    return text;
}

void RequireDocument(DocumentPtr const &document)
{
    if (!document)
        throw DataException("nothing is open");
    if (!document->IsLoading() && !document->GetLoaded())
        throw DataException(document->GetFailure());
}

} // namespace

/// The work on one document.
struct DocumentWork::Line
{
    DocumentPtr document;
    std::deque<Task> waiting;
    /// Jobs that have not ended.
    unsigned int numPending = 0;
    unsigned int numBegun = 0;

    /// @name Shared with the thread of the jobs
    /// @{
    std::mutex mutex;
    /// Jobs that have succeeded.
    unsigned int numDone = 0;
    LoadedPtr latest;
    /// @}
};

struct DocumentWork::Task
{
    /// What the thread makes of the content, and what the frame thread does then; no function when it was stopped.
    struct Result
    {
        /// Null if the content stays.
        LoadedPtr loaded;
        Jobs::Finish finish;
    };

    string title;
    /// Beginning of failures that need no title.
    string subject;
    std::function<Result(LoadedPtr const &latest, Jobs::Progress const &progress)> work;
};

DocumentWork::DocumentWork(Jobs &jobs, Say say) : jobs_(jobs), say_(std::move(say)) {}

DocumentWork::~DocumentWork() = default;

void DocumentWork::Change(DocumentPtr const &document, Edit const &edit, string const &step)
{
    RequireDocument(document);
    if (!document->IsLoading() && !IsBusy(document))
        RequirePossible(*document->GetLoaded()->content, edit);
    auto work = [this, document, edit, step](LoadedPtr const &latest, Jobs::Progress const &progress) -> Task::Result
    {
        LoadedPtr const loaded = Apply(*latest->content, edit, progress);
        if (!loaded)
            return {};
        return {loaded, [this, document, step, loaded]
                {
                    document->Change(loaded, step);
                    say_(document->GetTitle() + ": " + step, false);
                }};
    };
    Add(document, {document->GetTitle() + ": " + step, document->GetTitle() + ": ", work});
}

void DocumentWork::Save(DocumentPtr const &document, string const &fileName, FileType const &type,
                        SaveSettings const &settings)
{
    RequireDocument(document);
    if (!document->IsLoading() && !IsBusy(document))
        RequireSaveable(document->GetLoaded()->content->GetData(), fileName, type, settings);
    auto work = [=, this](LoadedPtr const &latest, Jobs::Progress const &progress) -> Task::Result
    {
        if (!progress(-1))
            return {};
        SampledData const &data = latest->content->GetData();
        SaveFile(data, fileName, type, settings);
        FileStamp const stamp = GetFileStamp(fileName);
        string const losses = Join(ListSavingLosses(data, type));
        return {nullptr, [this, document, fileName, stamp, losses, content = latest->content]
                {
                    document->SetSaved(fileName, stamp, content);
                    say_(fileName + ": saved" + (losses.empty() ? "" : ", without " + losses), false);
                }};
    };
    Add(document, {"save " + fileName, fileName + ": ", work});
}

void DocumentWork::SaveMipmaps(DocumentPtr const &document, string const &prefix, std::optional<eSampleFormat> format,
                               eSizeFilter filter, SaveSettings const &settings)
{
    RequireDocument(document);
    auto work = [=, this](LoadedPtr const &latest, Jobs::Progress const &progress) -> Task::Result
    {
        SampledData const &data = latest->content->GetData();
        if (!progress(-1))
            return {};
        std::vector<SampledData> const levels = BuildMipmaps(data, format.value_or(data.GetFormat()), filter);
        if (!progress(-1))
            return {};
        SaveLevels(levels, prefix, settings);
        return {nullptr, [this, prefix, count = levels.size()]
                { say_(prefix + ": saved " + MakeString(count) + " levels", false); }};
    };
    Add(document, {"mipmaps " + prefix, prefix + '.', work});
}

void DocumentWork::MakeLevels(DocumentPtr const &document)
{
    RequireDocument(document);
    auto work = [document](LoadedPtr const &latest, Jobs::Progress const &progress) -> Task::Result
    {
        LoadedPtr const complete = Complete(*latest, progress, std::numeric_limits<std::uint64_t>::max());
        if (!complete)
            return {};
        return {complete, [document, complete] { document->TakeLevels(complete); }};
    };
    Add(document, {document->GetTitle() + ": levels", document->GetTitle() + ": ", work});
}

string DocumentWork::Undo(DocumentPtr const &document)
{
    RequireDocument(document);
    if (IsBusy(document))
        throw DataException(document->GetTitle() + ": work on it goes on; stop it, or wait for it");
    string step = document->Undo();
    if (step.empty())
        throw DataException(document->GetTitle() + ": there is no step to take back");
    return step;
}

string DocumentWork::Redo(DocumentPtr const &document)
{
    RequireDocument(document);
    if (IsBusy(document))
        throw DataException(document->GetTitle() + ": work on it goes on; stop it, or wait for it");
    string step = document->Redo();
    if (step.empty())
        throw DataException(document->GetTitle() + ": there is no step to make again");
    return step;
}

bool DocumentWork::IsBusy(DocumentPtr const &document) const
{
    return std::any_of(lines_.begin(), lines_.end(),
                       [&](std::shared_ptr<Line> const &line) { return line->document == document; });
}

void DocumentWork::Update()
{
    // A line may end, and its document may get another one, while it is begun.
    std::vector<std::shared_ptr<Line>> const lines = lines_;
    for (std::shared_ptr<Line> const &line : lines)
    {
        if (line->waiting.empty() || line->document->IsLoading())
            continue;
        std::deque<Task> const waiting = std::exchange(line->waiting, {});
        if (!line->document->GetLoaded())
        {
            say_(waiting.front().title + ": " + line->document->GetFailure(), true);
            std::erase(lines_, line);
            continue;
        }
        for (Task const &task : waiting)
            Begin(line, task);
    }
}

DocumentWork::Line &DocumentWork::FindLine(DocumentPtr const &document)
{
    for (std::shared_ptr<Line> const &line : lines_)
    {
        if (line->document == document)
            return *line;
    }
    lines_.push_back(std::make_shared<Line>());
    lines_.back()->document = document;
    return *lines_.back();
}

void DocumentWork::Add(DocumentPtr const &document, Task task)
{
    FindLine(document).waiting.push_back(std::move(task));
    Update();
}

void DocumentWork::Begin(std::shared_ptr<Line> const &line, Task const &task)
{
    if (line->numPending++ == 0)
        line->latest = line->document->GetLoaded();
    auto work = [line, task, number = line->numBegun++, this](Jobs::Progress const &progress) -> Jobs::Finish
    {
        LoadedPtr latest;
        {
            std::lock_guard const lock(line->mutex);
            if (line->numDone != number)
                throw DataException("the work ahead of it was not done");
            latest = line->latest;
        }
        Task::Result const result = task.work(latest, progress);
        if (!result.finish)
            return {};
        std::lock_guard const lock(line->mutex);
        ++line->numDone;
        if (result.loaded)
            line->latest = result.loaded;
        return [this, line, finish = result.finish]
        {
            End(*line);
            finish();
        };
    };
    auto failed = [this, line, title = task.title, subject = task.subject](string const &reason)
    {
        End(*line);
        // Failures of files name them already.
        say_(reason.starts_with(subject) ? reason : title + ": " + reason, reason != Jobs::s_szStopped);
    };
    jobs_.Start(task.title, work, failed);
}

void DocumentWork::End(Line const &line)
{
    std::erase_if(lines_, [&](std::shared_ptr<Line> const &each)
                  { return each.get() == &line && --each->numPending == 0 && each->waiting.empty(); });
}

} // namespace viewer
