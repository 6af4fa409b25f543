#include "tests/support/gui_desk.h"

#include <quillmarsh/framework/application.h>

#include <gtest/gtest.h>

namespace quillmarsh::tests
{
namespace
{

using namespace gui;
using Lines = std::vector<string>;

/// Two windows, "a" with a child "c", and "b"; the mouse is outside. "c" has the focus.
class GuiKeyboard : public testing::Test
{
protected:
    GuiKeyboard()
    {
        desk.mouse.isInside = false;
        c.wantsFocus = true;
        desk.Frame();
        c.RequestKeyboardFocus();
        desk.log.Take();
    }

    void ClickAt(int x, int y)
    {
        desk.mouse.isInside = true;
        desk.MoveTo(x, y);
        desk.Click();
    }

    GuiDesk desk;
    RecordingComponent &a = desk.Add("a", {10, 10}, {100, 100});
    RecordingComponent &c = desk.Add("c", {20, 20}, {30, 30}, &a);
    RecordingComponent &b = desk.Add("b", {200, 10}, {100, 100});
    struct Program : Application
    {
    } application;
};

TEST_F(GuiKeyboard, KeysGoToTheFocusAndClimbUntilConsumed)
{
    desk.TypeKey(e_key_q);
    EXPECT_EQ(desk.log.Take(), (Lines{"c key down Q", "a key down Q", "c key up Q", "a key up Q"}));
    c.SetEnabled(true);
    c.consumed = {e_msg_keyboard_key};
    desk.TypeKey(e_key_q);
    EXPECT_EQ(desk.log.Take(), (Lines{"c key down Q", "c key up Q"}));
    // Downs first, both by ascending codes; a key that goes away is followed by its former parent.
    desk.PressKey(e_key_a);
    desk.log.Take();
    desk.keyboard.pressed = {e_key_z, e_key_q};
    desk.Frame();
    EXPECT_EQ(desk.log.Take(), (Lines{"c key down Q", "c key down Z", "c key up A"}));
    c.consumed.clear();
    c.reactions[e_msg_keyboard_key] = [this](Message &) { delete &c; };
    desk.keyboard.pressed = {e_key_b};
    desk.Frame();
    EXPECT_EQ(desk.log.Take(), (Lines{"c key down B", "a key down B"})) << "what follows has no target";
    EXPECT_FALSE(desk.manager.IsKeyboardFocusTargetApplication());
}

TEST_F(GuiKeyboard, CharactersComeOnlyToThoseThatNeedThem)
{
    EXPECT_FALSE(desk.keyboard.IsEnabledCharacterMapping());
    a.wantsFocus = a.needsCharacters = true;
    b.wantsFocus = true;
    b.RequestKeyboardFocus();
    c.RequestKeyboardFocus();
    EXPECT_TRUE(desk.keyboard.IsEnabledCharacterMapping()) << "an ancestor needs them";
    EXPECT_TRUE(c.IsKeyboardFocusTarget());
    desk.log.Take();
    desk.keyboard.pressed = {e_key_f1, e_key_q};
    desk.Frame();
    EXPECT_EQ(desk.log.Take(), (Lines{"c key down F1", "a key down F1", "c key down Q 'Q'", "a key down Q 'Q'"}));
    b.RequestKeyboardFocus();
    EXPECT_FALSE(desk.keyboard.IsEnabledCharacterMapping());
}

TEST_F(GuiKeyboard, HeldKeyRepeatsAtItsInterval)
{
    desk.manager.SetKeyboardRepeat(0.25, 0.125);
    c.consumed = {e_msg_keyboard_key};
    desk.keyboard.pressed = {e_key_q, e_key_w};
    desk.Frame();
    desk.log.Take();
    for (double const delta : {0.125, 0.125, 0.0625, 0.0625})
        desk.Frame(delta);
    EXPECT_EQ(desk.log.Take(), (Lines{"c key down Q repeat 1", "c key down Q repeat 2"})) << "the lowest code";
    desk.ReleaseKey(e_key_q);
    desk.Frame(1);
    EXPECT_EQ(desk.log.Take(), Lines{"c key up Q"});
    // Another focus ends it.
    b.wantsFocus = true;
    desk.PressKey(e_key_e);
    b.RequestKeyboardFocus();
    desk.log.Take();
    desk.Frame(1);
    EXPECT_EQ(desk.log.Take(), Lines{});
}

TEST_F(GuiKeyboard, FocusMovesInOrderAndFlagsChangeBeforeTheMessages)
{
    b.wantsFocus = true;
    bool oldFlag = true;
    bool newFlag = false;
    c.reactions[e_msg_keyboard_focus] = [&](Message &) { oldFlag = c.IsFocused() || !c.IsKeyboardFocusTarget(); };
    b.reactions[e_msg_keyboard_focus] = [&](Message &) { newFlag = b.IsFocused() && b.IsKeyboardFocusTarget(); };
    EXPECT_TRUE(b.RequestKeyboardFocus());
    EXPECT_EQ(desk.log.Take(), (Lines{"b want focus by call", "c lost focus", "b got focus"}));
    EXPECT_FALSE(oldFlag);
    EXPECT_TRUE(newFlag);
    EXPECT_TRUE(b.RequestKeyboardFocus());
    EXPECT_EQ(desk.log.Take(), Lines{}) << "has it already";
    c.SetCanFocus(false);
    c.reactions.clear();
    c.RequestKeyboardFocus();
    EXPECT_TRUE(c.IsKeyboardFocusTarget());
    EXPECT_FALSE(c.IsFocused());
    b.ReleaseKeyboardFocus();
    EXPECT_TRUE(c.IsKeyboardFocusTarget()) << "it was not the holder";
    c.ReleaseKeyboardFocus();
    EXPECT_TRUE(desk.manager.IsKeyboardFocusTargetApplication());
}

TEST_F(GuiKeyboard, ClicksOnComponentsThatWantNoFocus)
{
    ClickAt(15, 15);
    EXPECT_TRUE(c.IsKeyboardFocusTarget()) << "the same window";
    ClickAt(205, 15);
    EXPECT_FALSE(c.IsFocused());
    EXPECT_FALSE(desk.manager.IsKeyboardFocusTargetApplication()) << "nobody has it";
    EXPECT_NE(desk.manager.GetKeyboardFocusTarget(), &b);
    ClickAt(35, 35);
    EXPECT_TRUE(c.IsFocused());
    // A request in the frame of the click holds against the click.
    a.reactions[e_msg_mouse_button] = [this](Message &) { b.RequestKeyboardFocus(); };
    b.wantsFocus = a.wantsFocus = true;
    ClickAt(15, 15);
    EXPECT_TRUE(b.IsFocused());
    ClickAt(600, 400);
    EXPECT_TRUE(desk.manager.IsKeyboardFocusTargetApplication());
}

TEST_F(GuiKeyboard, FocusLeavesDisabledAndHiddenComponents)
{
    a.wantsFocus = true;
    c.SetEnabled(false);
    desk.Frame();
    EXPECT_TRUE(a.IsFocused());
    a.SetVisible(false);
    desk.Frame();
    EXPECT_TRUE(desk.manager.IsKeyboardFocusTargetApplication());
    a.SetVisible(true);
    a.RequestKeyboardFocus();
    a.SetEnabled(false);
    desk.Frame();
    EXPECT_TRUE(desk.manager.IsKeyboardFocusTargetApplication()) << "no parent";
}

TEST_F(GuiKeyboard, LaterChangeOfTheFocusWins)
{
    RecordingComponent &d = desk.Add("d", {0, 0}, {1, 1});
    b.wantsFocus = d.wantsFocus = true;
    c.reactions[e_msg_keyboard_focus] = [&](Message &) { d.RequestKeyboardFocus(); };
    b.RequestKeyboardFocus();
    EXPECT_TRUE(d.IsFocused());
    EXPECT_FALSE(b.IsFocused() || c.IsFocused());
    d.reactions[e_msg_keyboard_focus] = [&](Message &) { delete &b; };
    b.RequestKeyboardFocus();
    EXPECT_FALSE(d.IsFocused());
    desk.TypeKey(e_key_q);
    EXPECT_FALSE(desk.manager.IsKeyboardFocusTargetApplication());
}

TEST_F(GuiKeyboard, CycleKeyActivatesTheNextVisibleMember)
{
    a.ActivateTopLevel(true);
    a.wantsFocus = true;
    desk.log.Take();
    desk.keyboard.pressed = {e_key_grave_accent, e_key_q};
    desk.Frame();
    EXPECT_TRUE(b.IsActive());
    EXPECT_FALSE(a.IsActive());
    EXPECT_EQ(desk.log.Take(), (Lines{"a deactivate by call", "c deactivate by call", "b activate by call @-200,-10",
                                      "b want focus by call", "c lost focus"}))
        << "no component gets the keys of this frame";
    desk.keyboard.pressed.clear();
    desk.Frame();
    desk.TypeKey(e_key_grave_accent);
    EXPECT_TRUE(desk.manager.IsApplicationActive()) << "round to the first member";
    EXPECT_EQ(desk.manager.GetActiveTopLevel(), nullptr);
    desk.TypeKey(e_key_grave_accent);
    EXPECT_TRUE(a.IsActive());
    desk.PressKey(e_key_r_shift);
    desk.TypeKey(e_key_grave_accent);
    EXPECT_TRUE(desk.manager.IsApplicationActive());
    b.SetVisible(false);
    desk.TypeKey(e_key_grave_accent);
    EXPECT_TRUE(a.IsActive()) << "backwards, past the hidden one";

    desk.manager.SetCycleQueueKeys(e_key_tab, e_key_modifier_control, Manager::s_noKeyModifier);
    desk.TypeKey(e_key_tab);
    EXPECT_TRUE(a.IsActive());
    desk.PressKey(e_key_l_control);
    desk.TypeKey(e_key_tab);
    EXPECT_TRUE(desk.manager.IsApplicationActive());
    desk.manager.SetCycleQueueProperties(false, true, true);
    desk.TypeKey(e_key_tab);
    EXPECT_TRUE(desk.manager.IsApplicationActive());
}

TEST_F(GuiKeyboard, CyclingWithoutAnActiveMemberBeginsAtTheEnds)
{
    auto const activate = [&](bool forward)
    {
        for (Component *component : {&a, &b})
            component->SetActive(false);
        desk.manager.CycleQueueActivate(forward);
    };
    desk.manager.CycleQueueRemove(application);
    activate(true);
    EXPECT_TRUE(a.IsActive());
    activate(false);
    EXPECT_TRUE(b.IsActive());
    desk.manager.CycleQueueOrder(a, b);
    activate(true);
    EXPECT_TRUE(a.IsActive()) << "in this order already";
    desk.manager.CycleQueueOrder(b, a);
    activate(true);
    EXPECT_TRUE(b.IsActive());
    desk.manager.CycleQueueOrderToEnd(b);
    activate(false);
    EXPECT_TRUE(b.IsActive());
    desk.manager.CycleQueueClear();
    activate(true);
    EXPECT_EQ(desk.manager.GetActiveTopLevel(), nullptr);
}

TEST_F(GuiKeyboard, ActivationByCallIsExclusiveAndTellsBeforeTheFlagsFall)
{
    a.ActivateTopLevel(true);
    EXPECT_EQ(desk.manager.GetTopLevelComponent(1), &a);
    bool wasActive = false;
    a.reactions[e_msg_deactivate] = [&](Message &) { wasActive = a.IsActive(); };
    b.SetVisible(false);
    b.reactions[e_msg_activate] = [](Message &message)
    { static_cast<Message_Activate &>(message).SetAutoBringToFront(false); };
    b.ActivateTopLevel(false);
    EXPECT_TRUE(wasActive);
    EXPECT_TRUE(b.IsActive() && b.IsVisible() && !a.IsActive());
    EXPECT_EQ(desk.manager.GetTopLevelComponent(1), &a) << "b was not to be brought to the front";
    c.ActivateTopLevel(true);
    EXPECT_TRUE(b.IsActive()) << "only top-level components";
    // Not while the components of a click are told.
    a.reactions[e_msg_activate] = [this](Message &) { b.ActivateTopLevel(true); };
    ClickAt(15, 15);
    EXPECT_TRUE(a.IsActive() && !b.IsActive());
    b.SetActive(false);
    a.reactions.clear();
    // One that is hidden passes its activity on, to the start of the queue.
    a.SetVisible(false);
    EXPECT_TRUE(desk.manager.IsApplicationActive() && !a.IsActive());
    b.ActivateTopLevel(true);
    b.reactions[e_msg_deactivate] = [this](Message &) { delete &b; };
    b.SetVisible(false);
    EXPECT_EQ(desk.manager.GetNumTopLevelComponents(), 1U) << "it may go then";
}

TEST_F(GuiKeyboard, ModalTargetsNest)
{
    b.wantsFocus = true;
    a.RunModal();
    b.RunModal();
    EXPECT_TRUE(b.IsRunningModal() && b.IsActive() && b.IsFocused());
    a.EndModal();
    EXPECT_EQ(desk.manager.GetModalTarget(), &b) << "only the present one ends";
    EXPECT_FALSE(c.RequestKeyboardFocus());
    b.EndModal();
    EXPECT_EQ(desk.manager.GetModalTarget(), &a);
    EXPECT_TRUE(a.IsActive() && !b.IsActive());
    EXPECT_FALSE(b.RequestKeyboardFocus());
    EXPECT_TRUE(c.RequestKeyboardFocus()) << "in the branch";
    desk.manager.RunModal(application);
    EXPECT_TRUE(desk.manager.IsModalTargetApplication() && desk.manager.IsApplicationActive());
    desk.manager.EndModal(application);
    c.RunModal();
    EXPECT_EQ(desk.manager.GetModalTarget(), &a) << "only top-level components";
    b.RunModal();
    delete &a;
    b.SetVisible(false);
    desk.Frame();
    EXPECT_FALSE(desk.manager.IsRunningModal()) << "the hidden one ended, and the deleted one does not return";
}

} // namespace
} // namespace quillmarsh::tests
