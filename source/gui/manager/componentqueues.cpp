#include "source/gui/manager/componentqueues.h"

#include "source/gui/manager/parts.h"

#include <utility>

namespace quillmarsh::gui::manager_parts
{

namespace
{

/// Gives the first or last member; closes no gaps, as a list of many may be changed many times.
constexpr auto s_any = [](Component const &) { return true; };

Component *TakeLast(std::vector<Component *> &components)
{
    Component *const last = components.back();
    components.pop_back();
    return last;
}

/// The first child is taken next.
void AppendReversed(std::vector<Component *> &components, std::vector<Component *> const &children)
{
    components.insert(components.end(), children.rbegin(), children.rend());
}

} // namespace

void ComponentQueues::OnCreated(Component &component)
{
    if (parts_.pending.componentInsert)
        InsertTopLevel(component);
    windowResize.Append(component);
    ReportDirtyGeometry(component);
}

void ComponentQueues::OnDeleted(Component &component)
{
    topLevel.Erase(component);
    all.Erase(component);
    draw.Erase(component);
    dirtyBranches.Erase(component);
    windowResize.Erase(component);
}

void ComponentQueues::OnHierarchyChanged(Component &component)
{
    parts_.pending.queuesDirty = true;
    if (!component.IsTopLevel())
    {
        topLevel.Erase(component);
        // Its top-level component is entered below; another update from here would repeat that one.
        dirtyBranches.Erase(component);
    }
    else if (parts_.pending.componentInsert)
    {
        InsertTopLevel(component);
    }
    ReportDirtyGeometry(component);
}

void ComponentQueues::OnOverlayChanged(Component &component)
{
    parts_.pending.queuesDirty = true;
    ReportDirtyGeometry(component);
}

void ComponentQueues::OnVisibilityChanged(Component &component)
{
    parts_.pending.queuesDirty = true;
    ReportDirtyGeometry(component);
}

void ComponentQueues::InsertTopLevel(Component &component)
{
    Component const *const last = topLevel.FindLast(s_any);
    if (!topLevel.Append(component))
        return;
    if (last != nullptr && last->GetLayer() != component.GetLayer())
        SetLayersDirty();
    parts_.pending.queuesDirty = true;
}

void ComponentQueues::BringToFront(Component &component)
{
    Component const *const last = topLevel.FindLast(s_any);
    if (!topLevel.Contains(component) || last == &component)
        return;
    if (last->GetLayer() != component.GetLayer())
        SetLayersDirty();
    topLevel.MoveToEnd(component);
    parts_.pending.queuesDirty = true;
}

void ComponentQueues::SendToBack(Component &component)
{
    Component const *const first = topLevel.FindFirst(s_any);
    if (!topLevel.Contains(component) || first == &component)
        return;
    if (first->GetLayer() != component.GetLayer())
        SetLayersDirty();
    topLevel.MoveToFront(component);
    parts_.pending.queuesDirty = true;
}

void ComponentQueues::SetZOrder(Component &front, Component &back)
{
    bool const areInOneLayer =
        topLevel.Contains(front) && topLevel.Contains(back) && front.GetLayer() == back.GetLayer();
    if (!areInOneLayer || !topLevel.IsAhead(front, back))
        return;
    topLevel.Swap(front, back);
    parts_.pending.queuesDirty = true;
}

void ComponentQueues::ReportDirtyGeometry(Component &component)
{
    dirtyBranches.Append(component.GetTopLevelAncestor());
}

void ComponentQueues::ReportAllDirty()
{
    topLevel.ForEach([this](Component &component) { dirtyBranches.Append(component); });
}

void ComponentQueues::UpdateDirtyGeometry()
{
    dirtyBranches.WorkOff([](Component &component) { component.UpdateGeometry(true); });
}

void ComponentQueues::NotifyWindowResize()
{
    VideoConnection const &video = parts_.video;
    if (video.GetVideoRenderer() == nullptr)
        return;
    if (std::exchange(parts_.pending.windowResizePending, false))
    {
        windowResize.BeginRebuild();
        all.ForEach([this](Component &component) { windowResize.AppendRebuilt(component); });
    }
    windowResize.WorkOff([&video](Component &component)
                         { component.OnWindowResize(video.GetWidth(), video.GetHeight()); });
}

void ComponentQueues::UpdateComponentHierarchyChanges()
{
    if (parts_.pending.layersDirty)
        UpdateComponentLayers();
    if (parts_.pending.queuesDirty)
        UpdateComponentQueues();
}

void ComponentQueues::SetLayersDirty()
{
    parts_.pending.layersDirty = true;
}

void ComponentQueues::UpdateComponentLayers()
{
    parts_.pending.layersDirty = false;
    parts_.pending.queuesDirty = true;
    topLevel.StableSort([](Component const &a, Component const &b) { return a.GetLayer() < b.GetLayer(); });
}

void ComponentQueues::UpdateComponentQueues()
{
    parts_.pending.queuesDirty = false;
    parts_.pending.forceHitTest = true;
    all.BeginRebuild();
    draw.BeginRebuild();
    topLevel.ForEach(
        [this](Component &root)
        {
            CollectAll(root);
            overlays_.assign(1, &root);
            for (std::size_t i = 0; i < overlays_.size(); ++i)
                CollectVisible(*overlays_[i]);
        });
    overlays_.clear();
}

void ComponentQueues::CollectAll(Component &root)
{
    toCollect_.assign(1, &root);
    while (!toCollect_.empty())
    {
        Component &component = *TakeLast(toCollect_);
        all.AppendRebuilt(component);
        AppendReversed(toCollect_, component.GetChildren());
    }
}

void ComponentQueues::CollectVisible(Component &root)
{
    toCollect_.assign(1, &root);
    while (!toCollect_.empty())
    {
        Component &component = *TakeLast(toCollect_);
        if (!component.IsVisible())
            continue;
        if (component.IsOverlay() && &component != &root)
        {
            overlays_.push_back(&component);
            continue;
        }
        draw.AppendRebuilt(component);
        AppendReversed(toCollect_, component.GetChildren());
    }
}

void ComponentQueues::DeleteAll()
{
    bool const componentInsert = std::exchange(parts_.pending.componentInsert, false);
    // A handler may call this in the middle of another destructor.
    auto const isToDelete = [](Component const &each) { return !Membership::IsMarked(each, e_mark_destroyed); };
    while (Component *const component = topLevel.FindLast(isToDelete))
    {
        topLevel.Erase(*component);
        delete component;
    }
    parts_.pending.componentInsert = componentInsert;
}

} // namespace quillmarsh::gui::manager_parts
