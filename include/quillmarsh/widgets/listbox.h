// Lists of rows to choose from.
#ifndef QUILLMARSH_WIDGETS_LISTBOX_H
#define QUILLMARSH_WIDGETS_LISTBOX_H

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_rectangle.h>
#include <quillmarsh/widgets/action.h>
#include <quillmarsh/widgets/looknames.h>

#include <vector>

namespace quillmarsh::widgets
{

class ScrollBar;

/// Row of a list. A plain record.
struct ListItem
{
    /// In UTF-8.
    string text;
    eMark mark = e_mark_none;
    /// Smaller text at the right end, in UTF-8.
    string detail = string();
    /// A number of the program's.
    unsigned int data = 0;
};

/// List of rows, of which one or several are selected. It draws and measures only the rows that can be seen: a million
/// rows cost no more than ten.
///
/// Arrow keys, Page Up, Page Down, Home and End move the selection; letters go to the next row that begins with them. In
/// a list of several selections, control with a click or Space toggles a row, shift extends the selection. A double
/// click, and Enter, opens a row. Frame thread only.
class QUILLMARSH_API ListBox : public gui::Component
{
public:
    static constexpr unsigned int s_noItem = ~0U;

    /// Becomes a child of `parent`; stays top-level for null. `size` is in units.
    explicit ListBox(gui::Component *parent, vec2 const &size = {200, 160});
    ~ListBox() override;

    /// @name Rows
    /// They keep selection and scrolled place as far as rows go on to exist. Indexes past the end are ignored.
    /// @{
    void SetItems(std::vector<ListItem> items);
    void AddItem(ListItem item);
    void SetItem(unsigned int index, ListItem item);
    void RemoveItem(unsigned int index);
    void Clear();
    unsigned int GetNumItems() const { return static_cast<unsigned int>(rows_.size()); }
    /// Asserts "Index out of range." past the end, and returns an empty row then.
    ListItem const &GetItem(unsigned int index) const;
    /// @}

    /// @name Selection
    /// Setters do not call the action.
    /// @{
    /// False at first.
    void SetMultipleSelection(bool multiple);
    bool HasMultipleSelection() const { return multiple_; }
    /// Selects one row only, makes it the current one, and scrolls to it; s_noItem selects none.
    void Select(unsigned int index);
    void SetSelected(unsigned int index, bool selected);
    bool IsSelected(unsigned int index) const;
    /// Row that the keys start from; s_noItem if there is none.
    unsigned int GetCurrent() const { return current_; }
    /// First selected row; s_noItem if there is none.
    unsigned int GetSelected() const;
    std::vector<unsigned int> GetAllSelected() const;
    /// @}

    /// @name Scrolling, in rows
    /// @{
    void ScrollTo(unsigned int index);
    unsigned int GetFirstVisible() const;
    /// Rows that are at least partly visible.
    unsigned int GetNumVisible() const;
    /// @}

    /// Called when the user has changed the selection, with the current row.
    void SetAction(std::function<void(unsigned int)> action) { action_ = std::move(action); }
    /// Called when the user opens a row.
    void SetOpenAction(std::function<void(unsigned int)> action) { openAction_ = std::move(action); }

    /// @name For shaders
    /// @{
    /// Glyph codes of a row's text and detail; of an existing row.
    string const &GetGlyphs(unsigned int index) const { return rows_[index].glyphs; }
    string const &GetDetailGlyphs(unsigned int index) const { return rows_[index].detailGlyphs; }
    eMark GetMark(unsigned int index) const { return rows_[index].item.mark; }
    /// Rectangle of a row, relative to the component, in pixels.
    gui::Rectangle GetRowArea(unsigned int index) const;
    /// Row under the mouse; s_noItem if there is none.
    unsigned int GetHotItem() const { return hot_; }
    /// Area of all rows, relative to the component, in pixels: inside of the frame and beside the scroll bar.
    gui::Rectangle GetRowsArea() const;
    /// @}

    string GetCaption() const override;
    void RecalcSize() override;
    void RecalcLayout() override;
    bool OnMsgScroll(bool forward, gui::eScrollDistance distance, int offset) override;
    bool OnMouseEnterExit(bool enter, bool direct, vec2 const &position) override;
    bool OnMouseMove(bool hover, double hoverSeconds, vec2 const &position) override;
    using Component::OnMouseWheel;
    bool OnMouseWheel(int delta, vec2 const &position) override;
    using Component::OnMouseButton;
    bool OnMouseButton(bool down, eMouseButton button, bool doubleClick, unsigned int repeatCount,
                       vec2 const &position) override;
    using Component::OnKeyboardQueryFocus;
    bool OnKeyboardQueryFocus(bool byMouse, eMouseButton button, bool &wantFocus, bool &needCharacterData) override;
    using Component::OnKeyboardKey;
    bool OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character) override;
    void OnTimeDelta(double seconds) override;
    void OnChangedEnabled() override;

private:
    struct ItemRow
    {
        ListItem item;
        string glyphs;
        string detailGlyphs;
        bool isSelected = false;
    };

    unsigned int FindRow(vec2 const &position) const;
    /// Number of rows that fit wholly, at least 1.
    unsigned int CountWholeRows() const;
    void UpdateScrollBar();
    void UpdateHotItem();
    /// The rows have changed.
    void OnChangedItems();
    /// Selects the rows from `first` to `last`, and no others unless `keep`. Returns whether that changes anything.
    bool SelectRange(unsigned int first, unsigned int last, bool keep);
    /// Makes a row the current one as the user does, and calls the action.
    void GoTo(unsigned int index, bool toggle, bool extend);
    void GoToByKey(unsigned int index);
    void Open(unsigned int index);
    /// Row that a key leads to; s_noItem for other keys.
    unsigned int FindRowOfKey(eKey key) const;
    bool SearchByTyping(char character);
    unsigned int FindTyped(string const &typed, unsigned int first) const;

    vec2 sizeInUnits_;
    std::vector<ItemRow> rows_;
    bool multiple_ = false;
    unsigned int current_ = s_noItem;
    /// Other end of a selection that shift extends.
    unsigned int anchor_ = s_noItem;
    unsigned int hot_ = s_noItem;
    /// Begin of a row's text, in lower case, that is typed; for as long as the rest of the time lasts.
    string typed_;
    double typedRest_ = 0;
    float rowHeight_ = 1;
    ScrollBar *scrollBar_;
    Action<unsigned int> action_;
    Action<unsigned int> openAction_;
};

} // namespace quillmarsh::widgets

#endif
