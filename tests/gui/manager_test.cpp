#include "tests/support/failures.h"
#include "tests/support/gui_desk.h"
#include "tests/support/gui_screen.h"
#include "tests/support/null_video.h"
#include "tests/support/probe_component.h"
#include "tests/support/scripted_dialogs.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/gui/gui_renderer.h>

#include <gtest/gtest.h>

#include <random>

namespace quillmarsh
{
namespace
{

using namespace gui;
using namespace tests;

/// The components write to it until the manager has deleted them.
struct ProbeLog
{
    string probes;
};

/// Desk whose manager draws with the null renderer.
class DrawnDesk : public ProbeLog, public GuiDesk
{
public:
    ProbeComponent &Make(string const &name, vec2 const &position, vec2 const &size, Component *parent = nullptr)
    {
        auto &component = *new ProbeComponent(name, probes, parent);
        component.SetPosition(position);
        component.SetSize(size);
        return component;
    }
    ProbeComponent &Make(string const &name, Component *parent = nullptr)
    {
        return Make(name, vec2::ZERO, vec2::ONE, parent);
    }

    /// Returns the names of those that recorded this, in order and with a blank behind each.
    string ListWho(string const &what) const
    {
        string names;
        std::istringstream entries(probes);
        for (string entry; std::getline(entries, entry, ';');)
            names += entry.ends_with("." + what) ? entry.substr(0, entry.find('.')) + ' ' : "";
        return names;
    }
    string Draw()
    {
        probes.clear();
        manager.Draw();
        return ListWho("draw");
    }
    string Tell()
    {
        probes.clear();
        Message_OnOff message(true);
        manager.BroadcastMessage(message);
        return ListWho("on");
    }
    string GetTarget()
    {
        if (manager.IsMouseOverTargetApplication())
            return "application";
        auto const *const target = dynamic_cast<ProbeComponent *>(manager.GetMouseOverTarget());
        return target != nullptr ? target->GetName() : "nothing";
    }

