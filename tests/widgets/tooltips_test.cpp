#include <quillmarsh/widgets/tooltips.h>

#include "tests/support/plain_look.h"

#include <quillmarsh/widgets/messagedialog.h>
#include <quillmarsh/widgets/textbutton.h>

#include <gtest/gtest.h>

namespace quillmarsh::widgets
{
namespace
{

struct TipDesk : tests::WidgetDesk
{
    TipDesk()
    {
        area.SetToolTipText("Caf\xC3\xA9");
        corner.SetToolTipText("Corner");
        MoveTo(20, 20);
    }

    ToolTips &tips = *new ToolTips;
    gui::Component &area = Add("area", {0, 0}, {100, 100});
    gui::Component &inner = Add("inner", {50, 50}, {50, 50}, &area);
    gui::Component &corner = Add("corner", {600, 440}, {40, 40});
};

TEST(ToolTips, ComesBelowTheRestingMouse)
{
    TipDesk desk;
    desk.Frame(0.5);
    EXPECT_FALSE(desk.tips.IsVisible());
    desk.Frame(0.2);
    desk.Frame();
    EXPECT_EQ(desk.tips.GetGlyphs(), "Caf\xE9");
    EXPECT_EQ(desk.tips.GetPosition(), vec2(20, 40));
    EXPECT_EQ(desk.tips.GetSize(), vec2(56, 28));
    desk.MoveTo(30, 30);
    EXPECT_TRUE(desk.tips.IsVisible());
    desk.MoveTo(60, 60);
    desk.Frame();
    EXPECT_EQ(desk.tips.GetCaption(), "Caf\xC3\xA9") << "the parent answers for its child";
    desk.MoveTo(630, 470);
    desk.Frame();
    EXPECT_EQ(desk.tips.GetGlyphs(), "Corner") << "at once, after another tip";
    EXPECT_EQ(desk.tips.GetPosition(), vec2(640 - 76, 470 - 28 - 4)) << "inside the window";
    desk.MoveTo(300, 300);
    EXPECT_FALSE(desk.tips.IsVisible());
    desk.Frame(1);
    desk.MoveTo(20, 20);
    desk.Frame();
    EXPECT_FALSE(desk.tips.IsVisible()) << "after a while it takes its time again";
}

TEST(ToolTips, GoesWithPressKeyAndComponent)
{
    TipDesk desk;
    auto const show = [&]
    {
        desk.MoveTo(300, 300);
        desk.MoveTo(20, 20);
        desk.Frame(1);
        return desk.tips.IsVisible();
    };
    EXPECT_TRUE(show());
    desk.Click();
    EXPECT_FALSE(desk.tips.IsVisible());
    desk.Frame(1);
    EXPECT_FALSE(desk.tips.IsVisible()) << "not before the mouse has been elsewhere";
    EXPECT_TRUE(show());
    desk.TypeKey(e_key_a);
    EXPECT_FALSE(desk.tips.IsVisible());
    EXPECT_TRUE(show());
    desk.mouse.isInside = false;
    desk.Frame();
    EXPECT_FALSE(desk.tips.IsVisible()) << "the mouse has left the window";
    desk.mouse.isInside = true;
    EXPECT_TRUE(show());
    delete &desk.area;
    desk.Frame();
    EXPECT_FALSE(desk.tips.IsVisible());
}

struct DialogDesk : tests::WidgetDesk
{
    MessageDialog &Show(MessageDialog::Params params)
    {
        params.action = [this](unsigned int button) { answers.push_back(button); };
        MessageDialog &dialog = MessageDialog::Show(std::move(params));
        Frame();
        return dialog;
    }

    std::vector<unsigned int> answers;
};

TEST(MessageDialog, AnswersOnceAndDeletesItself)
{
    DialogDesk desk;
    MessageDialog::Params const params{
        .title = "Delete", .text = "Delete 3 files?", .buttons = {"Yes", "No", "Cancel"}, .defaultButton = 1};
    for (eKey const key : {e_key_enter, e_key_space, e_key_escape})
    {
        gui::Watch<gui::Component> const dialog(desk.Show(params));
        EXPECT_EQ(desk.manager.GetKeyboardFocusTarget()->GetCaption(), "No");
        EXPECT_TRUE(dialog->IsRunningModal());
        desk.TypeKey(key);
        EXPECT_EQ(dialog.Get(), nullptr);
    }
    desk.Show(params);
    desk.TypeKey(e_key_arrow_left);
    desk.TypeKey(e_key_enter);
    desk.Show(params).Close();
    EXPECT_EQ(desk.answers, (std::vector<unsigned int>{1, 1, 2, 0, 2}));
    EXPECT_FALSE(desk.manager.IsRunningModal());
}

TEST(MessageDialog, StaysInsideANarrowWindow)
{
    DialogDesk desk;
    tests::GuiDesk::DeskKernel::GUIManager_OnWindowResize(300, 480);
    string const words = "several words that stand in a line ";
    MessageDialog &dialog = desk.Show({.title = "Note", .text = words + words + words, .defaultButton = 9});
    EXPECT_LE(dialog.CalcEndPositionX(), 300);
    EXPECT_GE(dialog.GetPosition().x, 0);
    float const height = dialog.GetSize().y;
    tests::GuiDesk::DeskKernel::GUIManager_OnWindowResize(640, 480);
    desk.Frame();
    EXPECT_LT(dialog.GetSize().y, height) << "wider lines, fewer of them";
    dialog.Answer(0);
    EXPECT_EQ(desk.answers, std::vector<unsigned int>{0});
}

} // namespace
} // namespace quillmarsh::widgets
