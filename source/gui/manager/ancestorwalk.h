// Walk from a component to its root, whatever handlers do meanwhile.
#ifndef QUILLMARSH_SOURCE_GUI_MANAGER_ANCESTORWALK_H
#define QUILLMARSH_SOURCE_GUI_MANAGER_ANCESTORWALK_H

#include <quillmarsh/gui/gui_component.h>
#include <quillmarsh/gui/gui_watch.h>

namespace quillmarsh::gui::manager_parts
{

/// Gives a component and its ancestors, nearest first. The parent is read after the component was told, so that the walk
/// ends with a component that was detached; a component that was destroyed is followed by the parent that it had. Lives
/// on the stack; takes no memory.
///
/// \code
/// for (AncestorWalk walk(component); Component *ancestor = walk.Next();)
///     ancestor->DispatchMessage(message);
/// \endcode
class AncestorWalk : NoCopy
{
public:
    explicit AncestorWalk(Component &first) : next_(first) {}

    /// Returns the next component; null at the end.
    Component *Next()
    {
        if (current_.Get() != nullptr)
            next_ = current_->GetParent();
        current_ = next_.Get();
        if (current_.Get() != nullptr)
            next_ = current_->GetParent();
        return current_.Get();
    }

private:
    Watch<Component> current_;
    Watch<Component> next_;
};

} // namespace quillmarsh::gui::manager_parts

#endif
