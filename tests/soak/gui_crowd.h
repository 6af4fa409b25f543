// Everybody in the GUI of a soak: components, shaders, cursors, textures and fonts, and what they do at random.
#ifndef QUILLMARSH_TESTS_SOAK_GUI_CROWD_H
#define QUILLMARSH_TESTS_SOAK_GUI_CROWD_H

#include "tests/support/test_kernel.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/framework/application.h>
#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_manager.h>

#include <random>
#include <vector>

namespace quillmarsh::tests
{

/// What all components of a crowd have, whatever their class.
class Wild : NoCopy
{
public:
    explicit Wild(gui::Component &self) : component(self) {}
    virtual ~Wild() = default;

    gui::Component &component;
    /// Texture that it looks up; empty for none.
    string textureName;
};

/// Holds the dice, and lets everybody act by them.
class Crowd : NoCopy
{
public:
    explicit Crowd(unsigned int seed) : random_(seed) {}

    /// @name Dice
    /// @{
    unsigned int RollDice(std::size_t sides) { return static_cast<unsigned int>(random_() % sides); }
    bool IsOneIn(std::size_t sides) { return RollDice(sides) == 0; }
    /// Returns a number below `sides`; seldom one that no GUI has.
    float RollFloat(std::size_t sides);
    /// Returns bytes of any value, which may be a name that is there.
    string MakeName();
    /// @}

    /// @name Members
    /// @{
    void Enter(Wild &member) { components.push_back(&member); }
    void Leave(Wild &member) { std::erase(components, &member); }
    /// Makes a component of any class, perhaps with a parent.
    void Make();
    std::vector<Wild *> components;
    unsigned int numShaders = 0;
    unsigned int numCursors = 0;
    /// Textures and fonts.
    unsigned int numTextures = 0;
    /// @}

    /// Does something to one component, often to the one that was told, seldom enough that a frame ends. Null if no
    /// component was told.
    void Act(Wild *told);
    /// Lets nobody ask for what is missing or refused.
    void Heal();
    /// Takes a failure that was provoked; another one is a fault.
    void Take(GUIException const &failure);
    void AddFault(string const &text);

    unsigned int rarity = 20;
    bool isQuiet = false;
    bool isWell = true;
    unsigned long long numActions = 0;
    unsigned long long numFailures = 0;

private:
    Wild &Pick() { return *components[RollDice(components.size())]; }
    bool IsMember(gui::Component const &component) const;
    void Attach(gui::Component &component);
    /// Mostly returns one of the names.
    string PickName(std::vector<string> const &names);
    string PickTextureName();
    string PickFontName();
    string PickCursorName();

    /// @name Parts of Act()
    /// @{
    void ChangeTree(Wild &member, bool coin);
    void ChangeState(gui::Component &component, bool coin);
    void ChangeTargets(gui::Component &component, bool coin);
    void ChangeHooks(gui::Component &component, bool coin);
    void ChangeLook(Wild &member);
    void ChangeShadersAndCursors(bool coin);
    void ChangeTexturesAndFonts(bool coin);
    void ChangeAliases(bool coin);
    /// @}

    /// Stands for the application in calls; the manager does not know it.
    struct Program : Application
    {
    } application_;
    std::mt19937 random_;
    unsigned int depth_ = 0;
};

} // namespace quillmarsh::tests

#endif
