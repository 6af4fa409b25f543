#include "tests/support/probe_component.h"

#include <quillmarsh/gui/gui_manager.h>

#include <gtest/gtest.h>

#include <map>
#include <sstream>

namespace quillmarsh
{
namespace
{

using tests::ProbeComponent;

/// Writes down the parameters of each message, and answers all that is asked with the opposite of what was sent.
class Secretary : public gui::Component
{
public:
    bool OnCommand(unsigned int id) override { return Note("command", id); }
    bool OnGeometryUpdateByManager(bool &confirm, gui::eGeometryUpdateEvent event, gui::eCommandArea area,
                                   eMouseButton button, vec2 const &position, vec2 const &size) override
    {
        Note("geometry", confirm, event, area, button, position.x, position.y, size.x, size.y);
        confirm = !confirm;
        return true;
    }
    bool OnActivate(bool byMouse, eMouseButton button, vec2 const &position, gui::Component *clicked, bool &toFront,
                    bool &activate) override
    {
        Note("activate", byMouse, button, position.x, position.y, clicked == this, toFront, activate);
        toFront = !toFront;
        activate = !activate;
        return true;
    }
    bool OnDeactivate(bool byMouse) override { return Note("deactivate", byMouse); }
    bool OnMouseCapture(bool begin) override { return Note("capture", begin); }
    bool OnMouseEnterExit(bool enter, bool direct, vec2 const &p) override
    {
        return Note("enter", enter, direct, p.x, p.y);
    }
    bool OnMouseQueryCursor(gui::Cursor const *&cursor, gui::eCommandArea area, vec2 const &p) override
    {
        Note("cursor", cursor == nullptr, area, p.x, p.y);
        cursor = reinterpret_cast<gui::Cursor const *>(this);
        return true;
    }
    bool OnMouseMove(bool hover, double seconds, vec2 const &p) override
    {
        return Note("move", hover, seconds, p.x, p.y);
    }
    bool OnMouseWheel(gui::MessageHandler *target, int delta, vec2 const &p) override
    {
        return Hook(target) && OnMouseWheel(delta, p);
    }
    bool OnMouseWheel(int delta, vec2 const &p) override { return Note("wheel", delta, p.x, p.y); }
    bool OnMouseButton(gui::MessageHandler *target, bool down, eMouseButton button, bool doubleClick,
                       unsigned int repeat, vec2 const &p) override
    {
        return Hook(target) && OnMouseButton(down, button, doubleClick, repeat, p);
    }
    bool OnMouseButton(bool down, eMouseButton button, bool doubleClick, unsigned int repeat, vec2 const &p) override
    {
        return Note("button", down, button, doubleClick, repeat, p.x, p.y);
    }
    bool OnKeyboardQueryFocus(gui::MessageHandler *target, bool byMouse, eMouseButton button, bool &want,
                              bool &needs) override
    {
        return Hook(target) && OnKeyboardQueryFocus(byMouse, button, want, needs);
    }
    bool OnKeyboardQueryFocus(bool byMouse, eMouseButton button, bool &want, bool &needs) override
    {
        Note("query", byMouse, button, want, needs);
        want = !want;
        needs = !needs;
        return true;
    }
    bool OnKeyboardFocus(gui::MessageHandler *target, bool got) override
    {
        return Hook(target) && OnKeyboardFocus(got);
    }
    bool OnKeyboardFocus(bool got) override { return Note("focus", got); }
    bool OnKeyboardKey(gui::MessageHandler *target, bool down, eKey key, unsigned int repeat, char character) override
    {
        return Hook(target) && OnKeyboardKey(down, key, repeat, character);
    }
    bool OnKeyboardKey(bool down, eKey key, unsigned int repeat, char character) override
    {
        return Note("key", down, key, repeat, character);
    }
    bool OnQueryToolTipParams(gui::ToolTipParams &) override { return Note("tip"); }
    bool OnMsgShow(bool show) override { return Note("show", show); }
    bool OnMsgShowChildren(bool show) override { return Note("children", show); }
    bool OnMsgShowDescendants(bool show) override { return Note("descendants", show); }
    bool OnMsgEnable(bool enable) override { return Note("enable", enable); }
    bool OnMsgFlags(unsigned int flags) override { return Note("flags", flags); }
    bool OnMsgFlagsOnOff(unsigned int flags, bool on) override { return Note("flags", flags, on); }
    bool OnMsgOnOff(bool on) override { return Note("on", on); }
    bool OnMsgSelect(bool select, unsigned int group) override { return Note("select", select, group); }
    bool OnMsgScroll(bool forward, gui::eScrollDistance distance, int offset) override
    {
        return Note("scroll", forward, distance, offset);
    }
    bool OnMsgPreCommandExecute(unsigned int id) override { return Note("pre", id); }
    bool OnMsgSendCommand() override { return Note("send"); }

