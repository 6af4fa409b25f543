// A GUI whose handlers delete, attach, hide, capture, activate and run modal at random, while mouse and keyboard are used
// at random: "quillmarsh-gui-soak [--frames N] [--seed N]". Runs for two hundred thousand frames; the exit status says
// whether the manager kept every component.
#include "tests/support/gui_desk.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/framework/application.h>

#include <cstdlib>
#include <iostream>
#include <random>

namespace quillmarsh::tests
{
namespace
{

using namespace gui;

class Crowd;

/// Component that does something at random in whatever it is told.
class Wild : public Component
{
public:
    explicit Wild(Crowd &crowd);
    ~Wild() override;

    bool OnKeyboardQueryFocus(bool byMouse, eMouseButton button, bool &want, bool &needCharacters) override;
    using Component::OnKeyboardQueryFocus;
    void OnChangedActive() override { Act(); }
    void OnChangedFocused() override { Act(); }
    void OnChangedVisible() override { Act(); }
    void OnAttachedToParent() override { Act(); }
    void OnDetachedFromParent() override { Act(); }
    void OnTimeDelta(double) override { Act(); }

protected:
    bool HandleMessage(Message &message) override
    {
        Watch<Component> const self(*this);
        Act();
        return self.Get() == nullptr || Component::HandleMessage(message);
    }

private:
    void Act();

    Crowd &crowd_;
};

/// All components, and what happens to them.
class Crowd
{
public:
    explicit Crowd(unsigned int seed) : random_(seed) {}

    unsigned int RollDice(std::size_t sides) { return static_cast<unsigned int>(random_() % sides); }

    void Enter(Wild &component) { components_.push_back(&component); }
    void Leave(Wild &component) { std::erase(components_, &component); }
    unsigned int GetSize() const { return static_cast<unsigned int>(components_.size()); }

    void Make()
    {
        auto &component = *new Wild(*this);
        component.SetPosition(Float(200), Float(150));
        component.SetSize(Float(200), Float(200));
        component.SetDefaultCommandArea(RollDice(3) == 0 ? static_cast<eCommandArea>(RollDice(s_numCommandAreas))
                                                         : e_area_client);
        component.SetCanDisable(RollDice(2) == 0);
        component.SetCanFocus(RollDice(2) == 0);
        Attach(component);
    }

    /// Does something to one component, often the one that was told, seldom enough that a frame ends.
    void Act(Wild &self)
    {
        if (isQuiet || RollDice(rarity) != 0 || depth_ > 6 || components_.empty())
            return;
        ++depth_;
        Change(RollDice(3) == 0 ? self : Pick());
        --depth_;
        ++numActions;
    }

    unsigned int rarity = 20;
    bool isQuiet = false;
    unsigned long long numActions = 0;

private:
    Wild &Pick() { return *components_[RollDice(components_.size())]; }
    float Float(std::size_t sides) { return static_cast<float>(RollDice(sides)); }

    void Attach(Component &component)
    {
        Component &parent = Pick();
        if (&parent == &component || RollDice(3) == 0 || parent.CalcDepth() > 8)
            return;
        try
        {
            parent.Attach(component);
        }
        catch (GUIException const &)
        {
            // It is an ancestor of the parent, perhaps only since a handler was told of the detachment.
        }
    }

