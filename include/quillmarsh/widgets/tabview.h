// Pages of which one shows, chosen by tabs.
#ifndef QUILLMARSH_WIDGETS_TABVIEW_H
#define QUILLMARSH_WIDGETS_TABVIEW_H

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/platform/types.h>
#include <quillmarsh/widgets/action.h>

#include <vector>

namespace quillmarsh::widgets
{

class TabView;

/// Tab of a TabView, which makes it. Frame thread only.
class QUILLMARSH_API Tab : public gui::Component
{
public:
    ~Tab() override;

    /// @name For shaders
    /// @{
    /// Glyph codes of the title.
    string const &GetGlyphs() const { return glyphs_; }
    /// True for the tab of the page that shows.
    bool IsShown() const;
    /// @}

    string GetCaption() const override { return title_; }
    void RecalcSize() override;
    using Component::OnMouseButton;
    bool OnMouseButton(bool down, eMouseButton button, bool doubleClick, unsigned int repeatCount,
                       vec2 const &position) override;
    using Component::OnKeyboardQueryFocus;
    bool OnKeyboardQueryFocus(bool byMouse, eMouseButton button, bool &wantFocus, bool &needCharacterData) override;
    using Component::OnKeyboardKey;
    bool OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character) override;

private:
    friend class TabView;

    explicit Tab(TabView &view);
    void SetTitle(string const &title);

    TabView &view_;
    string title_;
    string glyphs_;
};

/// Row of tabs above a page. A click on a tab, the arrow keys on the tabs, and control with Tab or Page Up and Page Down
/// anywhere in the pages choose one. Tabs that do not fit become narrower. Frame thread only.
class QUILLMARSH_API TabView : public gui::Component
{
public:
    static constexpr unsigned int s_noPage = ~0U;

    /// Becomes a child of `parent`; stays top-level for null. `size` is in units.
    explicit TabView(gui::Component *parent, vec2 const &size = {320, 240});
    ~TabView() override;

    /// Adds a page and returns it: a ghost that fills the view below the tabs, for the program to attach widgets to. The
    /// title is UTF-8. The first page shows. To remove a page, delete it.
    gui::Component &AddPage(string const &title);
    unsigned int GetNumPages() const;
    /// Returns a page by index; null past the end.
    gui::Component *GetPage(unsigned int index) const;
    void SetTitle(unsigned int index, string const &title);
    /// Shows a page, without the action. Ignores an index past the end.
    void ShowPage(unsigned int index);
    /// Returns the tab of a page by index; null past the end.
    Tab *GetTab(unsigned int index) const;
    /// Index of the page that shows; s_noPage without pages.
    unsigned int GetShownPage() const;
    /// Called with the index of a page that the user has chosen.
    void SetAction(std::function<void(unsigned int)> action) { action_ = std::move(action); }

    void RecalcSize() override;
    void RecalcLayout() override;
    /// Forgets the child.
    void OnDetachedChild(Component &child) override;
    using Component::OnKeyboardKey;
    bool OnKeyboardKey(bool down, eKey key, unsigned int repeatCount, char character) override;

private:
    friend class Tab;

    struct Page
    {
        gui::Component *page;
        Tab *tab;
    };

    unsigned int FindTab(Tab const &tab) const;
    /// Shows a page as the user does, and calls the action.
    void ChooseByUser(unsigned int index);

    vec2 sizeInUnits_;
    std::vector<Page> pages_;
    unsigned int shown_ = s_noPage;
    Action<unsigned int> action_;
};

} // namespace quillmarsh::widgets

#endif
