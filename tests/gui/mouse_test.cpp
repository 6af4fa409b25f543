#include "tests/support/gui_desk.h"

#include <gtest/gtest.h>

namespace quillmarsh::tests
{
namespace
{

using namespace gui;
using Lines = std::vector<string>;

/// A window "w" at (10, 10) with a child "c" at (20, 20) in it, and the mouse over the child, at (35, 35).
class GuiMouse : public testing::Test
{
protected:
    GuiMouse()
    {
        desk.MoveTo(35, 35);
        desk.log.Take();
    }

    GuiDesk desk;
    RecordingComponent &w = desk.Add("w", {10, 10}, {100, 100});
    RecordingComponent &c = desk.Add("c", {20, 20}, {30, 30}, &w);
};

TEST_F(GuiMouse, ClickActivatesTheBranchThenPressesThenAsksForTheFocus)
{
    c.wantsFocus = true;
    RecordingComponent &front = desk.Add("front", {300, 300}, {10, 10});
    desk.Frame();
    bool wasActiveAtPress = false;
    c.reactions[e_msg_mouse_button] = [&](Message &) { wasActiveAtPress = c.IsActive() && w.IsActive(); };
    Component *descendant = nullptr;
    w.reactions[e_msg_activate] = [&](Message &message)
    { descendant = static_cast<Message_Activate &>(message).GetClickedDescendant(); };
    desk.log.Take();

    desk.Press();
    EXPECT_EQ(desk.log.Take(),
              (Lines{"c activate by mouse button 0 @5,5", "w activate by mouse button 0 @25,25", "c down 0 @5,5",
                     "c want focus by mouse", "w want focus by mouse", "c got focus"}));
    EXPECT_TRUE(wasActiveAtPress);
    EXPECT_EQ(descendant, &c);
    EXPECT_TRUE(c.IsFocused());
    EXPECT_EQ(desk.manager.GetTopLevelComponent(1), &w) << "in front of " << &front;
    desk.Release();
    EXPECT_EQ(desk.log.Take(), Lines{"c up 0 @5,5"});
    desk.Click();
    EXPECT_EQ(desk.log.Take(), (Lines{"c down 0 double @5,5", "c up 0 @5,5"})) << "the branch is active already";

    desk.MoveTo(305, 305);
    desk.log.Take();
    desk.Press();
    EXPECT_EQ(desk.log.Take(),
              (Lines{"c deactivate by mouse", "w deactivate by mouse", "front activate by mouse button 0 @5,5",
                     "front down 0 @5,5", "front want focus by mouse", "c lost focus"}));
    EXPECT_FALSE(w.IsActive());
    EXPECT_EQ(desk.manager.GetActiveTopLevel(), &front);
    EXPECT_FALSE(desk.manager.IsKeyboardFocusTargetApplication());
}

TEST_F(GuiMouse, RightClickTellsButDoesNotActivate)
{
    desk.Click(e_mouse_button_right);
    EXPECT_FALSE(w.IsActive());
    desk.log.Take();
    // Another button than before: the whole branch is told again.
    desk.Press();
    EXPECT_EQ(desk.log.Take()[0], "c activate by mouse button 0 @5,5");
    EXPECT_TRUE(w.IsActive());
}

TEST_F(GuiMouse, DoubleClicks)
{
    desk.Click();
    desk.Click();
    desk.Click();
    desk.Frame(0.3);
    desk.Click();
    auto buttons = [&]
    {
        Lines lines = desk.log.Take();
        std::erase_if(lines, [](string const &line) { return line.find("down") == string::npos; });
        return lines;
    };
    EXPECT_EQ(buttons(), (Lines{"c down 0 @5,5", "c down 0 double @5,5", "c down 0 @5,5", "c down 0 @5,5"}))
        << "neither the third press nor a late one";

    desk.Frame(1);
    desk.mouse.pressed[e_mouse_button_right] = true;
    desk.Press();
    desk.mouse.pressed[e_mouse_button_right] = false;
    desk.Release();
    desk.Press();
    EXPECT_EQ(buttons(), (Lines{"c down 0 @5,5", "c down 1 @5,5", "c down 0 @5,5"})) << "two buttons at once";
    desk.Release();

    // A disabled target swallows the double click; it does not come later.
    desk.Frame(1);
    desk.Click();
    c.SetEnabled(false);
    desk.Press();
    c.SetEnabled(true);
    desk.Frame();
    EXPECT_EQ(buttons(), Lines{"c down 0 @5,5"});
    desk.Release();
    desk.Press();
    EXPECT_EQ(buttons(), Lines{"c down 0 @5,5"});
}

TEST_F(GuiMouse, HeldButtonRepeatsInEachFrameAfterTheDelay)
{
    desk.manager.SetMouseRepeat(0.25, 0.125);
    desk.Press();
    desk.log.Take();
    for (double const delta : {0.125, 0.125, 0.0625, 0.0625})
        desk.Frame(delta);
    EXPECT_EQ(desk.log.Take(), (Lines{"c down 0 repeat 1 @5,5", "c down 0 repeat 1 @5,5", "c down 0 repeat 2 @5,5"}));
    desk.Release();
    EXPECT_EQ(desk.log.Take(), Lines{"c up 0 @5,5"});
    desk.Press();
    desk.MoveTo(15, 15);
    desk.log.Take();
    desk.Frame(1);
    EXPECT_EQ(desk.log.Take(), Lines{}) << "another component ends it";
    desk.manager.SetMouseRepeat(-1, -1);
    double delay = 1;
    double interval = 1;
    desk.manager.GetMouseRepeat(delay, interval);
    EXPECT_EQ(delay + interval, 0);
}

TEST_F(GuiMouse, ClickAfterTheWindowWasActivatedIsDiscardedWhole)
{
    GuiDesk::DeskKernel::GUIManager_NotifyApplicationWindowActive(true);
    desk.Frame();
    desk.Press();
    desk.Frame(1);
    desk.Release();
    EXPECT_EQ(desk.log.Take(), Lines{});
    EXPECT_FALSE(w.IsActive());
    desk.Press();
    EXPECT_TRUE(w.IsActive());
    desk.Release();
    desk.manager.SetBehaviorOnWindowActivate(false, true);
    GuiDesk::DeskKernel::GUIManager_NotifyApplicationWindowActive(true);
    desk.log.Take();
    desk.Click();
    EXPECT_EQ(desk.log.Take()[0], "c down 0 @5,5");
    GuiDesk::DeskKernel::GUIManager_NotifyApplicationWindowCreated();
    desk.Click();
    EXPECT_EQ(desk.log.Take(), Lines{});
}

TEST_F(GuiMouse, WheelClimbsPastDisabledComponentsToWhoConsumesIt)
{
    desk.Turn(3);
    EXPECT_EQ(desk.log.Take(), (Lines{"c wheel 3 @5,5", "w wheel 3 @25,25"}));
    c.SetEnabled(false);
    desk.Turn(-1);
    EXPECT_EQ(desk.log.Take(), Lines{"w wheel -1 @25,25"});
    c.SetEnabled(true);
    c.consumed = {e_msg_mouse_wheel};
    desk.Turn(1);
    EXPECT_EQ(desk.log.Take(), Lines{"c wheel 1 @5,5"});
    // A component that goes away is followed by its former parent.
    c.consumed.clear();
    c.reactions[e_msg_mouse_wheel] = [this](Message &) { delete &c; };
    desk.Turn(1);
    EXPECT_EQ(desk.log.Take(), (Lines{"c wheel 1 @5,5", "w wheel 1 @25,25"}));
}

TEST_F(GuiMouse, EnterAndExitTellWhoIsCoveredAndTheWindowsEdgeClearsAll)
{
    EXPECT_TRUE(c.IsMouseOverDirect());
    EXPECT_TRUE(w.IsMouseOver());
    EXPECT_FALSE(w.IsMouseOverDirect());
    desk.log.muted = {e_msg_mouse_query_cursor};
    desk.MoveTo(15, 15);
    EXPECT_EQ(desk.log.Take(), (Lines{"c exit", "w enter direct", "w move @5,5"}));
    desk.Frame();
    EXPECT_EQ(desk.log.Take(), Lines{"w hover @5,5"});
    EXPECT_NEAR(desk.manager.GetMouseHoverTime(), 0.01, 1e-9);
    desk.MoveTo(35, 35);
    EXPECT_EQ(desk.log.Take(), (Lines{"w enter", "c enter direct", "c move @5,5"}));
    desk.mouse.isInside = false;
    desk.Frame();
    EXPECT_EQ(desk.log.Take(), (Lines{"w exit", "c exit"}));
    desk.Press();
    desk.Turn(1);
    EXPECT_EQ(desk.log.Take(), Lines{}) << "outside";
    desk.mouse.isInside = true;
    desk.Frame();
    EXPECT_EQ(desk.log.Take(), (Lines{"w enter", "c enter direct", "c move @5,5"})) << "at the place of before";
    desk.mouse.ActivateRelativeMode(true);
    desk.Frame();
    EXPECT_FALSE(c.IsMouseOver());
}

TEST_F(GuiMouse, CaptureGetsAllMovesAndEndsWithAnyButton)
{
    RecordingComponent &other = desk.Add("other", {300, 300}, {10, 10});
    desk.Frame();
    c.reactions[e_msg_mouse_button] = [this](Message &) { EXPECT_TRUE(c.RequestMouseCapture()); };
    c.reactions[e_msg_mouse_capture] = [this](Message &) { EXPECT_TRUE(c.IsMouseCaptureTarget()); };
    desk.Press();
    EXPECT_TRUE(c.RequestMouseCapture()) << "holds it already";
    EXPECT_FALSE(other.RequestMouseCapture());
    other.ReleaseMouseCapture();
    desk.log.muted = {e_msg_mouse_query_cursor};
    desk.log.Take();
    desk.MoveTo(305, 305);
    EXPECT_EQ(desk.log.Take(), Lines{"c move @275,275"});
    desk.Press(e_mouse_button_right);
    EXPECT_EQ(desk.log.Take(), Lines{"c capture end"}) << "the press itself goes nowhere";
    EXPECT_FALSE(desk.manager.IsMouseCaptured());
    desk.Frame();
    EXPECT_EQ(desk.log.Take(), (Lines{"w exit", "c exit", "other enter direct", "other move @5,5"}));

    other.RequestMouseCapture();
    desk.mouse.isInside = false;
    desk.Frame();
    EXPECT_EQ(desk.log.Take(), (Lines{"other capture begin", "other capture end", "other exit"}));
}

TEST_F(GuiMouse, EndOfACaptureIsToldOnceWhateverTheTargetDoes)
{
    RecordingComponent &other = desk.Add("other", {300, 300}, {10, 10});
    desk.Frame();
    desk.log.Take();
    int numEnds = 0;
    c.reactions[e_msg_mouse_capture] = [&](Message &message)
    {
        if (static_cast<Message_MouseCapture &>(message).GetCaptureBegin())
            return;
        ++numEnds;
        c.ReleaseMouseCapture();
        w.ActivateTopLevel(true);
        EXPECT_TRUE(other.RequestMouseCapture());
    };
    c.RequestMouseCapture();
    desk.Press();
    EXPECT_EQ(numEnds, 1);
    EXPECT_TRUE(other.IsMouseCaptureTarget());
    other.reactions[e_msg_mouse_capture] = [&](Message &) { delete &other; };
    desk.Release();
    EXPECT_FALSE(desk.manager.IsMouseCaptured());
    EXPECT_TRUE(c.RequestMouseCapture());
    delete &c;
    EXPECT_FALSE(desk.manager.IsMouseCaptured());
}

TEST_F(GuiMouse, ModalTargetKeepsTheMouseFromAllOthers)
{
    RecordingComponent &dialog = desk.Add("dialog", {300, 300}, {50, 50});
    dialog.RunModal();
    desk.Frame();
    desk.log.Take();
    desk.Click();
    desk.Turn(1);
    EXPECT_EQ(desk.log.Take(), Lines{"dialog deactivate by mouse"});
    EXPECT_FALSE(c.IsMouseOver());
    EXPECT_EQ(desk.manager.GetActiveTopLevel(), nullptr);
    EXPECT_FALSE(c.RequestMouseCapture());
    EXPECT_FALSE(c.RequestKeyboardFocus());
    EXPECT_TRUE(dialog.RequestMouseCapture());
}

TEST_F(GuiMouse, DeletedButtonTargetGivesWayToOneThatHandlesNothing)
{
    c.reactions[e_msg_mouse_button] = [this](Message &) { delete &c; };
    desk.mouse.pressed[e_mouse_button_right] = true;
    desk.Press();
    EXPECT_EQ(desk.log.Take(),
              (Lines{"c activate by mouse button 0 @5,5", "w activate by mouse button 0 @25,25", "c down 0 @5,5"}))
        << "the second button goes nowhere";
    EXPECT_FALSE(desk.manager.IsMouseOverTargetApplication());
    desk.mouse.pressed[e_mouse_button_right] = false;
    desk.Release();
    desk.log.Take();
    desk.Press();
    EXPECT_EQ(desk.log.Take(), (Lines{"w down 0 @25,25", "w want focus by mouse"}));
}

struct Drag
{
    eCommandArea area;
    vec2 position, size;
    /// After a drag beyond the smallest size.
    vec2 farPosition, farSize;
};

/// From position (50, 60) and size (100, 80), by (5, -7), and by (70, 70); the size is at least (60, 60).
constexpr Drag s_drags[] = {
    {e_area_move, {55, 53}, {100, 80}, {120, 130}, {100, 80}},
    {e_area_resize_n, {50, 53}, {100, 87}, {50, 80}, {100, 60}},
    {e_area_resize_s, {50, 60}, {100, 73}, {50, 60}, {100, 150}},
    {e_area_resize_w, {55, 60}, {95, 80}, {90, 60}, {60, 80}},
    {e_area_resize_e, {50, 60}, {105, 80}, {50, 60}, {170, 80}},
    {e_area_resize_nw, {55, 53}, {95, 87}, {90, 80}, {60, 60}},
    {e_area_resize_ne, {50, 53}, {105, 87}, {50, 80}, {170, 60}},
    {e_area_resize_sw, {55, 60}, {95, 73}, {90, 60}, {60, 150}},
    {e_area_resize_se, {50, 60}, {105, 73}, {50, 60}, {170, 150}},
};

/// A window whose child "bar" is an area that moves it, and the mouse over it, at (60, 70).
class GuiDrag : public testing::Test
{
protected:
    GuiDrag()
    {
        bar.SetDefaultCommandArea(e_area_move);
        desk.MoveTo(60, 70);
        desk.log.Take();
    }

