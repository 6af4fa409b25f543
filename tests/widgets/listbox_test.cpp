#include <quillmarsh/widgets/listbox.h>

#include "tests/support/gui_desk.h"
#include "tests/support/scripted_dialogs.h"

#include <gtest/gtest.h>

namespace quillmarsh::widgets
{
namespace
{

using Indexes = std::vector<unsigned int>;
constexpr unsigned int s_none = ListBox::s_noItem;

/// List of ten whole rows, of which each is 24 pixels high, at the top left corner of the window.
class ListBoxTest : public testing::Test
{
protected:
    ListBoxTest()
    {
        list->SetAction([this](unsigned int row) { chosen.push_back(row); });
        list->SetOpenAction([this](unsigned int row) { opened.push_back(row); });
        desk.Frame();
    }

    void Fill(unsigned int numRows)
    {
        std::vector<ListItem> items;
        for (unsigned int i = 0; i < numRows; ++i)
            items.push_back({"row " + std::to_string(i)});
        list->SetItems(std::move(items));
        list->RequestKeyboardFocus();
        desk.Frame();
    }

    void ClickRow(unsigned int row)
    {
        gui::Rectangle const area = list->GetRowArea(row);
        desk.MoveTo(static_cast<int>(area.x) + 20, static_cast<int>(area.y) + 5);
        desk.Click();
        desk.Frame(1);
    }

