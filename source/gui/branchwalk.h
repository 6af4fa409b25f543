// Walk over a component and all its descendants, whatever handlers do to them meanwhile.
#ifndef QUILLMARSH_SOURCE_GUI_BRANCHWALK_H
#define QUILLMARSH_SOURCE_GUI_BRANCHWALK_H

#include "source/gui/childwalk.h"

#include <forward_list>

namespace quillmarsh::gui
{

/// Walks a branch: calls `enter` for each component before its children, and `leave` behind them. `enter` returns false
/// to pass over the children, and then `leave` is not called either. A component that is destroyed meanwhile is not
/// called any more, and neither are its children. Memory instead of recursion holds the levels, so that a branch of any
/// depth can be walked.
template<typename Enter, typename Leave>
void WalkBranch(Component &root, Enter &&enter, Leave &&leave)
{
    // The innermost level stands in front, and is destroyed first.
    std::forward_list<ChildWalk> levels;
    auto const visit = [&](Component &component)
    {
        Watch<Component> const watch(component);
        if (!enter(component) || watch.Get() == nullptr)
            return;
        if (component.IsLeaf())
            leave(component);
        else
            levels.emplace_front(component);
    };
    visit(root);
    while (!levels.empty())
    {
        if (Component *const child = levels.front().Next(); child != nullptr)
        {
            visit(*child);
            continue;
        }
        Component *const parent = levels.front().GetParent();
        levels.pop_front();
        if (parent != nullptr)
            leave(*parent);
    }
}

/// The same without `leave`.
template<typename Enter>
void WalkBranch(Component &root, Enter &&enter)
{
    WalkBranch(root, enter, [](Component &) {});
}

} // namespace quillmarsh::gui

#endif