    string TakeNote() { return std::exchange(note_, {}); }

    gui::MessageHandler *hooked = nullptr;

private:
    bool Hook(gui::MessageHandler *target)
    {
        note_ += target == hooked ? "hook " : "wrong target ";
        return true;
    }
    template<typename... Values>
    bool Note(char const *name, Values const &...values)
    {
        std::ostringstream out;
        out << name;
        ((out << ' ' << values), ...);
        note_ += out.str();
        return true;
    }

    string note_;
};

/// Sends a message to itself by the door of a hook's target, and gives what came of it.
template<typename T>
string Send(gui::MessageHandler &to, Secretary &secretary, T message)
{
    bool const isConsumed = to.DispatchMessage(message);
    return secretary.TakeNote() + (isConsumed ? "" : "refused");
}

TEST(GuiMessages, ReachTheirOperationsWithTheirFields)
{
    gui::Manager manager;
    auto &secretary = *new Secretary;
    auto const send = [&](auto const &message) { return Send(secretary, secretary, message); };
    vec2 const p(1, 2);
    EXPECT_EQ(send(gui::Message_ServiceProviderChanged(1)), "refused");
    EXPECT_EQ(send(gui::Message_Command(8)), "command 8");
    EXPECT_EQ(send(gui::Message_GeometryUpdateByManager(gui::e_geom_moving, gui::e_area_resize_s, e_mouse_button_right,
                                                        p, vec2(3, 4), true)),
              "geometry 1 3 4 1 1 2 3 4");
    EXPECT_EQ(send(gui::Message_Activate(false, e_mouse_button_right, p, &secretary, true, false)),
              "activate 0 1 1 2 1 1 0");
    EXPECT_EQ(send(gui::Message_Deactivate(true)), "deactivate 1");
    EXPECT_EQ(send(gui::Message_MouseCapture(false)), "capture 0");
    EXPECT_EQ(send(gui::Message_MouseEnterExit(false, true, p)), "enter 0 1 1 2");
    EXPECT_EQ(send(gui::Message_MouseQueryCursor(gui::e_area_move, p, nullptr)), "cursor 1 2 1 2");
    EXPECT_EQ(send(gui::Message_MouseMove(true, 0.5, p)), "move 1 0.5 1 2");
    EXPECT_EQ(send(gui::Message_Show(false)), "show 0");
    EXPECT_EQ(send(gui::Message_ShowChildren(true)), "children 1");
    EXPECT_EQ(send(gui::Message_ShowDescendants(true)), "descendants 1");
    EXPECT_EQ(send(gui::Message_Enable(false)), "enable 0");
    EXPECT_EQ(send(gui::Message_Flags(0xFFFFFFFF)), "flags 4294967295");
    EXPECT_EQ(send(gui::Message_FlagsOnOff(5, false)), "flags 5 0");
    EXPECT_EQ(send(gui::Message_OnOff(true)), "on 1");
    EXPECT_EQ(send(gui::Message_Select(true, 7)), "select 1 7");
    EXPECT_EQ(send(gui::Message_Scroll(false, gui::e_scroll_whole, -3)), "scroll 0 2 -3");
    EXPECT_EQ(send(gui::Message_PreCommandExecute(9)), "pre 9");
    EXPECT_EQ(send(gui::Message_SendCommand()), "send");
    // Of the services, only the query of the tool tip, and with a place for the answer.
    gui::ToolTipParams params;
    gui::Message_ServiceCommand_ToolTip otherService(gui::ToolTipCommand_QueryParams, &params);
    otherService.SetServiceID(2);
    EXPECT_EQ(send(gui::Message_ServiceCommand_ToolTip(gui::ToolTipCommand_QueryParams, &params)), "tip");
    EXPECT_EQ(send(gui::Message_ServiceCommand_ToolTip(gui::ToolTipCommand_QueryParams, nullptr)), "refused");
    EXPECT_EQ(send(gui::Message_ServiceCommand_ToolTip(4, &params)), "refused");
    EXPECT_EQ(send(otherService), "refused");

    // As a hook it is asked for wheel, buttons and keyboard.
    auto &target = *new gui::Component;
    target.InstallMessageHook(secretary, false, nullptr);
    secretary.hooked = &target;
    for (gui::MessageHandler *receiver : {static_cast<gui::Component *>(&secretary), &target})
    {
        string const hook = receiver == &target ? "hook " : "";
        auto const sendTo = [&](auto const &message) { return Send(*receiver, secretary, message); };
        EXPECT_EQ(sendTo(gui::Message_MouseWheel(-120, p)), hook + "wheel -120 1 2");
        EXPECT_EQ(sendTo(gui::Message_MouseButton(e_mouse_button_right, false, true, 4, p)),
                  hook + "button 0 1 1 4 1 2");
        EXPECT_EQ(sendTo(gui::Message_KeyboardQueryFocus(false, e_mouse_button_right, true, false)),
                  hook + "query 0 1 1 0");
        EXPECT_EQ(sendTo(gui::Message_KeyboardFocus(false)), hook + "focus 0");
        EXPECT_EQ(sendTo(gui::Message_KeyboardKey(e_key_escape, true, 6, 'x')),
                  hook + "key 1 " + std::to_string(e_key_escape) + " 6 x");
    }
    EXPECT_EQ(Send(target, secretary, gui::Message_OnOff(true)), "refused");
}

TEST(GuiMessages, CarryAnswersBack)
{
    gui::Manager manager;
    auto &secretary = *new Secretary;
    gui::Message_GeometryUpdateByManager update;
    secretary.DispatchMessage(update);
    EXPECT_FALSE(update.GetConfirmEvent());
    gui::Message_Activate activate(true, e_mouse_button_left, vec2::ZERO, nullptr, true, false);
    secretary.DispatchMessage(activate);
    EXPECT_TRUE(!activate.GetAutoBringToFront() && activate.GetAutoActivate());
    gui::Message_MouseQueryCursor cursor;
    secretary.DispatchMessage(cursor);
    EXPECT_NE(cursor.GetCursor(), nullptr);
    gui::Message_KeyboardQueryFocus query(true, e_mouse_button_left, true, false);
    secretary.DispatchMessage(query);
    EXPECT_TRUE(!query.GetWantFocus() && query.GetNeedCharacterData());
}

TEST(GuiMessages, HaveDefaultAnswers)
{
    gui::Manager manager;
    auto &parent = *new Secretary;
    auto &child = *new gui::Component;
    child.AttachTo(parent);
    auto const send = [&](auto message) { return Send(child, parent, message); };
    // Commands go up.
    EXPECT_EQ(send(gui::Message_Command(1)), "command 1");
    EXPECT_EQ(send(gui::Message_Command(2)), "refused");
    EXPECT_EQ(send(gui::Message_PreCommandExecute(7)), "pre 7");
    EXPECT_EQ(send(gui::Message_SendCommand()), "refused");

    gui::Message_GeometryUpdateByManager query(gui::e_geom_query, gui::e_area_move, e_mouse_button_right, {}, {}, true);
    EXPECT_TRUE(child.DispatchMessage(query));
    EXPECT_FALSE(query.GetConfirmEvent());
    gui::Message_GeometryUpdateByManager step(gui::e_geom_moving, gui::e_area_move, e_mouse_button_right, {}, {}, true);
    EXPECT_FALSE(child.DispatchMessage(step));
    EXPECT_TRUE(step.GetConfirmEvent());

    gui::Message_Activate byKey(false, e_mouse_button_right, {}, nullptr, true, false);
    EXPECT_TRUE(child.DispatchMessage(byKey));
    EXPECT_TRUE(byKey.GetAutoBringToFront() && !byKey.GetAutoActivate());
    gui::Message_Activate byMouse(true, e_mouse_button_left, {}, nullptr, false, false);
    EXPECT_TRUE(child.DispatchMessage(byMouse));
    EXPECT_TRUE(byMouse.GetAutoBringToFront() && byMouse.GetAutoActivate());

    gui::ToolTipParams params;
    gui::Message_ServiceCommand_ToolTip tip(gui::ToolTipCommand_QueryParams, &params);
    EXPECT_FALSE(child.DispatchMessage(tip));
    child.SetToolTipText("Saves");
    child.SetPosition(3, 4);
    child.UpdateAbsolutePositionCache();
    EXPECT_TRUE(child.DispatchMessage(tip));
    EXPECT_TRUE(params.Show && params.Text == "Saves" && params.ComponentSize == vec2(1, 1));
    EXPECT_EQ(params.ComponentPosition, vec2(3, 4));

    gui::Message_Show show(false);
    EXPECT_TRUE(child.DispatchMessage(show));
    EXPECT_FALSE(child.IsVisible());
}

/// Parent with the children "a", "b" and "c".
class GuiSenders : public ::testing::Test
{
protected:
    /// Makes the family anew, with all its members recording only messages.
    void MakeFamily()
    {
        parent = new ProbeComponent("parent", log);
        a = new ProbeComponent("a", log, parent);
        b = new ProbeComponent("b", log, parent);
        c = new ProbeComponent("c", log, parent);
    }
    string TakeLog() { return std::exchange(log, {}); }

