#include "source/gui/manager/clickbranches.h"

namespace quillmarsh::gui::manager_parts
{

void ClickBranches::ExtractBranch(Component &hit)
{
    newBranch.Clear();
    for (Component *component = &hit; component != nullptr; component = component->GetParent())
        newBranch.Append(*component);
}

void ClickBranches::ExtractDifferences(bool sameButton)
{
    toActivate.Clear();
    toDeactivate.Clear();
    newBranch.ForEach(
        [&](Component &component)
        {
            if (!sameButton || !oldBranch.Contains(component))
                toActivate.Append(component);
        });
    oldBranch.ForEach(
        [&](Component &component)
        {
            if (!newBranch.Contains(component))
                toDeactivate.Append(component);
        });
}

void ClickBranches::SetTo(Component &component)
{
    for (ComponentRow *row : {&oldBranch, &newBranch, &toDeactivate, &toActivate})
        row->Clear();
    oldBranch.Append(component);
    newBranch.Append(component);
}

void ClickBranches::OnDeleted(Component &component)
{
    for (ComponentRow *row : {&oldBranch, &newBranch, &toDeactivate, &toActivate})
        row->Erase(component);
}

} // namespace quillmarsh::gui::manager_parts