    void Change(Wild &component)
    {
        using Action = void (*)(Crowd & crowd, Wild & it, Manager & manager, bool coin);
        static constexpr Action s_actions[] = {
            [](Crowd &, Wild &it, Manager &, bool) { delete &it; },
            [](Crowd &crowd, Wild &it, Manager &, bool)
            {
                // It may be in its destructor.
                Component *const top = &it.GetTopLevelAncestor();
                if (std::find(crowd.components_.begin(), crowd.components_.end(), top) != crowd.components_.end())
                    delete top;
            },
            [](Crowd &, Wild &it, Manager &, bool) { it.DetachFromParent(); },
            [](Crowd &crowd, Wild &it, Manager &, bool) { crowd.Attach(it); },
            [](Crowd &crowd, Wild &it, Manager &, bool) { crowd.Attach(it); },
            [](Crowd &crowd, Wild &it, Manager &, bool) { it.SetVisible(crowd.RollDice(3) != 0); },
            [](Crowd &crowd, Wild &it, Manager &, bool) { it.SetEnabled(crowd.RollDice(3) != 0); },
            [](Crowd &, Wild &it, Manager &, bool coin) { coin ? it.BringToFront() : it.SendToBack(); },
            [](Crowd &crowd, Wild &it, Manager &, bool coin)
            {
                it.SetOverlay(coin);
                it.SetGhost(crowd.RollDice(4) == 0);
                it.SetLayer(crowd.RollDice(3));
            },
            [](Crowd &, Wild &it, Manager &, bool coin) { it.UpdateGeometry(coin); },
            [](Crowd &crowd, Wild &it, Manager &, bool)
            {
                it.SetPosition(crowd.Float(200), crowd.Float(150));
                it.ReportDirtyGeometry();
            },
            [](Crowd &, Wild &it, Manager &, bool) { it.PropagateVisibleToDescendants(true); },
            [](Crowd &crowd, Wild &, Manager &, bool) { crowd.GetSize() < 60 ? crowd.Make() : void(); },
            [](Crowd &crowd, Wild &, Manager &, bool) { crowd.GetSize() < 60 ? crowd.Make() : void(); },
            [](Crowd &, Wild &it, Manager &, bool coin) { coin ? it.RunModal() : it.EndModal(); },
            [](Crowd &crowd, Wild &, Manager &manager, bool coin)
            { coin ? manager.RunModal(crowd.application_) : manager.EndModal(crowd.application_); },
            [](Crowd &, Wild &it, Manager &, bool coin) { it.ActivateTopLevel(coin); },
            [](Crowd &crowd, Wild &, Manager &manager, bool coin)
            { coin ? manager.ActivateApplication() : manager.CycleQueueActivate(crowd.RollDice(2) == 0); },
            [](Crowd &, Wild &it, Manager &, bool coin)
            { coin ? static_cast<void>(it.RequestMouseCapture()) : it.ReleaseMouseCapture(); },
            [](Crowd &, Wild &it, Manager &, bool coin)
            { coin ? static_cast<void>(it.RequestKeyboardFocus()) : it.ReleaseKeyboardFocus(); },
            [](Crowd &crowd, Wild &it, Manager &, bool)
            {
                Watch<Component> const self(it);
                it.RequestMouseCapture();
                if (self.Get() != nullptr)
                    it.RequestKeyboardFocus();
                if (self.Get() != nullptr && crowd.RollDice(2) == 0)
                    delete &it;
            },
            [](Crowd &, Wild &, Manager &manager, bool) { manager.BreakCommandMode(); },
            [](Crowd &, Wild &it, Manager &manager, bool coin) { manager.TimeNotifyRegister(it, coin); },
            [](Crowd &, Wild &, Manager &manager, bool coin)
            {
                Message_Show message(true);
                coin ? manager.SyncObjectStates() : static_cast<void>(manager.BroadcastMessage(message));
            },
            [](Crowd &crowd, Wild &, Manager &manager, bool)
            {
                // What other handlers make or detach meanwhile would stay out of the manager's list.
                crowd.isQuiet = crowd.RollDice(20) == 0;
                if (crowd.isQuiet)
                    manager.DeleteAllComponents();
                crowd.isQuiet = false;
            },
        };
        s_actions[RollDice(std::size(s_actions))](*this, component, Manager::Instance(), RollDice(2) == 0);
    }