    NullVideo video;
    ScreenConnection const connection{video.renderer};
};

TEST(GuiManager, OrdersTheQueues)
{
    DrawnDesk desk;
    ProbeComponent &a = desk.Make("a");
    ProbeComponent &c = desk.Make("c");
    c.SetLayer(1);
    ProbeComponent &b = desk.Make("b");
    ProbeComponent &popup = desk.Make("popup", &a);
    ProbeComponent &nested = desk.Make("nested", &popup);
    desk.Make("text", &popup);
    ProbeComponent &hidden = desk.Make("hidden", &a);
    desk.Make("below", &hidden);
    ProbeComponent &last = desk.Make("last", &a);
    popup.SetOverlay(true);
    nested.SetOverlay(true);
    hidden.SetVisible(false);
    desk.manager.SyncObjectStates();
    EXPECT_EQ(desk.Tell(), "a popup nested text hidden below last b c ");

    struct Step
    {
        char const *name;
        std::function<void()> change;
        char const *drawn;
    };
    Step const steps[] = {
        {"overlays behind the rest of their top-level component", [] {}, "a last popup text nested b c "},
        {"to the front of its layer only", [&] { a.BringToFront(); }, "b a last popup text nested c "},
        {"to the back of its layer only", [&] { c.SendToBack(); }, "b a last popup text nested c "},
        {"swapped", [&] { b.BringInFront(a); }, "a last popup text nested b c "},
        {"swapped already", [&] { b.BringInFront(a); }, "a last popup text nested b c "},
        {"other layers are not swapped", [&] { b.BringInFront(c); }, "a last popup text nested b c "},
        {"children are not stacked", [&] { last.SendToBack(); }, "a last popup text nested b c "},
        {"layer changed", [&] { b.SetLayer(2); }, "a last popup text nested c b "},
        {"overlay hidden", [&] { popup.SetVisible(false); }, "a last c b "},
        {"overlay no more", [&] { popup.SetVisible(true), popup.SetOverlay(false); }, "a popup text last nested c b "},
        {"detached, in front of its layer", [&] { last.DetachFromParent(); }, "a popup text nested last c b "},
        {"attached", [&] { last.AttachTo(c); }, "a popup text nested c last b "},
        {"deleted", [&] { delete &popup; }, "a c last b "},
        {"all deleted", [&] { desk.manager.DeleteAllComponents(); }, ""},
    };
    for (Step const &step : steps)
    {
        SCOPED_TRACE(step.name);
        step.change();
        EXPECT_EQ(desk.Draw(), step.drawn);
    }
    NamedParameter faults;
    ASSERT_TRUE(desk.video.renderer.GetPluginParameter("faults", faults));
    EXPECT_EQ(faults.GetValueString(), "");
}

/// Compares with the definition of the order: a walk for each overlay in the order in which the walks find them.
TEST(GuiManager, DrawsRandomTreesAsDefined)
{
    std::mt19937 random(7);
    for (int round = 0; round < 30; ++round)
    {
        DrawnDesk desk;
        std::vector<ProbeComponent *> items;
        for (int i = 0; i < 40; ++i)
        {
            Component *const parent = i < 3 ? nullptr : items[random() % items.size()];
            items.push_back(&desk.Make(std::to_string(i), parent));
            items.back()->SetVisible(random() % 6 != 0);
            items.back()->SetOverlay(random() % 4 == 0);
        }
        string expected;
        std::vector<Component const *> roots;
        std::function<void(Component const &)> const walk = [&](Component const &component)
        {
            if (!component.IsVisible())
                return;
            expected += static_cast<ProbeComponent const &>(component).GetName() + ' ';
            for (Component const *child : component.GetChildren())
            {
                if (!child->IsOverlay())
                    walk(*child);
                else if (child->IsVisible())
                    roots.push_back(child);
            }
        };
        for (unsigned int i = 0; i < desk.manager.GetNumTopLevelComponents(); ++i)
        {
            roots.assign(1, desk.manager.GetTopLevelComponent(i));
            for (std::size_t root = 0; root < roots.size(); ++root)
                walk(*roots[root]);
        }
        EXPECT_EQ(desk.Draw(), expected);
    }
}

TEST(GuiManager, WalksNothingWhileNothingChanges)
{
    DrawnDesk desk;
    ProbeComponent &top = desk.Make("top", {0, 0}, {100, 100});
    ProbeComponent &child = desk.Make("child", {10, 10}, {10, 10}, &top);
    desk.MoveTo(15, 15);
    desk.Frame();
    desk.probes.clear();
    for (int frame = 0; frame < 3; ++frame)
        desk.Frame();
    EXPECT_EQ(desk.probes, "");

    child.ReportDirtyGeometry();
    desk.Frame();
    EXPECT_EQ(desk.ListWho("hit"), "");
    EXPECT_EQ(desk.ListWho("cache"), "top child ");
    desk.MoveTo(16, 15);
    EXPECT_EQ(desk.ListWho("hit"), "top child ");
}

/// Scene with one of everything that decides on a hit.
class GuiHitTest : public testing::Test, public DrawnDesk
{
protected:
    ProbeComponent &window = Make("window", {0, 0}, {200, 200});
    ProbeComponent &left = Make("left", {10, 10}, {50, 50}, &window);
    ProbeComponent &deep = Make("deep", {10, 10}, {50, 50}, &left);
    ProbeComponent &twin = Make("twin", {100, 10}, {50, 50}, &window);
    ProbeComponent &otherTwin = Make("other twin", {100, 10}, {50, 50}, &window);
    ProbeComponent &ghost = Make("ghost", {10, 100}, {50, 50}, &window);
    ProbeComponent &outside = Make("outside", {60, 0}, {20, 20}, &ghost);
    ProbeComponent &overlay = Make("overlay", {20, 20}, {60, 60}, &window);
    ProbeComponent &tip = Make("tip", {0, 0}, {10, 10}, &overlay);
    ProbeComponent &nested = Make("nested", {0, 40}, {30, 40}, &overlay);
    ProbeComponent &after = Make("after", {20, 20}, {60, 60}, &window);
    ProbeComponent &hidden = Make("hidden", {150, 150}, {50, 50}, &window);
    ProbeComponent &front = Make("front", {180, 180}, {100, 100});

