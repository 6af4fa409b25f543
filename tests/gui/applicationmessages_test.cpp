#include "tests/support/gui_desk.h"

#include <quillmarsh/framework/application.h>

#include <gtest/gtest.h>

namespace quillmarsh
{
namespace
{

/// Application that keeps what it is told, one line a message.
class ToldApplication : public Application
{
public:
    std::vector<string> Take() { return std::exchange(lines_, {}); }

    bool GUIOnActivate(bool activated, bool byMouse) override
    {
        return Tell(string(activated ? "active" : "inactive") + (byMouse ? " by mouse" : " by call"));
    }
    bool GUIOnMouseCapture(bool begin) override { return Tell(begin ? "capture" : "end of capture"); }
    bool GUIOnMouseWheel(int delta, vec2 const &position) override
    {
        return Tell("wheel " + std::to_string(delta) + MakeText(position));
    }
    bool GUIOnMouseButton(bool down, eMouseButton button, bool, unsigned int, vec2 const &position) override
    {
        return Tell((down ? "down " : "up ") + std::to_string(button) + MakeText(position));
    }
    bool GUIOnKeyboardQueryFocus(bool, eMouseButton, bool &, bool &needCharacterData) override
    {
        needCharacterData = true;
        return true;
    }
    bool GUIOnKeyboardFocus(bool gotFocus) override { return Tell(gotFocus ? "got focus" : "lost focus"); }
    bool GUIOnKeyboardKey(bool down, eKey, unsigned int, char character) override
    {
        return Tell((down ? "key down " : "key up ") + string(1, character));
    }

private:
    static string MakeText(vec2 const &position)
    {
        return " @" + std::to_string(static_cast<int>(position.x)) + ',' + std::to_string(static_cast<int>(position.y));
    }
    bool Tell(string const &line)
    {
        lines_.push_back(line);
        return true;
    }

    std::vector<string> lines_;
};

using Lines = std::vector<string>;

TEST(ApplicationMessages, ComeFromTheManager)
{
    auto application = std::make_unique<ToldApplication>();
    tests::GuiDesk desk;
    desk.kernel.application = application.get();
    tests::GuiDesk::DeskKernel::GUIManager_ConnectApplication(true);
    desk.MoveTo(100, 50);
    desk.Click();
    EXPECT_TRUE(desk.manager.IsMouseOverTargetApplication());
    EXPECT_TRUE(desk.manager.IsApplicationActive());
    EXPECT_TRUE(desk.manager.IsKeyboardFocusTargetApplication());
    EXPECT_EQ(application->Take(), (Lines{"active by mouse", "down 0 @100,50", "got focus", "up 0 @100,50"}));
    desk.TypeKey(e_key_q);
    desk.Turn(-2);
    EXPECT_EQ(application->Take(), (Lines{"key down Q", "key up Q", "wheel -2 @100,50"}));

    EXPECT_TRUE(desk.manager.RequestMouseCapture(*application));
    EXPECT_TRUE(desk.manager.IsMouseCapturedByApplication());
    // Too late for a double click.
    desk.Frame(1);
    desk.Click();
    EXPECT_EQ(application->Take(), (Lines{"capture", "end of capture", "up 0 @100,50"}));

    // A component stands in front of it.
    desk.Add("front", {0, 0}, {200, 200});
    desk.Click();
    EXPECT_FALSE(desk.manager.IsApplicationActive());
    EXPECT_EQ(application->Take(), (Lines{"inactive by mouse", "lost focus"}));
    desk.manager.ActivateApplication();
    EXPECT_EQ(application->Take(), (Lines{"active by call", "got focus"}));

    desk.manager.EnableApplicationMessageDispatch(false);
    desk.TypeKey(e_key_q);
    EXPECT_EQ(application->Take(), Lines());
    desk.manager.EnableApplicationMessageDispatch(true);
    application.reset();
    desk.TypeKey(e_key_q);
    EXPECT_TRUE(desk.manager.IsKeyboardFocusTargetApplication());
}

} // namespace
} // namespace quillmarsh
