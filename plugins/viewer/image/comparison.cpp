#include "comparison.h"

namespace viewer
{
namespace
{

constexpr char const *s_names[] = {"side", "blink", "divider", "difference"};

} // namespace

/// What the job has made.
struct Comparison::Result
{
    ImageLevelsPtr levels;
    std::optional<Figures> figures;
};

std::span<char const *const> GetComparisonNames()
{
    return s_names;
}

void Comparison::Begin(DocumentPtr const &other)
{
    End();
    other_ = other;
    hasNews_ = true;
}

void Comparison::End()
{
    StopDifference();
    other_.reset();
    loaded_.reset();
    showsOther = false;
    revision_ = 0;
    hasNews_ = true;
}

ChannelFigures const *Comparison::GetFigures() const
{
    return difference_ != nullptr && figures_ && !figures_->channels.empty() ? &figures_->channels.front() : nullptr;
}

bool Comparison::Update(LoadedPtr const &current)
{
    if (other_ != nullptr && other_->GetRevision() != revision_)
    {
        revision_ = other_->GetRevision();
        LoadedPtr const &loaded = other_->GetLoaded();
        bool const isImage = loaded != nullptr && loaded->imageLevels != nullptr;
        loaded_ = isImage ? loaded : nullptr;
        // The list of files has told why a file cannot be opened.
        failure_ = other_->GetFailure();
        if (loaded != nullptr && !isImage)
        {
            failure_ = other_->GetTitle() + " is no image";
            workspace_.Say(failure_, true);
        }
        hasNews_ = true;
    }
    bool const isWanted = Is(eComparison::e_difference) && current != nullptr && current->content != nullptr;
    bool const isRight =
        isWanted && first_ == current->content && second_ == loaded_->content && kind_ == settings.difference;
    if (isWanted && !isRight)
        StartDifference(current);
    return std::exchange(hasNews_, false);
}

void Comparison::StopDifference()
{
    if (isWanted_ != nullptr)
        *isWanted_ = false;
    if (job_ != 0)
        workspace_.GetJobs().Stop(job_);
    job_ = 0;
    first_.reset();
    second_.reset();
    difference_.reset();
    figures_.reset();
    failure_.clear();
}

void Comparison::StartDifference(LoadedPtr const &current)
{
    StopDifference();
    hasNews_ = true;
    first_ = current->content;
    second_ = loaded_->content;
    kind_ = settings.difference;
    isWanted_ = std::make_shared<bool>(true);
    auto const finish = [this, isWanted = isWanted_](Result const &result, string const &failure)
    {
        if (!*isWanted)
            return;
        job_ = 0;
        difference_ = result.levels;
        figures_ = result.figures;
        failure_ = failure;
        hasNews_ = true;
        if (!failure.empty())
            workspace_.Say(failure, true);
        workspace_.Invalidate();
    };
    auto const work = [a = first_, b = second_, kind = kind_, finish](Jobs::Progress const &progress) -> Jobs::Finish
    {
        ContentPtr const content = MakeDifference(*a, *b, kind, 1, progress);
        if (content == nullptr)
            return {};
        Result result;
        result.levels = ImageLevels::Build(content, progress);
        if (result.levels == nullptr)
            return {};
        auto const &image = result.levels->GetLevel(0);
        result.figures = ComputeFigures(image, {0, 0, image.GetNumColumns(), image.GetNumRows()}, progress);
        return [finish, result] { finish(result, string()); };
    };
    job_ = workspace_.GetJobs().Start("difference", work,
                                      [finish](string const &reason) { finish(Result(), "difference: " + reason); });
}

} // namespace viewer
