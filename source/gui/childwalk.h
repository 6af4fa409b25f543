// Walk over the children of a component, whatever handlers do to them meanwhile.
#ifndef QUILLMARSH_SOURCE_GUI_CHILDWALK_H
#define QUILLMARSH_SOURCE_GUI_CHILDWALK_H

#include <quillmarsh/gui/gui_component.h>

namespace quillmarsh::gui
{

/// Walks the children in order. Every walk over children during which a handler may run is one of these. A child that
/// is detached or destroyed is not given any more, one that is attached at the end is given, and no other is left out
/// or given twice. When the parent is destroyed the walk ends. Lives on the stack; takes no memory.
///
/// \code
/// for (ChildWalk walk(*this); Component *child = walk.Next();)
///     child->SetVisible(visible);
/// \endcode
class ChildWalk : NoCopy
{
public:
    explicit ChildWalk(Component &parent);
    ~ChildWalk()
    {
        if (parent_ != nullptr)
            parent_->childWalks_ = outer_;
    }

    /// Returns the next child; null at the end, and after the parent was destroyed.
    Component *Next()
    {
        return parent_ != nullptr && next_ < parent_->children_.GetSize() ? parent_->children_[next_++] : nullptr;
    }

    /// Returns the parent; null after it was destroyed.
    Component *GetParent() const { return parent_; }

    /// @name Repairs
    /// Called by the parent.
    /// @{

    /// The child at `index` was erased from the children.
    static void OnErased(Component &parent, std::size_t index)
    {
        for (ChildWalk *walk = parent.childWalks_; walk != nullptr; walk = walk->outer_)
        {
            if (index < walk->next_)
                --walk->next_;
        }
    }
    /// The parent is in its destructor.
    static void OnDestroyed(Component &parent)
    {
        for (ChildWalk *walk = parent.childWalks_; walk != nullptr; walk = walk->outer_)
            walk->parent_ = nullptr;
        parent.childWalks_ = nullptr;
    }
    /// @}

private:
    Component *parent_;
    ChildWalk *outer_;
    std::size_t next_ = 0;
};

} // namespace quillmarsh::gui

#endif