    tests::GuiDesk desk;
    ListBox *list = new ListBox(nullptr, {200, 242});
    Indexes chosen;
    Indexes opened;
};

TEST_F(ListBoxTest, KeysMoveTheSelectionAndKeepItVisible)
{
    Fill(100);
    constexpr std::pair<eKey, unsigned int> keys[] = {
        {e_key_arrow_down, 0},  {e_key_arrow_down, 1}, {e_key_page_down, 11}, {e_key_end, 99},
        {e_key_arrow_down, 99}, {e_key_page_up, 89},   {e_key_home, 0},       {e_key_arrow_up, 0}};
    for (auto const &[key, expected] : keys)
    {
        desk.TypeKey(key);
        EXPECT_EQ(list->GetSelected(), expected) << GetKeyName(key);
        EXPECT_EQ(list->GetAllSelected(), Indexes{expected});
        EXPECT_GE(expected, list->GetFirstVisible());
        EXPECT_LT(expected, list->GetFirstVisible() + 10);
    }
    EXPECT_EQ(chosen, (Indexes{0, 1, 11, 99, 89, 0})) << "none without a change";
    desk.TypeKey(e_key_enter);
    EXPECT_EQ(opened, Indexes{0});
    EXPECT_EQ(list->GetCaption(), "row 0");

    list->Clear();
    EXPECT_EQ(list->GetCurrent(), s_none);
    EXPECT_FALSE(list->OnKeyboardKey(true, e_key_arrow_down, 0, 0));
    EXPECT_FALSE(list->OnKeyboardKey(true, e_key_enter, 0, 0)) << "for the default button";
}

TEST_F(ListBoxTest, MouseSelectsAndOpens)
{
    Fill(20);
    list->ScrollTo(14);
    EXPECT_EQ(list->GetFirstVisible(), 5U);
    ClickRow(7);
    ClickRow(7);
    desk.Click();
    desk.Click();
    EXPECT_EQ(chosen, Indexes{7});
    EXPECT_EQ(opened, Indexes{7});
    desk.MoveTo(20, 30);
    EXPECT_EQ(list->GetHotItem(), 6U);
    desk.Turn(120);
    EXPECT_EQ(list->GetHotItem(), 3U) << "what is below the mouse now";
    desk.Click(e_mouse_button_right);
    EXPECT_EQ(list->GetSelected(), 3U);
    desk.MoveTo(400, 400);
    EXPECT_EQ(list->GetHotItem(), s_none);

    list->SetEnabled(false);
    ClickRow(4);
    EXPECT_EQ(list->GetSelected(), 3U);
}

TEST_F(ListBoxTest, ModifiersSelectSeveralRows)
{
    Fill(10);
    list->SetMultipleSelection(true);
    ClickRow(2);
    desk.PressKey(e_key_l_control);
    ClickRow(5);
    ClickRow(2);
    EXPECT_EQ(list->GetAllSelected(), Indexes{5});
    desk.TypeKey(e_key_arrow_down);
    EXPECT_EQ(list->GetAllSelected(), Indexes{5}) << "control moves without selecting";
    EXPECT_EQ(list->GetCurrent(), 3U);
    desk.TypeKey(e_key_space);
    desk.ReleaseKey(e_key_l_control);
    EXPECT_EQ(list->GetAllSelected(), (Indexes{3, 5}));
    desk.PressKey(e_key_l_shift);
    ClickRow(7);
    EXPECT_EQ(list->GetAllSelected(), (Indexes{3, 4, 5, 6, 7}));
    desk.TypeKey(e_key_home);
    EXPECT_EQ(list->GetAllSelected(), (Indexes{0, 1, 2, 3})) << "from the same end";
    desk.ReleaseKey(e_key_l_shift);
    desk.PressKey(e_key_l_control);
    desk.TypeKey(e_key_a);
    desk.ReleaseKey(e_key_l_control);
    EXPECT_EQ(list->GetAllSelected().size(), 10U);

    list->SetMultipleSelection(false);
    EXPECT_EQ(list->GetAllSelected(), Indexes{0});
    list->SetSelected(4, true);
    EXPECT_EQ(list->GetAllSelected(), Indexes{4});
    list->SetSelected(4, false);
    EXPECT_EQ(list->GetSelected(), s_none);
}

TEST_F(ListBoxTest, TypedLettersFindRows)
{
    list->SetItems({{"Apple"}, {"banana"}, {"Bread"}, {"\xc3\x84pfel"}, {"brie"}, {"b b"}});
    list->RequestKeyboardFocus();
    auto const type = [&](std::initializer_list<eKey> keys)
    {
        for (eKey const key : keys)
            desk.TypeKey(key);
        unsigned int const found = list->GetSelected();
        desk.Frame(1.5);
        return found;
    };
    EXPECT_EQ(type({e_key_b}), 1U);
    EXPECT_EQ(type({e_key_b}), 2U);
    EXPECT_EQ(type({e_key_b, e_key_r, e_key_i}), 4U);
    EXPECT_EQ(type({e_key_b, e_key_b}), 1U) << "the same letter goes on, over the end";
    EXPECT_EQ(type({e_key_x}), 1U);
    list->OnKeyboardKey(true, e_key_a, 0, '\xe4');
    EXPECT_EQ(list->GetSelected(), 3U) << "Latin-1 has letters with accents";
    desk.Frame(1.5);
    list->OnKeyboardKey(true, e_key_b, 0, 'b');
    list->OnKeyboardKey(true, e_key_space, 0, ' ');
    EXPECT_EQ(list->GetSelected(), 5U) << "a blank is a letter of what is being typed";
}

TEST_F(ListBoxTest, ChangesOfRowsKeepSelectionAndPlace)
{
    Fill(50);
    list->SetMultipleSelection(true);
    for (unsigned int const row : {20U, 21U, 40U})
        list->SetSelected(row, true);
    list->ScrollTo(30);
    unsigned int const first = list->GetFirstVisible();
    list->RemoveItem(20);
    EXPECT_EQ(list->GetAllSelected(), (Indexes{20, 39}));
    list->RemoveItem(500);
    list->SetItem(500, {"no row"});
    list->SetItem(20, {"other"});
    EXPECT_TRUE(list->IsSelected(20));
    Fill(30);
    EXPECT_EQ(list->GetAllSelected(), Indexes{20});
    EXPECT_EQ(list->GetFirstVisible(), std::min(first, 20U));

    list->SetMultipleSelection(false);
    list->Select(29);
    list->RemoveItem(29);
    EXPECT_EQ(list->GetCurrent(), 28U) << "the keys go on from the neighbour";
    EXPECT_EQ(list->GetSelected(), s_none);
    list->Select(28);
    list->RemoveItem(3);
    EXPECT_EQ(list->GetSelected(), 27U);
    list->AddItem({"last"});
    EXPECT_EQ(list->GetItem(28).text, "last");

    tests::ScriptedDialogs dialogs;
    EXPECT_EQ(list->GetItem(29).text, "");
    EXPECT_EQ(dialogs.TakeTexts(), std::vector<string>{"Index out of range."});
}

TEST_F(ListBoxTest, MillionRowsKeepTheirPlaces)
{
    list->SetItems(std::vector<ListItem>(1000000, ListItem{"row"}));
    desk.Frame();
    list->Select(999999);
    EXPECT_EQ(list->GetFirstVisible(), 999990U);
    EXPECT_EQ(list->GetNumVisible(), 10U);
    EXPECT_EQ(list->GetRowArea(999991).y, 25) << "to the pixel";
    EXPECT_EQ(list->GetRowsArea().width, 200 - 2 - 12) << "beside the scroll bar";
    list->SetItems({{"row"}});
    desk.Frame();
    EXPECT_EQ(list->GetFirstVisible(), 0U);
    EXPECT_EQ(list->GetRowsArea().width, 198);
}

TEST_F(ListBoxTest, ActionsMayDeleteTheList)
{
    Fill(5);
    gui::Watch<ListBox> const watch(*list);
    list->SetAction([this](unsigned int) { delete list; });
    gui::Rectangle const area = list->GetRowArea(1);
    desk.MoveTo(20, static_cast<int>(area.y) + 3);
    desk.Click();
    desk.Click();
    EXPECT_EQ(watch.Get(), nullptr);
    EXPECT_TRUE(opened.empty());

    auto *const empty = new ListBox(nullptr, {0, -5});
    empty->SetItems({{"row"}, {"row"}});
    desk.Frame();
    EXPECT_EQ(empty->GetNumVisible(), 0U);
    empty->Select(1);
    EXPECT_EQ(empty->GetSelected(), 1U);
}

} // namespace
} // namespace quillmarsh::widgets
