#include <quillmarsh/gui/scrollgadget.h>

#include <algorithm>
#include <cstdint>

namespace quillmarsh
{

ScrollGadget::ScrollGadget() = default;

ScrollGadget::ScrollGadget(ScrollGadget const &) = default;

ScrollGadget &ScrollGadget::operator=(ScrollGadget const &) = default;

ScrollGadget::~ScrollGadget() = default;

void ScrollGadget::SetTotalSize(unsigned int size)
{
    totalSize_ = size;
    LimitPosition(position_);
}

void ScrollGadget::SetVisibleSize(unsigned int size)
{
    visibleSize_ = size;
    LimitPosition(position_);
}

void ScrollGadget::SetPosition(int position)
{
    LimitPosition(position);
}

void ScrollGadget::OffsetPosition(int offset)
{
    LimitPosition(static_cast<long long>(position_) + offset);
}

void ScrollGadget::SetPositionToMax()
{
    LimitPosition(GetMaxPosition());
}

void ScrollGadget::LimitPosition(long long position)
{
    position_ = static_cast<unsigned int>(std::clamp<long long>(position, 0, GetMaxPosition()));
    UpdateThumbParameters();
}

unsigned int ScrollGadget::GetMaxPosition() const
{
    return IsVisibleLessThanTotal() ? totalSize_ - visibleSize_ : 0;
}

unsigned int ScrollGadget::GetLastVisiblePosition() const
{
    std::int64_t const last = std::min<std::int64_t>(std::int64_t(position_) + visibleSize_, totalSize_) - 1;
    return static_cast<unsigned int>(std::max<std::int64_t>(last, 0));
}

void ScrollGadget::ResetLogicalParameters()
{
    totalSize_ = visibleSize_ = 1;
    position_ = 0;
    UpdateThumbParameters();
}

void ScrollGadget::ResetDrawingParameters()
{
    barLength_ = minThumbLength_ = maxPixelsPerStep_ = thumbLength_ = barWidth_ = 1;
    isEnabledMaxPixelsPerStep_ = true;
    thumbOffset_ = 0;
    barPosX_ = barPosY_ = 0;
}

void ScrollGadget::UpdateThumbParameters()
{
    std::uint64_t const bar = barLength_;
    std::uint64_t const hidden = GetMaxPosition();
    if (hidden == 0)
    {
        thumbLength_ = barLength_;
        thumbOffset_ = 0;
        return;
    }
    std::uint64_t thumb = std::max<std::uint64_t>(bar * visibleSize_ / totalSize_, minThumbLength_);
    // Any two numbers of 32 bits have a product of 64 bits.
    std::uint64_t const longestWay = hidden * maxPixelsPerStep_;
    if (isEnabledMaxPixelsPerStep_ && longestWay < bar)
        thumb = std::max(thumb, bar - longestWay);
    std::uint64_t const way = bar > thumb ? bar - thumb : 0;
    thumbLength_ = static_cast<unsigned int>(thumb);
    thumbOffset_ = static_cast<unsigned int>(way * position_ / hidden);
}

} // namespace quillmarsh
