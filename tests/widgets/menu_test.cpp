#include <quillmarsh/widgets/measures.h>
#include <quillmarsh/widgets/menu.h>

#include "tests/support/gui_desk.h"

#include <gtest/gtest.h>

namespace quillmarsh::widgets
{
namespace
{

using Names = std::vector<string>;

/// A panel of the program with a component that has the focus, and menus above them.
class MenuTest : public testing::Test
{
protected:
    MenuTest()
    {
        panel.wantsFocus = owner.wantsFocus = true;
        panel.ActivateTopLevel(true);
        owner.RequestKeyboardFocus();
        desk.Frame();
    }

    MenuItem Item(string const &name)
    {
        return {.text = name, .action = [this, name] { chosen.push_back(name); }};
    }

    std::vector<MenuItem> MakeItems()
    {
        MenuItem more = {.text = "More"};
        more.items = {Item("Inner"), Item("Other")};
        MenuItem disabled = Item("Disabled");
        disabled.isEnabled = false;
        return {disabled, Item("Cut"), MenuItem{}, more, Item("Copy")};
    }

    Menu &OpenAt(vec2 const &position)
    {
        Menu *const opened = Menu::Open(MakeItems(), position);
        menu = opened;
        desk.Frame();
        return *opened;
    }

    static vec2 PlaceOf(Menu const &of, unsigned int row)
    {
        gui::Rectangle const area = of.GetRowArea(row);
        return of.GetAbsolutePosition() + vec2(area.x + 30, area.y + std::floor(area.height / 2));
    }
    void MoveToRow(Menu const &of, unsigned int row)
    {
        vec2 const place = PlaceOf(of, row);
        desk.MoveTo(static_cast<int>(place.x), static_cast<int>(place.y));
    }
    static Menu *SubmenuOf(Menu &of) { return of.IsLeaf() ? nullptr : static_cast<Menu *>(of.GetChild(0)); }

    void ExpectAllBack()
    {
        EXPECT_EQ(menu.Get(), nullptr);
        EXPECT_FALSE(desk.manager.IsRunningModal());
        EXPECT_TRUE(panel.IsActive());
        EXPECT_TRUE(owner.IsFocused());
    }

