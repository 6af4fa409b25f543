#include <quillmarsh/widgets/listbox.h>

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/widgets/measures.h>
#include <quillmarsh/widgets/scrollbar.h>
#include <quillmarsh/widgets/textencoding.h>

#include "source/widgets/inputhelp.h"
#include "source/widgets/units.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace quillmarsh::widgets
{

namespace
{

/// Width of the frame, in units.
constexpr float s_frame = 1;

} // namespace

ListBox::ListBox(gui::Component *parent, vec2 const &size) : sizeInUnits_(LimitUnits(size)), scrollBar_(nullptr)
{
    SetShaderName(ShaderName_ListBox);
    SetCanDisable(true);
    SetCanFocus(true);
    scrollBar_ = new ScrollBar(true, this);
    scrollBar_->SetVisible(false);
    scrollBar_->SetAction([this](unsigned int) { UpdateHotItem(); });
    if (parent != nullptr)
        AttachTo(*parent);
}

ListBox::~ListBox() = default;

// Rows.

void ListBox::SetItems(std::vector<ListItem> items)
{
    std::size_t const numOld = rows_.size();
    rows_.resize(items.size());
    for (std::size_t i = 0; i < items.size(); ++i)
    {
        bool const isSelected = i < numOld && rows_[i].isSelected;
        rows_[i].glyphs = ToGlyphs(items[i].text);
        rows_[i].detailGlyphs = ToGlyphs(items[i].detail);
        rows_[i].item = std::move(items[i]);
        rows_[i].isSelected = isSelected;
    }
    for (unsigned int *const index : {&current_, &anchor_})
    {
        if (*index >= rows_.size())
            *index = s_noItem;
    }
    // What was typed was meant for the former rows.
    typed_.clear();
    OnChangedItems();
}

void ListBox::AddItem(ListItem item)
{
    rows_.emplace_back();
    SetItem(GetNumItems() - 1, std::move(item));
    OnChangedItems();
}

void ListBox::SetItem(unsigned int index, ListItem item)
{
    if (index >= rows_.size())
        return;
    ItemRow &row = rows_[index];
    row.glyphs = ToGlyphs(item.text);
    row.detailGlyphs = ToGlyphs(item.detail);
    row.item = std::move(item);
}

void ListBox::RemoveItem(unsigned int index)
{
    if (index >= rows_.size())
        return;
    rows_.erase(rows_.begin() + index);
    for (unsigned int *const each : {&current_, &anchor_})
    {
        bool const stands = *each < index || *each == s_noItem;
        bool const isLast = *each == index && index == rows_.size();
        if (!stands && (*each > index || isLast))
            --*each;
        if (*each >= rows_.size())
            *each = s_noItem;
    }
    OnChangedItems();
}

void ListBox::Clear()
{
    SetItems({});
}

ListItem const &ListBox::GetItem(unsigned int index) const
{
    static ListItem const s_none = {};
    bool const isInside = index < rows_.size();
    QUILLMARSH_ASSERT(isInside, "Index out of range.");
    return isInside ? rows_[index].item : s_none;
}

void ListBox::OnChangedItems()
{
    UpdateScrollBar();
    UpdateHotItem();
}

// Selection.

void ListBox::SetMultipleSelection(bool multiple)
{
    if (multiple_ == multiple)
        return;
    unsigned int const kept = current_ < rows_.size() && rows_[current_].isSelected ? current_ : GetSelected();
    multiple_ = multiple;
    if (multiple)
        return;
    SelectRange(kept, kept, false);
    if (kept != s_noItem)
        current_ = anchor_ = kept;
}

bool ListBox::SelectRange(unsigned int first, unsigned int last, bool keep)
{
    bool isChange = false;
    for (unsigned int i = 0; i < rows_.size(); ++i)
    {
        bool const isSelected = (i >= first && i <= last) || (keep && rows_[i].isSelected);
        isChange = isChange || isSelected != rows_[i].isSelected;
        rows_[i].isSelected = isSelected;
    }
    return isChange;
}

void ListBox::Select(unsigned int index)
{
    if (index >= rows_.size())
        index = s_noItem;
    if (multiple_)
        SelectRange(index, index, false);
    else if (current_ < rows_.size())
        rows_[current_].isSelected = false;
    current_ = anchor_ = index;
    if (index == s_noItem)
        return;
    rows_[index].isSelected = true;
    ScrollTo(index);
}

void ListBox::SetSelected(unsigned int index, bool selected)
{
    if (index >= rows_.size())
        return;
    if (selected && !multiple_)
        Select(index);
    else
        rows_[index].isSelected = selected;
}

bool ListBox::IsSelected(unsigned int index) const
{
    return index < rows_.size() && rows_[index].isSelected;
}

unsigned int ListBox::GetSelected() const
{
    // In a list of one selection, only the current row may be selected.
    if (!multiple_)
        return IsSelected(current_) ? current_ : s_noItem;
    auto const found = std::find_if(rows_.begin(), rows_.end(), [](ItemRow const &row) { return row.isSelected; });
    return found != rows_.end() ? static_cast<unsigned int>(found - rows_.begin()) : s_noItem;
}

std::vector<unsigned int> ListBox::GetAllSelected() const
{
    std::vector<unsigned int> selected;
    for (unsigned int i = 0; i < rows_.size(); ++i)
    {
        if (rows_[i].isSelected)
            selected.push_back(i);
    }
    return selected;
}

// Geometry.

gui::Rectangle ListBox::GetRowsArea() const
{
    float const frame = Measures::Pixels(s_frame);
    float const barWidth = scrollBar_->IsVisible() ? scrollBar_->GetSize().x : 0;
    vec2 const &size = GetSize();
    return {frame, frame, std::max(0.0F, size.x - 2 * frame - barWidth), std::max(0.0F, size.y - 2 * frame)};
}

gui::Rectangle ListBox::GetRowArea(unsigned int index) const
{
    gui::Rectangle const area = GetRowsArea();
    std::int64_t const distance = static_cast<std::int64_t>(index) - GetFirstVisible();
    return {area.x, area.y + static_cast<float>(distance) * rowHeight_, area.width, rowHeight_};
}

unsigned int ListBox::GetFirstVisible() const
{
    return scrollBar_->GetScrollPosition();
}

unsigned int ListBox::GetNumVisible() const
{
    auto const numFitting = static_cast<unsigned int>(std::ceil(GetRowsArea().height / rowHeight_));
    return std::min(numFitting, GetNumItems() - std::min(GetFirstVisible(), GetNumItems()));
}

unsigned int ListBox::CountWholeRows() const
{
    return std::max(1U, static_cast<unsigned int>(GetRowsArea().height / rowHeight_));
}

void ListBox::ScrollTo(unsigned int index)
{
    if (index >= rows_.size())
        return;
    unsigned int const first = GetFirstVisible();
    unsigned int const numWhole = CountWholeRows();
    if (index < first)
        scrollBar_->SetScrollPosition(static_cast<int>(index));
    else if (index - first >= numWhole)
        scrollBar_->SetScrollPosition(static_cast<int>(index - numWhole + 1));
    UpdateHotItem();
}

void ListBox::UpdateScrollBar()
{
    scrollBar_->SetSizes(GetNumItems(), CountWholeRows());
    if (scrollBar_->IsVisible() == scrollBar_->IsNeeded())
        return;
    scrollBar_->SetVisible(scrollBar_->IsNeeded());
    ReportDirtyGeometry();
}

void ListBox::UpdateHotItem()
{
    hot_ = IsMouseOverDirect() ? FindRow(CalcRelativeMousePosition()) : s_noItem;
}

unsigned int ListBox::FindRow(vec2 const &position) const
{
    gui::Rectangle const area = GetRowsArea();
    bool const isInside = position.x >= area.x && position.x < area.x + area.width && position.y >= area.y &&
                          position.y < area.y + area.height;
    if (!isInside)
        return s_noItem;
    unsigned int const row = GetFirstVisible() + static_cast<unsigned int>((position.y - area.y) / rowHeight_);
    return row < rows_.size() ? row : s_noItem;
}

string ListBox::GetCaption() const
{
    return IsSelected(current_) ? rows_[current_].item.text : string();
}

void ListBox::RecalcSize()
{
    rowHeight_ = std::max(Measures::Pixels(Measures::RowHeight), GetLineHeight(*this));
    SetSize(Measures::Pixels(sizeInUnits_));
}

void ListBox::RecalcLayout()
{
    bool const wasCurrentVisible =
        current_ >= GetFirstVisible() && current_ - GetFirstVisible() < scrollBar_->GetVisibleSize();
    UpdateScrollBar();
    if (wasCurrentVisible)
        ScrollTo(current_);
    float const frame = Measures::Pixels(s_frame);
    float const width = Measures::Pixels(Measures::ScrollBarWidth);
    scrollBar_->SetSize(width, GetRowsArea().height);
    scrollBar_->SetPosition(GetSize().x - frame - width, frame);
}

// Mouse.

bool ListBox::OnMsgScroll(bool forward, gui::eScrollDistance distance, int offset)
{
    return scrollBar_->OnMsgScroll(forward, distance, offset);
}

bool ListBox::OnMouseEnterExit(bool enter, bool direct, vec2 const &position)
{
    hot_ = enter && direct ? FindRow(position) : s_noItem;
    return true;
}

bool ListBox::OnMouseMove(bool hover, double, vec2 const &position)
{
    if (!hover)
        hot_ = FindRow(position);
    return true;
}

bool ListBox::OnMouseWheel(int delta, vec2 const &position)
{
    return scrollBar_->OnMouseWheel(delta, position);
}

bool ListBox::OnMouseButton(bool down, eMouseButton button, bool doubleClick, unsigned int repeatCount,
                            vec2 const &position)
{
    unsigned int const row = FindRow(position);
    if (button == e_mouse_button_right)
    {
        // What a menu of the program is about is selected before the program opens it.
        if (down && repeatCount == 0 && row != s_noItem && !IsSelected(row))
            GoTo(row, false, false);
        return false;
    }
    if (button != e_mouse_button_left)
        return false;
    if (!down || repeatCount != 0 || row == s_noItem)
        return true;
    bool const toggle = multiple_ && IsControlPressed();
    bool const extend = multiple_ && IsShiftPressed();
    gui::Watch<ListBox> const self(*this);
    GoTo(row, toggle, extend);
    if (doubleClick && !toggle && !extend && self.Get() != nullptr)
        Open(row);
    return true;
}

void ListBox::GoTo(unsigned int index, bool toggle, bool extend)
{
    bool isChange = true;
    if (extend && anchor_ < rows_.size())
    {
        isChange = SelectRange(std::min(anchor_, index), std::max(anchor_, index), toggle);
        current_ = index;
    }
    else if (toggle)
    {
        rows_[index].isSelected = !rows_[index].isSelected;
        current_ = anchor_ = index;
    }
    else
    {
        isChange = multiple_ ? SelectRange(index, index, false) : !IsSelected(index);
        Select(index);
    }
    ScrollTo(index);
    if (isChange)
        action_(index);
}

void ListBox::Open(unsigned int index)
{
    if (index < rows_.size())
        openAction_(index);
}

// Keys.

bool ListBox::OnKeyboardQueryFocus(bool byMouse, eMouseButton button, bool &wantFocus, bool &needCharacterData)
{
    DefaultProcessQueryFocus(byMouse, button, wantFocus, needCharacterData);
    needCharacterData = wantFocus;
    return true;
}

unsigned int ListBox::FindRowOfKey(eKey key) const
{
    std::int64_t const last = static_cast<std::int64_t>(rows_.size()) - 1;
    std::int64_t const page = CountWholeRows();
    bool const hasCurrent = current_ < rows_.size();
    // Without a current row, each key leads to an end.
    std::int64_t const current = hasCurrent ? std::int64_t(current_) : -1;
    std::int64_t row = 0;
    switch (key)
    {
    case e_key_arrow_up:
        row = current - 1;
        break;
    case e_key_arrow_down:
        row = current + 1;
        break;
    case e_key_page_up:
        row = current - page;
        break;
    case e_key_page_down:
        row = current + (hasCurrent ? page : 1);
        break;
    case e_key_home:
        break;
    case e_key_end:
        row = last;
        break;
    default:
        return s_noItem;
    }
    return static_cast<unsigned int>(std::clamp<std::int64_t>(row, 0, last));
}

bool ListBox::OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character)
{
    if (!down || rows_.empty() || IsAltPressed())
        return false;
    bool const control = IsControlPressed();
    // With control these turn the pages of a tab view.
    bool const turnsPages = control && (key == e_key_page_up || key == e_key_page_down);
    unsigned int const row = turnsPages ? s_noItem : FindRowOfKey(key);
    if (row != s_noItem)
    {
        GoToByKey(row);
        return true;
    }
    if (IsEnterKey(key) && openAction_ && IsSelected(current_))
    {
        if (repeatCount == 0)
            Open(current_);
        return true;
    }
    if (control && key == e_key_a && multiple_)
    {
        if (SelectRange(0, s_noItem, false))
            action_(current_);
        return true;
    }
    if (key == e_key_space && typed_.empty())
    {
        if (repeatCount == 0 && current_ < rows_.size())
            GoTo(current_, multiple_, false);
        return true;
    }
    return !control && IsShownCharacter(character) && SearchByTyping(character);
}

void ListBox::GoToByKey(unsigned int index)
{
    bool const movesOnly = multiple_ && IsControlPressed() && !IsShiftPressed();
    if (!movesOnly)
    {
        GoTo(index, false, multiple_ && IsShiftPressed());
        return;
    }
    current_ = index;
    ScrollTo(index);
}

} // namespace quillmarsh::widgets
