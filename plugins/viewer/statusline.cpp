#include "statusline.h"

#include <quillmarsh/basetools/texttools.h>

#include <algorithm>
#include <cmath>

namespace viewer
{

using namespace quillmarsh;
using widgets::Measures;

namespace
{

/// Width of the bar, in units.
constexpr float s_progressWidth = 200;
/// Greatest part of the line that what was said takes.
constexpr float s_saidShare = 0.5F;

} // namespace

StatusLine::StatusLine(gui::Component &parent, Workspace &workspace)
    : workspace_(workspace),
      said_(new widgets::Label(this, string(), widgets::ShaderName_Hint)),
      failure_(new widgets::Label(this, string(), widgets::ShaderName_Failure)),
      status_(new widgets::Label(this, string())),
      progress_(new widgets::ProgressBar(this, s_progressWidth)),
      stop_(new widgets::TextButton(this, string()))
{
    SetShaderName(widgets::ShaderName_Desk);
    for (widgets::Label *const label : {said_, failure_, status_})
        label->SetFixedWidth(true);
    stop_->SetShaderName(widgets::ShaderName_ToolButton);
    stop_->SetMark(widgets::e_mark_cross);
    stop_->SetToolTipText("Stop this job");
    stop_->SetAction([this] { workspace_.Run("stop " + MakeString(job_)); });
    for (Component *const part : std::initializer_list<Component *>{progress_, stop_})
        part->SetVisible(false);
    AttachTo(parent);
}

StatusLine::~StatusLine() = default;

void StatusLine::Update(string const &status)
{
    bool const isFailure = workspace_.WasFailure();
    said_->SetText(isFailure ? string() : workspace_.GetSaid());
    failure_->SetText(isFailure ? workspace_.GetSaid() : string());
    SetToolTipText(workspace_.GetSaid());
    status_->SetText(status);
    ShowJob();
}

void StatusLine::ShowJob()
{
    std::vector<Jobs::Job> const jobs = workspace_.GetJobs().List();
    bool const isShown = !jobs.empty();
    if (isShown)
    {
        Jobs::Job const &job = jobs.front();
        job_ = job.number;
        string text = job.title;
        if (jobs.size() > 1)
            text += " (+" + MakeString(jobs.size() - 1) + ")";
        progress_->SetText(text);
        progress_->SetValue(static_cast<float>(job.part));
        // Progress comes without a notice.
        workspace_.Invalidate();
    }
    if (isShown == progress_->IsVisible())
        return;
    progress_->SetVisible(isShown);
    stop_->SetVisible(isShown);
    ReportDirtyGeometry();
}

float StatusLine::CalcHeight()
{
    return Measures::Pixels(Measures::ControlHeight);
}

void StatusLine::RecalcLayout()
{
    float const margin = Measures::Pixels(Measures::Margin);
    float right = GetSize().x - margin;
    auto const place = [this](Component &component, float x)
    { component.SetPosition(x, std::round((GetSize().y - component.GetSize().y) / 2)); };
    for (Component *const part : std::initializer_list<Component *>{stop_, progress_})
    {
        if (!part->IsVisible())
            continue;
        right -= part->GetSize().x;
        place(*part, right);
        right -= Measures::Pixels(Measures::Gap);
    }
    float const saidWidth = std::round(std::max(0.0F, right - margin) * s_saidShare);
    for (widgets::Label *const label : {said_, failure_})
    {
        label->SetSizeX(saidWidth);
        place(*label, margin);
    }
    float const statusX = margin + saidWidth + margin;
    status_->SetSizeX(std::max(0.0F, right - statusX));
    place(*status_, statusX);
}

} // namespace viewer
