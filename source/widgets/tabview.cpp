#include <quillmarsh/widgets/tabview.h>

#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/widgets/looknames.h>
#include <quillmarsh/widgets/measures.h>
#include <quillmarsh/widgets/panel.h>
#include <quillmarsh/widgets/textencoding.h>

#include "source/widgets/inputhelp.h"
#include "source/widgets/units.h"

#include <algorithm>
#include <cmath>

namespace quillmarsh::widgets
{

// A tab.

Tab::Tab(TabView &view) : view_(view)
{
    SetShaderName(ShaderName_Tab);
    SetCanDisable(true);
    SetCanFocus(true);
    AttachTo(view);
}

Tab::~Tab() = default;

bool Tab::IsShown() const
{
    return view_.GetTab(view_.GetShownPage()) == this;
}

void Tab::SetTitle(string const &title)
{
    title_ = title;
    glyphs_ = ToGlyphs(title);
    ReportDirtyGeometry();
}

void Tab::RecalcSize()
{
    float const margins = 2 * Measures::Pixels(Measures::Margin);
    SetSize(CalcTextWidth(*this, glyphs_) + margins, Measures::Pixels(Measures::ControlHeight));
}

bool Tab::OnMouseButton(bool down, eMouseButton button, bool, unsigned int repeatCount, vec2 const &)
{
    if (button != e_mouse_button_left)
        return false;
    if (down && repeatCount == 0)
        view_.ChooseByUser(view_.FindTab(*this));
    return true;
}

/// Only the tab of the page that shows takes part in the way of the focus.
bool Tab::OnKeyboardQueryFocus(bool byMouse, eMouseButton button, bool &wantFocus, bool &needCharacterData)
{
    DefaultProcessQueryFocus(byMouse, button, wantFocus, needCharacterData);
    return true;
}

bool Tab::OnKeyboardKey(bool down, eKey key, unsigned int, char)
{
    if (!down || IsControlPressed() || IsAltPressed() || IsShiftPressed())
        return false;
    unsigned int const own = view_.FindTab(*this);
    unsigned int const last = view_.GetNumPages() - 1;
    unsigned int chosen = own;
    switch (key)
    {
    case e_key_arrow_left:
        chosen = own > 0 ? own - 1 : last;
        break;
    case e_key_arrow_right:
        chosen = own < last ? own + 1 : 0;
        break;
    case e_key_home:
        chosen = 0;
        break;
    case e_key_end:
        chosen = last;
        break;
    default:
        return false;
    }
    // The focus first: the action may delete the view.
    Tab *const tab = view_.GetTab(chosen);
    gui::Watch<TabView> const view(view_);
    if (tab != nullptr)
    {
        tab->SetCanFocus(true);
        tab->RequestKeyboardFocus();
    }
    if (view.Get() != nullptr)
        view->ChooseByUser(chosen);
    return true;
}

// The view.

TabView::TabView(gui::Component *parent, vec2 const &size) : sizeInUnits_(LimitUnits(size))
{
    SetShaderName(ShaderName_TabView);
    if (parent != nullptr)
        AttachTo(*parent);
}

TabView::~TabView() = default;

gui::Component &TabView::AddPage(string const &title)
{
    auto *const tab = new Tab(*this);
    auto *const page = new gui::Component;
    page->SetGhost(true);
    page->SetVisible(false);
    page->AttachTo(*this);
    pages_.push_back({page, tab});
    tab->SetTitle(title);
    tab->SetCanFocus(false);
    if (pages_.size() == 1)
        ShowPage(0);
    ReportDirtyGeometry();
    return *page;
}

unsigned int TabView::GetNumPages() const
{
    return static_cast<unsigned int>(pages_.size());
}

gui::Component *TabView::GetPage(unsigned int index) const
{
    return index < pages_.size() ? pages_[index].page : nullptr;
}

Tab *TabView::GetTab(unsigned int index) const
{
    return index < pages_.size() ? pages_[index].tab : nullptr;
}

unsigned int TabView::FindTab(Tab const &tab) const
{
    auto const found = std::find_if(pages_.begin(), pages_.end(), [&](Page const &page) { return page.tab == &tab; });
    return found != pages_.end() ? static_cast<unsigned int>(found - pages_.begin()) : s_noPage;
}

void TabView::SetTitle(unsigned int index, string const &title)
{
    if (Tab *const tab = GetTab(index))
        tab->SetTitle(title);
}

unsigned int TabView::GetShownPage() const
{
    return shown_;
}

void TabView::ShowPage(unsigned int index)
{
    if (index >= pages_.size() || index == shown_)
        return;
    gui::Watch<TabView> const self(*this);
    gui::Watch<gui::Component> const page(pages_[index].page);
    Page const old = shown_ < pages_.size() ? pages_[shown_] : Page{nullptr, nullptr};
    gui::Component const &focused = *gui::Manager::Instance().GetKeyboardFocusTarget();
    bool const hadFocusInside = old.page != nullptr && focused.IsDescendantOf(*old.page);
    bool const hadFocusOnTab = old.tab == &focused;
    shown_ = index;
    for (Page const &each : pages_)
        each.tab->SetCanFocus(each.tab == pages_[index].tab);
    // The new page first: a focus that must leave the old one can go there.
    page->SetVisible(true);
    if (self.Get() == nullptr || page.Get() == nullptr)
        return;
    ReportDirtyGeometry();
    if (hadFocusInside || hadFocusOnTab)
    {
        // Its components have no size before they are laid out, and those without one cannot have the focus.
        if (hadFocusInside)
            UpdateGeometry(false);
        bool const isFocused = hadFocusInside && page.Get() != nullptr && MoveFocus(*page.Get(), true);
        if (!isFocused && self.Get() != nullptr && GetTab(shown_) != nullptr)
            GetTab(shown_)->RequestKeyboardFocus();
    }
    if (self.Get() == nullptr)
        return;
    auto const isOld = [&](Page const &each) { return each.page == old.page; };
    if (std::any_of(pages_.begin(), pages_.end(), isOld) && GetPage(shown_) != old.page)
        old.page->SetVisible(false);
}

void TabView::ChooseByUser(unsigned int index)
{
    if (index >= pages_.size() || index == shown_)
        return;
    gui::Watch<TabView> const self(*this);
    ShowPage(index);
    if (self.Get() != nullptr && shown_ == index)
        action_(index);
}

void TabView::OnDetachedChild(gui::Component &child)
{
    auto const found =
        std::find_if(pages_.begin(), pages_.end(), [&](Page const &page) { return page.page == &child; });
    if (found == pages_.end())
        return;
    auto const index = static_cast<unsigned int>(found - pages_.begin());
    Tab *const tab = found->tab;
    pages_.erase(found);
    bool const wasShown = index == shown_;
    if (wasShown)
        shown_ = s_noPage;
    else if (shown_ != s_noPage && shown_ > index)
        --shown_;
    delete tab;
    if (wasShown && !pages_.empty())
        ShowPage(std::min(index, GetNumPages() - 1));
    ReportDirtyGeometry();
}

void TabView::RecalcSize()
{
    SetSize(Measures::Pixels(sizeInUnits_));
}

void TabView::RecalcLayout()
{
    vec2 const size = GetSize();
    float const height = std::min(Measures::Pixels(Measures::ControlHeight), std::max(0.0F, size.y));
    float wanted = 0;
    for (Page const &page : pages_)
        wanted += page.tab->GetSize().x;
    // Edges are rounded, not widths, so that the tabs leave no gaps.
    float const scale = wanted > size.x ? std::max(0.0F, size.x) / wanted : 1;
    float wantedEdge = 0;
    for (Page const &page : pages_)
    {
        float const begin = std::floor(wantedEdge * scale);
        wantedEdge += page.tab->GetSize().x;
        page.tab->SetPosition(begin, 0);
        page.tab->SetSize(std::floor(wantedEdge * scale) - begin, height);
        page.page->SetPosition(0, height);
        page.page->SetSize(std::max(0.0F, size.x), std::max(0.0F, size.y - height));
    }
}

bool TabView::OnKeyboardKey(bool down, eKey key, unsigned int, char)
{
    bool const isTurn = key == e_key_tab || key == e_key_page_up || key == e_key_page_down;
    if (!down || !isTurn || !IsControlPressed() || pages_.empty())
        return false;
    bool const forward = key == e_key_page_down || (key == e_key_tab && !IsShiftPressed());
    unsigned int const last = GetNumPages() - 1;
    if (forward)
        ChooseByUser(shown_ < last ? shown_ + 1 : 0);
    else
        ChooseByUser(shown_ > 0 ? shown_ - 1 : last);
    return true;
}

} // namespace quillmarsh::widgets
