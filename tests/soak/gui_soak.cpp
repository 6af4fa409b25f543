// A GUI in which everything happens at random, also what should not: handlers delete, attach, hide, capture, activate and
// run modal, names are wrong, textures are refused, the renderer goes and comes, devices run wild. Runs for two hundred
// thousand frames; the exit status says whether nothing was lost and nothing is left:
// "quillmarsh-gui-soak [--frames N] [--seed N]", or "quillmarsh-gui-soak --components N" for a frame with very many.
#include "tests/soak/gui_crowd.h"
#include "tests/support/gui_desk.h"
#include "tests/support/null_video.h"

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <optional>

namespace quillmarsh::tests
{
namespace
{

using namespace gui;

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

/// Renderer without a device that goes and comes.
class Screen : NoCopy
{
public:
    explicit Screen(Crowd &crowd) : crowd_(crowd) {}
    ~Screen() { Leave(); }

    void Come()
    {
        video_.emplace();
        video_->gui.SetManagedResources(crowd_.IsOneIn(2));
        Doors::GUIManager_ConnectVideoRenderer(video_->renderer);
        CreateResources(false);
    }
    void Leave()
    {
        if (!video_)
            return;
        Doors::GUIManager_ReleaseVideoResources(false);
        Doors::GUIManager_DisconnectVideoRenderer();
        if (video_->gui.GetNumTextures() != 0)
            crowd_.AddFault("a released renderer has textures");
        for (string const &fault : video_->gui.GetFaults())
            crowd_.AddFault(fault);
        video_.reset();
        isLost_ = false;
    }
    /// Lets the renderer go, come, or lose its resources and get them back.
    void Change()
    {
        if (!video_)
        {
            Come();
        }
        else if (crowd_.IsOneIn(2))
        {
            Leave();
        }
        else
        {
            isLost_ ? CreateResources(true) : Doors::GUIManager_ReleaseVideoResources(true);
            isLost_ = !isLost_;
        }
    }

private:
    struct Doors : GuiDesk::DeskKernel
    {
        using Kernel::GUIManager_ConnectVideoRenderer;
        using Kernel::GUIManager_CreateVideoResources;
        using Kernel::GUIManager_DisconnectVideoRenderer;
        using Kernel::GUIManager_ReleaseVideoResources;
    };

    void CreateResources(bool onlyIfUnmanaged)
    {
        try
        {
            Doors::GUIManager_CreateVideoResources(onlyIfUnmanaged);
        }
        catch (GUIException const &failure)
        {
            crowd_.Take(failure);
        }
    }

    Crowd &crowd_;
    std::optional<NullVideo> video_;
    bool isLost_ = false;
};

/// Changes what the devices say; in a storm, everything at once and more often than there are frames.
class Devices : NoCopy
{
public:
    Devices(GuiDesk &desk, Crowd &crowd) : desk_(desk), crowd_(crowd) {}

