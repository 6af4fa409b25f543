#include "source/gui/manager/safelists.h"

namespace quillmarsh::gui::manager_parts
{

void ComponentRow::Append(Component &component)
{
    Membership::Mark(component, mark_);
    members_.push_back(&component);
}

void ComponentRow::Clear()
{
    // A running walk counts places: what comes in next must not take those that are still to be walked.
    if (numWalks_ != 0)
        std::fill(members_.begin(), members_.end(), nullptr);
    else
        members_.clear();
}

void ComponentRow::Erase(Component &component)
{
    if (numWalks_ != 0)
        std::replace(members_.begin(), members_.end(), &component, static_cast<Component *>(nullptr));
    else
        std::erase(members_, &component);
}

bool ComponentRow::Contains(Component const &component) const
{
    return std::find(members_.begin(), members_.end(), &component) != members_.end();
}

} // namespace quillmarsh::gui::manager_parts