    GuiHitTest()
    {
        ghost.SetGhost(true);
        overlay.SetOverlay(true);
        nested.SetOverlay(true);
        hidden.SetVisible(false);
    }
};

TEST_F(GuiHitTest, FindsTheTarget)
{
    struct Case
    {
        int x, y;
        char const *target;
    };
    constexpr Case cases[] = {
        {5, 5, "window"},          {15, 15, "left"},         {25, 25, "tip"},     {50, 50, "overlay"},
        {25, 65, "nested"},        {25, 90, "nested"},       {105, 15, "twin"},   {15, 105, "window"},
        {75, 105, "outside"},      {155, 155, "window"},     {190, 190, "front"}, {199, 199, "front"},
        {280, 200, "application"}, {300, 20, "application"},
    };
    for (Case const &point : cases)
    {
        MoveTo(point.x, point.y);
        EXPECT_EQ(GetTarget(), point.target) << point.x << ", " << point.y;
    }
    // It follows changes under a mouse that does not move.
    front.SetPosition(290, 10);
    front.ReportDirtyGeometry();
    Frame();
    EXPECT_EQ(GetTarget(), "front");
}

TEST_F(GuiHitTest, TellsWhoIsCoveredAndWhoIsHiddenByAnOverlay)
{
    MoveTo(50, 50);
    EXPECT_TRUE(window.IsMouseOver());
    EXPECT_FALSE(window.IsMouseOverDirect());
    EXPECT_TRUE(overlay.IsMouseOverDirect());
    EXPECT_FALSE(left.IsMouseOver());
    EXPECT_FALSE(deep.IsMouseOver());
    MoveTo(15, 15);
    EXPECT_TRUE(window.IsMouseOver());
    EXPECT_TRUE(left.IsMouseOverDirect());
    EXPECT_FALSE(overlay.IsMouseOver());
    // Both overlap the point; the higher one is not covered, and not the target either.
    MoveTo(105, 15);
    EXPECT_TRUE(twin.IsMouseOverDirect());
    EXPECT_TRUE(otherTwin.IsMouseOverDirect());
}

TEST_F(GuiHitTest, IsLimitedToTheModalBranch)
{
    front.RunModal();
    MoveTo(5, 5);
    EXPECT_EQ(GetTarget(), "nothing");
    Click();
    EXPECT_FALSE(window.IsActive());
    MoveTo(300, 20);
    EXPECT_EQ(GetTarget(), "nothing");
    MoveTo(190, 190);
    EXPECT_EQ(GetTarget(), "front");
    front.EndModal();
    MoveTo(5, 5);
    EXPECT_EQ(GetTarget(), "window");
}

TEST_F(GuiHitTest, SurvivesDeletion)
{
    MoveTo(300, 20);
    left.action = [this](string const &what)
    {
        if (what == "hit")
            delete &deep;
    };
    MoveTo(15, 15);
    EXPECT_EQ(GetTarget(), "nothing");
    left.action = nullptr;
    Frame();
    EXPECT_EQ(GetTarget(), "left");

    // The next top-level component that is to be walked.
    front.action = [this](string const &what)
    {
        if (what == "hit")
            delete &window;
    };
    MoveTo(105, 15);
    EXPECT_EQ(GetTarget(), "nothing");
    front.action = nullptr;
    Frame();
    EXPECT_EQ(GetTarget(), "application");

    // The target between two frames.
    MoveTo(190, 190);
    delete &front;
    EXPECT_EQ(GetTarget(), "nothing");
    Click();
    MoveTo(191, 190);
    EXPECT_EQ(GetTarget(), "application");
}

/// Any of these moments may delete any of these components, and everybody else is told once.
TEST(GuiManager, SurvivesDeletionAtAnyMoment)
{
    for (string const moment : {"on", "time", "cache"})
    {
        for (unsigned int victim = 0; victim < 7; ++victim)
        {
            SCOPED_TRACE(moment + ", victim " + std::to_string(victim));
            DrawnDesk desk;
            std::vector<ProbeComponent *> items;
            // 0(1(2) 3) 4(5) 6
            constexpr int parents[] = {-1, 0, 1, 0, -1, 4, -1};
            for (int const parent : parents)
                items.push_back(&desk.Make(std::to_string(items.size()), parent < 0 ? nullptr : items[parent]));
            desk.manager.SyncObjectStates();
            for (ProbeComponent *item : items)
                desk.manager.TimeNotifyRegister(*item, true);
            bool isDone = false;
            items[1]->action = [&](string const &what)
            {
                if (what == moment && !std::exchange(isDone, true))
                    delete items[victim];
            };
            desk.manager.ReportDirtyGeometry(*items[0]);
            desk.manager.ReportDirtyGeometry(*items[4]);
            desk.Tell();
            desk.Frame();
            constexpr char const *survivors[] = {"4 5 6 ",     "0 3 4 5 6 ",   "0 1 3 4 5 6 ", "0 1 2 4 5 6 ",
                                                 "0 1 2 3 6 ", "0 1 2 3 4 6 ", "0 1 2 3 4 5 "};
            EXPECT_TRUE(isDone);
            EXPECT_EQ(desk.Tell(), survivors[victim]);
            EXPECT_EQ(desk.Draw(), survivors[victim]);
            desk.probes.clear();
            desk.Frame();
            EXPECT_EQ(desk.ListWho("time"), survivors[victim]);
        }
    }
}

TEST(GuiManager, SurvivesChangesOfItsQueuesDuringABroadcast)
{
    DrawnDesk desk;
    ProbeComponent &first = desk.Make("first");
    desk.Make("second");
    desk.manager.SyncObjectStates();
    first.action = [&](string const &what)
    {
        if (what != "on")
            return;
        first.action = nullptr;
        desk.Make("new");
        first.BringToFront();
        desk.manager.SyncObjectStates();
        Message_OnOff message(true);
        desk.manager.BroadcastMessage(message);
    };
    // A new component clears the record. The inner one tells all in the new order; the outer one goes on with those that it began with.
    EXPECT_EQ(desk.Tell(), "second new first second ");
    first.action = [&](string const &) { desk.manager.DeleteAllComponents(); };
    EXPECT_EQ(desk.Tell(), "second new first ");
    EXPECT_EQ(desk.manager.GetNumTopLevelComponents(), 0u);
    EXPECT_EQ(desk.Tell(), "");
}

/// Provider that writes what happens to it.
class Provider : public MessageHandler
{
public:
    Provider(string &journal, string name) : journal_(journal), name_(std::move(name)) {}