    /// Stands for the application in calls; the manager does not know it.
    struct Program : Application
    {
    } application_;
    std::mt19937 random_;
    std::vector<Wild *> components_;
    int depth_ = 0;
};

Wild::Wild(Crowd &crowd) : crowd_(crowd)
{
    crowd_.Enter(*this);
}

Wild::~Wild()
{
    crowd_.Leave(*this);
}

void Wild::Act()
{
    crowd_.Act(*this);
}

bool Wild::OnKeyboardQueryFocus(bool, eMouseButton, bool &want, bool &needCharacters)
{
    want = crowd_.RollDice(2) == 0;
    needCharacters = crowd_.RollDice(2) == 0;
    return true;
}

/// Changes what the devices say.
void UseDevices(GuiDesk &desk, Crowd &crowd)
{
    if (crowd.RollDice(2) == 0)
    {
        desk.mouse.x = static_cast<int>(crowd.RollDice(300));
        desk.mouse.y = static_cast<int>(crowd.RollDice(300));
    }
    desk.mouse.isInside = crowd.RollDice(30) != 0;
    if (bool &pressed = desk.mouse.pressed[crowd.RollDice(3)]; crowd.RollDice(3) == 0)
        pressed = !pressed;
    desk.mouse.wheel = crowd.RollDice(4) == 0 ? 1 : 0;
    if (auto const key = static_cast<eKey>(crowd.RollDice(20)); crowd.RollDice(3) == 0)
    {
        if (desk.keyboard.pressed.erase(key) == 0)
            desk.keyboard.pressed.insert(key);
    }
    if (crowd.RollDice(100) == 0)
        GuiDesk::DeskKernel::GUIManager_NotifyApplicationWindowActive(crowd.RollDice(2) == 0);
    if (crowd.RollDice(50) == 0)
        GuiDesk::DeskKernel::GUIManager_OnWindowResize(crowd.RollDice(800), crowd.RollDice(600));
}

unsigned int CountBranch(Component const &component)
{
    unsigned int count = 1;
    for (Component const *child : component.GetChildren())
        count += CountBranch(*child);
    return count;
}

/// Returns the number of components that the manager reaches.
unsigned int CountComponents(Manager const &manager)
{
    unsigned int count = 0;
    for (unsigned int i = 0; i < manager.GetNumTopLevelComponents(); ++i)
        count += CountBranch(*manager.GetTopLevelComponent(i));
    return count;
}

/// Lets go of everything. Returns true when the desk goes on with others: a new component is clicked and typed into.
bool GoesOn(GuiDesk &desk, Crowd &crowd)
{
    crowd.isQuiet = true;
    desk.mouse.pressed = {};
    desk.keyboard.pressed.clear();
    desk.manager.DeleteAllComponents();
    while (desk.manager.IsRunningModal())
        desk.manager.EndModal(*desk.manager.GetModalTarget());
    RecordingComponent &fresh = desk.Add("fresh", {500, 300}, {20, 20});
    fresh.wantsFocus = true;
    desk.mouse.isInside = true;
    desk.MoveTo(505, 305);
    // The first click may be that which activated the application's window.
    for (unsigned int click = 0; click < 2; ++click, desk.Frame(1))
        desk.Click();
    desk.TypeKey(e_key_q);
    bool const goesOn =
        fresh.IsActive() && fresh.IsFocused() && !desk.manager.IsCommandModeActive() && !desk.manager.IsMouseCaptured();
    delete &fresh;
    crowd.isQuiet = false;
    return goesOn;
}

int Run(unsigned int numFrames, unsigned int seed)
{
    Crowd crowd(seed);
    bool isWell = true;
    {
        GuiDesk desk;
        for (unsigned int frame = 0; frame < numFrames && isWell; ++frame)
        {
            crowd.rarity = 2 + crowd.RollDice(40);
            while (crowd.GetSize() < 25)
                crowd.Make();
            UseDevices(desk, crowd);
            desk.Frame(crowd.RollDice(300) / 1000.0);
            bool const goesOn = crowd.RollDice(100) != 0 || GoesOn(desk, crowd);
            while (crowd.RollDice(20) == 0 && desk.manager.IsRunningModal())
                desk.manager.EndModal(*desk.manager.GetModalTarget());
            isWell = goesOn && CountComponents(desk.manager) == crowd.GetSize();
            if (!isWell)
                std::cerr << "frame " << frame << ": the manager has " << CountComponents(desk.manager) << " of "
                          << crowd.GetSize() << " components" << (goesOn ? "" : ", and gives nothing to a new one")
                          << std::endl;
        }
        crowd.isQuiet = true;
    }
    isWell = isWell && crowd.GetSize() == 0;
    std::cout << numFrames << " frames, " << crowd.numActions << " actions of handlers, "
              << (isWell ? "all well" : "with faults") << std::endl;
    return isWell ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace
} // namespace quillmarsh::tests

int main(int argc, char **argv)
{
    unsigned int numFrames = 200000;
    unsigned int seed = 1;
    for (int i = 1; i + 1 < argc; i += 2)
    {
        auto const value = static_cast<unsigned int>(std::atoi(argv[i + 1]));
        if (std::string(argv[i]) == "--frames")
            numFrames = value;
        else if (std::string(argv[i]) == "--seed")
            seed = value;
    }
    return quillmarsh::tests::Run(numFrames, seed);
}