    tests::GuiDesk desk;
    tests::RecordingComponent &panel = desk.Add("panel", {0, 0}, {300, 300});
    tests::RecordingComponent &owner = desk.Add("owner", {10, 10}, {50, 20}, &panel);
    gui::Watch<Menu> menu;
    Names chosen;
};

TEST_F(MenuTest, PressDragAndReleaseChooseInOneGo)
{
    owner.reactions[gui::e_msg_mouse_button] = [this](gui::Message &message)
    {
        if (static_cast<gui::Message_MouseButton &>(message).GetButtonDown())
            menu = Menu::OpenBelow(MakeItems(), owner);
    };
    desk.MoveTo(20, 20);
    desk.Press();
    ASSERT_NE(menu.Get(), nullptr);
    desk.Frame();
    EXPECT_EQ(menu->GetAbsolutePosition(), vec2(10, 30));
    MoveToRow(*menu, 4);
    EXPECT_EQ(menu->GetCurrent(), 4U);
    EXPECT_EQ(menu->GetCaption(), "Copy");
    desk.Release();
    EXPECT_EQ(chosen, Names{"Copy"});
    ExpectAllBack();
}

TEST_F(MenuTest, ReleaseOfTheClickThatOpensChoosesNothing)
{
    desk.MoveTo(100, 100);
    desk.mouse.pressed[e_mouse_button_right] = true;
    desk.Frame();
    owner.RequestKeyboardFocus();
    OpenAt({90, 90});
    desk.Frame();
    desk.Release(e_mouse_button_right);
    EXPECT_NE(menu.Get(), nullptr);
    MoveToRow(*menu, 0);
    desk.Click();
    MoveToRow(*menu, 2);
    desk.Click();
    EXPECT_NE(menu.Get(), nullptr) << "disabled rows and lines cannot be chosen";
    EXPECT_EQ(menu->GetCurrent(), +Menu::s_noItem);
    MoveToRow(*menu, 1);
    desk.Click();
    EXPECT_EQ(chosen, Names{"Cut"});

    // A press elsewhere closes it, and does nothing else.
    OpenAt({100, 100});
    desk.MoveTo(20, 20);
    desk.log.Take();
    desk.Press();
    ExpectAllBack();
    for (string const &line : desk.log.Take())
        EXPECT_EQ(line.find("owner down"), string::npos) << line;
    desk.Release();
    EXPECT_EQ(chosen.size(), 1U);
}

TEST_F(MenuTest, KeysMoveOpenChooseAndClose)
{
    OpenAt({50, 50});
    desk.TypeKey(e_key_arrow_down);
    EXPECT_EQ(menu->GetCurrent(), 1U) << "the first one is disabled";
    desk.TypeKey(e_key_arrow_left);
    desk.TypeKey(e_key_arrow_down);
    EXPECT_EQ(menu->GetCurrent(), 3U);
    desk.TypeKey(e_key_arrow_right);
    Menu *const inner = SubmenuOf(*menu);
    ASSERT_NE(inner, nullptr);
    EXPECT_TRUE(inner->IsFocused());
    EXPECT_EQ(inner->GetCurrent(), 0U);
    desk.TypeKey(e_key_escape);
    EXPECT_EQ(SubmenuOf(*menu), nullptr);
    EXPECT_TRUE(menu->IsFocused());
    desk.TypeKey(e_key_c);
    EXPECT_EQ(menu->GetCurrent(), 4U);
    desk.TypeKey(e_key_c);
    EXPECT_EQ(menu->GetCurrent(), 1U) << "over the end";
    desk.TypeKey(e_key_end);
    desk.TypeKey(e_key_arrow_up);
    desk.TypeKey(e_key_enter);
    desk.TypeKey(e_key_arrow_up);
    desk.log.Take();
    desk.TypeKey(e_key_enter);
    EXPECT_EQ(chosen, Names{"Other"});
    ExpectAllBack();
    OpenAt({50, 50});
    desk.TypeKey(e_key_escape);
    ExpectAllBack();
}

TEST_F(MenuTest, KeyThatOpensItAndIsHeldChoosesNothing)
{
    owner.reactions[gui::e_msg_keyboard_key] = [this](gui::Message &message)
    {
        if (static_cast<gui::Message_KeyboardKey &>(message).GetKeyDown())
            menu = Menu::Open(MakeItems(), {20, 20});
    };
    desk.PressKey(e_key_enter);
    ASSERT_NE(menu.Get(), nullptr);
    menu->OnKeyboardKey(true, e_key_arrow_down, 0, 0);
    desk.Frame(0.5);
    desk.Frame(0.5);
    EXPECT_NE(menu.Get(), nullptr);
    desk.ReleaseKey(e_key_enter);
    EXPECT_TRUE(chosen.empty());
}

TEST_F(MenuTest, MenuOfARowFollowsTheRestingMouse)
{
    // At the right edge of the window, the menu of a row stands on the left side of its opener.
    OpenAt({635, 475});
    EXPECT_EQ(menu->CalcEndPosition(), vec2(635, 475)) << "to the left, and above";
    MoveToRow(*menu, 3);
    EXPECT_EQ(SubmenuOf(*menu), nullptr);
    desk.Frame(0.3);
    desk.Frame(0.01);
    gui::Watch<Menu> const inner(SubmenuOf(*menu));
    ASSERT_NE(inner.Get(), nullptr);
    EXPECT_FALSE(menu->IsFocused() && inner->IsFocused());
    desk.Frame();
    EXPECT_LE(inner->GetAbsolutePosition().x + inner->GetSize().x, menu->GetAbsolutePosition().x + 4);
    EXPECT_LE(inner->GetAbsolutePosition().y + inner->GetSize().y, 480);

    // On the way to it the mouse may cross another row.
    MoveToRow(*menu, 4);
    MoveToRow(*inner, 1);
    EXPECT_EQ(inner->GetCurrent(), 1U);
    EXPECT_EQ(menu->GetCurrent(), 3U);
    MoveToRow(*menu, 4);
    desk.Frame(0.3);
    desk.Frame(0.01);
    EXPECT_EQ(inner.Get(), nullptr);
    MoveToRow(*menu, 3);
    desk.Click();
    ASSERT_NE(SubmenuOf(*menu), nullptr);
    desk.Frame();
    MoveToRow(*SubmenuOf(*menu), 0);
    desk.Click();
    EXPECT_EQ(chosen, Names{"Inner"});
    ExpectAllBack();
}

TEST_F(MenuTest, MenuHigherThanTheWindowScrolls)
{
    std::vector<MenuItem> items;
    for (unsigned int i = 0; i < 40; ++i)
        items.push_back(Item("row " + std::to_string(i)));
    menu = Menu::Open(items, {50, 300});
    desk.Frame();
    EXPECT_EQ(menu->GetAbsolutePosition().y, 0);
    EXPECT_EQ(menu->GetSize().y, 480);
    EXPECT_FALSE(menu->HasHiddenRows(false));
    EXPECT_TRUE(menu->HasHiddenRows(true));
    auto const isVisible = [&](unsigned int row)
    {
        gui::Rectangle const area = menu->GetRowArea(row);
        return area.y >= 0 && area.y + area.height <= 480;
    };
    desk.TypeKey(e_key_end);
    EXPECT_EQ(menu->GetCurrent(), 39U);
    EXPECT_TRUE(isVisible(39));
    EXPECT_FALSE(menu->HasHiddenRows(true));
    desk.TypeKey(e_key_home);
    EXPECT_TRUE(isVisible(0));
    desk.MoveTo(80, 470);
    desk.Turn(-120 * 100);
    EXPECT_TRUE(isVisible(39));
    EXPECT_EQ(menu->GetCurrent(), 39U) << "what is below the mouse now";
    desk.MoveTo(80, 10);
    for (int i = 0; i < 100; ++i)
        desk.Frame(0.1);
    EXPECT_TRUE(isVisible(0)) << "the mouse rests at the upper end";
    desk.Click();
    EXPECT_EQ(chosen, Names{"row 0"});
}

TEST_F(MenuTest, ActionsFindTheProgramAsItWas)
{
    // An action that opens something modal, or deletes what has opened the menu.
    gui::Component &dialog = desk.Add("dialog", {200, 200}, {50, 50});
    dialog.SetVisible(false);
    bool hadFocus = false;
    menu = Menu::Open({{.text = "Dialog",
                        .action =
                            [&]
                        {
                            hadFocus = owner.IsFocused();
                            dialog.RunModal();
                        }}},
                      {50, 50});
    desk.Frame();
    desk.TypeKey(e_key_arrow_down);
    desk.TypeKey(e_key_enter);
    EXPECT_TRUE(hadFocus);
    EXPECT_EQ(desk.manager.GetModalTarget(), &dialog);
    EXPECT_TRUE(dialog.IsActive());

    // From a modal dialog the menu returns to that one.
    OpenAt({210, 210});
    desk.TypeKey(e_key_escape);
    EXPECT_EQ(desk.manager.GetModalTarget(), &dialog);
    EXPECT_TRUE(dialog.IsActive());
    dialog.EndModal();

    menu = Menu::Open({{.text = "Delete", .action = [this] { delete &panel; }}}, {50, 50});
    desk.Frame();
    desk.TypeKey(e_key_arrow_down);
    desk.TypeKey(e_key_enter);
    desk.Frame();
    EXPECT_FALSE(desk.manager.IsRunningModal());
}

TEST_F(MenuTest, LeavesTheWindowToWhateverComesNext)
{
    EXPECT_EQ(Menu::Open({}, {0, 0}), nullptr);
    OpenAt({50, 50});
    OpenAt({90, 90});
    EXPECT_EQ(desk.manager.GetNumTopLevelComponents(), 2U) << "the second one has closed the first one";
    delete menu->GetParent()->GetChild(0);
    ExpectAllBack();

    // Another modal component keeps focus and activity.
    gui::Component &dialog = desk.Add("dialog", {200, 200}, {50, 50});
    OpenAt({50, 50});
    desk.TypeKey(e_key_arrow_down);
    desk.TypeKey(e_key_arrow_down);
    desk.TypeKey(e_key_arrow_right);
    dialog.RunModal();
    EXPECT_EQ(menu.Get(), nullptr);
    EXPECT_EQ(desk.manager.GetModalTarget(), &dialog);
    EXPECT_FALSE(owner.IsFocused());
    dialog.EndModal();
    EXPECT_FALSE(desk.manager.IsRunningModal());

    // Its owner may go while it is open.
    OpenAt({50, 50});
    delete &panel;
    desk.TypeKey(e_key_escape);
    EXPECT_EQ(menu.Get(), nullptr);
    EXPECT_FALSE(desk.manager.IsRunningModal());
}

TEST_F(MenuTest, LivesInASmallWindowAtALargeScale)
{
    Measures::SetScale(4);
    tests::GuiDesk::DeskKernel::GUIManager_OnWindowResize(60, 40);
    OpenAt({1000, -50});
    EXPECT_EQ(menu->GetAbsolutePosition(), vec2::ZERO);
    EXPECT_EQ(menu->GetSize(), vec2(60, 40));
    desk.TypeKey(e_key_end);
    desk.TypeKey(e_key_enter);
    EXPECT_EQ(chosen, Names{"Copy"});
    Measures::SetScale(1);
}

} // namespace
} // namespace quillmarsh::widgets
