#include <quillmarsh/widgets/textbutton.h>

#include "tests/support/plain_look.h"

#include <quillmarsh/widgets/measures.h>
#include <quillmarsh/widgets/progressbar.h>

#include <gtest/gtest.h>

#include <cmath>

namespace quillmarsh::widgets
{
namespace
{

struct ButtonDesk : tests::WidgetDesk
{
    /// Gives the focus to a button that counts its commands.
    void Use(TextButton &button)
    {
        button.SetAction([this] { ++count; });
        Frame();
        button.RequestKeyboardFocus();
    }

    int count = 0;
};

TEST(TextButton, SpaceActsWhenReleasedAndEnterAtOnce)
{
    ButtonDesk desk;
    auto &button = *new TextButton(nullptr, "Go");
    desk.Use(button);
    desk.PressKey(e_key_space);
    EXPECT_TRUE(button.IsHeldByKey());
    desk.Frame(1);
    EXPECT_EQ(desk.count, 0);
    desk.ReleaseKey(e_key_space);
    EXPECT_EQ(desk.count, 1);
    EXPECT_FALSE(button.IsHeldByKey());
    desk.PressKey(e_key_enter);
    EXPECT_EQ(desk.count, 2);
    desk.Frame(1);
    desk.ReleaseKey(e_key_enter);
    EXPECT_EQ(desk.count, 2) << "a held key does not press it again";
    desk.TypeWith({e_key_l_alt}, e_key_enter);
    EXPECT_EQ(desk.count, 2);
}

TEST(TextButton, ForgetsAHeldKeyWithTheFocus)
{
    ButtonDesk desk;
    auto &button = *new TextButton(nullptr, "Go");
    auto &other = *new TextButton(nullptr, "Other");
    desk.Use(button);
    desk.PressKey(e_key_space);
    other.RequestKeyboardFocus();
    EXPECT_FALSE(button.IsHeldByKey());
    button.RequestKeyboardFocus();
    desk.ReleaseKey(e_key_space);
    EXPECT_EQ(desk.count, 0);
    desk.PressKey(e_key_space);
    button.SetCanDisable(true);
    button.SetEnabled(false);
    desk.ReleaseKey(e_key_space);
    button.Press();
    EXPECT_EQ(desk.count, 0) << "a disabled one does nothing";
}

TEST(TextButton, RepeatsByKeyAsByMouse)
{
    ButtonDesk desk;
    auto &button = *new TextButton(nullptr, "", gui::Button::e_style_press);
    desk.Use(button);
    desk.PressKey(e_key_space);
    desk.Frame(0.3);
    desk.Frame(0.05);
    desk.ReleaseKey(e_key_space);
    EXPECT_EQ(desk.count, 3);
}

TEST(TextButton, ActionMayDeleteTheButton)
{
    for (eKey const key : {e_key_space, e_key_enter})
    {
        ButtonDesk desk;
        auto *const button = new TextButton(nullptr, "Go");
        desk.Use(*button);
        button->SetAction(
            [&desk, button]
            {
                delete button;
                ++desk.count;
            });
        desk.TypeKey(key);
        EXPECT_EQ(desk.count, 1);
    }
}

TEST(TextButton, SizeComesFromTheContent)
{
    ButtonDesk desk;
    auto &button = *new TextButton(nullptr, "Go");
    auto &wide = *new TextButton(nullptr, "Wide button");
    auto &mark = *new TextButton(nullptr, "");
    mark.SetMark(e_mark_plus);
    wide.SetMark(e_mark_plus);
    desk.Frame();
    EXPECT_EQ(button.GetSize(), vec2(72, 28));
    EXPECT_EQ(wide.GetSize(), vec2(8 + 16 + 8 + 110 + 8, 28));
    EXPECT_EQ(mark.GetSize(), vec2(28, 28));
    button.SetText("A longer one");
    desk.Frame();
    EXPECT_EQ(button.GetSize().x, 136);
}

TEST(CheckBox, ActionGetsTheNewState)
{
    tests::WidgetDesk desk;
    auto &box = *new CheckBox(nullptr, "Grid", true);
    string states;
    box.SetAction([&](bool on) { states += on ? '1' : '0'; });
    desk.Frame();
    desk.MoveTo(5, 5);
    desk.Click();
    EXPECT_TRUE(box.IsFocused());
    desk.TypeKey(e_key_space);
    desk.TypeKey(e_key_num_enter);
    EXPECT_EQ(states, "010");
}

RadioButton &AddRadio(gui::Component &parent, char const *text, unsigned int groupID)
{
    auto *const button = new RadioButton(nullptr, text, groupID);
    button->AttachTo(parent);
    return *button;
}

TEST(RadioButton, ArrowsSelectWithinTheGroup)
{
    tests::WidgetDesk desk;
    gui::Component &parent = desk.Add("parent", {0, 0}, {200, 200});
    RadioButton &first = AddRadio(parent, "First", 1);
    first.Select(false);
    RadioButton &other = AddRadio(parent, "Other group", 2);
    RadioButton &second = AddRadio(parent, "Second", 1);
    RadioButton &disabled = AddRadio(parent, "Disabled", 1);
    disabled.SetEnabled(false);
    int count = 0;
    second.SetAction([&] { ++count; });
    desk.Frame();
    first.RequestKeyboardFocus();
    desk.TypeKey(e_key_arrow_down);
    EXPECT_TRUE(second.IsSelected());
    EXPECT_TRUE(second.IsFocused());
    EXPECT_FALSE(first.IsSelected());
    EXPECT_EQ(count, 1);
    desk.TypeKey(e_key_space);
    EXPECT_EQ(count, 1) << "it is selected already";
    desk.TypeKey(e_key_arrow_right);
    EXPECT_TRUE(first.IsSelected()) << "around, past the disabled one";
    EXPECT_FALSE(other.IsSelected());
    first.SetAction([&] { parent.DeleteAllChildren(); });
    desk.TypeKey(e_key_arrow_up);
    desk.TypeKey(e_key_arrow_up);
    EXPECT_TRUE(parent.IsLeaf()) << "an action may delete the whole group";
}

TEST(ProgressBar, TellsOfWorkWithAndWithoutAnEnd)
{
    tests::WidgetDesk desk;
    auto &bar = *new ProgressBar(nullptr, 100);
    bar.SetValue(7);
    EXPECT_EQ(bar.GetValue(), 1);
    bar.SetValue(std::nanf(""));
    EXPECT_FALSE(bar.IsEndKnown());
    desk.Frame(0.5);
    desk.Frame(2);
    EXPECT_FLOAT_EQ(bar.GetPhase(), 0.25F);
    bar.SetValue(0.5F);
    desk.Frame(0.5);
    EXPECT_EQ(bar.GetPhase(), 0) << "nothing moves while the end is known";
    EXPECT_EQ(bar.GetSize(), vec2(100, 20));
    bar.SetText("Half");
    desk.Frame();
    EXPECT_EQ(bar.GetSize(), vec2(100, 24)) << "with room for the text";
}

} // namespace
} // namespace quillmarsh::widgets