    void Change()
    {
        if (crowd_.IsOneIn(500))
            GuiDesk::DeskKernel::GUIManager_DisconnectHumanInterfaceDevices();
        else if (crowd_.IsOneIn(4))
            Connect();
        if (!crowd_.IsOneIn(20))
        {
            Move(0, 300);
            Press(3);
            return;
        }
        for (unsigned int i = crowd_.RollDice(50); i > 0; --i)
        {
            Move(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
            Press(1);
            desk_.mouse.wheel *= std::numeric_limits<int>::max();
            desk_.mouseDevice.Sample([this] { desk_.mouse.Write(); });
            desk_.keyboardDevice.Sample([this] { desk_.keyboard.Write(); });
        }
    }

    void Connect()
    {
        GuiDesk::DeskKernel::GUIManager_BeginConnectHumanInterfaceDevices();
        GuiDesk::DeskKernel::GUIManager_ConnectHumanInterfaceDevice(desk_.mouseDevice);
        GuiDesk::DeskKernel::GUIManager_ConnectHumanInterfaceDevice(desk_.keyboardDevice);
        GuiDesk::DeskKernel::GUIManager_EndConnectHumanInterfaceDevices();
    }

private:
    void Move(int low, int high)
    {
        auto const begin = static_cast<unsigned int>(low);
        auto const roll = [&]
        { return static_cast<int>(begin + crowd_.RollDice(static_cast<unsigned int>(high) - begin)); };
        if (crowd_.IsOneIn(2))
        {
            desk_.mouse.x = roll();
            desk_.mouse.y = roll();
        }
        desk_.mouse.isInside = !crowd_.IsOneIn(30);
        desk_.mouse.wheel = crowd_.IsOneIn(4) ? 1 : 0;
    }
    /// Presses or releases each button, and one key, in one of so many cases.
    void Press(std::size_t rarity)
    {
        for (bool &pressed : desk_.mouse.pressed)
            pressed = pressed != (crowd_.IsOneIn(rarity) && crowd_.IsOneIn(2));
        for (unsigned int i = 0; i < 20 / rarity; ++i)
        {
            auto const key = static_cast<eKey>(crowd_.RollDice(rarity == 1 ? +e_key_none : 20));
            if (desk_.keyboard.pressed.erase(key) == 0)
                desk_.keyboard.pressed.insert(key);
        }
    }

    GuiDesk &desk_;
    Crowd &crowd_;
};

/// What happens between two frames.
void ChangeWorld(GuiDesk &desk, Crowd &crowd, Screen &screen)
{
    using Doors = GuiDesk::DeskKernel;
    Manager &manager = desk.manager;
    while (crowd.components.size() < 25)
        crowd.Make();
    if (crowd.IsOneIn(20))
        screen.Change();
    if (crowd.IsOneIn(100))
        Doors::GUIManager_NotifyApplicationWindowActive(crowd.IsOneIn(2));
    if (crowd.IsOneIn(50))
        Doors::GUIManager_OnWindowResize(crowd.RollDice(800), crowd.RollDice(600));
    else if (crowd.IsOneIn(50))
        Doors::GUIManager_OnWindowResize(1, 1);
    if (crowd.IsOneIn(50))
        manager.ShowGUICursor(crowd.IsOneIn(2));
    while (crowd.IsOneIn(20) && manager.IsRunningModal())
        manager.EndModal(*manager.GetModalTarget());
    if (crowd.IsOneIn(500))
    {
        std::ostringstream out;
        manager.DumpComponentHierarchy(out, 0, false, true, true);
        manager.DumpCycleQueue(out, 0);
        manager.DumpRegisteredShaders(out, 0);
        manager.DumpRegisteredCursors(out, 0);
        manager.DumpRegisteredTileTextures(out, 0);
        manager.DumpRegisteredFonts(out, 0);
        desk.kernel.logOut.str("");
    }
}

void Count(Manager const &manager, Crowd &crowd)
{
    auto const compare = [&](char const *what, unsigned int found, std::size_t wanted)
    {
        if (found != wanted)
            crowd.AddFault("the manager has " + std::to_string(found) + " of " + std::to_string(wanted) + what);
    };
    compare(" components", CountComponents(manager), crowd.components.size());
    compare(" shaders", manager.GetNumShaders(), crowd.numShaders);
    compare(" cursors", manager.GetNumCursors(), crowd.numCursors);
}

/// Runs a frame. Returns false when a failure has ended it.
bool RunFrame(GuiDesk &desk, Crowd &crowd)
{
    constexpr double times[] = {0, 1e-9, 1e9};
    try
    {
        desk.Frame(crowd.IsOneIn(20) ? times[crowd.RollDice(std::size(times))] : crowd.RollDice(300) / 1000.0);
        desk.manager.Draw();
    }
    catch (GUIException const &failure)
    {
        crowd.Take(failure);
        return false;
    }
    return true;
}

/// Lets go of everything. Returns true when the desk goes on with others: a new component is clicked and typed into.
bool GoesOn(GuiDesk &desk, Crowd &crowd, Devices &devices)
{
    crowd.isQuiet = true;
    crowd.Heal();
    devices.Connect();
    // A new component keeps its place in a window of this size.
    GuiDesk::DeskKernel::GUIManager_OnWindowResize(640, 480);
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
    unsigned int frame = 0;
    unsigned int numEndedFrames = 0;
    {
        GuiDesk desk;
        GuiDesk::DeskKernel::GUIManager_SetTolerateMissingInputDevice(true);
        Devices devices(desk, crowd);
        Screen screen(crowd);
        for (; frame < numFrames && crowd.isWell; ++frame)
        {
            crowd.rarity = 2 + crowd.RollDice(40);
            ChangeWorld(desk, crowd, screen);
            devices.Change();
            if (!RunFrame(desk, crowd))
            {
                ++numEndedFrames;
                if (crowd.IsOneIn(2))
                {
                    crowd.isQuiet = true;
                    crowd.Heal();
                    if (!RunFrame(desk, crowd))
                        crowd.AddFault("a failure stayed when its cause was gone");
                    crowd.isQuiet = false;
                }
            }
            if (crowd.IsOneIn(100) && !GoesOn(desk, crowd, devices))
                crowd.AddFault("frame " + std::to_string(frame) + ": a new component is not clicked or typed into");
            Count(desk.manager, crowd);
        }
        crowd.isQuiet = true;
    }
    if (std::size_t const left = crowd.components.size() + crowd.numShaders + crowd.numCursors + crowd.numTextures;
        left != 0)
        crowd.AddFault(std::to_string(left) + " objects are left");
    std::cout << frame << " frames, " << numEndedFrames << " of them ended by failures; " << crowd.numActions
              << " actions of handlers, " << crowd.numFailures << " failures; "
              << (crowd.isWell ? "all well" : "with faults") << std::endl;
    return crowd.isWell ? EXIT_SUCCESS : EXIT_FAILURE;
}

/// Prints the time of the steps of a GUI with very many components, `numEach` in each parent.
void RunMany(unsigned int count, unsigned int numEach)
{
    using Clock = std::chrono::steady_clock;
    auto last = Clock::now();
    auto const report = [&](char const *what)
    {
        auto const now = Clock::now();
        std::cout << "  " << what << ": " << std::chrono::duration<double, std::milli>(now - last).count() << " ms"
                  << std::endl;
        last = now;
    };
    std::cout << count << " components, " << numEach << " in each parent:\n";
    GuiDesk desk;
    NullVideo video;
    for (Component *parent = nullptr; count > 0; --count)
    {
        auto &component = *new Component;
        if (parent == nullptr || parent->GetNumChildren() == numEach)
            parent = &component;
        else
            component.AttachTo(*parent);
    }
    report("make");
    desk.Frame();
    report("first frame");
    desk.Frame();
    report("frame without changes");
    desk.MoveTo(1, 1);
    report("frame with a move");
    desk.manager.UpdateAllGeometry();
    report("all geometry");
    desk.manager.DeleteAllComponents();
    report("delete");
}

} // namespace
} // namespace quillmarsh::tests

int main(int argc, char **argv)
{
    unsigned int numFrames = 200000;
    unsigned int seed = 1;
    unsigned int numComponents = 0;
    for (int i = 1; i + 1 < argc; i += 2)
    {
        std::string const option = argv[i];
        auto const value = static_cast<unsigned int>(std::atoi(argv[i + 1]));
        if (option == "--frames")
            numFrames = value;
        else if (option == "--seed")
            seed = value;
        else if (option == "--components")
            numComponents = value;
    }
    if (numComponents == 0)
        return quillmarsh::tests::Run(numFrames, seed);
    for (unsigned int const numEach : {0u, 1000u, numComponents})
        quillmarsh::tests::RunMany(numComponents, numEach);
    return EXIT_SUCCESS;
}
