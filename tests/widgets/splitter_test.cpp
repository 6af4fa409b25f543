#include <quillmarsh/widgets/splitter.h>

#include "tests/support/gui_desk.h"

#include <gtest/gtest.h>

#include <cmath>

namespace quillmarsh::widgets
{
namespace
{

/// Areas side by side: 200 pixels to share, with a bar of 6 between them.
class SplitterTest : public testing::Test
{
protected:
    SplitterTest()
    {
        splitter->SetAction([this](float fraction) { fractions.push_back(fraction); });
        desk.Frame();
    }

    float FirstWidth()
    {
        desk.Frame();
        return splitter->GetFirst().GetSize().x;
    }

    tests::GuiDesk desk;
    Splitter *splitter = new Splitter(false, nullptr, {206, 50});
    std::vector<float> fractions;
};

TEST_F(SplitterTest, DragStopsAtTheLeastSizes)
{
    splitter->SetMinSizes(30, 60);
    EXPECT_EQ(FirstWidth(), 100);
    desk.MoveTo(103, 20);
    desk.Press();
    desk.MoveTo(113, 20);
    EXPECT_EQ(FirstWidth(), 110);
    EXPECT_EQ(splitter->GetSecond().GetPosition(), vec2(116, 0));
    EXPECT_EQ(splitter->GetSecond().GetSize(), vec2(90, 50));
    desk.MoveTo(500, 20);
    EXPECT_EQ(FirstWidth(), 140);
    desk.MoveTo(510, 20);
    desk.MoveTo(0, 20);
    EXPECT_EQ(FirstWidth(), 30);
    desk.MoveTo(103, 20);
    desk.Release();
    EXPECT_EQ(FirstWidth(), 100);
    EXPECT_EQ(fractions, (std::vector<float>{0.55F, 0.7F, 0.15F, 0.5F})) << "none beyond a limit";
}

TEST_F(SplitterTest, DoubleClickGoesBackToTheProgramsPlace)
{
    splitter->SetFraction(0.25F);
    splitter->SetFraction(std::nanf(""));
    EXPECT_EQ(FirstWidth(), 50);
    desk.MoveTo(53, 20);
    desk.Press();
    desk.MoveTo(83, 20);
    desk.Release();
    EXPECT_EQ(FirstWidth(), 80);
    desk.Frame(1);
    desk.Click();
    desk.Click();
    EXPECT_EQ(FirstWidth(), 50);
    splitter->SetFraction(7);
    EXPECT_EQ(splitter->GetFraction(), 1);
    EXPECT_EQ(FirstWidth(), 160);
}

TEST_F(SplitterTest, KeysMoveTheBarThatHasTheFocus)
{
    desk.MoveTo(103, 20);
    desk.Click();
    desk.TypeKey(e_key_arrow_right);
    EXPECT_EQ(FirstWidth(), 108);
    desk.TypeKey(e_key_arrow_left);
    desk.TypeKey(e_key_arrow_left);
    EXPECT_EQ(FirstWidth(), 92);
    desk.TypeKey(e_key_arrow_up);
    EXPECT_EQ(FirstWidth(), 92);
    desk.TypeKey(e_key_end);
    EXPECT_EQ(FirstWidth(), 160);
    desk.TypeKey(e_key_home);
    EXPECT_EQ(FirstWidth(), 40);
    EXPECT_EQ(fractions.size(), 5U);

    gui::Watch<Splitter> const watch(*splitter);
    splitter->SetAction([this](float) { delete splitter; });
    desk.TypeKey(e_key_end);
    EXPECT_EQ(watch.Get(), nullptr);
}

TEST(Splitter, LeastSizesShareWhatIsTooSmallForBoth)
{
    tests::GuiDesk desk;
    auto *const splitter = new Splitter(true, nullptr, {50, 36});
    splitter->SetMinSizes(100, 50);
    desk.Frame();
    EXPECT_EQ(splitter->GetFirst().GetSize(), vec2(50, 20));
    EXPECT_EQ(splitter->GetSecond().GetSize(), vec2(50, 10));
    splitter->SetMinSizes(std::nanf(""), -1);
    splitter->SetFraction(1);
    desk.Frame();
    EXPECT_EQ(splitter->GetFirst().GetSize().y, 30);

    auto *const empty = new Splitter(false, nullptr, {0, 0});
    empty->SetFraction(0.25F);
    desk.Frame();
    EXPECT_EQ(empty->GetFirst().GetSize(), vec2::ZERO);
    EXPECT_EQ(empty->GetSecond().GetSize(), vec2::ZERO);
}

} // namespace
} // namespace quillmarsh::widgets
