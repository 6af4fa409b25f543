#include <quillmarsh/gui/gui_manager.h>
#include <quillmarsh/widgets/stack.h>

#include "tests/support/gui_desk.h"

#include <gtest/gtest.h>

namespace quillmarsh::widgets
{
namespace
{

using gui::Component;

Component &AddBox(Component &parent, float width, float height)
{
    auto *const box = new Component;
    box->SetSize(width, height);
    box->AttachTo(parent);
    return *box;
}

vec2 EndOf(Component const &component)
{
    return component.CalcEndPosition();
}

TEST(Stack, NestedStacksGetTheirSizesInOneUpdate)
{
    tests::GuiDesk desk;
    auto *const column = new Stack(true, nullptr, 10);
    auto *const row = new Stack(false, column, 4);
    AddBox(*row, 30, 10);
    Component &tall = AddBox(*row, 20, 25);
    Component &hidden = AddBox(*row, 500, 500);
    hidden.SetVisible(false);
    Component &below = AddBox(*column, 40, 5);
    column->SetMargin(3);
    column->UpdateGeometry(true);

    EXPECT_EQ(row->GetSize(), vec2(54, 25));
    EXPECT_EQ(column->GetSize(), vec2(60, 46));
    EXPECT_EQ(row->GetChild(0)->GetPosition(), vec2(0, 7)) << "on the middle line, at a whole pixel";
    EXPECT_EQ(tall.GetPosition(), vec2(34, 0));
    EXPECT_EQ(below.GetPosition(), vec2(3, 38));
}

TEST(Stack, SharesWhatIsLeftToTheLastPixel)
{
    tests::GuiDesk desk;
    Component parent;
    parent.SetSize(101, 20);
    auto *const row = new Stack(false, &parent, 0);
    row->SetFitToParent(true);
    row->SetAlignment(e_stack_stretch);
    Component &first = AddBox(*row, 10, 5);
    Component &fixed = AddBox(*row, 20, 5);
    Component &last = AddBox(*row, 10, 5);
    row->SetFill(first, 1);
    row->SetFill(last, 1);
    row->SetFill(parent);
    parent.UpdateGeometry(true);
    EXPECT_EQ(first.GetSize(), vec2(40, 20));
    EXPECT_EQ(fixed.GetSize(), vec2(20, 20));
    EXPECT_EQ(EndOf(last), vec2(101, 20));

    delete &first;
    parent.UpdateGeometry(true);
    EXPECT_EQ(fixed.GetPosition(), vec2(0, 0));
    EXPECT_EQ(EndOf(last), vec2(101, 20));

    auto *const column = new Stack(true, row, 0);
    Component &filling = AddBox(*column, 10, 5);
    column->SetFill(filling);
    parent.UpdateGeometry(true);
    EXPECT_EQ(filling.GetSize().y, 20) << "a stack that another one stretches shares that";
    delete column;

    parent.SetSize(5, 5);
    parent.UpdateGeometry(true);
    EXPECT_GE(row->GetSize().x, 30) << "children that do not fit keep their sizes";
}

TEST(Grid, AlignsColumnsAndLeavesCellsOfHiddenChildrenEmpty)
{
    tests::GuiDesk desk;
    auto *const grid = new Grid(2, nullptr, {10, 2});
    AddBox(*grid, 30, 10);
    Component &second = AddBox(*grid, 5, 20);
    Component &hidden = AddBox(*grid, 400, 10);
    hidden.SetVisible(false);
    Component &fourth = AddBox(*grid, 8, 10);
    Component &fifth = AddBox(*grid, 50, 7);
    grid->UpdateGeometry(true);
    EXPECT_EQ(grid->GetSize(), vec2(68, 41));
    EXPECT_EQ(second.GetPosition(), vec2(60, 0));
    EXPECT_EQ(fourth.GetPosition(), vec2(60, 22));
    EXPECT_EQ(fifth.GetPosition(), vec2(0, 34));

    grid->DeleteAllChildren();
    grid->UpdateGeometry(true);
    EXPECT_EQ(grid->GetSize(), vec2(0, 0));
}

} // namespace
} // namespace quillmarsh::widgets
