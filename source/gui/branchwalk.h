// Walk over a component and all its descendants, whatever handlers do to them meanwhile.
#ifndef QUILLMARSH_SOURCE_GUI_BRANCHWALK_H
#define QUILLMARSH_SOURCE_GUI_BRANCHWALK_H

#include "source/gui/childwalk.h"

#include <array>
#include <forward_list>
#include <optional>

namespace quillmarsh::gui
{

/// Levels of a walk, one ChildWalk for each component whose children are walked. Takes memory only for the branches of
/// trees that are deeper than any GUI.
class WalkLevels : NoCopy
{
public:
    WalkLevels() = default;
    ~WalkLevels()
    {
        while (!IsEmpty())
            Pop();
    }

    bool IsEmpty() const { return numUpper_ == 0; }
    ChildWalk &Top() { return deep_.empty() ? *upper_[numUpper_ - 1] : deep_.front(); }
    void Push(Component &parent)
    {
        if (numUpper_ < upper_.size())
            upper_[numUpper_++].emplace(parent);
        else
            deep_.emplace_front(parent);
    }
    void Pop()
    {
        if (deep_.empty())
            upper_[--numUpper_].reset();
        else
            deep_.pop_front();
    }

private:
    std::array<std::optional<ChildWalk>, 16> upper_;
    std::size_t numUpper_ = 0;
    std::forward_list<ChildWalk> deep_;
};

/// Walks a branch: calls `enter` for each component before its children, and `leave` behind them. `enter` returns false
/// to pass over the children, and then `leave` is not called either. A component that is destroyed meanwhile is not
/// called any more, and neither are its children. There is no recursion, so that a branch of any depth can be walked.
template<typename Enter, typename Leave>
void WalkBranch(Component &root, Enter &&enter, Leave &&leave)
{
    WalkLevels levels;
    auto const visit = [&](Component &component)
    {
        Watch<Component> const watch(component);
        if (!enter(component) || watch.Get() == nullptr)
            return;
        if (component.IsLeaf())
            leave(component);
        else
            levels.Push(component);
    };
    visit(root);
    while (!levels.IsEmpty())
    {
        if (Component *const child = levels.Top().Next(); child != nullptr)
        {
            visit(*child);
            continue;
        }
        Component *const parent = levels.Top().GetParent();
        levels.Pop();
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
