#include <quillmarsh/widgets/panel.h>

#include "tests/support/plain_look.h"

#include <quillmarsh/gui/gui_layouters.h>
#include <quillmarsh/widgets/measures.h>
#include <quillmarsh/widgets/stack.h>
#include <quillmarsh/widgets/textbutton.h>
#include <quillmarsh/widgets/textfield.h>

#include <gtest/gtest.h>

namespace quillmarsh::widgets
{
namespace
{

TextButton &AddButton(gui::Component &parent, char const *text)
{
    auto *const button = new TextButton(nullptr, text);
    button->AttachTo(parent);
    return *button;
}

/// The window is 640 by 480 pixels.
struct PanelDesk : tests::WidgetDesk
{
    ~PanelDesk() { Measures::SetScale(1); }

    Panel &AddPanel(vec2 const &size = {200, 100})
    {
        auto &panel = *new Panel("Title", size);
        panel.SetCloseAction([this] { ++numClosed; });
        return panel;
    }
    void Open(Panel &panel)
    {
        panel.Open();
        Frame();
    }
    void Move(Panel &panel, vec2 const &position)
    {
        panel.SetPosition(position);
        panel.ReportDirtyGeometry();
        Frame();
    }
    void Drag(int fromX, int fromY, int toX, int toY)
    {
        MoveTo(fromX, fromY);
        Press();
        MoveTo(toX, toY);
        Release();
    }
    /// Returns the caption of what has the focus.
    string GetFocus() { return manager.GetKeyboardFocusTarget()->GetCaption(); }

