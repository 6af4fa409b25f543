#include <quillmarsh/gui/gui_buttons.h>
#include <quillmarsh/gui/gui_widgets.h>

#include "tests/support/gui_desk.h"

#include <gtest/gtest.h>

namespace quillmarsh::gui
{
namespace
{

/// Handler that notes the commands it gets, and may react to them.
class Target : public MessageHandler
{
public:
    std::vector<unsigned int> Take() { return std::exchange(commands_, {}); }

    std::function<void()> onCommand;
    /// For selections that it sees as a hook.
    std::function<void()> onSelect;

protected:
    bool HandleMessage(Message &message) override
    {
        if (message.GetID() == e_msg_select)
            onSelect();
        if (message.GetID() != e_msg_command)
            return false;
        commands_.push_back(static_cast<Message_Command &>(message).GetCommandID());
        if (onCommand)
            onCommand();
        return true;
    }

private:
    std::vector<unsigned int> commands_;
};

using Commands = std::vector<unsigned int>;

class Widgets : public testing::Test
{
protected:
    Widgets()
    {
        panel.SetSize(300, 200);
        desk.MoveTo(500, 400);
    }

    /// Makes a button of 20 by 20 pixels, which sends its place as its command.
    Button &Make(Button::eStyle style, unsigned int group, float x)
    {
        auto *const button = new Button(&panel, &target, static_cast<unsigned int>(x), style, group);
        button->SetSize(20, 20);
        button->SetPosition(x, 0);
        panel.UpdateGeometry(true);
        return *button;
    }

    Commands Click(int x)
    {
        desk.MoveTo(x, 5);
        desk.Click();
        return target.Take();
    }

    Target target;
    tests::GuiDesk desk;
    Component &panel = *new Component;
};

TEST_F(Widgets, PressStyleSendsWhileItIsHeld)
{
    Button &button = Make(Button::e_style_press, 0, 10);
    desk.manager.SetMouseRepeat(0.25, 0.025);
    desk.MoveTo(15, 5);
    desk.Press();
    EXPECT_TRUE(button.IsPressed());
    EXPECT_EQ(target.Take(), Commands{10});
    desk.Frame(0.3);
    EXPECT_GE(target.Take().size(), 1u);
    desk.MoveTo(100, 5);
    EXPECT_FALSE(button.IsPressed());
    target.Take();
    desk.Release();
    EXPECT_EQ(target.Take(), Commands{});
    button.SetActionButton(e_mouse_button_right);
    EXPECT_EQ(Click(15), Commands{});
}

TEST_F(Widgets, PushStyleSendsAtARelease)
{
    Button &button = Make(Button::e_style_push, 0, 10);
    desk.MoveTo(15, 5);
    desk.Press();
    EXPECT_TRUE(button.IsPressed());
    EXPECT_EQ(target.Take(), Commands{});
    desk.MoveTo(100, 5);
    EXPECT_FALSE(button.IsPressed());
    desk.MoveTo(12, 7);
    EXPECT_TRUE(button.IsPressed());
    desk.Release();
    EXPECT_EQ(target.Take(), Commands{10});

    desk.Press();
    desk.MoveTo(100, 5);
    desk.Release();
    EXPECT_EQ(target.Take(), Commands{});
    button.SetEnabled(false);
    EXPECT_EQ(Click(15), Commands{});
    button.SetEnabled(true);

    // A release that reaches the button itself sends once, with and without the capture.
    for (bool const captures : {true, false})
    {
        button.SetPressed(false);
        Message_MouseButton press(e_mouse_button_left, true, false, 0, vec2(1, 1));
        if (captures)
            button.DispatchMessage(press);
        else
            button.SetPressed(true);
        Message_MouseButton release(e_mouse_button_left, false, false, 0, vec2(1, 1));
        button.DispatchMessage(release);
        EXPECT_EQ(target.Take(), Commands{10}) << captures;
    }

    // The target may delete the button.
    target.onCommand = [&button] { delete &button; };
    EXPECT_EQ(Click(15), Commands{10});
    EXPECT_EQ(panel.GetNumChildren(), 0u);
}

TEST_F(Widgets, ButtonsToggleAndSelect)
{
    Button &onOff = Make(Button::e_style_on_off, 1, 10);
    Button &first = Make(Button::e_style_select, 1, 40);
    Button &second = Make(Button::e_style_select, 1, 70);
    Button &other = Make(Button::e_style_select, 2, 100);
    auto const getStates = [&]
    {
        string states;
        for (Button const *button : {&onOff, &first, &second, &other})
            states += button->IsToggled() ? '1' : '0';
        return states;
    };
    other.SetSelected(true, true, false);
    EXPECT_EQ(Click(15), Commands{10});
    EXPECT_EQ(getStates(), "1001");
    EXPECT_EQ(Click(45), Commands{40});
    EXPECT_EQ(getStates(), "1101");
    EXPECT_EQ(Click(75), Commands{70});
    EXPECT_EQ(getStates(), "1011");
    // What is selected already neither changes nor sends.
    EXPECT_EQ(Click(75), Commands{});
    first.SetSelected(true, true, false);
    EXPECT_EQ(getStates(), "1101");
    first.SetOn(false, true);
    onOff.Select(true);
    EXPECT_EQ(getStates(), "1101");
    EXPECT_EQ(target.Take(), Commands{});
    Message_OnOff off(false);
    EXPECT_TRUE(onOff.DispatchMessage(off));
    EXPECT_FALSE(first.DispatchMessage(off));
    EXPECT_EQ(getStates(), "0101");
    EXPECT_EQ(Click(15), Commands{10});
    onOff.SetStyle(Button::e_style_push);
    EXPECT_EQ(getStates(), "0101");

    // A handler of the select message deletes the button that sent it, whose command is not sent then.
    second.InstallMessageHook(target, true, nullptr);
    target.onSelect = [&first] { delete &first; };
    first.Select(true);
    EXPECT_EQ(target.Take(), Commands{});
    EXPECT_EQ(panel.GetNumChildren(), 3u);
}

/// Thumb that notes what it reports.
class NotingThumb : public Thumb
{
public:
    using Thumb::Thumb;
    void OnThumbGrabbed() override { notes += "grabbed "; }
    void OnThumbMoved(float offset) override { notes += MakeString(static_cast<int>(offset)) + ' '; }
    void OnThumbReleased() override { notes += "released "; }

