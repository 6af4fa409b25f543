#include <quillmarsh/widgets/tabview.h>

#include "tests/support/gui_desk.h"

#include <gtest/gtest.h>

namespace quillmarsh::widgets
{
namespace
{

/// View of 300 by 100 pixels with three pages.
class TabViewTest : public testing::Test
{
protected:
    TabViewTest()
    {
        for (char const *const title : {"One", "Another", "Three"})
            view->AddPage(title);
        view->SetAction([this](unsigned int page) { chosen.push_back(page); });
        desk.Frame();
    }

    tests::RecordingComponent &AddField(unsigned int page)
    {
        tests::RecordingComponent &field = desk.Add("field", {10, 10}, {20, 20}, view->GetPage(page));
        field.wantsFocus = true;
        desk.Frame();
        return field;
    }

    void ClickTab(unsigned int index)
    {
        vec2 const place = view->GetTab(index)->GetAbsolutePosition();
        desk.MoveTo(static_cast<int>(place.x) + 3, static_cast<int>(place.y) + 3);
        desk.Click();
    }

    void ExpectShown(unsigned int index)
    {
        EXPECT_EQ(view->GetShownPage(), index);
        for (unsigned int i = 0; i < view->GetNumPages(); ++i)
        {
            EXPECT_EQ(view->GetPage(i)->IsVisible(), i == index) << i;
            EXPECT_EQ(view->GetTab(i)->IsShown(), i == index) << i;
            EXPECT_EQ(view->GetTab(i)->CanFocus(), i == index) << i;
        }
    }

    tests::GuiDesk desk;
    TabView *view = new TabView(nullptr, {300, 100});
    std::vector<unsigned int> chosen;
};

TEST_F(TabViewTest, TabsAndKeysChoosePages)
{
    ExpectShown(0);
    ClickTab(1);
    ExpectShown(1);
    EXPECT_EQ(view->GetPage(1)->GetPosition(), vec2(0, 28));
    desk.Frame();
    EXPECT_EQ(view->GetPage(1)->GetSize(), vec2(300, 72));
    ClickTab(1);
    EXPECT_TRUE(view->GetTab(1)->IsFocused());
    desk.TypeKey(e_key_arrow_right);
    desk.TypeKey(e_key_arrow_right);
    ExpectShown(0);
    EXPECT_TRUE(view->GetTab(0)->IsFocused());
    desk.TypeKey(e_key_arrow_left);
    desk.TypeKey(e_key_home);
    desk.TypeKey(e_key_end);
    ExpectShown(2);
    EXPECT_EQ(chosen, (std::vector<unsigned int>{1, 2, 0, 2, 0, 2}));
    view->ShowPage(1);
    view->ShowPage(7);
    EXPECT_EQ(chosen.size(), 6U);
    ExpectShown(1);
}

TEST_F(TabViewTest, FocusGoesAlongWithThePages)
{
    tests::RecordingComponent &first = AddField(0);
    tests::RecordingComponent &third = AddField(2);
    first.RequestKeyboardFocus();
    desk.PressKey(e_key_l_control);
    desk.TypeKey(e_key_page_up);
    EXPECT_TRUE(third.IsFocused());
    desk.TypeKey(e_key_tab);
    EXPECT_TRUE(first.IsFocused());
    desk.TypeKey(e_key_page_down);
    EXPECT_TRUE(view->GetTab(1)->IsFocused()) << "a page without anything to focus";
    desk.PressKey(e_key_l_shift);
    desk.TypeKey(e_key_tab);
    desk.ReleaseKey(e_key_l_shift);
    ExpectShown(0);
    desk.ReleaseKey(e_key_l_control);
    EXPECT_FALSE(view->OnKeyboardKey(true, e_key_tab, 0, 0)) << "moves the focus in the panel";
}

TEST_F(TabViewTest, DeletedPagesTakeTheirTabsWithThem)
{
    view->ShowPage(1);
    delete view->GetPage(0);
    ExpectShown(0);
    EXPECT_EQ(view->GetTab(0)->GetCaption(), "Another");
    delete view->GetPage(0);
    ExpectShown(0);
    EXPECT_EQ(view->GetTab(0)->GetCaption(), "Three");
    EXPECT_EQ(view->GetNumChildren(), 2U);
    delete view->GetPage(0);
    EXPECT_EQ(view->GetShownPage(), +TabView::s_noPage);
    EXPECT_FALSE(view->OnKeyboardKey(true, e_key_tab, 0, 0));
    view->AddPage("New");
    ExpectShown(0);

    gui::Watch<TabView> const watch(*view);
    view->AddPage("Last");
    view->SetAction([this](unsigned int) { delete view; });
    desk.Frame();
    ClickTab(1);
    EXPECT_EQ(watch.Get(), nullptr);
}

TEST_F(TabViewTest, TabsThatDoNotFitBecomeNarrower)
{
    view->SetTitle(0, string(200, 'W'));
    view->SetTitle(9, "no page");
    for (unsigned int i = 0; i < 20; ++i)
        view->AddPage("page \xc3\xa9");
    desk.Frame();
    float edge = 0;
    for (unsigned int i = 0; i < view->GetNumPages(); ++i)
    {
        gui::Component const &tab = *view->GetTab(i);
        EXPECT_EQ(tab.GetPosition().x, edge) << i;
        EXPECT_EQ(tab.GetSize().x, std::floor(tab.GetSize().x));
        edge = tab.CalcEndPositionX();
    }
    EXPECT_NEAR(edge, 300, 1);
    EXPECT_EQ(view->GetTab(22)->GetGlyphs(), "page \xe9");
}

} // namespace
} // namespace quillmarsh::widgets