    int numClosed = 0;
};

TEST(MoveFocus, GoesThroughTheTreeAndPassesOverWhatCannotHaveIt)
{
    PanelDesk desk;
    Panel &panel = desk.AddPanel();
    auto *const outer = new gui::layouters::ArrayLayouter(&panel.GetContent());
    AddButton(*outer, "1");
    auto *const inner = new gui::layouters::RowLayouter(outer);
    auto *const hidden = new Stack(true, inner);
    TextButton &hiddenButton = AddButton(*hidden, "hidden");
    hidden->SetVisible(false);
    TextButton &overlay = AddButton(*inner, "2");
    overlay.SetOverlay(true);
    AddButton(overlay, "3");
    AddButton(*outer, "disabled").SetEnabled(false);
    AddButton(*outer, "refuses").SetCanFocus(false);
    desk.Add("refuses by answer", {0, 0}, {10, 10}, outer);
    desk.Add("empty", {0, 0}, {0, 10}, outer).wantsFocus = true;
    AddButton(panel, "4");
    desk.Open(panel);

    string way;
    for (int i = 0; i < 5; ++i)
    {
        way += desk.GetFocus();
        desk.TypeKey(e_key_tab);
    }
    EXPECT_EQ(way, "12341");
    way.clear();
    for (int i = 0; i < 5; ++i)
    {
        way += desk.GetFocus();
        desk.TypeWith({e_key_l_shift}, e_key_tab);
    }
    EXPECT_EQ(way, "21432");

    hidden->SetVisible(true);
    desk.Frame();
    hiddenButton.RequestKeyboardFocus();
    EXPECT_EQ(desk.GetFocus(), "hidden");
    panel.GetContent().DeleteAllChildren();
    EXPECT_TRUE(MoveFocus(panel, false));
    EXPECT_EQ(desk.GetFocus(), "4");
    EXPECT_FALSE(MoveFocus(panel.GetContent(), true));
}

TEST(Panel, KeysPressDefaultAndCancelButton)
{
    PanelDesk desk;
    Panel &panel = desk.AddPanel();
    string pressed;
    auto const add = [&](char const *text)
    {
        auto *const button = new TextButton(&panel.GetContent(), text);
        button->SetAction([&pressed, button] { pressed += button->GetText(); });
        return button;
    };
    auto *const field = new TextField(&panel.GetContent());
    TextButton *const ok = add("O");
    TextButton *const cancel = add("C");
    panel.SetDefaultButton(cancel);
    panel.SetDefaultButton(ok);
    panel.SetCancelButton(cancel);
    EXPECT_TRUE(ok->IsDefault() && !cancel->IsDefault());
    desk.Open(panel);
    EXPECT_TRUE(field->IsFocused());
    desk.PressKey(e_key_enter);
    desk.Frame(1);
    desk.ReleaseKey(e_key_enter);
    EXPECT_EQ(pressed, "O") << "once, from the field";
    cancel->RequestKeyboardFocus();
    desk.TypeKey(e_key_enter);
    EXPECT_EQ(pressed, "OC") << "a focused button takes Enter itself";
    desk.TypeKey(e_key_escape);
    EXPECT_EQ(pressed, "OCC");

    field->RequestKeyboardFocus();
    ok->SetEnabled(false);
    cancel->SetVisible(false);
    desk.TypeKey(e_key_enter);
    desk.TypeKey(e_key_escape);
    EXPECT_EQ(pressed, "OCC");
    EXPECT_TRUE(panel.IsVisible()) << "Escape does not go around its button";
    delete cancel;
    delete ok;
    desk.TypeKey(e_key_enter);
    desk.TypeWith({e_key_l_control}, e_key_escape);
    EXPECT_TRUE(panel.IsVisible());
    panel.SetClosable(false);
    desk.TypeKey(e_key_escape);
    EXPECT_TRUE(panel.IsVisible());
    panel.SetClosable(true);
    desk.TypeKey(e_key_escape);
    EXPECT_FALSE(panel.IsVisible());
    EXPECT_EQ(desk.numClosed, 1);
    panel.Close();
    EXPECT_EQ(desk.numClosed, 1);
}

TEST(Panel, FocusReturnsWithTheActivity)
{
    PanelDesk desk;
    Panel &first = desk.AddPanel();
    AddButton(first.GetContent(), "1");
    TextButton &lower = AddButton(first.GetContent(), "2");
    lower.SetPosition(0, 30);
    desk.Open(first);
    desk.Move(first, {0, 0});
    lower.RequestKeyboardFocus();
    Panel &second = desk.AddPanel();
    AddButton(second.GetContent(), "3");
    desk.Open(second);
    EXPECT_EQ(desk.GetFocus(), "3");
    desk.Move(second, {300, 300});
    desk.MoveTo(180, 90);
    desk.Click(e_mouse_button_right);
    EXPECT_TRUE(first.IsActive() && !second.IsActive());
    EXPECT_EQ(desk.GetFocus(), "2") << "a click beside the widgets, of any button";
    second.Open();
    desk.MoveTo(20, 50);
    desk.Click();
    EXPECT_EQ(desk.GetFocus(), "1") << "a click on a widget gives it the focus";
    desk.MoveTo(180, 90);
    desk.Click();
    EXPECT_EQ(desk.GetFocus(), "1");
    second.Open();
    desk.Frame();
    second.Close();
    EXPECT_TRUE(first.IsActive());
    EXPECT_EQ(desk.GetFocus(), "1");
}

TEST(Panel, KeepsTheFocusWhenItsWidgetGoes)
{
    PanelDesk desk;
    Panel &panel = desk.AddPanel();
    std::vector<TextButton *> buttons;
    for (char const *const text : {"1", "2", "3", "4"})
        buttons.push_back(new TextButton(&panel.GetContent(), text));
    desk.Open(panel);
    desk.Frame();
    delete buttons[0];
    desk.Frame();
    EXPECT_EQ(desk.GetFocus(), "2");
    desk.Frame();
    buttons[1]->SetVisible(false);
    desk.Frame();
    EXPECT_EQ(desk.GetFocus(), "3") << "the next one";
    desk.Frame();
    buttons[2]->SetEnabled(false);
    desk.Frame();
    EXPECT_EQ(desk.GetFocus(), "4");
    desk.Frame();
    buttons[3]->ReleaseKeyboardFocus();
    desk.Frame();
    buttons[1]->SetVisible(true);
    desk.Frame();
    EXPECT_NE(desk.GetFocus(), "2") << "a focus that was passed on stays there";
}

TEST(Panel, CloseActionMayDeleteIt)
{
    for (int way = 0; way < 3; ++way)
    {
        PanelDesk desk;
        auto *const panel = new Panel("Title", {200, 100});
        gui::Watch<Panel> const watch(panel);
        panel->SetCloseAction([panel] { delete panel; });
        desk.Open(*panel);
        panel->RunModal();
        desk.Move(*panel, {0, 0});
        if (way == 0)
            panel->Close();
        else if (way == 1)
            desk.TypeKey(e_key_escape);
        else
        {
            desk.MoveTo(200 - 6 - 14, 16);
            desk.Click();
        }
        EXPECT_EQ(watch.Get(), nullptr) << way;
        EXPECT_FALSE(desk.manager.IsRunningModal()) << way;
        desk.Frame();
    }
}

TEST(Panel, OpensInTheMiddleAndStaysReachable)
{
    PanelDesk desk;
    Panel &panel = desk.AddPanel();
    desk.Open(panel);
    EXPECT_EQ(panel.GetPosition(), vec2(220, 190));
    EXPECT_EQ(panel.GetContent().GetPosition(), vec2(12, 44));
    EXPECT_EQ(panel.GetContent().GetSize(), vec2(176, 44));
    desk.Drag(300, 200, 0, 0);
    EXPECT_EQ(panel.GetPosition(), vec2(-80, 0));
    desk.Drag(20, 15, 639, 479);
    EXPECT_EQ(panel.GetPosition(), vec2(539, 448));
    panel.OnWindowResize(320, 240);
    EXPECT_EQ(panel.GetPosition(), vec2(120, 140));
    panel.OnWindowResize(150, 60);
    EXPECT_EQ(panel.GetSize(), vec2(150, 60));
    EXPECT_EQ(panel.GetPosition(), vec2(0, 0));
    panel.OnWindowResize(640, 480);
    EXPECT_EQ(panel.GetSize(), vec2(200, 100)) << "it grows again with the window";
    panel.SetMovable(false);
    desk.Move(panel, {10, 10});
    desk.Drag(30, 25, 60, 60);
    EXPECT_EQ(panel.GetPosition(), vec2(10, 10));
}

TEST(Panel, EdgesResizeWithinTheLimits)
{
    PanelDesk desk;
    Panel &panel = desk.AddPanel();
    desk.Open(panel);
    desk.Move(panel, {100, 100});
    desk.Drag(298, 198, 328, 218);
    EXPECT_EQ(panel.GetSize(), vec2(230, 120));
    desk.Drag(101, 150, 639, 150);
    EXPECT_EQ(panel.GetSize(), vec2(88, 120)) << "the least size";
    EXPECT_EQ(panel.CalcEndPosition(), vec2(330, 220)) << "the other edge stays";
    desk.Move(panel, {200, 3});
    desk.Drag(240, 5, 240, 0);
    EXPECT_EQ(panel.GetPosition().y, 0) << "the title bar stays in the window";
    EXPECT_EQ(panel.CalcEndPositionY(), 123);
    panel.SetResizable(false);
    desk.Drag(286, 121, 300, 140);
    EXPECT_EQ(panel.GetSize(), vec2(88, 123));
}

TEST(Panel, ChangeOfScaleKeepsTheWantedSize)
{
    PanelDesk desk;
    Panel &panel = desk.AddPanel({321, 201});
    desk.Open(panel);
    Measures::SetScale(1.5F);
    desk.Frame();
    EXPECT_EQ(panel.GetSize(), vec2(482, 302));
    Measures::SetScale(4);
    desk.Frame();
    EXPECT_EQ(panel.GetSize(), vec2(640, 480)) << "not larger than the window";
    EXPECT_EQ(panel.GetPosition().y, 0);
    Measures::SetScale(1);
    desk.Frame();
    EXPECT_EQ(panel.GetSize(), vec2(321, 201));
    panel.SetSize(400, 200);
    desk.Frame();
    Measures::SetScale(2);
    desk.Frame();
    Measures::SetScale(1);
    desk.Frame();
    EXPECT_EQ(panel.GetSize(), vec2(400, 200)) << "what was set meanwhile counts";
}

TEST(Panel, FitsToItsContentEvenBeyondTheWindow)
{
    PanelDesk desk;
    Panel &panel = desk.AddPanel();
    auto *const column = new Stack(true, &panel.GetContent(), 0);
    auto *const high = new gui::Component;
    high->AttachTo(*column);
    high->SetSize(300, 600);
    panel.FitToContent();
    desk.Open(panel);
    EXPECT_EQ(panel.GetSize(), vec2(324, 656));
    EXPECT_EQ(panel.GetPosition(), vec2(158, 0));
    desk.Drag(165, 470, 165, 200);
    EXPECT_EQ(panel.GetPosition(), vec2(158, 480 - 656)) << "the background moves it up to its end";
    desk.Drag(165, 200, 165, 470);
    EXPECT_EQ(panel.GetPosition(), vec2(158, 94));
    high->SetSize(100, 50);
    panel.FitToContent();
    desk.Frame();
    EXPECT_EQ(panel.GetSize(), vec2(124, 106));
    Panel &empty = desk.AddPanel({0, 0});
    empty.FitToContent();
    desk.Open(empty);
    EXPECT_GE(empty.GetContent().GetSize().x, 0);
}

} // namespace
} // namespace quillmarsh::widgets