    string log;
    gui::Manager manager;
    ProbeComponent *parent = nullptr;
    ProbeComponent *a = nullptr;
    ProbeComponent *b = nullptr;
    ProbeComponent *c = nullptr;
};

TEST_F(GuiSenders, AskHooksInTheirOrder)
{
    MakeFamily();
    gui::Message_MouseWheel wheel;
    Secretary &target = *new Secretary;
    Secretary &hook = *new Secretary;
    hook.hooked = &target;
    target.InstallMessageHook(*b, false, nullptr);
    target.InstallMessageHook(*a, true, nullptr);
    target.InstallMessageHook(hook, false, b);
    target.InstallMessageHook(target, true, nullptr);
    auto const order = [&] {
        return std::vector{target.GetMessageHook(0), target.GetMessageHook(1), target.GetMessageHook(2)};
    };
    EXPECT_EQ(order(), (std::vector<gui::MessageHandler *>{a, &hook, b}));
    target.InstallMessageHook(*a, false, c);
    EXPECT_EQ(order(), (std::vector<gui::MessageHandler *>{&hook, b, a}));
    EXPECT_EQ(target.GetNumMessageHooks(), 3u);
    EXPECT_EQ(target.GetMessageHook(3), nullptr);
    // A hook that consumes keeps the message from the target.
    EXPECT_TRUE(target.DispatchMessage(wheel));
    EXPECT_EQ(hook.TakeNote(), "hook wheel 0 0 0");
    EXPECT_EQ(target.TakeNote(), "");
    EXPECT_EQ(wheel.GetTarget(), &target);
    // A destroyed hook is no hook any more, and a destroyed target leaves its hooks.
    delete &hook;
    EXPECT_TRUE(target.DispatchMessage(wheel));
    EXPECT_EQ(target.TakeNote(), "wheel 0 0 0");
    delete &target;
    delete a;
}

TEST_F(GuiSenders, ReachRelativesInOrder)
{
    MakeFamily();
    gui::Message_OnOff on(true);
    b->SendMessageToSelfAndSiblings(on);
    EXPECT_EQ(TakeLog(), "b.on;a.on;c.on;");
    a->consumes = true;
    EXPECT_TRUE(b->SendMessageToSiblings(on));
    EXPECT_EQ(TakeLog(), "a.on;c.on;");
    EXPECT_TRUE(parent->SendMessageToChildren(on));
    EXPECT_TRUE(parent->SendMessageToFirstChild(on));
    EXPECT_FALSE(parent->SendMessageToLastChild(on) || c->SendMessageToParent(on));
    EXPECT_EQ(TakeLog(), "a.on;b.on;c.on;a.on;c.on;parent.on;");
    a->SendMessageToPreviousSibling(true, on);
    b->SendMessageToPreviousSibling(true, on);
    b->SendMessageToNextSibling(true, on);
    c->SendMessageToNextSibling(true, on);
    EXPECT_EQ(TakeLog(), "c.on;a.on;c.on;a.on;");

    // Alone.
    b->DetachFromParent();
    delete c;
    TakeLog();
    for (ProbeComponent *alone : {a, b})
    {
        EXPECT_EQ(alone->SendMessageToNextSibling(true, on), alone == a);
        EXPECT_EQ(alone->SendMessageToPreviousSibling(true, on), alone == a);
        EXPECT_FALSE(alone->SendMessageToNextSibling(false, on) || alone->SendMessageToPreviousSibling(false, on));
        EXPECT_FALSE(alone->SendMessageToSiblings(on));
        EXPECT_FALSE(alone->SendMessageToFirstChild(on) || alone->SendMessageToLastChild(on));
    }
    EXPECT_FALSE(b->SendMessageToParent(on));
    EXPECT_EQ(TakeLog(), "a.on;a.on;b.on;b.on;");
}

TEST_F(GuiSenders, GiveEachChildOnceWhileSendsStandInOneAnother)
{
    MakeFamily();
    ProbeComponent *const d = new ProbeComponent("d", log, parent);
    new ProbeComponent("e", log, parent);
    gui::Message_OnOff on(true);
    gui::Message_OnOff off(false);
    b->action = [&](string const &)
    {
        b->action = nullptr;
        parent->SendMessageToChildren(off);
    };
    // One that both sends have reached, the one that is reached, and one that is to come; another one comes.
    c->action = [&](string const &)
    {
        c->action = nullptr;
        delete a;
        c->DetachFromParent();
        delete d;
        parent->Attach(*c);
        TakeLog();
    };
    parent->SendMessageToChildren(on);
    EXPECT_EQ(TakeLog(), "e.off;c.off;e.on;c.on;");
    EXPECT_EQ(parent->GetNumChildren(), 3u);
}

/// A send by `sender` during which the component `killer` deletes the component `victim`, and the receivers.
struct Deletion
{
    bool (*send)(ProbeComponent &sender, gui::Message &message);
    string sender, killer, victim;
    char const *receivers;
};

TEST_F(GuiSenders, GoOnWithWhatHandlersLeave)
{
    using Sender = ProbeComponent;
    using On = gui::Message;
    auto *const toChildren = +[](Sender &from, On &on) { return from.SendMessageToChildren(on); };
    auto *const toSiblings = +[](Sender &from, On &on) { return from.SendMessageToSiblings(on); };
    auto *const toAll = +[](Sender &from, On &on) { return from.SendMessageToSelfAndSiblings(on); };
    auto *const toParent = +[](Sender &from, On &on) { return from.SendMessageToParent(on); };
    auto *const toNext = +[](Sender &from, On &on) { return from.SendMessageToNextSibling(true, on); };
    auto *const toPrevious = +[](Sender &from, On &on) { return from.SendMessageToPreviousSibling(true, on); };
    auto *const toFirst = +[](Sender &from, On &on) { return from.SendMessageToFirstChild(on); };
    auto *const toLast = +[](Sender &from, On &on) { return from.SendMessageToLastChild(on); };
    Deletion const deletions[] = {
        {toChildren, "parent", "a", "a", "a b c "},
        {toChildren, "parent", "a", "b", "a c "},
        {toChildren, "parent", "b", "a", "a b c "},
        {toChildren, "parent", "b", "c", "a b "},
        {toChildren, "parent", "b", "parent", "a b "},
        {toSiblings, "b", "a", "a", "a c "},
        {toSiblings, "b", "a", "b", "a c "},
        {toSiblings, "b", "a", "c", "a "},
        {toSiblings, "b", "a", "parent", "a "},
        {toAll, "b", "b", "b", "b a c "},
        {toAll, "b", "b", "a", "b c "},
        {toAll, "b", "b", "parent", "b "},
        {toAll, "b", "a", "b", "b a c "},
        {toParent, "b", "parent", "parent", "parent "},
        {toParent, "b", "parent", "b", "parent "},
        {toNext, "b", "c", "b", "c "},
        {toNext, "b", "c", "parent", "c "},
        {toPrevious, "b", "a", "a", "a "},
        {toFirst, "parent", "a", "parent", "a "},
        {toLast, "parent", "c", "c", "c "},
    };
    for (Deletion const &deletion : deletions)
    {
        SCOPED_TRACE(deletion.killer + " deletes " + deletion.victim + ": " + deletion.receivers);
        MakeFamily();
        std::map<string, ProbeComponent *> const family = {{"parent", parent}, {"a", a}, {"b", b}, {"c", c}};
        string receivers;
        for (auto const &[name, component] : family)
        {
            component->action = [&, name = name](string const &what)
            {
                if (what != "on")
                    return;
                receivers += name + " ";
                if (name == deletion.killer)
                    delete family.at(deletion.victim);
            };
        }
        gui::Message_OnOff on(true);
        deletion.send(*family.at(deletion.sender), on);
        EXPECT_EQ(receivers, deletion.receivers);
        manager.DeleteAllComponents();
        TakeLog();
    }
}

} // namespace
} // namespace quillmarsh
