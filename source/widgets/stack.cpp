#include <quillmarsh/widgets/stack.h>

#include <algorithm>
#include <cmath>

namespace quillmarsh::widgets
{

Stack::Stack(bool vertical, gui::Component *parent, float gap)
    : vertical_(vertical),
      gap_(gap),
      alignment_(vertical ? e_stack_start : e_stack_center)
{
    SetGhost(true);
    if (parent != nullptr)
        AttachTo(*parent);
}

Stack::~Stack() = default;

void Stack::SetGap(float gap)
{
    gap_ = gap;
    ReportDirtyGeometry();
}

void Stack::SetMargin(float margin)
{
    margin_ = margin;
    ReportDirtyGeometry();
}

void Stack::SetAlignment(eStackAlign alignment)
{
    alignment_ = alignment;
    ReportDirtyGeometry();
}

void Stack::SetFitToParent(bool fit)
{
    fitsToParent_ = fit;
    ReportDirtyGeometry();
}

void Stack::SetFill(gui::Component &child, float weight)
{
    if (!child.IsChildOf(*this))
        return;
    std::erase_if(fills_, [&](Fill const &fill) { return fill.child.Get() == &child; });
    if (weight > 0)
        fills_.push_back({gui::Watch<gui::Component>(child), weight});
    ReportDirtyGeometry();
}

float Stack::FindWeight(gui::Component const &child) const
{
    for (Fill const &fill : fills_)
    {
        if (fill.child.Get() == &child)
            return fill.weight;
    }
    return 0;
}

void Stack::RecalcSize()
{
    float vec2::*const along = vertical_ ? &vec2::y : &vec2::x;
    float vec2::*const across = vertical_ ? &vec2::x : &vec2::y;
    float const gap = Measures::Pixels(gap_);
    float const margins = 2 * Measures::Pixels(margin_);
    vec2 size(0, 0);
    bool isFirst = true;
    for (gui::Component const *child : GetChildren())
    {
        if (!child->IsVisible())
            continue;
        size.*along += child->GetSize().*along + (isFirst ? 0 : gap);
        size.*across = std::max(size.*across, child->GetSize().*across);
        isFirst = false;
    }
    size += vec2(margins, margins);
    needed_ = size.*along;
    SetSize(size);
}

void Stack::RecalcLayout()
{
    float vec2::*const along = vertical_ ? &vec2::y : &vec2::x;
    float vec2::*const across = vertical_ ? &vec2::x : &vec2::y;
    float const gap = Measures::Pixels(gap_);
    float const margin = Measures::Pixels(margin_);
    if (fitsToParent_)
    {
        vec2 const room = GetParentSize();
        SetPosition(0, 0);
        SetSize(std::max(GetSize().x, room.x), std::max(GetSize().y, room.y));
    }
    float left = std::max(GetSize().*along - needed_, 0.F);
    float weights = 0;
    for (gui::Component const *child : GetChildren())
        weights += child->IsVisible() ? FindWeight(*child) : 0;

    float const room = GetSize().*across - 2 * margin;
    float place = margin;
    for (gui::Component *child : GetChildren())
    {
        if (!child->IsVisible())
            continue;
        vec2 size = child->GetSize();
        if (float const weight = FindWeight(*child); weight > 0)
        {
            // The last one gets what rounding has left.
            float const share = std::floor(left * std::min(weight / weights, 1.F));
            size.*along += share;
            left -= share;
            weights -= weight;
        }
        if (alignment_ == e_stack_stretch)
            size.*across = room;
        float const free = room - size.*across;
        vec2 position;
        position.*along = place;
        position.*across = margin + (alignment_ == e_stack_center ? std::floor(free / 2)
                                     : alignment_ == e_stack_end  ? free
                                                                  : 0);
        child->SetPosition(position);
        child->SetSize(size);
        place += size.*along + gap;
    }
}

void Stack::OnDetachedChild(Component &child)
{
    std::erase_if(fills_, [&](Fill const &fill) { return fill.child.Get() == nullptr || fill.child.Get() == &child; });
}

Grid::Grid(unsigned int numColumns, gui::Component *parent, vec2 const &gap)
    : numColumns_(std::max(numColumns, 1U)),
      gap_(gap)
{
    SetGhost(true);
    if (parent != nullptr)
        AttachTo(*parent);
}

Grid::~Grid() = default;

void Grid::RecalcSize()
{
    auto const &children = GetChildren();
    columnWidths_.assign(std::min<std::size_t>(numColumns_, children.size()), 0);
    rowHeights_.assign((children.size() + numColumns_ - 1) / numColumns_, 0);
    for (std::size_t i = 0; i < children.size(); ++i)
    {
        if (!children[i]->IsVisible())
            continue;
        float &width = columnWidths_[i % numColumns_];
        float &height = rowHeights_[i / numColumns_];
        width = std::max(width, children[i]->GetSize().x);
        height = std::max(height, children[i]->GetSize().y);
    }
    auto const sum = [](std::vector<float> const &extents, float gap)
    {
        float total = 0;
        for (float const extent : extents)
            total += extent + gap;
        return extents.empty() ? 0 : total - gap;
    };
    SetSize(sum(columnWidths_, Measures::Pixels(gap_.x)), sum(rowHeights_, Measures::Pixels(gap_.y)));
}

void Grid::RecalcLayout()
{
    vec2 const gap = Measures::Pixels(gap_);
    vec2 place(0, 0);
    auto const &children = GetChildren();
    for (std::size_t i = 0; i < children.size(); ++i)
    {
        std::size_t const column = i % numColumns_;
        std::size_t const row = i / numColumns_;
        // A child that came since the sizes were computed waits for the next update.
        if (column >= columnWidths_.size() || row >= rowHeights_.size())
            break;
        if (column == 0)
            place = {0, row == 0 ? 0 : place.y + rowHeights_[row - 1] + gap.y};
        children[i]->SetPosition(place.x, place.y + std::floor((rowHeights_[row] - children[i]->GetSize().y) / 2));
        place.x += columnWidths_[column] + gap.x;
    }
}

} // namespace quillmarsh::widgets
