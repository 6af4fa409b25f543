// Where a component can be reached by the mouse.
#ifndef QUILLMARSH_SOURCE_GUI_ROBOT_REACH_H
#define QUILLMARSH_SOURCE_GUI_ROBOT_REACH_H

#include <quillmarsh/mathtools/vector2.h>
#include <quillmarsh/platform/types.h>

#include <optional>

namespace quillmarsh::gui
{
class Component;
class Manager;
} // namespace quillmarsh::gui

namespace quillmarsh::gui::robot_parts
{

/// Result of a search for a place.
struct Reach
{
    /// Why no place was found; empty when there is one.
    string obstacle;
    /// In the window, in whole pixels.
    int x = 0;
    int y = 0;
};

/// What the search asks for.
struct ReachWish
{
    /// In pixels from the top left corner of the component; none lets the search choose.
    std::optional<vec2> place;
    /// What is hit must take button messages.
    bool mustBeEnabled = true;
    /// Something else may stand in front.
    bool mayBeCovered = false;
};

/// Finds a place where the mouse hits the component: the wanted one, or the middle, or another one that is free; if
/// there is none, one where it hits a descendant.
Reach FindReach(Manager &manager, Component &component, ReachWish const &wish);

/// True if a hit on `hit` is meant by somebody who points at `component`: the component itself, a descendant, or the
/// ancestor behind a ghost.
bool IsHitMeant(Component const &component, Component const &hit);

/// Says why a component cannot be seen; empty if it can.
string DescribeHidden(Component const &component);

} // namespace quillmarsh::gui::robot_parts

#endif
