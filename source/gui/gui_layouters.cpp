#include <quillmarsh/gui/gui_layouters.h>

#include <algorithm>
#include <tuple>

namespace quillmarsh::gui::layouters
{

namespace
{

/// What a cell or row asks for along one axis, and where its answer goes.
struct Share
{
    eSizeFlag mode;
    float parameter;
    float targetExtent;
    float &start;
    float &extent;
};

/// Gives the extent of a share that does not depend on what the others leave. Returns false for the other modes.
bool CalcOwnExtent(Share const &share, float &extent)
{
    switch (share.mode)
    {
    case e_size_target:
        extent = share.targetExtent;
        return true;
    case e_size_target_scale:
        extent = share.targetExtent * share.parameter;
        return true;
    case e_size_target_add:
        extent = share.targetExtent + share.parameter;
        return true;
    case e_size_fixed:
        extent = share.parameter;
        return true;
    default:
        return false;
    }
}

/// Distributes a length among elements; `getShare` gives the share of one.
template<typename Element, typename GetShare>
void Distribute(std::vector<Element> &elements, float length, GetShare getShare)
{
    float rest = length;
    float fractionSum = 0;
    unsigned int autoCount = 0;
    for (Element &element : elements)
    {
        Share const share = getShare(element);
        if (CalcOwnExtent(share, share.extent))
            rest -= share.extent;
        else if (share.mode == e_size_fraction)
            fractionSum += share.parameter;
        else if (share.mode == e_size_auto)
            autoCount++;
    }

    float const free = std::max((1 - fractionSum) * rest, 0.0F);
    float const autoExtent = autoCount > 0 ? free / static_cast<float>(autoCount) : 0;
    float start = 0;
    for (Element &element : elements)
    {
        Share const share = getShare(element);
        if (share.mode == e_size_fraction)
            share.extent = rest * share.parameter;
        else if (share.mode == e_size_auto)
            share.extent = autoExtent;
        share.start = start;
        start += share.extent;
    }
}

vec2 GetVisibleSize(Component const *target)
{
    return target != nullptr && target->IsVisible() ? target->GetSize() : vec2(0, 0);
}

/// Returns the position along one axis of a component of extent `size`. `alignPosition` is that of the align target,
/// null without one.
float Align(eAlignFlag alignment, float start, float extent, float size, float const *alignPosition)
{
    switch (alignment)
    {
    case e_align_end:
        return start + extent - size;
    case e_align_center:
        return start + (extent - size) * 0.5F;
    case e_align_target:
        return alignPosition != nullptr ? *alignPosition : start;
    default:
        return start;
    }
}

/// @name Lists of cells and rows
/// An index past the end, and an element that is not there, leave the list as it is.
/// @{
template<typename T>
void RemoveAt(std::vector<T> &list, std::size_t index)
{
    if (index < list.size())
        list.erase(list.begin() + static_cast<std::ptrdiff_t>(index));
}

/// Inserts ahead of the element at `index`, or with `offset` 1 behind it. The new element may be one of the list.
template<typename T>
void InsertAt(std::vector<T> &list, std::size_t index, std::size_t offset, T element)
{
    if (index < list.size())
        list.insert(list.begin() + static_cast<std::ptrdiff_t>(index + offset), std::move(element));
}

/// Returns the index of the first equal element; the size of the list if there is none.
template<typename T>
std::size_t Find(std::vector<T> const &list, T const &element)
{
    return static_cast<std::size_t>(std::find(list.begin(), list.end(), element) - list.begin());
}
/// @}

} // namespace

Cell::Cell(Component *target, eSizeFlag widthMode, float widthParameter, eAlignFlag horizontalAlignment,
           Component *alignTargetX, eSizeFlag heightMode, float heightParameter, eAlignFlag verticalAlignment,
           Component *alignTargetY)
    : Target(target),
      WidthMode(widthMode),
      HeightMode(heightMode),
      WidthParameter(widthParameter),
      HeightParameter(heightParameter),
      HorizontalAlignment(horizontalAlignment),
      VerticalAlignment(verticalAlignment),
      AlignTargetX(alignTargetX),
      AlignTargetY(alignTargetY)
{
}

bool Cell::operator==(Cell const &other) const
{
    auto const key = [](Cell const &cell)
    {
        return std::make_tuple(cell.Target.Get(), cell.WidthMode, cell.HeightMode, cell.WidthParameter,
                               cell.HeightParameter, cell.HorizontalAlignment, cell.VerticalAlignment,
                               cell.AlignTargetX.Get(), cell.AlignTargetY.Get());
    };
    return key(*this) == key(other);
}

Row::Row(Component *target, eSizeFlag heightMode, float heightParameter)
    : target_(target),
      heightMode_(heightMode),
      heightParameter_(heightParameter)
{
}

bool Row::operator==(Row const &other) const
{
    return target_.Get() == other.target_.Get() && heightMode_ == other.heightMode_ &&
           heightParameter_ == other.heightParameter_ && cells_ == other.cells_;
}

Row &Row::Clear()
{
    cells_.clear();
    return *this;
}

Row &Row::Remove(Cell const &cell)
{
    RemoveAt(cells_, Find(cells_, cell));
    return *this;
}

Row &Row::Remove(unsigned int index)
{
    RemoveAt(cells_, index);
    return *this;
}

Row &Row::Append(Cell const &cell)
{
    cells_.push_back(cell);
    return *this;
}

Row &Row::Prepend(Cell const &cell)
{
    cells_.insert(cells_.begin(), cell);
    return *this;
}

Row &Row::InsertBefore(Cell const &before, Cell const &cell)
{
    InsertAt(cells_, Find(cells_, before), 0, cell);
    return *this;
}

Row &Row::InsertBefore(unsigned int before, Cell const &cell)
{
    InsertAt(cells_, before, 0, cell);
    return *this;
}

Row &Row::InsertAfter(Cell const &after, Cell const &cell)
{
    InsertAt(cells_, Find(cells_, after), 1, cell);
    return *this;
}

Row &Row::InsertAfter(unsigned int after, Cell const &cell)
{
    InsertAt(cells_, after, 1, cell);
    return *this;
}

Row &Row::Append(Row const &row)
{
    // A copy, because the other row may be this one.
    std::vector<Cell> const cells = row.cells_;
    cells_.insert(cells_.end(), cells.begin(), cells.end());
    return *this;
}

Row &Row::Prepend(Row const &row)
{
    std::vector<Cell> const cells = row.cells_;
    cells_.insert(cells_.begin(), cells.begin(), cells.end());
    return *this;
}

Row &Row::Target(Component &component, eSizeFlag widthMode, float widthParameter, eAlignFlag horizontalAlignment,
                 Component *alignTargetX, eAlignFlag verticalAlignment, Component *alignTargetY)
{
    return Append(Cell(&component, widthMode, widthParameter, horizontalAlignment, alignTargetX, e_size_target, 1,
                       verticalAlignment, alignTargetY));
}

Row &Row::Spacer(float widthParameter, eSizeFlag widthMode)
{
    return Append(
        Cell(nullptr, widthMode, widthParameter, e_align_start, nullptr, e_size_target, 1, e_align_center, nullptr));
}

Row &Row::AutoSpacer()
{
    return Spacer(1, e_size_auto);
}

Cell *Row::FindCell(Component &component)
{
    auto const isOfComponent = [&component](Cell const &cell) { return cell.Target.Get() == &component; };
    auto const found = std::find_if(cells_.begin(), cells_.end(), isOfComponent);
    return found != cells_.end() ? &*found : nullptr;
}

Cell &Row::GetCell(unsigned int index)
{
    if (index < cells_.size())
        return cells_[index];
    AutoSpacer();
    return cells_.back();
}

Cell &Row::LastCell()
{
    if (cells_.empty())
        AutoSpacer();
    return cells_.back();
}

void Row::ProcessX(float width)
{
    Distribute(cells_, width,
               [](Cell &cell) {
                   return Share{cell.WidthMode, cell.WidthParameter, GetVisibleSize(cell.Target).x, cell.X, cell.Width};
               });
}

void Row::PlaceCells() const
{
    bool const isTargeted =
        heightMode_ == e_size_target || heightMode_ == e_size_target_scale || heightMode_ == e_size_target_add;
    for (Cell const &cell : cells_)
    {
        Component *const component = cell.Target;
        if (component == nullptr || !component->IsVisible())
            continue;

        vec2 size(cell.Width, component->GetSize().y);
        if (cell.HeightMode == e_size_fraction && !(isTargeted && target_.Get() == component))
            size.y = height_ * cell.HeightParameter;
        component->SetSize(size);

        Component const *const alignX = cell.AlignTargetX;
        Component const *const alignY = cell.AlignTargetY;
        component->SetPosition(
            Align(cell.HorizontalAlignment, cell.X, cell.Width, size.x,
                  alignX != nullptr ? &alignX->GetPosition().x : nullptr),
            Align(cell.VerticalAlignment, y_, height_, size.y, alignY != nullptr ? &alignY->GetPosition().y : nullptr));
    }
}

RowLayouter::RowLayouter(Component *parent)
{
    SetGhost(true);
    SetSize(200, 200);
    if (parent != nullptr)
        AttachTo(*parent);
}

RowLayouter::~RowLayouter() = default;

void RowLayouter::RecalcSize()
{
    SetSize(geomParams_.Size);
}

void RowLayouter::RecalcLayout()
{
    if (geomParams_.FitToParent && GetParent() != nullptr)
    {
        SetSize(GetParent()->GetSize() - geomParams_.MarginTopLeft - geomParams_.MarginBottomRight);
        SetPosition(geomParams_.MarginTopLeft);
    }
    Process(GetSize().x, GetSize().y);
    for (Row const &row : rows_)
        row.PlaceCells();
}

void RowLayouter::SetGeomParams(GeomParams const &params)
{
    geomParams_ = params;
    ReportDirtyGeometry();
}

RowLayouter &RowLayouter::Clear()
{
    rows_.clear();
    return *this;
}

RowLayouter &RowLayouter::Remove(Row const &row)
{
    RemoveAt(rows_, Find(rows_, row));
    return *this;
}

RowLayouter &RowLayouter::Remove(unsigned int index)
{
    RemoveAt(rows_, index);
    return *this;
}

RowLayouter &RowLayouter::Append(Row const &row)
{
    rows_.push_back(row);
    return *this;
}

RowLayouter &RowLayouter::Prepend(Row const &row)
{
    rows_.insert(rows_.begin(), row);
    return *this;
}

RowLayouter &RowLayouter::InsertBefore(Row const &before, Row const &row)
{
    InsertAt(rows_, Find(rows_, before), 0, row);
    return *this;
}

RowLayouter &RowLayouter::InsertBefore(unsigned int before, Row const &row)
{
    InsertAt(rows_, before, 0, row);
    return *this;
}

RowLayouter &RowLayouter::InsertAfter(Row const &after, Row const &row)
{
    InsertAt(rows_, Find(rows_, after), 1, row);
    return *this;
}

RowLayouter &RowLayouter::InsertAfter(unsigned int after, Row const &row)
{
    InsertAt(rows_, after, 1, row);
    return *this;
}

Row &RowLayouter::TargetHeightRow(Component &component, eSizeFlag heightMode, float heightParameter)
{
    return rows_.emplace_back(&component, heightMode, heightParameter);
}

Row &RowLayouter::FixedHeightRow(float height)
{
    return rows_.emplace_back(nullptr, e_size_fixed, height);
}

Row &RowLayouter::VariableHeightRow(float fraction)
{
    return rows_.emplace_back(nullptr, e_size_fraction, fraction);
}

Row &RowLayouter::AutoHeightRow()
{
    return rows_.emplace_back(nullptr, e_size_auto, 1.0F);
}

Row *RowLayouter::FindRow(Component &component)
{
    auto const hasCell = [&component](Row &row) { return row.FindCell(component) != nullptr; };
    auto const found = std::find_if(rows_.begin(), rows_.end(), hasCell);
    return found != rows_.end() ? &*found : nullptr;
}

Row &RowLayouter::GetRow(unsigned int index)
{
    return index < rows_.size() ? rows_[index] : AutoHeightRow();
}

Row &RowLayouter::LastRow()
{
    return rows_.empty() ? AutoHeightRow() : rows_.back();
}

void RowLayouter::Process(float width, float height)
{
    ProcessY(height);
    for (Row &row : rows_)
        row.ProcessX(width);
}

void RowLayouter::ProcessY(float height)
{
    Distribute(
        rows_, height,
        [](Row &row) {
            return Share{row.heightMode_, row.heightParameter_, GetVisibleSize(row.target_).y, row.y_, row.height_};
        });
}

ArrayLayouter::ArrayLayouter(Component *parent)
{
    SetGhost(true);
    SetSize(200, 300);
    if (parent != nullptr)
        AttachTo(*parent);
}

ArrayLayouter::~ArrayLayouter() = default;

void ArrayLayouter::RecalcLayout()
{
    Process();
}

void ArrayLayouter::SetGeomParams(GeomParams const &params)
{
    geomParams_ = params;
    ReportDirtyGeometry();
}

void ArrayLayouter::AddSpacer(Spacer const &spacer)
{
    Spacer const added = spacer;
    RemoveSpacer(added.Target);
    spacers_.push_back(added);
}

void ArrayLayouter::RemoveSpacer(Component const *component)
{
    std::erase_if(spacers_, [component](Spacer const &spacer) { return spacer.Target.Get() == component; });
}

void ArrayLayouter::ClearSpacers()
{
    spacers_.clear();
}

Spacer const *ArrayLayouter::FindSpacer(Component const &component) const
{
    auto const isOfComponent = [&component](Spacer const &spacer) { return spacer.Target.Get() == &component; };
    auto const found = std::find_if(spacers_.begin(), spacers_.end(), isOfComponent);
    return found != spacers_.end() ? &*found : nullptr;
}

void ArrayLayouter::Process()
{
    float vec2::*const along = geomParams_.Vertical ? &vec2::y : &vec2::x;
    float vec2::*const across = geomParams_.Vertical ? &vec2::x : &vec2::y;

    vec2 maxSize(0, 0);
    for (Component const *child : GetChildren())
        maxSize.Set(std::max(maxSize.x, child->GetSize().x), std::max(maxSize.y, child->GetSize().y));

    float end = geomParams_.MarginStart;
    for (Component *child : GetChildren())
    {
        if (Spacer const *const spacer = FindSpacer(*child))
            end += spacer->Distance;
        vec2 position;
        position.*along = end;
        position.*across = 0;
        vec2 size = child->GetSize();
        if (geomParams_.Stretch)
            size.*across = maxSize.*across;
        else
            position.*across = (maxSize.*across - size.*across) * 0.5F;
        child->SetPosition(position);
        child->SetSize(size);
        end += size.*along;
        if (child != GetChildren().back())
            end += geomParams_.Spacing;
    }
    end += geomParams_.MarginEnd;

    vec2 size;
    size.*along = end;
    size.*across = maxSize.*across;
    SetSize(size);
}

} // namespace quillmarsh::gui::layouters
