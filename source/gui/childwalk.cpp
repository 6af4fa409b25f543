#include "source/gui/childwalk.h"

namespace quillmarsh::gui
{

// Not in the header: a compiler that sees the component keep the address of a local object warns, as it does not see
// that the walk takes it back.
ChildWalk::ChildWalk(Component &parent) : parent_(&parent), outer_(parent.childWalks_)
{
    parent.childWalks_ = this;
}

} // namespace quillmarsh::gui
