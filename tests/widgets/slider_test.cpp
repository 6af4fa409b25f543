#include <quillmarsh/widgets/slider.h>

#include "tests/support/gui_desk.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace quillmarsh::widgets
{
namespace
{

using Values = std::vector<float>;

struct RangeCase
{
    float minimum;
    float maximum;
    float step;
    float value;
    float expected;
};

constexpr float s_most = std::numeric_limits<float>::max();
constexpr float s_infinity = std::numeric_limits<float>::infinity();
constexpr RangeCase s_ranges[] = {
    {0, 10, 1, 3.4F, 3},       {0, 10, 1, 3.5F, 4},         {10, 0, 1, 12, 10},
    {-1, 1, 0.25F, -0.9F, -1}, {1, 2, 0.5F, s_infinity, 2}, {1, 2, 0.5F, -s_infinity, 1},
    {0, 1, 0.3F, 0.97F, 1},    {0, 1, 0, 0.123F, 0.123F},   {0, 1, -1, 0.123F, 0.123F},
    {5, 5, 1, 9, 5},           {0, 1, 100, 0.4F, 0},        {-s_most, s_most, 0, 1, 1},
};

TEST(Slider, ValueStandsOnAStepWithinTheRange)
{
    tests::GuiDesk desk;
    auto *const slider = new Slider(false, nullptr);
    for (RangeCase const &each : s_ranges)
    {
        slider->SetRange(each.minimum, each.maximum, each.step);
        slider->SetValue(each.value);
        EXPECT_FLOAT_EQ(slider->GetValue(), each.expected)
            << each.minimum << " to " << each.maximum << ": " << each.value;
        EXPECT_GE(slider->GetFraction(), 0);
        EXPECT_LE(slider->GetFraction(), 1);
    }
    slider->SetRange(0, 10, 2);
    slider->SetValue(6);
    slider->SetValue(std::nanf(""));
    slider->SetRange(0, s_infinity, 1);
    slider->SetRange(0, 1, std::nanf(""));
    EXPECT_EQ(slider->GetValue(), 6);
    EXPECT_EQ(slider->GetMaximum(), 10);
    slider->SetRange(0, 3, 1);
    EXPECT_EQ(slider->GetValue(), 3);
}

class SliderTest : public testing::Test
{
protected:
    void Make(bool vertical)
    {
        slider = new Slider(vertical, nullptr, 116);
        slider->SetRange(0, 100, 1);
        slider->SetValue(50);
        slider->SetAction([this](float value) { values.push_back(value); });
        slider->SetEndAction([this](float value) { ends.push_back(value); });
        desk.Frame();
        ASSERT_EQ(slider->GetTrackLength(), 100);
    }

    tests::GuiDesk desk;
    Slider *slider = nullptr;
    Values values;
    Values ends;
};

TEST_F(SliderTest, DragKeepsTheThumbBelowTheMouse)
{
    Make(false);
    desk.MoveTo(8 + 53, 14);
    desk.Press();
    desk.MoveTo(8 + 63, 300);
    desk.MoveTo(8 + 53, 14);
    desk.MoveTo(600, 14);
    EXPECT_EQ(values, (Values{60, 50, 100}));
    EXPECT_TRUE(ends.empty());
    EXPECT_TRUE(slider->IsGrabbed());
    desk.Release();
    EXPECT_EQ(ends, Values{100});
    EXPECT_TRUE(slider->IsFocused());
}

TEST_F(SliderTest, PressBesideTheThumbMovesItThereAndGrabsIt)
{
    Make(true);
    slider->SetRange(0, 100, 20);
    // From below: 27 is nearest to the step 20.
    desk.MoveTo(14, 8 + 73);
    desk.Press();
    EXPECT_EQ(values, Values{20});
    desk.MoveTo(14, 8 + 69);
    EXPECT_EQ(values, (Values{20, 40})) << "the mouse counts, not the step that the thumb stands on";
    desk.Release();
    EXPECT_EQ(ends, Values{40});
    desk.MoveTo(14, 0);
    desk.Click();
    EXPECT_EQ(values.back(), 100);
}

TEST_F(SliderTest, KeysAndWheelGoBySteps)
{
    Make(false);
    slider->RequestKeyboardFocus();
    constexpr std::pair<eKey, float> keys[] = {{e_key_arrow_right, 51}, {e_key_arrow_up, 52}, {e_key_arrow_left, 51},
                                               {e_key_arrow_down, 50},  {e_key_page_up, 60},  {e_key_page_down, 50},
                                               {e_key_end, 100},        {e_key_page_up, 100}, {e_key_home, 0}};
    for (auto const &[key, expected] : keys)
    {
        desk.TypeKey(key);
        EXPECT_EQ(slider->GetValue(), expected) << GetKeyName(key);
    }
    EXPECT_EQ(values.size(), 8U) << "none without a change";
    EXPECT_EQ(ends, values);
    desk.MoveTo(60, 14);
    desk.Turn(240);
    desk.Turn(60);
    EXPECT_EQ(slider->GetValue(), 2);

    slider->SetRange(0, 10, 0);
    slider->SetValue(5);
    desk.TypeKey(e_key_arrow_right);
    EXPECT_FLOAT_EQ(slider->GetValue(), 5.1F);
    EXPECT_FALSE(slider->OnKeyboardKey(true, e_key_tab, 0, 0));
    desk.PressKey(e_key_l_control);
    EXPECT_FALSE(slider->OnKeyboardKey(true, e_key_page_up, 0, 0)) << "turns pages";
}

TEST_F(SliderTest, DisabledOnesDoNothingAndActionsMayDelete)
{
    Make(false);
    slider->SetEnabled(false);
    desk.MoveTo(100, 14);
    desk.Click();
    desk.Turn(120);
    desk.MoveTo(8 + 50, 14);
    desk.Press();
    desk.MoveTo(8, 14);
    desk.Release();
    EXPECT_TRUE(values.empty());
    slider->SetEnabled(true);

    gui::Watch<Slider> const watch(*slider);
    slider->SetAction([this](float) { delete slider; });
    desk.MoveTo(100, 14);
    desk.Click();
    EXPECT_EQ(watch.Get(), nullptr);

    Make(false);
    gui::Watch<Slider> const second(*slider);
    slider->SetEndAction([this](float) { delete slider; });
    desk.MoveTo(8 + 50, 14);
    desk.Click();
    EXPECT_EQ(second.Get(), nullptr);
}

} // namespace
} // namespace quillmarsh::widgets