    std::function<void()> onPreDispatch;

protected:
    bool HandleMessage(Message &) override
    {
        journal_ += name_ + " asked ";
        return true;
    }
    void OnRegisteredAsServiceProvider(unsigned int id) override { Write("+", id); }
    void OnUnregisteredAsServiceProvider(unsigned int id) override { Write("-", id); }
    void ServiceProviderPreEventDispatch(double) override
    {
        journal_ += name_ + " pre ";
        if (onPreDispatch != nullptr)
            onPreDispatch();
    }
    void ServiceProviderPostEventDispatch(double) override { journal_ += name_ + " post "; }

private:
    void Write(char const *what, unsigned int id) { journal_ += name_ + what + std::to_string(id) + ' '; }

    string &journal_;
    string name_;
};

/// Component that writes changes of the services.
class Listener : public Component
{
public:
    explicit Listener(string &journal) : journal_(journal) {}

protected:
    bool HandleMessage(Message &message) override
    {
        if (message.GetID() == e_msg_service_provider_changed)
            journal_ +=
                "changed" + std::to_string(static_cast<Message_ServiceProviderChanged &>(message).GetServiceID()) + ' ';
        return false;
    }

private:
    string &journal_;
};

TEST(GuiManager, KeepsServiceProviders)
{
    GuiDesk desk;
    string journal;
    auto const take = [&journal] { return std::exchange(journal, string()); };
    new Listener(journal);
    desk.manager.SyncObjectStates();
    Provider a(journal, "a");
    auto b = std::make_unique<Provider>(journal, "b");
    Message_Command message(1);

    EXPECT_FALSE(a.RegisterAsServiceProvider(0));
    EXPECT_FALSE(a.SendMessageToServiceProvider(9, message));
    EXPECT_TRUE(a.RegisterAsServiceProvider(9));
    EXPECT_EQ(take(), "a+9 changed9 ");
    EXPECT_TRUE(a.RegisterAsServiceProvider(9));
    EXPECT_EQ(take(), "");
    EXPECT_TRUE(b->RegisterAsServiceProvider(9));
    EXPECT_EQ(take(), "a-9 b+9 changed9 ");
    EXPECT_FALSE(a.UnregisterAsServiceProvider(9));
    EXPECT_FALSE(a.IsRegisteredAsServiceProvider(9));
    EXPECT_TRUE(b->IsRegisteredAsServiceProvider(9));
    EXPECT_TRUE(a.SendMessageToServiceProvider(9, message));
    EXPECT_EQ(take(), "b asked ");

    a.RegisterAsServiceProvider(4);
    b->RegisterAsServiceProvider(12);
    take();
    desk.Frame();
    EXPECT_EQ(take(), "a pre b pre b pre a post b post b post ");
    // A provider that is deleted by another one is told nothing more; everybody else learns of both services.
    a.onPreDispatch = [&] { b.reset(); };
    desk.Frame();
    EXPECT_EQ(take(), "a pre changed9 changed12 a post ");
    EXPECT_EQ(desk.manager.GetServiceProvider(9), nullptr);

    EXPECT_TRUE(desk.manager.UnregisterServiceProvider(4));
    EXPECT_FALSE(desk.manager.UnregisterServiceProvider(4));
    EXPECT_EQ(take(), "a-4 changed4 ");
    a.RegisterAsServiceProvider(4);
    take();
    desk.manager.UnregisterAllServiceProviders();
    EXPECT_EQ(desk.manager.GetServiceProvider(4), nullptr);
    EXPECT_EQ(take(), "");
}

TEST(GuiManager, IsTheOnlyOne)
{
    ScriptedDialogs dialogs;
    TestKernel kernel;
    string journal;
    Provider provider(journal, "late");
    {
        Manager first;
        // It outlives the manager.
        provider.RegisterAsServiceProvider(3);
        {
            Manager const second;
        }
        EXPECT_FALSE(Manager::IsCreated());
    }
    EXPECT_EQ(dialogs.TakeTexts(), (std::vector<string>{"gui::Manager singleton already created.",
                                                        "Destructing non-existent gui::Manager singleton."}));
    EXPECT_FALSE(Manager::IsCreated());
}

TEST(GuiManager, NamesMissingDevices)
{
    GuiDesk desk;
    using Doors = GuiDesk::DeskKernel;
    Doors::GUIManager_DisconnectHumanInterfaceDevices();
    EXPECT_EQ(desk.manager.GetMouse(), nullptr);
    EXPECT_FALSE(desk.manager.IsKeyDown(e_key_a));
    auto const connect = [](HumanInterfaceDevice &device)
    {
        return MessageOf<GUIException>(
            [&]
            {
                Doors::GUIManager_ConnectHumanInterfaceDevice(device);
                Doors::GUIManager_EndConnectHumanInterfaceDevices();
            });
    };
    EXPECT_EQ(connect(desk.mouseDevice), "gui-manager cannot continue without keyboard-device.");
    Doors::GUIManager_DisconnectHumanInterfaceDevices();
    EXPECT_EQ(connect(desk.keyboardDevice), "gui-manager cannot continue without mouse-device.");
    Doors::GUIManager_SetTolerateMissingInputDevice(true);
    EXPECT_EQ(connect(desk.keyboardDevice), "");
    EXPECT_NE(desk.kernel.logOut.str().find("gui-manager: missing mouse-device.\n"), string::npos);
    desk.manager.DispatchInputEvents();
}

} // namespace
} // namespace quillmarsh
