// The branch of components that was clicked, and the one before.
#ifndef QUILLMARSH_SOURCE_GUI_MANAGER_CLICKBRANCHES_H
#define QUILLMARSH_SOURCE_GUI_MANAGER_CLICKBRANCHES_H

#include "source/gui/manager/safelists.h"

namespace quillmarsh::gui::manager_parts
{

/// The four lists of a click. Calls nothing; MouseDispatch fills them, Activation walks them.
class ClickBranches : NoCopy
{
public:
    /// Collects the hit component and its ancestors, nearest first.
    void ExtractBranch(Component &hit);
    /// Computes what is to be activated and deactivated; with another button the whole new branch is activated.
    void ExtractDifferences(bool sameButton);
    /// The new branch becomes the old one.
    void Keep() { oldBranch.Swap(newBranch); }
    /// Old and new branch become just this component, and the others empty.
    void SetTo(Component &component);
    /// Called for marked components.
    void OnDeleted(Component &component);

    ComponentRow oldBranch{e_mark_clicked_branches};
    ComponentRow newBranch{e_mark_clicked_branches};
    ComponentRow toDeactivate{e_mark_clicked_branches};
    ComponentRow toActivate{e_mark_clicked_branches};
};

} // namespace quillmarsh::gui::manager_parts

#endif
