// Flat queues of the component tree.
#ifndef QUILLMARSH_SOURCE_GUI_MANAGER_COMPONENTQUEUES_H
#define QUILLMARSH_SOURCE_GUI_MANAGER_COMPONENTQUEUES_H

#include "source/gui/manager/safelists.h"

namespace quillmarsh::gui::manager_parts
{

struct Parts;

/// Top-level list, all-components queue, draw queue, dirty branches and window-resize list. Calls no handler but in
/// UpdateDirtyGeometry() and NotifyWindowResize().
class ComponentQueues : NoCopy
{
public:
    explicit ComponentQueues(Parts &parts) : parts_(parts) {}

    /// @name Notices; see Manager
    /// @{
    void OnCreated(Component &component);
    /// Takes the component from every list of this class. Queues stay valid.
    void OnDeleted(Component &component);
    void OnHierarchyChanged(Component &component);
    void OnLayerChanged() { SetLayersDirty(); }
    void OnOverlayChanged(Component &component);
    void OnVisibilityChanged(Component &component);
    /// @}

    /// @name Stacking
    /// @{
    void BringToFront(Component &component);
    void SendToBack(Component &component);
    void SetZOrder(Component &front, Component &back);
    /// @}

    /// @name Geometry
    /// @{
    void ReportDirtyGeometry(Component &component);
    /// Every top-level component becomes dirty.
    void ReportAllDirty();
    /// Works the dirty branches off by UpdateGeometry(true). What becomes dirty meanwhile waits for the next call.
    void UpdateDirtyGeometry();
    /// Tells the components on the window-resize list of the size; see VideoConnection.
    void NotifyWindowResize();
    /// @}

    /// @name Rebuild
    /// @{

    /// Sorts the layers, then rebuilds the queues, if each is dirty.
    void UpdateComponentHierarchyChanges();
    /// @}

    /// Deletes all top-level components, from the front to the back, with the insert switch off.
    void DeleteAll();

    SafeList<Component> topLevel{e_list_top_level};
    SafeList<Component> all{e_list_all};
    SafeList<Component> draw{e_list_draw};
    SafeList<Component> dirtyBranches{e_list_dirty_branches};
    SafeList<Component> windowResize{e_list_window_resize};

private:
    void SetLayersDirty();
    /// Puts a component in front, unless it stands in the list.
    void InsertTopLevel(Component &component);
    void UpdateComponentLayers();
    void UpdateComponentQueues();
    /// Appends a branch, each component before its children.
    void CollectAll(Component &root);
    /// Appends the visible part of a branch, without its overlays, which go to overlays_.
    void CollectVisible(Component &root);

    Parts &parts_;
    /// Work list of the draw queue, kept for its capacity.
    std::vector<Component *> overlays_;
    /// Components whose turn is still to come; also kept for its capacity. A branch may have any depth.
    std::vector<Component *> toCollect_;
};

} // namespace quillmarsh::gui::manager_parts

#endif
