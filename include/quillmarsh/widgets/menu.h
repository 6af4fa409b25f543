// Menus that come up where they are asked for.
#ifndef QUILLMARSH_WIDGETS_MENU_H
#define QUILLMARSH_WIDGETS_MENU_H

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_rectangle.h>
#include <quillmarsh/widgets/action.h>
#include <quillmarsh/widgets/looknames.h>

#include <vector>

namespace quillmarsh::widgets
{

/// Row of a menu. A plain record.
struct MenuItem
{
    /// In UTF-8; empty for a line between groups.
    string text;
    /// Gets called after the menu was closed. Null for a row that opens `items`.
    std::function<void()> action = nullptr;
    eMark mark = e_mark_none;
    bool isEnabled = true;
    /// Shown at the right end, in UTF-8: the keys that do the same.
    string keys = string();
    /// Rows of a further menu beside this one.
    std::vector<MenuItem> items = {};
};

/// Menu that comes up at a place in the window, and goes with a choice, with Escape, and with a press anywhere else. It
/// is modal meanwhile. Arrow keys and letters move in it, Enter chooses; right and left open and close the menu of a
/// row. The mouse may stay down from the press that opens a menu to the choice. A menu that is higher than the window
/// scrolls: with the wheel, the keys, or the mouse at its ends. The focus returns to the component that had it. Frame
/// thread only.
class QUILLMARSH_API Menu : public gui::Component
{
public:
    static constexpr unsigned int s_noItem = ~0U;

    /// Opens a menu inside the window, with a corner at `position` in pixels of the window: below and to the right if
    /// there is room. It deletes itself when it goes. Returns it; null for an empty list.
    static Menu *Open(std::vector<MenuItem> items, vec2 const &position);
    /// Opens a menu below a component, or above it.
    static Menu *OpenBelow(std::vector<MenuItem> items, gui::Component const &component);

    ~Menu() override;
    /// Closes the whole chain of menus, without a choice.
    void Close();

    /// @name For shaders
    /// @{
    unsigned int GetNumItems() const { return static_cast<unsigned int>(rows_.size()); }
    MenuItem const &GetItem(unsigned int index) const { return rows_[index].item; }
    string const &GetGlyphs(unsigned int index) const { return rows_[index].glyphs; }
    string const &GetKeysGlyphs(unsigned int index) const { return rows_[index].keysGlyphs; }
    bool IsSeparator(unsigned int index) const { return rows_[index].item.text.empty(); }
    bool OpensMenu(unsigned int index) const { return !rows_[index].item.items.empty(); }
    /// Row that is chosen by Enter or a click now; s_noItem if there is none.
    unsigned int GetCurrent() const { return current_; }
    /// Rectangle of a row, relative to the component, in pixels.
    gui::Rectangle GetRowArea(unsigned int index) const;
    /// Where texts begin, behind the marks, in pixels.
    float GetTextX() const;
    /// Where the texts of keys end, ahead of the arrows, in pixels.
    float GetKeysEndX() const;
    /// Rows are hidden above the upper end, or below the lower one.
    bool HasHiddenRows(bool below) const;
    /// @}

    string GetCaption() const override;
    void RecalcSize() override;
    void RecalcLayout() override;
    bool OnMouseEnterExit(bool enter, bool direct, vec2 const &position) override;
    using Component::OnMouseWheel;
    bool OnMouseWheel(int delta, vec2 const &position) override;
    bool OnMouseMove(bool hover, double hoverSeconds, vec2 const &position) override;
    using Component::OnMouseButton;
    bool OnMouseButton(bool down, eMouseButton button, bool doubleClick, unsigned int repeatCount,
                       vec2 const &position) override;
    using Component::OnKeyboardQueryFocus;
    bool OnKeyboardQueryFocus(bool byMouse, eMouseButton button, bool &wantFocus, bool &needCharacterData) override;
    using Component::OnKeyboardKey;
    bool OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character) override;

private:
    struct ItemRow
    {
        MenuItem item;
        string glyphs;
        string keysGlyphs;
    };
    /// Fills the window behind the menus, is their modal target, and closes them when it is pressed.
    class Backdrop;

    static Menu *OpenAt(std::vector<MenuItem> items, gui::Rectangle const &anchor);
    Menu(std::vector<MenuItem> items, Backdrop &backdrop, Menu *opener);

    /// @name Rows
    /// @{
    bool CanChoose(unsigned int index) const;
    unsigned int FindRow(vec2 const &position) const;
    /// Sets the current row, for keys, and shows it.
    void SetCurrent(unsigned int index);
    void MoveCurrent(bool forward);
    void MoveToLetter(char letter);
    void Choose(unsigned int index);
    /// @}
    /// @name Menu of a row
    /// @{
    void OpenSubmenu(bool selectFirst);
    void CloseSubmenu();
    /// Closes this menu of a row, or the menu of its current row, or the whole chain.
    void CloseInnermost();
    /// @}
    /// @name Scrolling, in pixels
    /// @{
    float GetViewHeight() const;
    float GetMaxScroll() const;
    void ScrollBy(float distance);
    void ScrollAtEnds(double hoverSeconds, vec2 const &position);
    /// @}
    vec2 CalcPlaceInWindow() const;
    void HandleKey(eKey key, unsigned int repeatCount, char character);

    std::vector<ItemRow> rows_;
    /// Upper edges of the rows, and the lower edge of the last one.
    std::vector<float> edges_;
    float scroll_ = 0;
    unsigned int current_ = s_noItem;
    /// The mouse, and no key, has made the current row the current one.
    bool isCurrentByMouse_ = false;
    int wheelRest_ = 0;
    /// Rows by which the resting mouse has scrolled.
    unsigned int hoverRows_ = 0;
    gui::Watch<Backdrop> backdrop_;
    /// Parent of this menu; null for the first one.
    Menu *opener_;
    gui::Watch<Menu> submenu_;
    /// Index of the row whose menu is open.
    unsigned int opened_ = s_noItem;
};

} // namespace quillmarsh::widgets

#endif
