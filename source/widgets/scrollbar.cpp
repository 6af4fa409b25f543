#include <quillmarsh/widgets/scrollbar.h>

#include <quillmarsh/widgets/looknames.h>
#include <quillmarsh/widgets/measures.h>

#include "source/widgets/dragthumb.h"
#include "source/widgets/inputhelp.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace quillmarsh::widgets
{

namespace
{

/// Longest bar, in pixels: far beyond any window, and still a whole number.
constexpr float s_maxLength = 1 << 20;

} // namespace

class ScrollBar::ScrollThumb : public DragThumb
{
public:
    explicit ScrollThumb(ScrollBar &bar) : DragThumb(bar.vertical_, &bar), bar_(bar)
    {
        SetShaderName(ShaderName_ScrollThumb);
    }

    void OnDragBegin() override { startOffset_ = offset_ = static_cast<float>(bar_.gadget_.GetThumbOffset()); }

    void OnThumbMoved(float distance) override
    {
        ScrollGadget const &gadget = bar_.gadget_;
        float const way = std::max(0.0F, bar_.GetLength() - static_cast<float>(gadget.GetThumbLength()));
        offset_ = std::clamp(startOffset_ + distance, 0.0F, way);
        double const fraction = way > 0 ? static_cast<double>(offset_) / static_cast<double>(way) : 0;
        bar_.ChangeByUser(std::llround(fraction * gadget.GetMaxPosition()));
    }

    void OnThumbReleased() override { bar_.PlaceThumb(); }

    /// Place of the thumb while it is dragged, which need not be that of a whole step.
    float GetDragOffset() const { return offset_; }

private:
    ScrollBar &bar_;
    float startOffset_ = 0;
    float offset_ = 0;
};

ScrollBar::ScrollBar(bool vertical, gui::Component *parent) : vertical_(vertical), thumb_(nullptr)
{
    SetShaderName(ShaderName_ScrollBar);
    SetCanDisable(true);
    gadget_.EnableMaxPixelsPerStep(false);
    thumb_ = new ScrollThumb(*this);
    thumb_->SetVisible(false);
    if (parent != nullptr)
        AttachTo(*parent);
}

ScrollBar::~ScrollBar() = default;

void ScrollBar::SetSizes(unsigned int total, unsigned int visible)
{
    if (total == gadget_.GetTotalSize() && visible == gadget_.GetVisibleSize())
        return;
    // Only the new sizes together limit the position.
    int const position = static_cast<int>(std::min<unsigned int>(gadget_.GetPosition(), INT_MAX));
    gadget_.SetTotalSize(total);
    gadget_.SetVisibleSize(visible);
    gadget_.SetPosition(position);
    PlaceThumb();
}

void ScrollBar::SetScrollPosition(int position)
{
    gadget_.SetPosition(position);
    PlaceThumb();
}

void ScrollBar::SetWheelStep(unsigned int steps)
{
    wheelStep_ = std::max(steps, 1U);
}

bool ScrollBar::IsGrabbed() const
{
    return thumb_->IsGrabbed();
}

void ScrollBar::Scroll(bool forward, gui::eScrollDistance distance, int offset)
{
    long long const sign = forward ? 1 : -1;
    long long const position = gadget_.GetPosition();
    switch (distance)
    {
    case gui::e_scroll_line:
        ChangeByUser(position + sign * offset);
        break;
    case gui::e_scroll_page:
        ChangeByUser(position + sign * offset * std::max<long long>(gadget_.GetVisibleSize(), 1));
        break;
    case gui::e_scroll_whole:
        ChangeByUser(forward ? gadget_.GetMaxPosition() : 0);
        break;
    }
}

void ScrollBar::ChangeByUser(long long position)
{
    unsigned int const old = gadget_.GetPosition();
    SetScrollPosition(static_cast<int>(std::clamp<long long>(position, 0, INT_MAX)));
    if (gadget_.GetPosition() != old)
        action_(gadget_.GetPosition());
}

void ScrollBar::RecalcSize()
{
    float const width = Measures::Pixels(Measures::ScrollBarWidth);
    if (vertical_)
        SetSizeX(width);
    else
        SetSizeY(width);
}

void ScrollBar::RecalcLayout()
{
    PlaceThumb();
}

void ScrollBar::PlaceThumb()
{
    float const length = std::min(std::max(0.0F, std::floor(GetLength())), s_maxLength);
    float const minThumb = std::min(Measures::Pixels(Measures::MinThumbLength), length);
    gadget_.SetBarLength(static_cast<unsigned int>(length));
    gadget_.SetMinThumbLength(static_cast<unsigned int>(minThumb));
    gadget_.UpdateThumbParameters();
    if (thumb_->IsVisible() != IsNeeded())
        thumb_->SetVisible(IsNeeded());
    float const offset =
        IsGrabbed() ? std::round(thumb_->GetDragOffset()) : static_cast<float>(gadget_.GetThumbOffset());
    auto const thumbLength = static_cast<float>(gadget_.GetThumbLength());
    if (vertical_)
        PlaceComponent(*thumb_, {0, offset}, {GetSize().x, thumbLength});
    else
        PlaceComponent(*thumb_, {offset, 0}, {thumbLength, GetSize().y});
}

bool ScrollBar::OnMsgScroll(bool forward, gui::eScrollDistance distance, int offset)
{
    Scroll(forward, distance, offset);
    return true;
}

bool ScrollBar::OnMouseWheel(int delta, vec2 const &)
{
    if (!IsNeeded())
        return false;
    int const notches = TakeNotches(wheelRest_, delta);
    // Turned away from the user, the wheel scrolls back.
    ChangeByUser(static_cast<long long>(gadget_.GetPosition()) - static_cast<long long>(notches) * wheelStep_);
    return true;
}

bool ScrollBar::OnMouseButton(bool down, eMouseButton button, bool, unsigned int repeatCount, vec2 const &position)
{
    if (button != e_mouse_button_left)
        return false;
    if (!down || !IsNeeded() || (repeatCount != 0 && repeatCount == lastRepeat_))
        return true;
    lastRepeat_ = repeatCount;
    float const place = vertical_ ? position.y : position.x;
    auto const thumbBegin = static_cast<float>(gadget_.GetThumbOffset());
    if (place < thumbBegin)
        Scroll(false, gui::e_scroll_page);
    else if (place >= thumbBegin + static_cast<float>(gadget_.GetThumbLength()))
        Scroll(true, gui::e_scroll_page);
    return true;
}

void ScrollBar::OnChangedEnabled()
{
    thumb_->SetEnabled(IsEnabled());
    if (!IsEnabled())
        thumb_->ReleaseGrab();
}

} // namespace quillmarsh::widgets
