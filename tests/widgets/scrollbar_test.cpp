#include <quillmarsh/widgets/measures.h>
#include <quillmarsh/widgets/scrollbar.h>

#include "tests/support/gui_desk.h"

#include <gtest/gtest.h>

#include <climits>

namespace quillmarsh::widgets
{
namespace
{

using Positions = std::vector<unsigned int>;

/// Vertical bar of 100 pixels at the left edge of the window, for 90 steps of which 10 are visible.
class ScrollBarTest : public testing::Test
{
protected:
    ScrollBarTest()
    {
        bar->SetSizeY(100);
        bar->SetSizes(90, 10);
        bar->SetAction([this](unsigned int position) { positions.push_back(position); });
        desk.Frame();
    }

    tests::GuiDesk desk;
    ScrollBar *bar = new ScrollBar(true, nullptr);
    Positions positions;
};

TEST_F(ScrollBarTest, PressBesideTheThumbGoesOnUntilTheThumbIsThere)
{
    desk.manager.SetMouseRepeat(0.25, 0.1);
    desk.MoveTo(5, 50);
    desk.Press();
    EXPECT_EQ(positions, Positions{10});
    // A repetition is reported in each frame, and counts once.
    desk.Frame(0.25);
    desk.Frame(0.01);
    desk.Frame(0.01);
    EXPECT_EQ(positions, (Positions{10, 20}));
    for (int i = 0; i < 10; ++i)
        desk.Frame(0.1);
    EXPECT_EQ(positions, (Positions{10, 20, 30})) << "there the thumb is below the mouse";
    desk.Release();

    desk.MoveTo(5, 2);
    desk.Click();
    EXPECT_EQ(positions.back(), 20U);
    desk.Click(e_mouse_button_right);
    EXPECT_EQ(positions.size(), 4U);
}

TEST_F(ScrollBarTest, ThumbIsDraggedOverAllStepsAndBackToItsStart)
{
    gui::Component const &thumb = *bar->GetChild(0);
    desk.MoveTo(5, 4);
    desk.Press();
    EXPECT_TRUE(bar->IsGrabbed());
    desk.MoveTo(500, 4 + 38);
    EXPECT_EQ(positions, Positions{40}) << "half of its way";
    desk.MoveTo(5, 4 + 1);
    desk.MoveTo(5, 4);
    EXPECT_EQ(positions, (Positions{40, 1, 0}));
    desk.MoveTo(5, 400);
    EXPECT_EQ(thumb.GetPosition().y, 76);
    EXPECT_EQ(positions.back(), 80U);

    // Between two steps the thumb follows the mouse, and falls into its place at the end.
    bar->SetSizes(12, 10);
    desk.MoveTo(5, 4 + 5);
    EXPECT_EQ(thumb.GetPosition().y, 5);
    EXPECT_EQ(bar->GetScrollPosition(), 1U);
    desk.Release();
    EXPECT_EQ(thumb.GetPosition().y, 8);
    EXPECT_FALSE(bar->IsGrabbed());
}

TEST_F(ScrollBarTest, WheelTurnsByStepsAndLeavesWhatIsNotNeeded)
{
    desk.MoveTo(5, 50);
    desk.Turn(-120);
    desk.Turn(-70);
    desk.Turn(-50);
    desk.Turn(120);
    EXPECT_EQ(positions, (Positions{3, 6, 3})) << "parts of a notch add up";
    bar->SetWheelStep(0);
    desk.Turn(-120);
    EXPECT_EQ(positions.back(), 4U);
    EXPECT_TRUE(bar->OnMouseWheel(-120 * 1000, vec2::ZERO));
    EXPECT_EQ(positions.back(), 80U);

    bar->SetSizes(10, 10);
    EXPECT_FALSE(bar->GetChild(0)->IsVisible());
    EXPECT_FALSE(bar->OnMouseWheel(120, vec2::ZERO)) << "for what is behind";
}

TEST_F(ScrollBarTest, ScrollsByMessagesWithinItsLimits)
{
    gui::Message_Scroll message(true, gui::e_scroll_page, INT_MAX);
    bar->DispatchMessage(message);
    bar->Scroll(false, gui::e_scroll_page);
    bar->Scroll(true, gui::e_scroll_line, -5);
    bar->Scroll(false, gui::e_scroll_whole);
    bar->Scroll(false, gui::e_scroll_line);
    EXPECT_EQ(positions, (Positions{80, 70, 65, 0})) << "no report without a change";

    bar->SetSizes(UINT_MAX, 0);
    bar->Scroll(true, gui::e_scroll_page);
    EXPECT_EQ(positions.back(), 1U) << "a page is at least a step";
    bar->SetSizes(UINT_MAX, 10);
    bar->SetScrollPosition(-3);
    EXPECT_EQ(bar->GetScrollPosition(), 0U);
}

TEST_F(ScrollBarTest, MayBeDeletedByItsActionAndDisabledInADrag)
{
    desk.MoveTo(5, 4);
    desk.Press();
    bar->SetEnabled(false);
    EXPECT_FALSE(bar->IsGrabbed());
    desk.MoveTo(5, 40);
    EXPECT_TRUE(positions.empty());
    desk.Release();
    bar->SetEnabled(true);

    gui::Watch<ScrollBar> const watch(*bar);
    bar->SetAction([this](unsigned int) { delete bar; });
    desk.MoveTo(5, 4);
    desk.Press();
    desk.MoveTo(5, 40);
    EXPECT_EQ(watch.Get(), nullptr);
    desk.Release();
}

TEST(ScrollBar, LivesWithoutRoomAndAtAnyScale)
{
    tests::GuiDesk desk;
    auto *const bar = new ScrollBar(false, nullptr);
    for (float const length : {0.0F, 3.0F, std::numeric_limits<float>::infinity(), std::nanf("")})
    {
        bar->SetSizeX(length);
        bar->SetSizes(1000000, 3);
        desk.Frame();
        bar->Scroll(true, gui::e_scroll_whole);
        EXPECT_LE(bar->GetChild(0)->GetSize().x, std::max(0.0F, length));
    }
    Measures::SetScale(4);
    bar->SetSizeX(400);
    desk.Frame();
    EXPECT_EQ(bar->GetSize().y, 48);
    EXPECT_EQ(bar->GetChild(0)->CalcEndPosition(), vec2(400, 48));
    Measures::SetScale(1);
}

} // namespace
} // namespace quillmarsh::widgets
