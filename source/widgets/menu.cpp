#include <quillmarsh/widgets/menu.h>

#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/widgets/measures.h>
#include <quillmarsh/widgets/textencoding.h>

#include "source/widgets/menubackdrop.h"

#include <algorithm>

namespace quillmarsh::widgets
{

namespace
{

/// Room above the first row and below the last one, in units.
constexpr float s_ends = Measures::Grid;
constexpr float s_separatorHeight = Measures::Gap;
/// Distance between a text and its keys, in units.
constexpr float s_keysGap = 2 * Measures::Margin;

} // namespace

Menu *Menu::Open(std::vector<MenuItem> items, vec2 const &position)
{
    return OpenAt(std::move(items), {position, vec2::ZERO});
}

Menu *Menu::OpenBelow(std::vector<MenuItem> items, gui::Component const &component)
{
    return OpenAt(std::move(items), {component.GetAbsolutePosition(), component.GetSize()});
}

Menu *Menu::OpenAt(std::vector<MenuItem> items, gui::Rectangle const &anchor)
{
    if (items.empty())
        return nullptr;
    if (auto *const former = dynamic_cast<Backdrop *>(gui::Manager::Instance().GetModalTarget()))
        former->Close();
    auto *const backdrop = new Backdrop(anchor);
    gui::Watch<Menu> const menu(new Menu(std::move(items), *backdrop, nullptr));
    backdrop->Run(*menu);
    return menu;
}

Menu::Menu(std::vector<MenuItem> items, Backdrop &backdrop, Menu *opener) : backdrop_(&backdrop), opener_(opener)
{
    SetShaderName(ShaderName_Menu);
    SetCanFocus(true);
    rows_.reserve(items.size());
    for (MenuItem &item : items)
    {
        string glyphs = ToGlyphs(item.text);
        string keysGlyphs = ToGlyphs(item.keys);
        rows_.push_back({std::move(item), std::move(glyphs), std::move(keysGlyphs)});
    }
    AttachTo(opener != nullptr ? static_cast<gui::Component &>(*opener) : backdrop);
}

Menu::~Menu()
{
    // What is modal must not stay without a menu.
    DetachFromParent();
    if (opener_ == nullptr && backdrop_.Get() != nullptr)
        backdrop_->Close();
}

void Menu::Close()
{
    if (backdrop_.Get() != nullptr)
        backdrop_->Close();
}

string Menu::GetCaption() const
{
    return current_ < rows_.size() ? rows_[current_].item.text : string();
}

// Geometry.

void Menu::RecalcSize()
{
    float const rowHeight = std::max(Measures::Pixels(Measures::RowHeight), GetLineHeight(*this));
    float textWidth = 0;
    float keysWidth = 0;
    edges_.assign(1, 0);
    for (unsigned int i = 0; i < rows_.size(); ++i)
    {
        edges_.push_back(edges_.back() + (IsSeparator(i) ? Measures::Pixels(s_separatorHeight) : rowHeight));
        textWidth = std::max(textWidth, CalcTextWidth(*this, rows_[i].glyphs));
        if (!rows_[i].keysGlyphs.empty())
            keysWidth = std::max(keysWidth, Measures::Pixels(s_keysGap) + CalcTextWidth(*this, rows_[i].keysGlyphs));
    }
    float const sides = GetTextX() + Measures::Pixels(Measures::TextMargin) + Measures::Pixels(Measures::MarkSize);
    vec2 const window = gui::Manager::Instance().GetWindowSize();
    float const height = edges_.back() + 2 * Measures::Pixels(s_ends);
    SetSize(std::min(sides + textWidth + keysWidth, window.x), std::min(height, window.y));
    ScrollBy(0);
}

float Menu::GetTextX() const
{
    return 2 * Measures::Pixels(Measures::TextMargin) + Measures::Pixels(Measures::MarkSize);
}

float Menu::GetKeysEndX() const
{
    return GetSize().x - Measures::Pixels(Measures::TextMargin) - Measures::Pixels(Measures::MarkSize);
}

vec2 Menu::CalcPlaceInWindow() const
{
    vec2 place = GetPosition();
    for (gui::Component const *parent = GetParent(); parent != nullptr; parent = parent->GetParent())
        place = place + parent->GetPosition();
    return place;
}

void Menu::RecalcLayout()
{
    if (submenu_.Get() == nullptr)
        return;
    vec2 const window = gui::Manager::Instance().GetWindowSize();
    vec2 const place = CalcPlaceInWindow();
    vec2 const size = submenu_->GetSize();
    float const overlap = Measures::Pixels(Measures::Grid);
    // Beside the row, or on the other side without room on this one.
    float x = place.x + GetSize().x - overlap;
    if (x + size.x > window.x)
        x = place.x - size.x + overlap;
    float const y = place.y + GetRowArea(opened_).y - Measures::Pixels(s_ends);
    vec2 const inside(std::max(0.0F, std::min(x, window.x - size.x)), std::max(0.0F, std::min(y, window.y - size.y)));
    submenu_->SetPosition(inside - place);
}

gui::Rectangle Menu::GetRowArea(unsigned int index) const
{
    bool const isLaidOut = index + std::size_t(1) < edges_.size();
    if (!isLaidOut)
        return {0, 0, 0, 0};
    return {0, Measures::Pixels(s_ends) + edges_[index] - scroll_, GetSize().x, edges_[index + 1] - edges_[index]};
}

unsigned int Menu::FindRow(vec2 const &position) const
{
    float const y = position.y - Measures::Pixels(s_ends);
    bool const isInside = position.x >= 0 && position.x < GetSize().x && y >= 0 && y < GetViewHeight();
    if (!isInside || edges_.empty())
        return s_noItem;
    auto const next = std::upper_bound(edges_.begin(), edges_.end(), y + scroll_);
    return next != edges_.end() ? static_cast<unsigned int>(next - edges_.begin() - 1) : s_noItem;
}

// Scrolling.

float Menu::GetViewHeight() const
{
    return std::max(0.0F, GetSize().y - 2 * Measures::Pixels(s_ends));
}

float Menu::GetMaxScroll() const
{
    return edges_.empty() ? 0 : std::max(0.0F, edges_.back() - GetViewHeight());
}

bool Menu::HasHiddenRows(bool below) const
{
    return below ? scroll_ < GetMaxScroll() : scroll_ > 0;
}

void Menu::ScrollBy(float distance)
{
    scroll_ = std::clamp(scroll_ + distance, 0.0F, GetMaxScroll());
}

// Rows.

bool Menu::CanChoose(unsigned int index) const
{
    return index < rows_.size() && !IsSeparator(index) && rows_[index].item.isEnabled;
}

void Menu::SetCurrent(unsigned int index)
{
    if (!CanChoose(index))
        return;
    current_ = index;
    isCurrentByMouse_ = false;
    if (opened_ != index)
        CloseSubmenu();
    gui::Rectangle const area = GetRowArea(index);
    float const ends = Measures::Pixels(s_ends);
    float const below = area.y + area.height - (ends + GetViewHeight());
    if (below > 0)
        ScrollBy(below);
    if (area.y < ends)
        ScrollBy(area.y - ends);
}

void Menu::MoveCurrent(bool forward)
{
    auto const numRows = static_cast<unsigned int>(rows_.size());
    unsigned int row = current_ < numRows ? current_ : (forward ? numRows - 1 : 0);
    for (unsigned int i = 0; i < numRows; ++i)
    {
        row = (row + (forward ? 1 : numRows - 1)) % numRows;
        if (CanChoose(row))
            return SetCurrent(row);
    }
}

void Menu::Choose(unsigned int index)
{
    if (!CanChoose(index))
        return;
    std::function<void()> const action = rows_[index].item.action;
    Close();
    if (action)
        action();
}

// Menu of a row.

void Menu::OpenSubmenu(bool selectFirst)
{
    if (!CanChoose(current_) || !OpensMenu(current_) || backdrop_.Get() == nullptr)
        return;
    if (submenu_.Get() == nullptr || opened_ != current_)
    {
        CloseSubmenu();
        opened_ = current_;
        submenu_ = new Menu(rows_[current_].item.items, *backdrop_, this);
        gui::Watch<Menu> const self(*this);
        backdrop_->UpdateGeometry(false);
        if (self.Get() == nullptr || submenu_.Get() == nullptr)
            return;
    }
    if (!selectFirst)
        return;
    submenu_->MoveCurrent(true);
    submenu_->RequestKeyboardFocus();
}

void Menu::CloseSubmenu()
{
    opened_ = s_noItem;
    Menu *const submenu = submenu_.Get();
    if (submenu == nullptr)
        return;
    gui::Component const *const focused = gui::Manager::Instance().GetKeyboardFocusTarget();
    gui::Watch<Menu> const self(*this);
    if (focused == submenu || focused->IsDescendantOf(*submenu))
        RequestKeyboardFocus();
    if (self.Get() != nullptr)
        delete submenu_.Get();
}

void Menu::CloseInnermost()
{
    if (submenu_.Get() != nullptr)
        CloseSubmenu();
    else if (opener_ != nullptr)
        opener_->CloseSubmenu();
    else
        Close();
}

} // namespace quillmarsh::widgets
