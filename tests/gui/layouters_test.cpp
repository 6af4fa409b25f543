#include <quillmarsh/gui/gui_layouters.h>

#include "tests/support/gui_desk.h"

#include <gtest/gtest.h>

namespace quillmarsh::gui::layouters
{
namespace
{

class Layouters : public testing::Test
{
protected:
    /// Makes a component of this size.
    Component &Make(float width, float height, Component *parent = nullptr)
    {
        auto *const component = new Component;
        component->SetSize(width, height);
        if (parent != nullptr)
            component->AttachTo(*parent);
        return *component;
    }

    /// Returns position and size, "x y width height".
    static string PlaceOf(Component const &component)
    {
        std::ostringstream text;
        text << component.GetPosition().x << ' ' << component.GetPosition().y << ' ' << component.GetSize().x << ' '
             << component.GetSize().y;
        return text.str();
    }

    tests::GuiDesk desk;
};

Cell MakeCell(Component *target, eSizeFlag mode, float parameter)
{
    return {target, mode, parameter, e_align_start, nullptr, e_size_target, 1, e_align_start, nullptr};
}

TEST_F(Layouters, ShareALength)
{
    struct Case
    {
        std::vector<std::pair<eSizeFlag, float>> cells;
        /// Places of the ends of the cells in a row of 200 pixels.
        std::vector<float> ends;
    };
    Case const cases[] = {
        {{{e_size_auto, 1}, {e_size_auto, 1}, {e_size_auto, 1}, {e_size_auto, 1}}, {50, 100, 150, 200}},
        {{{e_size_fraction, 0.5F}, {e_size_auto, 1}, {e_size_fraction, 0.5F}}, {100, 100, 200}},
        // Fractions are of what the fixed parts leave, and autos split what the fractions leave.
        {{{e_size_fraction, 0.25F}, {e_size_fixed, 40}, {e_size_auto, 1}, {e_size_auto, 1}}, {40, 80, 140, 200}},
        {{{e_size_fraction, 0.75F}, {e_size_auto, 1}, {e_size_fraction, 0.5F}}, {150, 150, 250}},
        // Fixed parts that are too long make fractions negative, and leave nothing to autos.
        {{{e_size_fixed, 300}, {e_size_fraction, 0.5F}, {e_size_auto, 1}}, {300, 250, 250}},
        // The target is 30 pixels wide.
        {{{e_size_target, 9}, {e_size_target_scale, 2}, {e_size_target_add, 5}, {e_size_auto, 1}}, {30, 90, 125, 200}},
    };
    auto &layouter = *new RowLayouter(nullptr);
    Component &target = Make(30, 10);
    for (Case const &expected : cases)
    {
        Row &row = layouter.Clear().GetRow(7);
        for (auto const &[mode, parameter] : expected.cells)
            row.Append(MakeCell(mode < e_size_fixed ? &target : nullptr, mode, parameter));
        target.SetSize(30, 10);
        layouter.UpdateGeometry(true);
        std::vector<float> ends;
        for (unsigned int i = 0; i < layouter[0].NumCells(); ++i)
            ends.push_back(layouter[0][i].X + layouter[0][i].Width);
        EXPECT_EQ(ends, expected.ends);
    }
    // What is invisible or has gone takes no room.
    layouter.Clear().AutoHeightRow().Append(MakeCell(&target, e_size_target_add, 5)).AutoSpacer();
    target.SetVisible(false);
    layouter.UpdateGeometry(true);
    EXPECT_EQ(layouter[0][0].Width, 5);
    delete &target;
    layouter.UpdateGeometry(true);
    EXPECT_EQ(layouter[0][0].Width, 5);
    EXPECT_EQ(layouter[0][0].Target.Get(), nullptr);
}

TEST_F(Layouters, PlaceComponentsInRows)
{
    Component &panel = Make(340, 140);
    auto &layouter = *new RowLayouter(&panel);
    EXPECT_TRUE(layouter.IsGhost());
    Component &title = Make(1, 20, &layouter);
    Component &end = Make(40, 10, &layouter);
    Component &middle = Make(40, 10, &layouter);
    Component &below = Make(40, 10, &layouter);
    Component &tall = Make(1, 1, &layouter);

    layouter
        .TargetHeightRow(title, e_size_target_add, 10)
        // Gets its height from itself, so that the mode of the cell does not count.
        .Append({&title, e_size_fixed, 100, e_align_start, nullptr, e_size_fraction, 0.5F, e_align_center, nullptr})
        .AutoSpacer()
        .Target(end, e_size_target, 1, e_align_start, nullptr, e_align_end, nullptr);
    layouter.FixedHeightRow(30)
        .Append({&middle, e_size_fixed, 60, e_align_center, nullptr, e_size_fraction, 0.5F, e_align_center, nullptr})
        .AutoSpacer();
    layouter.AutoHeightRow()
        .Spacer(20, e_size_fixed)
        .Target(below, e_size_fixed, 50, e_align_target, &end, e_align_target, nullptr)
        .Append({&tall, e_size_auto, 1, e_align_start, nullptr, e_size_fraction, 1, e_align_start, nullptr});
    panel.UpdateGeometry(true);
    EXPECT_EQ(PlaceOf(layouter), "0 0 200 200");

    RowLayouter::GeomParams params;
    params.FitToParent = true;
    layouter.SetGeomParams(params);
    // What changed is placed at the next dispatch.
    desk.Frame();
    EXPECT_EQ(PlaceOf(layouter), "20 20 300 100");
    EXPECT_EQ(PlaceOf(title), "0 5 100 20");
    EXPECT_EQ(PlaceOf(end), "260 20 40 10");
    EXPECT_EQ(PlaceOf(middle), "0 37.5 60 15");
    EXPECT_EQ(PlaceOf(below), "260 60 50 10");
    EXPECT_EQ(PlaceOf(tall), "70 60 230 40");
}

TEST_F(Layouters, EditTheirLists)
{
    auto const widthsOf = [](Row const &row)
    {
        string text;
        for (unsigned int i = 0; i < row.NumCells(); ++i)
            text += MakeString(static_cast<unsigned int>(row[i].WidthParameter));
        return text;
    };
    auto const fixed = [](float width) { return MakeCell(nullptr, e_size_fixed, width); };
    Row row;
    row.Append(fixed(2)).Prepend(fixed(1)).InsertAfter(1, fixed(4)).InsertBefore(fixed(4), fixed(3));
    EXPECT_EQ(widthsOf(row), "1234");
    row.InsertBefore(4, fixed(9)).InsertAfter(4, fixed(9)).InsertAfter(fixed(8), fixed(9)).Remove(4).Remove(fixed(9));
    EXPECT_EQ(widthsOf(row), "1234");
    row.Remove(fixed(2)).Remove(0u).Append(row).Prepend(Row().Append(fixed(7)).Append(fixed(8)));
    EXPECT_EQ(widthsOf(row), "783434");
    row.InsertBefore(0u, row[3]);
    EXPECT_EQ(widthsOf(row), "4783434");
    EXPECT_EQ(&row.GetCell(99), &row[7]);
    EXPECT_EQ(row[7].WidthMode, e_size_auto);
    EXPECT_EQ(&row.LastCell(), &row[7]);
    EXPECT_EQ(row.Clear().LastCell().WidthMode, e_size_auto);

    auto &layouter = *new RowLayouter(nullptr);
    Component &target = Make(1, 1);
    layouter.VariableHeightRow(0.5F);
    layouter.GetRow(5).Target(target, e_size_target, 1, e_align_start, nullptr, e_align_start, nullptr);
    EXPECT_EQ(layouter.NumRows(), 2u);
    EXPECT_EQ(layouter.FindRow(target), &layouter[1]);
    EXPECT_EQ(layouter[1].FindCell(target), &layouter[1][0]);
    EXPECT_EQ(layouter[0].FindCell(target), nullptr);
    layouter.InsertAfter(0u, Row(&target)).InsertBefore(3, Row()).Remove(layouter[0]);
    EXPECT_EQ(layouter.NumRows(), 2u);
    EXPECT_EQ(layouter[0].GetTarget(), &target);
    delete &target;
    EXPECT_EQ(layouter[0].GetTarget(), nullptr);
}

TEST_F(Layouters, StackChildrenInOneLine)
{
    auto &layouter = *new ArrayLayouter(nullptr);
    layouter.UpdateGeometry(true);
    EXPECT_EQ(PlaceOf(layouter), "0 0 0 0");
    Component &wide = Make(60, 10, &layouter);
    Component &small = Make(20, 30, &layouter);
    small.SetVisible(false);
    layouter.AddSpacer({&small, 50});
    layouter.AddSpacer({&small, 5});
    layouter.UpdateGeometry(true);
    EXPECT_EQ(PlaceOf(wide), "0 0 60 10");
    EXPECT_EQ(PlaceOf(small), "20 17 20 30");
    EXPECT_EQ(PlaceOf(layouter), "0 0 60 47");

    ArrayLayouter::GeomParams params;
    params.Vertical = false;
    params.Stretch = true;
    params.MarginStart = 3;
    params.MarginEnd = 4;
    layouter.SetGeomParams(params);
    desk.Frame();
    EXPECT_EQ(PlaceOf(wide), "3 0 60 30");
    EXPECT_EQ(PlaceOf(small), "70 0 20 30");
    EXPECT_EQ(PlaceOf(layouter), "0 0 94 30");

    layouter.AddSpacer({&wide, 1});
    layouter.RemoveSpacer(&small);
    EXPECT_EQ(layouter.FindSpacer(small), nullptr);
    EXPECT_EQ(layouter.FindSpacer(wide)->Distance, 1);
    delete &wide;
    layouter.UpdateGeometry(true);
    EXPECT_EQ(PlaceOf(small), "3 0 20 30");
}

} // namespace
} // namespace quillmarsh::gui::layouters
