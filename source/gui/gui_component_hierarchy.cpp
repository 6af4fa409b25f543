// Components: the tree.
#include "source/gui/branchwalk.h"
#include "source/gui/manager/safelists.h"

#include <quillmarsh/basetools/diagnostics.h>
#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/streameffectors.h>
#include <quillmarsh/basetools/texttools.h>
#include <quillmarsh/gui/gui_manager.h>

#include <algorithm>
#include <ostream>
#include <utility>

namespace quillmarsh::gui
{
namespace
{

/// Number of destructors that may run within one another, each deleting the next level of a tree. What lies deeper than
/// in any GUI is deleted from its leaves, which needs no stack.
constexpr std::size_t s_maxNestedDeletions = 32;

/// Number of levels that are deleted from their leaves at a time. Each change is reported to the root of its tree, so the
/// way there must not be long; and each cut tells the whole branch below it, so there must not be many.
constexpr std::size_t s_maxPieceDepth = 512;

/// Counts the running calls of DeleteAllChildren() that stand in one another.
class DeletionLevel : NoCopy
{
public:
    DeletionLevel() { ++s_level; }
    ~DeletionLevel() { --s_level; }

    static bool IsLast() { return s_level >= s_maxNestedDeletions; }

private:
    static std::size_t s_level;
};

std::size_t DeletionLevel::s_level = 0;

string MakeClassName(Component const &component)
{
    return GetTypeName(typeid(component));
}

string MakeObjectName(Component const &component)
{
    return FormatObjectName(MakeClassName(component), &component);
}

/// Throws if `child` has `parent` below it.
void CheckIsNoAncestor(Component const &child, Component const &parent)
{
    if (child.IsAncestorOf(parent))
    {
        QUILLMARSH_THROW(GUIException,
                         "Attaching ancestor: " + MakeObjectName(child) + " to descendant: " + MakeObjectName(parent));
    }
}

void DetachAndDelete(Component &parent, Component &child)
{
    Watch<Component> const watch(child);
    parent.Detach(child);
    delete watch.Get();
}

/// Deletes the descendants, each behind its own, but detaches those that lie too deep, and adds them to `roots`.
void DeleteUpperDescendants(Component &root, std::vector<Watch<Component>> &roots)
{
    std::vector<Watch<Component>> path = {Watch<Component>(root)};
    while (path.front().Get() != nullptr)
    {
        Component *const last = path.back();
        Component *const parent = path.size() > 1 ? path[path.size() - 2].Get() : nullptr;
        // A handler may have moved or deleted it.
        bool const isInPlace = last != nullptr && (path.size() == 1 || (parent != nullptr && last->IsChildOf(*parent)));
        if (isInPlace && !last->IsLeaf() && path.size() < s_maxPieceDepth)
        {
            path.emplace_back(last->GetChild(0));
            continue;
        }
        if (path.size() == 1)
            return;
        path.pop_back();
        if (!isInPlace || parent == nullptr)
            continue;
        if (last->IsLeaf())
        {
            DetachAndDelete(*parent, *last);
        }
        else
        {
            roots.emplace_back(last);
            parent->Detach(*last);
        }
    }
}

/// Prints the rest of a line of a dump, behind the depth.
void PrintComponent(ostream &out, Component const &component, bool showDetails)
{
    string address;
    ToString(address, const_cast<Component *>(&component));
    out << FormatClassName(MakeClassName(component)) << ", " << address;
    if (showDetails)
        out << ", Shader=" << component.GetShaderName() << ", Flags=" << (component.IsVisible() ? "" : "H");
    out << '\n';
}

/// Deletes all descendants without recursion.
void DeleteFromLeaves(Component &root)
{
    std::vector<Watch<Component>> roots;
    DeleteUpperDescendants(root, roots);
    while (!roots.empty())
    {
        Watch<Component> const piece = roots.back();
        roots.pop_back();
        if (piece.Get() != nullptr)
            DeleteUpperDescendants(*piece.Get(), roots);
        delete piece.Get();
    }
}

} // namespace

std::size_t Component::Children::Erase(Component const &child)
{
    // The last one comes first when all are detached, and the first one when all are deleted.
    if (members_.back() == &child)
    {
        members_.pop_back();
        return GetSize();
    }
    auto const begin = members_.begin() + static_cast<std::ptrdiff_t>(gap_);
    auto const index = static_cast<std::size_t>(std::find(begin, members_.end(), &child) - begin);
    if (index != 0)
        members_.erase(begin + static_cast<std::ptrdiff_t>(index));
    else if (++gap_ > members_.size() / 2)
        CloseGap();
    return index;
}

void Component::Children::CloseGap() const
{
    members_.erase(members_.begin(), members_.begin() + static_cast<std::ptrdiff_t>(std::exchange(gap_, 0)));
}

// Attachment. The manager is told at once, and the hooks then: whatever they do, the rest is done only for a tree that
// still is as this operation made it.

void Component::Attach(Component &child)
{
    auto const isDestroyed = [](Component const &component)
    { return manager_parts::Membership::IsMarked(component, manager_parts::e_mark_destroyed); };
    if (&child == this || child.parent_ == this || isDestroyed(*this) || isDestroyed(child))
        return;
    CheckIsNoAncestor(child, *this);
    Watch<Component> const self(*this);
    Watch<Component> const watch(child);
    if (child.parent_ != nullptr)
    {
        child.DetachFromParent();
        bool const isStillFree = self.Get() != nullptr && watch.Get() != nullptr && child.parent_ == nullptr;
        if (!isStillFree)
            return;
        CheckIsNoAncestor(child, *this);
    }
    children_.Append(child);
    child.parent_ = this;
    Manager &manager = Manager::Instance();
    manager.NotifyComponentHierarchyChanged(child);
    manager.NotifyComponentHierarchyChanged(*this);

    auto const isStillAttached = [&]
    { return self.Get() != nullptr && watch.Get() != nullptr && watch->parent_ == self.Get(); };
    OnAttachedChild(child);
    if (isStillAttached())
        child.OnAttachedToParent();
    if (isStillAttached())
        child.PropagateChangedBranchVisible(IsBranchVisible());
}

void Component::Detach(Component &child)
{
    if (child.parent_ != this)
    {
        QUILLMARSH_THROW(GUIException,
                         "Detaching non-child: " + MakeObjectName(child) + " from: " + MakeObjectName(*this));
    }
    ChildWalk::OnErased(*this, children_.Erase(child));
    child.parent_ = nullptr;
    Manager &manager = Manager::Instance();
    manager.NotifyComponentHierarchyChanged(child);
    manager.NotifyComponentHierarchyChanged(*this);

    Watch<Component> const self(*this);
    Watch<Component> const watch(child);
    child.OnDetachedFromParent();
    if (self.Get() != nullptr && watch.Get() != nullptr && child.parent_ != this)
        OnDetachedChild(child);
    if (watch.Get() != nullptr)
        child.PropagateChangedBranchVisible(child.IsBranchVisible());
}

void Component::DetachFromParent()
{
    if (parent_ != nullptr)
        parent_->Detach(*this);
}

void Component::DetachAllChildren()
{
    Watch<Component> const self(*this);
    for (std::size_t i = children_.GetSize(); i > 0 && self.Get() != nullptr; --i)
    {
        // A handler may have detached others.
        if (i <= children_.GetSize())
            Detach(*children_[i - 1]);
    }
}

void Component::DeleteAllChildren()
{
    if (IsLeaf())
        return;
    DeletionLevel const level;
    if (DeletionLevel::IsLast())
    {
        DeleteFromLeaves(*this);
        return;
    }
    Watch<Component> const self(*this);
    while (self.Get() != nullptr && !IsLeaf())
        DetachAndDelete(*this, *children_[0]);
}

void Component::OnAttachedChild(Component &) {}

void Component::OnDetachedChild(Component &) {}

void Component::OnAttachedToParent() {}

void Component::OnDetachedFromParent() {}

// Relatives.

Component &Component::GetTopLevelAncestor()
{
    Component *component = this;
    while (component->parent_ != nullptr)
        component = component->parent_;
    return *component;
}

Component const &Component::GetTopLevelAncestor() const
{
    return const_cast<Component *>(this)->GetTopLevelAncestor();
}

Component *Component::GetChild(unsigned int index)
{
    return index < children_.GetSize() ? children_[index] : nullptr;
}

Component const *Component::GetChild(unsigned int index) const
{
    return index < children_.GetSize() ? children_[index] : nullptr;
}

bool Component::IsDescendantOf(Component const &other) const
{
    if (other.IsLeaf())
        return false;
    Component const *ancestor = parent_;
    while (ancestor != nullptr && ancestor != &other)
        ancestor = ancestor->parent_;
    return ancestor != nullptr;
}

unsigned int Component::CalcDepth() const
{
    unsigned int depth = 0;
    for (Component const *ancestor = parent_; ancestor != nullptr; ancestor = ancestor->parent_)
        ++depth;
    return depth;
}

// Diagnostics.

void Component::DumpHierarchy(ostream &out, unsigned int tabs, bool showDepth, bool showDetails, unsigned int depth,
                              bool limitDepth, unsigned int maxDepth) const
{
    struct Parent
    {
        Component const *component;
        std::size_t nextChild;
    };
    auto const isShown = [=](std::size_t level) { return !limitDepth || depth + level <= maxDepth; };
    auto const print = [&](Component const &component, unsigned int level)
    {
        out << TabEffector(tabs + level);
        if (showDepth)
            out << depth + level << ", ";
        PrintComponent(out, component, showDetails);
    };
    if (!isShown(0))
        return;
    print(*this, 0);
    std::vector<Parent> path = {{this, 0}};
    while (!path.empty())
    {
        Parent &parent = path.back();
        if (parent.nextChild == parent.component->children_.GetSize() || !isShown(path.size()))
        {
            path.pop_back();
            continue;
        }
        Component const &child = *parent.component->children_[parent.nextChild++];
        print(child, static_cast<unsigned int>(path.size()));
        path.push_back({&child, 0});
    }
}

string Component::MakeHierarchyTrace(string const &separator) const
{
    std::vector<Component const *> path;
    for (Component const *component = this; component != nullptr; component = component->parent_)
        path.push_back(component);
    string trace = MakeObjectName(*path.back());
    for (auto component = path.rbegin() + 1; component != path.rend(); ++component)
        trace += separator + MakeObjectName(**component);
    return trace;
}

} // namespace quillmarsh::gui