    string notes;
};

TEST_F(Widgets, ThumbReportsItsDrag)
{
    auto &thumb = *new NotingThumb(true, &panel);
    thumb.SetPosition(50, 60);
    thumb.SetSize(10, 10);
    panel.UpdateGeometry(true);
    desk.MoveTo(55, 65);
    desk.Press();
    EXPECT_TRUE(thumb.IsGrabbed());
    desk.MoveTo(90, 65);
    desk.MoveTo(90, 75);
    // The client moves it; the offset stays that from the grab.
    thumb.SetPosition(50, 70);
    panel.UpdateGeometry(true);
    desk.MoveTo(55, 45);
    desk.Release();
    desk.MoveTo(55, 80);
    EXPECT_EQ(thumb.notes, "grabbed 10 -20 released ");
    EXPECT_FALSE(thumb.IsGrabbed());
}

class CountingButton : public PushButton
{
public:
    using PushButton::PushButton;
    void OnPressed() override { ++numPressed; }

    unsigned int numPressed = 0;
};

class CountingPressButton : public PressButton
{
public:
    using PressButton::PressButton;
    void OnPressed() override { ++numPressed; }

    unsigned int numPressed = 0;
};

TEST_F(Widgets, PlainButtonsReportToThemselves)
{
    auto &push = *new CountingButton(&panel);
    push.SetSize(20, 20);
    auto &press = *new CountingPressButton(&panel);
    press.SetSize(20, 20);
    press.SetPosition(30, 0);
    panel.UpdateGeometry(true);
    desk.MoveTo(5, 5);
    desk.Press();
    desk.MoveTo(100, 5);
    desk.Release();
    EXPECT_EQ(push.numPressed, 0u);
    Click(5);
    EXPECT_EQ(push.numPressed, 1u);
    desk.MoveTo(35, 5);
    desk.Press();
    EXPECT_EQ(press.numPressed, 1u);
    EXPECT_TRUE(press.IsPressed());
    desk.Release();
    EXPECT_EQ(press.numPressed, 1u);
    EXPECT_FALSE(press.IsPressed());
}

TEST_F(Widgets, RubberBandDragsOutARectangle)
{
    auto &band = *new RubberBand(&target, 3);
    string states;
    target.onCommand = [&]
    {
        Rectangle area;
        band.GetLastArea(area);
        states += string(band.IsActive() ? "a" : "") + (band.IsVisible() ? "v" : "") + MakeString(area.x) + ',' +
                  MakeString(area.y) + ' ' + MakeString(area.width) + 'x' + MakeString(area.height) + "; ";
    };
    EXPECT_FALSE(band.IsVisible());
    desk.MoveTo(100, 80);
    band.SetPosition(9, 9);
    band.Begin(vec2(100, 80));
    desk.MoveTo(70, 90);
    desk.Press();
    EXPECT_EQ(states, "av100,80 0x0; av70,80 30x10; 70,80 30x10; ");

    // Another component has the capture.
    states.clear();
    ASSERT_TRUE(panel.RequestMouseCapture());
    band.Begin(vec2(1, 1));
    EXPECT_EQ(states, "");
    EXPECT_FALSE(band.IsVisible());
}

} // namespace
} // namespace quillmarsh::gui
