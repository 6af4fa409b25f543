#include "scrollcolumn.h"

#include <quillmarsh/gui/gui_manager.h>

#include <algorithm>
#include <cmath>

namespace viewer
{

using namespace quillmarsh;
using widgets::Measures;

namespace
{

/// Movement of the wheel for one notch.
constexpr int s_notch = 120;
/// Units that a notch scrolls.
constexpr float s_notchStep = 48;

} // namespace

ScrollColumn::ScrollColumn(gui::Component &parent)
    : stack_(new widgets::Stack(true, this)),
      bar_(new widgets::ScrollBar(true, this))
{
    stack_->SetAlignment(widgets::e_stack_stretch);
    bar_->SetAction([this](unsigned int position) { ScrollTo(static_cast<float>(position)); });
    bar_->SetWheelStep(static_cast<unsigned int>(s_notchStep));
    AttachTo(parent);
}

ScrollColumn::~ScrollColumn() = default;

void ScrollColumn::ScrollTo(float top)
{
    float const limited = std::clamp(top, 0.0F, std::max(0.0F, stack_->GetSize().y - GetSize().y));
    if (limited == top_)
        return;
    top_ = limited;
    ReportDirtyGeometry();
}

void ScrollColumn::RecalcLayout()
{
    float const barWidth = Measures::Pixels(Measures::ScrollBarWidth);
    float const height = stack_->GetSize().y;
    top_ = std::clamp(top_, 0.0F, std::max(0.0F, height - GetSize().y));
    stack_->SetPosition(0, -std::round(top_));
    stack_->SetSize(std::max(0.0F, GetSize().x - barWidth - Measures::Pixels(Measures::Grid)), height);
    bar_->SetPosition(GetSize().x - barWidth, 0);
    bar_->SetSize(barWidth, GetSize().y);
    bar_->SetSizes(static_cast<unsigned int>(height), static_cast<unsigned int>(GetSize().y));
    bar_->SetScrollPosition(static_cast<int>(top_));
    bar_->SetVisible(bar_->IsNeeded());
}

bool ScrollColumn::OnMouseWheel(int delta, vec2 const &)
{
    float const before = top_;
    ScrollTo(top_ - static_cast<float>(delta) / s_notch * Measures::Pixels(s_notchStep));
    return top_ != before;
}

void ScrollColumn::FollowFocus()
{
    gui::Component *const focus = gui::Manager::Instance().GetKeyboardFocusTarget();
    if (focus == lastFocus_.Get())
        return;
    lastFocus_ = focus;
    if (!focus->IsDescendantOf(*stack_))
        return;
    float const margin = Measures::Pixels(Measures::Gap);
    float const upper = focus->GetAbsolutePosition().y - GetAbsolutePosition().y;
    float const lower = upper + focus->GetSize().y;
    if (upper < 0)
        ScrollTo(top_ + upper - margin);
    else if (lower > GetSize().y)
        ScrollTo(top_ + lower - GetSize().y + margin);
}

} // namespace viewer
