// Mouse and keys of menus.
#include <quillmarsh/widgets/menu.h>

#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/widgets/measures.h>

#include "source/widgets/glyphcase.h"
#include "source/widgets/inputhelp.h"
#include "source/widgets/menubackdrop.h"

namespace quillmarsh::widgets
{

namespace
{

/// The mouse rests for this time before the menu of another row opens, so that it may cross rows on its way.
constexpr double s_openSeconds = 0.2;
/// Time for each row that the mouse scrolls by while it rests at an end.
constexpr double s_scrollSeconds = 0.1;
constexpr float s_rowsOfNotch = 3;

} // namespace

// Mouse.

bool Menu::OnMouseEnterExit(bool enter, bool, vec2 const &)
{
    if (!enter && isCurrentByMouse_)
        current_ = submenu_.Get() != nullptr ? opened_ : s_noItem;
    return true;
}

bool Menu::OnMouseMove(bool hover, double hoverSeconds, vec2 const &position)
{
    if (backdrop_.Get() == nullptr)
        return true;
    if (hover)
    {
        ScrollAtEnds(hoverSeconds, position);
        if (!isCurrentByMouse_ || hoverSeconds < s_openSeconds || current_ == opened_)
            return true;
        if (submenu_.Get() != nullptr && current_ != s_noItem)
            CloseSubmenu();
        OpenSubmenu(false);
        return true;
    }
    if (!backdrop_->HasMouseMoved())
        return true;
    hoverRows_ = 0;
    isCurrentByMouse_ = true;
    unsigned int const row = FindRow(position);
    current_ = CanChoose(row) ? row : s_noItem;
    if (opener_ != nullptr)
    {
        opener_->current_ = opener_->opened_;
        opener_->isCurrentByMouse_ = true;
    }
    if (!IsFocused())
        RequestKeyboardFocus();
    return true;
}

void Menu::ScrollAtEnds(double hoverSeconds, vec2 const &position)
{
    auto const rows = static_cast<unsigned int>(hoverSeconds / s_scrollSeconds);
    float const end = Measures::Pixels(Measures::RowHeight);
    bool const isAtTop = position.y < end;
    bool const isAtBottom = position.y >= GetSize().y - end;
    bool const scrolls = rows > hoverRows_ && isAtTop != isAtBottom && HasHiddenRows(isAtBottom);
    hoverRows_ = rows;
    if (!scrolls)
        return;
    CloseSubmenu();
    ScrollBy(isAtBottom ? end : -end);
    unsigned int const row = FindRow(position);
    current_ = CanChoose(row) ? row : s_noItem;
    isCurrentByMouse_ = true;
}

bool Menu::OnMouseWheel(int delta, vec2 const &position)
{
    int const notches = TakeNotches(wheelRest_, delta);
    if (notches == 0 || GetMaxScroll() == 0)
        return true;
    CloseSubmenu();
    ScrollBy(static_cast<float>(-notches) * s_rowsOfNotch * Measures::Pixels(Measures::RowHeight));
    unsigned int const row = FindRow(position);
    current_ = CanChoose(row) ? row : s_noItem;
    isCurrentByMouse_ = true;
    return true;
}

bool Menu::OnMouseButton(bool down, eMouseButton, bool, unsigned int repeatCount, vec2 const &position)
{
    if (repeatCount != 0 || backdrop_.Get() == nullptr)
        return true;
    unsigned int const row = FindRow(position);
    if (down)
    {
        backdrop_->SetTakesRelease();
        if (CanChoose(row) && OpensMenu(row))
        {
            current_ = row;
            isCurrentByMouse_ = true;
            OpenSubmenu(false);
        }
    }
    else if (backdrop_->TakesRelease() && CanChoose(row) && !OpensMenu(row))
    {
        Choose(row);
    }
    return true;
}

// Keys.

bool Menu::OnKeyboardQueryFocus(bool, eMouseButton, bool &wantFocus, bool &needCharacterData)
{
    wantFocus = true;
    needCharacterData = true;
    return true;
}

bool Menu::OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character)
{
    // The program gets no keys while a menu is open.
    if (down)
        HandleKey(key, repeatCount, character);
    return true;
}

void Menu::HandleKey(eKey key, unsigned int repeatCount, char character)
{
    bool const isFirst = repeatCount == 0;
    switch (key)
    {
    case e_key_arrow_up:
    case e_key_arrow_down:
        MoveCurrent(key == e_key_arrow_down);
        break;
    case e_key_home:
    case e_key_end:
        current_ = s_noItem;
        MoveCurrent(key == e_key_home);
        break;
    case e_key_arrow_right:
        OpenSubmenu(true);
        break;
    case e_key_arrow_left:
        if (submenu_.Get() != nullptr || opener_ != nullptr)
            CloseInnermost();
        break;
    case e_key_escape:
        if (isFirst)
            CloseInnermost();
        break;
    case e_key_enter:
    case e_key_num_enter:
    case e_key_space:
        // A held key that has opened the menu chooses nothing in it.
        if (isFirst && CanChoose(current_) && OpensMenu(current_))
            OpenSubmenu(true);
        else if (isFirst)
            Choose(current_);
        break;
    default:
        if (isFirst && IsShownCharacter(character) && !IsControlPressed() && !IsAltPressed())
            MoveToLetter(character);
        break;
    }
}

void Menu::MoveToLetter(char letter)
{
    string const typed(1, ToLowerGlyph(letter));
    auto const numRows = static_cast<unsigned int>(rows_.size());
    unsigned int row = current_ < numRows ? current_ : numRows - 1;
    for (unsigned int i = 0; i < numRows; ++i)
    {
        row = (row + 1) % numRows;
        if (CanChoose(row) && BeginsWithLower(rows_[row].glyphs, typed))
            return SetCurrent(row);
    }
}

} // namespace quillmarsh::widgets
