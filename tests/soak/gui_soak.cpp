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

    /// Does something to one component, seldom enough that a frame ends.
    void Act()
    {
        if (isQuiet || RollDice(rarity) != 0 || depth_ > 6 || components_.empty())
            return;
        ++depth_;
        Change(Pick(), Manager::Instance());
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

    void Change(Wild &component, Manager &manager)
    {
        bool const coin = RollDice(2) == 0;
        unsigned int const dice = RollDice(24);
        if (dice < 12)
            ChangeTree(component, dice, coin);
        else
            ChangeTargets(component, manager, dice, coin);
    }

    void ChangeTree(Wild &component, unsigned int dice, bool coin)
    {
        switch (dice)
        {
        case 0:
            delete &component;
            break;
        case 1:
            component.DetachFromParent();
            break;
        case 2:
        case 3:
            Attach(component);
            break;
        case 4:
            component.SetVisible(RollDice(3) != 0);
            break;
        case 5:
            component.SetEnabled(RollDice(3) != 0);
            break;
        case 6:
            coin ? component.BringToFront() : component.SendToBack();
            break;
        case 7:
            component.SetOverlay(coin);
            component.SetGhost(RollDice(4) == 0);
            component.SetLayer(RollDice(3));
            break;
        case 8:
            component.UpdateGeometry(coin);
            break;
        case 9:
            component.SetPosition(Float(200), Float(150));
            component.ReportDirtyGeometry();
            break;
        case 10:
            component.PropagateVisibleToDescendants(true);
            break;
        default:
            if (components_.size() < 60)
                Make();
            break;
        }
    }

    void ChangeTargets(Wild &component, Manager &manager, unsigned int dice, bool coin)
    {
        switch (dice)
        {
        case 12:
            component.RunModal();
            break;
        case 13:
            component.EndModal();
            break;
        case 14:
            coin ? manager.RunModal(application_) : manager.EndModal(application_);
            break;
        case 15:
            component.ActivateTopLevel(coin);
            break;
        case 16:
            coin ? manager.ActivateApplication() : manager.CycleQueueActivate(RollDice(2) == 0);
            break;
        case 17:
        case 18:
            coin ? static_cast<void>(component.RequestMouseCapture()) : component.ReleaseMouseCapture();
            break;
        case 19:
        case 20:
            coin ? static_cast<void>(component.RequestKeyboardFocus()) : component.ReleaseKeyboardFocus();
            break;
        case 21:
            manager.BreakCommandMode();
            break;
        case 22:
            manager.TimeNotifyRegister(component, coin);
            break;
        default:
        {
            Message_Show message(true);
            coin ? manager.SyncObjectStates() : static_cast<void>(manager.BroadcastMessage(message));
            break;
        }
        }
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
    crowd_.Act();
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
            if (crowd.RollDice(500) == 0)
            {
                // What handlers make or detach meanwhile would stay out of the manager's list.
                crowd.isQuiet = true;
                desk.manager.DeleteAllComponents();
                crowd.isQuiet = false;
            }
            while (crowd.RollDice(20) == 0 && desk.manager.IsRunningModal())
                desk.manager.EndModal(*desk.manager.GetModalTarget());
            isWell = CountComponents(desk.manager) == crowd.GetSize();
            if (!isWell)
                std::cerr << "frame " << frame << ": the manager has " << CountComponents(desk.manager) << " of "
                          << crowd.GetSize() << " components" << std::endl;
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
