// Components: position, size, and the update of the geometry.
#include "source/gui/branchwalk.h"

#include <quillmarsh/gui/gui_manager.h>

#include <algorithm>

namespace quillmarsh::gui
{
namespace
{

vec2 ComponentMin(vec2 const &a, vec2 const &b)
{
    return vec2(std::min(a.x, b.x), std::min(a.y, b.y));
}

vec2 ComponentMax(vec2 const &a, vec2 const &b)
{
    return vec2(std::max(a.x, b.x), std::max(a.y, b.y));
}

/// Returns the new position along one axis of a window of a new size.
float FollowWindow(eAutoPosition way, float position, float size, float offset, float windowSize)
{
    switch (way)
    {
    case e_autopos_none:
        break;
    case e_autopos_near:
        return offset;
    case e_autopos_far:
        return windowSize - size - offset;
    case e_autopos_center:
        return (windowSize - size) * 0.5f;
    case e_autopos_keep_inside:
        return windowSize <= position ? std::max(windowSize - size, 0.0f) : position;
    }
    return position;
}

} // namespace

// Position and size.

void Component::SetPositionX(float x)
{
    SetPosition(vec2(x, position_.y));
}

void Component::SetPositionY(float y)
{
    SetPosition(vec2(position_.x, y));
}

void Component::SetPosition(float x, float y)
{
    SetPosition(vec2(x, y));
}

void Component::SetPosition(vec2 const &position)
{
    position_ = position;
    Manager::Instance().ForceHitTestAtNextFrame();
}

void Component::SetSizeX(float x)
{
    SetSize(vec2(x, size_.y));
}

void Component::SetSizeY(float y)
{
    SetSize(vec2(size_.x, y));
}

void Component::SetSize(float x, float y)
{
    SetSize(vec2(x, y));
}

void Component::SetSize(vec2 const &size)
{
    size_ = size;
    Manager::Instance().ForceHitTestAtNextFrame();
}

void Component::SetMinSize(vec2 const &size)
{
    minSize_ = ComponentMax(vec2::ZERO, ComponentMin(size, maxSize_));
}

void Component::SetMaxSize(vec2 const &size)
{
    maxSize_ = ComponentMax(minSize_, size);
}

vec2 Component::CalcMinMaxClampedSize(vec2 const &size) const
{
    return ComponentMax(minSize_, ComponentMin(size, maxSize_));
}

vec2 Component::GetParentPosition() const
{
    return parent_ != nullptr ? parent_->position_ : vec2::ZERO;
}

vec2 Component::GetParentSize() const
{
    return parent_ != nullptr ? parent_->size_ : Manager::Instance().GetWindowSize();
}

vec2 Component::CalcRelativeMousePosition() const
{
    return Manager::Instance().GetMousePosition() - absolutePosition_;
}

// The window.

void Component::SetAutoPositionOnWindowResize(eAutoPosition x, eAutoPosition y, float offsetX, float offsetY)
{
    autoPositionX_ = x;
    autoPositionY_ = y;
    autoPositionOffsetX_ = offsetX;
    autoPositionOffsetY_ = offsetY;
}

void Component::GetAutoPositionOnWindowResize(eAutoPosition &x, eAutoPosition &y, float &offsetX, float &offsetY) const
{
    x = autoPositionX_;
    y = autoPositionY_;
    offsetX = autoPositionOffsetX_;
    offsetY = autoPositionOffsetY_;
}

void Component::OnWindowResize(unsigned int width, unsigned int height)
{
    if (!IsTopLevel())
        return;
    SetPosition(FollowWindow(autoPositionX_, position_.x, size_.x, autoPositionOffsetX_, static_cast<float>(width)),
                FollowWindow(autoPositionY_, position_.y, size_.y, autoPositionOffsetY_, static_cast<float>(height)));
}

void Component::ForceTopLevelComponentInsideWindow()
{
    Manager const &manager = Manager::Instance();
    if (!IsTopLevel() || manager.IntersectsWindow(*this))
        return;
    SetPosition(ComponentMax((manager.GetWindowSize() - size_) * 0.5f, vec2::ZERO));
}

// Update. Each pass goes over the visible part of the branch.

void Component::ReportDirtyGeometry()
{
    Manager::Instance().ReportDirtyGeometry(*this);
}

void Component::UpdateGeometry(bool fromTopLevel)
{
    Watch<Component> const root(fromTopLevel ? GetTopLevelAncestor() : *this);
    constexpr void (*passes[])(Component &) = {
        [](Component &component) { component.PropagateRecalcSize(); },
        [](Component &component) { component.PropagateRecalcLayout(); },
        [](Component &component) { component.PropagateResetRecalcLayoutFlag(false); },
        [](Component &component) { component.UpdateAbsolutePositionCache(); },
        [](Component &component) { component.PropagateUpdateGeometryCache(); },
    };
    try
    {
        for (auto *const pass : passes)
        {
            if (root.Get() != nullptr)
                pass(*root.Get());
        }
    }
    catch (...)
    {
        // The next update lays out all anew.
        if (root.Get() != nullptr)
            root->PropagateResetRecalcLayoutFlag(false);
        throw;
    }
}

void Component::PropagateRecalcSize()
{
    WalkBranch(
        *this, [](Component &component) { return component.visible_; },
        [](Component &component) { component.RecalcSize(); });
}

void Component::PropagateRecalcLayout()
{
    WalkBranch(*this,
               [](Component &component)
               {
                   if (!component.visible_ || component.recalcLayoutDone_)
                       return false;
                   Watch<Component> const watch(component);
                   component.RecalcLayout();
                   if (watch.Get() != nullptr)
                       component.recalcLayoutDone_ = true;
                   return true;
               });
}

void Component::PropagateResetRecalcLayoutFlag(bool flag)
{
    WalkBranch(*this,
               [flag](Component &component)
               {
                   if (component.visible_)
                       component.recalcLayoutDone_ = flag;
                   return component.visible_;
               });
}

void Component::UpdateAbsolutePositionCache()
{
    WalkBranch(*this,
               [](Component &component)
               {
                   if (component.visible_)
                   {
                       Component const *const parent = component.parent_;
                       component.absolutePosition_ =
                           parent != nullptr ? parent->absolutePosition_ + component.position_ : component.position_;
                   }
                   return component.visible_;
               });
}

void Component::PropagateUpdateGeometryCache()
{
    WalkBranch(*this,
               [](Component &component)
               {
                   bool const isVisible = component.visible_;
                   if (isVisible)
                       component.UpdateGeometryCache();
                   return isVisible;
               });
}

void Component::RecalcSize() {}

void Component::RecalcLayout() {}

void Component::UpdateGeometryCache() {}

void Component::SetActiveGeomUpdateEvent(eGeometryUpdateEvent event, eCommandArea area)
{
    activeGeomUpdateEvent_ = event;
    activeGeomUpdateEventCommandArea_ = area;
}

} // namespace quillmarsh::gui