    GuiDesk desk;
    RecordingComponent &window = desk.Add("window", {50, 60}, {100, 80});
    RecordingComponent &bar = desk.Add("bar", {0, 0}, {20, 20}, &window);
};

TEST(GuiDrags, EachAreaMovesItsEdges)
{
    for (Drag const &drag : s_drags)
    {
        SCOPED_TRACE(drag.area);
        GuiDesk desk;
        RecordingComponent &window = desk.Add("window", {50, 60}, {100, 80});
        RecordingComponent &child = desk.Add("child", {0, 0}, {20, 20}, &window);
        child.SetDefaultCommandArea(drag.area);
        window.SetMinSize({60, 60});
        desk.MoveTo(60, 70);
        desk.Press();
        EXPECT_EQ(desk.manager.GetCommandArea(), drag.area);
        EXPECT_TRUE(drag.area == e_area_move ? window.IsMoving() : window.IsResizing());
        desk.MoveTo(65, 63);
        EXPECT_EQ(window.GetPosition(), drag.position);
        EXPECT_EQ(window.GetSize(), drag.size);
        EXPECT_EQ(child.GetAbsolutePosition(), drag.position);
        desk.MoveTo(130, 140);
        EXPECT_EQ(window.GetPosition(), drag.farPosition);
        EXPECT_EQ(window.GetSize(), drag.farSize);
        desk.Release();
        EXPECT_FALSE(window.IsMoving() || window.IsResizing() || desk.manager.IsCommandModeActive());
        EXPECT_EQ(desk.manager.GetCommandArea(), e_area_client);
    }
}

TEST_F(GuiDrag, TellsTheTopLevelComponentEachStep)
{
    desk.Press();
    EXPECT_EQ(desk.log.Take(),
              (Lines{"bar activate by mouse button 0 @10,10", "window activate by mouse button 0 @10,10",
                     "window geometry 1 area 2 button 0 @50,60 size 100,80",
                     "window geometry 2 area 2 button 0 @0,0 size 1,1", "bar want focus by mouse",
                     "window want focus by mouse", "bar want focus by mouse", "window want focus by mouse"}));
    desk.Frame();
    EXPECT_EQ(desk.log.Take(), Lines{}) << "no step without a movement";
    desk.MoveTo(61, 70);
    EXPECT_EQ(desk.log.Take(), Lines{"window geometry 3 area 2 button 0 @51,60 size 100,80"});
    RecordingComponent &other = desk.Add("other", {300, 300}, {10, 10});
    other.wantsFocus = bar.wantsFocus = true;
    EXPECT_FALSE(other.RequestKeyboardFocus());
    EXPECT_FALSE(bar.RequestMouseCapture());
    EXPECT_TRUE(bar.RequestKeyboardFocus());
    desk.log.Take();
    desk.mouse.isInside = false;
    desk.Frame();
    EXPECT_EQ(desk.log.Take()[0], "window geometry 4 area 2 button 0 @0,0 size 1,1") << "the window's edge ends it";
    EXPECT_FALSE(desk.manager.IsCommandModeActive());
}

TEST_F(GuiDrag, ReceiverRefusesAndRewrites)
{
    desk.Press(e_mouse_button_right);
    EXPECT_FALSE(desk.manager.IsCommandModeActive()) << "only the left button drags by default";
    desk.Release(e_mouse_button_right);
    desk.Press();
    auto const react = [&](auto const &change)
    {
        window.reactions[e_msg_geometry_update_by_manager] = [change](Message &message)
        { change(static_cast<Message_GeometryUpdateByManager &>(message)); };
    };
    react([](Message_GeometryUpdateByManager &update) { update.SetConfirmEvent(false); });
    desk.MoveTo(100, 100);
    EXPECT_EQ(window.GetPosition(), vec2(50, 60));
    EXPECT_TRUE(desk.manager.IsCommandModeActive()) << "the move goes on";
    react(
        [](Message_GeometryUpdateByManager &update)
        {
            update.SetNewPosition({7, 8});
            update.SetNewSize({9, 10});
        });
    desk.MoveTo(101, 100);
    EXPECT_EQ(window.GetPosition(), vec2(7, 8));
    EXPECT_EQ(window.GetSize(), vec2(9, 10));
    // Breaks off in the middle of a step, and is told of the end once.
    int numEnds = 0;
    react(
        [&](Message_GeometryUpdateByManager &update)
        {
            numEnds += update.GetUpdateEvent() == e_geom_move_end ? 1 : 0;
            desk.manager.BreakCommandMode();
        });
    desk.MoveTo(110, 100);
    EXPECT_EQ(numEnds, 1);
    EXPECT_EQ(window.GetPosition(), vec2(7, 8));
    EXPECT_FALSE(window.IsMoving());
}

TEST_F(GuiDrag, DoubleClickGoesToTheTargetOfTheMove)
{
    desk.Click();
    desk.Press();
    desk.log.Take();
    desk.Frame();
    EXPECT_EQ(desk.log.Take(), Lines{"window down 0 double @10,10"});
    EXPECT_EQ(desk.manager.GetCommandTarget(), &window);
}

} // namespace
} // namespace quillmarsh::tests
